// A template loads or is refused, and so is any other figure that it takes in.
#include "fuzz_blocks.h"

#include <ZemFig2Template.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using namespace Zem;
    Fuzz::readBlocks(data, size, [](IO::InStream *stream) {
        Fig2::FigureTemplate pattern;
        if (stream->isOfType(Fig2::FigureTemplate::TEMPLATE_FILE_TYPE_ID))
            pattern.load(stream, -1, -1);
        else
            pattern.import(stream, -1, -1);
        Fuzz::use(&pattern);
        Fuzz::saveBlocks(Fig2::FigureTemplate::TEMPLATE_FILE_TYPE_ID,
                         [&pattern](IO::OutStream *output) { pattern.save(output, -1, -1); });
    });
    return 0;
}
