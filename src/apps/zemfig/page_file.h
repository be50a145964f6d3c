// page_file.h: the kinds of files that a page can stand in.
#pragma once

#include "page_document.h"

#include <ZemFig2Snippet.h>

#include <vector>

namespace Zem::Zemfig {

/// What a file is, as its first bytes tell.
enum class FileKind { Figure, Template, Snippet, OlderFigure, PageDocument, Project, Unknown };

/// What the help of the verbs says of a page.
inline constexpr char const *PAGE_HELP = "page document (.figure.toml), figure file (.fig), template or snippet";

inline constexpr QLatin1StringView TEMPLATE_ENDING{".template"};
inline constexpr QLatin1StringView SNIPPET_ENDING{".snippet"};

/// Throws InputError for a file that cannot be opened.
FileKind kindOfFile(QString const &fileName);
/// For the user, as "figure file".
QString nameOf(FileKind kind);

/// Reads a page of any kind. What is wrong stays in `problems`; what an older figure lost on the way, in `notes`.
PageDocument openPage(QString const &fileName);
/// The same, but throws InputError with all problems when there is one.
PageDocument openSoundPage(QString const &fileName);

/// Gives elements the names of those that they were copied from, in the same order; a copy has none of its own.
void copyNames(Fig2::Figure const &from, Fig2::Figure *to);

/// Throws InputError.
std::unique_ptr<Fig2::Snippet> openSnippet(QString const &fileName);

} // namespace Zem::Zemfig
