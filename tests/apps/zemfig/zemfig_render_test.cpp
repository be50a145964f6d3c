#include "CommandRun.h"

#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

constexpr char PAGE[] = R"([page]
size = [60, 40]

[[element]]
type = "label"
name = "force"
origin = [10, 10]
text = "Force $.2[N]force$ N at $stage$"

[[element]]
type = "rectangle"
name = "box"
origin = [40, 30]
size = [10, 10]
background = { filled = true, color = "#ff0000" }
border = { style = "none" }

[[element]]
type = "label"
name = "hidden"
origin = [10, 20]
visible = false
text = "NEVER"
)";

constexpr char DATA[] = "force [kN];time [s]\n1,5;0\n2,75;1\n-0,25;2\n";

Workplace &fill(Workplace &place)
{
    place.write("page.figure.toml", PAGE);
    place.write("data.csv", DATA);
    return place;
}

/// What a program prints.
std::string run(QString const &program, QStringList const &arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    return process.readAllStandardOutput().toStdString();
}

TEST(ZemfigRender, writesAPdfPageForEachStageWithSearchableValues)
{
    Workplace place;
    fill(place);

    CommandResult const result =
        place.zemfig({"render", "page.figure.toml", "--data", "data.csv", "--stage", "all", "-o", "out.pdf"});

    ASSERT_EQ(result.exitCode, 0) << result.errors;
    std::string const text = run("pdftotext", {place.path("out.pdf"), "-"});
    EXPECT_NE(text.find("Force 1500.00 N at 1"), std::string::npos) << text;
    EXPECT_NE(text.find("Force 2750.00 N at 2"), std::string::npos) << text;
    EXPECT_NE(text.find("Force -250.00 N at 3"), std::string::npos) << text;
    EXPECT_EQ(text.find("NEVER"), std::string::npos) << text;
    std::string const info = run("pdfinfo", {place.path("out.pdf")});
    EXPECT_NE(info.find("Pages:           3"), std::string::npos) << info;
    std::string const fonts = run("pdffonts", {place.path("out.pdf")});
    EXPECT_NE(fonts.find("LiberationSans"), std::string::npos) << fonts;
}

TEST(ZemfigRender, writesTheSameBytesTwice)
{
    for (char const *ending : {"pdf", "png", "svg"}) {
        Workplace place;
        fill(place);
        QStringList const render{"render", "page.figure.toml", "--data", "data.csv", "--stage", "2", "-o"};
        ASSERT_EQ(place.zemfig(render + QStringList{QStringLiteral("a.%1").arg(ending)}).exitCode, 0) << ending;
        ASSERT_EQ(place.zemfig(render + QStringList{QStringLiteral("b.%1").arg(ending)}).exitCode, 0) << ending;
        QByteArray const first = place.read(QStringLiteral("a.%1").arg(ending));
        EXPECT_FALSE(first.isEmpty());
        EXPECT_EQ(first, place.read(QStringLiteral("b.%1").arg(ending))) << ending;
    }
}

TEST(ZemfigRender, numbersThePicturesOfSeveralStages)
{
    Workplace place;
    fill(place);
    QByteArray rows = "force [kN]\n";
    for (int i = 0; i < 12; ++i)
        rows += "1\n";
    place.write("many.csv", rows);

    CommandResult const result = place.zemfig({"render", "page.figure.toml", "--data", "many.csv", "--stage",
                                               "2..3,12", "-o", "out.png", "--dpi", "30"});

    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(place.files(),
              (QStringList{"data.csv", "many.csv", "out-02.png", "out-03.png", "out-12.png", "page.figure.toml"}));
}

TEST(ZemfigRender, takesProjectsAndFigureFiles)
{
    Workplace place;
    fill(place);
    ASSERT_EQ(place.zemfig({"import", "data.csv", "--project", "test.zem"}).exitCode, 0);
    ASSERT_EQ(place.zemfig({"convert", "page.figure.toml", "-o", "page.fig"}).exitCode, 0);

    ASSERT_EQ(place.zemfig({"render", "page.fig", "--project", "test.zem", "-o", "out.pdf"}).exitCode, 0);

    std::string const text = run("pdftotext", {place.path("out.pdf"), "-"});
    EXPECT_NE(text.find("Force -250.00 N at 3"), std::string::npos) << text;
}

TEST(ZemfigRender, drawsAPageThatNamesItsDataAlone)
{
    Workplace place;
    fill(place);
    place.write("page.figure.toml",
                QByteArray("[data]\nfile = \"data.csv\"\ndecimal_comma = true\nstage = \"1\"\n") + PAGE);

    ASSERT_EQ(place.zemfig({"render", "page.figure.toml", "-o", "out.pdf"}).exitCode, 0);

    std::string const text = run("pdftotext", {place.path("out.pdf"), "-"});
    EXPECT_NE(text.find("Force 1500.00 N at 1"), std::string::npos) << text;
}

TEST(ZemfigRender, printsUnknownValuesAsQuestionMarks)
{
    Workplace place;
    fill(place);

    ASSERT_EQ(place.zemfig({"render", "page.figure.toml", "-o", "out.pdf"}).exitCode, 0);

    std::string const text = run("pdftotext", {place.path("out.pdf"), "-"});
    EXPECT_NE(text.find("Force ??? N at ???"), std::string::npos) << text;
}

struct BadRender
{
    char const *name;
    QStringList arguments;
    int exitCode;
    char const *reason;
};

class BadRenders : public testing::TestWithParam<BadRender>
{
};

TEST_P(BadRenders, endWithTheirExitCodeAndReasonAndWriteNothing)
{
    Workplace place;
    fill(place);
    place.write("words.csv", "force [kN];time [s]\n1,5;0\n2,5;oops\n1;2\n3;4\n");
    place.write("quotes.csv", "a,b\n\"1,2\n");
    place.write("notutf8.csv", "a,b\n1,\xff\xfe\n");
    QStringList const before = place.files();

    CommandResult const result = place.zemfig(QStringList{"render", "page.figure.toml"} + GetParam().arguments);

    EXPECT_EQ(result.exitCode, GetParam().exitCode) << result.errors;
    EXPECT_NE(result.errors.find(GetParam().reason), std::string::npos) << result.errors;
    EXPECT_EQ(place.files(), before);
}

INSTANTIATE_TEST_SUITE_P(
    ZemfigRender, BadRenders,
    testing::Values(
        BadRender{"stageThatDoesNotExist", {"--data", "data.csv", "--stage", "7", "-o", "o.pdf"}, 2,
                  "stage 7 does not exist; there are 3 stages from 1 to 3"},
        BadRender{"stageThatIsNoNumber", {"--data", "data.csv", "--stage", "first", "-o", "o.pdf"}, 1, "'first'"},
        BadRender{"stagesBackwards", {"--data", "data.csv", "--stage", "3..1", "-o", "o.pdf"}, 1, "backwards"},
        BadRender{"unknownEnding", {"--data", "data.csv", "-o", "o.doc"}, 1, "o.doc"},
        BadRender{"missingData", {"--data", "none.csv", "-o", "o.pdf"}, 2, "none.csv"},
        BadRender{"missingProject", {"--project", "none.zem", "-o", "o.pdf"}, 2, "none.zem"},
        BadRender{"wordsAmongNumbers", {"--data", "words.csv", "-o", "o.pdf"}, 2, "words.csv:3"},
        BadRender{"brokenQuotes", {"--data", "quotes.csv", "-o", "o.pdf"}, 2, "quotes.csv:2"},
        BadRender{"badEncoding", {"--data", "notutf8.csv", "--encoding", "utf-8", "-o", "o.pdf"}, 2, "notutf8.csv:2"},
        BadRender{"unwritableFolder", {"--data", "data.csv", "-o", "nowhere/o.pdf"}, 3, "nowhere/o.pdf"},
        BadRender{"dataAndProject", {"--data", "data.csv", "--project", "p.zem", "-o", "o.pdf"}, 1, "excludes"}),
    [](auto const &test) { return test.param.name; });

class FullDisk : public testing::TestWithParam<char const *>
{
};

TEST_P(FullDisk, leavesTheOldFile)
{
    Workplace place;
    fill(place);
    // Long enough for no output to fit into half a kilobyte.
    place.write("page.figure.toml", QByteArray(PAGE) + "[[element]]\ntype = \"label\"\ntext = \"" +
                                        QByteArray(2000, 'x') + "\"\n");
    QString const target = QStringLiteral("out.%1").arg(GetParam());
    place.write(target, "as before");
    QString const verb = target.endsWith("fig") || target.endsWith("toml") ? "convert" : "render";

    // No file may grow beyond half a kilobyte.
    QProcess process;
    process.setWorkingDirectory(place.path("."));
    process.start("sh", {"-c", QStringLiteral("ulimit -f 1; %1/zemfig %2 page.figure.toml -o %3")
                                   .arg(ZEM_BIN_DIR, verb, target)});
    ASSERT_TRUE(process.waitForFinished(60000));

    EXPECT_EQ(process.exitCode(), 3);
    EXPECT_NE(process.readAllStandardError().indexOf(target.toUtf8()), -1);
    EXPECT_EQ(place.read(target), "as before");
    EXPECT_EQ(place.files().size(), 3);
}

INSTANTIATE_TEST_SUITE_P(Zemfig, FullDisk, testing::Values("fig", "pdf", "png", "svg", "toml"));

} // namespace
} // namespace Zem::Support
