// element_recovery.h: reading the elements of a damaged file one by one.
#pragma once

#include <ZemBlockScan.h>
#include <ZemFig2Group.h>

#include <optional>
#include <vector>

namespace Zem::Zemfig {

/// What became of something in a damaged file.
struct RecoveryNote
{
    QString thing; ///< as "label 'title'"
    bool isKept;
    QString reason; ///< empty for something that is sound
};

/// Reads a tree of elements from the blocks of a damaged file. An element is kept when it can be read from blocks that
/// are all sound; behind one that cannot be read the next ones are looked for block by block. The work is in proportion
/// to the size of the file.
class ElementRecovery
{
public:
    ElementRecovery(IO::BlockScan const &scan, std::vector<RecoveryNote> *notes);

    /// Reads the root that begins at the block `first`; `next` receives the block behind its last element. Null when
    /// its list of elements cannot be read. Connectors are as they were loaded, without targets.
    std::unique_ptr<Fig2::Group> readRoot(std::size_t first, std::size_t *next);

private:
    struct Attempt;

    struct Cursor
    {
        std::size_t block; ///< where the next element begins
        std::size_t child; ///< which one of the list that is
    };

    bool readOwnBlocks(std::size_t first, Fig2::Group *group, Fig2::Group::ChildTable *table, std::size_t *next);
    bool readGroup(std::size_t first, Fig2::Group *group, unsigned int depth, std::size_t *next);
    void readChildren(Fig2::Group::ChildTable const &table, Fig2::Group *group, unsigned int depth, Cursor *cursor);
    bool readChild(Fig2::Group::ChildTable const &table, Fig2::Group *group, unsigned int depth, Cursor *cursor);
    Attempt tryElement(std::size_t first, unsigned int type);
    bool canReadOn(std::vector<unsigned int> const &types, Cursor cursor);
    std::optional<Cursor> findNext(std::vector<unsigned int> const &types, Cursor cursor, bool lostSome);
    void lose(unsigned int type, QString const &reason);
    void keep(Fig2::Element const &element);

    IO::BlockScan const &scan_;
    std::vector<RecoveryNote> *notes_;
    std::size_t work_;
};

} // namespace Zem::Zemfig
