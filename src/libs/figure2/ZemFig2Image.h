// ZemFig2Image.h: ImageBase, what image elements have in common, and Image, the plain one.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2AlignedElement.h"
#include "ZemFig2CoordinateSystem.h"
#include "ZemFig2ImageConversion.h"
#include "ZemFig2ImageDataVisualisation.h"

#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>

#include <map>
#include <vector>

namespace Zem {
class Image;
class ImageColor;
} // namespace Zem

namespace Zem::Fig2 {

class ImageData;
class ImageLabel;
class Label;
class Legend;
class SnapshotData;
class SnapshotFrame;
class Transformation;

/// Shows in its rectangle what the token interface lends under one token: a picture with overlay, marks and the axes of
/// space, or a snapshot of another figure. A pixel p of the picture (its corner is the origin) lies on the page, before
/// the rotation, at computeImageDrawingOrigin() - getInnerOrigin() + p * getScaling(): the inner origin is in page
/// millimetres from the picture's corner.
///
/// Data are borrowed for the length of a call. What an update leaves behind is the size of the picture and the colour
/// scale: that of the connected legends, or else that of the data.
class ImageBase : public AlignedElement
{
public:
    /// Stored in files: never renumber.
    enum OverlayMode : unsigned int {
        OVERLAY_BOTH = 0,
        OVERLAY_IMAGE = 1, ///< the picture alone
        OVERLAY_ONLY = 2   ///< the overlay in place of the picture, not converted
    };
    using Visualisations = std::map<QString, ImageDataVisualisation>;

    static constexpr QLatin1StringView PARAM_TOKEN{"token"};
    static constexpr QLatin1StringView PARAM_IMAGE_CONVERSION{"image_conversion"};
    static constexpr QLatin1StringView PARAM_OVERLAY_MODE{"overlay_mode"};
    static constexpr QLatin1StringView PARAM_IMAGE_COORD_SYSTEM{"image_cs"};
    static constexpr QLatin1StringView PARAM_VISUALISATIONS{"visualisations"};
    static constexpr QLatin1StringView PARAM_IMAGE_BACKGROUND_COLOR{"image_background_color"};
    static constexpr QLatin1StringView PARAM_USE_IMAGE_BACKGROUND_COLOR{"use_image_background_color"};

    /// Names of tokens and icons by which the parts of an application agree; not used here.
    static constexpr QLatin1StringView TOKEN_IMAGE_NAME{"IMAGE_NAME"};
    static constexpr QLatin1StringView TOKEN_IMAGE_VECTOR_MODE{"IMAGE_VECTOR_MODE"};
    static constexpr QLatin1StringView TOKEN_IMAGE_VECTOR_COMBINED{"IMAGE_VECTOR_COMBINED"};
    static constexpr QLatin1StringView TOKEN_IMAGE_VECTOR_FILTER{"IMAGE_VECTOR_FILTER"};
    static constexpr QLatin1StringView IMAGE_ICON_CAMERA_GROUP{"Zem_Figure2_image_icon_camera_group"};
    static constexpr QLatin1StringView IMAGE_ICON_CAMERA{"Zem_Figure2_image_icon_camera"};
    static constexpr QLatin1StringView IMAGE_ICON_CAMERA_SELECTED{"Zem_Figure2_image_icon_camera_selected"};
    static constexpr QLatin1StringView IMAGE_ICON_SNAPSHOT_GROUP{"Zem_Figure2_image_icon_snapshot_group"};
    static constexpr QLatin1StringView IMAGE_ICON_SNAPSHOT{"Zem_Figure2_image_icon_snapshot"};
    static constexpr QLatin1StringView IMAGE_ICON_SNAPSHOT_SELECTED{"Zem_Figure2_image_icon_snapshot_selected"};

    /// Under this name the token interface lends picture and snapshot. Empty for an element that shows nothing. It is
    /// not part of the text form.
    QString const &getToken() const { return token_; }
    void setToken(QString const &token);
    CoordinateSystem const &getCoordinateSystem() const { return coordinateSystem_; }
    void setCoordinateSystem(CoordinateSystem const &coordinateSystem);
    /// Of the picture; overlays are shown as they are.
    ImageConversion const &getImageConversion() const { return imageConversion_; }
    void setImageConversion(ImageConversion const &conversion);
    OverlayMode getOverlayMode() const { return overlayMode_; }
    void setOverlayMode(OverlayMode mode);
    /// Fills the part of the element that the picture takes.
    Color const &getImageBackgroundColor() const { return imageBackgroundColor_; }
    void setImageBackgroundColor(Color const &color);
    bool getUseImageBackgroundColor() const { return useImageBackgroundColor_; }
    void setUseImageBackgroundColor(bool use);
    /// The look of the object with this id: its own, or that of the id "", or the default look.
    ImageDataVisualisation getVisualisation(QString const &id) const;
    void setVisualisation(QString const &id, ImageDataVisualisation const &visualisation);
    Visualisations const &getVisualisations() const { return visualisations_; }

    /// The colour scale of the vectors as of the last update.
    Legend2::Legend const &getComputedLegend() const { return computedLegend_; }
    Legend2::Data const &getComputedLegendData() const { return computedLegendData_; }
    /// What elements of older files showed; empty otherwise, and of a copy.
    std::vector<QString> const &getImportedMeasurements() const { return own_.measurements; }
    std::vector<QString> const &getImportedVectorFields() const { return own_.vectorFields; }

    /// From picture pixels to the page, before the rotation, and back.
    BaVec2d<double> getFigurePoint(BaVec2d<double> const &imagePoint) const;
    BaVec2d<double> getImagePoint(BaVec2d<double> const &figurePoint) const;
    /// Top left corner and extent of the part of the element that the picture takes, before the rotation.
    BaVec2d<double> computeImageDrawingOrigin() const;
    BaVec2d<double> computeImageDrawingSize() const;

    /// Configures the label as the last one of its type that was stored here. False, and the label is left alone, when
    /// there was none. Throws what the label's loadFromStream throws.
    bool getImageLabelConfiguration(ImageLabel *label) const;
    void setImageLabelConfiguration(ImageLabel const *label);
    /// Appends the image labels that are connected to this element, in the order of the connectors.
    void collectImageLabels(std::vector<ImageLabel *> *labels) const;

    static QString getOverlayModeParameter(OverlayMode mode);
    /// Appends the labels of the figure that lead to a fixed point.
    static void collectLabelsWithConnectors(Figure const *figure, std::vector<Label const *> *labels);
    /// Draws the lines to fixed points of those labels that stand on the image, or whose line crosses its outline. The
    /// result is whether there was one.
    static bool drawLabelConnectors(Painter *painter, ImageBase const *image, std::vector<Label const *> const &labels);

    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &token) const override { return token == token_; }
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// A newer version of the text form throws IO::StreamException, a look with a negative length ProgError.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// Resizes the element; the picture stays where it is on the page.
    bool dragPointMove(int index, BaVec2d<double> const &position) override;
    /// The picture in the first step, then the marks, one step of one object at a time, unless the painter's mode is 0,
    /// and last the axes. Without data a text stands in its place.
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool hasMaximize() const override { return true; }
    bool hasLegendData() const override { return true; }
    bool getLegendData(FigureTokenInterface const *tokens, Legend2::Legend *legend, Legend2::Data *data,
                       bool *showTolerances, Legend2::ToleranceParams *tolerance, Legend2::HistogramData *histogram,
                       bool *canDrawColors) const override;
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;
    std::pair<BaVec2d<double>, BaVec2d<double>> getInnerOriginBounds() override;
    BaVec2d<double> getInnerElementSize() const override;
    /// Fills the rectangle with the background colour of the picture, if it has one.
    virtual void drawImageBackground(Painter *painter, BaVec2d<double> const &origin,
                                     BaVec2d<double> const &size) const;

protected:
    explicit ImageBase(Type_t type);
    /// As copies of elements are, and without what was imported and configured.
    ImageBase(ImageBase const &) = default;
    ImageBase &operator=(ImageBase const &) = default;

    /// Reads what stands behind the blocks of AlignedElement.
    void loadImage(IO::InStream *stream);

private:
    /// What assignment takes along and a copy begins without.
    struct Own
    {
        std::vector<QString> measurements;
        std::vector<QString> vectorFields;
        std::map<int, QString> labelConfigurations; ///< text forms by type of image label

        Own() = default;
        Own(Own const &) {}
        Own &operator=(Own const &) = default;
    };
    /// The drawing steps from `firstStep` on belong to the object.
    struct StepPlan
    {
        QString object;
        unsigned int firstStep = 0;
    };
    struct ShownPicture;
    class ObjectPainter;

    // The update.
    void computeScaling();
    void updateImageSize(ImageData const *image, SnapshotData const *snapshot);
    void limitInnerOrigin();
    void addLabelEnds(ImageData const &image, Polygon2d *polygon) const;
    void updateScale(ImageData const *image, SnapshotData const *snapshot);
    bool takeScaleOfLegends(bool *conflict);
    bool takeScaleOfData(ImageData const *image, SnapshotData const *snapshot);
    void resetScale();
    std::vector<ImageLabel const *> collectLabelsWithScale() const;
    bool computeImageLabelLegendData(Legend2::Data *data) const;
    void computeImageLabelHistogram(double minimum, double maximum, Legend2::HistogramData *histogram) const;

    // The drawing.
    Rect getImageRect() const;
    QString getPlaceholder() const;
    void drawErrorMessage(QString const &text, Painter *painter) const;
    void drawMissing(QString const &text, Painter *painter) const;
    void drawMessage(QString const &text, Painter *painter) const;
    ShownPicture choosePicture(ImageData const &image) const;
    bool drawImage(FigureTokenInterface const *tokens, ImageData const &image, Painter *painter, int step) const;
    void drawPicture(FigureTokenInterface const *tokens, ShownPicture const &shown, Painter *painter) const;
    bool drawObjects(ImageData const &image, Painter *painter, int step) const;
    bool drawNextObject(ImageData const &image, Painter *painter, int step) const;
    void planSteps(ImageData const &image) const;
    void drawCoordinateSystem(ImageData const &image, Painter *painter) const;
    bool drawSnapshot(SnapshotData const &snapshot, Painter *painter, int step) const;
    bool drawNested(Figure const &figure, Rect const &rect, Painter *painter, int step) const;

    // The persistent forms.
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Reader>
    void readBlock(Reader &reader);
    template <class Reader>
    void readScale(Reader &reader);
    void loadToken(IO::InStream *stream);
    void loadVisualisations(IO::InStream *stream, unsigned int version);
    template <class Reader>
    void readVisualisations(Reader &reader);
    void takeVisualisations(std::vector<QString> const &entries);

    QString token_;
    CoordinateSystem coordinateSystem_;
    ImageConversion imageConversion_;
    OverlayMode overlayMode_ = OVERLAY_BOTH;
    Visualisations visualisations_;
    Own own_;
    Color imageBackgroundColor_{255, 255, 255};
    bool useImageBackgroundColor_ = false;

    // Derived.
    unsigned int tokenModifiedCounter_ = 0xFFFFFFFFU;
    bool hasData_ = false;
    Legend2::Legend computedLegend_{uLength};
    Legend2::Data computedLegendData_;
    BaVec2d<double> imageSize_{0.0, 0.0}; ///< pixels, or page millimetres of a snapshot
    mutable std::vector<StepPlan> steps_; ///< of the drawing that has begun last
    mutable unsigned int numberOfSteps_ = 0;
    mutable bool drawsSnapshot_ = false;
};

/// The plain image element.
class Image : public ImageBase
{
public:
    Image();
    Image(Image const &) = default;
    /// What the frame has in common with it.
    explicit Image(SnapshotFrame const *frame);

    Image *copy() const override { return new Image(*this); }
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
};

} // namespace Zem::Fig2
