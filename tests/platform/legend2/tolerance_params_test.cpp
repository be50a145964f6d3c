#include "legend_forms_support.h"

#include <ZemToleranceParams.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Legend2 {
namespace {

using namespace Test;
using testing::ElementsAre;

constexpr unsigned int TYPES = ToleranceParams::NUMBER_OF_PASS_TYPES;
constexpr auto NO_PASS_TYPE = static_cast<TolerancePassType_t>(TYPES);

ToleranceParams someParams()
{
    ToleranceParams params;
    params.setTitle(QStringLiteral("gap \"left\""));
    params.setWarningShare(0.25);
    for (unsigned int i = 0; i < TYPES; ++i) {
        auto const type = static_cast<TolerancePassType_t>(i);
        params.setText(type, QStringLiteral("type %1").arg(i));
        params.setColor(type, Color(static_cast<unsigned char>(i), 2, 3, 4));
    }
    params.setColorInvalid(TOLERANCE_WARNING_HIGH);
    return params;
}

TEST(ToleranceParams, listFailuresAndPassesAtFirst)
{
    ToleranceParams const params;
    EXPECT_THAT(params.getPassTypesForDrawing(), ElementsAre(TOLERANCE_FAIL_LOW, TOLERANCE_PASS, TOLERANCE_FAIL_HIGH));
    EXPECT_THAT(params.getStringsForDrawing(),
                ElementsAre(QStringLiteral("too low"), QStringLiteral("passed"), QStringLiteral("too high")));
    EXPECT_EQ(params.getTitle(), QStringLiteral("tolerance"));
    EXPECT_EQ(params.getWarningShare(), 0.0);
    EXPECT_EQ(params.getColor(TOLERANCE_FAIL_LOW), params.getColor(TOLERANCE_FAIL_HIGH));
    EXPECT_NE(params.getColor(TOLERANCE_FAIL_LOW), params.getColor(TOLERANCE_PASS));
    for (unsigned int i = 0; i < TYPES; ++i)
        EXPECT_TRUE(params.isColorValid(static_cast<TolerancePassType_t>(i)));
}

TEST(ToleranceParams, listTheTypesThatHaveATextInAscendingOrder)
{
    ToleranceParams params = someParams();
    params.setText(TOLERANCE_FAIL_LOW, QString());
    params.setText(TOLERANCE_PASS, QString());
    EXPECT_THAT(params.getPassTypesForDrawing(),
                ElementsAre(TOLERANCE_WARNING_LOW, TOLERANCE_WARNING_HIGH, TOLERANCE_FAIL_HIGH));
    EXPECT_THAT(params.getStringsForDrawing(),
                ElementsAre(QStringLiteral("type 1"), QStringLiteral("type 3"), QStringLiteral("type 4")));
}

TEST(ToleranceParams, makeAColorValidBySettingIt)
{
    ToleranceParams params = someParams();
    EXPECT_FALSE(params.isColorValid(TOLERANCE_WARNING_HIGH));
    params.setColor(TOLERANCE_WARNING_HIGH, Color(9, 9, 9));
    EXPECT_TRUE(params.isColorValid(TOLERANCE_WARNING_HIGH));
    EXPECT_EQ(params.getColor(TOLERANCE_WARNING_HIGH), Color(9, 9, 9));
}

TEST(ToleranceParams, refuseANumberThatIsNoPassType)
{
    ToleranceParams params;
    EXPECT_THROW(params.getText(NO_PASS_TYPE), ProgError);
    EXPECT_THROW(params.getColor(NO_PASS_TYPE), ProgError);
    EXPECT_THROW(params.isColorValid(NO_PASS_TYPE), ProgError);
    EXPECT_THROW(params.setText(NO_PASS_TYPE, QString()), ProgError);
    EXPECT_THROW(params.setColor(NO_PASS_TYPE, Color()), ProgError);
    EXPECT_THROW(params.setColorInvalid(NO_PASS_TYPE), ProgError);
}

TEST(ToleranceParams, refuseAWarningShareOutOfRange)
{
    ToleranceParams params;
    for (double bad : {-0.01, 0.51, std::nan("")})
        EXPECT_THROW(params.setWarningShare(bad), ProgError);
    EXPECT_EQ(params, ToleranceParams());
    params.setWarningShare(0.5);
    EXPECT_EQ(params.getWarningShare(), 0.5);
}

TEST(ToleranceParams, passWhatIsOnALimit)
{
    ToleranceParams const params;
    EXPECT_EQ(params.getPassType(-1.1, -1, 1), TOLERANCE_FAIL_LOW);
    EXPECT_EQ(params.getPassType(-1.0, -1, 1), TOLERANCE_PASS);
    EXPECT_EQ(params.getPassType(1.0, -1, 1), TOLERANCE_PASS);
    EXPECT_EQ(params.getPassType(1.1, -1, 1), TOLERANCE_FAIL_HIGH);
}

TEST(ToleranceParams, warnNearALimit)
{
    ToleranceParams const params = someParams(); // a quarter of the extent on either side
    EXPECT_EQ(params.getPassType(0.0, 0, 8), TOLERANCE_WARNING_LOW);
    EXPECT_EQ(params.getPassType(1.9, 0, 8), TOLERANCE_WARNING_LOW);
    EXPECT_EQ(params.getPassType(2.0, 0, 8), TOLERANCE_PASS);
    EXPECT_EQ(params.getPassType(6.0, 0, 8), TOLERANCE_PASS);
    EXPECT_EQ(params.getPassType(6.1, 0, 8), TOLERANCE_WARNING_HIGH);
}

TEST(ToleranceParams, judgeByTheWidestLimits)
{
    constexpr double MAX = std::numeric_limits<double>::max();
    ToleranceParams const params = someParams();
    EXPECT_EQ(params.getPassType(-MAX, -MAX, MAX), TOLERANCE_WARNING_LOW);
    EXPECT_EQ(params.getPassType(0, -MAX, MAX), TOLERANCE_PASS);
    EXPECT_EQ(params.getPassType(MAX, -MAX, MAX), TOLERANCE_WARNING_HIGH);
}

TEST(ToleranceParamsInAStream, areReadBack)
{
    EXPECT_EQ(throughStream(someParams()), someParams());
}

TEST(ToleranceParamsInAStream, refuseDamageAndStayAsTheyWere)
{
    auto const block = [](double share, unsigned int version, unsigned int types) {
        return bytesOf([=](IO::OutStream &stream) {
            stream.beginBlock(4 + 8 + types * (4 + 4 + 1), version);
            stream.writeString(QString());
            stream.writeDouble(share);
            for (unsigned int i = 0; i < types; ++i) {
                stream.writeString(QString());
                stream.writeColor(Color());
                stream.writeBool(true);
            }
            stream.endBlock();
        });
    };
    ToleranceParams params = someParams();
    EXPECT_EQ(loadError(block(0.1, 2, TYPES), &params), QStringLiteral("wrong block version"));
    EXPECT_EQ(loadError(block(0.6, 1, TYPES), &params),
              QStringLiteral("value 0.6 of 'warning_share' in a colour scale is out of range"));
    EXPECT_NE(loadError(block(std::nan(""), 1, TYPES), &params), QString());
    EXPECT_NE(loadError(block(0.1, 1, TYPES - 1), &params), QString());
    EXPECT_EQ(params, someParams());
    EXPECT_EQ(loadError(block(0.1, 1, TYPES), &params), QString());
    EXPECT_EQ(params.getWarningShare(), 0.1);
}

TEST(ToleranceParameters, haveKeysOfTheirOwn)
{
    ToleranceParams params = someParams();
    QString const text = params.getParameterString();
    EXPECT_TRUE(text.startsWith(QStringLiteral("tolerance_title = \"gap \\qleft\\q\"\n"
                                               "tolerance_warning_share = 0.25\n"
                                               "tolerance_fail_low_text = \"type 0\"\n"
                                               "tolerance_fail_low_color = #00020304\n"
                                               "tolerance_fail_low_color_valid = true\n"
                                               "tolerance_warning_low_text = \"type 1\"\n")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("tolerance_warning_high_color_valid = false\n")));
}

TEST(ToleranceParameters, areConsumedByReading)
{
    QString parameters = QStringLiteral("show_tolerances = true\n") + someParams().getParameterString();
    ToleranceParams params;
    params.createFromParameterString(parameters);
    EXPECT_EQ(params, someParams());
    EXPECT_EQ(parameters, QStringLiteral("show_tolerances = true\n"));
}

TEST(ToleranceParameters, leaveAloneWhatHasNone)
{
    QString parameters = QStringLiteral("tolerance_title = \"new\"\n");
    ToleranceParams params = someParams();
    params.createFromParameterString(parameters);
    ToleranceParams expected = someParams();
    expected.setTitle(QStringLiteral("new"));
    EXPECT_EQ(params, expected);
}

TEST(ToleranceParameters, refuseBadValuesAndChangeNothing)
{
    for (char const *bad : {"tolerance_warning_share = 0.75\n", "tolerance_pass_color = green\n",
                            "tolerance_pass_color_valid = perhaps\n"}) {
        QString parameters = QStringLiteral("tolerance_title = \"new\"\n") + QString::fromLatin1(bad);
        QString const before = parameters;
        ToleranceParams params = someParams();
        EXPECT_THROW(params.createFromParameterString(parameters), ParamError) << bad;
        EXPECT_EQ(params, someParams());
        EXPECT_EQ(parameters, before);
    }
}

} // namespace
} // namespace Zem::Legend2
