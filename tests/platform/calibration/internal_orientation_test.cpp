// What a calibration finds out about the inside of a camera, and its stream form.
#include <ZemInternalOrientation.h>

#include <ZemStream.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace Cal {
namespace {

InternalOrientation orientation()
{
    InternalOrientation made;
    made.setImageDistance({1, 2});
    made.setPrincipalPoint({3, 4});
    made.setRadialDistortion(5, 6, 7);
    made.setTangentialDistortion(8, 9);
    return made;
}

std::string stored(InternalOrientation const &orientation)
{
    std::ostringstream output;
    Zem::IO::OutStream stream(&output, QStringLiteral("Figure"), 1);
    orientation.save(&stream);
    stream.close();
    return output.str();
}

void load(InternalOrientation &orientation, std::string const &bytes)
{
    std::istringstream input(bytes);
    Zem::IO::InStream stream(&input);
    orientation.load(&stream);
}

TEST(InternalOrientation, isEmptyAtFirst)
{
    InternalOrientation const empty;

    EXPECT_EQ(empty.getImageDistance(), Zem::BaVec2d<double>(0, 0));
    EXPECT_EQ(empty.getPrincipalPoint(), Zem::BaVec2d<double>(0, 0));
    EXPECT_EQ(empty.getRadialDistortion(), (std::array<double, 3>{0, 0, 0}));
    EXPECT_EQ(empty.getTangentialDistortion(), (std::array<double, 2>{0, 0}));
}

TEST(InternalOrientation, isReadAsItWasWritten)
{
    InternalOrientation read;

    load(read, stored(orientation()));

    EXPECT_EQ(read, orientation());
}

TEST(InternalOrientation, isStoredInOneBlockInOrder)
{
    std::istringstream input(stored(orientation()));
    Zem::IO::InStream stream(&input);
    stream.openBlock();
    EXPECT_EQ(stream.getBlockVersion(), 1U);
    EXPECT_EQ(stream.getBytesLeft(), 72U);
    for (double expected = 1; expected <= 9; ++expected) {
        double number = 0;
        stream.readDouble(&number);
        EXPECT_EQ(number, expected);
    }
    stream.closeBlock();
}

TEST(InternalOrientation, keepsNumbersThatAreNone)
{
    InternalOrientation damaged;
    damaged.setRadialDistortion(std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(), 0);
    InternalOrientation read;

    load(read, stored(damaged));

    EXPECT_TRUE(std::isnan(read.getRadialDistortion()[0]));
    EXPECT_TRUE(std::isinf(read.getRadialDistortion()[1]));
}

TEST(InternalOrientation, isRefusedAfterEveryTruncationAndChangesNothing)
{
    std::string const bytes = stored(InternalOrientation());
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        InternalOrientation read = orientation();
        EXPECT_THROW(load(read, bytes.substr(0, length)), Zem::IO::StreamException) << length;
        EXPECT_EQ(read, orientation());
    }
}

TEST(InternalOrientation, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 2U}) {
        std::ostringstream output;
        Zem::IO::OutStream stream(&output, QStringLiteral("Figure"), 1);
        stream.beginBlock(72, version);
        for (int i = 0; i < 9; ++i)
            stream.writeDouble(1.0);
        stream.endBlock();
        stream.close();

        InternalOrientation read = orientation();
        EXPECT_THROW(load(read, output.str()), Zem::IO::StreamException);
        EXPECT_EQ(read, orientation());
    }
}

} // namespace
} // namespace Cal
