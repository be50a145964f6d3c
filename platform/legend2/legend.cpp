#include <ZemLegend.h>

#include "legend_forms.h"

#include <ZemLegendHandler.h>
#include <ZemV541Parser.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Legend2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr QLatin1StringView PREFIX{"legend_"};
constexpr QLatin1StringView UNIT_PREFIX{"legend"};

// Stored in parameter strings: append only.
constexpr std::array<char const *, 2> LIMIT_MODE_WORDS{"dynamic", "fixed"};
constexpr std::array<char const *, 2> COLOR_MODE_WORDS{"linear", "logarithmic"};
constexpr std::array<char const *, 2> SCALE_MODE_WORDS{"continuous", "discrete"};
constexpr std::array<char const *, 5> COLOR_MAP_WORDS{"viridis", "plasma", "cividis", "cool_warm", "rainbow"};

constexpr int ANY_INT = std::numeric_limits<int>::max();

void require(bool condition, char const *function, unsigned int line, char const *text)
{
    if (!condition) {
        throw ProgError(function, "legend", line, text);
    }
}

} // namespace

Legend::Legend(Unit const *unit) : unitData_(unit)
{
}

QString Legend::getUnitName() const
{
    return unitName_.isEmpty() ? unitData_.getUnitName() : unitName_;
}

double Legend::getMinimum(Data const &data) const noexcept
{
    return minimumMode_ == LIMIT_FIXED ? fixedMinimum_ : data.getDynamicMinimum();
}

double Legend::getMaximum(Data const &data) const noexcept
{
    return maximumMode_ == LIMIT_FIXED ? fixedMaximum_ : data.getDynamicMaximum();
}

void Legend::setFixedMinimum(double minimum)
{
    require(std::isfinite(minimum), "Zem::Legend2::Legend::setFixedMinimum", __LINE__, "the limit is not finite");
    fixedMinimum_ = minimum;
    minimumMode_ = LIMIT_FIXED;
}

void Legend::setFixedMaximum(double maximum)
{
    require(std::isfinite(maximum), "Zem::Legend2::Legend::setFixedMaximum", __LINE__, "the limit is not finite");
    fixedMaximum_ = maximum;
    maximumMode_ = LIMIT_FIXED;
}

void Legend::setDigits(int digits)
{
    require(digits <= MAX_DIGITS, "Zem::Legend2::Legend::setDigits", __LINE__, "too many digits");
    digits_ = digits;
}

void Legend::setColorMode(ColorMode_t mode)
{
    require(mode < COLOR_MODE_WORDS.size(), "Zem::Legend2::Legend::setColorMode", __LINE__, "unknown mode");
    colorMode_ = mode;
}

void Legend::setScaleMode(ScaleMode_t mode)
{
    require(mode < SCALE_MODE_WORDS.size(), "Zem::Legend2::Legend::setScaleMode", __LINE__, "unknown mode");
    scaleMode_ = mode;
}

void Legend::setNumberOfClasses(unsigned int count)
{
    require(count >= 1 && count <= MAX_CLASSES, "Zem::Legend2::Legend::setNumberOfClasses", __LINE__,
            "the number of classes is out of range");
    numberOfClasses_ = count;
}

void Legend::setColorMapName(ColorMapName_t name)
{
    require(name < COLOR_MAP_WORDS.size(), "Zem::Legend2::Legend::setColorMapName", __LINE__, "unknown colour map");
    colorMapName_ = name;
}

std::span<char const *const> Legend::getColorMapNames() noexcept
{
    return COLOR_MAP_WORDS;
}

void Legend::getDiscreteTicks(Data const &data, bool inActiveUnit, std::vector<double> *values,
                              std::vector<int> *indices) const
{
    values->clear();
    indices->clear();
    ScaleRange const range(getMinimum(data), getMaximum(data), colorMode_);
    if (!range.isValid()) {
        return;
    }
    Unit const *const unit = inActiveUnit ? getUnit() : nullptr;
    for (unsigned int i = 0; i <= numberOfClasses_; ++i) {
        double const value = range.valueAt(double(i) / numberOfClasses_);
        values->push_back(unit ? unit->fromBase(value, getActiveUnit()) : value);
        indices->push_back(static_cast<int>(std::min(i, numberOfClasses_ - 1)));
    }
    if (!std::isfinite(values->front()) || !std::isfinite(values->back())) {
        values->clear(); // a limit has no number in the active unit
        indices->clear();
    }
}

void Legend::setMinColor(Color const &color) noexcept
{
    minColor_ = color;
    minColorValid_ = true;
}

void Legend::setMaxColor(Color const &color) noexcept
{
    maxColor_ = color;
    maxColorValid_ = true;
}

template <class Self, class Form>
void Legend::fields(Self &self, Form &form)
{
    form.text(QStringLiteral("unit_name"), self.unitName_);
    form.word(QStringLiteral("minimum_mode"), self.minimumMode_, LIMIT_MODE_WORDS);
    form.number(QStringLiteral("minimum"), self.fixedMinimum_, -Forms::ANY_DOUBLE, Forms::ANY_DOUBLE);
    form.word(QStringLiteral("maximum_mode"), self.maximumMode_, LIMIT_MODE_WORDS);
    form.number(QStringLiteral("maximum"), self.fixedMaximum_, -Forms::ANY_DOUBLE, Forms::ANY_DOUBLE);
    form.word(QStringLiteral("color_mode"), self.colorMode_, COLOR_MODE_WORDS);
    form.word(QStringLiteral("scale_mode"), self.scaleMode_, SCALE_MODE_WORDS);
    form.count(QStringLiteral("classes"), self.numberOfClasses_, 1u, MAX_CLASSES);
    form.word(QStringLiteral("color_map"), self.colorMapName_, COLOR_MAP_WORDS);
    form.integer(QStringLiteral("digits"), self.digits_, -ANY_INT - 1, MAX_DIGITS);
    form.integer(QStringLiteral("max_ticks"), self.maxTicks_, -ANY_INT - 1, ANY_INT);
    form.flag(QStringLiteral("use_extrema_colors"), self.useExtremaColors_);
    form.color(QStringLiteral("min_color"), self.minColor_);
    form.flag(QStringLiteral("min_color_valid"), self.minColorValid_);
    form.color(QStringLiteral("max_color"), self.maxColor_);
    form.flag(QStringLiteral("max_color_valid"), self.maxColorValid_);
    form.flag(QStringLiteral("v602_compatibility"), self.v602CompatibilityMode_);
}

void Legend::save(IO::OutStream *stream) const
{
    Forms::saveBlock(stream, BLOCK_VERSION, [this](auto &form) { fields(*this, form); });
    unitData_.save(stream);
}

void Legend::load(IO::InStream *stream)
{
    Legend read;
    Forms::loadBlock(stream, BLOCK_VERSION, [&read](auto &form) { fields(read, form); });
    read.unitData_.load(stream);
    *this = read;
}

QString Legend::getParameterString() const
{
    return unitData_.getParameterString(UNIT_PREFIX) +
           Forms::parameterString(PREFIX, [this](auto &form) { fields(*this, form); });
}

namespace {

void readUnit(UnitData &unitData, QString &parameters, Parse const *)
{
    unitData.createFromParameterString(parameters, UNIT_PREFIX);
}

/// The unit knows today's form alone: its entries are taken over into it.
void readUnit(UnitData &unitData, QString &parameters, V541Parser const *)
{
    QString entries;
    for (QLatin1StringView name : {QLatin1StringView("quantity"), QLatin1StringView("unit")}) {
        QString const key = PREFIX + name;
        if (V541Parser::parameterExists(parameters, key)) {
            entries += Parse::createString(key, V541Parser::getString(parameters, key));
        }
    }
    unitData.createFromParameterString(entries, UNIT_PREFIX);
}

} // namespace

template <class Parser>
void Legend::readParameters(QString &parameters)
{
    Legend read = *this;
    QString rest = parameters;
    readUnit(read.unitData_, rest, static_cast<Parser const *>(nullptr));
    Forms::readParameters<Parser>(rest, PREFIX, [&read](auto &form) { fields(read, form); });
    *this = read;
    parameters = rest;
}

void Legend::createFromParameterString(QString &parameters)
{
    readParameters<Parse>(parameters);
}

void Legend::createFromV541ParameterString(QString &parameters)
{
    readParameters<V541Parser>(parameters);
}

} // namespace Zem::Legend2
