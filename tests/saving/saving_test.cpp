// Whatever happens while a document is saved, its file is the old one or the new one, and nothing is left lying about.
#include "FaultyRun.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Zem {
namespace {

using Support::FaultyDisk;
using Support::FaultyResult;
using testing::Each;
using testing::ElementsAre;

QString const PROGRAM = QStringLiteral(ZEM_BIN_DIR "/save_program");

class Saving : public testing::TestWithParam<char const *>
{
protected:
    Saving()
    {
        EXPECT_EQ(disk_.run(PROGRAM, {GetParam(), "old", disk_.safePath("old"), "-"}, "none").exitCode, 0);
        EXPECT_EQ(disk_.run(PROGRAM, {GetParam(), "new", disk_.safePath("new"), "-"}, "none").exitCode, 0);
        old_ = FaultyDisk::read(disk_.safePath("old"));
        new_ = FaultyDisk::read(disk_.safePath("new"));
    }

    QStringList arguments() const { return {GetParam(), "new", disk_.path("page"), disk_.safePath("elsewhere")}; }
    FaultyResult save(QString const &fault) const
    {
        disk_.clear();
        FaultyDisk::write(disk_.path("page"), old_);
        QFile::remove(disk_.safePath("elsewhere"));
        return disk_.run(PROGRAM, arguments(), fault);
    }
    std::vector<std::string> steps()
    {
        FaultyDisk::write(disk_.path("page"), old_);
        return disk_.stepsOf(PROGRAM, arguments());
    }
    bool isClean() const { return disk_.files() == QStringList{"page"}; }
    void expectKilledAtEveryStep(QString const &when);
    void expectReported(QString const &mode, int error);

    FaultyDisk disk_;
    QByteArray old_;
    QByteArray new_;
};

/// The bytes reach the medium before they get the name, and the name does before the save is over.
TEST_P(Saving, synchronisesFileRenamesItAndSynchronisesTheFolder)
{
    std::vector<std::string> const all = steps();

    ASSERT_GT(all.size(), 10U);
    std::vector<std::string> const begin(all.begin(), all.begin() + 2);
    std::vector<std::string> const writes(all.begin() + 2, all.end() - 6);
    std::vector<std::string> const end(all.end() - 6, all.end());
    EXPECT_THAT(begin, ElementsAre("create", "mode"));
    EXPECT_THAT(writes, Each("write"));
    EXPECT_THAT(end, ElementsAre("sync", "close", "rename", "close", "sync", "close"));
    EXPECT_EQ(FaultyDisk::read(disk_.path("page")), new_);
}

void Saving::expectKilledAtEveryStep(QString const &when)
{
    std::vector<std::string> const all = steps();
    bool replaced = false;
    for (std::size_t step = 1; step <= all.size(); ++step) {
        SCOPED_TRACE(all[step - 1] + " " + std::to_string(step));

        EXPECT_TRUE(save(QStringLiteral("%1:%2").arg(when).arg(step)).killed);

        QByteArray const left = FaultyDisk::read(disk_.path("page"));
        EXPECT_TRUE(left == old_ || left == new_);
        // Once the new file is there it stays.
        EXPECT_TRUE(left == new_ || !replaced);
        replaced = left == new_;
        // The next save takes away what this one left.
        EXPECT_EQ(disk_.run(PROGRAM, arguments(), "none").exitCode, 0);
        EXPECT_EQ(FaultyDisk::read(disk_.path("page")), new_);
        EXPECT_TRUE(isClean());
    }
    EXPECT_TRUE(replaced);
}

TEST_P(Saving, leavesTheOldOrTheNewFileWhenKilledBeforeAStep)
{
    expectKilledAtEveryStep("before");
}

TEST_P(Saving, leavesTheOldOrTheNewFileWhenKilledAfterAStep)
{
    expectKilledAtEveryStep("after");
}

/// A file that cannot be created is told in the words that have always been used for it.
auto isReason(int error)
{
    return testing::AnyOf(testing::HasSubstr("stream initialisation failed"),
                          testing::HasSubstr("could not open output file"),
                          testing::HasSubstr("snippt output stream initialization failed"),
                          testing::AllOf(testing::HasSubstr("page: cannot save"),
                                         testing::HasSubstr(std::generic_category().message(error))));
}

void Saving::expectReported(QString const &mode, int error)
{
    std::vector<std::string> const all = steps();
    auto const rename = static_cast<std::size_t>(std::find(all.begin(), all.end(), "rename") - all.begin()) + 1;
    for (std::size_t step = 1; step <= all.size(); ++step) {
        SCOPED_TRACE(all[step - 1] + " " + std::to_string(step));

        FaultyResult const result = save(QStringLiteral("%1:%2:%3").arg(mode).arg(step).arg(error));

        QByteArray const left = FaultyDisk::read(disk_.path("page"));
        // Where nothing works any more, what was begun cannot be removed either.
        EXPECT_TRUE(isClean() || mode == "ever");
        // Behind the rename only the synchronisation of the folder can still fail to keep something.
        bool const isTold = step <= rename || all[step - 1] == "sync" || (mode == "ever" && step < all.size());
        EXPECT_EQ(result.exitCode, isTold ? 1 : 0);
        EXPECT_EQ(left == old_, step <= rename);
        EXPECT_EQ(left == new_, step > rename);
        EXPECT_TRUE(FaultyDisk::read(disk_.safePath("elsewhere")) == (isTold ? new_ : QByteArray()));
        if (isTold) {
            EXPECT_THAT(result.errors, isReason(error));
        }
    }
}

TEST_P(Saving, tellsOfEveryStepThatFailsOnceAndKeepsTheOldFile)
{
    expectReported("once", EIO);
}

TEST_P(Saving, tellsOfAFullDisk)
{
    expectReported("ever", ENOSPC);
}

TEST_P(Saving, tellsOfAFolderThatTakesNothing)
{
    FaultyResult const result = save("ever:1:" + QString::number(EACCES));

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.errors, isReason(EACCES));
    EXPECT_EQ(FaultyDisk::read(disk_.path("page")), old_);
    EXPECT_EQ(FaultyDisk::read(disk_.safePath("elsewhere")), new_);
}

TEST_P(Saving, writesOnAfterAShortWrite)
{
    EXPECT_EQ(save("short:1").exitCode, 0);
    EXPECT_EQ(FaultyDisk::read(disk_.path("page")), new_);
}

TEST_P(Saving, keepsModeAndLinkOfTheTarget)
{
    FaultyDisk::write(disk_.path("target"), old_);
    ASSERT_EQ(::chmod(QFile::encodeName(disk_.path("target")).constData(), 0604), 0);
    ASSERT_EQ(::symlink("target", QFile::encodeName(disk_.path("page")).constData()), 0);

    ASSERT_EQ(disk_.run(PROGRAM, arguments(), "none").exitCode, 0);

    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(disk_.path("target")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0604U);
    EXPECT_TRUE(QFileInfo(disk_.path("page")).isSymLink());
    EXPECT_EQ(FaultyDisk::read(disk_.path("target")), new_);
}

INSTANTIATE_TEST_SUITE_P(Documents, Saving, testing::Values("figure", "template", "snippet"));

} // namespace
} // namespace Zem
