// The update of ImageBase: what it learns from the data of its token.
#include "ZemFig2Image.h"

#include "ZemFig2Connector.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2ImageLabel.h"
#include "ZemFig2Label.h"
#include "ZemFig2Legend.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2SnapshotData.h"
#include "fig_loan.h"

#include <ZemImage.h>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr double TOLERANCE = 1e-50;
constexpr double SAME_SHARE = 1e-12; ///< of the maximum of a range; a minimum that near to it makes it empty

double limitedOrigin(double origin, double inner, double drawing)
{
    if (drawing >= inner)
        return 0.0;
    return std::min(origin, inner - drawing);
}

bool isEmptyRange(double minimum, double maximum)
{
    if (maximum == 0.0)
        return std::abs(minimum) <= TOLERANCE;
    return std::abs(minimum - maximum) <= std::abs(maximum) * SAME_SHARE;
}

/// Joins the statistics of several sources. What is known of one is kept as it is; of several only the extremes are.
class DataMerger
{
public:
    void add(Legend2::Data const &data)
    {
        if (!any_) {
            merged_ = data;
            any_ = true;
            return;
        }
        double const minimum = std::min(merged_.getDynamicMinimum(), data.getDynamicMinimum());
        double const maximum = std::max(merged_.getDynamicMaximum(), data.getDynamicMaximum());
        merged_.setDynamicMinimum(minimum);
        merged_.setDynamicMaximum(maximum);
        merged_.setSigmaValue((maximum - minimum) * 0.5);
        merged_.setAverage((minimum + maximum) * 0.5);
    }

    /// False, and `data` is left alone, when nothing was added.
    bool take(Legend2::Data *data) const
    {
        if (any_)
            *data = merged_;
        return any_;
    }

private:
    bool any_ = false;
    Legend2::Data merged_;
};

} // namespace

void ImageBase::computeScaling()
{
    if (!getAutoScale() || !(imageSize_.x > 0.0) || !(imageSize_.y > 0.0))
        return;
    BaVec2d<double> const drawing = getDrawingSize();
    setScaling(std::max(0.0, std::min(drawing.x / imageSize_.x, drawing.y / imageSize_.y)));
    setInnerOrigin({0.0, 0.0});
}

void ImageBase::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    AlignedElement::computeDynamicData(stage, tokens);
    dragPolygon_ = computeCoveredPolygon(false);
    coveredPolygon_ = dragPolygon_; // without the border, as the handles
    updatePolygon_ = computeCoveredPolygon(true);

    FigureTokenInterface const *source = token_.isEmpty() ? nullptr : tokens;
    ImageLoan const image(source, token_);
    SnapshotLoan const snapshot(source, token_);
    hasData_ = image || snapshot;
    if (hasData_)
        tokenModifiedCounter_ = tokens->getModifiedCounter(token_);
    updateImageSize(image.get(), snapshot.get());
    limitInnerOrigin();
    if (image)
        addLabelEnds(*image.get(), &updatePolygon_);
    updateScale(image.get(), snapshot.get());
}

/// The picture has priority.
void ImageBase::updateImageSize(ImageData const *image, SnapshotData const *snapshot)
{
    imageSize_ = {0.0, 0.0};
    if (image && image->getImage())
        imageSize_ = {static_cast<double>(image->getImage()->getWidth()),
                      static_cast<double>(image->getImage()->getHeight())};
    else if (snapshot && snapshot->getFigure())
        imageSize_ = snapshot->getFigure()->getSize();
    else if (getAutoScale())
        setScaling(1.0);
    computeScaling();
}

void ImageBase::limitInnerOrigin()
{
    BaVec2d<double> const inner = getInnerElementSize();
    if (!(inner.x > 0.0) || !(inner.y > 0.0))
        return;
    BaVec2d<double> const drawing = getDrawingSize();
    setInnerOrigin(
        {limitedOrigin(getInnerOrigin().x, inner.x, drawing.x), limitedOrigin(getInnerOrigin().y, inner.y, drawing.y)});
}

/// Where the lines of connected labels begin.
void ImageBase::addLabelEnds(ImageData const &image, Polygon2d *polygon) const
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        auto const *label = dynamic_cast<Label const *>((*it)->getSource());
        ImageDataObject const *object = image.getObject((*it)->getTargetName());
        if ((*it)->getTarget() != this || !label || !object)
            continue;
        BaVec2d<double> const begin = Rotation(label).applyTo(label->getOrigin());
        BaVec2d<double> const way = getFigurePoint(object->getConnectorPoint()) - begin;
        double const length = way.length();
        double const half = label->getConnectorStyle().getWidth() * 0.5;
        BaVec2d<double> aside(0.0, 0.0);
        if (!(length < TOLERANCE))
            aside = BaVec2d<double>(way.y, -way.x) * (half / length);
        polygon->addPoint(begin + aside);
        polygon->addPoint(begin - aside);
    }
    *polygon = polygon->getConvexHull();
}

void ImageBase::resetScale()
{
    computedLegend_ = Legend2::Legend(uLength);
    computedLegendData_ = Legend2::Data();
}

/// Colours come from a connected legend, else from the data.
void ImageBase::updateScale(ImageData const *image, SnapshotData const *snapshot)
{
    bool conflict = false;
    bool const found = takeScaleOfLegends(&conflict);
    if (conflict || (!found && !takeScaleOfData(image, snapshot)))
        resetScale();
}

/// Whether a legend is connected. Legends that contradict each other, or one that shows tolerances, are a conflict.
bool ImageBase::takeScaleOfLegends(bool *conflict)
{
    bool found = false;
    for (auto it = getConnectorBegin(); it != getConnectorEnd() && !*conflict; ++it) {
        auto const *legend = dynamic_cast<Legend const *>((*it)->getSource());
        if (!legend)
            continue;
        if (!found) {
            computedLegend_ = legend->getShownLegend();
            computedLegendData_ = legend->getShownData();
        }
        *conflict = legend->getShownToleranceMode() || !(computedLegend_ == legend->getShownLegend()) ||
                    !(computedLegendData_ == legend->getShownData());
        found = true;
    }
    return found;
}

bool ImageBase::takeScaleOfData(ImageData const *image, SnapshotData const *snapshot)
{
    if (image && image->getLegendData(&computedLegend_, &computedLegendData_)) {
        if (image->getCanDrawLegendColors())
            computeImageLabelLegendData(&computedLegendData_);
        return true;
    }
    return snapshot && snapshot->getFigure() && snapshot->getLegendData(&computedLegend_, &computedLegendData_) &&
           !snapshot->showTolerances();
}

std::vector<ImageLabel const *> ImageBase::collectLabelsWithScale() const
{
    std::vector<ImageLabel *> labels;
    collectImageLabels(&labels);
    std::erase_if(labels, [](ImageLabel const *label) { return !label->getVisible() || !label->hasLegendData(); });
    return {labels.begin(), labels.end()};
}

/// False, and `data` is left alone, when no label has statistics.
bool ImageBase::computeImageLabelLegendData(Legend2::Data *data) const
{
    DataMerger merger;
    for (ImageLabel const *label : collectLabelsWithScale()) {
        Legend2::Data ofLabel;
        if (label->getLegendData(&ofLabel))
            merger.add(ofLabel);
    }
    return merger.take(data);
}

/// Empty when the labels' counts cannot be added up.
void ImageBase::computeImageLabelHistogram(double minimum, double maximum, Legend2::HistogramData *histogram) const
{
    histogram->clear();
    if (isEmptyRange(minimum, maximum))
        return;
    for (ImageLabel const *label : collectLabelsWithScale()) {
        Legend2::HistogramData ofLabel;
        if (label->getHistogramData(minimum, maximum, &ofLabel) && !histogram->addHistogram(ofLabel)) {
            histogram->clear();
            return;
        }
    }
}

bool ImageBase::getLegendData(FigureTokenInterface const *tokens, Legend2::Legend *legend, Legend2::Data *data,
                              bool *showTolerances, Legend2::ToleranceParams *tolerance,
                              Legend2::HistogramData *histogram, bool *canDrawColors) const
{
    if (canDrawColors)
        *canDrawColors = false;
    if (token_.isEmpty())
        return false;
    Legend2::HistogramData own;
    if (!histogram)
        histogram = &own;
    if (ImageLoan const image(tokens, token_); image) {
        if (!image->getLegendData(legend, data, histogram))
            return false;
        if (image->getCanDrawLegendColors()) {
            computeImageLabelLegendData(data);
            computeImageLabelHistogram(data->getDynamicMinimum(), data->getDynamicMaximum(), histogram);
        }
        if (canDrawColors)
            *canDrawColors = image->getCanDrawLegendColors();
        *showTolerances = false;
        *tolerance = Legend2::ToleranceParams();
        return true;
    }
    SnapshotLoan const snapshot(tokens, token_);
    if (!snapshot || !snapshot->getLegendData(legend, data))
        return false;
    *showTolerances = snapshot->showTolerances();
    *tolerance = snapshot->getToleranceParams();
    *histogram = snapshot->getHistogramData();
    return true;
}

} // namespace Zem::Fig2
