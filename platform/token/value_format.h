// value_format.h: the format text of a token, "+[mm]8.2".
#pragma once

#include <QtCore/QString>

namespace Zem {

/// Sign, unit in brackets, sign, width, point, precision; each may be missing.
class ValueFormat
{
public:
    explicit ValueFormat(QString const &format);

    /// What stands in the brackets; empty when there are none.
    QString const &getUnitText() const noexcept { return unitText_; }
    /// With the format's precision, or this one when it has none; -1 stands for six digits.
    QString toText(double number, int defaultPrecision) const;

private:
    void takeSign(QStringView *rest);
    void takeBrackets(QString *format);
    void readNumbers(QStringView rest);

    QString unitText_;
    bool showSign_ = false;
    int width_ = -1;
    int precision_ = -1;
};

} // namespace Zem
