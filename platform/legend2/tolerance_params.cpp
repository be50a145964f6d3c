#include <ZemToleranceParams.h>

#include "legend_forms.h"

#include <ZemTranslate.h>

namespace Zem::Legend2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr QLatin1StringView PREFIX{"tolerance_"};
constexpr double MAX_WARNING_SHARE = 0.5;

// Stored in parameter strings, by number of the pass type: never rename.
constexpr std::array<char const *, ToleranceParams::NUMBER_OF_PASS_TYPES> PASS_TYPE_WORDS{
    "fail_low", "warning_low", "pass", "warning_high", "fail_high"};

constexpr Color FAIL_COLOR(214, 39, 40);
constexpr Color WARNING_COLOR(255, 210, 0);
constexpr Color PASS_COLOR(44, 160, 44);

std::size_t indexOf(TolerancePassType_t type)
{
    if (type >= ToleranceParams::NUMBER_OF_PASS_TYPES) {
        throw ProgError("Zem::Legend2::ToleranceParams", "tolerance_params", __LINE__, "unknown pass type");
    }
    return type;
}

} // namespace

ToleranceParams::ToleranceParams()
    : title_(translate("Legend_Tolerance", "tolerance")),
      passTypes_{PassType{translate("Legend_Tolerance", "too low"), FAIL_COLOR}, PassType{QString(), WARNING_COLOR},
                 PassType{translate("Legend_Tolerance", "passed"), PASS_COLOR}, PassType{QString(), WARNING_COLOR},
                 PassType{translate("Legend_Tolerance", "too high"), FAIL_COLOR}}
{
}

QString const &ToleranceParams::getText(TolerancePassType_t type) const
{
    return passTypes_[indexOf(type)].text;
}

void ToleranceParams::setText(TolerancePassType_t type, QString const &text)
{
    passTypes_[indexOf(type)].text = text;
}

Color const &ToleranceParams::getColor(TolerancePassType_t type) const
{
    return passTypes_[indexOf(type)].color;
}

bool ToleranceParams::isColorValid(TolerancePassType_t type) const
{
    return passTypes_[indexOf(type)].colorValid;
}

void ToleranceParams::setColor(TolerancePassType_t type, Color const &color)
{
    passTypes_[indexOf(type)].color = color;
    passTypes_[indexOf(type)].colorValid = true;
}

void ToleranceParams::setColorInvalid(TolerancePassType_t type)
{
    passTypes_[indexOf(type)].colorValid = false;
}

void ToleranceParams::setWarningShare(double share)
{
    if (!(share >= 0.0 && share <= MAX_WARNING_SHARE)) {
        throw ProgError("Zem::Legend2::ToleranceParams::setWarningShare", "tolerance_params", __LINE__,
                        "the share is out of range");
    }
    warningShare_ = share;
}

std::vector<QString> ToleranceParams::getStringsForDrawing() const
{
    std::vector<QString> texts;
    for (TolerancePassType_t type : getPassTypesForDrawing()) {
        texts.push_back(passTypes_[type].text);
    }
    return texts;
}

std::vector<TolerancePassType_t> ToleranceParams::getPassTypesForDrawing() const
{
    std::vector<TolerancePassType_t> types;
    for (unsigned int i = 0; i < NUMBER_OF_PASS_TYPES; ++i) {
        if (!passTypes_[i].text.isEmpty()) {
            types.push_back(static_cast<TolerancePassType_t>(i));
        }
    }
    return types;
}

TolerancePassType_t ToleranceParams::getPassType(double value, double minimum, double maximum) const noexcept
{
    if (value < minimum) {
        return TOLERANCE_FAIL_LOW;
    }
    if (value > maximum) {
        return TOLERANCE_FAIL_HIGH;
    }
    // Halves, so that no extent is infinite.
    double const near = warningShare_ * (maximum * 0.5 - minimum * 0.5);
    if (value * 0.5 - minimum * 0.5 < near) {
        return TOLERANCE_WARNING_LOW;
    }
    return maximum * 0.5 - value * 0.5 < near ? TOLERANCE_WARNING_HIGH : TOLERANCE_PASS;
}

template <class Self, class Form>
void ToleranceParams::fields(Self &self, Form &form)
{
    form.text(QStringLiteral("title"), self.title_);
    form.number(QStringLiteral("warning_share"), self.warningShare_, 0.0, MAX_WARNING_SHARE);
    for (std::size_t i = 0; i < NUMBER_OF_PASS_TYPES; ++i) {
        QString const type = QString::fromLatin1(PASS_TYPE_WORDS[i]);
        auto &passType = self.passTypes_[i];
        form.text(type + QStringLiteral("_text"), passType.text);
        form.color(type + QStringLiteral("_color"), passType.color);
        form.flag(type + QStringLiteral("_color_valid"), passType.colorValid);
    }
}

void ToleranceParams::save(IO::OutStream *stream) const
{
    Forms::saveBlock(stream, BLOCK_VERSION, [this](auto &form) { fields(*this, form); });
}

void ToleranceParams::load(IO::InStream *stream)
{
    ToleranceParams read;
    Forms::loadBlock(stream, BLOCK_VERSION, [&read](auto &form) { fields(read, form); });
    *this = read;
}

QString ToleranceParams::getParameterString() const
{
    return Forms::parameterString(PREFIX, [this](auto &form) { fields(*this, form); });
}

void ToleranceParams::createFromParameterString(QString &parameters)
{
    ToleranceParams read = *this;
    QString rest = parameters;
    Forms::readParameters<Parse>(rest, PREFIX, [&read](auto &form) { fields(read, form); });
    *this = read;
    parameters = rest;
}

} // namespace Zem::Legend2
