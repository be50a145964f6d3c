#include <BlockCrafter.h>
#include <ZemFig2FillStyle.h>
#include <ZemFig2LineStyle.h>
#include <ZemFig2Tools.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

LineStyle loadLine(std::string const &bytes, LineStyle style = LineStyle())
{
    Support::readFrom(bytes, [&style](IO::InStream &stream) { style.load(&stream); });
    return style;
}

TEST(LineStyleDefaults, areAFullBlackSharpLineOfWidth1)
{
    LineStyle const style;
    EXPECT_EQ(style.getWidth(), 1.0);
    EXPECT_EQ(style.getStyle(), LineStyle::STYLE_FULL);
    EXPECT_EQ(style.getColor(), Color(0, 0, 0));
    EXPECT_EQ(style.getCapStyle(), LineStyle::CAP_SHARP);
    EXPECT_EQ(LineStyle(2.0, LineStyle::STYLE_DOTTED, Color(1, 2, 3)).getCapStyle(), LineStyle::CAP_SHARP);
}

TEST(LineStyleNull, drawsNothing)
{
    EXPECT_EQ(LineStyle::null, LineStyle(0.0, LineStyle::STYLE_NONE, Color(0, 0, 0)));
    EXPECT_EQ(LineStyle::null.getCapStyle(), LineStyle::CAP_SHARP);
}

TEST(LineStyleNames, areTheWordsOfTheEnumeration)
{
    char const *const words[] = {"none", "full", "dotted", "dashed", "dash dotted"};
    std::vector<LineStyle::Style> const styles = LineStyle::getAllStyles();
    ASSERT_EQ(styles.size(), 5U);
    for (unsigned int i = 0; i < 5; ++i) {
        EXPECT_EQ(static_cast<unsigned int>(styles[i]), i);
        EXPECT_EQ(LineStyle::getStyleParameterName(styles[i]), words[i]);
        EXPECT_EQ(LineStyle::getStyleName(styles[i]), words[i]);
    }
    EXPECT_EQ(LineStyle::getStyleParameterName(LineStyle::Style(5)), "");
    EXPECT_EQ(LineStyle::getCapStyleParameterName(LineStyle::CAP_ROUND), "round");
    EXPECT_EQ(LineStyle::getCapStyleParameterName(LineStyle::CAP_SHARP), "sharp");
    std::vector<LineStyle::Style> all;
    Tools::getAllLineStyles(&all);
    EXPECT_EQ(all, styles);
}

TEST(LineStyleBlock, hasVersion2And20Bytes)
{
    LineStyle style(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3, 4));
    style.setCapStyle(LineStyle::CAP_ROUND);

    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { style.save(&stream); });

    EXPECT_EQ(bytes, BlockCrafter().block(2, Payload().d(0.5).u(3).c(1, 2, 3, 4).u(0)).bytes());
    EXPECT_EQ(loadLine(bytes), style);
}

TEST(LineStyleBlock, ofVersion1KeepsTheCapStyle)
{
    LineStyle before;
    before.setCapStyle(LineStyle::CAP_ROUND);

    LineStyle const read = loadLine(BlockCrafter().block(1, Payload().d(2).u(2).c(9, 8, 7, 6)).bytes(), before);

    EXPECT_EQ(read.getWidth(), 2.0);
    EXPECT_EQ(read.getStyle(), LineStyle::STYLE_DOTTED);
    EXPECT_EQ(read.getColor(), Color(9, 8, 7, 6));
    EXPECT_EQ(read.getCapStyle(), LineStyle::CAP_ROUND);
}

TEST(LineStyleBlock, withANegativeWidthReadsAsWidth1)
{
    EXPECT_EQ(loadLine(BlockCrafter().block(2, Payload().d(-2).u(1).c(0, 0, 0, 255).u(1)).bytes()).getWidth(), 1.0);
}

TEST(LineStyleBlock, ofAnotherVersionOrWithABadEnumerationIsRefusedAndChangesNothing)
{
    Payload const good = Payload().d(2).u(1).c(0, 0, 0, 255).u(1);
    for (std::string const &bytes : {BlockCrafter().block(3, good).bytes(), BlockCrafter().block(0, good).bytes(),
                                     BlockCrafter().block(2, Payload().d(2).u(5).c(0, 0, 0, 255).u(1)).bytes(),
                                     BlockCrafter().block(2, Payload().d(2).u(1).c(0, 0, 0, 255).u(2)).bytes()}) {
        LineStyle style(7.0, LineStyle::STYLE_DASHED, Color(1, 1, 1));
        LineStyle const before = style;
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { style.load(&stream); }),
                     IO::StreamException);
        EXPECT_EQ(style, before);
    }
}

TEST(LineStyleBlock, refusesANewerVersionWithTheCommonText)
{
    try {
        loadLine(BlockCrafter().block(3, Payload().d(2).u(1).c(0, 0, 0, 255).u(1)).bytes());
        FAIL();
    } catch (IO::StreamException const &error) {
        EXPECT_EQ(error.getText(), "wrong block version");
    }
}

TEST(LineStyleText, hasItsItemsSeparatedByOneBlank)
{
    std::ostringstream output;
    output << LineStyle(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3, 4));
    EXPECT_EQ(output.str(), "1 0.5 3 #01020304 1 ");
    LineStyle read;
    std::istringstream input(output.str());
    input >> read;
    EXPECT_EQ(read, LineStyle(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3, 4)));
}

TEST(LineStyleText, thatIsNewerOrDamagedLeavesTheObjectAlone)
{
    for (char const *text : {"2 0.5 3 #01020304 1", "1 0.5 3", "1 0.5 9 #01020304 1", "", "x"}) {
        LineStyle style(7.0, LineStyle::STYLE_DASHED, Color(1, 1, 1));
        LineStyle const before = style;
        std::istringstream input(text);
        input >> style;
        EXPECT_EQ(style, before) << text;
    }
}

TEST(LineStyleParameters, areWrittenInOrderUnderThePrefix)
{
    EXPECT_EQ(LineStyle(0.5, LineStyle::STYLE_DASH_DOTTED, Color(1, 2, 3)).getParameterString("border").toStdString(),
              "border_width = 0.5\nborder_color = #010203ff\nborder_style = \"dash dotted\"\n"
              "border_cap_style = \"sharp\"\n");
    EXPECT_EQ(LineStyle().getParameterString("").toStdString(),
              "width = 1\ncolor = #000000ff\nstyle = \"full\"\ncap_style = \"sharp\"\n");
}

TEST(LineStyleParameters, changeOnlyWhatTheyName)
{
    LineStyle style(7.0, LineStyle::STYLE_DASHED, Color(1, 1, 1));
    QString parameters = QStringLiteral("border_cap_style = \"round\"\nother = 5\n");

    style.createFromParameterString(parameters, "border");

    EXPECT_EQ(parameters, "other = 5\n");
    EXPECT_EQ(style.getCapStyle(), LineStyle::CAP_ROUND);
    EXPECT_EQ(style.getWidth(), 7.0);
    EXPECT_EQ(style.getStyle(), LineStyle::STYLE_DASHED);
}

TEST(LineStyleParameters, refuseNegativeWidthsAndUnknownWords)
{
    for (char const *entry : {"b_width = -1\n", "b_style = \"wavy\"\n", "b_cap_style = \"blunt\"\n"}) {
        LineStyle style;
        QString parameters = QString::fromLatin1(entry);
        EXPECT_THROW(style.createFromParameterString(parameters, "b"), ParamError) << entry;
    }
}

TEST(LineStyleParameters, existWhenOneOfTheFourDoes)
{
    for (char const *key : {"b_width = 1\n", "b_color = #000000\n", "b_style = \"full\"\n", "b_cap_style = \"round\"\n"})
        EXPECT_TRUE(LineStyle::parameterExists(QString::fromLatin1(key), "b")) << key;
    EXPECT_FALSE(LineStyle::parameterExists("bb_width = 1\nwidth = 2\n", "b"));
}

TEST(LineStyleV541Parameters, takeStyleAndCapAsPlainWords)
{
    LineStyle style;
    QString parameters = QStringLiteral("b_width=0.25;b_color=1,2,3;b_style=\"dash dotted\";b_cap_style=\"round\";");

    style.createFromV541ParameterString(parameters, "b");

    LineStyle expected(0.25, LineStyle::STYLE_DASH_DOTTED, Color(1, 2, 3));
    expected.setCapStyle(LineStyle::CAP_ROUND);
    EXPECT_EQ(style, expected);
}

TEST(LineStyleV541Parameters, refuseUnknownWordsWithTheirOwnTexts)
{
    LineStyle style;
    QString badStyle = QStringLiteral("b_style=\"wavy\";");
    QString badCap = QStringLiteral("b_cap_style=\"blunt\";");
    try {
        style.createFromV541ParameterString(badStyle, "b");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown line style");
        EXPECT_EQ(error.getPosition(), -1);
    }
    try {
        style.createFromV541ParameterString(badCap, "b");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown cap style");
    }
}

TEST(FillStyle, isFilledOnlyWithAColour)
{
    EXPECT_FALSE(FillStyle().getFilled());
    EXPECT_EQ(FillStyle().getColor(), Color(0, 0, 0));
    EXPECT_TRUE(FillStyle(Color(1, 2, 3)).getFilled());
    EXPECT_EQ(FillStyle::null, FillStyle());
    EXPECT_FALSE(FillStyle(Color(0, 0, 0)) == FillStyle());
}

TEST(FillStyleForms, areOneBlockOfFiveBytesThreeWordsAndTwoKeys)
{
    FillStyle const style(Color(1, 2, 3, 4));
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { style.save(&stream); });
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().b(true).c(1, 2, 3, 4)).bytes());
    std::ostringstream output;
    output << style;
    EXPECT_EQ(output.str(), "1 1 #01020304 ");
    EXPECT_EQ(style.getParameterString("p").toStdString(), "p_filled = true\np_color = #01020304\n");

    FillStyle fromBlock;
    Support::readFrom(bytes, [&](IO::InStream &stream) { fromBlock.load(&stream); });
    FillStyle fromText;
    std::istringstream(output.str()) >> fromText;
    FillStyle fromParameters;
    QString parameters = style.getParameterString("p");
    fromParameters.createFromParameterString(parameters, "p");
    FillStyle fromOld;
    QString old = QStringLiteral("p_filled=true;p_color=1,2,3,4;");
    fromOld.createFromV541ParameterString(old, "p");
    for (FillStyle const &read : {fromBlock, fromText, fromParameters, fromOld})
        EXPECT_EQ(read, style);
}

TEST(FillStyleForms, refuseOtherVersions)
{
    FillStyle style(Color(5, 5, 5));
    for (unsigned int version : {0U, 2U}) {
        std::string const bytes = BlockCrafter().block(version, Payload().b(false).c(1, 2, 3, 4)).bytes();
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { style.load(&stream); }),
                     IO::StreamException);
    }
    std::istringstream("2 0 #01020304") >> style;
    EXPECT_EQ(style, FillStyle(Color(5, 5, 5)));
}

} // namespace
} // namespace Zem::Fig2
