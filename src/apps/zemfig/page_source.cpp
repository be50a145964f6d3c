#include "page_source.h"

#include "cli.h"
#include "page_schema.h"
#include "page_tokens.h"

#include <ZemParse.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Measurement;

namespace {

bool toBool(QString const &name, QString const &value)
{
    if (value == QLatin1StringView("true") || value == QLatin1StringView("yes"))
        return true;
    if (value == QLatin1StringView("false") || value == QLatin1StringView("no"))
        return false;
    throw InputError(QStringLiteral("'%1' wants true or false, not '%2'").arg(name, value));
}

unsigned int toCount(QString const &name, QString const &value)
{
    bool isNumber = false;
    unsigned int const number = value.toUInt(&isNumber);
    if (!isNumber)
        throw InputError(QStringLiteral("'%1' wants a whole number, not '%2'").arg(name, value));
    return number;
}

char toDelimiter(QString const &value)
{
    static std::map<QString, char> const words{{"tab", '\t'},      {"\t", '\t'}, {"comma", ','}, {",", ','},
                                               {"semicolon", ';'}, {";", ';'},   {"blank", ' '}, {" ", ' '}};
    auto const found = words.find(value);
    if (found == words.end())
        throw InputError(QStringLiteral("'delimiter' wants comma, semicolon, tab or blank, not '%1'").arg(value));
    return found->second;
}

template <class Enum>
Enum toWord(QString const &name, QString const &value, std::map<QString, Enum> const &words)
{
    auto const found = words.find(value);
    if (found != words.end())
        return found->second;
    QStringList known;
    for (auto const &[word, meaning] : words)
        known += word;
    throw InputError(
        QStringLiteral("'%1' wants one of %2, not '%3'").arg(name, known.join(QStringLiteral(", ")), value));
}

struct CsvOption
{
    char const *name;
    void (*set)(DataChoice &choice, QString const &name, QString const &value);
};

constexpr std::array<CsvOption, 12> CSV_OPTIONS{{
    {"delimiter", [](DataChoice &choice, QString const &,
                     QString const &value) { choice.csvOptions.delimiter = toDelimiter(value); }},
    {"decimal_comma", [](DataChoice &choice, QString const &name,
                         QString const &value) { choice.csvOptions.decimalComma = toBool(name, value); }},
    {"encoding",
     [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.encoding = toWord<CsvEncoding_t>(
             name, value.toLower(), {{"utf-8", CsvEncoding_t::UTF8}, {"latin-1", CsvEncoding_t::LATIN1}});
     }},
    {"header_row", [](DataChoice &choice, QString const &name,
                      QString const &value) { choice.csvOptions.headerRow = toBool(name, value); }},
    {"units_row", [](DataChoice &choice, QString const &name,
                     QString const &value) { choice.csvOptions.unitsRow = toBool(name, value); }},
    {"comment",
     [](DataChoice &choice, QString const &, QString const &value) { choice.csvOptions.commentPrefix = value; }},
    {"preamble_lines", [](DataChoice &choice, QString const &name,
                          QString const &value) { choice.csvOptions.preambleLines = toCount(name, value); }},
    {"date_order",
     [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.dateOrder = toWord<DateOrder_t>(
             name, value, {{"month-day", DateOrder_t::MONTH_DAY}, {"day-month", DateOrder_t::DAY_MONTH}});
     }},
    {"missing", [](DataChoice &choice, QString const &, QString const &value) { choice.csvOptions.missing += value; }},
    {"prefix", [](DataChoice &choice, QString const &, QString const &value) { choice.importOptions.prefix = value; }},
    {"stage_column",
     [](DataChoice &choice, QString const &, QString const &value) { choice.importOptions.stageColumn = value; }},
    {"first_stage", [](DataChoice &choice, QString const &name,
                       QString const &value) { choice.importOptions.firstStage = toCount(name, value); }},
}};

} // namespace

std::vector<QString> csvOptionNames()
{
    std::vector<QString> names;
    for (CsvOption const &option : CSV_OPTIONS)
        names.push_back(QString::fromLatin1(option.name));
    return names;
}

bool setCsvOption(DataChoice *choice, QString const &name, QString const &value)
{
    for (CsvOption const &option : CSV_OPTIONS) {
        if (name == QLatin1StringView(option.name)) {
            option.set(*choice, name, value);
            return true;
        }
    }
    // "unit.force" gives or mends the unit of one column.
    constexpr QLatin1StringView UNIT("unit_");
    if (!name.startsWith(UNIT))
        return false;
    choice->csvOptions.columnUnits[name.mid(UNIT.size())] = value;
    return true;
}

namespace {

/// A path that a document may name: relative, and inside the document's folder also when links are followed. `place` is
/// for messages.
QString resolveInside(QString const &path, QString const &documentName, QString const &place)
{
    QDir const folder = QFileInfo(documentName).absoluteDir();
    QString const file = QFileInfo(folder, path).canonicalFilePath();
    QString const inside = folder.canonicalPath() + QLatin1Char('/');
    if (QDir::isAbsolutePath(path))
        throw InputError(QStringLiteral("%1: the data path '%2' must be relative").arg(place, path));
    if (QDir::cleanPath(path).startsWith(QLatin1StringView("..")) || (!file.isEmpty() && !file.startsWith(inside)))
        throw InputError(QStringLiteral("%1: the data path '%2' leaves the folder of the document").arg(place, path));
    if (file.isEmpty())
        throw InputError(QStringLiteral("%1: the data file '%2' does not exist").arg(place, path));
    // As the user wrote it, for the messages; seen from where the command runs.
    return QDir::cleanPath(QFileInfo(documentName).dir().filePath(path));
}

} // namespace

namespace {

/// "page.figure.toml:7".
QString placeOf(SourceTable const &source, QString const &fileName)
{
    return QStringLiteral("%1:%2").arg(fileName).arg(source.line);
}

bool isStageOption(QString const &key)
{
    return key == QLatin1StringView("prefix") || key == QLatin1StringView("stage_column") ||
           key == QLatin1StringView("first_stage");
}

/// Names of the options that tell how to read a file, and `others`.
std::vector<QString> readingOptionNames(std::initializer_list<char const *> others)
{
    std::vector<QString> names = csvOptionNames();
    std::erase_if(names, isStageOption);
    names.insert(names.end(), others.begin(), others.end());
    return names;
}

/// The options that tell how to read the file; those of stages are none of a series.
bool setReadingOption(CsvOptions *options, QString const &key, QString const &value)
{
    if (isStageOption(key))
        return false;
    DataChoice reading;
    reading.csvOptions = *options;
    bool const known = setCsvOption(&reading, key, value);
    *options = reading.csvOptions;
    return known;
}

[[noreturn]] void throwUnknownKey(SourceTable const &source, QString const &place, QString const &key,
                                  std::vector<QString> const &known)
{
    throw InputError(
        QStringLiteral("%1: unknown key '%2' in [[%3]]%4").arg(place, key, source.section, suggestion(key, known)));
}

/// The file of a table; `what` is for the message.
QString fileOf(SourceTable const &source, QString const &fileName, char const *what)
{
    QString const place = placeOf(source, fileName);
    if (!source.values.contains(QStringLiteral("file")))
        throw InputError(QStringLiteral("%1: %2 wants a 'file'").arg(place, QLatin1StringView(what)));
    return resolveInside(source.values.value(QStringLiteral("file")).toString(), fileName, place);
}

/// Hands every entry but the file to `set`, which answers whether it knows the key.
template <class Set>
void readEntries(SourceTable const &source, QString const &fileName, std::vector<QString> const &known, Set const &set)
{
    for (auto it = source.values.cbegin(); it != source.values.cend(); ++it) {
        if (it.key() != QLatin1StringView("file") && !set(it.key(), it.value()))
            throwUnknownKey(source, placeOf(source, fileName), it.key(), known);
    }
}

SeriesChoice seriesOf(SourceTable const &source, QString const &fileName)
{
    SeriesChoice choice;
    choice.csv = fileOf(source, fileName, "a series");
    readEntries(source, fileName, readingOptionNames({"file", "group", "columns"}),
                [&](QString const &key, QVariant const &value) {
                    if (key == QLatin1StringView("group"))
                        choice.options.group = value.toString();
                    else if (key == QLatin1StringView("columns"))
                        choice.options.columns = value.toStringList();
                    else
                        return setReadingOption(&choice.csvOptions, key, value.toString());
                    return true;
                });
    return choice;
}

bool setPictureOption(PictureOptions *options, QString const &key, QString const &value)
{
    if (key == QLatin1StringView("view"))
        options->view = value;
    else if (key == QLatin1StringView("stage"))
        options->stage = toCount(key, value);
    else if (key == QLatin1StringView("kind"))
        options->kind = toWord<PictureKind_t>(
            key, value, {{"picture", PictureKind_t::PICTURE}, {"overlay", PictureKind_t::OVERLAY}});
    else
        return false;
    return true;
}

PictureChoice pictureOf(SourceTable const &source, QString const &fileName)
{
    PictureChoice choice;
    choice.file = fileOf(source, fileName, "a picture");
    readEntries(source, fileName, {"file", "view", "stage", "kind"}, [&](QString const &key, QVariant const &value) {
        return setPictureOption(&choice.options, key, value.toString());
    });
    return choice;
}

PointsChoice pointsOf(SourceTable const &source, QString const &fileName)
{
    PointsChoice choice;
    choice.csv = fileOf(source, fileName, "a set of points");
    readEntries(source, fileName,
                readingOptionNames({"file", "set", "view", "stage", "moved", "painted", "x", "y", "z", "dx", "dy", "dz",
                                    "id", "valid", "value"}),
                [&](QString const &key, QVariant const &value) {
                    return setPointOption(&choice.options, key, value.toString()) ||
                           setReadingOption(&choice.csvOptions, key, value.toString());
                });
    return choice;
}

SnippetChoice snippetOf(SourceTable const &source, QString const &fileName)
{
    SnippetChoice choice;
    choice.file = fileOf(source, fileName, "a snippet");
    choice.name = QFileInfo(choice.file).completeBaseName();
    readEntries(source, fileName, {"file", "name"}, [&](QString const &key, QVariant const &value) {
        if (key != QLatin1StringView("name"))
            return false;
        choice.name = value.toString();
        return true;
    });
    return choice;
}

BaVec2d<double> toVector(QString const &key, QVariant const &value)
{
    QVariantList const numbers = value.toList();
    if (numbers.size() != 2)
        throw InputError(QStringLiteral("'%1' wants two numbers").arg(key));
    return {numbers[0].toDouble(), numbers[1].toDouble()};
}

/// Numbers as the parameters of a camera have them.
QString parameterOf(QString const &key, QVariant const &value)
{
    QStringList numbers;
    for (QVariant const &number : value.toList())
        numbers << QString::number(number.toDouble(), 'g', 17);
    if (numbers.isEmpty())
        return QStringLiteral("%1 = %2\n").arg(key, value.toString());
    return QStringLiteral("%1 = (%2)\n").arg(key, numbers.join(QStringLiteral(", ")));
}

CameraChoice cameraOf(SourceTable const &source, QString const &fileName)
{
    CameraChoice choice{PictureOptions().view, {}};
    std::vector<QString> known = keysOf(entriesOf(choice.camera.getParameterString()));
    QString parameters;
    std::optional<double> scale;
    BaVec2d<double> origin;
    bool upwards = false;
    std::vector<QString> const others{"view", "scale", "origin", "upwards"};
    std::vector<QString> const cameraKeys = known;
    known.insert(known.end(), others.begin(), others.end());
    readEntries(source, fileName, known, [&](QString const &key, QVariant const &value) {
        if (key == QLatin1StringView("view"))
            choice.view = value.toString();
        else if (key == QLatin1StringView("scale"))
            scale = value.toDouble();
        else if (key == QLatin1StringView("origin"))
            origin = toVector(key, value);
        else if (key == QLatin1StringView("upwards"))
            upwards = toBool(key, value.toString());
        else if (std::find(cameraKeys.begin(), cameraKeys.end(), key) != cameraKeys.end())
            parameters += parameterOf(key, value);
        else
            return false;
        return true;
    });
    try {
        choice.camera.createFromParameterString(parameters);
    } catch (ParamError const &error) {
        throw InputError(QStringLiteral("%1: %2").arg(placeOf(source, fileName), error.getText()));
    }
    if (scale)
        choice.camera = CameraModel::plane(choice.camera.width, choice.camera.height, *scale, origin, upwards);
    return choice;
}

} // namespace

bool setPointOption(PointOptions *options, QString const &key, QString const &value)
{
    static std::map<QString, QString PointColumns::*> const COLUMNS{
        {"x", &PointColumns::x},   {"y", &PointColumns::y},         {"z", &PointColumns::z},
        {"dx", &PointColumns::dx}, {"dy", &PointColumns::dy},       {"dz", &PointColumns::dz},
        {"id", &PointColumns::id}, {"valid", &PointColumns::valid}, {"value", &PointColumns::value}};
    if (auto const column = COLUMNS.find(key); column != COLUMNS.end())
        options->columns.*column->second = value;
    else if (key == QLatin1StringView("set"))
        options->set = value;
    else if (key == QLatin1StringView("view"))
        options->view = value;
    else if (key == QLatin1StringView("stage"))
        options->stage = toCount(key, value);
    else if (key == QLatin1StringView("moved"))
        options->moved = toBool(key, value);
    else if (key == QLatin1StringView("painted"))
        options->painted = toBool(key, value);
    else
        return false;
    return true;
}

void addSourcesOfDocument(PageDocument const &document, QString const &fileName, DataChoice *choice)
{
    for (SourceTable const &source : document.sources) {
        if (source.section == QLatin1StringView("series"))
            choice->series.push_back(seriesOf(source, fileName));
        else if (source.section == QLatin1StringView("picture"))
            choice->pictures.push_back(pictureOf(source, fileName));
        else if (source.section == QLatin1StringView("points"))
            choice->points.push_back(pointsOf(source, fileName));
        else if (source.section == QLatin1StringView("snippet"))
            choice->snippets.push_back(snippetOf(source, fileName));
        else
            choice->cameras.push_back(cameraOf(source, fileName));
    }
}

void askOfData(PageDocument const &document, DataChoice *choice)
{
    choice->scale = document.scale;
    for (PointSource const &source : document.points)
        choice->namedPoints.push_back(source.point);
}

DataChoice dataOfDocument(PageDocument const &document, QString const &fileName)
{
    DataChoice choice;
    askOfData(document, &choice);
    for (auto it = document.data.cbegin(); it != document.data.cend(); ++it) {
        if (it.key() == QLatin1StringView("file"))
            choice.csv = resolveInside(it.value().toString(), fileName, fileName);
        else if (it.key() == QLatin1StringView("project"))
            choice.project = resolveInside(it.value().toString(), fileName, fileName);
        else if (it.key() != QLatin1StringView("stage") && !setCsvOption(&choice, it.key(), it.value().toString())) {
            std::vector<QString> known = csvOptionNames();
            known.insert(known.end(), {"file", "project", "stage"});
            throw InputError(QStringLiteral("%1: unknown key '%2' in [data]%3")
                                 .arg(fileName, it.key(), suggestion(it.key(), known)));
        }
    }
    if (!choice.csv.isEmpty() && !choice.project.isEmpty())
        throw InputError(fileName + QStringLiteral(": [data] names both a file and a project"));
    addSourcesOfDocument(document, fileName, &choice);
    for (SourceTable const &source : document.sources) {
        if (source.section != QLatin1StringView("snippet") && !choice.project.isEmpty())
            throw InputError(QStringLiteral("%1: [[%2]] cannot stand beside a project: import the files into it")
                                 .arg(placeOf(source, fileName), source.section));
    }
    return choice;
}

namespace {

/// The first file that the data come from; empty without any.
QString nameOf(DataChoice const &choice)
{
    if (!choice.csv.isEmpty())
        return choice.csv;
    if (!choice.series.empty())
        return choice.series.front().csv;
    if (!choice.pictures.empty())
        return choice.pictures.front().file;
    return choice.points.empty() ? QString() : choice.points.front().csv;
}

} // namespace

PageData::PageData(DataChoice const &choice)
{
    openData(choice);
    if (choice.snippets.empty())
        return;
    TokensWithSnippets::Snippets snippets;
    for (SnippetChoice const &snippet : choice.snippets) {
        if (!snippets.emplace(snippet.name, openSnippet(snippet.file)).second)
            throw InputError(QStringLiteral("%1: there is a snippet '%2' already: give one of them another 'name'")
                                 .arg(snippet.file, snippet.name));
    }
    tokens_ = std::make_unique<TokensWithSnippets>(std::move(tokens_), std::move(snippets));
}

void PageData::openData(DataChoice const &choice)
{
    if (!choice.project.isEmpty()) {
        name_ = choice.project;
        project_ = std::make_unique<Project>(choice.project, OpenMode_t::READ);
    } else if (!nameOf(choice).isEmpty()) {
        importFiles(choice);
    }
    showScale(choice.scale);
    if (!project_) {
        tokens_ = std::make_unique<EmptyFigureTokenInterface>();
        return;
    }
    auto tokens = std::make_unique<ProjectTokenInterface>(project_.get());
    charts_ = std::make_unique<ProjectChartInterface>(tokens.get());
    charts_->setNamedPoints(choice.namedPoints);
    images_ = std::make_unique<ProjectImageInterface>(tokens.get());
    tokens_ = std::move(tokens);
}

namespace {

void importSeries(std::vector<SeriesChoice> const &series, Project *project)
{
    std::map<QString, QString> fileOfGroup;
    for (SeriesChoice const &choice : series) {
        CsvTable const table = readCsv(choice.csv, choice.csvOptions);
        QString const group = seriesGroup(table, choice.options);
        auto const [first, isNew] = fileOfGroup.emplace(group, choice.csv);
        if (!isNew)
            throw InputError(QStringLiteral("%1: '%2' has the group '%3' already: give one of them another 'group'")
                                 .arg(choice.csv, first->second, group));
        project->importSeries(table, choice.options);
    }
}

} // namespace

/// All files are read into a project that goes with this object.
void PageData::importFiles(DataChoice const &choice)
{
    std::optional<CsvTable> table;
    if (!choice.csv.isEmpty())
        table = readCsv(choice.csv, choice.csvOptions);
    name_ = nameOf(choice);
    folder_ = std::make_unique<QTemporaryDir>();
    if (!folder_->isValid())
        throw InputError(folder_->errorString());
    project_ = std::make_unique<Project>(folder_->filePath(QStringLiteral("data.zem")), OpenMode_t::CREATE);
    if (table)
        project_->importTable(*table, choice.importOptions);
    importSeries(choice.series, project_.get());
    for (CameraChoice const &camera : choice.cameras)
        project_->setCamera(camera.view, camera.camera);
    for (PictureChoice const &picture : choice.pictures)
        project_->importPicture(picture.file, picture.options);
    for (PointsChoice const &points : choice.points)
        project_->importPoints(readCsv(points.csv, points.csvOptions), points.options);
}

void PageData::showOn(Figure *figure) const
{
    figure->setTokenInterface(tokens_.get());
    figure->setChartInterface(charts_.get());
    figure->setImageInterface(images_.get());
}

void PageData::setStage(StageIdentifier const &stage)
{
    if (charts_)
        charts_->setCurrentStage(stage);
}

PageData::~PageData() = default;

void PageData::showScale(std::optional<ColorScale> const &scale) const
{
    if (project_ && !scale)
        applyColorScale(*project_);
    else if (project_)
        applyColorScale(*project_, *scale);
    else if (scale)
        applyColorScale(*scale);
}

std::vector<unsigned int> PageData::stages() const
{
    return project_ ? project_->stages() : std::vector<unsigned int>();
}

namespace {

unsigned int toStage(QString const &text, QString const &whole)
{
    bool isNumber = false;
    unsigned int const stage = text.trimmed().toUInt(&isNumber);
    if (!isNumber)
        throw UsageError(QStringLiteral("'%1' names no stages: use 12, 3..40, 1,5,9 or all").arg(whole));
    return stage;
}

void addStages(QString const &piece, QString const &whole, std::vector<unsigned int> const &existing,
               QString const &source, std::vector<unsigned int> *selected)
{
    qsizetype const dots = piece.indexOf(QLatin1StringView(".."));
    unsigned int const first = toStage(dots < 0 ? piece : piece.left(dots), whole);
    unsigned int const last = dots < 0 ? first : toStage(piece.mid(dots + 2), whole);
    for (unsigned int end : {first, last}) {
        if (!std::binary_search(existing.begin(), existing.end(), end))
            throw InputError(existing.empty()
                                 ? QStringLiteral("%1: there are no stages").arg(source)
                                 : QStringLiteral("%1: stage %2 does not exist; there are %3 stages from %4 to %5")
                                       .arg(source)
                                       .arg(end)
                                       .arg(existing.size())
                                       .arg(existing.front())
                                       .arg(existing.back()));
    }
    if (last < first)
        throw UsageError(QStringLiteral("'%1' runs backwards").arg(whole));
    selected->insert(selected->end(), std::lower_bound(existing.begin(), existing.end(), first),
                     std::upper_bound(existing.begin(), existing.end(), last));
}

} // namespace

std::vector<unsigned int> selectStages(QString const &text, std::vector<unsigned int> const &existing,
                                       QString const &source)
{
    if (text == QLatin1StringView("all"))
        return existing;
    if (text.isEmpty())
        return existing.empty() ? existing : std::vector<unsigned int>{existing.back()};
    std::vector<unsigned int> selected;
    for (QString const &piece : text.split(QLatin1Char(',')))
        addStages(piece, text, existing, source, &selected);
    return selected;
}

} // namespace Zem::Zemfig
