// The settings and the geometry of ImageBase.
#include "ZemFig2Image.h"

#include "ZemFig2Connector.h"
#include "ZemFig2ImageLabel.h"
#include "ZemFig2SnapshotFrame.h"
#include "ZemFig2Tools.h"
#include "fig_loan.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int ESTIMATED_SIZE = 384;
constexpr unsigned int ESTIMATED_LOOK_SIZE = 96;
constexpr unsigned int ESTIMATED_CONFIGURATION_SIZE = 4;
constexpr double LEAST_OVERLAP = 1.0; ///< of a resized element with the rest of its picture, page millimetres

unsigned int textSize(QString const &text)
{
    return 2 * static_cast<unsigned int>(text.size());
}

unsigned int textSize(std::vector<QString> const &texts)
{
    unsigned int size = 0;
    for (QString const &text : texts)
        size += textSize(text);
    return size;
}

} // namespace

ImageBase::ImageBase(Type_t type) : AlignedElement(type)
{
    AlignedElement::setBorder(LineStyle::null);
}

void ImageBase::setToken(QString const &token)
{
    token_ = token;
    invalidate();
}

void ImageBase::setCoordinateSystem(CoordinateSystem const &coordinateSystem)
{
    coordinateSystem_ = coordinateSystem;
    invalidate();
}

void ImageBase::setImageConversion(ImageConversion const &conversion)
{
    imageConversion_ = conversion;
    invalidate();
}

void ImageBase::setOverlayMode(OverlayMode mode)
{
    overlayMode_ = mode;
    invalidate();
}

void ImageBase::setImageBackgroundColor(Color const &color)
{
    imageBackgroundColor_ = color;
    invalidate();
}

void ImageBase::setUseImageBackgroundColor(bool use)
{
    useImageBackgroundColor_ = use;
    invalidate();
}

ImageDataVisualisation ImageBase::getVisualisation(QString const &id) const
{
    for (QString const &key : {id, QString()}) {
        auto const found = visualisations_.find(key);
        if (found != visualisations_.end())
            return found->second;
    }
    return ImageDataVisualisation(false);
}

void ImageBase::setVisualisation(QString const &id, ImageDataVisualisation const &visualisation)
{
    visualisations_.insert_or_assign(id, visualisation);
    invalidate();
}

bool ImageBase::getImageLabelConfiguration(ImageLabel *label) const
{
    auto const found = own_.labelConfigurations.find(label->getLabelType());
    if (found == own_.labelConfigurations.end())
        return false;
    std::istringstream stream(found->second.toStdString());
    label->loadFromStream(stream);
    return true;
}

void ImageBase::setImageLabelConfiguration(ImageLabel const *label)
{
    std::ostringstream stream;
    label->saveToStream(stream);
    own_.labelConfigurations.insert_or_assign(label->getLabelType(), QString::fromStdString(stream.str()));
}

void ImageBase::collectImageLabels(std::vector<ImageLabel *> *labels) const
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        if (auto *label = dynamic_cast<ImageLabel *>((*it)->getSource()))
            labels->push_back(label);
    }
}

unsigned int ImageBase::getEstimatedObjectSize() const
{
    unsigned int size = AlignedElement::getEstimatedObjectSize() + ESTIMATED_SIZE;
    for (auto const &[id, visualisation] : visualisations_)
        size += ESTIMATED_LOOK_SIZE + textSize(id);
    for (auto const &[type, text] : own_.labelConfigurations)
        size += ESTIMATED_CONFIGURATION_SIZE + textSize(text);
    return size + textSize(own_.measurements) + textSize(own_.vectorFields);
}

BaVec2d<double> ImageBase::getInnerElementSize() const
{
    return imageSize_ * getScaling();
}

std::pair<BaVec2d<double>, BaVec2d<double>> ImageBase::getInnerOriginBounds()
{
    BaVec2d<double> const hidden = getInnerElementSize() - getDrawingSize();
    return {{0.0, 0.0}, {std::max(0.0, hidden.x), std::max(0.0, hidden.y)}};
}

BaVec2d<double> ImageBase::computeImageDrawingOrigin() const
{
    return computeInnerDrawingOrigin(getInnerElementSize());
}

BaVec2d<double> ImageBase::computeImageDrawingSize() const
{
    return computeInnerDrawingSize(getInnerElementSize());
}

BaVec2d<double> ImageBase::getFigurePoint(BaVec2d<double> const &imagePoint) const
{
    return computeImageDrawingOrigin() + imagePoint * getScaling() - getInnerOrigin();
}

BaVec2d<double> ImageBase::getImagePoint(BaVec2d<double> const &figurePoint) const
{
    return (figurePoint - computeImageDrawingOrigin() + getInnerOrigin()) / getScaling();
}

bool ImageBase::dragPointMove(int index, BaVec2d<double> const &position)
{
    // How the picture has to move along with each corner, in the axes of the element.
    static constexpr std::array<BaVec2d<double>, 4> CORRECTIONS{{{-1.0, -1.0}, {-1.0, 0.0}, {0.0, 0.0}, {0.0, -1.0}}};
    auto const corner = static_cast<std::size_t>(index);
    BaVec2d<double> delta;
    if (index >= 0 && corner < dragPolygon_.size())
        delta = position - dragPolygon_[corner];
    if (!AlignedElement::dragPointMove(index, position))
        return false;
    BaVec2d<double> const turned = Tools::rotateVector(delta, -getAngle());
    computeScaling();
    BaVec2d<double> const wanted =
        getInnerOrigin() - BaVec2d<double>(turned.x * CORRECTIONS[corner].x, turned.y * CORRECTIONS[corner].y);
    BaVec2d<double> const hidden = getInnerElementSize() - getDrawingSize();
    setInnerOrigin({std::max(0.0, std::min(wanted.x, hidden.x - LEAST_OVERLAP)),
                    std::max(0.0, std::min(wanted.y, hidden.y - LEAST_OVERLAP))});
    return true;
}

bool ImageBase::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    bool const valid = AlignedElement::isDataValid(stage, tokens);
    if (token_.isEmpty())
        return valid && !hasData_;
    ImageLoan const image(tokens, token_);
    SnapshotLoan const snapshot(tokens, token_);
    bool const lent = image || snapshot;
    if (!valid || lent != hasData_ || (lent && tokens->getModifiedCounter(token_) != tokenModifiedCounter_))
        return false;
    // The scale spans the values of the labels.
    std::vector<ImageLabel *> labels;
    collectImageLabels(&labels);
    return std::all_of(labels.begin(), labels.end(),
                       [](ImageLabel const *label) { return !label->getVisible() || label->isValid(); });
}

Image::Image() : ImageBase(IMAGE)
{
}

Image::Image(SnapshotFrame const *frame) : ImageBase(*frame)
{
    setType(IMAGE);
}

} // namespace Zem::Fig2
