// Damaged snippets and templates load or are refused with IO::StreamException; what was loaded can be shown and saved.
#include "block_damage.h"
#include "load_limit.h"
#include "snapshot_fixture.h"

#include <AllocationPeak.h>
#include <ZemFig2Connector.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2Legend.h>
#include <ZemFig2SnapshotFilter.h>
#include <ZemFig2SnapshotFrame.h>
#include <ZemFig2Template.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

/// A page with one of everything that a snapshot treats by itself.
void fill(Figure &page, LiveTokens &tokens, Image8 const &picture)
{
    tokens.set("a", Value(QString("frozen")));
    tokens.images["camera"].setImage(&picture);
    tokens.images["camera"].setLegendData(Legend2::Legend(uLength), Legend2::Data());
    tokens.charts["curve"].addDataset(new ChartDataset("a"));
    auto *inner = new Figure;
    addLabel(*inner, "inside");
    tokens.snapshots.emplace("before", SnapshotData(STAGE, inner, new FigureTokenContainer));
    page.setTokenInterface(&tokens);
    addLabel(page, "$a$");
    auto *image = new Image;
    image->setToken("camera");
    page.getRoot()->addChild(image);
    auto *legend = new Legend;
    page.getRoot()->addChild(legend);
    legend->connect(image, "");
    auto *group = new Group;
    auto *chart = new Chart;
    chart->setToken("curve");
    group->addChild(chart);
    page.getRoot()->addChild(group);
    auto *frame = new SnapshotFrame;
    frame->setSnapshotSourceId("before");
    page.getRoot()->addChild(frame);
    addGenericChart(page, "time", {DataToken("way", QString("left"))});
}

std::string everythingInASnippet()
{
    Image8 const picture(4, 3);
    LiveTokens tokens;
    LiveCharts charts;
    Figure page;
    fill(page, tokens, picture);
    page.setChartInterface(&charts);
    SnapshotData snapshot(STAGE, &page, SnapshotAllElementFilter());
    auto *project = new TokenContainer;
    project->setValue(plain("p"), Value(5));
    snapshot.setProjectTokenContainer(project);
    Legend2::HistogramData histogram;
    histogram.addHistogram({{1.5, 3U}});
    snapshot.setLegendData(Legend2::Legend(uStrain), Legend2::Data(), true, Legend2::ToleranceParams(), histogram);
    return saved(snapshot);
}

std::string everythingInATemplate()
{
    Image8 const picture(4, 3);
    LiveTokens tokens;
    FigureTemplate page;
    fill(page, tokens, picture);
    for (auto it = page.getElementBegin(); it != page.getElementEnd(); ++it)
        page.setTypeHint(*it, "hint");
    return Support::streamOf([&](IO::OutStream &stream) { page.save(&stream, -1, -1); });
}

void show(SnapshotData &snapshot)
{
    if (Figure *figure = snapshot.getFigure()) {
        figure->update(StageIdentifier(), true);
        drawn(*figure);
    }
}

void show(FigureTemplate &page)
{
    LiveTokens tokens;
    page.setTokenInterface(&tokens);
    page.update(StageIdentifier(), true);
    drawn(page);
}

void loadFrom(IO::InStream &stream, SnapshotData &snapshot)
{
    snapshot.load(&stream);
}

void loadFrom(IO::InStream &stream, FigureTemplate &page)
{
    page.load(&stream, -1, -1);
}

void save(IO::OutStream &stream, SnapshotData const &snapshot)
{
    SnapshotData(snapshot).save(&stream);
}

void save(IO::OutStream &stream, FigureTemplate const &page)
{
    page.save(&stream, -1, -1);
}

/// False when the data are refused. Whatever they claim, loading keeps to its limit.
template <class Document>
bool loads(std::string const &bytes)
{
    std::istringstream input(bytes);
    Document document;
    {
        Support::AllocationPeak const peak;
        try {
            IO::InStream stream(&input);
            loadFrom(stream, document);
        } catch (IO::StreamException const &) {
            return false;
        }
        EXPECT_LE(peak.bytes(), loadLimit(bytes.size()));
    }
    // A chart refuses to be laid out along an axis whose ends are no numbers.
    std::string const refusal = Support::progError([&] { show(document); });
    EXPECT_TRUE(refusal == "nothing thrown" || refusal.starts_with("fig_range_calc: ")) << refusal;
    Support::streamOf([&](IO::OutStream &stream) { save(stream, document); });
    return true;
}

template <class Document>
class DamagedDocument : public testing::Test
{
protected:
    static std::string everything()
    {
        if constexpr (std::is_same_v<Document, SnapshotData>)
            return everythingInASnippet();
        else
            return everythingInATemplate();
    }

    Support::FakeCalculator calculator;
};

using Documents = testing::Types<SnapshotData, FigureTemplate>;
TYPED_TEST_SUITE(DamagedDocument, Documents);

TYPED_TEST(DamagedDocument, loadsUndamaged)
{
    EXPECT_TRUE(loads<TypeParam>(this->everything()));
}

TYPED_TEST(DamagedDocument, isRefusedAfterEveryTruncation)
{
    std::string const bytes = this->everything();
    for (std::size_t length = 0; length < bytes.size(); length += 3)
        EXPECT_FALSE(loads<TypeParam>(bytes.substr(0, length))) << length;
    EXPECT_FALSE(loads<TypeParam>(bytes.substr(0, bytes.size() - 1)));
}

TYPED_TEST(DamagedDocument, loadsOrIsRefusedAfterAnyMutationWithARightChecksum)
{
    std::string const bytes = this->everything();
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    std::mt19937 random(20240611);
    int loaded = 0;
    for (int i = 0; i < 3000; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        loaded += loads<TypeParam>(damaged) ? 1 : 0;
    }
    EXPECT_GT(loaded, 300);
    EXPECT_LT(loaded, 2700);
}

/// The peak while the bytes are loaded, whether they are good or not.
template <class Document>
std::size_t peakOf(std::string const &bytes)
{
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    Document document;
    Support::AllocationPeak const peak;
    Support::thrownText<IO::StreamException>([&] { loadFrom(stream, document); });
    return peak.bytes();
}

TEST(SnapshotMemory, isNotTakenForWhatABlockOnlyClaims)
{
    using Support::BlockCrafter;
    using Support::Payload;
    BlockCrafter charts;
    charts.block(10, Payload().b(true).b(false).b(false).b(false).b(false).b(false).b(false).b(true).u(0).u(3));
    charts.block(1, Payload().u(4294967295U));
    EXPECT_LE(peakOf<SnapshotData>(charts.bytes()), 100000U);

    std::string hints = Support::streamOf([](IO::OutStream &stream) { Figure().save(&stream, -1, -1); });
    hints += BlockCrafter().block(2, Payload().u(4294967295U)).bytes().substr(BlockCrafter().bytes().size());
    EXPECT_LE(peakOf<FigureTemplate>(hints), 200000U);
}

TEST(SnapshotMemory, ofManyHintsIsASmallMultipleOfTheirBytes)
{
    using Support::BlockCrafter;
    using Support::Payload;
    Payload hints;
    hints.u(100000);
    for (int i = 0; i < 100000; ++i)
        hints.i(-i).s("");
    std::string bytes = Support::streamOf([](IO::OutStream &stream) { Figure().save(&stream, -1, -1); });
    bytes += BlockCrafter().block(2, hints).bytes().substr(BlockCrafter().bytes().size());
    EXPECT_LE(peakOf<FigureTemplate>(bytes), loadLimit(bytes.size()));
}

} // namespace
} // namespace Zem::Fig2
