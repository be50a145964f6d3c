// GoldenDocuments.h: the golden files, and how documents of their kinds are read and written again.
#pragma once

#include "FormatPage.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string>

namespace Zem::Support {

/// The documents of one extension.
struct GoldenKind
{
    char const *extension;
    char const *form; ///< of the file that saveAgain writes
    /// Reads a document and saves it as this release does, an older figure as what it becomes. Throws
    /// IO::StreamException for one that is refused.
    std::string (*saveAgain)(QByteArray const &bytes);
};

/// The name of a file beside the documents' folder, or of one in it.
QString goldenPath(QString const &name);
/// Throws std::runtime_error for a file that cannot be read.
QByteArray goldenContent(QString const &name);
/// The names of all documents, sorted.
QStringList goldenDocuments();
/// Throws std::runtime_error for a name with another extension.
GoldenKind const &goldenKindOf(QString const &name);
/// The tables of docs/formats.
FormatForms const &formatForms();

} // namespace Zem::Support
