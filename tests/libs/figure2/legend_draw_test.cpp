// What a colour legend paints. Its bar stands at 31.1,17.1 and is 111.8 mm high.
#include "legend_fixture.h"

namespace Zem::Fig2 {
namespace {

using Support::RecordingPainter;

std::string const BACKGROUND = "polygon 30,10 70,10 70,130 30,130 no pen no fill\n";
std::string const TITLE = "text 34.6,11.1 '[mm]' font Liberation Sans 12 0 #000000ff\n";
std::string const OUTLINE = "polygon 31.1,17.1 36.1,17.1 36.1,128.9 31.1,128.9 pen 0.1 full #000000ff sharp no fill\n";
std::string const TICKS = "line 36.1,128.9 37.1,128.9 pen 0.1 full #000000ff sharp\n"
                          "line 36.1,73 37.1,73 pen 0.1 full #000000ff sharp\n"
                          "line 36.1,17.1 37.1,17.1 pen 0.1 full #000000ff sharp\n";
std::string const LABELS = "text 40.1,126.4 '0.0' font Liberation Sans 12 0 #000000ff\n"
                           "text 40.1,70.5 '5.0' font Liberation Sans 12 0 #000000ff\n"
                           "text 38.1,14.6 '10.0' font Liberation Sans 12 0 #000000ff\n";

TEST_F(LegendTest, paintsItsStripFromTheMaximumDown)
{
    std::string const transcript = drawn();

    // The first and the last colour of viridis.
    EXPECT_EQ(transcript, BACKGROUND + TITLE +
                              "colors 31.1,17.1 size 5,111.8 vertical 256 from #fde725ff to #440154ff\n" + OUTLINE +
                              TICKS + LABELS);
}

TEST_F(LegendTest, paintsItsPartsInOrder)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    setLocal(extrema);
    legend.setShowHistogram(true);
    legend.setBorder(LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
    update();
    RecordingPainter painter;

    legend.draw(nullptr, &painter, 0);

    std::string order;
    for (std::string const &call : painter.calls())
        order += call.substr(0, call.find(' ') + 1);
    EXPECT_EQ(order, "polygon "                         // background
                     "text "                            // title
                     "polygon polygon polygon polygon " // extrema and their outlines
                     "colors polygon "                  // bar and its outline
                     "line line line "                  // ticks
                     "text text text "                  // labels
                     "polygon line line "               // histogram
                     "polygon ");                       // border
}

TEST_F(LegendTest, paintsAllInItsFirstStep)
{
    update();
    RecordingPainter painter;

    EXPECT_TRUE(legend.draw(nullptr, &painter, 1));

    EXPECT_EQ(painter.transcript(), "");
}

TEST_F(LegendTest, paintsALyingStripFromTheMinimumOn)
{
    legend.setSize({120, 40});
    legend.setOrigin({60, 20});

    std::string const transcript = drawn();

    EXPECT_NE(transcript.find("colors 1.1,7.1 size 117.8,5 horizontal 256 from #440154ff to #fde725ff\n"),
              std::string::npos);
    EXPECT_NE(transcript.find("line 60,12.1 60,13.1 pen"), std::string::npos);
    EXPECT_NE(transcript.find("text 57,14.1 '5.0'"), std::string::npos);
}

TEST_F(LegendTest, paintsItselfTurned)
{
    legend.setAngle(0.5);

    update();
    RecordingPainter painter;
    legend.draw(nullptr, &painter, 0);

    for (std::string const &call : painter.calls())
        EXPECT_NE(call.find(" turned 0.5 about 50,70"), std::string::npos) << call;
}

TEST_F(LegendTest, paintsTheBoxesOfTheExtrema)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    extrema.setMinColor(Color(1, 2, 3));
    extrema.setMaxColorInvalid();
    setLocal(extrema);

    std::string const transcript = drawn();

    // The colour of the maximum is not valid: only its outline is there.
    EXPECT_NE(transcript.find(TITLE +
                              "polygon 31.1,17.1 36.1,17.1 36.1,22.1 31.1,22.1 pen 0.1 full #000000ff sharp no fill\n"
                              "polygon 31.1,123.9 36.1,123.9 36.1,128.9 31.1,128.9 no pen fill #010203ff\n"
                              "polygon 31.1,123.9 36.1,123.9 36.1,128.9 31.1,128.9 pen 0.1 full #000000ff sharp no "
                              "fill\ncolors"),
              std::string::npos)
        << transcript;
}

TEST_F(LegendTest, paintsNoColourForAMinimumWithoutOne)
{
    Legend2::Legend extrema = scale();
    extrema.setUseExtremaColors(true);
    extrema.setMinColorInvalid();
    extrema.setMaxColor(Color(4, 5, 6));
    setLocal(extrema);

    std::string const transcript = drawn();

    EXPECT_NE(transcript.find("polygon 31.1,17.1 36.1,17.1 36.1,22.1 31.1,22.1 no pen fill #040506ff\n"),
              std::string::npos);
    EXPECT_EQ(transcript.find("31.1,128.9 no pen fill"), std::string::npos);
}

TEST_F(LegendTest, paintsBlocksOfClasses)
{
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(2);
    setLocal(classes);

    std::string const transcript = drawn();

    EXPECT_NE(transcript.find("polygon 31.1,73 36.1,73 36.1,128.9 31.1,128.9 no pen fill #440154ff\n"),
              std::string::npos);
    EXPECT_NE(transcript.find("polygon 31.1,17.1 36.1,17.1 36.1,73 31.1,73 no pen fill #fde725ff\n"),
              std::string::npos);
    // One outline about both, and ticks.
    EXPECT_NE(transcript.find(OUTLINE + TICKS), std::string::npos);
}

TEST_F(LegendTest, paintsAnOutlineAboutEachBlockOfOneSize)
{
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(2);
    setLocal(classes);
    legend.setEqualSizedBlocks(true);

    std::string const transcript = drawn();

    EXPECT_NE(transcript.find("polygon 31.1,73 36.1,73 36.1,128.9 31.1,128.9 pen 0.1 full"), std::string::npos);
    EXPECT_NE(transcript.find("polygon 31.1,17.1 36.1,17.1 36.1,73 31.1,73 pen 0.1 full"), std::string::npos);
    EXPECT_EQ(transcript.find(OUTLINE), std::string::npos);
    EXPECT_EQ(transcript.find("\nline"), std::string::npos);
}

TEST_F(LegendTest, paintsABoxForEachToleranceText)
{
    Legend2::ToleranceParams params = tolerance();
    params.setColorInvalid(Legend2::TOLERANCE_PASS);
    legend.setLocalToleranceParams(true, params);

    EXPECT_EQ(drawn(), BACKGROUND +
                           // Columns of 5 + 1 (spacing) + 8 = 14 mm, a title of 12 mm.
                           "text 32.1,11.1 '[Test]' font Liberation Sans 12 0 #000000ff\n"
                           "polygon 31.1,72.5 36.1,72.5 36.1,128.9 31.1,128.9 no pen fill #c80000ff\n"
                           "polygon 31.1,72.5 36.1,72.5 36.1,128.9 31.1,128.9 pen 0.1 full #000000ff sharp no fill\n"
                           "polygon 31.1,16.1 36.1,16.1 36.1,72.5 31.1,72.5 pen 0.1 full #000000ff sharp no fill\n"
                           "text 39.1,98.2 'bad' font Liberation Sans 12 0 #000000ff\n"
                           "text 37.1,41.8 'good' font Liberation Sans 12 0 #000000ff\n");
}

TEST_F(LegendTest, paintsNoOutlineWithoutAStyle)
{
    legend.setTickBoxStyle(LineStyle(0.1, LineStyle::STYLE_NONE, Color(0, 0, 0)));

    EXPECT_EQ(drawn(), BACKGROUND + TITLE + "colors 31.1,17.1 size 5,111.8 vertical 256 from #fde725ff to #440154ff\n" +
                           TICKS + LABELS);
}

TEST_F(LegendTest, paintsCountsOfTheIntervalsFromTheBar)
{
    legend.setShowHistogram(true);
    // 2 + 3 below 5, 4 from 5 on; the last value belongs to no interval, nor does what lies outside.
    legend.setLocalHistogramData(histogramOf({{-1, 9}, {0, 2}, {2, 3}, {5, 4}, {10, 10}, {11, 1}}));

    std::string const transcript = drawn();

    // A column of 10.1 mm; the greatest count, 10, would fill its 10 mm.
    EXPECT_NE(transcript.find("polygon 31.1,17.1 41.1,17.1 41.1,128.9 31.1,128.9 pen 0.1 full #000000ff sharp no fill\n"
                              "line 31.1,128.9 41.1,128.9 pen 0.1 full #000000ff sharp\n"
                              "line 31.1,73 41.1,73 pen 0.1 full #000000ff sharp\n"
                              "line 41.1,100.95 36.1,100.95 pen 55.9 full #000000ff sharp\n"
                              "line 41.1,45.05 37.1,45.05 pen 55.9 full #000000ff sharp\n"),
              std::string::npos)
        << transcript;
    EXPECT_NE(transcript.find("colors 41.2,17.1 size 5,111.8"), std::string::npos);
}

TEST_F(LegendTest, paintsFullBarsAsWideAsTheirIntervals)
{
    Legend2::Legend classes = scale();
    classes.setScaleMode(Legend2::SCALE_MODE_DISCRETE);
    classes.setNumberOfClasses(2);
    classes.setColorMode(Legend2::COLOR_MODE_LOGARITHMIC);
    classes.setFixedMinimum(1.0);
    classes.setFixedMaximum(100.0);
    setLocal(classes);
    legend.setShowHistogram(true);
    legend.setLocalHistogramData(histogramOf({{2, 1}, {20, 1}}));
    legend.setTickStyle(LineStyle(0.1, LineStyle::STYLE_DASHED, Color(0, 0, 0)));

    std::string const transcript = drawn();

    // 9 and 90 of 99 parts of 111.8.
    EXPECT_NE(transcript.find(" pen 10.1636 full "), std::string::npos) << transcript;
    EXPECT_NE(transcript.find(" pen 101.636 full "), std::string::npos) << transcript;
}

TEST_F(LegendTest, paintsTheHistogramOfALyingLegendAboveTheBar)
{
    legend.setSize({120, 40});
    legend.setOrigin({60, 20});
    legend.setShowHistogram(true);
    legend.setLocalHistogramData(histogramOf({{0, 2}, {5, 4}}));

    std::string const transcript = drawn();

    EXPECT_NE(transcript.find("polygon 1.1,7.1 118.9,7.1 118.9,17.1 1.1,17.1 pen 0.1 full #000000ff sharp no fill\n"
                              "line 1.1,7.1 1.1,17.1 pen 0.1 full #000000ff sharp\n"
                              "line 60,7.1 60,17.1 pen 0.1 full #000000ff sharp\n"
                              "line 30.55,17.1 30.55,12.1 pen 58.9 full #000000ff sharp\n"
                              "line 89.45,17.1 89.45,7.1 pen 58.9 full #000000ff sharp\n"),
              std::string::npos)
        << transcript;
    EXPECT_NE(transcript.find("colors 1.1,17.2 size 117.8,5"), std::string::npos);
}

TEST_F(LegendTest, paintsNoHistogramInToleranceDisplay)
{
    legend.setShowHistogram(true);
    legend.setLocalHistogramData(histogramOf({{0, 2}}));
    legend.setLocalToleranceParams(true, tolerance());

    EXPECT_EQ(drawn().find("\nline"), std::string::npos);
}

TEST_F(LegendTest, withoutAScalePaintsTitleAndOutlines)
{
    legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_ELEMENT);
    legend.setShowHistogram(true);

    std::string const transcript = drawn();

    // Columns of 10.1 + 5 + 1 (spacing) = 16.1 mm, a title of 18 mm.
    EXPECT_EQ(transcript, BACKGROUND +
                              "text 31.1,11.1 '[invalid]' font Liberation Sans 12 0 #000000ff\n"
                              "polygon 42.15,17.1 47.15,17.1 47.15,128.9 42.15,128.9 pen 0.1 full #000000ff sharp no "
                              "fill\n"
                              "polygon 32.05,17.1 42.05,17.1 42.05,128.9 32.05,128.9 pen 0.1 full #000000ff sharp no "
                              "fill\n");
}

} // namespace
} // namespace Zem::Fig2
