// The stream blocks of a snapshot, in each version.
#include "snapshot_fixture.h"

#include <ZemFig2DataInterface.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

/// What stands in a crafted snapshot; everything that has a default differs from it.
struct CraftedSnapshot
{
    unsigned int version = 10;
    bool hasLegendData = true;
    bool showTolerances = true;
    bool compatible = true;
    bool hasFigure = true;
    bool hasTokens = true;
    bool hasProjectTokens = true;
    bool hasCharts = true;

    Payload header() const
    {
        Payload fields;
        fields.b(true);
        if (version >= 2)
            fields.b(hasLegendData);
        if (version >= 9)
            fields.b(showTolerances);
        if (version >= 10)
            fields.b(compatible);
        if (version >= 3)
            fields.b(hasFigure);
        fields.b(hasTokens);
        if (version >= 7)
            fields.b(hasProjectTokens);
        if (version >= 6)
            fields.b(hasCharts);
        if (version >= 4)
            fields.u(17);
        if (version >= 8)
            fields.u(3);
        return fields;
    }

    static void saveFigure(IO::OutStream &stream)
    {
        Figure figure;
        figure.setSize({70, 50});
        addLabel(figure, "$a$");
        figure.save(&stream, -1, -1);
    }

    void saveTokens(IO::OutStream &stream) const
    {
        if (version < 5) {
            DataInterface registry;
            registry.setString("a", "registered");
            registry.setString("unused", "left out");
            registry.save(&stream, -1, -1);
            return;
        }
        FigureTokenContainer tokens;
        tokens.setValue(plain("a"), Value(QString("frozen")));
        tokens.save(&stream);
    }

    static void saveProjectTokens(IO::OutStream &stream)
    {
        TokenContainer project;
        project.setValue(plain("p"), Value(QString("project")));
        project.save(&stream);
    }

    static void saveCharts(IO::OutStream &stream)
    {
        LiveCharts live;
        Figure figure;
        figure.setChartInterface(&live);
        addGenericChart(figure, "time", {DataToken("way")});
        SnapshotChartInterface(&figure).save(&stream);
    }

    static Legend2::Legend legend()
    {
        Legend2::Legend legend(uStrain);
        legend.setFixedMinimum(-2.0);
        return legend;
    }
    static Legend2::Data data()
    {
        Legend2::Data data;
        data.setDynamicMaximum(7.0);
        return data;
    }
    static Legend2::ToleranceParams tolerance()
    {
        Legend2::ToleranceParams tolerance;
        tolerance.setTitle("limits");
        return tolerance;
    }
    static Legend2::HistogramData histogram()
    {
        Legend2::HistogramData histogram;
        histogram.addHistogram({{1.5, 3U}});
        return histogram;
    }

    std::string bytes() const
    {
        BlockCrafter crafter;
        crafter.block(version, header());
        crafter.add([this](IO::OutStream &stream) {
            if (hasFigure || version < 3)
                saveFigure(stream);
            if (hasTokens)
                saveTokens(stream);
            if (hasProjectTokens && version >= 7)
                saveProjectTokens(stream);
            if (hasCharts && version >= 6)
                saveCharts(stream);
            if (version < 2)
                return;
            legend().save(&stream);
            data().save(&stream);
            if (version < 9)
                return;
            tolerance().save(&stream);
            histogram().save(&stream);
        });
        return crafter.bytes();
    }
};

/// Behind the figure's element blocks stands nothing more.
bool endsThere(std::string const &bytes)
{
    SnapshotData snapshot;
    bool atEnd = false;
    Support::readFrom(bytes, [&](IO::InStream &stream) {
        snapshot.load(&stream);
        atEnd = !thrownText<IO::StreamException>([&] { stream.openBlock(); }).empty();
    });
    return atEnd;
}

TEST(SnapshotBlocks, ofAnEmptyOneAreTheHeaderAndTheScale)
{
    BlockCrafter expected;
    expected.block(10, Payload().b(true).b(false).b(false).b(false).b(false).b(false).b(false).b(false).u(0).u(
                           StageIdentifier().getIdentifier()));
    expected.add([](IO::OutStream &stream) {
        Legend2::Legend(uLength).save(&stream);
        Legend2::Data().save(&stream);
        Legend2::ToleranceParams().save(&stream);
        Legend2::HistogramData().save(&stream);
    });
    EXPECT_EQ(saved(SnapshotData()), expected.bytes());
}

TEST(SnapshotBlocks, areThoseOfAllParts)
{
    Support::FakeCalculator const calculator;
    CraftedSnapshot const crafted;
    SnapshotData snapshot;
    load(snapshot, crafted.bytes());
    // But for the ids of the elements.
    EXPECT_EQ(Support::blocksOf(saved(snapshot)), Support::blocksOf(crafted.bytes()));
    EXPECT_EQ(Support::blocksOf(crafted.bytes()).find("10:16 5:16 1:5 "), 0U);
    std::string const head = BlockCrafter().block(10, crafted.header()).bytes();
    EXPECT_EQ(saved(snapshot).substr(0, head.size()), head);
}

class SnapshotVersion : public testing::TestWithParam<unsigned int>
{
protected:
    Support::FakeCalculator calculator;
};

INSTANTIATE_TEST_SUITE_P(SnapshotBlocks, SnapshotVersion, testing::Range(1U, 11U));

TEST_P(SnapshotVersion, isReadWithWhatItHas)
{
    CraftedSnapshot crafted;
    crafted.version = GetParam();
    SnapshotData snapshot;

    load(snapshot, crafted.bytes());

    unsigned int const version = GetParam();
    Legend2::Legend legend;
    Legend2::Data data;
    Figure *figure = snapshot.getFigure();
    ASSERT_NE(figure, nullptr);
    EXPECT_EQ(figure->getSize(), BaVec2d<double>(70, 50));
    EXPECT_EQ(static_cast<Label *>(childOf(*figure))->getResolvedText(), version < 5 ? "registered" : "frozen");
    ASSERT_NE(snapshot.getTokenContainer(), nullptr);
    EXPECT_EQ(valueOf(*snapshot.getTokenContainer(), "unused"), "unknown");
    EXPECT_EQ(snapshot.getProjectTokenContainer() != nullptr, version >= 7);
    EXPECT_EQ(valueOf(*figure->getTokenInterface(), "p"), version < 7 ? "unknown" : "project");
    EXPECT_EQ(figure->getChartInterface() != nullptr, version >= 6);
    EXPECT_EQ(snapshot.getDrawingMode(), version < 4 ? 0U : 17U);
    EXPECT_EQ(snapshot.getStage(), version < 8 ? StageIdentifier() : StageIdentifier(3));
    EXPECT_EQ(snapshot.getLegendData(&legend, &data), version >= 2);
    if (version >= 2) {
        EXPECT_EQ(legend.getFixedMinimum(), -2.0);
        EXPECT_EQ(data, CraftedSnapshot::data());
        EXPECT_EQ(legend.getV602CompatibilityMode(), version >= 10);
    }
    EXPECT_EQ(snapshot.showTolerances(), version >= 9);
    EXPECT_EQ(snapshot.getToleranceParams(), version < 9 ? Legend2::ToleranceParams() : CraftedSnapshot::tolerance());
    EXPECT_EQ(snapshot.getHistogramData(), version < 9 ? Legend2::HistogramData() : CraftedSnapshot::histogram());
    EXPECT_TRUE(endsThere(crafted.bytes()));
}

TEST_P(SnapshotVersion, isReadWithoutWhatItLacks)
{
    CraftedSnapshot crafted;
    crafted.version = GetParam();
    crafted.hasLegendData = crafted.showTolerances = crafted.compatible = false;
    crafted.hasFigure = crafted.hasTokens = crafted.hasProjectTokens = crafted.hasCharts = false;
    SnapshotData snapshot(STAGE, new Figure, new FigureTokenContainer);
    snapshot.setProjectTokenContainer(new TokenContainer);
    snapshot.setLegendData(Legend2::Legend(), Legend2::Data());

    load(snapshot, crafted.bytes());

    Legend2::Legend legend;
    Legend2::Data data;
    EXPECT_EQ(snapshot.getFigure() != nullptr, GetParam() < 3);
    EXPECT_EQ(snapshot.getTokenContainer(), nullptr);
    EXPECT_EQ(snapshot.getProjectTokenContainer(), nullptr);
    EXPECT_FALSE(snapshot.getLegendData(&legend, &data));
    EXPECT_FALSE(snapshot.showTolerances());
    // The scale follows all the same.
    EXPECT_EQ(snapshot.getHistogramData(), GetParam() < 9 ? Legend2::HistogramData() : CraftedSnapshot::histogram());
    EXPECT_TRUE(endsThere(crafted.bytes()));
}

TEST_P(SnapshotVersion, mayHaveTokensWithoutAFigure)
{
    CraftedSnapshot crafted;
    crafted.version = GetParam();
    crafted.hasFigure = false;
    SnapshotData snapshot;
    load(snapshot, crafted.bytes());
    ASSERT_NE(snapshot.getTokenContainer(), nullptr);
    EXPECT_EQ(valueOf(*snapshot.getTokenContainer(), "a"), GetParam() >= 5  ? "frozen"
                                                           : GetParam() < 3 ? "registered"
                                                                            : "unknown");
}

TEST_P(SnapshotVersion, isWholeInEveryField)
{
    std::string const bytes = CraftedSnapshot{GetParam()}.bytes();
    std::string const head = BlockCrafter().block(GetParam(), CraftedSnapshot{GetParam()}.header()).bytes();
    std::size_t const size = CraftedSnapshot{GetParam()}.header().bytes().size();
    SnapshotData snapshot;
    for (std::size_t length = 0; length < size; ++length) {
        std::string const shorter = BlockCrafter()
                                        .add([&](IO::OutStream &stream) {
                                            stream.beginBlock(static_cast<unsigned int>(length), GetParam());
                                            stream.writeData(CraftedSnapshot{GetParam()}.header().bytes().data(),
                                                             static_cast<unsigned int>(length));
                                            stream.endBlock();
                                        })
                                        .bytes();
        EXPECT_THROW(load(snapshot, shorter + bytes.substr(head.size())), IO::StreamException) << length;
    }
}

TEST(SnapshotBlocks, withTolerancesButWithoutAScaleShowNone)
{
    Support::FakeCalculator const calculator;
    CraftedSnapshot crafted;
    crafted.hasLegendData = false;
    SnapshotData snapshot;
    load(snapshot, crafted.bytes());
    EXPECT_FALSE(snapshot.showTolerances());
    EXPECT_EQ(snapshot.getToleranceParams(), CraftedSnapshot::tolerance());
    std::string const head = BlockCrafter().block(10, crafted.header()).bytes();
    EXPECT_EQ(saved(snapshot).substr(0, head.size()), head);
}

TEST(SnapshotBlocks, ofANewerVersionAreRefused)
{
    SnapshotData snapshot(STAGE, new Figure, nullptr);
    CraftedSnapshot crafted;
    crafted.version = 11;
    EXPECT_EQ(thrownText<IO::StreamException>([&] { load(snapshot, crafted.bytes()); }), "wrong block version");
    EXPECT_EQ(snapshot.getFigure(), nullptr);
    crafted.version = 0;
    EXPECT_EQ(thrownText<IO::StreamException>([&] { load(snapshot, crafted.bytes()); }), "wrong block version");
}

TEST(SnapshotBlocks, tellThatTheElementsCannotBeLoaded)
{
    SnapshotData snapshot;
    Payload const withFigure = CraftedSnapshot().header();
    std::string const text = thrownText<IO::StreamException>(
        [&] { load(snapshot, BlockCrafter().block(10, withFigure).block(6, Payload()).bytes()); });
    EXPECT_EQ(text, "cannot load snapshot elements: wrong block version");
}

TEST(SnapshotBlocks, tellOfElementsThatNobodyCanMakeInTheSameWay)
{
    SnapshotData snapshot;
    BlockCrafter crafter;
    crafter.block(10, CraftedSnapshot().header());
    crafter.add([](IO::OutStream &stream) {
        Figure figure;
        figure.save(&stream, -1, -1);
    });
    // A root whose one child is an image label, for which there is no creator.
    std::string bytes = crafter.bytes();
    std::string const root = BlockCrafter().block(2, Payload().u(0).b(false).i(0)).bytes();
    std::string const header = BlockCrafter().bytes();
    bytes.resize(bytes.size() - (root.size() - header.size()));
    bytes += BlockCrafter().block(2, Payload().u(1).u(13).b(false).i(0)).bytes().substr(header.size());
    bytes += BlockCrafter().block(1, Payload().u(0)).bytes().substr(header.size());
    std::string const text = thrownText<IO::StreamException>([&] { load(snapshot, bytes); });
    EXPECT_EQ(text.find("cannot load snapshot elements: "), 0U) << text;
}

/// Snapshots within snapshots, so many levels.
std::unique_ptr<SnapshotData> nested(unsigned int levels)
{
    auto snapshot = std::make_unique<SnapshotData>(STAGE, new Figure, new FigureTokenContainer);
    for (unsigned int level = 1; level < levels; ++level) {
        auto *tokens = new FigureTokenContainer;
        tokens->setValue(TokenInfo(TokenInfo::TYPE_SNAPSHOT, "inner", ""), snapshot.release());
        snapshot = std::make_unique<SnapshotData>(STAGE, new Figure, tokens);
    }
    return snapshot;
}

unsigned int levelsOf(SnapshotData const *snapshot)
{
    unsigned int levels = 0;
    for (; snapshot; snapshot = snapshot->getTokenContainer()->getSnapshot("inner"))
        ++levels;
    return levels;
}

TEST(SnapshotNesting, isKeptTo256Levels)
{
    SnapshotData snapshot;
    load(snapshot, saved(*nested(256)));
    EXPECT_EQ(levelsOf(&snapshot), 256U);
}

TEST(SnapshotNesting, isNotWrittenDeeper)
{
    auto const snapshot = nested(257);
    for (int times = 0; times < 2; ++times)
        EXPECT_EQ(thrownText<IO::StreamException>([&] { saved(*snapshot); }), "snapshots nested too deeply");
    EXPECT_NO_THROW(saved(*nested(256)));
}

TEST(SnapshotNesting, isNotReadDeeper)
{
    BlockCrafter crafter;
    crafter.block(10, Payload().b(true).b(false).b(false).b(false).b(false).b(true).b(false).b(false).u(0).u(3));
    crafter.block(3, Payload().u(0).u(1).u(0).u(0).s("inner"));
    crafter.block(3, Payload().b(true));
    auto const inner = nested(256);
    crafter.add([&](IO::OutStream &stream) {
        TokenInfo(TokenInfo::TYPE_SNAPSHOT, "inner", "").save(&stream);
        inner->save(&stream);
        Legend2::Legend(uLength).save(&stream);
        Legend2::Data().save(&stream);
        Legend2::ToleranceParams().save(&stream);
        Legend2::HistogramData().save(&stream);
    });
    SnapshotData snapshot;
    std::string const text = thrownText<IO::StreamException>([&] { load(snapshot, crafter.bytes()); });
    EXPECT_NE(text.find("snapshots nested too deeply"), std::string::npos);
    // What has failed does not count the next time.
    load(snapshot, saved(*inner));
    EXPECT_EQ(levelsOf(&snapshot), 256U);
}

} // namespace
} // namespace Zem::Fig2
