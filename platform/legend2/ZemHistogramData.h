// ZemHistogramData.h: how often each value occurs.
#pragma once

#include <map>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

namespace Legend2 {

/// Counts by value, in the base unit of the quantity. A plain value; several threads may read it.
class HistogramData
{
public:
    /// No counts.
    HistogramData() = default;

    void clear() noexcept { counts_.clear(); }
    /// Whether anything was counted.
    bool isValid() const noexcept { return !counts_.empty(); }

    /// Adds the counts value by value; those of 0 are left out. False, and nothing is added, when a value is not finite
    /// or a sum of counts has no room in an unsigned int.
    bool addHistogram(std::map<double, unsigned int> const &counts);
    bool addHistogram(HistogramData const &other);

    /// At least 1 when something was counted, else 0.
    unsigned int getMaxCount() const noexcept;
    /// Replaces what `counts` (never null) holds. Every count is at least 1, every value finite.
    void getHistogram(std::map<double, unsigned int> *counts) const { *counts = counts_; }

    bool operator==(HistogramData const &) const = default;

    /// One block. Both throw IO::StreamException; a failed load leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    std::map<double, unsigned int> counts_;
};

} // namespace Legend2
} // namespace Zem
