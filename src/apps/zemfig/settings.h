// settings.h: what a project holds once, changed by KEY=VALUE.
#pragma once

#include "cli.h"
#include "page_schema.h"

#include <ZemParse.h>

namespace Zem::Zemfig {

/// Changes one entry of a record that has a parameter string, which `what` names. Throws UsageError for an unknown key
/// and for a value that does not fit.
template <class Record>
void changeSetting(Record *record, QString const &setting, char const *what)
{
    qsizetype const equals = setting.indexOf(QLatin1Char('='));
    if (equals <= 0)
        throw UsageError(QStringLiteral("a setting is KEY=VALUE, not '%1'").arg(setting));
    QString const key = setting.left(equals);
    QString const value = setting.mid(equals + 1);
    std::vector<Parameter> const known = entriesOf(record->getParameterString());
    auto const found = findParameter(known, key);
    if (!found)
        throw UsageError(
            QStringLiteral("%1 has no '%2'%3").arg(QLatin1StringView(what), key, suggestion(key, keysOf(known))));
    QString entry = found->kind == ParameterKind::Text ? Parse::createString(key, value)
                                                       : QStringLiteral("%1 = %2\n").arg(key, value);
    try {
        record->createFromParameterString(entry);
    } catch (ParamError const &error) {
        throw UsageError(QStringLiteral("'%1': %2").arg(setting, error.getText()));
    }
}

} // namespace Zem::Zemfig
