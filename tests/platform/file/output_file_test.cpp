// Files appear as a whole or not at all. What limits of the medium do is tested with the streams and writers on top.
#include <ZemOutputFile.h>

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int syncsBeforeFailure = -1; ///< none fails when negative

} // namespace

/// Takes the place of the system's, for a medium that accepts bytes and then cannot keep them.
extern "C" int fsync(int file)
{
    if (syncsBeforeFailure-- == 0) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, file));
}

namespace Zem {
namespace {

class OutputFileTest : public testing::Test
{
protected:
    QString path(char const *name) const { return folder_.filePath(QLatin1StringView(name)); }
    QStringList names() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }
    void write(QString const &name, char const *content) const
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    std::string read(QString const &name) const
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().toStdString();
    }

private:
    QTemporaryDir folder_;
};

QString reasonOf(QString const &fileName)
{
    try {
        OutputFile const file(fileName);
    } catch (FileError const &error) {
        return error.getText();
    }
    return QStringLiteral("nothing was thrown");
}

TEST_F(OutputFileTest, showsItsBytesWhenTheyAreComplete)
{
    write(path("a"), "old");
    OutputFile file(path("a"));
    file.write("new ");
    file.write("bytes");
    EXPECT_EQ(read(path("a")), "old");
    EXPECT_EQ(file.getSize(), 9U);

    file.commit();

    EXPECT_EQ(read(path("a")), "new bytes");
    EXPECT_EQ(names(), QStringList{"a"});
}

TEST_F(OutputFileTest, leavesNothingWhenItIsGivenUp)
{
    {
        OutputFile file(path("a"));
        file.write("new");
        EXPECT_EQ(names().size(), 1);
    }

    EXPECT_TRUE(names().isEmpty());
}

TEST_F(OutputFileTest, keepsThePermissionsOfTheFileItReplaces)
{
    write(path("a"), "old");
    ASSERT_EQ(::chmod(QFile::encodeName(path("a")).constData(), 0640), 0);

    OutputFile(path("a")).commit();

    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(path("a")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(OutputFileTest, followsLinksToFilesThatNeedNotExist)
{
    ASSERT_EQ(::symlink("second", QFile::encodeName(path("first")).constData()), 0);
    ASSERT_EQ(::symlink("target", QFile::encodeName(path("second")).constData()), 0);
    OutputFile file(path("first"));
    file.write("new");

    file.commit();

    EXPECT_EQ(read(path("target")), "new");
    EXPECT_TRUE(QFileInfo(path("first")).isSymLink());
    EXPECT_TRUE(QFileInfo(path("second")).isSymLink());
}

TEST_F(OutputFileTest, keepsTheOldFileWhenTheMediumDoesNotKeepTheNewOne)
{
    write(path("a"), "old");
    OutputFile file(path("a"));
    file.write("new");
    syncsBeforeFailure = 0;

    EXPECT_THROW(file.commit(), FileError);

    EXPECT_EQ(read(path("a")), "old");
}

TEST_F(OutputFileTest, tellsThatTheFolderCouldNotBeSynchronised)
{
    OutputFile file(path("a"));
    file.write("new");
    syncsBeforeFailure = 1;

    EXPECT_THROW(file.commit(), FileError);
}

TEST_F(OutputFileTest, namesFileStepAndReasonOfAFailure)
{
    EXPECT_EQ(reasonOf(path("no/a")),
              path("no/a") + QStringLiteral(": cannot save, step \"create\" failed: No such file or directory"));
    EXPECT_EQ(reasonOf(path(".")), path(".") + QStringLiteral(": is not a file"));
    EXPECT_EQ(reasonOf(QString()), QStringLiteral(": cannot save, step \"open\" failed: No such file or directory"));
}

} // namespace
} // namespace Zem
