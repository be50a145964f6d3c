// The embedding example, run as its reader would.
#include <ZemErrorLog.h>
#include <ZemFig2Chart.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace Zem {

namespace {

int runExample(QStringList const &arguments)
{
    QProcess process;
    process.start(QStringLiteral(ZEM_BIN_DIR "/embedding"), arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return process.exitCode();
}

class EmbeddingExample : public testing::Test
{
protected:
    QString path(char const *name) const { return folder_.filePath(QString::fromLatin1(name)); }

    QByteArray read(char const *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(EmbeddingExample, DrawsADifferentPageForEachStage)
{
    ASSERT_EQ(runExample({folder_.path()}), 0);
    EXPECT_TRUE(read("stage1.pdf").startsWith("%PDF"));
    EXPECT_TRUE(read("stage2.pdf").startsWith("%PDF"));
    EXPECT_NE(read("stage1.pdf"), read("stage2.pdf"));
}

TEST_F(EmbeddingExample, SavesTheLabelAndTheChart)
{
    ASSERT_EQ(runExample({folder_.path()}), 0);
    ErrorLog log(false);
    std::unique_ptr<Fig2::Figure> const figure(Fig2::Figure::loadFigure(path("page.fig"), &log));
    ASSERT_TRUE(figure) << log.getLog().toStdString();

    auto child = figure->getRoot()->getChildBegin();
    ASSERT_EQ(figure->getRoot()->getChildEnd() - child, 2);
    auto const *label = dynamic_cast<Fig2::Label const *>(*child);
    ASSERT_TRUE(label);
    EXPECT_EQ(label->getText(), QStringLiteral("Force <b>$.2[kN]force$ kN</b>"));
    auto const *chart = dynamic_cast<Fig2::Chart const *>(*++child);
    ASSERT_TRUE(chart);
    EXPECT_EQ(chart->getToken(), QStringLiteral("force_over_time"));
}

TEST_F(EmbeddingExample, DrawsTheLoadedPageAsTheSavedOne)
{
    ASSERT_EQ(runExample({folder_.path()}), 0);
    EXPECT_FALSE(read("loaded.pdf").isEmpty());
    EXPECT_EQ(read("loaded.pdf"), read("stage2.pdf"));
}

TEST_F(EmbeddingExample, FailsInAFolderThatIsNotThere)
{
    EXPECT_EQ(runExample({path("missing")}), 1);
}

TEST_F(EmbeddingExample, FailsWithoutAFolder)
{
    EXPECT_EQ(runExample({}), 1);
}

} // namespace Zem
