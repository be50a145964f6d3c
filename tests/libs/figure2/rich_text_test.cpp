#include <ElementForms.h>
#include <ZemFig2RichText.h>

#include <ZemError.h>

#include <QtCore/QStringList>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

/// Elements in order, plain text in quotes.
std::string elementsOf(char const *text)
{
    QStringList elements;
    for (RTFIterator it(QString::fromUtf8(text)); it.hasElement(); it.next())
        elements += it.getType() ? QLatin1Char('\'') + it.getElement() + QLatin1Char('\'') : it.getElement();
    return elements.join(QLatin1Char('|')).toStdString();
}

TEST(RTFIterator, partsTagsFromPlainText)
{
    EXPECT_EQ(elementsOf("ab<b>cd</b><i>"), "'ab'|<b>|'cd'|</b>|<i>");
    EXPECT_EQ(elementsOf("plain > text"), "'plain > text'");
    EXPECT_EQ(elementsOf("<a <b>>c"), "<a <b>|'>c'");
    EXPECT_EQ(elementsOf("x<b"), "'x'|<b");
    EXPECT_EQ(elementsOf("<>"), "<>");
    EXPECT_EQ(elementsOf(""), "");
}

TEST(RTFIterator, tellsItsPosition)
{
    RTFIterator it(QStringLiteral("ab<b>c"));
    EXPECT_EQ(it.getPosition(), 0);
    it.next();
    EXPECT_EQ(it.getPosition(), 2);
    it.next();
    EXPECT_EQ(it.getPosition(), 5);
}

TEST(RTFIterator, endsWithAnErrorBehindTheLastElement)
{
    RTFIterator it(QStringLiteral("<b>"));
    it.next();
    EXPECT_FALSE(it.hasElement());
    EXPECT_EQ(it.getElement(), "");
    EXPECT_EQ(progError([&] { it.next(); }), "fig_rich_text: No more elements");
    EXPECT_EQ(progError([&] { it.getType(); }), "fig_rich_text: Text end reached");
}

TEST(RTFIterator, ofAnEmptyTextHasNoElements)
{
    RTFIterator it{QString()};
    EXPECT_FALSE(it.hasElement());
    EXPECT_EQ(progError([&] { it.getType(); }), "fig_rich_text: Text end reached");
    EXPECT_EQ(progError([&] { it.next(); }), "fig_rich_text: No more elements");
}

TEST(RTFDocument, endsAParagraphAtItsClosingTag)
{
    RTFDocument const document(QStringLiteral("<p>a</p><p>b</p>c"));
    std::vector<std::string> paragraphs;
    for (RTFParagraph const &paragraph : document.getParagraphs())
        paragraphs.push_back(paragraph.toString().toStdString());
    EXPECT_EQ(paragraphs, (std::vector<std::string>{"<p>a</p>", "<p>b</p>", "c"}));
    EXPECT_EQ(document.toString(), "<p>a</p><p>b</p>c");
    EXPECT_EQ(RTFDocument().toString(), "");
    EXPECT_TRUE(RTFDocument(QString()).getParagraphs().empty());
}

TEST(RTFToolsIsRichText, asksForTheTagAtTheVeryBeginning)
{
    EXPECT_TRUE(RTFTools::isRichText("<html>"));
    EXPECT_TRUE(RTFTools::isRichText("<html><body>x"));
    EXPECT_FALSE(RTFTools::isRichText(" <html>"));
    EXPECT_FALSE(RTFTools::isRichText("<HTML>"));
    EXPECT_FALSE(RTFTools::isRichText("<html "));
    EXPECT_FALSE(RTFTools::isRichText(""));
    EXPECT_TRUE(RTFTools::startsWith("abc", "ab"));
    EXPECT_FALSE(RTFTools::startsWith("abc", "AB"));
    EXPECT_TRUE(RTFTools::startsWith("abc", ""));
}

TEST(RTFToolsStripTags, cutsAwayTheTagsAndWhatIsOutside)
{
    EXPECT_EQ(RTFTools::stripTags("<html>a</html>", "html"), "a");
    EXPECT_EQ(RTFTools::stripTags("head<body bgcolor=\"#ffffff\">a<b>c</b></body>\n", "body"), "a<b>c</b>");
    EXPECT_EQ(RTFTools::stripTags("<html><head/><body>x</body></html>", "html"), "<head/><body>x</body>");
}

TEST(RTFToolsStripTags, leavesATextWithoutTheTagAlone)
{
    EXPECT_EQ(RTFTools::stripTags("a<b>c</b>", "html"), "a<b>c</b>");
    EXPECT_EQ(RTFTools::stripTags("", "html"), "");
    EXPECT_EQ(RTFTools::stripTags("<html", "html"), "<html");
    EXPECT_EQ(RTFTools::stripTags("<html>a<b>c</b>", "html"), "a<b>c</b>");
}

struct Conversion
{
    char const *before;
    char const *after;
};

class RTFToolsConvertToQt4 : public testing::TestWithParam<Conversion>
{
};

TEST_P(RTFToolsConvertToQt4, repairsTables)
{
    EXPECT_EQ(RTFTools::convertToQt4(QString::fromUtf8(GetParam().before)).toStdString(), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, RTFToolsConvertToQt4,
    testing::Values(Conversion{"plain <b>text</b>", "plain <b>text</b>"},
                    Conversion{"<table border=0 width=1>", "<table border=0>"},
                    Conversion{"<table  width=1>", "<table >"}, Conversion{"<table width=1>", "<table width=1>"},
                    Conversion{"<table border=0 width=100>", "<table border=000>"},
                    Conversion{"<TABLE border=0 width=1>", "<TABLE border=0 width=1>"},
                    Conversion{"<table a width=1 width=1>", "<table a width=1>"},
                    Conversion{"<table border=0 cellpadding=-1 width=1>", "<table border=0>"},
                    Conversion{"<table a=1 cellpadding=-1>", "<table a=1>"},
                    Conversion{"<td align=left width=1>x</td>", "<td align=left><p>x</p></td>"},
                    Conversion{"<td>x</td><td a=1>y</td>", "<td><p>x</p></td><td a=1><p>y</p></td>"},
                    Conversion{"<td><p>x</p></td>", "<td><p><p>x</p></p></td>"}, Conversion{"", ""},
                    Conversion{"<table a <table b width=1>", "<table a <table b>"},
                    Conversion{"<table a width=1", "<table a"}, Conversion{"<table a\twidth=1>", "<table a>"},
                    Conversion{"<table a\u00a0width=1>", "<table a>"},
                    Conversion{"<table a xwidth=1>", "<table a xwidth=1>"},
                    Conversion{"<table a width=1 xwidth=1>", "<table a xwidth=1>"},
                    Conversion{"<tablet a width=1>", "<tablet a width=1>"},
                    Conversion{"<table a> width=1", "<table a> width=1"}, Conversion{"<td x", "<td x"},
                    Conversion{"<td <td>y", "<td <td><p>y"}, Conversion{"<tdx>y", "<tdx><p>y"},
                    Conversion{"</td></td>", "</p></td></p></td>"}));

TEST(RTFToolsConvertToQt4Text, mayBeLong)
{
    for (char const *piece : {"<table ", "<td ", "<table width=", "<td xwidth=1"}) {
        // Nearly each of the patterns everywhere, and what they end with at the very end.
        QString const text = QString::fromLatin1(piece).repeated(100000) + QStringLiteral("=1");
        EXPECT_EQ(RTFTools::convertToQt4(text), text) << piece;
    }
}

TEST(RTFToolsConvertText, turnsColourMarksIntoSpansAndEscapesTheRest)
{
    EXPECT_EQ(RTFTools::convertText("plain"), "plain");
    EXPECT_EQ(RTFTools::convertText("1 < 2 > 0\nx"), "1 &lt; 2 &gt; 0<br>\nx");
    EXPECT_EQ(RTFTools::convertText("<b>x</b>"), "&lt;b&gt;x&lt;/b&gt;");
    EXPECT_EQ(RTFTools::convertText("a<color red>b</color>c"), "a<span style=\"color:red\">b</span>c");
    EXPECT_EQ(RTFTools::convertText("<color=#ff0000>b</color>"), "<span style=\"color:#ff0000\">b</span>");
    EXPECT_EQ(RTFTools::convertText("<color = red>"), "<span style=\"color:red\">");
    EXPECT_EQ(RTFTools::convertText("<color red >"), "<span style=\"color:red \">");
    EXPECT_EQ(RTFTools::convertText("<color>"), "<span style=\"color:\">");
    EXPECT_EQ(RTFTools::convertText("<color red"), "<span style=\"color:red\">");
    // What is taken for a tag goes with the mark in it.
    EXPECT_EQ(RTFTools::convertText("1 < 2 <color red>x"), "1 <span style=\"color:red\">x");
    EXPECT_EQ(RTFTools::convertText(""), "");
}

TEST(RTFToolsConvertText, canBeWrappedInAColour)
{
    EXPECT_EQ(RTFTools::convertText("a<b", Color(1, 0xab, 255)), "<span style=\"color:#01abff\">a&lt;b</span>");
}

TEST(RTFToolsStyleAttribute, listsThePropertiesOfAFont)
{
    EXPECT_EQ(RTFTools::getStyleAttribute(Font("Arial", 8.4, 0)), "style=\"font-family:Arial;font-size:8pt;\"");
    EXPECT_EQ(RTFTools::getStyleAttribute(Font("A", 8.6, 1 | 2 | 4 | 0x20)),
              "style=\"font-family:A;font-size:9pt;font-style:italic;text-decoration:underline;font-weight:bold;\"");
    EXPECT_EQ(RTFTools::getStyleAttribute(Font("A", 12, 4)),
              "style=\"font-family:A;font-size:12pt;font-weight:lighter;\"");
    EXPECT_EQ(RTFTools::getStyleAttribute(Font("A", 12, 8 | 16 | 64)), "style=\"font-family:A;font-size:12pt;\"");
}

TEST(RTFToolsStyleAttribute, listsAColour)
{
    EXPECT_EQ(RTFTools::getStyleAttribute(Color(0, 10, 255, 7)), "style=\"color:#000aff;\"");
    EXPECT_EQ(RTFTools::getStyleAttribute(Font("A", 12, 0), Color(0, 10, 255)),
              "style=\"font-family:A;font-size:12pt;color:#000aff;\"");
}

TEST(RTFToolsStyleAttribute, isMadeFromAMapAndReadBack)
{
    std::map<QString, QString> const properties{{"color", "#ff0000"}, {"font-size", "12pt"}};
    QString const attribute = RTFTools::getStyleAttribute(properties);
    EXPECT_EQ(attribute, "style=\"color:#ff0000;font-size:12pt;\"");
    EXPECT_EQ(RTFTools::parseStyleAttribute("<p " + attribute + ">"), properties);
    EXPECT_EQ(RTFTools::getStyleAttribute(std::map<QString, QString>()), "style=\"\"");
}

TEST(RTFToolsStyleAttribute, isEmptyWhenThereIsNone)
{
    EXPECT_TRUE(RTFTools::parseStyleAttribute("<p>").empty());
    EXPECT_TRUE(RTFTools::parseStyleAttribute("<p style=\"a:b").empty());
    EXPECT_TRUE(RTFTools::parseStyleAttribute("<p style=\"broken; :x\">").empty());
    std::map<QString, QString> const first{{"a", "b:c"}};
    EXPECT_EQ(RTFTools::parseStyleAttribute("<p style=\"a: b:c\"><p style=\"d:e\">"), first);
}

} // namespace
} // namespace Zem::Fig2
