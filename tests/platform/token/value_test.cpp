#include "token_streams.h"

#include <ZemError.h>
#include <ZemTokenTools.h>
#include <ZemValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace Zem;
using namespace Zem::Test;

namespace {

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

UnitData unitData(Unit const *unit, char const *name)
{
    Unit::Units_t choice{};
    EXPECT_TRUE(unit->parseUnit(q(name), &choice));
    return UnitData(unit, choice);
}

FormattedText formattedText()
{
    FormattedText text(q("<b>rich</b>"));
    text.setText(FormattedText::FORMAT_PLAIN_TEXT, q("plain"));
    return text;
}

std::vector<Value> oneOfEachType()
{
    QDateTime const time(QDate(2024, 2, 29), QTime(23, 59, 58, 123), Qt::OffsetFromUTC, -5400);
    return {Value(),
            Value(-7),
            Value(2.5, unitData(uForce, "kN")),
            Value(q("text")),
            Value::INVALID,
            Value::fromBool(true),
            Value::fromDateTime(time),
            Value::fromVec2d({1, 2}, unitData(uLength, "m")),
            Value::fromVec3d({1, 2, 3}, nullptr),
            Value::fromFormattedText(formattedText())};
}

/// A point in time as files hold it, on a day of 2023 as long as `dayHigh` is 0.
struct StoredTime
{
    unsigned int dayHigh, milliseconds, kind;
    int offset;
};

std::string bytesOfTime(StoredTime const &time)
{
    return savedBytes([&time](IO::OutStream *stream) {
        stream->beginBlock(25, 1);
        stream->writeUInt(Value::TYPE_DATE_TIME);
        stream->writeBool(true);
        stream->writeUInt(2460000);
        stream->writeUInt(time.dayHigh);
        stream->writeUInt(time.milliseconds);
        stream->writeUInt(time.kind);
        stream->writeInt(time.offset);
        stream->endBlock();
    });
}

} // namespace

TEST(TokenValue, knowsItsTypeByNumber)
{
    std::vector<Value> const values = oneOfEachType();
    for (int type = 0; type <= 9; ++type) {
        EXPECT_EQ(static_cast<int>(values[static_cast<std::size_t>(type)].getType()), type);
        EXPECT_EQ(static_cast<int>(Value(static_cast<Value::Type_t>(type)).getType()), type);
    }
}

TEST(TokenValue, hasConstantsForMissingValues)
{
    EXPECT_EQ(Value(), Value::UNKNOWN);
    EXPECT_EQ(Value(Value::TYPE_INVALID), Value::INVALID);
    EXPECT_FALSE(Value::UNKNOWN == Value::INVALID);
}

TEST(TokenValue, givesWhatItWasMadeOf)
{
    EXPECT_EQ(Value(-7).getInt(), -7);
    EXPECT_EQ(Value(2.5, uForce).getDouble(), 2.5);
    EXPECT_EQ(Value(2.5, uForce).getUnitData(), UnitData(uForce));
    EXPECT_FALSE(Value(2.5, nullptr).getUnitData().hasUnit());
    EXPECT_EQ(Value(q("a")).getString(), q("a"));
    EXPECT_TRUE(Value::fromBool(true).getBool());
    EXPECT_EQ(Value::fromVec2d({1, 2}, uLength).getVec2d(), (BaVec2d<double>{1, 2}));
    EXPECT_EQ(Value::fromVec3d({1, 2, 3}, uLength).getVec3d(), (BaVec3d<double>{1, 2, 3}));
    QDateTime const time(QDate(2024, 1, 2), QTime(3, 4), Qt::UTC);
    EXPECT_EQ(Value::fromDateTime(time).getDateTime(), time);
}

TEST(TokenValue, refusesToBeReadAsAnotherType)
{
    EXPECT_THROW(Value(1).getDouble(), ProgError);
    EXPECT_THROW(Value(1.5, nullptr).getInt(), ProgError);
    EXPECT_THROW(Value(1).getString(), ProgError);
    EXPECT_THROW(Value(1).getBool(), ProgError);
    EXPECT_THROW(Value(1).getDateTime(), ProgError);
    EXPECT_THROW(Value(1).getVec2d(), ProgError);
    EXPECT_THROW(Value(1).getVec3d(), ProgError);
    EXPECT_THROW(Value::UNKNOWN.getFormattedText(), ProgError);
}

TEST(TokenValue, differsByTypeValueAndUnit)
{
    EXPECT_EQ(Value(1), Value(1));
    EXPECT_FALSE(Value(1) == Value(2));
    EXPECT_FALSE(Value(1) == Value(1.0, nullptr));
    EXPECT_FALSE(Value(1.0, uForce) == Value(1.0, unitData(uForce, "kN")));
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Value(nan, nullptr), Value(nan, nullptr));
}

TEST(FormattedTextValue, givesOnlyTheFormatsItHas)
{
    FormattedText const rich(q("<b>x</b>"));
    QString text = q("before");
    EXPECT_FALSE(rich.getText(FormattedText::FORMAT_PLAIN_TEXT, &text));
    EXPECT_EQ(text, q("before"));
    EXPECT_TRUE(rich.getText(static_cast<FormattedText::Format_t>(0), &text));
    EXPECT_EQ(text, q("<b>x</b>"));
}

TEST(TokenValueInAStream, keepsEveryType)
{
    for (Value const &value : oneOfEachType()) {
        Value const read = throughStream(value);
        EXPECT_EQ(read, value) << value.getType();
        EXPECT_EQ(read.getUnitData(), value.getUnitData());
    }
}

TEST(TokenValueInAStream, keepsTheKindOfAPointInTime)
{
    QDate const date(2024, 7, 1);
    for (QDateTime const &time :
         {QDateTime(date, QTime(1, 2, 3, 4), Qt::UTC), QDateTime(date, QTime(1, 2), Qt::LocalTime),
          QDateTime(date, QTime(1, 2), Qt::OffsetFromUTC, 7200), QDateTime(QDate(-44, 3, 15), QTime(12, 0), Qt::UTC),
          QDateTime()}) {
        QDateTime const read = throughStream(Value::fromDateTime(time)).getDateTime();
        EXPECT_EQ(read, time);
        EXPECT_EQ(read.isValid(), time.isValid());
        if (time.isValid()) {
            EXPECT_EQ(read.timeSpec(), time.timeSpec());
        }
    }
}

TEST(TokenValueInAStream, refusesAnUnknownTypeAndANewerBlock)
{
    for (unsigned int type : {10u, 4294967295u}) {
        std::string const bytes = savedBytes([&](IO::OutStream *stream) {
            stream->beginBlock(4, 1);
            stream->writeUInt(type);
            stream->endBlock();
        });
        Value value(3);
        EXPECT_THROW(loadFrom(bytes, &value), IO::StreamException);
        EXPECT_EQ(value, Value(3));
    }
    std::string const newer = savedBytes([](IO::OutStream *stream) {
        stream->beginBlock(4, 2);
        stream->writeUInt(0);
        stream->endBlock();
    });
    Value value(3);
    EXPECT_THROW(loadFrom(newer, &value), IO::StreamException);
}

TEST(TokenValueInAStream, numbersTheKindsOfTimeAsFilesHoldThem)
{
    struct
    {
        unsigned int kind;
        Qt::TimeSpec spec;
    } const rows[] = {{0, Qt::LocalTime}, {1, Qt::UTC}, {2, Qt::OffsetFromUTC}};
    for (auto const &row : rows) {
        Value value;
        loadFrom(bytesOfTime({0, 43200000, row.kind, 3600}), &value);
        EXPECT_EQ(value.getDateTime().timeSpec(), row.spec) << row.kind;
    }
}

TEST(TokenValueInAStream, refusesAPointInTimeThatIsNone)
{
    StoredTime const cases[] = {{0, 86400000, 1, 0},
                                {0, 0, 3, 0},
                                {0x7fffffff, 0, 1, 0},
                                {0, 0, 2, 86400},
                                {0, 0, 2, std::numeric_limits<int>::min()}};
    for (StoredTime const &test : cases) {
        Value value;
        EXPECT_THROW(loadFrom(bytesOfTime(test), &value), IO::StreamException)
            << test.milliseconds << ' ' << test.offset;
    }
}

TEST(TokenValueInAStream, refusesAFormattedTextWithMoreTextsThanBytes)
{
    std::string const bytes = savedBytes([](IO::OutStream *stream) {
        stream->beginBlock(4, 1);
        stream->writeUInt(4294967295u);
        stream->endBlock();
    });
    FormattedText text(q("old"));
    EXPECT_THROW(loadFrom(bytes, &text), IO::StreamException);
    EXPECT_EQ(text, FormattedText(q("old")));
}
