// A figure file loads or is refused; one that loads can be updated, looked at, copied and saved.
#include "fuzz_blocks.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using namespace Zem;
    Fuzz::readBlocks(data, size, [](IO::InStream *stream) {
        Fig2::Figure figure;
        figure.load(stream, -1, -1);
        Fuzz::use(&figure);
        Fuzz::saveBlocks(Fig2::Figure::FILE_TYPE_ID, [&figure](IO::OutStream *output) { figure.save(output, -1, -1); });
    });
    return 0;
}
