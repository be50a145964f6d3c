// Frozen pages: they show what the page shows, with nothing but their own file.
#include "CommandRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

constexpr char DATA[] = "time [s],force [kN]\n0,1\n1,2\n2,4\n";

constexpr char PAGE[] = R"([page]
size = [100, 60]
[data]
file = "data.csv"
[[element]]
type = "label"
name = "title"
origin = [10, 10]
text = "Force $.1[kN]force$"
[[element]]
type = "generic_chart"
name = "chart"
origin = [50, 35]
size = [60, 30]
token_x = "time"
[[element.curve]]
token = "force"
[[element]]
type = "label"
name = "peak"
origin = [10, 52]
connect = ["chart"]
text = "Peak $.1MAX_Y_force$"
)";

/// A page that shows the snippet "part".
constexpr char HOST[] = R"([page]
size = [200, 120]
[[snippet]]
file = "part.snippet"
[[element]]
type = "snapshot_frame"
name = "frame"
token = "part"
origin = [100, 60]
size = [100, 60]
)";

/// The page and its data, frozen as part.snippet.
class FrozenPage : public testing::Test
{
protected:
    void SetUp() override
    {
        place.write("data.csv", DATA);
        place.write("page.figure.toml", PAGE);
        done({"freeze", "page.figure.toml", "-o", "part.snippet"});
    }

    void done(QStringList const &arguments) const
    {
        CommandResult const result = place.zemfig(arguments);
        EXPECT_EQ(result.exitCode, 0) << arguments.join(' ').toStdString() << '\n' << result.errors;
    }

    /// The drawing of a page, as bytes that are the same for the same drawing.
    QByteArray drawing(QString const &page, QStringList const &more = {}) const
    {
        done(QStringList{"render", page, "-o", "drawing.svg"} + more);
        return place.read("drawing.svg");
    }

    void remove(QString const &name) const { EXPECT_TRUE(QFile::remove(place.path(name))); }

    Workplace place;
};

TEST_F(FrozenPage, drawsTheSameInEveryFormatWhenItsDataAreGone)
{
    for (char const *ending : {"pdf", "png", "svg"})
        done({"render", "page.figure.toml", "-o", QStringLiteral("live.") + ending});
    remove("data.csv");
    remove("page.figure.toml");
    for (char const *ending : {"pdf", "png", "svg"}) {
        done({"render", "part.snippet", "-o", QStringLiteral("frozen.") + ending});
        EXPECT_EQ(place.read(QStringLiteral("frozen.") + ending), place.read(QStringLiteral("live.") + ending))
            << ending;
    }
}

TEST_F(FrozenPage, drawsTheSameWhenItsProjectIsGone)
{
    done({"import", "data.csv", "--project", "p.zem"});
    QByteArray const live = drawing("page.figure.toml", {"--project", "p.zem", "--stage", "2"});
    done({"freeze", "page.figure.toml", "--project", "p.zem", "--stage", "2", "-o", "second.snippet"});
    remove("p.zem");

    EXPECT_EQ(drawing("second.snippet"), live);
}

TEST_F(FrozenPage, isOfTheLastStageWhenNoneIsTold)
{
    EXPECT_EQ(drawing("part.snippet"), drawing("page.figure.toml", {"--stage", "3"}));
    EXPECT_NE(drawing("part.snippet"), drawing("page.figure.toml", {"--stage", "1"}));
}

TEST_F(FrozenPage, ofTheSameStageHasTheSameBytes)
{
    done({"freeze", "page.figure.toml", "--stage", "3", "-o", "again.snippet"});
    EXPECT_EQ(place.read("again.snippet"), place.read("part.snippet"));
}

TEST_F(FrozenPage, canBeFrozenAgain)
{
    done({"freeze", "part.snippet", "-o", "again.snippet"});
    EXPECT_EQ(drawing("again.snippet"), drawing("page.figure.toml"));
}

TEST_F(FrozenPage, hasTheNamesOfItsElements)
{
    std::string const tree = place.zemfig({"show", "part.snippet"}).output;
    for (char const *name : {"label title", "generic chart chart", "label peak"})
        EXPECT_NE(tree.find(name), std::string::npos) << tree;
}

TEST_F(FrozenPage, isOfOneStage)
{
    for (char const *stages : {"all", "1..2", "1,3"}) {
        CommandResult const result = place.zemfig({"freeze", "page.figure.toml", "--stage", stages, "-o", "x.snippet"});
        EXPECT_EQ(result.exitCode, 1) << stages;
        EXPECT_NE(result.errors.find("a snippet holds one stage"), std::string::npos) << result.errors;
    }
    EXPECT_FALSE(place.exists("x.snippet"));
}

TEST_F(FrozenPage, isWrittenToSnippetsOnly)
{
    CommandResult const result = place.zemfig({"freeze", "page.figure.toml", "-o", "x.fig"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("'x.fig' does not end in .snippet"), std::string::npos) << result.errors;
}

TEST_F(FrozenPage, refusesOtherDataThanItsOwn)
{
    done({"import", "data.csv", "--project", "p.zem"});
    for (QStringList const &choice :
         {QStringList{"--project", "p.zem"}, QStringList{"--data", "data.csv"}, QStringList{"--stage", "1"}}) {
        CommandResult const result = place.zemfig(QStringList{"render", "part.snippet", "-o", "x.png"} + choice);
        EXPECT_EQ(result.exitCode, 1) << choice.front().toStdString();
        EXPECT_NE(result.errors.find("part.snippet brings its own data"), std::string::npos) << result.errors;
    }
    EXPECT_FALSE(place.exists("x.png"));
}

TEST_F(FrozenPage, isNotWrittenWhenTheDataHaveNoSuchStage)
{
    EXPECT_EQ(place.zemfig({"freeze", "page.figure.toml", "--stage", "9", "-o", "x.snippet"}).exitCode, 2);
    EXPECT_FALSE(place.exists("x.snippet"));
}

TEST_F(FrozenPage, tellsAnUnwritableTarget)
{
    CommandResult const result = place.zemfig({"freeze", "page.figure.toml", "-o", "nowhere/x.snippet"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.errors.find("nowhere/x.snippet"), std::string::npos) << result.errors;
}

TEST_F(FrozenPage, convertedToAPageTellsThatItsDataAreLeftOut)
{
    CommandResult const result = place.zemfig({"convert", "part.snippet", "-o", "back.figure.toml"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.errors.find("only a snippet holds them"), std::string::npos) << result.errors;
    // The page alone shows what it showed once it has the data again.
    EXPECT_EQ(drawing("back.figure.toml", {"--data", "data.csv"}), drawing("page.figure.toml"));
}

TEST_F(FrozenPage, convertedToASnippetStaysWhatItWas)
{
    done({"convert", "part.snippet", "-o", "copy.snippet"});
    EXPECT_EQ(drawing("copy.snippet"), drawing("part.snippet"));
}

TEST_F(FrozenPage, ofALivePageIsNoConversion)
{
    CommandResult const result = place.zemfig({"convert", "page.figure.toml", "-o", "copy.snippet"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("use 'zemfig freeze'"), std::string::npos) << result.errors;
}

TEST_F(FrozenPage, isShownInAFrameOfAnotherPage)
{
    place.write("host.figure.toml", HOST);
    QByteArray const shown = drawing("host.figure.toml");
    EXPECT_TRUE(shown.contains("4.0")) << shown.toStdString();
    EXPECT_EQ(place.zemfig({"check", "host.figure.toml"}).exitCode, 0);

    // Also beside other data and beside a project.
    EXPECT_EQ(drawing("host.figure.toml", {"--data", "data.csv", "--stage", "1"}), shown);
    done({"import", "data.csv", "--project", "p.zem"});
    EXPECT_EQ(drawing("host.figure.toml", {"--project", "p.zem", "--stage", "1"}), shown);
}

TEST_F(FrozenPage, isShownUnderTheNameThatItsTableGives)
{
    place.write("host.figure.toml", HOST);
    QByteArray const shown = drawing("host.figure.toml");
    place.write("host.figure.toml", QByteArray(HOST)
                                        .replace("file = \"part.snippet\"", "file = \"part.snippet\"\nname = \"other\"")
                                        .replace("token = \"part\"", "snapshot_source = \"other\""));
    EXPECT_EQ(drawing("host.figure.toml"), shown);
}

TEST_F(FrozenPage, thatNobodyNamedIsToldByCheck)
{
    place.write("host.figure.toml", QByteArray(HOST).replace("token = \"part\"", "token = \"prat\""));
    CommandResult const result = place.zemfig({"check", "host.figure.toml"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.output.find("no data has the snippet 'prat' (did you mean 'part'?)"), std::string::npos)
        << result.output;
}

TEST_F(FrozenPage, inAFrameIsFrozenWithThePageAroundIt)
{
    place.write("host.figure.toml", HOST);
    QByteArray const live = drawing("host.figure.toml");
    done({"freeze", "host.figure.toml", "-o", "host.snippet"});
    // Frozen twice over: a snippet in a snippet in a page.
    QByteArray const outer = QByteArray(HOST).replace("part", "host").replace("[200, 120]", "[300, 200]");
    place.write("outer.figure.toml", outer);
    QByteArray const liveOuter = drawing("outer.figure.toml");
    done({"freeze", "outer.figure.toml", "-o", "outer.snippet"});
    for (char const *name : {"part.snippet", "data.csv", "page.figure.toml", "host.figure.toml"})
        remove(name);

    EXPECT_EQ(drawing("host.snippet"), live);
    EXPECT_EQ(drawing("outer.figure.toml"), liveOuter);
    remove("host.snippet");
    EXPECT_EQ(drawing("outer.snippet"), liveOuter);
}

TEST_F(FrozenPage, ofATableMustBeASoundSnippetInTheFolderOfThePage)
{
    struct Row
    {
        char const *file;
        char const *text;
    };
    place.write("short.snippet", place.read("part.snippet").chopped(30));
    for (Row const &row : {Row{"data.csv", "is no snippet"}, Row{"short.snippet", "short.snippet"},
                           Row{"missing.snippet", "missing.snippet"}, Row{"../part.snippet", "../part.snippet"}}) {
        place.write("host.figure.toml", QByteArray(HOST).replace("part.snippet", row.file));
        CommandResult const result = place.zemfig({"render", "host.figure.toml", "-o", "x.png"});
        EXPECT_EQ(result.exitCode, 2) << row.file;
        EXPECT_NE(result.errors.find(row.text), std::string::npos) << result.errors;
    }
}

TEST_F(FrozenPage, ofATableHasANameOfItsOwn)
{
    place.write("host.figure.toml", QByteArray(HOST) + "[[snippet]]\nfile = \"part.snippet\"\n");
    CommandResult const result = place.zemfig({"render", "host.figure.toml", "-o", "x.png"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("there is a snippet 'part' already"), std::string::npos) << result.errors;
}

TEST_F(FrozenPage, ofATableHasNoOtherKeys)
{
    place.write("host.figure.toml",
                QByteArray(HOST).replace("file = \"part.snippet\"", "file = \"part.snippet\"\nnmae = \"x\""));
    CommandResult const result = place.zemfig({"render", "host.figure.toml", "-o", "x.png"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("'nmae'"), std::string::npos) << result.errors;
    EXPECT_NE(result.errors.find("did you mean 'name'?"), std::string::npos) << result.errors;
}

/// An example page by the names of folder and page, and the stage to freeze.
struct Example
{
    char const *folder;
    char const *page;
    char const *stage;

    friend std::ostream &operator<<(std::ostream &stream, Example const &example) { return stream << example.page; }
};

class FrozenExample : public testing::TestWithParam<Example>
{
protected:
    static QString folderOf(char const *name)
    {
        return QStringLiteral(ZEM_SOURCE_DIR "/examples/") + QString::fromLatin1(name);
    }

    void copyFolder(char const *name) const
    {
        for (QFileInfo const &file : QDir(folderOf(name)).entryInfoList(QDir::Files))
            EXPECT_TRUE(QFile::copy(file.filePath(), place.path(file.fileName())));
    }

    /// Both drawings are made before and after all but the snippet has gone.
    void expectSameDrawing(QString const &page, QStringList const &choice) const
    {
        ASSERT_EQ(place.zemfig(QStringList{"render", page, "-o", "live.pdf"} + choice).exitCode, 0);
        ASSERT_EQ(place.zemfig(QStringList{"freeze", page, "-o", "page.snippet"} + choice).exitCode, 0);
        QByteArray const live = place.read("live.pdf");
        for (QString const &name : place.files()) {
            if (name == QLatin1StringView("page.snippet"))
                continue;
            EXPECT_TRUE(QFile::remove(place.path(name)));
        }
        ASSERT_EQ(place.zemfig({"render", "page.snippet", "-o", "frozen.pdf"}).exitCode, 0);
        EXPECT_TRUE(place.read("frozen.pdf") == live);
        EXPECT_GT(live.size(), 1000);
    }

    Workplace place;
};

TEST_P(FrozenExample, drawsWhatThePageDraws)
{
    copyFolder(GetParam().folder);
    QStringList const stage =
        *GetParam().stage ? QStringList{"--stage", QString::fromLatin1(GetParam().stage)} : QStringList();
    expectSameDrawing(QString::fromLatin1(GetParam().page) + QStringLiteral(".figure.toml"), stage);
}

INSTANTIATE_TEST_SUITE_P(Pages, FrozenExample,
                         testing::Values(Example{"tensile", "tensile", "288"},
                                         Example{"tensile", "stress-strain", "201"}, Example{"fatigue", "fatigue", "1"},
                                         Example{"openhole", "openhole", "6"}, Example{"streamflow", "streamflow", ""},
                                         Example{"styles", "styles", ""}, Example{"soapfilm", "soapfilm", "2"}));

TEST_F(FrozenPage, ofAPlottedFileDrawsWhatThePageDraws)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZEM_SOURCE_DIR "/examples/airquality/airquality.csv"),
                            place.path("airquality.csv")));
    done({"plot", "airquality.csv", "--y", "CO,benzene,NOx,temperature", "--missing=-200", "-o", "plot.png", "--save",
          "plot.figure.toml"});
    QByteArray const live = drawing("plot.figure.toml");
    done({"freeze", "plot.figure.toml", "-o", "plot.snippet"});
    remove("airquality.csv");

    EXPECT_TRUE(drawing("plot.snippet") == live);
}

TEST_F(FrozenPage, ofSeriesInAProjectDrawsWhatThePageDraws)
{
    QByteArray rows = "time [s],force,response_1 [m/s^2],response_2 [m/s^2]\n";
    for (int i = 0; i < 2000; ++i)
        rows += QByteArray::number(i * 0.001) + ',' + QByteArray::number(i % 37) + ',' + QByteArray::number(i % 11) +
                ',' + QByteArray::number(i % 7) + '\n';
    place.write("vibration.csv", rows);
    done({"import", "vibration.csv", "--series", "--project", "v.zem"});
    QString const page = QStringLiteral(ZEM_SOURCE_DIR "/examples/vibration/vibration.figure.toml");
    QByteArray const live = drawing(page, {"--project", "v.zem"});
    done({"freeze", page, "--project", "v.zem", "-o", "v.snippet"});
    remove("v.zem");

    EXPECT_TRUE(drawing("v.snippet") == live);
}

TEST_F(FrozenPage, ofPicturesDrawsWhatThePageDraws)
{
    QProcess speckle;
    speckle.start(QStringLiteral(ZEM_BIN_DIR "/speckle"), {place.path({})});
    ASSERT_TRUE(speckle.waitForFinished(60000));
    ASSERT_EQ(speckle.exitCode(), 0);
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZEM_SOURCE_DIR "/examples/speckle/speckle.figure.toml"),
                            place.path("speckle.figure.toml")));
    QByteArray const live = drawing("speckle.figure.toml", {"--stage", "3"});
    done({"freeze", "speckle.figure.toml", "--stage", "3", "-o", "speckle.snippet"});
    for (char const *name : {"speckle_0.tif", "speckle_3.tif", "field_3.csv"})
        remove(name);

    EXPECT_TRUE(drawing("speckle.snippet") == live);
}

} // namespace
} // namespace Zem::Support
