#include <ZemColorMap.h>

#include <gtest/gtest.h>

#include <thread>

namespace Zem::Legend2 {
namespace {

/// Leaves the application's scale as it was.
class ColorMapTest : public testing::Test
{
protected:
    ~ColorMapTest() override
    {
        ColorMap::setGlobalLegend(Legend(), Data());
        ColorMap::setTolerance(false, ToleranceParams());
        ColorMap::setHistogramData(HistogramData());
    }
};

TEST_F(ColorMapTest, isADefaultScaleAtFirst)
{
    EXPECT_EQ(ColorMap::getGlobalLegendParams(), Legend());
    EXPECT_EQ(ColorMap::getGlobalLegendData(), Data());
    EXPECT_FALSE(ColorMap::getToleranceMode());
    EXPECT_EQ(ColorMap::getToleranceParams(), ToleranceParams());
    EXPECT_FALSE(ColorMap::getHistogramData().isValid());
}

TEST_F(ColorMapTest, givesWhatWasSet)
{
    Legend legend(uForce);
    legend.setNumberOfClasses(7);
    Data data;
    data.setAverage(3.0);
    ToleranceParams tolerance;
    tolerance.setTitle(QStringLiteral("gap"));
    HistogramData histogram;
    histogram.addHistogram(std::map<double, unsigned int>{{1.0, 2}});

    ColorMap::setGlobalLegend(legend, data);
    ColorMap::setTolerance(true, tolerance);
    ColorMap::setHistogramData(histogram);

    EXPECT_EQ(ColorMap::getGlobalLegendParams(), legend);
    EXPECT_EQ(ColorMap::getGlobalLegendData(), data);
    EXPECT_TRUE(ColorMap::getToleranceMode());
    EXPECT_EQ(ColorMap::getToleranceParams(), tolerance);
    EXPECT_EQ(ColorMap::getHistogramData(), histogram);
}

TEST_F(ColorMapTest, canBeReadWhileAnotherThreadSetsIt)
{
    std::thread writer([] {
        for (unsigned int i = 1; i <= 500; ++i) {
            Legend legend(uForce);
            legend.setUnitName(QString(static_cast<qsizetype>(i), u'x'));
            legend.setNumberOfClasses(i);
            ColorMap::setGlobalLegend(legend, Data());
        }
    });
    for (int i = 0; i < 500; ++i) {
        Legend const legend = ColorMap::getGlobalLegendParams();
        // The first scale read may be the default one.
        auto const expected = legend.getUnit() ? static_cast<qsizetype>(legend.getNumberOfClasses()) : 0;
        EXPECT_EQ(legend.getUnitName().size(), expected);
    }
    writer.join();
}

} // namespace
} // namespace Zem::Legend2
