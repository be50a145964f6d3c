// ZemScaling.h: which values of an interval carry a tick, and how many decimals their texts need.
#pragma once

#include <vector>

namespace Zem::Legend2 {

/// How values are spread over a scale. Stored in files: never renumber.
enum ColorMode_t { COLOR_MODE_LINEAR = 0, COLOR_MODE_LOGARITHMIC = 1 };

/// Chooses ticks, by the rules that docs/decisions/colour-scales.md tells. The work is bounded for any arguments. All
/// operations may be called from any thread.
class Scaling
{
public:
    /// At most this many ticks, whatever is asked for.
    static constexpr int MAX_TICKS = 10000;
    /// At most this many decimals.
    static constexpr int MAX_DIGITS = 15;
    /// Up to here, decimals are given without loss.
    static constexpr int EXACT_DIGITS = 6;

    Scaling() = delete;

    /// Replaces `values` (never null) by at most `count` round values from [minimum, maximum], ascending. None for a
    /// `count` below 1, for bounds that are not finite or inverted, for an interval so narrow that no round value is in
    /// it, and for a logarithmic scale that reaches down to 0 or below. Equal bounds are their own only tick.
    ///
    /// Linear: neighbours are 1, 2, 2.5, 3, 4 or 5 times a power of ten apart, or a small multiple of that; each is the
    /// double nearest to its decimal number, and 0 is exactly 0. Logarithmic: powers of ten, with 2 and 5 times them
    /// when `count` leaves room and every n-th only when it does not; an interval without two such values gets linear
    /// ticks.
    /// `withBounds` makes the bounds ticks too, and chooses those between for the count that is left; it has no effect
    /// for a `count` below 2.
    static void computeDistribution(double minimum, double maximum, int count, bool withBounds, ColorMode_t mode,
                                    std::vector<double> *values);

    /// The least number of decimals, 0 to MAX_DIGITS, that writes every value without loss: 2 for {0.25, 0.5}, 0 for
    /// {100, 200}. Loss below a millionth of a millionth of the greatest value does not count. Values that would need
    /// more than EXACT_DIGITS get so many, or as many more as tell neighbours apart: 6 for {1.0 / 3.0}, 7 for
    /// {1e-7, 2e-7}. Values that are not finite do not count.
    static int getNumberOfDigits(std::vector<double> const &values);
};

} // namespace Zem::Legend2
