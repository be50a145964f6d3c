// Which texts are read without a document, and what is taken out of those that are not.
#include <figqt_markup.h>

#include <gtest/gtest.h>


namespace Zem::Fig2Qt {
namespace {

std::optional<std::vector<MarkupLine>> read(char const *text)
{
    return readSimpleMarkup(QString::fromUtf8(text), {QFont(), Color(0, 0, 0), Script::NORMAL});
}

/// The pieces, each in brackets with what is special about it; lines end with a bar.
std::string pieces(char const *text)
{
    auto const lines = read(text);
    if (!lines)
        return "none";
    std::string result;
    for (MarkupLine const &line : *lines) {
        for (MarkupPiece const &piece : line) {
            result += '[' + piece.text.toStdString();
            MarkupStyle const &style = piece.style;
            result += style.font.bold() ? " bold" : "";
            result += style.font.italic() ? " italic" : "";
            result += style.font.underline() ? " underline" : "";
            result += style.font.strikeOut() ? " strikeout" : "";
            result += style.script == Script::SUB ? " sub" : style.script == Script::SUPER ? " super" : "";
            result += style.color == Color(255, 0, 0) ? " red" : "";
            result += ']';
        }
        result += '|';
    }
    return result;
}

struct Case
{
    char const *text;
    char const *pieces;
};

class SimpleMarkup : public testing::TestWithParam<Case>
{
};

TEST_P(SimpleMarkup, isReadIntoPieces)
{
    EXPECT_EQ(pieces(GetParam().text), GetParam().pieces);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SimpleMarkup,
    testing::Values(
        Case{"abc", "[abc]|"}, Case{"a<b>b</b>c", "[a][b bold][c]|"}, Case{"<i><b>x</b></i>", "[x bold italic]|"},
        Case{"<strong>x</strong><em>y</em>", "[x bold][y italic]|"}, Case{"<u>x</u>", "[x underline]|"},
        Case{"<s>x</s>", "[x strikeout]|"}, Case{"x<sub>i</sub><sup>2</sup>", "[x][i sub][2 super]|"},
        Case{"<font color=\"red\">x</font>", "[x red]|"}, Case{"<span style=\"color:#ff0000\">x</span>", "[x red]|"},
        Case{"<span style='font-weight:700; font-style:italic;'>x</span>", "[x bold italic]|"},
        Case{"<span style='text-decoration:underline'>x</span>", "[x underline]|"},
        Case{"<span style='vertical-align:super'>x</span>", "[x super]|"}, Case{"a<br>b<br/>c", "[a]|[b]|[c]|"},
        Case{"<html><body><p>x</p></body></html>", "[x]|"}, Case{" \n a \t b ", "[a b ]|"},
        Case{"a <b> b</b>", "[a ][b bold]|"}, Case{"&lt;&amp;&gt;&quot;", "[<&>\"]|"},
        Case{"&#65;&#x42;&deg;&plusmn;", "[AB°±]|"}, Case{"a&nbsp; b", "[a\u00a0 b]|"}, Case{"<b></b>a", "[a]|"}));

class OtherMarkup : public testing::TestWithParam<char const *>
{
};

TEST_P(OtherMarkup, isLeftToTheDocument)
{
    EXPECT_EQ(pieces(GetParam()), "none");
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OtherMarkup,
    testing::Values("", " ", "<b></b>", "<table><tr><td>x</td></tr></table>", "<p>a</p><p>b</p>",
                    "<p align=right>x</p>", "<ul><li>x</li></ul>", "<b>open", "a</b>", "<b><i>x</b></i>",
                    "<span class='x'>y</span>", "<span style='background:red'>x</span>",
                    "<span style='font-size:12px'>x</span>", "<span style='color:nonsense'>x</span>", "<img src='x'>",
                    "a < b", "a<", "&unknown;", "a & b", "&#0;", "a<br><br>b", "a <br>b", "<b>a<br>b</b>",
                    "x<sub>a<sub>b</sub></sub>", "<u>a<b>b</b></u>", "\u05d0\u05d1", "e\u0301", "soft\u00adhyphen",
                    "<!-- x -->y", "<pre>x</pre>", "<b/>x", "<span style=\"font-size:-3pt\">x</span>", "\U0001F600"));

TEST(BoundMarkup, leavesOrdinaryTextAlone)
{
    QString const text = QStringLiteral("<p style=\"color:#00112233; margin:12px\">123456789 <b>x</b> &#1234567;</p>");

    EXPECT_EQ(boundMarkup(text), text);
}

TEST(BoundMarkup, cutsLongNumbersInTags)
{
    EXPECT_EQ(boundMarkup(QStringLiteral("<table cellpadding=2000000000>")),
              QStringLiteral("<table cellpadding=2000>"));
}

TEST(BoundMarkup, dropsTablesNestedTooDeep)
{
    QString const text = QStringLiteral("<table><tr><td>").repeated(40) + QLatin1Char('x');

    EXPECT_EQ(boundMarkup(text).count(QLatin1StringView("<table")), 6);
}

TEST(BoundMarkup, countsTablesThatFollowEachOtherOnce)
{
    QString const text = QStringLiteral("<table><tr><td>x</td></tr></table>").repeated(40);

    EXPECT_EQ(boundMarkup(text), text);
}

} // namespace
} // namespace Zem::Fig2Qt
