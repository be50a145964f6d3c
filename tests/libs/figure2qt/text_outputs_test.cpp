// What is measured is what is painted, on every output and at every resolution.
#include "page_support.h"

#include <ZemFig2QtCalculator.h>

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>

#include <cmath>

namespace Zem::Support {
namespace {

using namespace Fig2;

constexpr double MM_PER_POINT = 25.4 / 72.0;
Font const FONT(Font::DEFAULT_FONT_SANS, 8.0, 0);

double widthOf(QString const &text, double wrap = -1.0)
{
    return Fig2Qt::QtCalculator().computeRichTextSize(text, FONT, wrap, nullptr).x;
}

Drawing richText(QString const &text, double wrap = -1.0)
{
    return [=](Painter &painter) { painter.drawRichText({10, 10}, text, FONT, wrap, Rotation::null, 1); };
}

/// Bars at both ends, so that the ink between their left edges is an advance, whatever the bearings are.
QString const BARRED = QStringLiteral("|The quick brown fox jumps over the lazy dog 0123456789 AVAWA|");

double expectedStep()
{
    return widthOf(BARRED) - widthOf(QStringLiteral("|"));
}

class AtResolution : public testing::TestWithParam<double>
{
};

TEST_P(AtResolution, aPictureShowsTheMeasuredWidth)
{
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = GetParam();
    writePage(folder.file("page.png"), {120, 20}, richText(BARRED), options);
    QRectF const line = inkOf(QImage(folder.file("page.png")));
    writePage(folder.file("bar.png"), {120, 20}, richText(QStringLiteral("|")), options);
    QRectF const bar = inkOf(QImage(folder.file("bar.png")));

    double const pixel = 25.4 / GetParam();
    EXPECT_NEAR((line.width() - bar.width()) * pixel, expectedStep(), pixel);
}

INSTANTIATE_TEST_SUITE_P(Resolutions, AtResolution, testing::Values(150.0, 300.0, 600.0));

TEST(AtScreenResolution, aPictureShowsTheMeasuredWidth)
{
    // A bar of this size is lighter than half at 72 dpi, so a bold one is measured.
    QString const line = QStringLiteral("<b>HThe quick brown fox jumps over the lazy dogH</b>");
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = 72.0;
    writePage(folder.file("page.png"), {120, 20}, richText(line), options);
    writePage(folder.file("one.png"), {120, 20}, richText(QStringLiteral("<b>H</b>")), options);
    double const step = inkOf(QImage(folder.file("page.png"))).width() - inkOf(QImage(folder.file("one.png"))).width();

    EXPECT_NEAR(step * MM_PER_POINT, widthOf(line) - widthOf(QStringLiteral("<b>H</b>")), MM_PER_POINT);
}

/// The boxes of the words as pdftotext finds them: left and right, in millimetres.
std::vector<std::pair<double, double>> wordBoxes(QString const &pdf)
{
    QString const xml = run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), pdf, QStringLiteral("-")});
    QRegularExpression const box(QStringLiteral("<word xMin=\"([0-9.]+)\" yMin=\"[0-9.]+\" xMax=\"([0-9.]+)\""));
    std::vector<std::pair<double, double>> boxes;
    for (auto it = box.globalMatch(xml); it.hasNext();) {
        auto const match = it.next();
        boxes.emplace_back(match.captured(1).toDouble() * MM_PER_POINT, match.captured(2).toDouble() * MM_PER_POINT);
    }
    return boxes;
}

TEST(PdfText, hasWordsOfTheMeasuredWidthAtTheMeasuredPlaces)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), {120, 20}, richText(QStringLiteral("Hamburg <b>1234.5</b> <i>Toast</i>")));
    auto const boxes = wordBoxes(folder.file("page.pdf"));

    ASSERT_EQ(boxes.size(), 3U);
    EXPECT_NEAR(boxes[0].first, 10.0, 0.01);
    EXPECT_NEAR(boxes[0].second, 10.0 + widthOf(QStringLiteral("Hamburg")), 0.03);
    EXPECT_NEAR(boxes[1].first, 10.0 + widthOf(QStringLiteral("Hamburg ")), 0.03);
    EXPECT_NEAR(boxes[1].second, 10.0 + widthOf(QStringLiteral("Hamburg <b>1234.5</b>")), 0.03);
    EXPECT_NEAR(boxes[2].first, 10.0 + widthOf(QStringLiteral("Hamburg <b>1234.5</b> ")), 0.03);
}

TEST(PdfText, isPaintedAsInAPicture)
{
    QImage const picture = paint({120, 20}, richText(BARRED));

    QRectF const a = inkOf(picture);
    QRectF const b = inkOf(paintThroughPdf({120, 20}, richText(BARRED)));
    EXPECT_NEAR(a.left(), b.left(), 1.0);
    EXPECT_NEAR(a.right(), b.right(), 1.0);
    EXPECT_NEAR(a.top(), b.top(), 1.0);
    EXPECT_NEAR(a.bottom(), b.bottom(), 1.0);
}

TEST(SvgText, isPaintedAsInAPicture)
{
    QRectF const a = inkOf(paint({120, 20}, richText(BARRED)));
    QRectF const b = inkOf(paintThroughSvg({120, 20}, richText(BARRED)));
    EXPECT_NEAR(a.left(), b.left(), 1.0);
    EXPECT_NEAR(a.right(), b.right(), 1.0);
    EXPECT_NEAR(a.top(), b.top(), 1.0);
    EXPECT_NEAR(a.bottom(), b.bottom(), 1.0);
}

TEST(SvgText, hasWordsOfTheMeasuredLengthAtTheMeasuredPlaces)
{
    Folder const folder;
    writePage(folder.file("page.svg"), {120, 20}, richText(QStringLiteral("first second")));
    QString const svg = QString::fromUtf8(bytesOf(folder.file("page.svg")));
    QRegularExpression const word(QStringLiteral("<tspan x=\"([0-9.]+)\" textLength=\"([0-9.]+)\"[^>]*>([^<]*)</tspan>"));
    auto it = word.globalMatch(svg);
    ASSERT_TRUE(it.hasNext());
    auto const first = it.next();
    ASSERT_TRUE(it.hasNext());
    auto const second = it.next();

    EXPECT_EQ(first.captured(3), QStringLiteral("first "));
    EXPECT_EQ(first.captured(1).toDouble(), 0.0);
    EXPECT_NEAR(first.captured(2).toDouble(), widthOf(QStringLiteral("first ")), 0.001);
    EXPECT_EQ(second.captured(3), QStringLiteral("second"));
    EXPECT_NEAR(second.captured(1).toDouble(), widthOf(QStringLiteral("first ")), 0.001);
    EXPECT_NEAR(second.captured(2).toDouble(), widthOf(QStringLiteral("second")), 0.001);
    EXPECT_TRUE(svg.contains(QLatin1StringView("translate")) || svg.contains(QLatin1StringView(" 10 10)")));
}

struct TextCase
{
    char const *name;
    char const *text;
    double wrap;
};

class OnAllOutputs : public testing::TestWithParam<TextCase>
{
};

TEST_P(OnAllOutputs, looksTheSame)
{
    Drawing const drawing = [](Painter &painter) {
        painter.drawRichText({5, 5}, QString::fromUtf8(GetParam().text), Font(Font::DEFAULT_FONT_SANS, 12.0, 0),
                             GetParam().wrap, Rotation({5, 5}, -0.2), 1);
    };
    QImage const picture = paint({60, 40}, drawing);
    QImage const pdf = paintThroughPdf({60, 40}, drawing);
    QImage const svg = paintThroughSvg({60, 40}, drawing);

    EXPECT_GT(inkOf(picture).width(), 50);
    EXPECT_LT(difference(picture, pdf, 128), 0.008);
    EXPECT_LT(difference(picture, svg, 128), 0.008);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OnAllOutputs,
    testing::Values(TextCase{"simple", "Run <b>B17</b> &sigma;<sub>max</sub> = <i>12.3</i>", -1.0},
                    TextCase{"decorated", "<u>under<sup>2</sup></u> <s>through</s>", -1.0},
                    TextCase{"wrapped", "one two three four five six", 30.0},
                    TextCase{"justified", "<p align=justify>one two three four five six seven</p>", 40.0},
                    TextCase{"table", "<table border=1 cellpadding=4><tr><td>ab</td><td bgcolor=#ffc0c0>12.5</td></tr></table>",
                             -1.0},
                    TextCase{"list", "<ul><li>one</li><li>two</li></ul>", -1.0},
                    TextCase{"ligature", "office final", -1.0},
                    TextCase{"colours", "<span style='color:#b02020'>red</span> <span style='background:#ffff80'>marked</span>",
                             -1.0}),
    [](auto const &instance) { return std::string(instance.param.name); });

TEST(PlainText, standsWithItsTopLeftCornerAtThePosition)
{
    QImage const image = paint({40, 20}, [](Painter &painter) {
        painter.drawText({5, 5}, Font(Font::DEFAULT_FONT_SANS, 20.0, 0), QStringLiteral("H"), RED, Rotation::null);
    });
    double const em = 20.0 * MM_PER_POINT;
    // Liberation Sans: an H is 0.729... less high than the ascent of 0.905; its left bearing is 0.079 of the em.
    QRectF const ink = inkOf(image);

    EXPECT_NEAR(ink.bottom() / 10.0, 5.0 + 0.905 * em, 0.1);
    EXPECT_NEAR(ink.top() / 10.0, 5.0 + (0.905 - 0.688) * em, 0.1);
    EXPECT_NEAR(ink.left() / 10.0, 5.0 + 0.082 * em, 0.1);
    EXPECT_EQ(colorAt(image, ink.center().x() / 10.0, ink.center().y() / 10.0), "red");
}

TEST(PlainText, turnsAboutTheBase)
{
    Drawing const drawing = [](Painter &painter) {
        painter.drawText({20, 20}, Font(Font::DEFAULT_FONT_SANS, 12.0, 0), QStringLiteral("HHHH"), BLACK,
                         Rotation({20, 20}, M_PI / 2.0));
    };
    // Turned a quarter it runs upwards from (20, 20), to the right of it.
    for (QImage const &image :
         {paint({40, 40}, drawing), paintThroughPdf({40, 40}, drawing), paintThroughSvg({40, 40}, drawing)}) {
        QRectF const ink = inkOf(image);
        EXPECT_LT(ink.bottom(), 201);
        EXPECT_GT(ink.height(), 80);
        EXPECT_GT(ink.left(), 199);
        EXPECT_LT(ink.right(), 250);
    }
}

TEST(PlainText, scalesWithTheTransformation)
{
    auto const inkAtScale = [](double scale) {
        return inkOf(paint({60, 20}, [scale](Painter &painter) {
            painter.pushTransformation({0, 0}, scale, Rotation::null);
            painter.drawText({1, 1}, FONT, QStringLiteral("HHHH"), BLACK, Rotation::null);
            painter.popTransformation();
        }));
    };

    EXPECT_NEAR(inkAtScale(4.0).width(), 4.0 * inkAtScale(1.0).width(), 4.0);
}

} // namespace
} // namespace Zem::Support
