#include "stream_bytes.h"

#include <gtest/gtest.h>

using namespace Zem;
using namespace Zem::IO;
using namespace Zem::IO::Test;

namespace {

struct Writer
{
    std::ostringstream bytes;
    OutStream stream{&bytes, FILE_TYPE, FILE_VERSION};
};

} // namespace

TEST(OutStreamMisuse, refusesABlockInABlock)
{
    Writer writer;
    writer.stream.beginBlock(4, 1);
    EXPECT_THROW(writer.stream.beginBlock(4, 1), ProgError);
}

TEST(OutStreamMisuse, refusesAValueOutsideABlock)
{
    Writer writer;
    EXPECT_THROW(writer.stream.writeUInt(1), ProgError);
}

TEST(OutStreamMisuse, refusesToEndABlockThatIsNotOpen)
{
    Writer writer;
    EXPECT_THROW(writer.stream.endBlock(), ProgError);
}

TEST(OutStreamMisuse, refusesToCloseInsideABlock)
{
    Writer writer;
    writer.stream.beginBlock(0, 1);
    EXPECT_THROW(writer.stream.close(), ProgError);
}

TEST(OutStreamMisuse, findsABlockThatIsSmallerOrLargerThanDeclared)
{
    for (unsigned int declared : {3u, 5u}) {
        Writer writer;
        writer.stream.beginBlock(declared, 1);
        writer.stream.writeUInt(1);
        EXPECT_THROW(writer.stream.endBlock(), ProgError) << declared;
    }
}

TEST(OutStreamMisuse, neverCompletesAStreamWithAMistakeInIt)
{
    Writer writer;
    writer.stream.beginBlock(3, 1);
    writer.stream.writeUInt(1);
    EXPECT_THROW(writer.stream.endBlock(), ProgError);
    EXPECT_THROW(writer.stream.close(), StreamException);
    EXPECT_TRUE(writer.bytes.str().empty());
}

TEST(OutStreamMisuse, refusesABlockAfterClose)
{
    Writer writer;
    writer.stream.close();
    EXPECT_NO_THROW(writer.stream.close());
    EXPECT_THROW(writer.stream.beginBlock(0, 1), ProgError);
}

TEST(OutStreamMisuse, refusesANullStream)
{
    EXPECT_THROW(OutStream(static_cast<std::ostream *>(nullptr), FILE_TYPE, 1), ProgError);
    EXPECT_THROW(InStream(static_cast<std::istream *>(nullptr)), ProgError);
}

TEST(InStreamMisuse, refusesToEnterABlockTwiceAndToLeaveItTwice)
{
    std::istringstream source(bytesOfBlock(0, [](OutStream &) {}));
    InStream stream(&source);
    EXPECT_THROW(stream.closeBlock(), ProgError);
    stream.openBlock();
    EXPECT_THROW(stream.openBlock(), ProgError);
    stream.closeBlock();
    EXPECT_THROW(stream.closeBlock(), ProgError);
}
