// ZemScaling.h: which values of an interval carry a tick, and how many decimals their texts need.
#pragma once

#include <vector>

namespace Zem::Legend2 {

/// How values are spread over a scale. Stored in files: never renumber.
enum ColorMode_t { COLOR_MODE_LINEAR = 0, COLOR_MODE_LOGARITHMIC = 1 };

/// Chooses ticks. Stateless: may be used from any thread. The work is bounded for any arguments, the results are the
/// same on every machine. The rules are told in docs/decisions/colour-scales.md.
class Scaling
{
public:
    /// At most this many ticks, whatever is asked for.
    static constexpr int MAX_TICKS = 10000;
    /// At most this many decimals.
    static constexpr int MAX_DIGITS = 15;

    Scaling() = delete;

    /// Replaces `values` (never null) by at most `count` round values from [minimum, maximum], ascending. None for a
    /// `count` below 1, for bounds that are no finite numbers or inverted, for an interval too narrow for the precision
    /// of its bounds to hold a round value, and for a logarithmic scale that reaches down to 0 or below. Equal bounds
    /// are their own only tick.
    ///
    /// Linear: multiples of a step of 1, 2, 2.5, 3, 4 or 5 times a power of ten; 0 is exactly 0. Logarithmic: powers of
    /// ten, with 2 and 5 times them when `count` leaves room and every n-th only when it does not; an interval without
    /// two such values gets linear ticks.
    /// `withBounds` adds the two bounds to the ticks, in place of ticks that would make them more than `count`; it has
    /// no effect for a `count` below 2.
    static void computeDistribution(double minimum, double maximum, int count, bool withBounds, ColorMode_t mode,
                                    std::vector<double> *values);

    /// The least number of decimals, 0 to MAX_DIGITS, with which every value is written exactly, as far as its double
    /// precision goes: 2 for {0.25, 0.5}, 0 for {100, 200}, 1 for {0.1 + 0.2}. Values that are not finite do not count.
    static int getNumberOfDigits(std::vector<double> const &values);
};

} // namespace Zem::Legend2
