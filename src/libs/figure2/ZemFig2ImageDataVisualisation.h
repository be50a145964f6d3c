// ZemFig2ImageDataVisualisation.h: ImageDataVisualisation, how the marks on a picture are drawn.
// Layer: values. A plain value, copied freely; distinct objects may be used from distinct threads.
#pragma once

#include "ZemFig2LineStyle.h"

#include <ZemColor.h>
#include <ZemFont.h>
#include <ZemStream.h>

#include <QtCore/QString>

#include <iosfwd>
#include <vector>

namespace Zem::Fig2 {

/// Which components of the vectors are shown, in what line, with which arrows, point ids and mask. A null record stands
/// for no look of one's own.
class ImageDataVisualisation
{
public:
    /// The vector components that are shown. Stored in files: never renumber. Deliberately not alphabetical.
    enum Mode_t { MODE_X = 0, MODE_Y = 1, MODE_Z = 2, MODE_XY = 3, MODE_YZ = 4, MODE_XZ = 5, MODE_XYZ = 6 };
    /// The ends of a line that have an arrow. Stored in files: never renumber.
    enum ArrowMode_t { ARROW_NONE = 0, ARROW_FIRST = 1, ARROW_SECOND = 2, ARROW_BOTH = 3 };

    static constexpr QLatin1StringView PARAM_IS_NULL{"is_null"};
    static constexpr QLatin1StringView PARAM_MODE{"mode"};
    static constexpr QLatin1StringView PARAM_LINE_STYLE{"line_style"};
    static constexpr QLatin1StringView PARAM_POINT_MARKER_SIZE{"point_marker_size"};
    static constexpr QLatin1StringView PARAM_VECTOR_SCALING{"vector_scaling"};
    static constexpr QLatin1StringView PARAM_VECTOR_LINE_WIDTH{"vector_line_width"};
    static constexpr QLatin1StringView PARAM_DRAW_ARROWS{"draw_arrows"};
    static constexpr QLatin1StringView PARAM_DRAW_COMBINED_VECTORS{"draw_combined_vectors"};
    static constexpr QLatin1StringView PARAM_DRAW_HIDDEN_POINTS{"draw_hidden_points"};
    static constexpr QLatin1StringView PARAM_DRAW_POINT_IDS{"draw_point_ids"};
    static constexpr QLatin1StringView PARAM_USE_FIXED_POINT_ID_COLOR{"use_fixed_point_id_color"};
    static constexpr QLatin1StringView PARAM_POINT_ID_FONT{"point_id_font"};
    static constexpr QLatin1StringView PARAM_POINT_ID_COLOR{"point_id_color"};
    static constexpr QLatin1StringView PARAM_POINT_MASK{"point_mask"};

    /// The null record.
    static ImageDataVisualisation const NONE;

    /// All components in a red line of 0.1 mm, arrows at both ends, one combined vector, hidden points too, no ids.
    explicit ImageDataVisualisation(bool isNull);

    bool isNull() const { return isNull_; }
    void setNull(bool isNull) { isNull_ = isNull; }
    Mode_t getMode() const { return mode_; }
    void setMode(Mode_t mode) { mode_ = mode; }
    /// Its colour is the colour of the marks.
    LineStyle const &getLineStyle() const { return lineStyle_; }
    void setLineStyle(LineStyle const &lineStyle) { lineStyle_ = lineStyle; }
    /// Half the length of the marker cross, picture pixels.
    double getPointMarkerSize() const { return pointMarkerSize_; }
    void setPointMarkerSize(double size) { pointMarkerSize_ = size; }
    /// Factor on the length of a vector on the picture. Setting throws ProgError below 0.
    double getVectorScaling() const { return vectorScaling_; }
    void setVectorScaling(double scaling);
    /// Of vectors, page millimetres; the dot at their foot has half of it as radius. Setting throws ProgError below 0.
    double getVectorLineWidth() const { return vectorLineWidth_; }
    void setVectorLineWidth(double width);
    /// Of lines; ARROW_NONE suppresses arrows, with any other a line's own mode tells its ends.
    ArrowMode_t getDrawArrows() const { return drawArrows_; }
    void setDrawArrows(ArrowMode_t arrows) { drawArrows_ = arrows; }
    /// One vector of all components instead of one for each.
    bool getDrawCombinedVectors() const { return drawCombinedVectors_; }
    void setDrawCombinedVectors(bool draw) { drawCombinedVectors_ = draw; }
    bool getDrawHiddenPoints() const { return drawHiddenPoints_; }
    void setDrawHiddenPoints(bool draw) { drawHiddenPoints_ = draw; }
    bool getDrawPointIds() const { return drawPointIds_; }
    void setDrawPointIds(bool draw) { drawPointIds_ = draw; }
    /// Whether ids always have their own colour, never that of the vector.
    bool getUseFixedPointIdColor() const { return useFixedPointIdColor_; }
    void setUseFixedPointIdColor(bool use) { useFixedPointIdColor_ = use; }
    Font const &getPointIdFont() const { return pointIdFont_; }
    void setPointIdFont(Font const &font) { pointIdFont_ = font; }
    Color const &getPointIdColor() const { return pointIdColor_; }
    void setPointIdColor(Color const &color) { pointIdColor_ = color; }
    /// Points that share no bit with it are left out; -1 shows all.
    int getPointMask() const { return pointMask_; }
    void setPointMask(int mask) { pointMask_ = mask; }
    void setMask(int mask) { setPointMask(mask); }

    /// The seven modes in numeric order.
    static std::vector<Mode_t> getAllModes();
    /// The word of a parameter string; empty for a number outside the enumeration.
    static QString getParameterModeName(Mode_t mode);
    /// The words for the user, translated; empty likewise.
    static QString getModeName(Mode_t mode);
    static QString getArrowModeName(ArrowMode_t mode);
    /// Throws ParamError for an unknown name.
    static ArrowMode_t getArrowModeByName(QString const &name);

    /// One stream block, then line style and font. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Named parameters under `prefix`. Reading takes the entries that exist out of `parameters` and leaves members
    /// without an entry alone; it throws ParamError for a bad value, the members before it being set.
    QString getParameterString(QString const &prefix) const;
    void createFromParameterString(QString &parameters, QString const &prefix);
    /// Whether one of the keys, those of the line style included, stands in `parameters`.
    static bool parameterExists(QString const &parameters, QString const &prefix);

    /// Two null records are equal whatever else they hold. The vector line width and the drawing of hidden points are
    /// deliberately not compared.
    bool operator==(ImageDataVisualisation const &other) const;

    /// Text form; reading another version, or a damaged text, leaves the object alone. So does a negative vector
    /// scaling or vector line width, which throws ProgError.
    friend std::ostream &operator<<(std::ostream &stream, ImageDataVisualisation const &visualisation);
    friend std::istream &operator>>(std::istream &stream, ImageDataVisualisation &visualisation);

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);
    void replaceNegativeNumbers();

    bool isNull_;
    Mode_t mode_ = MODE_XYZ;
    LineStyle lineStyle_{0.1, LineStyle::STYLE_FULL, Color(180, 56, 56)};
    double pointMarkerSize_;
    double vectorScaling_ = 1.0;
    double vectorLineWidth_ = 1.0;
    ArrowMode_t drawArrows_ = ARROW_BOTH;
    bool drawCombinedVectors_ = true;
    bool drawHiddenPoints_ = true;
    bool drawPointIds_ = false;
    bool useFixedPointIdColor_ = false;
    Font pointIdFont_;
    Color pointIdColor_{56, 180, 56};
    int pointMask_ = -1;
};

} // namespace Zem::Fig2
