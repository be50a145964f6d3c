#include <ZemScaling.h>

#include "decimal.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Zem::Legend2 {

namespace {

// After Justin Talbot, Sharon Lin and Pat Hanrahan, "An Extension of Wilkinson's Algorithm for Positioning Tick Labels
// on Axes", 2010: the most preferred round numbers first, and the weights of simplicity, coverage and density. All
// labels are equally legible here, which is the rest of the weights. Their 4 and 3 are left out: nobody divides a ruler
// so. 25 counts as 2.5. It is used for whole numbers only: fewer ticks must never need more decimals, and between 0.2
// and 0.5 those of 0.25 would.
constexpr std::array<double, 4> ROUND_DIGITS{1, 5, 2, 25};
constexpr double SIMPLICITY_WEIGHT = 0.25;
constexpr double COVERAGE_WEIGHT = 0.2;
constexpr double DENSITY_WEIGHT = 0.5;
constexpr double LEGIBILITY_WEIGHT = 0.05;

// A single number may be chosen more freely: the coarsest of these that fits.
constexpr std::array<double, 3> SINGLE_DIGITS{5, 2, 1};

// Ticks are all the multiples of a round number. Only where none gives two ticks, as for two on both sides of 0, every
// so-manieth multiple will do.
constexpr long long MAX_SKIP = 6;

/// Evenly spaced ticks.
struct Ticks
{
    Grid grid{1.0, 0};
    long long first = 0;
    long long skip = 1;
    long long count = 0;

    double valueAt(long long i) const { return grid.valueAt(first + i * skip); }
    double front() const { return valueAt(0); }
    double back() const { return valueAt(count - 1); }
    bool holdsZero() const { return first <= 0 && first % skip == 0 && first + (count - 1) * skip >= 0; }
};

/// Looks for the best ticks in an interval of finite bounds, minimum below maximum. Extents are halved, so that none is
/// infinite.
class TickSearch
{
public:
    TickSearch(double minimum, double maximum, long long maxCount)
        : minimum_(minimum), maximum_(maximum), maxCount_(maxCount), halfExtent_(maximum * 0.5 - minimum * 0.5)
    {
    }

    /// Ticks of count 0 when there are none.
    Ticks run()
    {
        if (maxCount_ > 1 && halfExtent_ >= std::numeric_limits<double>::min()) {
            findSeveral();
        }
        return best_.count > 0 ? best_ : findSingle();
    }

private:
    static double simplicity(std::size_t preference, long long skip, bool holdsZero)
    {
        return 1.0 - double(preference) / double(ROUND_DIGITS.size() - 1) - double(skip) + (holdsZero ? 1.0 : 0.0);
    }

    static double score(double simplicity, double coverage, double density)
    {
        return SIMPLICITY_WEIGHT * simplicity + COVERAGE_WEIGHT * coverage + DENSITY_WEIGHT * density +
               LEGIBILITY_WEIGHT;
    }

    /// 1 when the outermost ticks are the bounds.
    double coverage(Ticks const &ticks) const
    {
        double const before = (ticks.front() * 0.5 - minimum_ * 0.5) / halfExtent_;
        double const behind = (maximum_ * 0.5 - ticks.back() * 0.5) / halfExtent_;
        return 1.0 - 0.5 * (before * before + behind * behind) / (0.1 * 0.1);
    }

    /// 1 when there are as many ticks as there may be.
    double density(Ticks const &ticks) const
    {
        double const halfStep = 0.5 * double(ticks.skip) * ticks.grid.step();
        double const ratio = halfExtent_ / halfStep / double(maxCount_ - 1);
        return 2.0 - std::max(ratio, 1.0 / ratio);
    }

    void findSeveral()
    {
        for (long long skip = 1; skip <= MAX_SKIP && best_.count == 0; ++skip) {
            for (std::size_t i = 0; i < ROUND_DIGITS.size(); ++i) {
                if (score(simplicity(i, skip, true), 1.0, 1.0) > bestScore_) {
                    tryRoundNumber(i, skip);
                }
            }
        }
    }

    void tryRoundNumber(std::size_t preference, long long skip)
    {
        double const digits = ROUND_DIGITS[preference];
        int const least = digits > 10.0 ? 0 : std::numeric_limits<int>::min();
        double const coarsest = std::log10(halfExtent_ / double(skip) / digits) + std::log10(2.0);
        double const finest = coarsest - std::log10(double(maxCount_ + 1));
        for (int exponent = std::max(least, static_cast<int>(std::floor(finest))); exponent <= coarsest + 1.0;
             ++exponent) {
            tryGrid({digits, exponent}, preference, skip);
        }
    }

    void tryGrid(Grid const &grid, std::size_t preference, long long skip)
    {
        long long first = 0;
        long long last = 0;
        if (!grid.findIndices(minimum_, maximum_, &first, &last)) {
            return;
        }
        for (long long start = first; start < first + skip && start <= last; ++start) {
            Ticks const ticks{grid, start, skip, (last - start) / skip + 1};
            if (ticks.count >= 2 && ticks.count <= maxCount_) {
                offer(ticks, preference);
            }
        }
    }

    void offer(Ticks const &ticks, std::size_t preference)
    {
        double const found =
            score(simplicity(preference, ticks.skip, ticks.holdsZero()), coverage(ticks), density(ticks));
        if (found > bestScore_) {
            bestScore_ = found;
            best_ = ticks;
        }
    }

    /// The roundest number of the interval, the one in the middle of several.
    Ticks findSingle() const
    {
        if (minimum_ <= 0.0 && maximum_ >= 0.0) {
            return {{1.0, 0}, 0, 1, 1};
        }
        constexpr int MOST_DIGITS = 18;
        int const top = static_cast<int>(std::ceil(std::log10(std::max(std::abs(minimum_), std::abs(maximum_)))));
        for (int exponent = top; exponent > top - MOST_DIGITS; --exponent) {
            for (double digits : SINGLE_DIGITS) {
                Grid const grid{digits, exponent};
                long long first = 0;
                long long last = 0;
                if (grid.findIndices(minimum_, maximum_, &first, &last)) {
                    return {grid, first + (last - first) / 2, 1, 1};
                }
            }
        }
        return {};
    }

    double minimum_;
    double maximum_;
    long long maxCount_;
    double halfExtent_;
    double bestScore_ = -std::numeric_limits<double>::infinity();
    Ticks best_;
};

std::vector<double> linearTicks(double minimum, double maximum, int count)
{
    Ticks const ticks = TickSearch(minimum, maximum, count).run();
    std::vector<double> values;
    for (long long i = 0; i < ticks.count; ++i) {
        values.push_back(ticks.valueAt(i));
    }
    return values;
}

/// The powers of ten within [minimum, maximum], both positive, by their exponents; none when `first` is above `last`.
struct Decades
{
    int first;
    int last;

    Decades(double minimum, double maximum)
        : first(static_cast<int>(std::ceil(std::log10(minimum)))),
          last(static_cast<int>(std::floor(std::log10(maximum))))
    {
        // Logarithms are rounded: each exponent may be one off.
        if (decimal(1.0, first) < minimum) {
            ++first;
        } else if (decimal(1.0, first - 1) >= minimum) {
            --first;
        }
        if (decimal(1.0, last) > maximum) {
            --last;
        } else if (decimal(1.0, last + 1) <= maximum) {
            ++last;
        }
    }
};

std::vector<double> dividedDecades(double minimum, double maximum, Decades const &decades)
{
    std::vector<double> values;
    // A decade may begin below the interval and still have ticks in it.
    for (int exponent = decades.first - 1; exponent <= decades.last; ++exponent) {
        for (double digit : {1.0, 2.0, 5.0}) {
            double const value = decimal(digit, exponent);
            if (value >= minimum && value <= maximum) {
                values.push_back(value);
            }
        }
    }
    return values;
}

/// Every `step`-th power of ten, beginning with `first`.
std::vector<double> everyDecade(int first, int last, int step)
{
    std::vector<double> values;
    for (int exponent = first; exponent <= last; exponent += step) {
        values.push_back(decimal(1.0, exponent));
    }
    return values;
}

int nextMultiple(int number, int step)
{
    int const rest = number % step;
    return rest == 0 ? number : number - rest + (number > 0 ? step : 0);
}

std::vector<double> thinnedDecades(Decades const &decades, std::size_t count)
{
    for (int step = 1;; ++step) {
        std::vector<double> const round = everyDecade(nextMultiple(decades.first, step), decades.last, step);
        std::vector<double> const any = everyDecade(decades.first, decades.last, step);
        std::vector<double> const &values = round.size() > 1 ? round : any;
        if (values.size() <= count) {
            return values;
        }
    }
}

std::vector<double> logarithmicTicks(double minimum, double maximum, int count)
{
    if (minimum <= 0.0) {
        return {};
    }
    Decades const decades(minimum, maximum);
    auto const room = static_cast<std::size_t>(count);
    std::vector<double> values = dividedDecades(minimum, maximum, decades);
    if (values.size() > room) {
        values = thinnedDecades(decades, room);
    }
    return values.size() > 1 ? values : linearTicks(minimum, maximum, count);
}

std::vector<double> ticksBetween(double minimum, double maximum, int count, ColorMode_t mode)
{
    return mode == COLOR_MODE_LOGARITHMIC ? logarithmicTicks(minimum, maximum, count)
                                          : linearTicks(minimum, maximum, count);
}

void addBounds(double minimum, double maximum, std::vector<double> *values)
{
    if (values->empty() || values->front() > minimum) {
        values->insert(values->begin(), minimum);
    }
    if (values->back() < maximum) {
        values->push_back(maximum);
    }
}

} // namespace

void Scaling::computeDistribution(double minimum, double maximum, int count, bool withBounds, ColorMode_t mode,
                                  std::vector<double> *values)
{
    values->clear();
    bool const positive = mode != COLOR_MODE_LOGARITHMIC || minimum > 0.0;
    if (count < 1 || !std::isfinite(minimum) || !std::isfinite(maximum) || minimum > maximum || !positive) {
        return;
    }
    if (minimum == maximum) {
        values->push_back(minimum + 0.0); // never -0
        return;
    }
    int const room = std::min(count, MAX_TICKS);
    if (!withBounds || room < 2) {
        *values = ticksBetween(minimum, maximum, room, mode);
        return;
    }
    if (room > 2) {
        *values = ticksBetween(minimum, maximum, room - 2, mode);
    }
    addBounds(minimum, maximum, values);
}

namespace {

/// Whole numbers from here on have no decimals.
constexpr double WHOLE = 0x1p53;

constexpr double LOSS = 1e-12;          // of the greatest value
constexpr double MAX_EXACT_LOSS = 4e-7; // rounds away with EXACT_DIGITS decimals

bool isExact(double value, double power, double loss)
{
    double const scaled = value * power;
    return std::abs(value) >= WHOLE || std::abs(scaled - std::round(scaled)) <= loss * power;
}

bool areToldApart(double a, double b, double power, double loss)
{
    bool const same = std::abs(a * 0.5 - b * 0.5) <= loss * 0.5;
    bool const whole = std::max(std::abs(a), std::abs(b)) >= WHOLE;
    return same || whole || std::round(a * power) != std::round(b * power);
}

bool areAllExact(std::vector<double> const &values, double power, double loss)
{
    return std::all_of(values.begin(), values.end(), [=](double value) { return isExact(value, power, loss); });
}

bool areAllToldApart(std::vector<double> const &values, double power, double loss)
{
    return std::adjacent_find(values.begin(), values.end(),
                              [=](double a, double b) { return !areToldApart(a, b, power, loss); }) == values.end();
}

} // namespace

int Scaling::getNumberOfDigits(std::vector<double> const &values)
{
    std::vector<double> finite;
    double greatest = 0.0;
    for (double value : values) {
        if (std::isfinite(value)) {
            finite.push_back(value);
            greatest = std::max(greatest, std::abs(value));
        }
    }
    double const loss = greatest * LOSS;
    for (int digits = 0; digits < MAX_DIGITS; ++digits) {
        double const power = decimal(1.0, digits);
        if ((digits >= EXACT_DIGITS || areAllExact(finite, power, std::min(loss, MAX_EXACT_LOSS))) &&
            areAllToldApart(finite, power, loss)) {
            return digits;
        }
    }
    return MAX_DIGITS;
}

} // namespace Zem::Legend2
