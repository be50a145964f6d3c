#include "legend_forms_support.h"

#include <ZemHistogramData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Legend2 {
namespace {

using namespace Test;
using Counts = std::map<double, unsigned int>;

constexpr unsigned int MOST = std::numeric_limits<unsigned int>::max();

HistogramData histogramOf(Counts const &counts)
{
    HistogramData histogram;
    EXPECT_TRUE(histogram.addHistogram(counts));
    return histogram;
}

Counts countsOf(HistogramData const &histogram)
{
    Counts counts{{99.0, 99}};
    histogram.getHistogram(&counts);
    return counts;
}

std::string blockOf(unsigned int size, std::vector<std::pair<double, unsigned int>> const &counts, unsigned int version)
{
    return bytesOf([&](IO::OutStream &stream) {
        stream.beginBlock(4 + 12 * static_cast<unsigned int>(counts.size()), version);
        stream.writeUInt(size);
        for (auto const &[value, count] : counts) {
            stream.writeDouble(value);
            stream.writeUInt(count);
        }
        stream.endBlock();
    });
}

TEST(HistogramData, isNotValidAsLongAsNothingIsCounted)
{
    HistogramData histogram;
    EXPECT_FALSE(histogram.isValid());
    EXPECT_EQ(histogram.getMaxCount(), 0u);
    EXPECT_TRUE(countsOf(histogram).empty());

    histogram.addHistogram(Counts{{1.0, 0}});
    EXPECT_FALSE(histogram.isValid());
}

TEST(HistogramData, addsCountsValueByValue)
{
    HistogramData histogram = histogramOf({{1.0, 2}, {2.0, 5}});
    EXPECT_TRUE(histogram.addHistogram(histogramOf({{2.0, 4}, {-3.0, 1}})));
    EXPECT_EQ(countsOf(histogram), (Counts{{-3.0, 1}, {1.0, 2}, {2.0, 9}}));
    EXPECT_EQ(histogram.getMaxCount(), 9u);
    EXPECT_TRUE(histogram.isValid());
}

TEST(HistogramData, knowsItsGreatestCountWhereverItIs)
{
    EXPECT_EQ(histogramOf({{1.0, 5}, {2.0, 3}}).getMaxCount(), 5u);
}

TEST(HistogramData, refusesValuesThatAreNotFiniteAndAddsNothing)
{
    for (double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        HistogramData histogram = histogramOf({{1.0, 2}});
        EXPECT_FALSE(histogram.addHistogram(Counts{{bad, 1}}));
        EXPECT_EQ(histogram, histogramOf({{1.0, 2}}));
    }
    HistogramData histogram;
    EXPECT_FALSE(histogram.addHistogram(Counts{{0.5, 1}, {std::numeric_limits<double>::infinity(), 1}}));
    EXPECT_FALSE(histogram.isValid());
}

TEST(HistogramData, refusesCountsThatHaveNoRoomAndAddsNothing)
{
    HistogramData histogram = histogramOf({{1.0, 2}});
    EXPECT_FALSE(histogram.addHistogram(Counts{{0.5, 1}, {1.0, MOST - 1}}));
    EXPECT_EQ(histogram, histogramOf({{1.0, 2}}));
    EXPECT_TRUE(histogram.addHistogram(Counts{{1.0, MOST - 2}}));
    EXPECT_EQ(histogram.getMaxCount(), MOST);
}

TEST(HistogramData, canBeClearedAndCompared)
{
    HistogramData histogram = histogramOf({{1.0, 2}});
    HistogramData const copy = histogram;
    EXPECT_EQ(copy, histogram);
    histogram.clear();
    EXPECT_EQ(histogram, HistogramData());
    EXPECT_NE(copy, histogram);
}

TEST(HistogramDataInAStream, isACountAndPairs)
{
    EXPECT_EQ(savedBytes(histogramOf({{2.0, 3}, {-1.5, 7}})), blockOf(2, {{-1.5, 7}, {2.0, 3}}, 1));
    EXPECT_EQ(savedBytes(HistogramData()), blockOf(0, {}, 1));
}

TEST(HistogramDataInAStream, isReadBack)
{
    HistogramData const histogram = histogramOf({{-1e300, 1}, {0.0, MOST}, {5e-324, 3}});
    EXPECT_EQ(throughStream(histogram), histogram);
}

TEST(HistogramDataInAStream, refusesDamageAndStaysAsItWas)
{
    double const nan = std::nan("");
    for (std::string const &bytes :
         {blockOf(2, {{1.0, 1}}, 1), blockOf(MOST, {{1.0, 1}}, 1), blockOf(2, {{1.0, 1}, {1.0, 1}}, 1),
          blockOf(2, {{1.0, 1}, {0.5, 1}}, 1), blockOf(1, {{1.0, 0}}, 1), blockOf(1, {{nan, 1}}, 1),
          blockOf(2, {{1.0, 1}, {nan, 1}}, 1), blockOf(0, {}, 2), blockOf(0, {}, 0)}) {
        HistogramData histogram = histogramOf({{4.0, 4}});
        EXPECT_NE(loadError(bytes, &histogram), QString());
        EXPECT_EQ(histogram, histogramOf({{4.0, 4}}));
    }
}

} // namespace
} // namespace Zem::Legend2
