// plot_page.h: a page that shows what is on offer, as a user would begin to lay it out.
#pragma once

#include <ZemFig2ChartInterface.h>
#include <ZemFig2ChartParameters.h>
#include <ZemFig2Figure.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

namespace Zem::Zemfig {

/// What the page shall show.
struct PlotWish
{
    QString title;
    QString subtitle;
    QString x;      ///< empty for the first moments, or else the first numbers on offer
    QStringList y;  ///< empty for all numbers on offer
    std::optional<Fig2::ChartParameters::Style_t> style; ///< else lines, with symbols when the points are few
};

/// A page with one chart for each unit of the y, one below the other over a common x, with axis titles, legends and a
/// table of statistics. `offer` and `tokens` are asked now and not kept. Names are those of tokens, or what stands in
/// them behind the last point. Throws UsageError for a name that stands for none, or for several, and when more is to
/// be shown than fits on a page.
std::unique_ptr<Fig2::Figure> makePlotPage(Fig2::ChartInterface *offer, Fig2::FigureTokenInterface const *tokens,
                                           PlotWish const &wish);

} // namespace Zem::Zemfig
