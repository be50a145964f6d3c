// csv_support.h: short words for tests of the CSV reader.
#pragma once

#include <ZemMeasCsv.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace Zem::Measurement {

inline CsvTable parse(std::string_view text, CsvOptions const &options = {})
{
    return parseCsv(QByteArray(text.data(), static_cast<qsizetype>(text.size())), QStringLiteral("a.csv"), options);
}

/// The message of the error, or a text that no message equals.
inline std::string errorOf(std::string_view text, CsvOptions const &options = {})
{
    try {
        parse(text, options);
    } catch (ImportError const &error) {
        return error.what();
    }
    return "no error";
}

inline CsvColumn const &column(CsvTable const &table, char const *name)
{
    CsvColumn const *found = table.findColumn(QString::fromUtf8(name));
    if (!found) {
        throw std::out_of_range(std::string("no column ") + name);
    }
    return *found;
}

inline std::vector<double> numbers(CsvTable const &table, char const *name)
{
    return column(table, name).numbers;
}

inline std::vector<std::int64_t> integers(CsvTable const &table, char const *name)
{
    return column(table, name).integers;
}

inline std::vector<std::string> texts(CsvTable const &table, char const *name)
{
    std::vector<std::string> result;
    for (QString const &text : column(table, name).texts) {
        result.push_back(text.isNull() ? "(missing)" : text.toStdString());
    }
    return result;
}

inline std::vector<std::string> names(CsvTable const &table)
{
    std::vector<std::string> result;
    for (CsvColumn const &column : table.columns) {
        result.push_back(column.name.toStdString());
    }
    return result;
}

inline std::string unitOf(CsvTable const &table, char const *name)
{
    return column(table, name).unit.getUnitName().toStdString();
}

using Strings = std::vector<std::string>;
using Numbers = std::vector<double>;
using Integers = std::vector<std::int64_t>;
inline constexpr std::int64_t NONE = CsvColumn::MISSING;

} // namespace Zem::Measurement
