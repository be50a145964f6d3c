// Points of curves that charts mark with a name.
#include "chart_support.h"

using namespace Zem::Measurement;
using Zem::StageIdentifier;
using Zem::Fig2::NamedPointChartMarker;
using Zem::Fig2::Symbol;

namespace {

NamedPoint namedPoint(char const *name, char const *token, PointPlace_t place, unsigned int number = 0)
{
    NamedPoint point;
    point.name = QString::fromUtf8(name);
    point.token = QString::fromUtf8(token);
    point.place = place;
    point.number = number;
    return point;
}

/// "top (2, 9)", in the order of the markers.
std::string namesOf(Borrowed const &chart)
{
    std::string text;
    for (auto it = chart->getChartMarkerBegin(); it != chart->getChartMarkerEnd(); ++it) {
        if (auto const *named = dynamic_cast<NamedPointChartMarker const *>(*it)) {
            text += text.empty() ? "" : ", ";
            text += named->getName().toStdString() +
                    QStringLiteral(" (%1, %2)").arg(named->getPoint().x).arg(named->getPoint().y).toStdString();
        }
    }
    return text;
}

class NamedPoints : public ProjectChartTest
{
protected:
    ProjectChartInterface charts{&tokens};

    std::string names(QString const &token) const { return namesOf(Borrowed(tokens, token)); }
};

} // namespace

TEST_F(NamedPoints, lieAtTheEndsAndTheExtremesOfACurve)
{
    importSeries("x,v\n10,\n20,5\n30,9\n40,1\n50,7\n60,\n");
    charts.setNamedPoints(
        {namedPoint("top", "a.v", PointPlace_t::MAXIMUM), namedPoint("low", "a.v", PointPlace_t::MINIMUM),
         namedPoint("begin", "a.v", PointPlace_t::FIRST), namedPoint("end", "a.v", PointPlace_t::LAST)});

    EXPECT_EQ(names(chart("a.x", {"a.v"})), "top (30, 9), low (40, 1), begin (20, 5), end (50, 7)");
}

TEST_F(NamedPoints, lieAtTheFirstOfSeveralEqualExtremes)
{
    importSeries("v\n3\n8\n8\n3\n");
    charts.setNamedPoints(
        {namedPoint("top", "a.v", PointPlace_t::MAXIMUM), namedPoint("low", "a.v", PointPlace_t::MINIMUM)});

    EXPECT_EQ(names(chart("stage", {"a.v"})), "top (2, 8), low (1, 3)");
}

TEST_F(NamedPoints, lieAtARowOfASeriesCountedFromOne)
{
    importSeries("x,v\n10,5\n20,6\n");
    charts.setNamedPoints(
        {namedPoint("one", "a.v", PointPlace_t::NUMBER, 1), namedPoint("two", "a.v", PointPlace_t::NUMBER, 2)});

    EXPECT_EQ(names(chart("a.x", {"a.v"})), "one (10, 5), two (20, 6)");
}

TEST_F(NamedPoints, lieAtAStageByItsNumber)
{
    ImportOptions options;
    options.firstStage = 5;
    import("x,y\n10,1\n20,2\n30,3\n", options);
    charts.setNamedPoints({namedPoint("six", "y", PointPlace_t::NUMBER, 6)});

    EXPECT_EQ(names(chart("x", {"y"})), "six (20, 2)");
    EXPECT_EQ(names(chart("stage", {"y"})), "six (6, 2)");
}

TEST_F(NamedPoints, areLeftOutWhereTheCurveHasNone)
{
    import("y,z\n1,\n2,\n");
    importSeries("v,u\n1,1\n,2\n3,3\n");
    importSeries("w\n1\n", "b");
    charts.setNamedPoints(
        {namedPoint("row 0", "a.v", PointPlace_t::NUMBER, 0), namedPoint("gap", "a.v", PointPlace_t::NUMBER, 2),
         namedPoint("row 4", "a.v", PointPlace_t::NUMBER, 4), namedPoint("stage", "y", PointPlace_t::NUMBER, 3),
         namedPoint("empty", "z", PointPlace_t::LAST), namedPoint("gone", "gone", PointPlace_t::FIRST),
         namedPoint("apart", "b.w", PointPlace_t::FIRST)});

    EXPECT_EQ(names(chart("stage", {"a.v", "y", "z"})), "");
    EXPECT_EQ(names(chart("a.v", {"b.w", "a.v"})), "");
}

TEST_F(NamedPoints, standInBaseUnits)
{
    importSeries("t [min],f [kN]\n1,2\n");
    charts.setNamedPoints({namedPoint("p", "a.f", PointPlace_t::FIRST)});

    EXPECT_EQ(names(chart("a.t", {"a.f"})), "p (60, 2000)");
}

TEST_F(NamedPoints, haveTheirSymbol)
{
    importSeries("v\n1\n");
    NamedPoint point = namedPoint("p", "a.v", PointPlace_t::FIRST);
    EXPECT_EQ(point.symbol.getSize(), 2.0);
    EXPECT_EQ(point.symbol.getFont().getSize(), 8.0);
    point.symbol.setType(Symbol::TYPE_CROSS);
    charts.setNamedPoints({point});

    Borrowed const data(tokens, chart("stage", {"a.v"}));
    auto const *marker = dynamic_cast<NamedPointChartMarker const *>(*data->getChartMarkerBegin());
    ASSERT_NE(marker, nullptr);
    EXPECT_EQ(marker->getSymbol(), point.symbol);
}

TEST_F(NamedPoints, stayWhereTheyAreWhenTheStageMoves)
{
    import("y\n1\n9\n2\n");
    charts.setNamedPoints({namedPoint("top", "y", PointPlace_t::MAXIMUM)});
    QString const token = chart("stage", {"y"});
    charts.registerChartToken(token);
    charts.setCurrentStage(StageIdentifier(1));
    EXPECT_EQ(names(token), "top (2, 9)");
    charts.setCurrentStage(StageIdentifier(3));

    EXPECT_EQ(names(token), "top (2, 9)");
    EXPECT_EQ(markersOf(Borrowed(tokens, token)), "line 3, points (3, 2)");
}

TEST_F(NamedPoints, moveTheCounterOfTheirChartsOnly)
{
    importSeries("v,w\n1,2\n");
    QString const shown = chart("stage", {"a.v"});
    QString const other = chart("stage", {"a.w"});
    unsigned int const before = counter(shown);
    unsigned int const otherBefore = counter(other);
    std::vector<NamedPoint> points{namedPoint("p", "a.v", PointPlace_t::FIRST)};

    charts.setNamedPoints(points);
    unsigned int const with = counter(shown);
    EXPECT_NE(with, before);
    charts.setNamedPoints(points);
    EXPECT_EQ(counter(shown), with);
    points[0].symbol.setSize(3.0);
    charts.setNamedPoints(points);
    unsigned int const larger = counter(shown);
    EXPECT_NE(larger, with);
    charts.setNamedPoints({});
    EXPECT_NE(counter(shown), larger);
    EXPECT_EQ(counter(other), otherBefore);
}

TEST_F(NamedPoints, leaveLentDataAlone)
{
    importSeries("v\n1\n");
    QString const token = chart("stage", {"a.v"});
    Borrowed const before(tokens, token);
    charts.setNamedPoints({namedPoint("p", "a.v", PointPlace_t::FIRST)});

    EXPECT_EQ(names(token), "p (1, 1)");
    EXPECT_EQ(namesOf(before), "");
}

TEST_F(NamedPoints, followTheData)
{
    importSeries("v\n1\n2\n");
    charts.setNamedPoints({namedPoint("top", "a.v", PointPlace_t::MAXIMUM)});
    QString const token = chart("stage", {"a.v"});
    EXPECT_EQ(names(token), "top (2, 2)");
    importSeries("v\n4\n2\n");

    EXPECT_EQ(names(token), "top (1, 4)");
}
