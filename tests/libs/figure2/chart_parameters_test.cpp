#include "chart_fixture.h"

#include <ZemParse.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

Color const CURVE_COLOR(56, 56, 180);

ChartParameters unusualParameters()
{
    Symbol symbol(Symbol::TYPE_STAR, 2.0, true);
    symbol.setColor(Color(1, 2, 3));
    LineStyle line(0.25, LineStyle::STYLE_DOTTED, Color(4, 5, 6));
    line.setCapStyle(LineStyle::CAP_ROUND);
    ChartParameters parameters(ChartParameters::STYLE_SPIKES, symbol, line, FillStyle(Color(7, 8, 9)));
    parameters.setName("N");
    parameters.setUseDefaultName(false);
    parameters.setShowGroupName(true);
    parameters.setComputeColor(true);
    parameters.setNumberOfBasePoints(7);
    return parameters;
}

TEST(ChartVisualisation, beginsWithTheSecondSymbolInNavy)
{
    EXPECT_EQ(ChartVisualisation::getVisualisation(0), ChartVisualisation(Symbol::TYPE_CIRCLE, Color(0, 0, 128)));
}

TEST(ChartVisualisation, goesThroughNineColours)
{
    Color const colors[] = {Color(0, 0, 128),     Color(176, 176, 8), Color(180, 56, 56),
                            Color(0, 255, 255),   Color(240, 210, 0), Color(255, 0, 255),
                            Color(100, 150, 250), Color(0, 255, 0),   Color(255, 0, 0)};
    for (unsigned int i = 0; i < 27; ++i)
        EXPECT_EQ(ChartVisualisation::getVisualisation(i).getColor(), colors[i % 9]) << i;
}

TEST(ChartVisualisation, changesTheSymbolEveryThirteenLooks)
{
    EXPECT_EQ(ChartVisualisation::getVisualisation(12).getSymbolType(), Symbol::TYPE_CIRCLE);
    EXPECT_EQ(ChartVisualisation::getVisualisation(13).getSymbolType(), Symbol::TYPE_BOX);
    EXPECT_EQ(ChartVisualisation::getVisualisation(116).getSymbolType(), Symbol::TYPE_BORDER);
}

TEST(ChartVisualisation, countsNineTimesThirteenAndDoesNotWrapExactlyThere)
{
    EXPECT_EQ(ChartVisualisation::getNumberOfVisualisations(), 117U);
    EXPECT_EQ(ChartVisualisation::getVisualisation(117), ChartVisualisation(Symbol::TYPE_HOUSE, Color(0, 0, 128)));
    EXPECT_EQ(ChartVisualisation::getVisualisation(118), ChartVisualisation::getVisualisation(1));
    EXPECT_EQ(ChartVisualisation::getVisualisation(234), ChartVisualisation::getVisualisation(0));
    // 4294967295 = 36709122 * 117 + 21.
    EXPECT_EQ(ChartVisualisation::getVisualisation(4294967295U), ChartVisualisation::getVisualisation(21));
}

TEST(ChartVisualisation, isOrderedBySymbolThenRedGreenAndBlueWithoutAlpha)
{
    auto const look = [](Symbol::Type type, Color const &color) { return ChartVisualisation(type, color); };
    EXPECT_LT(look(Symbol::TYPE_CIRCLE, Color(9, 9, 9)), look(Symbol::TYPE_BOX, Color(0, 0, 0)));
    EXPECT_LT(look(Symbol::TYPE_BOX, Color(1, 9, 9)), look(Symbol::TYPE_BOX, Color(2, 0, 0)));
    EXPECT_LT(look(Symbol::TYPE_BOX, Color(1, 1, 9)), look(Symbol::TYPE_BOX, Color(1, 2, 0)));
    EXPECT_LT(look(Symbol::TYPE_BOX, Color(1, 1, 1)), look(Symbol::TYPE_BOX, Color(1, 1, 2)));
    ChartVisualisation const clear = look(Symbol::TYPE_BOX, Color(1, 1, 1, 0));
    ChartVisualisation const solid = look(Symbol::TYPE_BOX, Color(1, 1, 1, 255));
    EXPECT_FALSE(clear < solid || solid < clear);
    EXPECT_NE(clear, solid);
}

TEST(ChartParameters, haveTheirDefaults)
{
    ChartParameters const parameters;
    Symbol symbol(Symbol::TYPE_CIRCLE, 0.5, false);
    symbol.setColor(CURVE_COLOR);
    EXPECT_EQ(parameters.getName(), "");
    EXPECT_TRUE(parameters.getUseDefaultName());
    EXPECT_FALSE(parameters.getShowGroupName());
    EXPECT_EQ(parameters.getStyle(), ChartParameters::STYLE_LINE);
    EXPECT_EQ(parameters.getSymbol(), symbol);
    EXPECT_EQ(parameters.getLineStyle(), LineStyle(0.1, LineStyle::STYLE_FULL, CURVE_COLOR));
    EXPECT_EQ(parameters.getLineStyle().getCapStyle(), LineStyle::CAP_SHARP);
    EXPECT_EQ(parameters.getFillStyle(), FillStyle(CURVE_COLOR));
    EXPECT_FALSE(parameters.getComputeColor());
    EXPECT_EQ(parameters.getNumberOfBasePoints(), 100U);
}

TEST(ChartParameters, fromStylesKeepTheOtherDefaults)
{
    ChartParameters const parameters(ChartParameters::STYLE_BARS, Symbol::null, LineStyle::null, FillStyle::null);
    EXPECT_EQ(parameters.getStyle(), ChartParameters::STYLE_BARS);
    EXPECT_EQ(parameters.getSymbol(), Symbol::null);
    EXPECT_EQ(parameters.getLineStyle(), LineStyle::null);
    EXPECT_EQ(parameters.getFillStyle(), FillStyle::null);
    EXPECT_TRUE(parameters.getUseDefaultName());
    EXPECT_EQ(parameters.getNumberOfBasePoints(), 100U);
}

TEST(ChartParameters, takeOneColourFromAVisualisationForAll)
{
    ChartParameters parameters;
    parameters.setVisualisation(ChartVisualisation(Symbol::TYPE_CROSS, Color(1, 2, 3)));
    EXPECT_EQ(parameters.getSymbol().getType(), Symbol::TYPE_CROSS);
    EXPECT_EQ(parameters.getSymbol().getSize(), 0.5);
    EXPECT_EQ(parameters.getSymbol().getColor(), Color(1, 2, 3));
    EXPECT_EQ(parameters.getLineStyle().getColor(), Color(1, 2, 3));
    EXPECT_EQ(parameters.getFillStyle().getColor(), Color(1, 2, 3));
    EXPECT_EQ(parameters.getVisualisation(), ChartVisualisation(Symbol::TYPE_CROSS, Color(1, 2, 3)));
}

TEST(ChartParameterStyles, haveAWordAndANameEach)
{
    char const *const words[] = {"line", "bars", "points", "spline", "spikes", "x_marker", "y_marker"};
    char const *const names[] = {"lines", "bars", "points", "spline", "spikes", "x marker", "y marker"};
    std::vector<ChartParameters::Style_t> const styles = ChartParameters::getAllStyles();
    ASSERT_EQ(styles.size(), 7U);
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(static_cast<unsigned int>(styles[i]), i);
        EXPECT_EQ(ChartParameters::getStyleParameterName(styles[i]), words[i]);
        EXPECT_EQ(ChartParameters::getStyleName(styles[i]), names[i]);
    }
}

TEST(ChartParameterStyles, outOfRangeHaveEmptyTexts)
{
    EXPECT_EQ(ChartParameters::getStyleParameterName(ChartParameters::Style_t(7)), "");
    EXPECT_EQ(ChartParameters::getStyleName(ChartParameters::Style_t(7)), "");
}

TEST(ChartParametersBlock, hasVersion5AndTheStylesBehind)
{
    ChartParameters const parameters = unusualParameters();
    BlockCrafter crafter;
    crafter.block(5, Payload().s("N").b(false).b(true).u(4).b(true).u(7));
    addRecords(crafter, parameters.getSymbol(), parameters.getLineStyle(), parameters.getFillStyle());

    EXPECT_EQ(blocksWith(parameters), crafter.bytes());
    ChartParameters read;
    loadFrom(read, crafter.bytes());
    EXPECT_EQ(read, parameters);
}

ChartParameters loadOldBlock(unsigned int version, Payload const &payload)
{
    BlockCrafter crafter;
    crafter.block(version, payload);
    ChartParameters parameters = unusualParameters();
    loadFrom(parameters, addStyles(crafter).bytes());
    return parameters;
}

TEST(ChartParametersBlock, ofVersion4HasNoGroupName)
{
    ChartParameters const read = loadOldBlock(4, Payload().s("N").b(false).u(2).b(true).u(9));
    EXPECT_EQ(read.getName(), "N");
    EXPECT_FALSE(read.getUseDefaultName());
    EXPECT_FALSE(read.getShowGroupName());
    EXPECT_EQ(read.getStyle(), ChartParameters::STYLE_POINTS);
    EXPECT_TRUE(read.getComputeColor());
    EXPECT_EQ(read.getNumberOfBasePoints(), 9U);
}

TEST(ChartParametersBlock, ofVersion3UsesTheDefaultName)
{
    ChartParameters const read = loadOldBlock(3, Payload().s("N").u(2).b(true).u(9));
    EXPECT_EQ(read.getName(), "N");
    EXPECT_TRUE(read.getUseDefaultName());
    EXPECT_EQ(read.getStyle(), ChartParameters::STYLE_POINTS);
}

TEST(ChartParametersBlock, ofVersion2HasNoName)
{
    ChartParameters const read = loadOldBlock(2, Payload().u(6).b(false).u(9));
    EXPECT_EQ(read.getName(), "");
    EXPECT_EQ(read.getStyle(), ChartParameters::STYLE_Y_MARKER);
    EXPECT_EQ(read.getNumberOfBasePoints(), 9U);
}

TEST(ChartParametersBlock, ofVersion1EndsWithANumberOfNoUse)
{
    ChartParameters const read = loadOldBlock(1, Payload().u(1).b(true).u(9).u(77));
    EXPECT_EQ(read.getStyle(), ChartParameters::STYLE_BARS);
    EXPECT_EQ(read.getNumberOfBasePoints(), 9U);
    ChartParameters parameters;
    BlockCrafter crafter;
    crafter.block(1, Payload().u(1).b(true).u(9));
    EXPECT_THROW(loadFrom(parameters, addStyles(crafter).bytes()), IO::StreamException);
}

TEST(ChartParametersBlock, ofAnUnknownVersionIsRefusedAndChangesNothing)
{
    for (unsigned int version : {0U, 6U}) {
        BlockCrafter crafter;
        crafter.block(version, Payload().s("N").b(false).b(true).u(4).b(true).u(7));
        ChartParameters parameters;
        EXPECT_EQ(loadError(parameters, addStyles(crafter).bytes()),
                  "cannot load figure chart parameters: wrong block version");
        EXPECT_EQ(parameters, ChartParameters());
    }
}

TEST(ChartParametersBlock, withAnUnknownStyleOrWithoutItsStylesIsRefused)
{
    ChartParameters parameters;
    BlockCrafter badStyle;
    badStyle.block(5, Payload().s("N").b(false).b(true).u(7).b(true).u(7));
    EXPECT_EQ(loadError(parameters, addStyles(badStyle).bytes()),
              "cannot load figure chart parameters: illegal value 7 in block");
    BlockCrafter cut;
    cut.block(5, Payload().s("N").b(false).b(true).u(4).b(true).u(7));
    EXPECT_NE(loadError(parameters, cut.bytes()).find("cannot load figure chart parameters: "), std::string::npos);
    EXPECT_EQ(parameters, ChartParameters());
}

TEST(ChartParametersText, isOneLineOfItems)
{
    std::ostringstream output;
    output << unusualParameters();
    EXPECT_EQ(output.str(), "2 N 0 1 4 1 7 1 4 2 #010203ff 1 2 0 1 0.25 2 #040506ff 0 1 1 #070809ff ");
}

TEST(ChartParametersText, isReadBackAndVersion1HasNoGroupName)
{
    ChartParameters parameters;
    std::istringstream("2 N 0 1 4 1 7 1 4 2 #010203ff 1 2 0 1 0.25 2 #040506ff 0 1 1 #070809ff") >> parameters;
    EXPECT_EQ(parameters, unusualParameters());

    std::istringstream("1 N 0 4 1 7 1 4 2 #010203ff 1 2 0 1 0.25 2 #040506ff 0 1 1 #070809ff") >> parameters;
    ChartParameters expected = unusualParameters();
    expected.setShowGroupName(false);
    EXPECT_EQ(parameters, expected);
}

TEST(ChartParametersText, thatIsNewerOrDamagedFailsAndChangesNothing)
{
    for (char const *text :
         {"", "0", "3 N 0 1 4 1 7 1 4 2 #010203ff 1 2 0 1 0.25 2 #040506ff 0 1 1 #070809ff", "2 N 0 1 7 1 7",
          "2 N 0 1 4", "2 N 0 1 -1 1 7", "2 N 0 1 4 1 7 1 4 2 #010203ff 1 2 0 1 0.25 2 #040506ff 0 1 1"}) {
        ChartParameters parameters;
        std::istringstream input(text);
        EXPECT_FALSE(input >> parameters) << text;
        EXPECT_EQ(parameters, ChartParameters()) << text;
    }
}

TEST(ChartParametersInParameters, areWrittenInTheirOrder)
{
    EXPECT_EQ(unusualParameters().getParameterString("c").toStdString(),
              "c_name = \"N\"\nc_use_default_name = false\nc_show_group_name = true\nc_style = \"spikes\"\n"
              "c_symbol_type = \"star\"\nc_symbol_size = 2\nc_symbol_color = #010203ff\nc_symbol_show_value = true\n"
              "c_symbol_digits = 2\nc_symbol_font = \"Liberation Sans,12,0\"\nc_symbol_spacing = 0\n"
              "c_line_style_width = 0.25\nc_line_style_color = #040506ff\nc_line_style_style = \"dotted\"\n"
              "c_line_style_cap_style = \"round\"\nc_fill_style_filled = true\nc_fill_style_color = #070809ff\n"
              "c_compute_color = true\nc_spline_base_points = 7\n");
}

TEST(ChartParametersInParameters, haveBareKeysWithoutAPrefix)
{
    QString const text = ChartParameters().getParameterString("");
    EXPECT_TRUE(text.startsWith("name = \"\"\nuse_default_name = true\n"));
    EXPECT_TRUE(text.contains("\nsymbol_type = "));
}

TEST(ChartParametersInParameters, areReadBack)
{
    for (char const *prefix : {"", "c"}) {
        QString text = unusualParameters().getParameterString(prefix);
        ChartParameters read;
        read.createFromParameterString(text, prefix);
        EXPECT_EQ(read, unusualParameters());
        EXPECT_EQ(text, "");
    }
}

TEST(ChartParametersInParameters, changeOnlyWhatTheyName)
{
    QString text = "spline_base_points = 4294967295\nline_style_width = 3\n";
    ChartParameters read = unusualParameters();
    read.createFromParameterString(text, "");
    ChartParameters expected = unusualParameters();
    expected.setNumberOfBasePoints(4294967295U);
    LineStyle line = expected.getLineStyle();
    line.setWidth(3.0);
    expected.setLineStyle(line);
    EXPECT_EQ(read, expected);
}

TEST(ChartParametersInParameters, refuseAnUnknownStyleByItsWord)
{
    QString text = "style = \"lines\"\n";
    try {
        ChartParameters().createFromParameterString(text, "");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown chart style: lines");
        EXPECT_EQ(error.getPosition(), -1);
    }
}

TEST(ChartParametersInParameters, readTheStyleFirstAndTheRecordsLast)
{
    // The style's complaint comes before that of the name which stands first, and the name is not taken then.
    QString text = "name = \"X\"\nsymbol_size = -1\nstyle = \"blob\"\n";
    ChartParameters parameters;
    EXPECT_EQ(thrownText<ParamError>([&] { parameters.createFromParameterString(text, ""); }),
              "unknown chart style: blob");
    EXPECT_EQ(parameters.getName(), "");

    text = "symbol_size = -1\nspline_base_points = 5\nname = \"X\"\n";
    EXPECT_THROW(parameters.createFromParameterString(text, ""), ParamError);
    EXPECT_EQ(parameters.getName(), "X");
    EXPECT_EQ(parameters.getNumberOfBasePoints(), 5U);
}

TEST(ChartParametersInParameters, refuseValuesOfAnotherForm)
{
    for (char const *entry :
         {"spline_base_points = -1\n", "spline_base_points = 4294967296\n", "use_default_name = maybe\n",
          "show_group_name = 2\n", "compute_color = \"x\"\n", "line_style_width = -1\n", "fill_style_color = blue\n"}) {
        ChartParameters parameters;
        QString text = QString::fromLatin1(entry);
        EXPECT_THROW(parameters.createFromParameterString(text, ""), ParamError) << entry;
    }
}

} // namespace
} // namespace Zem::Fig2
