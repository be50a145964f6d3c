// Whatever happens while the command writes, its target is the old one or the new one, a project holds all or nothing.
#include "FaultyRun.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace Zem {
namespace {

using Support::FaultyDisk;
using Support::FaultyResult;

QString const PROGRAM = QStringLiteral(ZEM_BIN_DIR "/zemfig");

constexpr char DATA[] = "time [s],force [kN]\n0,1\n1,2\n2,4\n";

constexpr char PAGE[] = R"([page]
size = [60, 40]
[[element]]
type = "label"
name = "title"
origin = [5, 5]
text = "Force $.1[kN]force$"
[[element]]
type = "rectangle"
origin = [30, 25]
size = [40, 20]
)";

/// A verb and the ending of what it writes.
struct Writing
{
    char const *verb;
    char const *ending;

    friend std::ostream &operator<<(std::ostream &stream, Writing const &writing)
    {
        return stream << writing.verb << " to " << writing.ending;
    }
};

class CommandSaving : public testing::TestWithParam<Writing>
{
protected:
    CommandSaving()
    {
        FaultyDisk::write(disk_.safePath("data.csv"), DATA);
        FaultyDisk::write(disk_.safePath("page.figure.toml"), PAGE);
        EXPECT_EQ(disk_.run(PROGRAM, arguments(disk_.safePath(name())), "none").exitCode, 0);
        new_ = FaultyDisk::read(disk_.safePath(name()));
    }

    static QString name() { return QStringLiteral("target.") + GetParam().ending; }
    QStringList arguments(QString const &target) const
    {
        QStringList all{GetParam().verb, disk_.safePath("page.figure.toml"), "-o", target};
        if (QLatin1StringView(GetParam().verb) != QLatin1StringView("convert"))
            all += {"--data", disk_.safePath("data.csv"), "--stage", "2"};
        return all;
    }

    FaultyResult write(QString const &fault) const
    {
        disk_.clear();
        FaultyDisk::write(disk_.path(name()), OLD);
        return disk_.run(PROGRAM, arguments(disk_.path(name())), fault);
    }

    void expectKilledAtEveryStep(QString const &when) const
    {
        FaultyDisk::write(disk_.path(name()), OLD);
        std::vector<std::string> const steps = disk_.stepsOf(PROGRAM, arguments(disk_.path(name())));
        ASSERT_GT(steps.size(), 4U);
        for (std::size_t step = 1; step <= steps.size(); ++step) {
            SCOPED_TRACE(steps[step - 1] + " " + std::to_string(step));
            EXPECT_TRUE(write(QStringLiteral("%1:%2").arg(when).arg(step)).killed);
            QByteArray const left = FaultyDisk::read(disk_.path(name()));
            EXPECT_TRUE(left == OLD || left == new_);
            // The next one takes away what this one left.
            EXPECT_EQ(disk_.run(PROGRAM, arguments(disk_.path(name())), "none").exitCode, 0);
            EXPECT_EQ(disk_.files(), QStringList{name()});
            EXPECT_EQ(FaultyDisk::read(disk_.path(name())), new_);
        }
    }

    inline static QByteArray const OLD{"what stood there before"};
    FaultyDisk disk_;
    QByteArray new_;
};

TEST_P(CommandSaving, leavesTheOldOrTheNewFileWhenKilledBeforeAStep)
{
    expectKilledAtEveryStep("before");
}

TEST_P(CommandSaving, leavesTheOldOrTheNewFileWhenKilledAfterAStep)
{
    expectKilledAtEveryStep("after");
}

TEST_P(CommandSaving, keepsTheOldFileWhenTheDiskIsFull)
{
    FaultyResult const result = write("ever:1:" + QString::number(ENOSPC));
    EXPECT_EQ(result.exitCode, 3) << result.errors;
    EXPECT_THAT(result.errors, testing::HasSubstr(name().toStdString()));
    EXPECT_EQ(FaultyDisk::read(disk_.path(name())), OLD);
}

INSTANTIATE_TEST_SUITE_P(Verbs, CommandSaving,
                         testing::Values(Writing{"freeze", "snippet"}, Writing{"convert", "fig"},
                                         Writing{"convert", "template"}, Writing{"render", "pdf"},
                                         Writing{"render", "png"}, Writing{"render", "svg"}));

class ProjectSaving : public testing::Test
{
protected:
    ProjectSaving()
    {
        FaultyDisk::write(disk_.safePath("data.csv"), DATA);
        FaultyDisk::write(disk_.safePath("more.csv"), "speed [m/s],mark\n7,x\n8,y\n9,z\n");
        EXPECT_EQ(
            disk_.run(PROGRAM, {"import", disk_.safePath("data.csv"), "--project", disk_.safePath("p.zem")}, "none")
                .exitCode,
            0);
    }

    QStringList arguments() const { return {"import", disk_.safePath("more.csv"), "--project", disk_.path("p.zem")}; }
    void restore() const
    {
        disk_.clear();
        FaultyDisk::write(disk_.path("p.zem"), FaultyDisk::read(disk_.safePath("p.zem")));
    }

    /// How many of the tokens of the import the project has; -1 when it does not open, or has lost one from before.
    int tokensOfImport() const
    {
        QProcess process;
        process.start(PROGRAM, {"info", disk_.path("p.zem")});
        EXPECT_TRUE(process.waitForFinished(60000));
        QByteArray const told = process.readAllStandardOutput();
        if (process.exitCode() != 0 || !told.contains("  force: ") || !told.contains("  time: "))
            return -1;
        return static_cast<int>(told.contains("  speed: ")) + static_cast<int>(told.contains("  mark: "));
    }

    void expectKilledAtEveryStep(QString const &when) const
    {
        restore();
        std::vector<std::string> const steps = disk_.stepsOf(PROGRAM, arguments());
        ASSERT_GT(steps.size(), 4U);
        std::size_t const stride = std::max<std::size_t>(1, steps.size() / 12);
        for (std::size_t step = 1; step <= steps.size(); step += stride) {
            SCOPED_TRACE(steps[step - 1] + " " + std::to_string(step) + " of " + std::to_string(steps.size()));
            restore();
            EXPECT_TRUE(disk_.run(PROGRAM, arguments(), QStringLiteral("%1:%2").arg(when).arg(step)).killed);
            EXPECT_THAT(tokensOfImport(), testing::AnyOf(0, 2));
            // The import can be made again.
            EXPECT_EQ(disk_.run(PROGRAM, arguments(), "none").exitCode, 0);
            EXPECT_EQ(tokensOfImport(), 2);
        }
    }

    FaultyDisk disk_;
};

TEST_F(ProjectSaving, holdsAllOrNothingOfAnImportKilledBeforeAStep)
{
    expectKilledAtEveryStep("before");
}

TEST_F(ProjectSaving, holdsAllOrNothingOfAnImportKilledAfterAStep)
{
    expectKilledAtEveryStep("after");
}

} // namespace
} // namespace Zem
