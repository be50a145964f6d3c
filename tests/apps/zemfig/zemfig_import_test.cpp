#include "CommandRun.h"

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

TEST(ZemfigImport, tellsWhatItTookIn)
{
    Workplace const place;
    place.write("data.csv", "force [kN];name\n1,5;a\n2,5;b\n3,5;c\n");

    CommandResult const result = place.zemfig({"import", "data.csv", "--project", "test.zem"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output, "data.csv: 3 stages, 6 values of 2 tokens, 2 tokens changed\n");
}

TEST(ZemfigImport, leavesNoProjectBehindABadFile)
{
    Workplace const place;
    place.write("good.csv", "a\n1\n");
    place.write("ragged.csv", "a,b\n1,2\n3\n4,5\n");

    CommandResult const result = place.zemfig({"import", "good.csv", "ragged.csv", "--project", "test.zem"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_NE(result.errors.find("ragged.csv:3"), std::string::npos) << result.errors;
    EXPECT_FALSE(place.exists("test.zem"));
}

TEST(ZemfigImport, letsItsOptionsOverrideWhatIsDetected)
{
    Workplace const place;
    place.write("data.csv", "1;2\n3;4\n");

    CommandResult const result = place.zemfig(
        {"import", "data.csv", "--project", "p.zem", "--header-row", "false", "--prefix", "x.", "--json"});

    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_NE(result.output.find("\"x.column1\""), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("\"stages\": 2"), std::string::npos) << result.output;
}

TEST(ZemfigImport, refusesAnOptionThatMakesNoSense)
{
    Workplace const place;
    place.write("data.csv", "1;2\n3;4\n");

    CommandResult const result =
        place.zemfig({"import", "data.csv", "--project", "p.zem", "--delimiter", "hyphen"});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_NE(result.errors.find("hyphen"), std::string::npos) << result.errors;
}

} // namespace
} // namespace Zem::Support
