// How texts are laid out.
#include <figqt_text_engine.h>

#include "page_support.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <cmath>

namespace Zem::Fig2Qt {
namespace {

using Layout = std::shared_ptr<TextLayout const>;

TextEngine &engine()
{
    return TextEngine::forThisThread();
}

Layout layOut(QString const &text, double width = -1.0)
{
    return engine().layOutRich(text, Font(Font::DEFAULT_FONT_SANS, 10.0, 0), width);
}

Layout layOut(char const *text, double width = -1.0)
{
    return layOut(QString::fromUtf8(text), width);
}

/// Neighbours of one format as one run: the document cuts also between scripts.
std::vector<TextRun> joined(TextLayout const &layout)
{
    std::vector<TextRun> runs;
    for (TextRun const &run : layout.runs) {
        bool const goesOn = !runs.empty() && runs.back().font == run.font && runs.back().color == run.color &&
                            std::abs(runs.back().position.y() - run.position.y()) < 0.01;
        if (!goesOn) {
            runs.push_back(run);
            continue;
        }
        runs.back().text += run.text;
        runs.back().width += run.width;
    }
    return runs;
}

void expectSameRuns(TextLayout const &a, TextLayout const &b)
{
    std::vector<TextRun> const left = joined(a);
    std::vector<TextRun> const right = joined(b);
    ASSERT_EQ(left.size(), right.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i].text, right[i].text);
        EXPECT_EQ(left[i].color, right[i].color);
        EXPECT_EQ(left[i].font.pixelSize(), right[i].font.pixelSize());
        EXPECT_EQ(left[i].font.weight(), right[i].font.weight());
        EXPECT_EQ(left[i].font.italic(), right[i].font.italic());
        EXPECT_NEAR(left[i].position.x(), right[i].position.x(), 0.1);
        EXPECT_NEAR(left[i].position.y(), right[i].position.y(), 0.1);
        EXPECT_NEAR(left[i].width, right[i].width, 0.1);
    }
}

/// One unit is less than 3 micrometres; the document rounds lines under text to whole ones.
constexpr double UNIT = 2.0;

class BothWays : public testing::TestWithParam<char const *>
{
protected:
    static void expectSame(QFont const &font)
    {
        QString const text = QString::fromUtf8(GetParam());
        Layout const lines = engine().layOutLines(text, font, -1.0);
        Layout const document = engine().layOutDocument(text, font, -1.0);
        ASSERT_TRUE(lines);
        EXPECT_NEAR(lines->width, document->width, UNIT);
        EXPECT_NEAR(lines->height, document->height, 0.1);
        expectSameRuns(*lines, *document);
        ASSERT_EQ(lines->shapes.size(), document->shapes.size());
        for (std::size_t i = 0; i < lines->shapes.size(); ++i) {
            QRectF const a = lines->shapes[i].path.boundingRect();
            QRectF const b = document->shapes[i].path.boundingRect();
            EXPECT_NEAR(a.left(), b.left(), UNIT);
            EXPECT_NEAR(a.right(), b.right(), UNIT);
            EXPECT_NEAR(a.top(), b.top(), UNIT);
            EXPECT_NEAR(lines->shapes[i].strokeWidth, document->shapes[i].strokeWidth, 0.1);
            EXPECT_EQ(lines->shapes[i].stroke, document->shapes[i].stroke);
        }
    }
};

TEST_P(BothWays, giveTheSameLayout)
{
    expectSame(toQFont(Font(Font::DEFAULT_FONT_SANS, 10.0, 0)));
    expectSame(toQFont(Font(Font::DEFAULT_FONT_SANS, 7.3, Font::BOLD)));
    expectSame(toQFont(Font(QStringLiteral("Liberation Serif"), 31.0, Font::ITALIC)));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BothWays,
    testing::Values("abc", "Run <b>B17</b> &sigma;<sub>max</sub> = <i>-12.30</i> MPa", "<html><p>a  b </p></html>",
                    "a <b> b </b> c", "x<sup>2</sup>y", "<u>under line</u>", "<s>strike</s>",
                    "line two <b>bold</b><br> third",
                    "<span style='font-size:20pt;color:#ff0000'>Big</span> small<br>next", "AVAWA To 11.11 Te",
                    "office fi ffl", "<html><body><p>  lead</p></body></html>", "a<sub> b</sub>",
                    "<font color=\"red\">r</font> <span style=\"font-weight:600; font-style:italic\">f</span>",
                    "a\nb\tc", "a&nbsp; b", "Größe ±5 µm − 3 × 4", "<b>a</b> <i> b</i>",
                    "<html>\n<body>\n<p>x</p>\n</body>\n</html>", "a<b></b>b", "<sup>a</sup>b<br>c<sub>d</sub>",
                    "Привет Ελλάδα"));

TEST(TextLayout, wrapsTheSameWayAsADocument)
{
    QFont const font = toQFont(Font());

    EXPECT_FALSE(engine().layOutLines(QStringLiteral("one two three"), font, 2000.0));
    EXPECT_TRUE(engine().layOutLines(QStringLiteral("one two three"), font, 200000.0));
}

TEST(TextLayout, isBlackUnlessTheTextSaysOtherwise)
{
    for (char const *text : {"x", "<table><tr><td>x</td></tr></table>"}) {
        ASSERT_EQ(layOut(text)->runs.size(), 1U);
        EXPECT_EQ(layOut(text)->runs[0].color, Color(0, 0, 0));
    }
    EXPECT_EQ(layOut("<table><tr><td><font color=blue>x</font></td></tr></table>")->runs[0].color, Color(0, 0, 255));
}

TEST(TextLayout, hasScriptsOfTwoThirdsOfTheSize)
{
    // 10 points are 1280 units, 9 are 1152.
    EXPECT_EQ(layOut("x<sub>i</sub>")->runs[1].font.pixelSize(), 853);
    EXPECT_EQ(layOut("<p>x</p><p>y<sub>i</sub></p>")->runs[2].font.pixelSize(), 853);
    EXPECT_EQ(layOut("<p>x</p><p style='font-size:9pt'>y<sub>i</sub></p>")->runs[2].font.pixelSize(), 768);
}

TEST(TextLayout, takesAPixelAsThe96thOfAnInch)
{
    // 16 px are 12 points.
    EXPECT_EQ(layOut("<span style='font-size:16px'>x</span>")->runs[0].font.pixelSize(), 12 * UNITS_PER_POINT);
}

TEST(TextLayout, alignsLinesWithEachOtherWithoutAWidth)
{
    Layout const layout = layOut("<p align=right>ab</p><p>a long line of text</p>");

    ASSERT_EQ(layout->runs.size(), 2U);
    EXPECT_NEAR(layout->runs[0].position.x() + layout->runs[0].width, layout->runs[1].width, UNIT);
}

TEST(TextLayout, alignsWithinTheWidthWhenWrapped)
{
    Layout const layout = layOut("<p align=center>ab</p>", 50.0);

    EXPECT_NEAR(layout->runs[0].position.x() + layout->runs[0].width / 2.0, 25.0 / MM_PER_UNIT, UNIT);
}

TEST(TextLayout, justifiesByWideningBlanks)
{
    Layout const layout = layOut("<p align=justify>aa bb aa bb aa bb aa bb aa bb aa bb</p>", 30.0);
    TextRun const &first = layout->runs[0];
    QList<QPointF> const positions = first.shape->glyphs[0].positions();

    EXPECT_NEAR(first.width, 30.0 / MM_PER_UNIT, UNIT);
    EXPECT_NEAR(first.shape->width, first.width, UNIT);
    EXPECT_GT(positions[3].x() - positions[2].x(), 0.278 * 1280 + 10); // the blank and its share
    EXPECT_NEAR(positions[1].x() - positions[0].x(), 0.556 * 1280, 1); // letters as they are
}

TEST(TextLayout, hasTheBordersAndBackgroundsOfTables)
{
    Layout const layout = layOut("<table border=1><tr><td bgcolor=#ff0000>x</td></tr></table>");

    bool red = false;
    for (TextShape const &shape : layout->shapes)
        red |= shape.fill == Color(255, 0, 0);
    EXPECT_TRUE(red);
    EXPECT_GT(layout->shapes.size(), 4U);
}

TEST(TextLayout, marksTheItemsOfLists)
{
    Layout const bullets = layOut("<ul><li>x</li></ul>");
    Layout const numbers = layOut("<ol><li>x</li></ol>");

    EXPECT_EQ(bullets->shapes.size(), 1U);
    EXPECT_EQ(numbers->runs.size(), 2U);
}

TEST(TextLayout, isTheSameObjectForTheSameText)
{
    EXPECT_EQ(layOut("kept", 20.0), layOut("kept", 20.0));
    EXPECT_NE(layOut("kept", 20.0), layOut("kept", 21.0));
    EXPECT_NE(layOut("kept"), layOut("not kept"));
    EXPECT_NE(engine().layOutRich(QStringLiteral("kept"), Font(Font::DEFAULT_FONT_SANS, 11.0, 0), -1.0),
              layOut("kept"));
}

TEST(TextLayout, ofAFontChangedInPlaceIsNew)
{
    Font font(Font::DEFAULT_FONT_SANS, 10.0, 0);
    double const regular = engine().layOutRich(QStringLiteral("Hamburg"), font, -1.0)->width;
    font.setStyle(Font::BOLD);

    EXPECT_GT(engine().layOutRich(QStringLiteral("Hamburg"), font, -1.0)->width, regular);
}

TEST(TextLayout, takesLineFeedsOfPlainTextAsBlanks)
{
    Layout const layout = engine().layOutPlain(QStringLiteral("a\nb\tc"), Font(), Color(1, 2, 3));

    ASSERT_EQ(layout->runs.size(), 1U);
    EXPECT_EQ(layout->runs[0].text, QStringLiteral("a b c"));
    EXPECT_EQ(layout->runs[0].color, Color(1, 2, 3));
}

TEST(TextLayout, underlinesPlainTextOfAnUnderlinedFont)
{
    Layout const layout =
        engine().layOutPlain(QStringLiteral("abc"), Font(Font::DEFAULT_FONT_SANS, 10.0, Font::UNDERLINE), Color());

    ASSERT_EQ(layout->shapes.size(), 1U);
    EXPECT_GT(layout->shapes[0].path.boundingRect().top(), layout->runs[0].position.y());
}

TEST(TextLayout, reachesAsFarAsItsLastSlantedLetter)
{
    Layout const layout = engine().layOutPlain(QStringLiteral("f"),
                                               Font(QStringLiteral("Liberation Serif"), 10.0, Font::ITALIC), Color());

    EXPECT_GT(layout->width, layout->runs[0].width);
}

/// Composing a text of pairs seen before must give what shaping it anew gives.
TEST(ComposedText, isShapedAsIfItHadNotBeenSeen)
{
    QFont const font = toQFont(Font());
    FontFace trained(font);
    for (int i = 0; i < 3000; ++i)
        trained.shape(QString::number(std::sin(i) * 1000.0, 'f', i % 4));
    for (char const *text : {"11.71", "-740.1", "AVAWATo", "0", "999", "-1", "office"}) {
        FontFace fresh(font);
        auto const expected = fresh.shape(QString::fromLatin1(text));
        auto const shaped = trained.shape(QString::fromLatin1(text));
        EXPECT_EQ(shaped->glyphs[0].glyphIndexes(), expected->glyphs[0].glyphIndexes()) << text;
        EXPECT_EQ(shaped->glyphs[0].positions(), expected->glyphs[0].positions()) << text;
        EXPECT_DOUBLE_EQ(shaped->width, expected->width) << text;
    }
}

TEST(ComposedText, keepsLigaturesTogether)
{
    FontFace face(toQFont(Font()));
    face.shape(QStringLiteral("fi"));
    face.shape(QStringLiteral("if"));
    auto const shape = face.shape(QStringLiteral("ifi"));

    EXPECT_EQ(shape->glyphs[0].glyphIndexes(),
              FontFace(toQFont(Font())).shape(QStringLiteral("ifi"))->glyphs[0].glyphIndexes());
}

class Untrusted : public testing::TestWithParam<QString>
{
};

TEST_P(Untrusted, isLaidOut)
{
    Layout const layout = layOut(GetParam(), 50.0);

    EXPECT_TRUE(std::isfinite(layout->width));
    EXPECT_TRUE(std::isfinite(layout->height));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Untrusted,
    testing::Values(QStringLiteral("<table><tr><td>").repeated(2000), QStringLiteral("<div>").repeated(5000) + "x",
                    QStringLiteral("<ul>").repeated(500) + "x", QStringLiteral("<b>").repeated(5000) + "x",
                    QStringLiteral("<table cellpadding=2000000000><tr><td>x"),
                    QStringLiteral("<table><tr><td colspan=2000000000 rowspan=2000000000>x"),
                    QStringLiteral("<span style='font-size:2000000000pt'>x</span>"),
                    QStringLiteral("<span style='font-size:1e300pt'>x</span>"),
                    QStringLiteral("<p style='margin:-99999px; line-height:0%'>x</p>"), QString(QChar(0xd800)),
                    QString(100, QChar(u'\0')), QStringLiteral("&#xffffffff;<"), QString(20000, QLatin1Char('x'))));

TEST(UntrustedText, readsNoFiles)
{
    Support::Folder const folder;
    QImage picture(400, 400, QImage::Format_RGB32);
    picture.fill(Qt::red);
    picture.save(folder.file("x.png"));

    Layout const layout = layOut(QStringLiteral("<p>a</p><img src=\"%1\">").arg(folder.file("x.png")));

    EXPECT_LT(layout->height, 400 * 96);
}

} // namespace
} // namespace Zem::Fig2Qt
