// page_schema.h: which keys an element of a page document may have, and what each of them wants.
#pragma once

#include <ZemFig2Element.h>

#include <QtCore/QString>

#include <optional>
#include <vector>

namespace Zem::Zemfig {

/// What a parameter holds, told from the form that the library itself writes.
enum class ParameterKind { Bool, Number, Text, Color, Vector, VectorList };

struct Parameter
{
    QString key;
    ParameterKind kind;
    QString value; ///< as it stands in the parameter string, behind "key = "
};

/// The entries of a parameter string in their order.
std::vector<Parameter> entriesOf(QString const &parameters);

/// The parameters that every element of a type has, with their defaults; empty for a type that cannot be made.
std::vector<Parameter> const &parametersOf(Fig2::Element::Type_t type);

/// The parameter of this key; none when the type does not have it.
std::optional<Parameter> findParameter(Fig2::Element::Type_t type, QString const &key);

/// The entry of `words` that is most like `word`; empty when none is near.
QString nearestWord(QString const &word, std::vector<QString> const &words);

/// " (did you mean 'nearest'?)", or nothing.
QString suggestion(QString const &word, std::vector<QString> const &words);

} // namespace Zem::Zemfig
