// Damaged figure files load or are refused with IO::StreamException, and take no more memory than their size allows.
#include "block_damage.h"
#include "generated_elements.h"
#include "load_limit.h"
#include "measured_point.h"

#include <AllocationPeak.h>
#include <BlockCrafter.h>
#include <TestTokens.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2Label.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2Logo.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2Rectangle.h>

#include <ZemImage.h>
#include <ZemScriptObject.h>

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <sstream>

namespace Zem::Fig2 {
namespace {

class ConnectedRectangle : public Rectangle
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

/// A file with every type of element, nested groups and a connector.
std::string everything()
{
    Figure figure;
    auto *source = new ConnectedRectangle;
    auto *group = new Group;
    auto *inner = new Group;
    auto *polygon = new Polygon;
    auto *label = new Label;
    polygon->setPolygon(Polygon2d({{0, 0}, {10, 0}, {10, 10}}, true));
    label->setText("force $5.1[kN]force$");
    label->setColorBarVisible(true);
    auto *legend = new Legend;
    Legend2::HistogramData histogram;
    histogram.addHistogram({{1.0, 2}, {2.0, 3}});
    legend->setLocalHistogramData(histogram);
    auto *logo = new Logo;
    logo->setImage(new ImageColor(3, 2));
    auto *image = new Image;
    image->setToken("camera");
    image->setVisualisation("part", ImageDataVisualisation(false));
    image->setImageLabelConfiguration(std::make_unique<MeasuredPoint>().get());
    for (Element *element :
         {static_cast<Element *>(source), static_cast<Element *>(new Line), static_cast<Element *>(new Ellipse),
          static_cast<Element *>(polygon), static_cast<Element *>(legend), static_cast<Element *>(logo),
          static_cast<Element *>(image), static_cast<Element *>(group)})
        figure.getRoot()->addChild(element);
    group->addChild(label);
    group->addChild(inner);
    inner->addChild(new Rectangle);
    source->connect(polygon, "point");
    auto *point = new MeasuredPoint;
    point->setTokenContainer(new TokenContainer);
    figure.getRoot()->addChild(point);
    point->connect(image, "");
    for (Element::Type_t type : leafTypes())
        figure.getRoot()->addChild(Element::create(type));
    return Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
}

/// There are creators of image labels of all types: to lack one is the application's mistake and not the file's.
class DamagedFigure : public testing::Test
{
protected:
    DamagedFigure()
    {
        for (unsigned int type = 0; type < ImageLabelCreator::NUMBER_OF_TYPES; ++type)
            creators_.push_back(std::make_unique<MeasuredPointCreator>(static_cast<ImageLabelCreator::Type_t>(type)));
    }

private:
    std::vector<std::unique_ptr<MeasuredPointCreator>> creators_;
};

/// Null when the file is refused. Whatever it claims, loading keeps to its limit.
std::unique_ptr<Figure> load(std::string const &bytes)
{
    std::istringstream input(bytes);
    auto figure = std::make_unique<Figure>();
    Support::AllocationPeak const peak;
    try {
        IO::InStream stream(&input);
        figure->load(&stream, -1, -1);
    } catch (IO::StreamException const &) {
        figure.reset();
    }
    EXPECT_LE(peak.bytes(), loadLimit(bytes.size()));
    return figure;
}

/// Loads; a figure that was accepted must stand walking, saving and deleting.
bool loads(std::string const &bytes)
{
    std::unique_ptr<Figure> const figure = load(bytes);
    if (!figure)
        return false;
    EXPECT_LT(figure->getEstimatedObjectSize(), 1000 * bytes.size());
    try {
        Support::streamOf([&](IO::OutStream &stream) { figure->save(&stream, -1, -1); });
    } catch (IO::StreamException const &) {
        return false;
    }
    return true;
}

TEST_F(DamagedFigure, loadsUndamaged)
{
    EXPECT_TRUE(loads(everything()));
}

TEST_F(DamagedFigure, isRefusedAfterEveryTruncation)
{
    std::string const bytes = everything();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(loads(bytes.substr(0, length))) << length;
}

TEST_F(DamagedFigure, loadsOrIsRefusedAfterAnyMutation)
{
    std::string const bytes = everything();
    std::mt19937 random(20240521);
    for (int i = 0; i < 10000; ++i) {
        std::string damaged = bytes;
        for (std::size_t k = 0, count = 1 + random() % 4; k < count; ++k)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        loads(damaged);
    }
}

TEST_F(DamagedFigure, loadsOrIsRefusedAfterAnyMutationWithARightChecksum)
{
    std::string const bytes = everything();
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    std::mt19937 random(20240522);
    int loaded = 0;
    for (int i = 0; i < 10000; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        loaded += loads(damaged) ? 1 : 0;
    }

    // Both ways are really taken.
    EXPECT_GT(loaded, 1000);
    EXPECT_LT(loaded, 9000);
}

TEST_F(DamagedFigure, loadsOrIsRefusedAfterBlocksWereLostOrSwapped)
{
    std::string const bytes = everything();
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        std::size_t const end = i + 1 < blocks.size() ? blocks[i + 1] : bytes.size();
        std::string const block = bytes.substr(blocks[i], end - blocks[i]);
        loads(bytes.substr(0, blocks[i]) + bytes.substr(end));
        loads(bytes.substr(0, end) + block + bytes.substr(end));
        for (std::size_t k : blocks)
            loads(bytes.substr(0, k) + block + bytes.substr(k));
    }
}

TEST_F(DamagedFigure, takesNoMemoryForWhatItOnlyClaims)
{
    std::string const bytes = everything();
    for (std::size_t block : blockPlaces(bytes)) {
        for (std::size_t place = 8; place + 4 <= 8 + numberAt(bytes, block); ++place) {
            std::string damaged = bytes;
            // As a count or a length: more than two thousand million.
            std::memcpy(damaged.data() + block + place, "\xff\xff\xff\x7f", 4);
            repairChecksum(damaged, block);
            loads(damaged);
        }
    }
}

TEST_F(DamagedFigure, updatesOrIsRefused)
{
    std::string const bytes = everything();
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    std::mt19937 random(20240523);
    Support::TestTokens tokens;
    for (int i = 0; i < 2000; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        try {
            Figure figure(&tokens);
            Support::readFrom(damaged, [&](IO::InStream &stream) { figure.load(&stream, -1, -1); });
            figure.update(StageIdentifier(1), false);
            figure.getElementAt({5, 5});
            figure.toString();
        } catch (IO::StreamException const &) {
        }
    }
}

} // namespace
} // namespace Zem::Fig2
