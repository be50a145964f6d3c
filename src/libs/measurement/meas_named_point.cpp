#include "meas_named_point.h"

#include <ZemParse.h>

#include <algorithm>
#include <functional>
#include <iterator>

namespace Zem::Measurement {

using namespace Fig2;

namespace {

constexpr double SYMBOL_SIZE = 2.0; // page mm
constexpr double FONT_SIZE = 8.0;   // points

using PointIterator = ChartDataset::Points::const_iterator;

bool isValid(ChartPoint const &point)
{
    return point.isValid();
}

/// The first valid point that no other one is better than.
template <class Better>
PointIterator findBest(PointIterator begin, PointIterator end, Better const &better)
{
    PointIterator best = std::find_if(begin, end, isValid);
    for (PointIterator it = best; it != end; ++it) {
        if (it->isValid() && better(it->point.y, best->point.y)) {
            best = it;
        }
    }
    return best;
}

PointIterator findLast(PointIterator begin, PointIterator end)
{
    auto const last = std::find_if(std::reverse_iterator(end), std::reverse_iterator(begin), isValid);
    return last.base() == begin ? end : std::prev(last.base());
}

PointIterator findAt(NamedPoint const &point, ChartDataset const &dataset, std::optional<std::size_t> index)
{
    PointIterator const begin = dataset.getPointBegin(0);
    PointIterator const end = dataset.getPointEnd();
    switch (point.place) {
    case PointPlace_t::MAXIMUM:
        return findBest(begin, end, std::greater<>());
    case PointPlace_t::MINIMUM:
        return findBest(begin, end, std::less<>());
    case PointPlace_t::FIRST:
        return std::find_if(begin, end, isValid);
    case PointPlace_t::LAST:
        return findLast(begin, end);
    case PointPlace_t::NUMBER:
        break;
    }
    return index && *index < dataset.getNumberOfPoints() ? begin + static_cast<std::ptrdiff_t>(*index) : end;
}

} // namespace

NamedPoint::NamedPoint() : symbol(Symbol::TYPE_CIRCLE, SYMBOL_SIZE, false)
{
    symbol.setFont(Font(Font::DEFAULT_FONT_SANS, FONT_SIZE, 0));
}

std::optional<BaVec2d<double>> findPlace(NamedPoint const &point, ChartDataset const &dataset,
                                         std::optional<std::size_t> index)
{
    PointIterator const found = findAt(point, dataset, index);
    return found != dataset.getPointEnd() && found->isValid() ? std::optional(found->point) : std::nullopt;
}

QString signatureOf(NamedPoint const &point)
{
    return Parse::createString(QStringLiteral("name"), point.name) +
           Parse::createString(QStringLiteral("token"), point.token) +
           QStringLiteral("%1 %2\n").arg(static_cast<int>(point.place)).arg(point.number) +
           point.symbol.getParameterString(QString());
}

} // namespace Zem::Measurement
