// What an image label answers, where its values come from, and its update.
#include "image_label_fixture.h"

#include <ZemFig2CoordinateSystem.h>
#include <ZemFig2Label.h>

#include <cmath>

namespace Zem::Fig2 {
namespace {

using Support::text;
using Support::thrownText;

constexpr double RIGHT_ANGLE = 1.5707963267948966;

/// An image label with what the library gives it.
class PlainImageLabel : public MeasuredPoint
{
public:
    DrawingPriority_t getDrawingPriority() override { return ImageLabel::getDrawingPriority(); }
    TokenInterface const *getTokenInterface() const override { return ImageLabel::getTokenInterface(); }
    bool hasLabel() const override { return ImageLabel::hasLabel(); }
    bool getDrawUnconnected() const override { return ImageLabel::getDrawUnconnected(); }
    bool hasLegendData() const override { return ImageLabel::hasLegendData(); }
    using ImageLabel::getLegendData;
    bool getLegendData(Legend2::Data *data) const override { return ImageLabel::getLegendData(data); }
    bool getHistogramData(double minimum, double maximum, Legend2::HistogramData *data) const override
    {
        return ImageLabel::getHistogramData(minimum, maximum, data);
    }
};

TEST(ImageLabelDefaults, areTheRequiredOnes)
{
    PlainImageLabel label;

    EXPECT_EQ(label.getType(), Element::IMAGE_LABEL);
    EXPECT_EQ(label.getLabelType(), ImageLabelCreator::TYPE_POINT);
    EXPECT_TRUE(label.getLabelVisible());
    EXPECT_FALSE(label.getHighlighted());
    EXPECT_EQ(label.getImageElementId(), "");
    EXPECT_EQ(label.getTokenContainer(), nullptr);
    EXPECT_TRUE(label.hasLabel());
    EXPECT_EQ(label.getDrawingPriority(), 500);
    EXPECT_EQ(label.getTokenInterface(), nullptr);
    EXPECT_EQ(label.getConnectedImage(), nullptr);
    EXPECT_TRUE(label.canLinkTo3D());
    EXPECT_FALSE(label.hasLegendData());
    EXPECT_FALSE(label.getDrawUnconnected());
    EXPECT_TRUE(label.hasFont());
    EXPECT_FALSE(label.hasFontColor());
    EXPECT_TRUE(label.hasAutoSize());
}

TEST(ImageLabelConstants, areTheRequiredOnes)
{
    EXPECT_EQ(ImageLabel::INVALID_VALUE, 1.7976931348623157e308);
    EXPECT_EQ(ImageLabel::INTERSECTION_TOLERANCE, 1.0);
    double const invalid = 1.7976931348623157e308;
    EXPECT_EQ(ImageLabel::INVALID_POINT, BaVec3d<double>(invalid, invalid, invalid));
    EXPECT_EQ(ImageLabel::INVALID_CONNECTOR_POINT, BaVec3d<double>(invalid, invalid, 0.0));
    EXPECT_EQ(ImageLabel::HIGHLIGHTED_COLOR, Color(100, 100, 255));
}

TEST(ImageLabelPoint, isInvalidByItsXAlone)
{
    EXPECT_FALSE(ImageLabel::isValidPoint({ImageLabel::INVALID_VALUE, 0, 0}));
    EXPECT_TRUE(ImageLabel::isValidPoint({0, ImageLabel::INVALID_VALUE, ImageLabel::INVALID_VALUE}));
}

TEST(ImageLabelEstimate, addsItsOwnSizeToThatOfALabel)
{
    // Two labels of the same text.
    EXPECT_EQ(MeasuredPoint().getEstimatedObjectSize(), Label().getEstimatedObjectSize() + 672);
}

TEST(ImageLabelFailures, nameTheirPlaces)
{
    PlainImageLabel label;
    Legend2::Data data;
    Legend2::HistogramData histogram;
    MeasuredPoint bare;
    bare.withLabel = false;

    EXPECT_EQ(thrownText<ProgError>([&] { bare.setLabelVisible(true); }),
              "Zem::Fig2::ImageLabel::setLabelVisible (fig_image_label:455): Element does not support labels");
    EXPECT_EQ(thrownText<ProgError>([&] { static_cast<void>(label.getLegendData(&data)); }),
              "Zem::Fig2::ImageLabel::getLegendData (fig_image_label:835): Legend data not supported");
    EXPECT_EQ(thrownText<ProgError>([&] { label.getHistogramData(0, 1, &histogram); }),
              "Zem::Fig2::ImageLabel::getHistogramData (fig_image_label:845): Histogram data not supported");
}

TEST(ImageLabelWithoutBox, isNeverVisible)
{
    MeasuredPoint label;
    label.setLabelVisible(true);
    label.withLabel = false;

    EXPECT_FALSE(label.getLabelVisible());
}

TEST(ImageLabelSetters, storeAndClearValid)
{
    Support::FakeCalculator const calculator;
    MeasuredPoint label;
    auto const clearsValid = [&label](auto const &set) {
        label.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(label.isValid());
        set();
        EXPECT_FALSE(label.isValid());
    };
    auto *container = new TokenContainer;

    clearsValid([&] { label.setLabelVisible(false); });
    clearsValid([&] { label.setHighlighted(true); });
    clearsValid([&] { label.setImageElementId("P1"); });
    clearsValid([&] { label.setTokenContainer(container); });

    EXPECT_FALSE(label.getLabelVisible());
    EXPECT_TRUE(label.getHighlighted());
    EXPECT_FALSE(label.isHighlighted());
    EXPECT_EQ(label.getImageElementId(), "P1");
    EXPECT_EQ(label.getTokenContainer(), container);
}

TEST(ImageLabelCopy, hasValuesOfItsOwnAndIsNotHighlighted)
{
    MeasuredPoint label;
    auto *container = new TokenContainer;
    container->setValue(TokenInfo(TokenInfo::TYPE_INTEGER, "x", ""), Value(5));
    label.setTokenContainer(container);
    label.setHighlighted(true);
    label.setLabelVisible(false);
    label.setImageElementId("P1");

    std::unique_ptr<Element> const copied(label.copy());
    label.setTokenContainer(nullptr);

    auto const &copy = dynamic_cast<ImageLabel const &>(*copied);
    ASSERT_NE(copy.getTokenContainer(), nullptr);
    EXPECT_EQ(copy.getTokenContainer()->getValue("x", IndexIdentifier::NO_INDEX, StageIdentifier(1)), Value(5));
    EXPECT_FALSE(copy.getHighlighted());
    EXPECT_FALSE(copy.getLabelVisible());
    EXPECT_EQ(copy.getImageElementId(), "P1");
    EXPECT_EQ(copy.getLabelType(), ImageLabelCreator::TYPE_POINT);
    std::unique_ptr<Element> const withoutContainer(label.copy());
    EXPECT_EQ(dynamic_cast<ImageLabel const &>(*withoutContainer).getTokenContainer(), nullptr);
}

TEST_F(ImageLabelTest, belongsToTheFirstImageItIsConnectedTo)
{
    auto *other = new Image;
    figure.getRoot()->addChild(other);
    label->connect(image, "");
    label->connect(other, "");

    EXPECT_EQ(label->getConnectedImage(), image);
    label->disconnect(image, "");
    EXPECT_EQ(label->getConnectedImage(), other);
}

class ImageLabelTransformationTest : public ImageLabelTest
{
protected:
    ImageLabelTransformationTest() { update(); }

    ImageLabelTransformation onPage() const { return {image, transformation}; }
};

TEST_F(ImageLabelTransformationTest, givesPointsOfThePage)
{
    BaVec2d<double> first;
    BaVec2d<double> second;

    EXPECT_TRUE(onPage().computeImagePoint({10, 5, 0}, &first));
    EXPECT_EQ(first, BaVec2d<double>(30, 30));
    EXPECT_TRUE(onPage().computeImagePoints({0, 0, 0}, {40, 30, 7}, &first, &second));
    EXPECT_EQ(first, BaVec2d<double>(10, 20));
    EXPECT_EQ(second, BaVec2d<double>(90, 80));
}

TEST_F(ImageLabelTransformationTest, givesNoneWhereThereIsNoPixel)
{
    transformation->hide([](BaVec3d<double> const &point) { return point.x > 0; });
    BaVec2d<double> first(1, 2);
    BaVec2d<double> second(3, 4);

    EXPECT_FALSE(onPage().computeImagePoint({10, 5, 0}, &first));
    EXPECT_FALSE(onPage().computeImagePoints({0, 0, 0}, {40, 30, 0}, &first, &second));
    EXPECT_EQ(first, BaVec2d<double>(1, 2));
}

TEST_F(ImageLabelTransformationTest, hasTheMotionOfTheOther)
{
    tokens.data.setTransformation(transformation = new FlatTransformation({{1, 2, 3}, {0, 0, 0}, 1.0}));

    EXPECT_EQ(onPage().getTransformation().getTranslation(), BaVec3d<double>(1, 2, 3));
    EXPECT_EQ(onPage().getType(), Transformation::TYPE_IMAGE_LABEL);
    EXPECT_EQ(onPage().getPictureTransformation(), transformation);
}

TEST_F(ImageLabelTransformationTest, carriesTheAxesOfACoordinateSystem)
{
    // A turn by 30 degrees about x: the depths of the ends of x, y and z are 0, 10 and 17.3.
    constexpr double THIRTY_DEGREES = 0.5235987755982988;
    tokens.data.setTransformation(transformation = new FlatTransformation({{}, {THIRTY_DEGREES, 0, 0}, 1.0}));
    ImageLabelTransformation const toPage = onPage();
    CoordinateSystem system;
    system.setVisible(true);
    Support::RecordingPainter painter;

    system.draw(&painter, {0, 0}, 1.0, Rect(-1e6, -1e6, 2e6, 2e6), &toPage, Rotation::null);

    // 20 units are 40 mm; the shaft of x ends 0.95 * 2.5 mm before 50,20.
    std::string const calls = painter.transcript();
    std::size_t const x = calls.find("line 10,20 47.625,20 ");
    EXPECT_NE(x, std::string::npos) << calls;
    EXPECT_LT(calls.find("'z'"), calls.find("'y'"));
    EXPECT_LT(calls.find("'y'"), x);
}

TEST_F(ImageLabelTransformationTest, isNotCopied)
{
    EXPECT_EQ(thrownText<ProgError>([this] { onPage().copy(); }),
              "Zem::Fig2::ImageLabelTransformation::copy (fig_image_label:81): "
              "Copy of ImageLabelTransformation object not supported");
}

class ImageLabelUpdate : public ImageLabelTest
{
protected:
    ImageLabelUpdate()
    {
        label->setImageElementId("P1");
        figure.setImageInterface(&measurements);
    }
    /// The calls of one update.
    std::string calls()
    {
        measurements.calls.clear();
        label->computeDynamicData(stage, &tokens);
        return measurements.calls;
    }
};

TEST_F(ImageLabelUpdate, bringsTheMeasuredThingUpToDate)
{
    label->setLinkTo3D(false);

    EXPECT_EQ(calls(), "update P1\n");
}

TEST_F(ImageLabelUpdate, takesTheLookOf3DFirst)
{
    label->setLinkTo3D(true);

    EXPECT_EQ(calls(), "configure P1\nupdate P1\n");
}

TEST_F(ImageLabelUpdate, ofAClassWithout3DTakesNoLookFromThere)
{
    struct FlatPoint : MeasuredPoint
    {
        bool canLinkTo3D() const override { return false; }
    };
    label->setLinkTo3D(true);
    std::string const linked = Support::blockForm(*label);
    label = new FlatPoint;
    figure.getRoot()->addChild(label);

    // As a file may hold it.
    Support::loadBlocks(*label, linked);

    EXPECT_TRUE(label->getLinkTo3D());
    EXPECT_EQ(calls(), "update P1\n");
}

TEST_F(ImageLabelUpdate, ofAHiddenLabelTakesTheLookAlone)
{
    label->setLinkTo3D(true);
    label->setVisible(false);
    label->setText("new");

    EXPECT_EQ(calls(), "configure P1\n");
    EXPECT_EQ(label->getResolvedText(), "");
}

TEST_F(ImageLabelUpdate, withoutInterfaceResolvesTheText)
{
    figure.setImageInterface(nullptr);
    label->setText("new");

    EXPECT_EQ(calls(), "");
    EXPECT_EQ(label->getResolvedText(), "new");
}

/// The corners in the order of their x, then of their y.
std::string sortedCorners(Polygon2d const &polygon)
{
    std::vector<BaVec2d<double>> points(polygon.getPoints().begin(), polygon.getPoints().end());
    std::sort(points.begin(), points.end(),
              [](auto const &a, auto const &b) { return a.x < b.x - 1e-9 || (a.x < b.x + 1e-9 && a.y < b.y); });
    std::string result;
    for (BaVec2d<double> const &point : points)
        result += text(point) + " ";
    return result;
}

TEST_F(ImageLabelUpdate, alsoRedrawsTheImage)
{
    connectLabel();
    update();

    // The hull of the image from 10,20 to 90,80 and of the box from 110,25 to 130,35.
    EXPECT_EQ(sortedCorners(label->getUpdatePolygon()), "10,20 10,80 90,20 90,80 130,25 130,35 ");
}

TEST_F(ImageLabelUpdate, redrawsATurnedImageAsItLies)
{
    label->setOrigin({50, 50});
    image->setAngle(RIGHT_ANGLE);
    connectLabel();
    update();

    // 60 wide and 80 high now; the box is within.
    EXPECT_EQ(sortedCorners(label->getUpdatePolygon()), "20,10 20,90 80,10 80,90 ");
}

TEST_F(ImageLabelUpdate, ofAHiddenLabelLeavesTheImageUpToDate)
{
    connectLabel();
    label->setVisible(false);
    label->setText("$x$");
    EXPECT_TRUE(figure.update(stage, false));

    // The token was never looked for.
    EXPECT_FALSE(figure.update(stage, false));
}

/// The text "$x$" of the label, with x from one source or another.
class ImageLabelValues : public ImageLabelUpdate
{
protected:
    ImageLabelValues() { label->setText("$x$"); }

    std::string resolved()
    {
        label->computeDynamicData(stage, &tokens);
        return label->getResolvedText().toStdString();
    }
    void keep(char const *value)
    {
        auto *container = new TokenContainer;
        container->setValue(TokenInfo(TokenInfo::TYPE_STRING, "x", ""), Value(QString(value)));
        label->setTokenContainer(container);
    }
    bool isFresh() { return label->isDataValid(stage, &tokens); }

    Support::TestTokens further;
};

TEST_F(ImageLabelValues, comeFromTheTokensAtLast)
{
    tokens.set("x", Value(QString("figure")));

    EXPECT_EQ(resolved(), "figure");
}

TEST_F(ImageLabelValues, comeFromAFurtherSourceBefore)
{
    tokens.set("x", Value(QString("figure")));
    further.set("x", Value(QString("further")));
    label->further = &further;

    EXPECT_EQ(resolved(), "further");
}

TEST_F(ImageLabelValues, comeFromTheMeasuredThingOfAConnectedLabelFirst)
{
    connectLabel();
    tokens.set("x", Value(QString("figure")));
    further.set("x", Value(QString("further")));
    measurements.values.set("x", Value(QString("measured")));
    label->further = &further;
    EXPECT_EQ(resolved(), "measured");

    label->disconnect(image, "");
    EXPECT_EQ(resolved(), "further");
}

TEST_F(ImageLabelValues, comeFromTheOwnContainerInTheirPlace)
{
    connectLabel();
    measurements.values.set("x", Value(QString("measured")));
    keep("kept");
    EXPECT_EQ(resolved(), "kept");

    // Whoever has values of its own asks the measured thing for none.
    label->setText("$y$");
    measurements.values.set("y", Value(QString("measured")));
    EXPECT_EQ(resolved(), "???");
}

TEST_F(ImageLabelValues, needNoTokens)
{
    keep("kept");
    label->computeDynamicData(stage, nullptr);

    EXPECT_EQ(label->getResolvedText(), "kept");
}

TEST_F(ImageLabelValues, ofAnUnknownThingAreLookedForElsewhere)
{
    connectLabel();
    label->setImageElementId("P2");
    measurements.values.set("x", Value(QString("measured")));
    tokens.set("x", Value(QString("figure")));

    EXPECT_EQ(resolved(), "figure");
}

TEST_F(ImageLabelValues, areThoseOfTheStage)
{
    connectLabel();
    measurements.values.setAt(1, "x", Value(QString("first")));
    measurements.values.setAt(2, "x", Value(QString("second")));
    EXPECT_EQ(resolved(), "first");

    label->computeDynamicData(StageIdentifier(2), &tokens);

    EXPECT_EQ(label->getResolvedText(), "second");
}

TEST_F(ImageLabelValues, thatTheirSourcesDoNotHaveAreLookedForElsewhere)
{
    connectLabel();
    keep("kept");
    label->further = &further;
    further.set("z", Value(QString("further")));
    tokens.set("y", Value(QString("figure")));
    label->setText("$x$ $y$ $z$");

    EXPECT_EQ(resolved(), "kept&nbsp;figure&nbsp;further");
}

TEST_F(ImageLabelValues, countTheChangesOfTheirSourceToo)
{
    connectLabel();
    tokens.set("x", Value(1));
    tokens.set("x", Value(2));
    EXPECT_EQ(label->getTokenModifiedCounter(&tokens, "x"), tokens.getModifiedCounter("x"));

    measurements.values.set("x", Value(3));
    EXPECT_EQ(label->getTokenModifiedCounter(&tokens, "x"), tokens.getModifiedCounter("x") + 1);

    keep("kept");
    EXPECT_EQ(label->getTokenModifiedCounter(&tokens, "x"), tokens.getModifiedCounter("x") + 1);
    EXPECT_EQ(label->getTokenModifiedCounter(nullptr, "x"), 1U);
}

TEST_F(ImageLabelValues, areStaleWhenTheMeasuredThingHasChanged)
{
    connectLabel();
    measurements.values.set("x", Value(QString("before")));
    EXPECT_EQ(resolved(), "before");
    EXPECT_TRUE(isFresh());

    measurements.values.set("x", Value(QString("after")));
    EXPECT_FALSE(isFresh());
    EXPECT_EQ(resolved(), "after");
    EXPECT_TRUE(isFresh());
}

TEST_F(ImageLabelValues, ofAFurtherSourceThatCountsAreLookedForAtEachUpdate)
{
    struct Constant : TokenContainer
    {
        unsigned int getModifiedCounter(QString const &) const override { return 0; }
    } constant;
    constant.setValue(TokenInfo(TokenInfo::TYPE_INTEGER, "x", ""), Value(1));
    label->further = &constant;
    resolved();
    EXPECT_TRUE(isFresh());

    further.set("x", Value(1));
    label->further = &further;
    resolved();
    EXPECT_FALSE(isFresh());
}

} // namespace
} // namespace Zem::Fig2
