// JPEG pictures, from files and from the buffers of older stored pictures.
#include "jpeg_crafter.h"
#include "picture_files.h"

namespace Zem::Test {
namespace {

using namespace std::string_literals;

class JpegTest : public PictureFiles
{
};

/// A colour goes through another colour space and back: each channel may be off by two.
void expectNear(Color const &actual, Color const &expected)
{
    EXPECT_NEAR(actual.getRed(), expected.getRed(), 2);
    EXPECT_NEAR(actual.getGreen(), expected.getGreen(), 2);
    EXPECT_NEAR(actual.getBlue(), expected.getBlue(), 2);
    EXPECT_EQ(actual.getAlpha(), expected.getAlpha());
}

TEST_F(JpegTest, ofGreyValuesHasThem)
{
    auto const image = loadBytes(flatJpeg(9, 5, "\x80", TJPF_GRAY, TJSAMP_GRAY));

    EXPECT_EQ(pixelsOf<Image8>(image.get()), std::vector<std::uint8_t>(45, 0x80));
    EXPECT_EQ(image->getWidth(), 9U);
}

TEST_F(JpegTest, ofColoursHasThemOpaque)
{
    auto const image = loadBytes(flatJpeg(17, 16, "\xc8\x64\x1e", TJPF_RGB, TJSAMP_420));

    std::vector<Color> const pixels = pixelsOf<ImageColor>(image.get());
    ASSERT_EQ(pixels.size(), 17U * 16U);
    expectNear(pixels.front(), Color(200, 100, 30));
    expectNear(pixels.back(), Color(200, 100, 30));
    EXPECT_FALSE(image->hasAlphaChannel());
}

TEST_F(JpegTest, thatBuildsUpInStepsIsRead)
{
    auto const image = loadBytes(flatJpeg(16, 16, "\xc8\x64\x1e", TJPF_RGB, TJSAMP_444, TJFLAG_PROGRESSIVE));
    expectNear(pixelsOf<ImageColor>(image.get()).at(100), Color(200, 100, 30));
}

TEST_F(JpegTest, ofInksBecomesColours)
{
    // 255 is no ink: 255 * 128 / 255 and so on.
    auto const image = loadBytes(flatJpeg(8, 8, "\xff\x80\x00\x80"s, TJPF_CMYK, TJSAMP_444));
    expectNear(pixelsOf<ImageColor>(image.get()).at(0), Color(128, 64, 0));
}

TEST_F(JpegTest, withAHugeHeaderIsRefused)
{
    std::string file = flatJpeg(8, 8, "\x80", TJPF_GRAY, TJSAMP_GRAY);
    std::size_t const frame = file.find("\xff\xc0");
    ASSERT_NE(frame, std::string::npos);
    file.replace(frame + 5, 4, "\xff\xdc\xff\xdc"); // 65500 by 65500
    EXPECT_EQ(refusal(file), "the picture has a side of more than 32768 pixels");
    file.replace(frame + 5, 4, "\x20\x00\x20\x00"s); // 8192 by 8192: with four bytes for each pixel just what is allowed
    EXPECT_EQ(refusal(file), "the file is too short for its picture");
}

TEST_F(JpegTest, thatEndsTooEarlyNamesTheReason)
{
    std::string const file = flatJpeg(64, 64, "\xc8\x64\x1e", TJPF_RGB, TJSAMP_444);
    EXPECT_NE(refusal(file.substr(0, file.size() - 30)).find("remature end"), std::string::npos);
}

TEST(JpegBuffer, becomesAColourPicture)
{
    ImageColor image(1, 1);
    image.setHasAlphaChannel(true);

    ASSERT_TRUE(image.readJPEGFromBuffer(buffer(flatJpeg(4, 3, "\xc8\x64\x1e", TJPF_RGB, TJSAMP_444))));

    EXPECT_EQ(image.getWidth(), 4U);
    EXPECT_EQ(image.getHeight(), 3U);
    EXPECT_FALSE(image.hasAlphaChannel());
    expectNear(image.getPixel(3, 2), Color(200, 100, 30));
}

TEST(JpegBuffer, ofGreyValuesBecomesAColourPictureToo)
{
    ImageColor image;
    ASSERT_TRUE(image.readJPEGFromBuffer(buffer(flatJpeg(2, 2, "\x80", TJPF_GRAY, TJSAMP_GRAY))));
    EXPECT_EQ(image.getPixel(1, 1), Color(128, 128, 128, 255));
}

TEST(JpegBuffer, thatIsNoneLeavesThePictureAsItWas)
{
    std::string const whole = flatJpeg(4, 3, "\xc8\x64\x1e", TJPF_RGB, TJSAMP_444);
    ImageColor image(1, 1);
    image.setPixel(0, 0, Color(1, 2, 3, 4));
    image.setHasAlphaChannel(true);

    for (std::size_t size = 0; size + 2 < whole.size(); ++size) // the last two bytes only say that it ends
        EXPECT_FALSE(image.readJPEGFromBuffer(buffer(whole.substr(0, size)))) << size;

    EXPECT_EQ(image.getPixel(0, 0), Color(1, 2, 3, 4));
    EXPECT_TRUE(image.hasAlphaChannel());
}

} // namespace
} // namespace Zem::Test
