// ZemMeasCsv.h: tables of measured values in text files: CSV and its relatives.
#pragma once

#include <ZemMeasImportError.h>
#include <ZemUnit.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <vector>

namespace Zem::Measurement {

enum class ColumnType_t {
    EMPTY,   ///< no cell holds a value
    INTEGER, ///< whole numbers of 32 bits, without unit
    NUMBER,
    TEXT,
    DATE_TIME
};

enum class CsvEncoding_t { UTF8, LATIN1 };

/// How a date such as 3/10/2004 is meant.
enum class DateOrder_t { MONTH_DAY, DAY_MONTH };

/// How to read a file. What is not given is detected; readCsv() hands back what it used.
struct CsvOptions
{
    std::optional<CsvEncoding_t> encoding;
    /// Number of lines to pass over at the start of the file. Comment lines behind them are found as ever.
    std::optional<unsigned int> preambleLines;
    /// Lines that begin with it are left out; empty means that there are no comment lines.
    std::optional<QString> commentPrefix;
    /// What stands between two cells; a blank means columns aligned by any number of blanks and tabs.
    std::optional<char> delimiter;
    std::optional<bool> decimalComma;
    /// Whether the first row of the table holds the column names.
    std::optional<bool> headerRow;
    /// Whether the row below the header holds the units.
    std::optional<bool> unitsRow;
    std::optional<DateOrder_t> dateOrder;
    /// Texts that stand for a missing value; one that is a number means every spelling of that number. They come on top
    /// of the empty cell, which is always missing, and of the usual words (NaN, NA, ...), which are missing in columns
    /// of numbers and dates.
    QStringList missing;

    /// Replaces the names in the file, from the first column on; an empty entry leaves a name as it is.
    QStringList columnNames;
    /// Units by column name, for files that name none or wrong ones.
    std::map<QString, QString> columnUnits;
    /// Types by column name. A cell that does not fit a type given here is an error.
    std::map<QString, ColumnType_t> columnTypes;

    bool operator==(CsvOptions const &) const = default;
};

/// One column, with its cells in the vector that belongs to its type; the other vectors are empty.
struct CsvColumn
{
    static constexpr std::int64_t MISSING = std::numeric_limits<std::int64_t>::min();

    QString name;     ///< unique in the table; without the unit
    QString header;   ///< the header cell as it stands in the file
    QString unitText; ///< as it stands in the file; empty means none
    UnitData unit;    ///< what unitText means; without quantity when that is not known
    ColumnType_t type = ColumnType_t::EMPTY;

    std::vector<double> numbers;        ///< NUMBER, in the unit of the column; NaN is a missing value
    std::vector<std::int64_t> integers; ///< INTEGER, and DATE_TIME as UTC milliseconds since 1970-01-01; MISSING
    std::vector<QString> texts;         ///< TEXT; a null string is a missing value

    /// `row` counts from zero and is below the number of rows.
    bool isMissing(std::size_t row) const;
};

/// A table read from a file. A plain value.
struct CsvTable
{
    QString fileName;
    std::vector<CsvColumn> columns;
    std::vector<unsigned int> lines; ///< line in the file by row, counted from one; its size is the number of rows

    CsvOptions used;      ///< everything detected or given; reading again with it gives the same table
    QStringList preamble; ///< the lines before the table, comments included
    QStringList notes;    ///< what a user may want to know: what was left out, what was guessed

    std::size_t rowCount() const { return lines.size(); }
    /// Null when there is none.
    CsvColumn const *findColumn(QString const &name) const;
};

/// Reads a whole file. Throws ImportError when the file cannot be read, is larger than 1 GB, is no table, or holds
/// anything that cannot be taken over as it stands: ragged rows, broken quotes, NUL bytes, bytes foreign to the
/// encoding, words among numbers. May be called from several threads at once.
CsvTable readCsv(QString const &fileName, CsvOptions const &options = {});

/// The same for text in memory; `fileName` is for messages only.
CsvTable parseCsv(QByteArray const &content, QString const &fileName, CsvOptions const &options = {});

} // namespace Zem::Measurement
