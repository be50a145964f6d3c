#include "ZemFig2QtCalculator.h"

#include "ZemFig2QtApplication.h"
#include "figqt_text_engine.h"

namespace Zem::Fig2Qt {

namespace {

BaVec2d<double> sizeOf(TextLayout const &layout)
{
    return BaVec2d<double>(layout.width, layout.height) * MM_PER_UNIT;
}

} // namespace

QtCalculator::QtCalculator(double screenDpi) : Calculator(screenDpi)
{
    requireGuiApplication();
}

BaVec2d<double> QtCalculator::computeTextSize(Font const &font, QString const &text) const
{
    return sizeOf(*TextEngine::forThisThread().layOutPlain(text, font, Color()));
}

BaVec2d<double> QtCalculator::computeRichTextSize(QString const &text, Font const &font, double width,
                                                  BaVec2d<double> *offset) const
{
    if (offset)
        *offset = {0.0, 0.0};
    return sizeOf(*TextEngine::forThisThread().layOutRich(text, font, width));
}

double QtCalculator::getFontAscent(Font const &font) const
{
    return TextEngine::forThisThread().getFace(font).getAscent() * MM_PER_UNIT;
}

double QtCalculator::getFontDescent(Font const &font) const
{
    return TextEngine::forThisThread().getFace(font).getDescent() * MM_PER_UNIT;
}

} // namespace Zem::Fig2Qt
