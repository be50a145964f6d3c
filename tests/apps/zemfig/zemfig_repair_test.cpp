// What zemfig repair keeps of damaged files, and what it tells.
#include "CommandRun.h"

#include <OldFigureWriter.h>
#include <ZemBlockScan.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <unistd.h>

namespace Zem::Support {
namespace {

constexpr int FRAME = 8; ///< size and version in front of a payload

constexpr char DATA[] = "time [s],force [kN]\n0,1\n1,2\n2,4\n";

constexpr char PAGE[] = R"([page]
size = [100, 60]
[[element]]
type = "label"
name = "first"
origin = [10, 10]
text = "one $.1[kN]force$"
[[element]]
type = "rectangle"
name = "second"
origin = [30, 20]
size = [10, 5]
[[element]]
type = "ellipse"
name = "third"
origin = [50, 20]
size = [10, 5]
[[element]]
type = "label"
name = "fourth"
origin = [60, 40]
text = "four"
)";

class Repair : public testing::Test
{
protected:
    void SetUp() override
    {
        place.write("data.csv", DATA);
        place.write("page.figure.toml", PAGE);
        done({"convert", "page.figure.toml", "-o", "page.fig"});
    }

    void done(QStringList const &arguments) const
    {
        CommandResult const result = place.zemfig(arguments);
        EXPECT_EQ(result.exitCode, 0) << arguments.join(' ').toStdString() << '\n' << result.errors;
    }

    IO::BlockScan scan(QString const &name) const { return IO::BlockScan(place.read(name).toStdString()); }

    /// The first block that holds the text.
    std::size_t blockWith(QString const &name, QByteArray const &text) const
    {
        qsizetype const at = place.read(name).indexOf(text);
        EXPECT_GE(at, 0) << text.toStdString();
        IO::BlockScan const found = scan(name);
        for (std::size_t i = 0; i < found.getBlocks().size(); ++i) {
            if (found.getBlocks()[i].end() > static_cast<std::size_t>(at))
                return i;
        }
        return 0;
    }

    /// Turns a bit of the payload of the block.
    void flip(QString const &name, std::size_t block, int offset = 0) const
    {
        QByteArray bytes = place.read(name);
        auto const at = static_cast<qsizetype>(scan(name).getBlocks().at(block).position) + FRAME + offset;
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
        place.write(name, bytes);
    }

    static QStringList namesOf(QJsonValue const &things)
    {
        QStringList names;
        for (QJsonValue const &thing : things.toArray())
            names += thing.toObject()["name"].toString();
        return names;
    }

    QJsonObject repair(QString const &name, QString const &output) const
    {
        CommandResult const result = place.zemfig({"repair", name, "-o", output, "--json"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return QJsonDocument::fromJson(QByteArray::fromStdString(result.output)).object();
    }

    std::string tree(QString const &name) const
    {
        CommandResult const result = place.zemfig({"show", name});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return result.output;
    }

    Workplace place;
};

TEST_F(Repair, ofASoundFileKeepsEverything)
{
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_EQ(namesOf(told["kept"]),
              (QStringList{"label 'first'", "rectangle 'second'", "ellipse 'third'", "label 'fourth'"}));
    EXPECT_FALSE(told.contains("lost"));
    EXPECT_EQ(tree("new.fig"), tree("page.fig"));
    EXPECT_EQ(place.zemfig({"diff", "new.fig", "page.fig"}).exitCode, 0);
}

TEST_F(Repair, tellsItInWords)
{
    flip("page.fig", blockWith("page.fig", "second"));
    EXPECT_EQ(place.zemfig({"repair", "page.fig", "-o", "new.fig"}).output,
              "file: new.fig\n"
              "kept:\n"
              "  label 'first'\n"
              "  ellipse 'third'\n"
              "  label 'fourth'\n"
              "lost:\n"
              "  rectangle 'second': note one of its blocks is damaged\n");
}

TEST_F(Repair, dropsTheElementWithABadChecksum)
{
    std::string const before = tree("page.fig");
    flip("page.fig", blockWith("page.fig", "third"));
    ASSERT_EQ(place.zemfig({"show", "page.fig"}).exitCode, 2);
    repair("page.fig", "new.fig");
    std::string const after = tree("new.fig");
    for (char const *line : {"page 100 x 60", "label first", "rectangle second", "label fourth"})
        EXPECT_NE(after.find(line), std::string::npos) << after;
    EXPECT_EQ(after.find("third"), std::string::npos) << after;
}

TEST_F(Repair, keepsWhatIsBeforeACut)
{
    QByteArray const bytes = place.read("page.fig");
    place.write("page.fig", bytes.left(bytes.indexOf("fourth")));
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_EQ(namesOf(told["kept"]), (QStringList{"label 'first'", "rectangle 'second'", "ellipse 'third'"}));
    EXPECT_EQ(namesOf(told["lost"]), QStringList{"label"});
}

/// From the middle of one element to the middle of the next but one nothing is left.
TEST_F(Repair, goesOnBehindElementsThatAreGone)
{
    QByteArray const bytes = place.read("page.fig");
    qsizetype const from = bytes.indexOf("second");
    place.write("page.fig", QByteArray(bytes).remove(from, bytes.indexOf("third") - from));
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_EQ(namesOf(told["kept"]), (QStringList{"label 'first'", "label 'fourth'"}));
    EXPECT_EQ(namesOf(told["lost"]), (QStringList{"rectangle", "ellipse"}));
}

TEST_F(Repair, goesOnBehindABrokenBlockInTheMiddle)
{
    std::size_t const second = blockWith("page.fig", "second");
    QByteArray bytes = place.read("page.fig");
    auto const at = static_cast<qsizetype>(scan("page.fig").getBlocks()[second].position);
    place.write("page.fig", bytes.replace(at, 30, QByteArray(30, '\xff')));
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_EQ(namesOf(told["kept"]), (QStringList{"label 'first'", "ellipse 'third'", "label 'fourth'"}));
    EXPECT_EQ(namesOf(told["lost"]), QStringList{"rectangle"});
}

TEST_F(Repair, goesOnBehindForeignBytes)
{
    std::size_t const second = blockWith("page.fig", "second");
    QByteArray bytes = place.read("page.fig");
    auto const at = static_cast<qsizetype>(scan("page.fig").getBlocks()[second].position);
    place.write("page.fig", bytes.insert(at, "\xf0\xf1\xf2 foreign"));
    EXPECT_EQ(namesOf(repair("page.fig", "new.fig")["kept"]).size(), 4);
    EXPECT_NE(tree("new.fig").find("rectangle second"), std::string::npos);
}

TEST_F(Repair, mendsAHeader)
{
    QByteArray bytes = place.read("page.fig");
    std::string const before = tree("page.fig");
    bytes[60] = static_cast<char>(bytes[60] ^ 1);
    bytes[0] = 'x';
    place.write("page.fig", bytes);
    repair("page.fig", "new.fig");
    EXPECT_EQ(tree("new.fig"), before);
}

TEST_F(Repair, tellsThatThePageMayBeWrong)
{
    flip("page.fig", 0, 7);
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_EQ(told["kept"].toArray()[0].toObject()["name"], "page");
    EXPECT_EQ(namesOf(told["kept"]).size(), 5);
}

TEST_F(Repair, keepsALabelThatWasConnectedToALostElement)
{
    place.write("page.figure.toml", PAGE + QByteArray("[[element]]\ntype = \"generic_chart\"\nname = \"curve\"\n"
                                                      "origin = [20, 50]\nsize = [30, 15]\ntoken_x = \"time\"\n"
                                                      "[[element]]\ntype = \"label\"\nname = \"peak\"\n"
                                                      "origin = [60, 50]\nconnect = [\"curve\"]\ntext = \"p\"\n"));
    done({"convert", "page.figure.toml", "-o", "page.fig"});
    flip("page.fig", blockWith("page.fig", "curve"));
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_TRUE(namesOf(told["lost"]).contains("generic chart 'curve'"));
    QJsonObject const last = told["kept"].toArray().last().toObject();
    EXPECT_EQ(last["name"], "label 'peak'");
    EXPECT_EQ(last["note"], "but not what it was connected to");
    EXPECT_NE(tree("new.fig").find("label peak"), std::string::npos);
}

TEST_F(Repair, keepsConnectionsBetweenKeptElements)
{
    place.write("page.figure.toml", PAGE + QByteArray("[[element]]\ntype = \"generic_chart\"\nname = \"curve\"\n"
                                                      "origin = [20, 50]\nsize = [30, 15]\ntoken_x = \"time\"\n"
                                                      "[[element]]\ntype = \"label\"\nname = \"peak\"\n"
                                                      "origin = [60, 50]\nconnect = [\"curve\"]\ntext = \"p\"\n"));
    done({"convert", "page.figure.toml", "-o", "page.fig"});
    flip("page.fig", blockWith("page.fig", "second"));
    repair("page.fig", "new.fig");
    EXPECT_NE(place.zemfig({"show", "--json", "new.fig"}).output.find("\"to\": \"curve\""), std::string::npos);
}

TEST_F(Repair, keepsTheOtherChildrenOfAGroup)
{
    place.write("page.figure.toml",
                "[[element]]\ntype = \"group\"\nname = \"all\"\n[[element.children]]\ntype = \"rectangle\"\n"
                "name = \"inner\"\norigin = [10, 10]\nsize = [4, 4]\n[[element.children]]\ntype = \"label\"\n"
                "name = \"note\"\norigin = [20, 20]\ntext = \"x\"\n[[element]]\ntype = \"label\"\nname = \"outer\"\n"
                "origin = [50, 50]\ntext = \"y\"\n");
    done({"convert", "page.figure.toml", "-o", "page.fig"});
    flip("page.fig", blockWith("page.fig", "inner"));
    QJsonObject const told = repair("page.fig", "new.fig");
    EXPECT_EQ(namesOf(told["kept"]), (QStringList{"group 'all'", "label 'note'", "label 'outer'"}));
    EXPECT_NE(tree("new.fig").find("    label note"), std::string::npos) << tree("new.fig");
}

TEST_F(Repair, keepsTheHintsOfATemplate)
{
    place.write("chart.figure.toml",
                PAGE + QByteArray("[[element]]\ntype = \"generic_chart\"\nname = \"chart\"\norigin = [50, 35]\n"
                                  "size = [60, 30]\ntoken_x = \"time\"\n[[element.curve]]\ntoken = \"force\"\n"));
    done({"template", "make", "chart.figure.toml", "--data", "data.csv", "-o", "page.template"});
    flip("page.template", blockWith("page.template", "second"));
    repair("page.template", "new.template");
    EXPECT_NE(place.zemfig({"info", "new.template"}).output.find("generic chart 'chart': hint time; force"),
              std::string::npos);

    QByteArray const bytes = place.read("page.template");
    place.write("page.template", bytes.chopped(5));
    QJsonObject const told = repair("page.template", "second.template");
    EXPECT_TRUE(namesOf(told["lost"]).contains("type hints"));
    EXPECT_EQ(place.zemfig({"info", "second.template"}).exitCode, 0);
}

class RepairSnippet : public Repair
{
protected:
    void SetUp() override
    {
        Repair::SetUp();
        done({"freeze", "page.figure.toml", "--data", "data.csv", "--stage", "2", "-o", "page.snippet"});
    }
};

TEST_F(RepairSnippet, keepsStageAndDataWhenAnElementIsLost)
{
    flip("page.snippet", blockWith("page.snippet", "second"));
    QJsonObject const told = repair("page.snippet", "new.snippet");
    EXPECT_EQ(namesOf(told["lost"]), QStringList{"rectangle 'second'"});
    EXPECT_TRUE(namesOf(told["kept"]).contains("data 'force'"));
    CommandResult const info = place.zemfig({"info", "new.snippet"});
    EXPECT_EQ(info.exitCode, 0) << info.errors;
    EXPECT_NE(info.output.find("stage: 2\n"), std::string::npos) << info.output;
    EXPECT_NE(info.output.find("force: value"), std::string::npos) << info.output;
    EXPECT_EQ(place.zemfig({"render", "new.snippet", "-o", "x.png"}).exitCode, 0);
}

/// Where it ends is not known then, and so neither is where the data begin.
TEST_F(RepairSnippet, keepsTheDataWhenTheLastElementCannotBeRead)
{
    QByteArray bytes = place.read("page.snippet");
    auto const at =
        static_cast<qsizetype>(scan("page.snippet").getBlocks()[blockWith("page.snippet", "fourth")].position);
    place.write("page.snippet", bytes.replace(at, 30, QByteArray(30, '\xff')));
    QJsonObject const told = repair("page.snippet", "new.snippet");
    EXPECT_EQ(namesOf(told["lost"]), QStringList{"label"});
    EXPECT_EQ(namesOf(told["kept"]),
              (QStringList{"label 'first'", "rectangle 'second'", "ellipse 'third'", "data 'force'"}));
}

TEST_F(RepairSnippet, keepsThePageWhenItsDataAreCutOff)
{
    QByteArray const bytes = place.read("page.snippet");
    // The name of the token stands twice: in the list of all, and with its value.
    place.write("page.snippet", bytes.left(bytes.lastIndexOf("force")));
    QJsonObject const told = repair("page.snippet", "new.snippet");
    EXPECT_EQ(namesOf(told["kept"]).size(), 4);
    EXPECT_TRUE(namesOf(told["lost"]).contains("data 'force'"));
    EXPECT_TRUE(namesOf(told["lost"]).contains("colour scale and texts of charts"));
    EXPECT_EQ(place.zemfig({"render", "new.snippet", "-o", "x.png"}).exitCode, 0);
}

TEST_F(Repair, givesOlderFiguresRightChecksums)
{
    OldRecords const rectangle = OldRecords().add(oldElement(11)).add(oldRectangle(1));
    QByteArray const good = QByteArray::fromStdString(oldFile(oldFigure({rectangle})));
    QByteArray bad = good;
    bad[bad.size() - 1] = static_cast<char>(bad[bad.size() - 1] ^ 1);
    place.write("old.fig", bad);
    ASSERT_EQ(place.zemfig({"show", "old.fig"}).exitCode, 2);
    QJsonObject const told = repair("old.fig", "new.fig");
    EXPECT_EQ(told["kept"].toArray(), (QJsonArray{QJsonObject{{"name", "record 5"}, {"note", "may be wrong"}}}));
    EXPECT_EQ(place.read("new.fig").size(), good.size());
    EXPECT_EQ(place.zemfig({"info", "new.fig"}).exitCode, 0);
}

TEST_F(Repair, neverWritesOverTheDamagedFile)
{
    QByteArray const bytes = place.read("page.fig");
    ASSERT_TRUE(QDir(place.path({})).mkdir("inner"));
    ASSERT_EQ(::symlink("page.fig", QFile::encodeName(place.path("link.fig")).constData()), 0);
    ASSERT_EQ(::link(QFile::encodeName(place.path("page.fig")).constData(),
                     QFile::encodeName(place.path("hard.fig")).constData()),
              0);
    for (char const *output : {"page.fig", "./page.fig", "inner/../page.fig", "link.fig", "hard.fig"}) {
        CommandResult const result = place.zemfig({"repair", "page.fig", "-o", output});
        EXPECT_EQ(result.exitCode, 1) << output;
        EXPECT_NE(result.errors.find("is the damaged file itself"), std::string::npos) << result.errors;
    }
    EXPECT_EQ(place.read("page.fig"), bytes);
}

TEST_F(Repair, tellsWhatCannotBeRepaired)
{
    place.write("foreign.fig", QByteArray(500, 'x'));
    place.write("empty.fig", "");
    place.write("head.fig", place.read("page.fig").left(64));
    for (char const *name : {"foreign.fig", "empty.fig", "head.fig", "missing.fig"}) {
        CommandResult const result = place.zemfig({"repair", name, "-o", "new.fig"});
        EXPECT_EQ(result.exitCode, 2) << name;
        EXPECT_NE(result.errors.find(name), std::string::npos) << result.errors;
    }
    EXPECT_FALSE(place.exists("new.fig"));
    EXPECT_EQ(place.zemfig({"repair", "page.fig"}).exitCode, 1);
    EXPECT_EQ(place.zemfig({"repair", "page.fig", "-o", "nowhere/new.fig"}).exitCode, 3);
}

/// Whatever is cut off: what is written can be read, and no more is lost than the end.
TEST_F(RepairSnippet, ofEveryCutGivesAFileThatCanBeRead)
{
    QByteArray const bytes = place.read("page.snippet");
    for (qsizetype size = 10; size < bytes.size(); size += bytes.size() / 12) {
        place.write("page.snippet", bytes.left(size));
        CommandResult const result = place.zemfig({"repair", "page.snippet", "-o", "new.snippet"});
        EXPECT_TRUE(result.exitCode == 0 || result.exitCode == 2) << size << result.errors;
        if (result.exitCode != 0)
            continue;
        EXPECT_EQ(place.zemfig({"info", "new.snippet"}).exitCode, 0) << size;
    }
}

} // namespace
} // namespace Zem::Support
