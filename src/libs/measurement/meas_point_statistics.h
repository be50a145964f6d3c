// meas_point_statistics.h: statistics of point sets as tokens: "set.column.mean" and the like.
#pragma once

#include "meas_contents.h"

#include <ZemLegendData.h>
#include <ZemTokenInfo.h>
#include <ZemValue.h>

namespace Zem::Measurement {

/// For each column of numbers of each set: count, min, max, mean and sigma of the valid points at a stage. All
/// operations may throw ProjectError; contents are refreshed by the caller.
class PointStatistics
{
public:
    /// `contents` is not owned and outlives this.
    explicit PointStatistics(ProjectContents const *contents) : contents_(contents) {}

    /// Appends to `tokens`.
    void getTokens(std::vector<TokenInfo> *tokens) const;
    /// Null when the name is none of these.
    ProjectPointSet const *findSet(QString const &name) const;
    /// UNKNOWN for another name, INVALID for a stage without points, or without numbers but for the count.
    Value getValue(QString const &name, unsigned int stage);

private:
    struct Numbers
    {
        unsigned int modified = 0;
        std::size_t count = 0;
        UnitData unit;
        Legend2::Data data;
    };
    struct Name
    {
        ProjectPointSet const *set;
        QString column;
        std::size_t statistic;
    };

    std::optional<Name> parse(QString const &name) const;
    Numbers const &numbersAt(Name const &name, unsigned int stage);

    ProjectContents const *contents_;
    std::map<std::tuple<std::int64_t, QString, unsigned int>, Numbers> numbers_;
};

} // namespace Zem::Measurement
