#include "view_support.h"

#include <BlockCrafter.h>
#include <RecordingPainter.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemMeasImageInterface.h>
#include <ZemMeasImageLabels.h>

#include <numbers>

using namespace Zem;
using namespace Zem::Measurement;
using Fig2::ImageLabelCreator;

namespace {

constexpr char const *POINTS = "id,x,y,dx,dy,s\n1,10,5,0,0,7\n2,30,5,10,0,8\n3,10,25,0,0,9\n4,20,20,1,1,\n";

/// A figure with the picture at (10, 10) of the page, a pixel to a millimetre, and a label that is connected to it.
class ImageLabelTest : public ViewProjectTest
{
protected:
    ProjectImageInterface images{&tokens};
    Fig2::Figure figure;
    Fig2::Image *image = new Fig2::Image;

    ImageLabelTest()
    {
        importPicture(1);
        PointOptions options;
        options.columns.value = QStringLiteral("s");
        importPoints(POINTS, options);
        tokens.setCurrentStage(StageIdentifier(1));
        figure.setTokenInterface(&tokens);
        figure.setImageInterface(&images);
        image->setToken(QStringLiteral("camera"));
        image->setOrigin({30.0, 25.0});
        image->setSize({40.0, 30.0});
        figure.getRoot()->addChild(image);
    }
    ~ImageLabelTest() override { figure.setImageInterface(nullptr); }

    template <class Label>
    Label *addLabel(char const *id)
    {
        auto *const label = new Label;
        label->setImageElementId(QString::fromLatin1(id));
        label->setText(QStringLiteral("text"));
        label->setOrigin({100.0, 100.0});
        figure.getRoot()->addChild(label);
        label->connect(image, QString());
        return label;
    }

    void update(unsigned int stage = 1)
    {
        tokens.setCurrentStage(StageIdentifier(stage));
        figure.update(StageIdentifier(stage), true);
    }

    /// What the label draws on the picture.
    std::vector<std::string> marksOf(Fig2::ImageLabel const &label) const
    {
        Support::RecordingPainter painter;
        for (int step = 0; !label.drawElement(&tokens, &painter, step); ++step) {
        }
        std::vector<std::string> calls = painter.calls();
        EXPECT_GE(calls.size(), 2u);
        return {calls.begin() + 1, calls.end() - 1}; // between the clip and its end
    }

    std::string value(char const *id, char const *name) const
    {
        TokenInterface const *const source = images.getTokenInterface(QString::fromLatin1(id));
        if (!source) {
            return "nothing";
        }
        Value const value = source->getValue(QString::fromLatin1(name), IndexIdentifier::NO_INDEX, StageIdentifier(1));
        if (value == Value::UNKNOWN) {
            return "unknown";
        }
        return value == Value::INVALID ? "invalid" : value.toString(QStringLiteral("[].4"), nullptr).toStdString();
    }
};

std::string const LINE = " pen 0.3 full #dc2828ff sharp";

} // namespace

TEST_F(ImageLabelTest, marksAPointWhereThePictureShowsIt)
{
    auto *const label = addLabel<PointLabel>("field:2");
    update();
    // (30, 5) of the picture, whose corner is at (10, 10).
    EXPECT_THAT(marksOf(*label), testing::ElementsAre("ellipse 40,15 radii 1.2,1.2 angle 0" + LINE + " no fill",
                                                      "line 39.4,15 40.6,15" + LINE, "line 40,14.4 40,15.6" + LINE));
    EXPECT_TRUE(label->isLabelDrawn(&tokens));
}

TEST_F(ImageLabelTest, marksALineAndTellsItsStrain)
{
    auto *const label = addLabel<LineLabel>("field:1:2");
    label->setText(QStringLiteral("$.3strain$"));
    update();
    EXPECT_EQ(marksOf(*label)[0], "line 20,15 40,15" + LINE);
    // 20 long, stretched by 10.
    EXPECT_EQ(value("field:1:2", "length0"), "20.0000");
    EXPECT_EQ(value("field:1:2", "length"), "30.0000");
    EXPECT_EQ(value("field:1:2", "elongation"), "10.0000");
    EXPECT_EQ(value("field:1:2", "strain"), "0.5000");
    EXPECT_THAT(label->getResolvedText().toStdString(), testing::HasSubstr("0.500"));
}

TEST_F(ImageLabelTest, marksAnAngleAndTellsIt)
{
    auto *const label = addLabel<AngleLabel>("field:2:1:3");
    update();
    std::vector<std::string> const marks = marksOf(*label);
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_EQ(marks[0], "polyline 40,15 20,15 20,35" + LINE + " no fill");
    EXPECT_THAT(marks[1], testing::StartsWith("polyline 28,15 ")); // 0.4 of the shorter leg, 20
    EXPECT_EQ(value("field:2:1:3", "angle0"), "1.5708");
    EXPECT_EQ(value("field:2:1:3", "change"), "0.0000");
}

TEST_F(ImageLabelTest, marksTheWayOfAPointThroughTheStages)
{
    importPicture(2);
    PointOptions options = atStage(2);
    options.columns.value = QStringLiteral("s");
    importPoints("id,x,y,dx,dy,s\n2,34,9,0,0,1\n", options);
    auto *const label = addLabel<StagePointLabel>("field:2");
    update(2);
    std::vector<std::string> const marks = marksOf(*label);
    ASSERT_EQ(marks.size(), 4u);
    EXPECT_EQ(marks[0], "polyline 40,15 44,19" + LINE + " no fill");
    EXPECT_THAT(marks[3], testing::StartsWith("ellipse 44,19 radii 1.2,1.2"));
}

TEST_F(ImageLabelTest, drawsAFieldInTheColorsOfTheImage)
{
    auto *const label = addLabel<DisplacementFieldLabel>("field");
    update();
    std::vector<std::string> const marks = marksOf(*label);
    ASSERT_FALSE(marks.empty());
    EXPECT_THAT(marks[0], testing::StartsWith("ellipse 20,15 radii 0.5,0.5"));
    auto const lowest = std::find_if(marks.begin(), marks.end(),
                                     [](std::string const &mark) { return mark.starts_with("ellipse 20,35 "); });
    ASSERT_NE(lowest, marks.end());
    EXPECT_NE(marks[0].substr(marks[0].find("radii")), lowest->substr(lowest->find("radii"))); // 7 and 9
    Legend2::Data data;
    ASSERT_TRUE(label->getLegendData(&data));
    EXPECT_EQ(data.getDynamicMinimum(), 7.0);
    EXPECT_EQ(data.getDynamicMaximum(), 9.0);
    Legend2::HistogramData histogram;
    ASSERT_TRUE(label->getHistogramData(7.0, 9.0, &histogram));
    EXPECT_EQ(histogram.getMaxCount(), 1u);
}

TEST_F(ImageLabelTest, isNotDrawnWhereThereIsNothingAtTheStage)
{
    importPicture(2);
    auto *const label = addLabel<PointLabel>("field:2");
    update(2);
    EXPECT_TRUE(marksOf(*label).empty());
    EXPECT_FALSE(Fig2::ImageLabel::isValidPoint(label->computeObjectPoint()));
    EXPECT_FALSE(label->isLabelDrawn(&tokens));
}

TEST_F(ImageLabelTest, isHitOnItsMark)
{
    auto *const label = addLabel<LineLabel>("field:1:2");
    update();
    EXPECT_TRUE(label->intersectsImageElement(&tokens, {30.0, 15.9}));
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {30.0, 16.1}));
    EXPECT_TRUE(label->intersectsImageElement(&tokens, {40.0, 17.1})); // within the radius of 1.2, and 1.0 more
    EXPECT_FALSE(label->intersectsImageElement(&tokens, {40.0, 17.3}));
}

TEST_F(ImageLabelTest, tellsTheValuesOfAPoint)
{
    EXPECT_EQ(value("field:2", "id"), "2.0000");
    EXPECT_EQ(value("field:2", "x"), "30.0000");
    EXPECT_EQ(value("field:2", "dx"), "10.0000");
    EXPECT_EQ(value("field:2", "length"), "10.0000");
    EXPECT_EQ(value("field:2", "s"), "8.0000");
    EXPECT_EQ(value("field:4", "s"), "invalid");
    EXPECT_EQ(value("field:5", "x"), "invalid");
    EXPECT_EQ(value("field:2", "t"), "unknown");
    EXPECT_EQ(value("other:2", "x"), "nothing");
    EXPECT_EQ(value("field:x", "x"), "nothing");
    EXPECT_EQ(value("field:1:2:3:4", "x"), "nothing");
}

TEST_F(ImageLabelTest, tellsTheValuesOfASet)
{
    EXPECT_EQ(value("field", "count"), "3.0000");
    EXPECT_EQ(value("field", "mean"), "8.0000");
}

TEST_F(ImageLabelTest, makesLabelsOfWhatIsMeasured)
{
    std::map<char const *, ImageLabelCreator::Type_t> const types{{"field", ImageLabelCreator::TYPE_DISPLACEMENT_FIELD},
                                                                  {"field:1", ImageLabelCreator::TYPE_POINT},
                                                                  {"field:1:2", ImageLabelCreator::TYPE_LINE},
                                                                  {"field:1:2:3", ImageLabelCreator::TYPE_ANGLE}};
    for (auto const &[id, type] : types) {
        std::unique_ptr<Fig2::ImageLabel> const label(images.createImageLabel(QString::fromLatin1(id)));
        ASSERT_TRUE(label) << id;
        EXPECT_EQ(label->getLabelType(), type) << id;
        EXPECT_EQ(label->getImageElementId(), QString::fromLatin1(id));
    }
    EXPECT_EQ(images.createImageLabel(QStringLiteral("other")), nullptr);
    std::vector<QString> const ids = images.getImageElements(QStringLiteral("camera"));
    EXPECT_THAT(ids, testing::ElementsAre(QStringLiteral("field"), QStringLiteral("field:1"), QStringLiteral("field:2"),
                                          QStringLiteral("field:3"))); // point 4 has no value and is hidden
    EXPECT_EQ(images.getImageElementName(QStringLiteral("field:1:2")), QStringLiteral("field 1 - 2"));
}

TEST_F(ImageLabelTest, findsThePointNearestToAPixel)
{
    BaVec3d<double> place;
    ASSERT_TRUE(images.getObjectPoint(QStringLiteral("field"), {28.0, 7.0}, &place));
    EXPECT_EQ(place, (BaVec3d<double>{30.0, 5.0, 0.0}));
    EXPECT_FALSE(images.getObjectPoint(QStringLiteral("other"), {28.0, 7.0}, &place));
}

TEST_F(ImageLabelTest, doesNotMeasureWithHiddenPoints)
{
    auto *const label = addLabel<LineLabel>("field:1:4");
    auto *const point = addLabel<PointLabel>("field:4");
    update();
    EXPECT_TRUE(label->getPlaces().empty());
    EXPECT_TRUE(point->getPlaces().empty());
    EXPECT_EQ(value("field:1:4", "strain"), "invalid");
    EXPECT_EQ(value("field:4", "x"), "invalid");
    BaVec3d<double> place;
    ASSERT_TRUE(images.getObjectPoint(QStringLiteral("field"), {20.0, 20.0}, &place));
    EXPECT_EQ(place, (BaVec3d<double>{10.0, 25.0, 0.0})); // 11 away; the hidden point lies there
    auto *const field = addLabel<DisplacementFieldLabel>("field");
    update();
    EXPECT_NEAR(field->computeObjectPoint().x, 50.0 / 3.0, 1e-12);
    EXPECT_NEAR(field->computeObjectPoint().y, 35.0 / 3.0, 1e-12);
}

TEST_F(ImageLabelTest, takesTheFirstOfTwoPointsWithOneNumber)
{
    importPoints("id,x,y,s\n7,1,1,\n7,2,2,1\n7,3,3,1\n1.5,4,4,1\n", [] {
        PointOptions options;
        options.set = QStringLiteral("twins");
        options.columns.value = QStringLiteral("s");
        return options;
    }());
    EXPECT_EQ(value("twins:7", "x"), "2.0000"); // the first one is hidden
    EXPECT_EQ(value("twins:4", "x"), "4.0000"); // 1.5 is no number of a point, so the row counts
    EXPECT_EQ(value("twins:1", "x"), "invalid");
    std::vector<QString> const ids = images.getImageElements(QStringLiteral("camera"));
    EXPECT_EQ(std::count(ids.begin(), ids.end(), QStringLiteral("twins:7")), 1);
}

TEST_F(ImageLabelTest, tellsOfASetWithoutVectorsAndValues)
{
    PointOptions options;
    options.set = QStringLiteral("plain");
    importPoints("x,y\n1,1\n2,2\n", options);
    EXPECT_EQ(value("plain", "count"), "2.0000");
    EXPECT_EQ(value("plain", "max"), "invalid");
    EXPECT_EQ(value("plain:1", "dx"), "invalid");
}

TEST_F(ImageLabelTest, tellsOfWhatIsThereNow)
{
    PointOptions options;
    options.columns.value = QStringLiteral("s");
    importPoints("id,x,y,s,t\n1,10,5,7,70\n2,30,5,8,80\n", options);
    EXPECT_EQ(value("field:2", "x"), "30.0000");
    EXPECT_EQ(value("field:2", "s"), "8.0000");
    EXPECT_EQ(value("field:2", "t"), "80.0000");
    importPoints("id,x,y,s,t\n1,10,5,7,70\n2,31,5,8,81\n", options);
    EXPECT_EQ(value("field:2", "t"), "81.0000");
    EXPECT_EQ(value("field:2", "x"), "31.0000");
}

TEST_F(ImageLabelTest, takesNoSpeedForADisplacement)
{
    PointOptions options;
    options.set = QStringLiteral("flow");
    importPoints("x [mm],y [mm],dx [m/s],dy [m/s]\n0,0,0,0\n20,0,10,0\n", options);
    EXPECT_EQ(value("flow:1:2", "length"), value("flow:1:2", "length0"));
    EXPECT_EQ(value("flow:1:2", "strain"), "0.0000");
    EXPECT_EQ(value("flow:1:1", "strain"), "invalid"); // no length to be a share of
}

TEST_F(ImageLabelTest, drawsTheShorterArcOfAnAngle)
{
    PointOptions options;
    options.set = QStringLiteral("wedge");
    importPoints("x,y\n10,16\n30,15\n10,14\n", options);
    auto *const label = addLabel<AngleLabel>("wedge:1:2:3");
    update();
    std::string const arc = marksOf(*label)[1];
    // 0.4 of sqrt(401) to the left of the vertex, which is at (40, 25) of the page.
    EXPECT_THAT(arc, testing::HasSubstr(" 31.99"));
    EXPECT_THAT(arc, testing::Not(testing::HasSubstr(" 48.")));
}

TEST_F(ImageLabelTest, drawsNoWayThroughOneStage)
{
    auto *const label = addLabel<StagePointLabel>("field:2");
    update();
    std::vector<std::string> const marks = marksOf(*label);
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_THAT(marks[0], testing::StartsWith("ellipse 40,15 "));
}

TEST_F(ImageLabelTest, looksAgainAfterAnError)
{
    auto *const label = addLabel<PointLabel>("field:2");
    executeRaw(path(), "UPDATE series SET name = 'field.1.lost' WHERE name = 'field.1.y'");
    EXPECT_THROW(images.updateImageElement(label), ProjectError);
    EXPECT_THROW(images.updateImageElement(label), ProjectError);
    executeRaw(path(), "UPDATE series SET name = 'field.1.y' WHERE name = 'field.1.lost'");
    EXPECT_TRUE(images.updateImageElement(label));
    EXPECT_EQ(label->getPlaces().size(), 1u);
}

TEST_F(ImageLabelTest, countsNothingInARangeWithoutWidth)
{
    auto *const label = addLabel<DisplacementFieldLabel>("field");
    update();
    Legend2::HistogramData histogram;
    EXPECT_FALSE(label->getHistogramData(8.0, 8.0, &histogram));
    EXPECT_FALSE(label->getHistogramData(9.0, 7.0, &histogram));
    EXPECT_FALSE(label->getHistogramData(10.0, 11.0, &histogram));
}

TEST_F(ImageLabelTest, comesBackFromAFileWithItsMark)
{
    auto *const label = addLabel<LineLabel>("field:1:2");
    label->setMarkSize(2.5);
    label->setMarkLine(Fig2::LineStyle(0.7, Fig2::LineStyle::STYLE_FULL, Color(1, 2, 3)));
    addLabel<DisplacementFieldLabel>("field");
    update();
    ErrorLog log(false);
    ASSERT_TRUE(Fig2::Figure::saveFigure(path("a.fig"), &figure, &log)) << log.getLog().toStdString();
    std::unique_ptr<Fig2::Figure> const loaded(Fig2::Figure::loadFigure(path("a.fig"), &log));
    ASSERT_TRUE(loaded) << log.getLog().toStdString();

    LineLabel const *found = nullptr;
    DisplacementFieldLabel const *field = nullptr;
    for (auto it = loaded->getElementBegin(); it != loaded->getElementEnd(); ++it) {
        found = found ? found : dynamic_cast<LineLabel const *>(*it);
        field = field ? field : dynamic_cast<DisplacementFieldLabel const *>(*it);
    }
    ASSERT_TRUE(found);
    EXPECT_TRUE(field);
    EXPECT_EQ(found->getMarkSize(), 2.5);
    EXPECT_EQ(found->getMarkLine(), label->getMarkLine());
    EXPECT_EQ(found->getPlaces(), label->getPlaces());
    EXPECT_EQ(found->getImageElementId(), QStringLiteral("field:1:2"));
}

TEST(MeasuredLabel, refusesAMarkWithoutASizeAndKeepsItsOwn)
{
    PointLabel label;
    label.setMarkSize(2.5);
    for (double const size : {-1.0, std::numeric_limits<double>::quiet_NaN()}) {
        std::string const bytes = Support::BlockCrafter()
                                      .add([](IO::OutStream &stream) { PointLabel().ImageLabel::save(&stream, 0, 0); })
                                      .block(1, Support::Payload().d(size).u(0))
                                      .bytes();
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { label.load(&stream, 0, 0); }),
                     IO::StreamException);
        EXPECT_EQ(label.getMarkSize(), 2.5);
    }
}

TEST_F(ImageLabelTest, marksNoWayOfAPointThatIsNotThereNow)
{
    importPicture(2);
    auto *const label = addLabel<StagePointLabel>("field:2");
    update(2);
    EXPECT_TRUE(label->getPlaces().empty());
}

TEST_F(ImageLabelTest, comesBackFromItsParametersAndItsText)
{
    LineLabel label;
    label.setImageElementId(QStringLiteral("field:1:2"));
    label.setMarkSize(0.1 + 0.2);
    label.setMarkLine(Fig2::LineStyle(0.7, Fig2::LineStyle::STYLE_FULL, Color(1, 2, 3)));
    QString parameters = label.getParameterString();
    LineLabel fromParameters;
    fromParameters.createFromParameterString(parameters);
    std::stringstream text;
    label.saveToStream(text);
    LineLabel fromText;
    fromText.loadFromStream(text);
    for (LineLabel const *read : {&fromParameters, &fromText}) {
        EXPECT_EQ(read->getMarkSize(), label.getMarkSize());
        EXPECT_EQ(read->getMarkLine(), label.getMarkLine());
        EXPECT_EQ(read->getImageElementId(), label.getImageElementId());
    }
    EXPECT_EQ(parameters.trimmed(), QString());
    EXPECT_THROW(label.setMarkSize(-1.0), ProgError);
}
