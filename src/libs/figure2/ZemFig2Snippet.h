// ZemFig2Snippet.h: Snippet, frozen elements in a file of their own.
// Layer: document. Used from the thread that owns the snippet.
#pragma once

#include "ZemFig2SnapshotData.h"

namespace Zem::Fig2 {

/// A snapshot that is kept in a file.
class Snippet : public SnapshotData
{
public:
    static constexpr QLatin1StringView FILE_TYPE_ID{"KRVSnippetFile"};

    Snippet() = default;
    Snippet(StageIdentifier const &stage, Figure const *source, SnapshotElementFilter const &filter);
    Snippet(Snippet const &) = default;

    static bool canOpenFile(std::vector<char> const &head);
    /// False when the file cannot be written, which leaves an old one as it was; the reason goes to `log`, which is not
    /// null.
    static bool saveFile(QString const &fileName, Snippet const *snippet, ErrorLog *log);
    /// Null when the file cannot be read; the reason goes to `log`. Owned by the caller.
    static Snippet *loadFile(QString const &fileName, ErrorLog *log);
};

} // namespace Zem::Fig2
