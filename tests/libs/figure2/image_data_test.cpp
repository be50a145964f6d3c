// What an image element is lent: objects, colour scale, scaling, copies.
#include "flat_transformation.h"
#include "image_shapes_fixture.h"

#include <ElementForms.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemImage.h>
#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

#include <memory>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// A mark that tells when it is deleted, and what was done to it.
class Probe : public ImageDataElement
{
public:
    Probe(std::string *log, unsigned int steps = 1, bool arrows = false)
        : ImageDataElement(TYPE_LINE), log_(log), steps_(steps), arrows_(arrows)
    {
    }
    ~Probe() override { *log_ += "deleted "; }
    Probe *copy() const override
    {
        *log_ += "copied ";
        return new Probe(log_, steps_, arrows_);
    }
    void scale(double factor) override { *log_ += "scaled " + Support::text(factor) + " "; }
    bool hasArrows() const override { return arrows_; }
    unsigned int getNumberOfDrawSteps() const override { return steps_; }
    void draw(Painter *, BaVec2d<double> const &, double, Rect const &, Legend2::LegendHandler const *,
              Rotation const &, ImageDataVisualisation const &, Transformation const *,
              unsigned int step) const override
    {
        *log_ += "drawn " + std::to_string(step) + " ";
    }

private:
    std::string *log_;
    unsigned int steps_;
    bool arrows_;
};

TEST(ImageDataObject, begins)
{
    ImageDataObject const object("part");
    EXPECT_EQ(object.getId(), "part");
    EXPECT_EQ(object.getDisplayText(), "");
    EXPECT_FALSE(object.getFiltered());
    EXPECT_TRUE(object.getCanBeConnectorTarget());
    EXPECT_EQ(object.getVisualisation(), ImageDataVisualisation::NONE);
    EXPECT_EQ(static_cast<int>(object.getLabelTemplateType()), -1);
    EXPECT_EQ(object.getTokenInterface(), nullptr);
    EXPECT_EQ(object.getTokenContainer(), nullptr);
    EXPECT_EQ(object.getNumberOfDrawSteps(), 0U);
    EXPECT_FALSE(object.hasArrows());
}

TEST(ImageDataObject, takesTheMostStepsOfItsElementsAndDrawsAllInEach)
{
    std::string log;
    ImageDataObject object("part");
    object.addElement(new Probe(&log, 1));
    object.addElement(new Probe(&log, 3));
    object.addElement(new Probe(&log, 2));
    EXPECT_EQ(object.getNumberOfDrawSteps(), 3U);

    object.draw(nullptr, {}, 1, Rect(), nullptr, Rotation::null, ImageDataVisualisation::NONE, nullptr, 2);
    EXPECT_EQ(log, "drawn 2 drawn 2 drawn 2 ");
}

TEST(ImageDataObject, hasArrowsWhenOneElementHas)
{
    std::string log;
    ImageDataObject object("part");
    object.addElement(new Probe(&log, 1, false));
    EXPECT_FALSE(object.hasArrows());
    object.addElement(new Probe(&log, 1, true));
    EXPECT_TRUE(object.hasArrows());
}

TEST(ImageDataObject, handsARemovedElementBack)
{
    std::string log;
    ImageDataObject object("part");
    auto *first = new Probe(&log);
    object.addElement(first);
    object.addElement(new Probe(&log));
    object.removeElement(first);
    EXPECT_EQ(log, "");
    EXPECT_EQ(object.getElementEnd() - object.getElementBegin(), 1);
    EXPECT_EQ(Support::thrownText<ProgError>([&] { object.removeElement(first); }),
              "Zem::Fig2::ImageDataObject::removeElement (fig_image_data:3215): Element not registered");
    delete first;
}

TEST(ImageDataObject, isClearedButForItsTextAndTokens)
{
    std::string log;
    ImageDataObject object("part");
    object.addElement(new Probe(&log));
    object.setDisplayText("Bolt 1");
    object.setConnectorPoint({3, 4});
    object.setFiltered(true);
    object.setCanBeConnectorTarget(false);
    object.setVisualisation(unusualLook());
    object.setLabelTemplateType(LabelElementCreator::Element_t{7});
    object.setTokenContainer(new TokenContainer);
    object.clear();
    EXPECT_EQ(log, "deleted ");
    EXPECT_EQ(object.getElementBegin(), object.getElementEnd());
    EXPECT_FALSE(object.getFiltered());
    EXPECT_TRUE(object.getCanBeConnectorTarget());
    EXPECT_EQ(object.getVisualisation(), ImageDataVisualisation::NONE);
    EXPECT_EQ(static_cast<int>(object.getLabelTemplateType()), -1);
    EXPECT_EQ(object.getDisplayText(), "Bolt 1");
    EXPECT_EQ(object.getConnectorPoint(), BaVec2d<double>(3, 4));
    EXPECT_NE(object.getTokenContainer(), nullptr);
}

TEST(ImageDataObject, isCopiedWithoutItsDisplayText)
{
    std::string log;
    ImageDataObject object("part");
    object.addElement(new Probe(&log));
    object.setDisplayText("Bolt 1");
    object.setConnectorPoint({3, 4});
    object.setFiltered(true);
    object.setCanBeConnectorTarget(false);
    object.setVisualisation(unusualLook());
    object.setLabelTemplateType(LabelElementCreator::Element_t{7});
    {
        ImageDataObject const copied(object);
        EXPECT_EQ(copied.getId(), "part");
        EXPECT_EQ(copied.getDisplayText(), "");
        EXPECT_EQ(copied.getConnectorPoint(), BaVec2d<double>(3, 4));
        EXPECT_TRUE(copied.getFiltered());
        EXPECT_FALSE(copied.getCanBeConnectorTarget());
        EXPECT_EQ(contentOf(copied.getVisualisation()), contentOf(unusualLook()));
        EXPECT_EQ(static_cast<int>(copied.getLabelTemplateType()), 7);
        EXPECT_NE(*copied.getElementBegin(), *object.getElementBegin());
    }
    EXPECT_EQ(log, "copied deleted ");
}

TEST(ImageDataObject, isCopiedWithItsOwnTokens)
{
    TokenContainer elsewhere;
    ImageDataObject object("part");
    auto *container = new TokenContainer;
    object.setTokenContainer(container);
    object.setTokenContainer(container); // is not one before itself
    object.setTokenInterface(container);
    ImageDataObject const own(object);
    EXPECT_NE(own.getTokenContainer(), container);
    EXPECT_EQ(own.getTokenInterface(), own.getTokenContainer());

    object.setTokenInterface(&elsewhere);
    ImageDataObject const other(object);
    EXPECT_NE(other.getTokenContainer(), nullptr);
    EXPECT_EQ(other.getTokenInterface(), &elsewhere);
}

TEST(ImageDataObject, sharesWhenItIsAssigned)
{
    std::string log;
    auto *object = new ImageDataObject("part");
    object->setDisplayText("Bolt 1");
    object->addElement(new Probe(&log));
    // Only one of the two may ever be deleted.
    alignas(ImageDataObject) std::byte room[sizeof(ImageDataObject)];
    auto *assigned = new (room) ImageDataObject("");
    *assigned = *object;
    EXPECT_EQ(assigned->getId(), "part");
    EXPECT_EQ(assigned->getDisplayText(), "Bolt 1");
    EXPECT_EQ(*assigned->getElementBegin(), *object->getElementBegin());
    assigned->removeElement(*object->getElementBegin());
    assigned->~ImageDataObject();
    EXPECT_EQ(log, "");
    delete object;
    EXPECT_EQ(log, "deleted ");
}

TEST(ImageData, begins)
{
    ImageData const data;
    EXPECT_EQ(data.getImage(), nullptr);
    EXPECT_EQ(data.getOverlay(), nullptr);
    EXPECT_EQ(data.getTransformation(), nullptr);
    EXPECT_TRUE(data.getHasCoordinateSystem());
    EXPECT_FALSE(data.getCanDrawLegendColors());
    EXPECT_EQ(data.getObjectBegin(), data.getObjectEnd());
    EXPECT_TRUE(data.getPointMasks().empty());
    Legend2::Legend legend;
    Legend2::Data scale;
    EXPECT_FALSE(data.getLegendData(&legend, &scale));
}

TEST(ImageData, ofACameraHasItsTransformation)
{
    Cal::InternalOrientation orientation;
    orientation.setImageDistance({1000, 1000});
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(1000, 800);
    ImageData const data(camera, Zem::Transformation({0, 0, 100}, {0, 0, 0}, 1.0));
    BaVec2d<double> image;
    ASSERT_TRUE(data.getTransformation()->computeImagePoint({2, 3, 0}, &image));
    EXPECT_EQ(image, BaVec2d<double>(20, 30));
}

TEST(ImageData, keepsObjectsByTheirIds)
{
    ImageData data;
    auto *b = new ImageDataObject("b");
    data.addObject(b);
    data.addObject(new ImageDataObject("a"));
    EXPECT_TRUE(data.objectExists("a"));
    EXPECT_FALSE(data.objectExists("c"));
    EXPECT_EQ(data.getObject("b"), b);
    EXPECT_EQ(data.getObject("c"), nullptr);
    EXPECT_EQ(data.getObjectBegin()->first, "a");

    ImageDataObject second("b");
    EXPECT_EQ(Support::thrownText<ProgError>([&] { data.addObject(&second); }),
              "Zem::Fig2::ImageData::addObject (fig_image_data:3663): Duplicate ImageDataObject id");
    EXPECT_EQ(data.getObject("b"), b);

    data.removeObject("b");
    EXPECT_FALSE(data.objectExists("b"));
    EXPECT_EQ(Support::thrownText<ProgError>([&] { data.removeObject("b"); }),
              "Zem::Fig2::ImageData::removeObject (fig_image_data:3682): Object with that ID does not exist");
}

TEST(ImageData, handsOutItsColourScale)
{
    ImageData data;
    Legend2::Legend legend;
    Legend2::Data scale;
    Legend2::HistogramData histogram;
    histogram.addHistogram({{1.5, 3U}});
    scale.setDynamicMaximum(7);
    legend.setUnitName("mine");
    data.setLegendData(legend, scale, histogram);

    Legend2::Legend gotLegend;
    Legend2::Data gotScale;
    Legend2::HistogramData gotHistogram;
    EXPECT_TRUE(data.getLegendData(&gotLegend, &gotScale, &gotHistogram));
    EXPECT_EQ(gotLegend, legend);
    EXPECT_EQ(gotScale, scale);
    EXPECT_EQ(gotHistogram, histogram);

    data.setLegendData(Legend2::Legend(uLength), Legend2::Data());
    EXPECT_TRUE(data.getLegendData(&gotLegend, &gotScale, &gotHistogram));
    EXPECT_EQ(gotLegend, Legend2::Legend(uLength));
    EXPECT_FALSE(gotHistogram.isValid());

    data.clear();
    gotLegend = legend;
    EXPECT_FALSE(data.getLegendData(&gotLegend, &gotScale, &gotHistogram));
    EXPECT_EQ(gotLegend, legend);
}

TEST(ImageData, scalesObjectsConnectorPointsAndTransformation)
{
    std::string log;
    ImageData data;
    auto *object = new ImageDataObject("a");
    object->addElement(new Probe(&log));
    object->setConnectorPoint({10, 20});
    data.addObject(object);
    data.setTransformation(new FlatTransformation);
    data.scale(0.5);
    data.scale(0.5);
    EXPECT_EQ(log, "scaled 0.5 scaled 0.5 ");
    EXPECT_EQ(object->getConnectorPoint(), BaVec2d<double>(2.5, 5));
    EXPECT_EQ(data.getTransformation()->getType(), Transformation::TYPE_SCALED_IMAGE);
    BaVec2d<double> image;
    ASSERT_TRUE(data.getTransformation()->computeImagePoint({8, 12, 5}, &image));
    EXPECT_EQ(image, BaVec2d<double>(2, 3));
}

TEST(ImageData, deletesAnObjectThatItRemoves)
{
    std::string log;
    ImageData data;
    auto *object = new ImageDataObject("a");
    object->addElement(new Probe(&log));
    data.addObject(object);
    data.removeObject("a");
    EXPECT_EQ(log, "deleted ");
    EXPECT_FALSE(data.objectExists("a"));
}

TEST(ImageData, deletesOnlyATransformationThatIsReplaced)
{
    struct Mortal : FlatTransformation
    {
        explicit Mortal(int *deaths) : deaths_(deaths) {}
        ~Mortal() override { ++*deaths_; }
        int *deaths_;
    };
    int deaths = 0;
    {
        ImageData data;
        auto *first = new Mortal(&deaths);
        data.setTransformation(first);
        data.setTransformation(first);
        EXPECT_EQ(deaths, 0);
        data.setTransformation(new Mortal(&deaths));
        EXPECT_EQ(deaths, 1);
        data.clear();
        EXPECT_EQ(deaths, 1);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(ImageData, isClearedButForItsTransformation)
{
    std::string log;
    Image8 const picture(2, 2);
    ImageColor const overlay(2, 2);
    ImageData data;
    auto *object = new ImageDataObject("a");
    object->addElement(new Probe(&log));
    data.addObject(object);
    data.setImage(&picture);
    data.setOverlay(&overlay);
    data.addPointMask({1, "one"});
    data.setTransformation(new FlatTransformation);
    data.clear();
    EXPECT_EQ(log, "deleted ");
    EXPECT_EQ(data.getImage(), nullptr);
    EXPECT_EQ(data.getOverlay(), nullptr);
    EXPECT_EQ(data.getObjectBegin(), data.getObjectEnd());
    EXPECT_TRUE(data.getPointMasks().empty());
    EXPECT_NE(data.getTransformation(), nullptr);
}

TEST(ImageData, isCopiedDeeplyButForItsPictures)
{
    std::string log;
    Image8 const picture(2, 2);
    ImageColor const overlay(2, 2);
    ImageData data;
    auto *object = new ImageDataObject("a");
    object->addElement(new Probe(&log));
    data.addObject(object);
    data.setImage(&picture);
    data.setOverlay(&overlay);
    data.addPointMask({1, "one"});
    data.setTransformation(new FlatTransformation);
    data.setHasCoordinateSystem(false);
    data.setCanDrawLegendColors(true);
    data.setLegendData(Legend2::Legend(), Legend2::Data());
    {
        ImageData const copied(data);
        EXPECT_EQ(copied.getImage(), nullptr);
        EXPECT_EQ(copied.getOverlay(), nullptr);
        EXPECT_NE(copied.getObject("a"), nullptr);
        EXPECT_NE(copied.getObject("a"), object);
        EXPECT_NE(copied.getTransformation(), nullptr);
        EXPECT_NE(copied.getTransformation(), data.getTransformation());
        EXPECT_EQ(copied.getPointMasks(), data.getPointMasks());
        EXPECT_FALSE(copied.getHasCoordinateSystem());
        EXPECT_TRUE(copied.getCanDrawLegendColors());
        Legend2::Legend legend(uLength);
        Legend2::Data scale;
        EXPECT_TRUE(copied.getLegendData(&legend, &scale));
        EXPECT_EQ(legend, Legend2::Legend());
    }
    EXPECT_EQ(log, "copied deleted ");
}

TEST(ImageData, sharesWhenItIsAssigned)
{
    Image8 const picture(2, 2);
    ImageData data;
    data.setImage(&picture);
    data.addObject(new ImageDataObject("a"));
    data.setTransformation(new FlatTransformation);
    // Only one of the two may ever be deleted.
    alignas(ImageData) std::byte room[sizeof(ImageData)];
    auto *assigned = new (room) ImageData;
    *assigned = data;
    EXPECT_EQ(assigned->getImage(), &picture);
    EXPECT_EQ(assigned->getObject("a"), data.getObject("a"));
    EXPECT_EQ(assigned->getTransformation(), data.getTransformation());
    *assigned = ImageData();
    assigned->~ImageData();
    EXPECT_TRUE(data.objectExists("a"));
}

} // namespace
} // namespace Zem::Fig2
