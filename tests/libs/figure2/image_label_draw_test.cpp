// The mark and the box of an image label on the page.
#include "image_label_fixture.h"

#include <ZemFig2ImageDataFixedShapes.h>
#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2ImageDataShapes.h>
#include <ZemFig2Rectangle.h>

namespace Zem::Fig2 {
namespace {

constexpr double RIGHT_ANGLE = 1.5707963267948966;

constexpr char const *MARK = "clip 10,20 90,20 90,80 10,80\n"
                             "ellipse 30,30 radii 1,1 angle 0 pen 1 full #000000ff sharp no fill\n"
                             "unclip\n";
constexpr char const *LINE = "line 110,30 30,30 pen 0.1 full #000000ff sharp\n";
constexpr char const *BOX = "polygon 110,25 130,25 130,35 110,35 no pen no fill\n"
                            "richtext 111,26 '' font Liberation Sans 12 0 width -1\n";

class ImageLabelDrawing : public ImageLabelTest
{
protected:
    ImageLabelDrawing()
    {
        label->setBorder(LineStyle::null);
        connectLabel();
        update();
    }

    bool isDrawn() const { return label->isLabelDrawn(&tokens); }
    /// The ends of the connector, "from to", and whether there is a line.
    std::string ends() const
    {
        BaVec2d<double> from(-1, -1);
        BaVec2d<double> to(-1, -1);
        bool const line = label->computeConnectorPoints(*label->getConnectorBegin(), &tokens, &from, &to);
        return Support::text(from) + " " + Support::text(to) + (line ? " line" : " none");
    }
};

TEST_F(ImageLabelDrawing, isTheMarkThenTheBox)
{
    EXPECT_EQ(drawn(), std::string("-- 0\n") + MARK + LINE + BOX);
    EXPECT_EQ(tokens.loans, 0);
}

TEST_F(ImageLabelDrawing, beginsTheBoxInTheLastStepOfTheMark)
{
    label->steps = 3;

    EXPECT_EQ(drawn(), std::string("-- 0\n") + MARK + "-- 1\n" + MARK + "-- 2\n" + MARK + LINE + BOX);
}

TEST_F(ImageLabelDrawing, givesTheBoxStepsOfItsOwn)
{
    label->steps = 3;
    Support::RecordingPainter painter;
    for (int step = 0; step < 3; ++step)
        label->draw(&tokens, &painter, step);
    painter.clear();

    // The box has one step, and this would be its second.
    EXPECT_TRUE(label->draw(&tokens, &painter, 3));
    EXPECT_EQ(painter.transcript(), "");
}

TEST_F(ImageLabelDrawing, beginsAnewAfterAnInterruption)
{
    label->steps = 3;
    Support::RecordingPainter painter;
    label->draw(&tokens, &painter, 0);
    label->draw(&tokens, &painter, 1);
    EXPECT_EQ(drawn(), std::string("-- 0\n") + MARK + "-- 1\n" + MARK + "-- 2\n" + MARK + LINE + BOX);
}

TEST_F(ImageLabelDrawing, beginsWithTheMarkEachTime)
{
    EXPECT_EQ(drawn(), drawn());
}

TEST_F(ImageLabelDrawing, isClippedToThePictureWithinTheImage)
{
    image->setScaling(1.0);
    update();

    // 40 x 30 in the middle of 80 x 60; the pixel 10,5 is at 40,40.
    EXPECT_TRUE(drawn().starts_with("-- 0\nclip 30,35 70,35 70,65 30,65\nellipse 40,40 ")) << drawn();
}

TEST_F(ImageLabelDrawing, isNothingWhileHidden)
{
    label->setVisible(false);

    EXPECT_EQ(drawn(), "-- 0\n");
    EXPECT_FALSE(isDrawn());
}

TEST_F(ImageLabelDrawing, isTheMarkAloneWhileTheBoxIsHidden)
{
    label->setLabelVisible(false);

    EXPECT_EQ(drawn(), std::string("-- 0\n") + MARK);
}

TEST_F(ImageLabelDrawing, isTheMarkAloneWithoutABox)
{
    label->withLabel = false;

    EXPECT_EQ(drawn(), std::string("-- 0\n") + MARK);
}

TEST_F(ImageLabelDrawing, isNothingWithoutThePictureOfItsImage)
{
    tokens.isThere = false;

    EXPECT_EQ(drawn(), "-- 0\n");
    EXPECT_EQ(tokens.loans, 0);
}

TEST_F(ImageLabelDrawing, isNothingWithoutAWayFromSpaceIntoThePicture)
{
    tokens.data.setTransformation(nullptr);

    EXPECT_EQ(drawn(), "-- 0\n");
    EXPECT_EQ(tokens.loans, 0);
}

TEST_F(ImageLabelDrawing, ofAnUnconnectedLabelIsTheBox)
{
    label->disconnect(image, "");

    EXPECT_EQ(drawn(), std::string("-- 0\n") + BOX);
    label->setVisible(false);
    EXPECT_FALSE(isDrawn());
}

TEST_F(ImageLabelDrawing, turnsWithTheImage)
{
    image->setAngle(RIGHT_ANGLE);
    update();

    // The point lies 20 left of and 20 above the centre 50,50; turned, 20 left of and 20 below it.
    EXPECT_EQ(drawn(), std::string("-- 0\n") +
                           "clip 20,90 20,10 80,10 80,90\n"
                           "ellipse 30,30 radii 1,1 angle 0 pen 1 full #000000ff sharp no fill turned 1.5708 about "
                           "50,50\n"
                           "unclip\n"
                           "line 110,34.4444 30,70 pen 0.1 full #000000ff sharp\n" +
                           BOX);
}

TEST_F(ImageLabelDrawing, turnsWithTheImageTheOtherWayRound)
{
    image->setAngle(-RIGHT_ANGLE);
    update();

    // The point, 20 left of and 20 above the centre, turned the other way: 20 right of and 20 above it.
    EXPECT_EQ(ends(), "110,30 70,30 line");
}

TEST_F(ImageLabelDrawing, vanishesWithAPointOutsideThePicture)
{
    label->point = {-10, 5, 0};

    EXPECT_FALSE(isDrawn());
    EXPECT_EQ(drawn().find("richtext"), std::string::npos);
}

TEST_F(ImageLabelDrawing, vanishesWithAPointThatHasNoPixel)
{
    transformation->hide([](BaVec3d<double> const &) { return true; });

    EXPECT_FALSE(isDrawn());
    EXPECT_EQ(ends(), "-1,-1 -1,-1 none");
}

TEST_F(ImageLabelDrawing, isWantedForAPointThatNeedsNoConnector)
{
    label->point = ImageLabel::INVALID_CONNECTOR_POINT;
    EXPECT_TRUE(isDrawn());

    label->point.z = 1.0;
    EXPECT_FALSE(isDrawn());
    label->point = ImageLabel::INVALID_POINT;
    EXPECT_FALSE(isDrawn());
}

TEST_F(ImageLabelDrawing, ofAPointThatNeedsNoConnectorIsTheBox)
{
    label->point = ImageLabel::INVALID_CONNECTOR_POINT;
    label->unconnected = true;
    transformation->hide([](BaVec3d<double> const &) { return true; });

    EXPECT_EQ(drawn(), std::string("-- 0\n") +
                           "clip 10,20 90,20 90,80 10,80\n"
                           "unclip\n" +
                           BOX);
}

using ImageLabelConnector = ImageLabelDrawing;

TEST_F(ImageLabelConnector, leadsFromTheOutlineToThePoint)
{
    EXPECT_EQ(ends(), "110,30 30,30 line");
    EXPECT_EQ(tokens.loans, 0);
}

TEST_F(ImageLabelConnector, isNotThereForAHiddenLabelAndForNoPoint)
{
    label->point = ImageLabel::INVALID_POINT;
    EXPECT_EQ(ends(), "-1,-1 -1,-1 none");

    label->point = {10, 5, 0};
    label->setVisible(false);
    EXPECT_EQ(ends(), "-1,-1 -1,-1 none");
}

TEST_F(ImageLabelConnector, isNotThereWithoutPictureOrTransformation)
{
    tokens.isThere = false;
    EXPECT_EQ(ends(), "-1,-1 -1,-1 none");

    tokens.isThere = true;
    tokens.data.setTransformation(nullptr);
    EXPECT_EQ(ends(), "-1,-1 -1,-1 none");
    EXPECT_EQ(tokens.loans, 0);
}

TEST_F(ImageLabelConnector, tellsThePointThatLiesInTheBox)
{
    label->setOrigin({30, 30});
    update();

    EXPECT_EQ(ends(), "-1,-1 30,30 none");
    EXPECT_TRUE(isDrawn());
}

TEST_F(ImageLabelConnector, belongsToItsSourceAlone)
{
    // One that would meet the line just as well.
    MeasuredPoint other;
    other.point = label->point;
    other.setAutoSize(false);
    other.setOrigin({120, 30});
    other.setSize({20, 10});
    other.computeDynamicData(stage, &tokens);
    BaVec2d<double> from;
    BaVec2d<double> to;

    EXPECT_FALSE(other.computeConnectorPoints(*label->getConnectorBegin(), &tokens, &from, &to));
}

TEST_F(ImageLabelConnector, leadsToImagesOnly)
{
    struct Frame : ImageBase
    {
        Frame() : ImageBase(SNAPSHOT_FRAME) { setToken("cam"); }
        Element *copy() const override { return new Frame(*this); }
    } frame;
    MeasuredPoint other;
    other.point = {1, 1, 0};
    other.connect(&frame, "");
    BaVec2d<double> from;
    BaVec2d<double> to;

    EXPECT_FALSE(other.computeConnectorPoints(*other.getConnectorBegin(), &tokens, &from, &to));
    EXPECT_EQ(other.getConnectedImage(), &frame);
}

using ImageLabelHit = ImageLabelDrawing;

TEST_F(ImageLabelHit, isNearTheMark)
{
    EXPECT_TRUE(label->intersectsImageElement(&tokens, {30.5, 30.5}));
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {32, 30}));
    EXPECT_EQ(tokens.loans, 0);
}

TEST_F(ImageLabelHit, turnsWithTheImage)
{
    image->setAngle(RIGHT_ANGLE);
    update();

    EXPECT_TRUE(label->intersectsImageElement(&tokens, {30, 70}));
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {30, 30}));
}

TEST_F(ImageLabelHit, needsAllThatTheMarkNeeds)
{
    label->setVisible(false);
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {30, 30}));
    label->setVisible(true);
    EXPECT_TRUE(label->intersectsImageElement(&tokens, {30, 30}));
    tokens.isThere = false;
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {30, 30}));
    tokens.isThere = true;
    tokens.data.setTransformation(nullptr);
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {30, 30}));
    label->disconnect(image, "");
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {30, 30}));
}

TEST_F(ImageLabelHit, ofTheBoxNeedsTheBoxToBeSeen)
{
    EXPECT_EQ(figure.getElementAt({120, 30}), label);

    label->point = {-10, 5, 0};
    update();
    EXPECT_EQ(figure.getElementAt({120, 30}), nullptr);

    label->point = {10, 5, 0};
    label->setLabelVisible(false);
    update();
    EXPECT_EQ(figure.getElementAt({120, 30}), nullptr);
}

/// The labels of the image and the rectangles in front of and behind them in the tree.
class ImageLabelOrder : public ImageLabelTest
{
protected:
    ImageLabelOrder()
    {
        connectLabel();
        figure.getRoot()->addChild(above);
        figure.getRoot()->addChild(second);
        second->connect(image, "");
    }

    std::vector<Element const *> order() const
    {
        std::vector<Element const *> result;
        figure.computeRenderingOrder(&result);
        return result;
    }

    using Order = std::vector<Element const *>;
    Rectangle *above = new Rectangle;
    MeasuredPoint *second = new MeasuredPoint;
};

TEST_F(ImageLabelOrder, isDirectlyBehindTheImage)
{
    EXPECT_EQ(order(), (Order{image, label, second, above}));
}

TEST_F(ImageLabelOrder, beginsWithTheHighestPriority)
{
    second->priority = ImageLabel::DrawingPriority_t{501};

    EXPECT_EQ(order(), (Order{image, second, label, above}));
}

TEST_F(ImageLabelOrder, knowsLabelsByTheirImageAlone)
{
    second->disconnect(image, "");
    label->setVisible(false);
    EXPECT_EQ(order(), (Order{image, label, above}));

    image->setVisible(false);
    EXPECT_EQ(order(), Order{above});
}

/// A label with a mark of its own in pixels: a line from 0,0 to 10,10.
class ObjectLabelDrawing : public ImageLabelTest
{
protected:
    ObjectLabelDrawing()
    {
        figure.getRoot()->addChild(own);
        own->connect(image, "");
        own->getImageDataObject().addElement(new ImageDataFixedLine({0, 0}, {10, 10}, LineStyle()));
        update();
    }

    ImageDataObjectLabel *own = new ImageDataObjectLabel;
};

TEST_F(ObjectLabelDrawing, isThatOfItsMarksOnThePicture)
{
    Support::RecordingPainter painter;

    EXPECT_TRUE(own->draw(&tokens, &painter, 0));

    EXPECT_EQ(painter.transcript(), "clip 10,20 90,20 90,80 10,80\n"
                                    "line 10,20 30,40 pen 1 full #000000ff sharp\n"
                                    "unclip\n");
}

TEST_F(ObjectLabelDrawing, movesWithTheVisiblePart)
{
    image->setScaling(4.0);
    update();
    image->setInnerOrigin({8, 4});
    Support::RecordingPainter painter;

    own->drawElement(&tokens, &painter, 0);

    // Pixels of 4 mm, and the picture moved by 8,4.
    EXPECT_NE(painter.transcript().find("line 2,16 42,56 "), std::string::npos);
}

TEST_F(ObjectLabelDrawing, hasTheLookOfItsMarksOrElseThatOfTheImage)
{
    own->getImageDataObject().clearElements();
    own->getImageDataObject().addElement(new ImageDataPointMarker({20, 10}));
    Support::RecordingPainter painter;
    auto const drawnColor = [&] {
        painter.clear();
        own->drawElement(&tokens, &painter, 0);
        std::size_t const place = painter.transcript().find('#');
        return painter.transcript().substr(place, 9);
    };
    ImageDataVisualisation ofImage(false);
    ofImage.setLineStyle(LineStyle(1.0, LineStyle::STYLE_FULL, Color(0, 0, 255)));
    image->setVisualisation("", ofImage);
    EXPECT_EQ(drawnColor(), "#0000ffff");

    ImageDataVisualisation ofMarks(false);
    ofMarks.setLineStyle(LineStyle(1.0, LineStyle::STYLE_FULL, Color(0, 255, 0)));
    own->getImageDataObject().setVisualisation(ofMarks);
    EXPECT_EQ(drawnColor(), "#00ff00ff");
}

TEST_F(ObjectLabelDrawing, takesAsManyStepsAsItsMarks)
{
    auto *points = new ImageDataPoints;
    for (unsigned int i = 0; i <= ImageDataPoints::VECTORS_PER_DRAW_STEP; ++i)
        points->addPoint(0, {1, 1, 0}, {0, 0, 0}, 0.0, true, 1);
    own->getImageDataObject().addElement(points);
    Support::RecordingPainter painter;

    EXPECT_FALSE(own->draw(&tokens, &painter, 0));
    EXPECT_TRUE(own->draw(&tokens, &painter, 1));
}

TEST_F(ObjectLabelDrawing, isNeverHitAndLeadsNowhere)
{
    EXPECT_FALSE(own->intersectsImageElement(&tokens, {10, 20}));
    EXPECT_EQ(own->computeObjectPoint(), ImageLabel::INVALID_POINT);
    EXPECT_FALSE(own->isLabelDrawn(&tokens));
}

TEST_F(ObjectLabelDrawing, ofACopyIsTheSame)
{
    std::unique_ptr<Element> const copy(own->copy());
    own->getImageDataObject().clearElements();
    copy->connect(image, "");
    Support::RecordingPainter painter;

    copy->draw(&tokens, &painter, 0);

    EXPECT_NE(painter.transcript().find("line 10,20 30,40 "), std::string::npos);
}

} // namespace
} // namespace Zem::Fig2
