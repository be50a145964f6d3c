#include "meas_point_statistics.h"

#include "meas_field.h"
#include "meas_statistics.h"

#include <ZemTokenTools.h>

#include <algorithm>
#include <array>

namespace Zem::Measurement {

namespace {

constexpr std::size_t COUNT = 0;
constexpr std::array<char const *, 5> STATISTICS{"count", "min", "max", "mean", "sigma"};

double pick(Legend2::Data const &data, std::size_t statistic)
{
    std::array const numbers{0.0, data.getDynamicMinimum(), data.getDynamicMaximum(), data.getAverage(),
                             data.getSigmaValue()};
    return numbers[statistic];
}

} // namespace

void PointStatistics::getTokens(std::vector<TokenInfo> *tokens) const
{
    for (ProjectPointSet const &set : contents_->pointSets()) {
        for (QString const &column : columnsOf(*contents_, set)) {
            for (std::size_t i = 0; i < STATISTICS.size(); ++i) {
                TokenInfo::Type_t const type =
                    i == COUNT ? TokenInfo::TYPE_INTEGER
                               : TokenTools::getTokenType(unitOf(*contents_, set, column).getUnit());
                QString const name = QStringLiteral("%1.%2.%3").arg(set.name, column, QLatin1String(STATISTICS[i]));
                tokens->emplace_back(TokenInfo::CATEGORY_STATISTICS, type, name,
                                     QStringLiteral("%1 of %2").arg(QLatin1String(STATISTICS[i]), column));
            }
        }
    }
}

std::optional<PointStatistics::Name> PointStatistics::parse(QString const &name) const
{
    qsizetype const point = name.lastIndexOf(QLatin1Char('.'));
    auto const statistic = std::find_if(STATISTICS.begin(), STATISTICS.end(), [&](char const *word) {
        return QStringView(name).mid(point + 1) == QLatin1String(word);
    });
    if (statistic == STATISTICS.end()) {
        return std::nullopt;
    }
    for (ProjectPointSet const &set : contents_->pointSets()) {
        if (point > set.name.size() && name.startsWith(set.name + QLatin1Char('.'))) {
            QString const column = name.mid(set.name.size() + 1, point - set.name.size() - 1);
            if (columnsOf(*contents_, set).contains(column)) {
                return Name{&set, column, static_cast<std::size_t>(statistic - STATISTICS.begin())};
            }
        }
    }
    return std::nullopt;
}

ProjectPointSet const *PointStatistics::findSet(QString const &name) const
{
    std::optional<Name> const found = parse(name);
    return found ? found->set : nullptr;
}

PointStatistics::Numbers const &PointStatistics::numbersAt(Name const &name, unsigned int stage)
{
    Numbers &numbers = numbers_[{name.set->id, name.column, stage}];
    if (numbers.modified == name.set->modified) {
        return numbers;
    }
    PointField const field = contents_->project().points(*name.set, stage);
    PointNumbers const all = numbersOf(*contents_, *name.set, field, name.column, stage);
    std::vector<double> const values = all.known();
    numbers.unit = all.unit;
    numbers.count = values.size();
    numbers.data = values.empty() ? Legend2::Data() : statisticsOf(values);
    numbers.modified = name.set->modified;
    return numbers;
}

Value PointStatistics::getValue(QString const &name, unsigned int stage)
{
    std::optional<Name> const found = parse(name);
    if (!found) {
        return Value::UNKNOWN;
    }
    if (!found->set->groups.contains(stage)) {
        return Value::INVALID;
    }
    Numbers const &numbers = numbersAt(*found, stage);
    if (found->statistic == COUNT) {
        return Value(static_cast<int>(numbers.count));
    }
    if (numbers.count == 0) {
        return Value::INVALID;
    }
    double const number = pick(numbers.data, found->statistic);
    return numbers.unit.hasUnit() ? Value(number, numbers.unit) : Value(number, nullptr);
}

} // namespace Zem::Measurement
