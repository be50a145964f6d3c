// ZemFig2QtCalculator.h: QtCalculator, which measures text with the fonts that the painters of this library paint with.
// Layer: Qt backend. One object for the process, set up on one thread before use; then it measures on any thread. Needs
// a QGuiApplication, see ensureGuiApplication.
#pragma once

#include <ZemFig2Calculator.h>

namespace Zem::Fig2Qt {

/// What is measured here is what is painted, on every output and at every resolution. Texts already measured or painted
/// on the same thread are not laid out again; that memory is bounded.
class QtCalculator : public Fig2::Calculator
{
public:
    /// Throws ProgError when a calculator exists already, or no QGuiApplication does.
    explicit QtCalculator(double screenDpi = 96.0);

    /// The height is that of a line with its leading.
    BaVec2d<double> computeTextSize(Font const &font, QString const &text) const override;
    /// The width is that of the widest line, even when the text is wrapped at more. `offset` receives (0, 0): a text
    /// is painted from where its box stands.
    BaVec2d<double> computeRichTextSize(QString const &text, Font const &font, double width,
                                        BaVec2d<double> *offset) const override;
    double getFontAscent(Font const &font) const override;
    double getFontDescent(Font const &font) const override;
};

} // namespace Zem::Fig2Qt
