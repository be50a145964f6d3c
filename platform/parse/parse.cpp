#include <ZemParse.h>

#include "parse_entries.h"

#include <ZemFont.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace Zem {

using namespace ParseDetail;

namespace {

QString text(double number)
{
    std::array<char, 32> buffer{};
    auto const result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

QString text(BaVec2d<double> const &vector)
{
    return QStringLiteral("(%1, %2)").arg(text(vector.x), text(vector.y));
}

BaVec2d<double> toVec2d(Field const &field, QStringView value)
{
    std::array<double, 2> numbers{};
    if (!toTuple(value, numbers)) {
        field.fail("is no pair of numbers");
    }
    return {numbers[0], numbers[1]};
}

template <class Values, class ToText>
QString makeList(Values const &values, ToText toText)
{
    QString list;
    for (auto const &value : values) {
        list += list.isEmpty() ? QStringLiteral("[") : QStringLiteral(", ");
        list += toText(value);
    }
    return list.isEmpty() ? QStringLiteral("[]") : list + u']';
}

std::vector<QString> readItems(Field const &field, unsigned int min, unsigned int max)
{
    std::vector<QString> items = readTexts(field);
    if (items.size() < min || items.size() > max) {
        field.fail("has a wrong number of items");
    }
    return items;
}

template <class Read>
auto take(QString &parameters, QString const &key, Read read)
{
    return consume(parameters, key, findEntry, read);
}

} // namespace

ParamError::ParamError(QString const &text, int position) : Exception(text), position_(position)
{
}

ParamError::~ParamError() = default;

bool Parse::parameterExists(QString const &parameters, QString const &key)
{
    Field field;
    return findEntry(parameters, key, &field);
}

QString Parse::createBool(QString const &key, bool value)
{
    return makeEntry(key, value ? QStringLiteral("true") : QStringLiteral("false"));
}

bool Parse::getBool(QString &parameters, QString const &key)
{
    return take(parameters, key, [](Field const &field) {
        QString const word = readText(field);
        if (word != u"true" && word != u"false") {
            field.fail("is neither true nor false");
        }
        return word == u"true";
    });
}

QString Parse::createInt(QString const &key, int value)
{
    return makeEntry(key, QString::number(value));
}

int Parse::getInt(QString &parameters, QString const &key, int min, int max)
{
    return take(parameters, key,
                [=](Field const &field) { return static_cast<int>(readInteger(field, readText(field), min, max)); });
}

QString Parse::createUInt(QString const &key, unsigned int value)
{
    return makeEntry(key, QString::number(value));
}

unsigned int Parse::getUInt(QString &parameters, QString const &key, unsigned int min, unsigned int max)
{
    return take(parameters, key, [=](Field const &field) {
        return static_cast<unsigned int>(readInteger(field, readText(field), min, max));
    });
}

QString Parse::createDouble(QString const &key, double value)
{
    return makeEntry(key, text(value));
}

double Parse::getDouble(QString &parameters, QString const &key, double min, double max)
{
    return take(parameters, key, [=](Field const &field) { return readDouble(field, readText(field), min, max); });
}

QString Parse::createString(QString const &key, QString const &value)
{
    return makeEntry(key, quote(value));
}

QString Parse::getString(QString &parameters, QString const &key)
{
    return take(parameters, key, readText);
}

QString Parse::createColor(QString const &key, Color const &value)
{
    QString color = QStringLiteral("#");
    for (unsigned int channel : {value.getRed(), value.getGreen(), value.getBlue(), value.getAlpha()}) {
        color += QString::number(channel, 16).rightJustified(2, u'0');
    }
    return makeEntry(key, color);
}

Color Parse::getColor(QString &parameters, QString const &key)
{
    return take(parameters, key, [](Field const &field) {
        Color color;
        if (!toHexColor(readText(field), &color)) {
            field.fail("is no colour");
        }
        return color;
    });
}

QString Parse::createVec2d(QString const &key, BaVec2d<double> const &value)
{
    return makeEntry(key, text(value));
}

BaVec2d<double> Parse::getVec2d(QString &parameters, QString const &key)
{
    return take(parameters, key, [](Field const &field) { return toVec2d(field, readText(field)); });
}

QString Parse::createVec3dString(QString const &key, BaVec3d<double> const &value)
{
    return makeEntry(key, QStringLiteral("(%1, %2, %3)").arg(text(value.x), text(value.y), text(value.z)));
}

BaVec3d<double> Parse::getVec3dFromString(QString &parameters, QString const &key)
{
    return take(parameters, key, [](Field const &field) {
        std::array<double, 3> numbers{};
        if (!toTuple(readText(field), numbers)) {
            field.fail("is no triple of numbers");
        }
        return BaVec3d<double>(numbers[0], numbers[1], numbers[2]);
    });
}

QString Parse::createVec2dVector(QString const &key, std::vector<BaVec2d<double>> const &values)
{
    return makeEntry(key, makeList(values, [](BaVec2d<double> const &value) { return text(value); }));
}

std::vector<BaVec2d<double>> Parse::getVec2dVector(QString &parameters, QString const &key, unsigned int min,
                                                   unsigned int max)
{
    return take(parameters, key, [=](Field const &field) {
        std::vector<BaVec2d<double>> vectors;
        for (QString const &item : readItems(field, min, max)) {
            vectors.push_back(toVec2d(field, item));
        }
        return vectors;
    });
}

QString Parse::createStringVector(QString const &key, std::vector<QString> const &values)
{
    return makeEntry(key, makeList(values, quote));
}

std::vector<QString> Parse::getStringVector(QString &parameters, QString const &key, unsigned int min, unsigned int max)
{
    return take(parameters, key, [=](Field const &field) { return readItems(field, min, max); });
}

QString Parse::createList(QString const &key, unsigned int index, std::vector<QString> const &names)
{
    if (index >= names.size()) {
        throw ProgError("Zem::Parse::createList", "parse", __LINE__, "index beyond the list");
    }
    return createString(key, names[index]);
}

QString Parse::createList(QString const &key, QString const &value, std::vector<QString> const &names)
{
    if (std::find(names.begin(), names.end(), value) == names.end()) {
        throw ProgError("Zem::Parse::createList", "parse", __LINE__, "value is not in the list");
    }
    return createString(key, value);
}

unsigned int Parse::getList(QString &parameters, QString const &key, std::vector<QString> const &names)
{
    return take(parameters, key, [&](Field const &field) {
        auto const name = std::find(names.begin(), names.end(), readText(field));
        if (name == names.end()) {
            field.fail("is none of the words allowed here");
        }
        return static_cast<unsigned int>(name - names.begin());
    });
}

QString Parse::getParameterString(QString const &key, Font const &font)
{
    return createString(key, font.getParameterString());
}

void Parse::createFromParameterString(QString &parameters, QString const &key, Font *font)
{
    if (!parameterExists(parameters, key)) {
        return;
    }
    *font = take(parameters, key, [&](Field const &field) {
        Font read = *font;
        if (!read.createFromParameterString(readText(field))) {
            field.fail("is no font");
        }
        return read;
    });
}

QString Parse::stripBlanks(QString const &blankText)
{
    return blankText.trimmed();
}

} // namespace Zem
