#include "meas_csv_preamble.h"

#include "meas_csv_cells.h"
#include "meas_csv_delimiter.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace Zem::Measurement {

namespace {

constexpr unsigned int MAX_HEADER_LINES = 1000;

std::string lettersOf(std::string_view text)
{
    std::string letters;
    for (char const c : text) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
            letters += static_cast<char>(c | 0x20);
        }
    }
    return letters;
}

bool isEndMarker(std::string_view line)
{
    return line.size() < 100 && (lettersOf(line) == "endofheader" || lettersOf(line) == "endheader");
}

/// Keys begin with a letter; rows of values do not.
bool mayBeHeaderLine(std::string_view line)
{
    std::string_view const text = trimmed(line);
    bool const letter = !text.empty() && ((text.front() | 0x20) >= 'a') && ((text.front() | 0x20) <= 'z');
    return text.empty() || isEndMarker(text) || (letter && line.front() != '\t');
}

bool isVariablesLine(std::string_view line)
{
    std::string_view const text = trimmed(line);
    return text.starts_with("TITLE") || text.starts_with("VARIABLES") || text.starts_with("ZONE");
}

/// Lines up to the last marker that only keys and values separate from the one before.
unsigned int countMarkedLines(CsvSource const &source)
{
    unsigned int found = 0;
    CsvLine line;
    std::size_t next = 0;
    for (unsigned int number = 1; number <= MAX_HEADER_LINES && source.nextLine(next, line); ++number) {
        if (isEndMarker(line.text)) {
            found = number;
        } else if (found > 0 && !mayBeHeaderLine(line.text)) {
            break;
        }
    }
    return found;
}

unsigned int countVariablesLines(CsvSource const &source)
{
    unsigned int count = 0;
    bool variables = false;
    CsvLine line;
    std::size_t next = 0;
    while (source.nextLine(next, line) && isVariablesLine(line.text)) {
        variables = variables || line.text.find("VARIABLES") != std::string_view::npos;
        ++count;
    }
    return variables ? count : 0;
}

/// The quoted texts behind VARIABLES=, up to the next keyword.
QStringList readVariables(QString const &line)
{
    static QRegularExpression const list(QStringLiteral("VARIABLES\\s*=\\s*((?:\"[^\"]*\"[\\s,]*)+)"));
    static QRegularExpression const name(QStringLiteral("\"([^\"]*)\""));
    QStringList names;
    for (auto const &match : name.globalMatch(list.match(line).captured(1))) {
        names << match.captured(1).trimmed();
    }
    return names;
}

void readSeparator(QString const &value, PreambleHints &hints)
{
    if (value == QLatin1String("Tab")) {
        hints.delimiter = '\t';
    } else if (value == QLatin1String("Comma")) {
        hints.delimiter = ',';
    }
}

void readKey(QString const &line, PreambleHints &hints)
{
    QStringList const fields = line.split(QLatin1Char('\t'));
    QString const value = fields.value(1).trimmed();
    if (fields[0] == QLatin1String("Separator")) {
        readSeparator(value, hints);
    } else if (fields[0] == QLatin1String("Decimal_Separator") && !value.isEmpty()) {
        hints.decimalComma = value == QLatin1String(",");
    } else if (fields[0] == QLatin1String("Y_Unit_Label")) {
        hints.units = fields;
        hints.units[0].clear();
    }
}

struct LineShape
{
    std::size_t cells = 0;
    std::size_t filled = 0;
};

LineShape shapeOf(std::vector<std::string_view> const &cells)
{
    auto const filled = std::count_if(cells.begin(), cells.end(), [](auto cell) { return !cell.empty(); });
    return {cells.size(), static_cast<std::size_t>(filled)};
}

} // namespace

unsigned int countHeaderBlock(CsvSource const &source)
{
    unsigned int const marked = countMarkedLines(source);
    return marked > 0 ? marked : countVariablesLines(source);
}

PreambleHints readHints(QStringList const &preamble)
{
    PreambleHints hints;
    for (QString const &line : preamble) {
        bool const marker = isEndMarker(line.left(100).toStdString());
        hints.rowsMayEnd = hints.rowsMayEnd || marker;
        QStringList const names = readVariables(line);
        if (!names.isEmpty()) {
            hints.names = names;
        }
    }
    if (hints.rowsMayEnd) {
        std::for_each(preamble.begin(), preamble.end(), [&hints](QString const &line) { readKey(line, hints); });
    }
    return hints;
}

bool isTitleLine(std::string_view line, std::string_view following, char delimiter, std::size_t width)
{
    auto const cells = splitLine(line, delimiter);
    LineShape const shape = shapeOf(cells);
    LineShape const below = shapeOf(splitLine(following, delimiter));
    bool const dataBelow = below.cells == width && holdsData(following, delimiter);
    if (width < 2 || holdsData(cells.front(), delimiter)) {
        return false;
    }
    if (shape.cells == width) {
        return shape.filled == 1 && !cells.front().empty() && below.filled == width && !dataBelow;
    }
    if (shape.cells > width) {
        return false;
    }
    bool const record = cells.front().starts_with('{');
    bool const keyed = cells.front().find_first_of(":=") != std::string_view::npos;
    return shape.filled <= 1 || record || keyed || (shape.cells == 2 && !dataBelow);
}

} // namespace Zem::Measurement
