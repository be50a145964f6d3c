#include "value_format.h"

#include <algorithm>

namespace Zem {

namespace {

// A format may come from a file: it must not make texts that fill the memory.
constexpr int MAX_WIDTH = 1000;
constexpr int MAX_PRECISION = 100;

int toInt(QStringView digits, int limit)
{
    // Deliberate: a failed conversion counts as 0.
    return std::clamp(digits.toInt(), -limit, limit);
}

} // namespace

ValueFormat::ValueFormat(QString const &format)
{
    QString rest = format;
    QStringView view(rest);
    takeSign(&view);
    rest = view.toString();
    takeBrackets(&rest);
    view = rest;
    takeSign(&view);
    readNumbers(view);
}

void ValueFormat::takeSign(QStringView *rest)
{
    // Deliberate: a minus asks for a plus sign too.
    if (rest->startsWith(u'+') || rest->startsWith(u'-')) {
        *rest = rest->sliced(1);
        showSign_ = true;
    }
}

void ValueFormat::takeBrackets(QString *format)
{
    qsizetype const open = format->indexOf(u'[');
    qsizetype const close = format->indexOf(u']');
    if (open >= 0 && close > open) {
        unitText_ = format->sliced(open + 1, close - open - 1);
        format->remove(open, close - open + 1);
    }
}

void ValueFormat::readNumbers(QStringView rest)
{
    qsizetype const point = rest.indexOf(u'.');
    if (point >= 0) {
        width_ = toInt(rest.first(point), MAX_WIDTH);
        precision_ = toInt(rest.sliced(point + 1), MAX_PRECISION);
    } else if (!rest.isEmpty() && rest.front().isNumber()) {
        width_ = toInt(rest, MAX_WIDTH);
    }
}

QString ValueFormat::toText(double number, int defaultPrecision) const
{
    int const precision = precision_ == -1 ? defaultPrecision : precision_;
    if (showSign_ && number > 0) {
        QString const text = QStringLiteral("+%1").arg(number, 0, 'f', precision, u' ');
        return width_ == -1 ? text : text.rightJustified(width_, u' ');
    }
    return QStringLiteral("%1").arg(number, width_ == -1 ? 0 : width_, 'f', precision, u' ');
}

} // namespace Zem
