#include "stream_bytes.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Zem;
using namespace Zem::IO;
using namespace Zem::IO::Test;

namespace {

class StreamFile : public testing::Test
{
protected:
    QString path(char const *name) const { return folder_.filePath(QString::fromLatin1(name)); }

    QString file() const { return path("a.fig"); }

    void makeOldFile() const
    {
        QFile old(file());
        ASSERT_TRUE(old.open(QIODevice::WriteOnly));
        old.write("old");
    }

    static QByteArray contentOf(QString const &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }

    QStringList names() const
    {
        return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static void writeBlock(OutStream &stream, unsigned int value)
    {
        stream.beginBlock(4, 1);
        stream.writeUInt(value);
        stream.endBlock();
    }

    static void save(QString const &name, unsigned int value)
    {
        OutStream stream(name, FILE_TYPE, FILE_VERSION);
        ASSERT_TRUE(stream.isInit()) << stream.getError().toStdString();
        writeBlock(stream, value);
        stream.close();
    }

    static unsigned int load(QString const &name)
    {
        unsigned int value = 0;
        InStream stream(name);
        stream.openBlock();
        stream.readUInt(&value);
        return value;
    }

    static unsigned int modeOf(QString const &name)
    {
        struct stat status = {};
        return ::stat(QFile::encodeName(name).constData(), &status) == 0 ? status.st_mode & 0777u : 0u;
    }

    QTemporaryDir folder_;
};

/// Runs `child` in a process of its own, whose result is 0 when it returned true.
int resultInChild(std::function<bool()> const &child)
{
    pid_t const pid = ::fork();
    if (pid == 0) {
        ::_exit(child() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

TEST_F(StreamFile, holdsWhatWasWritten)
{
    save(file(), 17);
    EXPECT_EQ(load(file()), 17u);
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.fig")});
}

TEST_F(StreamFile, isReplacedOnlyByClose)
{
    makeOldFile();
    OutStream stream(file(), FILE_TYPE, FILE_VERSION);
    writeBlock(stream, 1);
    EXPECT_EQ(contentOf(file()), "old");
    stream.close();
    EXPECT_EQ(load(file()), 1u);
}

TEST_F(StreamFile, staysWithoutClose)
{
    makeOldFile();
    {
        OutStream stream(file(), FILE_TYPE, FILE_VERSION);
        writeBlock(stream, 1);
        EXPECT_EQ(names().size(), 2);
    }
    EXPECT_EQ(contentOf(file()), "old");
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.fig")});
}

TEST_F(StreamFile, keepsThePermissionsOfTheFileItReplaces)
{
    makeOldFile();
    ASSERT_EQ(::chmod(QFile::encodeName(file()).constData(), 0606), 0);
    save(file(), 1);
    EXPECT_EQ(modeOf(file()), 0606u);
}

TEST_F(StreamFile, getsThePermissionsOfTheUmaskWhenNew)
{
    mode_t const before = ::umask(027);
    save(file(), 1);
    ::umask(before);
    EXPECT_EQ(modeOf(file()), 0640u);
}

TEST_F(StreamFile, isReplacedBehindASymbolicLink)
{
    makeOldFile();
    QString const link = path("link.fig");
    ASSERT_EQ(::symlink("a.fig", QFile::encodeName(link).constData()), 0);
    save(link, 5);
    EXPECT_EQ(load(file()), 5u);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

TEST_F(StreamFile, isMadeWhereADanglingLinkPoints)
{
    QString const link = path("link.fig");
    ASSERT_EQ(::symlink("a.fig", QFile::encodeName(link).constData()), 0);
    save(link, 6);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(load(file()), 6u);
}

TEST_F(StreamFile, cannotBeMadeInAMissingFolder)
{
    OutStream stream(path("no/a.fig"), FILE_TYPE, FILE_VERSION);
    EXPECT_FALSE(stream.isInit());
    EXPECT_EQ(stream.getError(),
              path("no/a.fig") + QStringLiteral(": cannot save, step \"create\" failed: No such file or directory"));
    EXPECT_THROW(stream.beginBlock(0, 1), StreamException);
    EXPECT_THROW(stream.close(), StreamException);
}

TEST_F(StreamFile, cannotReplaceAFolderADeviceOrNothing)
{
    EXPECT_FALSE(OutStream(folder_.path(), FILE_TYPE, 1).isInit());
    EXPECT_FALSE(OutStream(QStringLiteral("/dev/full"), FILE_TYPE, 1).isInit());
    EXPECT_FALSE(OutStream(QString(), FILE_TYPE, 1).isInit());
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(StreamFile, respectsAFolderAndAFileThatMayNotBeWritten)
{
    QString const folder = folder_.path();
    makeOldFile();
    QString const locked = path("locked");
    ASSERT_TRUE(QDir().mkdir(locked));
    ::chmod(QFile::encodeName(locked).constData(), 0555);
    ::chmod(QFile::encodeName(file()).constData(), 0444);
    ::chmod(QFile::encodeName(folder).constData(), 0777);

    int const result = resultInChild([&] {
        // Everything is open to the superuser: become somebody else.
        if (::geteuid() == 0 && ::setuid(65534) != 0) {
            return false;
        }
        return !OutStream(locked + QStringLiteral("/b.fig"), FILE_TYPE, 1).isInit() &&
               !OutStream(file(), FILE_TYPE, 1).isInit();
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(contentOf(file()), "old");
}

TEST_F(StreamFile, staysWhenTheMediumIsFull)
{
    makeOldFile();
    int const result = resultInChild([&] {
        // A limit on file sizes stands for a full disk: the write is cut short, then fails.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit = {2000000, 2000000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        OutStream stream(file(), FILE_TYPE, FILE_VERSION);
        std::string const data(4000000, 'x');
        QString const expected = file() + QStringLiteral(": cannot save, step \"write\" failed: File too large");
        QString const first = streamError([&] {
            stream.beginBlock(static_cast<unsigned int>(data.size()), 1);
            stream.writeData(data.data(), static_cast<unsigned int>(data.size()));
            stream.endBlock();
            stream.close();
        });
        QString const later = streamError([&] { stream.close(); });
        QString const write = streamError([&] { stream.writeUInt(1); });
        return first == expected && later == expected && write == expected;
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(contentOf(file()), "old");
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.fig")});
}

TEST_F(StreamFile, staysWhenTheMediumIsFullAtClose)
{
    makeOldFile();
    int const result = resultInChild([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit = {70, 70};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        OutStream stream(file(), FILE_TYPE, FILE_VERSION);
        writeBlock(stream, 1);
        return !streamError([&] { stream.close(); }).isEmpty();
    });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(contentOf(file()), "old");
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.fig")});
}

TEST_F(StreamFile, failsWhenTheNameBecameAFolderMeanwhile)
{
    OutStream stream(file(), FILE_TYPE, FILE_VERSION);
    writeBlock(stream, 1);
    ASSERT_TRUE(QDir().mkdir(file()));
    EXPECT_EQ(streamError([&] { stream.close(); }),
              file() + QStringLiteral(": cannot save, step \"rename\" failed: Is a directory"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("a.fig")});
}

TEST_F(StreamFile, tellsThatAForeignStreamTakesNoMore)
{
    std::ostringstream bytes;
    bytes.setstate(std::ios::badbit);
    OutStream stream(&bytes, FILE_TYPE, FILE_VERSION);
    EXPECT_EQ(streamError([&] { stream.close(); }), QStringLiteral("(stream): cannot save, step \"write\" failed"));
}

TEST_F(StreamFile, savesAndLoadsManySmallBlocks)
{
    constexpr unsigned int BLOCKS = 200000;
    QString const text = QStringLiteral("element");
    OutStream out(file(), FILE_TYPE, FILE_VERSION);
    for (unsigned int i = 0; i < BLOCKS; ++i) {
        out.beginBlock(12 + Stream::sizeOf(text), 1);
        out.writeUInt(i);
        out.writeDouble(0.5);
        out.writeString(text);
        out.endBlock();
    }
    out.close();
    InStream in(file());
    unsigned int last = 0;
    double number = 0;
    QString read;
    for (unsigned int i = 0; i < BLOCKS; ++i) {
        in.openBlock();
        in.readUInt(&last);
        in.readDouble(&number);
        in.readString(&read);
        in.closeBlock();
    }
    EXPECT_EQ(last, BLOCKS - 1);
    EXPECT_EQ(read, text);
}
