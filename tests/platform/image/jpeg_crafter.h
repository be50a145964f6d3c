// jpeg_crafter.h: JPEG files of one colour.
#pragma once

#include <ZemStructVector.h>

#include <string>
#include <turbojpeg.h>

namespace Zem::Test {

/// Every pixel has the same samples, one to four bytes that `format` gives a meaning.
inline std::string flatJpeg(int width, int height, std::string const &pixel, TJPF format, TJSAMP sampling,
                            int flags = 0)
{
    std::string pixels;
    for (int i = 0; i < width * height; ++i)
        pixels += pixel;
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    tjhandle const encoder = tjInitCompress();
    tjCompress2(encoder, reinterpret_cast<unsigned char const *>(pixels.data()), width, 0, height, format, &bytes,
                &size, sampling, 95, flags);
    std::string const file(reinterpret_cast<char const *>(bytes), size);
    tjFree(bytes);
    tjDestroy(encoder);
    return file;
}

inline StructVector<unsigned char> buffer(std::string const &bytes)
{
    return {bytes.begin(), bytes.end()};
}

} // namespace Zem::Test
