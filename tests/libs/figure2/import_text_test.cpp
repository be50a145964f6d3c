// The texts of older figures and the charts whose values they name.
#include "import_fixture.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Image.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2RichText.h>

namespace Zem::Fig2 {
namespace {

using Support::oldAxis;
using Support::oldChart;
using Support::oldFigure;
using Support::oldGroup;
using Support::oldText;
using Support::OldTextFields;
using Support::Payload;

using Point = BaVec2d<double>;

std::unique_ptr<Label> importText(unsigned int version, OldTextFields const &fields = {})
{
    return importAs<Label>(Import::OLD_TEXT, oldText(version, fields));
}

std::unique_ptr<Label> importText(std::string const &text)
{
    OldTextFields fields;
    fields.text = text;
    return importText(4, fields);
}

OldRecords text(std::string const &content, int target = -1, std::string const &object = "")
{
    OldTextFields fields;
    fields.text = content;
    fields.target = target;
    fields.object = object;
    return oldElementOf(Import::OLD_TEXT, oldText(4, fields));
}

OldRecords chart(std::string const &token, int id = -1)
{
    Support::OldChartFields fields;
    fields.token = token;
    return oldElementOf(Import::OLD_CHART, oldChart(1, fields).add(oldAxis(1)).add(oldAxis(1)), {id, true});
}

OldRecords group(std::vector<OldRecords> const &elements)
{
    OldRecords records = oldElementOf(Import::OLD_GROUP, oldGroup(1, static_cast<unsigned int>(elements.size())));
    for (OldRecords const &element : elements)
        records.add(element);
    return records;
}

/// The token of the chart that the label is connected to.
std::string chartOf(Label const &label)
{
    auto const *target = dynamic_cast<Chart const *>(label.getConnectorTarget(nullptr));
    return target ? target->getToken().toStdString() : "none";
}

TEST(ImportText, standsWithItsCornerInVersion1)
{
    auto const label = importText(1);

    EXPECT_TRUE(label->getAutoSize());
    EXPECT_EQ(label->getAlignmentOrigin(), Point(10, 20));
    EXPECT_EQ(label->getText(), "length $5.2[mm]part.length$");
    EXPECT_EQ(label->getUserFont(), Font("Courier", 9.0, Font::ITALIC | Font::BOLD | Font::UNDERLINE));
    EXPECT_FALSE(label->hasConnectorPoint());
    EXPECT_EQ(label->getBorder().getStyle(), LineStyle::STYLE_NONE);
    EXPECT_FALSE(label->getBackground().getFilled());
    EXPECT_EQ(label->getAngle(), 0.0);
}

TEST(ImportText, hasSizeAndAlignmentFromVersion2On)
{
    auto const label = importText(2);

    EXPECT_FALSE(label->getAutoSize());
    EXPECT_EQ(label->getOrigin(), Point(30, 35));
    EXPECT_EQ(label->getSize(), Point(40, 30));
    EXPECT_EQ(label->getTextAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(label->getTextAlignmentY(), ALIGN_END);
}

TEST(ImportText, ofNoSizeIsAsLargeAsItsText)
{
    OldTextFields fields;
    fields.width = 0.0;
    fields.height = 0.0;

    auto const label = importText(2, fields);

    EXPECT_TRUE(label->getAutoSize());
    EXPECT_EQ(label->getAlignmentOrigin(), Point(10, 20));
}

TEST(ImportText, ofNoWidthKeepsItsHeight)
{
    OldTextFields fields;
    fields.width = 0.0;

    auto const label = importText(2, fields);

    EXPECT_FALSE(label->getAutoSize());
    EXPECT_EQ(label->getSize(), Point(0, 30));
}

TEST(ImportText, hasAFrameFromVersion3On)
{
    auto const label = importText(3);

    EXPECT_EQ(label->getBorder(), LineStyle(0.5, LineStyle::STYLE_DASHED, Color(200, 10, 20)));
    EXPECT_EQ(label->getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_EQ(label->getAngle(), 0.25);
}

TEST(ImportText, mayLeadToAPointFromVersion4On)
{
    OldTextFields fields;
    fields.hasPoint = true;

    EXPECT_EQ(importText(4, fields)->getConnectorPoint(), Point(70, 80));
    EXPECT_FALSE(importText(4)->hasConnectorPoint());
    EXPECT_FALSE(importText(3, fields)->hasConnectorPoint());
}

TEST(ImportText, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_TEXT, OldRecords().record(5, Payload())), "wrong block version");
}

TEST(ImportText, withAnUnknownAlignmentIsRefused)
{
    OldTextFields fields;
    fields.alignmentY = 3;

    EXPECT_EQ(elementRefusal(Import::OLD_TEXT, oldText(2, fields)), "illegal value 3 in block");
}

TEST(ImportText, thatIsPlainBecomesRich)
{
    EXPECT_EQ(importText("a < b")->getText(), "a &lt; b");
    EXPECT_EQ(importText("<color red>hot</color>")->getText(), "<span style=\"color:red\">hot</span>");
}

TEST(ImportText, thatIsPlainHasTheColourOfItsFont)
{
    OldTextFields fields;
    fields.text = "a";
    fields.font.red = 255;
    fields.font.green = 16;

    EXPECT_EQ(importText(1, fields)->getText(), "<span style=\"color:#ff1000\">a</span>");
}

TEST(ImportText, thatIsRichLosesTheTagsOfADocument)
{
    EXPECT_EQ(importText("<html><head></head><body style=\"x\"><p>rich</p></body></html>")->getText(), "<p>rich</p>");
}

TEST(ImportText, thatIsRichHasItsCellsRepaired)
{
    EXPECT_EQ(importText("<html><body><table><tr><td>1</td></tr></table></body></html>")->getText(),
              RTFTools::convertToQt4("<table><tr><td>1</td></tr></table>"));
}

TEST(ImportFont, ofNoFamilyAndSizeIsTheDefault)
{
    OldTextFields fields;
    fields.font = {"", 0.0, 0, 0, 0, 0};

    EXPECT_EQ(importText(1, fields)->getUserFont(), Font());
}

TEST(ImportFont, hasASizeThatIsANumberAboveZero)
{
    for (double size : {-1.0, 0.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        OldTextFields fields;
        fields.font.size = size;
        EXPECT_EQ(importText(1, fields)->getUserFont().getSize(), 12.0);
    }
}

TEST(ImportFont, takesTheFlagsItKnows)
{
    OldTextFields fields;
    fields.font.flags = 0xffffff84;

    EXPECT_EQ(importText(1, fields)->getUserFont().getStyle(), unsigned{Font::LIGHT});
    for (unsigned int flag : {1U, 2U, 4U, 8U, 16U, 32U, 64U}) {
        fields.font.flags = flag;
        EXPECT_EQ(importText(1, fields)->getUserFont().getStyle(), flag);
    }
}

TEST(ImportTextTarget, isTheElementOfItsId)
{
    auto const figure = importFigure(oldFigure({text("a", 5), chart("first", 4), chart("second", 5)}));

    EXPECT_EQ(chartOf(childAt<Label>(*figure, 0)), "second");
}

TEST(ImportTextTarget, isTheLaterOfTwoElementsWithOneId)
{
    auto const figure = importFigure(oldFigure({chart("first", 5), chart("second", 5), text("a", 5)}));

    EXPECT_EQ(chartOf(childAt<Label>(*figure, 2)), "second");
}

TEST(ImportTextTarget, mayBeAnObjectOfAnImage)
{
    auto const figure = importFigure(
        oldFigure({oldElementOf(Import::OLD_IMAGE, Support::oldImage(1), {3, true}), text("a", 3, "bolt")}));

    QString object;
    EXPECT_EQ(childAt<Label>(*figure, 1).getConnectorTarget(&object), &childAt<Image>(*figure, 0));
    EXPECT_EQ(object, "bolt");
}

TEST(ImportTextTarget, thatIsNotThereIsDropped)
{
    ImportReport report;

    auto const figure = importFigure(oldFigure({text("a", 7)}), &report);

    EXPECT_EQ(childAt<Label>(*figure, 0).getConnectorTarget(nullptr), nullptr);
    EXPECT_EQ(losses(report), "text 1 dropped: what it annotates is not there\n");
}

TEST(ImportTextTarget, thatCannotBeAnnotatedIsDropped)
{
    ImportReport report;

    importFigure(oldFigure({oldElementOf(Import::OLD_RECTANGLE, Support::oldRectangle(1), {7, true}), text("a", 7)}),
                 &report);

    EXPECT_EQ(losses(report), "text 2 dropped: what it annotates is not there\n");
}

TEST(ImportTextOfAChart, isConnectedToTheChartWhoseValuesItNames)
{
    ImportReport report;

    auto const figure = importFigure(
        oldFigure({chart("force"), chart("strain"), text("max $5.2strain.MAX_Y_left$ min $strain.MIN_Y_left$")}),
        &report);

    EXPECT_EQ(chartOf(childAt<Label>(*figure, 2)), "strain");
    EXPECT_EQ(childAt<Label>(*figure, 2).getText(), "max $5.2MAX_Y_left$ min $MIN_Y_left$");
    EXPECT_EQ(losses(report), "");
}

TEST(ImportTextOfAChart, knowsEachValueOfACharts)
{
    for (char const *value : {"X_UNIT", "Y_UNIT", "NAME_a", "MIN_X_a", "MIN_Y_a", "MAX_X_a", "MAX_Y_a", "AVERAGE_a",
                              "VARIANCE_a", "STD_DEVIATION_a"}) {
        auto const figure = importFigure(oldFigure({chart("strain"), text(std::string("$strain.") + value + "$")}));
        EXPECT_EQ(chartOf(childAt<Label>(*figure, 1)), "strain") << value;
        EXPECT_EQ(childAt<Label>(*figure, 1).getText(), QString("$%1$").arg(value));
    }
}

TEST(ImportTextOfAChart, leavesOtherTokensAlone)
{
    for (char const *content :
         {"$strain.length$", "$strain$", "$MAX_Y_left$", "$other.MAX_Y_left$", "strain.MAX_Y_left", "$strain.X_UNITS$",
          "cost $$ strain.MAX_Y_left", "one $strain.MAX_Y_left"}) {
        auto const figure = importFigure(oldFigure({chart("strain"), text(content)}));
        EXPECT_EQ(chartOf(childAt<Label>(*figure, 1)), "none") << content;
        EXPECT_EQ(childAt<Label>(*figure, 1).getText(), content);
    }
}

TEST(ImportTextOfAChart, findsTokensThatHavePointsThemselves)
{
    auto const figure = importFigure(oldFigure({chart("a.b"), text("$a.b.MAX_Y_c.d$")}));

    EXPECT_EQ(chartOf(childAt<Label>(*figure, 1)), "a.b");
    EXPECT_EQ(childAt<Label>(*figure, 1).getText(), "$MAX_Y_c.d$");
}

TEST(ImportTextOfAChart, takesTheChartOfItsOwnGroup)
{
    auto const figure = importFigure(oldFigure(
        {chart("strain"), group({chart("strain"), text("$strain.MAX_Y_left$")}), text("$strain.MAX_Y_left$")}));

    auto &inner = childAt<Group>(*figure, 1);
    EXPECT_EQ(static_cast<Label *>(inner.getChildBegin()[1])->getConnectorTarget(nullptr), inner.getChildBegin()[0]);
    EXPECT_EQ(childAt<Label>(*figure, 2).getConnectorTarget(nullptr), &childAt<Chart>(*figure, 0));
}

TEST(ImportTextOfAChart, looksInTheGroupsAroundIt)
{
    auto const figure = importFigure(oldFigure(
        {group({chart("strain")}), chart("strain"), chart("strain"), group({group({text("$strain.MAX_Y_left$")})})}));

    auto &inner = static_cast<Group &>(*childAt<Group>(*figure, 3).getChildBegin()[0]);
    auto &label = static_cast<Label &>(*inner.getChildBegin()[0]);
    EXPECT_EQ(label.getConnectorTarget(nullptr), &childAt<Chart>(*figure, 1));
}

TEST(ImportTextOfAChart, looksEverywhereInTheEnd)
{
    auto const figure = importFigure(
        oldFigure({group({text("$strain.MAX_Y_left$")}), group({chart("strain")}), group({chart("strain")})}));

    auto &label = static_cast<Label &>(*childAt<Group>(*figure, 0).getChildBegin()[0]);
    EXPECT_EQ(label.getConnectorTarget(nullptr), childAt<Group>(*figure, 1).getChildBegin()[0]);
}

TEST(ImportTextOfAChart, keepsTheChartThatItNamesItself)
{
    auto const figure = importFigure(oldFigure({chart("strain", 1), chart("strain", 2), text("$strain.MAX_Y_a$", 2)}));

    EXPECT_EQ(childAt<Label>(*figure, 2).getConnectorTarget(nullptr), &childAt<Chart>(*figure, 1));
    EXPECT_EQ(childAt<Label>(*figure, 2).getText(), "$MAX_Y_a$");
}

TEST(ImportTextOfAChart, losesTheValuesOfAFurtherOne)
{
    ImportReport report;

    auto const figure =
        importFigure(oldFigure({chart("a"), chart("b"), text("$a.MAX_Y_c$ $b.MAX_Y_c$ $a.MIN_Y_c$")}), &report);

    EXPECT_EQ(chartOf(childAt<Label>(*figure, 2)), "a");
    EXPECT_EQ(childAt<Label>(*figure, 2).getText(), "$MAX_Y_c$ $b.MAX_Y_c$ $MIN_Y_c$");
    EXPECT_EQ(losses(report), "text 3 dropped: values of a further chart\n");
}

} // namespace
} // namespace Zem::Fig2
