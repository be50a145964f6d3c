#include "CommandRun.h"

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

/// A project with two tokens of numbers and one of texts, three stages.
class ZemfigScale : public testing::Test
{
protected:
    ZemfigScale()
    {
        place.write("data.csv", "force [kN];stress [MPa];name\n0;1;a\n5;2;b\n10;3;c\n");
        EXPECT_EQ(place.zemfig({"import", "data.csv", "--project", "p.zem"}).exitCode, 0);
    }

    CommandResult scale(QStringList const &settings) const
    {
        return place.zemfig(QStringList{"scale", "--project", "p.zem"} + settings);
    }

    /// The text of a page with a legend of the global scale, as SVG shows it.
    std::string svgOf(QByteArray const &page, QStringList const &options) const
    {
        place.write("page.figure.toml", page);
        CommandResult const result =
            place.zemfig(QStringList{"render", "page.figure.toml", "-o", "page.svg"} + options);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return place.read("page.svg").toStdString();
    }

    static QByteArray legendPage(char const *head)
    {
        return QByteArray(head) + "[[element]]\ntype = \"legend\"\norigin = [50, 60]\nsize = [40, 100]\n"
                                  "legend_data_mode = \"3d\"\n";
    }

    Workplace place;
};

TEST_F(ZemfigScale, showsThePlainScaleOfAProjectWithoutOne)
{
    CommandResult const result = scale({});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output.substr(0, 35), "token = \"\"\nshow_tolerances = false\n");
}

TEST_F(ZemfigScale, keepsWhatWasSet)
{
    EXPECT_EQ(scale({"token=force", "legend_color_map=plasma"}).exitCode, 0);
    EXPECT_EQ(scale({"legend_digits=2"}).exitCode, 0);

    std::string const shown = scale({}).output;

    EXPECT_NE(shown.find("token = \"force\"\n"), std::string::npos);
    EXPECT_NE(shown.find("legend_color_map = \"plasma\"\n"), std::string::npos);
    EXPECT_NE(shown.find("legend_digits = 2\n"), std::string::npos);
}

TEST_F(ZemfigScale, refusesWhatMakesNoScale)
{
    scale({"token=force"});
    auto const refused = [this](char const *setting, int code) {
        CommandResult const result = scale({QString::fromLatin1(setting)});
        EXPECT_EQ(result.exitCode, code) << setting;
        return result.errors;
    };

    EXPECT_EQ(refused("legend_digit=2", 1), "zemfig: a colour scale has no 'legend_digit' (did you mean "
                                            "'legend_digits'?)\n");
    EXPECT_EQ(refused("legend_digits", 1), "zemfig: a setting is KEY=VALUE, not 'legend_digits'\n");
    EXPECT_NE(refused("legend_digits=many", 1).find("'legend_digits=many': "), std::string::npos);
    EXPECT_EQ(refused("token=strain", 2), "zemfig: p.zem: there is no token 'strain'\n");
    EXPECT_EQ(refused("token=name", 2), "zemfig: p.zem: the values of 'name' are no numbers\n");
    EXPECT_EQ(refused("token=force,stress", 2), "zemfig: p.zem: 'force' and 'stress' are different quantities\n");
    // Nothing of it is stored.
    EXPECT_NE(scale({}).output.find("token = \"force\"\n"), std::string::npos);
}

TEST_F(ZemfigScale, isThatOfTheLegendsOfAPage)
{
    scale({"token=force", "legend_max_ticks=2"});

    std::string const svg = svgOf(legendPage(""), {"--project", "p.zem"});

    EXPECT_NE(svg.find(">[kN]<"), std::string::npos) << svg;
    EXPECT_NE(svg.find(">10<"), std::string::npos) << svg;
}

TEST_F(ZemfigScale, ofThePageGoesBeforeThatOfTheProject)
{
    scale({"token=force"});
    QByteArray const page = legendPage("[scale]\ntoken = \"stress\"\nlegend = { max_ticks = 2, digits = 1 }\n");

    std::string const svg = svgOf(page, {"--project", "p.zem"});

    EXPECT_NE(svg.find(">[MPa]<"), std::string::npos) << svg;
    EXPECT_NE(svg.find(">3.0<"), std::string::npos) << svg;
}

TEST_F(ZemfigScale, ofThePageTakesTheValuesOfItsOwnData)
{
    QByteArray const page = legendPage("[data]\nfile = \"data.csv\"\n[scale]\ntoken = \"stress\"\n");

    EXPECT_NE(svgOf(page, {}).find(">[MPa]<"), std::string::npos);
}

TEST_F(ZemfigScale, ofAPageIsChecked)
{
    place.write("page.figure.toml", legendPage("[scale]\ntokens = \"stress\"\nlegend_digits = 99\n"));

    CommandResult const result = place.zemfig({"check", "page.figure.toml"});

    EXPECT_EQ(result.exitCode, 2);
    std::string const said = result.errors + result.output;
    EXPECT_NE(said.find("page.figure.toml:2: unknown key 'tokens' in the colour scale (did you mean 'token'?)"),
              std::string::npos)
        << said;
    EXPECT_NE(said.find("page.figure.toml:3: the colour scale: "), std::string::npos) << said;
}

TEST_F(ZemfigScale, ofAPageCannotGoIntoAFigureFile)
{
    place.write("page.figure.toml", legendPage("[scale]\nlegend_digits = 3\n"));

    CommandResult const toFigure = place.zemfig({"convert", "page.figure.toml", "-o", "page.fig"});
    CommandResult const toDocument = place.zemfig({"convert", "page.figure.toml", "-o", "again.figure.toml"});

    EXPECT_EQ(toFigure.exitCode, 0);
    EXPECT_NE(toFigure.errors.find("[scale] is left out"), std::string::npos) << toFigure.errors;
    EXPECT_EQ(toDocument.errors, "");
    EXPECT_TRUE(place.read("again.figure.toml").contains("\n[scale]\nlegend_digits = 3\n"));
}

} // namespace
} // namespace Zem::Support
