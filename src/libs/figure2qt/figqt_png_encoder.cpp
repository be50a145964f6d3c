#include "figqt_png_encoder.h"

#include "figqt_run_packer.h"
#include "figqt_units.h"

#include <zlib.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <thread>
#include <vector>

namespace Zem::Fig2Qt {

namespace {

constexpr char SIGNATURE[] = "\x89PNG\r\n\x1a\n";
constexpr std::size_t STRIP_BYTES = 1U << 20U;
constexpr unsigned char FILTER_UP = 2;
constexpr std::size_t BLOCK = 64; // pixels
constexpr char GREY = 0;
constexpr char RGB = 2;

void appendWord(std::string *bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes->push_back(static_cast<char>(value >> shift & 0xffU));
}

std::string header(QImage const &image, bool grey)
{
    std::string data;
    appendWord(&data, static_cast<std::uint32_t>(image.width()));
    appendWord(&data, static_cast<std::uint32_t>(image.height()));
    data += {8, grey ? GREY : RGB, 0, 0, 0};
    return pngChunk("IHDR", data);
}

std::string resolution(double dpi)
{
    auto const perMetre = static_cast<std::uint32_t>(std::lround(std::min(dpi * 1000.0 / MM_PER_INCH, 4e9)));
    std::string data;
    appendWord(&data, perMetre);
    appendWord(&data, perMetre);
    data += '\1';
    return pngChunk("pHYs", data);
}

QRgb const *rowOf(QImage const &image, int y)
{
    return reinterpret_cast<QRgb const *>(image.constScanLine(y));
}

bool isGrey(QImage const &image)
{
    int const width = image.width();
    for (int y = 0; y < image.height(); ++y) {
        QRgb const *row = rowOf(image, y);
        std::uint32_t difference = 0;
        for (int x = 0; x < width; ++x)
            difference |= (row[x] ^ row[x] >> 8U) & 0xffffU;
        if (difference != 0)
            return false;
    }
    return true;
}

/// The difference of each sample of some pixels to the one in the row above.
void subtractRow(QRgb const *row, QRgb const *above, std::size_t count, bool grey, unsigned char *to)
{
    auto const difference = [&](std::size_t x, unsigned shift) {
        return static_cast<unsigned char>((row[x] >> shift) - (above[x] >> shift));
    };
    if (grey) {
        for (std::size_t x = 0; x < count; ++x)
            to[x] = difference(x, 0);
        return;
    }
    for (std::size_t x = 0; x < count; ++x, to += 3) {
        to[0] = difference(x, 16);
        to[1] = difference(x, 8);
        to[2] = difference(x, 0);
    }
}

/// The Adler-32 checksum of bytes most of which are 0.
class Checksum
{
public:
    void add(std::span<unsigned char const> bytes)
    {
        value_ = adler32(value_, bytes.data(), static_cast<uInt>(bytes.size()));
    }
    /// The sum of the bytes stays, and counts once more for each of them.
    void addZeros(std::size_t count)
    {
        uLong const sum = value_ & 0xffffU;
        value_ = ((value_ >> 16U) + count % MODULUS * sum) % MODULUS << 16U | sum;
    }
    std::uint32_t getValue() const { return static_cast<std::uint32_t>(value_); }

private:
    static constexpr uLong MODULUS = 65521;
    uLong value_ = 1;
};

/// What a thread needs to pack one strip after the other.
struct Bench
{
    std::vector<unsigned char> rows;
    RunPacker packer;
};

/// Some rows of the picture, packed on their own so that several can be packed at once.
class Strip
{
public:
    Strip(QImage const &image, bool grey, int first, int last) : image_(image), grey_(grey), first_(first), last_(last)
    {
    }

    /// `final` for the strip that ends the stream. Throws std::bad_alloc.
    void pack(bool final, Bench *bench)
    {
        filterRows(&bench->rows);
        size_ = bench->rows.size();
        bench->packer.pack(bench->rows, final, &packed_);
    }

    std::string takePacked() { return std::move(packed_); }
    std::size_t getSize() const { return size_; }
    std::uint32_t getChecksum() const { return checksum_.getValue(); }

private:
    /// Most pixels are those above them; they are told in blocks.
    void filterRows(std::vector<unsigned char> *rows)
    {
        auto const width = static_cast<std::size_t>(image_.width());
        std::size_t const samples = grey_ ? 1 : 3;
        std::vector<QRgb> const nothing(width);
        QRgb const *above = first_ > 0 ? rowOf(image_, first_ - 1) : nothing.data();
        rows->assign(static_cast<std::size_t>(last_ - first_) * (width * samples + 1), 0);
        unsigned char *to = rows->data();
        for (int y = first_; y < last_; ++y) {
            QRgb const *row = rowOf(image_, y);
            *to = FILTER_UP;
            checksum_.add({to++, 1});
            for (std::size_t x = 0; x < width; x += BLOCK) {
                std::size_t const count = std::min(BLOCK, width - x);
                filterBlock(row + x, above + x, count, {to, count * samples});
                to += count * samples;
            }
            above = row;
        }
    }

    void filterBlock(QRgb const *row, QRgb const *above, std::size_t count, std::span<unsigned char> to)
    {
        if (std::memcmp(row, above, count * sizeof(QRgb)) == 0)
            return checksum_.addZeros(to.size());
        subtractRow(row, above, count, grey_, to.data());
        checksum_.add(to);
    }

    QImage const &image_;
    bool grey_;
    int first_;
    int last_;
    std::string packed_;
    std::size_t size_ = 0;
    Checksum checksum_;
};

std::vector<Strip> cutIntoStrips(QImage const &image, bool grey)
{
    std::size_t const rowBytes = static_cast<std::size_t>(image.width()) * (grey ? 1 : 3) + 1;
    int const rows = static_cast<int>(std::max<std::size_t>(1, STRIP_BYTES / rowBytes));
    std::vector<Strip> strips;
    for (int first = 0; first < image.height(); first += rows)
        strips.emplace_back(image, grey, first, std::min(first + rows, image.height()));
    return strips;
}

void packAll(std::vector<Strip> *strips, unsigned int threads)
{
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> failed = false;
    auto const work = [&] {
        Bench bench;
        for (std::size_t i = next++; i < strips->size(); i = next++) {
            try {
                (*strips)[i].pack(i + 1 == strips->size(), &bench);
            } catch (std::bad_alloc const &) {
                failed = true;
            }
        }
    };
    unsigned int const count = threads ? threads : std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::jthread> helpers;
    for (unsigned int i = 1; i < std::min<std::size_t>(count, strips->size()); ++i)
        helpers.emplace_back(work);
    work();
    helpers.clear();
    if (failed)
        throw std::bad_alloc();
}

} // namespace

std::string pngSignature()
{
    return {SIGNATURE, 8};
}

std::string pngChunk(std::string_view type, std::string_view data)
{
    std::string result;
    result.reserve(data.size() + 12);
    appendWord(&result, static_cast<std::uint32_t>(data.size()));
    result += type;
    result += data;
    auto const *covered = reinterpret_cast<Bytef const *>(result.data() + 4);
    appendWord(&result, static_cast<std::uint32_t>(crc32(0, covered, static_cast<uInt>(data.size() + 4))));
    return result;
}

void encodePng(QImage const &image, double dpi, unsigned int threads,
               std::function<void(std::string_view)> const &write)
{
    bool const grey = isGrey(image);
    write(pngSignature());
    write(header(image, grey));
    write(resolution(dpi));
    std::vector<Strip> strips = cutIntoStrips(image, grey);
    packAll(&strips, threads);
    auto checksum = static_cast<std::uint32_t>(adler32(0, nullptr, 0));
    for (std::size_t i = 0; i < strips.size(); ++i) {
        checksum = static_cast<std::uint32_t>(
            adler32_combine(checksum, strips[i].getChecksum(), static_cast<z_off_t>(strips[i].getSize())));
        std::string data = i == 0 ? std::string("\x78\x01") : std::string();
        data += strips[i].takePacked();
        if (i + 1 == strips.size())
            appendWord(&data, checksum);
        write(pngChunk("IDAT", data));
    }
    write(pngChunk("IEND", {}));
}

} // namespace Zem::Fig2Qt
