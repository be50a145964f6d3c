#include <ZemLegendData.h>

#include "legend_forms.h"

#include <ZemV541Parser.h>

#include <type_traits>

namespace Zem::Legend2 {

static_assert(std::is_trivially_copyable_v<Data>, "the data of a scale are copied as bytes");

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr QLatin1StringView PREFIX{"legend_data_"};

} // namespace

template <class Self, class Form>
void Data::fields(Self &self, Form &form)
{
    form.measured(QStringLiteral("minimum"), self.dynamicMinimum_);
    form.measured(QStringLiteral("maximum"), self.dynamicMaximum_);
    form.measured(QStringLiteral("average"), self.average_);
    form.measured(QStringLiteral("sigma"), self.sigma_);
}

void Data::save(IO::OutStream *stream) const
{
    Forms::saveBlock(stream, BLOCK_VERSION, [this](auto &form) { fields(*this, form); });
}

void Data::load(IO::InStream *stream)
{
    Data read;
    Forms::loadBlock(stream, BLOCK_VERSION, [&read](auto &form) { fields(read, form); });
    *this = read;
}

QString Data::getParameterString() const
{
    return Forms::parameterString(PREFIX, [this](auto &form) { fields(*this, form); });
}

template <class Parser>
void Data::readParameters(QString &parameters)
{
    Data read = *this;
    QString rest = parameters;
    Forms::readParameters<Parser>(rest, PREFIX, [&read](auto &form) { fields(read, form); });
    *this = read;
    parameters = rest;
}

void Data::createFromParameterString(QString &parameters)
{
    readParameters<Parse>(parameters);
}

void Data::createFromV541ParameterString(QString &parameters)
{
    readParameters<V541Parser>(parameters);
}

} // namespace Zem::Legend2
