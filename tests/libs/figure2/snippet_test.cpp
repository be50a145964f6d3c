// Snippets: snapshots in files of their own.
#include "snapshot_fixture.h"

#include <FullDisk.h>
#include <ZemFig2Snippet.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace Zem::Fig2 {
namespace {

class SnippetTest : public testing::Test
{
protected:
    SnippetTest()
    {
        tokens.set("a", Value(QString("frozen")));
        source.setTokenInterface(&tokens);
        source.setSize({70, 50});
        addLabel(source, "$a$");
    }

    QString path(char const *name) const { return folder.filePath(QString::fromLatin1(name)); }
    static std::vector<char> headOf(QString const &name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QByteArray const bytes = file.read(256);
        return {bytes.begin(), bytes.end()};
    }
    static std::string textIn(Snippet &snippet)
    {
        return static_cast<Label *>(childOf(*snippet.getFigure()))->getResolvedText().toStdString();
    }
    static Snippet make(Figure const &figure) { return Snippet(STAGE, &figure, SnapshotAllElementFilter()); }

    Support::FakeCalculator calculator;
    LiveTokens tokens;
    Figure source;
    QTemporaryDir folder;
    ErrorLog log{false};
};

TEST_F(SnippetTest, isEmptyAtFirst)
{
    Snippet snippet;
    EXPECT_EQ(snippet.getFigure(), nullptr);
}

TEST_F(SnippetTest, isASnapshotOfAFigure)
{
    Snippet snippet = make(source);
    EXPECT_EQ(snippet.getStage(), STAGE);
    EXPECT_EQ(textIn(snippet), "frozen");
    Snippet copy(snippet);
    snippet = Snippet();
    EXPECT_EQ(snippet.getFigure(), nullptr);
    EXPECT_EQ(textIn(copy), "frozen");
}

TEST_F(SnippetTest, comesBackFromItsFile)
{
    Snippet const snippet = make(source);
    EXPECT_TRUE(Snippet::saveFile(path("a.snippet"), &snippet, &log));
    std::unique_ptr<Snippet> const read(Snippet::loadFile(path("a.snippet"), &log));
    ASSERT_NE(read, nullptr) << log.getLog().toStdString();
    EXPECT_EQ(read->getFigure()->getSize(), BaVec2d<double>(70, 50));
    EXPECT_EQ(read->getStage(), STAGE);
    EXPECT_EQ(textIn(*read), "frozen");
    EXPECT_EQ(log.getLog(), "");
}

TEST_F(SnippetTest, ofNothingHasAFileToo)
{
    Snippet const snippet;
    EXPECT_TRUE(Snippet::saveFile(path("a.snippet"), &snippet, &log));
    std::unique_ptr<Snippet> const read(Snippet::loadFile(path("a.snippet"), &log));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->getFigure(), nullptr);
}

TEST_F(SnippetTest, hasAFileOfItsOwnType)
{
    Snippet const snippet = make(source);
    EXPECT_EQ(Snippet::FILE_TYPE_ID, QLatin1StringView("KRVSnippetFile"));
    EXPECT_TRUE(Snippet::saveFile(path("a.snippet"), &snippet, &log));
    EXPECT_TRUE(Figure::saveFigure(path("a.fig"), &source, &log));
    EXPECT_TRUE(Snippet::canOpenFile(headOf(path("a.snippet"))));
    EXPECT_FALSE(Snippet::canOpenFile(headOf(path("a.fig"))));
    EXPECT_FALSE(Snippet::canOpenFile({}));
    IO::InStream stream(path("a.snippet"));
    ASSERT_TRUE(stream.isInit());
    EXPECT_TRUE(stream.isOfType("KRVSnippetFile"));
    EXPECT_EQ(stream.getVersion(), 1U);
    SnapshotData snapshot;
    snapshot.load(&stream);
    EXPECT_NE(snapshot.getFigure(), nullptr);
}

TEST_F(SnippetTest, isNotReadFromAnotherFile)
{
    EXPECT_TRUE(Figure::saveFigure(path("a.fig"), &source, &log));
    EXPECT_EQ(Snippet::loadFile(path("a.fig"), &log), nullptr);
    EXPECT_EQ(log.getLog(), "file is no valid snippet file\n");
}

TEST_F(SnippetTest, withoutAFileIsToldInTheLog)
{
    Snippet const snippet = make(source);
    EXPECT_FALSE(Snippet::saveFile(path("no folder/a.snippet"), &snippet, &log));
    EXPECT_EQ(log.getLog(), "snippt output stream initialization failed\n");
    ErrorLog second(false);
    EXPECT_EQ(Snippet::loadFile(path("nothing.snippet"), &second), nullptr);
    EXPECT_EQ(second.getLog(), "snippet input stream initialization failed\n");
}

TEST_F(SnippetTest, thatCannotBeWrittenLeavesTheOldFile)
{
    Snippet const first = make(source);
    EXPECT_TRUE(Snippet::saveFile(path("a.snippet"), &first, &log));
    source.setSize({10, 20});
    Snippet const second = make(source);
    {
        Support::FullDisk const full(100);
        EXPECT_FALSE(Snippet::saveFile(path("a.snippet"), &second, &log));
    }
    EXPECT_NE(log.getLog(), "");
    std::unique_ptr<Snippet> const read(Snippet::loadFile(path("a.snippet"), &log));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->getFigure()->getSize(), BaVec2d<double>(70, 50));
}

TEST_F(SnippetTest, thatIsDamagedIsToldInTheLog)
{
    Snippet const snippet = make(source);
    EXPECT_TRUE(Snippet::saveFile(path("a.snippet"), &snippet, &log));
    QFile file(path("a.snippet"));
    ASSERT_TRUE(file.resize(file.size() - 1));
    EXPECT_EQ(Snippet::loadFile(path("a.snippet"), &log), nullptr);
    EXPECT_NE(log.getLog(), "");
}

} // namespace
} // namespace Zem::Fig2
