// Labels that lead to images: their values, their lines, and when they are drawn.
#include "image_element_fixture.h"
#include "measured_point.h"

#include <ZemFig2Rectangle.h>
#include <ZemTokenContainer.h>

#include <numbers>

namespace Zem::Fig2 {
namespace {

using Point = BaVec2d<double>;

/// The box fills 200,40 to 220,60. The object is at the pixel 10,15, which is 40,50 on the page.
class ImageLabels : public ImageElementTest
{
protected:
    ImageLabels()
    {
        object->setConnectorPoint({10, 15});
        data.addObject(object);
        label.setAutoSize(false);
        label.setOrigin({210, 50});
        label.setSize({20, 20});
        label.setText("$name$");
        update();
    }

    void setValue(char const *value)
    {
        auto *container = new TokenContainer;
        container->setValue({TokenInfo::TYPE_STRING, "name", "name"}, Value(QString::fromLatin1(value)));
        object->setTokenInterface(container);
        object->setTokenContainer(container);
    }
    QString resolved()
    {
        label.computeDynamicData(stage, &tokens);
        return label.getResolvedText();
    }
    /// The line of the only connector, "none" without one.
    std::string line(FigureTokenInterface const *source)
    {
        label.computeDynamicData(stage, &tokens);
        Point from(7, 7);
        Point to(8, 8);
        bool const shown = label.computeConnectorPoints(*label.getConnectorBegin(), source, &from, &to);
        return (shown ? Support::text(from) : "none") + " to " + Support::text(to);
    }

    ImageDataObject *object = new ImageDataObject("part");
    Label label;
};

TEST_F(ImageLabels, showTheValuesOfTheObject)
{
    label.connect(&image, "part");
    EXPECT_EQ(resolved(), "???");
    setValue("value");
    EXPECT_EQ(resolved(), "value");
    tokens.set("name", Value(QString("of the figure")));
    EXPECT_EQ(resolved(), "of&nbsp;the&nbsp;figure");
}

TEST_F(ImageLabels, ofAnUnknownObjectShowNoValue)
{
    setValue("value");
    label.connect(&image, "other");
    EXPECT_EQ(resolved(), "???");
}

TEST_F(ImageLabels, followTheImageAlsoWithoutAValue)
{
    EXPECT_EQ(resolved(), "???");
    EXPECT_FALSE(label.isDataValid(stage, &tokens)); // nothing to wait for: tried again each time
    label.connect(&image, "part");
    EXPECT_EQ(resolved(), "???");
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
    tokens.touch("camera");
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
    setValue("value");
    EXPECT_EQ(resolved(), "value");
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
    tokens.touch("camera");
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
}

TEST_F(ImageLabels, leadToTheObject)
{
    label.connect(&image, "part");
    EXPECT_EQ(line(&tokens), "200,50 to 40,50");
}

TEST_F(ImageLabels, leadNowhereWithoutTheObject)
{
    label.connect(&image, "other");
    EXPECT_EQ(line(&tokens), "none to 8,8");
}

TEST_F(ImageLabels, leadToTheMiddleOfTheImageWithoutData)
{
    label.connect(&image, "part");
    EXPECT_EQ(line(nullptr), "200,50 to 60,50");
    tokens.remove("camera");
    EXPECT_EQ(line(&tokens), "200,50 to 60,50");
}

TEST_F(ImageLabels, leadToTheObjectOfATurnedImage)
{
    image.setAngle(std::numbers::pi);
    update();
    label.connect(&image, "part");
    EXPECT_EQ(line(&tokens), "200,50 to 80,50"); // 20 mm on the other side of 60,50
}

TEST_F(ImageLabels, areDrawnWithTheLineWhileTheObjectIsInTheImage)
{
    label.connect(&image, "part");
    auto const hasLine = [&] {
        Support::RecordingPainter painter;
        label.computeDynamicData(stage, &tokens);
        label.draw(&tokens, &painter, 0);
        return painter.transcript().starts_with("line ");
    };
    EXPECT_TRUE(hasLine());
    object->setConnectorPoint({-10, 15});
    EXPECT_FALSE(hasLine());
}

/// The images, their labels and a rectangle in a figure, by name.
class RenderingOrder : public testing::Test
{
protected:
    template <class E>
    E *add(char const *name, E *element)
    {
        names[element] = name;
        figure.getRoot()->addChild(element);
        return element;
    }
    MeasuredPoint *addLabel(char const *name, Image *image, int priority)
    {
        auto *label = add(name, new MeasuredPoint);
        label->priority = ImageLabel::DrawingPriority_t(priority);
        label->connect(image, "");
        return label;
    }
    std::string order() const
    {
        std::vector<Element const *> elements{figure.getRoot()};
        figure.computeRenderingOrder(&elements);
        std::string result;
        for (Element const *element : elements)
            result += names.at(element) + " ";
        return result;
    }

    Figure figure;
    std::map<Element const *, std::string> names;
};

TEST_F(RenderingOrder, hasTheLabelsOfAnImageBehindItByPriority)
{
    auto *first = add("first", new Image);
    auto *second = add("second", new Image);
    addLabel("b", second, 1);
    addLabel("c", first, 1);
    addLabel("d", first, 2);
    addLabel("e", first, 1);
    add("rectangle", new Rectangle);
    EXPECT_EQ(order(), "first d c e second b rectangle ");
}

TEST_F(RenderingOrder, hidesLabelsWithTheirImageAlone)
{
    auto *first = add("first", new Image);
    auto *second = add("second", new Image);
    addLabel("a", first, 1);
    addLabel("b", second, 1)->setVisible(false);
    add("lone", new MeasuredPoint);
    first->setVisible(false);
    EXPECT_EQ(order(), "second b ");
}

TEST_F(RenderingOrder, refusesAnImageThatIsNone)
{
    add("rectangle", new Rectangle)->setType(Element::IMAGE);
    EXPECT_EQ(Support::progError([&] { order(); }), "fig_figure: Image element cast failed");
}

TEST_F(RenderingOrder, refusesATypeThatThereIsNot)
{
    add("rectangle", new Rectangle)->setType(static_cast<Element::Type_t>(Element::NUMBER_OF_TYPES));
    EXPECT_EQ(Support::progError([&] { order(); }), "fig_figure: type does not belong to a figure element");
}

TEST_F(RenderingOrder, takesTextLabelsOfAnImageAsTheyStand)
{
    auto *label = add("label", new Label);
    auto *image = add("image", new Image);
    label->connect(image, "part");
    EXPECT_EQ(order(), "label image ");
    std::vector<ImageLabel *> labels;
    image->collectImageLabels(&labels);
    EXPECT_TRUE(labels.empty());
}

} // namespace
} // namespace Zem::Fig2
