#include "meas_chart_store.h"

namespace Zem::Measurement {

using namespace Fig2;

ProjectContents const &ChartStore::contents()
{
    contents_->refresh();
    return *contents_;
}

ChartData const *ChartStore::lend(QString const &token)
{
    Chart *const chart = refreshed(token);
    if (!chart) {
        return nullptr;
    }
    if (!chart->data) {
        std::optional<ChartPlan> const plan = ChartPlan::make(*contents_, token, points_);
        std::shared_ptr<ChartData> data = plan->build();
        setMark(plan->markAt(stage_, *data), data.get());
        chart->data = std::move(data);
    }
    ++chart->borrows;
    return chart->data.get();
}

void ChartStore::takeBack(QString const &token)
{
    auto const found = charts_.find(token);
    if (found == charts_.end() || found->second.borrows == 0) {
        throw ProgError("Zem::Measurement::ProjectTokenInterface::releaseChart", "meas_chart_store", __LINE__,
                        "Chart token not locked");
    }
    --found->second.borrows;
    dropUnused(&found->second);
}

unsigned int ChartStore::modifiedCounter(QString const &token)
{
    Chart const *const chart = refreshed(token);
    return chart ? chart->counter : 0;
}

void ChartStore::keep(QString const &token)
{
    charts_[token].kept = true;
}

void ChartStore::giveUp(QString const &token)
{
    Chart &chart = charts_[token];
    chart.kept = false;
    dropUnused(&chart);
}

void ChartStore::setNamedPoints(std::vector<NamedPoint> const &points)
{
    if (points != points_) {
        points_ = points;
        ++pointsRevision_;
    }
}

bool ChartStore::isCurrent(Chart const &chart) const
{
    return chart.revision == contents_->revision() && chart.stage == stage_ && chart.pointsRevision == pointsRevision_;
}

ChartStore::Chart *ChartStore::refreshed(QString const &token)
{
    contents_->refresh();
    auto found = charts_.find(token);
    if (found == charts_.end() || !isCurrent(found->second)) {
        std::optional<ChartPlan> const plan = ChartPlan::make(*contents_, token, points_);
        if (!plan && found == charts_.end()) {
            return nullptr;
        }
        found = charts_.try_emplace(token).first;
        if (plan) {
            follow(*plan, &found->second);
        } else {
            retire(&found->second);
            found->second.signature = QString();
        }
        found->second.revision = contents_->revision();
        found->second.stage = stage_;
        found->second.pointsRevision = pointsRevision_;
    }
    return found->second.signature.isNull() ? nullptr : &found->second;
}

void ChartStore::follow(ChartPlan const &plan, Chart *chart)
{
    QString const signature = plan.signature();
    if (signature != chart->signature) {
        retire(chart);
        chart->signature = signature;
        chart->counter = ++lastCounter_;
    } else if (chart->stage != stage_ && plan.hasStages()) {
        moveMark(plan, chart);
    }
}

/// The counter moves only if the mark does, and the values tell.
void ChartStore::moveMark(ChartPlan const &plan, Chart *chart)
{
    std::shared_ptr<ChartData> data = chart->data ? chart->data : std::shared_ptr<ChartData>(plan.build());
    ChartMark const mark = plan.markAt(stage_, *data);
    if (mark == plan.markAt(chart->stage, *data)) {
        return;
    }
    chart->counter = ++lastCounter_;
    if (chart->borrows > 0 && chart->data) { // who looks at the data must not see it move
        data = std::make_shared<ChartData>(*data);
        retire(chart);
    }
    setMark(mark, data.get());
    if (chart->kept || chart->borrows > 0) {
        chart->data = std::move(data);
    }
}

void ChartStore::retire(Chart *chart)
{
    if (chart->data && chart->borrows > 0) {
        chart->retired.push_back(chart->data);
    }
    chart->data.reset();
}

void ChartStore::dropUnused(Chart *chart)
{
    if (chart->borrows > 0) {
        return;
    }
    chart->retired.clear();
    if (!chart->kept) {
        chart->data.reset();
    }
}

} // namespace Zem::Measurement
