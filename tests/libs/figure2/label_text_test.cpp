#include "label_fixture.h"

#include <ZemFig2Figure.h>
#include <ZemFig2Rectangle.h>

#include <ZemError.h>

namespace Zem::Fig2 {
namespace {

using Support::TestTokens;

class LabelText : public LabelTest
{
};

TEST_F(LabelText, putsValuesInThePlaceOfTokens)
{
    tokens.set("name", Value("Probe"));
    tokens.set("count", Value(42));
    EXPECT_EQ(resolved("a$name$b$count$c"), "aProbeb42c");
    EXPECT_EQ(resolved("no tokens"), "no&nbsp;tokens");
    EXPECT_EQ(resolved(""), "");
}

TEST_F(LabelText, formatsValuesByWhatStandsInFrontOfTheName)
{
    tokens.set("count", Value(42));
    tokens.set("part.length", Value(0.0125, Unit::getUnit("length")));
    EXPECT_EQ(resolved("$+count$"), "+42");
    EXPECT_EQ(resolved("$5.1count$"), "&nbsp;42.0");
    EXPECT_EQ(resolved("$[mm]count$"), "illegal&nbsp;unit");
}

TEST_F(LabelText, keepsBlanksOutsideTagsAndLeavesThemInsideTags)
{
    EXPECT_EQ(resolved("a b<font color=\"red\"> c</font > d"), "a&nbsp;b<font color=\"red\">&nbsp;c</font >&nbsp;d");
    EXPECT_EQ(resolved("<b> </b>"), "<b>&nbsp;</b>");
    EXPECT_EQ(resolved("1 > 0"), "1&nbsp;>&nbsp;0");
}

TEST_F(LabelText, makesOneDollarOfTwo)
{
    EXPECT_EQ(resolved("$$"), "$");
    EXPECT_EQ(resolved("5$$x$$$$"), "5$x$$");
}

TEST_F(LabelText, losesWhatStandsBehindAnUnmatchedDollar)
{
    tokens.set("a", Value(1));
    EXPECT_EQ(resolved("x$a$ y$z and more"), "x1&nbsp;y");
    EXPECT_EQ(resolved("$"), "");
}

TEST_F(LabelText, printsQuestionMarksForWhatNoSourceKnows)
{
    tokens.setAt(2, "elsewhere", Value(1));
    EXPECT_EQ(resolved("$nowhere$ $elsewhere$ $5.1$"), "???&nbsp;???&nbsp;???");
    EXPECT_EQ(label.resolveTokensInText(stage, nullptr, "$a$"), "???");
}

TEST_F(LabelText, takesTheValueOfTheStage)
{
    tokens.setAt(1, "a", Value(10));
    tokens.setAt(2, "a", Value(20));
    EXPECT_EQ(resolved("$a$"), "10");
    EXPECT_EQ(label.resolveTokensInText(StageIdentifier(2), &tokens, "$a$"), "20");
}

TEST_F(LabelText, takesATokenOfFormatCharactersAloneForAName)
{
    tokens.set("5.1", Value(7));
    EXPECT_EQ(resolved("$5.1$"), "7");
}

TEST_F(LabelText, copiesTagsOutOfATokenThatStillResolves)
{
    tokens.set("a<b", Value(7));
    tokens.set("a<b>c", Value(8));
    EXPECT_EQ(resolved("$a<b$"), "<7");
    // The tag stays open, so the blank behind it is one of the tag.
    EXPECT_EQ(resolved("$a<b$ x"), "<7 x");
    EXPECT_EQ(resolved("$a<b>c$ x"), "<>8&nbsp;x");
}

TEST_F(LabelText, takesADollarInsideATagForATokenMark)
{
    tokens.set("color", Value("red"));
    EXPECT_EQ(resolved("<font color=\"$color$\">x</font>"), "<font color=\"red\">x</font>");
}

TEST_F(LabelText, keepsBlanksInTheNameAndDropsThemFromTheText)
{
    tokens.set("a b", Value(7));
    EXPECT_EQ(resolved("$a b$"), "7");
    EXPECT_EQ(resolved("$a  b$"), "???");
}

TEST_F(LabelText, escapesValues)
{
    tokens.set("a", Value("1 < 2 & 3\n$x$"));
    EXPECT_EQ(resolved("$a$"), "1&nbsp;&lt;&nbsp;2&nbsp;&amp;&nbsp;3<br>$x$");
}

struct ValueCase
{
    char const *name;
    Value value;
    char const *text;
};

class LabelValue : public testing::TestWithParam<ValueCase>
{
};

TEST_P(LabelValue, isShownByItsType)
{
    TestTokens tokens;
    tokens.set("a", GetParam().value);
    TestLabel label;
    EXPECT_EQ(label.resolveTokensInText(StageIdentifier(1), &tokens, "$a$").toStdString(), GetParam().text);
}

FormattedText plainOnly()
{
    FormattedText text;
    text.setText(FormattedText::FORMAT_PLAIN_TEXT, "plain");
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Types, LabelValue,
    testing::Values(ValueCase{"unknown", Value::UNKNOWN, "???"}, ValueCase{"integer", Value(3), "3"},
                    ValueCase{"number", Value(2.5, nullptr), "2.500000"}, ValueCase{"text", Value("a b"), "a&nbsp;b"},
                    ValueCase{"invalid", Value::INVALID, "???"}, ValueCase{"boolean", Value::fromBool(true), "true"},
                    ValueCase{"time", Value::fromDateTime(QDateTime(QDate(2024, 2, 3), QTime(4, 5, 6), Qt::UTC)),
                              "2024-02-03T04:05:06Z"},
                    ValueCase{"vector2", Value::fromVec2d({1, 2}, nullptr), "(1.000000,&nbsp;2.000000)"},
                    ValueCase{"vector3", Value::fromVec3d({1, 2, 3}, nullptr),
                              "(1.000000,&nbsp;2.000000,&nbsp;3.000000)"},
                    ValueCase{"formatted", Value::fromFormattedText(FormattedText("<b>bold</b> text")),
                              "<b>bold</b> text"},
                    ValueCase{"formattedWithoutRichText", Value::fromFormattedText(plainOnly()), "???"}),
    [](testing::TestParamInfo<ValueCase> const &named) { return named.param.name; });

TEST_F(LabelText, usesTheTokensBetweenItsDollars)
{
    label.setText("$5.1a$ $$ <b $c$> $d");
    EXPECT_TRUE(label.isTokenUsed("a"));
    EXPECT_TRUE(label.isTokenUsed("c"));
    EXPECT_FALSE(label.isTokenUsed("5.1a"));
    EXPECT_FALSE(label.isTokenUsed("d"));
    EXPECT_FALSE(label.isTokenUsed(""));
    label.setText("$d$");
    EXPECT_FALSE(label.isTokenUsed("a"));
    EXPECT_TRUE(label.isTokenUsed("d"));
}

TEST_F(LabelText, usesTheTokensOfATextThatCameAsAParameter)
{
    label.setText("$a$");
    EXPECT_TRUE(label.isTokenUsed("a"));
    QString parameters = QStringLiteral("text = \"$b$\"\n");
    label.createFromParameterString(parameters);
    EXPECT_FALSE(label.isTokenUsed("a"));
    EXPECT_TRUE(label.isTokenUsed("b"));
}

class LabelValidity : public LabelTest
{
};

TEST_F(LabelValidity, lastsUntilAUsedTokenChanges)
{
    tokens.set("a", Value(1));
    tokens.set("b", Value(2));
    label.setText("$a$");
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
    update();
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
    tokens.set("b", Value(3));
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
    tokens.set("a", Value(4));
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
    update();
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
    EXPECT_EQ(label.getResolvedText(), "4");
}

TEST_F(LabelValidity, neverComesWhileATokenIsUnresolved)
{
    tokens.set("a", Value(1));
    label.setText("$a$ $later$");
    update();
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
    update();
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
    EXPECT_EQ(label.getResolvedText(), "1&nbsp;???");
    tokens.set("later", Value(2));
    update();
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
}

TEST_F(LabelValidity, forgetsATokenThatNoLongerResolves)
{
    tokens.set("a", Value(1));
    label.setText("$a$");
    update();
    tokens.set("a", Value::INVALID);
    update();
    EXPECT_FALSE(label.isDataValid(stage, &tokens));
}

TEST_F(LabelValidity, isGivenWithoutTokensOrWithoutAnInterface)
{
    label.setText("plain $$");
    EXPECT_TRUE(label.isDataValid(stage, &tokens));
    label.setText("$a$");
    EXPECT_TRUE(label.isDataValid(stage, nullptr));
}

/// A label whose counters come from elsewhere.
class CountingLabel : public TestLabel
{
public:
    unsigned int counter = 5;
    mutable QStringList asked;

    unsigned int getTokenModifiedCounter(FigureTokenInterface const *, QString const &token) const override
    {
        asked += token;
        return counter;
    }
};

TEST_F(LabelValidity, asksForCountersThroughItsVirtualOperation)
{
    CountingLabel counting;
    tokens.set("a", Value(1));
    counting.setText("$a$");
    counting.computeDynamicData(stage, &tokens);
    EXPECT_TRUE(counting.isDataValid(stage, &tokens));
    counting.counter = 6;
    EXPECT_FALSE(counting.isDataValid(stage, &tokens));
    EXPECT_EQ(counting.asked, (QStringList{"a", "a", "a"}));
}

class UpperCaseLabel : public TestLabel
{
public:
    bool resolveToken(StageIdentifier const &, FigureTokenInterface const *, QString const &name,
                      Value *value) override
    {
        *value = Value(name.toUpper());
        return name != QLatin1StringView("no");
    }
};

TEST_F(LabelValidity, ofDerivedLabelsRestsOnTheirOwnSources)
{
    UpperCaseLabel upper;
    EXPECT_EQ(upper.resolveTokensInText(stage, &tokens, "$abc$ $no$"), "ABC&nbsp;???");
}

TEST_F(LabelValidity, ofTheFigureFollowsItsTokens)
{
    Figure figure(&tokens);
    auto *inFigure = new Label;
    inFigure->setText("$a$");
    figure.getRoot()->addChild(inFigure);
    tokens.set("a", Value(1));
    EXPECT_TRUE(figure.update(stage, false));
    EXPECT_FALSE(figure.update(stage, false));
    tokens.set("a", Value(22));
    EXPECT_TRUE(figure.update(stage, false));
    EXPECT_EQ(inFigure->getResolvedText(), "22");
    EXPECT_FALSE(figure.update(stage, false));
}

class LabelResolveToken : public LabelTest
{
protected:
    bool resolve(char const *name, Value *value) { return label.resolveToken(stage, &tokens, name, value); }
};

TEST_F(LabelResolveToken, findsAValueInTheInterface)
{
    tokens.set("a", Value(5));
    Value value;
    EXPECT_TRUE(resolve("a", &value));
    EXPECT_EQ(value, Value(5));
}

TEST_F(LabelResolveToken, doesNotTakeAMissingValue)
{
    tokens.set("unknown", Value::UNKNOWN);
    tokens.set("invalid", Value::INVALID);
    Value value;
    EXPECT_FALSE(resolve("unknown", &value));
    EXPECT_FALSE(resolve("invalid", &value));
    EXPECT_FALSE(resolve("nowhere", &value));
    EXPECT_FALSE(label.resolveToken(stage, nullptr, "unknown", &value));
}

/// A label with a connector that no program may make, as a file could bring it.
class LenientLabel : public TestLabel
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

TEST_F(LabelResolveToken, refusesATargetThatIsNoChartOrImageOnceItComesToIt)
{
    LenientLabel lenient;
    Rectangle rectangle;
    lenient.connect(&rectangle, "");
    tokens.set("a", Value(5));
    Value value;
    EXPECT_TRUE(lenient.resolveToken(stage, &tokens, "a", &value));
    try {
        lenient.resolveToken(stage, &tokens, "b", &value);
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().contains("fig_label")) << error.what();
        EXPECT_TRUE(error.getText().endsWith("Illegal connector target: " + rectangle.getTypeName())) << error.what();
    }
}

} // namespace
} // namespace Zem::Fig2
