#include "legend_forms_support.h"

#include <ZemLegend.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace Zem::Legend2 {
namespace {

using namespace Test;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double INF = std::numeric_limits<double>::infinity();

UnitData unitData(Unit const *unit, char const *name)
{
    Unit::Units_t choice{};
    EXPECT_TRUE(unit->parseUnit(QString::fromUtf8(name), &choice));
    return UnitData(unit, choice);
}

/// One change per stored field.
std::vector<std::function<void(Legend &)>> const CHANGES{
    [](Legend &legend) { legend.setUnitData(unitData(uForce, "kN")); },
    [](Legend &legend) { legend.setUnitName(QStringLiteral("Δx \"mm\"")); },
    [](Legend &legend) { legend.setFixedMinimum(-1.25); },
    [](Legend &legend) {
        legend.setFixedMinimum(-1.5);
        legend.setDynamicMinimum();
    },
    [](Legend &legend) { legend.setFixedMaximum(1e300); },
    [](Legend &legend) {
        legend.setFixedMaximum(3.5);
        legend.setDynamicMaximum();
    },
    [](Legend &legend) { legend.setColorMode(COLOR_MODE_LOGARITHMIC); },
    [](Legend &legend) { legend.setScaleMode(SCALE_MODE_DISCRETE); },
    [](Legend &legend) { legend.setNumberOfClasses(Legend::MAX_CLASSES); },
    [](Legend &legend) { legend.setColorMapName(COLOR_MAP_RAINBOW); },
    [](Legend &legend) { legend.setDigits(Legend::MAX_DIGITS); },
    [](Legend &legend) { legend.setDigits(std::numeric_limits<int>::min()); },
    [](Legend &legend) { legend.setMaxTicks(std::numeric_limits<int>::max()); },
    [](Legend &legend) { legend.setMaxTicks(std::numeric_limits<int>::min()); },
    [](Legend &legend) { legend.setUseExtremaColors(true); },
    [](Legend &legend) { legend.setMinColor(Color(1, 2, 3, 4)); },
    [](Legend &legend) { legend.setMinColorInvalid(); },
    [](Legend &legend) { legend.setMaxColor(Color(5, 6, 7, 8)); },
    [](Legend &legend) { legend.setMaxColorInvalid(); },
    [](Legend &legend) { legend.setV602CompatibilityMode(true); },
};

Legend changedLegend()
{
    Legend legend(uLength);
    for (auto const &change : CHANGES)
        change(legend);
    return legend;
}

TEST(Legend, isLinearContinuousAndDynamicAtFirst)
{
    Legend const legend(uLength);
    EXPECT_EQ(legend.getUnit(), uLength);
    EXPECT_EQ(legend.getActiveUnit(), uLength->getBaseUnit());
    EXPECT_EQ(legend.getUnitName(), QStringLiteral("mm"));
    EXPECT_EQ(legend.getColorMode(), COLOR_MODE_LINEAR);
    EXPECT_EQ(legend.getScaleMode(), SCALE_MODE_CONTINUOUS);
    EXPECT_FALSE(legend.isDiscrete());
    EXPECT_EQ(legend.getMinimumMode(), LIMIT_DYNAMIC);
    EXPECT_EQ(legend.getMaximumMode(), LIMIT_DYNAMIC);
    EXPECT_LT(legend.getDigits(), 0);
    EXPECT_LT(legend.getMaxTicks(), 0);
    EXPECT_FALSE(legend.getUseExtremaColors());
    EXPECT_FALSE(legend.getV602CompatibilityMode());
}

TEST(Legend, mayHaveNoQuantity)
{
    Legend const legend;
    EXPECT_EQ(legend.getUnit(), nullptr);
    EXPECT_EQ(legend.getUnitName(), QString());
    EXPECT_EQ(legend.getActiveUnit(), Unit::Units_t{});
}

TEST(Legend, numbersItsModesAsStored)
{
    EXPECT_EQ(COLOR_MODE_LINEAR, 0);
    EXPECT_EQ(COLOR_MODE_LOGARITHMIC, 1);
    EXPECT_EQ(SCALE_MODE_CONTINUOUS, 0);
    EXPECT_EQ(SCALE_MODE_DISCRETE, 1);
}

TEST(Legend, differsInEveryField)
{
    for (std::size_t i = 0; i < CHANGES.size(); ++i) {
        Legend legend(uLength);
        CHANGES[i](legend);
        EXPECT_NE(legend, Legend(uLength)) << i;
    }
    EXPECT_EQ(changedLegend(), changedLegend());
}

TEST(Legend, showsTheFreeNameOverThatOfTheUnit)
{
    Legend legend(uLength);
    legend.setUnitName(QStringLiteral("gap"));
    EXPECT_EQ(legend.getUnitName(), QStringLiteral("gap"));
    legend.setUnitName(QString());
    legend.setUnitData(unitData(uLength, "um"));
    EXPECT_EQ(legend.getUnitName(), QStringLiteral("um"));
}

TEST(Legend, takesEachLimitFromWhereItIsToldTo)
{
    Data data;
    data.setDynamicMinimum(2);
    data.setDynamicMaximum(5);
    Legend legend;
    EXPECT_EQ(legend.getMinimum(data), 2);
    EXPECT_EQ(legend.getMaximum(data), 5);
    legend.setFixedMinimum(1);
    EXPECT_EQ(legend.getMinimum(data), 1);
    EXPECT_EQ(legend.getMaximum(data), 5);
    legend.setFixedMaximum(9);
    legend.setDynamicMinimum();
    EXPECT_EQ(legend.getMinimum(data), 2);
    EXPECT_EQ(legend.getMaximum(data), 9);
    EXPECT_EQ(legend.getFixedMinimum(), 1);
}

TEST(Legend, refusesValuesOutOfRangeAndStaysAsItWas)
{
    Legend legend;
    EXPECT_THROW(legend.setFixedMinimum(std::nan("")), ProgError);
    EXPECT_THROW(legend.setFixedMaximum(INF), ProgError);
    EXPECT_THROW(legend.setDigits(Legend::MAX_DIGITS + 1), ProgError);
    EXPECT_THROW(legend.setNumberOfClasses(0), ProgError);
    EXPECT_THROW(legend.setNumberOfClasses(Legend::MAX_CLASSES + 1), ProgError);
    EXPECT_THROW(legend.setColorMapName(static_cast<ColorMapName_t>(5)), ProgError);
    EXPECT_EQ(legend, Legend());
}

struct DiscreteTicks
{
    std::vector<double> values{99.0};
    std::vector<int> indices{99};
};

DiscreteTicks discreteTicks(Legend const &legend, Data const &data, bool inActiveUnit)
{
    DiscreteTicks ticks;
    legend.getDiscreteTicks(data, inActiveUnit, &ticks.values, &ticks.indices);
    return ticks;
}

Legend classes(unsigned int count, double minimum, double maximum)
{
    Legend legend(uLength);
    legend.setScaleMode(SCALE_MODE_DISCRETE);
    legend.setNumberOfClasses(count);
    legend.setFixedMinimum(minimum);
    legend.setFixedMaximum(maximum);
    return legend;
}

TEST(Legend, makesExtremaColoursValidBySettingThem)
{
    Legend legend;
    legend.setMinColorInvalid();
    legend.setMaxColorInvalid();
    legend.setMinColor(Color(1, 2, 3));
    legend.setMaxColor(Color(4, 5, 6));
    EXPECT_TRUE(legend.isMinColorValid());
    EXPECT_TRUE(legend.isMaxColorValid());
}

TEST(DiscreteTicks, areTheBoundariesOfTheClasses)
{
    DiscreteTicks const ticks = discreteTicks(classes(4, -1, 1), Data(), false);
    EXPECT_THAT(ticks.values, ElementsAre(-1, -0.5, 0, 0.5, 1));
    EXPECT_THAT(ticks.indices, ElementsAre(0, 1, 2, 3, 3));
}

TEST(DiscreteTicks, areInTheActiveUnitOnRequest)
{
    Legend legend = classes(2, 1, 3);
    legend.setUnitData(unitData(uLength, "um"));
    EXPECT_THAT(discreteTicks(legend, Data(), true).values, ElementsAre(1000, 2000, 3000));
    EXPECT_THAT(discreteTicks(legend, Data(), false).values, ElementsAre(1, 2, 3));
}

TEST(DiscreteTicks, ofASingleClassAreItsLimits)
{
    DiscreteTicks const ticks = discreteTicks(classes(1, 2, 3), Data(), true);
    EXPECT_THAT(ticks.values, ElementsAre(2, 3));
    EXPECT_THAT(ticks.indices, ElementsAre(0, 0));
}

TEST(DiscreteTicks, haveEqualRatiosOnALogarithmicScale)
{
    Legend legend = classes(4, 1, 10000);
    legend.setColorMode(COLOR_MODE_LOGARITHMIC);
    std::vector<double> const values = discreteTicks(legend, Data(), false).values;
    ASSERT_EQ(values.size(), 5u);
    EXPECT_EQ(values[0], 1);
    EXPECT_NEAR(values[1], 10, 1e-12);
    EXPECT_NEAR(values[2], 100, 1e-11);
    EXPECT_EQ(values[4], 10000);
}

TEST(DiscreteTicks, areNoneForLimitsThatMakeNoScale)
{
    Data data;
    data.setDynamicMaximum(std::nan(""));
    Legend dynamic = classes(3, 0, 1);
    dynamic.setDynamicMaximum();
    Legend logarithmic = classes(3, 0, 1);
    logarithmic.setColorMode(COLOR_MODE_LOGARITHMIC);
    Legend overflowing = classes(3, 0, 1e308);
    overflowing.setUnitData(unitData(uLength, "um"));
    Legend underflowing = classes(3, -1e308, 0);
    underflowing.setUnitData(unitData(uLength, "um"));
    for (Legend const &legend : {dynamic, logarithmic, overflowing, underflowing, classes(3, 2, 1)}) {
        DiscreteTicks const ticks = discreteTicks(legend, data, true);
        EXPECT_THAT(ticks.values, IsEmpty());
        EXPECT_THAT(ticks.indices, IsEmpty());
    }
}

TEST(LegendInAStream, isReadBackFieldByField)
{
    for (std::size_t i = 0; i < CHANGES.size(); ++i) {
        Legend legend(uLength);
        CHANGES[i](legend);
        EXPECT_EQ(throughStream(legend), legend) << i;
    }
    EXPECT_EQ(throughStream(changedLegend()), changedLegend());
}

/// The values of a block; the defaults are good ones.
struct LegendBlock
{
    unsigned int version = 1;
    unsigned int minimumMode = 0;
    double minimum = 0.0;
    unsigned int maximumMode = 1;
    double maximum = 1.0;
    unsigned int colorMode = 0;
    unsigned int scaleMode = 0;
    unsigned int classes = 1000;
    unsigned int colorMap = 4;
    int digits = 15;

    std::string bytes() const
    {
        return bytesOf([this](IO::OutStream &stream) {
            stream.beginBlock(4 + 4 + 8 + 4 + 8 + 4 + 4 + 4 + 4 + 4 + 4 + 1 + 4 + 1 + 4 + 1 + 1, version);
            write(stream);
            stream.endBlock();
            UnitData(uForce).save(&stream);
        });
    }

    void write(IO::OutStream &stream) const
    {
        stream.writeString(QString());
        stream.writeUInt(minimumMode);
        stream.writeDouble(minimum);
        stream.writeUInt(maximumMode);
        stream.writeDouble(maximum);
        stream.writeUInt(colorMode);
        stream.writeUInt(scaleMode);
        stream.writeUInt(classes);
        stream.writeUInt(colorMap);
        stream.writeInt(digits);
        stream.writeInt(-7);
        stream.writeBool(true);
        stream.writeColor(Color(1, 2, 3));
        stream.writeBool(true);
        stream.writeColor(Color(4, 5, 6));
        stream.writeBool(false);
        stream.writeBool(true);
    }
};

TEST(LegendInAStream, isABlockOfItsFieldsAndThatOfTheUnit)
{
    Legend expected(uForce);
    expected.setFixedMaximum(1.0);
    expected.setNumberOfClasses(1000);
    expected.setColorMapName(COLOR_MAP_RAINBOW);
    expected.setDigits(15);
    expected.setMaxTicks(-7);
    expected.setUseExtremaColors(true);
    expected.setMinColor(Color(1, 2, 3));
    expected.setMaxColor(Color(4, 5, 6));
    expected.setMaxColorInvalid();
    expected.setV602CompatibilityMode(true);
    EXPECT_EQ(savedBytes(expected), LegendBlock().bytes());
    Legend read;
    loadFrom(LegendBlock().bytes(), &read);
    EXPECT_EQ(read, expected);
}

TEST(LegendInAStream, refusesDamageAndStaysAsItWas)
{
    std::vector<LegendBlock> blocks(14);
    blocks[0].version = 0;
    blocks[1].version = 2;
    blocks[2].minimumMode = 2;
    blocks[3].maximumMode = 0xffffffffu;
    blocks[4].minimum = std::nan("");
    blocks[5].maximum = INF;
    blocks[6].colorMode = 2;
    blocks[7].scaleMode = 2;
    blocks[8].classes = 0;
    blocks[9].classes = 1001;
    blocks[10].classes = 0xffffffffu;
    blocks[11].colorMap = 5;
    blocks[12].digits = 16;
    blocks[13].digits = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        Legend legend = changedLegend();
        EXPECT_NE(loadError(blocks[i].bytes(), &legend), QString()) << i;
        EXPECT_EQ(legend, changedLegend()) << i;
    }
}

TEST(LegendInAStream, refusesEveryTruncationAndStaysAsItWas)
{
    std::string const bytes = savedBytes(changedLegend());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Legend legend(uMass);
        EXPECT_NE(loadError(bytes.substr(0, size), &legend), QString()) << size;
        EXPECT_EQ(legend, Legend(uMass));
    }
}

TEST(LegendParameters, areReadBackFieldByField)
{
    for (std::size_t i = 0; i < CHANGES.size(); ++i) {
        Legend legend(uLength);
        CHANGES[i](legend);
        EXPECT_EQ(throughParameters(legend), legend) << i;
        EXPECT_EQ(throughParameters(legend, changedLegend()), legend) << i;
    }
}

TEST(LegendParameters, haveKeysAndWordsOfTheirOwn)
{
    Legend legend(uLength);
    legend.setFixedMaximum(2.5);
    EXPECT_EQ(legend.getParameterString(), QStringLiteral("legend_quantity = \"length\"\n"
                                                          "legend_unit = \"mm\"\n"
                                                          "legend_unit_name = \"\"\n"
                                                          "legend_minimum_mode = \"dynamic\"\n"
                                                          "legend_minimum = 0\n"
                                                          "legend_maximum_mode = \"fixed\"\n"
                                                          "legend_maximum = 2.5\n"
                                                          "legend_color_mode = \"linear\"\n"
                                                          "legend_scale_mode = \"continuous\"\n"
                                                          "legend_classes = 10\n"
                                                          "legend_color_map = \"viridis\"\n"
                                                          "legend_digits = -1\n"
                                                          "legend_max_ticks = -1\n"
                                                          "legend_use_extrema_colors = false\n"
                                                          "legend_min_color = #808080ff\n"
                                                          "legend_min_color_valid = true\n"
                                                          "legend_max_color = #c0c0c0ff\n"
                                                          "legend_max_color_valid = true\n"
                                                          "legend_v602_compatibility = false\n"));
}

TEST(LegendParameters, leaveTheEntriesOfOthers)
{
    QString const others = QStringLiteral("legend_data_mode = \"3d\"\n") + Data().getParameterString();
    QString parameters = others + changedLegend().getParameterString();
    Legend legend;
    legend.createFromParameterString(parameters);
    EXPECT_EQ(legend, changedLegend());
    EXPECT_EQ(parameters, others);
}

TEST(LegendParameters, leaveAloneWhatHasNone)
{
    QString parameters = QStringLiteral("legend_classes = 3\n");
    Legend legend = changedLegend();
    legend.createFromParameterString(parameters);
    Legend expected = changedLegend();
    expected.setNumberOfClasses(3);
    EXPECT_EQ(legend, expected);
}

TEST(LegendParameters, refuseBadValuesAndChangeNothing)
{
    for (char const *bad :
         {"legend_unit = furlong\n", "legend_minimum_mode = sometimes\n", "legend_minimum = nan\n",
          "legend_maximum = inf\n", "legend_color_mode = 1\n", "legend_scale_mode = \"\"\n", "legend_classes = 0\n",
          "legend_classes = 1001\n", "legend_classes = 2.5\n", "legend_color_map = jet\n", "legend_digits = 16\n",
          "legend_digits = few\n", "legend_max_ticks = 1e10\n", "legend_use_extrema_colors = 2\n",
          "legend_min_color = grey\n"}) {
        QString parameters = QStringLiteral("legend_unit_name = \"new\"\n") + QString::fromLatin1(bad);
        QString const before = parameters;
        Legend legend = changedLegend();
        EXPECT_THROW(legend.createFromParameterString(parameters), ParamError) << bad;
        EXPECT_EQ(legend, changedLegend()) << bad;
        EXPECT_EQ(parameters, before) << bad;
    }
}

TEST(LegendParameters, nameTheValueAtFault)
{
    Legend legend;
    EXPECT_EQ(parameterError(QStringLiteral("legend_color_map = jet\n"), &legend),
              QStringLiteral("parameter 'legend_color_map', value 'jet': is none of the words allowed here"));
    EXPECT_EQ(parameterError(QStringLiteral("legend_classes = 2.5\n"), &legend),
              QStringLiteral("parameter 'legend_classes', value '2.5': is no whole number"));
}

TEST(LegendParameters, areReadInTheOlderForm)
{
    QString parameters = QStringLiteral(
        "legend_quantity=\"force\";legend_unit=\"kN\";legend_unit_name=\"load\";legend_minimum_mode=\"fixed\";"
        "legend_minimum=-2.5;legend_maximum_mode=\"fixed\";legend_maximum=7;legend_color_mode=\"logarithmic\";"
        "legend_scale_mode=\"discrete\";legend_classes=12;legend_color_map=\"plasma\";legend_digits=3;"
        "legend_max_ticks=8;legend_use_extrema_colors=1;legend_min_color=1,2,3;legend_max_color=4,5,6,7;"
        "legend_v602_compatibility=true;legend_data_mode=\"manual\";");
    Legend legend;
    legend.createFromV541ParameterString(parameters);

    Legend expected;
    expected.setUnitData(unitData(uForce, "kN"));
    expected.setUnitName(QStringLiteral("load"));
    expected.setFixedMinimum(-2.5);
    expected.setFixedMaximum(7);
    expected.setColorMode(COLOR_MODE_LOGARITHMIC);
    expected.setScaleMode(SCALE_MODE_DISCRETE);
    expected.setNumberOfClasses(12);
    expected.setColorMapName(COLOR_MAP_PLASMA);
    expected.setDigits(3);
    expected.setMaxTicks(8);
    expected.setUseExtremaColors(true);
    expected.setMinColor(Color(1, 2, 3));
    expected.setMaxColor(Color(4, 5, 6, 7));
    expected.setV602CompatibilityMode(true);
    EXPECT_EQ(legend, expected);
    EXPECT_EQ(parameters, QStringLiteral("legend_data_mode=\"manual\";"));
}

TEST(LegendParameters, inTheOlderFormRefuseBadValuesAndChangeNothing)
{
    for (char const *bad : {"legend_quantity=\"colour\";", "legend_classes=0;", "legend_classes=1.5;",
                            "legend_color_map=\"jet\";", "legend_minimum=low;"}) {
        QString parameters = QStringLiteral("legend_unit_name=\"new\";") + QString::fromLatin1(bad);
        QString const before = parameters;
        Legend legend = changedLegend();
        EXPECT_THROW(legend.createFromV541ParameterString(parameters), ParamError) << bad;
        EXPECT_EQ(legend, changedLegend()) << bad;
        EXPECT_EQ(parameters, before) << bad;
    }
}

} // namespace
} // namespace Zem::Legend2
