// legend_fixture.h: what the tests of colour legends share.
#pragma once

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Rectangle.h>

#include <gtest/gtest.h>

#include <map>

namespace Zem::Fig2 {

/// Stands in for a chart or an image with a colour scale.
class ScalePartner : public Rectangle
{
public:
    Element *copy() const override { return new ScalePartner(*this); }
    bool hasLegendData() const override { return true; }
    bool isDataValid(StageIdentifier const &, FigureTokenInterface const *) const override { return dataValid; }
    bool getLegendData(FigureTokenInterface const *, Legend2::Legend *outLegend, Legend2::Data *outData, bool *outShow,
                       Legend2::ToleranceParams *outTolerance, Legend2::HistogramData *outHistogram,
                       bool *canDrawColors) const override
    {
        if (canDrawColors)
            *canDrawColors = false;
        if (!delivers)
            return false;
        *outLegend = legend;
        *outData = data;
        *outShow = showTolerances;
        *outTolerance = tolerance;
        if (outHistogram)
            *outHistogram = histogram;
        return true;
    }

    bool delivers = true;
    bool dataValid = true;
    Legend2::Legend legend{uLength};
    Legend2::Data data;
    bool showTolerances = false;
    Legend2::ToleranceParams tolerance;
    Legend2::HistogramData histogram;
};

/// Every character measures 2 x 5 mm. The legend stands upright at 30,10 to 70,130 without border and shows 0 to 10 mm,
/// labelled 0.0, 5.0 and 10.0.
class LegendTest : public testing::Test
{
protected:
    LegendTest()
    {
        legend.setOrigin({50, 70});
        legend.setSize({40, 120});
        legend.setLegendDataMode(Legend::LEGEND_DATA_MODE_MANUAL);
        setLocal(scale());
    }

    static Legend2::Legend scale()
    {
        Legend2::Legend scale(uLength);
        scale.setFixedMinimum(0.0);
        scale.setFixedMaximum(10.0);
        scale.setDigits(1);
        scale.setMaxTicks(2);
        return scale;
    }

    static Legend2::HistogramData histogramOf(std::map<double, unsigned int> const &counts)
    {
        Legend2::HistogramData histogram;
        EXPECT_TRUE(histogram.addHistogram(counts));
        return histogram;
    }

    /// Fails to the right, passes, no warnings: two texts, "bad" below and "good" above it.
    static Legend2::ToleranceParams tolerance()
    {
        Legend2::ToleranceParams params;
        params.setTitle(QStringLiteral("Test"));
        for (unsigned int type = 0; type < Legend2::ToleranceParams::NUMBER_OF_PASS_TYPES; ++type)
            params.setText(static_cast<Legend2::TolerancePassType_t>(type), QString());
        params.setText(Legend2::TOLERANCE_FAIL_LOW, QStringLiteral("bad"));
        params.setText(Legend2::TOLERANCE_PASS, QStringLiteral("good"));
        params.setColor(Legend2::TOLERANCE_FAIL_LOW, Color(200, 0, 0));
        params.setColor(Legend2::TOLERANCE_PASS, Color(0, 200, 0));
        return params;
    }

    void setLocal(Legend2::Legend const &scale) { legend.setLocalLegendData(scale, Legend2::Data()); }
    bool update() { return legend.update(StageIdentifier(), nullptr, nullptr); }

    std::string drawn()
    {
        update();
        Support::RecordingPainter painter;
        EXPECT_TRUE(legend.draw(nullptr, &painter, 0));
        return painter.transcript();
    }

    Support::FakeCalculator calculator;
    Legend legend;
};

inline void expectRect(Rect const &rect, double x, double y, double width, double height)
{
    EXPECT_NEAR(rect.x, x, 1e-12);
    EXPECT_NEAR(rect.y, y, 1e-12);
    EXPECT_NEAR(rect.width, width, 1e-12);
    EXPECT_NEAR(rect.height, height, 1e-12);
}

inline void expectVec(BaVec2d<double> const &vec, double x, double y)
{
    EXPECT_NEAR(vec.x, x, 1e-12);
    EXPECT_NEAR(vec.y, y, 1e-12);
}

} // namespace Zem::Fig2
