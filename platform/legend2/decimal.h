// decimal.h: whole numbers times powers of ten, as near as a double can hold them.
#pragma once

namespace Zem::Legend2 {

/// The double nearest to whole * 10^exponent, for whole numbers below 2^53; infinite or 0 beyond its range, never -0.
double decimal(double whole, int exponent);

/// The multiples of a round number.
struct Grid
{
    double digits; ///< the round number is digits * 10^exponent
    int exponent;

    double step() const { return decimal(digits, exponent); }
    double valueAt(long long index) const { return decimal(digits * static_cast<double>(index), exponent); }

    /// The indices of the first and the last multiple within [minimum, maximum], finite numbers. False when there is
    /// none, or when the multiples lie too close together there to be told apart as doubles.
    bool findIndices(double minimum, double maximum, long long *first, long long *last) const;
};

} // namespace Zem::Legend2
