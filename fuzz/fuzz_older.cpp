// A figure of the older format is taken in or refused; one that is taken in can be used and saved as a figure.
#include "fuzz_blocks.h"

#include <ZemFig2DataInterface.h>
#include <ZemFig2Import.h>
#include <ZemFig2ImportReport.h>
#include <ZemFig2Template.h>
#include <ZemFig2TokenContainer.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using namespace Zem;
    Fuzz::readBlocks(data, size, [](IO::InStream *stream) {
        Fig2::ImportReport report;
        Fig2::DataInterface tokens;
        std::unique_ptr<Fig2::FigureTemplate> const figure(Fig2::Import::importTemplate(stream, &report, &tokens));
        Fig2::FigureTokenContainer const values(figure.get(), &tokens);
        figure->setTokenInterface(&values);
        Fuzz::use(figure.get());
        Fuzz::saveBlocks(Fig2::Figure::FILE_TYPE_ID,
                         [&figure](IO::OutStream *output) { figure->Figure::save(output, -1, -1); });
        figure->setTokenInterface(nullptr);
    });
    return 0;
}
