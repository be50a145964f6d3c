// The page, the tree and the types of the elements of older files.
#include "ZemFig2Chart.h"
#include "ZemFig2ImportHook.h"
#include "ZemFig2Template.h"
#include "fig_import_data.h"
#include "fig_import_record.h"
#include "fig_importer.h"

#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int FILE_VERSION = 3; // 2: title, token data; 3: token registry
constexpr unsigned int FIRST_TOKEN_DATA_VERSION = 2;
constexpr unsigned int FIRST_REGISTRY_VERSION = 3;
constexpr unsigned int PAGE_VERSION = 3;    // 2: background; 3: margins
constexpr unsigned int ELEMENT_VERSION = 3; // 2: id; 3: visible
constexpr unsigned int GROUP_VERSION = 2;   // 2: element of the origin
constexpr int NO_ID = -1;

struct OldPage
{
    BaVec2d<double> size;
    OldBrush background{true, Color(255, 255, 255)};
    double margins[4] = {0.0, 0.0, 0.0, 0.0};

    void read(BlockReader &reader)
    {
        reader.field(size.x);
        reader.field(size.y);
        readSince(reader, Since{2}, background);
        for (double &margin : margins)
            reader.keep(margin, Since{3});
    }

    bool hasMargins() const
    {
        return std::any_of(std::begin(margins), std::end(margins), [](double margin) { return margin != 0.0; });
    }
};

struct OldElement
{
    unsigned int type = 0;
    int id = NO_ID;
    bool visible = true;

    void read(BlockReader &reader)
    {
        reader.field(type);
        reader.keep(id, Since{2});
        reader.keep(visible, Since{3});
    }
};

/// Of the tokens of that name, the one that holds or refers to a chart.
QString typeHintOf(DataInterface const &tokens, QString const &name)
{
    for (Variable_t type : {VARIABLE_CHART, VARIABLE_CHART_REFERENCE}) {
        Token_t const token(name, type);
        QString const hint = tokens.tokenExists(token) ? tokens.getTypeHint(token) : QString();
        if (!hint.isEmpty())
            return hint;
    }
    return {};
}

} // namespace

Importer::Importer(ImportReport *report, DataInterface *tokens, QString const &place)
    : report_(report), tokens_(tokens), placePrefix_(place.isEmpty() ? QString() : place + QLatin1Char('/'))
{
}

QString Importer::place() const
{
    QStringList numbers;
    for (unsigned int number : path_)
        numbers.push_back(QString::number(number));
    return placePrefix_ + numbers.join(QLatin1Char('.'));
}

void Importer::report(char const *record, QString const &place, ImportEntry::Outcome outcome, char const *text) const
{
    if (report_)
        report_->add(
            {QString::fromLatin1(record), place, outcome, *text ? translate("Figure_Import", text) : QString()});
}

void Importer::kept(char const *record) const
{
    if (report_)
        report(record, place(), ImportEntry::KEPT, "");
}

void Importer::approximated(char const *record, char const *text) const
{
    if (report_)
        report(record, place(), ImportEntry::APPROXIMATED, text);
}

void Importer::dropped(char const *record, char const *text) const
{
    if (report_)
        report(record, place(), ImportEntry::DROPPED, text);
}

std::unique_ptr<FigureTemplate> Importer::importFigureTemplate(IO::InStream *stream)
{
    auto figure = std::make_unique<FigureTemplate>();
    importFigure(stream, figure.get());
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        auto const *chart = dynamic_cast<Chart const *>(*it);
        if (!chart || chart->getToken().isEmpty())
            continue;
        QString const hint = typeHintOf(*tokens_, chart->getToken());
        if (!hint.isEmpty())
            figure->setTypeHint(chart, hint);
    }
    return figure;
}

void Importer::importFigure(IO::InStream *stream, Figure *figure)
{
    QString title;
    unsigned int version = 0;
    loadRecord(stream, FILE_VERSION, "invalid figure file version: %1", [&](BlockReader &reader) {
        version = reader.version();
        reader.keep(title, Since{2});
    });
    if (!title.isEmpty())
        dropped("figure", "a page has no title");
    importTokens(stream, version);
    importPage(stream, figure);
    std::unique_ptr<Element> root = importGroup(stream);
    figure->setRoot(static_cast<Group *>(root.release()));
    connectAll(figure);
    ImportHook::callConvertFigure(figure);
}

void Importer::importTokens(IO::InStream *stream, unsigned int fileVersion)
{
    if (fileVersion >= FIRST_REGISTRY_VERSION)
        importRegistry(stream);
    else if (fileVersion >= FIRST_TOKEN_DATA_VERSION)
        Fig2::importTokens(stream, tokens_, report_, placePrefix_);
}

void Importer::importRegistry(IO::InStream *stream)
{
    Import::importDataInterface(stream, tokens_);
    for (auto it = tokens_->getTokenBegin(); it != tokens_->getTokenEnd(); ++it)
        report("token", placePrefix_ + it->first.getName(), ImportEntry::KEPT, "");
}

void Importer::importPage(IO::InStream *stream, Figure *figure)
{
    OldPage page;
    loadRecord(stream, PAGE_VERSION, "invalid figure header version: %1",
               [&page](BlockReader &reader) { page.read(reader); });
    figure->setSize(page.size);
    figure->setBackground(page.background.fillStyle());
    kept("page");
    if (page.hasMargins())
        dropped("page", "a page has no margins");
}

std::unique_ptr<Element> Importer::importGroup(IO::InStream *stream)
{
    ImportDepth const depth(ImportDepth::GROUP);
    unsigned int count = 0;
    int master = -1;
    loadRecord(stream, GROUP_VERSION, "invalid group block header version: %1", [&](BlockReader &reader) {
        reader.field(count);
        reader.keep(master, Since{2});
    });
    elementCount_ += count;
    if (elementCount_ > Group::MAXIMUM_ELEMENTS)
        throwImportError("more than %1 elements", Group::MAXIMUM_ELEMENTS);
    if (!path_.empty())
        kept("group");
    auto group = std::make_unique<Group>();
    path_.push_back(0);
    for (unsigned int i = 0; i < count; ++i) {
        path_.back() = i + 1;
        Element *child = importElement(stream).release();
        group->addChild(child);
        if (master == static_cast<int>(i))
            group->setMasterElement(child);
    }
    path_.pop_back();
    return group;
}

std::unique_ptr<Element> Importer::importElement(IO::InStream *stream)
{
    OldElement record;
    loadRecord(stream, ELEMENT_VERSION, nullptr, [&record](BlockReader &reader) { record.read(reader); });
    std::unique_ptr<Element> element = importOfType(stream, record.type);
    element->setVisible(record.visible);
    // Of elements with one id the later counts.
    if (record.id != NO_ID)
        elements_[record.id] = element.get();
    return element;
}

std::unique_ptr<Element> Importer::importOfType(IO::InStream *stream, unsigned int type)
{
    switch (type) {
    case Import::OLD_LINE:
        return importLine(stream);
    case Import::OLD_POLYGON:
        return importPolygon(stream);
    case Import::OLD_TEXT:
        return importText(stream);
    case Import::OLD_CHART:
        return importChart(stream);
    case Import::OLD_LEGEND:
        return importLegend(stream);
    case Import::OLD_GROUP:
        return importGroup(stream);
    case Import::OLD_CIRCLE:
        return importCircle(stream);
    case Import::OLD_IMAGE:
        return importImage(stream);
    case Import::OLD_RECTANGLE:
        return importRectangle(stream);
    default:
        throwImportError("invalid element type: %1", type);
    }
}

void Importer::connectAll(Figure *figure)
{
    connectLinks();
    connectLabels(figure);
    connectLegends(figure);
}

void Importer::connectLinks()
{
    for (Link const &link : std::exchange(links_, {})) {
        auto const target = elements_.find(link.target);
        if (target != elements_.end() && link.source->canConnectTo(target->second, link.name))
            link.source->connect(target->second, link.name);
        else
            report("text", link.place, ImportEntry::DROPPED, "what it annotates is not there");
    }
}

} // namespace Zem::Fig2
