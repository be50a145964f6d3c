// ZemToleranceParams.h: the texts and colours of a display that tells what is within tolerance.
#pragma once

#include <ZemColor.h>

#include <QtCore/QString>

#include <array>
#include <vector>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

namespace Legend2 {

/// The verdicts on a value, in ascending order of the values. Stored in files: never renumber.
enum TolerancePassType_t {
    TOLERANCE_FAIL_LOW = 0,     ///< below the lower limit
    TOLERANCE_WARNING_LOW = 1,  ///< within, but near the lower limit
    TOLERANCE_PASS = 2,         ///< within
    TOLERANCE_WARNING_HIGH = 3, ///< within, but near the upper limit
    TOLERANCE_FAIL_HIGH = 4     ///< above the upper limit
};

/// Title, texts, colours and the share of near misses of a tolerance display. Operations that take a pass type throw
/// ProgError for a number that is none. A plain value; several threads may read it.
class ToleranceParams
{
public:
    static constexpr unsigned int NUMBER_OF_PASS_TYPES = 5;

    /// Failures in red, passes in green, with texts; no warnings (their texts are empty, their share is 0, their
    /// colour is yellow).
    ToleranceParams();

    QString const &getTitle() const noexcept { return title_; }
    void setTitle(QString const &title) { title_ = title; }

    /// The text is for the user; a pass type without a text is not listed in a legend.
    QString const &getText(TolerancePassType_t type) const;
    void setText(TolerancePassType_t type, QString const &text);
    Color const &getColor(TolerancePassType_t type) const;
    /// Without a valid colour, values of this type are not coloured.
    bool isColorValid(TolerancePassType_t type) const;
    /// Makes the colour valid.
    void setColor(TolerancePassType_t type, Color const &color);
    void setColorInvalid(TolerancePassType_t type);

    /// The part of the extent between the limits, at either end, in which a value is near its limit; from 0 (no
    /// warnings) to 0.5, else ProgError.
    double getWarningShare() const noexcept { return warningShare_; }
    void setWarningShare(double share);

    /// The listed texts and their types, side by side, in ascending order of the values.
    std::vector<QString> getStringsForDrawing() const;
    std::vector<TolerancePassType_t> getPassTypesForDrawing() const;

    /// The verdict on a value, given the limits; values on a limit are within. None of the arguments is NaN.
    TolerancePassType_t getPassType(double value, double minimum, double maximum) const noexcept;

    bool operator==(ToleranceParams const &) const = default;

    /// One block. Both throw IO::StreamException; a failed load leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Entries with keys that begin with "tolerance_".
    QString getParameterString() const;
    /// Consumes those entries and leaves alone what has none. Throws ParamError for a bad value, and then changes
    /// neither argument nor object.
    void createFromParameterString(QString &parameters);

private:
    struct PassType
    {
        QString text;
        Color color;
        bool colorValid = true;

        bool operator==(PassType const &) const = default;
    };

    template <class Self, class Form>
    static void fields(Self &self, Form &form);

    QString title_;
    double warningShare_ = 0.0;
    std::array<PassType, NUMBER_OF_PASS_TYPES> passTypes_;
};

} // namespace Legend2
} // namespace Zem
