// The persistent forms of Axis.
#include "ZemFig2Axis.h"

#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

namespace Zem::Fig2 {

namespace {

// 2: unit; 3: font colour; 4: optimum ranges; 5: range modes; 6: a number that 7 lacks again; 8: digits mode
constexpr unsigned int BLOCK_VERSION = 8;
constexpr unsigned int FIRST_UNIT_VERSION = 2;
constexpr unsigned int FIRST_OPTIMUM_VERSION = 4;
constexpr unsigned int FIRST_RANGE_MODE_VERSION = 5;
constexpr unsigned int DROPPED_NUMBER_VERSION = 6;
constexpr unsigned int FIRST_DIGITS_MODE_VERSION = 8;

constexpr unsigned int TEXT_VERSION = 2; // 2: digits mode

constexpr std::array<char const *, 4> TYPE_WORDS{"horizontal_top", "horizontal_bottom", "vertical_left",
                                                 "vertical_right"};
constexpr std::array<char const *, 3> RANGE_MODE_WORDS{"manual", "auto", "optimum"};
constexpr std::array<char const *, 3> DIGITS_MODE_WORDS{"manual", "auto", "3d"};

// Read, never written.
constexpr QLatin1StringView OLD_AUTO_MIN{"auto_min"};
constexpr QLatin1StringView OLD_AUTO_MAX{"auto_max"};
constexpr QLatin1StringView OLD_OPTIMUM_MIN{"optimum_min"};
constexpr QLatin1StringView OLD_OPTIMUM_MAX{"optimum_max"};

Axis::Type typeFromName(QString const &name)
{
    return requireValueOf<Axis::Type>(TYPE_WORDS, name, "Figure_Axis_err", "unknown axis type");
}

/// The mode of an axis that only knew a number of decimals.
Axis::DigitsMode olderDigitsMode(int digits)
{
    return digits < 0 ? Axis::DIGITS_MODE_AUTO : Axis::DIGITS_MODE_MANUAL;
}

Axis::RangeMode olderRangeMode(bool automatic, bool optimum)
{
    if (!automatic)
        return Axis::RANGE_MODE_MANUAL;
    return optimum ? Axis::RANGE_MODE_OPTIMUM : Axis::RANGE_MODE_AUTO;
}

void readOlderRangeModes(BlockReader &reader, Axis::RangeMode *minimum, Axis::RangeMode *maximum)
{
    bool autoMin = false;
    bool autoMax = false;
    bool optimumMin = false;
    bool optimumMax = false;
    reader.field(autoMin);
    reader.field(autoMax);
    reader.field(optimumMin, Since{FIRST_OPTIMUM_VERSION}, false);
    reader.field(optimumMax, Since{FIRST_OPTIMUM_VERSION}, false);
    *minimum = olderRangeMode(autoMin, optimumMin);
    *maximum = olderRangeMode(autoMax, optimumMax);
}

} // namespace

QString Axis::getTypeName(Type type)
{
    return wordOf(TYPE_WORDS, type);
}

QString Axis::getRangeModeName(RangeMode mode)
{
    return wordOf(RANGE_MODE_WORDS, mode);
}

QString Axis::getDigitsModeName(DigitsMode mode)
{
    return wordOf(DIGITS_MODE_WORDS, mode);
}

Axis::RangeMode Axis::getRangeModeFromName(QString const &name)
{
    return requireValueOf<RangeMode>(RANGE_MODE_WORDS, name, "Figure_err", "unknown axis range mode name");
}

Axis::DigitsMode Axis::getDigitsModeFromName(QString const &name)
{
    return requireValueOf<DigitsMode>(DIGITS_MODE_WORDS, name, "Figure_err", "unknown axis digits mode name");
}

template <class Archive, class Self>
void Axis::rangeModeFields(Archive &archive, Self &self)
{
    if constexpr (Archive::isReader) {
        if (archive.version() < FIRST_RANGE_MODE_VERSION) {
            readOlderRangeModes(archive, &self.rangeModeMin_, &self.rangeModeMax_);
            return;
        }
    }
    archive.list(self.rangeModeMin_, RANGE_MODE_WORDS.size());
    archive.list(self.rangeModeMax_, RANGE_MODE_WORDS.size());
}

template <class Archive, class Self>
void Axis::digitsFields(Archive &archive, Self &self)
{
    archive.field(self.digits_);
    if constexpr (Archive::isReader)
        self.digitsMode_ = olderDigitsMode(self.digits_);
    archive.keepList(self.digitsMode_, DIGITS_MODE_WORDS.size(), Since{FIRST_DIGITS_MODE_VERSION});
    if constexpr (Archive::isReader) {
        if (archive.version() == DROPPED_NUMBER_VERSION)
            archive.template drop<int>();
    }
}

template <class Archive, class Self>
void Axis::blockFields(Archive &archive, Self &self)
{
    archive.list(self.type_, TYPE_WORDS.size());
    archive.field(self.length_);
    rangeModeFields(archive, self);
    archive.field(self.visible_);
    archive.field(self.range_);
    archive.field(self.tickLength_);
    archive.field(self.ticks_);
    digitsFields(archive, self);
    archive.field(self.fontColor_, Since{3}, Color(0, 0, 0));
}

void Axis::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    lineStyle_.save(stream);
    Tools::save(stream, font_);
    unit_.save(stream);
}

void Axis::load(IO::InStream *stream)
{
    Axis read = *this;
    loadWrapped("Figure_Axis_err", "cannot load figure axis data: %1", [&] { read.loadAll(stream); });
    *this = read;
}

void Axis::loadAll(IO::InStream *stream)
{
    unsigned int const version =
        loadBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    lineStyle_.load(stream);
    Tools::load(stream, &font_);
    if (version >= FIRST_UNIT_VERSION)
        unit_.load(stream);
}

template <class Archive, class Self>
void Axis::textItems(Archive &archive, Self &self)
{
    archive.list(self.type_, TYPE_WORDS.size());
    archive.item(self.length_);
    archive.list(self.rangeModeMin_, RANGE_MODE_WORDS.size());
    archive.list(self.rangeModeMax_, RANGE_MODE_WORDS.size());
    archive.item(self.visible_);
    archive.item(self.range_);
    archive.item(self.tickLength_);
    archive.item(self.ticks_);
    archive.item(self.digits_);
    unsigned int digitsMode = self.digitsMode_;
    archive.item(digitsMode, Since{2}, olderDigitsMode(self.digits_));
    if constexpr (Archive::isReader) {
        if (digitsMode >= DIGITS_MODE_WORDS.size())
            archive.fail();
        else
            self.digitsMode_ = static_cast<DigitsMode>(digitsMode);
    }
    archive.item(self.fontColor_);
    archive.record(self.lineStyle_);
    archive.item(self.font_);
    archive.record(self.unit_);
}

std::ostream &Axis::saveToStream(std::ostream &stream) const
{
    saveText(stream, TEXT_VERSION, [this](TextWriter &writer) { textItems(writer, *this); });
    return stream << ' ';
}

std::istream &Axis::loadFromStream(std::istream &stream)
{
    Axis read = *this;
    loadText(stream, TEXT_VERSION, [&read](TextReader &reader) { textItems(reader, read); });
    if (stream)
        *this = read;
    return stream;
}

std::ostream &operator<<(std::ostream &stream, Axis const &axis)
{
    return axis.saveToStream(stream);
}

std::istream &operator>>(std::istream &stream, Axis &axis)
{
    return axis.loadFromStream(stream);
}

QString Axis::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    writer.item(PARAM_TYPE, getTypeName(type_));
    writer.item(PARAM_LENGTH, length_);
    writer.item(PARAM_RANGE_MODE_MIN, getRangeModeName(rangeModeMin_));
    writer.item(PARAM_RANGE_MODE_MAX, getRangeModeName(rangeModeMax_));
    writer.item(PARAM_VISIBLE, visible_);
    writer.item(PARAM_RANGE, range_);
    writer.record(PARAM_LINE_STYLE, lineStyle_);
    writer.item(PARAM_TICK_LENGTH, tickLength_);
    writer.item(PARAM_TICKS, ticks_);
    writer.item(PARAM_DIGITS, digits_);
    writer.item(PARAM_DIGITS_MODE, getDigitsModeName(digitsMode_));
    parameters += Parse::getParameterString(writer.key(PARAM_FONT), font_);
    writer.item(PARAM_FONT_COLOR, fontColor_);
    writer.record(PARAM_UNIT, unit_);
    return parameters;
}

namespace {

/// Sets `value` to what `fromName` makes of the word, if there is one.
template <class Enum>
void readWord(ParameterReader &reader, QLatin1StringView key, Enum (*fromName)(QString const &), Enum *value)
{
    if (!reader.exists(key))
        return;
    QString word;
    reader.item(key, word);
    *value = fromName(word);
}

/// A flag of an older release: false changes nothing.
void readOldFlag(ParameterReader &reader, QLatin1StringView key, Axis::RangeMode meaning, Axis::RangeMode *mode)
{
    bool flag = false;
    reader.item(key, flag);
    if (flag)
        *mode = meaning;
}

/// -1 or more.
bool readLimit(QString &parameters, QString const &key, int *value)
{
    if (!Parse::parameterExists(parameters, key))
        return false;
    *value = Parse::getInt(parameters, key, -1, std::numeric_limits<int>::max());
    return true;
}

} // namespace

/// Older keys first, so that today's win.
void Axis::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    readWord(reader, PARAM_TYPE, typeFromName, &type_);
    readOldFlag(reader, OLD_AUTO_MIN, RANGE_MODE_AUTO, &rangeModeMin_);
    readOldFlag(reader, OLD_AUTO_MAX, RANGE_MODE_AUTO, &rangeModeMax_);
    readOldFlag(reader, OLD_OPTIMUM_MIN, RANGE_MODE_OPTIMUM, &rangeModeMin_);
    readOldFlag(reader, OLD_OPTIMUM_MAX, RANGE_MODE_OPTIMUM, &rangeModeMax_);
    reader.item(PARAM_LENGTH, length_, 0.0, ANY_DOUBLE);
    readWord(reader, PARAM_RANGE_MODE_MIN, getRangeModeFromName, &rangeModeMin_);
    readWord(reader, PARAM_RANGE_MODE_MAX, getRangeModeFromName, &rangeModeMax_);
    reader.item(PARAM_VISIBLE, visible_);
    reader.item(PARAM_RANGE, range_);
    reader.item(PARAM_TICK_LENGTH, tickLength_, 0.0, ANY_DOUBLE);
    readLimit(parameters, reader.key(PARAM_TICKS), &ticks_);
    if (readLimit(parameters, reader.key(PARAM_DIGITS), &digits_) && digits_ == -1)
        digitsMode_ = DIGITS_MODE_AUTO;
    readWord(reader, PARAM_DIGITS_MODE, getDigitsModeFromName, &digitsMode_);
    Parse::createFromParameterString(parameters, reader.key(PARAM_FONT), &font_);
    reader.item(PARAM_FONT_COLOR, fontColor_);
    reader.record(PARAM_LINE_STYLE, lineStyle_);
    reader.record(PARAM_UNIT, unit_);
}

} // namespace Zem::Fig2
