#include "page_toml_reader.h"

#include <ZemParse.h>

namespace Zem::Zemfig {

namespace {

bool readFontKey(QString const &key, toml::node const &node, Font *font)
{
    double size = 0.0;
    if (key == QLatin1StringView("family") && node.is_string()) {
        font->setFamily(textOf(node.as_string()->get()));
        return true;
    }
    if (key == QLatin1StringView("size") && readNumber(node, &size) && size > 0.0) {
        font->setSize(size);
        return true;
    }
    for (FontStyle const &style : FONT_STYLES) {
        if (key != QLatin1StringView(style.key) || !node.is_boolean())
            continue;
        font->setStyle(node.as_boolean()->get() ? font->getStyle() | style.bit : font->getStyle() & ~style.bit);
        return true;
    }
    return false;
}

} // namespace

void TomlReader::reportUnknown(toml::node const &node, QString const &key, std::vector<QString> const &known,
                               QString const &where)
{
    report(lineOf(node), QStringLiteral("unknown key '%1' in %2%3").arg(key, where, suggestion(key, known)));
}

TomlReader::FlatTable TomlReader::flattened(toml::table const &table, QString const &prefix)
{
    FlatTable result;
    for (auto const &[key, node] : table) {
        QString const name = prefix.isEmpty() ? textOf(key.str()) : prefix + QLatin1Char('_') + textOf(key.str());
        if (!node.is_table() || isFontKey(name) || isStructureKey(name)) {
            result.emplace_back(name, &node);
            continue;
        }
        FlatTable const inner = flattened(*node.as_table(), name);
        result.insert(result.end(), inner.begin(), inner.end());
    }
    return result;
}

void TomlReader::readText(toml::node const &node, QString const &key, QString *text)
{
    if (node.is_string())
        *text = textOf(node.as_string()->get());
    else
        report(lineOf(node), QStringLiteral("'%1' wants a text, not %2").arg(key, typeOf(node)));
}

QStringList TomlReader::readTexts(toml::node const &node, QString const &key)
{
    QStringList texts;
    toml::array const *array = node.as_array();
    bool sound = array != nullptr;
    for (std::size_t i = 0; sound && i < array->size(); ++i) {
        sound = (*array)[i].is_string();
        if (sound)
            texts << textOf((*array)[i].as_string()->get());
    }
    if (!sound)
        report(lineOf(node), QStringLiteral("'%1' wants a list of texts").arg(key));
    return texts;
}

QString TomlReader::entry(Parameter const &parameter, toml::node const &node)
{
    QString expected;
    QString const made = makeEntry(parameter, node, &expected);
    if (made.isEmpty())
        report(lineOf(node), QStringLiteral("'%1' wants %2, not %3").arg(parameter.key, expected, typeOf(node)));
    return made;
}

QString TomlReader::readEntry(std::vector<Parameter> const &known, std::vector<QString> const &others,
                              QString const &key, toml::node const &node, QString const &where)
{
    auto const parameter = findParameter(known, key);
    if (parameter && isFontKey(key) && node.is_table())
        return fontEntry(*node.as_table(), key, where);
    if (parameter)
        return entry(*parameter, node);
    std::vector<QString> keys = others;
    std::vector<QString> const further = keysOf(known);
    keys.insert(keys.end(), further.begin(), further.end());
    reportUnknown(node, key, keys, where);
    return {};
}

/// A font given as a table: what is left out keeps its default.
QString TomlReader::fontEntry(toml::table const &table, QString const &key, QString const &where)
{
    Font font;
    std::vector<QString> known{"family", "size"};
    for (FontStyle const &style : FONT_STYLES)
        known.push_back(QString::fromLatin1(style.key));
    for (auto const &[name, node] : table) {
        QString const text = textOf(name.str());
        if (!readFontKey(text, node, &font))
            report(lineOf(node),
                   QStringLiteral("bad key '%1' in the font of %2%3").arg(text, where, suggestion(text, known)));
    }
    return Parse::createString(key, font.getParameterString());
}

} // namespace Zem::Zemfig
