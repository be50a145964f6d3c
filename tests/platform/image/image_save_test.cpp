// Pictures are written so that other programs and we read them back.
#include "picture_files.h"

#include <QtCore/QFileInfo>

#include <limits>

namespace Zem::Test {
namespace {

class SavedImage : public PictureFiles
{
protected:
    template <class Picture>
    void expectBack(Picture const &image, char const *name)
    {
        ASSERT_TRUE(image.saveImage(path(name), &log)) << log.getLog().toStdString();
        auto const read = load(path(name));
        ASSERT_TRUE(read) << log.getLog().toStdString();
        EXPECT_EQ(read->getWidth(), image.getWidth());
        EXPECT_EQ(read->hasAlphaChannel(), image.hasAlphaChannel());
        EXPECT_EQ(pixelsOf<Picture>(read.get()), pixelsOf<Picture>(&image)) << name;
    }
};

/// 600 by 700: several strips of a TIFF. Every value of 16 bits is there.
template <class Picture>
Picture ramp()
{
    Picture image(600, 700);
    for (unsigned int y = 0; y < 700; ++y)
        for (unsigned int x = 0; x < 600; ++x)
            image.getRow(y)[x] = static_cast<typename Picture::Pixel>(y * 600 + x);
    return image;
}

ImageColor colors(bool alpha)
{
    ImageColor image(300, 400);
    image.setHasAlphaChannel(alpha);
    for (unsigned int y = 0; y < 400; ++y)
        for (unsigned int x = 0; x < 300; ++x) {
            auto const byte = [&](unsigned int factor) { return static_cast<unsigned char>(x * factor + y); };
            image.setPixel(x, y, Color(byte(1), byte(3), byte(5), alpha ? byte(7) : 255));
        }
    return image;
}

TEST_F(SavedImage, ofBytesIsTheSameAgain)
{
    expectBack(ramp<Image8>(), "a.png");
    expectBack(ramp<Image8>(), "a.tif");
}

TEST_F(SavedImage, ofWordsIsTheSameAgainToTheLastBit)
{
    expectBack(ramp<Image16>(), "a.png");
    expectBack(ramp<Image16>(), "a.TIFF");
}

TEST_F(SavedImage, ofFloatsIsTheSameAgainInATiff)
{
    Image32 image = ramp<Image32>();
    image.getRow(0)[0] = -1.25e-30F;
    image.getRow(0)[1] = std::numeric_limits<float>::infinity();
    expectBack(image, "a.tif");
}

TEST_F(SavedImage, ofColoursIsTheSameAgainWithAlphaAndWithout)
{
    expectBack(colors(false), "a.png");
    expectBack(colors(true), "a.png");
    expectBack(colors(false), "a.tif");
    expectBack(colors(true), "a.tif");
}

TEST_F(SavedImage, ofOnePixelIsTheSameAgain)
{
    expectBack(Image8(1, 1), "a.png");
    expectBack(Image16(1, 1), "a.tif");
    expectBack(ImageColor(1, 1), "a.tif");
}

TEST_F(SavedImage, withTheLongestSideIsTheSameAgain)
{
    expectBack(Image8(32768, 1), "a.png");
    expectBack(Image8(1, 32768), "a.png");
    expectBack(Image8(32768, 1), "a.tif");
    expectBack(Image8(1, 32768), "a.tif");
}

TEST_F(SavedImage, isChangedByNothingWhileItIsWritten)
{
    Image16 const image = ramp<Image16>();
    Image16 const before = image;
    ASSERT_TRUE(image.saveImage(path("a.tif"), &log));
    EXPECT_EQ(pixelsOf<Image16>(&image), pixelsOf<Image16>(&before));
}

TEST_F(SavedImage, ofFloatsIsNoPng)
{
    EXPECT_FALSE(Image32(1, 1).saveImage(path("a.png"), &log));
    EXPECT_EQ(log.getLog(), path("a.png") + QStringLiteral(": a PNG holds no picture of 32 bit grey values\n"));
    EXPECT_FALSE(QFileInfo::exists(path("a.png")));
}

TEST_F(SavedImage, withoutPixelsIsRefusedAndTheOldFileStays)
{
    write(path("a.png"), "old");
    EXPECT_FALSE(Image8().saveImage(path("a.png"), &log));
    EXPECT_EQ(log.getLog(), path("a.png") + QStringLiteral(": the picture has no pixels\n"));
    EXPECT_EQ(QFileInfo(path("a.png")).size(), 3);
}

TEST_F(SavedImage, needsANameThatTellsTheFormat)
{
    EXPECT_FALSE(Image8(1, 1).saveImage(path("a.jpg"), &log));
    EXPECT_FALSE(Image8(1, 1).saveImage(path("a"), nullptr));
    EXPECT_EQ(log.getLog(), path("a.jpg") + QStringLiteral(": pictures are written to .png, .tif and .tiff files\n"));
}

TEST_F(SavedImage, toAFolderThatIsMissingNamesFileAndReason)
{
    EXPECT_FALSE(Image8(1, 1).saveImage(path("no/a.png"), &log));
    EXPECT_EQ(log.getLog(),
              path("no/a.png") + QStringLiteral(": cannot save, step \"create\" failed: No such file or directory\n"));
}

} // namespace
} // namespace Zem::Test
