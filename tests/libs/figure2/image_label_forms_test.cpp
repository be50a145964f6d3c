// The forms of an image label, alone and in a group, and the blocks of older releases.
#include "image_label_fixture.h"

#include <ZemFig2ImageDataFixedShapes.h>
#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2InitLibrary.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>

#include <ZemParse.h>
#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::blockForm;
using Support::loadBlocks;
using Support::loadParameters;
using Support::loadText;
using Support::parameterForm;
using Support::Payload;
using Support::progError;
using Support::textForm;
using Support::thrownText;

constexpr char const *WRONG_VERSION = "wrong block version";

TokenContainer *container()
{
    auto *tokens = new TokenContainer;
    tokens->setValue(TokenInfo(TokenInfo::TYPE_INTEGER, "x", ""), Value(5));
    return tokens;
}

int valueIn(ImageLabel const &label)
{
    TokenContainer const *tokens = label.getTokenContainer();
    return tokens ? tokens->getValue("x", IndexIdentifier::NO_INDEX, StageIdentifier(1)).getInt() : -1;
}

/// What a file holds in front of an image label's own block.
BlockCrafter withLabel()
{
    // A label of another class writes the same blocks.
    return BlockCrafter().add([](IO::OutStream &stream) { Label().save(&stream, 0, 0); });
}

class ImageLabelForms : public testing::Test
{
protected:
    ImageLabelForms()
    {
        label.setText("text");
        label.setLabelVisible(false);
        label.setImageElementId("P 1");
    }

    static void expectAll(ImageLabel const &read)
    {
        EXPECT_EQ(read.getText(), "text");
        EXPECT_FALSE(read.getLabelVisible());
        EXPECT_EQ(read.getImageElementId(), "P 1");
        EXPECT_EQ(read.getLabelType(), ImageLabelCreator::TYPE_POINT);
    }

    MeasuredPoint label;
    MeasuredPoint read;
};

using ImageLabelBlocks = ImageLabelForms;

TEST_F(ImageLabelBlocks, areOneMoreThanThoseOfALabel)
{
    Label plain;
    plain.setText("text");

    // The id of 3 letters with its length, and 6 more.
    EXPECT_EQ(Support::blocksOf(blockForm(label)), Support::blocksOf(blockForm(plain)) + "2:13 ");
}

TEST_F(ImageLabelBlocks, bringTheLabelBack)
{
    read.setTokenContainer(container());

    loadBlocks(read, blockForm(label));

    expectAll(read);
    EXPECT_EQ(read.getTokenContainer(), nullptr);
}

TEST_F(ImageLabelBlocks, bringTheValuesBack)
{
    label.setTokenContainer(container());

    loadBlocks(read, blockForm(label));

    EXPECT_EQ(valueIn(read), 5);
}

TEST_F(ImageLabelBlocks, holdTypeBoxValuesAndId)
{
    loadBlocks(read,
               withLabel()
                   .block(2, Payload().u(9).b(false).b(true).s("P2"))
                   .add([](IO::OutStream &stream) { std::unique_ptr<TokenContainer>(container())->save(&stream); })
                   .bytes());

    EXPECT_EQ(read.getLabelType(), ImageLabelCreator::TYPE_STAGE_POINT);
    EXPECT_FALSE(read.getLabelVisible());
    EXPECT_EQ(read.getImageElementId(), "P2");
    EXPECT_EQ(valueIn(read), 5);
}

TEST_F(ImageLabelBlocks, heldTheVisibilityInTheFirstVersion)
{
    for (bool visible : {false, true}) {
        loadBlocks(read, withLabel().block(1, Payload().u(1).b(visible).b(true).b(false).s("P2")).bytes());

        EXPECT_EQ(read.getVisible(), visible);
        EXPECT_TRUE(read.getLabelVisible());
        EXPECT_EQ(read.getImageElementId(), "P2");
    }
}

TEST_F(ImageLabelBlocks, areRefusedWhenDamagedOrNew)
{
    auto const refusal = [this](unsigned int version, Payload const &fields) {
        std::string const bytes = withLabel().block(version, fields).bytes();
        return thrownText<IO::StreamException>([&] { loadBlocks(read, bytes); });
    };

    EXPECT_EQ(refusal(3, Payload().u(1).b(true).b(false).s("")), WRONG_VERSION);
    EXPECT_EQ(refusal(0, Payload().u(1).b(true).b(false).s("")), WRONG_VERSION);
    EXPECT_NE(refusal(2, Payload().u(11).b(true).b(false).s("")), "nothing thrown");
    EXPECT_NE(refusal(2, Payload().u(1).b(true).b(true).s("")), "nothing thrown");
    EXPECT_EQ(refusal(2, Payload().u(1).b(true).b(false).s("")), "nothing thrown");
}

TEST_F(ImageLabelForms, asTextBeginWithTheOwnItems)
{
    std::string const text = textForm(label);

    // Version, type, box, id as one word; then the text of a label.
    EXPECT_TRUE(text.starts_with("1 1 0 ")) << text;
    Label plain;
    plain.setText("text");
    std::string const ofLabel = textForm(plain);
    EXPECT_EQ(text.substr(text.find(' ', 6) + 1, 8), ofLabel.substr(0, 8));
    EXPECT_TRUE(text.ends_with(' '));
}

TEST_F(ImageLabelForms, asTextBringTheLabelBack)
{
    EXPECT_TRUE(loadText(read, textForm(label)));

    expectAll(read);
}

TEST_F(ImageLabelForms, asTextOfATypeThatThereIsNotFail)
{
    std::string const text = "1 11" + textForm(label).substr(3);

    EXPECT_FALSE(loadText(read, text));

    EXPECT_EQ(read.getLabelType(), ImageLabelCreator::TYPE_POINT);
}

TEST_F(ImageLabelForms, asTextOfANewerVersionAreRefused)
{
    std::string const text = "2" + textForm(label).substr(1);

    EXPECT_EQ(thrownText<IO::StreamException>([&] { loadText(read, text); }), WRONG_VERSION);
}

TEST_F(ImageLabelForms, asParametersEndWithTheOwnOnes)
{
    EXPECT_TRUE(parameterForm(label).ends_with("image_label_label_visible = false\n"
                                               "image_label_element_id = \"P 1\"\n"));
}

TEST_F(ImageLabelForms, asParametersBringTheLabelBack)
{
    loadParameters(read, parameterForm(label));

    expectAll(read);
}

TEST_F(ImageLabelForms, asParametersAreTakenOneByOne)
{
    Support::FakeCalculator const calculator;
    label.update(StageIdentifier(1), nullptr, nullptr);
    loadParameters(label, "image_label_label_visible = true\n");
    EXPECT_TRUE(label.getLabelVisible());
    EXPECT_EQ(label.getImageElementId(), "P 1");
    EXPECT_FALSE(label.isValid());

    loadParameters(label, "image_label_element_id = \"Q\"\n");
    EXPECT_TRUE(label.getLabelVisible());
    EXPECT_EQ(label.getImageElementId(), "Q");
}

std::string savedLabel(ImageLabel const &label)
{
    return Support::streamOf([&label](IO::OutStream &stream) { ImageLabelCreator::save(&stream, &label); });
}

std::unique_ptr<ImageLabel> loadLabel(std::string const &bytes)
{
    std::unique_ptr<ImageLabel> label;
    Support::readFrom(bytes, [&label](IO::InStream &stream) { label.reset(ImageLabelCreator::load(&stream)); });
    return label;
}

using StoredImageLabel = ImageLabelForms;

TEST_F(StoredImageLabel, hasItsTypeInFront)
{
    EXPECT_EQ(Support::blocksOf(savedLabel(label)), "1:4 " + Support::blocksOf(blockForm(label)));
}

TEST_F(StoredImageLabel, isMadeByItsCreator)
{
    MeasuredPointCreator const creator;

    expectAll(*loadLabel(savedLabel(label)));
}

TEST_F(StoredImageLabel, withoutCreatorIsAProgramError)
{
    EXPECT_EQ(progError([this] { loadLabel(savedLabel(label)); }),
              "fig_image_label: No image label creator found for element type 1");
}

TEST_F(StoredImageLabel, isRefusedWhenDamagedOrNew)
{
    EXPECT_EQ(thrownText<IO::StreamException>([] { loadLabel(BlockCrafter().block(2, Payload().u(1)).bytes()); }),
              WRONG_VERSION);
    EXPECT_NE(thrownText<IO::StreamException>([] { loadLabel(BlockCrafter().block(1, Payload().u(11)).bytes()); }),
              "nothing thrown");
}

TEST_F(StoredImageLabel, ofImportedMarksKeepsThem)
{
    InitLibrary();
    ImageDataObjectLabel own;
    own.setText("text");
    own.getImageDataObject().setDisplayText("shown");
    own.getImageDataObject().addElement(new ImageDataFixedLine({1, 2}, {3, 4}, LineStyle()));

    std::unique_ptr<ImageLabel> const loaded = loadLabel(savedLabel(own));

    auto const &other = dynamic_cast<ImageDataObjectLabel const &>(*loaded);
    EXPECT_EQ(other.getText(), "text");
    EXPECT_EQ(other.getImageDataObject().getDisplayText(), "shown");
    EXPECT_EQ(other.getImageDataObject().getElementEnd() - other.getImageDataObject().getElementBegin(), 1);
    ImageLabelCreator::destroyCreators();
}

/// A figure with a measured point on an image, and a rectangle above.
class FigureWithImageLabel : public ImageLabelTest
{
protected:
    FigureWithImageLabel()
    {
        label->setText("text");
        label->getScriptObject()->setName("the point");
        connectLabel();
        auto *rectangle = new Rectangle;
        rectangle->getScriptObject()->setName("above");
        figure.getRoot()->addChild(rectangle);
    }

    std::string saved() const
    {
        return Support::streamOf([this](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    }
    void load(std::string const &bytes)
    {
        Support::readFrom(bytes, [this](IO::InStream &stream) { read.load(&stream, -1, -1); });
    }

    Figure read;
};

TEST_F(FigureWithImageLabel, comesBack)
{
    MeasuredPointCreator const creator;

    load(saved());

    ASSERT_EQ(read.getRoot()->getChildEnd() - read.getRoot()->getChildBegin(), 3);
    auto const *point = dynamic_cast<MeasuredPoint const *>(read.getRoot()->getChildBegin()[1]);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->getText(), "text");
    EXPECT_EQ(point->getScriptObject()->getName(), "the point");
    EXPECT_EQ(point->getFigure(), &read);
    EXPECT_EQ(point->getParent(), read.getRoot());
    EXPECT_EQ(point->getConnectedImage(), read.getRoot()->getChildBegin()[0]);
    EXPECT_EQ(read.getRoot()->getChildBegin()[2]->getScriptObject()->getName(), "above");
}

TEST_F(FigureWithImageLabel, ownsTheLabelsOfAGroupThatIsLoaded)
{
    MeasuredPointCreator const creator;
    label->disconnect(image, "");

    loadBlocks(*read.getRoot(), blockForm(*figure.getRoot()));

    Element const *point = read.getRoot()->getChildBegin()[1];
    EXPECT_EQ(point->getType(), Element::IMAGE_LABEL);
    EXPECT_EQ(point->getFigure(), &read);
}

TEST_F(FigureWithImageLabel, keepsTheMaster)
{
    MeasuredPointCreator const creator;
    figure.getRoot()->setMasterElement(label);

    load(saved());

    EXPECT_EQ(read.getRoot()->getMasterElement(), read.getRoot()->getChildBegin()[1]);
}

TEST_F(FigureWithImageLabel, withoutCreatorIsAProgramError)
{
    EXPECT_EQ(progError([this] { load(saved()); }), "fig_image_label: No image label creator found for element type 1");
}

TEST_F(FigureWithImageLabel, isCopied)
{
    Figure const copy(figure);

    auto const *point = dynamic_cast<MeasuredPoint const *>(copy.getRoot()->getChildBegin()[1]);
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->getConnectedImage(), copy.getRoot()->getChildBegin()[0]);
}

TEST(GroupWithAFalseImageLabel, isNotSaved)
{
    Group group;
    auto *rectangle = new Rectangle;
    rectangle->setType(Element::IMAGE_LABEL);
    group.addChild(rectangle);

    EXPECT_EQ(progError([&group] { blockForm(group); }), "fig_group: Image label cast failed");
}

} // namespace
} // namespace Zem::Fig2
