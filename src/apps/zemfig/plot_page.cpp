#include "plot_page.h"

#include "cli.h"
#include "page_builder.h"
#include "page_schema.h"

#include <ZemFig2Calculator.h>
#include <ZemFig2Chart.h>
#include <ZemFig2ChartLegend.h>
#include <ZemFig2Group.h>
#include <ZemFig2Label.h>
#include <ZemFig2TokenInterface.h>
#include <ZemScriptObject.h>

#include <algorithm>
#include <cmath>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

using DataToken = ChartInterface::DataToken;

// The page, in millimetres.
constexpr double CHARTS_TOP = 36.0;
constexpr double BOTTOM = 285.0;
constexpr double PANEL_TITLE_HEIGHT = 6.0;
constexpr double PANEL_GAP = 4.0;
constexpr double X_TITLE_HEIGHT = 7.0;
constexpr double ROW_HEIGHT = 5.0;
constexpr double TABLE_GAP = 6.0;
constexpr double AXIS_ROOM = 18.0;
constexpr double GREATEST_LEGEND = 50.0;
constexpr double LEAST_PANEL = 25.0;

constexpr Color SOFT{0xd9, 0xde, 0xe5};
constexpr Color LINES{0x6b, 0x76, 0x85};

constexpr unsigned int FEW_POINTS = 200;

QString lastPart(QString const &name)
{
    return name.mid(name.lastIndexOf(QLatin1Char('.')) + 1);
}

/// What is on offer under a name; a name that stands for several tokens must be written out.
DataToken findToken(std::vector<DataToken> const &offered, QString const &name)
{
    std::vector<QString> names;
    std::vector<DataToken const *> found;
    for (DataToken const &token : offered) {
        if (token.getName() == name)
            return token;
        if (lastPart(token.getName()) == name)
            found.push_back(&token);
        names.push_back(token.getName());
        names.push_back(lastPart(token.getName()));
    }
    if (found.empty())
        throw UsageError(QStringLiteral("there is nothing called '%1' to plot%2").arg(name, suggestion(name, names)));
    if (found.size() > 1)
        throw UsageError(QStringLiteral("'%1' may be '%2' or '%3'")
                             .arg(name, found[0]->getName(), found[1]->getName()));
    return *found.front();
}

DataToken chooseX(ChartInterface *offer, QString const &name)
{
    std::vector<DataToken> const offered = offer->getTokensX();
    if (!name.isEmpty())
        return findToken(offered, name);
    auto const isGiven = [](DataToken const &token) { return token.getName() != QLatin1StringView("stage"); };
    auto const moment = std::find_if(offered.begin(), offered.end(), [](DataToken const &token) {
        return token.getCategory() == TokenInfo::CATEGORY_DATE;
    });
    auto const first = moment != offered.end() ? moment : std::find_if(offered.begin(), offered.end(), isGiven);
    if (first == offered.end())
        throw UsageError(QStringLiteral("there are no numbers to plot over"));
    return *first;
}

/// The curves of one chart: those that share a unit.
struct Panel
{
    UnitData unit;
    std::vector<DataToken> tokens;
};

std::vector<DataToken> chooseY(std::vector<DataToken> const &offered, DataToken const &x, QStringList const &names)
{
    std::vector<DataToken> chosen;
    for (QString const &name : names)
        chosen.push_back(findToken(offered, name));
    if (names.isEmpty())
        std::copy_if(offered.begin(), offered.end(), std::back_inserter(chosen),
                     [&x](DataToken const &token) { return token.getName() != x.getName(); });
    if (chosen.empty())
        throw UsageError(QStringLiteral("there are no numbers to plot"));
    return chosen;
}

/// Numbers without a unit have nothing in common.
std::vector<Panel> panelsOf(ChartInterface *offer, std::vector<DataToken> const &tokens)
{
    std::vector<Panel> panels;
    for (DataToken const &token : tokens) {
        UnitData const unit = offer->getTokenUnit(token);
        auto panel = std::find_if(panels.begin(), panels.end(), [&unit](Panel const &one) {
            return one.unit.getUnit() == unit.getUnit() && unit.hasUnit();
        });
        if (panel == panels.end())
            panel = panels.insert(panels.end(), {unit, {}});
        panel->tokens.push_back(token);
    }
    return panels;
}

std::size_t countCurves(std::vector<Panel> const &panels)
{
    std::size_t number = 0;
    for (Panel const &panel : panels)
        number += panel.tokens.size();
    return number;
}

double tableTop(std::vector<Panel> const &panels)
{
    return BOTTOM - ROW_HEIGHT * static_cast<double>(countCurves(panels) + 1);
}

double chartsBottom(std::vector<Panel> const &panels)
{
    return tableTop(panels) - TABLE_GAP - X_TITLE_HEIGHT;
}

double panelHeight(std::vector<Panel> const &panels)
{
    auto const count = static_cast<double>(panels.size());
    return (chartsBottom(panels) - CHARTS_TOP - PANEL_GAP * (count - 1.0)) / count;
}

/// Takes what does not fit away from the end; the names of it.
QStringList shortenToPage(std::vector<Panel> *panels)
{
    QStringList leftOut;
    while (panelHeight(*panels) < LEAST_PANEL) {
        std::vector<DataToken> &tokens = panels->back().tokens;
        leftOut.prepend(tokens.back().getName());
        tokens.pop_back();
        if (tokens.empty())
            panels->pop_back();
    }
    return leftOut;
}

/// Times are easier to read in a unit of their own size.
UnitData readableUnit(UnitData const &unit, double extent)
{
    if (unit.getUnit() != uTime)
        return unit;
    constexpr double MINUTE = 60.0;
    constexpr double HOUR = 3600.0;
    char const *name = extent >= 3.0 * HOUR ? "h" : extent >= 10.0 * MINUTE ? "min" : nullptr;
    Unit::Units_t readable = unit.getCurrentUnit();
    if (name)
        uTime->parseUnit(QLatin1StringView(name), &readable);
    return {uTime, readable};
}

QString withUnit(QString const &text, UnitData const &unit)
{
    QString const name = unit.getUnitName();
    return name.isEmpty() ? text : QStringLiteral("%1 [%2]").arg(text, name);
}

/// Lays the page out from top to bottom.
class PageMaker : private PageBuilder
{
public:
    PageMaker(ChartInterface *offer, FigureTokenInterface const *tokens, PlotWish const &wish)
        : offer_(offer), tokens_(tokens), wish_(wish), offeredY_(offer->getTokensY()), x_(chooseX(offer, wish.x)),
          unitX_(offer->getTokenUnit(x_)), panels_(panelsOf(offer, chooseY(offeredY_, x_, wish.y)))
    {
    }

    PlotPage make()
    {
        std::size_t const wished = countCurves(panels_);
        QStringList const leftOut = shortenToPage(&panels_);
        if (!leftOut.isEmpty() && !wish_.y.isEmpty())
            throw UsageError(QStringLiteral("%1 curves in these units do not fit on a page, %2 of them would")
                                 .arg(wished)
                                 .arg(countCurves(panels_)));
        addHeader(wish_.title, wish_.subtitle);
        addCharts();
        addStatistics();
        return {takeFigure(), leftOut};
    }

private:
    void addCharts()
    {
        double const height = panelHeight(panels_);
        double const legendWidth = computeLegendWidth();
        for (std::size_t i = 0; i < panels_.size(); ++i)
            addPanel(i, CHARTS_TOP + (height + PANEL_GAP) * static_cast<double>(i), height, legendWidth);
        double const middle = (LEFT + AXIS_ROOM + RIGHT - legendWidth) / 2.0;
        double const y = chartsBottom(panels_) + X_TITLE_HEIGHT / 2.0;
        Label *title = addText(QStringLiteral("x axis"), middle, y, 9.0,
                               escaped(withUnit(offer_->getTokenDescription(x_), unitX_)));
        title->setPivotAlignmentX(ALIGN_CENTER);
        title->setAlignmentOrigin({middle, y});
    }

    static Font legendFont() { return {Font::DEFAULT_FONT_SANS, 8.0, 0}; }

    double computeLegendWidth() const
    {
        double width = 0.0;
        double height = 0.0;
        for (Panel const &panel : panels_) {
            for (DataToken const &token : panel.tokens) {
                BaVec2d<double> const size = Calculator::getInstance()->computeTextSize(
                    legendFont(), offer_->getLegendDescription(token, ChartParameters()));
                width = std::max(width, size.x);
                height = std::max(height, size.y);
            }
        }
        return std::min(width + 3.0 * height + 6.0, GREATEST_LEGEND);
    }

    void addPanel(std::size_t index, double top, double height, double legendWidth)
    {
        Panel const &panel = panels_[index];
        QString const number = panels_.size() > 1 ? QStringLiteral(" %1").arg(index + 1) : QString();
        QString const title = panel.tokens.size() == 1 ? offer_->getTokenDescription(panel.tokens.front())
                                                       : panel.unit.hasUnit() ? panel.unit.getUnit()->getName()
                                                                              : QStringLiteral("values");
        addText(QStringLiteral("y axis") + number, LEFT, top + PANEL_TITLE_HEIGHT / 2.0, 9.0,
                QStringLiteral("<b>%1</b>").arg(escaped(withUnit(title, panel.unit))));
        GenericChart *chart = addChart(QStringLiteral("chart") + number, panel);
        double const right = RIGHT - legendWidth;
        chart->setSize({right - LEFT, height - PANEL_TITLE_HEIGHT});
        chart->setOrigin({(LEFT + right) / 2.0, top + (height + PANEL_TITLE_HEIGHT) / 2.0});
        auto *legend = add<ChartLegend>(QStringLiteral("legend") + number);
        legend->setFont(legendFont());
        legend->setText(QString());
        legend->setMargin(0.5);
        legend->setSpacing(1.0);
        legend->setConnectorStyle(LineStyle::null);
        legend->setPivotAlignmentX(ALIGN_BEGIN);
        legend->setPivotAlignmentY(ALIGN_BEGIN);
        legend->setAlignmentOrigin({right + 2.0, top + PANEL_TITLE_HEIGHT});
        legend->connect(chart, QString());
        charts_.push_back(chart);
    }

    GenericChart *addChart(QString const &name, Panel const &panel)
    {
        auto *chart = add<GenericChart>(name);
        chart->setFont(legendFont());
        chart->setLeftMargin(AXIS_ROOM);
        Axis axisX = chart->getAxisX();
        Axis axisY = chart->getAxisY();
        for (Axis *axis : {&axisX, &axisY}) {
            axis->setTickLength(1.5);
            axis->setDigitsMode(Axis::DIGITS_MODE_AUTO);
            axis->setLineStyle(LineStyle(0.15, LineStyle::STYLE_FULL, LINES));
        }
        // All of x, where some curves have gaps at their ends too: so the charts can be compared.
        axisX.setRangeModeMin(Axis::RANGE_MODE_OPTIMUM);
        axisX.setRangeModeMax(Axis::RANGE_MODE_OPTIMUM);
        chart->setAxisY(axisY);
        Grid grid;
        grid.setLineStyle(LineStyle(0.1, LineStyle::STYLE_FULL, SOFT));
        chart->setGrid(grid);
        chart->setInnerBorder(LineStyle(0.2, LineStyle::STYLE_FULL, LINES));
        chart->setTokenX(x_.getName());
        std::vector<GenericChart::Entry> curves;
        for (DataToken const &token : panel.tokens)
            curves.emplace_back(token, nextLook());
        chart->setData(curves);
        measure(chart->getToken());
        showSymbols(chart);
        axisX.setUnit(unitX_);
        chart->setAxisX(axisX);
        return chart;
    }

    /// The looks come in their order, whichever of the tokens on offer are shown.
    ChartParameters nextLook()
    {
        ChartParameters look;
        offer_->getDefaultParameters(offeredY_[numberOfLooks_++ % offeredY_.size()], &look);
        LineStyle line = look.getLineStyle();
        line.setWidth(0.25);
        look.setLineStyle(line);
        look.setStyle(wish_.style.value_or(ChartParameters::STYLE_LINE));
        return look;
    }

    /// How large the values of the curves are, and how many points there are.
    void measure(QString const &token)
    {
        ChartData const *data = tokens_->getChart(token);
        numberOfPoints_ = 0;
        if (!data)
            return;
        for (auto it = data->getDatasetBegin(); it != data->getDatasetEnd(); ++it) {
            BaVec2d<double> x;
            BaVec2d<double> y;
            it->second->getRange(&x, &y);
            sizes_[it->first] = y.x > y.y ? 0.0 : std::max(std::abs(y.x), std::abs(y.y));
            unitX_ = readableUnit(unitX_, x.y - x.x);
            numberOfPoints_ = std::max(numberOfPoints_, it->second->getNumberOfPoints());
        }
        tokens_->releaseChart(token);
    }

    /// Points that stand close together make a line by themselves.
    void showSymbols(GenericChart *chart) const
    {
        bool const wanted = wish_.style && *wish_.style != ChartParameters::STYLE_BARS;
        bool const shown = wanted || (!wish_.style && numberOfPoints_ < FEW_POINTS);
        std::vector<GenericChart::Entry> curves = chart->getData();
        for (auto &[token, look] : curves) {
            Symbol symbol = look.getSymbol();
            symbol.setType(shown ? Symbol::TYPE_CIRCLE : Symbol::TYPE_NONE);
            symbol.setSize(numberOfPoints_ < FEW_POINTS ? 1.2 : 0.6);
            look.setSymbol(symbol);
        }
        chart->setData(curves);
    }

    void addStatistics()
    {
        double y = tableTop(panels_) + ROW_HEIGHT / 2.0;
        for (Column const &column : COLUMNS)
            addCell(QStringLiteral("%1").arg(QLatin1StringView(column.title)), column, y,
                    QStringLiteral("<b>%1</b>").arg(QLatin1StringView(column.title)));
        int row = 0;
        for (std::size_t i = 0; i < panels_.size(); ++i) {
            for (DataToken const &token : panels_[i].tokens) {
                y += ROW_HEIGHT;
                addRow(token, charts_[i], ++row, y);
            }
        }
    }

    /// What a column of the table says of a curve: a token of the chart, or a text when it has no prefix.
    struct Column
    {
        char const *title;
        char const *prefix;
        double x;
        bool ending;
    };
    static constexpr std::array<Column, 6> COLUMNS{{{"curve", "NAME_", LEFT, false},
                                                    {"unit", "", 85.0, false},
                                                    {"minimum", "MIN_Y_", 120.0, true},
                                                    {"maximum", "MAX_Y_", 145.0, true},
                                                    {"mean", "AVERAGE_", 170.0, true},
                                                    {"std. deviation", "STD_DEVIATION_", RIGHT, true}}};

    Label *addCell(QString const &name, Column const &column, double y, QString const &text)
    {
        return column.ending ? addEndingText(name, column.x, y, 8.0, text) : addText(name, column.x, y, 8.0, text);
    }

    void addRow(DataToken const &token, GenericChart *chart, int row, double y)
    {
        int const decimals = decimalsFor(sizes_[token.getName()]);
        for (Column const &column : COLUMNS) {
            QString const prefix = QString::fromLatin1(column.prefix);
            QString text = QStringLiteral("$.%1%2%3$").arg(decimals).arg(prefix, token.getName());
            if (prefix.isEmpty())
                text = escaped(baseUnitName(offer_->getTokenUnit(token)));
            else if (!column.ending)
                text = escaped(offer_->getLegendDescription(token, ChartParameters()));
            Label *cell = addCell(QStringLiteral("%1 %2").arg(QLatin1StringView(column.title)).arg(row), column, y, text);
            cell->setConnectorStyle(LineStyle::null);
            cell->connect(chart, QString());
        }
    }

    /// Statistics of charts are in base units.
    static QString baseUnitName(UnitData const &unit)
    {
        return unit.hasUnit() ? unit.getUnit()->getUnitName(unit.getUnit()->getBaseUnit()) : QString();
    }

    ChartInterface *offer_;
    FigureTokenInterface const *tokens_;
    PlotWish const &wish_;
    std::vector<DataToken> offeredY_;
    DataToken x_;
    UnitData unitX_; ///< in which it is shown
    std::vector<Panel> panels_;
    std::vector<GenericChart *> charts_;
    std::map<QString, double> sizes_; ///< greatest number of a curve
    std::size_t numberOfLooks_ = 0;
    unsigned int numberOfPoints_ = 0;
};

} // namespace

PlotPage makePlotPage(ChartInterface *offer, FigureTokenInterface const *tokens, PlotWish const &wish)
{
    return PageMaker(offer, tokens, wish).make();
}

} // namespace Zem::Zemfig
