#include "project_support.h"

#include <ZemFig2Transformation.h>
#include <ZemImage.h>

#include <QtCore/QFileInfo>

using namespace Zem;
using namespace Zem::Measurement;

namespace {

class ViewTest : public ProjectTest
{
protected:
    Project project{path(), OpenMode_t::CREATE};

    /// A file of a grey picture whose pixel (x, y) is x + 10 y.
    QString greyFile(char const *name, unsigned int width = 4, unsigned int height = 3) const
    {
        Image16 picture(width, height);
        for (unsigned int y = 0; y < height; ++y) {
            for (unsigned int x = 0; x < width; ++x) {
                picture.getRow(y)[x] = static_cast<std::uint16_t>(x + 10 * y);
            }
        }
        return save(picture, name);
    }

    QString colorFile(char const *name, unsigned int width = 4, unsigned int height = 3) const
    {
        ImageColor picture(width, height);
        picture.setHasAlphaChannel(true);
        picture.setPixel(1, 1, Color(1, 2, 3, 4));
        return save(picture, name);
    }

    QString save(Zem::Image const &picture, char const *name) const
    {
        EXPECT_TRUE(picture.saveImage(path(name), nullptr));
        return path(name);
    }

    ProjectView view(char const *name = "camera") const
    {
        for (ProjectView const &one : project.views()) {
            if (one.name == QLatin1String(name)) {
                return one;
            }
        }
        throw std::out_of_range(std::string("no view ") + name);
    }

    ProjectPointSet set(char const *name = "field") const
    {
        for (ProjectPointSet const &one : project.pointSets()) {
            if (one.name == QLatin1String(name)) {
                return one;
            }
        }
        throw std::out_of_range(std::string("no points ") + name);
    }

    PointResult import(std::string_view text, unsigned int stage = 1, PointColumns const &columns = {})
    {
        PointOptions options;
        options.stage = stage;
        options.columns = columns;
        return project.importPoints(parse(text), options);
    }

    std::string importError(std::string_view text, unsigned int stage = 1, PointColumns const &columns = {})
    {
        return errorOf([&] { import(text, stage, columns); });
    }
};

PictureOptions atStage(unsigned int stage, PictureKind_t kind = PictureKind_t::PICTURE)
{
    PictureOptions options;
    options.stage = stage;
    options.kind = kind;
    return options;
}

BaVec2d<double> pixelOf(CameraModel const &camera, BaVec3d<double> const &point)
{
    BaVec2d<double> pixel{-1.0, -1.0};
    EXPECT_TRUE(camera.makeTransformation()->computeImagePoint(point, &pixel));
    return pixel;
}

} // namespace

TEST_F(ViewTest, keepsAPictureWithoutLoss)
{
    project.importPicture(greyFile("a.tif"), atStage(3));

    EXPECT_EQ(project.stages(), Stages{3});
    EXPECT_EQ(view().stagesOfPictures, (std::set<unsigned int>{3}));
    std::unique_ptr<Zem::Image> const picture = project.picture(view(), 3, PictureKind_t::PICTURE);
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->getType(), Zem::Image::TYPE_IMAGE16);
    EXPECT_EQ(picture->getWidth(), 4u);
    EXPECT_EQ(picture->getHeight(), 3u);
    EXPECT_EQ(static_cast<Image16 const &>(*picture).getRow(2)[3], 23);
    EXPECT_FALSE(project.picture(view(), 4, PictureKind_t::PICTURE));
    EXPECT_FALSE(project.picture(view(), 3, PictureKind_t::OVERLAY));
}

TEST_F(ViewTest, keepsAnOverlayBesideThePicture)
{
    project.importPicture(greyFile("a.png"), atStage(1));
    project.importPicture(colorFile("b.png"), atStage(1, PictureKind_t::OVERLAY));

    std::unique_ptr<Zem::Image> const overlay = project.picture(view(), 1, PictureKind_t::OVERLAY);
    ASSERT_TRUE(overlay);
    EXPECT_TRUE(overlay->hasAlphaChannel());
    EXPECT_EQ(static_cast<ImageColor const &>(*overlay).getPixel(1, 1), Color(1, 2, 3, 4));
    EXPECT_EQ(project.picture(view(), 1, PictureKind_t::PICTURE)->getType(), Zem::Image::TYPE_IMAGE16);
}

TEST_F(ViewTest, replacesAPictureAndCountsTheChange)
{
    project.importPicture(greyFile("a.png"), atStage(1));
    unsigned int const before = view().modified;
    project.importPicture(colorFile("b.png"), atStage(1));

    EXPECT_NE(view().modified, before);
    EXPECT_EQ(project.picture(view(), 1, PictureKind_t::PICTURE)->getType(), Zem::Image::TYPE_COLOR);
}

TEST_F(ViewTest, linksAFileThatStaysWhereItIs)
{
    QString const file = greyFile("a.png");
    PictureOptions options;
    options.link = true;
    project.importPicture(file, options);

    EXPECT_LT(QFileInfo(path()).size(), 200 * 1024);
    EXPECT_TRUE(project.picture(view(), 1, PictureKind_t::PICTURE));
    QFile::remove(file);
    std::string const error = errorOf([&] { project.picture(view(), 1, PictureKind_t::PICTURE); });
    EXPECT_THAT(error, testing::HasSubstr("test.zem: picture of 'camera' at stage 1: "));
    EXPECT_THAT(error, testing::HasSubstr("a.png"));
}

TEST_F(ViewTest, refusesWhatIsNoPictureOfTheView)
{
    project.importPicture(greyFile("a.png"));
    write(path("b.png"), "no picture");

    EXPECT_THAT(errorOf([&] { project.importPicture(path("b.png")); }), testing::HasSubstr("b.png"));
    EXPECT_THAT(errorOf([&] { project.importPicture(greyFile("c.png", 5, 3), atStage(2)); }),
                testing::HasSubstr("c.png: 5 x 3 pixels, but view 'camera' has 4 x 3 pixels"));
    EXPECT_THAT(errorOf([&] { project.importPicture(greyFile("d.png"), atStage(2, PictureKind_t::OVERLAY)); }),
                testing::HasSubstr("d.png: an overlay is a picture in colour"));
    PictureOptions named;
    named.view = QStringLiteral("no name");
    EXPECT_THAT(errorOf([&] { project.importPicture(greyFile("e.png"), named); }), testing::HasSubstr("no name"));
    EXPECT_EQ(project.stages(), Stages{1});
    EXPECT_EQ(project.views().size(), 1u);
}

TEST_F(ViewTest, tellsOfPixelsThatAreDamaged)
{
    project.importPicture(greyFile("a.png"));
    executeRaw(path(), "UPDATE view_picture SET pixels = x'010203'");
    EXPECT_THAT(errorOf([&] { project.picture(view(), 1, PictureKind_t::PICTURE); }),
                testing::HasSubstr("the project is damaged"));
    executeRaw(path(), "UPDATE view_picture SET type = 17");
    EXPECT_THAT(errorOf([&] { project.picture(view(), 1, PictureKind_t::PICTURE); }),
                testing::HasSubstr("the project is damaged"));
    executeRaw(path(), "UPDATE view SET camera = 'width = \"many\"'");
    EXPECT_THAT(errorOf([&] { project.views(); }), testing::HasSubstr("camera of 'camera'"));
}

TEST_F(ViewTest, looksAtItsPixelsAtFirst)
{
    project.importPicture(greyFile("a.png"));

    BaVec2d<double> const pixel = pixelOf(view().camera, {1.25, 2.5, 0.0});
    EXPECT_NEAR(pixel.x, 1.25, 1e-9);
    EXPECT_NEAR(pixel.y, 2.5, 1e-9);
}

TEST(CameraModel, ofAPlaneScalesAndTurnsUp)
{
    // 20 pixels per unit from (10, 90), upwards: (3, 4) lies 60 to the right of and 80 above (10, 90).
    BaVec2d<double> const up = pixelOf(CameraModel::plane(100, 100, 20.0, {10.0, 90.0}, true), {3.0, 4.0, 0.0});
    EXPECT_NEAR(up.x, 70.0, 1e-9);
    EXPECT_NEAR(up.y, 10.0, 1e-9);
    BaVec2d<double> const deep = pixelOf(CameraModel::plane(100, 100, 20.0, {10.0, 10.0}, false), {3.0, 4.0, 1.0});
    EXPECT_NEAR(deep.x, 70.0, 1e-4);
    EXPECT_NEAR(deep.y, 90.0, 1e-4);
}

TEST(CameraModel, comesBackFromParameters)
{
    CameraModel model = CameraModel::plane(640, 480, 3.5, {1.0, 2.0}, true);
    model.radial = {0.1, -0.2, 0.3};
    model.tangential = {0.01, -0.02};
    QString parameters = model.getParameterString() + QStringLiteral("other = \"1\"\n");
    CameraModel read;
    read.createFromParameterString(parameters);
    EXPECT_EQ(read, model);
    EXPECT_EQ(parameters.trimmed(), QStringLiteral("other = \"1\""));
}

TEST(CameraModel, refusesWhatIsNoNumberAndChangesNothing)
{
    CameraModel model = CameraModel::plane(640, 480, 3.5, {1.0, 2.0}, true);
    CameraModel const before = model;
    for (char const *const text : {"width = \"1.5\"\n", "height = \"-3\"\n", "image_distance = \"(nan, 1)\"\n"}) {
        QString parameters = QLatin1String(text);
        EXPECT_ANY_THROW(model.createFromParameterString(parameters)) << text;
        EXPECT_EQ(model, before) << text;
    }
}

TEST_F(ViewTest, takesTheCameraOfItsPictures)
{
    CameraModel const camera = CameraModel::plane(4, 3, 2.0, {0.0, 0.0}, false);
    project.importPicture(greyFile("a.png"));
    project.setCamera(QStringLiteral("camera"), camera);
    EXPECT_EQ(view().camera, camera);
    EXPECT_THAT(errorOf([&] { project.setCamera(QStringLiteral("camera"), CameraModel::plane(5, 3, 2.0, {}, false)); }),
                testing::HasSubstr("5 x 3 pixels, but view 'camera' has 4 x 3 pixels"));
    EXPECT_THAT(errorOf([&] { project.setCamera(QStringLiteral("other"), CameraModel()); }),
                testing::HasSubstr("has no size"));
    EXPECT_EQ(project.views().size(), 1u);
}

TEST_F(ViewTest, takesTheCameraOfItsOverlays)
{
    project.importPicture(colorFile("b.png"), atStage(1, PictureKind_t::OVERLAY));
    EXPECT_THAT(errorOf([&] { project.setCamera(QStringLiteral("camera"), CameraModel::plane(5, 3, 2.0, {}, false)); }),
                testing::HasSubstr("5 x 3 pixels, but view 'camera' has 4 x 3 pixels"));
}

TEST_F(ViewTest, takesWhatIsOutOfRangeInTheBaseUnitForMissing)
{
    import("x [m],y [m]\n1e306,1\n2,3\n");
    PointField const field = project.points(set(), 1);
    ASSERT_EQ(field.points.size(), 1u);
    EXPECT_EQ(field.points[0], (BaVec3d<double>{2000.0, 3000.0, 0.0}));
}

TEST_F(ViewTest, takesPointsByTheNamesOfTheirColumns)
{
    PointResult const result =
        import("COORDINATE_X,COORDINATE_Y,DISPLACEMENT_X,DISPLACEMENT_Y,STRAIN\n1,2,0.5,-0.5,7\n3,4,0.25,0,8\n", 5);

    EXPECT_EQ(result.points, 2u);
    EXPECT_EQ(result.group, QStringLiteral("field.5"));
    EXPECT_EQ(result.columns.dy, QStringLiteral("DISPLACEMENT_Y"));
    EXPECT_EQ(project.stages(), Stages{5});
    PointField const field = project.points(set(), 5);
    ASSERT_EQ(field.points.size(), 2u);
    EXPECT_EQ(field.ids, (std::vector<int>{1, 2}));
    EXPECT_EQ(field.points[1], (BaVec3d<double>{3.0, 4.0, 0.0}));
    EXPECT_EQ(field.vectors[0], (BaVec3d<double>{0.5, -0.5, 0.0}));
    EXPECT_TRUE(field.values.empty());
    EXPECT_EQ(project.pointNumbers(set(), QStringLiteral("STRAIN"), 5, nullptr), (std::vector<double>{7.0, 8.0}));
    EXPECT_TRUE(project.points(set(), 6).points.empty());
}

TEST_F(ViewTest, takesPointsInBaseUnits)
{
    import("X [cm],Y [cm],U [m/s],V [m/s]\n1,2,3,4\n");

    PointField const field = project.points(set(), 1);
    EXPECT_EQ(field.points[0], (BaVec3d<double>{10.0, 20.0, 0.0})); // millimetres
    UnitData unit;
    project.pointNumbers(set(), QStringLiteral("U"), 1, &unit);
    EXPECT_EQ(unit.getUnitName(), QStringLiteral("m/s"));
}

TEST_F(ViewTest, takesTheFirstFourColumnsWithoutNames)
{
    import(" 16  16 -0.5 1.0 51\n 32  16 -0.25 5.0 46\n");

    PointField const field = project.points(set(), 1);
    EXPECT_EQ(field.points[1], (BaVec3d<double>{32.0, 16.0, 0.0}));
    EXPECT_EQ(field.vectors[1], (BaVec3d<double>{-0.25, 5.0, 0.0}));
}

TEST_F(ViewTest, leavesOutPointsWithoutAPlaceAndHidesThoseThatAreNotValid)
{
    import("id,x,y,dx,dy,CHC\n11,1,1,1,1,1\n12,,1,1,1,1\n13,3,3,,1,1\n14,4,4,1,1,0\n");

    PointField const field = project.points(set(), 1);
    EXPECT_EQ(field.ids, (std::vector<int>{11, 13, 14}));
    EXPECT_EQ(field.valid, (std::vector<bool>{true, false, false}));
    EXPECT_EQ(field.vectors[1], (BaVec3d<double>()));
}

TEST_F(ViewTest, takesTheColumnsThatAreNamed)
{
    PointColumns columns;
    columns.x = QStringLiteral("a");
    columns.y = QStringLiteral("b");
    columns.value = QStringLiteral("strain yy");
    import("a,b,strain yy\n1,2,0.5\n3,4,\n", 1, columns);

    EXPECT_EQ(set().columns.value, QStringLiteral("strain_yy"));
    PointField const field = project.points(set(), 1);
    EXPECT_EQ(field.values[0], 0.5);
    EXPECT_TRUE(std::isnan(field.values[1]));
    EXPECT_EQ(field.valid, (std::vector<bool>{true, false}));
}

TEST_F(ViewTest, refusesPointsWithoutTheirColumns)
{
    PointColumns columns;
    columns.value = QStringLiteral("strain");
    EXPECT_THAT(importError("a,b\n1,2\n"), testing::HasSubstr("a.csv: no column is known to hold x"));
    EXPECT_THAT(importError("x,b\n1,2\n"), testing::HasSubstr("a.csv: no column is known to hold y"));
    EXPECT_THAT(importError("x,y\n1,2\n", 1, columns), testing::HasSubstr("there is no column \"strain\" of numbers"));
    EXPECT_THAT(importError("x,y,strain\n1,2,a\n", 1, columns), testing::HasSubstr("\"strain\" of numbers"));
    EXPECT_TRUE(project.stages().empty());
    EXPECT_TRUE(project.series().empty());
    EXPECT_TRUE(project.views().empty());
}

TEST_F(ViewTest, wantsTheSameColumnsAtAllStages)
{
    import("x,y,u,v\n1,2,3,4\n", 1);
    EXPECT_THAT(importError("x,y\n1,2\n", 2), testing::HasSubstr("other columns than at the other stages"));
    EXPECT_EQ(project.stages(), Stages{1});
    import("x,y\n1,2\n", 1); // the only one may change
    EXPECT_TRUE(set().columns.dx.isEmpty());
}

TEST_F(ViewTest, keepsPointsFromAnImportOfSeries)
{
    import("x,y\n1,2\n");
    SeriesOptions options;
    options.group = QStringLiteral("field.1");
    EXPECT_THAT(errorOf([&] { project.importSeries(parse("a\n1\n"), options); }),
                testing::HasSubstr("a.csv: the series of 'field.1' are the points of 'field': import points"));
    EXPECT_EQ(project.points(set(), 1).points.size(), 1u);
    options.group = QStringLiteral("field.2");
    EXPECT_EQ(project.importSeries(parse("a\n1\n"), options).rows, 1u);
}

TEST_F(ViewTest, refusesTheNumberThatMeansNoStage)
{
    constexpr unsigned int LAST = 4294967294u;
    project.importPicture(greyFile("a.png"), atStage(LAST));
    import("x,y\n1,2\n", LAST);
    EXPECT_EQ(project.stages(), Stages{LAST});
    EXPECT_EQ(project.points(set(), LAST).points.size(), 1u);
    EXPECT_THAT(errorOf([&] { project.importPicture(greyFile("a.png"), atStage(LAST + 1)); }),
                testing::HasSubstr("a.png: 4294967295 cannot be the number of a stage"));
    EXPECT_THAT(importError("x,y\n1,2\n", LAST + 1), testing::HasSubstr("4294967295 cannot be the number of a stage"));
    EXPECT_EQ(project.stages(), Stages{LAST});
}

TEST_F(ViewTest, refusesACameraThatCouldNotBeRead)
{
    double const none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(errorOf([&] {
                    project.setCamera(QStringLiteral("a"), CameraModel::plane(8, 6, none, {0.0, 0.0}, false));
                }),
                testing::HasSubstr("camera: parameter 'image_distance'"));
    EXPECT_THAT(
        errorOf([&] { project.setCamera(QStringLiteral("a"), CameraModel::plane(1 << 20, 1 << 20, 1.0, {}, false)); }),
        testing::HasSubstr("1048576 x 1048576 pixels are too many"));
    EXPECT_TRUE(project.views().empty());
}

TEST_F(ViewTest, tellsOfColumnsThatHaveNotTheSameRows)
{
    import("x,y,s\n1,2,3\n4,5,6\n");
    project.importSeries(parse("a\n1\n"), {QStringLiteral("short"), {}});
    for (char const *const column : {"x", "y"}) {
        QByteArray const swap = QByteArray("UPDATE series SET name = 'field.1.") + column + "' WHERE name = 'short.a'";
        QByteArray const away = QByteArray("UPDATE series SET name = 'away' WHERE name = 'field.1.") + column + "'";
        QByteArray const back = QByteArray("UPDATE series SET name = 'short.a' WHERE name = 'field.1.") + column + "'";
        QByteArray const home = QByteArray("UPDATE series SET name = 'field.1.") + column + "' WHERE name = 'away'";
        executeRaw(path(), away.constData());
        executeRaw(path(), swap.constData());
        EXPECT_THAT(errorOf([&] { project.points(set(), 1); }),
                    testing::HasSubstr("the columns of the points 'field' have not the same rows"));
        executeRaw(path(), back.constData());
        executeRaw(path(), home.constData());
    }
    EXPECT_EQ(project.points(set(), 1).points.size(), 2u);
}

TEST_F(ViewTest, tellsOfSeriesThatHaveGone)
{
    import("x,y\n1,2\n");
    executeRaw(path(), "DELETE FROM series WHERE name = 'field.1.y'");
    EXPECT_THAT(errorOf([&] { project.points(set(), 1); }),
                testing::HasSubstr("there is no series 'field.1.y' of the points 'field'"));
}

TEST_F(ViewTest, tellsOfStagesThatCannotBe)
{
    import("x,y\n1,2\n");
    for (char const *const stage : {"4294967295", "-1"}) {
        executeRaw(path(), (QByteArray("UPDATE point_stage SET stage = ") + stage).constData());
        EXPECT_THAT(errorOf([&] { project.pointSets(); }),
                    testing::HasSubstr(std::string("there is no stage ") + stage));
    }
}

TEST_F(ViewTest, isEmptyInAProjectOfAnOlderRelease)
{
    for (char const *const statement : {"DROP TABLE view", "DROP TABLE view_picture", "DROP TABLE point_set",
                                        "DROP TABLE point_stage", "UPDATE zem_project SET version = 2"}) {
        executeRaw(path(), statement);
    }
    {
        Project const older(path(), OpenMode_t::READ);
        EXPECT_TRUE(older.views().empty());
        EXPECT_TRUE(older.pointSets().empty());
        EXPECT_FALSE(older.picture(ProjectView(), 1, PictureKind_t::PICTURE));
    }
    Project newer(path(), OpenMode_t::WRITE);
    newer.importPicture(greyFile("a.png"));
    EXPECT_EQ(newer.views().size(), 1u);
}
