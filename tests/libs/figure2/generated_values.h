// generated_values.h: values of any kind for properties, and their way through each form.
#pragma once

#include <BlockCrafter.h>
#include <ZemFig2FillStyle.h>
#include <ZemFig2LineStyle.h>
#include <ZemVec.h>

#include <rapidcheck.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <sstream>
#include <tuple>
#include <vector>

namespace Zem::Fig2::Generated {

/// Any finite number, of all magnitudes.
inline rc::Gen<double> anyDouble()
{
    return rc::gen::map(rc::gen::arbitrary<std::uint64_t>(), [](std::uint64_t bits) {
        double const number = std::bit_cast<double>(bits);
        return std::isfinite(number) ? number : 0.1 * static_cast<double>(bits % 1000);
    });
}

inline rc::Gen<double> anyLength()
{
    return rc::gen::map(anyDouble(), [](double number) { return std::abs(number); });
}

inline rc::Gen<BaVec2d<double>> anyPoint()
{
    return rc::gen::construct<BaVec2d<double>>(anyDouble(), anyDouble());
}

inline rc::Gen<Color> anyColor()
{
    return rc::gen::map(rc::gen::arbitrary<std::uint32_t>(), [](std::uint32_t bits) {
        auto const byte = [bits](int index) { return static_cast<unsigned char>(bits >> (8 * index)); };
        return Color(byte(0), byte(1), byte(2), byte(3));
    });
}

template <class Enum>
rc::Gen<Enum> anyOf(int count)
{
    return rc::gen::map(rc::gen::inRange(0, count), [](int number) { return static_cast<Enum>(number); });
}

/// A text of characters from all planes, control characters included.
inline rc::Gen<QString> anyText()
{
    auto const character = rc::gen::oneOf(rc::gen::inRange<char32_t>(1, 0x80), rc::gen::inRange<char32_t>(0x80, 0xd800),
                                          rc::gen::inRange<char32_t>(0xe000, 0x110000));
    return rc::gen::map(rc::gen::container<std::vector<char32_t>>(character), [](std::vector<char32_t> const &text) {
        return QString::fromUcs4(text.data(), static_cast<qsizetype>(text.size()));
    });
}

inline rc::Gen<LineStyle> anyLineStyle()
{
    return rc::gen::map(
        rc::gen::tuple(anyLength(), anyOf<LineStyle::Style>(5), anyColor(), anyOf<LineStyle::CapStyle>(2)),
        [](std::tuple<double, LineStyle::Style, Color, LineStyle::CapStyle> const &parts) {
            LineStyle style(std::get<0>(parts), std::get<1>(parts), std::get<2>(parts));
            style.setCapStyle(std::get<3>(parts));
            return style;
        });
}

inline rc::Gen<FillStyle> anyFillStyle()
{
    return rc::gen::map(rc::gen::pair(rc::gen::arbitrary<bool>(), anyColor()), [](std::pair<bool, Color> const &parts) {
        FillStyle style(parts.second);
        style.setFilled(parts.first);
        return style;
    });
}

/// What becomes of a record in its block, in its text and in its parameters.
template <class Record>
Record throughBlock(Record const &record, Record read = Record())
{
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { record.save(&stream); });
    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream); });
    return read;
}

template <class Record>
Record throughText(Record const &record, Record read = Record())
{
    std::stringstream stream;
    stream << record;
    stream >> read;
    return read;
}

template <class Record>
Record throughParameters(Record const &record, Record read = Record())
{
    QString parameters = record.getParameterString("prefix");
    read.createFromParameterString(parameters, "prefix");
    RC_ASSERT(parameters.isEmpty());
    return read;
}

} // namespace Zem::Fig2::Generated
