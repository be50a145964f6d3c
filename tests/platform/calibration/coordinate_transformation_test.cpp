// From the full frame of a sensor to the picture that was grabbed.
#include <ZemCoordinateTransformation.h>

#include <ZemStream.h>

#include <gtest/gtest.h>

#include <sstream>

namespace FG {
namespace {

using Point = Zem::BaVec2d<double>;

std::string stored(CoordinateTransformation const &transformation)
{
    std::ostringstream output;
    Zem::IO::OutStream stream(&output, QStringLiteral("Figure"), 1);
    transformation.writeBlock(&stream);
    stream.close();
    return output.str();
}

CoordinateTransformation readBack(std::string const &bytes, CoordinateTransformation transformation = {})
{
    std::istringstream input(bytes);
    Zem::IO::InStream stream(&input);
    transformation.readBlock(&stream);
    return transformation;
}

TEST(ReducedFrame, isTheFullFrameAtFirst)
{
    EXPECT_EQ(CoordinateTransformation().computeReducedFrameCoordinates({12.5, -3}), Point(12.5, -3));
}

TEST(ReducedFrame, beginsAtTheCornerOfItsWindow)
{
    CoordinateTransformation const window({100, 50}, {1, 1});

    EXPECT_EQ(window.computeReducedFrameCoordinates({100, 50}), Point(0, 0));
    EXPECT_EQ(window.computeReducedFrameCoordinates({112.5, 47}), Point(12.5, -3));
}

TEST(ReducedFrame, putsPixelsTogetherWithoutAShift)
{
    CoordinateTransformation const binned({100, 50}, {0.5, 0.25});

    // The window's first 2 x 4 pixels are one of the picture: their middle is its middle.
    EXPECT_EQ(binned.computeReducedFrameCoordinates({101, 52}), Point(0.5, 0.5));
    EXPECT_EQ(binned.computeReducedFrameCoordinates({104, 58}), Point(2, 2));
}

TEST(ReducedFrame, isReadAsItWasWritten)
{
    CoordinateTransformation const binned({100, 50}, {0.5, 0.25});

    EXPECT_EQ(readBack(stored(binned)), binned);
}

TEST(ReducedFrame, isRefusedAfterEveryTruncationAndChangesNothing)
{
    CoordinateTransformation const before({1, 2}, {3, 4});
    std::string const bytes = stored(CoordinateTransformation({100, 50}, {0.5, 0.25}));
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        CoordinateTransformation transformation = before;
        std::istringstream input(bytes.substr(0, length));
        Zem::IO::InStream stream(&input);
        EXPECT_THROW(transformation.readBlock(&stream), Zem::IO::StreamException) << length;
        EXPECT_EQ(transformation, before);
    }
}

TEST(ReducedFrame, ofANewerBlockIsRefused)
{
    std::ostringstream output;
    Zem::IO::OutStream stream(&output, QStringLiteral("Figure"), 1);
    stream.beginBlock(8, 2);
    stream.writeDouble(1.0);
    stream.endBlock();
    stream.close();

    EXPECT_THROW(readBack(output.str()), Zem::IO::StreamException);
}

} // namespace
} // namespace FG
