// ZemFig2ChartLegend.h: ChartLegend, the list of the curves of a chart.
// Layer: labels. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2ChartParameters.h"
#include "ZemFig2LabelBase.h"

#include <utility>
#include <vector>

namespace Zem::Fig2 {

class ChartBase;

/// Connected to a chart, a table of samples and texts of its curves; the text of the label stands above it as a title.
/// Lengths are page millimetres. Everything about the table is worked out by update.
class ChartLegend : public LabelBase
{
public:
    /// Text and look of a curve.
    using Entry = std::pair<QString, ChartParameters>;

    ChartLegend();
    ChartLegend(ChartLegend const &) = default;

    /// As of the last update, ascending by text.
    std::vector<Entry> const &getEntries() const { return entries_; }

    ChartLegend *copy() const override { return new ChartLegend(*this); }
    unsigned int getEstimatedObjectSize() const override;
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;
    /// Charts only.
    bool canConnectTo(Element const *target, QString const &point) const override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool getSpacingUsed() const override { return true; }

private:
    ChartBase const *findChart() const;
    std::vector<Entry> collectEntries(FigureTokenInterface const *tokens) const;
    BaVec2d<double> getTitleSize() const;
    void measureTable();
    void applySize();
    void drawConnectors(FigureTokenInterface const *tokens, Painter *painter) const;
    void drawTable(Painter *painter, BaVec2d<double> const &position) const;

    std::vector<Entry> entries_;
    double sampleWidth_ = 0.0;
    double sampleHeight_ = 0.0;
    double tableWidth_ = 0.0;
    double tableHeight_ = 0.0;
};

} // namespace Zem::Fig2
