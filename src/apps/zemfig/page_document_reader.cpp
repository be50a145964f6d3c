#include "page_document.h"

#include "page_schema.h"
#include "page_toml_reader.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Group.h>
#include <ZemFig2Image.h>
#include <ZemFig2ImageLabel.h>
#include <ZemFig2Logo.h>
#include <ZemImage.h>
#include <ZemParse.h>
#include <ZemScriptObject.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>
#include <utility>

namespace Zem::Zemfig {

using namespace Fig2;

QString Problem::toString() const
{
    return line > 0 ? QStringLiteral("%1:%2: %3").arg(file).arg(line).arg(text) : file + QStringLiteral(": ") + text;
}

namespace {

char const *const PLACES = "\"maximum\", \"minimum\", \"first\", \"last\", or the number of a stage or row";

/// Reads one document into a figure and gathers what is wrong with it.
class Reader : private TomlReader
{
public:
    Reader(QString const &fileName, PageDocument *document)
        : TomlReader(fileName, &document->problems), document_(document)
    {
    }

    void read(toml::table const &root)
    {
        document_->figure = std::make_unique<Figure>();
        collectNames(root);
        for (auto const &[key, node] : root)
            readSection(textOf(key.str()), node);
        for (Wish const &wish : wishes_)
            connect(wish);
        for (Wish const &wish : masters_)
            setMaster(wish);
        std::stable_sort(document_->problems.begin(), document_->problems.end(),
                         [](Problem const &a, Problem const &b) { return a.line < b.line; });
    }

private:
    /// A name that stands for an element which may come later in the file.
    struct Wish
    {
        Element *element;
        QString name;
        QString point;
        int line;
    };

    void readSection(QString const &key, toml::node const &node)
    {
        if (key == QLatin1StringView("page") && node.is_table())
            readPage(*node.as_table());
        else if (key == QLatin1StringView("data") && node.is_table())
            readSource(*node.as_table(), &document_->data);
        else if (isSourceSection(key))
            readSources(key, node);
        else if (key == QLatin1StringView("point"))
            readPoints(node);
        else if (key == QLatin1StringView("scale") && node.is_table())
            readScale(*node.as_table());
        else if (key == QLatin1StringView("element") && node.is_array())
            readElements(*node.as_array(), document_->figure->getRoot(), 1);
        else
            report(lineOf(node), QStringLiteral("unknown section '%1'%2")
                                     .arg(key, suggestion(key, {"page", "data", "series", "picture", "points", "camera",
                                                                "snippet", "point", "scale", "element"})));
    }

    void readPage(toml::table const &table)
    {
        QString background;
        for (auto const &[key, node] : flattened(table)) {
            BaVec2d<double> size;
            if (key == QLatin1StringView("size")) {
                if (readVector(*node, &size) && size.x > 0.0 && size.y > 0.0)
                    document_->figure->setSize(size);
                else
                    report(lineOf(*node), QStringLiteral("'size' wants two numbers above 0 as [width, height]"));
            } else if (key == QLatin1StringView("background_filled")) {
                background += entry({key, ParameterKind::Bool, {}}, *node);
            } else if (key == QLatin1StringView("background_color")) {
                background += entry({key, ParameterKind::Color, {}}, *node);
            } else {
                reportUnknown(*node, key, {"size", "background_filled", "background_color"}, "the page");
            }
        }
        FillStyle style = document_->figure->getBackground();
        style.createFromParameterString(background, QStringLiteral("background"));
        document_->figure->setBackground(style);
    }

    static bool isSourceSection(QString const &key)
    {
        return key == QLatin1StringView("series") || key == QLatin1StringView("picture") ||
               key == QLatin1StringView("points") || key == QLatin1StringView("camera") ||
               key == QLatin1StringView("snippet");
    }

    void readSources(QString const &section, toml::node const &node)
    {
        toml::array const *array = node.as_array();
        if (!array) {
            report(lineOf(node), QStringLiteral("'%1' wants a list of tables: [[%1]]").arg(section));
            return;
        }
        for (toml::node const &item : *array) {
            if (!item.is_table()) {
                report(lineOf(item), QStringLiteral("[[%1]] wants a table, not %2").arg(section, typeOf(item)));
                continue;
            }
            document_->sources.push_back({lineOf(item), {}, section});
            readSource(*item.as_table(), &document_->sources.back().values);
        }
    }

    void readPoints(toml::node const &node)
    {
        toml::array const *array = node.as_array();
        if (!array) {
            report(lineOf(node), QStringLiteral("'point' wants a list of tables: [[point]]"));
            return;
        }
        for (toml::node const &item : *array) {
            if (toml::table const *table = item.as_table())
                document_->points.push_back({lineOf(item), readPoint(*table)});
            else
                report(lineOf(item), QStringLiteral("a point wants a table, not %1").arg(typeOf(item)));
        }
    }

    Measurement::NamedPoint readPoint(toml::table const &table)
    {
        Measurement::NamedPoint point;
        for (auto const &[key, node] : flattened(table)) {
            if (key == QLatin1StringView("name"))
                readText(*node, key, &point.name);
            else if (key == QLatin1StringView("token"))
                readText(*node, key, &point.token);
            else if (key == QLatin1StringView("at"))
                readPlace(*node, &point);
            else
                readPointSymbol(key, *node, &point.symbol);
        }
        if (!table.contains("token"))
            report(lineOf(table), QStringLiteral("a point wants a 'token', the name of the curve on which it lies"));
        if (!table.contains("at"))
            report(lineOf(table), QStringLiteral("a point wants an 'at': %1").arg(QLatin1StringView(PLACES)));
        return point;
    }

    void readPlace(toml::node const &node, Measurement::NamedPoint *point)
    {
        using Measurement::PointPlace_t;
        if (node.is_string()) {
            if (auto const place = placeFromWord(textOf(node.as_string()->get()))) {
                point->place = *place;
                return;
            }
        } else if (node.is_integer() && std::in_range<unsigned int>(node.as_integer()->get())) {
            point->place = PointPlace_t::NUMBER;
            point->number = static_cast<unsigned int>(node.as_integer()->get());
            return;
        }
        report(lineOf(node), QStringLiteral("'at' wants %1").arg(QLatin1StringView(PLACES)));
    }

    void readPointSymbol(QString const &key, toml::node const &node, Symbol *symbol)
    {
        static QString const prefix = QStringLiteral("symbol");
        static std::vector<Parameter> const looks = entriesOf(symbol->getParameterString(prefix));
        QString parameters = readEntry(looks, {"name", "token", "at"}, key, node, QStringLiteral("a point"));
        try {
            symbol->createFromParameterString(parameters, prefix);
        } catch (ParamError const &error) {
            report(lineOf(node), QStringLiteral("a point: %1").arg(error.getText()));
        }
    }

    void readSource(toml::table const &table, QMap<QString, QVariant> *values)
    {
        for (auto const &[key, node] : flattened(table)) {
            if (node->is_string())
                (*values)[key] = textOf(node->as_string()->get());
            else if (node->is_boolean())
                (*values)[key] = node->as_boolean()->get();
            else if (node->is_integer())
                (*values)[key] = static_cast<qlonglong>(node->as_integer()->get());
            else if (node->is_floating_point())
                (*values)[key] = node->as_floating_point()->get();
            else if (key == QLatin1StringView("columns"))
                (*values)[key] = readTexts(*node, key);
            else if (QVariantList const numbers = numbersOf(*node); !numbers.isEmpty())
                (*values)[key] = numbers;
            else
                report(lineOf(*node), QStringLiteral("'%1' wants a text, a number or true or false").arg(key));
        }
    }

    /// Empty for what is no list of numbers.
    static QVariantList numbersOf(toml::node const &node)
    {
        QVariantList numbers;
        toml::array const *array = node.as_array();
        for (std::size_t i = 0; array && i < array->size(); ++i) {
            std::optional<double> const number = array->get(i)->value<double>();
            if (!number || !array->get(i)->is_number())
                return {};
            numbers << *number;
        }
        return numbers;
    }

    void readScale(toml::table const &table)
    {
        Measurement::ColorScale scale;
        std::vector<Parameter> const known = entriesOf(scale.getParameterString());
        for (auto const &[key, node] : flattened(table)) {
            QString made = readEntry(known, {}, key, *node, QStringLiteral("the colour scale"));
            try {
                scale.createFromParameterString(made);
            } catch (ParamError const &error) {
                report(lineOf(*node), QStringLiteral("the colour scale: %1").arg(error.getText()));
            }
        }
        document_->scale = scale;
    }

    void readElements(toml::array const &array, Group *parent, unsigned int depth)
    {
        if (depth > Group::MAXIMUM_DEPTH) {
            report(lineOf(array), QStringLiteral("groups nested too deeply"));
            return;
        }
        for (toml::node const &node : array) {
            if (node.is_table())
                readElement(*node.as_table(), parent, depth);
            else
                report(lineOf(node), QStringLiteral("an element wants a table, not %1").arg(typeOf(node)));
        }
    }

    void readElement(toml::table const &table, Group *parent, unsigned int depth)
    {
        std::unique_ptr<Element> element = createElement(table);
        if (!element)
            return;
        readName(table, element.get());
        Element *added = element.release();
        parent->addChild(added);
        if (auto *group = dynamic_cast<Group *>(added)) {
            if (toml::node const *children = table.get("children")) {
                if (children->is_array())
                    readElements(*children->as_array(), group, depth + 1);
                else
                    report(lineOf(*children), QStringLiteral("'children' wants a list of elements"));
            }
        }
        readParameters(table, added);
        if (toml::node const *curves = table.get("curve"))
            readCurves(*curves, added);
        if (toml::node const *looks = table.get("look"))
            readLooks(*looks, added);
        readWishes(table, added);
    }

    /// Null, and reported, for a type that there is not.
    std::unique_ptr<Element> createElement(toml::table const &table)
    {
        Element::Type_t type{};
        if (!readType(table, &type))
            return nullptr;
        if (type != Element::IMAGE_LABEL)
            return std::unique_ptr<Element>(Element::create(type));
        QString kind;
        if (toml::node const *node = table.get("label"))
            readText(*node, QStringLiteral("label"), &kind);
        std::vector<QString> known;
        for (auto const &[number, creator] : ImageLabelCreator::getCreators()) {
            known.push_back(ImageLabelCreator::getLabelTypeId(number));
            if (known.back() == kind)
                return std::unique_ptr<Element>(creator->create());
        }
        QStringList const words(known.begin(), known.end());
        report(lineOf(table),
               QStringLiteral("an image label wants a 'label': %1").arg(words.join(QStringLiteral(", "))));
        return nullptr;
    }

    /// How an image shows its objects, each by its id.
    void readLooks(toml::node const &node, Element *element)
    {
        auto *image = dynamic_cast<ImageBase *>(element);
        toml::array const *array = node.as_array();
        if (!image || !array) {
            report(lineOf(node), image ? QStringLiteral("'look' wants a list of tables, as [[element.look]]")
                                       : QStringLiteral("%1 has no looks").arg(describe(*element)));
            return;
        }
        for (toml::node const &item : *array) {
            if (toml::table const *table = item.as_table())
                readLook(*table, image);
            else
                report(lineOf(item), QStringLiteral("a look wants a table, not %1").arg(typeOf(item)));
        }
    }

    void readLook(toml::table const &table, ImageBase *image)
    {
        static std::vector<Parameter> const known = entriesOf(ImageDataVisualisation(false).getParameterString({}));
        QString const where = QStringLiteral("a look of %1").arg(describe(*image));
        QString id;
        ImageDataVisualisation look(false);
        for (auto const &[key, node] : flattened(table)) {
            if (key == QLatin1StringView("id")) {
                readText(*node, key, &id);
                continue;
            }
            QString parameters = readEntry(known, {"id"}, key, *node, where);
            try {
                look.createFromParameterString(parameters, QString());
            } catch (ParamError const &error) {
                report(lineOf(*node), QStringLiteral("%1: %2").arg(where, error.getText()));
            }
        }
        image->setVisualisation(id, look);
    }

    /// The y tokens of a generic chart, each with the look of its curve.
    void readCurves(toml::node const &node, Element *element)
    {
        auto *chart = dynamic_cast<GenericChart *>(element);
        toml::array const *array = node.as_array();
        if (!chart || !array) {
            report(lineOf(node), chart ? QStringLiteral("'curve' wants a list of tables, as [[element.curve]]")
                                       : QStringLiteral("%1 has no curves").arg(describe(*element)));
            return;
        }
        std::vector<GenericChart::Entry> curves;
        for (toml::node const &item : *array) {
            if (toml::table const *table = item.as_table())
                curves.push_back(readCurve(*table, element));
            else
                report(lineOf(item), QStringLiteral("a curve wants a table, not %1").arg(typeOf(item)));
        }
        chart->setData(curves);
    }

    GenericChart::Entry readCurve(toml::table const &table, Element const *element)
    {
        static std::vector<Parameter> const looks = entriesOf(ChartParameters().getParameterString(QString()));
        QString const where = QStringLiteral("a curve of %1").arg(describe(*element));
        GenericChart::Entry curve;
        for (auto const &[key, node] : flattened(table)) {
            if (readCurveToken(key, *node, &curve.first))
                continue;
            QString parameters = readEntry(looks, {"token", "groups", "category"}, key, *node, where);
            try {
                curve.second.createFromParameterString(parameters, QString());
            } catch (ParamError const &error) {
                report(lineOf(*node), QStringLiteral("%1: %2").arg(where, error.getText()));
            }
        }
        // An empty one shows nothing, which a figure file may hold too.
        if (!table.contains("token"))
            report(lineOf(table), QStringLiteral("a curve wants a 'token', the name of what it shows"));
        return curve;
    }

    /// Whether the key tells what the curve shows.
    bool readCurveToken(QString const &key, toml::node const &node, ChartInterface::DataToken *token)
    {
        if (key == QLatin1StringView("groups")) {
            QStringList const groups = readTexts(node, key);
            token->setGroups({groups.begin(), groups.end()});
            return true;
        }
        bool const isName = key == QLatin1StringView("token");
        if (!isName && key != QLatin1StringView("category"))
            return false;
        QString text;
        readText(node, key, &text);
        if (isName)
            token->setName(text);
        else if (!text.isNull())
            token->setCategory(TokenInfo::getCategoryByTypeName(text));
        return true;
    }

    bool readType(toml::table const &table, Element::Type_t *type)
    {
        toml::node const *node = table.get("type");
        if (!node || !node->is_string()) {
            report(lineOf(table), QStringLiteral("an element wants a 'type' such as \"label\""));
            return false;
        }
        QString const name = textOf(node->as_string()->get());
        if (Element::getTypeFromParameterName(name, type) && canBeMade(*type))
            return true;
        report(lineOf(*node), QStringLiteral("unknown element type '%1'%2").arg(name, suggestion(name, knownTypes())));
        return false;
    }

    static bool canBeMade(Element::Type_t type) { return type == Element::IMAGE_LABEL || !parametersOf(type).empty(); }

    static std::vector<QString> knownTypes()
    {
        std::vector<QString> names;
        for (unsigned int type = 0; type < Element::NUMBER_OF_TYPES; ++type) {
            if (canBeMade(static_cast<Element::Type_t>(type)))
                names.push_back(Element::getTypeParameterName(static_cast<Element::Type_t>(type)));
        }
        return names;
    }

    /// All names that the document gives, so that an element without one does not take another's.
    void collectNames(toml::node const &node)
    {
        if (toml::array const *array = node.as_array()) {
            for (toml::node const &item : *array)
                collectNames(item);
        } else if (toml::table const *table = node.as_table()) {
            for (auto const &[key, inner] : *table) {
                if (key == "name" && inner.is_string())
                    givenNames_.insert(textOf(inner.as_string()->get()));
                else if (key == "element" || key == "children")
                    collectNames(inner);
            }
        }
    }

    QString freeName(Element const *element)
    {
        QString const base = Element::getTypeParameterName(element->getType());
        QString name;
        do {
            name = QStringLiteral("%1_%2").arg(base).arg(++nameCounter_);
        } while (givenNames_.contains(name));
        return name;
    }

    void readName(toml::table const &table, Element *element)
    {
        toml::node const *node = table.get("name");
        if (!node) {
            element->getScriptObject()->setName(freeName(element));
            return;
        }
        QString const name = node->is_string() ? textOf(node->as_string()->get()) : QString();
        if (name.isEmpty())
            report(lineOf(*node), QStringLiteral("'name' wants a text that is not empty"));
        else if (document_->figure->getElementsScriptObject()->getChild(name))
            report(lineOf(*node), QStringLiteral("the name '%1' is taken already").arg(name));
        else
            element->getScriptObject()->setName(name);
    }

    void readParameters(toml::table const &table, Element *element)
    {
        for (auto const &[key, node] : flattened(table)) {
            if (isStructureKey(key))
                continue;
            apply(readEntry(parametersOf(*element), structureKeys(), key, *node, describe(*element)), element,
                  lineOf(*node));
        }
    }

    void apply(QString parameters, Element *element, int line)
    {
        if (parameters.isEmpty())
            return;
        try {
            auto *group = dynamic_cast<Group *>(element);
            // A group hands its entries on to its children; here they are meant for the group itself.
            if (group && !Parse::parameterExists(parameters, Element::PARAM_ORIGIN))
                group->Element::createFromParameterString(parameters);
            else if (!group || group->getChildBegin() != group->getChildEnd())
                element->createFromParameterString(parameters);
        } catch (ParamError const &error) {
            report(line, QStringLiteral("%1: %2").arg(describe(*element), error.getText()));
        }
    }

    void readWishes(toml::table const &table, Element *element)
    {
        if (toml::node const *node = table.get("connect"))
            readConnect(*node, element);
        toml::node const *master = table.get("master");
        if (master && master->is_string() && dynamic_cast<Group *>(element))
            masters_.push_back({element, textOf(master->as_string()->get()), {}, lineOf(*master)});
        else if (master)
            report(lineOf(*master), QStringLiteral("'master' wants the name of a child, in a group"));
    }

    /// A name, { to = name, part = name }, or a list of them.
    void readConnect(toml::node const &node, Element *element)
    {
        if (toml::array const *array = node.as_array()) {
            for (toml::node const &item : *array)
                readConnect(item, element);
            return;
        }
        toml::table const *table = node.as_table();
        toml::node const *target = table ? table->get("to") : &node;
        toml::node const *part = table ? table->get("part") : nullptr;
        if (target && target->is_string() && (!part || part->is_string()))
            wishes_.push_back({element, textOf(target->as_string()->get()),
                               part ? textOf(part->as_string()->get()) : QString(), lineOf(node)});
        else
            report(lineOf(node), QStringLiteral("'connect' wants the name of an element, or a list of them"));
    }

    Element *find(QString const &name) const
    {
        ScriptObject const *node = document_->figure->getElementsScriptObject()->getChild(name);
        return node ? static_cast<Element *>(node->getTObject()) : nullptr;
    }

    void connect(Wish const &wish)
    {
        Element *target = find(wish.name);
        if (!target)
            report(wish.line, QStringLiteral("%1 is to be connected to '%2', which does not exist")
                                  .arg(describe(*wish.element), wish.name));
        else if (target == wish.element || !wish.element->canConnectTo(target, wish.point))
            report(wish.line,
                   QStringLiteral("%1 cannot be connected to %2").arg(describe(*wish.element), describe(*target)));
        else
            wish.element->connect(target, wish.point);
    }

    void setMaster(Wish const &wish)
    {
        auto *group = static_cast<Group *>(wish.element);
        Element *master = find(wish.name);
        if (master && master->getParent() == group)
            group->setMasterElement(master);
        else
            report(wish.line, QStringLiteral("%1 has no child '%2'").arg(describe(*group), wish.name));
    }

    PageDocument *document_;
    QSet<QString> givenNames_;
    int nameCounter_ = 0;
    std::vector<Wish> wishes_;
    std::vector<Wish> masters_;
};

} // namespace

PageDocument parsePageDocument(QByteArray const &text, QString const &fileName)
{
    PageDocument document;
    try {
        toml::table const root = toml::parse(std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
        Reader(fileName, &document).read(root);
    } catch (toml::parse_error const &error) {
        document.problems.push_back(
            {fileName, static_cast<int>(error.source().begin.line), textOf(error.description())});
    } catch (TomlAssertion const &) {
        document.problems.push_back({fileName, 0, QStringLiteral("is no TOML")});
    }
    return document;
}

namespace {

/// Names of files are those of the document's folder, wherever the command runs.
void loadLogos(Figure &figure, QDir const &folder)
{
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        auto *const logo = dynamic_cast<Logo *>(*it);
        if (!logo || logo->getFileName().isEmpty() || QDir::isAbsolutePath(logo->getFileName()))
            continue;
        QString const file = folder.filePath(logo->getFileName());
        Zem::Image::FileType type{};
        bool const isPicture = Zem::Image::getFileType(file, &type);
        logo->setImage(isPicture ? Zem::Image::loadImage(file, nullptr, -1, -1) : nullptr);
    }
}

} // namespace

PageDocument readPageDocument(QString const &fileName)
{
    QFile file(fileName);
    if (file.open(QIODevice::ReadOnly)) {
        PageDocument read = parsePageDocument(file.readAll(), fileName);
        if (read.figure)
            loadLogos(*read.figure, QFileInfo(fileName).dir());
        return read;
    }
    PageDocument document;
    document.problems.push_back({fileName, 0, file.errorString()});
    return document;
}

} // namespace Zem::Zemfig
