// FakeCalculator.h: a Calculator with sizes that can be worked out by hand.
#pragma once

#include <ZemFig2Calculator.h>

#include <algorithm>
#include <cmath>

namespace Zem::Support {

/// Every character is 2 mm wide and 5 mm high, tags and entities count as they are written. Wrapping breaks anywhere.
class FakeCalculator : public Fig2::Calculator
{
public:
    explicit FakeCalculator(BaVec2d<double> const &offset = {0.0, 0.0}) : Calculator(96.0), offset_(offset) {}

    BaVec2d<double> computeTextSize(Font const &, QString const &text) const override
    {
        return {2.0 * static_cast<double>(text.size()), 5.0};
    }
    BaVec2d<double> computeRichTextSize(QString const &text, Font const &font, double width,
                                        BaVec2d<double> *offset) const override
    {
        ++measured_;
        if (offset)
            *offset = offset_;
        BaVec2d<double> const size = computeTextSize(font, text);
        if (width < 0.0 || size.x <= width)
            return size;
        double const perLine = std::max(1.0, std::floor(width / 2.0));
        return {2.0 * perLine, 5.0 * std::ceil(static_cast<double>(text.size()) / perLine)};
    }

    /// What the next measurements give as the offset of the text.
    void setOffset(BaVec2d<double> const &offset) { offset_ = offset; }
    /// How often rich text was measured.
    int measured() const { return measured_; }

private:
    BaVec2d<double> offset_;
    mutable int measured_ = 0;
};

} // namespace Zem::Support
