#include "chart_fixture.h"

#include <RecordingPainter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// One chart unit is two millimetres; the chart's origin lies at (10, 50) and its y runs up.
class TestFrame : public ChartMarkerFrame
{
public:
    BaVec2d<double> getFigureCoordinates(BaVec2d<double> const &point) const override
    {
        return {10.0 + 2.0 * point.x, 50.0 - 2.0 * point.y};
    }
    Rotation getRotation() const override { return rotation; }
    bool getShowCurrentStage() const override { return showCurrentStage; }
    LineStyle const &getCurrentStageStyle() const override { return stageStyle; }
    bool getShowPointMarkers() const override { return showPointMarkers; }
    Symbol const &getPointMarkerSymbol() const override { return symbol; }

    Rotation rotation;
    bool showCurrentStage = true;
    bool showPointMarkers = true;
    LineStyle stageStyle{0.1, LineStyle::STYLE_DOTTED, Color(0, 0, 0)};
    Symbol symbol{Symbol::TYPE_CIRCLE, 4.0, false};
};

/// In a plot rectangle from (10, 20) to (40, 50).
std::string drawn(ChartMarker const &marker, TestFrame const &frame)
{
    Support::RecordingPainter painter;
    marker.draw(&painter, &frame, {10.0, 20.0}, {30.0, 30.0});
    return painter.transcript();
}

char const *const CLIP = "clip 10,20 40,20 40,50 10,50\n";

/// What drawing a symbol records, without any marker.
std::string symbolAt(BaVec2d<double> const &position, Symbol const &symbol)
{
    Support::RecordingPainter painter;
    painter.drawSymbol(position, symbol, LineStyle(0.1, LineStyle::STYLE_FULL, symbol.getColor()),
                       FillStyle(symbol.getColor()), Rotation::null);
    return painter.transcript();
}

NamedPointChartMarker namedMarker()
{
    NamedPointChartMarker marker;
    Symbol symbol(Symbol::TYPE_BOX, 3.0, false);
    symbol.setColor(Color(1, 2, 3));
    symbol.setFont(Font("Serif", 8.0, 0));
    marker.setPoint({1.0, 2.0});
    marker.setName("P");
    marker.setSymbol(symbol);
    return marker;
}

/// The markers of a list, deleted at the end.
std::vector<std::unique_ptr<ChartMarker>> loadList(std::string const &bytes)
{
    std::vector<ChartMarker *> markers;
    Support::readFrom(bytes, [&](IO::InStream &stream) { ChartMarker::load(&stream, &markers); });
    return {markers.begin(), markers.end()};
}

std::string listOf(std::vector<ChartMarker *> const &markers)
{
    return Support::streamOf([&](IO::OutStream &stream) { ChartMarker::save(&stream, markers); });
}

TEST(LineChartMarker, crossesThePlotAtItsX)
{
    EXPECT_EQ(drawn(LineChartMarker(5.0), TestFrame()),
              std::string(CLIP) + "line 20,20 20,50 pen 0.1 dotted #000000ff sharp\nunclip\n");
}

TEST(LineChartMarker, isInvisibleUnlessTheChartShowsTheCurrentStage)
{
    TestFrame frame;
    frame.showCurrentStage = false;
    EXPECT_EQ(drawn(LineChartMarker(5.0), frame), "");
}

TEST(PointsChartMarker, drawsTheSymbolOfTheChartAtEachPoint)
{
    TestFrame frame;
    frame.symbol.setColor(Color(9, 8, 7));
    std::string const expected =
        CLIP + symbolAt({12.0, 46.0}, frame.symbol) + symbolAt({16.0, 50.0}, frame.symbol) + "unclip\n";
    EXPECT_EQ(drawn(PointsChartMarker({{1.0, 2.0}, {3.0, 0.0}}), frame), expected);
    EXPECT_NE(expected.find("pen 0.1 full #090807ff sharp fill #090807ff"), std::string::npos);
}

TEST(PointsChartMarker, isInvisibleUnlessTheChartShowsPointMarkers)
{
    TestFrame frame;
    frame.showPointMarkers = false;
    EXPECT_EQ(drawn(PointsChartMarker({{1.0, 2.0}}), frame), "");
}

TEST(NamedPointChartMarker, drawsItsSymbolAndItsNameToTheRightAndBelow)
{
    NamedPointChartMarker const marker = namedMarker();
    EXPECT_EQ(drawn(marker, TestFrame()), CLIP + symbolAt({12.0, 46.0}, marker.getSymbol()) +
                                              "text 13.5,47.5 'P' font Serif 8 0 #010203ff\nunclip\n");
}

TEST(NamedPointChartMarker, hasNoSwitchInTheChart)
{
    TestFrame frame;
    frame.showCurrentStage = false;
    frame.showPointMarkers = false;
    EXPECT_EQ(drawn(namedMarker(), frame), drawn(namedMarker(), TestFrame()));
}

TEST(NamedPointChartMarker, withoutANameIsItsSymbolAlone)
{
    NamedPointChartMarker marker = namedMarker();
    marker.setName("");
    EXPECT_EQ(drawn(marker, TestFrame()), CLIP + symbolAt({12.0, 46.0}, marker.getSymbol()) + "unclip\n");
}

TEST(NamedPointChartMarker, liesAtInfinityByDefault)
{
    NamedPointChartMarker const marker;
    EXPECT_EQ(marker.getType(), ChartMarker::TYPE_NAMED_POINT);
    EXPECT_TRUE(std::isinf(marker.getPoint().x) && marker.getPoint().x > 0);
    EXPECT_TRUE(std::isinf(marker.getPoint().y) && marker.getPoint().y > 0);
    EXPECT_EQ(marker.getName(), "");
    EXPECT_EQ(marker.getSymbol(), Symbol());
}

TEST(ChartMarkerCopy, isOfTheSameKindWithTheSameValues)
{
    std::unique_ptr<ChartMarker> const line(static_cast<ChartMarker const &>(LineChartMarker(5.0)).copy());
    EXPECT_EQ(dynamic_cast<LineChartMarker &>(*line).getX(), 5.0);
    PointsChartMarker const points({{1.0, 2.0}});
    std::unique_ptr<PointsChartMarker> const pointsCopy(points.copy());
    EXPECT_EQ(pointsCopy->getPoints(), points.getPoints());
    std::unique_ptr<NamedPointChartMarker> const named(namedMarker().copy());
    EXPECT_EQ(blocksWith(*named), blocksWith(namedMarker()));
}

TEST(LineChartMarkerBlock, hasVersion2BehindThatOfTheType)
{
    std::string const bytes = blocksWith(LineChartMarker(5.0));
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().u(0)).block(2, Payload().d(5.0)).bytes());
    LineChartMarker read;
    loadFrom(read, bytes);
    EXPECT_EQ(read.getX(), 5.0);
}

TEST(LineChartMarkerBlock, ofVersion1GoesOnWithValuesOfNoUse)
{
    LineChartMarker read;
    loadFrom(read, BlockCrafter().block(1, Payload().u(0)).block(1, Payload().d(5.0).u(2).d(1.0).d(2.0)).bytes());
    EXPECT_EQ(read.getX(), 5.0);
    for (Payload const &payload : {Payload().d(5.0), Payload().d(5.0).u(4294967295U).d(1.0)}) {
        EXPECT_THROW(loadFrom(read, BlockCrafter().block(1, Payload().u(0)).block(1, payload).bytes()),
                     IO::StreamException);
    }
}

TEST(PointsChartMarkerBlock, hasVersion1WithItsPoints)
{
    std::string const bytes = blocksWith(PointsChartMarker({{1.0, 2.0}, {3.0, 4.0}}));
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().u(1)).block(1, Payload().u(2).v(1, 2).v(3, 4)).bytes());
    PointsChartMarker read({{9.0, 9.0}});
    loadFrom(read, bytes);
    EXPECT_EQ(read.getPoints(), (std::vector<BaVec2d<double>>{{1.0, 2.0}, {3.0, 4.0}}));
}

TEST(PointsChartMarkerBlock, thatPromisesMorePointsThanItHoldsIsRefused)
{
    PointsChartMarker read;
    EXPECT_THROW(
        loadFrom(read, BlockCrafter().block(1, Payload().u(1)).block(1, Payload().u(4294967295U).v(1, 2)).bytes()),
        IO::StreamException);
}

TEST(NamedPointChartMarkerBlock, hasVersion1AndItsSymbolBehind)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().u(2)).block(1, Payload().v(1, 2).s("P"));
    addRecords(crafter, namedMarker().getSymbol());
    EXPECT_EQ(blocksWith(namedMarker()), crafter.bytes());
    NamedPointChartMarker read;
    loadFrom(read, crafter.bytes());
    EXPECT_EQ(read.getPoint(), BaVec2d<double>(1, 2));
    EXPECT_EQ(read.getName(), "P");
    EXPECT_EQ(read.getSymbol(), namedMarker().getSymbol());
}

TEST(ChartMarkerBlocks, ofAnUnknownVersionAreRefused)
{
    LineChartMarker line;
    PointsChartMarker points;
    NamedPointChartMarker named;
    auto const own = [](unsigned int version, Payload const &payload) {
        return BlockCrafter().block(1, Payload().u(0)).block(version, payload).bytes();
    };
    for (unsigned int version : {0U, 2U}) {
        EXPECT_EQ(loadError(line, BlockCrafter().block(version, Payload().u(0)).bytes()), "wrong block version");
        EXPECT_EQ(loadError(points, own(version, Payload().u(0))), "wrong block version");
        EXPECT_EQ(loadError(named, own(version, Payload().v(1, 2).s("P"))), "wrong block version");
    }
    EXPECT_EQ(loadError(line, own(3, Payload().d(1.0))), "wrong block version");
}

TEST(ChartMarkerList, beginsWithABlockOfAllTypes)
{
    LineChartMarker line(5.0);
    PointsChartMarker points({{1.0, 2.0}});
    NamedPointChartMarker named = namedMarker();
    std::string const bytes = listOf({&named, &line, &points});
    BlockCrafter crafter;
    crafter.block(1, Payload().u(3).u(2).u(0).u(1));
    addRecords(crafter, named, line, points);
    EXPECT_EQ(bytes, crafter.bytes());

    std::vector<std::unique_ptr<ChartMarker>> const read = loadList(bytes);
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(dynamic_cast<NamedPointChartMarker &>(*read[0]).getName(), "P");
    EXPECT_EQ(dynamic_cast<LineChartMarker &>(*read[1]).getX(), 5.0);
    EXPECT_EQ(dynamic_cast<PointsChartMarker &>(*read[2]).getPoints().size(), 1U);
}

TEST(ChartMarkerList, isReplacedInLoadingWithoutDeletingAnything)
{
    auto const before = std::make_unique<LineChartMarker>(5.0);
    std::vector<ChartMarker *> markers{before.get()};
    Support::readFrom(listOf({}), [&](IO::InStream &stream) { ChartMarker::load(&stream, &markers); });
    EXPECT_TRUE(markers.empty());
    EXPECT_EQ(before->getX(), 5.0);
}

TEST(ChartMarkerList, ofAnUnknownVersionOrTypeOrCountIsRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([] { loadList(BlockCrafter().block(2, Payload().u(0)).bytes()); }),
              "wrong block version");
    EXPECT_EQ(thrownText<IO::StreamException>([] { loadList(BlockCrafter().block(1, Payload().u(1).u(3)).bytes()); }),
              "illegal value 3 in block");
    EXPECT_THROW(loadList(BlockCrafter().block(1, Payload().u(4294967295U).u(0)).bytes()), IO::StreamException);
}

TEST(ChartMarkerList, holdsTheMarkersBeforeAFault)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().u(2).u(0).u(0));
    addRecords(crafter, LineChartMarker(5.0));
    std::vector<ChartMarker *> markers;
    EXPECT_THROW(
        Support::readFrom(crafter.bytes(), [&](IO::InStream &stream) { ChartMarker::load(&stream, &markers); }),
        IO::StreamException);
    ASSERT_EQ(markers.size(), 1U);
    delete markers[0];
}

} // namespace
} // namespace Zem::Fig2
