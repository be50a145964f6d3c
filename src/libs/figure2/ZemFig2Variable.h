// ZemFig2Variable.h: the names under which a figure's own values are registered.
// Layer: tokens. Plain values; distinct objects may be used from distinct threads.
#pragma once

#include <ZemStream.h>

#include <QtCore/QString>

namespace Zem::Fig2 {

/// What a registered token holds. Stored in files: never renumber.
enum Variable_t {
    VARIABLE_INTEGER = 0,
    VARIABLE_DOUBLE = 1,
    VARIABLE_STRING = 2,
    VARIABLE_IMAGE = 3,
    VARIABLE_CHART = 4,
    VARIABLE_IMAGE_REFERENCE = 5,
    VARIABLE_CHART_REFERENCE = 6,
    VARIABLE_GROUP = 7,
    VARIABLE_SNAPSHOT = 8,
    VARIABLE_SNAPSHOT_REFERENCE = 9,
    VARIABLE_SEPARATOR = 10
};

/// "INTEGER" and so on; empty for a number outside the enumeration.
QString getVariableDisplayName(Variable_t type);
/// "integer" and so on, as parameter strings have it; empty for a number outside the enumeration.
QString getVariableParameterText(Variable_t type);

/// The key of a registered token: a name may exist once per type.
class Token_t
{
public:
    /// Empty name, type integer.
    Token_t() = default;
    Token_t(QString const &name, Variable_t type) : name_(name), type_(type) {}

    QString const &getName() const { return name_; }
    Variable_t getType() const { return type_; }
    bool isEmpty() const { return name_.isEmpty(); }

    /// Whether a character may stand in a token's text: letters, numbers and . _ - + [ ] and the backslash.
    static bool isTokenChar(QChar character);

    /// By name, tokens of equal names by type.
    bool operator<(Token_t const &other) const;
    /// Two tokens with empty names are equal whatever their types.
    bool operator==(Token_t const &other) const;

    /// One stream block. load throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// An entry of two texts, name and type, under `key`. Reading leaves the token alone when there is no entry and the
    /// type alone when the name is empty; it throws ParamError for anything that is not a name and a known type.
    QString getParameterString(QString const &key) const;
    void createFromParameterString(QString &parameters, QString const &key);

private:
    QString name_;
    Variable_t type_ = VARIABLE_INTEGER;
};

} // namespace Zem::Fig2
