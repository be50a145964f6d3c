// figqt_run_packer.h: deflate for bytes that mostly repeat the one before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace Zem::Fig2Qt {

/// Packs bytes as a part of a deflate stream (RFC 1951) that looks for one thing only, runs of the same byte. Rows of
/// pictures of which the row above was taken away pack as well as with a search for everything, in a fraction of the
/// time. Keeps its memory from one call to the next.
class RunPacker
{
public:
    /// Appends one block. With `last` it ends the stream, else the part ends with a whole byte, so that another one may
    /// follow. The bytes themselves are not needed afterwards.
    void pack(std::span<unsigned char const> bytes, bool last, std::string *to);

private:
    void findRuns(std::span<unsigned char const> bytes);
    void addRun(std::size_t length);

    std::vector<std::uint16_t> symbols_; // bytes, and above them lengths of runs
    std::vector<std::uint32_t> counts_;
};

} // namespace Zem::Fig2Qt
