#include "page_schema.h"

#include <ZemFig2Image.h>
#include <ZemFig2ImageLabel.h>
#include <ZemScriptObject.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <map>
#include <memory>
#include <numeric>

namespace Zem::Zemfig {

namespace {

ParameterKind kindOf(QString const &value)
{
    if (value.startsWith(QLatin1Char('"')))
        return ParameterKind::Text;
    if (value == QLatin1StringView("true") || value == QLatin1StringView("false"))
        return ParameterKind::Bool;
    if (value.startsWith(QLatin1Char('#')))
        return ParameterKind::Color;
    if (value.startsWith(QLatin1Char('(')))
        return value.count(QLatin1Char(',')) > 1 ? ParameterKind::SpaceVector : ParameterKind::Vector;
    if (value.startsWith(QLatin1Char('[')))
        return ParameterKind::VectorList;
    return ParameterKind::Number;
}

/// How many letters must be put in, taken out or changed to make one word of the other (Levenshtein 1966).
int editDistance(QString const &a, QString const &b)
{
    std::vector<int> row(static_cast<std::size_t>(b.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype i = 0; i < a.size(); ++i) {
        int diagonal = row[0]++;
        for (qsizetype j = 0; j < b.size(); ++j) {
            auto const place = static_cast<std::size_t>(j);
            int const changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[place + 1];
            row[place + 1] = std::min({changed, row[place] + 1, diagonal + 1});
        }
    }
    return row.back();
}

using Measurement::PointPlace_t;

/// In the order of the numbers.
constexpr std::array<char const *, 4> PLACE_WORDS{"maximum", "minimum", "first", "last"};
static_assert(PLACE_WORDS.size() == static_cast<std::size_t>(PointPlace_t::NUMBER));

} // namespace

QString wordOfPlace(PointPlace_t place)
{
    auto const index = static_cast<std::size_t>(place);
    return index < PLACE_WORDS.size() ? QString::fromLatin1(PLACE_WORDS[index]) : QString();
}

std::optional<PointPlace_t> placeFromWord(QString const &word)
{
    for (std::size_t i = 0; i < PLACE_WORDS.size(); ++i) {
        if (word == QLatin1StringView(PLACE_WORDS[i]))
            return static_cast<PointPlace_t>(i);
    }
    return std::nullopt;
}

std::vector<Parameter> entriesOf(QString const &parameters)
{
    std::vector<Parameter> entries;
    for (QString const &line : parameters.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        qsizetype const equals = line.indexOf(QLatin1StringView(" = "));
        if (equals < 0)
            continue;
        QString const key = line.left(equals);
        QString const value = line.mid(equals + 3);
        entries.push_back({key, kindOf(value), value});
    }
    return entries;
}

std::vector<Parameter> const &parametersOf(Fig2::Element::Type_t type)
{
    static std::map<Fig2::Element::Type_t, std::vector<Parameter>> tables;
    auto const found = tables.find(type);
    if (found != tables.end())
        return found->second;
    std::unique_ptr<Fig2::Element> const prototype(type == Fig2::Element::IMAGE_LABEL ? nullptr
                                                                                      : Fig2::Element::create(type));
    std::vector<Parameter> &parameters = tables[type];
    if (prototype)
        parameters = entriesOf(prototype->getParameterString());
    std::erase_if(parameters, [](Parameter const &one) { return one.key == Fig2::ImageBase::PARAM_VISUALISATIONS; });
    return parameters;
}

std::vector<Parameter> const &parametersOf(Fig2::Element const &element)
{
    static std::map<Fig2::ImageLabelCreator::Type_t, std::vector<Parameter>> tables;
    auto const *label = dynamic_cast<Fig2::ImageLabel const *>(&element);
    if (!label)
        return parametersOf(element.getType());
    auto const [table, isNew] = tables.try_emplace(label->getLabelType());
    if (isNew) {
        std::unique_ptr<Fig2::Element> const prototype(Fig2::ImageLabelCreator::create(label->getLabelType()));
        table->second = entriesOf(prototype->getParameterString());
    }
    return table->second;
}

std::optional<Parameter> findParameter(Fig2::Element::Type_t type, QString const &key)
{
    return findParameter(parametersOf(type), key);
}

std::vector<QString> keysOf(std::vector<Parameter> const &parameters)
{
    std::vector<QString> keys;
    for (Parameter const &parameter : parameters)
        keys.push_back(parameter.key);
    return keys;
}

std::optional<Parameter> findParameter(std::vector<Parameter> const &parameters, QString const &key)
{
    auto const found = std::find_if(parameters.begin(), parameters.end(),
                                    [&key](Parameter const &parameter) { return parameter.key == key; });
    return found == parameters.end() ? std::nullopt : std::optional(*found);
}

std::vector<QString> const &structureKeys()
{
    static std::vector<QString> const keys{"type", "label", "name", "children", "connect", "master", "curve", "look"};
    return keys;
}

bool isStructureKey(QString const &key)
{
    return std::find(structureKeys().begin(), structureKeys().end(), key) != structureKeys().end();
}

bool isFontKey(QString const &key)
{
    return key == Fig2::Element::PARAM_FONT || key.endsWith(QLatin1StringView("_font"));
}

QString describe(Fig2::Element const &element)
{
    return QStringLiteral("%1 '%2'").arg(element.getTypeName(), element.getScriptObject()->getName());
}

QString nearestWord(QString const &word, std::vector<QString> const &words)
{
    QString nearest;
    int best = static_cast<int>(word.size()) / 3 + 2;
    for (QString const &candidate : words) {
        int const distance = editDistance(word.toLower(), candidate.toLower());
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

QString suggestion(QString const &word, std::vector<QString> const &words)
{
    QString const nearest = nearestWord(word, words);
    return nearest.isEmpty() ? QString() : QStringLiteral(" (did you mean '%1'?)").arg(nearest);
}

} // namespace Zem::Zemfig
