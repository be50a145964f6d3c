// ZemFig2Variable.h: the names under which a figure's own values are registered, and the record of one.
// Layer: tokens. Plain values; distinct objects may be used from distinct threads.
#pragma once

#include <ZemStream.h>
#include <ZemUnit.h>

#include <QtCore/QString>

namespace Zem {
class Image;
class ImageColor;
} // namespace Zem

namespace Zem::Fig2 {

class ChartData;
class ImageData;
class SnapshotData;

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

/// The record of one registered token. Which of the values counts is told by the type, and the data objects are owned
/// by a record of the matching type only. A DataInterface keeps the records; others go through its operations.
struct Variable
{
    Variable_t type;
    QString typeHint;
    unsigned int modifiedCounter = 0; ///< raised at each change; not stored
    QString displayText;
    int sortIndex = -1;
    QString groupToken; ///< name of the group token above
    QString defaultFormat;
    QString iconId;
    int intValue = 0;
    double doubleValue = 0.0; ///< in the base unit of unitData
    UnitData unitData;
    QString stringValue;
    Zem::Image *image = nullptr;
    Zem::ImageColor *overlayImage = nullptr;
    ImageData *imageData = nullptr;
    ChartData *chartData = nullptr;
    SnapshotData *snapshotData = nullptr;

    explicit Variable(Variable_t variableType) : type(variableType) {}
    /// Copies whatever data objects there are, and the counter.
    Variable(Variable const &other);
    /// Deliberately shares the data objects and deletes none: the caller keeps ownership straight.
    Variable &operator=(Variable const &other) = default;
    ~Variable();

    /// The value as text; `format` is sign, unit in brackets, sign, width, point, precision, each optional. What cannot
    /// be shown is told by the text itself.
    QString toString(QString format) const;

    /// A header block and, by type, what follows. save throws ProgError for a chart or a snapshot without data. load
    /// replaces all but the counter; it throws IO::StreamException, and what was read so far stays.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    void deleteData();
    void saveImage(IO::OutStream *stream) const;
    void loadBoolean(IO::InStream *stream);
    void loadValue(IO::InStream *stream);
    void loadDouble(IO::InStream *stream);
    void loadImage(IO::InStream *stream);
};

} // namespace Zem::Fig2
