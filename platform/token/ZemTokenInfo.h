// ZemTokenInfo.h: the description of a token.
#pragma once

#include <ZemValue.h>

#include <QtCore/QString>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

/// A token's name and display text, the kind of data behind it, and the group in which hosts list it. A plain value;
/// several threads may read it.
class TokenInfo
{
public:
    /// Where a token comes from. Stored in files by number and by name: append, never renumber or rename.
    enum Category_t {
        CATEGORY_GENERAL = 0,
        CATEGORY_PROJECT = 1,
        CATEGORY_STAGE = 2,
        CATEGORY_REPORT = 3,
        CATEGORY_USER = 4,
        CATEGORY_SYSTEM = 5,
        CATEGORY_DATE = 6,
        CATEGORY_FILE = 7,
        CATEGORY_UNIT = 8,
        CATEGORY_STATISTICS = 9,
        CATEGORY_POINT = 10,
        CATEGORY_LINE = 11,
        CATEGORY_AREA = 12,
        CATEGORY_SECTION = 13,
        CATEGORY_SENSOR = 14,
        CATEGORY_CAMERA = 15,
        CATEGORY_IMAGE = 16,
        CATEGORY_CHART = 17,
        CATEGORY_SNAPSHOT = 18,
        CATEGORY_LEGEND = 19,
        CATEGORY_TOLERANCE = 20,
        CATEGORY_ELEMENT = 21,
        CATEGORY_MATERIAL = 22,
        CATEGORY_DEVIATION = 23,
        CATEGORY_STRAIN = 24,
        CATEGORY_DISPLACEMENT = 25,
        CATEGORY_UNDEFINED = 26
    };

    /// What is behind a token. Stored in files: never renumber. The types from 7 to 10 carry no data; an image, a chart
    /// and a snapshot are data objects; all others carry a Value.
    enum Type_t {
        TYPE_STRING = 0,
        TYPE_INTEGER = 1,
        TYPE_DOUBLE = 2,
        TYPE_LENGTH = 3,
        TYPE_ANGLE = 4,
        TYPE_STRAIN = 5,
        TYPE_BOOLEAN = 6,
        TYPE_GROUP = 7,
        TYPE_SEPARATOR = 8,
        TYPE_HEADLINE = 9,
        TYPE_PLACEHOLDER = 10,
        TYPE_IMAGE = 11,
        TYPE_FORCE = 12,
        TYPE_STRESS = 13,
        TYPE_TEMPERATURE = 14,
        TYPE_TIME = 15,
        TYPE_CHART = 16,
        TYPE_SNAPSHOT = 17,
        TYPE_DATE_TIME = 18,
        TYPE_VECTOR_2D = 19,
        TYPE_VECTOR_3D = 20,
        TYPE_FORMATTED_TEXT = 21,
        TYPE_QUANTITY = 22 ///< a number in a unit that has no type of its own
    };

    /// The built-in token that tells whether an element is selected.
    static constexpr QLatin1StringView TOKEN_SELECTED{"Zem_Selected"};
    static TokenInfo getSelectedInfo();
    static Value getSelectedValue(bool selected);

    /// A stable English word; that of CATEGORY_UNDEFINED for a number that is no category.
    static QString getCategoryTypeName(Category_t category);
    /// CATEGORY_UNDEFINED for a word that names none.
    static Category_t getCategoryByTypeName(QString const &name);

    /// A string of no name.
    TokenInfo() = default;
    /// In CATEGORY_GENERAL. `text` is shown to the user.
    TokenInfo(Type_t type, QString const &name, QString const &text);
    TokenInfo(Category_t category, Type_t type, QString const &name, QString const &text);

    Category_t getCategory() const noexcept { return category_; }
    Type_t getType() const noexcept { return type_; }
    QString const &getName() const noexcept { return name_; }
    QString const &getText() const noexcept { return text_; }

    bool operator==(TokenInfo const &) const = default;

    /// One block. Both throw IO::StreamException; a failed load leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    Category_t category_ = CATEGORY_GENERAL;
    Type_t type_ = TYPE_STRING;
    QString name_;
    QString text_;
};

} // namespace Zem
