// ZemFig2RangeCalculator.h: RangeCalculator, which turns an interval and a length into the ticks of a scale.
// Layer: services. A plain value; use one instance from one thread at a time.
#pragma once

#include <ZemFont.h>
#include <ZemScaling.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <limits>
#include <vector>

namespace Zem::Legend2 {
class Data;
class Legend;
} // namespace Zem::Legend2

namespace Zem::Fig2 {

/// Which values carry a tick, where the ticks stand, what their labels read, how large the labels are and which of them
/// are to be drawn. Build one, run one compute operation, read the answers. Lengths, positions and sizes are page
/// millimetres, measured through Calculator; values are in the unit of the bounds.
///
/// Every compute operation starts over. `digits` of 0 or more fixes the decimals of the labels, a negative number has
/// them follow from the ticks. `ticks` is the greatest number of intervals; below 1 it means 50. Labels never need more
/// room than `length` has, except that one tick is always allowed.
class RangeCalculator
{
public:
    explicit RangeCalculator(Font const &font);

    /// Throw ProgError for a bound that is NaN, and then leave everything as it was. Infinite bounds become the
    /// greatest finite ones; an inverted interval has no ticks.
    void computeHorizontal(double minimum, double maximum, double length, int digits, int ticks);
    void computeVertical(double minimum, double maximum, double length, int digits, int ticks);

    /// The ticks of a colour scale, in its active unit. Without `legend` or `data`, which are not owned and only used
    /// here, and where the limits are equal, the two ends carry the only ticks.
    void computeForLegend(Legend2::Legend const *legend, Legend2::Data const *data, bool horizontal, double length,
                          int digits);

    /// The width of the wider of both bounds as labels, with one decimal more than `digits` for safety. Computes
    /// nothing else.
    double getMaxLabelWidth(double minimum, double maximum, int digits) const;
    /// The width of the widest label.
    double getMaxLabelWidth() const { return maxLabelWidth_; }

    double getMinimum() const { return minimum_; }
    double getMaximum() const { return maximum_; }
    /// 0 as long as they are not known.
    int getDigits() const { return digits_ < 0 ? 0 : digits_; }

    // One item per tick, ascending.
    /// Distances from the start of the length.
    std::vector<double> const &getTickPositions() const { return tickPositions_; }
    std::vector<double> const &getTickValues() const { return tickValues_; }
    std::vector<QString> const &getTexts() const { return texts_; }
    /// Width and height.
    std::vector<BaVec2d<double>> const &getTextSizes() const { return textSizes_; }
    /// Whether the label has room.
    std::vector<bool> const &getDrawTexts() const { return drawTexts_; }
    /// The class that begins at the tick; for discrete legends only, else empty.
    std::vector<int> const &getTickIndices() const { return tickIndices_; }

private:
    void clear();
    void start(double minimum, double maximum, int digits);
    bool isDegenerate() const;
    void takeBoundsAsTicks(double length);
    void chooseHorizontalTicks(double length, int ticks, Legend2::ColorMode_t colorMode);
    void chooseVerticalTicks(double length, int ticks, Legend2::ColorMode_t colorMode);
    void computeTickValues(int ticks, Legend2::ColorMode_t colorMode);
    void deriveDigits();
    void readLimits(Legend2::Legend const &legend, Legend2::Data const &data);
    void chooseLegendTicks(Legend2::Legend const &legend, Legend2::Data const &data, bool horizontal, double length);
    void computePositions(double length);
    void computeTexts(bool horizontal);
    void dropCrowdedLabels(bool horizontal);

    Font font_;
    int digits_ = std::numeric_limits<int>::lowest();
    double minimum_ = std::numeric_limits<double>::lowest();
    double maximum_ = std::numeric_limits<double>::max();
    std::vector<double> tickPositions_;
    std::vector<double> tickValues_;
    std::vector<int> tickIndices_;
    std::vector<QString> texts_;
    std::vector<BaVec2d<double>> textSizes_;
    std::vector<bool> drawTexts_;
    double maxLabelWidth_ = 0.0;
};

} // namespace Zem::Fig2
