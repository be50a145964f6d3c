// Blocks of pictures that stand by themselves.
#include <BlockCrafter.h>
#include <ElementForms.h>
#include <ZemFig2Tools.h>
#include <jpeg_crafter.h>

#include <ZemImage.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

constexpr char const *NO_PICTURE = "loading image from figure stream failed";

std::string packed(Zem::Image const &picture)
{
    StructVector<unsigned char> bytes;
    picture.compressImage(&bytes);
    return {bytes.begin(), bytes.end()};
}

std::unique_ptr<Zem::Image> load(std::string const &bytes)
{
    std::unique_ptr<Zem::Image> picture;
    Support::readFrom(bytes, [&picture](IO::InStream &stream) { picture.reset(Tools::loadImage(&stream)); });
    return picture;
}

/// A block of type, count and bytes, and the alpha flag if the version has one.
std::string crafted(unsigned int version, unsigned int type, std::string const &bytes)
{
    Payload fields = Payload().u(type).s(bytes);
    if (version >= 4)
        fields.b(false);
    return BlockCrafter().block(version, fields).bytes();
}

std::string refusal(std::string const &bytes)
{
    return thrownText<IO::StreamException>([&bytes] { load(bytes); });
}

std::string jpeg()
{
    return Test::flatJpeg(8, 8, std::string(3, '\xff'), TJPF_RGB, TJSAMP_444);
}

TEST(ToolsImage, isOneBlock)
{
    Image16 const picture(3, 2);

    std::string const bytes =
        Support::streamOf([&picture](IO::OutStream &stream) { Tools::saveImage(&stream, &picture); });

    EXPECT_EQ(Support::blocksOf(bytes), "4:" + std::to_string(packed(picture).size() + 9) + " ");
    EXPECT_EQ(bytes, BlockCrafter().block(4, Payload().u(1).s(packed(picture)).b(false)).bytes());
}

TEST(ToolsImage, comesBack)
{
    ImageColor picture(2, 1);
    picture.setPixel(1, 0, Color(1, 2, 3, 4));
    picture.setHasAlphaChannel(true);

    std::unique_ptr<Zem::Image> const read =
        load(Support::streamOf([&picture](IO::OutStream &stream) { Tools::saveImage(&stream, &picture); }));

    auto const *color = dynamic_cast<ImageColor const *>(read.get());
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->getPixel(1, 0), Color(1, 2, 3, 4));
    EXPECT_TRUE(color->hasAlphaChannel());
}

TEST(ToolsImage, isReadOfEachType)
{
    EXPECT_EQ(load(crafted(4, 0, packed(Image8(1, 1))))->getType(), Zem::Image::TYPE_IMAGE8);
    EXPECT_EQ(load(crafted(4, 1, packed(Image16(1, 1))))->getType(), Zem::Image::TYPE_IMAGE16);
    EXPECT_EQ(load(crafted(4, 2, packed(Image32(1, 1))))->getType(), Zem::Image::TYPE_IMAGE32);
    EXPECT_EQ(load(crafted(4, 3, packed(ImageColor(1, 1))))->getType(), Zem::Image::TYPE_COLOR);
}

TEST(ToolsImage, ofColoursWasAJpegInTheSecondVersion)
{
    std::unique_ptr<Zem::Image> const read = load(crafted(2, 3, jpeg()));

    // White stays what it is: only logos had it transparent.
    EXPECT_EQ(dynamic_cast<ImageColor const &>(*read).getPixel(0, 0), Color(255, 255, 255, 255));
    EXPECT_FALSE(read->hasAlphaChannel());
    EXPECT_EQ(load(crafted(3, 3, packed(ImageColor(5, 1))))->getWidth(), 5U);
    EXPECT_EQ(load(crafted(1, 3, packed(ImageColor(5, 1))))->getWidth(), 5U);
}

TEST(ToolsImage, hadNoAlphaFlagBeforeTheFourthVersion)
{
    EXPECT_EQ(load(crafted(3, 0, packed(Image8(5, 1))))->getWidth(), 5U);
    EXPECT_EQ(load(crafted(2, 1, packed(Image16(5, 1))))->getWidth(), 5U);
    EXPECT_EQ(load(crafted(1, 2, packed(Image32(5, 1))))->getWidth(), 5U);
}

TEST(DamagedToolsImage, isRefused)
{
    EXPECT_EQ(refusal(crafted(4, 4, packed(Image8(1, 1)))), NO_PICTURE);
    EXPECT_EQ(refusal(crafted(4, 0, packed(Image16(1, 1)))), NO_PICTURE);
    EXPECT_EQ(refusal(crafted(4, 0, "")), NO_PICTURE);
    EXPECT_EQ(refusal(crafted(4, 3, jpeg())), NO_PICTURE);
    EXPECT_EQ(refusal(crafted(2, 3, packed(ImageColor(1, 1)))), NO_PICTURE);
    EXPECT_EQ(refusal(BlockCrafter().block(4, Payload().u(0).u(0xffffffff)).bytes()), NO_PICTURE);
    EXPECT_EQ(refusal(crafted(5, 0, packed(Image8(1, 1)))), "wrong block version");
    EXPECT_EQ(refusal(crafted(0, 0, packed(Image8(1, 1)))), "wrong block version");
}

} // namespace
} // namespace Zem::Fig2
