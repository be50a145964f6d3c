#include <ZemColor.h>

#include <gtest/gtest.h>

#include <sstream>

using Zem::Color;

TEST(Color, isOpaqueBlackByDefault)
{
    EXPECT_EQ(Color(), Color(0, 0, 0, 255));
}

TEST(Color, isOpaqueWhenMadeOfThreeChannels)
{
    EXPECT_EQ(Color(1, 2, 3).getAlpha(), 255);
}

TEST(Color, keepsRedGreenBlueAlphaAsFourBytesInThisOrder)
{
    Color const color(1, 2, 3, 4);
    unsigned char bytes[4];
    std::memcpy(bytes, &color, sizeof(bytes));
    EXPECT_THAT(bytes, testing::ElementsAre(1, 2, 3, 4));
}

TEST(Color, differsWhenOneChannelDiffers)
{
    Color const color(1, 2, 3, 4);
    EXPECT_NE(color, Color(9, 2, 3, 4));
    EXPECT_NE(color, Color(1, 9, 3, 4));
    EXPECT_NE(color, Color(1, 2, 9, 4));
    EXPECT_NE(color, Color(1, 2, 3, 9));
}

TEST(Color, isWrittenAsOneWordWhateverTheFlagsOfTheStream)
{
    std::ostringstream stream;
    stream << std::showbase << std::uppercase << Color(255, 10, 0, 127);
    EXPECT_EQ(stream.str(), "#ff0a007f");
}

TEST(Color, readsDigitsOfEitherCase)
{
    std::istringstream stream(" #FF0a007F rest");
    Color color;
    std::string rest;
    stream >> color >> rest;
    EXPECT_EQ(color, Color(255, 10, 0, 127));
    EXPECT_EQ(rest, "rest");
}

TEST(Color, isLeftAloneByAWordThatIsNoColor)
{
    for (char const *word : {"", "#", "#ff0a00", "#ff0a007f0", "xff0a007f0", "#ff0a00-1", "#ff0a0 07f", "#gg0a007f"}) {
        std::istringstream stream(word);
        Color color(1, 2, 3, 4);
        stream >> color;
        EXPECT_TRUE(stream.fail()) << word;
        EXPECT_EQ(color, Color(1, 2, 3, 4)) << word;
    }
}
