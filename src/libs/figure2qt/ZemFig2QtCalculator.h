// ZemFig2QtCalculator.h: measuring text as the painters of this library paint it.
// Layer: text. One object for the process, after a QGuiApplication was made; used from one thread.
#pragma once

#include <ZemFig2Calculator.h>

#include <QtCore/QCache>

namespace Zem::Fig2Qt {

/// Keeps the sizes measured last. All sizes are page millimetres.
class QtCalculator : public Fig2::Calculator
{
public:
    explicit QtCalculator(double screenDpi = 96.0);
    ~QtCalculator() override;

    BaVec2d<double> computeTextSize(Font const &font, QString const &text) const override;
    BaVec2d<double> computeRichTextSize(QString const &text, Font const &font, double width,
                                        BaVec2d<double> *offset) const override;
    double getFontAscent(Font const &font) const override;
    double getFontDescent(Font const &font) const override;

private:
    BaVec2d<double> measure(QString const &text, int kind, Font const &font, double width) const;

    mutable QCache<QString, BaVec2d<double>> sizes_;
};

} // namespace Zem::Fig2Qt
