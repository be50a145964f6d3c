// The forms of a logo, and the blocks of older releases.
#include "crafted_element.h"

#include <ElementForms.h>
#include <ZemFig2Logo.h>
#include <jpeg_crafter.h>

#include <ZemImage.h>
#include <ZemParse.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::blockForm;
using Support::loadBlocks;
using Support::loadParameters;
using Support::loadText;
using Support::parameterForm;
using Support::Payload;
using Support::textForm;
using Support::thrownText;

constexpr unsigned int JPEG_TYPE = 3;
constexpr char const *NO_PICTURE = "loading image from figure stream failed";
constexpr char const *WRONG_VERSION = "wrong block version";

std::string bytesOf(StructVector<unsigned char> const &bytes)
{
    return {bytes.begin(), bytes.end()};
}

std::string packed(Zem::Image const &picture)
{
    StructVector<unsigned char> bytes;
    picture.compressImage(&bytes);
    return bytesOf(bytes);
}

/// A picture of 2 x 1 pixels, 5 and 200.
Image8 greyPicture()
{
    Image8 picture(2, 1);
    picture.getRow(0)[0] = 5;
    picture.getRow(0)[1] = 200;
    return picture;
}

std::string greyPixels(Logo const &logo)
{
    auto const *picture = dynamic_cast<Image8 const *>(logo.getImage());
    if (!picture)
        return "no grey picture";
    std::string text;
    for (unsigned int x = 0; x < picture->getWidth(); ++x)
        text += std::to_string(picture->getRow(0)[x]) + " ";
    return text;
}

/// The block of a picture up to the alpha flag.
Payload pictureFields(unsigned int type, std::string const &bytes)
{
    // A count and as many bytes, like a text.
    return Payload().u(type).s(bytes);
}

/// The block of AlignedElement: auto scale off, scaling 3, alignments 1, inner origin 0,0.
BlockCrafter withAligned(unsigned int elementVersion)
{
    BlockCrafter crafter = CraftedElement().blocks(elementVersion);
    if (elementVersion >= 8)
        crafter.block(1, Payload().b(false).d(3.0).u(1).u(1).v(0, 0));
    return crafter;
}

TEST(LogoBlocks, areNameAndPictureBehindTheBase)
{
    Logo logo;
    logo.setFileName("abc");
    Image8 const picture = greyPicture();
    std::string const before = Support::blocksOf(blockForm(logo));
    logo.setImage(picture.copy(true));

    // Name: 4 bytes of length, 3 letters, the flag. Picture: its bytes and 9 more.
    EXPECT_EQ(before.substr(before.rfind("3:")), "3:8 ");
    EXPECT_EQ(Support::blocksOf(blockForm(logo)), before + "3:" + std::to_string(packed(picture).size() + 9) + " ");
}

TEST(LogoBlocks, bringThePictureBack)
{
    Logo logo;
    logo.setFileName("abc");
    logo.setImage(greyPicture().copy(true));
    Logo read;
    read.setImage(new Image16(9, 9));

    loadBlocks(read, blockForm(logo));

    EXPECT_EQ(read.getFileName(), "abc");
    EXPECT_EQ(greyPixels(read), "5 200 ");
}

TEST(LogoBlocks, bringBackThatThereIsNoPicture)
{
    Logo read;
    read.setImage(new Image16(9, 9));

    loadBlocks(read, blockForm(Logo()));

    EXPECT_EQ(read.getImage(), nullptr);
}

TEST(LogoBlocks, keepPicturesOfEachClass)
{
    auto const keeps = [](Zem::Image *picture) {
        Logo logo;
        logo.setImage(picture);
        Logo read;
        loadBlocks(read, blockForm(logo));
        return read.getImage() && read.getImage()->getType() == picture->getType() &&
               read.getImage()->getWidth() == 3 && read.getImage()->getHeight() == 2 &&
               read.getImage()->hasAlphaChannel() == picture->hasAlphaChannel();
    };
    auto *transparent = new ImageColor(3, 2);
    transparent->setHasAlphaChannel(true);

    EXPECT_TRUE(keeps(new Image8(3, 2)));
    EXPECT_TRUE(keeps(new Image16(3, 2)));
    EXPECT_TRUE(keeps(new Image32(3, 2)));
    EXPECT_TRUE(keeps(new ImageColor(3, 2)));
    EXPECT_TRUE(keeps(transparent));
}

TEST(LogoBlocks, holdTheAlphaFlagBesideThePicture)
{
    ImageColor const opaque(3, 2);
    Logo read;

    loadBlocks(read, withAligned(10)
                         .block(3, Payload().s("").b(true))
                         .block(3, pictureFields(JPEG_TYPE, packed(opaque)).b(true))
                         .bytes());

    EXPECT_TRUE(read.getImage()->hasAlphaChannel());
}

TEST(OldLogoBlocks, heldTheScaleInTheSecondVersion)
{
    Logo read;
    read.setAutoScale(false);

    // Name, a flag that means nothing now, no picture, auto scale, scaling.
    loadBlocks(read, withAligned(7).block(2, Payload().s("old").b(false).b(false).b(true).d(2.5)).bytes());

    EXPECT_EQ(read.getFileName(), "old");
    EXPECT_EQ(read.getImage(), nullptr);
    EXPECT_TRUE(read.getAutoScale());
    EXPECT_EQ(read.getScaling(), 2.5);
}

TEST(OldLogoBlocks, heldNoScaleInTheOtherVersions)
{
    for (unsigned int version : {1U, 3U}) {
        Logo read;
        read.setScaling(4.0);

        loadBlocks(read, withAligned(7).block(version, Payload().s("old").b(true).b(false)).bytes());

        EXPECT_EQ(read.getFileName(), "old");
        EXPECT_EQ(read.getImage(), nullptr);
        EXPECT_EQ(read.getScaling(), 4.0);
    }
}

TEST(OldLogoBlocks, behindANewElementHoldNoScale)
{
    Logo read;

    loadBlocks(read, withAligned(8).block(2, Payload().s("old").b(false)).bytes());

    EXPECT_EQ(read.getFileName(), "old");
    EXPECT_EQ(read.getScaling(), 3.0);
}

/// A colour picture of 8 x 8 pixels as older releases packed it.
std::string jpegOf(std::string const &pixel)
{
    return Test::flatJpeg(8, 8, pixel, TJPF_RGB, TJSAMP_444);
}

Logo loadOldColours(unsigned int version, std::string const &pixel, bool alphaFlag)
{
    Payload picture = pictureFields(JPEG_TYPE, jpegOf(pixel));
    if (version >= 2)
        picture.b(alphaFlag);
    Logo read;
    loadBlocks(read, withAligned(10).block(3, Payload().s("").b(true)).block(version, picture).bytes());
    return read;
}

Color pixelOf(Logo const &logo, unsigned int x, unsigned int y)
{
    auto const *picture = dynamic_cast<ImageColor const *>(logo.getImage());
    return picture ? picture->getPixel(x, y) : Color(1, 2, 3, 4);
}

Color firstPixel(Logo const &logo)
{
    return pixelOf(logo, 0, 0);
}

TEST(OldLogoPictures, ofColoursAreJpegs)
{
    Logo const read = loadOldColours(2, std::string(3, '\0'), false);

    EXPECT_EQ(read.getImage()->getWidth(), 8U);
    EXPECT_EQ(firstPixel(read), Color(0, 0, 0));
    EXPECT_FALSE(read.getImage()->hasAlphaChannel());
}

TEST(OldLogoPictures, tookTheAlphaFlagFromTheirBlock)
{
    EXPECT_TRUE(loadOldColours(2, std::string(3, '\0'), true).getImage()->hasAlphaChannel());
}

TEST(OldLogoPictures, withoutAlphaFlagShowNothingWhereTheyAreWhite)
{
    Logo const white = loadOldColours(1, std::string(3, '\xff'), false);
    Logo const black = loadOldColours(1, std::string(3, '\0'), false);

    EXPECT_EQ(firstPixel(white), Color(255, 255, 255, 0));
    EXPECT_EQ(pixelOf(white, 7, 0), Color(255, 255, 255, 0));
    EXPECT_EQ(pixelOf(white, 0, 7), Color(255, 255, 255, 0));
    EXPECT_TRUE(white.getImage()->hasAlphaChannel());
    EXPECT_EQ(firstPixel(black), Color(0, 0, 0, 255));
}

TEST(OldLogoPictures, withAlphaFlagStayWhite)
{
    EXPECT_EQ(firstPixel(loadOldColours(2, std::string(3, '\xff'), false)), Color(255, 255, 255, 255));
}

TEST(OldLogoPictures, ofGreyValuesArePackedAsToday)
{
    Logo read;

    loadBlocks(
        read,
        withAligned(10).block(3, Payload().s("").b(true)).block(1, pictureFields(0, packed(greyPicture()))).bytes());

    EXPECT_EQ(greyPixels(read), "5 200 ");
}

/// Why a picture block behind a logo's own is refused.
std::string refusal(unsigned int version, Payload const &picture)
{
    std::string const bytes = withAligned(10).block(3, Payload().s("").b(true)).block(version, picture).bytes();
    return thrownText<IO::StreamException>([&bytes] {
        Logo read;
        loadBlocks(read, bytes);
    });
}

TEST(DamagedLogo, isRefused)
{
    EXPECT_EQ(refusal(3, pictureFields(4, packed(greyPicture())).b(false)), NO_PICTURE);
    EXPECT_EQ(refusal(3, pictureFields(1, packed(greyPicture())).b(false)), NO_PICTURE);
    EXPECT_EQ(refusal(3, pictureFields(3, jpegOf("abc")).b(false)), NO_PICTURE);
    EXPECT_EQ(refusal(2, pictureFields(3, packed(ImageColor(1, 1))).b(false)), NO_PICTURE);
    EXPECT_EQ(refusal(3, Payload().u(0).u(4000000000U)), NO_PICTURE);
    EXPECT_EQ(refusal(4, pictureFields(0, packed(greyPicture())).b(false)), WRONG_VERSION);
    EXPECT_NE(refusal(3, pictureFields(0, packed(greyPicture()))), "nothing thrown");
}

TEST(DamagedLogo, ofANewerVersionIsRefused)
{
    std::string const bytes = withAligned(10).block(4, Payload().s("").b(false)).bytes();
    Logo read;

    EXPECT_EQ(thrownText<IO::StreamException>([&] { loadBlocks(read, bytes); }), WRONG_VERSION);
}

TEST(LogoText, standsBehindThatOfTheBase)
{
    Logo logo;
    logo.setFileName("abc");

    // First AlignedElement with version, auto scale, scaling, alignments and inner origin; last version, name, no
    // picture.
    EXPECT_TRUE(textForm(logo).starts_with("1 1 1 1 1 0 0 "));
    EXPECT_TRUE(textForm(logo).ends_with(" 1 abc 0 "));
}

TEST(LogoText, bringsThePictureBack)
{
    Logo logo;
    logo.setFileName("a b");
    logo.setImage(greyPicture().copy(true));
    Logo read;

    EXPECT_TRUE(loadText(read, textForm(logo)));

    EXPECT_EQ(read.getFileName(), "a b");
    EXPECT_EQ(greyPixels(read), "5 200 ");
    EXPECT_TRUE(loadText(read, textForm(Logo())));
    EXPECT_EQ(read.getImage(), nullptr);
}

TEST(LogoText, holdsTheAlphaFlagBesideThePicture)
{
    Logo opaque;
    opaque.setImage(new ImageColor(3, 2));
    std::string text = textForm(opaque);
    ASSERT_TRUE(text.ends_with(" 0 "));
    text[text.size() - 2] = '1';
    Logo read;

    EXPECT_TRUE(loadText(read, text));

    EXPECT_TRUE(read.getImage()->hasAlphaChannel());
}

TEST(LogoText, thatIsCutLeavesThePicture)
{
    Logo logo;
    logo.setImage(new Image16(2, 2));
    std::string const text = textForm(logo);
    Logo read;
    read.setImage(greyPicture().copy(true));

    EXPECT_FALSE(loadText(read, text.substr(0, text.size() - 6)));

    EXPECT_EQ(greyPixels(read), "5 200 ");
}

TEST(LogoText, whosePictureIsNoneFailsAndLeavesThePicture)
{
    std::string text = textForm(Logo());
    text.replace(text.size() - 2, 2, "1 0 AAAA 0 ");
    Logo read;
    read.setImage(greyPicture().copy(true));

    EXPECT_FALSE(loadText(read, text));

    EXPECT_EQ(greyPixels(read), "5 200 ");
}

class LogoParameters : public testing::Test
{
protected:
    /// The path of a picture file of 2 x 1 pixels.
    std::string writePicture()
    {
        QString const name = folder.filePath("grey.png");
        EXPECT_TRUE(greyPicture().saveImage(name, nullptr));
        return name.toStdString();
    }
    static std::string fileNameEntry(std::string const &name) { return "file_name = \"" + name + "\"\n"; }

    QTemporaryDir folder;
    Logo logo;
};

TEST_F(LogoParameters, endWithTheFileName)
{
    logo.setFileName("a");

    EXPECT_TRUE(parameterForm(logo).ends_with("\n" + fileNameEntry("a")));
}

TEST_F(LogoParameters, loadThePictureOfAnotherName)
{
    std::string const name = writePicture();

    loadParameters(logo, fileNameEntry(name));

    EXPECT_EQ(logo.getFileName().toStdString(), name);
    EXPECT_EQ(greyPixels(logo), "5 200 ");
    EXPECT_FALSE(logo.isValid());
}

TEST_F(LogoParameters, leaveThePictureOfTheSameName)
{
    std::string const name = writePicture();
    logo.setFileName(QString::fromStdString(name));
    logo.setImage(new Image16(9, 9));

    loadParameters(logo, fileNameEntry(name));

    EXPECT_EQ(logo.getImage()->getWidth(), 9U);
}

TEST_F(LogoParameters, ofAFileWithoutPictureTakeThePictureAway)
{
    logo.setImage(new Image16(9, 9));

    loadParameters(logo, fileNameEntry(folder.filePath("missing.png").toStdString()));

    EXPECT_TRUE(logo.getFileName().endsWith("/missing.png"));
    EXPECT_EQ(logo.getImage(), nullptr);
}

TEST_F(LogoParameters, readTheOlderKeysOfTheScale)
{
    EXPECT_EQ(loadParameters(logo, "auto_compute = false\nscale = 2.5\n"), "");

    EXPECT_FALSE(logo.getAutoScale());
    EXPECT_EQ(logo.getScaling(), 2.5);
}

} // namespace
} // namespace Zem::Fig2
