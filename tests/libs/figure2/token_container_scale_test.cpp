// Smaller pictures for image elements, out of a container of frozen data.
#include "token_container_fixture.h"

#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2Label.h>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;

/// Makes pictures without any content, and writes down how they were asked for.
class TestScaler : public FigureTokenContainer::ImageScaler
{
public:
    Zem::Image *scale(Zem::Image const *image, double ratio) const override
    {
        ratios.push_back(ratio);
        auto const width = static_cast<unsigned int>(image->getWidth() * ratio);
        auto const height = static_cast<unsigned int>(image->getHeight() * ratio);
        if (image->getType() == Zem::Image::TYPE_COLOR)
            return overlaysAreGrey ? static_cast<Zem::Image *>(new Image8(width, height))
                                   : new ImageColor(width, height);
        return makesNothing ? nullptr : new Image8(width, height);
    }

    bool overlaysAreGrey = false;
    bool makesNothing = false;
    mutable std::vector<double> ratios;
};

/// Two hundred by a hundred pixels on two by two inches: 100 dots per inch across, 50 down.
class ScaleImage : public testing::Test
{
protected:
    ScaleImage()
    {
        auto *data = imageWith(&picture, &overlay);
        auto *object = new ImageDataObject("o");
        object->setConnectorPoint({8, 4});
        data->addObject(object);
        tokens.setValue(imageInfo("camera"), data, true);
        element.setToken("camera");
        element.setSize({50.8, 50.8});
    }

    void scale(double maxDpi) { tokens.scaleImage(&element, scaler, maxDpi); }
    ImageData const &data() const { return *tokens.getImage("camera"); }

    Image8 const picture{200, 100};
    ImageColor const overlay{200, 100};
    FigureTokenContainer tokens;
    TestScaler scaler;
    Image element;
};

TEST_F(ScaleImage, keepsTheSmallerOfBothRatios)
{
    scale(25); // a half of the resolution down, a quarter of that across
    ASSERT_EQ(scaler.ratios.size(), 2U);
    EXPECT_DOUBLE_EQ(scaler.ratios[0], 0.25);
    EXPECT_DOUBLE_EQ(scaler.ratios[1], 0.25);
    EXPECT_EQ(data().getImage()->getWidth(), 50U);
    EXPECT_EQ(data().getImage()->getHeight(), 25U);
    EXPECT_EQ(data().getObject("o")->getConnectorPoint(), (BaVec2d<double>(2, 1)));
}

TEST_F(ScaleImage, looksAtTheHeightToo)
{
    element.setSize({508, 25.4}); // 10 across, 100 down
    scale(50);
    ASSERT_EQ(scaler.ratios.size(), 2U);
    EXPECT_DOUBLE_EQ(scaler.ratios[0], 0.5);
}

TEST_F(ScaleImage, storesTheSmallerPictures)
{
    scale(25);
    FigureTokenContainer read;
    loadFrom(read, blocksWith(tokens));
    EXPECT_EQ(read.getImage("camera")->getImage()->getWidth(), 50U);
    EXPECT_EQ(read.getImage("camera")->getOverlay()->getWidth(), 50U);
}

TEST_F(ScaleImage, leavesTheOverlayOfTheDataInItsPlace)
{
    ImageColor const *before = data().getOverlay();
    scale(25);
    EXPECT_EQ(data().getOverlay(), before);
    EXPECT_EQ(data().getOverlay()->getWidth(), 50U); // and it can still be drawn
}

TEST_F(ScaleImage, leavesPicturesBelowTheLimitAlone)
{
    element.setAutoScale(false);
    element.setScaling(2);
    element.setInnerOrigin({4, 6});
    scale(100); // exactly the resolution
    scale(200);
    EXPECT_TRUE(scaler.ratios.empty());
    EXPECT_EQ(data().getImage()->getWidth(), 200U);
    EXPECT_EQ(element.getScaling(), 2);
    EXPECT_EQ(element.getInnerOrigin(), (BaVec2d<double>(4, 6)));
}

TEST_F(ScaleImage, needsAPictureAndAnElementWithAnExtent)
{
    element.setToken("unknown");
    scale(25);
    tokens.setValue(imageInfo("bare"), new ImageData, true);
    element.setToken("bare");
    scale(25);
    element.setToken("camera");
    element.setSize({0, 0});
    scale(25);
    element.setSize({50.8, 50.8});
    scale(0);
    scale(-25);
    EXPECT_TRUE(scaler.ratios.empty());
    EXPECT_EQ(data().getImage()->getWidth(), 200U);
}

TEST_F(ScaleImage, keepsTheSamePartOfThePictureInView)
{
    element.setAutoScale(false);
    element.setScaling(2);
    element.setInnerOrigin({4, 6}); // at the pixel 2, 3
    scale(25);
    EXPECT_EQ(element.getScaling(), 8); // a pixel is four times as large now
    // The pixel is at 0.5, 0.75 of the smaller picture: 4, 6 mm from its corner.
    EXPECT_EQ(element.getInnerOrigin(), (BaVec2d<double>(4, 6)));
}

TEST_F(ScaleImage, leavesTheScaleOfAnElementThatFitsItself)
{
    element.setAutoScale(true);
    element.setScaling(2);
    element.setInnerOrigin({4, 6});
    scale(25);
    EXPECT_EQ(element.getScaling(), 2);
    EXPECT_EQ(element.getInnerOrigin(), (BaVec2d<double>(4, 6)));
    EXPECT_EQ(data().getImage()->getWidth(), 50U);
}

TEST_F(ScaleImage, movesThePointsOfItsLabels)
{
    Figure figure;
    auto *image = new Image;
    auto *label = new Label;
    auto *without = new Label;
    auto *unconnected = new Label;
    for (Element *each : std::initializer_list<Element *>{image, label, without, unconnected})
        figure.getRoot()->addChild(each);
    image->setToken("camera");
    image->setSize({50.8, 50.8});
    label->connect(image, "o");
    label->setConnectorPoint({2, 3});
    without->connect(image, "o");
    unconnected->setConnectorPoint({2, 3});
    BaVec2d<double> const invalid = without->getConnectorPoint();
    ASSERT_FALSE(without->hasConnectorPoint());
    tokens.scaleImage(image, scaler, 25);
    EXPECT_EQ(label->getConnectorPoint(), (BaVec2d<double>(8, 12)));
    EXPECT_EQ(without->getConnectorPoint(), invalid);
    EXPECT_EQ(unconnected->getConnectorPoint(), (BaVec2d<double>(2, 3)));
}

/// An image element that is connected to others itself, as those of applications may be.
class PointingImage : public Image
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

TEST_F(ScaleImage, movesThePointsOfLabelsThatItIsConnectedTo)
{
    Figure figure;
    auto *image = new PointingImage;
    auto *label = new Label;
    auto *other = new Image;
    for (Element *each : std::initializer_list<Element *>{image, label, other})
        figure.getRoot()->addChild(each);
    image->setToken("camera");
    image->setSize({50.8, 50.8});
    label->setConnectorPoint({2, 3});
    image->connect(other, "");
    image->connect(label, "");
    tokens.scaleImage(image, scaler, 25);
    EXPECT_EQ(label->getConnectorPoint(), (BaVec2d<double>(8, 12)));
}

TEST_F(ScaleImage, needsAColouredOverlayAndChangesNothingWithoutOne)
{
    scaler.overlaysAreGrey = true;
    EXPECT_EQ(progError([&] { scale(25); }), "fig_token_container: Overlay must be a colored image");
    EXPECT_EQ(data().getImage()->getWidth(), 200U);
    scaler.makesNothing = true;
    EXPECT_EQ(progError([&] { scale(25); }), "fig_token_container: Scaled image must not be NULL");
}

TEST_F(ScaleImage, refusesPicturesOfATokenThatIsNoImageNow)
{
    tokens.setValue(textInfo("camera"), Value(5)); // the pictures stay
    EXPECT_EQ(progError([&] { scale(25); }), "libs/figure2/ZemFig2TokenContainer: Wrong entry type for adding images");
}

} // namespace
} // namespace Zem::Fig2
