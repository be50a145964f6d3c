// Templates: made of pages, asked what they want, bound to other data.
#include "CommandRun.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

constexpr char DATA[] = "time [s],force [kN],net_force [kN],strain [%]\n0,1,7,0.5\n1,2,8,1.0\n2,4,9,1.5\n";

constexpr char PAGE[] = R"([page]
size = [100, 60]
[data]
file = "data.csv"
[[element]]
type = "label"
name = "title"
origin = [10, 10]
text = "Force $.1[kN]force$ at $.1time$"
[[element]]
type = "generic_chart"
name = "chart"
origin = [50, 35]
size = [60, 30]
token_x = "time"
[[element.curve]]
token = "force"
[[element.curve]]
token = "net_force"
[[element]]
type = "label"
name = "peak"
origin = [10, 52]
connect = ["chart"]
text = "$NAME_force$ $.1MIN_Y_force$ to $.1MAX_Y_force$, net $.1MAX_Y_net_force$, $STD_DEVIATION_force$"
)";

class TemplateOfPage : public testing::Test
{
protected:
    void SetUp() override
    {
        place.write("data.csv", DATA);
        place.write("page.figure.toml", PAGE);
        EXPECT_EQ(make("page.figure.toml").exitCode, 0);
    }

    CommandResult make(QString const &page) const
    {
        return place.zemfig({"template", "make", page, "-o", "page.template"});
    }

    CommandResult bind(QStringList const &more, QString const &output = "bound.figure.toml") const
    {
        return place.zemfig(QStringList{"template", "bind", "page.template", "--data", "data.csv", "-o", output} +
                            more);
    }

    QByteArray drawing(QString const &page, QStringList const &more = {}) const
    {
        CommandResult const result = place.zemfig(QStringList{"render", page, "-o", "drawing.svg"} + more);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return place.read("drawing.svg");
    }

    /// The texts of the labels of the page that was bound.
    std::string bound() const { return place.read("bound.figure.toml").toStdString(); }

    Workplace place;
};

TEST_F(TemplateOfPage, tellsWhatItWants)
{
    CommandResult const result = place.zemfig({"template", "list", "page.template"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "label 'title': value force (.1[kN])\n"
                             "label 'title': value time (.1)\n"
                             "generic chart 'chart': x time (time; force)\n"
                             "generic chart 'chart': y force (time; force)\n"
                             "generic chart 'chart': y net_force (time; force)\n"
                             "label 'peak': value NAME_force\n"
                             "label 'peak': value MIN_Y_force (.1)\n"
                             "label 'peak': value MAX_Y_force (.1)\n"
                             "label 'peak': value MAX_Y_net_force (.1)\n"
                             "label 'peak': value STD_DEVIATION_force\n");
}

TEST_F(TemplateOfPage, tellsItAsJson)
{
    CommandResult const result = place.zemfig({"template", "list", "--json", "page.template"});

    QJsonArray const wanted = QJsonDocument::fromJson(QByteArray::fromStdString(result.output)).array();
    ASSERT_EQ(wanted.size(), 10);
    EXPECT_EQ(wanted[0].toObject(),
              (QJsonObject{{"element", "label 'title'"}, {"kind", "value"}, {"name", "force"}, {"format", ".1[kN]"}}));
    EXPECT_EQ(
        wanted[2].toObject(),
        (QJsonObject{{"element", "generic chart 'chart'"}, {"kind", "x"}, {"name", "time"}, {"hint", "time; force"}}));
    EXPECT_EQ(wanted[4].toObject()["kind"], "y");
    EXPECT_EQ(wanted[4].toObject()["name"], "net_force");
}

TEST_F(TemplateOfPage, wantsPicturesAndSnippets)
{
    place.write("page.figure.toml", "[[element]]\ntype = \"image\"\nname = \"plate\"\ntoken = \"camera\"\n"
                                    "[[element]]\ntype = \"snapshot_frame\"\nname = \"frame\"\ntoken = \"part\"\n"
                                    "[[element]]\ntype = \"chart\"\nname = \"curve\"\ntoken = \"log\"\n");
    ASSERT_EQ(make("page.figure.toml").exitCode, 0);

    CommandResult const result = place.zemfig({"template", "list", "page.template"});

    EXPECT_EQ(result.output, "image 'plate': picture camera\n"
                             "snapshot frame 'frame': snippet part\n"
                             "chart 'curve': chart log\n");
}

TEST_F(TemplateOfPage, keepsItsHintsWhenItIsConverted)
{
    EXPECT_EQ(place.zemfig({"convert", "page.template", "-o", "copy.template"}).exitCode, 0);
    EXPECT_EQ(place.zemfig({"template", "list", "copy.template"}).output,
              place.zemfig({"template", "list", "page.template"}).output);
}

TEST_F(TemplateOfPage, hasNumberForACurveWithoutQuantity)
{
    place.write("data.csv", "time,force [kN],net_force\n0,1,7\n");
    ASSERT_EQ(make("page.figure.toml").exitCode, 0);

    EXPECT_NE(place.zemfig({"template", "list", "page.template"}).output.find("x time (number; force, number)"),
              std::string::npos);
}

TEST_F(TemplateOfPage, isWrittenToTemplatesOnly)
{
    CommandResult const result = place.zemfig({"template", "make", "page.figure.toml", "-o", "x.fig"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("'x.fig' does not end in .template"), std::string::npos) << result.errors;
}

TEST_F(TemplateOfPage, boundToTheSameDataIsThePage)
{
    ASSERT_EQ(bind({}).exitCode, 0);
    EXPECT_EQ(drawing("bound.figure.toml"), drawing("page.figure.toml"));
    EXPECT_NE(bound().find("file = \"data.csv\""), std::string::npos) << bound();
}

TEST_F(TemplateOfPage, boundToAProjectNamesIt)
{
    ASSERT_EQ(place.zemfig({"import", "data.csv", "--project", "p.zem"}).exitCode, 0);
    ASSERT_EQ(
        place.zemfig({"template", "bind", "page.template", "--project", "p.zem", "-o", "bound.figure.toml"}).exitCode,
        0);
    EXPECT_NE(bound().find("project = \"p.zem\""), std::string::npos) << bound();
    EXPECT_EQ(drawing("bound.figure.toml"), drawing("page.figure.toml"));
}

TEST_F(TemplateOfPage, boundAsFigureFileShowsTheSameWithItsData)
{
    ASSERT_EQ(bind({}, "bound.fig").exitCode, 0);
    EXPECT_EQ(drawing("bound.fig", {"--data", "data.csv"}), drawing("page.figure.toml"));
}

TEST_F(TemplateOfPage, takesHowTheTableIsReadAlong)
{
    place.write("data.csv", QByteArray(DATA).replace(',', ';'));
    ASSERT_EQ(bind({"--delimiter", "semicolon", "--first-stage", "5"}).exitCode, 0);

    EXPECT_NE(bound().find("delimiter = \"semicolon\""), std::string::npos) << bound();
    QByteArray const sixth = drawing("bound.figure.toml", {"--stage", "6"});
    EXPECT_TRUE(sixth.contains("2.0")) << sixth.toStdString();
}

TEST_F(TemplateOfPage, takesOtherNamesInLabelsAxesAndCurves)
{
    ASSERT_EQ(bind({"--use", "force=strain", "--use", "time=net_force"}).exitCode, 0);

    EXPECT_NE(bound().find("Force $.1[kN]strain$ at $.1net_force$"), std::string::npos) << bound();
    EXPECT_NE(bound().find("token_x = \"net_force\""), std::string::npos) << bound();
    EXPECT_NE(bound().find("token = \"strain\""), std::string::npos) << bound();
    EXPECT_NE(bound().find("token = \"net_force\""), std::string::npos) << bound();
    EXPECT_EQ(bound().find("token = \"force\""), std::string::npos) << bound();
}

/// "net_force" ends like "force" but is another curve.
TEST_F(TemplateOfPage, takesOtherNamesInWhatLabelsTellOfCharts)
{
    ASSERT_EQ(bind({"--use", "force=strain"}).exitCode, 0);

    EXPECT_NE(bound().find("\"$NAME_strain$ $.1MIN_Y_strain$ to $.1MAX_Y_strain$, net $.1MAX_Y_net_force$, "
                           "$STD_DEVIATION_strain$\""),
              std::string::npos)
        << bound();
}

TEST_F(TemplateOfPage, takesAnotherValueOfTheChart)
{
    ASSERT_EQ(bind({"--use", "MIN_Y_force=AVERAGE_force"}).exitCode, 0);

    EXPECT_NE(bound().find("$.1AVERAGE_force$ to $.1MAX_Y_force$"), std::string::npos) << bound();
    EXPECT_NE(bound().find("Force $.1[kN]force$"), std::string::npos) << bound();
}

/// Names are taken all at once: the second does not see what the first has made.
TEST_F(TemplateOfPage, exchangesTwoNames)
{
    ASSERT_EQ(bind({"--use", "force=net_force", "--use", "net_force=force"}).exitCode, 0);

    EXPECT_NE(bound().find("Force $.1[kN]net_force$"), std::string::npos) << bound();
    EXPECT_NE(bound().find("to $.1MAX_Y_net_force$, net $.1MAX_Y_force$"), std::string::npos) << bound();
}

/// A token that looks like a statistic is a name like any other in a label without a chart.
TEST_F(TemplateOfPage, knowsStatisticsOnlyBesideCharts)
{
    place.write("data.csv", "force,MAX_Y_force\n1,2\n");
    place.write("page.figure.toml",
                "[[element]]\ntype = \"label\"\norigin = [9, 9]\ntext = \"$force$ $MAX_Y_force$\"\n");
    ASSERT_EQ(make("page.figure.toml").exitCode, 0);
    ASSERT_EQ(bind({"--use", "force=stage.count"}).exitCode, 0);

    EXPECT_NE(bound().find("$stage.count$ $MAX_Y_force$"), std::string::npos) << bound();
}

TEST_F(TemplateOfPage, tellsAllThatTheDataDoNotHave)
{
    place.write("data.csv", "time [s],forse [kN]\n0,1\n");

    CommandResult const result = bind({});

    EXPECT_EQ(result.exitCode, 2);
    for (char const *line :
         {"page.template: label 'title': no data has the token 'force' (did you mean 'forse'?)",
          "page.template: generic chart 'chart': no data has 'force' for this axis (did you mean 'forse'?)",
          "page.template: generic chart 'chart': no data has 'net_force' for this axis",
          "page.template: label 'peak': no data has the token 'MAX_Y_force'"})
        EXPECT_NE(result.errors.find(line), std::string::npos) << result.errors;
    EXPECT_FALSE(place.exists("bound.figure.toml"));
    // And the names that are there make it whole.
    EXPECT_EQ(bind({"--use", "force=forse", "--use", "net_force=forse"}).exitCode, 0);
}

TEST_F(TemplateOfPage, refusesNamesThatItDoesNotWant)
{
    CommandResult const result = bind({"--use", "forse=strain"});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("the template wants no 'forse' (did you mean 'force'?)"), std::string::npos)
        << result.errors;
    EXPECT_FALSE(place.exists("bound.figure.toml"));
}

TEST_F(TemplateOfPage, refusesAUseWithoutEquals)
{
    for (char const *use : {"force", "=strain"}) {
        CommandResult const result = bind({QStringLiteral("--use=") + use});
        EXPECT_EQ(result.exitCode, 1) << use;
        EXPECT_NE(result.errors.find("--use wants WANTED=THERE"), std::string::npos) << result.errors;
    }
}

TEST_F(TemplateOfPage, wantsDataToBeBoundTo)
{
    EXPECT_EQ(place.zemfig({"template", "bind", "page.template", "-o", "x.figure.toml"}).exitCode, 1);
    EXPECT_EQ(bind({"--project", "p.zem"}).exitCode, 1);
    ASSERT_TRUE(QFile::remove(place.path("data.csv")));
    CommandResult const missing = bind({});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_NE(missing.errors.find("data.csv: No such file or directory"), std::string::npos) << missing.errors;
}

TEST_F(TemplateOfPage, tellsAnUnwritableTarget)
{
    CommandResult const made = place.zemfig({"template", "make", "page.figure.toml", "-o", "nowhere/x.template"});
    EXPECT_EQ(made.exitCode, 3);
    EXPECT_NE(made.errors.find("nowhere/x.template"), std::string::npos) << made.errors;
    EXPECT_EQ(bind({}, "nowhere/x.fig").exitCode, 3);
    EXPECT_EQ(bind({}, "x.pdf").exitCode, 1);
}

TEST_F(TemplateOfPage, thatIsDamagedIsRefused)
{
    QByteArray const good = place.read("page.template");
    place.write("page.template", good.chopped(10));
    for (CommandResult const &result : {bind({}), place.zemfig({"template", "list", "page.template"})}) {
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_NE(result.errors.find("page.template"), std::string::npos) << result.errors;
    }
    EXPECT_FALSE(place.exists("bound.figure.toml"));
}

TEST_F(TemplateOfPage, isDrawnLikeAPage)
{
    EXPECT_EQ(drawing("page.template", {"--data", "data.csv"}), drawing("page.figure.toml"));
}

} // namespace
} // namespace Zem::Support
