// A picture is read or refused, from a file, a packed form or a buffer; what was read is packed and unpacked the same.
#include <ZemErrorLog.h>
#include <ZemImage.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace Zem;
using Bytes = StructVector<unsigned char>;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

bool isSame(Image const &one, Image const &other)
{
    std::size_t const rowBytes = one.getWidth() * (one.getBpp() / 8);
    bool same = one.getWidth() == other.getWidth() && one.getHeight() == other.getHeight() &&
                one.hasAlphaChannel() == other.hasAlphaChannel();
    for (unsigned int y = 0; same && y < one.getHeight(); ++y)
        same = std::memcmp(one.getRowBytes(y), other.getRowBytes(y), rowBytes) == 0;
    return same;
}

void packAndUnpack(Image const &image)
{
    Bytes packed;
    image.compressImage(&packed);
    std::unique_ptr<Image> const again(image.copy(false));
    require(again->uncompressImage(packed) && isSame(image, *again));
}

/// A file that needs no disk: one for all runs.
class MemoryFile
{
public:
    MemoryFile() : file_(::memfd_create("picture", 0)) { require(file_ >= 0); }
    ~MemoryFile() { ::close(file_); }
    MemoryFile(MemoryFile const &) = delete;
    MemoryFile &operator=(MemoryFile const &) = delete;

    void fill(Bytes const &bytes) const
    {
        require(::ftruncate(file_, 0) == 0);
        require(::pwrite(file_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    }
    QString getName() const { return QStringLiteral("/proc/self/fd/%1").arg(file_); }

private:
    int file_;
};

void readFile(Bytes const &bytes)
{
    static MemoryFile const file;
    file.fill(bytes);
    ErrorLog log(false);
    std::unique_ptr<Image> const image(Image::loadImage(file.getName(), &log, -1, -1));
    require((image != nullptr) == log.getLog().isEmpty());
    if (image)
        packAndUnpack(*image);
}

template <class Picture>
void unpack(Bytes const &bytes)
{
    Picture image;
    if (image.uncompressImage(bytes))
        packAndUnpack(image);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    Bytes const bytes(data, data + size);
    readFile(bytes);
    unpack<Image8>(bytes);
    unpack<Image16>(bytes);
    unpack<Image32>(bytes);
    unpack<ImageColor>(bytes);
    ImageColor color;
    if (color.readJPEGFromBuffer(bytes))
        packAndUnpack(color);
    return 0;
}
