// Image elements: settings, where the picture lies, what an update learns, and when one is due.
#include "image_element_fixture.h"

#include <numbers>

namespace Zem::Fig2 {
namespace {

using Point = BaVec2d<double>;

TEST(Image, beginsWithoutTokenAndBorder)
{
    Image const image;
    EXPECT_EQ(image.getType(), Element::IMAGE);
    EXPECT_EQ(image.getToken(), "");
    EXPECT_FALSE(image.getCoordinateSystem().getVisible());
    EXPECT_EQ(image.getImageConversion(), ImageConversion());
    EXPECT_EQ(image.getOverlayMode(), ImageBase::OVERLAY_BOTH);
    EXPECT_EQ(image.getBorder(), LineStyle::null);
    EXPECT_EQ(image.getImageBackgroundColor(), Color(255, 255, 255));
    EXPECT_FALSE(image.getUseImageBackgroundColor());
    EXPECT_TRUE(image.getVisualisations().empty());
    EXPECT_EQ(image.getVisualisation("any"), ImageDataVisualisation(false));
    EXPECT_EQ(image.getComputedLegend(), Legend2::Legend(uLength));
    EXPECT_EQ(image.getComputedLegendData(), Legend2::Data());
    EXPECT_TRUE(image.hasMaximize());
    EXPECT_TRUE(image.hasLegendData());
    EXPECT_FALSE(image.hasFont());
}

TEST(Image, hasWordsForItsOverlayModes)
{
    EXPECT_EQ(ImageBase::getOverlayModeParameter(ImageBase::OVERLAY_BOTH), "both");
    EXPECT_EQ(ImageBase::getOverlayModeParameter(ImageBase::OVERLAY_IMAGE), "image");
    EXPECT_EQ(ImageBase::getOverlayModeParameter(ImageBase::OVERLAY_ONLY), "overlay");
}

TEST(Image, usesItsTokenAlone)
{
    Image image;
    image.setToken("camera");
    EXPECT_TRUE(image.isTokenUsed("camera"));
    EXPECT_FALSE(image.isTokenUsed("other"));
}

TEST(Image, isStaleAfterEverySetting)
{
    void (*const settings[])(Image &) = {[](Image &image) { image.setToken("a"); },
                                         [](Image &image) { image.setCoordinateSystem(CoordinateSystem()); },
                                         [](Image &image) { image.setImageConversion(ImageConversion()); },
                                         [](Image &image) { image.setOverlayMode(ImageBase::OVERLAY_ONLY); },
                                         [](Image &image) { image.setVisualisation("", ImageDataVisualisation(true)); },
                                         [](Image &image) { image.setImageBackgroundColor(Color()); },
                                         [](Image &image) { image.setUseImageBackgroundColor(true); }};
    Image image;
    for (auto const &set : settings) {
        image.update(StageIdentifier(1), nullptr, nullptr);
        ASSERT_TRUE(image.isValid());
        set(image);
        EXPECT_FALSE(image.isValid());
    }
}

TEST(Image, looksForALookByItsIdThenForTheCommonOne)
{
    ImageDataVisualisation own(false);
    own.setVectorScaling(2);
    ImageDataVisualisation common(false);
    common.setVectorScaling(3);
    Image image;
    image.setVisualisation("part", own);
    EXPECT_EQ(image.getVisualisation("part").getVectorScaling(), 2);
    EXPECT_EQ(image.getVisualisation("other").getVectorScaling(), 1);
    image.setVisualisation("", common);
    EXPECT_EQ(image.getVisualisation("part").getVectorScaling(), 2);
    EXPECT_EQ(image.getVisualisation("other").getVectorScaling(), 3);
    image.setVisualisation("part", common);
    EXPECT_EQ(image.getVisualisation("part").getVectorScaling(), 3);
}

TEST(Image, isCopiedWithItsSettings)
{
    Image image;
    image.setToken("camera");
    image.setOverlayMode(ImageBase::OVERLAY_IMAGE);
    image.setVisualisation("part", ImageDataVisualisation::NONE);
    image.setUseImageBackgroundColor(true);
    std::unique_ptr<Image> const copied(image.copy());
    EXPECT_EQ(copied->getToken(), "camera");
    EXPECT_EQ(copied->getOverlayMode(), ImageBase::OVERLAY_IMAGE);
    EXPECT_TRUE(copied->getVisualisation("part").isNull());
    EXPECT_TRUE(copied->getUseImageBackgroundColor());
}

TEST(Image, isTheLargerTheMoreItHolds)
{
    Image image;
    unsigned int const empty = image.getEstimatedObjectSize();
    image.setVisualisation("abc", ImageDataVisualisation(false));
    EXPECT_EQ(image.getEstimatedObjectSize(), empty + 96 + 6);
    EXPECT_EQ(empty, image.AlignedElement::getEstimatedObjectSize() + 384);
}

TEST_F(ImageElementTest, fitsThePictureIntoItself)
{
    update();
    EXPECT_EQ(image.getScaling(), 2.0);
    EXPECT_EQ(image.computeImageDrawingOrigin(), Point(20, 20));
    EXPECT_EQ(image.computeImageDrawingSize(), Point(80, 60));
    EXPECT_EQ(image.getFigurePoint({0, 0}), Point(20, 20));
    EXPECT_EQ(image.getFigurePoint({10, 5}), Point(40, 30));
    EXPECT_EQ(image.getImagePoint({40, 30}), Point(10, 5));
    EXPECT_EQ(image.getInnerOrigin(), Point(0, 0));
}

TEST_F(ImageElementTest, alignsThePicture)
{
    image.setAlignmentX(ALIGN_END);
    update();
    EXPECT_EQ(image.computeImageDrawingOrigin(), Point(30, 20));
}

TEST_F(ImageElementTest, forgetsTheInnerOriginWhenItFitsThePicture)
{
    image.setInnerOrigin({7, 8});
    update();
    EXPECT_EQ(image.getInnerOrigin(), Point(0, 0));
}

TEST_F(ImageElementTest, showsAPartOfAPictureThatIsTooLarge)
{
    setScaling(4); // 160 x 120 mm
    image.setInnerOrigin({30, 20});
    update();
    EXPECT_EQ(image.computeImageDrawingOrigin(), Point(10, 20));
    EXPECT_EQ(image.computeImageDrawingSize(), Point(100, 60));
    // 10 - 30 + 4 * 10, 20 - 20 + 4 * 10
    EXPECT_EQ(image.getFigurePoint({10, 10}), Point(20, 40));
    EXPECT_EQ(image.getImagePoint({20, 40}), Point(10, 10));
    auto const bounds = image.getInnerOriginBounds();
    EXPECT_EQ(bounds.first, Point(0, 0));
    EXPECT_EQ(bounds.second, Point(60, 60));
}

TEST_F(ImageElementTest, boundsTheInnerOriginByTheRoomWithinTheBorder)
{
    update(); // the picture of 80 x 60 mm fits
    EXPECT_EQ(image.getInnerOriginBounds().second, Point(0, 0));
    setScaling(2);
    image.setSize({50, 100});
    image.setBorder(LineStyle(2.0, LineStyle::STYLE_FULL, Color()));
    update();
    // The width of 80 mm less that between the borders; nothing of the height is hidden.
    EXPECT_EQ(image.getInnerOriginBounds().second, Point(80 - image.getDrawingSize().x, 0));
    EXPECT_LT(image.getDrawingSize().x, 50);
}

TEST_F(ImageElementTest, pullsTheInnerOriginBackToThePicture)
{
    setScaling(4);
    image.setInnerOrigin({70, 20});
    update();
    EXPECT_EQ(image.getInnerOrigin(), Point(60, 20));

    image.setInnerOrigin({-5, 80});
    update();
    EXPECT_EQ(image.getInnerOrigin(), Point(-5, 60));

    image.setScaling(2); // 80 x 60 mm: nothing is hidden
    image.setInnerOrigin({-5, 3});
    update();
    EXPECT_EQ(image.getInnerOrigin(), Point(0, 0));
}

TEST_F(ImageElementTest, keepsTheInnerOriginWithoutAPicture)
{
    setScaling(4);
    image.setInnerOrigin({700, 800});
    tokens.remove("camera");
    update();
    EXPECT_EQ(image.getInnerOrigin(), Point(700, 800));
}

TEST_F(ImageElementTest, takesTheScaleOneWithoutAPicture)
{
    image.setScaling(5);
    data.setImage(nullptr);
    update();
    EXPECT_EQ(image.getScaling(), 1.0);

    image.setScaling(5);
    image.setToken("");
    update();
    EXPECT_EQ(image.getScaling(), 1.0);

    image.setScaling(5);
    image.update(stage, nullptr, nullptr);
    EXPECT_EQ(image.getScaling(), 1.0);

    setScaling(5);
    update();
    EXPECT_EQ(image.getScaling(), 5.0);
}

TEST_F(ImageElementTest, hasNoScaleWithoutRoom)
{
    image.setSize({0, 60});
    image.setInnerOrigin({7, 8});
    update();
    EXPECT_EQ(image.getScaling(), 0.0);
    EXPECT_EQ(image.getInnerOrigin(), Point(0, 0));
    image.setSize({0.1, 60});
    image.setBorder(LineStyle(1.0, LineStyle::STYLE_FULL, Color()));
    update();
    EXPECT_EQ(image.getScaling(), 0.0);
}

TEST_F(ImageElementTest, takesTheSizeOfASnapshotsPage)
{
    auto *figure = new Figure;
    figure->setSize({200, 60});
    tokens.addSnapshot("frozen").setFigure(figure);
    image.setToken("frozen");
    update();
    EXPECT_EQ(image.getScaling(), 0.5);
    EXPECT_EQ(image.getInnerElementSize(), Point(100, 30));
}

TEST_F(ImageElementTest, keepsScaleAndInnerOriginOverAPageWithoutWidthOrHeight)
{
    auto *figure = new Figure;
    tokens.addSnapshot("frozen").setFigure(figure);
    image.setToken("frozen");
    for (BaVec2d<double> const &size : {BaVec2d<double>(0, 30), BaVec2d<double>(40, 0)}) {
        figure->setSize(size);
        image.setAutoScale(true);
        image.setScaling(5);
        image.setInnerOrigin({700, 800});
        update();
        EXPECT_EQ(image.getScaling(), 5.0);
        EXPECT_EQ(image.getInnerOrigin(), Point(700, 800));
    }
}

TEST_F(ImageElementTest, takesTheSizeOfThePictureBeforeThatOfTheSnapshot)
{
    auto *figure = new Figure;
    figure->setSize({200, 60});
    tokens.addSnapshot("camera").setFigure(figure);
    update();
    EXPECT_EQ(image.getScaling(), 2.0);

    data.setImage(nullptr);
    tokens.touch("camera");
    update();
    EXPECT_EQ(image.getScaling(), 0.5);
}

TEST_F(ImageElementTest, coversItsSizeWithoutTheBorder)
{
    image.setBorder(LineStyle(2.0, LineStyle::STYLE_FULL, Color()));
    update();
    std::string const inside = "10,20 110,20 110,80 10,80";
    EXPECT_EQ(Support::text(image.getDragPolygon()), inside);
    EXPECT_EQ(Support::text(image.getCoveredPolygon()), inside);
    EXPECT_EQ(Rect(image.getUpdatePolygon()), Rect(9, 19, 102, 62));
}

TEST_F(ImageElementTest, updatesWhereTheLinesOfItsLabelsBegin)
{
    auto *object = new ImageDataObject("part");
    object->setConnectorPoint({10, 5}); // 40,30 on the page
    data.addObject(object);
    Label label;
    label.setOrigin({40, 230});
    label.setConnectorStyle(LineStyle(4.0, LineStyle::STYLE_FULL, Color()));
    label.connect(&image, "part");
    Label unknown;
    unknown.setOrigin({500, 500});
    unknown.connect(&image, "unknown");
    update();
    // The line comes from 200 mm below and is 4 mm wide.
    Polygon2d const &polygon = image.getUpdatePolygon();
    EXPECT_EQ(Rect(polygon), Rect(10, 20, 100, 210));
    EXPECT_EQ(Support::text(polygon), Support::text(polygon.getConvexHull()));
    EXPECT_TRUE(polygon.isInPolygon({38.01, 229.99}));
    EXPECT_TRUE(polygon.isInPolygon({41.99, 229.99}));
    EXPECT_FALSE(polygon.isInPolygon({37.9, 229.99}));
    EXPECT_EQ(Support::text(image.getDragPolygon()), "10,20 110,20 110,80 10,80");
}

TEST_F(ImageElementTest, updatesTheFullWidthOfASlantingLine)
{
    auto *object = new ImageDataObject("part");
    object->setConnectorPoint({10, 5}); // 40,30 on the page
    data.addObject(object);
    Label label;
    label.setOrigin({340, 430});
    label.setConnectorStyle(LineStyle(10.0, LineStyle::STYLE_FULL, Color()));
    label.connect(&image, "part");
    update();
    // 300 mm to the left and 400 up: the line ends 4 mm to each side and 3 mm up and down.
    std::string const polygon = Support::text(image.getUpdatePolygon());
    EXPECT_NE(polygon.find("344,427"), std::string::npos) << polygon;
    EXPECT_NE(polygon.find("336,433"), std::string::npos) << polygon;

    // Without a way there is no direction, and the line is a point.
    label.setOrigin({40, 30});
    image.invalidate();
    update();
    EXPECT_EQ(Rect(image.getUpdatePolygon()), Rect(10, 20, 100, 60));
    EXPECT_EQ(Support::text(image.getUpdatePolygon()).find("nan"), std::string::npos);
}

TEST_F(ImageElementTest, isDueWhenItsDataHaveChanged)
{
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    tokens.touch("other");
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    tokens.touch("camera");
    EXPECT_FALSE(image.isDataValid(stage, &tokens));
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
}

TEST_F(ImageElementTest, isDueWhenItsDataComeOrGo)
{
    image.setToken("later");
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    tokens.addImage("later");
    EXPECT_FALSE(image.isDataValid(stage, &tokens));
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    tokens.remove("later");
    EXPECT_FALSE(image.isDataValid(stage, &tokens));
    EXPECT_FALSE(image.isDataValid(stage, nullptr));
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
}

TEST_F(ImageElementTest, isDueWhenItLosesItsToken)
{
    update();
    image.setToken("");
    EXPECT_FALSE(image.isDataValid(stage, &tokens));
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
}

TEST_F(ImageElementTest, hasNoDataWithoutATokenWhateverIsLent)
{
    tokens.addImage("").setImage(&picture);
    image.setToken("");
    update();
    EXPECT_EQ(image.getInnerElementSize(), Point(0, 0));
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    tokens.touch("");
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
}

TEST_F(ImageElementTest, followsASnapshotToo)
{
    tokens.addSnapshot("frozen");
    image.setToken("frozen");
    update();
    EXPECT_TRUE(image.isDataValid(stage, &tokens));
    tokens.touch("frozen");
    EXPECT_FALSE(image.isDataValid(stage, &tokens));
}

// The picture of 160 x 120 mm hides 60 x 60 mm, of which 30 x 20 lie before the element.
class ImageDragTest : public ImageElementTest
{
protected:
    ImageDragTest()
    {
        setScaling(4);
        image.setInnerOrigin({30, 20});
        update();
    }
};

TEST_F(ImageDragTest, keepsThePictureAtRestAtEveryCorner)
{
    Point const corners[] = {{10, 20}, {110, 20}, {110, 80}, {10, 80}};
    // 5 mm to the right and 3 mm down at the corner; the picture would move along with the left and upper sides.
    Point const expected[] = {{35, 23}, {35, 20}, {30, 20}, {30, 23}};
    for (int corner = 0; corner < 4; ++corner) {
        image.setOrigin({60, 50});
        image.setSize({100, 60});
        image.setInnerOrigin({30, 20});
        update();
        EXPECT_TRUE(image.dragPointMove(corner, corners[corner] + Point(5, 3)));
        EXPECT_EQ(image.getInnerOrigin(), expected[corner]) << corner;
    }
}

TEST_F(ImageDragTest, leavesAMillimetreOfThePictureHidden)
{
    EXPECT_TRUE(image.dragPointMove(2, {160, 120})); // 150 x 100 mm, of which 10 x 20 are hidden
    EXPECT_EQ(image.getInnerOrigin(), Point(9, 19));
    update();
    EXPECT_TRUE(image.dragPointMove(2, {180, 150})); // nothing is hidden any more
    EXPECT_EQ(image.getInnerOrigin(), Point(0, 0));
}

TEST_F(ImageDragTest, worksInTheAxesOfATurnedElement)
{
    image.setAngle(std::numbers::pi / 2); // counter-clockwise: the element's x axis points upwards
    update();
    Point const corner = image.getDragPolygon()[0];
    EXPECT_TRUE(image.dragPointMove(0, corner + Point(0, -5))); // 5 mm along its x axis
    EXPECT_NEAR(image.getInnerOrigin().x, 35, 1e-9);
    EXPECT_NEAR(image.getInnerOrigin().y, 20, 1e-9);
}

TEST_F(ImageDragTest, measuresTheWayFromTheCornerOfTheLastUpdate)
{
    image.setOrigin({65, 50}); // the upper left corner is at 15,20 now
    EXPECT_TRUE(image.dragPointMove(0, {15, 23}));
    EXPECT_EQ(image.getSize(), Point(100, 57));
    EXPECT_EQ(image.getInnerOrigin(), Point(35, 23));
}

TEST_F(ImageDragTest, scalesThePictureAlong)
{
    image.setAutoScale(true);
    update();
    EXPECT_TRUE(image.dragPointMove(2, {90, 80})); // 80 x 60 mm
    EXPECT_EQ(image.getScaling(), 2.0);
    EXPECT_TRUE(image.dragPointMove(2, {50, 50})); // 40 x 30 mm
    EXPECT_EQ(image.getScaling(), 1.0);
    EXPECT_EQ(image.getInnerOrigin(), Point(0, 0));
}

TEST_F(ImageDragTest, isRefusedForNoCorner)
{
    EXPECT_FALSE(image.dragPointMove(4, {0, 0}));
    EXPECT_FALSE(image.dragPointMove(-1, {0, 0}));
    EXPECT_EQ(image.getInnerOrigin(), Point(30, 20));
    EXPECT_EQ(image.getSize(), Point(100, 60));
}

} // namespace
} // namespace Zem::Fig2
