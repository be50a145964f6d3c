// Files that end too early or have any of their bytes changed: a reason in the log or a picture of some pixels, nothing
// on the standard error output, no memory lost.
#include "jpeg_crafter.h"
#include "picture_files.h"
#include "png_crafter.h"
#include "tiff_crafter.h"

#include <AllocationPeak.h>

namespace Zem::Test {
namespace {

using namespace std::string_literals;

struct Sample
{
    char const *name;
    std::string bytes;
    std::size_t needed = bytes.size(); // less is no picture
};

std::ostream &operator<<(std::ostream &stream, Sample const &sample)
{
    return stream << sample.name;
}

PngCrafter png(PngFormat format, std::string const &rows)
{
    return {.width = 2, .height = 2, .format = format, .rows = rows};
}

std::string palettePng()
{
    PngCrafter file = png(PNG_PALETTE, "\0\0\x01\0\x01\0"s);
    file.palette = "\x10\x20\x30\x40\x50\x60"s;
    file.transparency = "\x7f"s;
    return file.bytes();
}

TiffCrafter tiff(std::uint32_t compression, std::string const &strip, bool bigEndian = false)
{
    return TiffCrafter(2, 2, 16, bigEndian).with(TIFF_COMPRESSION, {compression}).chunks({strip});
}

std::string planarTiff()
{
    return TiffCrafter(2, 2, 8)
        .with(TIFF_PHOTOMETRIC, {2})
        .with(TIFF_SAMPLES, {4})
        .with(TIFF_BITS, {8, 8, 8, 8})
        .with(TIFF_EXTRA, {1})
        .with(TIFF_PLANAR, {2})
        .with(TIFF_ORIENTATION, {6})
        .chunks({"1234", "5678", "90ab", "cdef"})
        .bytes();
}

std::string paletteTiff()
{
    return TiffCrafter(2, 1, 1)
        .with(TIFF_PHOTOMETRIC, {3})
        .with(TIFF_PALETTE, {0, 1, 2, 3, 4, 5})
        .chunks({"\x40"})
        .bytes();
}

/// The last four bytes of a TIFF, those that say where the next picture is, and the last two of a JPEG, which say that
/// it ends, tell nothing of the picture.
std::vector<Sample> samples()
{
    std::string const words = "\x01\x02\x03\x04\x05\x06\x07\x08"s;
    std::string const grey = flatJpeg(9, 9, "\x40", TJPF_GRAY, TJSAMP_GRAY);
    std::string const color = flatJpeg(9, 9, "\x40\x80\xc0", TJPF_RGB, TJSAMP_420, TJFLAG_PROGRESSIVE);
    auto const tiffSample = [](char const *name, std::string const &bytes) {
        return Sample{name, bytes, bytes.size() - 4};
    };
    return {{"greyPng", png(PNG_GREY, "\0\x01\x02\0\x03\x04"s).bytes()},
            {"colorPng", png(PNG_RGB_ALPHA, "\0"s + words + "\0"s + words).bytes()},
            {"palettePng", palettePng()},
            {"greyJpeg", grey, grey.size() - 2},
            {"colorJpeg", color, color.size() - 2},
            tiffSample("plainTiff", tiff(1, words).bytes()),
            tiffSample("bigEndianTiff", tiff(1, words, true).bytes()),
            tiffSample("lzwTiff", tiff(5, lzw(words)).with(TIFF_PREDICTOR, {2}).bytes()),
            tiffSample("deflatedTiff", tiff(8, deflated(words)).bytes()),
            tiffSample("packBitsTiff", tiff(32773, packBits(words)).bytes()),
            tiffSample("tiledTiff", TiffCrafter(3, 3, 8).tiles(16, 16).chunks({std::string(256, 'x')}).bytes()),
            tiffSample("planarTiff", planarTiff()),
            tiffSample("paletteTiff", paletteTiff())};
}

class DamagedImage : public PictureFiles, public testing::WithParamInterface<Sample>
{
protected:
    void SetUp() override { testing::internal::CaptureStderr(); }
    void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }
};
INSTANTIATE_TEST_SUITE_P(Every, DamagedImage, testing::ValuesIn(samples()),
                         [](auto const &sample) { return sample.param.name; });

TEST_P(DamagedImage, isReadWhenItIsWhole)
{
    EXPECT_TRUE(loadBytes(GetParam().bytes)) << log.getLog().toStdString();
}

TEST_P(DamagedImage, isRefusedWithAReasonWhereverItEnds)
{
    for (std::size_t size = 0; size < GetParam().needed; ++size)
        EXPECT_FALSE(refusal(GetParam().bytes.substr(0, size)).empty()) << size;
}

TEST_P(DamagedImage, takesLittleMemoryWhicheverByteIsChanged)
{
    // The largest of these files has 1.2 kB and may claim 4096 times that, for the picture and for a strip.
    constexpr std::size_t MOST = 20U << 20;
    std::string const &bytes = GetParam().bytes;
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        std::string mutant = bytes;
        mutant[place] = static_cast<char>(static_cast<unsigned char>(mutant[place]) ^ 0x7f);
        Support::AllocationPeak const peak;
        loadBytes(mutant);
        EXPECT_LT(peak.bytes(), MOST) << place;
    }
}

TEST_P(DamagedImage, isAPictureOrRefusedWithAReasonWhicheverByteIsChanged)
{
    std::string const &bytes = GetParam().bytes;
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        for (unsigned int change : {0x01U, 0x80U, 0xffU}) {
            std::string mutant = bytes;
            mutant[place] = static_cast<char>(static_cast<unsigned char>(mutant[place]) ^ change);
            qsizetype const before = log.getLog().size();
            auto const image = loadBytes(mutant);
            bool const isPicture = image && image->getWidth() > 0 && image->getHeight() > 0;
            EXPECT_TRUE(isPicture != (log.getLog().size() > before)) << place << ' ' << change;
        }
    }
}

} // namespace
} // namespace Zem::Test
