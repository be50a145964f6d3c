#include <ZemFont.h>

#include <gtest/gtest.h>

#include <locale>
#include <sstream>

using Zem::Font;

namespace {

/// Writes 1234.5 as "1.234,5".
struct CommaDecimals : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::string printed(Font const &font)
{
    std::ostringstream stream;
    stream << font;
    return stream.str();
}

} // namespace

TEST(Font, isTheDefaultSansAtTwelvePointsByDefault)
{
    EXPECT_EQ(Font(), Font("Liberation Sans", 12.0, 0));
    EXPECT_EQ(QString(Font::DEFAULT_FONT_SANS), "Liberation Sans");
}

TEST(Font, hasStyleBitsThatStandInFiles)
{
    EXPECT_EQ(Font::ITALIC, 1u);
    EXPECT_EQ(Font::BOLD, 2u);
    EXPECT_EQ(Font::LIGHT, 4u);
    EXPECT_EQ(Font::DEMI_BOLD, 8u);
    EXPECT_EQ(Font::BLACK, 16u);
    EXPECT_EQ(Font::UNDERLINE, 32u);
    EXPECT_EQ(Font::STRIKEOUT, 64u);
}

TEST(Font, differsInFamilySizeOrStyle)
{
    Font const font("A", 10, Font::BOLD);
    EXPECT_NE(font, Font("B", 10, Font::BOLD));
    EXPECT_NE(font, Font("A", 10.5, Font::BOLD));
    EXPECT_NE(font, Font("A", 10, Font::ITALIC));
}

TEST(Font, takesWhatItsSettersGet)
{
    Font font;
    font.setFamily("A");
    font.setSize(10);
    font.setStyle(Font::BOLD);
    EXPECT_EQ(font, Font("A", 10, Font::BOLD));
}

TEST(FontForLabels, isTheDefaultUntilTheHostSetsOne)
{
    EXPECT_EQ(Font::getSystemLabelFont(), Font());

    Font::setSystemLabelFont(Font("Host", 9, 0));
    EXPECT_EQ(Font::getSystemLabelFont(), Font("Host", 9, 0));

    Font::setSystemLabelFont(Font());
}

TEST(FontAsParameter, isFamilySizeAndStyle)
{
    EXPECT_EQ(Font("Liberation Sans", 10.5, 3).getParameterString(), "Liberation Sans,10.5,3");
}

TEST(FontAsParameter, readsBackTheSame)
{
    for (Font const &font :
         {Font("", 12, 0), Font("a, b,", 0.1, 127), Font(QString::fromUtf8("Grün \n x"), 1e-300, ~0u)}) {
        Font read("other", 1, 1);
        EXPECT_TRUE(read.createFromParameterString(font.getParameterString()));
        EXPECT_EQ(read, font);
    }
}

TEST(FontAsParameter, isLeftAloneByAnotherText)
{
    for (char const *text :
         {"", "A", "A,1", "12,1", "A,x,1", "A,12,", "A,12,-1", "A,nan,1", "A,inf,1", "A,0,1", "A,-3,1"}) {
        Font font("kept", 5, 6);
        EXPECT_FALSE(font.createFromParameterString(text)) << text;
        EXPECT_EQ(font, Font("kept", 5, 6)) << text;
    }
}

TEST(FontInATextStream, isFamilySizeAndStyleAsThreeWords)
{
    EXPECT_EQ(printed(Font("Liberation Sans", 10.5, 3)), "Liberation\\sSans 10.5 3");
}

TEST(FontInATextStream, doesNotFollowTheLocaleOrTheFlagsOfTheStream)
{
    std::stringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new CommaDecimals));
    stream << std::hex << std::fixed << Font("A", 1234.5, 20);
    EXPECT_EQ(stream.str(), "A 1234.5 20");

    Font font;
    stream >> font;
    EXPECT_EQ(font, Font("A", 1234.5, 20));
}

TEST(FontInATextStream, keepsEachBitOfTheSize)
{
    Font const font("", 0.1 + 0.2, 0);
    std::istringstream stream(printed(font));
    Font read;
    stream >> read;
    EXPECT_EQ(read, font);
}

TEST(FontInATextStream, isLeftAloneWhenDamaged)
{
    for (char const *text : {"", "A", "A 12", "A x 1", "A 12 x", "A nan 1", "A -1 1", "A 1e999 1"}) {
        std::istringstream stream(text);
        Font font("kept", 5, 6);
        stream >> font;
        EXPECT_TRUE(stream.fail()) << text;
        EXPECT_EQ(font, Font("kept", 5, 6)) << text;
    }
}
