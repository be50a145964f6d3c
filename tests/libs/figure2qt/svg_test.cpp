#include "page_support.h"

#include <gtest/gtest.h>

#include <QtCore/QXmlStreamReader>

namespace Zem::Support {
namespace {

using namespace Fig2;

QString svgOf(Vec const &size, Drawing const &drawing, Fig2Qt::PageOptions const &options = {})
{
    Folder const folder;
    writePage(folder.file("page.svg"), size, drawing, options);
    return QString::fromUtf8(bytesOf(folder.file("page.svg")));
}

/// The texts of all elements of the name, each with those of its children.
QStringList textsOf(QString const &svg, QLatin1StringView name)
{
    QXmlStreamReader reader(svg);
    QStringList texts;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            texts.append(reader.readElementText(QXmlStreamReader::IncludeChildElements));
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return texts;
}

Drawing text(QString const &html)
{
    return [html](Painter &painter) { painter.drawRichText({10, 10}, html, Font(), -1.0, Rotation::null, 1); };
}

TEST(Svg, hasTheExactSizeOfThePage)
{
    QString const svg = svgOf({210.5, 297.25}, [](Painter &) {});

    EXPECT_TRUE(svg.contains(QLatin1StringView("width=\"210.5mm\" height=\"297.25mm\" viewBox=\"0 0 210.5 297.25\"")));
}

TEST(Svg, hasItsTitle)
{
    Fig2Qt::PageOptions options;
    options.title = QStringLiteral("a < b");

    EXPECT_EQ(textsOf(svgOf(
                          {10, 10}, [](Painter &) {}, options),
                      QLatin1StringView("title")),
              QStringList(QStringLiteral("a < b")));
}

TEST(Svg, keepsTextAsTextWithItsBlanks)
{
    QString const svg = svgOf({100, 50}, text(QStringLiteral("a&nbsp;&nbsp;b <b>c&lt;d</b> e")));

    EXPECT_EQ(textsOf(svg, QLatin1StringView("text")),
              (QStringList{QStringLiteral("a\u00a0\u00a0b "), QStringLiteral("c<d"), QStringLiteral(" e")}));
    EXPECT_TRUE(svg.contains(QLatin1StringView("xml:space=\"preserve\"")));
}

TEST(Svg, namesFontsWithTheirAttributes)
{
    QString const svg =
        svgOf({100, 50}, text(QStringLiteral("<b>a</b> <i>b</i> <span style='color:#ff8000'>c</span>")));

    EXPECT_TRUE(svg.contains(QLatin1StringView("font-family=\"'Liberation Sans',sans-serif\"")));
    EXPECT_TRUE(svg.contains(QLatin1StringView("font-weight=\"700\"")));
    EXPECT_TRUE(svg.contains(QLatin1StringView("font-style=\"italic\"")));
    EXPECT_TRUE(svg.contains(QLatin1StringView("fill=\"#ff8000\"")));
    EXPECT_TRUE(svg.contains(QLatin1StringView("font-size=\"4.2333\""))); // 12 points
}

TEST(Svg, stillReadsAfterCharactersThatXmlForbids)
{
    QString forbidden = QStringLiteral("a?b?c?d");
    forbidden[1] = QChar(1);
    forbidden[3] = QChar(0xd800);
    forbidden[5] = QChar(0xffff);
    QString const svg = svgOf({100, 50}, [&](Painter &painter) {
        painter.drawText({1, 1}, Font(QStringLiteral("a'b\"<c"), 10.0, 0), forbidden, BLACK, Rotation::null);
    });

    EXPECT_EQ(textsOf(svg, QLatin1StringView("text")).join(QString()).size(), 7);
    EXPECT_TRUE(svg.contains(QLatin1StringView("font-family=\"'ab&quot;&lt;c',sans-serif\""))) << svg.toStdString();
}

TEST(Svg, nestsItsClippings)
{
    QString const svg = svgOf({20, 20}, [](Painter &painter) {
        painter.setClipping(Rect(1, 1, 9, 9), Rotation::null);
        painter.setClipping(Rect(2, 2, 9, 9), Rotation::null);
        painter.drawLine({0, 0}, {9, 9}, fullLine(1.0), Rotation::null);
        painter.resetClipping();
        painter.resetClipping();
    });

    QString expected =
        QStringLiteral("<clipPath id=\"clip1\"><path d=\"M1 1L10 1L10 10L1 10Z\" clip-rule=\"evenodd\"/></clipPath>"
                       "<g clip-path=\"url(#clip1)\">"
                       "<clipPath id=\"clip2\"><path d=\"M2 2L11 2L11 11L2 11Z\" clip-rule=\"evenodd\"/></clipPath>"
                       "<g clip-path=\"url(#clip2)\">"
                       "<path d=\"M0 0l9 9\" fill=\"none\" stroke=\"#000000\" stroke-width=\"1\"/></g></g>");
    EXPECT_TRUE(svg.contains(expected)) << svg.toStdString();
}

TEST(Svg, isPaintedAsAPicture)
{
    Drawing const drawing = [](Painter &painter) {
        for (int i = 0; i < 4; ++i) {
            auto const style = static_cast<LineStyle::Style>(i + 1);
            painter.drawLine({2, 2.0 + 2 * i}, {38, 3.0 + 2 * i}, styledLine(0.5, style, LineStyle::CAP_ROUND),
                             Rotation::null);
            painter.drawLine({2, 12.0 + 2 * i}, {38, 13.0 + 2 * i}, styledLine(0.5, style, LineStyle::CAP_SHARP),
                             Rotation::null);
        }
        painter.drawPolygon(Polygon2d({{2, 22}, {18, 22}, {2, 34}, {18, 34}}, true), fullLine(1.0, BLUE),
                            FillStyle(RED), Rotation::null, true);
        painter.drawEllipse({28, 28}, {9, 4}, 0.5, fullLine(0.3), FillStyle(Color(0, 128, 0, 100)), Rotation::null);
        painter.drawColors({2, 36}, {36, 3}, false, {RED, Color(0, 255, 0), BLUE}, Rotation::null);
    };

    EXPECT_LT(difference(paint({40, 40}, drawing), paintThroughSvg({40, 40}, drawing), 64), 0.002);
    EXPECT_LT(difference(paint({40, 40}, drawing), paintThroughPdf({40, 40}, drawing), 64), 0.004);
}

} // namespace
} // namespace Zem::Support
