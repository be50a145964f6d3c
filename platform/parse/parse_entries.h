// parse_entries.h: the lines of a parameter string and the texts in them.
#pragma once

#include "parse_field.h"

#include <QtCore/QString>

#include <vector>

namespace Zem::ParseDetail {

/// The first entry of that key. False when there is none.
bool findEntry(QStringView parameters, QString const &key, Field *field);

/// "key = value" and a line end. `value` holds no line end. Throws ProgError for a key that could not be found again.
QString makeEntry(QString const &key, QString const &value);

/// The text in double quotes, on one line. Nested n times, an escaped character takes n more characters, not 2^n.
QString quote(QString const &text);

/// The text of a quoted value, or the value itself when it is not quoted. Throws ParamError.
QString readText(Field const &field);

/// The texts of "[item, item]". An item is quoted, or runs to the next comma outside parentheses. Throws ParamError.
std::vector<QString> readTexts(Field const &field);

} // namespace Zem::ParseDetail
