#include "label_fixture.h"

#include <ZemFig2Rectangle.h>

#include <ZemError.h>

#include <cmath>

namespace Zem::Fig2 {
namespace {

/// A label that fills (0, 0) to (10, 10), and a chart that fills (40, -5) to (60, 15).
class LabelConnector : public LabelTest
{
protected:
    TestArea chart;

    void SetUp() override
    {
        label.setAutoSize(false);
        label.setOrigin({5, 5});
        label.setSize({10, 10});
        chart.setOrigin({50, 5});
        chart.setSize({20, 20});
        chart.computeDynamicData(stage, &tokens);
        update();
    }
    std::string drawnLine()
    {
        Support::RecordingPainter painter;
        label.drawConnectorLine(&painter);
        return painter.transcript();
    }
};

class LabelConnectorPoint : public LabelConnector
{
};

TEST_F(LabelConnectorPoint, isReachedByALineThatEndsAtACircle)
{
    label.setConnectorPoint({5, 25});
    update();
    EXPECT_EQ(drawnLine(), "line 5,10 5,24 pen 0.1 full #000000ff sharp\n"
                           "ellipse 5,25 radii 1,1 angle 0 pen 0.1 full #000000ff sharp no fill\n");
}

TEST_F(LabelConnectorPoint, isInvalidWithOneCoordinateOfMinusOne)
{
    for (BaVec2d<double> const &point : {BaVec2d<double>(-1, 25), {25, -1}, {-1, -1}}) {
        label.setConnectorPoint(point);
        update();
        EXPECT_FALSE(label.hasConnectorPoint());
        EXPECT_EQ(drawnLine(), "");
        EXPECT_EQ(Support::text(label.getUpdatePolygon()), "0,0 10,0 10,10 0,10");
    }
    label.setConnectorPoint({-2, 25});
    EXPECT_TRUE(label.hasConnectorPoint());
}

TEST_F(LabelConnectorPoint, insideTheLabelNeedsNoLine)
{
    label.setConnectorPoint({5, 7});
    update();
    EXPECT_EQ(drawnLine(), "");
}

TEST_F(LabelConnectorPoint, isDrawnInTheConnectorStyleOrTheHighlightColour)
{
    label.setConnectorPoint({25, 5});
    label.setConnectorStyle(LineStyle(0.5, LineStyle::STYLE_DASHED, Color(255, 0, 0)));
    update();
    EXPECT_EQ(drawnLine(), "line 10,5 24,5 pen 0.5 dashed #ff0000ff sharp\n"
                           "ellipse 25,5 radii 1,1 angle 0 pen 0.5 dashed #ff0000ff sharp no fill\n");
    label.setHighlighted(true);
    EXPECT_EQ(drawnLine(), "line 10,5 24,5 pen 0.5 dashed #080884ff sharp\n"
                           "ellipse 25,5 radii 1,1 angle 0 pen 0.5 dashed #080884ff sharp no fill\n");
}

TEST_F(LabelConnectorPoint, isReachedFromATurnedLabel)
{
    label.setSize({20, 4});
    label.setAngle(M_PI / 2);
    label.setConnectorPoint({5, 25});
    update();
    // Turned by a right angle the label reaches from y = -5 to y = 15.
    EXPECT_EQ(drawnLine(), "line 5,15 5,24 pen 0.1 full #000000ff sharp\n"
                           "ellipse 5,25 radii 1,1 angle 0 pen 0.1 full #000000ff sharp no fill\n");
}

TEST_F(LabelConnectorPoint, widensTheAreaToRedraw)
{
    label.setConnectorPoint({5, 25});
    update();
    // The line from the point to the origin, 0.05 to each side, in one hull with the box.
    EXPECT_EQ(Support::text(label.getUpdatePolygon()), "0,0 10,0 10,10 5.05,25 4.95,25 0,10");
    EXPECT_EQ(Support::text(label.getCoveredPolygon()), "0,0 10,0 10,10 0,10");
}

TEST(LabelCanConnectTo, chartsAndImagesAlone)
{
    Label const label;
    for (int type = 0; type <= 14; ++type) {
        TestArea const target{Element::Type_t(type)};
        bool const expected = type == 9 || type == 14 || type == 5 || type == 6;
        EXPECT_EQ(label.canConnectTo(&target, "any"), expected) << type;
    }
}

TEST_F(LabelConnector, leadsFromTheRimToTheOriginOfTheTarget)
{
    for (Element::Type_t type : {Element::CHART, Element::GENERIC_CHART, Element::IMAGE, Element::SNAPSHOT_FRAME}) {
        Label source;
        source.setAutoSize(false);
        source.setOrigin({5, 5});
        source.setSize({10, 10});
        source.computeDynamicData(stage, &tokens);
        TestArea target(type);
        target.setOrigin({50, 5});
        target.setAngle(0.5);
        Connector const *connector = source.connect(&target, "");
        BaVec2d<double> from;
        BaVec2d<double> to;
        EXPECT_TRUE(source.computeConnectorPoints(connector, &tokens, &from, &to));
        EXPECT_EQ(Support::text(from), "10,5");
        EXPECT_EQ(Support::text(to), "50,5");
        EXPECT_TRUE(source.computeConnectorPoints(connector, nullptr, &from, &to));
    }
}

TEST_F(LabelConnector, isShownByItsSourceAlone)
{
    Label other;
    Connector const *connector = other.connect(&chart, "");
    BaVec2d<double> from(7, 7);
    BaVec2d<double> to(8, 8);
    EXPECT_FALSE(label.computeConnectorPoints(connector, &tokens, &from, &to));
    EXPECT_EQ(from, BaVec2d<double>(7, 7));
    EXPECT_EQ(to, BaVec2d<double>(8, 8));
}

TEST_F(LabelConnector, hasNoLineToATargetUnderTheLabel)
{
    chart.setOrigin({6, 6});
    Connector const *connector = label.connect(&chart, "");
    BaVec2d<double> from;
    BaVec2d<double> to;
    EXPECT_FALSE(label.computeConnectorPoints(connector, &tokens, &from, &to));
    EXPECT_EQ(to, BaVec2d<double>(6, 6));
}

TEST_F(LabelConnector, isDrawnBelowTheLabel)
{
    label.connect(&chart, "");
    label.setText("a");
    update();
    EXPECT_EQ(drawn(), "line 10,5 50,5 pen 0.1 full #000000ff sharp\n"
                       "polygon 0,0 10,0 10,10 0,10 no pen no fill\n"
                       "richtext 1,1 'a' font Liberation Sans 12 0 width -1\n");
    EXPECT_EQ(drawnLine(), "");
}

TEST_F(LabelConnector, isNotDrawnToATargetThatDoesNotHoldIt)
{
    TestArea neverUpdated;
    neverUpdated.setOrigin({50, 5});
    label.connect(&neverUpdated, "");
    EXPECT_EQ(drawn().find("line"), std::string::npos);
}

TEST_F(LabelConnector, widensTheAreaToRedraw)
{
    label.connect(&chart, "");
    update();
    EXPECT_EQ(Support::text(label.getUpdatePolygon()), "0,0 10,0 50,4.95 50,5.05 10,10 0,10");
}

TEST_F(LabelConnector, isVisibleWhenItsEndLiesInTheTarget)
{
    EXPECT_FALSE(label.isConnectorVisible(&tokens));
    TestArea neverUpdated;
    label.connect(&neverUpdated, "");
    EXPECT_FALSE(label.isConnectorVisible(&tokens));
    label.connect(&chart, "");
    EXPECT_TRUE(label.isConnectorVisible(&tokens));
}

TEST_F(LabelConnector, isVisibleAlsoUnderTheLabel)
{
    chart.setOrigin({6, 6});
    chart.computeDynamicData(stage, &tokens);
    label.connect(&chart, "");
    EXPECT_TRUE(label.isConnectorVisible(&tokens));
}

class ShyLabel : public Label
{
public:
    bool getDrawUnconnected() const override { return false; }
};

TEST_F(LabelConnector, decidesWhetherAShyLabelIsDrawn)
{
    ShyLabel shy;
    shy.setAutoSize(false);
    shy.setOrigin({5, 5});
    shy.setSize({10, 10});
    shy.computeDynamicData(stage, &tokens);
    auto const isDrawn = [&] {
        Support::RecordingPainter painter;
        EXPECT_TRUE(shy.draw(&tokens, &painter, 0));
        return !painter.calls().empty();
    };
    EXPECT_TRUE(isDrawn());
    TestArea neverUpdated;
    shy.connect(&neverUpdated, "");
    EXPECT_FALSE(isDrawn());
    shy.connect(&chart, "");
    EXPECT_TRUE(isDrawn());
}

/// A label with a connector that no program may make, as a file could bring it.
class LenientLabel : public Label
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

TEST_F(LabelConnector, toAnythingElseIsAProgramError)
{
    LenientLabel lenient;
    Rectangle rectangle;
    Connector const *connector = lenient.connect(&rectangle, "");
    BaVec2d<double> from;
    BaVec2d<double> to;
    try {
        lenient.computeConnectorPoints(connector, &tokens, &from, &to);
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().contains("fig_label")) << error.what();
        EXPECT_TRUE(error.getText().endsWith("Unhandled connector target type")) << error.what();
    }
}

TEST_F(LabelConnector, toAChartGivesNoValueByItself)
{
    label.connect(&chart, "");
    label.setText("$nowhere$");
    update();
    EXPECT_EQ(label.getResolvedText(), "???");
}

} // namespace
} // namespace Zem::Fig2
