#include "probe_elements.h"

#include <ElementForms.h>
#include <RecordingPainter.h>

namespace Zem::Fig2 {
namespace {

Polygon2d square(double left, double top, double edge)
{
    return Polygon2d({{left, top}, {left + edge, top}, {left + edge, top + edge}, {left, top + edge}}, true);
}

TEST(ElementUpdate, addsTheNewAreaAndBecomesValid)
{
    BareElement element;
    element.outline = square(0, 0, 1);
    Polygon2d area(true);

    EXPECT_TRUE(element.update(StageIdentifier(1), nullptr, &area));

    EXPECT_EQ(Support::text(area), "0,0 1,0 1,1 0,1");
    EXPECT_TRUE(element.isValid());
}

TEST(ElementUpdate, addsTheOldAreaBeforeTheNewOne)
{
    BareElement element;
    element.outline = square(0, 0, 1);
    element.update(StageIdentifier(1), nullptr, nullptr);
    element.outline = square(5, 5, 1);
    element.invalidate();
    Polygon2d area(true);

    EXPECT_TRUE(element.update(StageIdentifier(1), nullptr, &area));

    EXPECT_EQ(Support::text(area), "0,0 1,0 1,1 0,1 5,5 6,5 6,6 5,6");
    EXPECT_EQ(area.getNumberOfParts(), 2U);
}

TEST(ElementUpdate, doesNothingWhileEverythingIsValid)
{
    BareElement element;
    element.outline = square(0, 0, 1);
    element.update(StageIdentifier(1), nullptr, nullptr);
    Polygon2d area(true);

    EXPECT_FALSE(element.update(StageIdentifier(1), nullptr, &area));

    EXPECT_TRUE(area.empty());
    EXPECT_EQ(element.computed, 1);
}

TEST(ElementUpdate, runsForStaleDataOfAValidElement)
{
    BareElement element;
    element.outline = square(0, 0, 1);
    element.update(StageIdentifier(1), nullptr, nullptr);
    element.dataValid = false;

    EXPECT_TRUE(element.update(StageIdentifier(1), nullptr, nullptr));

    EXPECT_EQ(element.computed, 2);
}

TEST(ElementUpdate, ofAnElementThatVanishesAddsOnlyItsOldArea)
{
    BareElement element;
    element.outline = square(0, 0, 1);
    element.update(StageIdentifier(1), nullptr, nullptr);
    element.outline.clear();
    element.invalidate();
    Polygon2d area(true);

    EXPECT_FALSE(element.update(StageIdentifier(1), nullptr, &area));

    EXPECT_EQ(Support::text(area), "0,0 1,0 1,1 0,1");
    EXPECT_EQ(element.computed, 2);
    EXPECT_TRUE(element.isValid());
}

TEST(ElementUpdate, followsAChangeOfTheSystemFontOnce)
{
    Font const before = Font::getSystemLabelFont();
    BareElement element;
    element.withFont = true;
    element.outline = square(0, 0, 1);
    element.setUseSystemFont(true);
    element.update(StageIdentifier(1), nullptr, nullptr);

    Font::setSystemLabelFont(Font("Courier", 7, 0));

    EXPECT_TRUE(element.update(StageIdentifier(1), nullptr, nullptr));
    EXPECT_FALSE(element.update(StageIdentifier(1), nullptr, nullptr));
    Font::setSystemLabelFont(before);
}

TEST(ElementUpdate, ignoresTheSystemFontWithoutUsingIt)
{
    Font const before = Font::getSystemLabelFont();
    BareElement element;
    element.withFont = true;
    element.outline = square(0, 0, 1);
    element.update(StageIdentifier(1), nullptr, nullptr);

    Font::setSystemLabelFont(Font("Courier", 7, 0));

    EXPECT_FALSE(element.update(StageIdentifier(1), nullptr, nullptr));
    Font::setSystemLabelFont(before);
}

TEST(ElementHit, needsThePointInTheCoveredPolygon)
{
    BareElement element;
    element.outline = square(0, 0, 10);
    element.update(StageIdentifier(1), nullptr, nullptr);

    EXPECT_TRUE(element.isPointIn({5, 5}));
    EXPECT_FALSE(element.isPointIn({11, 5}));
}

TEST(ElementHit, ofATinyElementAllowsADistanceBelowTwo)
{
    Rectangle tiny;
    tiny.setOrigin({10, 10});
    tiny.setSize({0.05, 0.05}); // a length of 0.07

    EXPECT_TRUE(tiny.isPointIn({11.9, 10}));
    EXPECT_FALSE(tiny.isPointIn({12, 10}));
}

TEST(ElementHit, ofASizeFromATenthOnGoesByTheOutline)
{
    Rectangle narrow;
    narrow.setOrigin({10, 10});
    narrow.setSize({0.1, 0});
    narrow.update(StageIdentifier(1), nullptr, nullptr);

    EXPECT_FALSE(narrow.isPointIn({11.9, 10}));
}

TEST(ElementBounds, meanEachCornerOfTheOutlineWithoutBorder)
{
    BareElement element;
    element.outline = square(0, 0, 10);

    EXPECT_TRUE(element.isInBounds(Rect(0, 0, 10, 10)));
    EXPECT_FALSE(element.isInBounds(Rect(0, 0, 9.999, 10)));
    EXPECT_FALSE(element.isInBounds(Rect(0, 0, 10, 9.999)));
    EXPECT_FALSE(element.isInBounds(Rect(0.001, 0, 10, 10)));
    EXPECT_FALSE(element.isInBounds(Rect(0, 0.001, 10, 10)));
}

TEST(ElementBounds, holdAnEmptyOutlineAnywhere)
{
    EXPECT_TRUE(BareElement().isInBounds(Rect(5, 5, 1, 1)));
}

TEST(ElementIntersects, comparesTheBoundsOfTheUpdatePolygon)
{
    BareElement element;
    element.outline = square(0, 0, 10);
    element.update(StageIdentifier(1), nullptr, nullptr);

    EXPECT_TRUE(element.intersects(Rect(10, 10, 5, 5)));
    EXPECT_FALSE(element.intersects(Rect(10.1, 0, 5, 5)));
}

} // namespace
} // namespace Zem::Fig2
