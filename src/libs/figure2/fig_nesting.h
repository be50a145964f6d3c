// fig_nesting.h: the limit to snapshots within snapshots in a stream.
// Layer: streams. Internal to the library.
#pragma once

namespace Zem::Fig2 {

/// Counts how deeply a thread stands in snapshots within snapshots, for as long as it lives. Each level takes room on
/// the stack, so a file must not decide how many there are.
class NestingLevel
{
public:
    /// Deeper than this is refused, when a stream is read and when it is written.
    static constexpr unsigned int MAXIMUM = 256;

    /// Throws IO::StreamException when `levels` more are too many.
    explicit NestingLevel(unsigned int levels = 1);
    ~NestingLevel() { _depth -= levels_; }
    NestingLevel(NestingLevel const &) = delete;
    NestingLevel &operator=(NestingLevel const &) = delete;

private:
    static thread_local unsigned int _depth;

    unsigned int levels_;
};

} // namespace Zem::Fig2
