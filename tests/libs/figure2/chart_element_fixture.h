// chart_element_fixture.h: what the tests of chart elements share.
#pragma once

#include "chart_fixture.h"

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Chart.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Label.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Zem::Fig2 {

constexpr double INF = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

using Points = std::vector<BaVec2d<double>>;

/// Lends charts, and counts what it has not got back.
class ChartTokens : public Support::TestTokens
{
public:
    /// An empty chart under the name.
    ChartData &add(QString const &name)
    {
        counters_[name] = 1;
        charts_[name] = std::make_unique<ChartData>();
        return *charts_[name];
    }
    void remove(QString const &name) { charts_.erase(name); }
    /// Lets the chart look as if it had changed.
    void touch(QString const &name) { ++counters_[name]; }
    int onLoan() const { return onLoan_; }
    int lent() const { return lent_; }

    ChartData const *getChart(QString const &token) const override
    {
        auto const found = charts_.find(token);
        if (found == charts_.end())
            return nullptr;
        ++onLoan_;
        ++lent_;
        return found->second.get();
    }
    void releaseChart(QString const &token) const override
    {
        EXPECT_TRUE(charts_.contains(token)) << token.toStdString();
        --onLoan_;
    }
    unsigned int getModifiedCounter(QString const &name) const override
    {
        auto const found = counters_.find(name);
        return found == counters_.end() ? TestTokens::getModifiedCounter(name) : found->second;
    }

private:
    std::map<QString, std::unique_ptr<ChartData>> charts_;
    std::map<QString, unsigned int> counters_;
    mutable int onLoan_ = 0;
    mutable int lent_ = 0;
};

/// A chart from which connectors may begin, as they do in files.
class TestChart : public Chart
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

/// Values of one id.
inline ChartDataset *addDataset(ChartData &data, QString const &id, Points const &points = {})
{
    auto *dataset = new ChartDataset(id);
    for (BaVec2d<double> const &point : points)
        dataset->addPoint(ChartPoint(static_cast<int>(dataset->getNumberOfPoints()), point, 0.0));
    data.addDataset(dataset);
    return dataset;
}

/// Ticks at 0, 1 and 2 of a range from 0 to 2, all labels of 6 x 5 mm, so that the room for them never changes.
inline Axis steadyAxis(Axis::Type type)
{
    Axis axis(type);
    axis.setTicks(2);
    axis.setDigits(1);
    return axis;
}

/// Values from 0 to 2 along both axes, the lengths of which need 9.1 mm beside the chart (6 + 0.1 + 3) and 8.1 below it
/// (5 + 0.1 + 3). Their margins are 3 (half a label) and 2.5 (half a line).
///
/// The chart fills 10,20 to 122.1,80.6. Its plot is 112.1 - 9.1 - 3 = 100 mm wide and 60.6 - 8.1 - 2.5 = 50 mm high,
/// and begins at 10 + 9.1, 20 + 2.5.
class ChartTest : public testing::Test
{
protected:
    ChartTest()
    {
        addDataset(data, "a", {{0, 0}, {2, 2}});
        chart.setToken("force");
        chart.setOrigin({66.05, 50.3});
        chart.setSize({112.1, 60.6});
        setAxes(Axis::HORIZONTAL_BOTTOM, Axis::VERTICAL_LEFT);
    }
    ~ChartTest() override { EXPECT_EQ(tokens.onLoan(), 0); }

    void setAxes(Axis::Type typeX, Axis::Type typeY, bool visibleX = true, bool visibleY = true)
    {
        Axis axisX = steadyAxis(typeX);
        axisX.setVisible(visibleX);
        chart.setAxisX(axisX);
        Axis axisY = steadyAxis(typeY);
        axisY.setVisible(visibleY);
        chart.setAxisY(axisY);
    }
    template <class Change>
    void changeAxisX(Change const &change)
    {
        Axis axis = chart.getAxisX();
        change(axis);
        chart.setAxisX(axis);
    }
    template <class Change>
    void changeAxisY(Change const &change)
    {
        Axis axis = chart.getAxisY();
        change(axis);
        chart.setAxisY(axis);
    }
    /// Shows these points alone.
    void show(Points const &points)
    {
        data.clear();
        addDataset(data, "a", points);
    }
    void update() { chart.computeDynamicData(stage, &tokens); }

    StageIdentifier const stage{1};
    Support::FakeCalculator calculator;
    ChartTokens tokens;
    ChartData &data = tokens.add("force");
    TestChart chart;
};

inline void expectAt(BaVec2d<double> const &vec, double x, double y)
{
    EXPECT_NEAR(vec.x, x, 1e-9);
    EXPECT_NEAR(vec.y, y, 1e-9);
}

} // namespace Zem::Fig2
