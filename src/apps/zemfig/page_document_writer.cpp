#include "page_document.h"

#include "page_schema.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Group.h>
#include <ZemFig2Image.h>
#include <ZemFig2ImageLabel.h>
#include <ZemParse.h>
#include <ZemScriptObject.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <iterator>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

/// A TOML text on one line.
QString quoted(QString const &text)
{
    QString result = QStringLiteral("\"");
    for (QChar character : text) {
        if (character == QLatin1Char('"') || character == QLatin1Char('\\'))
            result += QLatin1Char('\\') + QString(character);
        else if (character == QLatin1Char('\n'))
            result += QLatin1StringView("\\n");
        else if (character.unicode() < 0x20 || character.unicode() == 0x7f)
            result += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
        else
            result += character;
    }
    return result + QLatin1Char('"');
}

/// Numbers keep their bits: what TOML would read as an integer, and lose, is marked as a fraction.
QString numberForm(QString const &number)
{
    static QRegularExpression const whole(QStringLiteral("\\A-?[0-9]+\\z"));
    bool const isWhole = whole.match(number).hasMatch();
    return isWhole && (number.size() > 15 || number == QLatin1StringView("-0")) ? number + QLatin1StringView(".0")
                                                                                : number;
}

/// "(1, 2)", "(1, 2, 3)" and "[(1, 2), (3, 4)]" as TOML lists.
QString vectorForm(QString const &value)
{
    static QRegularExpression const number(QStringLiteral("[^\\s,()\\[\\]]+"));
    QString result;
    qsizetype end = 0;
    for (QRegularExpressionMatch const &match : number.globalMatch(value)) {
        result += value.mid(end, match.capturedStart() - end) + numberForm(match.captured());
        end = match.capturedEnd();
    }
    result += value.mid(end);
    return result.replace(QLatin1Char('('), QLatin1Char('[')).replace(QLatin1Char(')'), QLatin1Char(']'));
}

QString textOf(Parameter const &parameter)
{
    QString entry = parameter.key + QLatin1StringView(" = ") + parameter.value + QLatin1Char('\n');
    return Parse::getString(entry, parameter.key);
}

QString fontForm(QString const &text)
{
    Font font;
    if (!font.createFromParameterString(text))
        return quoted(text);
    QString styles;
    unsigned int rest = font.getStyle();
    for (auto const &[word, bit] : FONT_STYLES) {
        if (rest & bit)
            styles += QStringLiteral(", %1 = true").arg(QLatin1StringView(word));
        rest &= ~bit;
    }
    // Bits without a word, and sizes without a short decimal form, are kept by the plain form.
    QString const size = QString::number(font.getSize(), 'g', 15);
    if (rest || size.toDouble() != font.getSize())
        return quoted(text);
    return QStringLiteral("{ family = %1, size = %2%3 }").arg(quoted(font.getFamily()), size, styles);
}

QString valueForm(Parameter const &parameter)
{
    switch (parameter.kind) {
    case ParameterKind::Text:
        return isFontKey(parameter.key) ? fontForm(textOf(parameter)) : quoted(textOf(parameter));
    case ParameterKind::Color:
        // Opaque colours are the rule and go without their alpha.
        return quoted(parameter.value.size() == 9 && parameter.value.endsWith(QLatin1StringView("ff"))
                          ? parameter.value.left(7)
                          : parameter.value);
    case ParameterKind::Vector:
    case ParameterKind::SpaceVector:
    case ParameterKind::VectorList:
        return vectorForm(parameter.value);
    case ParameterKind::Number:
        return numberForm(parameter.value);
    case ParameterKind::Bool:
        break;
    }
    return parameter.value;
}

/// Records whose entries are written together, as { width = 0.2, style = "full" }.
constexpr std::array<char const *, 20> RECORDS{"border",
                                               "background",
                                               "connector_style",
                                               "color_bar",
                                               "symbol1",
                                               "symbol2",
                                               "tick_box",
                                               "tick_line",
                                               "symbol",
                                               "line_style",
                                               "fill_style",
                                               "axis_x",
                                               "axis_y",
                                               "grid",
                                               "inner_border",
                                               "current_stage_style",
                                               "point_marker_symbol",
                                               "image_conversion",
                                               "image_cs",
                                               "mark_line"};

/// The record that a key belongs to; empty for none.
QString recordOf(QString const &key)
{
    for (char const *record : RECORDS) {
        if (key.startsWith(QLatin1StringView(record) + QLatin1Char('_')))
            return QString::fromLatin1(record);
    }
    return {};
}

class Writer
{
public:
    QString write(Figure const &figure, QMap<QString, QVariant> const &data,
                  std::optional<Measurement::ColorScale> const &scale, std::vector<SourceTable> const &sources,
                  std::vector<PointSource> const &points)
    {
        writePage(figure);
        if (!data.isEmpty())
            writeSource(QStringLiteral("[data]"), data);
        for (SourceTable const &source : sources)
            writeSource(QStringLiteral("[[%1]]").arg(source.section), source.values);
        for (PointSource const &source : points)
            writePoint(source.point);
        if (scale)
            writeScale(*scale);
        writeChildren(*figure.getRoot(), QStringLiteral("element"));
        return text_;
    }

private:
    void line(QString const &key, QString const &value) { text_ += key + QLatin1StringView(" = ") + value + '\n'; }

    void writePage(Figure const &figure)
    {
        text_ += QLatin1StringView("[page]\n");
        QString const size = Parse::createVec2d(QStringLiteral("size"), figure.getSize());
        line(QStringLiteral("size"), valueForm(entriesOf(size).front()));
        writeParameters(entriesOf(figure.getBackground().getParameterString(QStringLiteral("background"))));
    }

    void writeSource(QString const &title, QMap<QString, QVariant> const &values)
    {
        static QRegularExpression const bare(QStringLiteral("\\A[A-Za-z0-9_-]+\\z"));
        text_ += QLatin1Char('\n') + title + QLatin1Char('\n');
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            line(bare.match(it.key()).hasMatch() ? it.key() : quoted(it.key()), sourceForm(it.value()));
    }

    static QString sourceForm(QVariant const &value)
    {
        if (value.typeId() == QMetaType::QString)
            return quoted(value.toString());
        if (value.typeId() == QMetaType::Double)
            return numberForm(QString::number(value.toDouble(), 'g', 17));
        if (value.typeId() != QMetaType::QVariantList && value.typeId() != QMetaType::QStringList)
            return value.toString();
        QStringList items;
        for (QVariant const &item : value.toList())
            items << sourceForm(item);
        return QStringLiteral("[%1]").arg(items.join(QStringLiteral(", ")));
    }

    void writeScale(Measurement::ColorScale const &scale)
    {
        text_ += QLatin1StringView("\n[scale]\n");
        writeParameters(changedFrom(entriesOf(Measurement::ColorScale().getParameterString()),
                                    entriesOf(scale.getParameterString())));
    }

    void writePoint(Measurement::NamedPoint const &point)
    {
        static QString const prefix = QStringLiteral("symbol");
        text_ += QLatin1StringView("\n[[point]]\n");
        line(QStringLiteral("name"), quoted(point.name));
        line(QStringLiteral("token"), quoted(point.token));
        bool const isNumber = point.place == Measurement::PointPlace_t::NUMBER;
        line(QStringLiteral("at"), isNumber ? QString::number(point.number) : quoted(wordOfPlace(point.place)));
        writeParameters(changedFrom(entriesOf(Measurement::NamedPoint().symbol.getParameterString(prefix)),
                                    entriesOf(point.symbol.getParameterString(prefix))));
    }

    void writeChildren(Group const &group, QString const &path)
    {
        for (auto child = group.getChildBegin(); child != group.getChildEnd(); ++child)
            writeElement(**child, path);
    }

    void writeElement(Element const &element, QString const &path)
    {
        text_ += QStringLiteral("\n[[%1]]\n").arg(path);
        line(QStringLiteral("type"), quoted(Element::getTypeParameterName(element.getType())));
        if (auto const *label = dynamic_cast<ImageLabel const *>(&element))
            line(QStringLiteral("label"), quoted(ImageLabelCreator::getLabelTypeId(label->getLabelType())));
        line(QStringLiteral("name"), quoted(element.getScriptObject()->getName()));
        writeParameters(changedParameters(element));
        writeConnectors(element);
        if (auto const *image = dynamic_cast<ImageBase const *>(&element))
            writeLooks(*image, path);
        if (auto const *chart = dynamic_cast<GenericChart const *>(&element))
            writeCurves(*chart, path);
        auto const *group = dynamic_cast<Group const *>(&element);
        if (!group)
            return;
        writeMaster(*group);
        writeChildren(*group, path + QLatin1StringView(".children"));
    }

    static std::vector<Parameter> changedFrom(std::vector<Parameter> const &standard,
                                              std::vector<Parameter> const &parameters)
    {
        std::vector<Parameter> changed;
        std::copy_if(parameters.begin(), parameters.end(), std::back_inserter(changed),
                     [&](Parameter const &parameter) {
                         return std::none_of(standard.begin(), standard.end(), [&parameter](Parameter const &one) {
                             return one.key == parameter.key && one.value == parameter.value;
                         });
                     });
        return changed;
    }

    static std::vector<Parameter> changedParameters(Element const &element)
    {
        std::vector<Parameter> changed = changedFrom(parametersOf(element), entriesOf(element.getParameterString()));
        bool const derivedOrigin = element.getType() == Element::GROUP || element.getType() == Element::LINE;
        std::erase_if(changed, [derivedOrigin](Parameter const &parameter) {
            return parameter.key == Element::PARAM_TYPE || (derivedOrigin && parameter.key == Element::PARAM_ORIGIN) ||
                   isCurve(parameter.key) || parameter.key == ImageBase::PARAM_VISUALISATIONS;
        });
        return changed;
    }

    /// Curves have tables of their own, and so have the looks of objects.
    static bool isCurve(QString const &key)
    {
        return key.startsWith(QString(GenericChart::PARAM_TOKENS_Y).arg(QString()));
    }

    void writeLooks(ImageBase const &image, QString const &path)
    {
        for (auto const &[id, look] : image.getVisualisations()) {
            text_ += QStringLiteral("\n[[%1.look]]\n").arg(path);
            line(QStringLiteral("id"), quoted(id));
            writeParameters(changedFrom(entriesOf(ImageDataVisualisation(false).getParameterString(QString())),
                                        entriesOf(look.getParameterString(QString()))));
        }
    }

    void writeCurves(GenericChart const &chart, QString const &path)
    {
        for (auto const &[token, looks] : chart.getData()) {
            text_ += QStringLiteral("\n[[%1.curve]]\n").arg(path);
            line(QStringLiteral("token"), quoted(token.getName()));
            QStringList groups;
            for (QString const &group : token.getGroups())
                groups << quoted(group);
            if (!groups.isEmpty())
                line(QStringLiteral("groups"), QStringLiteral("[%1]").arg(groups.join(QStringLiteral(", "))));
            if (token.getCategory() != TokenInfo::CATEGORY_UNDEFINED)
                line(QStringLiteral("category"), quoted(TokenInfo::getCategoryTypeName(token.getCategory())));
            writeParameters(changedFrom(entriesOf(ChartParameters().getParameterString(QString())),
                                        entriesOf(looks.getParameterString(QString()))));
        }
    }

    /// The keys of a record need not stand together; it is written where the first of them stands.
    void writeParameters(std::vector<Parameter> const &parameters)
    {
        QSet<QString> records;
        for (Parameter const &parameter : parameters) {
            QString const record = recordOf(parameter.key);
            if (record.isEmpty())
                line(parameter.key, valueForm(parameter));
            else if (!records.contains(record))
                writeRecord(record, parameters);
            records.insert(record);
        }
    }

    void writeRecord(QString const &record, std::vector<Parameter> const &parameters)
    {
        QStringList items;
        for (Parameter const &parameter : parameters) {
            if (recordOf(parameter.key) == record)
                items << parameter.key.mid(record.size() + 1) + QLatin1StringView(" = ") + valueForm(parameter);
        }
        line(record, QStringLiteral("{ %1 }").arg(items.join(QStringLiteral(", "))));
    }

    void writeConnectors(Element const &element)
    {
        QString targets;
        for (auto it = element.getConnectorBegin(); it != element.getConnectorEnd(); ++it) {
            if ((*it)->getSource() != &element)
                continue;
            QString const name = quoted((*it)->getTarget()->getScriptObject()->getName());
            QString const part = quoted((*it)->getTargetName());
            targets += targets.isEmpty() ? QString() : QStringLiteral(", ");
            targets +=
                (*it)->getTargetName().isEmpty() ? name : QStringLiteral("{ to = %1, part = %2 }").arg(name, part);
        }
        if (!targets.isEmpty())
            line(QStringLiteral("connect"), QStringLiteral("[%1]").arg(targets));
    }

    /// The first child is the master unless something else is said.
    void writeMaster(Group const &group)
    {
        Element const *master = group.getMasterElement();
        while (master && master->getParent() != &group)
            master = master->getParent();
        if (master && master != *group.getChildBegin())
            line(QStringLiteral("master"), quoted(master->getScriptObject()->getName()));
    }

    QString text_;
};

} // namespace

QString writePageDocument(Figure const &figure, QMap<QString, QVariant> const &data,
                          std::optional<Measurement::ColorScale> const &scale, std::vector<SourceTable> const &sources,
                          std::vector<PointSource> const &points)
{
    return Writer().write(figure, data, scale, sources, points);
}

} // namespace Zem::Zemfig
