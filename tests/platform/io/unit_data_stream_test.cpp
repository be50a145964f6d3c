#include "stream_bytes.h"

#include <ZemUnit.h>

#include <gtest/gtest.h>

using namespace Zem;
using namespace Zem::IO;
using namespace Zem::IO::Test;

namespace {

UnitData unitData(Unit const *unit, char const *name)
{
    Unit::Units_t choice{};
    EXPECT_TRUE(unit->parseUnit(QString::fromUtf8(name), &choice));
    return UnitData(unit, choice);
}

UnitData throughStream(UnitData const &data)
{
    std::istringstream source(bytesOf([&](OutStream &stream) { data.save(&stream); }));
    InStream stream(&source);
    UnitData read(uMass);
    read.load(&stream);
    return read;
}

QString loadError(char const *quantity, char const *unit, unsigned int version, UnitData *data)
{
    QString const first = QString::fromUtf8(quantity);
    QString const second = QString::fromUtf8(unit);
    std::istringstream source(bytesOf([&](OutStream &stream) {
        stream.beginBlock(Stream::sizeOf(first) + Stream::sizeOf(second), version);
        stream.writeString(first);
        stream.writeString(second);
        stream.endBlock();
    }));
    InStream stream(&source);
    return streamError([&] { data->load(&stream); });
}

} // namespace

TEST(UnitDataInAStream, keepsQuantityAndUnit)
{
    EXPECT_EQ(throughStream(unitData(uForce, "kN")), unitData(uForce, "kN"));
    EXPECT_EQ(throughStream(unitData(uStrain, "%")), unitData(uStrain, "%"));
}

TEST(UnitDataInAStream, keepsTheAbsenceOfAQuantity)
{
    EXPECT_FALSE(throughStream(UnitData()).hasUnit());
}

TEST(UnitDataInAStream, refusesAnUnknownQuantityAndUnitAndStaysAsItWas)
{
    UnitData data(uMass);
    EXPECT_EQ(loadError("colour", "kN", 1, &data), QStringLiteral("unknown quantity 'colour'"));
    EXPECT_EQ(loadError("force", "mile", 1, &data), QStringLiteral("unknown unit 'mile' of quantity 'force'"));
    EXPECT_EQ(data, UnitData(uMass));
}

TEST(UnitDataInAStream, refusesANewerBlock)
{
    UnitData data;
    EXPECT_EQ(loadError("force", "kN", 2, &data), QStringLiteral("wrong block version"));
}
