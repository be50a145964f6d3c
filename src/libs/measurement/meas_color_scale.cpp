#include <ZemMeasColorScale.h>

#include "meas_statistics.h"

#include <ZemColorMap.h>
#include <ZemMeasProject.h>
#include <ZemParse.h>

namespace Zem::Measurement {

namespace {

constexpr QLatin1StringView TOKEN_KEY{"token"};
constexpr QLatin1StringView SHOW_TOLERANCES_KEY{"show_tolerances"};

} // namespace

QString ColorScale::getParameterString() const
{
    return Parse::createString(TOKEN_KEY, token) + Parse::createBool(SHOW_TOLERANCES_KEY, showTolerances) +
           legend.getParameterString() + tolerance.getParameterString();
}

void ColorScale::createFromParameterString(QString &parameters)
{
    QString rest = parameters;
    ColorScale read = *this;
    if (Parse::parameterExists(rest, TOKEN_KEY))
        read.token = Parse::getString(rest, TOKEN_KEY);
    if (Parse::parameterExists(rest, SHOW_TOLERANCES_KEY))
        read.showTolerances = Parse::getBool(rest, SHOW_TOLERANCES_KEY);
    read.legend.createFromParameterString(rest);
    read.tolerance.createFromParameterString(rest);
    *this = read;
    parameters = rest;
}

void applyColorScale(ColorScale const &scale)
{
    Legend2::ColorMap::setGlobalLegend(scale.legend, Legend2::Data());
    Legend2::ColorMap::setTolerance(scale.showTolerances, scale.tolerance);
    Legend2::ColorMap::setHistogramData(Legend2::HistogramData());
}

void applyColorScale(Project const &project, ColorScale const &scale)
{
    if (scale.token.isEmpty())
        return applyColorScale(scale);
    UnitData unit;
    std::vector<double> const values = project.numbers(scale.token, &unit);
    ColorScale labelled = scale;
    if (!labelled.legend.getUnit() && unit.hasUnit())
        labelled.legend.setUnitData(unit);
    applyColorScale(labelled);
    if (values.empty())
        return;
    Legend2::Data const data = statisticsOf(values);
    Legend2::ColorMap::setGlobalLegend(labelled.legend, data);
    Legend2::ColorMap::setHistogramData(histogramOf(values, labelled.legend, data));
}

void applyColorScale(Project const &project)
{
    applyColorScale(project, project.colorScale().value_or(ColorScale()));
}

} // namespace Zem::Measurement
