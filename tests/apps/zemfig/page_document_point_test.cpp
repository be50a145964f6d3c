// Named points in page documents.
#include "page_document_fixture.h"

#include <gtest/gtest.h>

namespace Zem::Zemfig {
namespace {

using Measurement::NamedPoint;
using Measurement::PointPlace_t;

char const *const POINTS = R"([[point]]
name = "R\"m\""
token = "log.stress"
at = "maximum"
symbol = { type = "cross", size = 3, color = "#ff0000", font = { family = "Serif", size = 7 } }

[[point]]
token = "force"
at = 288

[[point]]
name = "end"
token = "force"
at = "last"
)";

TEST(PageDocumentPoint, isReadWithPlaceAndSymbol)
{
    PageDocument const document = parse(POINTS);

    ASSERT_EQ(problemsOf(POINTS), "");
    ASSERT_EQ(document.points.size(), 3U);
    NamedPoint const &first = document.points[0].point;
    EXPECT_EQ(first.name, QStringLiteral("R\"m\""));
    EXPECT_EQ(first.token, QStringLiteral("log.stress"));
    EXPECT_EQ(first.place, PointPlace_t::MAXIMUM);
    EXPECT_EQ(first.symbol.getType(), Fig2::Symbol::TYPE_CROSS);
    EXPECT_EQ(first.symbol.getSize(), 3.0);
    EXPECT_EQ(first.symbol.getColor(), Color(255, 0, 0));
    EXPECT_EQ(first.symbol.getFont().getFamily(), QStringLiteral("Serif"));
    EXPECT_EQ(document.points[1].line, 7);
    EXPECT_EQ(document.points[1].point.place, PointPlace_t::NUMBER);
    EXPECT_EQ(document.points[1].point.number, 288U);
    EXPECT_EQ(document.points[1].point.symbol, NamedPoint().symbol);
    EXPECT_EQ(document.points[2].point.place, PointPlace_t::LAST);
}

TEST(PageDocumentPoint, isKeptThroughWriting)
{
    PageDocument const document = parse(POINTS);
    QString const written = writePageDocument(*document.figure, {}, {}, {}, document.points);
    PageDocument const again = parse(written.toUtf8());

    ASSERT_TRUE(again.problems.empty()) << written.toStdString();
    ASSERT_EQ(again.points.size(), document.points.size());
    for (std::size_t i = 0; i < again.points.size(); ++i)
        EXPECT_EQ(again.points[i].point, document.points[i].point) << written.toStdString();
}

TEST(PageDocumentPoint, isToldWhatIsWrongWithIt)
{
    EXPECT_EQ(problemsOf(R"([[point]]
tokn = "y"
at = "top"
[[point]]
token = 3
at = -1
[[point]]
token = "y"
at = 1.5
symbol = { type = "crux", size = "big", colour = "#ff0000" }
[[point]]
token = "y"
)"),
              "p.toml:1: a point wants a 'token', the name of the curve on which it lies\n"
              "p.toml:2: unknown key 'tokn' in a point (did you mean 'token'?)\n"
              "p.toml:3: 'at' wants \"maximum\", \"minimum\", \"first\", \"last\", or the number of a stage or row\n"
              "p.toml:5: 'token' wants a text, not a number\n"
              "p.toml:6: 'at' wants \"maximum\", \"minimum\", \"first\", \"last\", or the number of a stage or row\n"
              "p.toml:9: 'at' wants \"maximum\", \"minimum\", \"first\", \"last\", or the number of a stage or row\n"
              "p.toml:10: unknown key 'symbol_colour' in a point (did you mean 'symbol_color'?)\n"
              "p.toml:10: 'symbol_size' wants a number, not a text\n"
              "p.toml:10: a point: unknown symbol type: crux\n"
              "p.toml:11: a point wants an 'at': \"maximum\", \"minimum\", \"first\", \"last\", or the number of a "
              "stage or row\n");
}

TEST(PageDocumentPoint, standsInAListOfTables)
{
    EXPECT_EQ(problemsOf("[point]\ntoken = \"y\"\n"), "p.toml:1: 'point' wants a list of tables: [[point]]\n");
    EXPECT_EQ(problemsOf("point = [3]\n"), "p.toml:1: a point wants a table, not a number\n");
}

} // namespace
} // namespace Zem::Zemfig
