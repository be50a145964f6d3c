#include "ZemFig2SnapshotData.h"

#include "ZemFig2Calculator.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2SnapshotInterface.h"
#include "ZemFig2TokenContainer.h"

#include <ZemImage.h>
#include <ZemTokenContainer.h>

#include <utility>

namespace Zem::Fig2 {

namespace {

template <class T>
std::unique_ptr<T> copyOf(std::unique_ptr<T> const &object)
{
    return object ? std::make_unique<T>(*object) : nullptr;
}

/// The picture at the bottom of a white page that it fills.
std::unique_ptr<Figure> pageOf(Zem::Image const &picture, ImageConversion const &conversion)
{
    double const pixel = Calculator::getInstance()->getScreenPixelSizeMM();
    BaVec2d<double> const size(picture.getWidth() * pixel, picture.getHeight() * pixel);
    auto element = std::make_unique<Image>();
    element->setToken(SnapshotData::TOKEN_SNAPSHOT_IMAGE);
    element->setSize(size);
    element->setOrigin(size * 0.5);
    element->setInnerOrigin({0.0, 0.0});
    element->setImageConversion(conversion);
    auto figure = std::make_unique<Figure>();
    figure->setSize(size);
    figure->setBackground(FillStyle(Color(255, 255, 255)));
    figure->getRoot()->addChild(element.release());
    return figure;
}

} // namespace

SnapshotData::SnapshotData() = default;

SnapshotData::SnapshotData(StageIdentifier const &stage, Figure *figure, FigureTokenContainer *tokens)
    : tokenContainer_(tokens), stage_(stage), figure_(figure)
{
    renewTokenInterface();
    if (figure && figure->getChartInterface())
        freezeCharts(figure);
    switchSystemFontOff(figure);
}

SnapshotData::SnapshotData(StageIdentifier const &stage, Figure const *source, SnapshotElementFilter const &filter)
    : tokenContainer_(std::make_unique<FigureTokenContainer>()), stage_(stage), figure_(std::make_unique<Figure>())
{
    renewTokenInterface();
    figure_->setBackground(source->getBackground());
    figure_->setSize(source->getSize());
    merge(stage, source, {0.0, 0.0}, filter);
}

SnapshotData::SnapshotData(StageIdentifier const &stage, Zem::Image const *image, ImageConversion const &conversion)
    : tokenContainer_(std::make_unique<FigureTokenContainer>()), stage_(stage), figure_(pageOf(*image, conversion))
{
    renewTokenInterface();
    auto data = std::make_unique<ImageData>();
    data->setImage(image);
    TokenInfo const info(TokenInfo::TYPE_IMAGE, TOKEN_SNAPSHOT_IMAGE, QString());
    tokenContainer_->setValue(info, data.release(), true);
}

SnapshotData::SnapshotData(SnapshotData const &other)
    : tokenContainer_(copyOf(other.tokenContainer_)), projectTokenContainer_(copyOf(other.projectTokenContainer_)),
      stage_(other.stage_), chartInterface_(copyOf(other.chartInterface_)), figure_(copyOf(other.figure_)),
      scale_(other.scale_), drawingMode_(other.drawingMode_)
{
    if (other.tokenInterface_)
        renewTokenInterface();
    connectFigure();
}

SnapshotData &SnapshotData::operator=(SnapshotData const &other)
{
    SnapshotData copy(other);
    swap(copy);
    return *this;
}

SnapshotData::~SnapshotData() = default;

void SnapshotData::swap(SnapshotData &other) noexcept
{
    std::swap(tokenContainer_, other.tokenContainer_);
    std::swap(projectTokenContainer_, other.projectTokenContainer_);
    std::swap(stage_, other.stage_);
    std::swap(tokenInterface_, other.tokenInterface_);
    std::swap(chartInterface_, other.chartInterface_);
    std::swap(figure_, other.figure_);
    std::swap(scale_, other.scale_);
    std::swap(drawingMode_, other.drawingMode_);
    std::swap(figureUpdated_, other.figureUpdated_);
}

/// Over the containers as they are now.
void SnapshotData::renewTokenInterface()
{
    auto renewed = std::make_unique<SnapshotTokenInterface>(tokenContainer_.get(), projectTokenContainer_.get());
    if (figure_)
        figure_->setTokenInterface(renewed.get());
    tokenInterface_ = std::move(renewed);
    figureUpdated_ = false;
}

/// The figure sees the data of the snapshot and no others.
void SnapshotData::connectFigure()
{
    figureUpdated_ = false;
    if (!figure_)
        return;
    figure_->setTokenInterface(tokenInterface_.get());
    figure_->setChartInterface(chartInterface_.get());
}

/// Keeps what the source's chart interface tells about its charts, beside what is known already.
void SnapshotData::freezeCharts(Figure const *source)
{
    if (chartInterface_)
        chartInterface_->merge(source);
    else
        chartInterface_ = std::make_unique<SnapshotChartInterface>(source);
    figure_->setChartInterface(chartInterface_.get());
}

Figure const *SnapshotData::getFigure() const
{
    updateFigure();
    return figure_.get();
}

Figure *SnapshotData::getFigure()
{
    updateFigure();
    return figure_.get();
}

/// Marked first: a figure that shows itself asks again while it is updated.
void SnapshotData::updateFigure() const
{
    if (figureUpdated_ || !figure_)
        return;
    figureUpdated_ = true;
    figure_->update(stage_, false);
}

void SnapshotData::setFigure(Figure *figure)
{
    if (figure != figure_.get())
        figure_.reset(figure);
    connectFigure();
}

void SnapshotData::setProjectTokenContainer(TokenContainer *tokens)
{
    if (tokens != projectTokenContainer_.get())
        projectTokenContainer_.reset(tokens);
    renewTokenInterface();
}

void SnapshotData::setLegendData(Legend2::Legend const &legend, Legend2::Data const &data)
{
    setLegendData(legend, data, false, Legend2::ToleranceParams(), Legend2::HistogramData());
}

void SnapshotData::setLegendData(Legend2::Legend const &legend, Legend2::Data const &data, bool showTolerances,
                                 Legend2::ToleranceParams const &tolerance, Legend2::HistogramData const &histogram)
{
    scale_ = {true, legend, data, showTolerances, tolerance, histogram};
}

void SnapshotData::copyLegendData(SnapshotData const &other)
{
    scale_ = other.scale_;
}

bool SnapshotData::getLegendData(Legend2::Legend *legend, Legend2::Data *data) const
{
    if (!scale_.hasLegendData)
        return false;
    *legend = scale_.legend;
    *data = scale_.data;
    return true;
}

} // namespace Zem::Fig2
