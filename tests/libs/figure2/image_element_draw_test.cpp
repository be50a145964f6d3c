// How image elements are painted: picture, marks in steps, axes, snapshots, and texts in place of missing data.
#include "image_element_fixture.h"

#include <ZemFig2Rectangle.h>
#include <ZemFig2TranslationInterface.h>

#include <algorithm>

namespace Zem::Fig2 {
namespace {

std::string const BACKGROUND = "polygon 10,20 110,20 110,80 10,80 no pen no fill\n";
std::string const CLIP = "clip 20,20 100,20 100,80 20,80\n";
std::string const UNCLIP = "unclip\n";
// The element is a picture of 40 x 30 pixels of 2 mm; its data were touched once.
std::string const PICTURE = "image 20,20 size 80,60 40x30 from 0,0 scaling 2 id '";
std::string const NORMAL = "' conversion 0 0 255\n";
std::string const AXES = CLIP + UNCLIP; ///< while they are invisible
std::string const FRAME = "polygon 10,20 110,20 110,80 10,80 pen 0.1 full #000000ff sharp no fill\n";
std::string const ERROR_BOX = "polygon 10,20 110,20 110,80 10,80 no pen fill #c8c8c77f\n";

std::string message(std::string const &text)
{
    return "clip 10,20 110,20 110,80 10,80\ntext 11,21 '" + text + "' font Liberation Sans 12 0 #000000ff\nunclip\n";
}

class ImageDrawing : public ImageElementTest
{
protected:
    ImageDrawing() { update(); }

    /// All steps until the element has finished, one line "-- step" in front of each.
    std::string drawnInSteps(Painter::Mode_t mode = 1) const
    {
        std::string result;
        finished = false;
        for (int step = 0; !finished && step < 20; ++step)
            result += "-- " + std::to_string(step) + "\n" + drawn(step, mode);
        return result;
    }

    ImageColor const overlay{20, 15};
};

TEST_F(ImageDrawing, isThePictureWithinItsPartOfTheElement)
{
    EXPECT_EQ(drawn(), BACKGROUND + CLIP + PICTURE + "camera//1/both" + NORMAL + UNCLIP + AXES);
    EXPECT_TRUE(finished);
}

TEST_F(ImageDrawing, isConvertedAndCovered)
{
    ImageConversion conversion;
    conversion.setType(ImageConversion::TYPE_RANGE);
    conversion.setMax(99);
    image.setImageConversion(conversion);
    data.setOverlay(&overlay);
    std::string const covered = "image 20,20 size 80,60 40x30 overlay 20x15 from 0,0 scaling 2 id '";
    EXPECT_EQ(drawn(), BACKGROUND + CLIP + covered + "camera//1/both' conversion 3 0 99\n" + UNCLIP + AXES);

    image.setOverlayMode(ImageBase::OVERLAY_IMAGE);
    EXPECT_EQ(drawn(), BACKGROUND + CLIP + PICTURE + "camera//1/image' conversion 3 0 99\n" + UNCLIP + AXES);

    image.setOverlayMode(ImageBase::OVERLAY_ONLY);
    EXPECT_EQ(drawn(), BACKGROUND + CLIP + "image 20,20 size 80,60 20x15 from 0,0 scaling 2 id 'camera//1/overlay" +
                           NORMAL + UNCLIP + AXES);

    data.setOverlay(nullptr);
    EXPECT_EQ(drawn(), BACKGROUND + CLIP + PICTURE + "camera//1/overlay' conversion 3 0 99\n" + UNCLIP + AXES);
}

TEST_F(ImageDrawing, isCachedUnderTheCounterTheTokenTheFigureAndTheOverlayMode)
{
    Support::RecordingPainter painter;
    painter.pushCacheId("outer");
    image.setToken("%1");
    tokens.addImage("%1").setImage(&picture);
    tokens.touch("%1");
    update();
    image.draw(&tokens, &painter, 0);
    painter.popCacheId();
    EXPECT_NE(painter.transcript().find(" id '%1/outer/2/both' "), std::string::npos);
}

TEST_F(ImageDrawing, beginsAtTheInnerOrigin)
{
    setScaling(4);
    image.setInnerOrigin({30, 20});
    update();
    EXPECT_EQ(drawn(), BACKGROUND + "clip 10,20 110,20 110,80 10,80\n" +
                           "image 10,20 size 100,60 40x30 from 7.5,5 scaling 4 id 'camera//1/both" + NORMAL + UNCLIP +
                           "clip 10,20 110,20 110,80 10,80\n" + UNCLIP);
}

TEST_F(ImageDrawing, hasABackgroundOfItsOwn)
{
    image.setImageBackgroundColor(Color(1, 2, 3));
    image.setUseImageBackgroundColor(true);
    EXPECT_EQ(drawn(), BACKGROUND + "polygon 20,20 100,20 100,80 20,80 no pen fill #010203ff\n" + CLIP + PICTURE +
                           "camera//1/both" + NORMAL + UNCLIP + AXES);
}

TEST_F(ImageDrawing, hasABorderOfItsOwn)
{
    image.setBorder(LineStyle(2.0, LineStyle::STYLE_FULL, Color(1, 2, 3)));
    update();
    std::string const calls = drawn();
    EXPECT_LT(calls.find(" pen 2 full #010203ff"), calls.find("image "));
}

TEST_F(ImageDrawing, turnsWithTheElement)
{
    image.setAngle(0.5);
    update();
    std::string const calls = drawn();
    EXPECT_NE(calls.find(NORMAL.substr(0, NORMAL.size() - 1) + " turned 0.5 about 60,50\n"), std::string::npos);
    EXPECT_NE(calls.find(BACKGROUND.substr(0, BACKGROUND.size() - 1) + " turned 0.5 about 60,50\n"), std::string::npos);
    EXPECT_EQ(calls.find(CLIP), std::string::npos);
    EXPECT_EQ(drawn().find("clip "), calls.find("clip "));
}

TEST_F(ImageDrawing, isATextWithoutAToken)
{
    image.setToken("");
    EXPECT_EQ(drawn(), ERROR_BOX + message("image token not set"));
    EXPECT_TRUE(finished);
}

TEST_F(ImageDrawing, isATextWithoutData)
{
    struct Names : TranslationInterface
    {
        QString getTokenDisplayName(QString const &token) const override { return "the " + token; }
    };
    image.setToken("unknown");
    EXPECT_EQ(drawn(), ERROR_BOX + message("placeholder for image from source: "));
    EXPECT_TRUE(finished);
    Names const names;
    EXPECT_EQ(drawn(), ERROR_BOX + message("placeholder for image from source: the unknown"));
}

TEST_F(ImageDrawing, isATextWithoutAPicture)
{
    data.setImage(nullptr);
    for (Painter::Mode_t mode : {0, 1, 7}) {
        EXPECT_EQ(drawn(0, mode), FRAME + message("image not available"));
        EXPECT_TRUE(finished);
    }
}

TEST_F(ImageDrawing, hasNoRoomForAnOverlayWithoutAPicture)
{
    data.setImage(nullptr);
    data.setOverlay(&overlay);
    image.setOverlayMode(ImageBase::OVERLAY_ONLY);
    update();
    std::string const point = "clip 60,50 60,50 60,50 60,50\n";
    EXPECT_EQ(drawn(), BACKGROUND + point + "image 60,50 size 0,0 20x15 from 0,0 scaling 1 id 'camera//1/overlay" +
                           NORMAL + UNCLIP + point + UNCLIP);
}

TEST_F(ImageDrawing, drawsMarksWithoutAPictureOnlyAllAtOnce)
{
    auto *object = new ImageDataObject("part");
    object->addElement(new ImageDataPointMarker({0, 0}));
    data.addObject(object);
    data.setImage(nullptr);
    tokens.touch("camera");
    update();
    // Without a size the picture is a point in the middle of the element, where a pixel is 1 mm.
    std::string const text = FRAME + message("image not available");
    std::string const pen = " pen 0.1 full #b43838ff sharp\n";
    EXPECT_EQ(drawn(0, 0),
              text + "clip 60,50 60,50 60,50 60,50\nline 80,50 40,50" + pen + "line 60,70 60,30" + pen + UNCLIP);
    EXPECT_EQ(drawn(0, 1), text);
    EXPECT_TRUE(finished);
}

// A marker at the corner of the picture has arms of 20 pixels.
std::string marker(std::string const &colour)
{
    std::string const pen = " pen 0.1 full " + colour + " sharp\n";
    return CLIP + "line 60,20 -20,20" + pen + "line 20,60 20,-20" + pen + UNCLIP;
}

class ImageMarks : public ImageDrawing
{
protected:
    ImageDataObject *addMarker(char const *id)
    {
        auto *object = new ImageDataObject(QString::fromLatin1(id));
        object->addElement(new ImageDataPointMarker({0, 0}));
        data.addObject(object);
        return object;
    }
    static ImageDataVisualisation coloured(Color const &color)
    {
        ImageDataVisualisation look(false);
        look.setLineStyle(LineStyle(0.1, LineStyle::STYLE_FULL, color));
        return look;
    }

    std::string const shown = BACKGROUND + CLIP + PICTURE + "camera//1/both" + NORMAL + UNCLIP;
};

TEST_F(ImageMarks, lieOnThePictureInTheOrderOfTheIds)
{
    addMarker("b")->setVisualisation(coloured(Color(0, 0, 2)));
    addMarker("a");
    image.setVisualisation("a", coloured(Color(0, 0, 1)));
    image.setVisualisation("b", coloured(Color(0, 0, 9)));
    EXPECT_EQ(drawn(), shown + marker("#000001ff") + marker("#000002ff") + AXES);
}

TEST_F(ImageMarks, takeTheLookOfTheElementForNoneOfTheirOwn)
{
    addMarker("a");
    EXPECT_EQ(drawn(), shown + marker("#b43838ff") + AXES);
    image.setVisualisation("", coloured(Color(0, 0, 1)));
    EXPECT_EQ(drawn(), shown + marker("#000001ff") + AXES);
}

TEST_F(ImageMarks, moveWithTheInnerOrigin)
{
    setScaling(4);
    image.setInnerOrigin({30, 20});
    update();
    addMarker("a");
    // 10 - 30, 20 - 20, with arms of 80 mm
    EXPECT_NE(drawn().find("line 60,0 -100,0 "), std::string::npos);
}

TEST_F(ImageMarks, takeNoStepWhereThereAreNone)
{
    for (Painter::Mode_t mode : {0, 1, 7}) {
        EXPECT_EQ(drawn(0, mode), shown + AXES);
        EXPECT_TRUE(finished);
    }
}

TEST_F(ImageMarks, comeInStepsInEveryModeButZero)
{
    addMarker("a");
    for (Painter::Mode_t mode : {-1, 1, 7}) {
        EXPECT_EQ(drawn(0, mode), shown);
        EXPECT_FALSE(finished);
        EXPECT_EQ(drawn(1, mode), marker("#b43838ff"));
        EXPECT_FALSE(finished);
    }
}

TEST_F(ImageMarks, areCountedAnewWhenADrawingBeginsAnew)
{
    addMarker("a");
    drawn(0, 1);
    addMarker("b")->setVisualisation(coloured(Color(0, 0, 2)));
    EXPECT_EQ(drawn(0, 1), shown);
    EXPECT_EQ(drawn(2, 1), marker("#000002ff"));
    EXPECT_FALSE(finished);
}

TEST_F(ImageMarks, comeOneStepAfterTheOther)
{
    addPoints(data, "b", 1200);
    addMarker("a");
    addMarker("c");
    data.addObject(new ImageDataObject("empty"));
    data.setTransformation(new FlatTransformation);

    auto const dots = [](std::string const &calls) {
        std::size_t count = 0;
        for (std::size_t at = calls.find("ellipse"); at != std::string::npos; at = calls.find("ellipse", at + 1))
            ++count;
        return count;
    };
    EXPECT_EQ(drawn(0, 1), shown);
    EXPECT_FALSE(finished);
    EXPECT_EQ(drawn(1, 1), marker("#b43838ff"));
    EXPECT_FALSE(finished);
    std::size_t const expected[] = {500, 500, 200};
    for (int step = 2; step < 5; ++step) {
        EXPECT_EQ(dots(drawn(step, 1)), expected[step - 2]);
        EXPECT_FALSE(finished);
    }
    EXPECT_EQ(drawn(5, 1), marker("#b43838ff"));
    EXPECT_FALSE(finished);
    EXPECT_EQ(drawn(6, 1), AXES);
    EXPECT_TRUE(finished);

    // A step may be asked for out of the row.
    EXPECT_EQ(dots(drawn(4, 1)), 200U);
    EXPECT_EQ(drawn(100, 1), AXES);
    EXPECT_TRUE(finished);
    EXPECT_EQ(dots(drawn(0, 0)), 1200U);
    EXPECT_TRUE(finished);
}

/// Counts how often it is asked for its steps.
class CountedMarker : public ImageDataPointMarker
{
public:
    explicit CountedMarker(int *questions) : questions_(questions) {}
    unsigned int getNumberOfDrawSteps() const override
    {
        ++*questions_;
        return 1;
    }

private:
    int *questions_;
};

TEST_F(ImageMarks, areCountedOnceForAllSteps)
{
    constexpr int OBJECTS = 200;
    int questions = 0;
    for (int i = 0; i < OBJECTS; ++i) {
        auto *object = new ImageDataObject(QString::number(i));
        object->addElement(new CountedMarker(&questions));
        data.addObject(object);
    }
    int steps = 0;
    for (finished = false; !finished; ++steps)
        drawn(steps, 1);
    EXPECT_EQ(steps, OBJECTS + 2);
    EXPECT_EQ(questions, OBJECTS);
}

TEST_F(ImageMarks, thatVanishBetweenTwoStepsAreLeftOut)
{
    addMarker("a");
    addMarker("b");
    drawn(0, 1);
    data.removeObject("a");
    EXPECT_EQ(drawn(1, 1), "");
    EXPECT_FALSE(finished);
    EXPECT_EQ(drawn(2, 1), marker("#b43838ff"));
    EXPECT_EQ(drawn(3, 1), AXES);
    EXPECT_TRUE(finished);
}

TEST_F(ImageMarks, takeTheirColoursFromTheComputedScale)
{
    Legend2::Legend legend(uLength);
    legend.setUseExtremaColors(true);
    legend.setMaxColor(Color(9, 9, 9));
    Legend2::Data scale;
    scale.setDynamicMaximum(4);
    data.setLegendData(legend, scale);
    data.setTransformation(new FlatTransformation);
    auto *points = new ImageDataPoints;
    points->addPoint(1, {0, 0, 0}, {0, 0, 0}, 5, true, -1);
    auto *object = new ImageDataObject("part");
    object->addElement(points);
    data.addObject(object);
    tokens.touch("camera");
    update();
    EXPECT_NE(drawn().find("ellipse 20,20 radii 0.5,0.5 angle 0 no pen fill #090909ff\n"), std::string::npos);
}

class ImageAxes : public ImageMarks
{
protected:
    ImageAxes()
    {
        CoordinateSystem system;
        system.setVisible(true);
        system.setTextVisible(false);
        system.setOrigin({5, 5, 0});
        system.setLength(10);
        image.setCoordinateSystem(system);
        data.setTransformation(new FlatTransformation);
        addMarker("a");
    }
    static std::size_t arrows(std::string const &calls)
    {
        std::size_t count = 0;
        for (std::string const colour : {"#d62728ff", "#2ca02cff", "#1f77b4ff"})
            count += calls.find("no pen fill " + colour) != std::string::npos ? 1 : 0;
        return count;
    }
};

TEST_F(ImageAxes, comeLast)
{
    std::string const calls = drawn();
    EXPECT_EQ(arrows(calls), 3U);
    EXPECT_LT(calls.find("#b43838ff"), calls.find("#d62728ff"));
    // The x axis: from the pixel 5,5 over 10 pixels of 2 mm, less 0.95 of the head of 2.5 mm.
    EXPECT_NE(calls.find(CLIP + "line 30,30 "), std::string::npos);
    EXPECT_NE(calls.find("line 30,30 47.625,30 pen 0.5 full #d62728ff sharp\n"), std::string::npos);

    EXPECT_EQ(arrows(drawn(0, 1)), 0U);
    EXPECT_EQ(arrows(drawn(1, 1)), 0U);
    EXPECT_EQ(arrows(drawn(2, 1)), 3U);
}

TEST_F(ImageAxes, moveWithTheInnerOrigin)
{
    setScaling(4);
    image.setInnerOrigin({30, 20});
    update();
    // The pixel 5,5 is at 10 - 30 + 20, 20 - 20 + 20.
    EXPECT_NE(drawn().find("clip 10,20 110,20 110,80 10,80\nline 0,20 "), std::string::npos);
}

TEST_F(ImageAxes, areLeftOutForDataWithoutASpace)
{
    data.setHasCoordinateSystem(false);
    EXPECT_EQ(arrows(drawn()), 0U);
}

TEST_F(ImageAxes, areLeftOutWithoutAPicture)
{
    data.setImage(nullptr);
    EXPECT_EQ(arrows(drawn()), 0U);
}

// Snapshots.

/// Takes three steps, and says so.
class SlowRectangle : public Rectangle
{
public:
    explicit SlowRectangle(int *drawings) : drawings_(drawings) {}
    bool draw(FigureTokenInterface const *, Painter *, int step) const override
    {
        ++*drawings_;
        return step >= 2;
    }

private:
    int *drawings_;
};

/// The page of 200 x 60 mm is shown at half its size in the middle of the element, from 10,35 to 110,65.
class ImageSnapshot : public ImageDrawing
{
protected:
    ImageSnapshot()
    {
        figure->setSize({200, 60});
        show(&inner);
        image.setToken("frozen");
        update();
    }
    /// Has the figure updated once more, with values of the test's own in place of frozen ones.
    void show(FigureTokenInterface const *values)
    {
        snapshot.setFigure(figure);
        figure->setTokenInterface(values);
    }
    Rectangle *addRectangle()
    {
        auto *rectangle = new Rectangle;
        rectangle->setOrigin({20, 10});
        rectangle->setSize({10, 10});
        rectangle->setBorder(LineStyle::null);
        rectangle->setBackground(FillStyle(Color(1, 2, 3)));
        figure->getRoot()->addChild(rectangle);
        return rectangle;
    }
    /// What is drawn of the snapshot within its frame.
    std::string nested(int step = 0, Painter::Mode_t mode = 0) const
    {
        std::string const calls = drawn(step, mode);
        std::size_t const begin = calls.find("nested\n");
        std::size_t const end = calls.find("not nested\n");
        return begin == std::string::npos ? "nothing nested" : calls.substr(begin + 7, end - begin - 7);
    }

    ImageTokens inner;
    Figure *figure = new Figure;
    SnapshotData &snapshot = tokens.addSnapshot("frozen");
};

std::string const SNAPSHOT_CLIP = "clip 10,35 110,35 110,65 10,65\n";

TEST_F(ImageSnapshot, isDrawnNested)
{
    addRectangle();
    EXPECT_EQ(drawn(), BACKGROUND + SNAPSHOT_CLIP + "transform 10,35 scaling 0.5\nnested\n" +
                           "polygon 15,5 25,5 25,15 15,15 no pen fill #010203ff\n" +
                           "not nested\nuntransform\nunclip\n");
    EXPECT_TRUE(finished);
}

TEST_F(ImageSnapshot, hasTheBackgroundOfAPictureAndTheBorderOnTop)
{
    image.setUseImageBackgroundColor(true);
    image.setBackground(FillStyle(Color(7, 7, 7)));
    image.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color(8, 8, 8)));
    image.setAlignmentY(ALIGN_BEGIN);
    setScaling(0.25); // 50 x 15 mm within 98 x 58
    update();
    EXPECT_EQ(drawn(), std::string("polygon 10,20 110,20 110,80 10,80 no pen fill #070707ff\n") +
                           "polygon 35,21 85,21 85,36 35,36 no pen fill #ffffffff\n" +
                           "clip 35,21 85,21 85,36 35,36\ntransform 35,21 scaling 0.25\nnested\n" +
                           "not nested\nuntransform\nunclip\n" +
                           "polygon 10,20 110,20 110,80 10,80 pen 2 full #080808ff sharp no fill\n");
}

TEST_F(ImageSnapshot, ofALargePageBeginsAtTheInnerOrigin)
{
    setScaling(1);
    image.setInnerOrigin({30, 0});
    update();
    EXPECT_EQ(drawn(), BACKGROUND + "clip 10,20 110,20 110,80 10,80\ntransform -20,20 scaling 1\nnested\n" +
                           "not nested\nuntransform\nunclip\n");
}

TEST_F(ImageSnapshot, showsVisibleElementsWithTheTokensOfTheirFigure)
{
    inner.addImage("inside").setImage(&picture);
    auto *shown = new Image;
    shown->setToken("inside");
    shown->setOrigin({20, 10});
    shown->setSize({40, 30});
    figure->getRoot()->addChild(shown);
    addRectangle()->setVisible(false);
    show(&inner);
    std::string const calls = nested();
    EXPECT_NE(calls.find("image 0,-5 size 40,30 40x30 from 0,0 scaling 1 id 'inside/1/frozen/1/both' "),
              std::string::npos)
        << calls;
    EXPECT_EQ(calls.find("#010203ff"), std::string::npos);
}

TEST_F(ImageSnapshot, showsSomethingOfEachElementFirst)
{
    int drawings = 0;
    figure->getRoot()->addChild(new SlowRectangle(&drawings));
    addRectangle();
    EXPECT_NE(nested(0, 1).find("#010203ff"), std::string::npos);
    EXPECT_FALSE(finished);
    EXPECT_EQ(drawings, 1);
    nested(1, 1);
    EXPECT_TRUE(finished);
    EXPECT_EQ(drawings, 4);
    nested(0, 0);
    EXPECT_TRUE(finished);
    EXPECT_EQ(drawings, 7);
    nested(0, 2);
    EXPECT_TRUE(finished);
    EXPECT_EQ(drawings, 10);
}

TEST_F(ImageSnapshot, hasItsBackgroundInTheFirstStepOnly)
{
    EXPECT_EQ(drawn(1, 1), SNAPSHOT_CLIP + "transform 10,35 scaling 0.5\nnested\nnot nested\nuntransform\nunclip\n");
}

TEST_F(ImageSnapshot, isATextWithoutAFigure)
{
    snapshot.setFigure(nullptr);
    EXPECT_EQ(drawn(), BACKGROUND + FRAME + message("snapshot not available"));
    EXPECT_TRUE(finished);
    EXPECT_EQ(drawn(1, 1), FRAME + message("snapshot not available"));
}

TEST_F(ImageSnapshot, ofItselfEnds)
{
    auto *own = new Image;
    own->setToken("frozen");
    own->setOrigin({20, 10});
    own->setSize({40, 30});
    figure->getRoot()->addChild(own);
    show(&tokens);
    std::string const calls = drawn();
    EXPECT_TRUE(finished);
    // Once in the element of the page, and once in the one within.
    std::size_t const first = calls.find("transform ");
    std::size_t const second = calls.find("transform ", calls.find("\nnested\n", first));
    EXPECT_NE(second, std::string::npos);
    EXPECT_EQ(calls.find("\nnested\n", second), calls.rfind("\nnested\n"));
    EXPECT_EQ(drawn(), calls);
}

TEST_F(ImageSnapshot, ofATokenWithAPictureIsDrawnOverIt)
{
    auto *page = new Figure;
    tokens.addSnapshot("camera").setFigure(page);
    page->setTokenInterface(&inner);
    int drawings = 0;
    page->getRoot()->addChild(new SlowRectangle(&drawings));
    image.setToken("camera");
    update();
    std::string const calls = drawn(0, 1);
    EXPECT_LT(calls.find("image 20,20 "), calls.find("transform "));
    EXPECT_EQ(drawings, 1);
    EXPECT_FALSE(finished); // the picture has finished, the snapshot has not
}

TEST_F(ImageSnapshot, leavesThePainterAsItWasWhenItFails)
{
    class FailingRectangle : public Rectangle
    {
        bool draw(FigureTokenInterface const *, Painter *, int) const override
        {
            throw ProgError("here", "fig_test", 1, "failed");
        }
    };
    figure->getRoot()->addChild(new FailingRectangle);
    Support::RecordingPainter painter;
    EXPECT_EQ(Support::progError([&] { image.draw(&tokens, &painter, 0); }), "fig_test: failed");
    EXPECT_EQ(painter.getStackedCacheId(), "");
    EXPECT_EQ(painter.calls().back(), "unclip");
}

/// A label 100 mm to the right of an image from 0,0 to 40,30 in the snapshot.
class SnapshotConnectors : public ImageSnapshot
{
protected:
    SnapshotConnectors()
    {
        inside->setToken("inside");
        inside->setOrigin({20, 15});
        inside->setSize({40, 30});
        label->setAutoSize(false);
        label->setOrigin({140, 15});
        label->setSize({10, 10});
        figure->getRoot()->addChild(inside);
        figure->getRoot()->addChild(label);
    }
    /// Whether the line to the fixed point is drawn behind the image.
    bool leadsTo(BaVec2d<double> const &point)
    {
        label->setConnectorPoint(point);
        show(&inner);
        snapshot.getFigure()->update(stage, true);
        std::string const calls = nested();
        std::size_t const line = calls.find("ellipse " + Support::text(point) + " radii 1,1 ");
        return line != std::string::npos && line > calls.find("placeholder");
    }

    Image *inside = new Image;
    Label *label = new Label;
};

TEST_F(SnapshotConnectors, areDrawnWhenTheyCrossTheOutlineOfAnImage)
{
    EXPECT_TRUE(leadsTo({20, 15}));
    EXPECT_TRUE(leadsTo({-20, 15}));
    EXPECT_FALSE(leadsTo({60, 15}));
    EXPECT_FALSE(leadsTo({20, 100}));
}

TEST_F(SnapshotConnectors, areDrawnWhenTheLabelStandsOnTheImage)
{
    label->setOrigin({20, 15});
    EXPECT_TRUE(leadsTo({35, 15}));
    label->setOrigin({0, 0});
    EXPECT_TRUE(leadsTo({-30, -30}));
    label->setOrigin({33, 23}); // near a corner, with a line that stays on the image
    EXPECT_TRUE(leadsTo({25, 15}));
}

TEST_F(SnapshotConnectors, areCollectedFromLabelsWithAFixedPoint)
{
    auto *without = new Label;
    figure->getRoot()->addChild(without);
    label->setConnectorPoint({5, 5});
    std::vector<Label const *> labels;
    ImageBase::collectLabelsWithConnectors(figure, &labels);
    EXPECT_EQ(labels, std::vector<Label const *>{label});
    Support::RecordingPainter painter;
    EXPECT_FALSE(ImageBase::drawLabelConnectors(&painter, inside, {}));
}

} // namespace
} // namespace Zem::Fig2
