// meas_csv_columns.h: from the cells of one column to values of one type.
#pragma once

#include "meas_csv_grid.h"

namespace Zem::Measurement {

/// What holds for all columns of a table.
struct CellRules
{
    bool decimalComma = false;
    std::optional<DateOrder_t> dateOrder;
    QStringList missing;
};

class ColumnReader
{
public:
    /// The cells from `firstRow` on. All must outlive this.
    ColumnReader(CsvSource const &source, CsvGrid const &grid, std::size_t firstRow, CellRules const &rules);

    /// Fills type and values of `column`, whose name and unit are known. `forced` is a type the cells must have.
    /// `mayBeText` tells that words among numbers make a column of text; otherwise they are an ImportError where most
    /// cells are numbers.
    void read(std::size_t index, std::optional<ColumnType_t> forced, bool mayBeText, CsvColumn &column);

    /// The order by which dates such as 3/10/2004 were read; null when there were none.
    std::optional<DateOrder_t> usedDateOrder() const { return usedDateOrder_; }
    /// Whether another order would have done as well.
    bool wasDateOrderGuessed() const { return dateOrderGuessed_; }

private:
    struct Cells; // parsed in one way

    Cells parseNumbers(std::size_t index) const;
    Cells parseDates(std::size_t index, DateOrder_t order) const;
    Cells parseDates(std::size_t index);
    bool isMarker(std::string_view cell) const;
    bool isMissing(std::string_view cell) const;

    void readForced(std::size_t index, ColumnType_t type, CsvColumn &column);
    void requireIntegers(Cells &numbers, std::size_t index, QString const &name) const;
    void storeNumbers(Cells &&cells, bool asIntegers, CsvColumn &column) const;
    void storeDates(Cells &&cells, CsvColumn &column) const;
    void storeTexts(std::size_t index, CsvColumn &column) const;
    void requireClean(Cells const &cells, std::size_t index, QString const &name, char const *what) const;

    CsvSource const &source_;
    CsvGrid const &grid_;
    std::size_t firstRow_;
    CellRules const &rules_;
    std::vector<std::string> markers_;
    std::vector<double> numberMarkers_;
    std::optional<DateOrder_t> usedDateOrder_;
    bool dateOrderGuessed_ = false;
};

} // namespace Zem::Measurement
