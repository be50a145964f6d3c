#include "chart_fixture.h"

#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <utility>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

ChartDataset *newDataset(char const *id, std::vector<BaVec2d<double>> const &points = {})
{
    auto *const dataset = new ChartDataset(id);
    int number = 0;
    for (BaVec2d<double> const &point : points)
        dataset->addPoint(ChartPoint(number++, point, 0.0));
    return dataset;
}

std::string idsOf(ChartData const &data)
{
    std::string ids;
    for (auto entry = data.getDatasetBegin(); entry != data.getDatasetEnd(); ++entry)
        ids += entry->first.toStdString() + " ";
    return ids;
}

std::ptrdiff_t numberOfMarkers(ChartData const &data)
{
    return data.getChartMarkerEnd() - data.getChartMarkerBegin();
}

/// The scale's data; there must be one.
Legend2::Data legendDataOf(ChartData const &data)
{
    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *values = nullptr;
    EXPECT_TRUE(data.getLegendData(&legend, &values));
    return values ? *values : Legend2::Data();
}

/// Counts what is deleted.
class CountedMarker : public LineChartMarker
{
public:
    explicit CountedMarker(int *deleted) : deleted_(deleted) {}
    CountedMarker(CountedMarker const &) = default;
    ~CountedMarker() override { ++*deleted_; }

    LineChartMarker *copy() const override { return new CountedMarker(*this); }

private:
    int *deleted_;
};

TEST(ChartData, hasItsDefaults)
{
    ChartData const data;
    EXPECT_EQ(idsOf(data), "");
    EXPECT_EQ(numberOfMarkers(data), 0);
    EXPECT_EQ(data.getTokenInterface(), nullptr);
    EXPECT_EQ(data.getTokenContainer(), nullptr);
    EXPECT_FALSE(data.getComputeStatistics());
    EXPECT_TRUE(data.getInfoPoints().empty());
    EXPECT_EQ(data.getInfoPointColor(), Color(0, 0, 0));
    EXPECT_EQ(data.getUnitX(), UnitData(uLength));
    EXPECT_EQ(data.getUnitY(), UnitData(uLength));
    EXPECT_FALSE(data.getHasAxisXRange());
    EXPECT_FALSE(data.getHasAxisYRange());
    EXPECT_EQ(data.getAxisXRange(), BaVec2d<double>(DBL_MAX, DBL_MAX));
    EXPECT_EQ(data.getAxisYRange(), BaVec2d<double>(DBL_MAX, DBL_MAX));
    EXPECT_FALSE(data.getSupportsStageMarkers());
    EXPECT_FALSE(data.getSupportsPointMarkers());
}

TEST(ChartData, keepsEachValueApart)
{
    ChartData data;
    data.setComputeStatistics(true);
    data.getInfoPoints().push_back({1, 2});
    data.setInfoPointColor(Color(1, 2, 3));
    data.setUnitX(UnitData(uTime));
    data.setUnitY(UnitData(uForce));
    data.setHasAxisXRange(true);
    data.setAxisXRange({3, 4});
    data.setAxisYRange({5, 6});
    data.setSupportsPointMarkers(true);
    EXPECT_TRUE(data.getComputeStatistics());
    EXPECT_EQ(std::as_const(data).getInfoPoints(), (std::vector<BaVec2d<double>>{{1, 2}}));
    EXPECT_EQ(data.getInfoPointColor(), Color(1, 2, 3));
    EXPECT_EQ(data.getUnitX(), UnitData(uTime));
    EXPECT_EQ(data.getUnitY(), UnitData(uForce));
    EXPECT_TRUE(data.getHasAxisXRange());
    EXPECT_FALSE(data.getHasAxisYRange());
    EXPECT_EQ(data.getAxisXRange(), BaVec2d<double>(3, 4));
    EXPECT_EQ(data.getAxisYRange(), BaVec2d<double>(5, 6));
    EXPECT_FALSE(data.getSupportsStageMarkers());
    EXPECT_TRUE(data.getSupportsPointMarkers());
    data.setSupportsPointMarkers(false);
    data.setSupportsStageMarkers(true);
    data.setHasAxisYRange(true);
    EXPECT_TRUE(data.getSupportsStageMarkers());
    EXPECT_FALSE(data.getSupportsPointMarkers());
    EXPECT_TRUE(data.getHasAxisYRange());
}

TEST(ChartDatasets, areOrderedById)
{
    ChartData data;
    data.addDataset(newDataset("b"));
    data.addDataset(newDataset("a"));
    EXPECT_EQ(idsOf(data), "a b ");
    EXPECT_TRUE(data.datasetExists("a"));
    EXPECT_FALSE(data.datasetExists("c"));
    EXPECT_EQ(data.getDataset("b")->getId(), "b");
    EXPECT_EQ(std::as_const(data).getDataset("a")->getId(), "a");
}

TEST(ChartDatasets, refuseAnIdThatIsThereAndLeaveTheDatasetToTheCaller)
{
    ChartData data;
    data.addDataset(newDataset("a", {{1, 2}}));
    std::unique_ptr<ChartDataset> const second(newDataset("a"));
    EXPECT_EQ(progError([&] { data.addDataset(second.get()); }), "fig_chart_data: Duplicate dataset id");
    EXPECT_EQ(data.getDataset("a")->getNumberOfPoints(), 1U);
}

TEST(ChartDatasets, areRemovedById)
{
    ChartData data;
    data.addDataset(newDataset("a"));
    data.removeDataset("a");
    EXPECT_EQ(idsOf(data), "");
    EXPECT_EQ(progError([&] { data.removeDataset("a"); }), "fig_chart_data: Dataset not found");
}

TEST(ChartDatasets, areNotFoundByAnUnknownId)
{
    ChartData data;
    EXPECT_EQ(progError([&] { data.getDataset("a"); }), "fig_chart_data: Dataset does not exist");
    EXPECT_EQ(progError([&] { std::as_const(data).getDataset("a"); }), "fig_chart_data: Dataset does not exist");
}

TEST(ChartDataMarkers, areDeletedWithTheData)
{
    int deleted = 0;
    {
        ChartData data;
        data.addMarker(new CountedMarker(&deleted));
        data.addMarker(new CountedMarker(&deleted));
        EXPECT_EQ(numberOfMarkers(data), 2);
        data.clearMarkers();
        EXPECT_EQ(deleted, 2);
        EXPECT_EQ(numberOfMarkers(data), 0);
        data.addMarker(new CountedMarker(&deleted));
    }
    EXPECT_EQ(deleted, 3);
}

TEST(ChartDataLegend, isThereOnlyWhenSet)
{
    ChartData data;
    Legend2::Legend const own;
    Legend2::Legend const *legend = &own;
    Legend2::Data const values;
    Legend2::Data const *valuesFound = &values;
    Legend2::HistogramData const counts;
    Legend2::HistogramData const *histogram = &counts;
    EXPECT_FALSE(data.getLegendData(&legend, &valuesFound, &histogram));
    EXPECT_EQ(legend, nullptr);
    EXPECT_EQ(valuesFound, nullptr);
    EXPECT_EQ(histogram, nullptr);
}

TEST(ChartDataLegend, isCopiedAndWithoutAHistogramClearsTheOneThere)
{
    Legend2::Legend scale(uForce);
    scale.setDigits(3);
    Legend2::Data values;
    values.setAverage(7.0);
    Legend2::HistogramData counts;
    ASSERT_TRUE(counts.addHistogram({{1.0, 2U}}));

    ChartData data;
    data.setLegendData(scale, values, counts);
    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *valuesFound = nullptr;
    Legend2::HistogramData const *histogram = nullptr;
    ASSERT_TRUE(data.getLegendData(&legend, &valuesFound, &histogram));
    EXPECT_EQ(*legend, scale);
    EXPECT_EQ(*valuesFound, values);
    EXPECT_EQ(*histogram, counts);

    data.setLegendData(scale, values);
    ASSERT_TRUE(data.getLegendData(&legend, &valuesFound, &histogram));
    EXPECT_FALSE(histogram->isValid());
}

TEST(ChartDataStatistics, areThoseOfAllYOfAllDatasets)
{
    // y: 2, 4, 4, 6: average 4, squares 4 + 0 + 0 + 4, divided by their count.
    ChartData data;
    data.addDataset(newDataset("a", {{0, 2}, {1, 4}}));
    data.addDataset(newDataset("b", {{0, 4}, {1, 6}}));
    data.computeLegendData();
    Legend2::Data const values = legendDataOf(data);
    EXPECT_EQ(values.getDynamicMinimum(), 2.0);
    EXPECT_EQ(values.getDynamicMaximum(), 6.0);
    EXPECT_EQ(values.getAverage(), 4.0);
    EXPECT_DOUBLE_EQ(values.getSigmaValue(), std::sqrt(2.0));
}

TEST(ChartDataStatistics, skipAMissingYButNotAMissingX)
{
    ChartData data;
    data.addDataset(newDataset("a", {{DBL_MAX, 3}, {0, DBL_MAX}, {DBL_MAX, DBL_MAX}, {0, 5}}));
    data.computeLegendData();
    Legend2::Data const values = legendDataOf(data);
    EXPECT_EQ(values.getDynamicMinimum(), 3.0);
    EXPECT_EQ(values.getDynamicMaximum(), 5.0);
    EXPECT_EQ(values.getAverage(), 4.0);
    EXPECT_EQ(values.getSigmaValue(), 1.0);
}

TEST(ChartDataStatistics, ofNothingStillSetAScale)
{
    ChartData data;
    data.computeLegendData();
    Legend2::Data const values = legendDataOf(data);
    EXPECT_EQ(values.getDynamicMinimum(), DBL_MAX);
    EXPECT_EQ(values.getDynamicMaximum(), -DBL_MAX);
    EXPECT_EQ(values.getAverage(), 0.0);
    EXPECT_EQ(values.getSigmaValue(), 0.0);
}

TEST(ChartDataStatistics, showTheUnitOfYAndDropTheHistogram)
{
    Legend2::HistogramData counts;
    ASSERT_TRUE(counts.addHistogram({{1.0, 2U}}));
    ChartData data;
    data.setLegendData(Legend2::Legend(), Legend2::Data(), counts);
    data.setUnitY(UnitData(uForce));
    data.computeLegendData();
    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *values = nullptr;
    Legend2::HistogramData const *histogram = nullptr;
    ASSERT_TRUE(data.getLegendData(&legend, &values, &histogram));
    Legend2::Legend expected(uLength);
    expected.setUnitData(UnitData(uForce));
    EXPECT_EQ(*legend, expected);
    EXPECT_FALSE(histogram->isValid());
}

TEST(ChartDataClear, keepsTokensAndSettings)
{
    int deleted = 0;
    ChartData data;
    auto *const container = new TokenContainer;
    data.setTokenContainer(container);
    data.setTokenInterface(container);
    data.addDataset(newDataset("a"));
    data.addMarker(new CountedMarker(&deleted));
    data.computeLegendData();
    data.setComputeStatistics(true);
    data.getInfoPoints().push_back({1, 2});

    data.clear();

    Legend2::Legend const *legend = nullptr;
    Legend2::Data const *values = nullptr;
    EXPECT_EQ(idsOf(data), "");
    EXPECT_EQ(deleted, 1);
    EXPECT_FALSE(data.getLegendData(&legend, &values));
    EXPECT_EQ(data.getTokenContainer(), container);
    EXPECT_EQ(data.getTokenInterface(), container);
    EXPECT_TRUE(data.getComputeStatistics());
    EXPECT_EQ(data.getInfoPoints().size(), 1U);
}

TEST(ChartDataTokens, areReplacedAsAWholeButNotByThemselves)
{
    ChartData data;
    data.setTokenContainer(new TokenContainer);
    auto *const second = new TokenContainer;
    data.setTokenContainer(second);
    data.setTokenContainer(second);
    EXPECT_EQ(data.getTokenContainer(), second);
    second->setValue(TokenInfo::getSelectedInfo(), Value(1));
    EXPECT_EQ(std::as_const(data).getTokenContainer()->getModifiedCounter("Zem_Selected"), 1U);
    data.setTokenContainer(nullptr);
    EXPECT_EQ(data.getTokenContainer(), nullptr);
}

TEST(ChartDataCopy, isDeep)
{
    int deleted = 0;
    {
        ChartData data;
        data.addDataset(newDataset("a", {{1, 2}}));
        data.addMarker(new CountedMarker(&deleted));
        data.setTokenContainer(new TokenContainer);
        data.setTokenInterface(data.getTokenContainer());
        data.setComputeStatistics(true);
        data.getInfoPoints().push_back({1, 2});

        ChartData const copy(data);

        EXPECT_NE(copy.getDataset("a"), data.getDataset("a"));
        EXPECT_EQ(copy.getDataset("a")->getNumberOfPoints(), 1U);
        ASSERT_EQ(numberOfMarkers(copy), 1);
        EXPECT_NE(*copy.getChartMarkerBegin(), *data.getChartMarkerBegin());
        EXPECT_NE(dynamic_cast<CountedMarker *>(*copy.getChartMarkerBegin()), nullptr);
        EXPECT_NE(copy.getTokenContainer(), nullptr);
        EXPECT_NE(copy.getTokenContainer(), data.getTokenContainer());
        EXPECT_EQ(copy.getTokenInterface(), copy.getTokenContainer());
        EXPECT_TRUE(copy.getComputeStatistics());
        EXPECT_EQ(copy.getInfoPoints().size(), 1U);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(ChartDataCopy, keepsATokenInterfaceThatIsNotOwned)
{
    TokenContainer const outside;
    ChartData data;
    data.setTokenContainer(new TokenContainer);
    data.setTokenInterface(&outside);
    EXPECT_EQ(ChartData(data).getTokenInterface(), &outside);
}

TEST(ChartDataAssignment, sharesAllPointers)
{
    ChartData data;
    data.addDataset(newDataset("a"));
    data.addMarker(new LineChartMarker(1.0));
    data.setTokenContainer(new TokenContainer);
    data.setHasAxisXRange(true);

    auto const shared = std::make_unique<ChartData>();
    *shared = data;

    EXPECT_EQ(shared->getDataset("a"), data.getDataset("a"));
    EXPECT_EQ(*shared->getChartMarkerBegin(), *data.getChartMarkerBegin());
    EXPECT_EQ(shared->getTokenContainer(), data.getTokenContainer());
    EXPECT_TRUE(shared->getHasAxisXRange());

    // Only one of the two may delete what they share.
    data.clear();
    data.setTokenContainer(nullptr);
    *shared = data;
    EXPECT_EQ(shared->getTokenContainer(), nullptr);
}

TEST(ChartDataText, tellsAllDatasetsInTheirOrder)
{
    EXPECT_EQ(ChartData().toString(), "");
    ChartData data;
    data.addDataset(newDataset("b"));
    data.addDataset(newDataset("a", {{1, 2}}));
    EXPECT_EQ(data.toString(), "\n" + data.getDataset("a")->toString() + "\n" + data.getDataset("b")->toString());
    EXPECT_TRUE(data.toString().startsWith("\nChart Dataset ID: a\n  Points: 1\n"));
}

} // namespace
} // namespace Zem::Fig2
