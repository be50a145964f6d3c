// What holds for every chart, whatever its data, its size and the state of its file.
#include "generic_chart_fixture.h"

#include <ZemFig2Rotation.h>

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {
namespace {

using Support::blockForm;
using Support::loadBlocks;
using Support::parameterForm;

double coordinate()
{
    return *rc::gen::oneOf(rc::gen::map(rc::gen::inRange(-1000000, 1000000), [](int number) { return number / 64.0; }),
                           rc::gen::element(0.0, 1e-60, -1e300, 1e300, DBL_MAX, -DBL_MAX, INF, -INF, NOT_A_NUMBER));
}

/// Of a size that charts have.
double extent()
{
    return *rc::gen::inRange(0, 3000) / 10.0;
}

Axis axisBetween(Axis::Type first, Axis::Type second)
{
    Axis axis(*rc::gen::element(first, second));
    axis.setVisible(*rc::gen::arbitrary<bool>());
    axis.setTicks(*rc::gen::inRange(-1, 30));
    axis.setDigits(*rc::gen::inRange(0, 5));
    return axis;
}

void choose(ChartBase &chart)
{
    chart.setAxisX(axisBetween(Axis::HORIZONTAL_TOP, Axis::HORIZONTAL_BOTTOM));
    chart.setAxisY(axisBetween(Axis::VERTICAL_LEFT, Axis::VERTICAL_RIGHT));
    chart.setLeftMargin(extent());
    chart.setRightMargin(extent());
    chart.setOrigin({extent(), extent()});
    double const width = extent();
    chart.setSize({width, extent()});
    chart.setAngle(*rc::gen::inRange(-60, 60) / 10.0);
}

Points points(int atLeast)
{
    Points all;
    for (int left = *rc::gen::inRange(atLeast, 20); left > 0; --left) {
        double const x = coordinate();
        all.push_back({x, coordinate()});
    }
    return all;
}

GenericChart *generatedGeneric()
{
    auto *chart = new GenericChart;
    choose(*chart);
    chart->setTokenX(*rc::gen::element<QString>("", "time", "a/b", "\\"));
    std::vector<QString> names;
    for (int left = *rc::gen::inRange(0, 5); left > 0; --left)
        names.push_back(*rc::gen::element<QString>("a", "b", "c \"d\"", "", "/"));
    chart->setData(entriesOf(names));
    return chart;
}

RC_GTEST_PROP(AnyChart, keepsItsPlotInsideTheDrawingRectangle, ())
{
    Support::FakeCalculator const calculator;
    ChartTokens tokens;
    addDataset(tokens.add("force"), "a", points(0));
    Chart chart;
    choose(chart);
    chart.setToken("force");

    chart.computeDynamicData(StageIdentifier(1), &tokens);

    BaVec2d<double> size;
    BaVec2d<double> offset;
    chart.getSizeAndOffset(&size, &offset);
    RC_ASSERT(size.x >= 0.0);
    RC_ASSERT(size.y >= 0.0);
    RC_ASSERT(offset.x >= chart.getDrawingOrigin().x);
    RC_ASSERT(offset.x + size.x <= chart.getDrawingOrigin().x + chart.getDrawingSize().x + 1e-9);
    RC_ASSERT(offset.y >= chart.getDrawingOrigin().y);
    RC_ASSERT(tokens.onLoan() == 0);
}

RC_GTEST_PROP(AnyChart, findsTheValuesOfItsPlaces, ())
{
    Support::FakeCalculator const calculator;
    ChartTokens tokens;
    Chart chart;
    choose(chart);
    chart.setSize({200, 150});
    chart.setToken("force");
    double const x = *rc::gen::inRange(-1000, 1000) / 8.0;
    double const y = *rc::gen::inRange(-1000, 1000) / 8.0;
    BaVec2d<double> const last(x + *rc::gen::inRange(1, 1000) / 8.0, y + *rc::gen::inRange(1, 1000) / 8.0);
    addDataset(tokens.add("force"), "a", {{x, y}, last});

    chart.computeDynamicData(StageIdentifier(1), &tokens);

    for (BaVec2d<double> const &point : Points{{x, y}, last, {(x + last.x) / 2, last.y}}) {
        BaVec2d<double> const place = chart.getRotation().applyTo(chart.getFigureCoordinates(point));
        BaVec2d<double> const back = chart.getChartCoordinates(place);
        RC_ASSERT(std::abs(back.x - point.x) < 1e-6);
        RC_ASSERT(std::abs(back.y - point.y) < 1e-6);
    }
}

RC_GTEST_PROP(AnyChart, isStoredWithoutLoss, ())
{
    std::unique_ptr<GenericChart> const chart(generatedGeneric());
    GenericChart fromBlocks;
    GenericChart fromParameters;

    loadBlocks(fromBlocks, blockForm(*chart));
    RC_ASSERT(Support::loadParameters(fromParameters, parameterForm(*chart)).empty());

    RC_ASSERT(blockForm(fromBlocks) == blockForm(*chart));
    RC_ASSERT(parameterForm(fromParameters) == parameterForm(*chart));
    RC_ASSERT(fromBlocks.getToken() == chart->getToken());
    RC_ASSERT(fromParameters.getToken() == chart->getToken());
}

RC_GTEST_PROP(AnyChart, staysWholeWhateverItsFileHolds, ())
{
    std::unique_ptr<GenericChart> const chart(generatedGeneric());
    auto const version = *rc::gen::inRange(0U, 9U);
    auto const claimed = *rc::gen::inRange(0U, 6U);
    std::unique_ptr<GenericChart> const stored(generatedGeneric());
    std::string const bytes = craftedGeneric(version, claimed, stored->getData()).bytes();
    try {
        loadBlocks(*chart, bytes);
        RC_TAG("read");
    } catch (IO::StreamException const &) {
        RC_TAG("refused");
    }

    for (auto const &[token, parameters] : chart->getData()) {
        ChartDataset const dataset(token.getName());
        RC_ASSERT(chart->isDatasetUsed(token.getName()));
        RC_ASSERT(chart->getChartParameters(&dataset) != nullptr);
    }
    std::vector<QString> names;
    for (auto const &[token, parameters] : chart->getData())
        names.push_back(token.getName());
    bool const complete = !chart->getTokenX().isEmpty() && !names.empty();
    RC_ASSERT(chart->getToken() == (complete ? ChartInterface::createToken(chart->getTokenX(), names) : QString()));
}

} // namespace
} // namespace Zem::Fig2
