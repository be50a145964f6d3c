#include "label_fixture.h"

#include <cmath>

namespace Zem::Fig2 {
namespace {

/// Text "abcd" measures 8 x 5; margin and spacing are 1, the border counts 0.1 though it is not drawn.
class LabelLayout : public LabelTest
{
protected:
    void fixBox(double width, double height)
    {
        label.setAutoSize(false);
        label.setOrigin({width / 2, height / 2});
        label.setSize({width, height});
    }
    void showBar(ColorBar::Side_t side, double thickness = 3.0)
    {
        ColorBar bar;
        bar.setSide(side);
        bar.setWidth(thickness);
        bar.setBorder(LineStyle(0.5, LineStyle::STYLE_FULL, Color(0, 0, 0)));
        label.setColorBar(bar);
        label.setColorBarVisible(true);
    }
};

TEST(LabelDefaults, areAnEmptyLabelThatSizesItself)
{
    Label const label;
    EXPECT_EQ(label.getType(), Element::LABEL);
    EXPECT_EQ(static_cast<int>(label.getType()), 4);
    EXPECT_TRUE(label.getAutoSize());
    EXPECT_EQ(label.getText(), "");
    EXPECT_FALSE(label.getColorBarVisible());
    EXPECT_EQ(label.getColorBar().getSide(), ColorBar::SIDE_BOTTOM);
    EXPECT_EQ(label.getTextAlignmentX(), ALIGN_BEGIN);
    EXPECT_EQ(label.getTextAlignmentY(), ALIGN_BEGIN);
    EXPECT_FALSE(label.getExpandWidth());
    EXPECT_EQ(label.getConnectorPoint(), BaVec2d<double>(-1, -1));
    EXPECT_EQ(label.getConnectorPoint(), LabelBase::INVALID_POINT);
    EXPECT_EQ(label.getConnectorStyle(), LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    EXPECT_EQ(label.getTemplateName(), "");
    EXPECT_EQ(label.getResolvedText(), "");
    EXPECT_EQ(label.getResolvedTextOffset(), BaVec2d<double>(0, 0));
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(0, 0));
    EXPECT_EQ(LabelBase::CONNECTOR_POINT_RADIUS, 1.0);
}

TEST(LabelAnswers, tellWhatALabelHas)
{
    Label label;
    EXPECT_TRUE(label.hasMargin());
    EXPECT_TRUE(label.hasSpacing());
    EXPECT_TRUE(label.hasAutoSize());
    EXPECT_TRUE(label.hasFont());
    EXPECT_FALSE(label.hasFontColor());
    EXPECT_TRUE(label.getDrawUnconnected());
    EXPECT_TRUE(label.hasMinimumSize());
    label.setAutoSize(false);
    EXPECT_FALSE(label.hasMinimumSize());
    EXPECT_FALSE(label.getSpacingUsed());
    label.setColorBarVisible(true);
    EXPECT_TRUE(label.getSpacingUsed());
    EXPECT_EQ(Label::getRTFStyleAttribute(Font("A", 12, 0), Color(1, 2, 3)),
              "style=\"font-family:A;font-size:12pt;color:#010203;\"");
}

TEST_F(LabelLayout, ofAnEmptyTextIsMarginsAndBorder)
{
    update();
    EXPECT_EQ(box(), "0,0 2.1,2.1");
    EXPECT_EQ(calculator.measured(), 0);
}

struct Pivot
{
    Alignment_t x;
    Alignment_t y;
    char const *box;
};

class LabelPivot : public LabelLayout, public testing::WithParamInterface<Pivot>
{
};

TEST_P(LabelPivot, staysWhereItIsWhileTheLabelGrows)
{
    label.setPivotAlignmentX(GetParam().x);
    label.setPivotAlignmentY(GetParam().y);
    label.setAlignmentOrigin({50, 60});
    label.setText("abcd");
    update();
    EXPECT_EQ(box(), GetParam().box);
    EXPECT_EQ(Support::text(label.getMinimumSize()), "10.1,7.1");
    EXPECT_EQ(Support::text(label.getAlignmentOrigin()), "50,60");
}

INSTANTIATE_TEST_SUITE_P(Places, LabelPivot,
                         testing::Values(Pivot{ALIGN_BEGIN, ALIGN_BEGIN, "50,60 60.1,67.1"},
                                         Pivot{ALIGN_CENTER, ALIGN_BEGIN, "44.95,60 55.05,67.1"},
                                         Pivot{ALIGN_END, ALIGN_BEGIN, "39.9,60 50,67.1"},
                                         Pivot{ALIGN_BEGIN, ALIGN_CENTER, "50,56.45 60.1,63.55"},
                                         Pivot{ALIGN_BEGIN, ALIGN_END, "50,52.9 60.1,60"},
                                         Pivot{ALIGN_END, ALIGN_END, "39.9,52.9 50,60"}));

TEST_F(LabelLayout, growsAboutItsPivotAlsoWhenTurned)
{
    label.setAngle(M_PI / 2);
    label.setAlignmentOrigin({50, 60});
    label.setText("abcd");
    update();
    // Half the size, (5.05, 3.55), turned: (3.55, -5.05).
    EXPECT_EQ(Support::text(label.getOrigin()), "53.55,54.95");
    EXPECT_EQ(Support::text(label.getAlignmentOrigin()), "50,60");
}

TEST_F(LabelLayout, shrinksWithItsText)
{
    label.setText("abcdefgh");
    update();
    EXPECT_EQ(box(), "0,0 18.1,7.1");
    label.setText("a");
    update();
    EXPECT_EQ(box(), "0,0 4.1,7.1");
}

TEST_F(LabelLayout, withoutAutoSizeKeepsItsBoxAndKnowsWhatItWouldNeed)
{
    fixBox(5, 6);
    label.setText("abcd");
    update();
    EXPECT_EQ(box(), "0,0 5,6");
    EXPECT_EQ(Support::text(label.getMinimumSize()), "10.1,7.1");
}

TEST_F(LabelLayout, leavesTheMarginAroundTheText)
{
    label.setMargin(3);
    label.setText("ab");
    update();
    EXPECT_EQ(box(), "0,0 10.1,11.1");
    EXPECT_EQ(drawn(), "polygon 0,0 10.1,0 10.1,11.1 0,11.1 no pen no fill\n"
                       "richtext 3,3 'ab' font Liberation Sans 12 0 width -1\n");
}

TEST_F(LabelLayout, addsTheOffsetThatWasMeasured)
{
    label.setText("ab");
    calculator.setOffset({0.5, -0.25});
    update();
    EXPECT_EQ(label.getResolvedTextOffset(), BaVec2d<double>(0.5, -0.25));
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(4, 5));
    EXPECT_EQ(drawnText(), "richtext 1.5,0.75 'ab' font Liberation Sans 12 0 width -1");
}

TEST_F(LabelLayout, drawsBackgroundTextAndBorder)
{
    label.setText("ab");
    label.setBackground(FillStyle(Color(255, 255, 0)));
    label.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color(0, 0, 255)));
    update();
    // The border takes its width off the room inside, which is then smaller than the minimum: the text is clipped.
    EXPECT_EQ(drawn(), "polygon 0,0 8,0 8,9 0,9 no pen fill #ffff00ff\n"
                       "clip 1,1 7,1 7,8 1,8\n"
                       "richtext 2,2 'ab' font Liberation Sans 12 0 width -1\n"
                       "unclip\n"
                       "polygon 0,0 8,0 8,9 0,9 pen 2 full #0000ffff sharp no fill\n");
}

TEST_F(LabelLayout, isDrawnInStep0Alone)
{
    label.setText("ab");
    update();
    EXPECT_EQ(drawn(1), "");
    EXPECT_EQ(drawn(7), "");
}

TEST_F(LabelLayout, turnsEverythingAboutItsOrigin)
{
    fixBox(5, 4);
    label.setText("abcd");
    label.setAngle(M_PI);
    update();
    EXPECT_EQ(drawn(), "polygon 0,0 5,0 5,4 0,4 no pen no fill turned 3.14159 about 2.5,2\n"
                       "clip 5,4 0,4 0,0 5,0\n"
                       "richtext 1,1 'abcd' font Liberation Sans 12 0 width -1 turned 3.14159 about 2.5,2\n"
                       "unclip\n");
}

TEST_F(LabelLayout, clipsOnlyATextThatNeedsMoreRoom)
{
    label.setText("abcd");
    update();
    fixBox(label.getMinimumSize().x, label.getMinimumSize().y);
    update();
    EXPECT_EQ(drawn().find("clip"), std::string::npos);
    fixBox(100, 7);
    update();
    EXPECT_NE(drawn().find("clip 0,0 100,0 100,7 0,7\n"), std::string::npos);
    fixBox(10, 100);
    update();
    EXPECT_NE(drawn().find("clip 0,0 10,0 10,100 0,100\n"), std::string::npos);
}

struct TextPlace
{
    Alignment_t x;
    Alignment_t y;
    char const *place;
};

class LabelAlignment : public LabelLayout, public testing::WithParamInterface<TextPlace>
{
};

TEST_P(LabelAlignment, placesTheTextInALargerBox)
{
    // Room 28 x 18, text 8 x 5: 20 and 13 are free.
    fixBox(30, 20);
    label.setTextAlignmentX(GetParam().x);
    label.setTextAlignmentY(GetParam().y);
    label.setText("abcd");
    update();
    EXPECT_EQ(drawnText(),
              std::string("richtext ") + GetParam().place + " 'abcd' font Liberation Sans 12 0 width -1");
}

INSTANTIATE_TEST_SUITE_P(Places, LabelAlignment,
                         testing::Values(TextPlace{ALIGN_BEGIN, ALIGN_BEGIN, "1,1"},
                                         TextPlace{ALIGN_CENTER, ALIGN_BEGIN, "11,1"},
                                         TextPlace{ALIGN_END, ALIGN_BEGIN, "21,1"},
                                         TextPlace{ALIGN_BEGIN, ALIGN_CENTER, "1,7.5"},
                                         TextPlace{ALIGN_BEGIN, ALIGN_END, "1,14"},
                                         TextPlace{ALIGN_CENTER, ALIGN_END, "11,14"}));

struct BarPlace
{
    ColorBar::Side_t side;
    char const *box;
    char const *text;
    char const *zeroMark;
};

class LabelColorBar : public LabelLayout, public testing::WithParamInterface<BarPlace>
{
};

TEST_P(LabelColorBar, takesItsSideOfTheBox)
{
    // Text 4 x 5. The bar measures 10.5 x 3.5 at the left and the right, 3.5 x 10.5 at the top and the bottom.
    showBar(GetParam().side);
    label.setText("ab");
    update();
    EXPECT_EQ(box(), GetParam().box);
    EXPECT_EQ(drawnText(), std::string("richtext ") + GetParam().text + " 'ab' font Liberation Sans 12 0 width -1");
    EXPECT_NE(drawn().find(std::string("line ") + GetParam().zeroMark + " pen 0.5 full #000000ff sharp\n"),
              std::string::npos)
        << drawn();
}

INSTANTIATE_TEST_SUITE_P(
    Sides, LabelColorBar,
    testing::Values(BarPlace{ColorBar::SIDE_LEFT, "0,0 17.6,7.1", "12.5,1", "1,3.55 11.5,3.55"},
                    BarPlace{ColorBar::SIDE_RIGHT, "0,0 17.6,7.1", "1,1", "6.1,3.55 16.6,3.55"},
                    BarPlace{ColorBar::SIDE_TOP, "0,0 6.1,18.6", "1,12.5", "3.05,1 3.05,11.5"},
                    BarPlace{ColorBar::SIDE_BOTTOM, "0,0 6.1,18.6", "1,1", "3.05,7.1 3.05,17.6"}));

TEST_F(LabelLayout, isAtLeastAsLargeAsItsColorBar)
{
    label.setText("ab");
    showBar(ColorBar::SIDE_LEFT, 20);
    update();
    EXPECT_EQ(box(), "0,0 17.6,22.5");
    showBar(ColorBar::SIDE_TOP, 20);
    update();
    EXPECT_EQ(box(), "0,0 22.5,18.6");
}

TEST_F(LabelLayout, alignsTheTextBesideTheColorBar)
{
    fixBox(30, 20);
    showBar(ColorBar::SIDE_RIGHT);
    label.setTextAlignmentX(ALIGN_END);
    label.setText("abcd");
    update();
    // 28 - 11.5 - 8 = 8.5 are free.
    EXPECT_EQ(drawnText(), "richtext 9.5,1 'abcd' font Liberation Sans 12 0 width -1");
}

TEST_F(LabelLayout, drawsTheColorBarBeforeTheBorderAndTurned)
{
    fixBox(30, 20);
    showBar(ColorBar::SIDE_BOTTOM);
    label.setAngle(0.5);
    label.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    update();
    // Inside the border 28 x 18 from (1, 1); the bar is 26 long and 10.5 high at the bottom, its middle at 2 + 13.
    EXPECT_EQ(drawn(), "polygon 0,0 30,0 30,20 0,20 no pen no fill turned 0.5 about 15,10\n"
                       "richtext 2,2 '' font Liberation Sans 12 0 width -1 turned 0.5 about 15,10\n"
                       "line 15,7.5 15,18 pen 0.5 full #000000ff sharp turned 0.5 about 15,10\n"
                       "polygon 0,0 30,0 30,20 0,20 pen 2 full #000000ff sharp no fill turned 0.5 about 15,10\n");
}

TEST_F(LabelLayout, wrapsAtTheWidthOfTheBoxWhenToldTo)
{
    // Five characters on each of two lines: 10 x 10.
    fixBox(12, 40);
    label.setExpandWidth(true);
    label.setTextAlignmentX(ALIGN_END);
    label.setTextAlignmentY(ALIGN_CENTER);
    label.setText("abcdefgh");
    update();
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(10, 10));
    // The text keeps the whole width; 28 are free below.
    EXPECT_EQ(drawnText(), "richtext 1,15 'abcdefgh' font Liberation Sans 12 0 width 10");
}

TEST_F(LabelLayout, wrapsBesideTheColorBarAtItsFirstUpdate)
{
    fixBox(23.5, 40);
    showBar(ColorBar::SIDE_LEFT);
    label.setExpandWidth(true);
    label.setText("abcdefgh");
    update();
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(10, 10));
    EXPECT_EQ(drawnText(), "richtext 12.5,1 'abcdefgh' font Liberation Sans 12 0 width 10");
}

TEST_F(LabelLayout, doesNotWrapAtAWidthItWasNeverGiven)
{
    for (double margin : {0.0, 0.5, 1.0}) {
        Label unsized;
        unsized.setMargin(margin);
        unsized.setExpandWidth(true);
        unsized.setText("abcdefgh");
        for (int i = 0; i < 3; ++i) {
            unsized.computeDynamicData(stage, &tokens);
            EXPECT_EQ(unsized.getResolvedTextSize(), BaVec2d<double>(16, 5));
            EXPECT_DOUBLE_EQ(unsized.getSize().x, 16.1 + 2 * margin);
        }
    }
}

TEST_F(LabelLayout, drawsTheUsersFontOrTheSystems)
{
    label.setText("a");
    label.setFont(Font("Mono", 8, 3));
    update();
    EXPECT_EQ(drawnText(), "richtext 1,1 'a' font Mono 8 3 width -1");
    Font::setSystemLabelFont(Font("System", 7, 0));
    label.setUseSystemFont(true);
    update();
    EXPECT_EQ(drawnText(), "richtext 1,1 'a' font System 7 0 width -1");
    Font::setSystemLabelFont(Font());
}

class LabelMeasuring : public LabelLayout
{
};

TEST_F(LabelMeasuring, isDoneForANewTextOrFontAlone)
{
    tokens.set("t", Value(1));
    label.setText("a$t$");
    update();
    EXPECT_EQ(calculator.measured(), 1);
    update();
    label.setMargin(5);
    label.setTextAlignmentX(ALIGN_CENTER);
    label.setBorder(LineStyle(3, LineStyle::STYLE_FULL, Color(1, 2, 3)));
    showBar(ColorBar::SIDE_TOP);
    label.setText("a1");
    tokens.set("t", Value(1));
    update();
    EXPECT_EQ(calculator.measured(), 1);
    label.setText("a$t$");
    tokens.set("t", Value(2));
    update();
    EXPECT_EQ(calculator.measured(), 2);
    label.setFont(Font("Mono", 8, 0));
    update();
    EXPECT_EQ(calculator.measured(), 3);
}

TEST_F(LabelMeasuring, followsTheSystemFont)
{
    label.setText("a");
    label.setUseSystemFont(true);
    update();
    EXPECT_EQ(calculator.measured(), 1);
    Font::setSystemLabelFont(Font("System", 7, 0));
    EXPECT_TRUE(label.update(stage, &tokens, nullptr));
    EXPECT_EQ(calculator.measured(), 2);
    Font::setSystemLabelFont(Font());
}

TEST_F(LabelMeasuring, isNotNeededForAnEmptyTextButForTheNextOne)
{
    label.setText("a");
    update();
    label.setText("");
    update();
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(0, 0));
    EXPECT_EQ(calculator.measured(), 1);
    label.setText("a");
    update();
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(2, 5));
    EXPECT_EQ(calculator.measured(), 2);
}

TEST_F(LabelMeasuring, isDoneAgainForAnotherWrappingWidth)
{
    fixBox(12, 40);
    label.setText("abcdefgh");
    update();
    label.setExpandWidth(true);
    update();
    EXPECT_EQ(calculator.measured(), 2);
    label.setSize({12, 50});
    update();
    EXPECT_EQ(calculator.measured(), 2);
    label.setSize({8, 50});
    update();
    EXPECT_EQ(calculator.measured(), 3);
    // Three characters on each of three lines.
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(6, 15));
    label.setExpandWidth(false);
    update();
    EXPECT_EQ(label.getResolvedTextSize(), BaVec2d<double>(16, 5));
}

class LabelCacheId : public LabelLayout
{
protected:
    bool changes()
    {
        int const before = label.getTextCacheId();
        update();
        return label.getTextCacheId() != before;
    }
};

TEST_F(LabelCacheId, isNewForEachLabelAndSharedByACopy)
{
    Label const first;
    Label const second;
    EXPECT_GT(second.getTextCacheId(), first.getTextCacheId());
    Label const copy(first);
    EXPECT_EQ(copy.getTextCacheId(), first.getTextCacheId());
}

TEST_F(LabelCacheId, changesWithTextFontAndWidthAlone)
{
    fixBox(30, 20);
    label.setText("abcd");
    EXPECT_TRUE(changes());
    EXPECT_FALSE(changes());
    label.setText("abce");
    EXPECT_TRUE(changes());
    label.setFont(Font("Mono", 8, 0));
    EXPECT_TRUE(changes());
    label.setSize({31, 20});
    EXPECT_TRUE(changes());
    label.setMargin(2);
    EXPECT_TRUE(changes());
    showBar(ColorBar::SIDE_LEFT);
    EXPECT_TRUE(changes());
    label.setSize({31, 25});
    EXPECT_FALSE(changes());
    label.setOrigin({99, 99});
    EXPECT_FALSE(changes());
    label.setTextAlignmentX(ALIGN_END);
    EXPECT_FALSE(changes());
    EXPECT_FALSE(changes());
}

TEST_F(LabelCacheId, settlesForALabelThatSizesItself)
{
    label.setText("abcd");
    update();
    update();
    EXPECT_FALSE(changes());
    EXPECT_FALSE(changes());
}

TEST_F(LabelCacheId, isHandedToThePainter)
{
    label.setText("abcd");
    update();
    TextPainter painter;
    label.draw(&tokens, &painter, 0);
    EXPECT_EQ(painter.cacheIds, std::vector<int>{label.getTextCacheId()});
}

TEST_F(LabelLayout, isStaleAfterEachSetter)
{
    auto const staleAfter = [this](auto const &change) {
        label.update(stage, &tokens, nullptr);
        EXPECT_TRUE(label.isValid());
        change();
        return !label.isValid();
    };
    EXPECT_TRUE(staleAfter([this] { label.setText("a"); }));
    EXPECT_TRUE(staleAfter([this] { label.setTemplateName("a"); }));
    EXPECT_TRUE(staleAfter([this] { label.setColorBar(ColorBar()); }));
    EXPECT_TRUE(staleAfter([this] { label.setColorBarVisible(false); }));
    EXPECT_TRUE(staleAfter([this] { label.setTextAlignmentX(ALIGN_END); }));
    EXPECT_TRUE(staleAfter([this] { label.setTextAlignmentY(ALIGN_END); }));
    EXPECT_TRUE(staleAfter([this] { label.setExpandWidth(false); }));
    EXPECT_TRUE(staleAfter([this] { label.setConnectorStyle(LineStyle()); }));
    EXPECT_TRUE(staleAfter([this] { label.setConnectorPoint({5, 5}); }));
}

TEST_F(LabelLayout, forgetsTheResolvedTextWithANewText)
{
    label.setText("a");
    update();
    EXPECT_EQ(label.getResolvedText(), "a");
    label.setText("b");
    EXPECT_EQ(label.getResolvedText(), "");
}

TEST_F(LabelLayout, giveUpAutoSizeWhenACornerIsDragged)
{
    label.setText("abcd");
    update();
    EXPECT_TRUE(label.dragPointMove(2, {20, 20}));
    EXPECT_FALSE(label.getAutoSize());
    EXPECT_EQ(box(), "0,0 20,20");
    update();
    EXPECT_EQ(box(), "0,0 20,20");
}

TEST_F(LabelLayout, keepsAutoSizeWhenADragIsRefused)
{
    label.setText("abcd");
    update();
    EXPECT_FALSE(label.dragPointMove(2, {5, 20}));
    EXPECT_TRUE(label.getAutoSize());
    EXPECT_EQ(box(), "0,0 10.1,7.1");
}

} // namespace
} // namespace Zem::Fig2
