// ZemFig2Calculator.h: Calculator, through which the library measures text.
// Layer: services. One object for the process, set up on one thread before use.
#pragma once

#include <ZemFont.h>
#include <ZemVec.h>

#include <QtCore/QString>

namespace Zem::Fig2 {

/// Measures text for the drawing target in use. All sizes are page millimetres; font sizes are points. The application
/// derives from it and keeps the one object alive as long as figures are laid out; before and afterwards a dummy
/// answers, for which every text measures (1, 1).
class Calculator
{
public:
    /// `screenDpi`: dots per inch of the user's screen. Throws ProgError when an object exists already.
    explicit Calculator(double screenDpi);
    virtual ~Calculator();
    Calculator(Calculator const &) = delete;
    Calculator &operator=(Calculator const &) = delete;

    /// Width and height of a plain text.
    virtual BaVec2d<double> computeTextSize(Font const &font, QString const &text) const = 0;
    /// Width and height of formatted text wrapped at `width`, -1.0 meaning no wrapping. `offset`, when given, receives
    /// what has to be added to a position at which the measured box is to stand.
    virtual BaVec2d<double> computeRichTextSize(QString const &text, Font const &font, double width,
                                                BaVec2d<double> *offset) const = 0;
    /// Height above and below the base line; 0 here.
    virtual double getFontAscent(Font const &font) const;
    virtual double getFontDescent(Font const &font) const;

    /// Never null: the application's object, else the dummy. Not owned by the caller.
    static Calculator const *getInstance();

    /// The edge of a screen pixel in millimetres.
    double getScreenPixelSizeMM() const;
    /// The height of a sample text.
    double getFontHeight(Font const &font) const;

protected:
    struct Unregistered
    {
    };
    /// For the dummy, which stands in when no object is registered.
    Calculator(Unregistered, double screenDpi) : screenDpi_(screenDpi) {}

private:
    static Calculator const *_instance;

    double screenDpi_;
};

} // namespace Zem::Fig2
