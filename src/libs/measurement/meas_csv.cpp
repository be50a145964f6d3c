#include <ZemMeasCsv.h>

#include "meas_csv_columns.h"
#include "meas_csv_grid.h"
#include "meas_csv_header.h"
#include "meas_csv_layout.h"
#include "meas_csv_notes.h"
#include "meas_csv_rows.h"
#include "meas_csv_source.h"

#include <QtCore/QFile>
#include <QtCore/QSet>

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

constexpr qint64 MAX_FILE_SIZE = 1'000'000'000;
constexpr std::size_t MAX_COLUMNS = 10'000; // each costs far more memory than its delimiter in the file

class TableReader
{
public:
    TableReader(QByteArray const &content, QString const &fileName, CsvOptions const &options)
        : options_(options), source_(content, fileName, options.encoding), layout_(findLayout(source_, options)),
          grid_(source_, layout_)
    {
        table_.fileName = fileName;
        table_.used = options;
        table_.preamble = layout_.preamble;
    }

    CsvTable read()
    {
        readLeadingRows();
        requireEvenRows(grid_, layout_.hints.rowsMayEnd);
        chooseRules();
        makeColumns();
        requireKnownNames();
        readColumns();
        noteRows();
        rememberUsed();
        return std::move(table_);
    }

private:
    std::size_t width() const { return grid_.width(0); }
    QString cellText(std::size_t row, std::size_t column) const { return source_.decode(grid_.cell(row, column)); }

    void readLeadingRows()
    {
        if (width() > MAX_COLUMNS) {
            source_.fail(QStringLiteral("the table has %1 columns, more than %2").arg(width()).arg(MAX_COLUMNS));
        }
        bool const named = !layout_.hints.names.isEmpty();
        hasHeader_ = !layout_.commentHeader.empty() || options_.headerRow.value_or(!named && isHeaderRow(grid_));
        firstRow_ = hasHeader_ ? 1 : 0;
        if (hasHeader_ && isTypeRow(grid_, firstRow_)) {
            typeRow_ = firstRow_++;
        }
        hasUnits_ = options_.unitsRow.value_or(hasHeader_ && isUnitsRow(source_, grid_, firstRow_));
        if (hasUnits_ && firstRow_ < grid_.rowCount()) {
            unitsRow_ = firstRow_++;
        }
        if (firstRow_ >= grid_.rowCount()) {
            source_.fail(QStringLiteral("the table has no row of values"));
        }
    }

    void chooseRules()
    {
        std::optional<bool> const known = options_.decimalComma ? options_.decimalComma : layout_.hints.decimalComma;
        rules_.decimalComma = known ? *known : usesDecimalComma(grid_, layout_.delimiter);
        rules_.dateOrder = options_.dateOrder;
        rules_.missing = options_.missing;
    }

    ColumnTitle titleOf(QString const &header) const
    {
        if (!hasHeader_ && !layout_.hints.names.isEmpty()) {
            return parseVariableTitle(header);
        }
        return parseColumnTitle(header);
    }

    QString headerOf(std::size_t column) const
    {
        return hasHeader_ ? cellText(0, column).trimmed() : layout_.hints.names.value(static_cast<qsizetype>(column));
    }

    QString unitTextOf(std::size_t column, QString const &titleUnit) const
    {
        QString const hint = layout_.hints.units.value(static_cast<qsizetype>(column)).trimmed();
        QString const below = unitsRow_ ? plainUnitText(cellText(*unitsRow_, column)) : QString();
        return !below.isEmpty() ? below : !titleUnit.isEmpty() ? titleUnit : hint;
    }

    bool isEmptyColumn(std::size_t column) const
    {
        for (std::size_t row = firstRow_; row < grid_.rowCount(); ++row) {
            if (!grid_.cell(row, column).empty()) {
                return false;
            }
        }
        return true;
    }

    void makeColumns()
    {
        for (std::size_t index = 0; index < width(); ++index) {
            QString const header = headerOf(index);
            QString const given = options_.columnNames.value(static_cast<qsizetype>(index));
            if (header.isEmpty() && given.isEmpty() && isEmptyColumn(index)) {
                table_.notes << QStringLiteral("column %1 has no name and no value: left out").arg(index + 1);
                continue;
            }
            makeColumn(index, header, given);
        }
        if (!hasHeader_ && layout_.hints.names.isEmpty() && options_.columnNames.isEmpty()) {
            table_.notes << QStringLiteral("no column names in the file: the columns are named column1 to column%1")
                                .arg(width());
        }
    }

    void makeColumn(std::size_t index, QString const &header, QString const &given)
    {
        ColumnTitle const title = titleOf(header);
        QString const fallback = QStringLiteral("column%1").arg(index + 1);
        CsvColumn column;
        column.header = header;
        column.name = uniqueName(!given.isEmpty() ? given : !title.name.isEmpty() ? title.name : fallback);
        auto const unit = options_.columnUnits.find(column.name);
        column.unitText = unit != options_.columnUnits.end() ? unit->second : unitTextOf(index, title.unitText);
        // In a header "1" only says that there is no unit; who gives it as a unit means that of strain.
        bool const isStrain = unit != options_.columnUnits.end() && unit->second == QLatin1String("1");
        column.unit = isStrain ? UnitData(uStrain) : findColumnUnit(column.name, column.unitText);
        table_.columns.push_back(std::move(column));
        indices_.push_back(index);
    }

    QString uniqueName(QString const &name)
    {
        QString unique = name;
        for (int number = 2; names_.contains(unique); ++number) {
            unique = QStringLiteral("%1_%2").arg(name).arg(number);
        }
        names_.insert(unique);
        return unique;
    }

    /// A name that does not exist would otherwise pass silently and change nothing.
    void requireKnownNames() const
    {
        auto const require = [this](QString const &name) {
            if (!names_.contains(name)) {
                source_.fail(QStringLiteral("there is no column \"%1\"").arg(name));
            }
        };
        for (auto const &entry : options_.columnUnits) {
            require(entry.first);
        }
        for (auto const &entry : options_.columnTypes) {
            require(entry.first);
        }
        if (options_.columnNames.size() > static_cast<qsizetype>(width())) {
            source_.fail(QStringLiteral("there are %1 columns, fewer than names given").arg(width()));
        }
    }

    bool isDeclaredText(std::size_t index) const { return typeRow_ && grid_.cell(*typeRow_, index).ends_with('s'); }

    void readColumns()
    {
        ColumnReader reader(source_, grid_, firstRow_, rules_);
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            CsvColumn &column = table_.columns[i];
            auto const forced = options_.columnTypes.find(column.name);
            std::optional<ColumnType_t> type;
            if (forced != options_.columnTypes.end()) {
                type = forced->second;
            }
            reader.read(indices_[i], type, isDeclaredText(indices_[i]), column);
        }
        table_.notes << noteColumns(table_.columns);
        if (reader.wasDateOrderGuessed()) {
            table_.notes << QStringLiteral("dates such as 3/10/2004 are read as month/day/year");
        }
        table_.used.dateOrder = reader.usedDateOrder() ? reader.usedDateOrder() : options_.dateOrder;
    }

    void noteRows()
    {
        for (std::size_t row = firstRow_; row < grid_.rowCount(); ++row) {
            table_.lines.push_back(grid_.line(row));
        }
        if (grid_.emptyRowCount() > 0) {
            table_.notes << QStringLiteral("%1 rows of empty cells left out").arg(grid_.emptyRowCount());
        }
    }

    void rememberUsed()
    {
        CsvOptions &used = table_.used;
        used.encoding = source_.encoding();
        used.preambleLines = layout_.preambleLines;
        used.commentPrefix = source_.decode(layout_.commentPrefix);
        used.delimiter = layout_.delimiter;
        used.decimalComma = rules_.decimalComma;
        used.headerRow = hasHeader_;
        used.unitsRow = hasUnits_;
    }

    CsvOptions const &options_;
    CsvSource source_;
    CsvLayout layout_;
    CsvGrid grid_;
    CsvTable table_;
    CellRules rules_;
    QSet<QString> names_;
    std::vector<std::size_t> indices_; ///< column in the file by column of the table
    std::size_t firstRow_ = 0;         ///< of the values
    std::optional<std::size_t> typeRow_;
    std::optional<std::size_t> unitsRow_;
    bool hasHeader_ = false;
    bool hasUnits_ = false;
};

} // namespace

bool CsvColumn::isMissing(std::size_t row) const
{
    switch (type) {
    case ColumnType_t::NUMBER:
        return std::isnan(numbers[row]);
    case ColumnType_t::INTEGER:
    case ColumnType_t::DATE_TIME:
        return integers[row] == MISSING;
    case ColumnType_t::TEXT:
        return texts[row].isNull();
    case ColumnType_t::EMPTY:
        break;
    }
    return true;
}

CsvColumn const *CsvTable::findColumn(QString const &name) const
{
    auto const found = std::find_if(columns.begin(), columns.end(), [&name](auto const &c) { return c.name == name; });
    return found == columns.end() ? nullptr : &*found;
}

CsvTable parseCsv(QByteArray const &content, QString const &fileName, CsvOptions const &options)
{
    return TableReader(content, fileName, options).read();
}

CsvTable readCsv(QString const &fileName, CsvOptions const &options)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        throw ImportError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
    }
    if (file.size() > MAX_FILE_SIZE) {
        throw ImportError(QStringLiteral("%1: larger than 1 GB").arg(fileName));
    }
    QByteArray const content = file.read(MAX_FILE_SIZE);
    if (file.error() != QFileDevice::NoError) {
        throw ImportError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
    }
    return parseCsv(content, fileName, options);
}

} // namespace Zem::Measurement
