// tiff_layout.h: how the first picture of a TIFF file lies in it, checked.
#pragma once

#include "tiff_memory.h"

#include <array>

namespace Zem {

/// A chunk is a strip or a tile: the pieces in which a TIFF file is packed.
struct TiffLayout
{
    enum class Samples { UNSIGNED, SIGNED, FLOAT };
    enum class Alpha { NONE, STRAIGHT, MULTIPLIED };
    enum class Meaning { GREY, GREY_FROM_WHITE, PALETTE, RGB };

    std::uint32_t width = 0;
    std::uint32_t height = 0;
    unsigned int bits = 0;       // of a sample
    unsigned int pixelSteps = 0; // samples from one pixel to the next in a row of a chunk
    Samples samples = Samples::UNSIGNED;
    Meaning meaning = Meaning::GREY;
    Alpha alpha = Alpha::NONE;
    unsigned int alphaSample = 0;
    bool separate = false; // each sample has chunks of its own
    bool tiled = false;
    std::uint32_t chunkWidth = 0;
    std::uint32_t chunkHeight = 0;
    std::size_t chunkRowBytes = 0;
    unsigned int orientation = 1;
    std::array<Color, 256> palette{};
    Image::Type type = Image::TYPE_COLOR;

    unsigned int colors() const { return meaning == Meaning::RGB ? 3 : 1; }
};

/// Nothing of the picture has been read yet. Throws ImageError for what is not supported or cannot be.
TiffLayout readTiffLayout(TiffMemory const &file);

} // namespace Zem
