#include "label_fixture.h"

#include <BlockCrafter.h>

#include <ZemParse.h>

#include <memory>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

LineStyle const CONNECTOR_STYLE(0.25, LineStyle::STYLE_DOTTED, Color(1, 2, 3));

ColorBar testBar()
{
    ColorBar bar;
    bar.setSide(ColorBar::SIDE_LEFT);
    bar.setWidth(2.5);
    return bar;
}

void fill(Label *label)
{
    label->setText(QString::fromUtf8("<b>5 µm</b> $a$"));
    label->setColorBarVisible(true);
    label->setColorBar(testBar());
    label->setTextAlignmentX(ALIGN_CENTER);
    label->setTextAlignmentY(ALIGN_END);
    label->setExpandWidth(true);
    label->setConnectorPoint({12.5, 13});
    label->setConnectorStyle(CONNECTOR_STYLE);
    label->setTemplateName("my template");
}

/// What stands behind the entries of the base.
std::string const PARAMETERS =
    "text = \"<b>5 µm</b> $a$\"\ncolor_bar_visible = true\nalign_x = \"center\"\nalign_y = \"end\"\n"
    "expand_width = true\nconnector_point = (12.5, 13)\n"
    "color_bar_range = (0, 0)\ncolor_bar_value = 0\ncolor_bar_value_valid = false\ncolor_bar_color = #000000ff\n"
    "color_bar_width = 2.5\ncolor_bar_variable_length = true\ncolor_bar_minimum_length = 0\n"
    "color_bar_side = \"left\"\ncolor_bar_border_width = 1\ncolor_bar_border_color = #000000ff\n"
    "color_bar_border_style = \"full\"\ncolor_bar_border_cap_style = \"sharp\"\n"
    "color_bar_background_filled = false\ncolor_bar_background_color = #000000ff\n"
    "connector_style_width = 0.25\nconnector_style_color = #010203ff\nconnector_style_style = \"dotted\"\n"
    "connector_style_cap_style = \"sharp\"\ntemplate_name = \"my template\"\n";

/// The label's own entries.
std::string ownParameters(Label const &label)
{
    QString const all = label.getParameterString();
    QString const base = label.AreaBase::getParameterString();
    EXPECT_TRUE(all.startsWith(base));
    return all.mid(base.size()).toStdString();
}

TEST(LabelParameters, followThoseOfTheBaseInOrder)
{
    Label label;
    fill(&label);
    EXPECT_EQ(ownParameters(label), PARAMETERS);
}

TEST(LabelParameters, areReadBack)
{
    Label label;
    QString parameters = QString::fromStdString(PARAMETERS);
    label.createFromParameterString(parameters);
    EXPECT_EQ(parameters, "");
    EXPECT_EQ(ownParameters(label), PARAMETERS);
}

TEST(LabelParameters, changeOnlyWhatTheyName)
{
    Label label;
    fill(&label);
    QString parameters = QStringLiteral("align_y = \"begin\"\ncolor_bar_width = 2.5\n");
    label.createFromParameterString(parameters);
    EXPECT_EQ(label.getTextAlignmentY(), ALIGN_BEGIN);
    label.setTextAlignmentY(ALIGN_END);
    EXPECT_EQ(ownParameters(label), PARAMETERS);
    EXPECT_FALSE(label.isValid());
}

TEST(LabelParameters, refuseBadValues)
{
    for (char const *entry : {"align_x = \"middle\"\n", "expand_width = perhaps\n", "connector_point = 5\n",
                              "color_bar_side = \"middle\"\n", "connector_style_width = -1\n"}) {
        Label label;
        QString parameters = QString::fromLatin1(entry);
        EXPECT_THROW(label.createFromParameterString(parameters), ParamError) << entry;
    }
}

std::string saved(Label const &label)
{
    return Support::streamOf([&](IO::OutStream &stream) { label.save(&stream, 0, 0); });
}

void load(Label *label, std::string const &bytes)
{
    Support::readFrom(bytes, [label](IO::InStream &stream) { label->load(&stream, 0, 0); });
}

/// Blocks of the base, the label's own as crafted, then bar and connector style.
std::string crafted(unsigned int version, Payload const &payload, bool withStyle = true)
{
    BlockCrafter crafter;
    crafter.add([](IO::OutStream &stream) { TestArea(Element::LABEL).save(&stream, 0, 0); });
    crafter.block(version, payload);
    crafter.add([withStyle](IO::OutStream &stream) {
        testBar().save(&stream);
        if (withStyle)
            CONNECTOR_STYLE.save(&stream);
    });
    return crafter.bytes();
}

TEST(LabelBlock, followsThoseOfTheBase)
{
    Label label;
    fill(&label);
    label.setText("abc");
    std::string const blocks = Support::blocksOf(saved(label));
    std::string const base = Support::blocksOf(
        Support::streamOf([&](IO::OutStream &stream) { label.AreaBase::save(&stream, 0, 0); }));
    // 26 and the texts: 4 + 3, 4 + 11
    EXPECT_EQ(blocks, base + "7:48 3:50 2:20 1:5 2:20 ");
}

TEST(LabelBlock, hasItsFieldsInOrder)
{
    Label label;
    fill(&label);
    std::string const bytes = saved(label);
    std::string const own = crafted(
        7, Payload().s("<b>5 µm</b> $a$").b(true).u(1).u(2).b(true).v(12.5, 13).s("my template"));
    std::size_t const length = 8 + 4 + 26 + 4 + 16 + 4 + 11 + 12 + 50 + 12 + 20 + 12 + 5 + 12 + 20;
    EXPECT_EQ(bytes.substr(bytes.size() - length), own.substr(own.size() - length));
    Label read;
    load(&read, bytes);
    EXPECT_EQ(ownParameters(read), PARAMETERS);
}

TEST(LabelBlock, readIntoAUsedLabelForgetsItsTokens)
{
    Label label;
    label.setText("$old$");
    EXPECT_TRUE(label.isTokenUsed("old"));
    load(&label, crafted(7, Payload().s("$a$").b(true).u(1).u(2).b(true).v(1, 2).s("")));
    EXPECT_TRUE(label.isTokenUsed("a"));
    EXPECT_FALSE(label.isTokenUsed("old"));
    EXPECT_FALSE(label.isValid());
}

/// A label block of an old version with all the fields that it had.
std::string oldBlock(unsigned int version, std::string const &text)
{
    Payload payload;
    payload.s(text).b(true).u(1).u(2);
    if (version >= 3)
        payload.b(true);
    if (version >= 5)
        payload.v(12.5, 13);
    if (version >= 7)
        payload.s("my template");
    return crafted(version, payload, version >= 2);
}

class LabelBlockVersion : public testing::TestWithParam<unsigned int>
{
};

TEST_P(LabelBlockVersion, givesFieldsThatItLacksTheirDefaults)
{
    unsigned int const version = GetParam();
    Label label;
    fill(&label);
    label.setConnectorStyle(LineStyle::null);
    load(&label, oldBlock(version, "x"));
    EXPECT_EQ(label.getText(), "x");
    EXPECT_TRUE(label.getColorBarVisible());
    EXPECT_EQ(label.getColorBar().getWidth(), 2.5);
    EXPECT_EQ(label.getTextAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(label.getTextAlignmentY(), ALIGN_END);
    EXPECT_EQ(label.getExpandWidth(), version >= 3);
    EXPECT_EQ(label.getConnectorPoint(), version >= 5 ? BaVec2d<double>(12.5, 13) : LabelBase::INVALID_POINT);
    EXPECT_EQ(label.getTemplateName(), version >= 7 ? "my template" : "");
    EXPECT_EQ(label.getConnectorStyle(), version >= 2 ? CONNECTOR_STYLE : LineStyle::null);
}

TEST_P(LabelBlockVersion, bringsItsTextUpToDate)
{
    unsigned int const version = GetParam();
    auto const textOf = [version](char const *text) {
        Label label;
        load(&label, oldBlock(version, text));
        return label.getText();
    };
    char const *const rich = "<html><body>x<td>y</td></body></html>";
    if (version < 4) {
        EXPECT_EQ(textOf("a > b\n<color red>c</color>"), "a &gt; b<br>\n<span style=\"color:red\">c</span>");
        EXPECT_EQ(textOf(rich), "x<td><p>y</p></td>");
    } else if (version < 6) {
        EXPECT_EQ(textOf("a < b\n"), "a < b\n");
        EXPECT_EQ(textOf(rich), "<html><body>x<td><p>y</p></td></body></html>");
    } else {
        EXPECT_EQ(textOf("a < b\n"), "a < b\n");
        EXPECT_EQ(textOf(rich), rich);
    }
}

INSTANTIATE_TEST_SUITE_P(All, LabelBlockVersion, testing::Range(1U, 8U));

TEST(LabelBlock, thatIsNewerOrDamagedIsRefused)
{
    auto const full = [](unsigned int x, unsigned int y) {
        return Payload().s("x").b(true).u(x).u(y).b(true).v(1, 2).s("");
    };
    auto const errorOf = [](std::string const &bytes) {
        Label label;
        try {
            load(&label, bytes);
        } catch (IO::StreamException const &error) {
            return error.getText().toStdString();
        }
        return std::string("nothing was thrown");
    };
    EXPECT_EQ(errorOf(crafted(8, full(1, 2))), "cannot load figure label: wrong block version");
    EXPECT_EQ(errorOf(crafted(0, full(1, 2))), "cannot load figure label: wrong block version");
    for (std::string const &bytes : {crafted(7, full(3, 0)), crafted(7, full(0, 3)), crafted(7, Payload().s("x"))})
        EXPECT_EQ(errorOf(bytes).rfind("cannot load figure label: ", 0), 0U);
}

std::string const BAR_TEXT = "1 0 0 0 #000000ff 2.5 1 0 2 0 1 1 1 #000000ff 1 1 0 #000000ff ";
std::string const STYLE_TEXT = "1 0.25 2 #010203ff 1 ";

std::string areaText()
{
    std::ostringstream output;
    TestArea(Element::LABEL).saveToStream(output);
    return output.str();
}

TEST(LabelTextForm, isVersionFieldsBarStyleAndTemplateInFrontOfTheBase)
{
    Label label;
    fill(&label);
    std::ostringstream output;
    label.saveToStream(output);
    std::ostringstream base;
    label.AreaBase::saveToStream(base);
    EXPECT_EQ(output.str(), "3 <b>5\\sµm</b>\\s$a$ 1 1 2 1 12.5 13 " + BAR_TEXT + STYLE_TEXT + "my\\stemplate " +
                                base.str());
    Label read;
    std::istringstream input(output.str());
    read.loadFromStream(input);
    EXPECT_TRUE(input);
    EXPECT_EQ(ownParameters(read), PARAMETERS);
}

TEST(LabelTextForm, ofAnEmptyTextHasAWordAllTheSame)
{
    Label label;
    fill(&label);
    label.setText("");
    label.setTemplateName("");
    std::ostringstream output;
    label.saveToStream(output);
    EXPECT_EQ(output.str().rfind("3 \\e 1 1 2 1 12.5 13 " + BAR_TEXT + STYLE_TEXT + "\\e ", 0), 0U);
    Label read;
    fill(&read);
    std::istringstream input(output.str());
    read.loadFromStream(input);
    EXPECT_EQ(read.getText(), "");
    EXPECT_EQ(read.getTemplateName(), "");
}

TEST(LabelTextForm, ofOlderVersionsHasNoTemplate)
{
    for (char const *version : {"1", "2"}) {
        Label label;
        label.setTemplateName("kept");
        std::istringstream input(version + (" <td>y</td> 1 2 1 1 5 6\n" + BAR_TEXT) + STYLE_TEXT + areaText());
        label.loadFromStream(input);
        EXPECT_TRUE(input);
        EXPECT_EQ(label.getText(), *version == '1' ? "<td><p>y</p></td>" : "<td>y</td>");
        EXPECT_EQ(label.getTextAlignmentX(), ALIGN_END);
        EXPECT_EQ(label.getConnectorPoint(), BaVec2d<double>(5, 6));
        EXPECT_EQ(label.getConnectorStyle(), CONNECTOR_STYLE);
        EXPECT_EQ(label.getTemplateName(), "kept");
    }
}

TEST(LabelTextForm, thatIsNewerIsRefused)
{
    Label label;
    std::istringstream input("4 x 1 2 1 1 5 6 " + BAR_TEXT + STYLE_TEXT + "\\e " + areaText());
    try {
        label.loadFromStream(input);
        FAIL();
    } catch (IO::StreamException const &error) {
        EXPECT_EQ(error.getText(), "wrong block version");
    }
}

TEST(LabelTextForm, thatIsDamagedFailsTheStream)
{
    for (char const *text : {"", "3", "3 x 1 5 0 0 5 6", "x y z"}) {
        Label label;
        std::istringstream input(text);
        label.loadFromStream(input);
        EXPECT_FALSE(input) << text;
    }
}

TEST(LabelCopy, hasAllButWhatWasSeenOfTokens)
{
    Support::TestTokens tokens;
    tokens.set("a", Value(7));
    StageIdentifier const stage(1);
    Label label;
    fill(&label);
    label.computeDynamicData(stage, &tokens);
    ASSERT_TRUE(label.isDataValid(stage, &tokens));

    std::unique_ptr<Element> const element(label.copy());
    auto const *copy = dynamic_cast<Label const *>(element.get());

    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(ownParameters(*copy), PARAMETERS);
    EXPECT_EQ(copy->getResolvedText(), label.getResolvedText());
    EXPECT_EQ(copy->getResolvedTextSize(), label.getResolvedTextSize());
    EXPECT_EQ(copy->getTextCacheId(), label.getTextCacheId());
    EXPECT_FALSE(copy->isDataValid(stage, &tokens));
    EXPECT_TRUE(copy->isTokenUsed("a"));
    EXPECT_NE(copy->getId(), label.getId());
}

TEST(LabelSize, growsWithItsText)
{
    Label label;
    unsigned int const empty = label.getEstimatedObjectSize();
    label.setText(QStringLiteral("x").repeated(1000));
    EXPECT_GE(label.getEstimatedObjectSize(), empty + 2000);
}

} // namespace
} // namespace Zem::Fig2
