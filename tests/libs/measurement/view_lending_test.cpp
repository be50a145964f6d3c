#include "view_support.h"

#include <ZemColorMap.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2Transformation.h>
#include <ZemLegendHandler.h>
#include <ZemTokenTools.h>

using namespace Zem;
using namespace Zem::Measurement;

namespace {

/// Borrows an image for the length of a test.
class Loan
{
public:
    Loan(ProjectTokenInterface const &tokens, char const *name)
        : tokens_(tokens), name_(QString::fromLatin1(name)), data_(tokens.getImage(name_))
    {
    }
    ~Loan()
    {
        if (data_) {
            tokens_.releaseImage(name_);
        }
    }
    Fig2::ImageData const *operator->() const { return data_; }
    explicit operator bool() const { return data_ != nullptr; }

private:
    ProjectTokenInterface const &tokens_;
    QString name_;
    Fig2::ImageData const *data_;
};

class ViewLendingTest : public ViewProjectTest
{
protected:
    ViewLendingTest() { tokens.setCurrentStage(StageIdentifier(1)); }
    ~ViewLendingTest() override { Legend2::ColorMap::setGlobalLegend(Legend2::Legend(nullptr), Legend2::Data()); }

    unsigned int counter(char const *name) const { return tokens.getModifiedCounter(QString::fromLatin1(name)); }
    std::string value(char const *name, unsigned int stage = 1) const
    {
        Value const value =
            tokens.getValue(QString::fromLatin1(name), IndexIdentifier::NO_INDEX, StageIdentifier(stage));
        if (value == Value::UNKNOWN) {
            return "unknown";
        }
        return value == Value::INVALID ? "invalid" : value.toString(QStringLiteral("[].4"), nullptr).toStdString();
    }
};

int grey(Loan const &image)
{
    return static_cast<Image8 const *>(image->getImage())->getRow(0)[0];
}

Fig2::ImageDataPoints const &pointsOf(Loan const &image, char const *set = "field")
{
    return dynamic_cast<Fig2::ImageDataPoints const &>(**image->getObject(QString::fromLatin1(set))->getElementBegin());
}

} // namespace

TEST_F(ViewLendingTest, lendsThePictureOfTheCurrentStage)
{
    importPicture(1);
    importPicture(2);
    EXPECT_EQ(grey(Loan(tokens, "camera")), 100);
    tokens.setCurrentStage(StageIdentifier(2));
    EXPECT_EQ(grey(Loan(tokens, "camera")), 101);
    EXPECT_EQ(grey(Loan(tokens, "camera.1")), 100);
}

TEST_F(ViewLendingTest, lendsNothingUnderAnotherName)
{
    importPicture(1);
    EXPECT_FALSE(Loan(tokens, "other"));
    EXPECT_FALSE(Loan(tokens, "camera.3"));
    EXPECT_FALSE(Loan(tokens, "camera.x"));
    EXPECT_EQ(counter("other"), 0u);
    tokens.setCurrentStage(StageIdentifier::NO_STAGE);
    EXPECT_FALSE(Loan(tokens, "camera"));
    EXPECT_THROW(tokens.releaseImage(QStringLiteral("camera")), ProgError);
}

TEST_F(ViewLendingTest, lendsDataWithoutAPictureAtAStageThatHasNone)
{
    importPicture(2);
    Loan const image(tokens, "camera");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->getImage(), nullptr);
}

TEST_F(ViewLendingTest, showsAViewWithoutPicturesOnABlankOne)
{
    project.setCamera(QStringLiteral("camera"), CameraModel::plane(8, 6, 1.0, {0.0, 0.0}, false));
    importSquare();
    Loan const image(tokens, "camera");
    ASSERT_TRUE(image->getImage());
    EXPECT_EQ(image->getImage()->getWidth(), 8u);
    EXPECT_EQ(grey(image), 255);
}

TEST_F(ViewLendingTest, movesItsCounterWithWhatItShows)
{
    importPicture(1);
    importPicture(2);
    unsigned int const first = counter("camera");
    EXPECT_NE(first, 0u);
    EXPECT_EQ(counter("camera"), first);
    tokens.setCurrentStage(StageIdentifier(2));
    unsigned int const second = counter("camera");
    EXPECT_NE(second, first);
    importSquare();
    unsigned int const third = counter("camera");
    EXPECT_NE(third, second);
    Legend2::Legend legend(nullptr);
    legend.setColorMode(Legend2::COLOR_MODE_LOGARITHMIC);
    Legend2::ColorMap::setGlobalLegend(legend, Legend2::Data());
    EXPECT_NE(counter("camera"), third);
}

TEST_F(ViewLendingTest, keepsWhatIsLentWhileTheProjectChanges)
{
    importPicture(1);
    Loan const before(tokens, "camera");
    PictureOptions options;
    Image8 const other(40, 30);
    ASSERT_TRUE(other.saveImage(path("other.png"), nullptr));
    project.importPicture(path("other.png"), options);
    Loan const after(tokens, "camera");
    EXPECT_EQ(grey(before), 100);
    EXPECT_EQ(grey(after), 0);
}

TEST_F(ViewLendingTest, keepsAllStatesUntilTheLastLoanIsOver)
{
    QString const name = QStringLiteral("camera");
    importPicture(1);
    Fig2::ImageData const *const first = tokens.getImage(name);
    Image8 other(40, 30);
    std::fill_n(other.getRow(0), 40, std::uint8_t(7));
    ASSERT_TRUE(other.saveImage(path("other.png"), nullptr));
    project.importPicture(path("other.png"), {});
    Fig2::ImageData const *const second = tokens.getImage(name);
    EXPECT_NE(first, second);
    tokens.releaseImage(name); // the first loan, or the second: nobody says
    importPicture(1);
    EXPECT_NE(counter("camera"), 0u);
    EXPECT_EQ(static_cast<Image8 const *>(first->getImage())->getRow(0)[0], 100);
    EXPECT_EQ(static_cast<Image8 const *>(second->getImage())->getRow(0)[0], 7);
    tokens.releaseImage(name);
    EXPECT_THROW(tokens.releaseImage(name), ProgError);
}

TEST_F(ViewLendingTest, standsStillWhenTheSamePointsComeAgain)
{
    importPicture(1);
    importSquare();
    unsigned int const image = counter("camera");
    unsigned int const statistic = counter("field.s.max");
    std::int64_t const revision = project.revision();
    importSquare();
    EXPECT_EQ(counter("camera"), image);
    EXPECT_EQ(counter("field.s.max"), statistic);
    EXPECT_EQ(project.revision(), revision);
    PointOptions options;
    options.moved = true;
    importSquare(options);
    EXPECT_NE(counter("camera"), image);
    EXPECT_NE(counter("field.s.max"), statistic);
}

TEST_F(ViewLendingTest, movesTheCounterOfTheViewThatPointsLeave)
{
    importPicture(1);
    importSquare();
    unsigned int const before = counter("camera");
    ASSERT_TRUE(Loan(tokens, "camera")->getObject(QStringLiteral("field")));
    PointOptions options;
    options.view = QStringLiteral("other");
    importSquare(options);
    EXPECT_NE(counter("camera"), before);
    EXPECT_FALSE(Loan(tokens, "camera")->getObject(QStringLiteral("field")));
    EXPECT_TRUE(Loan(tokens, "other")->getObject(QStringLiteral("field")));
}

TEST_F(ViewLendingTest, showsThePointsOfTheStage)
{
    importPicture(1);
    importSquare();
    Loan const image(tokens, "camera");

    Fig2::ImageDataPoints const &points = pointsOf(image);
    ASSERT_EQ(points.getNumberOfPoints(), 4u);
    BaVec3d<double> direction;
    points.computeDirection(Fig2::ImageDataVisualisation(false), 2, Fig2::ImageDataPoints::COMBINED, &direction);
    EXPECT_EQ(direction, (BaVec3d<double>{3.0, 4.0, 0.0}));
    BaVec2d<double> start;
    BaVec2d<double> end;
    points.computeImagePoints({0.0, 0.0}, 1.0, Fig2::ImageDataVisualisation(false), image->getTransformation(), 2,
                              Fig2::ImageDataPoints::COMBINED, &start, &end, &direction);
    EXPECT_NEAR(start.x, 10.0, 1e-8);
    EXPECT_NEAR(end.y, 29.0, 1e-8);
    // All four are equally far from the middle, (20, 15).
    EXPECT_NEAR((image->getObject(QStringLiteral("field"))->getConnectorPoint() - BaVec2d<double>{20.0, 15.0}).length(),
                std::sqrt(200.0), 1e-6);
}

TEST_F(ViewLendingTest, showsMovedPointsWhereTheyWent)
{
    importPicture(1);
    PointOptions options;
    options.moved = true;
    importSquare(options);
    Loan const image(tokens, "camera");

    BaVec2d<double> start;
    BaVec2d<double> end;
    BaVec3d<double> direction;
    pointsOf(image).computeImagePoints({0.0, 0.0}, 1.0, Fig2::ImageDataVisualisation(false), image->getTransformation(),
                                       2, Fig2::ImageDataPoints::COMBINED, &start, &end, &direction);
    EXPECT_NEAR(start.x, 13.0, 1e-8);
    EXPECT_NEAR(start.y, 29.0, 1e-8);
}

TEST_F(ViewLendingTest, scalesItsColorsForAllStages)
{
    importPicture(1);
    importSquare();
    PointOptions options = atStage(2);
    options.columns.value = QStringLiteral("s");
    importPoints("x,y,dx,dy,s\n1,1,0,0,-7\n2,2,0,0,5\n", options);
    Loan const image(tokens, "camera");

    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    Legend2::HistogramData histogram;
    ASSERT_TRUE(image->getLegendData(&legend, &data, &histogram));
    EXPECT_EQ(data.getDynamicMinimum(), -7.0);
    EXPECT_EQ(data.getDynamicMaximum(), 5.0);
    EXPECT_NEAR(data.getAverage(), (0 + 1 + 2 + 3 - 7 + 5) / 6.0, 1e-12);
    EXPECT_TRUE(histogram.isValid());
    // Of this stage alone: the ticks are 2 apart, so 0 and 1 share an interval, and 2 and 3.
    EXPECT_EQ(histogram.getMaxCount(), 2u);
}

TEST_F(ViewLendingTest, connectsLabelsToAPointThatIsShown)
{
    importPicture(1);
    PointOptions options;
    options.columns.value = QStringLiteral("s");
    importPoints("x,y,s\n10,10,1\n11,10,\n12,10,2\n", options);
    BaVec2d<double> const point = Loan(tokens, "camera")->getObject(QStringLiteral("field"))->getConnectorPoint();
    EXPECT_NEAR(std::abs(point.x - 11.0), 1.0, 1e-6); // the middle, (11, 10), is hidden
}

TEST_F(ViewLendingTest, scalesItsColorsForTheFirstSetThatHasValues)
{
    importPicture(1);
    PointOptions options;
    options.set = QStringLiteral("a");
    importPoints("x,y\n1,1\n", options);
    options.set = QStringLiteral("b");
    importPoints("x,y,dx [m/s]\n1,1,3\n", options);
    options.set = QStringLiteral("c");
    importPoints("x,y,dx\n1,1,9\n2,2,8\n", options);
    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    ASSERT_TRUE(Loan(tokens, "camera")->getLegendData(&legend, &data));
    EXPECT_EQ(data.getDynamicMaximum(), 3.0);
    EXPECT_EQ(legend.getUnit(), uVelocity);
}

TEST_F(ViewLendingTest, scalesItsColorsAnewWhenPointsAreReplaced)
{
    importPicture(1);
    importPoints("x,y,dx,dy\n1,1,3,4\n2,2,0,1\n");
    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    ASSERT_TRUE(Loan(tokens, "camera")->getLegendData(&legend, &data));
    importPoints("x,y,dx,dy\n1,1,6,8\n2,2,0,1\n");
    ASSERT_TRUE(Loan(tokens, "camera")->getLegendData(&legend, &data));
    EXPECT_EQ(data.getDynamicMaximum(), 10.0);
}

TEST_F(ViewLendingTest, prefersAnOverlayToPainting)
{
    importPicture(1);
    ImageColor overlay(40, 30);
    overlay.setHasAlphaChannel(true);
    overlay.setPixel(20, 15, Color(1, 2, 3, 4));
    ASSERT_TRUE(overlay.saveImage(path("overlay.png"), nullptr));
    PictureOptions picture;
    picture.kind = PictureKind_t::OVERLAY;
    project.importPicture(path("overlay.png"), picture);
    PointOptions options;
    options.painted = true;
    importSquare(options);
    EXPECT_EQ(Loan(tokens, "camera")->getOverlay()->getPixel(20, 15), Color(1, 2, 3, 4));
}

TEST_F(ViewLendingTest, tellsOfAColumnThatHasNotTheRowsOfTheOthers)
{
    importPoints("x,y,s\n1,2,3\n4,5,6\n");
    project.importSeries(parse("a\n1\n"), {QStringLiteral("short"), {}});
    EXPECT_EQ(value("field.x.max"), "4.0000"); // what is known of the series is from here on
    executeRaw(path(), "UPDATE series SET name = 'away' WHERE name = 'field.1.s'");
    executeRaw(path(), "UPDATE series SET name = 'field.1.s' WHERE name = 'short.a'");
    EXPECT_THAT(errorOf([&] { value("field.s.max"); }),
                testing::HasSubstr("the columns of the points 'field' have not the same rows"));
}

TEST_F(ViewLendingTest, scalesLengthsWithoutAColumnOfValues)
{
    importPicture(1);
    importPoints("x,y,dx,dy\n1,1,3,4\n2,2,0,1\n");
    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    ASSERT_TRUE(Loan(tokens, "camera")->getLegendData(&legend, &data));
    EXPECT_EQ(data.getDynamicMinimum(), 1.0);
    EXPECT_EQ(data.getDynamicMaximum(), 5.0);
}

TEST_F(ViewLendingTest, paintsValuesBetweenThePoints)
{
    importPicture(1);
    PointOptions options;
    options.painted = true;
    importSquare(options);
    Loan const image(tokens, "camera");

    ImageColor const *const overlay = image->getOverlay();
    ASSERT_TRUE(overlay);
    EXPECT_TRUE(overlay->hasAlphaChannel());
    EXPECT_EQ(overlay->getPixel(9, 15).getAlpha(), 0);
    EXPECT_EQ(overlay->getPixel(10, 15).getAlpha(), 160);
    EXPECT_EQ(overlay->getPixel(29, 24).getAlpha(), 160);
    EXPECT_EQ(overlay->getPixel(30, 15).getAlpha(), 0);
    // The corners hold the plane s = (x - 10) / 20 + (y - 5) / 10; pixels have their centres half a pixel further.
    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    image->getLegendData(&legend, &data);
    Legend2::LegendHandler const colors(&legend, &data);
    Color const expected = colors.getColor((12.5 - 10.0) / 20.0 + (20.5 - 5.0) / 10.0, Color());
    Color const painted = overlay->getPixel(12, 20);
    EXPECT_NEAR(painted.getRed(), expected.getRed(), 2);
    EXPECT_NEAR(painted.getGreen(), expected.getGreen(), 2);
    EXPECT_NEAR(painted.getBlue(), expected.getBlue(), 2);
}

TEST_F(ViewLendingTest, paintsCellsWhereTheirCornersWent)
{
    importPicture(1);
    PointOptions options;
    options.painted = true;
    options.moved = true;
    importPoints("x,y,dx\n10,5,0\n30,5,0\n10,25,0\n30,25,-10\n", options); // the last corner goes to (20, 25)
    Loan const image(tokens, "camera");
    EXPECT_EQ(image->getOverlay()->getPixel(20, 15).getAlpha(), 160);
    EXPECT_EQ(image->getOverlay()->getPixel(28, 6).getAlpha(), 160);
    EXPECT_EQ(image->getOverlay()->getPixel(28, 20).getAlpha(), 0);
}

TEST_F(ViewLendingTest, paintsNothingOnWhatIsNoGrid)
{
    PointOptions options;
    options.painted = true;
    EXPECT_THAT(errorOf([&] {
                    importPoints("x,y,u,v\n1,1,0,0\n2,2,0,0\n3,3.5,1,1\n4,4.1,1,1\n5,0.3,1,1\n6,0.7,1,1\n"
                                 "7,1.7,1,1\n8,8.8,1,1\n9,9.9,1,1\n10,3.1,1,1\n",
                                 options);
                }),
                testing::HasSubstr("lie on no grid"));
    EXPECT_TRUE(project.pointSets().empty());
}

TEST_F(ViewLendingTest, leavesCellsWithoutAValueOpen)
{
    importPicture(1);
    PointOptions options;
    options.painted = true;
    options.columns.value = QStringLiteral("s");
    importPoints("x,y,s\n0,0,1\n10,0,2\n20,0,3\n0,10,1\n10,10,2\n20,10,\n", options);
    Loan const image(tokens, "camera");
    EXPECT_EQ(image->getOverlay()->getPixel(5, 5).getAlpha(), 160);
    EXPECT_EQ(image->getOverlay()->getPixel(15, 5).getAlpha(), 0);
}

TEST_F(ViewLendingTest, tellsStatisticsOfPoints)
{
    importSquare();
    EXPECT_EQ(value("field.s.count"), "4.0000");
    EXPECT_EQ(value("field.s.min"), "0.0000");
    EXPECT_EQ(value("field.s.max"), "3.0000");
    EXPECT_EQ(value("field.s.mean"), "1.5000");
    EXPECT_EQ(value("field.s.sigma"), "1.1180"); // sqrt(5) / 2
    EXPECT_EQ(value("field.length.max"), "5.0000");
    EXPECT_EQ(value("field.s.max", 2), "invalid");
    EXPECT_EQ(value("field.t.max"), "unknown");
    EXPECT_EQ(value("field.s.most"), "unknown");
    EXPECT_NE(counter("field.s.max"), 0u);
}

TEST_F(ViewLendingTest, tellsNothingOfAColumnThatTheStageDoesNotHave)
{
    importPoints("x,y,dx,dy,a\n1,1,3,4,5\n", atStage(1));
    importPoints("x,y,dx,dy,b\n1,1,6,8,7\n", atStage(2));
    EXPECT_EQ(value("field.a.max", 1), "5.0000");
    EXPECT_EQ(value("field.a.max", 2), "invalid");
    EXPECT_EQ(value("field.a.count", 2), "0.0000");
    EXPECT_EQ(value("field.b.max", 1), "invalid");
    EXPECT_EQ(value("field.b.max", 2), "7.0000");
    EXPECT_EQ(value("field.length.max", 2), "10.0000");
}

TEST_F(ViewLendingTest, prefersAColumnOfTheNameOfTheLengths)
{
    importPicture(1);
    importPoints("x,y,dx,dy,length\n1,1,3,4,70\n2,2,0,1,80\n");
    EXPECT_EQ(value("field.length.max"), "80.0000");
    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    ASSERT_TRUE(Loan(tokens, "camera")->getLegendData(&legend, &data));
    EXPECT_EQ(data.getDynamicMaximum(), 5.0); // the vectors are coloured by their lengths
}

TEST_F(ViewLendingTest, givesLengthsTheUnitOfTheVectors)
{
    importPoints("x [mm],y [mm],dz [m/s]\n1,1,2\n");
    std::vector<TokenInfo> infos;
    tokens.getTokens(&infos);
    auto const found = std::find_if(infos.begin(), infos.end(), [](TokenInfo const &info) {
        return info.getName() == QStringLiteral("field.length.max");
    });
    ASSERT_NE(found, infos.end());
    EXPECT_EQ(found->getType(), TokenTools::getTokenType(uVelocity));
    Value const value = tokens.getValue(found->getName(), IndexIdentifier::NO_INDEX, StageIdentifier(1));
    EXPECT_EQ(value.getUnitData().getUnitName(), QStringLiteral("m/s"));
}

TEST_F(ViewLendingTest, tellsLengthsInSpace)
{
    importPoints("x,y,z,dx,dy,dz\n1,1,1,2,3,6\n2,2,,9,9,9\n");
    EXPECT_EQ(value("field.length.max"), "7.0000"); // the second point has no place
    EXPECT_EQ(value("field.length.count"), "1.0000");
}

TEST_F(ViewLendingTest, hasNoScaleWithoutVectorsAndValues)
{
    importPicture(1);
    importPoints("x,y\n1,1\n2,2\n");
    Legend2::Legend legend(nullptr);
    Legend2::Data data;
    EXPECT_FALSE(Loan(tokens, "camera")->getLegendData(&legend, &data));
}

TEST_F(ViewLendingTest, bearsPlacesThatAreFarOut)
{
    importPicture(1);
    PointOptions options;
    options.painted = true;
    importPoints("x,y,dx,dy\n0,0,3e200,4e200\n1e300,0,0,0\n0,1e300,0,0\n1e300,1e300,1,0\n", options);
    EXPECT_TRUE(Loan(tokens, "camera"));
    double const greatest = QString::fromStdString(value("field.length.max")).toDouble();
    EXPECT_NEAR(greatest / 5e200, 1.0, 1e-12); // its square is out of range
}

TEST_F(ViewLendingTest, leavesInvalidPointsOutOfStatistics)
{
    PointOptions options;
    options.columns.value = QStringLiteral("s");
    importPoints("x,y,s,valid\n1,1,5,1\n2,2,100,-1\n3,3,,1\n", options);
    EXPECT_EQ(value("field.s.count"), "1.0000");
    EXPECT_EQ(value("field.s.max"), "5.0000");
}

TEST_F(ViewLendingTest, listsItsTokens)
{
    importPicture(1);
    importSquare();
    std::vector<TokenInfo> infos;
    tokens.getTokens(&infos);
    std::set<QString> names;
    for (TokenInfo const &info : infos) {
        names.insert(info.getName());
    }
    EXPECT_TRUE(names.contains(QStringLiteral("camera")));
    EXPECT_TRUE(names.contains(QStringLiteral("field.s.mean")));
    EXPECT_TRUE(names.contains(QStringLiteral("field.length.max")));
}

TEST_F(ViewLendingTest, takesNoColumnForAStatistic)
{
    importPoints("x,y,max\n1,1,3\n");
    EXPECT_EQ(value("field.max"), "unknown");
    EXPECT_EQ(value("field.max.max"), "3.0000");
}

TEST_F(ViewLendingTest, listsEachColumnOfNumbersOnce)
{
    PointOptions second = atStage(2);
    importPoints("x,y,when,b\n1,1,2024-01-01 10:00:00,1\n", atStage(1));
    importPoints("x,y,when,b\n1,1,2024-01-01 10:00:00,1\n", second);
    std::vector<TokenInfo> infos;
    tokens.getTokens(&infos);
    std::vector<std::string> names;
    for (TokenInfo const &info : infos) {
        if (info.getName().endsWith(QLatin1String(".max"))) {
            names.push_back(info.getName().toStdString());
        }
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("field.x.max", "field.y.max", "field.b.max"));
}
