// ZemFig2ImageLabel.h: ImageLabel, something measured in an image: a mark on the image and a label beside it.
// Layer: labels. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2ImageLabelCreator.h"
#include "ZemFig2LabelBase.h"
#include "ZemFig2Transformation.h"

#include <ZemTokenContainer.h>

#include <limits>
#include <memory>

namespace Zem::Fig2 {

class ImageBase;

/// Takes points of space to points of the page, as the picture lies in an image element that is not turned: results
/// are millimetres. Owns nothing, and lives for the length of one call.
class ImageLabelTransformation : public Transformation
{
public:
    /// Neither is null.
    ImageLabelTransformation(ImageBase const *image, Transformation const *transformation);

    /// From space to pixels of the picture.
    Transformation const *getPictureTransformation() const { return transformation_; }

    /// Throws ProgError.
    Transformation *copy() const override;
    Zem::Transformation getTransformation() override;
    bool computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const override;
    bool computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2, BaVec2d<double> *image1,
                            BaVec2d<double> *image2) const override;

private:
    ImageBase const *image_;
    Transformation const *transformation_;
};

/// Belongs to the first image that it is connected to, and is drawn with it: first the mark, clipped to the picture,
/// then the box of text with its connector. What is measured, and how its mark looks, a derived class knows; its
/// creator makes it when a file is loaded.
///
/// The values of the tokens in its text come from the label itself first: from its own container, which outlives the
/// measurement, or from the image interface of the figure.
class ImageLabel : public LabelBase
{
public:
    /// Of the labels of one image, those with a higher priority are drawn first, beneath the others.
    enum DrawingPriority_t : int { DEFAULT_DRAWING_PRIORITY = 500 };

    static constexpr QLatin1StringView PARAM_LABEL_VISIBLE{"image_label_label_visible"};
    static constexpr QLatin1StringView PARAM_IMAGE_ELEMENT_ID{"image_label_element_id"};

    static constexpr double INVALID_VALUE = std::numeric_limits<double>::max();
    /// How near to a mark, in page units, a point hits it.
    static constexpr double INTERSECTION_TOLERANCE = 1.0;
    /// The object point of what has none now: neither a connector nor the label is drawn.
    static constexpr BaVec3d<double> INVALID_POINT{INVALID_VALUE, INVALID_VALUE, INVALID_VALUE};
    /// The object point of what leads nowhere and is to be seen all the same: the class then also answers true to
    /// getDrawUnconnected().
    static constexpr BaVec3d<double> INVALID_CONNECTOR_POINT{INVALID_VALUE, INVALID_VALUE, 0.0};
    /// For the marks of labels with getHighlighted().
    static constexpr Color HIGHLIGHTED_COLOR{100, 100, 255};

    /// Compares x alone.
    static bool isValidPoint(BaVec3d<double> const &point) { return point.x != INVALID_POINT.x; }

    ImageLabelCreator::Type_t getLabelType() const { return labelType_; }
    /// Whether the box of text is drawn too; false for a class that has none.
    bool getLabelVisible() const { return labelVisible_ && hasLabel(); }
    /// Throws ProgError for a class that has none.
    void setLabelVisible(bool visible);
    /// Of the mark; not stored and not copied. The box has the isHighlighted() of all elements.
    bool getHighlighted() const { return labelHighlighted_; }
    void setHighlighted(bool highlighted);
    /// What ImageInterface knows the measured thing by.
    QString const &getImageElementId() const { return imageElementId_; }
    void setImageElementId(QString const &id);
    /// Values that the label keeps itself; may be null.
    TokenContainer const *getTokenContainer() const { return labelTokenContainer_.get(); }
    /// Takes ownership of `container`, which may be null, and deletes the one of before.
    void setTokenContainer(TokenContainer *container);

    /// The target of the first connector that leads from this label to an image; null without one.
    ImageBase *getConnectedImage() const;
    /// Whether the box of text is to be seen: that of an object point outside the picture vanishes with its connector.
    bool isLabelDrawn(FigureTokenInterface const *tokens) const;
    /// Draws a step of the box of text.
    bool drawLabel(FigureTokenInterface const *tokens, Painter *painter, int step) const;
    /// Draws a step of the mark.
    bool drawElement(FigureTokenInterface const *tokens, Painter *painter, int step) const;
    /// Whether the mark is hit at a point of the page.
    bool intersectsImageElement(FigureTokenInterface const *tokens, BaVec2d<double> const &point) const;

    /// Whether the class has a box of text.
    virtual bool hasLabel() const { return true; }
    /// Whether the mark is hit at `point` of the page. `transformation` gives page points, which `rotation` turns.
    virtual bool intersectsElement(ImageLabelTransformation const &transformation, BaVec2d<double> const &point,
                                   Rotation const &rotation) const = 0;
    virtual DrawingPriority_t getDrawingPriority() { return DEFAULT_DRAWING_PRIORITY; }
    /// Further values for the tokens in the text, asked behind the label's own; null for none. Stays the label's. A
    /// class that has some adds their counter in getTokenModifiedCounter, or the text is resolved at every update.
    virtual TokenInterface const *getTokenInterface() const { return nullptr; }
    /// Where the measured thing is in space; INVALID_POINT or INVALID_CONNECTOR_POINT when that means nothing.
    virtual BaVec3d<double> computeObjectPoint() const = 0;
    using LabelBase::getLegendData;
    /// The statistics of what the mark shows in the colours of the image's legend; false when there are none now.
    /// Throws ProgError unless hasLegendData().
    virtual bool getLegendData(Legend2::Data *data) const;
    /// The distribution of the same values between two bounds. Throws ProgError unless hasLegendData().
    virtual bool getHistogramData(double minimum, double maximum, Legend2::HistogramData *histogram) const;
    /// Draws one step of the mark, counted from 0; true means that it is finished. `transformation` gives page points;
    /// `rotation` goes to the painter with them. The painter is clipped to the picture.
    virtual bool drawImageElement(Painter *painter, ImageLabelTransformation const &transformation,
                                  Rotation const &rotation, ImageBase const *image, int step) const = 0;

    unsigned int getEstimatedObjectSize() const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    bool computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens, BaVec2d<double> *from,
                                BaVec2d<double> *to) const override;
    /// The steps of the mark, and from the last of them on those of the box.
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool canLinkTo3D() const override { return true; }
    bool hasLegendData() const override { return false; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;
    bool getDrawUnconnected() const override { return false; }
    unsigned int getTokenModifiedCounter(FigureTokenInterface const *tokens, QString const &token) const override;
    bool resolveToken(StageIdentifier const &stage, FigureTokenInterface const *tokens, QString const &name,
                      Value *value) override;

protected:
    explicit ImageLabel(ImageLabelCreator::Type_t type);
    ImageLabel(ImageLabel const &other);
    ImageLabel &operator=(ImageLabel const &) = delete;

private:
    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self, bool &hasContainer);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);
    template <class Act>
    bool onImage(FigureTokenInterface const *tokens, bool otherwise, Act const &act) const;
    TokenInterface const *getOwnSource() const;
    void addImageToUpdatePolygon(ImageBase const *image);

    ImageLabelCreator::Type_t labelType_;
    bool labelVisible_ = true;
    bool labelHighlighted_ = false;
    QString imageElementId_;
    std::unique_ptr<TokenContainer> labelTokenContainer_;
    mutable int drawPhase_ = 0;      ///< 0 while the mark is drawn, 1 while the label is
    mutable int labelFirstStep_ = 0; ///< the step in which the mark was finished
};

} // namespace Zem::Fig2
