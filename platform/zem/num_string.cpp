#include <ZemNumString.h>

#include <QtCore/QStringView>

namespace Zem {

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// Cuts the run of digits at the front off the text.
QStringView takeNumber(QStringView *text)
{
    qsizetype length = 0;
    while (length < text->size() && isDigit((*text)[length])) {
        ++length;
    }
    QStringView number = text->first(length);
    *text = text->mid(length);
    while (number.startsWith(QLatin1Char('0'))) {
        number = number.mid(1);
    }
    return number;
}

/// By value; neither has leading zeros.
int compareNumbers(QStringView a, QStringView b)
{
    if (a.size() != b.size()) {
        return a.size() < b.size() ? -1 : 1;
    }
    return a.compare(b);
}

int compareNames(QStringView a, QStringView b)
{
    while (!a.empty() && !b.empty()) {
        int order = 0;
        if (isDigit(a.front()) && isDigit(b.front())) {
            QStringView const numberA = takeNumber(&a);
            order = compareNumbers(numberA, takeNumber(&b));
        } else {
            order = a.front().unicode() - b.front().unicode();
            a = a.mid(1);
            b = b.mid(1);
        }
        if (order != 0) {
            return order;
        }
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

} // namespace

bool NumString::operator<(NumString const &other) const noexcept
{
    int const order = compareNames(name_, other.name_);
    return order != 0 ? order < 0 : name_ < other.name_;
}

} // namespace Zem
