// ZemBlockScan.h: the blocks of a stream, also of a damaged one, whatever is in them.
// The bytes are told in docs/formats/block-stream.md.
#pragma once

#include <QtCore/QString>

#include <cstddef>
#include <istream>
#include <memory>
#include <string>
#include <vector>

namespace Zem::IO {

/// A block as it lies in a file. A plain value.
struct BlockPlace
{
    std::size_t position; ///< of its first byte in the file
    unsigned int size;    ///< of the payload
    unsigned int version;
    bool isSound;       ///< false: the checksum is wrong, but what follows shows that the size is right
    bool isBehindAHole; ///< there are bytes before it that belong to no block

    /// Behind its last byte.
    std::size_t end() const;
};

/// Finds the blocks of a stream in memory. Behind bytes that are no block it looks for the next block that is sound; a
/// block is known by its checksum. The work is in proportion to the number of bytes.
class BlockScan
{
public:
    /// Bytes that are no block stream at all have no blocks.
    explicit BlockScan(std::string bytes);

    /// Whether header and blocks are sound up to the last byte.
    bool isSound() const { return hasSoundHeader_ && !hasHole_ && soundBlocks_ == blocks_.size(); }
    bool hasSoundHeader() const { return hasSoundHeader_; }
    /// As the header has it, also when its checksum is wrong; empty when it is no text.
    QString const &getFileType() const { return fileType_; }
    unsigned int getVersion() const { return version_; }
    std::size_t getSize() const { return bytes_.size(); }
    std::vector<BlockPlace> const &getBlocks() const { return blocks_; }
    /// Of the first byte that is not sound: the header's, that of a damaged block, that of a hole; the size of the
    /// stream when there is none.
    std::size_t getFirstDamage() const;

    /// Whether all blocks from `first` to the one before `end` are sound and follow each other.
    bool isSound(std::size_t first, std::size_t end) const;

    /// A stream for an InStream that begins with the block of this index, and on which damaged blocks have right
    /// checksums and holes are left out: for readers that find out themselves what they can make of it. It ends before
    /// the block `end`. Throws ProgError for an index above the number of blocks. The scan lives as long as the stream.
    std::unique_ptr<std::istream> openStream(std::size_t block) const { return openStream(block, blocks_.size()); }
    std::unique_ptr<std::istream> openStream(std::size_t block, std::size_t end) const;
    /// Frame, payload and checksum, the latter mended, of the blocks from `first` to the one before `end`.
    std::string getBytes(std::size_t first, std::size_t end) const;
    /// The index of the block that such a stream, or the InStream on it, reads next.
    std::size_t getBlock(std::istream *stream) const;

private:
    class Search;

    void readHeader();
    void mend();

    std::string bytes_;
    std::string mended_;              ///< a sound header, then all blocks with right checksums
    std::vector<std::size_t> starts_; ///< of the blocks in there, and its end
    std::vector<BlockPlace> blocks_;
    QString fileType_;
    unsigned int version_ = 0;
    std::size_t soundBlocks_ = 0;
    std::size_t firstDamage_ = 0;
    bool hasSoundHeader_ = false;
    bool hasHole_ = false;
};

} // namespace Zem::IO
