#include "meas_csv_layout.h"

#include "meas_csv_cells.h"
#include "meas_csv_delimiter.h"
#include "meas_csv_preamble.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Zem::Measurement {

namespace {

constexpr std::size_t SAMPLE_SIZE = 200;

class LayoutFinder
{
public:
    LayoutFinder(CsvSource const &source, CsvOptions const &options) : source_(source), options_(options) {}

    CsvLayout find()
    {
        skipKnownPreamble();
        findCommentPrefix();
        skipComments();
        layout_.hints = readHints(layout_.preamble);
        chooseDelimiter();
        if (!options_.preambleLines) {
            skipTitles();
        }
        useCommentAsHeader();
        return layout_;
    }

private:
    void skipKnownPreamble()
    {
        if (options_.preambleLines) {
            skipLines(*options_.preambleLines);
        } else {
            skipLines(countHeaderBlock(source_));
        }
    }

    void skipLines(unsigned int count)
    {
        CsvLine line;
        for (unsigned int i = 0; i < count && source_.nextLine(layout_.bodyOffset, line); ++i) {
            layout_.preamble << source_.decode(line.text);
            ++linesPassed_;
        }
        layout_.preambleLines = linesPassed_;
    }

    void findCommentPrefix()
    {
        if (options_.commentPrefix) {
            layout_.commentPrefix = source_.encoding() == CsvEncoding_t::UTF8
                                        ? options_.commentPrefix->toStdString()
                                        : options_.commentPrefix->toLatin1().toStdString();
            return;
        }
        constexpr std::array<std::string_view, 4> PREFIXES = {"#", "***", "%", "//"};
        std::string_view const rest = trimmed(source_.text().substr(layout_.bodyOffset));
        auto const found =
            std::find_if(PREFIXES.begin(), PREFIXES.end(), [rest](auto p) { return rest.starts_with(p); });
        if (found != PREFIXES.end()) {
            layout_.commentPrefix = *found;
        }
    }

    bool isComment(std::string_view line) const
    {
        return !layout_.commentPrefix.empty() && trimmed(line).starts_with(layout_.commentPrefix);
    }

    /// Passes over comments and blank lines; remembers the comment right before the table.
    void skipComments()
    {
        CsvLine line;
        for (std::size_t next = layout_.bodyOffset; source_.nextLine(next, line); layout_.bodyOffset = next) {
            bool const comment = isComment(line.text);
            if (!comment && !trimmed(line.text).empty()) {
                return;
            }
            lastComment_ = comment ? line.text : std::string_view();
            layout_.preamble << source_.decode(line.text);
            ++linesPassed_;
        }
    }

    std::vector<std::string_view> sample() const
    {
        std::vector<std::string_view> lines;
        CsvLine line;
        std::size_t next = layout_.bodyOffset;
        while (lines.size() < SAMPLE_SIZE && source_.nextLine(next, line)) {
            if (!isComment(line.text) && !trimmed(line.text).empty()) {
                lines.push_back(line.text);
            }
        }
        return lines;
    }

    void chooseDelimiter()
    {
        std::vector<std::string_view> const lines = sample();
        std::optional<char> const known = options_.delimiter ? options_.delimiter : layout_.hints.delimiter;
        layout_.delimiter = known ? *known : detectDelimiter(lines);
        width_ = commonWidth(lines, layout_.delimiter).width;
    }

    /// Title lines are told from the table by their shape; see isTitleLine().
    void skipTitles()
    {
        CsvLine line;
        CsvLine following;
        std::size_t next = layout_.bodyOffset;
        while (source_.nextLine(next, line)) {
            std::size_t after = next;
            bool const more = source_.nextLine(after, following);
            if (!more || !isTitleLine(line.text, following.text, layout_.delimiter, width_)) {
                return;
            }
            layout_.preamble << source_.decode(line.text);
            layout_.bodyOffset = next;
            layout_.preambleLines = ++linesPassed_;
            lastComment_ = {};
            skipComments();
            next = layout_.bodyOffset;
        }
    }

    /// Some writers put the column names into the last comment, right above rows of numbers.
    void useCommentAsHeader()
    {
        CsvLine first;
        std::size_t next = layout_.bodyOffset;
        if (lastComment_.empty() || !layout_.hints.names.isEmpty() || !source_.nextLine(next, first)) {
            return;
        }
        std::string_view const names = trimmed(trimmed(lastComment_).substr(layout_.commentPrefix.size()));
        bool const fits = width_ > 1 && splitLine(names, layout_.delimiter).size() == width_;
        if (fits && options_.headerRow.value_or(true) && holdsData(first.text, layout_.delimiter)) {
            layout_.commentHeader = names;
        }
    }

    CsvSource const &source_;
    CsvOptions const &options_;
    CsvLayout layout_;
    std::string_view lastComment_;
    std::size_t width_ = 1;
    unsigned int linesPassed_ = 0;
};

} // namespace

CsvLayout findLayout(CsvSource const &source, CsvOptions const &options)
{
    return LayoutFinder(source, options).find();
}

} // namespace Zem::Measurement
