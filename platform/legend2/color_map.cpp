#include <ZemColorMap.h>

#include <QtCore/QMutex>

namespace Zem::Legend2 {

namespace {

struct GlobalScale
{
    QMutex mutex;
    Legend params;
    Data data;
    bool toleranceMode = false;
    ToleranceParams tolerance;
    HistogramData histogram;
};

GlobalScale &globalScale()
{
    static GlobalScale scale;
    return scale;
}

/// Runs `action` on the scale while no other thread does.
template <class Action>
auto withScale(Action action)
{
    GlobalScale &scale = globalScale();
    QMutexLocker const lock(&scale.mutex);
    return action(scale);
}

} // namespace

Legend ColorMap::getGlobalLegendParams()
{
    return withScale([](GlobalScale &scale) { return scale.params; });
}

Data ColorMap::getGlobalLegendData()
{
    return withScale([](GlobalScale &scale) { return scale.data; });
}

ToleranceParams ColorMap::getToleranceParams()
{
    return withScale([](GlobalScale &scale) { return scale.tolerance; });
}

bool ColorMap::getToleranceMode()
{
    return withScale([](GlobalScale &scale) { return scale.toleranceMode; });
}

HistogramData ColorMap::getHistogramData()
{
    return withScale([](GlobalScale &scale) { return scale.histogram; });
}

void ColorMap::setGlobalLegend(Legend const &params, Data const &data)
{
    withScale([&](GlobalScale &scale) {
        scale.params = params;
        scale.data = data;
    });
}

void ColorMap::setTolerance(bool mode, ToleranceParams const &params)
{
    withScale([&](GlobalScale &scale) {
        scale.toleranceMode = mode;
        scale.tolerance = params;
    });
}

void ColorMap::setHistogramData(HistogramData const &histogram)
{
    withScale([&](GlobalScale &scale) { scale.histogram = histogram; });
}

} // namespace Zem::Legend2
