#include "meas_csv_grid.h"

#include "meas_csv_cells.h"
#include "meas_csv_delimiter.h"

#include <algorithm>
#include <memory>
#include <new>

#include <csv.h>

namespace Zem::Measurement {

namespace {

struct ParserDeleter
{
    void operator()(csv_parser *parser) const
    {
        csv_free(parser);
        delete parser;
    }
};
using Parser = std::unique_ptr<csv_parser, ParserDeleter>;

Parser makeParser(char delimiter)
{
    constexpr std::size_t BUFFER_STEP = 65536; // the parser's own step of 128 bytes makes long cells slow
    Parser parser(new csv_parser{});
    if (csv_init(parser.get(), CSV_STRICT) != 0) {
        throw std::bad_alloc();
    }
    csv_set_delim(parser.get(), static_cast<unsigned char>(delimiter));
    csv_set_blk_size(parser.get(), BUFFER_STEP);
    return parser;
}

unsigned int lineNumber(CsvSource const &source, std::size_t offset)
{
    unsigned int number = 1;
    CsvLine line;
    for (std::size_t next = 0; source.nextLine(next, line) && next <= offset;) {
        ++number;
    }
    return number;
}

} // namespace

/// Feeds the parser line by line, so that the place of every row is known.
class CsvGridReader
{
public:
    CsvGridReader(CsvGrid &grid, CsvSource const &source, CsvLayout const &layout)
        : grid_(grid), source_(source), layout_(layout), parser_(makeParser(layout.delimiter))
    {
        reserve();
    }

    void read()
    {
        line_ = lineNumber(source_, layout_.bodyOffset);
        readCommentHeader();
        CsvLine line;
        for (std::size_t next = layout_.bodyOffset; source_.nextLine(next, line); ++line_) {
            if (rowIsOpen_ || !isSkipped(line.text)) {
                readLine(line);
            }
        }
        finish();
    }

private:
    /// The calls from the parser must not throw: everything they fill has its room beforehand.
    void reserve()
    {
        std::string_view const body = source_.text().substr(layout_.bodyOffset);
        auto const isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
        auto const isCellEnd = [this](char c) {
            return c == layout_.delimiter || (layout_.delimiter == ' ' && c == '\t');
        };
        auto const rows = static_cast<std::size_t>(std::count_if(body.begin(), body.end(), isLineEnd)) + 2;
        auto const cells = static_cast<std::size_t>(std::count_if(body.begin(), body.end(), isCellEnd)) + rows;
        grid_.text_.reserve(body.size() + layout_.commentHeader.size());
        grid_.cellEnds_.reserve(cells + layout_.commentHeader.size());
        grid_.rows_.reserve(rows);
    }

    bool isSkipped(std::string_view line) const
    {
        std::string_view const text = trimmed(line);
        return text.empty() || (!layout_.commentPrefix.empty() && text.starts_with(layout_.commentPrefix));
    }

    void readCommentHeader()
    {
        if (layout_.commentHeader.empty()) {
            return;
        }
        CsvLine header;
        header.text = header.raw = layout_.commentHeader;
        header.offset = static_cast<std::size_t>(layout_.commentHeader.data() - source_.text().data());
        --line_;
        readLine(header);
        if (rowIsOpen_) {
            feedEnd();
        }
        ++line_;
    }

    void readLine(CsvLine const &line)
    {
        if (!rowIsOpen_) {
            beginRow(line.offset);
        }
        if (layout_.delimiter == ' ') {
            readAlignedLine(line.text);
            return;
        }
        std::size_t const parsed = csv_parse(parser_.get(), line.raw.data(), line.raw.size(), &CsvGridReader::takeCell,
                                             &CsvGridReader::takeRow, this);
        if (parsed != line.raw.size()) {
            failInQuotes(line.offset + parsed);
        }
    }

    void readAlignedLine(std::string_view line)
    {
        for (std::string_view const cell : splitLine(line, ' ')) {
            appendCell(cell);
        }
        endRow();
    }

    void feedEnd()
    {
        if (csv_fini(parser_.get(), &CsvGridReader::takeCell, &CsvGridReader::takeRow, this) != 0) {
            throw std::bad_alloc();
        }
    }

    void finish()
    {
        if (rowIsOpen_ && isInsideQuotes()) {
            std::size_t const open = grid_.cellEnds_.size() - row_.firstCell;
            grid_.rows_.push_back(row_);
            grid_.failAt(grid_.rows_.size() - 1, open, QStringLiteral("a quote is opened here and never closed"));
        }
        if (rowIsOpen_) {
            feedEnd();
        }
        if (grid_.rows_.empty()) {
            source_.fail(QStringLiteral("there is no table in the file"));
        }
    }

    /// A row that a line end did not close can only be open for a quote; at the end of the file it may lack the line
    /// end.
    bool isInsideQuotes() const
    {
        std::string_view const text = source_.text();
        return text.ends_with('\n') || text.ends_with('\r') || lastCellIsUnclosed();
    }

    bool lastCellIsUnclosed() const
    {
        std::string_view const row = source_.text().substr(row_.offset);
        return std::count(row.begin(), row.end(), '"') % 2 != 0;
    }

    [[noreturn]] void failInQuotes(std::size_t offset)
    {
        if (csv_error(parser_.get()) == CSV_ENOMEM) {
            throw std::bad_alloc();
        }
        source_.failAt(offset,
                       QStringLiteral("a quote inside a cell: quotes enclose a whole cell, and a quote in it is "
                                      "doubled"));
    }

    void beginRow(std::size_t offset)
    {
        row_ = {offset, grid_.cellEnds_.size(), 0, line_};
        rowText_ = grid_.text_.size();
        rowIsOpen_ = true;
    }

    void appendCell(std::string_view cell)
    {
        grid_.text_.append(cell);
        grid_.cellEnds_.push_back(grid_.text_.size());
    }

    void endRow()
    {
        rowIsOpen_ = false;
        row_.cellCount = grid_.cellEnds_.size() - row_.firstCell;
        if (grid_.text_.size() == rowText_) {
            grid_.cellEnds_.resize(row_.firstCell);
            ++grid_.emptyRows_;
        } else {
            grid_.rows_.push_back(row_);
        }
    }

    static void takeCell(void *cell, std::size_t size, void *self)
    {
        static_cast<CsvGridReader *>(self)->appendCell({static_cast<char const *>(cell), size});
    }
    static void takeRow(int, void *self) { static_cast<CsvGridReader *>(self)->endRow(); }

    CsvGrid &grid_;
    CsvSource const &source_;
    CsvLayout const &layout_;
    Parser parser_;
    CsvGrid::Row row_;
    std::size_t rowText_ = 0;
    unsigned int line_ = 1;
    bool rowIsOpen_ = false;
};

CsvGrid::CsvGrid(CsvSource const &source, CsvLayout const &layout) : source_(&source), delimiter_(layout.delimiter)
{
    CsvGridReader(*this, source, layout).read();
}

std::string_view CsvGrid::cell(std::size_t row, std::size_t column) const
{
    if (column >= rows_[row].cellCount) {
        return {};
    }
    std::size_t const index = rows_[row].firstCell + column;
    std::size_t const begin = index == 0 ? 0 : cellEnds_[index - 1];
    return std::string_view(text_).substr(begin, cellEnds_[index] - begin);
}

void CsvGrid::failAt(std::size_t row, std::size_t column, QString const &reason) const
{
    std::string_view const rest = source_->text().substr(rows_[row].offset);
    source_->failAt(rows_[row].offset + cellOffset(rest, column, delimiter_), reason);
}

} // namespace Zem::Measurement
