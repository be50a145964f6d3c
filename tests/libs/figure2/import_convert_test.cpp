// Labels of objects of imported images become image labels.
#include "image_element_fixture.h"
#include "image_label_fixture.h"
#include "import_fixture.h"

#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2ImportHook.h>

namespace Zem::Fig2 {
namespace {

using Support::oldFigure;
using Support::progError;

using Point = BaVec2d<double>;

/// An older page with an image and a label of its object "bolt", of which the token interface has the marks.
class ImportedImageData : public testing::Test
{
protected:
    ImportedImageData()
        : figure(importFigure(oldFigure({image(1), label("gap $gap$")}))), bolt(new ImageDataObject("bolt"))
    {
        ImageData &data = tokens.addImage("camera");
        bolt->setConnectorPoint({5, 6});
        bolt->addElement(new ImageDataPointMarker({5, 6}));
        data.addObject(bolt);
        figure->setTokenInterface(&tokens);
        figure->setImageInterface(&images);
    }

    ~ImportedImageData() override { figure.reset(); }

    static OldRecords image(unsigned int tokenType)
    {
        Support::OldImageFields fields;
        fields.tokenType = tokenType;
        fields.looks = {"bolt"};
        return oldElementOf(Import::OLD_IMAGE, Support::oldImage(3, fields).add(Support::oldLook(1)), {1, true});
    }

    static OldRecords label(std::string const &text, std::string const &object = "bolt")
    {
        Support::OldTextFields fields;
        fields.text = text;
        fields.target = 1;
        fields.object = object;
        fields.hasPoint = true;
        return oldElementOf(Import::OLD_TEXT, Support::oldText(4, fields));
    }

    ImageDataObjectLabel &converted() { return childAt<ImageDataObjectLabel>(*figure, 1); }

    ImageTokens tokens;
    TestImageInterface images;
    std::unique_ptr<Figure> figure;
    ImageDataObject *bolt;
};

TEST_F(ImportedImageData, turnLabelsIntoImageLabels)
{
    Import::convertImageData(figure.get());

    EXPECT_EQ(converted().getLabelType(), ImageLabelCreator::TYPE_IMPORTED_IMAGE_DATA);
    EXPECT_EQ(converted().getImageElementId(), "bolt");
    EXPECT_EQ(converted().getConnectedImage(), &childAt<Image>(*figure, 0));
    QString object;
    converted().getConnectorTarget(&object);
    EXPECT_EQ(object, "bolt");
    EXPECT_EQ(converted().getFigure(), figure.get());
}

TEST_F(ImportedImageData, keepTheMarksAndTheLook)
{
    Import::convertImageData(figure.get());

    ImageDataObject const &object = converted().getImageDataObject();
    EXPECT_EQ(object.getConnectorPoint(), Point(5, 6));
    ASSERT_EQ(object.getElementEnd() - object.getElementBegin(), 1);
    EXPECT_EQ((*object.getElementBegin())->getType(), ImageDataElement::TYPE_POINT_MARKER);
    EXPECT_EQ(object.getVisualisation().getPointMarkerSize(), 12.0);
    EXPECT_EQ(images.calls, "import bolt\n");
}

TEST_F(ImportedImageData, keepTheObjectsOwnLook)
{
    ImageDataVisualisation own(false);
    own.setPointMarkerSize(77.0);
    bolt->setVisualisation(own);

    Import::convertImageData(figure.get());

    EXPECT_EQ(converted().getImageDataObject().getVisualisation().getPointMarkerSize(), 77.0);
}

TEST_F(ImportedImageData, keepTheLooksOfTheLabel)
{
    auto &label = childAt<Label>(*figure, 1);
    label.setVisible(false);
    label.setMargin(2.5);
    label.setSpacing(3.5);
    label.setPivotAlignmentX(ALIGN_END);
    label.setPivotAlignmentY(ALIGN_CENTER);
    label.setUseSystemFont(true);
    label.setHighlightColor(Color(9, 9, 9));
    label.setExpandWidth(true);
    label.setColorBarVisible(true);
    ColorBar bar;
    bar.setWidth(4.5);
    label.setColorBar(bar);
    label.setConnectorStyle(LineStyle(0.5, LineStyle::STYLE_DASHED, Color(200, 10, 20)));
    label.setTemplateName("plain");
    std::string const before = Support::parameterForm(label);

    Import::convertImageData(figure.get());

    std::string const after = Support::parameterForm(converted());
    std::istringstream lines(before);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("type")) {
            EXPECT_NE(after.find(line + "\n"), std::string::npos) << line;
        }
    }
}

TEST_F(ImportedImageData, keepTheValuesOfTheObject)
{
    auto *values = new TokenContainer;
    values->setValue({TokenInfo::TYPE_INTEGER, "gap", "gap"}, Value(42));
    bolt->setTokenContainer(values);
    bolt->setTokenInterface(values);

    Import::convertImageData(figure.get());

    ASSERT_NE(converted().getTokenContainer(), nullptr);
    EXPECT_EQ(converted().getTokenContainer()->getValue("gap", IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE),
              Value(42));
}

TEST_F(ImportedImageData, areConvertedWithoutMarksWhenThereAreNone)
{
    tokens.remove("camera");

    Import::convertImageData(figure.get());

    EXPECT_EQ(converted().getImageDataObject().getElementBegin(), converted().getImageDataObject().getElementEnd());
    EXPECT_EQ(converted().getImageDataObject().getVisualisation().getPointMarkerSize(), 12.0);
}

TEST_F(ImportedImageData, areConvertedWithoutATokenInterface)
{
    figure->setTokenInterface(nullptr);

    Import::convertImageData(figure.get());

    EXPECT_EQ(converted().getImageElementId(), "bolt");
}

TEST_F(ImportedImageData, haveTextsThatTheHooksHaveSeen)
{
    class Hook : public ImportHook
    {
    public:
        void convertFigure(Figure *) override {}
        QString convertLabelText(Element const *element, QString const &text) override
        {
            return text + (element->getType() == Element::IMAGE_LABEL ? "!" : "?");
        }
    } hook;
    ImportHook::registerImportHook(&hook);

    Import::convertImageData(figure.get());

    ImportHook::unregisterImportHook(&hook);
    EXPECT_EQ(converted().getText(), "gap $gap$!");
}

TEST_F(ImportedImageData, haveRichTexts)
{
    childAt<Label>(*figure, 1).setText("one\ntwo");

    Import::convertImageData(figure.get());

    EXPECT_EQ(converted().getText(), "one<br>\ntwo");
}

TEST_F(ImportedImageData, needAnImageInterface)
{
    figure->setImageInterface(nullptr);

    EXPECT_EQ(progError([this] { Import::convertImageData(figure.get()); }), "fig_import: Image interface not set");
    EXPECT_NO_THROW(childAt<Label>(*figure, 1));
}

TEST_F(ImportedImageData, leaveOtherLabelsAlone)
{
    figure = importFigure(oldFigure({image(0), label("a")}));
    figure->setImageInterface(&images);
    Import::convertImageData(figure.get());
    EXPECT_EQ(childAt<Label>(*figure, 1).getType(), Element::LABEL);

    figure = importFigure(oldFigure({image(2), label("a")}));
    figure->setImageInterface(&images);
    Import::convertImageData(figure.get());
    EXPECT_EQ(childAt<Label>(*figure, 1).getType(), Element::LABEL);

    figure = importFigure(oldFigure({image(1), label("a", "")}));
    figure->setImageInterface(&images);
    Import::convertImageData(figure.get());
    EXPECT_EQ(childAt<Label>(*figure, 1).getType(), Element::LABEL);
}

TEST_F(ImportedImageData, areConvertedOnce)
{
    Import::convertImageData(figure.get());
    ImageDataObjectLabel const *first = &converted();

    Import::convertImageData(figure.get());

    EXPECT_EQ(&converted(), first);
}

TEST_F(ImportedImageData, canConvertALabelThatIsNotConnected)
{
    auto *label = new Label;
    figure->getRoot()->addChild(label);

    ImageLabel *made =
        Import::createImageLabelFromLabel(figure.get(), &childAt<Image>(*figure, 0), label, QString("bolt"));

    EXPECT_EQ(made->getParent(), figure->getRoot());
    EXPECT_EQ(made->getConnectedImage(), &childAt<Image>(*figure, 0));
}

TEST_F(ImportedImageData, cannotConvertALabelWithoutAParent)
{
    Label label;

    EXPECT_EQ(progError([&] {
                  Import::createImageLabelFromLabel(figure.get(), &childAt<Image>(*figure, 0), &label, QString("bolt"));
              }),
              "fig_import: Element without a parent");
}

TEST(ImportLabelText, isMadeRichUnlessItIs)
{
    EXPECT_EQ(Import::convertUnformattedLabelText("a\nb"), "a<br>\nb");
    EXPECT_EQ(Import::convertUnformattedLabelText("a<br>b\nc"), "a<br>b\nc");
    EXPECT_EQ(Import::convertUnformattedLabelText("a &lt; b\nc"), "a &lt; b\nc");
    EXPECT_EQ(Import::convertUnformattedLabelText("<html><body>x</body></html>"), "x");
}

} // namespace
} // namespace Zem::Fig2
