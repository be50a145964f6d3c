// Chart, the element that shows the data of one token.
#include "ZemFig2Chart.h"

#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"

namespace Zem::Fig2 {

Chart::Chart() : ChartBase(CHART)
{
}

Chart::Chart(GenericChart const &other, ChartData *data) : ChartBase(other)
{
    setType(CHART);
    if (!data)
        return;
    for (auto const &[token, parameters] : other.getData()) {
        if (data->datasetExists(token.getName()))
            data->getDataset(token.getName())->setParameters(parameters);
    }
}

void Chart::setToken(QString const &token)
{
    setTokenName(token);
    invalidate();
}

unsigned int Chart::getEstimatedObjectSize() const
{
    return ChartBase::getEstimatedObjectSize() + static_cast<unsigned int>(sizeof(Chart) - sizeof(ChartBase));
}

void Chart::save(IO::OutStream *stream, int a, int b) const
{
    ChartBase::save(stream, a, b);
    Tools::saveToken(stream, getToken());
}

void Chart::load(IO::InStream *stream, int a, int b)
{
    loadWrapped("Figure_Chart_err", "cannot load figure chart: %1", [&] {
        ChartBase::load(stream, a, b);
        setToken(Tools::loadToken(stream, nullptr));
    });
}

std::istream &Chart::loadFromStream(std::istream &stream)
{
    QString token = getToken();
    loadOldText(stream, &token);
    setToken(token);
    return stream;
}

QString Chart::getParameterString() const
{
    QString parameters = ChartBase::getParameterString();
    ParameterWriter(parameters).item(PARAM_TOKEN, getToken());
    return parameters;
}

void Chart::createFromParameterString(QString &parameters)
{
    ChartBase::createFromParameterString(parameters);
    QString token = getToken();
    ParameterReader(parameters).item(PARAM_TOKEN, token);
    setToken(token);
}

} // namespace Zem::Fig2
