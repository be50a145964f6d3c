#include "ZemFig2QtCalculator.h"

#include "ZemFig2QtTextLayout.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QRawFont>

namespace Zem::Fig2Qt {

namespace {

constexpr int CACHED_SIZES = 20000;
constexpr double MILLIMETRES_PER_POINT = 25.4 / 72.0;

/// The font so large that its metrics are not rounded, and what one of its units is in millimetres at the real size.
QRawFont largeFont(Font const &font, double *millimetresPerUnit)
{
    constexpr double EM = 1000.0;
    QFont large = toQFont(font);
    large.setPixelSize(static_cast<int>(EM));
    *millimetresPerUnit = font.getSize() * MILLIMETRES_PER_POINT / EM;
    return QRawFont::fromFont(large);
}

} // namespace

QtCalculator::QtCalculator(double screenDpi) : Calculator(screenDpi), sizes_(CACHED_SIZES)
{
}

QtCalculator::~QtCalculator() = default;

BaVec2d<double> QtCalculator::measure(QString const &text, int kind, Font const &font, double width) const
{
    QString const key = QStringLiteral("%1,%2,%3,").arg(kind).arg(width, 0, 'g', 17).arg(font.getParameterString()) + text;
    if (BaVec2d<double> const *size = sizes_.object(key))
        return *size;
    auto *size = new BaVec2d<double>(TextLayout(text, static_cast<TextLayout::Kind>(kind), font, width).size());
    BaVec2d<double> const result = *size;
    sizes_.insert(key, size);
    return result;
}

BaVec2d<double> QtCalculator::computeTextSize(Font const &font, QString const &text) const
{
    return measure(text, TextLayout::PLAIN, font, -1.0);
}

BaVec2d<double> QtCalculator::computeRichTextSize(QString const &text, Font const &font, double width,
                                                  BaVec2d<double> *offset) const
{
    if (offset)
        *offset = {0.0, 0.0};
    return measure(text, TextLayout::RICH, font, width);
}

double QtCalculator::getFontAscent(Font const &font) const
{
    double millimetresPerUnit = 0.0;
    QRawFont const large = largeFont(font, &millimetresPerUnit);
    return large.ascent() * millimetresPerUnit;
}

double QtCalculator::getFontDescent(Font const &font) const
{
    double millimetresPerUnit = 0.0;
    QRawFont const large = largeFont(font, &millimetresPerUnit);
    return large.descent() * millimetresPerUnit;
}

} // namespace Zem::Fig2Qt
