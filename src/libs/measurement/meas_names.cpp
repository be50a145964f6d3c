#include "meas_names.h"

namespace Zem::Measurement {

QString makeTokenName(QString const &columnName)
{
    QString name;
    for (QChar const c : columnName.simplified()) {
        bool const blank = c == QLatin1Char(' ') || c == QLatin1Char('_');
        if (blank && !name.endsWith(QLatin1Char('_'))) {
            name += QLatin1Char('_');
        } else if (!blank && (c.isLetterOrNumber() || QStringView(u".-+\\").contains(c))) {
            name += c;
        }
    }
    while (name.endsWith(QLatin1Char('_'))) {
        name.chop(1);
    }
    return name;
}

bool isBuiltIn(QString const &name)
{
    return name == STAGE_TOKEN || name == STAGE_COUNT_TOKEN;
}

QString uniqueName(QString const &name, std::set<QString> const &taken)
{
    QString unique = name;
    for (int number = 2; isBuiltIn(unique) || taken.contains(unique); ++number) {
        unique = QStringLiteral("%1_%2").arg(name).arg(number);
    }
    return unique;
}

QString columnName(QString const &name, std::size_t index)
{
    QString const plain = makeTokenName(name);
    return plain.isEmpty() ? QStringLiteral("column%1").arg(index + 1) : plain;
}

bool isTokenText(QString const &text)
{
    QString const completed = text + QLatin1Char('x'); // a name may not end with "_", its beginning may
    return makeTokenName(completed) == completed;
}

QString groupOf(QString const &name)
{
    return name.left(std::max(name.lastIndexOf(QLatin1Char('.')), qsizetype(0)));
}

QString displayText(ProjectToken const &token)
{
    bool const plainUnit = !token.unitText.isEmpty() && !token.unit.hasUnit();
    return plainUnit ? QStringLiteral("%1 [%2]").arg(token.title, token.unitText) : token.title;
}

} // namespace Zem::Measurement
