#include "chart_fixture.h"

#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// Any finite number, of all magnitudes.
double anyDouble()
{
    double const number = std::bit_cast<double>(*rc::gen::arbitrary<std::uint64_t>());
    return std::isfinite(number) ? number : DBL_MAX;
}

bool anyBool()
{
    return *rc::gen::arbitrary<bool>();
}

int anyIndex(int count)
{
    return *rc::gen::inRange(0, count);
}

Color anyColor()
{
    auto const byte = [] { return static_cast<unsigned char>(anyIndex(256)); };
    return Color(byte(), byte(), byte(), byte());
}

QString anyName()
{
    return QString::fromStdString(*rc::gen::container<std::string>(rc::gen::inRange<char>(' ', 'z')));
}

BaVec2d<double> anyPoint()
{
    return {anyDouble(), anyDouble()};
}

ChartParameters anyParameters()
{
    Symbol symbol(static_cast<Symbol::Type>(anyIndex(14)), std::abs(anyDouble()), anyBool());
    symbol.setColor(anyColor());
    LineStyle const line(std::abs(anyDouble()), static_cast<LineStyle::Style>(anyIndex(5)), anyColor());
    ChartParameters parameters(static_cast<ChartParameters::Style_t>(anyIndex(7)), symbol, line, FillStyle(anyColor()));
    parameters.setName(anyName());
    parameters.setUseDefaultName(anyBool());
    parameters.setShowGroupName(anyBool());
    parameters.setComputeColor(anyBool());
    parameters.setNumberOfBasePoints(*rc::gen::arbitrary<unsigned int>());
    return parameters;
}

ChartMarker *anyMarker()
{
    switch (anyIndex(3)) {
    case 0:
        return new LineChartMarker(anyDouble());
    case 1: {
        std::vector<BaVec2d<double>> points;
        for (int i = anyIndex(5); i > 0; --i)
            points.push_back(anyPoint());
        return new PointsChartMarker(points);
    }
    default: {
        auto *const marker = new NamedPointChartMarker;
        marker->setPoint(anyPoint());
        marker->setName(anyName());
        return marker;
    }
    }
}

void fill(ChartData &data)
{
    for (int i = anyIndex(4); i > 0; --i) {
        auto *const dataset = new ChartDataset(anyName() + QString::number(i));
        dataset->setParameters(anyParameters());
        for (int j = anyIndex(10); j > 0; --j)
            dataset->addPoint(ChartPoint(*rc::gen::arbitrary<int>(), anyPoint(), anyDouble()));
        data.addDataset(dataset);
    }
    for (int i = anyIndex(4); i > 0; --i)
        data.addMarker(anyMarker());
    for (int i = anyIndex(4); i > 0; --i)
        data.getInfoPoints().push_back(anyPoint());
    data.setInfoPointColor(anyColor());
    data.setHasAxisXRange(anyBool());
    data.setAxisYRange(anyPoint());
    data.setSupportsPointMarkers(anyBool());
    data.setComputeStatistics(anyBool());
    if (anyBool())
        data.computeLegendData();
    if (anyBool())
        data.setTokenContainer(new TokenContainer);
    if (anyBool())
        data.setTokenInterface(data.getTokenContainer());
}

RC_GTEST_PROP(ChartParametersInAllForms, areKept, ())
{
    ChartParameters const parameters = anyParameters();
    ChartParameters fromBlock;
    loadFrom(fromBlock, blocksWith(parameters));
    RC_ASSERT(fromBlock == parameters);

    std::stringstream text;
    text << parameters;
    ChartParameters fromText;
    RC_ASSERT(static_cast<bool>(text >> fromText));
    RC_ASSERT(fromText == parameters);

    QString string = parameters.getParameterString("p");
    ChartParameters fromString;
    fromString.createFromParameterString(string, "p");
    RC_ASSERT(fromString == parameters);
    RC_ASSERT(string.isEmpty());
}

RC_GTEST_PROP(ChartDataInBlocks, isKept, ())
{
    ChartData data;
    fill(data);
    std::string const bytes = blocksWith(data);
    ChartData read;
    loadFrom(read, bytes);
    RC_ASSERT(blocksWith(read) == bytes);
    RC_ASSERT(read.toString() == data.toString());
    RC_ASSERT(blocksWith(ChartData(data)) == bytes);
}

RC_GTEST_PROP(ChartDataInBlocks, withAnyByteChangedIsRefused, ())
{
    ChartData data;
    fill(data);
    std::string bytes = blocksWith(data);
    // Behind the header of the stream.
    std::size_t const place = 64 + static_cast<std::size_t>(anyIndex(static_cast<int>(bytes.size()) - 64));
    bytes[place] = static_cast<char>(bytes[place] ^ (1 + anyIndex(255)));
    ChartData read;
    RC_ASSERT_THROWS_AS(loadFrom(read, bytes), IO::StreamException);
}

RC_GTEST_PROP(ChartDatasetRanges, holdEveryValidPoint, ())
{
    ChartDataset dataset("d");
    for (int i = anyIndex(20); i > 0; --i)
        dataset.addPoint(ChartPoint(i, {anyBool() ? DBL_MAX : anyDouble(), anyDouble()}, 0.0));
    BaVec2d<double> x;
    BaVec2d<double> y;
    dataset.getRange(&x, &y);
    for (ChartPoint const &point : std::vector<ChartPoint>(dataset.getPointBegin(0), dataset.getPointEnd())) {
        if (point.isValid()) {
            RC_ASSERT(x.x <= point.point.x && point.point.x <= x.y);
            RC_ASSERT(y.x <= point.point.y && point.point.y <= y.y);
        }
    }
}

} // namespace
} // namespace Zem::Fig2
