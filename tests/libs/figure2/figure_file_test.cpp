#include "crafted_element.h"
#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>
#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>

#include <ZemScriptObject.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

std::string saved(Figure const &figure)
{
    return Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
}

void load(Figure &figure, std::string const &bytes)
{
    Support::readFrom(bytes, [&](IO::InStream &stream) { figure.load(&stream, -1, -1); });
}

BlockCrafter page(unsigned int version, Payload const &fields)
{
    return BlockCrafter().block(version, fields).add([](IO::OutStream &stream) {
        FillStyle(Color(1, 2, 3)).save(&stream);
    });
}

/// The root's element blocks and its table of two rectangles.
BlockCrafter withRoot(BlockCrafter crafter, unsigned int version = 10)
{
    return CraftedElement().addTo(std::move(crafter), version).block(2, Payload().u(2).u(1).u(1).b(false).i(0));
}

CraftedElement crafted(int id, char const *name = "", unsigned int connectors = 0)
{
    CraftedElement element;
    element.id = id;
    element.name = name;
    element.connectors = connectors;
    return element;
}

QString nameOf(Element const *element)
{
    return element->getScriptObject()->getName();
}

TEST(FigureBlocks, arePageBackgroundAndRoot)
{
    Figure figure;
    figure.getRoot()->getScriptObject()->setName("");

    EXPECT_EQ(Support::blocksOf(saved(figure)), "5:16 1:5 10:89 2:20 1:5 1:31 2:9 ");
}

TEST(FigureBlocks, keepEveryElement)
{
    Figure figure;
    figure.setSize({100, 50});
    figure.setBackground(FillStyle(Color(4, 5, 6)));
    figure.getRoot()->addChild(new Rectangle);
    figure.getRoot()->addChild(new Line);
    figure.getRoot()->addChild(new Polygon);
    auto *group = new Group;
    group->addChild(new Label);
    group->addChild(new Ellipse);
    figure.getRoot()->addChild(group);
    Figure read;

    load(read, saved(figure));

    EXPECT_EQ(read.getSize(), BaVec2d<double>(100, 50));
    EXPECT_EQ(read.getBackground(), FillStyle(Color(4, 5, 6)));
    EXPECT_EQ(read.toString().toStdString(), figure.toString().toStdString());
    auto stored = figure.getElementBegin();
    for (auto it = read.getElementBegin(); it != read.getElementEnd(); ++it, ++stored) {
        EXPECT_EQ(nameOf(*it), nameOf(*stored));
        EXPECT_EQ(it->getFigure(), &read);
    }
}

struct PageRow
{
    unsigned int version;
    Payload fields;
};

TEST(FigureBlocks, ofEachVersionAreRead)
{
    Payload const size = Payload().v(100, 50);
    for (PageRow const &row :
         {PageRow{1, size}, PageRow{2, Payload(size).b(true)}, PageRow{3, Payload(size).b(true).s("dropped")},
          PageRow{4, Payload(size).s("dropped")}, PageRow{5, size}}) {
        Figure figure;
        BlockCrafter crafter = withRoot(page(row.version, row.fields));
        crafter = crafted(1).addTo(crafted(2).addTo(std::move(crafter), 10), 10);
        load(figure, crafter.bytes());
        EXPECT_EQ(figure.getSize(), BaVec2d<double>(100, 50));
        EXPECT_EQ(figure.getBackground(), FillStyle(Color(1, 2, 3)));
        EXPECT_EQ(std::distance(figure.getElementBegin(), figure.getElementEnd()), 2);
    }
}

TEST(FigureBlocks, holdWhatEachOlderVersionNeeds)
{
    for (unsigned int version : {2U, 3U, 4U}) {
        Figure figure;
        EXPECT_THROW(load(figure, withRoot(page(version, Payload().v(1, 1))).bytes()), IO::StreamException);
    }
}

TEST(FigureBlocks, ofAnotherVersionAreRefused)
{
    for (unsigned int version : {0U, 6U}) {
        Figure figure;
        EXPECT_EQ(thrownText<IO::StreamException>([&] { load(figure, page(version, Payload().v(1, 1)).bytes()); }),
                  "wrong block version");
    }
}

TEST(FigureLoad, replacesWhatWasThere)
{
    Figure figure;
    auto *old = new Rectangle;
    figure.getRoot()->addChild(old);
    old->setSelected(true);

    load(figure, saved(Figure()));

    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
    EXPECT_TRUE(figure.getSelectedElements().empty());
    EXPECT_EQ(figure.getRoot()->getScriptObject()->getParent(), nullptr);
    EXPECT_EQ(figure.getElementsScriptObject()->getChildren().size(), 0U);
}

TEST(FigureLoad, thatFailsLeavesAnEmptyPage)
{
    Figure figure;
    figure.getRoot()->addChild(new Rectangle);

    EXPECT_THROW(load(figure, withRoot(page(5, Payload().v(1, 1))).bytes()), IO::StreamException);

    ASSERT_NE(figure.getRoot(), nullptr);
    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
}

TEST(FigureLoad, givesNewIds)
{
    Figure figure;
    auto *element = new Rectangle;
    figure.getRoot()->addChild(element);
    int const stored = element->getId();
    Figure read;

    load(read, saved(figure));

    EXPECT_GT(read.getElementBegin()->getId(), stored);
}

BlockCrafter withConnector(BlockCrafter crafter, int targetId)
{
    crafter = crafted(1, "first", 1).addTo(std::move(crafter), 10).block(1, Payload().u(2).s("s").s("t").i(targetId));
    return crafted(2, "second").addTo(std::move(crafter), 10);
}

TEST(FigureLoad, bindsConnectorsByStoredIds)
{
    Figure figure;

    load(figure, withConnector(withRoot(page(5, Payload().v(1, 1))), 2).bytes());

    Element *first = *figure.getElementBegin();
    Element *second = *std::next(figure.getElementBegin());
    QString point;
    EXPECT_EQ(first->getConnectorTarget(&point), second);
    EXPECT_EQ(point, "t");
    ASSERT_EQ(second->getConnectorEnd() - second->getConnectorBegin(), 1);
    EXPECT_EQ(*second->getConnectorBegin(), *first->getConnectorBegin());
    EXPECT_EQ((*first->getConnectorBegin())->getSourceName(), "s");
}

TEST(FigureLoad, writesConnectorsWithTheNewIds)
{
    Figure figure;
    load(figure, withConnector(withRoot(page(5, Payload().v(1, 1))), 2).bytes());
    Figure again;

    load(again, saved(figure));

    Element *first = *again.getElementBegin();
    EXPECT_EQ(first->getConnectorTarget(nullptr), *std::next(again.getElementBegin()));
    EXPECT_EQ((*first->getConnectorBegin())->getTargetId(), (*std::next(figure.getElementBegin()))->getId());
}

TEST(FigureLoad, refusesConnectorsToMissingIdsAndToThemselves)
{
    for (int target : {99, 1}) {
        Figure figure;
        std::string const bytes = withConnector(withRoot(page(5, Payload().v(1, 1))), target).bytes();
        EXPECT_EQ(thrownText<IO::StreamException>([&] { load(figure, bytes); }),
                  "dangling connector, report corrupted");
    }
}

TEST(FigureLoad, bindsToTheLaterOfTwoElementsWithOneId)
{
    Figure figure;
    BlockCrafter crafter =
        CraftedElement().addTo(page(5, Payload().v(1, 1)), 10).block(2, Payload().u(3).u(1).u(1).u(1).b(false).i(0));
    crafter = withConnector(std::move(crafter), 7);
    crafter = crafted(7, "third").addTo(std::move(crafter), 10);
    std::string bytes = crafter.bytes();
    load(figure, bytes);
    EXPECT_EQ(nameOf((*figure.getElementBegin())->getConnectorTarget(nullptr)), "third");
}

TEST(FigureLoad, bindsConnectorsOfTheRootToo)
{
    Figure figure;
    CraftedElement root;
    root.connectors = 1;
    BlockCrafter crafter = root.addTo(page(5, Payload().v(1, 1)), 10)
                               .block(1, Payload().u(0).s("").s("").i(2))
                               .block(2, Payload().u(1).u(1).b(false).i(0));

    load(figure, crafted(2).addTo(std::move(crafter), 10).bytes());

    EXPECT_EQ(figure.getRoot()->getConnectorTarget(nullptr), *figure.getElementBegin());
    EXPECT_NO_THROW(saved(figure));
}

TEST(FigureLoad, takesNamesAsTheyAreStored)
{
    Figure figure;
    BlockCrafter crafter = withRoot(page(5, Payload().v(1, 1)));
    crafter = crafted(1, "twice").addTo(std::move(crafter), 9);

    load(figure, crafted(2, "twice").addTo(std::move(crafter), 9).bytes());

    EXPECT_EQ(nameOf(*figure.getElementBegin()), "twice");
    EXPECT_EQ(nameOf(*std::next(figure.getElementBegin())), "twice");
}

TEST(FigureLoad, makesNamesForOlderFilesWithTheRootCounted)
{
    Figure figure;
    BlockCrafter crafter = withRoot(page(5, Payload().v(1, 1)), 8);
    crafter = crafted(1).addTo(std::move(crafter), 8);

    load(figure, crafted(2).addTo(std::move(crafter), 8).bytes());

    EXPECT_EQ(nameOf(*figure.getElementBegin()), "rectangle_1");
    EXPECT_EQ(nameOf(*std::next(figure.getElementBegin())), "rectangle_2");
}

TEST(FigureLoad, namesOlderGroupsBeforeTheirChildren)
{
    Figure figure;
    BlockCrafter crafter =
        CraftedElement().addTo(page(5, Payload().v(1, 1)), 8).block(2, Payload().u(2).u(11).u(1).b(false).i(0));
    crafter = crafted(1).addTo(std::move(crafter), 8).block(2, Payload().u(1).u(1).b(false).i(0));
    crafter = crafted(2).addTo(std::move(crafter), 8);

    load(figure, crafted(3).addTo(std::move(crafter), 8).bytes());

    std::vector<QString> names;
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
        names.push_back(nameOf(*it));
    EXPECT_EQ(names, (std::vector<QString>{"group_1", "rectangle_2", "rectangle_3"}));
}

class WatchingFigure : public Figure
{
public:
    std::vector<int> ids;

protected:
    void elementsLoaded() override
    {
        for (auto it = getElementBegin(); it != getElementEnd(); ++it)
            ids.push_back(it->getId());
    }
};

TEST(FigureLoad, callsElementsLoadedWithTheStoredIds)
{
    WatchingFigure figure;

    load(figure, withConnector(withRoot(page(5, Payload().v(1, 1))), 2).bytes());

    EXPECT_EQ(figure.ids, (std::vector<int>{1, 2}));
}

class FigureOnDisk : public testing::Test
{
protected:
    QString path(char const *name) const { return folder_.filePath(name); }
    void write(QString const &fileName, std::string const &bytes)
    {
        QFile file(fileName);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }
    std::string read(QString const &fileName)
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }

    ErrorLog log{false};

private:
    QTemporaryDir folder_;
};

TEST_F(FigureOnDisk, isReadBack)
{
    Figure figure;
    figure.getRoot()->addChild(new Rectangle);

    EXPECT_TRUE(Figure::saveFigure(path("a.fig"), &figure, &log));
    std::unique_ptr<Figure> const again(Figure::loadFigure(path("a.fig"), &log));

    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->toString(), figure.toString());
    EXPECT_EQ(log.getLog(), "");
}

TEST_F(FigureOnDisk, beginsWithItsType)
{
    Figure::saveFigure(path("a.fig"), std::make_unique<Figure>().get(), &log);
    std::string const bytes = read(path("a.fig"));

    EXPECT_TRUE(Figure::canOpenFile({bytes.begin(), bytes.end()}));
    EXPECT_FALSE(Figure::canOpenFile({'n', 'o'}));
    EXPECT_FALSE(Figure::canOpenFile({}));
    IO::InStream stream(path("a.fig"));
    EXPECT_EQ(stream.getFileType(), "Figure");
    EXPECT_EQ(stream.getVersion(), 1U);
    EXPECT_EQ(Figure::FILE_TYPE_ID, QLatin1StringView("Figure"));
    EXPECT_EQ(Figure::FILE_EXTENSION, QLatin1StringView(".fig"));
}

TEST_F(FigureOnDisk, thatIsMissingIsLogged)
{
    EXPECT_EQ(Figure::loadFigure(path("missing.fig"), &log), nullptr);
    EXPECT_EQ(log.getLog(), "stream initialisation failed\n");
}

TEST_F(FigureOnDisk, thatIsNoStreamIsLogged)
{
    write(path("a.fig"), "no stream at all");

    EXPECT_EQ(Figure::loadFigure(path("a.fig"), &log), nullptr);
    EXPECT_EQ(log.getLog(), "stream initialisation failed\n");
}

TEST_F(FigureOnDisk, ofAnotherTypeIsLogged)
{
    {
        IO::OutStream stream(path("a.fig"), "Other", 1);
        stream.close();
    }

    EXPECT_EQ(Figure::loadFigure(path("a.fig"), &log), nullptr);
    EXPECT_EQ(log.getLog(), "file is no valid figure file\n");
}

TEST_F(FigureOnDisk, withADanglingConnectorIsLogged)
{
    write(path("a.fig"), withConnector(withRoot(page(5, Payload().v(1, 1))), 99).bytes());

    EXPECT_EQ(Figure::loadFigure(path("a.fig"), &log), nullptr);
    EXPECT_EQ(log.getLog(), "dangling connector, report corrupted\n");
}

TEST_F(FigureOnDisk, inAFolderThatIsMissingLogsAndGivesTrue)
{
    Figure const figure;

    EXPECT_TRUE(Figure::saveFigure(path("missing/a.fig"), &figure, &log));
    EXPECT_EQ(log.getLog(), "stream initialisation failed\n");
}

class BrokenRectangle : public Rectangle
{
public:
    void save(IO::OutStream *, int, int) const override { throw IO::StreamException("broken"); }
};

TEST_F(FigureOnDisk, staysAsItWasWhenSavingFails)
{
    Figure figure;
    Figure::saveFigure(path("a.fig"), &figure, &log);
    std::string const before = read(path("a.fig"));
    figure.getRoot()->addChild(new BrokenRectangle);

    EXPECT_FALSE(Figure::saveFigure(path("a.fig"), &figure, &log));

    EXPECT_EQ(log.getLog(), "broken\n");
    EXPECT_EQ(read(path("a.fig")), before);
}

} // namespace
} // namespace Zem::Fig2
