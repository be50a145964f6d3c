// A file is there completely or as it was before.
#include "page_support.h"

#include <FullDisk.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zem::Support {
namespace {

using namespace Fig2;
using Fig2Qt::OutputError;

void drawSomething(Painter &painter)
{
    // Enough of it that no format gets along with a few hundred bytes.
    for (int i = 0; i < 400; ++i)
        painter.drawLine({i * 0.1, i * i % 37 * 1.0}, {i * i % 41 * 1.0, i * 0.1}, fullLine(0.1 + i * 0.001),
                         Rotation::null);
}

void writeOld(QString const &fileName)
{
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
}

class OnEachFormat : public testing::TestWithParam<char const *>
{
protected:
    QString file(char const *stem) const
    {
        return folder_.file(stem) + QLatin1Char('.') + QLatin1StringView(GetParam());
    }

    Folder folder_;
};

TEST_P(OnEachFormat, aPageReplacesAnOldFileAndNothingElseIsLeft)
{
    writeOld(file("page"));
    writePage(file("page"), {40, 40}, drawSomething);

    EXPECT_GT(bytesOf(file("page")).size(), 300);
    EXPECT_EQ(folder_.names().size(), 1);
}

TEST_P(OnEachFormat, anOldFileStaysUntilTheWriterIsClosed)
{
    writeOld(file("page"));
    {
        auto const writer = Fig2Qt::createPageWriter(file("page"));
        drawSomething(writer->beginPage({40, 40}));
        EXPECT_EQ(bytesOf(file("page")), "old");
    }

    EXPECT_EQ(bytesOf(file("page")), "old");
    EXPECT_EQ(folder_.names().size(), 1);
}

TEST_P(OnEachFormat, aFullDiskIsAnErrorAndTheOldFileStays)
{
    writeOld(file("page"));
    QString message;
    {
        FullDisk const full(200);
        try {
            writePage(file("page"), {40, 40}, drawSomething);
        } catch (OutputError const &error) {
            message = error.getText();
        }
    }

    EXPECT_TRUE(message.contains(file("page"))) << message.toStdString();
    EXPECT_TRUE(message.contains(QLatin1StringView("File too large"))) << message.toStdString();
    EXPECT_EQ(bytesOf(file("page")), "old");
    EXPECT_EQ(folder_.names().size(), 1);
}

TEST_P(OnEachFormat, aMissingFolderIsAnErrorAtOnce)
{
    try {
        Fig2Qt::createPageWriter(folder_.path() + QLatin1StringView("/no/page.") + QLatin1StringView(GetParam()));
        FAIL() << "nothing was thrown";
    } catch (OutputError const &error) {
        EXPECT_TRUE(error.getText().contains(QLatin1StringView("No such file or directory"))) << error.what();
    }
}

TEST_P(OnEachFormat, aFolderInPlaceOfTheFileIsAnError)
{
    ASSERT_EQ(::mkdir(QFile::encodeName(file("page")).constData(), 0700), 0);

    EXPECT_THROW(Fig2Qt::createPageWriter(file("page")), OutputError);
}

/// Gives up the rights of the superuser, whom no permissions stop, while it lives.
class OrdinaryUser
{
public:
    OrdinaryUser() : before_(::geteuid()) { become(before_ == 0 ? 65534 : before_); }
    ~OrdinaryUser() { become(before_); }
    OrdinaryUser(OrdinaryUser const &) = delete;
    OrdinaryUser &operator=(OrdinaryUser const &) = delete;

private:
    static void become(uid_t user) { EXPECT_EQ(::seteuid(user), 0); }

    uid_t before_;
};

TEST_P(OnEachFormat, aFolderThatCannotBeWrittenIsAnError)
{
    QByteArray const path = QFile::encodeName(folder_.path());
    ::chmod(path.constData(), 0555);
    QString message;
    {
        OrdinaryUser const user;
        try {
            Fig2Qt::createPageWriter(file("page"));
        } catch (OutputError const &error) {
            message = error.getText();
        }
    }
    ::chmod(path.constData(), 0700);

    EXPECT_TRUE(message.contains(QLatin1StringView("Permission denied"))) << message.toStdString();
}

TEST_P(OnEachFormat, aWriteProtectedFileIsAnError)
{
    writeOld(file("page"));
    ::chmod(QFile::encodeName(folder_.path()).constData(), 0777);
    ::chmod(QFile::encodeName(file("page")).constData(), 0444);
    {
        OrdinaryUser const user;
        EXPECT_THROW(Fig2Qt::createPageWriter(file("page")), OutputError);
    }

    EXPECT_EQ(bytesOf(file("page")), "old");
}

TEST_P(OnEachFormat, aFileKeepsItsPermissions)
{
    writeOld(file("page"));
    ::chmod(QFile::encodeName(file("page")).constData(), 0640);
    writePage(file("page"), {40, 40}, drawSomething);

    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(file("page")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_P(OnEachFormat, aLinkStaysALink)
{
    writeOld(file("page"));
    ASSERT_TRUE(QFile::link(file("page"), file("link")));
    writePage(file("link"), {40, 40}, drawSomething);

    EXPECT_TRUE(QFileInfo(file("link")).isSymLink());
    EXPECT_GT(bytesOf(file("page")).size(), 300);
}

TEST_P(OnEachFormat, aFileWithoutPagesIsAnError)
{
    auto const writer = Fig2Qt::createPageWriter(file("page"));

    EXPECT_THROW(writer->close(), OutputError);
    EXPECT_TRUE(folder_.names().isEmpty());
}

TEST_P(OnEachFormat, aPageWithoutExtentIsAnError)
{
    for (Vec const size : {Vec(0, 10), Vec(10, -1), Vec(10, 1e9), Vec(std::nan(""), 10)}) {
        auto const writer = Fig2Qt::createPageWriter(file("page"));
        EXPECT_THROW(writer->beginPage(size), OutputError);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, OnEachFormat, testing::Values("pdf", "png", "svg"),
                         [](auto const &instance) { return std::string(instance.param); });

TEST(PicturesOfOnePage, refuseASecondOne)
{
    for (char const *name : {"page.png", "page.svg"}) {
        Folder const folder;
        auto const writer = Fig2Qt::createPageWriter(folder.file(name));
        writer->beginPage({10, 10});
        EXPECT_THROW(writer->beginPage({10, 10}), OutputError);
    }
}

TEST(PageWriterOfAName, withAnotherEndingIsAnError)
{
    Folder const folder;

    EXPECT_THROW(Fig2Qt::createPageWriter(folder.file("page.jpg")), OutputError);
    EXPECT_THROW(Fig2Qt::createPageWriter(folder.file("page")), OutputError);
    EXPECT_THROW(Fig2Qt::createPageWriter(QString()), OutputError);
}

} // namespace
} // namespace Zem::Support
