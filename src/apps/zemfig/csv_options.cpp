#include "csv_options.h"

#include "cli.h"

#include <array>

namespace Zem::Zemfig {

namespace {

struct OptionText
{
    char const *flag;
    char const *key;
    char const *help;
};

constexpr char const *GROUP = "Reading CSV (what is not given is detected)";

constexpr std::array<OptionText, 8> READING_OPTIONS{{
    {"--delimiter", "delimiter", "comma, semicolon, tab or blank"},
    {"--decimal-comma", "decimal_comma", "true when 1,5 means one and a half"},
    {"--encoding", "encoding", "utf-8 or latin-1"},
    {"--header-row", "header_row", "whether the first row of the table holds the names"},
    {"--units-row", "units_row", "whether the row below the names holds the units"},
    {"--comment", "comment", "what a comment line begins with"},
    {"--preamble-lines", "preamble_lines", "lines to pass over at the start"},
    {"--date-order", "date_order", "month-day or day-month"},
}};

constexpr std::array<OptionText, 3> STAGE_OPTIONS{{
    {"--prefix", "prefix", "what stands in front of every token name"},
    {"--stage-column", "stage_column", "the column that holds the number of the stage"},
    {"--first-stage", "first_stage", "the number of the first row's stage"},
}};

} // namespace

void CsvArguments::addTo(CLI::App *verb)
{
    addReadingTo(verb);
    for (OptionText const &option : STAGE_OPTIONS)
        verb->add_option(option.flag, values[option.key], option.help)->group(GROUP);
}

void CsvArguments::addReadingTo(CLI::App *verb)
{
    for (OptionText const &option : READING_OPTIONS)
        verb->add_option(option.flag, values[option.key], option.help)->group(GROUP);
    verb->add_option("--missing", missing, "a text or number that stands for a missing value; may be repeated")
        ->group(GROUP)
        ->allow_extra_args(false);
    verb->add_option("--unit", units, "NAME=UNIT, the unit of a column; may be repeated")
        ->group(GROUP)
        ->allow_extra_args(false);
}

void CsvArguments::apply(DataChoice *choice) const
{
    try {
        for (auto const &[key, value] : values) {
            if (!value.empty())
                setCsvOption(choice, QString::fromStdString(key), QString::fromStdString(value));
        }
    } catch (InputError const &error) {
        throw UsageError(error.getText());
    }
    for (std::string const &text : missing)
        setCsvOption(choice, QStringLiteral("missing"), QString::fromStdString(text));
    for (auto const &[column, unit] : unitPairs())
        choice->csvOptions.columnUnits[column] = unit;
}

void CsvArguments::addTo(SourceTable *source) const
{
    if (missing.size() > 1)
        throw UsageError(QStringLiteral("a page names one text for missing values, not %1").arg(missing.size()));
    for (auto const &[key, value] : values) {
        if (!value.empty())
            source->values[QString::fromStdString(key)] = QString::fromStdString(value);
    }
    for (std::string const &text : missing)
        source->values[QStringLiteral("missing")] = QString::fromStdString(text);
    for (auto const &[column, unit] : unitPairs())
        source->values[QStringLiteral("unit_") + column] = unit;
}

std::vector<std::pair<QString, QString>> CsvArguments::unitPairs() const
{
    std::vector<std::pair<QString, QString>> pairs;
    for (std::string const &text : units) {
        QString const pair = QString::fromStdString(text);
        qsizetype const equals = pair.lastIndexOf(QLatin1Char('='));
        if (equals <= 0)
            throw UsageError(QStringLiteral("'--unit' wants NAME=UNIT, not '%1'").arg(pair));
        pairs.emplace_back(pair.left(equals), pair.mid(equals + 1));
    }
    return pairs;
}

} // namespace Zem::Zemfig
