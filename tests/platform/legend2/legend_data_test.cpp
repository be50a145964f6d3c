#include "legend_forms_support.h"

#include <ZemLegendData.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Zem::Legend2 {
namespace {

using namespace Test;

constexpr double INF = std::numeric_limits<double>::infinity();

Data someData()
{
    Data data;
    data.setDynamicMinimum(-2.5);
    data.setDynamicMaximum(7.25);
    data.setAverage(1.5);
    data.setSigmaValue(0.125);
    return data;
}

TEST(LegendData, runsFromZeroToOneAtFirst)
{
    Data const data;
    EXPECT_EQ(data.getDynamicMinimum(), 0.0);
    EXPECT_EQ(data.getDynamicMaximum(), 1.0);
    EXPECT_EQ(data.getAverage(), 0.0);
    EXPECT_EQ(data.getSigmaValue(), 0.0);
}

TEST(LegendData, differsInEveryValue)
{
    for (auto set : {&Data::setDynamicMinimum, &Data::setDynamicMaximum, &Data::setAverage, &Data::setSigmaValue}) {
        Data data = someData();
        (data.*set)(99.0);
        EXPECT_NE(data, someData());
    }
}

TEST(LegendData, keepsItsValuesInAStream)
{
    EXPECT_EQ(throughStream(someData()), someData());
}

TEST(LegendData, keepsWhatIsNotFiniteInAStream)
{
    Data data;
    data.setDynamicMinimum(-INF);
    data.setDynamicMaximum(std::nan(""));
    Data const read = throughStream(data);
    EXPECT_EQ(read.getDynamicMinimum(), -INF);
    EXPECT_TRUE(std::isnan(read.getDynamicMaximum()));
}

TEST(LegendData, isStoredAsFourNumbers)
{
    std::string const expected = bytesOf([](IO::OutStream &stream) {
        stream.beginBlock(32, 1);
        for (double number : {-2.5, 7.25, 1.5, 0.125})
            stream.writeDouble(number);
        stream.endBlock();
    });
    EXPECT_EQ(savedBytes(someData()), expected);
}

TEST(LegendData, refusesOtherVersionsAndShortBlocksAndStaysAsItWas)
{
    for (unsigned int version : {0u, 2u}) {
        std::string const bytes = bytesOf([&](IO::OutStream &stream) {
            stream.beginBlock(32, version);
            for (int i = 0; i < 4; ++i)
                stream.writeDouble(0.0);
            stream.endBlock();
        });
        Data data = someData();
        EXPECT_EQ(loadError(bytes, &data), QStringLiteral("wrong block version"));
        EXPECT_EQ(data, someData());
    }
    std::string const shortBlock = bytesOf([](IO::OutStream &stream) {
        stream.beginBlock(8, 1);
        stream.writeDouble(5.0);
        stream.endBlock();
    });
    Data data = someData();
    EXPECT_NE(loadError(shortBlock, &data), QString());
    EXPECT_EQ(data, someData());
}

TEST(LegendDataParameters, haveKeysOfTheirOwn)
{
    EXPECT_EQ(someData().getParameterString(),
              QStringLiteral("legend_data_minimum = -2.5\nlegend_data_maximum = 7.25\nlegend_data_average = 1.5\n"
                             "legend_data_sigma = 0.125\n"));
}

TEST(LegendDataParameters, areConsumedByReading)
{
    QString parameters = QStringLiteral("legend_data_mode = \"manual\"\n") + someData().getParameterString();
    Data data;
    data.createFromParameterString(parameters);
    EXPECT_EQ(data, someData());
    EXPECT_EQ(parameters, QStringLiteral("legend_data_mode = \"manual\"\n"));
}

TEST(LegendDataParameters, leaveAloneWhatHasNone)
{
    QString parameters = QStringLiteral("legend_data_average = 4\n");
    Data data = someData();
    data.createFromParameterString(parameters);
    Data expected = someData();
    expected.setAverage(4.0);
    EXPECT_EQ(data, expected);
}

TEST(LegendDataParameters, leaveOutWhatIsNotFinite)
{
    Data data = someData();
    data.setSigmaValue(INF);
    data.setAverage(std::nan(""));
    EXPECT_EQ(data.getParameterString(), QStringLiteral("legend_data_minimum = -2.5\nlegend_data_maximum = 7.25\n"));
}

TEST(LegendDataParameters, refuseWhatIsNoNumberAndChangeNothing)
{
    Data data = someData();
    QString parameters = QStringLiteral("legend_data_minimum = 1\nlegend_data_sigma = wide\n");
    QString const before = parameters;
    EXPECT_THROW(data.createFromParameterString(parameters), ParamError);
    EXPECT_EQ(data, someData());
    EXPECT_EQ(parameters, before);
}

TEST(LegendDataParameters, areReadInTheOlderForm)
{
    QString parameters = QStringLiteral("other=1;legend_data_minimum=-2.5;legend_data_maximum=7.25;"
                                        "legend_data_average=1.5;legend_data_sigma=0.125;");
    Data data;
    data.createFromV541ParameterString(parameters);
    EXPECT_EQ(data, someData());
    EXPECT_EQ(parameters, QStringLiteral("other=1;"));
}

} // namespace
} // namespace Zem::Legend2
