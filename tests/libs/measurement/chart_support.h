// chart_support.h: charts over a project, and their data in short words.
#pragma once

#include "project_support.h"

#include <ZemFig2ChartData.h>
#include <ZemFig2ChartInterface.h>
#include <ZemFig2ChartMarker.h>
#include <ZemMeasChartInterface.h>

namespace Zem::Measurement {

class ProjectChartTest : public ProjectTest
{
protected:
    Project project{path(), OpenMode_t::CREATE};
    ProjectTokenInterface tokens{&project};

    void import(std::string_view text, ImportOptions const &options = {}) { project.importTable(parse(text), options); }
    void importSeries(std::string_view text, char const *group = "")
    {
        project.importSeries(parse(text), {QString::fromUtf8(group), {}});
    }

    static QString chart(char const *x, std::initializer_list<char const *> ys)
    {
        std::vector<QString> names;
        for (char const *const y : ys) {
            names.push_back(QString::fromUtf8(y));
        }
        return Fig2::ChartInterface::createToken(QString::fromUtf8(x), names);
    }

    unsigned int counter(QString const &token) const { return tokens.getModifiedCounter(token); }
};

/// A borrowed chart that is given back at the end of the scope.
class Borrowed
{
public:
    Borrowed(ProjectTokenInterface const &tokens, QString const &token)
        : tokens_(tokens), token_(token), data_(tokens.getChart(token))
    {
    }
    ~Borrowed()
    {
        if (data_) {
            tokens_.releaseChart(token_);
        }
    }
    Borrowed(Borrowed const &) = delete;
    Borrowed &operator=(Borrowed const &) = delete;

    Fig2::ChartData const *get() const { return data_; }
    Fig2::ChartData const *operator->() const { return data_; }

private:
    ProjectTokenInterface const &tokens_;
    QString token_;
    Fig2::ChartData const *data_;
};

/// "0:(1, 1.5) 1:gap".
inline std::string pointsOf(Borrowed const &chart, char const *id)
{
    std::string text;
    Fig2::ChartDataset const &dataset = *chart->getDataset(QString::fromUtf8(id));
    for (auto point = dataset.getPointBegin(0); point != dataset.getPointEnd(); ++point) {
        QString const place = point->isValid() ? QStringLiteral("(%1, %2)").arg(point->point.x).arg(point->point.y)
                                               : QStringLiteral("gap");
        text += text.empty() ? "" : " ";
        text += QStringLiteral("%1:%2").arg(point->id).arg(place).toStdString();
    }
    return text;
}

/// "line 2, points (2, 5)", empty without markers.
inline std::string markersOf(Borrowed const &chart)
{
    std::string text;
    for (auto it = chart->getChartMarkerBegin(); it != chart->getChartMarkerEnd(); ++it) {
        if (auto const *line = dynamic_cast<Fig2::LineChartMarker const *>(*it)) {
            text += QStringLiteral("line %1").arg(line->getX()).toStdString();
        } else if (auto const *points = dynamic_cast<Fig2::PointsChartMarker const *>(*it)) {
            text += ", points";
            for (auto const &point : points->getPoints()) {
                text += QStringLiteral(" (%1, %2)").arg(point.x).arg(point.y).toStdString();
            }
        }
    }
    return text;
}

} // namespace Zem::Measurement
