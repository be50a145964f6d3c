#include "page_document_fixture.h"

#include <ZemFig2Label.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2Rectangle.h>
#include <ZemScriptObject.h>

#include <gtest/gtest.h>

namespace Zem::Zemfig {
namespace {

using namespace Fig2;

TEST(PageDocument, readsPageAndElements)
{
    PageDocument const document = parse(R"(
[page]
size = [100, 50.5]
background = { filled = false, color = "#102030" }
[[element]]
type = "rectangle"
name = "frame"
origin = [10, 20]
size = [4, 2]
visible = false
[element.border]
width = 0.25
style = "dash dotted"
)");

    EXPECT_TRUE(document.problems.empty());
    EXPECT_EQ(document.figure->getSize(), BaVec2d<double>(100, 50.5));
    EXPECT_FALSE(document.figure->getBackground().getFilled());
    EXPECT_EQ(document.figure->getBackground().getColor(), Color(0x10, 0x20, 0x30));
    Element const *frame = find(document, "frame");
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->getType(), Element::RECTANGLE);
    EXPECT_EQ(frame->getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(frame->getSize(), BaVec2d<double>(4, 2));
    EXPECT_FALSE(frame->getVisible());
    EXPECT_EQ(frame->getBorder().getWidth(), 0.25);
    EXPECT_EQ(frame->getBorder().getStyle(), LineStyle::STYLE_DASH_DOTTED);
}

TEST(PageDocument, takesKeysJoinedByUnderscoresAndNestedTablesAlike)
{
    PageDocument const flat = parse("[[element]]\ntype = \"rectangle\"\nname = \"r\"\nborder_width = 0.7\n");
    PageDocument const nested = parse("[[element]]\ntype = \"rectangle\"\nname = \"r\"\nborder = { width = 0.7 }\n");

    EXPECT_EQ(find(flat, "r")->getBorder().getWidth(), 0.7);
    EXPECT_EQ(find(nested, "r")->getBorder().getWidth(), 0.7);
}

TEST(PageDocument, readsFontsAsTablesAndAsTexts)
{
    PageDocument const document = parse(R"(
[[element]]
type = "label"
name = "a"
font = { family = "Liberation Serif", size = 8.5, bold = true, underline = true }
[[element]]
type = "label"
name = "b"
font = "Liberation Mono,7,1"
)");

    EXPECT_EQ(find(document, "a")->getUserFont(), Font("Liberation Serif", 8.5, Font::BOLD | Font::UNDERLINE));
    EXPECT_EQ(find(document, "b")->getUserFont(), Font("Liberation Mono", 7.0, Font::ITALIC));
}

TEST(PageDocument, givesKeysOfAGroupToTheGroupItself)
{
    PageDocument const document = parse(R"(
[[element]]
type = "group"
name = "g"
visible = false
master = "second"
[[element.children]]
type = "rectangle"
name = "first"
[[element.children]]
type = "rectangle"
name = "second"
)");

    EXPECT_TRUE(document.problems.empty());
    EXPECT_FALSE(find(document, "g")->getVisible());
    EXPECT_TRUE(find(document, "first")->getVisible());
    EXPECT_EQ(static_cast<Group *>(find(document, "g"))->getMasterElement(), find(document, "second"));
}

TEST(PageDocument, movesAGroupWithItsOrigin)
{
    PageDocument const document = parse(R"(
[[element]]
type = "group"
origin = [10, 10]
[[element.children]]
type = "rectangle"
name = "first"
origin = [1, 2]
[[element.children]]
type = "rectangle"
name = "second"
origin = [3, 3]
)");

    EXPECT_EQ(find(document, "first")->getOrigin(), BaVec2d<double>(10, 10));
    EXPECT_EQ(find(document, "second")->getOrigin(), BaVec2d<double>(12, 11));
}

TEST(PageDocument, leavesANameToTheElementThatAsksForIt)
{
    PageDocument const document = parse(R"(
[[element]]
type = "label"
[[element]]
type = "rectangle"
name = "label_1"
)");

    EXPECT_TRUE(document.problems.empty());
    EXPECT_EQ(find(document, "label_1")->getType(), Element::RECTANGLE);
    EXPECT_EQ(find(document, "label_2")->getType(), Element::LABEL);
}

TEST(PageDocument, keepsTheDataTable)
{
    PageDocument const document = parse("[data]\nfile = \"a.csv\"\ndecimal_comma = true\nfirst_stage = 5\n");

    EXPECT_EQ(document.data["file"].toString(), "a.csv");
    EXPECT_EQ(document.data["decimal_comma"].toString(), "true");
    EXPECT_EQ(document.data["first_stage"].toString(), "5");
}

struct BadDocument
{
    char const *name;
    char const *text;
    char const *problems;
};

class BadDocuments : public testing::TestWithParam<BadDocument>
{
};

TEST_P(BadDocuments, areToldWithLineAndReason)
{
    EXPECT_EQ(problemsOf(GetParam().text), GetParam().problems);
}

INSTANTIATE_TEST_SUITE_P(
    PageDocument, BadDocuments,
    testing::Values(
        BadDocument{"unknownSection", "[pages]\nsize = [1, 2]\n",
                    "p.toml:1: unknown section 'pages' (did you mean 'page'?)\n"},
        BadDocument{"unknownKey", "[[element]]\ntype = \"line\"\nname = \"l\"\npiont2 = [1, 2]\n",
                    "p.toml:4: unknown key 'piont2' in line 'l' (did you mean 'point2'?)\n"},
        BadDocument{"unknownType", "[[element]]\ntype = \"labl\"\n",
                    "p.toml:2: unknown element type 'labl' (did you mean 'label'?)\n"},
        BadDocument{"noType", "[[element]]\nname = \"x\"\n", "p.toml:1: an element wants a 'type' such as \"label\"\n"},
        BadDocument{"textForNumber", "[[element]]\ntype = \"line\"\nname = \"l\"\nangle = \"steep\"\n",
                    "p.toml:4: 'angle' wants a number, not a text\n"},
        BadDocument{"numberForVector", "[[element]]\ntype = \"line\"\nname = \"l\"\npoint1 = 5\n",
                    "p.toml:4: 'point1' wants two numbers as [x, y], not a number\n"},
        BadDocument{"infiniteCoordinate", "[[element]]\ntype = \"line\"\nname = \"l\"\npoint1 = [inf, 0]\n",
                    "p.toml:4: 'point1' wants two numbers as [x, y], not a list\n"},
        BadDocument{"planeVectorForSpace", "[[element]]\ntype = \"image\"\nimage_cs_origin = [1, 2]\n",
                    "p.toml:3: 'image_cs_origin' wants three numbers as [x, y, z], not a list\n"},
        BadDocument{"looksAsAKey", "[[element]]\ntype = \"image\"\nname = \"i\"\nvisualisations = [1]\n",
                    "p.toml:4: unknown key 'visualisations' in image 'i'\n"},
        BadDocument{"badColour", "[[element]]\ntype = \"line\"\nname = \"l\"\nborder_color = \"red\"\n",
                    "p.toml:4: 'border_color' wants a colour as \"#rrggbb\" or \"#rrggbbaa\", not a text\n"},
        BadDocument{"sizeOfALine", "[[element]]\ntype = \"line\"\nname = \"l\"\nsize = [1, 2]\n",
                    "p.toml:4: unknown key 'size' in line 'l'\n"},
        BadDocument{"nameTwice",
                    "[[element]]\ntype = \"line\"\nname = \"l\"\n[[element]]\ntype = \"line\"\nname = \"l\"\n",
                    "p.toml:6: the name 'l' is taken already\n"},
        BadDocument{"missingTarget", "[[element]]\ntype = \"label\"\nname = \"l\"\nconnect = \"chart\"\n",
                    "p.toml:4: label 'l' is to be connected to 'chart', which does not exist\n"},
        BadDocument{"targetThatTakesNoConnector",
                    "[[element]]\ntype = \"label\"\nname = \"l\"\nconnect = [\"m\"]\n[[element]]\ntype = "
                    "\"line\"\nname = \"m\"\n",
                    "p.toml:4: label 'l' cannot be connected to line 'm'\n"},
        BadDocument{"masterThatIsNoChild", "[[element]]\ntype = \"group\"\nname = \"g\"\nmaster = \"x\"\n",
                    "p.toml:4: group 'g' has no child 'x'\n"},
        BadDocument{"emptyPage", "[page]\nsize = [0, 10]\n",
                    "p.toml:2: 'size' wants two numbers above 0 as [width, height]\n"},
        BadDocument{"badFontKey", "[[element]]\ntype = \"label\"\nname = \"l\"\nfont = { szie = 3 }\n",
                    "p.toml:4: bad key 'szie' in the font of label 'l' (did you mean 'size'?)\n"},
        BadDocument{"fontThatDoesNotExist",
                    "[[element]]\ntype = \"label\"\nname = \"l\"\nqqqqqqqqqqqqqqqq_font = { size = 3 }\n",
                    "p.toml:4: unknown key 'qqqqqqqqqqqqqqqq_font' in label 'l'\n"}),
    [](auto const &test) { return test.param.name; });

TEST(PageDocument, tellsEveryProblemInTheOrderOfTheFile)
{
    std::string const problems = problemsOf("[page]\nsize = 3\n[[element]]\ntype = \"line\"\nangel = 1\nvisible = 2\n");

    EXPECT_EQ(problems, "p.toml:2: 'size' wants two numbers above 0 as [width, height]\n"
                        "p.toml:5: unknown key 'angel' in line 'line_1' (did you mean 'angle'?)\n"
                        "p.toml:6: 'visible' wants true or false, not a number\n");
}

TEST(PageDocument, tellsWhereItIsNoToml)
{
    PageDocument const document = parse("[page\nsize = 1\n");

    ASSERT_EQ(document.problems.size(), 1U);
    EXPECT_EQ(document.problems[0].line, 1);
    EXPECT_EQ(document.figure, nullptr);
}

TEST(PageDocument, tellsTheLineOfAHeaderThatIsNoKey)
{
    for (char const *header : {"[!x]", "[ =]", "[[.]]", "[#]", "[page.!]", "[", "[["}) {
        PageDocument const document = parse((std::string("[data]\n") + header + "\n").c_str());
        ASSERT_EQ(document.problems.size(), 1U) << header;
        EXPECT_EQ(document.problems.front().line, 2) << header;
        EXPECT_EQ(document.figure, nullptr);
    }
}

TEST(PageDocument, writesOnlyWhatDiffersFromTheDefaults)
{
    Figure figure;
    auto *line = new Line;
    line->setPoint1({1, 2});
    line->setPoint2({0.1, 1e300});
    line->setBorder(LineStyle(0.5, LineStyle::STYLE_FULL, Color(255, 0, 0)));
    figure.getRoot()->addChild(line);

    EXPECT_EQ(writePageDocument(figure).toStdString(), R"([page]
size = [210, 297]
background = { filled = true, color = "#ffffff" }

[[element]]
type = "line"
name = "line_0"
border = { width = 0.5, color = "#ff0000", style = "full" }
point1 = [1, 2]
point2 = [0.1, 1e+300]
)");
}

TEST(PageDocument, writesARecordOnceThoughItsKeysDoNotStandTogether)
{
    Figure figure;
    auto *label = new Label;
    label->setColorBarVisible(true);
    label->setTextAlignmentX(ALIGN_CENTER);
    ColorBar bar = label->getColorBar();
    bar.setWidth(2.5);
    label->setColorBar(bar);
    figure.getRoot()->addChild(label);

    EXPECT_EQ(writePageDocument(figure).toStdString(), R"([page]
size = [210, 297]
background = { filled = true, color = "#ffffff" }

[[element]]
type = "label"
name = "label_0"
color_bar = { visible = true, width = 2.5 }
align_x = "center"
)");
}

TEST(PageDocument, comesBackEqualWhateverItHolds)
{
    Figure figure;
    figure.setSize({100.125, 1.0 / 3.0});
    auto *group = new Group;
    figure.getRoot()->addChild(group);
    auto *label = new Label;
    label->setText(QStringLiteral("a \"quote\", a \\ and\nanother line \u00b5\u0001"));
    label->setOrigin({-0.0, 123456789012345678.0});
    label->setFont(Font("Liberation Sans", 1.0 / 3.0, 0x1000));
    label->setAutoSize(false);
    label->setSize({5, 6});
    group->addChild(label);
    auto *polygon = new Polygon;
    polygon->setPolygon(Polygon2d({{0, 0}, {1e-7, 1}, {-2, 3}}, true));
    polygon->setBackground(FillStyle(Color(1, 2, 3, 4)));
    group->addChild(polygon);
    group->setMasterElement(polygon);

    PageDocument const read = parsePageDocument(writePageDocument(figure).toUtf8(), QStringLiteral("p.toml"));

    EXPECT_TRUE(read.problems.empty());
    EXPECT_EQ(read.figure->toString().toStdString(), figure.toString().toStdString());
    EXPECT_EQ(read.figure->getSize(), figure.getSize());
    auto *readGroup = static_cast<Group *>(*read.figure->getRoot()->getChildBegin());
    EXPECT_EQ(readGroup->getMasterElement()->getType(), Element::POLYGON);
    EXPECT_EQ(writePageDocument(*read.figure), writePageDocument(figure));
}

TEST(PageDocument, writesThePartThatALabelIsConnectedTo)
{
    PageDocument const document = parse(R"(
[[element]]
type = "label"
name = "l"
connect = [{ to = "c", part = "force" }]
[[element]]
type = "chart"
name = "c"
)");
    ASSERT_TRUE(document.problems.empty());

    QString const written = writePageDocument(*document.figure, {}, document.scale);

    EXPECT_TRUE(written.contains("connect = [{ to = \"c\", part = \"force\" }]\n")) << written.toStdString();
}

TEST(PageDocument, writesTheControlCharactersOfATextAsEscapes)
{
    PageDocument const document = parse(R"(
[[element]]
type = "label"
name = "l"
text = "a\u007f\u0001b"
)");
    ASSERT_TRUE(document.problems.empty());

    QString const written = writePageDocument(*document.figure, {}, document.scale);

    EXPECT_TRUE(written.contains("text = \"a\\u007f\\u0001b\"\n")) << written.toStdString();
}

TEST(PageDocument, keepsALegendThroughWriting)
{
    PageDocument const document = parse(R"(
[scale]
token = "a"
tolerance = { title = "T", pass_text = "fine" }
[[element]]
type = "legend"
name = "scale"
legend_data_mode = "manual"
tick_line = { width = 0.25 }
legend = { quantity = "strain", unit = "%", digits = 3, minimum_mode = "fixed", minimum = -0.5 }
)");
    ASSERT_TRUE(document.problems.empty());
    ASSERT_TRUE(document.scale);
    EXPECT_EQ(document.scale->token, QStringLiteral("a"));
    EXPECT_EQ(document.scale->tolerance.getText(Legend2::TOLERANCE_PASS), QStringLiteral("fine"));

    QString const written = writePageDocument(*document.figure, {}, document.scale);
    PageDocument const again = parsePageDocument(written.toUtf8(), QStringLiteral("again"));

    ASSERT_TRUE(again.problems.empty()) << written.toStdString();
    EXPECT_EQ(again.scale, document.scale);
    auto const *legend = dynamic_cast<Legend const *>(find(again, "scale"));
    ASSERT_NE(legend, nullptr);
    EXPECT_EQ(legend->getParameterString(), find(document, "scale")->getParameterString());
    Legend2::Legend const *scale = nullptr;
    Legend2::Data const *data = nullptr;
    legend->getLocalLegendData(&scale, &data);
    EXPECT_EQ(scale->getUnitName(), QStringLiteral("%"));
    EXPECT_EQ(scale->getDigits(), 3);
    EXPECT_EQ(scale->getMinimum(Legend2::Data()), -0.5);
    EXPECT_EQ(legend->getTickStyle().getWidth(), 0.25);
}

} // namespace
} // namespace Zem::Zemfig
