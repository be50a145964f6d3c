// tiff_memory.h: TiffMemory, a TIFF file in memory under libtiff.
#pragma once

#include "image_limits.h"

#include <cstdarg>
#include <tiffio.h>

namespace Zem {

/// What libtiff has to say is kept for fail() and written nowhere.
class TiffMemory
{
public:
    /// For reading: the bytes must outlive this object. Both throw ImageError when libtiff refuses.
    explicit TiffMemory(ImageBytes bytes);
    /// For writing.
    explicit TiffMemory(StructVector<unsigned char> *bytes);
    ~TiffMemory() { close(); }
    TiffMemory(TiffMemory const &) = delete;
    TiffMemory &operator=(TiffMemory const &) = delete;

    TIFF *get() const { return tiff_; }
    std::size_t getSize() const { return content().size(); }
    /// Writing is complete after this only.
    void close();
    /// Throws ImageError when libtiff has complained.
    void requireNoError() const;
    /// Throws ImageError with the first complaint of libtiff.
    [[noreturn]] void fail() const;

private:
    void open(char const *mode);
    ImageBytes content() const { return written_ ? ImageBytes(*written_) : bytes_; }
    static TiffMemory *self(thandle_t handle) { return static_cast<TiffMemory *>(handle); }
    static int onError(TIFF *, void *self, char const *module, char const *format, va_list arguments);
    static int onWarning(TIFF *, void *, char const *, char const *, va_list) { return 1; }
    static tmsize_t onRead(thandle_t handle, void *target, tmsize_t size);
    static tmsize_t onWrite(thandle_t handle, void *source, tmsize_t size);
    static toff_t onSeek(thandle_t handle, toff_t offset, int whence);
    static int onClose(thandle_t) { return 0; }
    static toff_t onSize(thandle_t handle) { return self(handle)->getSize(); }

    ImageBytes bytes_;
    StructVector<unsigned char> *written_ = nullptr;
    std::uint64_t position_ = 0;
    TIFF *tiff_ = nullptr;
    char message_[160] = {};
};

} // namespace Zem
