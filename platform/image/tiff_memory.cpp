#include "tiff_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>
#include <utility>

namespace Zem {

TiffMemory::TiffMemory(ImageBytes bytes) : bytes_(bytes)
{
    open("rm"); // m: no mapping, all bytes come through onRead()
}

TiffMemory::TiffMemory(StructVector<unsigned char> *bytes) : written_(bytes)
{
    open("w");
}

void TiffMemory::open(char const *mode)
{
    std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> const options(TIFFOpenOptionsAlloc(),
                                                                                   TIFFOpenOptionsFree);
    if (!options) {
        throw std::bad_alloc();
    }
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), onError, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), onWarning, this);
    TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(Image::MAX_BYTES));
    tiff_ = TIFFClientOpenExt("TIFF", mode, this, onRead, onWrite, onSeek, onClose, onSize, nullptr, nullptr,
                              options.get());
    if (!tiff_) {
        fail();
    }
}

void TiffMemory::close()
{
    if (TIFF *const tiff = std::exchange(tiff_, nullptr)) {
        TIFFClose(tiff);
    }
}

void TiffMemory::requireNoError() const
{
    if (message_[0] != '\0') {
        fail();
    }
}

void TiffMemory::fail() const
{
    throw ImageError(QString::fromLatin1(message_[0] != '\0' ? message_ : "the file is no complete TIFF"));
}

int TiffMemory::onError(TIFF *, void *self, char const *, char const *format, va_list arguments)
{
    auto *const memory = static_cast<TiffMemory *>(self);
    if (memory->message_[0] == '\0') {
        std::vsnprintf(memory->message_, sizeof memory->message_, format, arguments);
    }
    return 1; // nobody else is to be told
}

tmsize_t TiffMemory::onRead(thandle_t handle, void *target, tmsize_t size)
{
    TiffMemory *const memory = self(handle);
    ImageBytes const content = memory->content();
    if (size <= 0 || memory->position_ >= content.size()) {
        return 0;
    }
    auto const begin = static_cast<std::size_t>(memory->position_);
    std::size_t const count = std::min(static_cast<std::size_t>(size), content.size() - begin);
    std::memcpy(target, content.data() + begin, count);
    memory->position_ += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t TiffMemory::onWrite(thandle_t handle, void *source, tmsize_t size)
{
    TiffMemory *const memory = self(handle);
    if (!memory->written_ || size <= 0) {
        return 0;
    }
    auto const begin = static_cast<std::size_t>(memory->position_);
    auto const count = static_cast<std::size_t>(size);
    try {
        memory->written_->resize(std::max(memory->written_->size(), begin + count));
    } catch (std::bad_alloc const &) {
        return 0; // libtiff is not to be left by an exception; it reports this itself
    }
    std::memcpy(memory->written_->data() + begin, source, count);
    memory->position_ += count;
    return size;
}

toff_t TiffMemory::onSeek(thandle_t handle, toff_t offset, int whence)
{
    TiffMemory *const memory = self(handle);
    std::uint64_t const base = whence == SEEK_CUR ? memory->position_ : whence == SEEK_END ? memory->getSize() : 0;
    memory->position_ = base + offset; // wraps for steps back, as libtiff means it
    return memory->position_;
}

} // namespace Zem
