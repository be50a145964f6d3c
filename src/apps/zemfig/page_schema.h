// page_schema.h: which keys an element of a page document may have, and what each of them wants.
#pragma once

#include <ZemFig2Element.h>
#include <ZemFont.h>
#include <ZemMeasNamedPoint.h>

#include <QtCore/QString>

#include <array>
#include <optional>
#include <vector>

namespace Zem::Zemfig {

/// What a parameter holds, told from the form that the library itself writes.
enum class ParameterKind { Bool, Number, Text, Color, Vector, SpaceVector, VectorList };

struct Parameter
{
    QString key;
    ParameterKind kind;
    QString value; ///< as it stands in the parameter string, behind "key = "
};

/// The entries of a parameter string in their order.
std::vector<Parameter> entriesOf(QString const &parameters);

/// The parameters that every element of a type has, with their defaults; empty for a type that cannot be made, and for
/// image labels, whose parameters depend on what they are labels of. The looks of an image's objects are none: they have
/// tables of their own.
std::vector<Parameter> const &parametersOf(Fig2::Element::Type_t type);
/// Those of an element, image labels included.
std::vector<Parameter> const &parametersOf(Fig2::Element const &element);

/// The parameter of this key; none when there is none, or when the type does not have it.
std::optional<Parameter> findParameter(std::vector<Parameter> const &parameters, QString const &key);
std::optional<Parameter> findParameter(Fig2::Element::Type_t type, QString const &key);

/// How the texts for people name an element: "label 'title'".
QString describe(Fig2::Element const &element);

/// Keys of an element's table that are no parameters. No parameter may be called so, but for the type.
std::vector<QString> const &structureKeys();
bool isStructureKey(QString const &key);

/// Whether the text of the key is a font, which may stand as a table.
bool isFontKey(QString const &key);

/// The words for the style bits of a font, in the order in which they are written.
struct FontStyle
{
    char const *key;
    unsigned int bit;
};
inline constexpr std::array<FontStyle, 7> FONT_STYLES{{{"italic", Font::ITALIC},
                                                       {"bold", Font::BOLD},
                                                       {"light", Font::LIGHT},
                                                       {"demi_bold", Font::DEMI_BOLD},
                                                       {"black", Font::BLACK},
                                                       {"underline", Font::UNDERLINE},
                                                       {"strikeout", Font::STRIKEOUT}}};

/// The words for the place of a named point; none for NUMBER, and for an unknown word.
QString wordOfPlace(Measurement::PointPlace_t place);
std::optional<Measurement::PointPlace_t> placeFromWord(QString const &word);

std::vector<QString> keysOf(std::vector<Parameter> const &parameters);

/// The entry of `words` that is most like `word`; empty when none is near.
QString nearestWord(QString const &word, std::vector<QString> const &words);

/// " (did you mean 'nearest'?)", or nothing.
QString suggestion(QString const &word, std::vector<QString> const &words);

} // namespace Zem::Zemfig
