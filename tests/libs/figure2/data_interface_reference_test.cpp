// The data behind the reference tokens of a registry: who is asked, and who gets them back.
#include "data_interface_fixture.h"

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// A registry with two providers above one with a third, each of which knows the references "a".
class References : public testing::Test
{
protected:
    References()
    {
        first.image = &firstImage;
        first.overlay = &overlay;
        first.imageData = &imageData;
        for (DataInterface *each : {&registry, &sub}) {
            each->setImageReference("a");
            each->setChartReference("a");
            each->setSnapshotReference("a");
        }
        registry.registerReferenceInterface(&first);
        registry.registerReferenceInterface(&second);
        sub.registerReferenceInterface(&below);
        registry.registerSubDataInterface(&sub);
    }

    bool fetchImage() { return registry.getImageReference("a", &foundImage, &foundOverlay, &foundData); }

    std::string log;
    Provider first{&log, "1 "};
    Provider second{&log, "2 "};
    Provider below{&log, "3 "};
    Image8 const firstImage{1, 1};
    ImageColor const overlay{1, 1};
    ImageData const imageData;
    ChartData const chart;
    SnapshotData const snapshot;
    DataInterface registry;
    DataInterface sub;
    Zem::Image const *foundImage = &firstImage;
    Zem::ImageColor const *foundOverlay = &overlay;
    ImageData const *foundData = &imageData;
};

TEST_F(References, askEachProviderWithAnOverlayAndThenWithoutOne)
{
    EXPECT_FALSE(fetchImage());
    EXPECT_EQ(log, "1 overlay a; 1 image a; 2 overlay a; 2 image a; 3 overlay a; 3 image a; ");
    EXPECT_EQ(foundImage, nullptr);
    EXPECT_EQ(foundOverlay, nullptr);
    EXPECT_EQ(foundData, nullptr);
}

TEST_F(References, endWithTheFirstAnswer)
{
    first.servesOverlay = true;
    EXPECT_TRUE(fetchImage());
    EXPECT_EQ(log, "1 overlay a; ");
    EXPECT_EQ(foundImage, &firstImage);
    EXPECT_EQ(foundOverlay, &overlay);
    EXPECT_EQ(foundData, &imageData);
}

TEST_F(References, haveNoOverlayFromAProviderThatKnowsNone)
{
    first.servesImage = true;
    EXPECT_TRUE(fetchImage());
    EXPECT_EQ(log, "1 overlay a; 1 image a; ");
    EXPECT_EQ(foundImage, &firstImage);
    EXPECT_EQ(foundOverlay, nullptr);
    EXPECT_EQ(foundData, &imageData);
}

TEST_F(References, areLookedForInSubInterfacesThatHoldTheToken)
{
    below.image = &firstImage;
    below.servesImage = true;
    EXPECT_TRUE(fetchImage());
    EXPECT_EQ(foundImage, &firstImage);

    sub.removeToken({"a", VARIABLE_IMAGE_REFERENCE});
    log.clear();
    EXPECT_FALSE(fetchImage());
    EXPECT_EQ(log, "1 overlay a; 1 image a; 2 overlay a; 2 image a; ");
}

TEST_F(References, ofSubInterfacesAskTheOwnProvidersFirst)
{
    registry.removeToken({"a", VARIABLE_IMAGE_REFERENCE});
    second.servesImage = true;
    EXPECT_TRUE(fetchImage());
    EXPECT_EQ(log, "1 overlay a; 1 image a; 2 overlay a; 2 image a; ");
}

TEST_F(References, ofChartsAskEachProviderOnce)
{
    ChartData const *found = &chart;
    first.chart = &chart; // left behind with a refusal
    EXPECT_FALSE(registry.getChartReference("a", &found));
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(log, "1 chart a; 2 chart a; 3 chart a; ");

    second.chart = &chart;
    second.servesChart = true;
    EXPECT_TRUE(registry.getChartReference("a", &found));
    EXPECT_EQ(found, &chart);

    below.chart = &chart;
    below.servesChart = true;
    second.servesChart = false;
    EXPECT_TRUE(registry.getChartReference("a", &found));
    EXPECT_EQ(found, &chart);
}

TEST_F(References, ofSnapshotsAskEachProviderOnce)
{
    SnapshotData const *found = &snapshot;
    EXPECT_FALSE(registry.getSnapshotReference("a", &found));
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(log, "1 snapshot a; 2 snapshot a; 3 snapshot a; ");

    below.snapshot = &snapshot;
    below.servesSnapshot = true;
    EXPECT_TRUE(registry.getSnapshotReference("a", &found));
    EXPECT_EQ(found, &snapshot);
}

TEST_F(References, goBackToAllOwnProviders)
{
    EXPECT_TRUE(registry.releaseReferenceData({"a", VARIABLE_IMAGE_REFERENCE}));
    EXPECT_EQ(log, "1 release a; 2 release a; ");
}

TEST_F(References, ofSubInterfacesGoBackToTheirProviders)
{
    DataInterface other;
    other.setChartReference("a");
    registry.registerSubDataInterface(&other);
    registry.removeToken({"a", VARIABLE_CHART_REFERENCE});
    EXPECT_TRUE(registry.releaseReferenceData({"a", VARIABLE_CHART_REFERENCE}));
    EXPECT_EQ(log, "3 release a; ");

    sub.removeToken({"a", VARIABLE_CHART_REFERENCE});
    log.clear();
    EXPECT_TRUE(registry.releaseReferenceData({"a", VARIABLE_CHART_REFERENCE}));
    EXPECT_EQ(log, "");
}

TEST_F(References, areNoOtherTokens)
{
    registry.setInt("a", 1);
    char const *const text = "fig_data_interface: Trying to release a non-reference token";
    EXPECT_EQ(progError([&] { registry.releaseReferenceData({"a", VARIABLE_INTEGER}); }), text);
    registry.setGroup("a");
    EXPECT_EQ(progError([&] { registry.releaseReferenceData({"a", VARIABLE_GROUP}); }), text);
    EXPECT_TRUE(registry.releaseReferenceData({"a", VARIABLE_SNAPSHOT_REFERENCE}));
}

TEST_F(References, haveEachProviderOnce)
{
    EXPECT_EQ(progError([&] { registry.registerReferenceInterface(&first); }),
              "fig_data_interface: Interface is already registered");
    registry.unregisterReferenceInterface(&first);
    EXPECT_EQ(progError([&] { registry.unregisterReferenceInterface(&first); }),
              "fig_data_interface: Interface not registered");
    fetchImage();
    EXPECT_EQ(log, "2 overlay a; 2 image a; 3 overlay a; 3 image a; ");
}

} // namespace
} // namespace Zem::Fig2
