// ZemFig2SnapshotData.h: SnapshotData, a figure frozen at one stage.
// Layer: document. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Figure.h"

#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemToleranceParams.h>

#include <memory>

namespace Zem::Fig2 {

/// A figure of its own, and the colour scale that it was frozen with. The figure brings its token interface.
class SnapshotData
{
public:
    /// Without a figure and without a colour scale.
    SnapshotData() = default;
    SnapshotData(SnapshotData const &) = delete;
    SnapshotData &operator=(SnapshotData const &) = delete;
    virtual ~SnapshotData() = default;

    /// Null for none; owned here. Brought up to date once before it is handed out for the first time.
    Figure const *getFigure() const;
    Figure *getFigure();
    /// Takes ownership and deletes the one before. May be null.
    void setFigure(Figure *figure);

    /// The colour scale; without the tolerances and the histogram these are reset.
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data);
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data, bool showTolerances,
                       Legend2::ToleranceParams const &tolerance, Legend2::HistogramData const &histogram);
    /// All of it, also that there is none.
    void copyLegendData(SnapshotData const &other);
    /// Copies the colour scale out. False, and nothing is copied, when there is none. No argument is null.
    bool getLegendData(Legend2::Legend *legend, Legend2::Data *data) const;
    /// Whether there is a colour scale, shown as that of tolerances.
    bool showTolerances() const { return scale_.hasLegendData && scale_.showTolerances; }
    Legend2::ToleranceParams const &getToleranceParams() const { return scale_.tolerance; }
    Legend2::HistogramData const &getHistogramData() const { return scale_.histogram; }

private:
    struct Scale
    {
        bool hasLegendData = false;
        Legend2::Legend legend{uLength};
        Legend2::Data data;
        bool showTolerances = false;
        Legend2::ToleranceParams tolerance;
        Legend2::HistogramData histogram;
    };

    void updateFigure() const;

    std::unique_ptr<Figure> figure_;
    Scale scale_;
    mutable bool figureUpdated_ = false;
};

} // namespace Zem::Fig2
