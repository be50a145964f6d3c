// What is told of files that are pictures, and of those that are none.
#include "jpeg_crafter.h"
#include "picture_files.h"
#include "png_crafter.h"
#include "tiff_crafter.h"

#include <ZemError.h>

#include <unistd.h>

namespace Zem::Test {
namespace {

using namespace std::string_literals;

class ImageFileTest : public PictureFiles
{
protected:
    /// -1 for a file that is no picture.
    int typeOf(std::string const &bytes)
    {
        write(path("a"), bytes);
        auto type = Image::FileType();
        return Image::getFileType(path("a"), &type) ? type : -1;
    }
};

TEST_F(ImageFileTest, isKnownByItsFirstBytes)
{
    EXPECT_EQ(typeOf(PngCrafter{.rows = "\0\0"s}.bytes()), Image::FILE_PNG);
    EXPECT_EQ(typeOf(flatJpeg(1, 1, "\x80", TJPF_GRAY, TJSAMP_GRAY)), Image::FILE_JPEG);
    EXPECT_EQ(typeOf(TiffCrafter(1, 1, 8).bytes()), Image::FILE_TIFF);
    EXPECT_EQ(typeOf(TiffCrafter(1, 1, 8, true).bytes()), Image::FILE_TIFF);
}

TEST_F(ImageFileTest, ofAnotherKindIsNoPicture)
{
    EXPECT_EQ(typeOf(""), -1);
    EXPECT_EQ(typeOf("\x89PNG"), -1);
    EXPECT_EQ(typeOf("GIF89a and more"), -1);
    EXPECT_EQ(refusal("GIF89a and more"), "is no PNG, JPEG or TIFF file");
    EXPECT_EQ(refusal(""), "is no PNG, JPEG or TIFF file");
}

TEST_F(ImageFileTest, thatIsMissingIsNoPicture)
{
    auto type = Image::FILE_TIFF;
    EXPECT_FALSE(Image::getFileType(path("missing"), &type));
    EXPECT_EQ(type, Image::FILE_TIFF);
    EXPECT_FALSE(load(path("missing")));
    EXPECT_EQ(log.getLog(), path("missing") + QStringLiteral(": No such file or directory\n"));
}

TEST_F(ImageFileTest, thatIsAFolderIsNoPicture)
{
    auto type = Image::FileType();
    EXPECT_FALSE(Image::getFileType(path("."), &type));
    EXPECT_FALSE(load(path(".")));
    EXPECT_EQ(log.getLog(), path(".") + QStringLiteral(": is not a file\n"));
}

TEST_F(ImageFileTest, largerThanTwoGibibytesIsRefusedUnread)
{
    write(path("large"), PngCrafter{.rows = "\0\0"s}.bytes());
    ASSERT_EQ(::truncate(QFile::encodeName(path("large")).constData(), 0x80000000L), 0); // takes no room
    EXPECT_FALSE(load(path("large")));
    EXPECT_EQ(log.getLog(), path("large") + QStringLiteral(": the file is larger than 2 GiB\n"));
}

TEST_F(ImageFileTest, needsNoLog)
{
    EXPECT_FALSE(Image::loadImage(path("missing"), nullptr, -1, -1));
}

TEST_F(ImageFileTest, needsAPlaceForItsType)
{
    EXPECT_THROW(Image::getFileType(path("missing"), nullptr), ProgError);
}

} // namespace
} // namespace Zem::Test
