// The three forms of an axis, and those of older releases.
#include "axis_fixture.h"

#include <ElementForms.h>
#include <ZemFig2Tools.h>

#include <ZemParse.h>

#include <QtCore/QStringList>

#include <limits>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;
using Support::thrownText;

LineStyle const STYLE(0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3));
Font const FONT(QStringLiteral("Serif"), 9.0, Font::BOLD);

Axis filled()
{
    Axis axis(Axis::VERTICAL_LEFT);
    axis.setLength(80);
    axis.setRangeModeMin(Axis::RANGE_MODE_MANUAL);
    axis.setRangeModeMax(Axis::RANGE_MODE_OPTIMUM);
    axis.setVisible(false);
    axis.setRange({1.5, 9.5});
    axis.setLineStyle(STYLE);
    axis.setTickLength(4);
    axis.setTicks(7);
    axis.setDigitsMode(Axis::DIGITS_MODE_3D);
    axis.setDigits(3);
    axis.setFont(FONT);
    axis.setFontColor(Color(4, 5, 6, 7));
    axis.setUnit(unitOf(uLength, "m"));
    return axis;
}

void expectScale(Axis const &axis)
{
    EXPECT_EQ(axis.getType(), Axis::VERTICAL_LEFT);
    EXPECT_EQ(axis.getLength(), 80.0);
    EXPECT_FALSE(axis.getVisible());
    EXPECT_EQ(axis.getRange(), BaVec2d<double>(1.5, 9.5));
    EXPECT_EQ(axis.getLineStyle(), STYLE);
    EXPECT_EQ(axis.getTickLength(), 4.0);
    EXPECT_EQ(axis.getTicks(), 7);
    EXPECT_EQ(axis.getFont(), FONT);
}

void expectAll(Axis const &axis)
{
    expectScale(axis);
    EXPECT_EQ(axis.getRangeModeMin(), Axis::RANGE_MODE_MANUAL);
    EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_OPTIMUM);
    EXPECT_EQ(axis.getDigitsMode(), Axis::DIGITS_MODE_3D);
    EXPECT_EQ(axis.getDigits(), 3);
    EXPECT_EQ(axis.getFontColor(), Color(4, 5, 6, 7));
    EXPECT_EQ(axis.getUnit(), unitOf(uLength, "m"));
}

std::string blockForm(Axis const &axis)
{
    return Support::streamOf([&axis](IO::OutStream &stream) { axis.save(&stream); });
}

void load(Axis &axis, std::string const &bytes)
{
    Support::readFrom(bytes, [&axis](IO::InStream &stream) { axis.load(&stream); });
}

/// The fields that the versions do not agree on.
struct Versioned
{
    bool autoMin = true;
    bool autoMax = true;
    bool optimumMin = false;
    bool optimumMax = true;
    int digits = 3;
};

/// The block of the axis alone.
Payload fieldsOf(unsigned int version, Versioned const &old = Versioned(), unsigned int type = 2)
{
    Payload fields;
    fields.u(type).d(80);
    if (version >= 5)
        fields.u(0).u(2);
    else
        fields.b(old.autoMin).b(old.autoMax);
    if (version == 4)
        fields.b(old.optimumMin).b(old.optimumMax);
    fields.b(false).v(1.5, 9.5).d(4).i(7).i(old.digits);
    if (version >= 8)
        fields.u(2);
    if (version == 6)
        fields.i(12345);
    if (version >= 3)
        fields.c(4, 5, 6, 7);
    return fields;
}

std::string crafted(unsigned int version, Payload const &fields)
{
    BlockCrafter crafter;
    crafter.block(version, fields).add([version](IO::OutStream &stream) {
        STYLE.save(&stream);
        Tools::save(&stream, FONT);
        if (version >= 2)
            unitOf(uLength, "m").save(&stream);
        LineStyle(77, LineStyle::STYLE_FULL, Color(0, 0, 0)).save(&stream); // what follows
    });
    return crafter.bytes();
}

Axis loadCrafted(unsigned int version, Versioned const &old = Versioned())
{
    Axis axis(Axis::HORIZONTAL_TOP);
    axis.setFontColor(Color(9, 9, 9)); // must not stay
    axis.setDigitsMode(Axis::DIGITS_MODE_3D);
    LineStyle next;
    Support::readFrom(crafted(version, fieldsOf(version, old)), [&](IO::InStream &stream) {
        axis.load(&stream);
        next.load(&stream);
    });
    EXPECT_EQ(next.getWidth(), 77.0) << "the place behind an axis of version " << version;
    return axis;
}

TEST(AxisBlock, comesBack)
{
    Axis read(Axis::HORIZONTAL_TOP);

    load(read, blockForm(filled()));

    expectAll(read);
}

TEST(AxisBlock, hasVersion8And61Bytes)
{
    EXPECT_EQ(Support::blocksOf(blockForm(filled())).substr(0, 10), "8:61 2:20 ");
}

TEST(AxisBlock, holdsItsFieldsInOrder)
{
    Axis read(Axis::HORIZONTAL_TOP);

    load(read, crafted(8, fieldsOf(8)));

    expectAll(read);
}

TEST(AxisBlock, ofEveryOlderVersionIsRead)
{
    for (unsigned int version = 1; version < 8; ++version) {
        SCOPED_TRACE(version);
        Axis const axis = loadCrafted(version);

        expectScale(axis);
        EXPECT_EQ(axis.getDigits(), 3);
        EXPECT_EQ(axis.getDigitsMode(), Axis::DIGITS_MODE_MANUAL);
        EXPECT_EQ(axis.getFontColor(), version >= 3 ? Color(4, 5, 6, 7) : Color(0, 0, 0));
        EXPECT_EQ(axis.getUnit(), version >= 2 ? unitOf(uLength, "m") : UnitData(uFigure));
        EXPECT_EQ(axis.getRangeModeMin(), version >= 5 ? Axis::RANGE_MODE_MANUAL : Axis::RANGE_MODE_AUTO);
    }
}

TEST(AxisBlock, hadNoDigitsModeUpToVersion7)
{
    for (unsigned int version = 1; version < 8; ++version)
        EXPECT_EQ(loadCrafted(version, {.digits = -1}).getDigitsMode(), Axis::DIGITS_MODE_AUTO);
}

TEST(AxisBlock, hadTwoFlagsForEachEndInVersion4)
{
    auto const modeOf = [](bool automatic, bool optimum) {
        Axis const axis = loadCrafted(4, {.autoMin = automatic, .autoMax = !automatic, .optimumMin = optimum});
        return axis.getRangeModeMin();
    };
    EXPECT_EQ(modeOf(false, false), Axis::RANGE_MODE_MANUAL);
    EXPECT_EQ(modeOf(false, true), Axis::RANGE_MODE_MANUAL);
    EXPECT_EQ(modeOf(true, false), Axis::RANGE_MODE_AUTO);
    EXPECT_EQ(modeOf(true, true), Axis::RANGE_MODE_OPTIMUM);
    EXPECT_EQ(loadCrafted(4).getRangeModeMax(), Axis::RANGE_MODE_OPTIMUM);
}

TEST(AxisBlock, hadOneFlagForEachEndUpToVersion3)
{
    for (unsigned int version = 1; version < 4; ++version) {
        Axis const axis = loadCrafted(version, {.autoMin = false, .autoMax = true});
        EXPECT_EQ(axis.getRangeModeMin(), Axis::RANGE_MODE_MANUAL);
        EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_AUTO);
    }
}

TEST(AxisBlock, ofANewerVersionIsRefused)
{
    for (unsigned int version : {0U, 9U}) {
        Axis axis = filled();
        EXPECT_EQ(thrownText<IO::StreamException>([&] { load(axis, crafted(version, fieldsOf(8))); }),
                  "cannot load figure axis data: wrong block version");
    }
}

TEST(AxisBlock, withNumbersOutsideTheEnumerationsIsRefused)
{
    auto const textFor = [](unsigned int type, unsigned int minimum, unsigned int maximum, unsigned int digits) {
        Payload fields;
        fields.u(type).d(80).u(minimum).u(maximum).b(false).v(1.5, 9.5).d(4).i(7).i(3).u(digits).c(4, 5, 6, 7);
        return thrownText<IO::StreamException>([&] {
            Axis axis(Axis::HORIZONTAL_TOP);
            load(axis, crafted(8, fields));
        });
    };
    std::string const refusal = "cannot load figure axis data: illegal value ";
    EXPECT_EQ(textFor(4, 0, 0, 0), refusal + "4 in block");
    EXPECT_EQ(textFor(0, 3, 0, 0), refusal + "3 in block");
    EXPECT_EQ(textFor(0, 0, 4294967295U, 0), refusal + "4294967295 in block");
    EXPECT_EQ(textFor(0, 0, 0, 3), refusal + "3 in block");
    EXPECT_EQ(textFor(3, 2, 2, 2), "nothing thrown");
}

TEST(AxisBlock, thatEndsTooSoonChangesNothing)
{
    Axis axis = filled();

    EXPECT_THROW(load(axis, crafted(8, Payload().u(0).d(1).u(1).u(1))), IO::StreamException);
    EXPECT_THROW(load(axis, BlockCrafter().block(8, fieldsOf(8, {}, 0)).bytes()), IO::StreamException);

    expectAll(axis);
}

std::string const TEXT = "2 2 80 0 2 0 1.5 9.5 4 7 3 2 #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ";

TEST(AxisText, holdsTheFieldsInOrder)
{
    std::ostringstream stream;

    stream << filled();

    EXPECT_EQ(stream.str(), TEXT);
}

TEST(AxisText, comesBack)
{
    std::istringstream stream(TEXT + "next");
    Axis axis(Axis::HORIZONTAL_TOP);
    std::string next;

    stream >> axis >> next;

    expectAll(axis);
    EXPECT_EQ(next, "next");
}

TEST(AxisText, hadNoDigitsModeInVersion1)
{
    for (int digits : {-1, 3}) {
        std::istringstream stream("1 2 80 0 2 0 1.5 9.5 4 7 " + std::to_string(digits) +
                                  " #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ");
        Axis axis(Axis::HORIZONTAL_TOP);

        EXPECT_TRUE(stream >> axis);

        expectScale(axis);
        EXPECT_EQ(axis.getDigitsMode(), digits < 0 ? Axis::DIGITS_MODE_AUTO : Axis::DIGITS_MODE_MANUAL);
        EXPECT_EQ(axis.getUnit(), unitOf(uLength, "m"));
    }
}

TEST(AxisText, ofANewerVersionIsRefused)
{
    std::istringstream stream("3" + TEXT.substr(1));
    Axis axis = filled();

    EXPECT_EQ(thrownText<IO::StreamException>([&] { axis.loadFromStream(stream); }), "wrong block version");
}

TEST(AxisText, thatIsDamagedChangesNothing)
{
    std::vector<std::string> damaged;
    // Each cut in front of an item.
    for (std::size_t cut = TEXT.find(' '); cut + 1 < TEXT.size(); cut = TEXT.find(' ', cut + 1))
        damaged.push_back(TEXT.substr(0, cut));
    damaged.push_back("2 4 80 0 2 0 1.5 9.5 4 7 3 2 #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ");
    damaged.push_back("2 2 80 0 3 0 1.5 9.5 4 7 3 2 #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ");
    damaged.push_back("2 2 80 0 2 0 1.5 9.5 4 7 3 3 #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ");
    damaged.push_back("2 2 80 0 2 0 1.5 9.5 4 7 3 -1 #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ");
    damaged.push_back("2 2 80 0 2 0 1.5 9.5 4 99999999999 3 2 #04050607 1 0.5 3 #010203ff 1 Serif 9 2 length m ");
    for (std::string const &text : damaged) {
        SCOPED_TRACE(text);
        std::istringstream stream(text);
        Axis axis = filled();

        EXPECT_FALSE(stream >> axis);

        expectAll(axis);
    }
}

/// The keys of a parameter string, each followed by a blank.
std::string keysOf(QString const &parameters)
{
    std::string keys;
    for (QString const &line : parameters.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        keys += line.section(QStringLiteral(" = "), 0, 0).toStdString() + " ";
    return keys;
}

/// The rest of the string.
std::string readParameters(Axis &axis, QString parameters, QString const &prefix = QString())
{
    axis.createFromParameterString(parameters, prefix);
    return parameters.toStdString();
}

TEST(AxisParameters, standInOrder)
{
    EXPECT_EQ(keysOf(filled().getParameterString(QString())),
              "type length range_mode_min range_mode_max visible range line_style_width line_style_color "
              "line_style_style line_style_cap_style tick_length ticks digits digits_mode font font_color "
              "unit_quantity unit_unit ");
}

TEST(AxisParameters, comeBackUnderAnyPrefix)
{
    for (QString const &prefix : {QString(), QStringLiteral("axis_x")}) {
        Axis axis(Axis::HORIZONTAL_TOP);

        EXPECT_EQ(readParameters(axis, filled().getParameterString(prefix), prefix), "");

        expectAll(axis);
    }
    EXPECT_EQ(keysOf(filled().getParameterString(QStringLiteral("axis_x"))).substr(0, 26),
              "axis_x_type axis_x_length ");
}

TEST(AxisParameters, thatAreAbsentLeaveTheirMembersAlone)
{
    Axis axis = filled();

    EXPECT_EQ(readParameters(axis, QStringLiteral("other = 1\n")), "other = 1\n");

    expectAll(axis);
}

TEST(AxisParameters, ofOlderReleasesSetTheRangeModes)
{
    Axis axis = filled();
    axis.setRangeModeMax(Axis::RANGE_MODE_MANUAL);
    QString const parameters = Parse::createBool(QStringLiteral("optimum_min"), true) +
                               Parse::createBool(QStringLiteral("auto_min"), true) +
                               Parse::createBool(QStringLiteral("auto_max"), true);

    EXPECT_EQ(readParameters(axis, parameters), "");

    EXPECT_EQ(axis.getRangeModeMin(), Axis::RANGE_MODE_OPTIMUM);
    EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_AUTO);
}

TEST(AxisParameters, ofOlderReleasesThatAreFalseChangeNothing)
{
    Axis axis = filled();
    QString parameters;
    for (char const *key : {"auto_min", "auto_max", "optimum_min", "optimum_max"})
        parameters += Parse::createBool(QString::fromLatin1(key), false);

    EXPECT_EQ(readParameters(axis, parameters), "");

    expectAll(axis);
}

TEST(AxisParameters, ofTodayWinOverOlderOnes)
{
    Axis axis(Axis::HORIZONTAL_TOP);

    readParameters(axis, Parse::createString(QStringLiteral("range_mode_max"), QStringLiteral("manual")) +
                             Parse::createBool(QStringLiteral("optimum_max"), true));

    EXPECT_EQ(axis.getRangeModeMax(), Axis::RANGE_MODE_MANUAL);
}

TEST(AxisParameters, ofMinusOneDigitsMeanThatTheyFollow)
{
    Axis axis(Axis::HORIZONTAL_TOP);
    QString const follow = Parse::createInt(QStringLiteral("digits"), -1);

    readParameters(axis, follow);
    EXPECT_EQ(axis.getDigitsMode(), Axis::DIGITS_MODE_AUTO);
    EXPECT_EQ(axis.getDigits(), -1);

    readParameters(axis, follow + Parse::createString(QStringLiteral("digits_mode"), QStringLiteral("3d")));
    EXPECT_EQ(axis.getDigitsMode(), Axis::DIGITS_MODE_3D);
}

TEST(AxisParameters, withOtherDigitsKeepTheMode)
{
    Axis axis = filled();

    readParameters(axis, Parse::createInt(QStringLiteral("digits"), 5));

    EXPECT_EQ(axis.getDigits(), 5);
    EXPECT_EQ(axis.getDigitsMode(), Axis::DIGITS_MODE_3D);
}

TEST(AxisParameters, withUnknownWordsAreRefused)
{
    auto const textFor = [](char const *key) {
        return thrownText<ParamError>([key] {
            Axis axis(Axis::HORIZONTAL_TOP);
            readParameters(axis, Parse::createString(QString::fromLatin1(key), QStringLiteral("diagonal")));
        });
    };
    EXPECT_EQ(textFor("type"), "unknown axis type");
    EXPECT_EQ(textFor("range_mode_min"), "unknown axis range mode name");
    EXPECT_EQ(textFor("range_mode_max"), "unknown axis range mode name");
    EXPECT_EQ(textFor("digits_mode"), "unknown axis digits mode name");
}

TEST(AxisParameters, outOfRangeAreRefused)
{
    QString const badOnes[] = {Parse::createDouble(QStringLiteral("length"), -1.0),
                               Parse::createDouble(QStringLiteral("tick_length"), -1.0),
                               Parse::createInt(QStringLiteral("ticks"), -2),
                               Parse::createInt(QStringLiteral("digits"), -2),
                               QStringLiteral("ticks = 2147483648\n"),
                               QStringLiteral("length = inf\n"),
                               Parse::createString(QStringLiteral("font"), QString("x")),
                               QStringLiteral("range = (nan, 1)\n")};
    for (QString const &bad : badOnes) {
        Axis axis(Axis::HORIZONTAL_TOP);
        EXPECT_THROW(readParameters(axis, bad), ParamError) << bad.toStdString();
    }
}

TEST(AxisParameters, atTheirBoundsAreTaken)
{
    Axis axis(Axis::HORIZONTAL_TOP);
    int const most = std::numeric_limits<int>::max();

    readParameters(axis, Parse::createInt(QStringLiteral("ticks"), most) +
                             Parse::createInt(QStringLiteral("digits"), most) +
                             Parse::createDouble(QStringLiteral("length"), 0.0));

    EXPECT_EQ(axis.getTicks(), most);
    EXPECT_EQ(axis.getDigits(), most);
    EXPECT_EQ(axis.getLength(), 0.0);
}

TEST(AxisNames, areTheWordsOfTheEnumerations)
{
    char const *const types[] = {"horizontal_top", "horizontal_bottom", "vertical_left", "vertical_right", ""};
    char const *const ranges[] = {"manual", "auto", "optimum", ""};
    char const *const digits[] = {"manual", "auto", "3d", ""};
    for (unsigned int i = 0; i < 5; ++i)
        EXPECT_EQ(Axis::getTypeName(Axis::Type(i)), types[i]);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(Axis::getRangeModeName(Axis::RangeMode(i)), ranges[i]);
        EXPECT_EQ(Axis::getDigitsModeName(Axis::DigitsMode(i)), digits[i]);
    }
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(Axis::getRangeModeFromName(QString::fromLatin1(ranges[i])), Axis::RangeMode(i));
        EXPECT_EQ(Axis::getDigitsModeFromName(QString::fromLatin1(digits[i])), Axis::DigitsMode(i));
    }
}

} // namespace
} // namespace Zem::Fig2
