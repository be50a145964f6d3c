#include "ZemFig2Calculator.h"

#include <ZemError.h>

namespace Zem::Fig2 {

namespace {

constexpr double MILLIMETRES_PER_INCH = 25.4;

class DummyCalculator final : public Calculator
{
public:
    DummyCalculator() : Calculator(Unregistered(), 1.0) {}

    BaVec2d<double> computeTextSize(Font const &, QString const &) const override { return {1.0, 1.0}; }
    BaVec2d<double> computeRichTextSize(QString const &, Font const &, double, BaVec2d<double> *offset) const override
    {
        if (offset)
            *offset = {0.0, 0.0};
        return {1.0, 1.0};
    }
};

DummyCalculator const &dummyCalculator()
{
    static DummyCalculator const dummy;
    return dummy;
}

} // namespace

constinit Calculator const *Calculator::_instance = nullptr;

Calculator::Calculator(double screenDpi) : screenDpi_(screenDpi)
{
    if (_instance)
        throw ProgError("Zem::Fig2::Calculator::Calculator", "fig_calculator", __LINE__,
                        "Multiple instances not allowed");
    _instance = this;
}

Calculator::~Calculator()
{
    if (_instance == this)
        _instance = nullptr;
}

double Calculator::getFontAscent(Font const &) const
{
    return 0.0;
}

double Calculator::getFontDescent(Font const &) const
{
    return 0.0;
}

Calculator const *Calculator::getInstance()
{
    return _instance ? _instance : &dummyCalculator();
}

double Calculator::getScreenPixelSizeMM() const
{
    return MILLIMETRES_PER_INCH / screenDpi_;
}

double Calculator::getFontHeight(Font const &font) const
{
    return computeTextSize(font, QStringLiteral("Test123")).y;
}

} // namespace Zem::Fig2
