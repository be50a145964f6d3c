#include "page_facts.h"

#include "page_schema.h"
#include "page_template.h"

#include <ZemFig2ChartData.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2TokenInterface.h>
#include <ZemImage.h>

#include <map>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Measurement;

namespace {

QJsonArray sizeOf(BaVec2d<double> const &size)
{
    return {size.x, size.y};
}

/// How many there are; JSON has no whole numbers.
QJsonValue countOf(std::size_t count)
{
    return static_cast<double>(count);
}

QJsonObject elementTypes(Figure const &figure, std::size_t *total)
{
    std::map<QString, int> counts;
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        ++counts[it->getTypeName()];
        ++*total;
    }
    QJsonObject types;
    for (auto const &[type, count] : counts)
        types[type] = count;
    return types;
}

QJsonArray hintsOf(FigureTemplate const &pattern)
{
    QJsonArray hints;
    for (auto it = pattern.getElementBegin(); it != pattern.getElementEnd(); ++it) {
        QString const hint = pattern.getTypeHint(*it);
        if (!hint.isEmpty())
            hints.append(QJsonObject{{"name", describe(**it)}, {"hint", hint}});
    }
    return hints;
}

QJsonObject pictureFacts(QString const &name, ImageData const &data)
{
    QJsonObject facts{{"name", name}};
    if (Zem::Image const *image = data.getImage())
        facts["pixels"] = QJsonArray{static_cast<double>(image->getWidth()), static_cast<double>(image->getHeight())};
    facts["overlay"] = data.getOverlay() != nullptr;
    facts["objects"] = static_cast<double>(std::distance(data.getObjectBegin(), data.getObjectEnd()));
    return facts;
}

QJsonObject chartFacts(QString const &name, ChartData const &data)
{
    std::size_t curves = 0;
    std::size_t points = 0;
    for (auto it = data.getDatasetBegin(); it != data.getDatasetEnd(); ++it) {
        ++curves;
        points += it->second->getNumberOfPoints();
    }
    return {{"name", name}, {"curves", countOf(curves)}, {"points", countOf(points)}};
}

QJsonObject snapshotFacts(QString const &name, SnapshotData const &data)
{
    QJsonObject facts{{"name", name}};
    if (Figure const *figure = data.getFigure()) {
        std::size_t elements = 0;
        elementTypes(*figure, &elements);
        facts["page"] = sizeOf(figure->getSize());
        facts["elements"] = countOf(elements);
    }
    return facts;
}

QJsonObject valueFacts(TokenInfo const &info, FigureTokenInterface const &tokens)
{
    Value const value = tokens.getValue(info.getName(), IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE);
    return {{"name", info.getName()}, {"value", value.toString(QString(), nullptr)}};
}

/// What the data of a token are by their type.
struct TokenLists
{
    QJsonArray values;
    QJsonArray pictures;
    QJsonArray charts;
    QJsonArray snapshots;

    void add(TokenInfo const &info, FigureTokenInterface const &tokens)
    {
        QString const &name = info.getName();
        switch (info.getType()) {
        case TokenInfo::TYPE_GROUP:
        case TokenInfo::TYPE_SEPARATOR:
        case TokenInfo::TYPE_HEADLINE:
        case TokenInfo::TYPE_PLACEHOLDER:
            return;
        case TokenInfo::TYPE_IMAGE:
            if (ImageData const *data = tokens.getImage(name)) {
                pictures.append(pictureFacts(name, *data));
                tokens.releaseImage(name);
            }
            return;
        case TokenInfo::TYPE_CHART:
            if (ChartData const *data = tokens.getChart(name)) {
                charts.append(chartFacts(name, *data));
                tokens.releaseChart(name);
            }
            return;
        case TokenInfo::TYPE_SNAPSHOT:
            if (SnapshotData const *data = tokens.getSnapshot(name)) {
                snapshots.append(snapshotFacts(name, *data));
                tokens.releaseSnapshot(name);
            }
            return;
        default:
            values.append(valueFacts(info, tokens));
        }
    }
};

QJsonObject scaleFacts(Legend2::Legend const &legend, Legend2::Data const &data)
{
    QJsonObject facts{{"minimum", legend.getMinimum(data)}, {"maximum", legend.getMaximum(data)}};
    if (QString const unit = legend.getUnitName(); !unit.isEmpty())
        facts["unit"] = unit;
    return facts;
}

QString wordOf(ColumnType_t type)
{
    switch (type) {
    case ColumnType_t::INTEGER:
        return QStringLiteral("whole numbers");
    case ColumnType_t::NUMBER:
        return QStringLiteral("numbers");
    case ColumnType_t::TEXT:
        return QStringLiteral("texts");
    case ColumnType_t::DATE_TIME:
        return QStringLiteral("moments");
    case ColumnType_t::EMPTY:
        break;
    }
    return QStringLiteral("nothing");
}

QJsonObject storedFacts(ProjectToken const &token)
{
    QJsonObject facts{{"name", token.name}, {"holds", wordOf(token.type)}};
    if (!token.unitText.isEmpty())
        facts["unit"] = token.unitText;
    return facts;
}

} // namespace

void addPageFacts(Figure const &figure, Facts *facts)
{
    std::size_t total = 0;
    QJsonObject const types = elementTypes(figure, &total);
    facts->add(QStringLiteral("page"), sizeOf(figure.getSize()));
    facts->add(QStringLiteral("elements"), countOf(total));
    facts->addUnlessEmpty(QStringLiteral("element_types"), types);
    if (auto const *pattern = dynamic_cast<FigureTemplate const *>(&figure))
        facts->addUnlessEmpty(QStringLiteral("type_hints"), hintsOf(*pattern));
}

void addTokenFacts(FigureTokenInterface const *tokens, Facts *facts)
{
    std::vector<TokenInfo> infos;
    if (tokens)
        tokens->getTokens(&infos);
    TokenLists lists;
    for (TokenInfo const &info : infos)
        lists.add(info, *tokens);
    facts->addUnlessEmpty(QStringLiteral("values"), lists.values);
    facts->addUnlessEmpty(QStringLiteral("pictures"), lists.pictures);
    facts->addUnlessEmpty(QStringLiteral("charts"), lists.charts);
    facts->addUnlessEmpty(QStringLiteral("snapshots"), lists.snapshots);
}

void addSnapshotFacts(SnapshotData const &snapshot, Facts *facts)
{
    if (snapshot.getStage() != StageIdentifier::NO_STAGE)
        facts->add(QStringLiteral("stage"), static_cast<double>(snapshot.getStage().getIdentifier()));
    Legend2::Legend legend;
    Legend2::Data data;
    if (snapshot.getLegendData(&legend, &data))
        facts->add(QStringLiteral("colour_scale"), scaleFacts(legend, data));
}

void addSourceFacts(PageDocument const &document, Facts *facts)
{
    facts->addUnlessEmpty(QStringLiteral("data"), QJsonObject::fromVariantMap(document.data));
    QJsonArray sources;
    for (SourceTable const &source : document.sources) {
        QJsonObject entry = QJsonObject::fromVariantMap(source.values);
        // The name of a table of its own would stand in front.
        QJsonObject const table{{"name", source.section}, {"file", entry["file"]}, {"view", entry["view"]}};
        QJsonObject told;
        for (auto it = table.begin(); it != table.end(); ++it) {
            if (!it.value().isUndefined() && !it.value().isNull())
                told[it.key()] = it.value();
        }
        sources.append(told);
    }
    facts->addUnlessEmpty(QStringLiteral("sources"), sources);
    if (document.scale)
        facts->add(QStringLiteral("colour_scale"), QJsonObject{{"token", document.scale->token}});
    if (!document.points.empty())
        facts->add(QStringLiteral("named_points"), countOf(document.points.size()));
}

void addProjectFacts(Project const &project, Facts *facts)
{
    std::vector<unsigned int> const stages = project.stages();
    QJsonObject told{{"count", countOf(stages.size())}};
    if (!stages.empty()) {
        told["first"] = static_cast<double>(stages.front());
        told["last"] = static_cast<double>(stages.back());
    }
    facts->add(QStringLiteral("stages"), told);
    QJsonArray tokens;
    for (ProjectToken const &token : project.tokens())
        tokens.append(storedFacts(token));
    facts->addUnlessEmpty(QStringLiteral("tokens"), tokens);
    QJsonArray series;
    for (ProjectSeries const &each : project.series()) {
        QJsonObject entry = storedFacts(each);
        entry["rows"] = countOf(each.rows);
        series.append(entry);
    }
    facts->addUnlessEmpty(QStringLiteral("series"), series);
    QJsonArray views;
    for (ProjectView const &view : project.views())
        views.append(QJsonObject{
            {"name", view.name},
            {"pixels", sizeOf({static_cast<double>(view.camera.width), static_cast<double>(view.camera.height)})},
            {"pictures", countOf(view.stagesOfPictures.size())},
            {"overlays", countOf(view.stagesOfOverlays.size())}});
    facts->addUnlessEmpty(QStringLiteral("views"), views);
    QJsonArray sets;
    for (ProjectPointSet const &set : project.pointSets())
        sets.append(QJsonObject{{"name", set.name}, {"stages", countOf(set.groups.size())}});
    facts->addUnlessEmpty(QStringLiteral("sets_of_points"), sets);
    if (std::optional<ColorScale> const scale = project.colorScale())
        facts->add(QStringLiteral("colour_scale"), QJsonObject{{"token", scale->token}});
}

} // namespace Zem::Zemfig
