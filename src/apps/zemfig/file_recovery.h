// file_recovery.h: what can be had of a damaged file of blocks.
#pragma once

#include "element_recovery.h"

#include <QtCore/QByteArray>

namespace Zem::Zemfig {

/// A sound file of the same kind, and what became of each thing in the damaged one.
struct RecoveredFile
{
    QByteArray bytes;
    std::vector<RecoveryNote> notes;
};

/// Throws InputError when nothing can be had.
RecoveredFile recoverFile(QString const &fileName);

} // namespace Zem::Zemfig
