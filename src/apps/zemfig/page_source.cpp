#include "page_source.h"

#include "cli.h"
#include "page_schema.h"

#include <ZemFig2Connector.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Measurement;

namespace {

constexpr qint64 HEAD_SIZE = 4096;

std::vector<char> headOf(QString const &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw InputError(fileName + QStringLiteral(": ") + file.errorString());
    QByteArray const head = file.read(HEAD_SIZE);
    return {head.begin(), head.end()};
}

/// Whether the bytes are text: a page document; block files hold zero bytes within their header.
bool looksLikeText(std::vector<char> const &head)
{
    return std::find(head.begin(), head.end(), '\0') == head.end();
}

/// The log of the library says what went wrong, the stream why a file could not even be opened.
QString reasonOf(QString const &fileName, ErrorLog const &log)
{
    IO::InStream const stream(fileName);
    return stream.isInit() ? log.getLog().trimmed() : stream.getError();
}

/// A file may hold connectors that no program can make; an update takes them for a mistake of the program.
void findIllegalConnectors(Element const &element, QString const &fileName, std::vector<Problem> *problems)
{
    for (auto it = element.getConnectorBegin(); it != element.getConnectorEnd(); ++it) {
        Connector const &connector = **it;
        if (connector.getSource() == &element &&
            !element.canConnectTo(connector.getTarget(), connector.getTargetName()))
            problems->push_back({fileName, 0,
                                 QStringLiteral("%1 cannot be connected to %2")
                                     .arg(describe(element), describe(*connector.getTarget()))});
    }
}

std::vector<Problem> illegalConnectors(Figure const &figure, QString const &fileName)
{
    std::vector<Problem> problems;
    findIllegalConnectors(*figure.getRoot(), fileName, &problems);
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it)
        findIllegalConnectors(**it, fileName, &problems);
    return problems;
}

PageDocument openFigureFile(QString const &fileName)
{
    PageDocument document;
    ErrorLog log(false);
    document.figure.reset(Figure::loadFigure(fileName, &log));
    if (!document.figure) {
        document.problems.push_back({fileName, 0, reasonOf(fileName, log)});
        return document;
    }
    document.problems = illegalConnectors(*document.figure, fileName);
    // A page that cannot be updated is of no use.
    if (!document.problems.empty())
        document.figure.reset();
    return document;
}

} // namespace

PageDocument openPage(QString const &fileName)
{
    std::vector<char> const head = headOf(fileName);
    if (Figure::canOpenFile(head))
        return openFigureFile(fileName);
    if (looksLikeText(head))
        return readPageDocument(fileName);
    PageDocument refused;
    refused.problems.push_back({fileName, 0, QStringLiteral("is neither a page document nor a figure file")});
    return refused;
}

PageDocument openSoundPage(QString const &fileName)
{
    PageDocument document = openPage(fileName);
    if (document.problems.empty())
        return document;
    QStringList lines;
    for (Problem const &problem : document.problems)
        lines += problem.toString();
    throw InputError(lines.join(QLatin1Char('\n')));
}

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
    static std::map<QString, char> const words{
        {"tab", '\t'}, {"\t", '\t'}, {"comma", ','}, {",", ','}, {"semicolon", ';'}, {";", ';'}, {"blank", ' '}, {" ", ' '}};
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
    throw InputError(QStringLiteral("'%1' wants one of %2, not '%3'").arg(name, known.join(QStringLiteral(", ")), value));
}

struct CsvOption
{
    char const *name;
    void (*set)(DataChoice &choice, QString const &name, QString const &value);
};

constexpr std::array<CsvOption, 12> CSV_OPTIONS{{
    {"delimiter", [](DataChoice &choice, QString const &, QString const &value) {
         choice.csvOptions.delimiter = toDelimiter(value);
     }},
    {"decimal_comma", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.decimalComma = toBool(name, value);
     }},
    {"encoding", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.encoding = toWord<CsvEncoding_t>(
             name, value.toLower(), {{"utf-8", CsvEncoding_t::UTF8}, {"latin-1", CsvEncoding_t::LATIN1}});
     }},
    {"header_row", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.headerRow = toBool(name, value);
     }},
    {"units_row", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.unitsRow = toBool(name, value);
     }},
    {"comment", [](DataChoice &choice, QString const &, QString const &value) {
         choice.csvOptions.commentPrefix = value;
     }},
    {"preamble_lines", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.preambleLines = toCount(name, value);
     }},
    {"date_order", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.csvOptions.dateOrder = toWord<DateOrder_t>(
             name, value, {{"month-day", DateOrder_t::MONTH_DAY}, {"day-month", DateOrder_t::DAY_MONTH}});
     }},
    {"missing", [](DataChoice &choice, QString const &, QString const &value) { choice.csvOptions.missing += value; }},
    {"prefix", [](DataChoice &choice, QString const &, QString const &value) { choice.importOptions.prefix = value; }},
    {"stage_column", [](DataChoice &choice, QString const &, QString const &value) {
         choice.importOptions.stageColumn = value;
     }},
    {"first_stage", [](DataChoice &choice, QString const &name, QString const &value) {
         choice.importOptions.firstStage = toCount(name, value);
     }},
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
        throw InputError(
            QStringLiteral("%1: the data path '%2' leaves the folder of the document").arg(place, path));
    if (file.isEmpty())
        throw InputError(QStringLiteral("%1: the data file '%2' does not exist").arg(place, path));
    // As the user wrote it, for the messages; seen from where the command runs.
    return QDir::cleanPath(QFileInfo(documentName).dir().filePath(path));
}

} // namespace

namespace {

/// "page.figure.toml:7".
QString placeOf(SeriesSource const &source, QString const &fileName)
{
    return QStringLiteral("%1:%2").arg(fileName).arg(source.line);
}

bool isStageOption(QString const &key)
{
    return key == QLatin1StringView("prefix") || key == QLatin1StringView("stage_column") ||
           key == QLatin1StringView("first_stage");
}

std::vector<QString> seriesOptionNames()
{
    std::vector<QString> names = csvOptionNames();
    std::erase_if(names, isStageOption);
    names.insert(names.end(), {"file", "group", "columns"});
    return names;
}

/// The options that tell how to read the file; those of stages are none of a series.
bool setSeriesCsvOption(SeriesChoice *choice, QString const &key, QString const &value)
{
    if (isStageOption(key))
        return false;
    DataChoice reading;
    reading.csvOptions = choice->csvOptions;
    bool const known = setCsvOption(&reading, key, value);
    choice->csvOptions = reading.csvOptions;
    return known;
}

SeriesChoice seriesOf(SeriesSource const &source, QString const &fileName)
{
    QString const place = placeOf(source, fileName);
    SeriesChoice choice;
    for (auto it = source.values.cbegin(); it != source.values.cend(); ++it) {
        QString const &key = it.key();
        if (key == QLatin1StringView("file"))
            choice.csv = resolveInside(it.value().toString(), fileName, place);
        else if (key == QLatin1StringView("group"))
            choice.options.group = it.value().toString();
        else if (key == QLatin1StringView("columns"))
            choice.options.columns = it.value().toStringList();
        else if (!setSeriesCsvOption(&choice, key, it.value().toString()))
            throw InputError(QStringLiteral("%1: unknown key '%2' in [[series]]%3")
                                 .arg(place, key, suggestion(key, seriesOptionNames())));
    }
    if (choice.csv.isEmpty())
        throw InputError(QStringLiteral("%1: a series wants a 'file'").arg(place));
    return choice;
}

} // namespace

std::vector<SeriesChoice> seriesOfDocument(PageDocument const &document, QString const &fileName)
{
    std::vector<SeriesChoice> series;
    for (SeriesSource const &source : document.series)
        series.push_back(seriesOf(source, fileName));
    return series;
}

void askOfData(PageDocument const &document, DataChoice *choice)
{
    choice->scale = document.scale;
    for (PointSource const &source : document.points)
        choice->points.push_back(source.point);
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
    choice.series = seriesOfDocument(document, fileName);
    if (!choice.series.empty() && !choice.project.isEmpty())
        throw InputError(QStringLiteral("%1: [[series]] cannot stand beside a project: import the files into it")
                             .arg(placeOf(document.series.front(), fileName)));
    return choice;
}

PageData::PageData(DataChoice const &choice)
{
    if (!choice.project.isEmpty()) {
        name_ = choice.project;
        project_ = std::make_unique<Project>(choice.project, OpenMode_t::READ);
    } else if (!choice.csv.isEmpty() || !choice.series.empty()) {
        importFiles(choice);
    }
    showScale(choice.scale);
    if (!project_) {
        tokens_ = std::make_unique<EmptyFigureTokenInterface>();
        return;
    }
    auto tokens = std::make_unique<ProjectTokenInterface>(project_.get());
    charts_ = std::make_unique<ProjectChartInterface>(tokens.get());
    charts_->setNamedPoints(choice.points);
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
    name_ = table ? choice.csv : choice.series.front().csv;
    folder_ = std::make_unique<QTemporaryDir>();
    if (!folder_->isValid())
        throw InputError(folder_->errorString());
    project_ = std::make_unique<Project>(folder_->filePath(QStringLiteral("data.zem")), OpenMode_t::CREATE);
    if (table)
        project_->importTable(*table, choice.importOptions);
    importSeries(choice.series, project_.get());
}

void PageData::showOn(Figure *figure) const
{
    figure->setTokenInterface(tokens_.get());
    figure->setChartInterface(charts_.get());
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
