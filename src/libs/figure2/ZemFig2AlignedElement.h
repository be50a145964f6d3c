// ZemFig2AlignedElement.h: AlignedElement, an area with a content of its own size.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2AreaBase.h"

#include <utility>

namespace Zem::Fig2 {

/// A content that is smaller than the area is aligned in it; one that is larger shows a part, which a handle moves.
class AlignedElement : public AreaBase
{
public:
    static constexpr QLatin1StringView PARAM_AUTO_SCALE{"auto_scale"};
    static constexpr QLatin1StringView PARAM_SCALING{"scaling"};
    static constexpr QLatin1StringView PARAM_ALIGN_X{"align_x"};
    static constexpr QLatin1StringView PARAM_ALIGN_Y{"align_y"};
    static constexpr QLatin1StringView PARAM_INNER_ORIGIN{"image_origin"};

    /// Whether the content follows the size of the element.
    bool getAutoScale() const { return autoScale_; }
    void setAutoScale(bool autoScale);
    double getScaling() const { return scaling_; }
    void setScaling(double scaling);
    /// Where a content smaller than the area lies in it.
    Alignment_t getAlignmentX() const { return alignmentX_; }
    void setAlignmentX(Alignment_t alignment);
    Alignment_t getAlignmentY() const { return alignmentY_; }
    void setAlignmentY(Alignment_t alignment);
    /// The offset of the visible part inside a content larger than the area.
    BaVec2d<double> const &getInnerOrigin() const { return innerOrigin_; }
    void setInnerOrigin(BaVec2d<double> const &origin);

    unsigned int getEstimatedObjectSize() const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// Only a content that does not fit can be dragged.
    bool hasHandle(BaVec2d<double> *position) const override;
    void handleDragStart() override;
    void handleMove(BaVec2d<double> const &delta) override;
    void handleDragEnd() override;

    /// The bounds of the inner origin, as the content defines them.
    virtual std::pair<BaVec2d<double>, BaVec2d<double>> getInnerOriginBounds() = 0;

protected:
    explicit AlignedElement(Type_t type);
    AlignedElement(AlignedElement const &) = default;
    AlignedElement &operator=(AlignedElement const &) = default;

    /// The full size of the content.
    virtual BaVec2d<double> getInnerElementSize() const = 0;

    /// Reads the block behind the area part, which the caller has opened, and closes it.
    void loadOpenAlignment(IO::InStream *stream);

    /// The extent and the top left corner of the part of a content that is seen.
    BaVec2d<double> computeInnerDrawingSize(BaVec2d<double> const &contentSize) const;
    BaVec2d<double> computeInnerDrawingOrigin(BaVec2d<double> const &contentSize) const;

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);

    bool autoScale_ = true;
    double scaling_ = 1.0;
    Alignment_t alignmentX_ = ALIGN_CENTER;
    Alignment_t alignmentY_ = ALIGN_CENTER;
    BaVec2d<double> innerOrigin_{0.0, 0.0};
    BaVec2d<double> handleOffset_{0.0, 0.0};
};

} // namespace Zem::Fig2
