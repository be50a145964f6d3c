#include <figqt_truetype.h>

#include <figqt_fonts.h>

#include <gtest/gtest.h>

namespace Zem::Fig2Qt {
namespace {

QRawFont liberation()
{
    return QRawFont::fromFont(toQFont(Font()));
}

TEST(TrueTypeFont, knowsTheMeasuresOfTheFile)
{
    auto const font = TrueTypeFont::read(liberation());
    ASSERT_TRUE(font);
    QRawFont const raw = liberation();

    EXPECT_EQ(font->getUnitsPerEm(), 2048);
    EXPECT_NEAR(font->getAdvance(raw.glyphIndexesForString(QStringLiteral("H"))[0]), 722.2, 0.1);
    EXPECT_NEAR(font->getAscent(), 905.3, 0.1);
    EXPECT_NEAR(font->getDescent(), -212.0, 0.2);
    EXPECT_FALSE(font->isBold());
    EXPECT_FALSE(font->isItalic());
}

TEST(TrueTypeFont, knowsWhetherItsOutlinesAreBoldOrSlanted)
{
    Font const font(Font::DEFAULT_FONT_SANS, 10.0, Font::BOLD | Font::ITALIC);
    auto const trueType = TrueTypeFont::read(QRawFont::fromFont(toQFont(font)));

    EXPECT_TRUE(trueType->isBold());
    EXPECT_TRUE(trueType->isItalic());
}

TEST(TrueTypeFont, isNothingWithoutAFile)
{
    EXPECT_FALSE(TrueTypeFont::read(QRawFont()));
}

TEST(TrueTypeFont, makesASmallFontOfTheSameOutlines)
{
    QRawFont const raw = liberation();
    // Composed letters bring their parts along.
    QList<quint32> const glyphs = raw.glyphIndexesForString(QString::fromUtf8("Aäé5ö"));
    std::vector<std::uint32_t> chosen{0};
    chosen.insert(chosen.end(), glyphs.begin(), glyphs.end());
    std::string const file = TrueTypeFont::read(raw)->makeSubset(chosen);
    QRawFont const small(QByteArray::fromStdString(file), raw.pixelSize(), QFont::PreferNoHinting);

    EXPECT_LT(file.size(), 20'000U);
    ASSERT_TRUE(small.isValid());
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        EXPECT_EQ(small.pathForGlyph(static_cast<quint32>(i)), raw.pathForGlyph(chosen[i])) << i;
        EXPECT_FALSE(small.pathForGlyph(static_cast<quint32>(i)).isEmpty()) << i;
    }
}

TEST(TrueTypeFont, takesGlyphsThatDoNotExistAsEmpty)
{
    auto const font = TrueTypeFont::read(liberation());

    EXPECT_FALSE(font->makeSubset({0, 60'000}).empty());
    EXPECT_GE(font->getAdvance(60'000), 0.0);
}

} // namespace
} // namespace Zem::Fig2Qt
