#include "ZemFig2ImageLabel.h"

#include "ZemFig2Connector.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2ImageInterface.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"
#include "fig_loan.h"
#include "fig_motion.h"
#include "fig_value.h"

#include <ZemError.h>
#include <ZemLine2d.h>

#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr char const *SOURCE = "fig_image_label";
constexpr double TOLERANCE = 1e-50;
constexpr unsigned int ESTIMATED_SIZE = 672;

/// The lines that users of these errors know them by.
constexpr unsigned int COPY_LINE = 81;
constexpr unsigned int LABEL_VISIBLE_LINE = 455;
constexpr unsigned int LEGEND_DATA_LINE = 835;
constexpr unsigned int HISTOGRAM_DATA_LINE = 845;

} // namespace

ImageLabelTransformation::ImageLabelTransformation(ImageBase const *image, Transformation const *transformation)
    : Transformation(TYPE_IMAGE_LABEL), image_(image), transformation_(transformation)
{
}

Transformation *ImageLabelTransformation::copy() const
{
    throw ProgError("Zem::Fig2::ImageLabelTransformation::copy", SOURCE, COPY_LINE,
                    "Copy of ImageLabelTransformation object not supported");
}

Zem::Transformation ImageLabelTransformation::getTransformation()
{
    return motionOf(*transformation_);
}

bool ImageLabelTransformation::computeImagePoint(BaVec3d<double> const &point, BaVec2d<double> *image) const
{
    BaVec2d<double> pixel;
    if (!transformation_->computeImagePoint(point, &pixel))
        return false;
    *image = image_->getFigurePoint(pixel);
    return true;
}

bool ImageLabelTransformation::computeImagePoints(BaVec3d<double> const &point1, BaVec3d<double> const &point2,
                                                  BaVec2d<double> *image1, BaVec2d<double> *image2) const
{
    BaVec2d<double> pixel1;
    BaVec2d<double> pixel2;
    if (!transformation_->computeImagePoints(point1, point2, &pixel1, &pixel2))
        return false;
    *image1 = image_->getFigurePoint(pixel1);
    *image2 = image_->getFigurePoint(pixel2);
    return true;
}

ImageLabel::ImageLabel(ImageLabelCreator::Type_t type) : LabelBase(IMAGE_LABEL), labelType_(type)
{
}

ImageLabel::ImageLabel(ImageLabel const &other)
    : LabelBase(other), labelType_(other.labelType_), labelVisible_(other.labelVisible_),
      imageElementId_(other.imageElementId_),
      labelTokenContainer_(other.labelTokenContainer_ ? std::make_unique<TokenContainer>(*other.labelTokenContainer_)
                                                      : nullptr)
{
}

void ImageLabel::setLabelVisible(bool visible)
{
    if (!hasLabel())
        throw ProgError("Zem::Fig2::ImageLabel::setLabelVisible", SOURCE, LABEL_VISIBLE_LINE,
                        "Element does not support labels");
    labelVisible_ = visible;
    invalidate();
}

void ImageLabel::setHighlighted(bool highlighted)
{
    labelHighlighted_ = highlighted;
    invalidate();
}

void ImageLabel::setImageElementId(QString const &id)
{
    imageElementId_ = id;
    invalidate();
}

void ImageLabel::setTokenContainer(TokenContainer *container)
{
    labelTokenContainer_.reset(container);
    invalidate();
}

bool ImageLabel::getLegendData(Legend2::Data *) const
{
    throw ProgError("Zem::Fig2::ImageLabel::getLegendData", SOURCE, LEGEND_DATA_LINE, "Legend data not supported");
}

bool ImageLabel::getHistogramData(double, double, Legend2::HistogramData *) const
{
    throw ProgError("Zem::Fig2::ImageLabel::getHistogramData", SOURCE, HISTOGRAM_DATA_LINE,
                    "Histogram data not supported");
}

unsigned int ImageLabel::getEstimatedObjectSize() const
{
    return LabelBase::getEstimatedObjectSize() + ESTIMATED_SIZE;
}

bool ImageLabel::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    return !getVisible() || LabelBase::isDataValid(stage, tokens);
}

ImageBase *ImageLabel::getConnectedImage() const
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        if ((*it)->getSource() != this)
            continue;
        if (auto *image = dynamic_cast<ImageBase *>((*it)->getTarget()))
            return image;
    }
    return nullptr;
}

/// What `act` answers for the image of a visible label, for the way from space onto the page there and for the turn of
/// the image; `otherwise` when there is none.
template <class Act>
bool ImageLabel::onImage(FigureTokenInterface const *tokens, bool otherwise, Act const &act) const
{
    ImageBase const *image = getVisible() ? getConnectedImage() : nullptr;
    if (!image)
        return otherwise;
    ImageLoan const data(tokens, image->getToken());
    if (!data || !data->getTransformation())
        return otherwise;
    return act(image, ImageLabelTransformation(image, data->getTransformation()), Rotation(image));
}

bool ImageLabel::drawElement(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    return onImage(
        tokens, true,
        [&](ImageBase const *image, ImageLabelTransformation const &transformation, Rotation const &rotation) {
            painter->setClipping(Rect(image->computeImageDrawingOrigin(), image->computeImageDrawingSize()), rotation);
            bool const finished = drawImageElement(painter, transformation, rotation, image, step);
            painter->resetClipping();
            return finished;
        });
}

bool ImageLabel::intersectsImageElement(FigureTokenInterface const *tokens, BaVec2d<double> const &point) const
{
    return onImage(tokens, false,
                   [&](ImageBase const *, ImageLabelTransformation const &transformation, Rotation const &rotation) {
                       return intersectsElement(transformation, point, rotation);
                   });
}

bool ImageLabel::isLabelDrawn(FigureTokenInterface const *tokens) const
{
    if (!getVisible() || !getLabelVisible())
        return false;
    return getConnectorBegin() == getConnectorEnd() || isConnectorVisible(tokens) ||
           computeObjectPoint() == INVALID_CONNECTOR_POINT;
}

bool ImageLabel::drawLabel(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    return !isLabelDrawn(tokens) || LabelBase::draw(tokens, painter, step);
}

bool ImageLabel::draw(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    if (!getVisible())
        return true;
    if (step == 0) {
        drawPhase_ = 0;
        labelFirstStep_ = 0;
    }
    if (drawPhase_ == 0) {
        if (!drawElement(tokens, painter, step))
            return false;
        drawPhase_ = 1;
        labelFirstStep_ = step;
    }
    return drawLabel(tokens, painter, step - labelFirstStep_);
}

bool ImageLabel::computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens,
                                        BaVec2d<double> *from, BaVec2d<double> *to) const
{
    auto const *image = dynamic_cast<Image const *>(connector->getTarget());
    if (!getVisible() || connector->getSource() != this || !image)
        return false;
    BaVec3d<double> const point = computeObjectPoint();
    if (point == INVALID_POINT)
        return false;
    ImageLoan const data(tokens, image->getToken());
    if (!data || !data->getTransformation())
        return false;
    // The place is told even when no line leads there.
    if (!ImageLabelTransformation(image, data->getTransformation()).computeImagePoint(point, to))
        return false;
    if (image->hasAngle() && std::abs(image->getAngle()) > TOLERANCE)
        *to = Rotation(image).applyTo(*to);
    return getDragPolygon().intersect(LineSegment2d(Rotation(this).applyTo(getOrigin()), *to), from);
}

void ImageLabel::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    ImageInterface const *interface = ImageInterface::getInterface(this);
    if (interface && canLinkTo3D() && getLinkTo3D())
        interface->configureImageLabel(this);
    if (!getVisible())
        return;
    if (interface)
        interface->updateImageElement(this);
    LabelBase::computeDynamicData(stage, tokens);
    if (ImageBase const *image = getConnectedImage())
        addImageToUpdatePolygon(image);
}

/// The mark may be anywhere on the image.
void ImageLabel::addImageToUpdatePolygon(ImageBase const *image)
{
    Rotation const rotation(image);
    BaVec2d<double> const centre = image->getOrigin();
    BaVec2d<double> const half = image->getSize() * 0.5;
    for (BaVec2d<double> const &corner :
         {BaVec2d<double>(-half.x, -half.y), BaVec2d<double>(half.x, -half.y), half, BaVec2d<double>(-half.x, half.y)})
        updatePolygon_.addPoint(rotation.applyTo(centre + corner));
    updatePolygon_ = updatePolygon_.getConvexHull();
}

/// Its own container; without one, what the application knows of the measured thing of a connected label.
TokenInterface const *ImageLabel::getOwnSource() const
{
    if (labelTokenContainer_)
        return labelTokenContainer_.get();
    ImageInterface const *interface = ImageInterface::getInterface(this);
    bool const isConnected = getConnectorBegin() != getConnectorEnd();
    return interface && isConnected ? interface->getTokenInterface(imageElementId_) : nullptr;
}

unsigned int ImageLabel::getTokenModifiedCounter(FigureTokenInterface const *tokens, QString const &token) const
{
    // A label with values of its own needs no other tokens.
    unsigned int const counter = tokens ? LabelBase::getTokenModifiedCounter(tokens, token) : 0;
    TokenInterface const *source = getOwnSource();
    return source ? counter + source->getModifiedCounter(token) : counter;
}

namespace {

bool findValue(TokenInterface const *source, StageIdentifier const &stage, QString const &name, Value *value)
{
    if (!source)
        return false;
    *value = source->getValue(name, IndexIdentifier::NO_INDEX, stage);
    return hasValue(*value);
}

} // namespace

bool ImageLabel::resolveToken(StageIdentifier const &stage, FigureTokenInterface const *tokens, QString const &name,
                              Value *value)
{
    if (findValue(getOwnSource(), stage, name, value)) {
        noteToken(name, getTokenModifiedCounter(tokens, name));
        return true;
    }
    TokenInterface const *further = getTokenInterface();
    if (findValue(further, stage, name, value)) {
        // Its counter alone, deliberately: how it goes into that of the token is the matter of the derived class.
        noteToken(name, further->getModifiedCounter(name));
        return true;
    }
    return LabelBase::resolveToken(stage, tokens, name, value);
}

} // namespace Zem::Fig2
