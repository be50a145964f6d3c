// parse_field.h: what reading one entry of a parameter string needs, whatever the form of the string.
#pragma once

#include <ZemColor.h>

#include <QtCore/QString>

#include <span>

namespace Zem::ParseDetail {

/// An entry found in a parameter string; the views live as long as that string is not changed.
struct Field
{
    QStringView key;
    QStringView value;      ///< as it stands, without blanks at its ends
    qsizetype begin = 0;    ///< the entry's first character in the parameter string
    qsizetype size = 0;     ///< of the entry with its end
    qsizetype position = 0; ///< of the value in the parameter string

    /// Throws ParamError: key, value and `what`, a text for translate().
    [[noreturn]] void fail(char const *what) const;
};

/// Throws ParamError.
[[noreturn]] void failMissing(QString const &key);

/// What a view shows starts here in `whole`.
inline qsizetype positionIn(QStringView whole, QStringView part)
{
    return part.data() - whole.data();
}

/// Reads the first entry of that key and removes it; removes nothing when `read` throws. `find` is
/// bool (QStringView, QString const &, Field *).
template <class Find, class Read>
auto consume(QString &parameters, QString const &key, Find find, Read read)
{
    Field field;
    if (!find(parameters, key, &field)) {
        failMissing(key);
    }
    auto value = read(field);
    parameters.remove(field.begin, field.size);
    return value;
}

/// Each false, and the result is undefined, when the text is of another form. Blanks at the ends do not count.
bool toNumber(QStringView text, long long *number);
/// Infinity and NaN are no numbers here.
bool toNumber(QStringView text, double *number);
/// Numbers with commas between, exactly as many as `numbers` has room for.
bool toNumbers(QStringView text, std::span<double> numbers);
/// toNumbers() in parentheses.
bool toTuple(QStringView text, std::span<double> numbers);
bool toHexColor(QStringView text, Color *color);

/// Throw ParamError when the number is none or out of bounds.
double readDouble(Field const &field, QStringView text, double min, double max);
long long readInteger(Field const &field, QStringView text, long long min, long long max);

} // namespace Zem::ParseDetail
