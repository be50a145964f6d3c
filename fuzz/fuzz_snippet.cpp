// A snippet loads or is refused; one that loads has a figure that can be used, and can be copied and saved.
#include "fuzz_blocks.h"

#include <ZemFig2Snippet.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using namespace Zem;
    Fuzz::readBlocks(data, size, [](IO::InStream *stream) {
        Fig2::Snippet snippet;
        snippet.load(stream);
        Fig2::Snippet copy(snippet);
        try {
            if (Fig2::Figure *figure = copy.getFigure())
                Fuzz::use(figure);
        } catch (ProgError const &) {
            // The first look at the figure updates it.
        }
        Fuzz::saveBlocks(Fig2::Snippet::FILE_TYPE_ID, [&snippet](IO::OutStream *output) { snippet.save(output); });
    });
    return 0;
}
