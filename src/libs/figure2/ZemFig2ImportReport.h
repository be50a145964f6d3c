// ZemFig2ImportReport.h: ImportReport, what became of the records of an older figure.
// Layer: values. Plain values; distinct objects may be used from distinct threads.
#pragma once

#include <QtCore/QString>

#include <vector>

namespace Zem::Fig2 {

/// What became of one record, or of one part of it.
struct ImportEntry
{
    enum Outcome {
        KEPT = 0,
        APPROXIMATED = 1, ///< something that comes near to it
        DROPPED = 2
    };

    QString record; ///< its kind: "line", "chart axis", "token" and so on
    /// Where it stands: the numbers of the elements on the way to it, from 1 on, as "2.1"; of a token its name. What
    /// is in a snapshot stands behind the place of that, as "3/1.4".
    QString place;
    Outcome outcome;
    QString text; ///< for the user, translated: what became of it and why

    bool operator==(ImportEntry const &) const = default;
};

/// The entries in the order of the file. There is one for each element and token that was kept, and one more for each
/// of its parts that was not, or not as it was.
class ImportReport
{
public:
    void add(ImportEntry const &entry) { entries_.push_back(entry); }
    std::vector<ImportEntry> const &getEntries() const { return entries_; }
    std::size_t count(ImportEntry::Outcome outcome) const;
    /// The word for the user, translated.
    static QString getOutcomeName(ImportEntry::Outcome outcome);

private:
    std::vector<ImportEntry> entries_;
};

} // namespace Zem::Fig2
