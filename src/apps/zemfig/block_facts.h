// block_facts.h: what there is to tell of a file of blocks as such.
#pragma once

#include "facts.h"

#include <ZemBlockScan.h>

namespace Zem::Zemfig {

/// All blocks of a file, which is read as a whole. Throws InputError for a file that cannot be read.
IO::BlockScan scanFile(QString const &fileName);

/// Version of the stream, number and sizes of the blocks, and the first damage.
void addBlockFacts(IO::BlockScan const &scan, Facts *facts);

} // namespace Zem::Zemfig
