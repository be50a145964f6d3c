#include "meas_csv_delimiter.h"

#include "meas_csv_cells.h"

#include <algorithm>
#include <map>

namespace Zem::Measurement {

namespace {

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// End of the cell that begins at `begin`: the next delimiter or line end outside quotes.
std::size_t cellEnd(std::string_view line, std::size_t begin, char delimiter)
{
    std::size_t const first = line.find_first_not_of(" \t", begin);
    bool quoted = first != std::string_view::npos && line[first] == '"';
    for (std::size_t i = quoted ? first + 1 : begin; i < line.size(); ++i) {
        if (quoted && line[i] == '"') {
            quoted = i + 1 < line.size() && line[i + 1] == '"';
            i += quoted ? 1 : 0;
        } else if (!quoted && (line[i] == delimiter || isLineEnd(line[i]))) {
            return i;
        }
    }
    return line.size();
}

std::string_view unquoted(std::string_view cell)
{
    cell = trimmed(cell);
    bool const quoted = cell.size() >= 2 && cell.front() == '"' && cell.back() == '"';
    return quoted ? cell.substr(1, cell.size() - 2) : cell;
}

std::vector<std::string_view> splitAtBlanks(std::string_view line)
{
    std::vector<std::string_view> cells;
    std::size_t begin = line.find_first_not_of(" \t");
    while (begin != std::string_view::npos) {
        std::size_t const end = std::min(line.find_first_of(" \t", begin), line.size());
        cells.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(" \t", end);
    }
    return cells;
}

bool isDataCell(std::string_view cell, char delimiter)
{
    return parseNumber(cell, false) || (delimiter != ',' && parseNumber(cell, true)) ||
           parseDateTime(cell, DateOrder_t::MONTH_DAY) || parseDateTime(cell, DateOrder_t::DAY_MONTH);
}

/// Share of the cells below the first line that hold a number, a date or nothing.
double dataShare(std::vector<std::string_view> const &lines, char delimiter)
{
    std::size_t all = 0;
    std::size_t data = 0;
    for (std::size_t i = lines.size() > 1 ? 1 : 0; i < lines.size(); ++i) {
        for (std::string_view cell : splitLine(lines[i], delimiter)) {
            ++all;
            data += cell.empty() || isMissingWord(cell) || isDataCell(cell, delimiter) ? 1u : 0u;
        }
    }
    return all == 0 ? 0.0 : static_cast<double>(data) / static_cast<double>(all);
}

struct Candidate
{
    char delimiter = ',';
    double share = 0.0;
    double data = 0.0;
};

Candidate judge(std::vector<std::string_view> const &lines, char delimiter)
{
    CommonWidth const common = commonWidth(lines, delimiter);
    return {delimiter, common.width > 1 ? common.share : 0.0, dataShare(lines, delimiter)};
}

bool isBetter(Candidate const &a, Candidate const &b)
{
    constexpr double TOLERANCE = 0.02; // a few odd lines do not decide
    if (std::abs(a.share - b.share) > TOLERANCE) {
        return a.share > b.share;
    }
    return a.data > b.data;
}

} // namespace

std::vector<std::string_view> splitLine(std::string_view line, char delimiter)
{
    if (delimiter == ' ') {
        return splitAtBlanks(line);
    }
    std::vector<std::string_view> cells;
    for (std::size_t begin = 0; begin <= line.size();) {
        std::size_t const end = cellEnd(line, begin, delimiter);
        cells.push_back(unquoted(line.substr(begin, end - begin)));
        begin = end + 1;
    }
    return cells;
}

std::size_t cellOffset(std::string_view text, std::size_t column, char delimiter)
{
    if (delimiter == ' ') {
        std::string_view const line = text.substr(0, text.find_first_of("\r\n"));
        auto const cells = splitLine(line, ' ');
        return column < cells.size() ? static_cast<std::size_t>(cells[column].data() - line.data()) : line.size();
    }
    std::size_t begin = 0;
    for (; column > 0; --column) {
        std::size_t const end = cellEnd(text, begin, delimiter);
        if (end == text.size() || isLineEnd(text[end])) {
            return end;
        }
        begin = end + 1;
    }
    return begin;
}

CommonWidth commonWidth(std::vector<std::string_view> const &lines, char delimiter)
{
    std::map<std::size_t, std::size_t> counts;
    for (std::string_view line : lines) {
        ++counts[splitLine(line, delimiter).size()];
    }
    if (counts.size() > 1) {
        counts.erase(1);
    }
    auto const fewer = [](auto const &a, auto const &b) { return a.second < b.second; };
    auto const best = std::max_element(counts.rbegin(), counts.rend(), fewer); // of equals the widest
    if (best == counts.rend()) {
        return {};
    }
    return {best->first, static_cast<double>(best->second) / static_cast<double>(lines.size())};
}

char detectDelimiter(std::vector<std::string_view> const &lines)
{
    constexpr double ENOUGH = 0.5;
    Candidate best;
    for (char const delimiter : {'\t', ';', ',', '|'}) { // of equals the first wins
        Candidate const candidate = judge(lines, delimiter);
        if (candidate.share >= ENOUGH && isBetter(candidate, best)) {
            best = candidate;
        }
    }
    // Dates and words hold blanks too: those separate columns only where that leaves nothing but data. The blanks of a
    // header such as "force [kN]" tell nothing.
    Candidate const blank = judge({lines.begin() + (lines.size() > 1 ? 1 : 0), lines.end()}, ' ');
    bool const onlyChoice = best.share < ENOUGH && blank.share >= ENOUGH;
    bool const cleaner = blank.data >= 1.0 && best.data < 1.0 && blank.share >= best.share;
    return onlyChoice || (cleaner && blank.share >= ENOUGH) ? ' ' : best.delimiter;
}

bool holdsData(std::string_view line, char delimiter)
{
    auto const cells = splitLine(line, delimiter);
    return std::any_of(cells.begin(), cells.end(), [=](auto cell) { return isDataCell(cell, delimiter); });
}

} // namespace Zem::Measurement
