#include "crafted_element.h"

#include <ElementForms.h>
#include <RecordingPainter.h>
#include <ZemFig2Line.h>

#include <ZemParse.h>

namespace Zem::Fig2 {
namespace {

using Support::RecordingPainter;
using Support::text;
using Support::thrownText;

constexpr double RIGHT_ANGLE = 1.5707963267948966;

/// From 0,0 to 10,0.
void prepare(Line &line, double width = 0.2, LineStyle::Style style = LineStyle::STYLE_FULL)
{
    line.setPoint1({0, 0});
    line.setPoint2({10, 0});
    line.setBorder(LineStyle(width, style, Color(0, 0, 0)));
}

Symbol box(double size)
{
    return Symbol(Symbol::TYPE_BOX, size, false);
}

std::string drawn(Line const &line, int step = 0)
{
    RecordingPainter painter;
    EXPECT_TRUE(line.draw(nullptr, &painter, step));
    return painter.transcript();
}

TEST(LineDefaults, areTwoPointsAtZeroWithoutEnds)
{
    Line const line;

    EXPECT_EQ(line.getType(), Element::LINE);
    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(0, 0));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(0, 0));
    EXPECT_EQ(line.getArrowInfo(), std::pair(false, false));
    EXPECT_EQ(line.getSymbolInfo(), std::pair(Symbol::null, Symbol::null));
    EXPECT_EQ(line.getBorder(), LineStyle(0.1, LineStyle::STYLE_NONE, Color(0, 0, 0)));
}

TEST(LinePoints, theFirstIsTheOrigin)
{
    Line line;

    line.setPoint1({3, 4});

    EXPECT_EQ(line.getOrigin(), BaVec2d<double>(3, 4));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(0, 0));
    EXPECT_EQ(line.getAlignmentOrigin(), BaVec2d<double>(3, 4));
}

TEST(LinePoints, moveTogetherWithTheOrigin)
{
    Line line;
    prepare(line);

    line.setOrigin({3, 4});
    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(3, 4));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(13, 4));
    line.moveBy({1, 1});
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(14, 5));
    line.setAlignmentOrigin({0, 0});
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(10, 0));
}

TEST(LineSetters, clearValid)
{
    Line line;
    auto const clearsValid = [&line](auto const &set) {
        line.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(line.isValid());
        set();
        EXPECT_FALSE(line.isValid());
    };

    clearsValid([&] { line.setPoint1({1, 1}); });
    clearsValid([&] { line.setPoint2({2, 2}); });
    clearsValid([&] { line.setArrowInfo({true, false}); });
    clearsValid([&] { line.setSymbolInfo({box(1), Symbol::null}); });

    EXPECT_EQ(line.getArrowInfo(), std::pair(true, false));
    EXPECT_EQ(line.getSymbolInfo().first, box(1));
}

TEST(LineDraw, isOneLine)
{
    Line line;
    prepare(line);

    EXPECT_EQ(drawn(line), "line 0,0 10,0 pen 0.2 full #000000ff sharp\n");
    EXPECT_EQ(drawn(line, 1), "");
}

TEST(LineDraw, turnsAboutTheFirstPoint)
{
    Line line;
    prepare(line);
    line.setOrigin({1, 2});
    line.setAngle(0.5);

    EXPECT_EQ(drawn(line), "line 1,2 11,2 pen 0.2 full #000000ff sharp turned 0.5 about 1,2\n");
}

TEST(LineDraw, endsInsideTheArrowHeads)
{
    Line line;
    prepare(line); // heads of 10 times 0.2
    line.setArrowInfo({true, true});

    // 2 cos 20 = 1.87939, 2 sin 20 = 0.68404; the line ends at 95 % of 2.
    EXPECT_EQ(drawn(line), "polygon 1.87939,0.68404 0,0 1.87939,-0.68404 no pen fill #000000ff\n"
                           "polygon 8.12061,-0.68404 10,0 8.12061,0.68404 no pen fill #000000ff\n"
                           "line 1.9,0 8.1,0 pen 0.2 full #000000ff sharp\n");
}

TEST(LineDraw, putsSymbolsInTheColorOfTheLine)
{
    Line line;
    prepare(line);
    line.setBorder(LineStyle(0.2, LineStyle::STYLE_FULL, Color(1, 2, 3)));
    line.setSymbolInfo({box(2), box(4)});

    EXPECT_EQ(drawn(line), "polygon 1,-1 1,1 -1,1 -1,-1 no pen fill #010203ff\n"
                           "polygon 12,-2 12,2 8,2 8,-2 no pen fill #010203ff\n"
                           "line 0,0 10,0 pen 0.2 full #010203ff sharp\n");
}

TEST(LineDraw, hidesTheSymbolUnderAnArrow)
{
    Line line;
    prepare(line);
    line.setArrowInfo({true, false});
    line.setSymbolInfo({box(2), box(2)});

    EXPECT_EQ(drawn(line), "polygon 11,-1 11,1 9,1 9,-1 no pen fill #000000ff\n"
                           "polygon 1.87939,0.68404 0,0 1.87939,-0.68404 no pen fill #000000ff\n"
                           "line 1.9,0 10,0 pen 0.2 full #000000ff sharp\n");
}

TEST(LineArrow, isNoLongerThanTheLine)
{
    Line line;
    prepare(line, 5.0); // would be 50
    line.setArrowInfo({true, false});

    // 10 cos 20 = 9.39693, 10 sin 20 = 3.4202.
    EXPECT_EQ(drawn(line), "polygon 9.39693,3.4202 0,0 9.39693,-3.4202 no pen fill #000000ff\n"
                           "line 9.5,0 10,0 pen 5 full #000000ff sharp\n");
}

TEST(LineArrow, isNoShorterThanThreeTenthsWhateverTheLine)
{
    Line line;
    prepare(line, 0.02);
    line.setPoint2({0.1, 0});
    line.setArrowInfo({true, false});

    // 0.3 cos 20 = 0.281908, 0.3 sin 20 = 0.102606.
    EXPECT_EQ(drawn(line), "polygon 0.281908,0.102606 0,0 0.281908,-0.102606 no pen fill #000000ff\n"
                           "line 0.285,0 0.1,0 pen 0.02 full #000000ff sharp\n");
}

TEST(LineOutline, isAsWideAsTheBorder)
{
    Line line;
    prepare(line, 2.0);

    EXPECT_EQ(text(line.computeCoveredPolygon(true)), "0,-1 0,1 10,1 10,-1");
    EXPECT_EQ(text(line.computeCoveredPolygon(false)), "0,0 0,0 10,0 10,0");
}

TEST(LineOutline, hasNoWidthWithoutStyle)
{
    Line line;
    prepare(line, 2.0, LineStyle::STYLE_NONE);

    EXPECT_EQ(text(line.computeCoveredPolygon(true)), "0,0 0,0 10,0 10,0");
}

TEST(LineOutline, ofNoLengthIsOnePlace)
{
    Line line;
    prepare(line, 2.0);
    line.setPoint2({0, 0});

    EXPECT_EQ(text(line.computeCoveredPolygon(true)), "0,0 0,0 0,0 0,0");
}

TEST(LineOutline, holdsTheSymbolsWithTheBorderOnly)
{
    Line line;
    prepare(line, 2.0);
    line.setSymbolInfo({box(3), box(1)});

    EXPECT_EQ(text(line.computeCoveredPolygon(true)), "0,-1 0,1 10,1 10,-1 "
                                                      "-3,-3 3,-3 3,3 -3,3 "
                                                      "9,-1 11,-1 11,1 9,1");
    EXPECT_EQ(line.computeCoveredPolygon(false).size(), 4U);
}

TEST(LineOutline, holdsASquareAboutEachPointOfAnArrow)
{
    Line line;
    prepare(line);
    line.setArrowInfo({true, false});
    line.setSymbolInfo({box(3), Symbol::null});

    // Half the edge is 3 times 0.2; the symbol under the arrow does not count.
    EXPECT_EQ(text(line.computeCoveredPolygon(true)),
              "0,-0.1 0,0.1 10,0.1 10,-0.1 "
              "1.27939,0.0840403 2.47939,0.0840403 2.47939,1.28404 1.27939,1.28404 "
              "-0.6,-0.6 0.6,-0.6 0.6,0.6 -0.6,0.6 "
              "1.27939,-1.28404 2.47939,-1.28404 2.47939,-0.0840403 1.27939,-0.0840403");
}

TEST(LineOutline, turnsAboutTheFirstPoint)
{
    Line line;
    prepare(line, 2.0);
    line.setAngle(RIGHT_ANGLE);

    EXPECT_EQ(text(line.computeCoveredPolygon(true)), "-1,0 1,0 1,-10 -1,-10");
}

TEST(LineUpdate, fillsTheThreePolygons)
{
    Line line;
    prepare(line, 2.0);

    line.computeDynamicData(StageIdentifier(1), nullptr);

    EXPECT_EQ(text(line.getDragPolygon()), "0,0 0,0 10,0 10,0");
    EXPECT_EQ(text(line.getCoveredPolygon()), "0,-1 0,1 10,1 10,-1");
    EXPECT_EQ(text(line.getUpdatePolygon()), "0,-1 0,1 10,1 10,-1");
}

TEST(LineHit, reachesTwoToEachSide)
{
    Line line;
    prepare(line, 0.0);

    EXPECT_TRUE(line.isPointIn({5, 1.9}));
    EXPECT_TRUE(line.isPointIn({5, -1.9}));
    EXPECT_FALSE(line.isPointIn({5, 2.1}));
    EXPECT_FALSE(line.isPointIn({10.1, 0}));
    EXPECT_FALSE(line.isPointIn({-0.1, 0}));
}

TEST(LineHit, turnsWithTheLine)
{
    Line line;
    prepare(line, 0.0);
    line.setAngle(RIGHT_ANGLE); // up to 0,-10

    EXPECT_TRUE(line.isPointIn({1.9, -5}));
    EXPECT_FALSE(line.isPointIn({2.1, -5}));
    EXPECT_FALSE(line.isPointIn({5, 0}));
}

TEST(LineHit, ofAVeryShortLineGoesByDistance)
{
    Line line;
    prepare(line, 0.0);
    line.setPoint2({0.09, 0});

    EXPECT_TRUE(line.isPointIn({-1.9, 0}));
    EXPECT_FALSE(line.isPointIn({0, 2}));
    line.setPoint2({0.1, 0});
    EXPECT_FALSE(line.isPointIn({-1.9, 0}));
}

TEST(LineDrag, movesTheFirstEndAlone)
{
    for (int index : {0, 1}) {
        Line line;
        prepare(line);
        line.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(line.dragPointMove(index, {3, 4}));
        EXPECT_EQ(line.getPoint1(), BaVec2d<double>(3, 4));
        EXPECT_EQ(line.getOrigin(), BaVec2d<double>(3, 4));
        EXPECT_EQ(line.getPoint2(), BaVec2d<double>(10, 0));
        EXPECT_FALSE(line.isValid());
    }
}

TEST(LineDrag, keepsTheOtherEndOfATurnedLineOnThePage)
{
    Line line;
    prepare(line);
    line.setAngle(RIGHT_ANGLE); // the second end is seen at 0,-10

    EXPECT_TRUE(line.dragPointMove(0, {1, 1}));

    // About 1,1 that is -1,-11, turned back 11,-1.
    EXPECT_EQ(text(line.getPoint2()), "12,0");
    EXPECT_EQ(text(line.computeCoveredPolygon(false)), "1,1 1,1 0,-10 0,-10");
}

TEST(LineDrag, movesTheSecondEndToThePlaceOnThePage)
{
    for (int index : {2, 3}) {
        Line line;
        prepare(line);
        line.setAngle(RIGHT_ANGLE);
        line.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(line.dragPointMove(index, {0, -20}));
        EXPECT_EQ(text(line.getPoint2()), "20,0");
        EXPECT_EQ(line.getPoint1(), BaVec2d<double>(0, 0));
        EXPECT_FALSE(line.isValid());
    }
}

TEST(LineDrag, ofAnyOtherPointDoesNothing)
{
    Line line;
    prepare(line);
    line.update(StageIdentifier(1), nullptr, nullptr);

    EXPECT_TRUE(line.dragPointMove(4, {1, 1}));
    EXPECT_TRUE(line.dragPointMove(-1, {1, 1}));

    EXPECT_TRUE(line.isValid());
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(10, 0));
}

TEST(LineBlock, isFollowedByTwoSymbols)
{
    // 16 + 16 + 1 + 1; a symbol of 25 and its font of 31.
    EXPECT_EQ(Support::blocksOf(Support::blockForm(Line())), "10:89 2:20 1:5 1:31 3:34 4:25 1:31 4:25 1:31 ");
}

TEST(LineBlock, ofVersion3IsRead)
{
    Line line;
    std::string const bytes = CraftedElement()
                                  .blocks(10)
                                  .block(3, Support::Payload().v(1, 2).v(3, 4).b(true).b(false))
                                  .add([](IO::OutStream &stream) {
                                      box(2).save(&stream);
                                      box(3).save(&stream);
                                  })
                                  .bytes();

    Support::loadBlocks(line, bytes);

    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(1, 2));
    EXPECT_EQ(line.getOrigin(), BaVec2d<double>(1, 2));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(3, 4));
    EXPECT_EQ(line.getArrowInfo(), std::pair(true, false));
    EXPECT_EQ(line.getSymbolInfo(), std::pair(box(2), box(3)));
}

TEST(LineBlock, ofVersion2HoldsTwoPointsAlone)
{
    Line line;

    Support::loadBlocks(line, CraftedElement().blocks(10).block(2, Support::Payload().v(1, 2).v(3, 4)).bytes());

    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(1, 2));
    EXPECT_EQ(line.getOrigin(), BaVec2d<double>(1, 2));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(3, 4));
    EXPECT_EQ(line.getArrowInfo(), std::pair(false, false));
    EXPECT_EQ(line.getSymbolInfo(), std::pair(Symbol::null, Symbol::null));
}

TEST(LineBlock, ofVersion1BeginsAtTheOrigin)
{
    Line line;

    Support::loadBlocks(line, CraftedElement().blocks(10).block(1, Support::Payload().v(3, 4)).bytes());

    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(10, 20));
    EXPECT_EQ(line.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(3, 4));
}

TEST(LineBlock, ofAnotherVersionIsRefused)
{
    auto const loading = [](unsigned int version) {
        return thrownText<IO::StreamException>([version] {
            Line line;
            Support::loadBlocks(line, CraftedElement().blocks(10).block(version, Support::Payload()).bytes());
        });
    };

    EXPECT_EQ(loading(4), "cannot load figure line: wrong block version");
    EXPECT_EQ(loading(0), "cannot load figure line: invalid block version");
}

constexpr char SYMBOL_TEXT[] = "1 11 0 #000000ff 0 2 0 ";

TEST(LineText, standsInFrontOfTheElement)
{
    Line line;
    line.setPoint1({1, 2});
    line.setPoint2({3.5, 4});
    line.setArrowInfo({true, false});

    EXPECT_EQ(Support::textForm(line),
              std::string("1 1 2 3.5 4 1 0 ") + SYMBOL_TEXT + SYMBOL_TEXT + "5 " + std::to_string(line.getId()) +
                  " 1 2 0 0 1 0 0 0 0 #000000ff #080884ff 0 0 1 1 "
                  "1 0.10000000000000001 0 #000000ff 1 1 0 #e6e6e6ff Liberation\\sSans 12 0 0 \\e ");
}

TEST(LineText, isReadBack)
{
    Line line;
    prepare(line);
    line.setArrowInfo({false, true});
    line.setSymbolInfo({box(2), Symbol::null});
    Line read;

    EXPECT_TRUE(Support::loadText(read, Support::textForm(line)));

    EXPECT_EQ(Support::textForm(read), Support::textForm(line));
}

TEST(LineText, ofANewerVersionIsRefused)
{
    Line line;

    EXPECT_EQ(thrownText<IO::StreamException>([&] { Support::loadText(line, "2 0 0 "); }), "wrong block version");
}

TEST(LineParameters, standBehindThoseOfTheElement)
{
    Line line;
    line.setPoint1({1, 2});
    line.setPoint2({3, 4});
    line.setArrowInfo({true, false});
    line.setSymbolInfo({box(2), Symbol::null});

    EXPECT_EQ(Support::parameterForm(line), "type = \"line\"\n"
                                            "origin = (1, 2)\n"
                                            "visible = true\n"
                                            "angle = 0\n"
                                            "border_width = 0.1\n"
                                            "border_color = #000000ff\n"
                                            "border_style = \"none\"\n"
                                            "border_cap_style = \"sharp\"\n"
                                            "highlight_color = #080884ff\n"
                                            "point1 = (1, 2)\n"
                                            "point2 = (3, 4)\n"
                                            "arrow1 = true\n"
                                            "arrow2 = false\n"
                                            "symbol1_type = \"box\"\n"
                                            "symbol1_size = 2\n"
                                            "symbol1_color = #000000ff\n"
                                            "symbol1_show_value = false\n"
                                            "symbol1_digits = 2\n"
                                            "symbol1_font = \"Liberation Sans,12,0\"\n"
                                            "symbol1_spacing = 0\n"
                                            "symbol2_type = \"none\"\n"
                                            "symbol2_size = 0\n"
                                            "symbol2_color = #000000ff\n"
                                            "symbol2_show_value = false\n"
                                            "symbol2_digits = 2\n"
                                            "symbol2_font = \"Liberation Sans,12,0\"\n"
                                            "symbol2_spacing = 0\n");
}

TEST(LineParameters, areReadWhereTheyExist)
{
    Line line;
    prepare(line);

    EXPECT_EQ(Support::loadParameters(line, "arrow2 = true\nsymbol1_type = \"box\"\npoint2 = (5, 6)\n"), "");

    EXPECT_EQ(line.getArrowInfo(), std::pair(false, true));
    EXPECT_EQ(line.getSymbolInfo().first.getType(), Symbol::TYPE_BOX);
    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(0, 0));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(5, 6));
}

TEST(LineParameters, moveTheOriginWithTheFirstPoint)
{
    Line line;
    prepare(line);

    Support::loadParameters(line, "point1 = (1, 2)\n");

    EXPECT_EQ(line.getOrigin(), BaVec2d<double>(1, 2));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(10, 0));
}

TEST(LineParameters, moveBothPointsWithTheOrigin)
{
    Line line;
    prepare(line);

    EXPECT_EQ(Support::loadParameters(line, "origin = (1, 2)\n"), "");
    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(1, 2));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(11, 2));
    Support::loadParameters(line, "origin = (0, 0)\npoint1 = (5, 5)\npoint2 = (6, 6)\n");

    // The points are read first.
    EXPECT_EQ(line.getPoint1(), BaVec2d<double>(0, 0));
    EXPECT_EQ(line.getPoint2(), BaVec2d<double>(1, 1));
}

TEST(LineCopy, holdsPointsArrowsAndSymbols)
{
    Line line;
    prepare(line);
    line.setArrowInfo({true, true});
    line.setSymbolInfo({box(1), box(2)});

    std::unique_ptr<Element> const copy(line.copy());

    EXPECT_NE(dynamic_cast<Line *>(copy.get()), nullptr);
    EXPECT_EQ(Support::parameterForm(*copy), Support::parameterForm(line));
}

} // namespace
} // namespace Zem::Fig2
