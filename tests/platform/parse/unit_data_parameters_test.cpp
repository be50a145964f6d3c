#include "parameter_errors.h"

#include <ZemUnit.h>

#include <gtest/gtest.h>

using namespace Zem;
using namespace Zem::Test;

namespace {

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

UnitData kiloNewton()
{
    Unit::Units_t choice{};
    EXPECT_TRUE(uForce->parseUnit(q("kN"), &choice));
    return UnitData(uForce, choice);
}

} // namespace

TEST(UnitDataParameters, areQuantityAndUnitUnderThePrefix)
{
    EXPECT_EQ(kiloNewton().getParameterString(q("axis")), q("axis_quantity = \"force\"\naxis_unit = \"kN\"\n"));
    EXPECT_EQ(kiloNewton().getParameterString(QString()), q("quantity = \"force\"\nunit = \"kN\"\n"));
}

TEST(UnitDataParameters, areConsumedByReading)
{
    QString parameters = kiloNewton().getParameterString(q("axis")) + q("other = 1\n");
    UnitData data;
    data.createFromParameterString(parameters, q("axis"));
    EXPECT_EQ(data, kiloNewton());
    EXPECT_EQ(parameters, q("other = 1\n"));
}

TEST(UnitDataParameters, keepTheAbsenceOfAQuantity)
{
    QString parameters = UnitData().getParameterString(q("x"));
    UnitData data = kiloNewton();
    data.createFromParameterString(parameters, q("x"));
    EXPECT_EQ(data, UnitData());
}

TEST(UnitDataParameters, leaveTheUnitAloneWithoutEntries)
{
    QString parameters = q("other = 1\n");
    UnitData data = kiloNewton();
    data.createFromParameterString(parameters, q("x"));
    EXPECT_EQ(data, kiloNewton());
}

TEST(UnitDataParameters, mayNameTheUnitOfTheQuantityAlone)
{
    QString parameters = q("x_unit = kN\n");
    UnitData data(uForce);
    data.createFromParameterString(parameters, q("x"));
    EXPECT_EQ(data, kiloNewton());
}

TEST(UnitDataParameters, refuseUnknownNamesAndChangeNothing)
{
    for (char const *bad : {"x_quantity = colour\n", "x_quantity = mm\n", "x_quantity = force\nx_unit = mm\n"}) {
        QString parameters = q(bad);
        UnitData data = kiloNewton();
        EXPECT_NE(paramError([&] { data.createFromParameterString(parameters, q("x")); }), QString()) << bad;
        EXPECT_EQ(data, kiloNewton());
        EXPECT_EQ(parameters, q(bad));
    }
}
