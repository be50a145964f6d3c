// Templates: figures that know what data their charts expect.
#include "block_damage.h"
#include "snapshot_fixture.h"

#include <FullDisk.h>
#include <OldFigureWriter.h>
#include <ZemFig2DataInterface.h>
#include <ZemFig2Import.h>
#include <ZemFig2Invalidator.h>
#include <ZemFig2Template.h>

#include <ZemOS.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

std::string saved(Figure const &figure)
{
    return Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, 7, 8); });
}

void load(Figure &figure, std::string const &bytes)
{
    Support::readFrom(bytes, [&](IO::InStream &stream) { figure.load(&stream, -1, -1); });
}

Chart *addChart(Figure &figure, char const *token)
{
    auto *chart = new Chart;
    chart->setToken(QString::fromLatin1(token));
    figure.getRoot()->addChild(chart);
    return chart;
}

/// A page of two charts, the second with the hint "strain".
class TemplateTest : public testing::Test
{
protected:
    TemplateTest()
    {
        pattern.setSize({70, 50});
        first = addChart(pattern, "force");
        second = addChart(pattern, "way");
        pattern.setTypeHint(second, "strain");
    }

    FigureTemplate pattern;
    Chart *first;
    Chart *second;
};

TEST_F(TemplateTest, tellsTheHintOfAnElement)
{
    EXPECT_EQ(pattern.getTypeHint(second), "strain");
    EXPECT_EQ(pattern.getTypeHint(first), "");
    EXPECT_EQ(pattern.getTypeHint(nullptr), "");
    pattern.setTypeHint(second, "stress");
    EXPECT_EQ(pattern.getTypeHint(second), "stress");
    pattern.clearImportedData();
    EXPECT_EQ(pattern.getTypeHint(second), "");
}

TEST_F(TemplateTest, copiesThePageWithoutHints)
{
    FigureTemplate const copy(pattern);
    FigureTemplate const ofFigure(static_cast<Figure const &>(pattern));
    for (FigureTemplate const *each : {&copy, &ofFigure}) {
        EXPECT_EQ(each->toString(), pattern.toString());
        EXPECT_EQ(each->getSize(), BaVec2d<double>(70, 50));
        EXPECT_EQ(each->getTypeHint(second), "");
        EXPECT_EQ(each->getTypeHint(each->getRoot()->getChildBegin()[1]), "");
    }
}

TEST_F(TemplateTest, assignsThePageAndTheHintsOfTheOthersElements)
{
    LiveTokens tokens;
    LiveCharts charts;
    pattern.setTokenInterface(&tokens);
    pattern.setChartInterface(&charts);
    pattern.setBackground(FillStyle(Color(1, 2, 3)));
    FigureTemplate other;
    other.setTypeHint(addChart(other, "gone"), "gone");

    EXPECT_EQ(&(other = pattern), &other);

    EXPECT_EQ(other.toString(), pattern.toString());
    EXPECT_EQ(other.getSize(), BaVec2d<double>(70, 50));
    EXPECT_EQ(other.getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_EQ(other.getTokenInterface(), &tokens);
    EXPECT_EQ(other.getChartInterface(), &charts);
    EXPECT_EQ(other.getTypeHint(second), "strain");
    EXPECT_EQ(other.getTypeHint(childOf(other, 1)), "");
    EXPECT_NE(childOf(other, 1), second);
    EXPECT_EQ(childOf(other, 1)->getFigure(), &other);

    FigureTemplate &same = other;
    other = same;
    EXPECT_EQ(other.toString(), pattern.toString());
}

TEST_F(TemplateTest, isAFigureWithABlockMore)
{
    std::string const bytes = saved(pattern);
    std::string const figure = Support::streamOf([&](IO::OutStream &stream) { pattern.Figure::save(&stream, -1, -1); });
    std::string const hints = BlockCrafter().block(2, Payload().u(1).i(second->getId()).s("strain")).bytes();
    EXPECT_EQ(bytes, figure + hints.substr(BlockCrafter().bytes().size()));
}

TEST_F(TemplateTest, keepsItsHints)
{
    FigureTemplate read;
    read.setTypeHint(addChart(read, "gone"), "gone");
    load(read, saved(pattern));
    EXPECT_EQ(read.toString(), pattern.toString());
    EXPECT_EQ(read.getTypeHint(childOf(read, 1)), "strain");
    EXPECT_EQ(read.getTypeHint(childOf(read)), "");
    EXPECT_NE(childOf(read, 1)->getId(), second->getId());
}

TEST_F(TemplateTest, keepsTheHintsOfElementsInGroups)
{
    auto *group = new Group;
    auto *chart = new Chart;
    group->addChild(chart);
    pattern.getRoot()->addChild(group);
    pattern.setTypeHint(chart, "stress");
    FigureTemplate read;
    load(read, saved(pattern));
    EXPECT_EQ(read.getTypeHint(*static_cast<Group *>(childOf(read, 2))->getChildBegin()), "stress");
}

TEST_F(TemplateTest, doesNotStoreTheHintsOfElementsThatAreGone)
{
    pattern.getRoot()->removeChild(second);
    delete second;
    std::string const blocks = Support::blocksOf(saved(pattern));
    EXPECT_EQ(blocks.substr(blocks.size() - 4), "2:4 ");
}

/// The template without its block of hints.
std::string figureOf(FigureTemplate const &pattern)
{
    return Support::streamOf([&](IO::OutStream &stream) { pattern.Figure::save(&stream, -1, -1); });
}

std::string withHints(FigureTemplate const &pattern, unsigned int version, Payload const &fields)
{
    return figureOf(pattern) + BlockCrafter().block(version, fields).bytes().substr(BlockCrafter().bytes().size());
}

TEST_F(TemplateTest, ofEitherVersionIsRead)
{
    for (unsigned int version : {1U, 2U}) {
        FigureTemplate read;
        Payload const fields = Payload().u(2).i(first->getId()).s("one").i(second->getId()).s("two");
        load(read, withHints(pattern, version, fields));
        EXPECT_EQ(read.getTypeHint(childOf(read)), "one");
        EXPECT_EQ(read.getTypeHint(childOf(read, 1)), "two");
    }
}

TEST_F(TemplateTest, passesOverHintsOfUnknownElements)
{
    FigureTemplate read;
    load(read, withHints(pattern, 2, Payload().u(2).i(-77).s("nobody").i(second->getId()).s("two")));
    EXPECT_EQ(read.getTypeHint(childOf(read, 1)), "two");
    std::string const blocks = Support::blocksOf(saved(read));
    EXPECT_EQ(blocks.substr(blocks.size() - 5), "2:15 "); // 4 + 4 + 4 + 3
}

TEST_F(TemplateTest, knowsTheElementsOfTheLastLoadOnly)
{
    FigureTemplate read;
    load(read, saved(pattern));
    Element const *before = childOf(read);
    load(read, withHints(FigureTemplate(), 2, Payload().u(1).i(first->getId()).s("gone")));
    EXPECT_EQ(numberOfChildren(read), 0U);
    EXPECT_EQ(read.getTypeHint(before), "");
}

TEST_F(TemplateTest, refusesBadHints)
{
    FigureTemplate read;
    EXPECT_EQ(thrownText<IO::StreamException>([&] { load(read, withHints(pattern, 3, Payload().u(0))); }),
              "wrong block version");
    EXPECT_THROW(load(read, withHints(pattern, 2, Payload().u(4294967295U).i(1).s(""))), IO::StreamException);
    EXPECT_THROW(load(read, figureOf(pattern)), IO::StreamException);
}

TEST_F(TemplateTest, givesAHintToTheLaterOfTwoElementsWithOneId)
{
    std::string bytes = withHints(pattern, 2, Payload().u(1).i(first->getId()).s("later"));
    std::size_t patched = 0;
    for (std::size_t const block : blockPlaces(bytes)) {
        // The block of an element begins with its id.
        if (numberAt(bytes, block) < 80 || numberAt(bytes, block + 8) != static_cast<std::uint32_t>(second->getId()))
            continue;
        int const id = first->getId();
        std::memcpy(bytes.data() + block + 8, &id, sizeof id);
        repairChecksum(bytes, block);
        ++patched;
    }
    ASSERT_EQ(patched, 1U);
    FigureTemplate read;
    load(read, bytes);
    EXPECT_EQ(read.getTypeHint(childOf(read)), "");
    EXPECT_EQ(read.getTypeHint(childOf(read, 1)), "later");
}

class TemplateFile : public TemplateTest
{
protected:
    QString path(char const *name) const { return folder.filePath(QString::fromLatin1(name)); }
    static std::vector<char> headOf(QString const &name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray const bytes = file.read(256);
        return {bytes.begin(), bytes.end()};
    }
    void write(QString const &name, std::string const &bytes) const
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }

    QTemporaryDir folder;
    ErrorLog log{false};
    FigureTemplate read;
};

TEST_F(TemplateFile, hasATypeOfItsOwn)
{
    EXPECT_EQ(FigureTemplate::TEMPLATE_FILE_TYPE_ID, QLatin1StringView("KRVFigureTemplate"));
    EXPECT_TRUE(pattern.save(path("a.template"), &log));
    EXPECT_EQ(IO::InStream(path("a.template")).getVersion(), 1U);
    EXPECT_TRUE(Figure::saveFigure(path("a.fig"), &pattern, &log));
    EXPECT_TRUE(FigureTemplate::canOpenFile(headOf(path("a.template"))));
    EXPECT_FALSE(FigureTemplate::canOpenFile(headOf(path("a.fig"))));
    EXPECT_FALSE(FigureTemplate::canOpenFile({}));
    EXPECT_FALSE(Figure::canOpenFile(headOf(path("a.template"))));
    EXPECT_EQ(log.getLog(), "");
}

TEST_F(TemplateFile, comesBackWithItsHints)
{
    EXPECT_TRUE(pattern.save(path("a.template"), &log));
    EXPECT_TRUE(read.load(path("a.template"), &log));
    EXPECT_EQ(read.getTypeHint(childOf(read, 1)), "strain");
    EXPECT_EQ(log.getLog(), "");
}

TEST_F(TemplateFile, isNoFigureFile)
{
    EXPECT_TRUE(pattern.save(path("a.template"), &log));
    EXPECT_EQ(Figure::loadFigure(path("a.template"), &log), nullptr);
    EXPECT_EQ(log.getLog(), "file is no valid figure file\n");
}

TEST_F(TemplateFile, thatCannotBeOpenedIsToldInTheLog)
{
    QString const nowhere = path("no folder/a.template");
    EXPECT_FALSE(pattern.save(nowhere, &log));
    EXPECT_EQ(log.getLog(), QStringLiteral("could not open output file '%1'\n").arg(OS::convertSeparators(nowhere)));
    ErrorLog ofReading(false);
    EXPECT_FALSE(read.load(nowhere, &ofReading));
    EXPECT_EQ(ofReading.getLog(), "stream initialisation failed\n");
}

TEST_F(TemplateFile, thatCannotBeWrittenLeavesTheOldOne)
{
    EXPECT_TRUE(pattern.save(path("a.template"), &log));
    pattern.getRoot()->addChild(addLabel(*std::make_unique<Figure>(), "x")->copy());
    {
        Support::FullDisk const full(100);
        EXPECT_FALSE(pattern.save(path("a.template"), &log));
    }
    EXPECT_NE(log.getLog(), "");
    EXPECT_TRUE(read.load(path("a.template"), &log));
    EXPECT_EQ(numberOfChildren(read), 2U);
}

TEST_F(TemplateFile, thatIsDamagedIsToldInTheLog)
{
    EXPECT_TRUE(pattern.save(path("a.template"), &log));
    QFile file(path("a.template"));
    ASSERT_TRUE(file.resize(file.size() - 1));
    EXPECT_FALSE(read.load(path("a.template"), &log));
    EXPECT_NE(log.getLog(), "");
}

/// A figure that begins with its tokens: a chart, a reference to a chart, and a text.
BlockCrafter figureWithTokens(Figure const &figure)
{
    return BlockCrafter().add([&](IO::OutStream &stream) {
        DataInterface registry;
        registry.setChart("force", new ChartData);
        registry.setTypeHint(Token_t("force", VARIABLE_CHART), "hint of force");
        registry.setChartReference("way");
        registry.setTypeHint(Token_t("way", VARIABLE_CHART_REFERENCE), "hint of way");
        registry.setString("text", "x");
        registry.setTypeHint(Token_t("text", VARIABLE_STRING), "hint of text");
        registry.save(&stream, -1, -1);
        figure.save(&stream, -1, -1);
    });
}

TEST_F(TemplateFile, takesTheHintsOfAFigureFromItsTokens)
{
    Figure figure;
    addChart(figure, "force");
    addChart(figure, "way");
    addChart(figure, "text");
    addChart(figure, "unknown");
    addChart(figure, "");
    write(path("a.fig"), figureWithTokens(figure).bytes());
    read.setTypeHint(figure.getRoot(), "gone");

    ASSERT_TRUE(read.load(path("a.fig"), &log)) << log.getLog().toStdString();

    EXPECT_EQ(read.getTypeHint(figure.getRoot()), "");

    EXPECT_EQ(read.toString(), figure.toString());
    Names hints;
    for (std::size_t i = 0; i < 5; ++i)
        hints.push_back(read.getTypeHint(childOf(read, i)).toStdString());
    EXPECT_EQ(hints, (Names{"hint of force", "hint of way", "", "", ""}));
}

TEST_F(TemplateFile, takesInAnOlderFigureWithItsHints)
{
    using namespace Support;
    OldRecords const chart = oldElement(Import::OLD_CHART).add(oldChart(1)).add(oldAxis(1)).add(oldAxis(1));
    write(path("old.fig"), oldFile(oldFigure(3, oldRegistry(), {chart})));

    read.setTypeHint(first, "gone");
    read.setBackground(FillStyle(Color(90, 80, 70)));
    LiveTokens tokens;
    Invalidator invalidator;
    read.setTokenInterface(&tokens);
    read.registerInvalidator(&invalidator);

    ASSERT_TRUE(read.load(path("old.fig"), &log)) << log.getLog().toStdString();

    EXPECT_EQ(read.getTypeHint(first), "");
    read.update(STAGE, false);
    EXPECT_EQ(Support::text(invalidator.getInvalidArea()), "0,0 100,0 100,50 0,50");
    read.unregisterInvalidator(&invalidator);

    EXPECT_EQ(read.getSize(), BaVec2d<double>(100, 50));
    std::unique_ptr<Figure> const figure(Figure::loadFigure(path("old.fig"), &log));
    EXPECT_EQ(read.getBackground(), figure->getBackground());
    ASSERT_EQ(numberOfChildren(read), 1U);
    EXPECT_EQ(read.getTypeHint(childOf(read)), "strain");
    EXPECT_EQ(childOf(read)->getFigure(), &read);
}

} // namespace
} // namespace Zem::Fig2
