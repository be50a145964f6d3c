// The colour scale of image elements: what connected legends, data and image labels make of it, and what legends get.
#include "image_element_fixture.h"
#include "measured_point.h"

#include <limits>
#include <map>

namespace Zem::Fig2 {
namespace {

Legend2::Data dataOf(double minimum, double maximum, double average = 0, double sigma = 0)
{
    Legend2::Data data;
    data.setDynamicMinimum(minimum);
    data.setDynamicMaximum(maximum);
    data.setAverage(average);
    data.setSigmaValue(sigma);
    return data;
}

Legend2::Legend named(char const *name)
{
    Legend2::Legend legend(uLength);
    legend.setUnitName(QString::fromLatin1(name));
    return legend;
}

Legend2::HistogramData histogramOf(double value, unsigned int count)
{
    Legend2::HistogramData histogram;
    histogram.addHistogram({{value, count}});
    return histogram;
}

std::map<double, unsigned int> countsOf(Legend2::HistogramData const &histogram)
{
    std::map<double, unsigned int> counts;
    histogram.getHistogram(&counts);
    return counts;
}

/// A legend with a scale of its own, connected and up to date.
class ScaleSource : public Legend
{
public:
    ScaleSource(Image *image, Legend2::Legend const &scale, Legend2::Data const &data, bool tolerances = false)
    {
        setLegendDataMode(LEGEND_DATA_MODE_MANUAL);
        setLocalLegendData(scale, data);
        setLocalToleranceParams(tolerances, Legend2::ToleranceParams());
        // In front of the connector: the image's own flag for tolerances would contradict the legend's.
        computeDynamicData(StageIdentifier(1), nullptr);
        connect(image, "");
    }
};

class ImageScale : public ImageElementTest
{
protected:
    void expectScale(Legend2::Legend const &legend, Legend2::Data const &scale)
    {
        image.invalidate();
        update();
        EXPECT_EQ(image.getComputedLegend(), legend);
        EXPECT_EQ(image.getComputedLegendData(), scale);
    }
    void expectNoScale() { expectScale(Legend2::Legend(uLength), Legend2::Data()); }

    /// A connected, visible label with statistics.
    std::unique_ptr<MeasuredPoint> label(Legend2::Data const &scale)
    {
        auto made = std::make_unique<MeasuredPoint>();
        made->legendData = scale;
        made->connect(&image, "");
        return made;
    }
};

TEST_F(ImageScale, isThatOfTheData)
{
    expectNoScale();
    data.setLegendData(named("data"), dataOf(2, 5));
    expectScale(named("data"), dataOf(2, 5));
    tokens.remove("camera");
    expectNoScale();
}

TEST_F(ImageScale, isThatOfAConnectedLegendBeforeThatOfTheData)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    ScaleSource const source(&image, named("legend"), dataOf(1, 9));
    expectScale(named("legend"), dataOf(1, 9));
    tokens.remove("camera");
    expectScale(named("legend"), dataOf(1, 9));
}

TEST_F(ImageScale, isThatOfSeveralLegendsThatAgree)
{
    ScaleSource const first(&image, named("legend"), dataOf(1, 9));
    ScaleSource const second(&image, named("legend"), dataOf(1, 9));
    expectScale(named("legend"), dataOf(1, 9));
}

TEST_F(ImageScale, isNoneForLegendsThatDiffer)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    ScaleSource const first(&image, named("legend"), dataOf(1, 9));
    {
        ScaleSource const second(&image, named("other"), dataOf(1, 9));
        expectNoScale();
    }
    ScaleSource const second(&image, named("legend"), dataOf(1, 8));
    expectNoScale();
}

TEST_F(ImageScale, isNoneWhateverFollowsAConflict)
{
    ScaleSource const first(&image, named("legend"), dataOf(1, 9));
    {
        ScaleSource const second(&image, named("other"), dataOf(1, 9));
        ScaleSource const third(&image, named("legend"), dataOf(1, 9));
        expectNoScale();
    }
    ScaleSource const second(&image, named("legend"), dataOf(1, 9), true);
    ScaleSource const third(&image, named("legend"), dataOf(1, 9));
    expectNoScale();
}

TEST_F(ImageScale, isNoneForALegendOfTolerances)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    ScaleSource const source(&image, named("legend"), dataOf(1, 9), true);
    expectNoScale();
}

TEST_F(ImageScale, isThatOfASnapshot)
{
    SnapshotData &snapshot = tokens.addSnapshot("frozen");
    snapshot.setLegendData(named("frozen"), dataOf(3, 4));
    image.setToken("frozen");
    expectNoScale(); // without a figure there is nothing to be coloured
    snapshot.setFigure(new Figure);
    expectScale(named("frozen"), dataOf(3, 4));
    snapshot.setLegendData(named("frozen"), dataOf(3, 4), true, Legend2::ToleranceParams(), Legend2::HistogramData());
    expectNoScale();
}

TEST_F(ImageScale, isThatOfTheSnapshotWhereThePictureHasNone)
{
    SnapshotData &snapshot = tokens.addSnapshot("camera");
    snapshot.setFigure(new Figure);
    snapshot.setLegendData(named("frozen"), dataOf(3, 4));
    expectScale(named("frozen"), dataOf(3, 4));
    data.setLegendData(named("data"), dataOf(2, 5));
    expectScale(named("data"), dataOf(2, 5));
}

TEST_F(ImageScale, spansTheValuesOfTheLabelsOnDemand)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    auto const first = label(dataOf(-1, 3, 0.5, 0.25));
    expectScale(named("data"), dataOf(2, 5));
    data.setCanDrawLegendColors(true);
    expectScale(named("data"), dataOf(-1, 3, 0.5, 0.25));
    auto const second = label(dataOf(1, 7, 4, 1));
    expectScale(named("data"), dataOf(-1, 7, 3, 4));
    auto const third = label(dataOf(0, 1, 0, 0));
    expectScale(named("data"), dataOf(-1, 7, 3, 4));
    auto const fourth = label(dataOf(-3, 1, 0, 0));
    expectScale(named("data"), dataOf(-3, 7, 2, 5));
}

TEST_F(ImageScale, leavesOutLabelsThatHideOrHaveNoValues)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    data.setCanDrawLegendColors(true);
    auto const hidden = label(dataOf(-1, 3));
    hidden->setVisible(false);
    auto const without = label(dataOf(-1, 3));
    without->legendData.reset();
    auto const late = label(dataOf(-1, 3));
    late->legendData.reset();
    late->histogram.emplace(); // has a scale, but no values yet
    expectScale(named("data"), dataOf(2, 5));
}

TEST_F(ImageScale, doesNotAskLabelsThatHaveNone)
{
    struct Silent : MeasuredPoint
    {
        bool hasLegendData() const override { return false; }
    };
    Silent silent;
    silent.legendData = dataOf(-1, 3);
    silent.connect(&image, "");
    data.setLegendData(named("data"), dataOf(2, 5));
    data.setCanDrawLegendColors(true);
    expectScale(named("data"), dataOf(2, 5));
}

class ImageLegendData : public ImageScale
{
protected:
    bool ask(ImageBase const &element)
    {
        return element.getLegendData(&tokens, &legend, &scale, &showTolerances, &tolerance, &histogram, &canDrawColors);
    }

    Legend2::Legend legend;
    Legend2::Data scale;
    bool showTolerances = true;
    Legend2::ToleranceParams tolerance;
    Legend2::HistogramData histogram;
    bool canDrawColors = true;
};

TEST_F(ImageLegendData, areThoseOfThePicture)
{
    EXPECT_FALSE(ask(image));
    EXPECT_FALSE(canDrawColors);
    data.setLegendData(named("data"), dataOf(2, 5), histogramOf(3, 4));
    tolerance.setTitle("gone");
    EXPECT_TRUE(ask(image));
    EXPECT_EQ(legend, named("data"));
    EXPECT_EQ(scale, dataOf(2, 5));
    EXPECT_FALSE(showTolerances);
    EXPECT_EQ(tolerance, Legend2::ToleranceParams());
    EXPECT_EQ(histogram, histogramOf(3, 4));
    EXPECT_FALSE(canDrawColors);
}

TEST_F(ImageLegendData, areNoneWithoutATokenOrData)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    Image other;
    EXPECT_FALSE(ask(other));
    EXPECT_FALSE(canDrawColors);
    other.setToken("unknown");
    EXPECT_FALSE(ask(other));
}

TEST_F(ImageLegendData, mayBeAskedForWithoutHistogramAndColours)
{
    data.setLegendData(named("data"), dataOf(2, 5), histogramOf(3, 4));
    EXPECT_TRUE(image.getLegendData(&tokens, &legend, &scale, &showTolerances, &tolerance, nullptr, nullptr));
    EXPECT_EQ(scale, dataOf(2, 5));
}

TEST_F(ImageLegendData, areThoseOfTheLabelsOnDemand)
{
    data.setLegendData(named("data"), dataOf(2, 5), histogramOf(3, 4));
    data.setCanDrawLegendColors(true);
    auto const first = label(dataOf(0, 8));
    first->histogram = histogramOf(1, 2);
    auto const second = label(dataOf(1, 9));
    second->histogram = histogramOf(1, 5);
    EXPECT_TRUE(ask(image));
    EXPECT_TRUE(canDrawColors);
    EXPECT_EQ(scale, dataOf(0, 9, 4.5, 4.5));
    EXPECT_EQ(countsOf(histogram), (std::map<double, unsigned int>{{1, 7}}));
}

TEST_F(ImageLegendData, haveNoHistogramOverAnEmptyRange)
{
    data.setCanDrawLegendColors(true);
    auto const only = label(dataOf(4, 4));
    only->histogram = histogramOf(4, 2);
    for (double maximum : {0.0, 4.0}) {
        data.setLegendData(named("data"), dataOf(maximum, maximum), histogramOf(3, 4));
        only->legendData = dataOf(maximum, maximum);
        EXPECT_TRUE(ask(image));
        EXPECT_FALSE(histogram.isValid());
    }
    only->legendData = dataOf(4, 4 * (1 + 1e-13));
    EXPECT_TRUE(ask(image));
    EXPECT_FALSE(histogram.isValid());
    only->legendData = dataOf(4, 4 * (1 + 1e-11));
    EXPECT_TRUE(ask(image));
    EXPECT_EQ(histogram, histogramOf(4, 2));
}

TEST_F(ImageLegendData, haveAHistogramFromAMillionMillionthOfTheMaximumOn)
{
    data.setLegendData(named("data"), dataOf(0, 1));
    data.setCanDrawLegendColors(true);
    auto const only = label(dataOf(0, 1));
    only->histogram = histogramOf(4, 2);
    auto const hasHistogram = [&](double minimum, double maximum) {
        only->legendData = dataOf(minimum, maximum);
        EXPECT_TRUE(ask(image));
        return histogram.isValid();
    };
    EXPECT_TRUE(hasHistogram(4, 4 * (1 + 5e-12)));
    EXPECT_FALSE(hasHistogram(-4, -4 * (1 - 1e-13)));
    EXPECT_TRUE(hasHistogram(-4, -4 * (1 - 5e-12)));
    // Around zero there is no share of the maximum.
    EXPECT_FALSE(hasHistogram(-1e-50, 0));
    EXPECT_TRUE(hasHistogram(-1e-49, 0));
}

TEST_F(ImageLegendData, haveNoHistogramWhereCountsCannotBeAddedUp)
{
    data.setLegendData(named("data"), dataOf(0, 1), histogramOf(3, 4));
    data.setCanDrawLegendColors(true);
    auto const first = label(dataOf(0, 1));
    first->histogram = histogramOf(1, std::numeric_limits<unsigned int>::max());
    auto const second = label(dataOf(0, 1));
    second->histogram = histogramOf(1, 1);
    EXPECT_TRUE(ask(image));
    EXPECT_FALSE(histogram.isValid());
}

TEST_F(ImageLegendData, areThoseOfASnapshot)
{
    SnapshotData &snapshot = tokens.addSnapshot("frozen");
    image.setToken("frozen");
    EXPECT_FALSE(ask(image));
    Legend2::ToleranceParams mine;
    mine.setTitle("mine");
    snapshot.setLegendData(named("frozen"), dataOf(3, 4), true, mine, histogramOf(1, 2));
    EXPECT_TRUE(ask(image));
    EXPECT_EQ(legend, named("frozen"));
    EXPECT_EQ(scale, dataOf(3, 4));
    EXPECT_TRUE(showTolerances);
    EXPECT_EQ(tolerance, mine);
    EXPECT_EQ(histogram, histogramOf(1, 2));
    EXPECT_FALSE(canDrawColors);
}

TEST_F(ImageLegendData, ofThePictureHideThoseOfTheSnapshot)
{
    tokens.addSnapshot("camera").setLegendData(named("frozen"), dataOf(3, 4));
    EXPECT_FALSE(ask(image));
}

TEST_F(ImageLegendData, reachAConnectedLegend)
{
    data.setLegendData(named("data"), dataOf(2, 5));
    Figure figure(&tokens);
    auto *shown = new Image;
    auto *scaleElement = new Legend;
    shown->setToken("camera");
    figure.getRoot()->addChild(shown);
    figure.getRoot()->addChild(scaleElement);
    scaleElement->connect(shown, "");
    figure.update(stage, true);
    EXPECT_TRUE(scaleElement->isScaleValid());
    EXPECT_EQ(scaleElement->getShownLegend(), named("data"));
    EXPECT_EQ(shown->getComputedLegendData(), dataOf(2, 5));
}

TEST_F(ImageScale, isDueWhenALabelIs)
{
    auto const first = label(dataOf(0, 8));
    auto const hidden = label(dataOf(0, 8));
    hidden->setVisible(false);
    hidden->invalidate();
    update();
    first->update(stage, &tokens, nullptr);
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    first->invalidate();
    EXPECT_FALSE(image.isDataValid(stage, &tokens));
}

} // namespace
} // namespace Zem::Fig2
