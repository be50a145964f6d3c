// What a project offers to charts.
#include "chart_support.h"

#include <ZemFig2Figure.h>

using namespace Zem::Measurement;
using Zem::Fig2::ChartParameters;
using Zem::Fig2::LineStyle;
using DataToken = Zem::Fig2::ChartInterface::DataToken;

namespace {

class ProjectCharts : public ProjectChartTest
{
protected:
    ProjectChartInterface charts{&tokens};

    static DataToken token(char const *name) { return DataToken(QString::fromUtf8(name)); }

    QString legend(char const *name, bool showGroup = false)
    {
        ChartParameters parameters;
        parameters.setShowGroupName(showGroup);
        return charts.getLegendDescription(token(name), parameters);
    }
};

/// "name[group]" or "name", with the category's word.
std::vector<std::string> textsOf(std::vector<DataToken> const &tokens)
{
    std::vector<std::string> texts;
    for (DataToken const &token : tokens) {
        std::string text = token.getName().toStdString();
        for (QString const &group : token.getGroups()) {
            text += QStringLiteral("[%1]").arg(group).toStdString();
        }
        texts.push_back(text + (token.getCategory() == Zem::TokenInfo::CATEGORY_STAGE     ? " by stage"
                                : token.getCategory() == Zem::TokenInfo::CATEGORY_PROJECT ? " by row"
                                                                                          : " ?"));
    }
    return texts;
}

} // namespace

TEST_F(ProjectCharts, offerNumbersAndMomentsAlongX)
{
    import("R1.load,note,when\n1,x,2017-07-26\n");
    importSeries("t,v,text\n1,2,x\n", "log");

    EXPECT_EQ(textsOf(charts.getTokensX()),
              (std::vector<std::string>{"stage by stage", "R1.load[R1] by stage", "when by stage", "log.t[log] by row",
                                        "log.v[log] by row"}));
}

TEST_F(ProjectCharts, offerNumbersAlongY)
{
    import("n,x,note,when\n1,1.5,x,2017-07-26\n");
    importSeries("when,v\n2017-07-26,2\n", "log");

    EXPECT_EQ(textsOf(charts.getTokensY()),
              (std::vector<std::string>{"n by stage", "x by stage", "log.v[log] by row"}));
}

TEST_F(ProjectCharts, offerWhatHasComeMeanwhile)
{
    EXPECT_TRUE(charts.getTokensY().empty());
    importSeries("v\n2\n");

    EXPECT_EQ(charts.getTokensY().size(), 1u);
}

TEST_F(ProjectCharts, describeATokenByItsTitle)
{
    import("engineering strain,conc [mg/L]\n1,2\n");

    EXPECT_EQ(charts.getTokenName(token("engineering_strain")), QStringLiteral("engineering_strain"));
    EXPECT_EQ(charts.getTokenDescription(token("engineering_strain")), QStringLiteral("engineering strain"));
    EXPECT_EQ(charts.getTokenDescription(token("conc")), QStringLiteral("conc [mg/L]"));
    EXPECT_EQ(charts.getTokenDescription(token("stage")), QStringLiteral("Stage"));
    EXPECT_EQ(charts.getTokenDescription(token("gone")), QStringLiteral("gone"));
}

TEST_F(ProjectCharts, nameTheGroupInALegendWhereItTellsTwoApart)
{
    importSeries("load,time\n1,2\n", "R1");
    importSeries("load\n1\n", "R2");

    EXPECT_EQ(legend("R1.load"), QStringLiteral("load - R1"));
    EXPECT_EQ(legend("R2.load"), QStringLiteral("load - R2"));
    EXPECT_EQ(legend("R1.time"), QStringLiteral("time"));
}

TEST_F(ProjectCharts, nameTheGroupInALegendWhereItIsWished)
{
    import("a\n1\n");
    importSeries("load\n1\n", "R1");

    EXPECT_EQ(legend("R1.load", true), QStringLiteral("load - R1"));
    EXPECT_EQ(legend("a", true), QStringLiteral("a"));
}

TEST_F(ProjectCharts, tellUnits)
{
    import("force [kN],when,n\n1,2017-07-26,3\n");
    importSeries("t [min]\n1\n");

    EXPECT_EQ(charts.getTokenUnit(token("force")).getUnitName(), QStringLiteral("kN"));
    EXPECT_EQ(charts.getTokenUnit(token("a.t")).getUnitName(), QStringLiteral("min"));
    EXPECT_EQ(charts.getTokenUnit(token("when")), Zem::UnitData(Zem::uTime));
    EXPECT_FALSE(charts.getTokenUnit(token("n")).hasUnit());
    EXPECT_FALSE(charts.getTokenUnit(token("stage")).hasUnit());
    EXPECT_FALSE(charts.getTokenUnit(token("gone")).hasUnit());
}

TEST_F(ProjectCharts, proposeAnotherLookForEachOfManyCurves)
{
    std::string header = "y0";
    std::string row = "1";
    for (int i = 1; i < 28; ++i) {
        header += ",y" + std::to_string(i);
        row += ",1";
    }
    import(header + "\n" + row + "\n");

    std::set<std::string> looks;
    for (DataToken const &each : charts.getTokensY()) {
        ChartParameters parameters;
        EXPECT_TRUE(charts.getDefaultParameters(each, &parameters));
        EXPECT_EQ(parameters.getStyle(), ChartParameters::STYLE_LINE);
        looks.insert(parameters.getLineStyle().getParameterString({}).toStdString());
    }
    EXPECT_EQ(looks.size(), 28u);
}

TEST_F(ProjectCharts, proposeDashesWhenAllColoursAreTaken)
{
    import("a,b,c,d,e,f,g,h\n1,1,1,1,1,1,1,1\n");
    ChartParameters first;
    ChartParameters eighth;
    charts.getDefaultParameters(token("a"), &first);
    charts.getDefaultParameters(token("h"), &eighth);

    EXPECT_EQ(first.getLineStyle().getStyle(), LineStyle::STYLE_FULL);
    EXPECT_EQ(eighth.getLineStyle().getStyle(), LineStyle::STYLE_DASHED);
    EXPECT_EQ(eighth.getLineStyle().getColor(), first.getLineStyle().getColor());
}

TEST_F(ProjectCharts, proposeNothingForATokenThatHasGone)
{
    ChartParameters parameters;
    EXPECT_FALSE(charts.getDefaultParameters(token("gone"), &parameters));
    EXPECT_EQ(parameters, ChartParameters());
}

TEST_F(ProjectCharts, mayGoBeforeTheirFigure)
{
    Zem::Fig2::Figure figure;
    {
        ProjectChartInterface other(&tokens);
        figure.setChartInterface(&other);
        other.registerChartToken(chart("stage", {"y"}));
    }
    EXPECT_EQ(figure.getChartInterface(), nullptr);
}
