#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Invalidator.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>

#include <ZemError.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using Support::RecordingPainter;
using Support::TestTokens;

Rectangle *addRectangle(Group *group, double x, double y, double width, double height)
{
    auto *rectangle = new Rectangle;
    rectangle->setOrigin({x, y});
    rectangle->setSize({width, height});
    group->addChild(rectangle);
    return rectangle;
}

TEST(FigureUpdate, withoutTokenInterfaceDoesNothingAndKeepsTheWishForTheWholePage)
{
    Figure figure;
    Invalidator invalidator;
    figure.registerInvalidator(&invalidator);
    figure.invalidate();

    EXPECT_FALSE(figure.update(StageIdentifier(1), false));

    EXPECT_TRUE(invalidator.getInvalidArea().empty());
    TestTokens tokens;
    figure.setTokenInterface(&tokens);
    EXPECT_FALSE(figure.update(StageIdentifier(1), false));
    EXPECT_EQ(Support::text(invalidator.getInvalidArea()), "0,0 210,0 210,297 0,297");
}

TEST(FigureUpdate, reportsOldAndNewPlaceOfAMovedElement)
{
    TestTokens tokens;
    Figure figure(&tokens);
    Rectangle *rectangle = addRectangle(figure.getRoot(), 10, 10, 4, 4);
    rectangle->setBorder(LineStyle::null);
    figure.update(StageIdentifier(1), false);
    Invalidator invalidator;
    figure.registerInvalidator(&invalidator);

    rectangle->moveBy({20, 0});

    EXPECT_TRUE(figure.update(StageIdentifier(1), false));
    EXPECT_EQ(Support::text(invalidator.getInvalidArea()), "8,8 12,8 12,12 8,12 28,8 32,8 32,12 28,12");
    EXPECT_FALSE(figure.update(StageIdentifier(1), false));
}

TEST(FigureDraw, paintsBackgroundOnlyWithoutTokenInterface)
{
    Figure figure;
    addRectangle(figure.getRoot(), 10, 10, 4, 4);
    RecordingPainter painter;

    figure.draw(&painter);

    EXPECT_EQ(painter.transcript(), "polygon 0,0 210,0 210,297 0,297 no pen fill #ffffffff\n");
}

TEST(FigureDraw, drawsAResolvedLabel)
{
    Support::FakeCalculator calculator;
    TestTokens tokens;
    tokens.set("part.length", Value(12.5, uLength));
    Figure figure(&tokens);
    auto *label = new Label;
    label->setText("L = $+10.2[mm]part.length$");
    figure.getRoot()->addChild(label);
    figure.update(StageIdentifier(1), false);
    RecordingPainter painter;

    figure.draw(&painter);

    // Ten characters with a sign: four blanks in front of "+12.50". 65 characters of rich text at 2 mm.
    EXPECT_NE(painter.transcript().find("'L&nbsp;=&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;+12.50'"), std::string::npos)
        << painter.transcript();
}

} // namespace
} // namespace Zem::Fig2
