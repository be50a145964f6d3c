#include "ZemFig2PointMask.h"

#include "fig_block.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

} // namespace

template <class Archive, class Self>
void PointMask::blockFields(Archive &archive, Self &self)
{
    archive.field(self.mask_);
    archive.field(self.name_);
}

void PointMask::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void PointMask::load(IO::InStream *stream)
{
    // The misspelt word is deliberate: translations are looked up by it.
    loadWrapped("Figure_ImageData_err", "cannot load point bitmas: %1", [&] {
        PointMask read;
        loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        *this = read;
    });
}

} // namespace Zem::Fig2
