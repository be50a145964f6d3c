#include "page_support.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QFontDatabase>

#include <thread>

namespace Zem::Support {
namespace {

using namespace Fig2;

Drawing text(char const *html)
{
    return [html](Painter &painter) {
        painter.drawRichText({10, 10}, QString::fromUtf8(html), Font(Font::DEFAULT_FONT_SANS, 12.0, 0), -1.0,
                             Rotation::null, 1);
    };
}

QString textOf(QString const &pdf)
{
    return run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")}).trimmed();
}

QString infoOf(QString const &pdf)
{
    return run(QStringLiteral("pdfinfo"), {QStringLiteral("-l"), QStringLiteral("9"), pdf}).simplified();
}

/// What the pages draw, unpacked; fonts and all else left out.
QByteArray pageContentsOf(QString const &pdf)
{
    QFile file(pdf);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray const bytes = file.readAll();
    QByteArray const sizeHint(4, '\x01'); // of what is unpacked; qUncompress wants one
    QByteArray contents;
    for (qsizetype begin = bytes.indexOf("stream\n"); begin >= 0; begin = bytes.indexOf("\nstream\n", begin)) {
        begin = bytes.indexOf('\n', begin + 1) + 1;
        QByteArray const stream = qUncompress(sizeHint + bytes.mid(begin, bytes.indexOf("endstream", begin) - begin));
        contents += stream.contains("BT") ? stream : QByteArray();
    }
    return contents;
}

TEST(Pdf, embedsItsFonts)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("regular <b>bold</b> <i>italic</i>"));
    QStringList const lines =
        run(QStringLiteral("pdffonts"), {folder.file("page.pdf")}).split(QLatin1Char('\n'), Qt::SkipEmptyParts);

    ASSERT_EQ(lines.size(), 2 + 3); // heading and rule, then the fonts
    for (qsizetype i = 2; i < lines.size(); ++i)
        EXPECT_TRUE(lines[i].contains(QRegularExpression(QStringLiteral("CID TrueType +Identity-H +yes yes yes"))))
            << lines[i].toStdString();
}

TEST(Pdf, textCanBeSearched)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50},
              text("Run <b>B17</b> &sigma;<sub>max</sub> = <i>12.3</i> MPa ±5 µm (x) \\ Größe"));

    EXPECT_EQ(textOf(folder.file("page.pdf")).simplified().remove(QLatin1Char(' ')),
              QString::fromUtf8("RunB17σmax=12.3MPa±5µm(x)\\Größe"));
}

TEST(Pdf, copiesLigaturesAsTheirLetters)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("office final flow"));

    EXPECT_EQ(textOf(folder.file("page.pdf")), QStringLiteral("office final flow"));
}

TEST(Pdf, tellsCharactersOfOneGlyphApart)
{
    // Liberation Sans draws the micro sign and the Greek letter with one glyph.
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("µ0μ"));

    EXPECT_EQ(textOf(folder.file("page.pdf")), QString::fromUtf8("µ0μ"));
}

TEST(Pdf, tellsAHundredGlyphsApart)
{
    // Glyphs are numbered as they come: among the numbers are those of brackets and the backslash.
    QString const letters = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                                           "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ");
    Folder const folder;
    writePage(folder.file("page.pdf"), {400, 50}, text(letters.toUtf8().constData()));

    EXPECT_EQ(textOf(folder.file("page.pdf")), letters);
}

TEST(Pdf, holdsNoLineEndWithinAText)
{
    // Readers may take a line end in a text for another one: glyph 13 is written as an escape.
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("abcdefghijklmnopqrst"));
    QByteArray const contents = pageContentsOf(folder.file("page.pdf"));

    EXPECT_TRUE(contents.contains("\\r"));
    EXPECT_FALSE(contents.contains('\r'));
}

TEST(Pdf, takesCharactersThatTheFontLacksFromAnother)
{
    // DejaVu Sans is of no use here when it is not installed; then the text must still be written.
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("a \u2713 b"));

    EXPECT_TRUE(textOf(folder.file("page.pdf")).startsWith(QLatin1Char('a')));
    EXPECT_TRUE(textOf(folder.file("page.pdf")).endsWith(QLatin1Char('b')));
}

TEST(Pdf, writesTextFromRightToLeft)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("\u05d0\u05d1\u05d2"));

    EXPECT_FALSE(bytesOf(folder.file("page.pdf")).isEmpty());
    EXPECT_GT(inkOf(paintThroughPdf({100, 50}, text("\u05d0\u05d1\u05d2"))).width(), 20);
}

TEST(Pdf, hasPagesOfTheirSizes)
{
    Folder const folder;
    auto const writer = Fig2Qt::createPageWriter(folder.file("pages.pdf"));
    writer->beginPage({210, 297});
    writer->beginPage({100, 50});
    writer->close();
    QString const info = infoOf(folder.file("pages.pdf"));

    EXPECT_TRUE(info.contains(QLatin1StringView("Pages: 2")));
    EXPECT_TRUE(info.contains(QLatin1StringView("Page 1 size: 595.276 x 841.89"))) << info.toStdString();
    // 283.46457 cut off after four places, and then as pdfinfo rounds
    EXPECT_TRUE(info.contains(QLatin1StringView("Page 2 size: 283.464 x 141.732"))) << info.toStdString();
}

TEST(Pdf, sharesItsFontsBetweenPages)
{
    Folder const folder;
    auto const writer = Fig2Qt::createPageWriter(folder.file("pages.pdf"));
    text("one")(writer->beginPage({100, 50}));
    text("two")(writer->beginPage({100, 50}));
    writer->close();

    EXPECT_EQ(run(QStringLiteral("pdffonts"), {folder.file("pages.pdf")}).count(QLatin1StringView("LiberationSans")),
              1);
    EXPECT_TRUE(textOf(folder.file("pages.pdf")).contains(QLatin1StringView("two")));
}

TEST(Pdf, holdsNoTimeUnlessItIsGiven)
{
    Folder const folder;
    writePage(folder.file("page.pdf"), {100, 50}, text("x"));
    Fig2Qt::PageOptions options;
    options.creationDate = QDateTime(QDate(2024, 2, 29), QTime(12, 30, 15), Qt::UTC);
    options.title = QString::fromUtf8("Prüfung (1)");
    writePage(folder.file("dated.pdf"), {100, 50}, text("x"), options);

    EXPECT_FALSE(infoOf(folder.file("page.pdf")).contains(QLatin1StringView("CreationDate")));
    EXPECT_TRUE(infoOf(folder.file("dated.pdf")).contains(QLatin1StringView("CreationDate: Thu Feb 29 12:30:15 2024")));
    EXPECT_TRUE(infoOf(folder.file("dated.pdf")).contains(QString::fromUtf8("Title: Prüfung (1)")));
}

void drawOfEverything(Painter &painter)
{
    text("Run <b>B17</b> <sub>i</sub> office \u2713 <table border=1><tr><td>x</td></tr></table>")(painter);
    painter.drawColors({1, 1}, {5, 5}, true, {RED, BLUE}, Rotation::null);
    painter.drawColors({1, 7}, {5, 5}, true, {RED, Color(0, 0, 255, 0)}, Rotation::null);
    painter.setClipping(Rect(2, 2, 30, 30), Rotation::null);
    painter.drawEllipse({10, 10}, {5, 3}, 0.3, styledLine(0.4, LineStyle::STYLE_DASHED, LineStyle::CAP_ROUND),
                        FillStyle(Color(10, 200, 30, 100)), Rotation({1, 1}, 0.2));
    painter.resetClipping();
}

TEST(SameBytes, comeFromTheSameDrawing)
{
    for (char const *ending : {"pdf", "svg", "png"}) {
        Folder const folder;
        QString const first = folder.file("first.") + QLatin1StringView(ending);
        QString const second = folder.file("second.") + QLatin1StringView(ending);
        QString const third = folder.file("third.") + QLatin1StringView(ending);
        writePage(first, {60, 60}, drawOfEverything);
        // Neither what was laid out before, nor the thread, may show.
        writePage(folder.file("other.svg"), {60, 60}, text("1.23 4.56 B17 Run x other texts"));
        writePage(second, {60, 60}, drawOfEverything);
        std::thread([&] { writePage(third, {60, 60}, drawOfEverything); }).join();

        EXPECT_FALSE(bytesOf(first).isEmpty());
        EXPECT_EQ(bytesOf(first), bytesOf(second)) << ending;
        EXPECT_EQ(bytesOf(first), bytesOf(third)) << ending;
    }
}

TEST(Pdf, isPaintedAsAPicture)
{
    QImage const picture = paint({60, 60}, drawOfEverything);

    EXPECT_LT(difference(picture, paintThroughPdf({60, 60}, drawOfEverything), 64), 0.01);
    EXPECT_LT(difference(picture, paintThroughSvg({60, 60}, drawOfEverything), 64), 0.01);
}

TEST(Pdf, drawsWithItsColoursTranslucent)
{
    QImage const image = paintThroughPdf({20, 20}, [](Painter &painter) {
        painter.drawRect({2, 2}, {16, 16}, LineStyle::null, FillStyle(RED), Rotation::null);
        painter.drawRect({2, 2}, {16, 8}, LineStyle::null, FillStyle(Color(0, 0, 255, 51)), Rotation::null);
    });

    EXPECT_EQ(colorAt(image, 10, 5), "#cc0033");
    EXPECT_EQ(colorAt(image, 10, 15), "red");
}

TEST(Pdf, drawsAFontWithoutASlantSlanted)
{
    // DejaVu Math has one upright face.
    ASSERT_TRUE(QFontDatabase::hasFamily(QStringLiteral("DejaVu Math TeX Gyre"))) << "is fonts-dejavu-extra installed?";
    Drawing const drawing = [](Painter &painter) {
        painter.drawText({5, 5}, Font(QStringLiteral("DejaVu Math TeX Gyre"), 30.0, Font::ITALIC | Font::BOLD),
                         QStringLiteral("HIH"), BLACK, Rotation::null);
    };

    EXPECT_LT(difference(paint({60, 30}, drawing), paintThroughPdf({60, 30}, drawing), 128), 0.01);
}

} // namespace
} // namespace Zem::Support
