#include "plot_page.h"

#include "cli.h"
#include "page_schema.h"

#include <ZemFig2Calculator.h>
#include <ZemFig2Chart.h>
#include <ZemFig2ChartLegend.h>
#include <ZemFig2Group.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2TokenInterface.h>
#include <ZemScriptObject.h>
#include <ZemText.h>

#include <algorithm>
#include <cmath>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

using DataToken = ChartInterface::DataToken;

// The page, in millimetres.
constexpr double LEFT = 15.0;
constexpr double RIGHT = 195.0;
constexpr double BAND_HEIGHT = 30.0;
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

constexpr Color BAND{0x1f, 0x3a, 0x5f};
constexpr Color SOFT{0xd9, 0xde, 0xe5};
constexpr Color LINES{0x6b, 0x76, 0x85};

constexpr unsigned int MOST_CURVES = 24;
constexpr unsigned int FEW_POINTS = 200;
constexpr double SIGNIFICANT_DIGITS = 4.0;

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

std::vector<Panel> choosePanels(ChartInterface *offer, DataToken const &x, QStringList const &names)
{
    std::vector<DataToken> const offered = offer->getTokensY();
    std::vector<DataToken> chosen;
    for (QString const &name : names)
        chosen.push_back(findToken(offered, name));
    if (names.isEmpty())
        std::copy_if(offered.begin(), offered.end(), std::back_inserter(chosen),
                     [&x](DataToken const &token) { return token.getName() != x.getName(); });
    if (chosen.empty())
        throw UsageError(QStringLiteral("there are no numbers to plot"));
    if (chosen.size() > MOST_CURVES)
        throw UsageError(QStringLiteral("%1 curves do not fit on a page: choose up to %2 with --y")
                             .arg(chosen.size())
                             .arg(MOST_CURVES));
    std::vector<Panel> panels;
    for (DataToken const &token : chosen) {
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

QString withUnit(QString const &text, UnitData const &unit)
{
    QString const name = unit.getUnitName();
    return name.isEmpty() ? text : QStringLiteral("%1 [%2]").arg(text, name);
}

/// Text for a label, in which a dollar begins a token.
QString escaped(QString const &text)
{
    QString rich = tokenizeRT(text, true);
    return rich.replace(QLatin1Char('$'), QLatin1StringView("$$"));
}

/// How many decimals show enough of numbers of this size.
int decimalsFor(double size)
{
    if (!(size > 0.0) || !std::isfinite(size))
        return 1;
    return std::clamp(static_cast<int>(SIGNIFICANT_DIGITS - 1.0 - std::floor(std::log10(size))), 0, 12);
}

/// Lays the page out from top to bottom.
class PageMaker
{
public:
    PageMaker(ChartInterface *offer, FigureTokenInterface const *tokens, PlotWish const &wish)
        : offer_(offer), tokens_(tokens), wish_(wish), x_(chooseX(offer, wish.x)),
          panels_(choosePanels(offer, x_, wish.y)), figure_(std::make_unique<Figure>())
    {
    }

    std::unique_ptr<Figure> make()
    {
        addHeader();
        addCharts();
        addStatistics();
        return std::move(figure_);
    }

private:
    template <class Kind>
    Kind *add(QString const &name)
    {
        auto *element = new Kind;
        element->getScriptObject()->setName(name);
        figure_->getRoot()->addChild(element);
        return element;
    }

    static QString colored(Color const &color, QString const &text)
    {
        return QStringLiteral("<span style=\"color:%1\">%2</span>").arg(color.getName(), text);
    }

    /// A label without frame or margin; `x` and `y` are those of its alignment point.
    Label *addText(QString const &name, double x, double y, double size, QString const &text)
    {
        auto *label = add<Label>(name);
        label->setMargin(0.0);
        label->setPivotAlignmentX(ALIGN_BEGIN);
        label->setPivotAlignmentY(ALIGN_CENTER);
        label->setFont(Font(Font::DEFAULT_FONT_SANS, size, 0));
        label->setText(text);
        label->setAlignmentOrigin({x, y});
        return label;
    }

    Label *addEndingText(QString const &name, double x, double y, double size, QString const &text)
    {
        Label *label = addText(name, x, y, size, text);
        label->setPivotAlignmentX(ALIGN_END);
        label->setAlignmentOrigin({x, y});
        return label;
    }

    void addHeader()
    {
        auto *band = add<Rectangle>(QStringLiteral("header band"));
        band->setOrigin({105.0, BAND_HEIGHT / 2.0});
        band->setSize({210.0, BAND_HEIGHT});
        band->setBorder(LineStyle::null);
        band->setBackground(FillStyle(BAND));
        Label *title = addText(QStringLiteral("title"), LEFT, 11.0, 18.0,
                               colored(Color(255, 255, 255), QStringLiteral("<b>%1</b>").arg(escaped(wish_.title))));
        title->setAlignmentOrigin({LEFT, 11.0});
        addText(QStringLiteral("subtitle"), LEFT, 21.0, 10.0, colored(SOFT, escaped(wish_.subtitle)));
    }

    std::size_t numberOfCurves() const
    {
        std::size_t number = 0;
        for (Panel const &panel : panels_)
            number += panel.tokens.size();
        return number;
    }

    double tableTop() const
    {
        return BOTTOM - ROW_HEIGHT * static_cast<double>(numberOfCurves() + 1);
    }

    void addCharts()
    {
        auto const count = static_cast<double>(panels_.size());
        double const bottom = tableTop() - TABLE_GAP - X_TITLE_HEIGHT;
        double const height = (bottom - CHARTS_TOP - PANEL_GAP * (count - 1.0)) / count;
        if (height < LEAST_PANEL)
            throw UsageError(QStringLiteral("curves of %1 units do not fit on a page: choose less with --y")
                                 .arg(panels_.size()));
        double const legendWidth = computeLegendWidth();
        for (std::size_t i = 0; i < panels_.size(); ++i)
            addPanel(i, CHARTS_TOP + (height + PANEL_GAP) * static_cast<double>(i), height, legendWidth);
        double const middle = (LEFT + AXIS_ROOM + RIGHT - legendWidth) / 2.0;
        Label *title = addText(QStringLiteral("x axis"), middle, bottom + X_TITLE_HEIGHT / 2.0, 9.0,
                               escaped(withUnit(offer_->getTokenDescription(x_), offer_->getTokenUnit(x_))));
        title->setPivotAlignmentX(ALIGN_CENTER);
        title->setAlignmentOrigin({middle, bottom + X_TITLE_HEIGHT / 2.0});
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
        chart->setAxisX(axisX);
        chart->setAxisY(axisY);
        Grid grid;
        grid.setLineStyle(LineStyle(0.1, LineStyle::STYLE_FULL, SOFT));
        chart->setGrid(grid);
        chart->setInnerBorder(LineStyle(0.2, LineStyle::STYLE_FULL, LINES));
        chart->setTokenX(x_.getName());
        std::vector<GenericChart::Entry> curves;
        for (DataToken const &token : panel.tokens)
            curves.emplace_back(token, lookOf(token));
        chart->setData(curves);
        measure(chart->getToken());
        showSymbols(chart);
        return chart;
    }

    ChartParameters lookOf(DataToken const &token) const
    {
        ChartParameters look;
        offer_->getDefaultParameters(token, &look);
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
        double y = tableTop() + ROW_HEIGHT / 2.0;
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
                text = QStringLiteral("$%1%2$").arg(prefix, token.getName());
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
    DataToken x_;
    std::vector<Panel> panels_;
    std::unique_ptr<Figure> figure_;
    std::vector<GenericChart *> charts_;
    std::map<QString, double> sizes_;
    unsigned int numberOfPoints_ = 0;
};

} // namespace

std::unique_ptr<Figure> makePlotPage(ChartInterface *offer, FigureTokenInterface const *tokens, PlotWish const &wish)
{
    return PageMaker(offer, tokens, wish).make();
}

} // namespace Zem::Zemfig
