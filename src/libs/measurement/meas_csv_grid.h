// meas_csv_grid.h: the cells of the table, split and unquoted, each row as wide as it stands in the file.
#pragma once

#include "meas_csv_layout.h"

#include <string>
#include <string_view>
#include <vector>

namespace Zem::Measurement {

/// Owns the text of all cells in one piece. Rows without any text are left out.
class CsvGrid
{
public:
    /// Throws ImportError for broken quotes and for a table without rows.
    CsvGrid(CsvSource const &source, CsvLayout const &layout);

    std::size_t rowCount() const { return rows_.size(); }
    std::size_t width(std::size_t row) const { return rows_[row].cellCount; }
    /// Empty behind the end of the row.
    std::string_view cell(std::size_t row, std::size_t column) const;
    /// Line of the start of the row in the file, counted from one.
    unsigned int line(std::size_t row) const { return rows_[row].line; }
    std::size_t emptyRowCount() const { return emptyRows_; }

    /// Throws ImportError, naming the place of the cell; a column behind the end of the row means that end.
    [[noreturn]] void failAt(std::size_t row, std::size_t column, QString const &reason) const;

private:
    friend class CsvGridReader;

    struct Row
    {
        std::size_t offset = 0;
        std::size_t firstCell = 0;
        std::size_t cellCount = 0;
        unsigned int line = 0;
    };

    CsvSource const *source_;
    char delimiter_;
    std::string text_;
    std::vector<std::size_t> cellEnds_;
    std::vector<Row> rows_;
    std::size_t emptyRows_ = 0;
};

} // namespace Zem::Measurement
