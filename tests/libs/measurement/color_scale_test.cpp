#include "project_support.h"

#include <ZemColorMap.h>
#include <ZemParse.h>

using namespace Zem;
using namespace Zem::Measurement;
using namespace Zem::Legend2;

namespace {

class ColorScaleOfProject : public ProjectTest
{
protected:
    ColorScaleOfProject() : project(path(), OpenMode_t::CREATE)
    {
        // In kN: 0, 1, 2, 10 and a stage without a value.
        project.importTable(parse("force [kN],name\n0,a\n1,b\n2,c\n10,d\n,e\n"));
    }
    ~ColorScaleOfProject() override { applyColorScale(ColorScale()); }

    static ColorScale scaleOf(char const *token)
    {
        ColorScale scale;
        scale.token = QString::fromLatin1(token);
        return scale;
    }

    static std::map<double, unsigned int> histogram()
    {
        std::map<double, unsigned int> counts;
        ColorMap::getHistogramData().getHistogram(&counts);
        return counts;
    }

    Project project;
};

} // namespace

TEST_F(ColorScaleOfProject, isNoneUntilOneIsStored)
{
    EXPECT_EQ(project.colorScale(), std::nullopt);
}

TEST_F(ColorScaleOfProject, comesBackAsItWasStored)
{
    ColorScale scale = scaleOf("force");
    scale.legend.setColorMapName(COLOR_MAP_RAINBOW);
    scale.legend.setFixedMaximum(5000.0);
    scale.showTolerances = true;
    scale.tolerance.setTitle(QString::fromUtf8("Prüfung \"A\"\n"));
    project.setColorScale(ColorScale());

    project.setColorScale(scale);

    EXPECT_EQ(Project(path(), OpenMode_t::READ).colorScale(), scale);
}

TEST_F(ColorScaleOfProject, isAChangeOfTheProject)
{
    std::int64_t const before = project.revision();

    project.setColorScale(ColorScale());

    EXPECT_NE(project.revision(), before);
}

TEST_F(ColorScaleOfProject, isRefusedWhenItIsDamaged)
{
    project.setColorScale(ColorScale());
    executeRaw(path(), "UPDATE color_scale SET parameters = 'legend_digits = many'");

    EXPECT_NE(errorOf([this] { project.colorScale(); }).find("the project is damaged: its colour scale: "),
              std::string::npos);
}

TEST_F(ColorScaleOfProject, takesItsLimitsFromAllStagesInTheBaseUnit)
{
    applyColorScale(project, scaleOf("force"));

    Data const data = ColorMap::getGlobalLegendData();
    EXPECT_EQ(data.getDynamicMinimum(), 0.0);
    EXPECT_EQ(data.getDynamicMaximum(), 10000.0);
    // (0 + 1 + 2 + 10) / 4 = 3.25; squares 10.5625 + 5.0625 + 1.5625 + 45.5625 = 62.75.
    EXPECT_DOUBLE_EQ(data.getAverage(), 3250.0);
    EXPECT_DOUBLE_EQ(data.getSigmaValue(), std::sqrt(62.75 / 4.0) * 1000.0);
    EXPECT_EQ(ColorMap::getGlobalLegendParams().getUnitName(), QStringLiteral("kN"));
}

TEST_F(ColorScaleOfProject, keepsAUnitOfItsOwn)
{
    ColorScale scale = scaleOf("force");
    scale.legend = Legend2::Legend(uForce);

    applyColorScale(project, scale);

    EXPECT_EQ(ColorMap::getGlobalLegendParams().getUnitName(), QStringLiteral("N"));
}

TEST_F(ColorScaleOfProject, countsByTheIntervalsOfItsTicks)
{
    ColorScale scale = scaleOf("force");
    scale.legend.setScaleMode(SCALE_MODE_DISCRETE);
    scale.legend.setNumberOfClasses(5);

    applyColorScale(project, scale);

    // 0 to 2: two values; 2 to 4: one; 8 to 10: its upper bound belongs to it.
    EXPECT_EQ(histogram(), (std::map<double, unsigned int>{{1000.0, 2}, {3000.0, 1}, {9000.0, 1}}));

    scale.legend = Legend2::Legend();
    scale.legend.setMaxTicks(2);
    applyColorScale(project, scale);
    // Ticks at 0, 5 and 10 kN.
    EXPECT_EQ(histogram(), (std::map<double, unsigned int>{{2500.0, 3}, {7500.0, 1}}));
}

TEST_F(ColorScaleOfProject, countsNothingOutsideOfItsLimits)
{
    ColorScale scale = scaleOf("force");
    scale.legend.setScaleMode(SCALE_MODE_DISCRETE);
    scale.legend.setNumberOfClasses(1);
    scale.legend.setFixedMinimum(500.0);
    scale.legend.setFixedMaximum(1500.0);

    applyColorScale(project, scale);

    EXPECT_EQ(histogram(), (std::map<double, unsigned int>{{1000.0, 1}}));
}

TEST_F(ColorScaleOfProject, bringsItsTolerances)
{
    ColorScale scale;
    scale.showTolerances = true;
    scale.tolerance.setTitle(QStringLiteral("T"));
    project.setColorScale(scale);

    applyColorScale(project);

    EXPECT_TRUE(ColorMap::getToleranceMode());
    EXPECT_EQ(ColorMap::getToleranceParams(), scale.tolerance);
}

TEST_F(ColorScaleOfProject, isThePlainOneWhenNoneIsStored)
{
    applyColorScale(project, scaleOf("force"));

    applyColorScale(project);

    EXPECT_EQ(ColorMap::getGlobalLegendParams(), Legend2::Legend());
    EXPECT_EQ(ColorMap::getGlobalLegendData(), Data());
    EXPECT_FALSE(ColorMap::getHistogramData().isValid());
}

TEST_F(ColorScaleOfProject, wantsATokenOfNumbers)
{
    std::string const name = path().toStdString();

    EXPECT_EQ(errorOf([this] { applyColorScale(project, scaleOf("stress")); }), name + ": there is no token 'stress'");
    EXPECT_EQ(errorOf([this] { applyColorScale(project, scaleOf("name")); }),
              name + ": the values of 'name' are no numbers");
}

TEST_F(ColorScaleOfProject, takesTheValuesOfSeveralTokens)
{
    project.importTable(parse("p1 [mm],p2 [m],q [s]\n1,2,\n3,4,\n"));

    applyColorScale(project, scaleOf("p*"));
    EXPECT_EQ(ColorMap::getGlobalLegendData().getDynamicMinimum(), 1.0);
    EXPECT_EQ(ColorMap::getGlobalLegendData().getDynamicMaximum(), 4000.0);
    EXPECT_EQ(ColorMap::getGlobalLegendParams().getUnitName(), QStringLiteral("mm"));
    applyColorScale(project, scaleOf("p2, p1"));
    EXPECT_EQ(ColorMap::getGlobalLegendParams().getUnitName(), QStringLiteral("m"));

    // 1, 3 and 2000, 4000: nothing counts twice.
    applyColorScale(project, scaleOf("p*,p2"));
    EXPECT_DOUBLE_EQ(ColorMap::getGlobalLegendData().getAverage(), 1501.0);

    std::string const name = path().toStdString();
    EXPECT_EQ(errorOf([this] { applyColorScale(project, scaleOf("p1,q")); }),
              name + ": the values of 'q' are no numbers");
    EXPECT_EQ(errorOf([this] { applyColorScale(project, scaleOf("p1,force")); }),
              name + ": 'p1' and 'force' are different quantities");
    EXPECT_EQ(errorOf([this] { applyColorScale(project, scaleOf("x*")); }), name + ": there is no token 'x*'");
}

TEST(ColorScaleParameters, areWholeOrNotRead)
{
    ColorScale scale;
    QString parameters = QStringLiteral("token = \"a\"\nlegend_digits = many\n");

    EXPECT_THROW(scale.createFromParameterString(parameters), ParamError);

    EXPECT_EQ(scale, ColorScale());
    EXPECT_EQ(parameters, QStringLiteral("token = \"a\"\nlegend_digits = many\n"));
}
