#include "ZemBlockScan.h"

#include "stream_format.h"

#include <ZemError.h>

#include <algorithm>
#include <array>
#include <optional>
#include <streambuf>

namespace Zem::IO {

namespace {

constexpr std::size_t OVERHEAD = Format::FRAME_SIZE + Format::CHECKSUM_SIZE;
/// No class has blocks of a later version; almost all other bytes are told from a block by that alone.
constexpr unsigned int MAXIMUM_VERSION = 1000;
/// Damaged blocks one behind the other that are taken for blocks still.
constexpr int MAXIMUM_CHAIN = 16;
/// For each byte of the stream so many may go through a checksum.
constexpr std::size_t WORK_PER_BYTE = 64;
constexpr std::size_t LEAST_WORK = std::size_t{16} << 20;

/// The header first, then the bytes from somewhere on.
class TwoParts : public std::streambuf
{
public:
    TwoParts(std::string const &bytes, std::size_t second, std::size_t end) : bytes_(bytes), second_(second), end_(end)
    {
        show(0, Format::HEADER_SIZE);
    }

    /// Of the byte that is read next.
    std::size_t position() const
    {
        auto const read = static_cast<std::size_t>(gptr() - eback());
        std::size_t const here = start_ + read;
        return start_ == 0 && here == Format::HEADER_SIZE ? second_ : here;
    }

protected:
    int_type underflow() override
    {
        if (start_ == 0 && second_ < end_) {
            show(second_, end_);
            return traits_type::to_int_type(*gptr());
        }
        return traits_type::eof();
    }

private:
    void show(std::size_t from, std::size_t to)
    {
        start_ = from;
        // Nothing is ever put back or written.
        char *const bytes = const_cast<char *>(bytes_.data());
        setg(bytes + from, bytes + from, bytes + to);
    }

    std::string const &bytes_;
    std::size_t second_;
    std::size_t end_;
    std::size_t start_ = 0;
};

class TwoPartStream : public std::istream
{
public:
    TwoPartStream(std::string const &bytes, std::size_t second, std::size_t behind)
        : std::istream(nullptr), parts_(bytes, second, behind)
    {
        rdbuf(&parts_);
    }

    std::size_t position() const { return parts_.position(); }

private:
    TwoParts parts_;
};

} // namespace

std::size_t BlockPlace::end() const
{
    return position + size + OVERHEAD;
}

/// The walk from block to block.
class BlockScan::Search
{
public:
    explicit Search(std::string const &bytes) : bytes_(bytes), work_(std::max(LEAST_WORK, WORK_PER_BYTE * bytes.size()))
    {
    }

    std::vector<BlockPlace> findAll()
    {
        std::vector<BlockPlace> found;
        std::size_t position = Format::HEADER_SIZE;
        while (position < bytes_.size()) {
            std::optional<BlockPlace> block = blockAt(position);
            if (!block)
                block = findBehind(position);
            if (!block)
                break;
            found.push_back(*block);
            position = block->end();
        }
        return found;
    }

private:
    /// A block by its frame alone.
    std::optional<BlockPlace> frameAt(std::size_t position) const
    {
        std::size_t const left = bytes_.size() - position;
        if (left < OVERHEAD)
            return std::nullopt;
        auto const size = Format::decode<std::uint32_t>(bytes_.data() + position);
        auto const version = Format::decode<std::uint32_t>(bytes_.data() + position + Format::UINT_SIZE);
        if (size > left - OVERHEAD || version < 1 || version > MAXIMUM_VERSION)
            return std::nullopt;
        return BlockPlace{position, size, version, false, false};
    }

    /// False also when there has been too much work already.
    bool isSound(BlockPlace const &block)
    {
        std::size_t const length = Format::UINT_SIZE + block.size;
        if (length > work_)
            return false;
        work_ -= length;
        char const *const bytes = bytes_.data() + block.position + Format::UINT_SIZE;
        return Format::checksum(0, bytes, length) == Format::decode<std::uint32_t>(bytes + length);
    }

    /// Sound, or followed by a sound one, the end or few more of its kind.
    std::optional<BlockPlace> blockAt(std::size_t position)
    {
        std::optional<BlockPlace> block = frameAt(position);
        if (!block)
            return block;
        block->isSound = isSound(*block);
        return block->isSound || isFollowed(block->end()) ? block : std::nullopt;
    }

    bool isFollowed(std::size_t position)
    {
        for (int i = 0; i < MAXIMUM_CHAIN; ++i) {
            if (position == bytes_.size())
                return true;
            std::optional<BlockPlace> const next = frameAt(position);
            if (!next)
                return false;
            if (isSound(*next))
                return true;
            position = next->end();
        }
        return false;
    }

    std::optional<BlockPlace> findBehind(std::size_t position)
    {
        for (++position; position + OVERHEAD <= bytes_.size() && work_ > 0; ++position) {
            std::optional<BlockPlace> block = frameAt(position);
            if (block && isSound(*block)) {
                block->isSound = true;
                block->isBehindAHole = true;
                return block;
            }
        }
        return std::nullopt;
    }

    std::string const &bytes_;
    std::size_t work_;
};

BlockScan::BlockScan(std::string bytes) : bytes_(std::move(bytes))
{
    readHeader();
    if (!fileType_.isEmpty())
        blocks_ = Search(bytes_).findAll();
    soundBlocks_ = static_cast<std::size_t>(
        std::count_if(blocks_.begin(), blocks_.end(), [](BlockPlace const &block) { return block.isSound; }));
    std::size_t end = std::min(Format::HEADER_SIZE, bytes_.size());
    firstDamage_ = hasSoundHeader_ ? bytes_.size() : 0;
    for (BlockPlace const &block : blocks_) {
        if (block.isBehindAHole || !block.isSound)
            firstDamage_ = std::min(firstDamage_, block.isBehindAHole ? end : block.position);
        hasHole_ = hasHole_ || block.isBehindAHole;
        end = block.end();
    }
    if (end < bytes_.size()) {
        hasHole_ = true;
        firstDamage_ = std::min(firstDamage_, end);
    }
    mend();
}

void BlockScan::readHeader()
{
    if (bytes_.size() < Format::HEADER_SIZE)
        return;
    char const *const header = bytes_.data();
    hasSoundHeader_ = std::memcmp(header, Format::MAGIC, sizeof Format::MAGIC) == 0 &&
                      Format::decode<std::uint32_t>(header + Format::CHECKSUM_POSITION) ==
                          Format::checksum(0, header, Format::CHECKSUM_POSITION);
    std::string const word(header + Format::TYPE_POSITION, Format::TYPE_SIZE);
    std::string const text = word.substr(0, word.find('\0'));
    auto const isPrintable = [](char character) { return character > ' ' && character <= '~'; };
    if (std::all_of(text.begin(), text.end(), isPrintable))
        fileType_ = QString::fromStdString(text);
    version_ = Format::decode<std::uint32_t>(header + Format::VERSION_POSITION);
}

void BlockScan::mend()
{
    mended_ = bytes_.substr(0, Format::HEADER_SIZE);
    mended_.resize(Format::HEADER_SIZE);
    std::memcpy(mended_.data(), Format::MAGIC, sizeof Format::MAGIC);
    Format::encode(Format::checksum(0, mended_.data(), Format::CHECKSUM_POSITION),
                   mended_.data() + Format::CHECKSUM_POSITION);
    for (BlockPlace const &block : blocks_) {
        starts_.push_back(mended_.size());
        mended_.append(bytes_, block.position, block.end() - block.position);
        char *const checked = mended_.data() + starts_.back() + Format::UINT_SIZE;
        std::size_t const length = Format::UINT_SIZE + block.size;
        Format::encode(Format::checksum(0, checked, length), checked + length);
    }
    starts_.push_back(mended_.size());
}

std::size_t BlockScan::getFirstDamage() const
{
    return firstDamage_;
}

bool BlockScan::isSound(std::size_t first, std::size_t end) const
{
    for (std::size_t i = first; i < std::min(end, blocks_.size()); ++i) {
        if (!blocks_[i].isSound || (i > first && blocks_[i].isBehindAHole))
            return false;
    }
    return true;
}

std::unique_ptr<std::istream> BlockScan::openStream(std::size_t block, std::size_t end) const
{
    if (block > end || end > blocks_.size())
        throw ProgError("Zem::IO::BlockScan::openStream", "block_scan", __LINE__, "no such block");
    return std::make_unique<TwoPartStream>(mended_, starts_[block], starts_[end]);
}

std::string BlockScan::getBytes(std::size_t first, std::size_t end) const
{
    return mended_.substr(starts_.at(first), starts_.at(end) - starts_.at(first));
}

std::size_t BlockScan::getBlock(std::istream *stream) const
{
    auto const *const parts = dynamic_cast<TwoPartStream const *>(stream);
    if (!parts)
        throw ProgError("Zem::IO::BlockScan::getBlock", "block_scan", __LINE__, "no stream of a scan");
    auto const found = std::lower_bound(starts_.begin(), starts_.end(), parts->position());
    return static_cast<std::size_t>(found - starts_.begin());
}

} // namespace Zem::IO
