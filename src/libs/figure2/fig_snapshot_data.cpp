#include "ZemFig2SnapshotData.h"

#include <ZemIdentifiers.h>

namespace Zem::Fig2 {

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
    figure_->update(StageIdentifier(), false);
}

void SnapshotData::setFigure(Figure *figure)
{
    if (figure != figure_.get())
        figure_.reset(figure);
    figureUpdated_ = false;
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
