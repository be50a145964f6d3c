#include <ZemError.h>
#include <ZemUnit.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace Zem;

namespace {

Unit::Units_t const CM = static_cast<Unit::Units_t>(2);

std::string printed(UnitData const &data)
{
    std::ostringstream stream;
    stream << data;
    return stream.str();
}

} // namespace

TEST(UnitData, hasNoQuantityByDefault)
{
    for (UnitData const &data : {UnitData(), UnitData(nullptr)}) {
        EXPECT_FALSE(data.hasUnit());
        EXPECT_EQ(data.getUnit(), nullptr);
        EXPECT_EQ(data.getUnitName(), "");
    }
}

TEST(UnitData, beginsInTheBaseUnit)
{
    EXPECT_EQ(UnitData(uLength).getUnitName(), "mm");
}

TEST(UnitData, showsTheUnitThatIsChosen)
{
    UnitData data(uLength);
    data.setCurrentUnit(CM);
    EXPECT_EQ(data.getCurrentUnit(), CM);
    EXPECT_EQ(data.getUnitName(), "cm");
    EXPECT_EQ(data, UnitData(uLength, CM));
}

TEST(UnitData, differsInQuantityOrUnit)
{
    EXPECT_NE(UnitData(uLength), UnitData(uFigure));
    EXPECT_NE(UnitData(uLength), UnitData(uLength, CM));
    EXPECT_NE(UnitData(uLength), UnitData());
}

TEST(UnitData, refusesAUnitOfAnotherQuantity)
{
    UnitData data(uFigure);
    EXPECT_THROW(data.setCurrentUnit(CM), ProgError);
    EXPECT_THROW(UnitData().setCurrentUnit(Unit::Units_t{}), ProgError);
    EXPECT_THROW(UnitData(uFigure, CM), ProgError);
    EXPECT_EQ(data, UnitData(uFigure));
}

TEST(UnitDataInATextStream, isQuantityAndUnit)
{
    EXPECT_EQ(printed(UnitData(uLength, CM)), "length cm");
    EXPECT_EQ(printed(UnitData()), "\\e \\e");
}

TEST(UnitDataInATextStream, readsBackTheSame)
{
    for (Unit const *unit : {uLength, uStrain, uStress, uAcceleration, uMass}) {
        for (unsigned int i = 0; i < unit->getNumberOfUnits(); ++i) {
            UnitData const data(unit, static_cast<Unit::Units_t>(i));
            std::istringstream stream(printed(data));
            UnitData read;
            stream >> read;
            EXPECT_EQ(read, data) << printed(data);
        }
    }
}

TEST(UnitDataInATextStream, canHoldNoQuantity)
{
    std::istringstream stream("\\e \\e");
    UnitData data(uLength);
    stream >> data;
    EXPECT_EQ(data, UnitData());
}

TEST(UnitDataInATextStream, isLeftAloneWhenDamaged)
{
    for (char const *text : {"", "length", "length kN", "width mm", "\\e mm", "length \\e"}) {
        std::istringstream stream(text);
        UnitData data(uMass);
        stream >> data;
        EXPECT_TRUE(stream.fail()) << text;
        EXPECT_EQ(data, UnitData(uMass)) << text;
    }
}
