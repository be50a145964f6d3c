// Which colour scale a legend shows, and when it must look again.
#include "legend_fixture.h"

#include <ElementForms.h>
#include <TestTokens.h>
#include <ZemColorMap.h>
#include <ZemFig2Figure.h>

#include <functional>

namespace Zem::Fig2 {
namespace {

using Support::progError;

/// Gives the global scale back as it was.
class GlobalScale
{
public:
    ~GlobalScale()
    {
        Legend2::ColorMap::setGlobalLegend(legend_, data_);
        Legend2::ColorMap::setTolerance(mode_, tolerance_);
        Legend2::ColorMap::setHistogramData(histogram_);
    }

private:
    Legend2::Legend legend_ = Legend2::ColorMap::getGlobalLegendParams();
    Legend2::Data data_ = Legend2::ColorMap::getGlobalLegendData();
    bool mode_ = Legend2::ColorMap::getToleranceMode();
    Legend2::ToleranceParams tolerance_ = Legend2::ColorMap::getToleranceParams();
    Legend2::HistogramData histogram_ = Legend2::ColorMap::getHistogramData();
};

class LegendScaleTest : public LegendTest
{
protected:
    LegendScaleTest()
    {
        first.legend.setFixedMaximum(20.0);
        second.legend.setFixedMaximum(20.0);
        first.histogram = second.histogram = histogramOf({{1.0, 2}});
    }

    void connectBoth()
    {
        legend.connect(&first, QString());
        legend.connect(&second, QString());
    }

    double shownMaximum() const { return legend.getShownLegend().getMaximum(legend.getShownData()); }

    GlobalScale globalScale;
    ScalePartner first;
    ScalePartner second;
};

TEST(LegendDefaults, areAThinUprightStripFromTheElements)
{
    Legend const legend;
    LineStyle const thin(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0));

    EXPECT_EQ(legend.getType(), Element::LEGEND);
    EXPECT_EQ(legend.getLegendDataMode(), Legend::LEGEND_DATA_MODE_ELEMENT);
    EXPECT_EQ(legend.getTickBoxStyle(), thin);
    EXPECT_EQ(legend.getTickStyle(), thin);
    EXPECT_EQ(legend.getTickStyle().getCapStyle(), LineStyle::CAP_SHARP);
    EXPECT_EQ(legend.getBarWidth(), 5.0);
    EXPECT_FALSE(legend.getShowHistogram());
    EXPECT_FALSE(legend.hasEqualSizedBlocks());
    EXPECT_FALSE(legend.isScaleValid());
    EXPECT_EQ(legend.getColorLength(), 1.0);
}

TEST(LegendDefaults, tellWhatALegendCanDo)
{
    Legend const legend;

    EXPECT_TRUE(legend.hasSize() && legend.hasMinimumSize() && legend.hasAngle() && legend.hasBackground());
    EXPECT_TRUE(legend.hasBorder() && legend.hasFont() && legend.hasFontColor() && legend.hasPivotAlignment());
    EXPECT_TRUE(legend.hasMargin() && legend.hasSpacing() && legend.getSpacingUsed());
    EXPECT_FALSE(legend.hasAutoSize() || legend.hasMaximize() || legend.hasLegendData() || legend.canLinkTo3D());
    EXPECT_FALSE(legend.isTokenUsed(QStringLiteral("force")));
}

TEST(ElementLegendData, isRefusedByElementsWithoutAny)
{
    Rectangle const rectangle;

    EXPECT_EQ(
        progError([&] { rectangle.getLegendData(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr); }),
        "fig_element: Element does not have any legend data");
}

TEST_F(LegendScaleTest, connectsToElementsWithAScaleOnly)
{
    Rectangle const plain;

    EXPECT_TRUE(legend.canConnectTo(&first, QString()));
    EXPECT_FALSE(legend.canConnectTo(&plain, QString()));
    EXPECT_FALSE(legend.canConnectTo(nullptr, QString()));
}

TEST_F(LegendScaleTest, ofElementsIsThatOfThePartners)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    first.showTolerances = true;
    connectBoth();

    update();

    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_EQ(shownMaximum(), 20.0);
    // Another tolerance flag alone is no conflict.
    EXPECT_TRUE(legend.getShownToleranceMode());
    EXPECT_EQ(legend.getShownHistogram(), first.histogram);
}

TEST_F(LegendScaleTest, ofElementsPassesOverPartnersWithoutData)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    first.delivers = false;
    second.legend.setFixedMaximum(30.0);
    connectBoth();

    update();

    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_EQ(shownMaximum(), 30.0);
}

TEST_F(LegendScaleTest, ofElementsThatDifferIsInvalidAndTheDefault)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    connectBoth();
    auto const invalid = [this] {
        legend.invalidate();
        update();
        return !legend.isScaleValid() && legend.getShownLegend() == Legend2::Legend() &&
               legend.getShownData() == Legend2::Data() && !legend.getShownHistogram().isValid();
    };

    second.legend.setFixedMaximum(21.0);
    EXPECT_TRUE(invalid());
    second.legend = first.legend;
    EXPECT_FALSE(invalid());
    second.data.setAverage(1.0);
    EXPECT_TRUE(invalid());
    second.data = first.data;
    second.tolerance.setTitle(QStringLiteral("other"));
    EXPECT_TRUE(invalid());
    second.tolerance = first.tolerance;
    second.histogram = histogramOf({{3.0, 1}});
    EXPECT_FALSE(invalid());
    EXPECT_EQ(legend.getShownHistogram(), first.histogram);
}

TEST_F(LegendScaleTest, withoutPartnersIsInvalidInElementMode)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);

    update();

    EXPECT_FALSE(legend.isScaleValid());
}

TEST_F(LegendScaleTest, countsOnlyConnectorsThatBeginAtTheLegend)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    class Source : public Rectangle
    {
        bool canConnectTo(Element const *, QString const &) const override { return true; }
    } source;
    source.connect(&legend, QString());

    update();

    EXPECT_FALSE(legend.isScaleValid());
}

TEST_F(LegendScaleTest, ofTheApplicationIsTheGlobalOne)
{
    Legend2::Legend global(uLength);
    global.setFixedMaximum(50.0);
    Legend2::Data data;
    data.setSigmaValue(2.0);
    Legend2::ColorMap::setGlobalLegend(global, data);
    Legend2::ColorMap::setTolerance(true, tolerance());
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D);

    update();

    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_EQ(legend.getShownLegend(), global);
    EXPECT_EQ(legend.getShownData(), data);
    EXPECT_TRUE(legend.getShownToleranceMode());
    EXPECT_EQ(legend.getTickTexts(), (std::vector<QString>{"bad", "good"}));
}

TEST_F(LegendScaleTest, ofTheApplicationHasTolerancesOnlyInToleranceMode)
{
    Legend2::ColorMap::setTolerance(false, tolerance());
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D);
    update();

    legend.convertToSnapshotMode();

    bool show = true;
    Legend2::ToleranceParams const *params = nullptr;
    legend.getLocalToleranceParams(&show, &params);
    EXPECT_FALSE(show);
    EXPECT_EQ(*params, Legend2::ToleranceParams());
}

TEST_F(LegendScaleTest, ofTheApplicationHasThePartnersHistogramBeforeTheGlobalOne)
{
    Legend2::ColorMap::setHistogramData(histogramOf({{7.0, 7}}));
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D);
    update();
    EXPECT_EQ(legend.getShownHistogram(), histogramOf({{7.0, 7}}));

    connectBoth();
    update();
    EXPECT_EQ(legend.getShownHistogram(), first.histogram);

    second.histogram = histogramOf({{3.0, 1}});
    legend.invalidate();
    update();
    EXPECT_FALSE(legend.getShownHistogram().isValid());
    EXPECT_TRUE(legend.isScaleValid());
}

TEST_F(LegendScaleTest, ofTheApplicationIsInvalidWhenPartnersDiffer)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D);
    second.legend.setFixedMaximum(21.0);
    connectBoth();

    update();

    EXPECT_FALSE(legend.isScaleValid());
}

TEST_F(LegendScaleTest, ofTheApplicationIsStaleWhenItChanges)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D);
    auto const stale = [this] {
        bool const was = !legend.isDataValid(StageIdentifier(), nullptr);
        legend.invalidate();
        update();
        return was;
    };
    update();
    EXPECT_FALSE(stale());

    Legend2::Legend global(uLength);
    global.setFixedMaximum(50.0);
    Legend2::ColorMap::setGlobalLegend(global, Legend2::Data());
    EXPECT_TRUE(stale());
    EXPECT_FALSE(stale());
    Legend2::Data data;
    data.setAverage(3.0);
    Legend2::ColorMap::setGlobalLegend(global, data);
    EXPECT_TRUE(stale());
    Legend2::ColorMap::setHistogramData(histogramOf({{7.0, 7}}));
    EXPECT_TRUE(stale());
    // Parameters of a mode that is off show nowhere.
    Legend2::ColorMap::setTolerance(false, tolerance());
    EXPECT_FALSE(stale());
    Legend2::ColorMap::setTolerance(true, tolerance());
    EXPECT_TRUE(stale());
    EXPECT_FALSE(stale());
    Legend2::ColorMap::setTolerance(true, Legend2::ToleranceParams());
    EXPECT_TRUE(stale());
}

TEST_F(LegendScaleTest, isOutOfDateAfterEveryChange)
{
    LineStyle const line(0.7, LineStyle::STYLE_FULL, Color(1, 2, 3));
    std::vector<std::function<void(Legend &)>> const changes{
        [](Legend &changed) { changed.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D); },
        [&](Legend &changed) { changed.setTickBoxStyle(line); },
        [&](Legend &changed) { changed.setTickStyle(line); },
        [](Legend &changed) { changed.setBarWidth(7.0); },
        [](Legend &changed) { changed.setEqualSizedBlocks(true); },
        [](Legend &changed) { changed.setShowHistogram(true); },
        [](Legend &changed) { changed.setLocalLegendData(Legend2::Legend(), Legend2::Data()); },
        [](Legend &changed) { changed.setLocalToleranceParams(true, tolerance()); },
        [](Legend &changed) {
            changed.setLocalHistogramData(histogramOf({{1.0, 1}}));
        },
        [](Legend &changed) { changed.clearLocalHistogramData(); }};
    for (std::size_t i = 0; i < changes.size(); ++i) {
        update();
        ASSERT_TRUE(legend.isValid()) << i;
        changes[i](legend);
        EXPECT_FALSE(legend.isValid()) << i;
    }
}

TEST_F(LegendScaleTest, isStaleWhenAPartnerIs)
{
    legend.connect(&first, QString());
    update();
    EXPECT_TRUE(legend.isDataValid(StageIdentifier(), nullptr));

    first.dataValid = false;

    EXPECT_FALSE(legend.isDataValid(StageIdentifier(), nullptr));
}

TEST_F(LegendScaleTest, fixedByTheUserTakesTheLocalValues)
{
    legend.setLocalToleranceParams(true, tolerance());
    legend.setLocalHistogramData(histogramOf({{4.0, 4}}));
    legend.setShowHistogram(true);

    update();

    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_EQ(legend.getShownLegend(), scale());
    EXPECT_TRUE(legend.getShownToleranceMode());
    EXPECT_EQ(legend.getShownHistogram(), histogramOf({{4.0, 4}}));
}

TEST_F(LegendScaleTest, fixedByTheUserWantsDataFromEveryPartner)
{
    second.delivers = false;
    connectBoth();

    update();
    EXPECT_FALSE(legend.isScaleValid());

    // The two modes that older files may hold pass them over.
    legend.setLegendDataMode(static_cast<Legend::LegendDataMode>(3));
    update();
    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_EQ(legend.getShownLegend(), scale());
}

TEST_F(LegendScaleTest, fixedByTheUserWantsPartnersOfOneMode)
{
    second.showTolerances = true;
    connectBoth();

    update();

    EXPECT_FALSE(legend.isScaleValid());
}

TEST_F(LegendScaleTest, fixedByTheUserKeepsItsOwnToleranceFlag)
{
    first.showTolerances = true;
    legend.connect(&first, QString());

    update();

    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_FALSE(legend.getShownToleranceMode());
}

TEST_F(LegendScaleTest, fixedByTheUserHasThePartnersHistogram)
{
    legend.setLocalHistogramData(histogramOf({{4.0, 4}}));
    connectBoth();
    update();
    EXPECT_EQ(legend.getShownHistogram(), first.histogram);

    second.histogram = histogramOf({{3.0, 1}});
    legend.invalidate();
    update();
    EXPECT_TRUE(legend.isScaleValid());
    EXPECT_FALSE(legend.getShownHistogram().isValid());
}

TEST_F(LegendScaleTest, clearsTheLocalHistogramOnDemand)
{
    legend.setLocalHistogramData(histogramOf({{4.0, 4}}));

    legend.clearLocalHistogramData();

    EXPECT_FALSE(legend.getLocalHistogramData()->isValid());
    EXPECT_FALSE(legend.isValid());
}

TEST_F(LegendScaleTest, isFrozenAsItShows)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    first.showTolerances = true;
    first.tolerance = tolerance();
    legend.connect(&first, QString());
    update();

    legend.convertToSnapshotMode();

    EXPECT_EQ(legend.getLegendDataMode(), Legend::LEGEND_DATA_MODE_MANUAL);
    Legend2::Legend const *local = nullptr;
    Legend2::Data const *data = nullptr;
    legend.getLocalLegendData(&local, &data);
    EXPECT_EQ(*local, first.legend);
    EXPECT_EQ(*data, first.data);
    bool show = false;
    Legend2::ToleranceParams const *params = nullptr;
    legend.getLocalToleranceParams(&show, &params);
    EXPECT_TRUE(show);
    EXPECT_EQ(*params, tolerance());
    EXPECT_EQ(*legend.getLocalHistogramData(), first.histogram);
}

TEST_F(LegendScaleTest, followsAPartnerInTheFigure)
{
    Figure figure;
    Support::TestTokens tokens;
    figure.setTokenInterface(&tokens);
    auto *shown = new Legend;
    auto *partner = new ScalePartner;
    figure.getRoot()->addChild(shown);
    figure.getRoot()->addChild(partner);
    shown->setSize({40, 120});
    shown->connect(partner, QString());
    figure.update(StageIdentifier(), false);
    ASSERT_TRUE(shown->isScaleValid());

    partner->legend.setFixedMaximum(77.0);
    partner->dataValid = false;
    figure.update(StageIdentifier(), false);

    EXPECT_EQ(shown->getShownLegend().getFixedMaximum(), 77.0);
}

} // namespace
} // namespace Zem::Fig2
