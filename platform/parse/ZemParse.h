// ZemParse.h: parameter strings, a text form of named values that people can read, edit and compare.
// The text form is told in docs/formats/parameter-string.md.
#pragma once

#include <ZemColor.h>
#include <ZemError.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <vector>

namespace Zem {

class Font;

/// A bad parameter string. The text names the key and the value at fault.
class ParamError : public Exception
{
public:
    /// `position` is the index of the character at fault, -1 when it is not known.
    ParamError(QString const &text, int position);
    ~ParamError() override;

    int getPosition() const noexcept { return position_; }

private:
    int position_;
};

/// Makes and reads parameter strings.
///
/// create...() returns one entry, a line "key = value"; a parameter string is any number of them in a row. get...()
/// returns the value of the first entry of that key and removes the entry from `parameters`, so that a reader consumes
/// what it has read. Each get...() throws ParamError and leaves `parameters` alone when there is no such entry or its
/// value is not of the form asked for. A key is one or more characters without blanks at its ends and without
/// '=', '"' and line ends, else ProgError. Numbers never depend on a locale. All operations may be called from any
/// thread.
class Parse
{
public:
    Parse() = delete;

    static bool parameterExists(QString const &parameters, QString const &key);

    static QString createBool(QString const &key, bool value);
    static bool getBool(QString &parameters, QString const &key);

    /// The bounds, here and below, belong to the range; a number outside is a ParamError.
    static QString createInt(QString const &key, int value);
    static int getInt(QString &parameters, QString const &key, int min, int max);

    static QString createUInt(QString const &key, unsigned int value);
    static unsigned int getUInt(QString &parameters, QString const &key, unsigned int min, unsigned int max);

    /// Written in the shortest form that reads back to the same bits. Infinity and NaN are refused in reading.
    static QString createDouble(QString const &key, double value);
    static double getDouble(QString &parameters, QString const &key, double min, double max);

    /// Any text, also one that is a parameter string itself.
    static QString createString(QString const &key, QString const &value);
    static QString getString(QString &parameters, QString const &key);

    /// "#rrggbbaa"; "#rrggbb" is read as opaque.
    static QString createColor(QString const &key, Color const &value);
    static Color getColor(QString &parameters, QString const &key);

    /// "(x, y)".
    static QString createVec2d(QString const &key, BaVec2d<double> const &value);
    static BaVec2d<double> getVec2d(QString &parameters, QString const &key);

    /// "(x, y, z)".
    static QString createVec3dString(QString const &key, BaVec3d<double> const &value);
    static BaVec3d<double> getVec3dFromString(QString &parameters, QString const &key);

    /// "[(x, y), (x, y)]". getStringVector() reads it too, each item as the text "(x, y)". The bounds are for the
    /// number of items.
    static QString createVec2dVector(QString const &key, std::vector<BaVec2d<double>> const &values);
    static std::vector<BaVec2d<double>> getVec2dVector(QString &parameters, QString const &key, unsigned int min,
                                                       unsigned int max);

    /// Items may be any texts.
    static QString createStringVector(QString const &key, std::vector<QString> const &values);
    static std::vector<QString> getStringVector(QString &parameters, QString const &key, unsigned int min,
                                                unsigned int max);

    /// One of a fixed list of words. An index beyond the list, or a value that is not in it, is a ProgError.
    static QString createList(QString const &key, unsigned int index, std::vector<QString> const &names);
    static QString createList(QString const &key, QString const &value, std::vector<QString> const &names);
    /// The index of the word; a word outside the list is a ParamError.
    static unsigned int getList(QString &parameters, QString const &key, std::vector<QString> const &names);

    static QString getParameterString(QString const &key, Font const &font);
    /// Leaves the font alone when there is no entry.
    static void createFromParameterString(QString &parameters, QString const &key, Font *font);

    /// Without white space at its ends.
    static QString stripBlanks(QString const &text);
};

} // namespace Zem
