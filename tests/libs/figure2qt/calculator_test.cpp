#include <ZemFig2QtCalculator.h>

#include <ZemError.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Fig2Qt {
namespace {

constexpr double MM_PER_POINT = 25.4 / 72.0;

class QtCalculatorTest : public testing::Test
{
protected:
    BaVec2d<double> rich(char const *text, double width = -1.0, Font const &font = Font()) const
    {
        return calculator_.computeRichTextSize(QString::fromUtf8(text), font, width, nullptr);
    }
    BaVec2d<double> plain(char const *text, Font const &font = Font()) const
    {
        return calculator_.computeTextSize(font, QString::fromUtf8(text));
    }

    QtCalculator calculator_;
};

TEST_F(QtCalculatorTest, isTheCalculatorOfTheLibraryWhileItLives)
{
    EXPECT_EQ(Fig2::Calculator::getInstance(), &calculator_);
    EXPECT_THROW(QtCalculator second, ProgError);
    EXPECT_DOUBLE_EQ(calculator_.getScreenPixelSizeMM(), 25.4 / 96.0);
}

TEST_F(QtCalculatorTest, measuresInThousandthsOfTheEmOfTheFontFile)
{
    // Liberation Sans has the widths of its model: H 722, o 556, of 1000 to the em.
    EXPECT_NEAR(plain("H").x, 0.722 * 12.0 * MM_PER_POINT, 0.01);
    EXPECT_NEAR(plain("oo").x, 2 * 0.556 * 12.0 * MM_PER_POINT, 0.01);
}

TEST_F(QtCalculatorTest, measuresInProportionToTheSize)
{
    Font const small(Font::DEFAULT_FONT_SANS, 8.0, 0);
    Font const large(Font::DEFAULT_FONT_SANS, 24.0, 0);
    char const *text = "The quick brown fox";

    EXPECT_NEAR(plain(text, large).x, 3.0 * plain(text, small).x, 0.02);
    EXPECT_NEAR(plain(text, large).y, 3.0 * plain(text, small).y, 0.02);
}

TEST_F(QtCalculatorTest, takesFractionsOfPoints)
{
    Font const font(Font::DEFAULT_FONT_SANS, 8.3, 0);

    EXPECT_NEAR(plain("HHHHHHHHHH", font).x, 10 * 0.722 * 8.3 * MM_PER_POINT, 0.02);
}

TEST_F(QtCalculatorTest, givesPlainAndRichTextOfOneLineTheSameSize)
{
    EXPECT_EQ(rich("12.5 MPa"), plain("12.5 MPa"));
}

TEST_F(QtCalculatorTest, takesMarkupInPlainTextAsItStands)
{
    EXPECT_GT(plain("<b>x</b>").x, 5 * rich("<b>x</b>").x);
}

TEST_F(QtCalculatorTest, addsALineForEachBreak)
{
    EXPECT_NEAR(rich("a<br>b<br>c").y, 3.0 * rich("a").y, 1e-9);
}

TEST_F(QtCalculatorTest, wrapsAtTheWidth)
{
    char const *text = "one two three four five six seven";
    double const line = rich(text).y;

    EXPECT_LE(rich(text, 30.0).x, 30.0);
    EXPECT_NEAR(rich(text, 30.0).y, 3.0 * line, 1e-6);
    EXPECT_EQ(rich(text, 1000.0), rich(text));
}

TEST_F(QtCalculatorTest, givesTheWidthOfTheWidestLineWhenWrapped)
{
    EXPECT_NEAR(rich("HHHH HHHH", 12.0 * MM_PER_POINT * 0.722 * 5).x, 4 * 0.722 * 12.0 * MM_PER_POINT, 0.02);
}

TEST_F(QtCalculatorTest, takesAWidthThatIsNoNumberAsNone)
{
    double const none = std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(rich("one two three", none), rich("one two three"));
    EXPECT_EQ(rich("one two three", -5.0), rich("one two three"));
}

TEST_F(QtCalculatorTest, setsTheOffsetToNothing)
{
    BaVec2d<double> offset(3.0, 4.0);
    calculator_.computeRichTextSize(QStringLiteral("x"), Font(), 20.0, &offset);

    EXPECT_EQ(offset, (BaVec2d<double>(0.0, 0.0)));
}

TEST_F(QtCalculatorTest, givesAnEmptyTextTheHeightOfALine)
{
    EXPECT_EQ(plain("").x, 0.0);
    EXPECT_EQ(plain("").y, plain("x").y);
    EXPECT_EQ(rich("").y, plain("x").y);
}

TEST_F(QtCalculatorTest, knowsAscentAndDescent)
{
    // 0.905 and 0.212 of the em in Liberation Sans.
    EXPECT_NEAR(calculator_.getFontAscent(Font()), 0.905 * 12.0 * MM_PER_POINT, 0.01);
    EXPECT_NEAR(calculator_.getFontDescent(Font()), 0.212 * 12.0 * MM_PER_POINT, 0.01);
    EXPECT_GE(calculator_.getFontHeight(Font()),
              calculator_.getFontAscent(Font()) + calculator_.getFontDescent(Font()));
}

TEST_F(QtCalculatorTest, distinguishesTheStyles)
{
    double const regular = plain("Hamburg", Font(Font::DEFAULT_FONT_SANS, 12.0, 0)).x;

    EXPECT_GT(plain("Hamburg", Font(Font::DEFAULT_FONT_SANS, 12.0, Font::BOLD)).x, regular);
    EXPECT_EQ(plain("Hamburg", Font(Font::DEFAULT_FONT_SANS, 12.0, Font::UNDERLINE)).x, regular);
    EXPECT_EQ(plain("Hamburg", Font(Font::DEFAULT_FONT_SANS, 12.0, Font::STRIKEOUT)).x, regular);
}

TEST_F(QtCalculatorTest, survivesFontsThatMakeNoSense)
{
    double const infinity = std::numeric_limits<double>::infinity();
    for (double const size : {0.0, -3.0, 1e300, infinity, std::nan("")}) {
        BaVec2d<double> const measured = rich("<table><tr><td>x</td></tr></table>", 20.0, Font(QString(), size, ~0U));
        EXPECT_TRUE(std::isfinite(measured.x) && std::isfinite(measured.y)) << size;
        EXPECT_GT(plain("x", Font(QStringLiteral("no such family"), size, 0)).x, 0.0) << size;
    }
}

} // namespace
} // namespace Zem::Fig2Qt
