// SnapshotFrame, and Snapshot, the element of older files that has its snapshot inside.
#include "crafted_element.h"
#include "snapshot_fixture.h"

#include <ZemFig2DataInterface.h>
#include <ZemFig2SnapshotFrame.h>
#include <ZemFig2Snippet.h>
#include <ZemFig2Template.h>

#include <ZemScriptObject.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

/// Writes the part of the base alone.
class BaseFrame : public SnapshotFrame
{
public:
    void save(IO::OutStream *stream, int a, int b) const override { ImageBase::save(stream, a, b); }
};

BlockCrafter craftedFrame(unsigned int version, Payload const &fields, char const *token = "token")
{
    BlockCrafter crafter;
    crafter.add([&](IO::OutStream &stream) {
        BaseFrame frame;
        frame.setToken(QString::fromLatin1(token));
        frame.setImageBackgroundColor(Color(1, 2, 3));
        frame.setUseImageBackgroundColor(true);
        frame.save(&stream, -1, -1);
    });
    return crafter.block(version, fields);
}

TEST(SnapshotFrames, haveNoSourceAtFirst)
{
    SnapshotFrame const frame;
    EXPECT_EQ(frame.getType(), 14U);
    EXPECT_EQ(frame.getSnapshotSourceId(), "");
    EXPECT_EQ(frame.getToken(), "");
}

TEST(SnapshotFrames, nameTheirSourceByTheirTokenToo)
{
    SnapshotFrame frame;
    frame.setSnapshotSourceId("left");
    EXPECT_EQ(frame.getSnapshotSourceId(), "left");
    EXPECT_EQ(frame.getToken(), "left");
    EXPECT_FALSE(frame.isValid());
}

TEST(SnapshotFrames, areCopiedWithTheirSource)
{
    SnapshotFrame frame;
    frame.setSnapshotSourceId("left");
    std::unique_ptr<SnapshotFrame> const copy(frame.copy());
    EXPECT_EQ(copy->getSnapshotSourceId(), "left");
    EXPECT_EQ(copy->getToken(), "left");
    EXPECT_EQ(copy->getType(), Element::SNAPSHOT_FRAME);
}

TEST(SnapshotFrames, takeOverWhatAnImageHas)
{
    Image image;
    image.setToken("camera");
    image.setOrigin({10, 20});
    image.setOverlayMode(ImageBase::OVERLAY_ONLY);
    image.setImageBackgroundColor(Color(1, 2, 3));
    image.setUseImageBackgroundColor(true);

    SnapshotFrame const frame(&image);

    EXPECT_EQ(frame.getType(), Element::SNAPSHOT_FRAME);
    EXPECT_EQ(frame.getToken(), "camera");
    EXPECT_EQ(frame.getSnapshotSourceId(), "camera");
    EXPECT_EQ(frame.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(frame.getOverlayMode(), ImageBase::OVERLAY_ONLY);
    EXPECT_EQ(frame.getImageBackgroundColor(), Color(255, 255, 255));
    EXPECT_FALSE(frame.getUseImageBackgroundColor());
}

TEST(SnapshotFrames, giveWhatTheyHaveToAnImage)
{
    SnapshotFrame frame;
    frame.setSnapshotSourceId("left");
    frame.setOrigin({10, 20});
    frame.setImageBackgroundColor(Color(1, 2, 3));
    frame.setUseImageBackgroundColor(true);

    Image const image(&frame);

    EXPECT_EQ(image.getType(), Element::IMAGE);
    EXPECT_EQ(image.getToken(), "left");
    EXPECT_EQ(image.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(image.getImageBackgroundColor(), Color(1, 2, 3));
    EXPECT_TRUE(image.getUseImageBackgroundColor());
}

TEST(SnapshotFrames, areEstimatedAsTheirBase)
{
    SnapshotFrame frame;
    Image image;
    EXPECT_EQ(frame.getEstimatedObjectSize(), image.getEstimatedObjectSize());
}

TEST(SnapshotFrames, areWrittenBehindTheirBase)
{
    SnapshotFrame frame;
    std::string const base = Support::streamOf([&](IO::OutStream &stream) { frame.ImageBase::save(&stream, -1, -1); });
    EXPECT_EQ(Support::blockForm(frame),
              base + BlockCrafter().block(4, Payload().b(false).s("")).bytes().substr(BlockCrafter().bytes().size()));
    frame.setSnapshotSourceId("left");
    std::string const blocks = Support::blocksOf(Support::blockForm(frame));
    EXPECT_EQ(blocks.substr(blocks.size() - 4), "4:9 "); // 1 + 4 + 4
}

TEST(SnapshotFrames, comeBackFromTheirBlocks)
{
    SnapshotFrame frame;
    frame.setSnapshotSourceId("left");
    frame.setImageBackgroundColor(Color(1, 2, 3));
    SnapshotFrame read;
    Support::loadBlocks(read, Support::blockForm(frame));
    EXPECT_EQ(read.getSnapshotSourceId(), "left");
    EXPECT_EQ(Support::parameterForm(read), Support::parameterForm(frame));
}

TEST(SnapshotFrames, ofVersion4And2HaveTheirSourceAlone)
{
    for (unsigned int version : {2U, 4U}) {
        SnapshotFrame frame;
        Support::loadBlocks(frame, craftedFrame(version, Payload().b(true).s("stored")).bytes());
        EXPECT_EQ(frame.getSnapshotSourceId(), "stored");
        EXPECT_EQ(frame.getToken(), "stored");
        EXPECT_EQ(frame.getImageBackgroundColor(), Color(1, 2, 3));
        EXPECT_TRUE(frame.getUseImageBackgroundColor());
    }
}

TEST(SnapshotFrames, ofVersion3HaveABackgroundToo)
{
    SnapshotFrame frame;
    Support::loadBlocks(frame, craftedFrame(3, Payload().b(false).s("stored").c(4, 5, 6, 255).b(false)).bytes());
    EXPECT_EQ(frame.getSnapshotSourceId(), "stored");
    EXPECT_EQ(frame.getImageBackgroundColor(), Color(4, 5, 6));
    EXPECT_FALSE(frame.getUseImageBackgroundColor());
}

TEST(SnapshotFrames, ofVersion1KeepTheirToken)
{
    SnapshotFrame frame;
    frame.setSnapshotSourceId("before");
    Support::loadBlocks(frame, craftedFrame(1, Payload().b(false)).bytes());
    EXPECT_EQ(frame.getToken(), "token");
    EXPECT_EQ(frame.getSnapshotSourceId(), "token");
}

TEST(SnapshotFrames, ofOtherVersionsAreRefused)
{
    SnapshotFrame frame;
    for (unsigned int version : {0U, 5U})
        EXPECT_EQ(thrownText<IO::StreamException>([&] {
                      Support::loadBlocks(frame, craftedFrame(version, Payload().b(false).s("stored")).bytes());
                  }),
                  "wrong block version");
    for (unsigned int version : {2U, 3U, 4U})
        EXPECT_THROW(Support::loadBlocks(frame, craftedFrame(version, Payload().b(false)).bytes()),
                     IO::StreamException);
    EXPECT_THROW(Support::loadBlocks(frame, craftedFrame(3, Payload().b(false).s("")).bytes()), IO::StreamException);
}

TEST(SnapshotFrames, haveNoTextForm)
{
    SnapshotFrame frame;
    Snapshot snapshot;
    EXPECT_EQ(thrownText<ProgError>([&] { Support::textForm(frame); }), "not implemented");
    EXPECT_EQ(thrownText<ProgError>([&] { Support::loadText(frame, "0"); }), "not implemented");
    EXPECT_EQ(thrownText<ProgError>([&] { Support::textForm(snapshot); }), "not implemented");
    EXPECT_EQ(thrownText<ProgError>([&] { Support::loadText(snapshot, "0"); }), "not implemented");
}

TEST(SnapshotFrames, haveTheirSourceBehindTheParametersOfTheirBase)
{
    SnapshotFrame frame;
    frame.setSnapshotSourceId("left");
    EXPECT_EQ(Support::parameterForm(frame),
              frame.ImageBase::getParameterString().toStdString() + "snapshot_source = \"left\"\n");
    EXPECT_EQ(SnapshotFrame::PARAM_SNAPSHOT_SOURCE, QLatin1StringView("snapshot_source"));
}

TEST(SnapshotFrames, takeTheirSourceFromParameters)
{
    SnapshotFrame frame;
    EXPECT_EQ(Support::loadParameters(frame, "snapshot_source = \"left\"\nother = \"1\"\n"), "other = \"1\"\n");
    EXPECT_EQ(frame.getSnapshotSourceId(), "left");
    EXPECT_EQ(frame.getToken(), "left");
    Support::loadParameters(frame, "visible = \"true\"\n");
    EXPECT_EQ(frame.getSnapshotSourceId(), "left");
    Support::loadParameters(frame, "token = \"right\"\nsnapshot_source = \"left\"\n");
    EXPECT_EQ(frame.getToken(), "left");
    Support::loadParameters(frame, "token = \"right\"\n");
    EXPECT_EQ(frame.getSnapshotSourceId(), "right");
    EXPECT_EQ(frame.getToken(), "right");
}

/// Writes a snapshot element as older releases did.
class OldSnapshot : public Rectangle
{
public:
    OldSnapshot() { setType(SNAPSHOT); }
    OldSnapshot(OldSnapshot const &) = delete;

    unsigned int version = 4;
    bool hasData = true;
    bool hasFigure = true;
    bool hasLegend = true;
    Figure figure;

    void save(IO::OutStream *stream, int a, int b) const override
    {
        AreaBase::save(stream, a, b);
        Payload const fields = block();
        stream->beginBlock(static_cast<unsigned int>(fields.bytes().size()), version);
        stream->writeData(fields.bytes().data(), static_cast<unsigned int>(fields.bytes().size()));
        stream->endBlock();
        if (hasData) {
            DataInterface registry;
            registry.setString("a", "registered");
            registry.save(stream, -1, -1);
        }
        if (hasFigure)
            figure.save(stream, -1, -1);
        if (hasLegend && version >= 4) {
            Legend2::Legend legend(uStrain);
            legend.setFixedMinimum(-2.0);
            legend.save(stream);
            Legend2::Data().save(stream);
        }
    }

private:
    Payload block() const
    {
        Payload fields;
        if (version == 2)
            fields.i(99);
        if (version >= 3)
            fields.s("dropped");
        fields.b(hasData).b(hasFigure);
        if (version >= 4)
            fields.b(hasLegend);
        return fields.v(1, 2).v(3, 4);
    }
};

class OldSnapshots : public testing::Test
{
protected:
    OldSnapshots()
    {
        old->figure.setSize({70, 50});
        addLabel(old->figure, "$a$");
        page.getRoot()->addChild(old);
    }
    static std::string saved(Figure const &figure)
    {
        return Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    }
    static void load(Figure &figure, std::string const &bytes)
    {
        Support::readFrom(bytes, [&](IO::InStream &stream) { figure.load(&stream, -1, -1); });
    }
    /// The element as it comes back from a page in which a rectangle follows it.
    Snapshot *loaded()
    {
        page.getRoot()->addChild(new Rectangle);
        load(read, saved(page));
        EXPECT_EQ(childOf(read, 1)->getType(), Element::RECTANGLE);
        return dynamic_cast<Snapshot *>(childOf(read));
    }

    /// The page is as it was before loaded().
    void removeLast()
    {
        std::unique_ptr<Element> const last(childOf(page, 1));
        page.getRoot()->removeChild(last.get());
    }

    Support::FakeCalculator calculator;
    Figure page;
    Figure read;
    OldSnapshot *old = new OldSnapshot;
};

TEST_F(OldSnapshots, haveNoDataWhenTheyAreNew)
{
    Snapshot const snapshot;
    EXPECT_EQ(snapshot.getType(), 12U);
    EXPECT_EQ(snapshot.getSnapshotData(), nullptr);
}

TEST_F(OldSnapshots, ofEachVersionAreReadWithWhatIsInThem)
{
    for (unsigned int version : {2U, 3U, 4U}) {
        old->version = version;
        Snapshot *snapshot = loaded();
        ASSERT_NE(snapshot, nullptr);
        SnapshotData const *data = snapshot->getSnapshotData();
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(data->getStage(), StageIdentifier());
        Figure const *figure = data->getFigure();
        ASSERT_NE(figure, nullptr);
        EXPECT_EQ(figure->getSize(), BaVec2d<double>(70, 50));
        EXPECT_EQ(static_cast<Label const *>(figure->getRoot()->getChildBegin()[0])->getResolvedText(), "registered");
        Legend2::Legend legend;
        Legend2::Data scale;
        EXPECT_EQ(data->getLegendData(&legend, &scale), version == 4);
        EXPECT_EQ(legend.getFixedMinimum(), version == 4 ? -2.0 : 0.0);
        EXPECT_FALSE(data->showTolerances());
        EXPECT_EQ(snapshot->getToken(), "");
        removeLast();
    }
}

TEST_F(OldSnapshots, haveEachPartByItsOwnFlag)
{
    for (int flags = 0; flags < 8; ++flags) {
        old->hasData = (flags & 1) != 0;
        old->hasFigure = (flags & 2) != 0;
        old->hasLegend = (flags & 4) != 0;
        SnapshotData const *data = loaded()->getSnapshotData();
        ASSERT_NE(data, nullptr);
        EXPECT_EQ(data->getFigure() != nullptr, old->hasFigure);
        EXPECT_EQ(valueOf(*data->getTokenContainer(), "a"), old->hasData && old->hasFigure ? "registered" : "unknown");
        Legend2::Legend legend;
        Legend2::Data scale;
        EXPECT_EQ(data->getLegendData(&legend, &scale), old->hasLegend);
        removeLast();
    }
}

TEST_F(OldSnapshots, ofANewerVersionAreRefused)
{
    old->version = 5;
    std::string const text = thrownText<IO::StreamException>([&] { loaded(); });
    EXPECT_NE(text.find("cannot load figure snapshot: wrong block version"), std::string::npos) << text;
    old->version = 0;
    EXPECT_THROW(loaded(), IO::StreamException);
}

TEST_F(OldSnapshots, areCopiedWithTheirData)
{
    Snapshot *snapshot = loaded();
    std::unique_ptr<Snapshot> const copy(snapshot->copy());
    ASSERT_NE(copy->getSnapshotData(), nullptr);
    EXPECT_NE(copy->getSnapshotData(), snapshot->getSnapshotData());
    load(read, saved(page)); // the original goes
    EXPECT_EQ(copy->getSnapshotData()->getFigure()->getSize(), BaVec2d<double>(70, 50));
    EXPECT_EQ(copy->getType(), Element::SNAPSHOT);
}

TEST_F(OldSnapshots, areSavedAsImagesAndReadAgain)
{
    Snapshot *snapshot = loaded();
    snapshot->setToken("camera");
    snapshot->setScaling(0.5);
    snapshot->setInnerOrigin({3, 4});
    Figure again;
    load(again, saved(read));
    auto *second = dynamic_cast<Snapshot *>(childOf(again));
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->getSnapshotData(), nullptr);
    EXPECT_EQ(Support::parameterForm(*second), Support::parameterForm(*snapshot));
    EXPECT_EQ(numberOfChildren(again), 2U);
}

TEST_F(OldSnapshots, loseTheirDataWhenAnImageIsReadIntoThem)
{
    Snapshot *snapshot = loaded();
    Support::loadBlocks(*snapshot, Support::blockForm(Snapshot()));
    EXPECT_EQ(snapshot->getSnapshotData(), nullptr);
}

TEST_F(OldSnapshots, areToldOfInTheLogWhenTheirDataAreNotKept)
{
    loaded();
    read.getRoot()->addChild(new Snapshot);
    QTemporaryDir const folder;
    QString const name = folder.filePath("saved.fig");
    ErrorLog log(false);
    EXPECT_TRUE(Figure::saveFigure(name, &read, &log));
    EXPECT_EQ(
        log.getLog(),
        QStringLiteral("the snapshot inside '%1' is not stored\n").arg(childOf(read)->getScriptObject()->getName()));

    FigureTemplate const pattern(read);
    Snippet const snippet(STAGE, &read, SnapshotAllElementFilter());
    ErrorLog ofTemplate(false);
    ErrorLog ofSnippet(false);
    EXPECT_TRUE(pattern.save(folder.filePath("saved.template"), &ofTemplate));
    EXPECT_TRUE(Snippet::saveFile(folder.filePath("saved.snippet"), &snippet, &ofSnippet));
    for (ErrorLog const *each : {&ofTemplate, &ofSnippet})
        EXPECT_TRUE(each->getLog().startsWith(QStringLiteral("the snapshot inside '"))) << each->getLog().toStdString();

    ErrorLog second(false);
    std::unique_ptr<Figure> const again(Figure::loadFigure(name, &second));
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(Figure::saveFigure(name, again.get(), &second));
    EXPECT_EQ(second.getLog(), "");
}

/// Snapshots within the figures of snapshots, so many; each counts twice, for itself and for the root that it is in.
void nest(Figure &page, unsigned int levels)
{
    Figure *figure = &page;
    for (; levels > 0; --levels) {
        auto *snapshot = new OldSnapshot;
        snapshot->hasData = snapshot->hasLegend = false;
        figure->getRoot()->addChild(snapshot);
        figure = &snapshot->figure;
    }
}

TEST(NestedSnapshots, endAt256LevelsOfSnapshotsAndGroups)
{
    Figure page;
    nest(page, 128);
    Figure read;
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { page.save(&stream, -1, -1); });
    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });
    EXPECT_EQ(numberOfChildren(read), 1U);

    Figure deeper;
    nest(deeper, 129);
    std::string const tooDeep = Support::streamOf([&](IO::OutStream &stream) { deeper.save(&stream, -1, -1); });
    std::string const text = thrownText<IO::StreamException>(
        [&] { Support::readFrom(tooDeep, [&](IO::InStream &stream) { read.load(&stream, -1, -1); }); });
    EXPECT_NE(text.find("snapshots nested too deeply"), std::string::npos);
}

TEST(NestedSnapshots, areDrawnOneWithinTheOther)
{
    Support::FakeCalculator const calculator;
    std::unique_ptr<SnapshotData> inner;
    for (int level = 0; level < 3; ++level) {
        auto *figure = new Figure;
        figure->setSize({100, 100});
        auto *tokens = new FigureTokenContainer;
        if (inner) {
            auto *frame = new SnapshotFrame;
            frame->setSnapshotSourceId("inner");
            frame->setOrigin({50, 50});
            frame->setSize({50, 50});
            figure->getRoot()->addChild(frame);
            tokens->setValue(TokenInfo(TokenInfo::TYPE_SNAPSHOT, "inner", ""), inner.release());
        } else {
            addLabel(*figure, "innermost");
        }
        inner = std::make_unique<SnapshotData>(STAGE, figure, tokens);
    }
    std::string const calls = drawn(*inner->getFigure());
    // Each frame shows a page of 100 at half its size.
    EXPECT_NE(calls.find("transform 25,25 scaling 0.5\nnested\n"), std::string::npos) << calls;
    EXPECT_NE(calls.find("innermost"), std::string::npos);
    EXPECT_LT(calls.rfind("transform 25,25 scaling 0.5\nnested\n"), calls.find("innermost"));
    EXPECT_NE(calls.find("transform 25,25 scaling 0.5\nnested\n"),
              calls.rfind("transform 25,25 scaling 0.5\nnested\n"));
}

TEST(NestedSnapshots, thatShowEachOtherEnd)
{
    Support::FakeCalculator const calculator;
    LiveTokens tokens;
    auto const show = [&](char const *name, char const *shown) {
        auto *figure = new Figure;
        auto *frame = new SnapshotFrame;
        frame->setSnapshotSourceId(QString::fromLatin1(shown));
        frame->setOrigin({50, 50});
        frame->setSize({50, 50});
        figure->getRoot()->addChild(frame);
        SnapshotData &snapshot = tokens.snapshots[QString::fromLatin1(name)];
        snapshot.setFigure(figure);
        figure->setTokenInterface(&tokens);
        return figure;
    };
    Figure *a = show("a", "b");
    show("b", "a");
    a->update(STAGE, true);
    std::string const calls = drawn(*a);
    std::size_t nestings = 0;
    for (std::size_t at = calls.find("\nnested\n"); at != std::string::npos; at = calls.find("\nnested\n", at + 1))
        ++nestings;
    EXPECT_EQ(nestings, 2U);
}

} // namespace
} // namespace Zem::Fig2
