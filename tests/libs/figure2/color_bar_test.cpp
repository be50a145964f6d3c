#include <BlockCrafter.h>
#include <RecordingPainter.h>
#include <ZemFig2ColorBar.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::RecordingPainter;

LineStyle const THIN(0.5, LineStyle::STYLE_FULL, Color(0, 0, 0));

ColorBar barWith(ColorBar::Side_t side, double value)
{
    ColorBar bar;
    bar.setSide(side);
    bar.setRange({-10, 20});
    bar.setValue(value, true);
    bar.setColor(Color(255, 0, 0));
    bar.setBorder(THIN);
    return bar;
}

std::string drawn(ColorBar const &bar, BaVec2d<double> const &size, Rotation const &rotation = Rotation::null)
{
    RecordingPainter painter;
    bar.draw(&painter, {100, 200}, size, rotation);
    return painter.transcript();
}

TEST(ColorBarDefaults, areAnEmptyBarAtTheBottom)
{
    ColorBar const bar;
    EXPECT_EQ(bar.getRange(), BaVec2d<double>(0, 0));
    EXPECT_EQ(bar.getValue(), 0.0);
    EXPECT_FALSE(bar.isValueValid());
    EXPECT_EQ(bar.getColor(), Color(0, 0, 0));
    EXPECT_EQ(bar.getWidth(), 0.0);
    EXPECT_TRUE(bar.getUseVariableLength());
    EXPECT_EQ(bar.getMinimumLength(), 0.0);
    EXPECT_EQ(bar.getSide(), ColorBar::SIDE_BOTTOM);
    EXPECT_EQ(bar.getBorder(), LineStyle(1.0, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(bar.getBackground(), FillStyle());
}

struct SizeCase
{
    bool variable;
    double minimumLength;
    double length;
};

class ColorBarMinimumSize : public testing::TestWithParam<SizeCase>
{
};

TEST_P(ColorBarMinimumSize, isWidthByLengthAndTheBorder)
{
    ColorBar bar;
    bar.setWidth(3);
    bar.setUseVariableLength(GetParam().variable);
    bar.setMinimumLength(GetParam().minimumLength);
    for (ColorBar::Side_t side : {ColorBar::SIDE_TOP, ColorBar::SIDE_BOTTOM}) {
        bar.setSide(side);
        EXPECT_EQ(bar.computeMinimumSize(), BaVec2d<double>(3 + 1, GetParam().length + 1));
    }
    for (ColorBar::Side_t side : {ColorBar::SIDE_LEFT, ColorBar::SIDE_RIGHT}) {
        bar.setSide(side);
        EXPECT_EQ(bar.computeMinimumSize(), BaVec2d<double>(GetParam().length + 1, 3 + 1));
    }
}

INSTANTIATE_TEST_SUITE_P(Lengths, ColorBarMinimumSize,
                         testing::Values(SizeCase{true, 0, 10}, SizeCase{true, 9, 10}, SizeCase{true, 12, 12},
                                         SizeCase{false, 0, 0}, SizeCase{false, 4, 4}, SizeCase{false, 30, 30}));

TEST(ColorBarDraw, growsToTheRightForAPositiveValue)
{
    // Strip 40 x 6, middle at 20. 10 of 20 is half of 20: 10 mm. The plus is min(6 / 3, 40 / 8) = 2 wide and stands at
    // 20 + (20 - 2) = 38.
    EXPECT_EQ(drawn(barWith(ColorBar::SIDE_BOTTOM, 10), {40, 6}),
              "polygon 120,200 130,200 130,206 120,206 no pen fill #ff0000ff\n"
              "line 120,200 120,206 pen 0.5 full #000000ff sharp\n"
              "line 137,203 139,203 pen 0.5 full #000000ff sharp\n"
              "line 138,202 138,204 pen 0.5 full #000000ff sharp\n");
}

TEST(ColorBarDraw, growsToTheLeftForANegativeValueAndMarksItWithAMinus)
{
    EXPECT_EQ(drawn(barWith(ColorBar::SIDE_TOP, -5), {40, 6}),
              "polygon 115,200 120,200 120,206 115,206 no pen fill #ff0000ff\n"
              "line 120,200 120,206 pen 0.5 full #000000ff sharp\n"
              "line 101,203 103,203 pen 0.5 full #000000ff sharp\n");
}

TEST(ColorBarDraw, growsDownwardsAtTheSides)
{
    for (ColorBar::Side_t side : {ColorBar::SIDE_LEFT, ColorBar::SIDE_RIGHT}) {
        // The plus is min(6 / 3, 8 / 8) = 1 wide at 4 + (4 - 1) = 7.
        EXPECT_EQ(drawn(barWith(side, 10), {6, 8}), "polygon 100,204 106,204 106,206 100,206 no pen fill #ff0000ff\n"
                                                    "line 100,204 106,204 pen 0.5 full #000000ff sharp\n"
                                                    "line 102.5,207 103.5,207 pen 0.5 full #000000ff sharp\n"
                                                    "line 103,206.5 103,207.5 pen 0.5 full #000000ff sharp\n");
    }
}

TEST(ColorBarDraw, keepsTheValueInsideTheStrip)
{
    EXPECT_NE(drawn(barWith(ColorBar::SIDE_TOP, 1e9), {40, 6}).find("polygon 120,200 140,200"), std::string::npos);
    EXPECT_NE(drawn(barWith(ColorBar::SIDE_TOP, -1e9), {40, 6}).find("polygon 100,200 120,200"), std::string::npos);
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_NE(drawn(barWith(ColorBar::SIDE_TOP, infinity), {40, 6}).find("polygon 120,200 140,200"),
              std::string::npos);
}

TEST(ColorBarDraw, takesTheLargerEndOfTheRange)
{
    ColorBar bar = barWith(ColorBar::SIDE_TOP, 10);
    bar.setRange({-40, 20});
    EXPECT_NE(drawn(bar, {40, 6}).find("polygon 120,200 125,200"), std::string::npos);
}

TEST(ColorBarDraw, withoutARangeHasNoBar)
{
    ColorBar bar = barWith(ColorBar::SIDE_TOP, 10);
    bar.setRange({0, 0});
    EXPECT_EQ(drawn(bar, {40, 6}), "line 120,200 120,206 pen 0.5 full #000000ff sharp\n"
                                   "line 137,203 139,203 pen 0.5 full #000000ff sharp\n"
                                   "line 138,202 138,204 pen 0.5 full #000000ff sharp\n");
}

TEST(ColorBarDraw, ofZeroIsABarOfNoLength)
{
    EXPECT_NE(drawn(barWith(ColorBar::SIDE_TOP, 0), {40, 6}).find("polygon 120,200 120,200 120,206 120,206 no pen"),
              std::string::npos);
}

TEST(ColorBarDraw, withoutAValueShowsStripAndZeroMark)
{
    ColorBar bar = barWith(ColorBar::SIDE_TOP, 10);
    bar.setValue(10, false);
    bar.setBackground(FillStyle(Color(0, 255, 0)));
    EXPECT_EQ(drawn(bar, {40, 6}),
              "polygon 100,200 140,200 140,206 100,206 pen 0.5 full #000000ff sharp fill #00ff00ff\n"
              "line 120,200 120,206 pen 0.5 full #000000ff sharp\n");
}

TEST(ColorBarDraw, withoutABorderHasNoZeroMark)
{
    ColorBar bar = barWith(ColorBar::SIDE_TOP, 10);
    bar.setValue(10, false);
    bar.setBorder(LineStyle::null);
    EXPECT_EQ(drawn(bar, {40, 6}), "");
}

TEST(ColorBarDraw, centresAStripOfFixedLength)
{
    ColorBar bar = barWith(ColorBar::SIDE_LEFT, 20);
    bar.setUseVariableLength(false);
    bar.setMinimumLength(16);
    bar.setBackground(FillStyle(Color(0, 255, 0)));
    // 16 of 40: from 212 to 228, middle 220, value to the end; plus of min(2, 2) at 220 + (8 - 2).
    EXPECT_EQ(drawn(bar, {6, 40}),
              "polygon 100,212 106,212 106,228 100,228 pen 0.5 full #000000ff sharp fill #00ff00ff\n"
              "polygon 100,220 106,220 106,228 100,228 no pen fill #ff0000ff\n"
              "line 100,220 106,220 pen 0.5 full #000000ff sharp\n"
              "line 102,226 104,226 pen 0.5 full #000000ff sharp\n"
              "line 103,225 103,227 pen 0.5 full #000000ff sharp\n");
}

TEST(ColorBarDraw, letsAStripThatIsTooLongBeginAtTheCorner)
{
    ColorBar bar = barWith(ColorBar::SIDE_TOP, 0);
    bar.setValue(0, false);
    bar.setUseVariableLength(false);
    bar.setMinimumLength(60);
    EXPECT_EQ(drawn(bar, {40, 6}), "line 130,200 130,206 pen 0.5 full #000000ff sharp\n");
}

TEST(ColorBarDraw, handsTheRotationOn)
{
    ColorBar bar = barWith(ColorBar::SIDE_TOP, 0);
    bar.setValue(0, false);
    EXPECT_EQ(drawn(bar, {40, 6}, Rotation({1, 2}, 0.5)),
              "line 120,200 120,206 pen 0.5 full #000000ff sharp turned 0.5 about 1,2\n");
}

ColorBar fullBar()
{
    ColorBar bar = barWith(ColorBar::SIDE_RIGHT, 7.5);
    bar.setColor(Color(1, 2, 3, 4));
    bar.setWidth(2);
    bar.setUseVariableLength(false);
    bar.setMinimumLength(12);
    bar.setBackground(FillStyle(Color(5, 6, 7)));
    return bar;
}

std::string const FULL_BAR_PARAMETERS =
    "bar_range = (-10, 20)\nbar_value = 7.5\nbar_value_valid = true\nbar_color = #01020304\nbar_width = 2\n"
    "bar_variable_length = false\nbar_minimum_length = 12\nbar_side = \"right\"\n"
    "bar_border_width = 0.5\nbar_border_color = #000000ff\nbar_border_style = \"full\"\n"
    "bar_border_cap_style = \"sharp\"\nbar_background_filled = true\nbar_background_color = #050607ff\n";

BlockCrafter &addStyles(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) {
        THIN.save(&stream);
        FillStyle(Color(5, 6, 7)).save(&stream);
    });
}

ColorBar loadBar(std::string const &bytes)
{
    ColorBar bar;
    bar.setMinimumLength(99);
    Support::readFrom(bytes, [&bar](IO::InStream &stream) { bar.load(&stream); });
    return bar;
}

std::string parametersOf(ColorBar const &bar)
{
    return bar.getParameterString("bar").toStdString();
}

TEST(ColorBarBlock, hasVersion3And50Bytes)
{
    std::string const bytes = Support::streamOf([](IO::OutStream &stream) { fullBar().save(&stream); });
    EXPECT_EQ(Support::blocksOf(bytes), "3:50 2:20 1:5 ");
    BlockCrafter crafter;
    crafter.block(3, Payload().v(-10, 20).d(7.5).c(1, 2, 3, 4).d(2).b(false).d(12).u(3).b(true));
    EXPECT_EQ(bytes, addStyles(crafter).bytes());
    EXPECT_EQ(parametersOf(loadBar(bytes)), FULL_BAR_PARAMETERS);
}

TEST(ColorBarBlock, ofVersion2HasAValueThatIsValid)
{
    BlockCrafter crafter;
    crafter.block(2, Payload().v(-10, 20).d(7.5).c(1, 2, 3, 4).d(2).b(false).d(12).u(3));
    EXPECT_EQ(parametersOf(loadBar(addStyles(crafter).bytes())), FULL_BAR_PARAMETERS);
}

TEST(ColorBarBlock, ofVersion1HasTwoWidthsAndNoMinimumLength)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().v(-10, 20).d(7.5).c(1, 2, 3, 4).v(2, 77).b(true).u(0));
    ColorBar const bar = loadBar(addStyles(crafter).bytes());
    EXPECT_EQ(bar.getWidth(), 2.0);
    EXPECT_TRUE(bar.getUseVariableLength());
    EXPECT_EQ(bar.getMinimumLength(), 0.0);
    EXPECT_EQ(bar.getSide(), ColorBar::SIDE_TOP);
    EXPECT_TRUE(bar.isValueValid());
    EXPECT_EQ(bar.getBorder(), THIN);
}

TEST(ColorBarBlock, thatIsNewerOrDamagedIsRefusedAndChangesNothing)
{
    auto const crafted = [](unsigned int version, unsigned int side) {
        BlockCrafter crafter;
        crafter.block(version, Payload().v(-10, 20).d(7.5).c(1, 2, 3, 4).d(2).b(false).d(12).u(side).b(true));
        return addStyles(crafter).bytes();
    };
    BlockCrafter alone;
    alone.block(3, Payload().v(-10, 20).d(7.5).c(1, 2, 3, 4).d(2).b(false).d(12).u(3).b(true));
    for (std::string const &bytes : {crafted(4, 3), crafted(0, 3), crafted(3, 4), alone.bytes()}) {
        ColorBar bar = fullBar();
        bar.setWidth(55);
        std::string const before = parametersOf(bar);
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { bar.load(&stream); }), IO::StreamException);
        EXPECT_EQ(parametersOf(bar), before);
    }
    try {
        loadBar(crafted(4, 3));
    } catch (IO::StreamException const &error) {
        EXPECT_EQ(error.getText(), "cannot load figure color bar: wrong block version");
    }
}

TEST(ColorBarText, isVersionFieldsAndStyles)
{
    std::ostringstream output;
    output << fullBar();
    EXPECT_EQ(output.str(), "1 -10 20 7.5 #01020304 2 0 12 3 1 1 0.5 1 #000000ff 1 1 1 #050607ff ");
    ColorBar read;
    std::istringstream(output.str()) >> read;
    EXPECT_EQ(parametersOf(read), FULL_BAR_PARAMETERS);
}

TEST(ColorBarText, thatIsNewerOrDamagedLeavesTheBarAlone)
{
    for (char const *text : {"2 -10 20 7.5 #01020304 2 0 12 3 1 1 0.5 1 #000000ff 1 1 1 #050607ff", "1 5 6",
                             "1 -10 20 7.5 #01020304 2 0 12 4 1 1 0.5 1 #000000ff 1 1 1 #050607ff"}) {
        ColorBar bar = fullBar();
        std::istringstream(text) >> bar;
        EXPECT_EQ(parametersOf(bar), FULL_BAR_PARAMETERS) << text;
    }
}

TEST(ColorBarParameters, areWrittenInOrderAndReadBack)
{
    EXPECT_EQ(parametersOf(fullBar()), FULL_BAR_PARAMETERS);
    QString parameters = QString::fromStdString(FULL_BAR_PARAMETERS);
    ColorBar read;
    read.createFromParameterString(parameters, "bar");
    EXPECT_EQ(parameters, "");
    EXPECT_EQ(parametersOf(read), FULL_BAR_PARAMETERS);
}

TEST(ColorBarParameters, nameTheFourSides)
{
    char const *const words[] = {"top", "bottom", "left", "right"};
    for (unsigned int i = 0; i < 4; ++i) {
        ColorBar bar;
        bar.setSide(ColorBar::Side_t(i));
        EXPECT_TRUE(bar.getParameterString("").contains(QStringLiteral("\nside = \"%1\"\n").arg(words[i])));
        QString parameters = QStringLiteral("side = \"%1\"\n").arg(words[i]);
        ColorBar read = fullBar();
        read.createFromParameterString(parameters, "");
        EXPECT_EQ(read.getSide(), ColorBar::Side_t(i));
        EXPECT_EQ(read.getWidth(), 2.0);
    }
}

TEST(ColorBarParameters, refuseAnUnknownSide)
{
    ColorBar bar;
    QString parameters = QStringLiteral("side = \"middle\"\n");
    try {
        bar.createFromParameterString(parameters, "");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown color bar side");
    }
}

} // namespace
} // namespace Zem::Fig2
