// What zemfig info tells of files of every kind, and of damaged ones.
#include "CommandRun.h"

#include <OldFigureWriter.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

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
origin = [10, 52]
text = "below"
)";

class Info : public testing::Test
{
protected:
    void SetUp() override
    {
        place.write("data.csv", DATA);
        place.write("page.figure.toml", PAGE);
    }

    void done(QStringList const &arguments) const
    {
        CommandResult const result = place.zemfig(arguments);
        EXPECT_EQ(result.exitCode, 0) << arguments.join(' ').toStdString() << '\n' << result.errors;
    }

    std::string info(QString const &name) const
    {
        CommandResult const result = place.zemfig({"info", name});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return result.output;
    }

    QJsonObject json(QString const &name, int exitCode = 0) const
    {
        CommandResult const result = place.zemfig({"info", "--json", name});
        EXPECT_EQ(result.exitCode, exitCode) << result.errors;
        return QJsonDocument::fromJson(QByteArray::fromStdString(result.output)).object();
    }

    Workplace place;
};

TEST_F(Info, tellsOfAPageDocumentWhereItsDataAre)
{
    EXPECT_EQ(info("page.figure.toml"), "file: page.figure.toml\n"
                                        "kind: page document\n"
                                        "bytes: " +
                                            std::to_string(sizeof PAGE - 1) +
                                            "\n"
                                            "page: 100 x 60\n"
                                            "elements: 3\n"
                                            "element types: generic chart 1, label 2\n"
                                            "data: file data.csv\n");
}

TEST_F(Info, tellsOfAPageDocumentItsTablesScaleAndPoints)
{
    place.write("page.figure.toml", "[[series]]\nfile = \"data.csv\"\n[scale]\ntoken = \"force\"\n[[point]]\n"
                                    "name = \"top\"\ntoken = \"data.force\"\nat = \"maximum\"\n");
    QJsonObject const facts = json("page.figure.toml");
    EXPECT_EQ(facts["sources"].toArray(), (QJsonArray{QJsonObject{{"name", "series"}, {"file", "data.csv"}}}));
    EXPECT_EQ(facts["colour_scale"].toObject()["token"], "force");
    EXPECT_EQ(facts["named_points"], 1);
}

TEST_F(Info, tellsOfAFigureFileItsVersionAndBlocks)
{
    done({"convert", "page.figure.toml", "-o", "page.fig"});
    QJsonObject const facts = json("page.fig");
    EXPECT_EQ(facts["kind"], "figure file");
    EXPECT_EQ(facts["version"], 1);
    EXPECT_EQ(facts["elements"], 3);
    QJsonObject const blocks = facts["blocks"].toObject();
    // A header of 64 bytes, and 12 around each block.
    EXPECT_EQ(facts["bytes"].toInt(), place.read("page.fig").size());
    EXPECT_EQ(facts["bytes"].toInt(), 64 + 12 * blocks["count"].toInt() + blocks["bytes"].toInt());
    EXPECT_GT(blocks["largest"].toInt(), 40);
    EXPECT_FALSE(facts.contains("damage"));
}

TEST_F(Info, tellsOfATemplateItsTypeHints)
{
    done({"template", "make", "page.figure.toml", "-o", "page.template"});
    EXPECT_EQ(json("page.template")["kind"], "template");
    EXPECT_NE(info("page.template").find("type hints:\n  generic chart 'chart': hint time; force\n"),
              std::string::npos);
}

TEST_F(Info, tellsOfASnippetItsStageScaleAndData)
{
    done({"freeze", "page.figure.toml", "--stage", "2", "-o", "page.snippet"});
    QJsonObject const facts = json("page.snippet");
    EXPECT_EQ(facts["kind"], "snippet");
    EXPECT_EQ(facts["stage"], 2);
    ASSERT_EQ(facts["values"].toArray().size(), 1);
    EXPECT_EQ(facts["values"].toArray()[0].toObject()["name"], "force");
    QJsonArray const charts{QJsonObject{{"name", "GENERIC_CHART/time/force"}, {"curves", 1}, {"points", 3}}};
    EXPECT_EQ(facts["charts"].toArray(), charts);
}

TEST_F(Info, tellsOfASnippetThePicturesAndSnippetsInIt)
{
    done({"freeze", "page.figure.toml", "-o", "part.snippet"});
    place.write("host.figure.toml",
                "[page]\nsize = [200, 120]\n[[snippet]]\nfile = \"part.snippet\"\n[[element]]\n"
                "type = \"snapshot_frame\"\ntoken = \"part\"\norigin = [100, 60]\nsize = [90, 50]\n");
    done({"freeze", "host.figure.toml", "-o", "host.snippet"});
    EXPECT_NE(info("host.snippet").find("snapshots:\n  part: elements 3, page 100 x 60\n"), std::string::npos)
        << info("host.snippet");
}

TEST_F(Info, tellsOfAProjectStagesTokensSeriesAndViews)
{
    done({"import", "data.csv", "--project", "p.zem"});
    done({"import", "data.csv", "--series", "--group", "log", "--project", "p.zem"});
    EXPECT_NE(info("p.zem").find("kind: project\n"), std::string::npos);
    EXPECT_NE(info("p.zem").find("stages: count 3, first 1, last 3\n"
                                 "tokens:\n"
                                 "  time: holds numbers, unit s\n"
                                 "  force: holds numbers, unit kN\n"
                                 "series:\n"
                                 "  log.time: holds numbers, rows 3, unit s\n"
                                 "  log.force: holds numbers, rows 3, unit kN\n"),
              std::string::npos)
        << info("p.zem");
    done({"camera", "--project", "p.zem", "width=64", "height=48"});
    EXPECT_NE(info("p.zem").find("views:\n  camera: overlays 0, pictures 0, pixels 64 x 48\n"), std::string::npos)
        << info("p.zem");
}

TEST_F(Info, tellsThatAProjectIsNoPage)
{
    done({"import", "data.csv", "--project", "p.zem"});
    EXPECT_EQ(place.zemfig({"show", "p.zem"}).exitCode, 2);
}

TEST_F(Info, tellsOfAnOlderFigure)
{
    OldRecords const rectangle = OldRecords().add(oldElement(11)).add(oldRectangle(1));
    OldRecords const line = OldRecords().add(oldElement(0)).add(oldLine(1));
    place.write("old.fig", QByteArray::fromStdString(oldFile(oldFigure({rectangle, line}))));
    QJsonObject const facts = json("old.fig");
    EXPECT_EQ(facts["kind"], "older figure file");
    EXPECT_EQ(facts["page"].toArray(), (QJsonArray{100, 50}));
    EXPECT_EQ(facts["element_types"].toObject(), (QJsonObject{{"line", 1}, {"rectangle", 1}}));
    // File record, page, root, and two records for each element.
    EXPECT_EQ(facts["blocks"].toObject()["count"], 7);
}

TEST_F(Info, ofADamagedFileTellsWhereItStops)
{
    done({"convert", "page.figure.toml", "-o", "page.fig"});
    QByteArray const good = place.read("page.fig");
    int const blocks = json("page.fig")["blocks"].toObject()["count"].toInt();

    place.write("page.fig", good.chopped(3));
    QJsonObject const cut = json("page.fig", 2);
    EXPECT_EQ(cut["kind"], "figure file");
    EXPECT_EQ(cut["blocks"].toObject()["count"], blocks - 1);
    EXPECT_EQ(cut["damage"].toObject()["header"], "sound");
    EXPECT_FALSE(cut.contains("elements"));
    CommandResult const told = place.zemfig({"info", "page.fig"});
    EXPECT_NE(told.errors.find("block " + std::to_string(blocks)), std::string::npos) << told.errors;

    // A flipped bit in the payload of the first block, which begins behind header and frame.
    QByteArray flipped = good;
    flipped[64 + 8] = static_cast<char>(flipped[64 + 8] ^ 1);
    place.write("page.fig", flipped);
    QJsonObject const first = json("page.fig", 2);
    EXPECT_EQ(first["blocks"].toObject()["count"], blocks);
    EXPECT_EQ(first["damage"].toObject()["first_at_byte"], 64);
    EXPECT_EQ(first["damage"].toObject()["damaged_blocks"], 1);
    EXPECT_EQ(first["damage"].toObject()["holes"], 0);
}

TEST_F(Info, ofABadPageDocumentTellsWhatIsWrong)
{
    place.write("page.figure.toml", "[[element]]\ntype = \"lable\"\n");
    CommandResult const result = place.zemfig({"info", "page.figure.toml"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.output.find("kind: page document"), std::string::npos);
    EXPECT_NE(result.errors.find("'lable'"), std::string::npos) << result.errors;
}

TEST_F(Info, refusesWhatItDoesNotKnow)
{
    place.write("foreign", QByteArray("\0\1\2\3 something else", 19));
    EXPECT_EQ(place.zemfig({"info", "foreign"}).exitCode, 2);
    CommandResult const missing = place.zemfig({"info", "missing.fig"});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_NE(missing.errors.find("missing.fig"), std::string::npos) << missing.errors;
}

} // namespace
} // namespace Zem::Support
