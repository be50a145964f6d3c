// Figures and the interface behind their image labels.
#include "image_label_fixture.h"
#include "tree_builders.h"

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::thrownText;

class ImageInterfaceTest : public testing::Test
{
protected:
    static MeasuredPoint *addPoint(Figure &figure, char const *id)
    {
        auto *label = new MeasuredPoint;
        label->setImageElementId(id);
        figure.getRoot()->addChild(label);
        return label;
    }

    TestImageInterface interface;
    Support::FakeCalculator calculator;
    Support::TestTokens tokens;
};

TEST_F(ImageInterfaceTest, offersNothingByItself)
{
    EXPECT_EQ(interface.getImageElements("cam"), std::vector<QString>());
    EXPECT_EQ(interface.getVisualisation("P1"), ImageDataVisualisation::NONE);
}

TEST_F(ImageInterfaceTest, registersAFigureOnce)
{
    Figure figure;
    EXPECT_EQ(figure.getImageInterface(), nullptr);
    figure.setImageInterface(&interface);
    EXPECT_EQ(figure.getImageInterface(), &interface);

    EXPECT_EQ(progError([&] { interface.registerFigureForUpdate(&figure); }),
              "fig_image_interface: Figure already registered");
    figure.setImageInterface(&interface);
    EXPECT_EQ(figure.getImageInterface(), &interface);
}

TEST_F(ImageInterfaceTest, refusesToForgetAnUnknownFigure)
{
    Figure figure;
    figure.setImageInterface(&interface);
    figure.setImageInterface(nullptr);

    EXPECT_EQ(thrownText<ProgError>([&] { interface.unregisterFigureForUpdate(&figure); }),
              "Zem::Fig2::ImageInterface::unregisterFigureForUpdate (fig_image_interface:314): Figure not registered");
}

TEST_F(ImageInterfaceTest, handsFiguresOverToAnother)
{
    TestImageInterface other;
    Figure figure;
    figure.setImageInterface(&interface);

    figure.setImageInterface(&other);

    EXPECT_EQ(figure.getImageInterface(), &other);
    EXPECT_THROW(other.registerFigureForUpdate(&figure), ProgError);
    EXPECT_THROW(interface.unregisterFigureForUpdate(&figure), ProgError);
}

TEST_F(ImageInterfaceTest, knowsTheCopyOfAFigure)
{
    Figure figure;
    figure.setImageInterface(&interface);
    Figure copy(figure);

    EXPECT_EQ(copy.getImageInterface(), &interface);
    EXPECT_THROW(interface.registerFigureForUpdate(&copy), ProgError);
}

TEST_F(ImageInterfaceTest, forgetsAFigureThatGoes)
{
    auto figure = std::make_unique<Figure>();
    Figure *const gone = figure.get();
    figure->setImageInterface(&interface);

    figure.reset();

    EXPECT_THROW(interface.unregisterFigureForUpdate(gone), ProgError);
}

TEST_F(ImageInterfaceTest, letsGoOfItsFiguresWhenItGoes)
{
    Figure first;
    Figure second;
    Figure third;
    Figure moved;
    {
        TestImageInterface passing;
        first.setImageInterface(&passing);
        second.setImageInterface(&passing);
        third.setImageInterface(&passing);
        moved.setImageInterface(&passing);
        moved.setImageInterface(&interface);
    }
    EXPECT_EQ(first.getImageInterface(), nullptr);
    EXPECT_EQ(second.getImageInterface(), nullptr);
    EXPECT_EQ(third.getImageInterface(), nullptr);
    EXPECT_EQ(moved.getImageInterface(), &interface);
}

TEST_F(ImageInterfaceTest, mayHoldAFigureThatGoesAsItDoes)
{
    struct Host : TestImageInterface
    {
        ~Host() override { figure.reset(); }
        std::unique_ptr<Figure> figure = std::make_unique<Figure>();
    };
    auto host = std::make_unique<Host>();
    Figure other;
    other.setImageInterface(host.get());
    host->figure->setImageInterface(host.get());

    host.reset();

    EXPECT_EQ(other.getImageInterface(), nullptr);
}

TEST_F(ImageInterfaceTest, isFoundFromAnElementOfTheFigure)
{
    Figure figure;
    Element *element = add(figure.getRoot());
    ProbeRectangle loose;
    EXPECT_EQ(ImageInterface::getInterface(element), nullptr);

    figure.setImageInterface(&interface);

    EXPECT_EQ(ImageInterface::getInterface(element), &interface);
    EXPECT_EQ(ImageInterface::getInterface(&loose), nullptr);
}

TEST_F(ImageInterfaceTest, tellsTheLabelsOfADeletedThingInAllFigures)
{
    Figure first;
    Figure second;
    Figure loose;
    first.setImageInterface(&interface);
    second.setImageInterface(&interface);
    std::vector<MeasuredPoint *> labels;
    for (Figure *figure : {&first, &second, &loose}) {
        figure->setTokenInterface(&tokens);
        labels.push_back(addPoint(*figure, "P1"));
        labels.push_back(addPoint(*figure, "P2"));
        figure->update(StageIdentifier(1), true);
    }

    EXPECT_TRUE(interface.measurementDeleted("P1"));

    std::vector<bool> valid;
    for (MeasuredPoint const *label : labels)
        valid.push_back(label->isValid());
    EXPECT_EQ(valid, (std::vector<bool>{false, true, false, true, true, true}));
}

TEST_F(ImageInterfaceTest, knowsWhenNoFigureShowsTheDeletedThing)
{
    Figure figure;
    figure.setImageInterface(&interface);
    add(figure.getRoot());
    addPoint(figure, "P1");

    EXPECT_FALSE(interface.measurementDeleted("P2"));
    EXPECT_FALSE(interface.measurementDeleted(""));
}

} // namespace
} // namespace Zem::Fig2
