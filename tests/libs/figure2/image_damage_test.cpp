// Damaged picture data load or are refused with IO::StreamException; what was loaded can be drawn and saved.
#include "block_damage.h"
#include "flat_transformation.h"
#include "image_shapes_fixture.h"
#include "load_limit.h"

#include <AllocationPeak.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>

#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

/// Data with every kind of mark, a camera, masks, a colour scale and values.
std::string everything()
{
    Cal::InternalOrientation orientation;
    orientation.setImageDistance({1000, 1000});
    orientation.setRadialDistortion(-0.05, 0.01, 0.0);
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(1000, 800);
    ImageData data(camera, Zem::Transformation({0, 0, 100}, {0, 0, 0}, 1.0));
    data.scale(0.5);
    auto *marks = new ImageDataObject("marks");
    for (auto &shape : Fixture::allShapes())
        marks->addElement(shape.release());
    marks->setVisualisation(Fixture::unusualLook());
    auto *field = new ImageDataObject("field");
    auto *points = new ImageDataPoints;
    for (int i = 0; i < 20; ++i)
        points->addPoint(i, {1.0 * i, 2.0, 3.0}, {1.0, 0.5, 0.25}, 0.1 * i, i % 2 == 0, i);
    field->addElement(points);
    auto *container = new TokenContainer;
    container->setValue({TokenInfo::TYPE_STRING, "a", "a"}, Value(QString("value")));
    field->setTokenContainer(container);
    field->setTokenInterface(container);
    data.addObject(marks);
    data.addObject(field);
    data.addPointMask({1, "one"});
    Legend2::HistogramData histogram;
    histogram.addHistogram({{1.5, 3U}});
    data.setLegendData(Legend2::Legend(uLength), Legend2::Data(), histogram);
    return Support::streamOf([&](IO::OutStream &stream) { data.save(&stream); });
}

void drawAll(ImageData const &data)
{
    Support::RecordingPainter painter;
    for (auto it = data.getObjectBegin(); it != data.getObjectEnd(); ++it) {
        for (unsigned int step = 0; step < it->second->getNumberOfDrawSteps(); ++step)
            it->second->draw(&painter, {10, 20}, 0.5, Rect(10, 20, 100, 100), nullptr, Rotation::null,
                             it->second->getVisualisation(), data.getTransformation(), step);
    }
}

/// False when the data are refused. Whatever they claim, loading keeps to its limit.
bool loads(std::string const &bytes)
{
    std::istringstream input(bytes);
    ImageData data;
    {
        Support::AllocationPeak const peak;
        try {
            IO::InStream stream(&input);
            data.load(&stream);
        } catch (IO::StreamException const &) {
            return false;
        }
        EXPECT_LE(peak.bytes(), loadLimit(bytes.size()));
    }
    drawAll(data);
    ImageData const copied(data);
    Support::streamOf([&](IO::OutStream &stream) { copied.save(&stream); });
    return true;
}

TEST(DamagedImageData, loadUndamaged)
{
    EXPECT_TRUE(loads(everything()));
}

TEST(DamagedImageData, areRefusedAfterEveryTruncation)
{
    std::string const bytes = everything();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(loads(bytes.substr(0, length))) << length;
}

TEST(DamagedImageData, loadOrAreRefusedAfterAnyMutationWithARightChecksum)
{
    std::string const bytes = everything();
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    std::mt19937 random(20240611);
    int loaded = 0;
    for (int i = 0; i < 10000; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        loaded += loads(damaged) ? 1 : 0;
    }
    // Most damage is to numbers that may have any value.
    EXPECT_GT(loaded, 1000);
    EXPECT_LT(loaded, 9000);
}

} // namespace
} // namespace Zem::Fig2
