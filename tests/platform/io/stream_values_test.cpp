#include "stream_bytes.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>

using namespace Zem;
using namespace Zem::IO;
using namespace Zem::IO::Test;

namespace {

QString fromUnits(std::initializer_list<char16_t> units)
{
    return QString::fromUtf16(units.begin(), static_cast<qsizetype>(units.size()));
}

std::vector<QString> manyTexts()
{
    return {QString(),
            QStringLiteral("plain"),
            QStringLiteral("a \"quoted\"\nline\t"),
            fromUnits({u'a', 0x0000, u'b'}),
            fromUnits({0x00e4, 0x007f, 0x0080, 0x07ff, 0x0800}),
            fromUnits({0xfeff, u'x'}),
            fromUnits({0xffff, 0xfffe}),
            fromUnits({0xd83d, 0xde00}),
            fromUnits({0xdbff, 0xdfff}),
            QString(100000, QChar(0x20ac))};
}

double throughStream(double value)
{
    double read = 0;
    readBlock(bytesOfBlock(8, [&](OutStream &stream) { stream.writeDouble(value); }),
              [&](InStream &stream) { stream.readDouble(&read); });
    return read;
}

QString throughStream(QString const &text)
{
    QString read = QStringLiteral("before");
    readBlock(bytesOfBlock(Stream::sizeOf(text), [&](OutStream &stream) { stream.writeString(text); }),
              [&](InStream &stream) { stream.readString(&read); });
    return read;
}

} // namespace

TEST(BlockStream, keepsTheBitsOfEveryDouble)
{
    using Limits = std::numeric_limits<double>;
    for (double value : {0.0, -0.0, 0.1, 1.0 / 3.0, Limits::max(), Limits::lowest(), Limits::denorm_min(),
                         Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(throughStream(value)), std::bit_cast<std::uint64_t>(value)) << value;
    }
}

TEST(BlockStream, keepsIntegersAtTheEndsOfTheirRange)
{
    int low = 0;
    int high = 0;
    unsigned int top = 0;
    readBlock(bytesOfBlock(12,
                           [](OutStream &stream) {
                               stream.writeInt(std::numeric_limits<int>::min());
                               stream.writeInt(std::numeric_limits<int>::max());
                               stream.writeUInt(std::numeric_limits<unsigned int>::max());
                           }),
              [&](InStream &stream) {
                  stream.readInt(&low);
                  stream.readInt(&high);
                  stream.readUInt(&top);
              });
    EXPECT_EQ(low, -2147483647 - 1);
    EXPECT_EQ(high, 2147483647);
    EXPECT_EQ(top, 4294967295u);
}

TEST(BlockStream, keepsEveryText)
{
    for (QString const &text : manyTexts()) {
        EXPECT_EQ(throughStream(text), text) << text.left(20).toStdString();
    }
}

TEST(BlockStream, declaresExactlyTheSizeOfEveryText)
{
    // endBlock() compares sizeOf() with what was written, see throughStream(); here by hand.
    EXPECT_EQ(Stream::sizeOf(QString()), 4u);
    EXPECT_EQ(Stream::sizeOf(QStringLiteral("abc")), 7u);
    EXPECT_EQ(Stream::sizeOf(fromUnits({0x00e4})), 6u);
    EXPECT_EQ(Stream::sizeOf(fromUnits({0x20ac})), 7u);
    EXPECT_EQ(Stream::sizeOf(fromUnits({0xd83d, 0xde00})), 8u);
    EXPECT_EQ(Stream::sizeOf(fromUnits({0xd83d})), 7u);
}

TEST(BlockStream, writesAnUnpairedSurrogateAsReplacementCharacter)
{
    EXPECT_EQ(throughStream(fromUnits({u'a', 0xd83d})), fromUnits({u'a', 0xfffd}));
    EXPECT_EQ(throughStream(fromUnits({0xde00, u'b'})), fromUnits({0xfffd, u'b'}));
    EXPECT_EQ(throughStream(fromUnits({0xd83d, 0xd83d, 0xde00})), fromUnits({0xfffd, 0xd83d, 0xde00}));
}

TEST(BlockStream, keepsColoursTruthValuesAndRawBytes)
{
    Color color;
    bool truth = false;
    unsigned char byte = 0;
    char data[3] = {};
    readBlock(bytesOfBlock(9,
                           [](OutStream &stream) {
                               stream.writeColor(Color(1, 2, 3, 4));
                               stream.writeBool(true);
                               stream.writeData("\xff", 1);
                               stream.writeData("xyz", 3);
                           }),
              [&](InStream &stream) {
                  stream.readColor(&color);
                  stream.readBool(&truth);
                  stream.readByte(&byte);
                  stream.readData(data, 3);
              });
    EXPECT_EQ(color, Color(1, 2, 3, 4));
    EXPECT_TRUE(truth);
    EXPECT_EQ(byte, 255);
    EXPECT_EQ(std::string(data, 3), "xyz");
}

TEST(BlockStream, keepsVectorsAndLines)
{
    BaVec2d<double> plane;
    BaVec3d<double> space;
    Line2d line;
    readBlock(bytesOfBlock(16 + 24 + 32,
                           [](OutStream &stream) {
                               writeVec2d(&stream, {1, -2});
                               writeVec3d(&stream, {3, 4, 5});
                               writeLine2d(&stream, Line2d({6, 7}, {8, 9}));
                           }),
              [&](InStream &stream) {
                  readVec2d(&stream, &plane);
                  readVec3d(&stream, &space);
                  readLine2d(&stream, &line);
              });
    EXPECT_EQ(plane, (BaVec2d<double>{1, -2}));
    EXPECT_EQ(space, (BaVec3d<double>{3, 4, 5}));
    EXPECT_EQ(line, Line2d({6, 7}, {8, 9}));
}

TEST(BlockStream, isLittleEndianWithChecksumOfVersionAndPayload)
{
    std::string const bytes = bytesOf([](OutStream &stream) {
        stream.beginBlock(5, 0x0102);
        stream.writeUInt(0x04030201);
        stream.writeBool(true);
        stream.endBlock();
    });

    std::string const frame("\x05\x00\x00\x00\x02\x01\x00\x00\x01\x02\x03\x04\x01", 13);
    EXPECT_EQ(bytes.substr(HEADER_SIZE, 13), frame);
    EXPECT_EQ(bytes.substr(HEADER_SIZE + 13), checksumOf(frame.substr(4))) << "of the bytes behind the size";
}

TEST(BlockStreamHeader, tellsTypeAndVersion)
{
    std::istringstream source(bytesOf([](OutStream &) {}));
    InStream stream(&source);

    ASSERT_TRUE(stream.isInit());
    EXPECT_EQ(stream.getFileType(), FILE_TYPE);
    EXPECT_TRUE(stream.isOfType(FILE_TYPE));
    EXPECT_FALSE(stream.isOfType(QStringLiteral("figure")));
    EXPECT_EQ(stream.getVersion(), FILE_VERSION);
}

TEST(BlockStreamHeader, isRecognisedFromTheFirstBytes)
{
    std::string const bytes = bytesOf([](OutStream &) {});
    std::vector<char> const head(bytes.begin(), bytes.end());

    EXPECT_TRUE(Stream::isOfFileType(head, FILE_TYPE));
    EXPECT_FALSE(Stream::isOfFileType(head, QStringLiteral("Figur")));
    EXPECT_FALSE(Stream::isOfFileType(head, QStringLiteral("Figure2")));
    EXPECT_FALSE(Stream::isOfFileType(head, QString()));
    EXPECT_FALSE(Stream::isOfFileType({}, FILE_TYPE));
    EXPECT_FALSE(Stream::isOfFileType(std::vector<char>(64, 'x'), FILE_TYPE));
    EXPECT_NE(bytes.substr(0, 64).find("Figure"), std::string::npos);
}

TEST(BlockStreamHeader, takesOnlyAPrintableWordOfLimitedLength)
{
    std::ostringstream bytes;
    EXPECT_NO_THROW(OutStream(&bytes, QString(51, u'A'), 1));
    EXPECT_THROW(OutStream(&bytes, QString(52, u'A'), 1), ProgError);
    EXPECT_THROW(OutStream(&bytes, QString(), 1), ProgError);
    EXPECT_THROW(OutStream(&bytes, QStringLiteral("a\nb"), 1), ProgError);
}

TEST(BlockStream, givesBlocksInOrderWithTheirVersions)
{
    std::istringstream source(bytesOf([](OutStream &stream) {
        for (unsigned int version = 1; version <= 3; ++version) {
            stream.beginBlock(4, version);
            stream.writeUInt(version * 10);
            stream.endBlock();
        }
    }));
    InStream stream(&source);
    for (unsigned int version = 1; version <= 3; ++version) {
        unsigned int value = 0;
        stream.openBlock();
        EXPECT_EQ(stream.getBlockVersion(), version);
        EXPECT_EQ(stream.getBytesLeft(), 4u);
        stream.readUInt(&value);
        EXPECT_EQ(value, version * 10);
        EXPECT_EQ(stream.getBytesLeft(), 0u);
        stream.closeBlock();
    }
}

TEST(BlockStream, skipsWhatAReaderLeavesUnread)
{
    std::istringstream source(bytesOf([](OutStream &stream) {
        for (unsigned int i = 0; i < 2; ++i) {
            stream.beginBlock(8, 1);
            stream.writeUInt(i);
            stream.writeUInt(99);
            stream.endBlock();
        }
    }));
    InStream stream(&source);
    stream.openBlock();
    stream.closeBlock();
    stream.openBlock();
    unsigned int value = 0;
    stream.readUInt(&value);
    EXPECT_EQ(value, 1u);
}

TEST(BlockStream, keepsABlockLargerThanAllBuffers)
{
    std::string const data(5000001, 'q');
    std::string read(data.size(), ' ');
    unsigned int const size = static_cast<unsigned int>(data.size());
    readBlock(bytesOfBlock(size + 5,
                           [&](OutStream &stream) {
                               stream.writeData(data.data(), size);
                               stream.writeString(QStringLiteral("e"));
                           }),
              [&](InStream &stream) {
                  QString end;
                  stream.readData(read.data(), size);
                  stream.readString(&end);
                  EXPECT_EQ(end, QStringLiteral("e"));
              });
    EXPECT_TRUE(read == data);
}

TEST(BlockStream, leavesTheStreamUnderneathBehindTheBlock)
{
    std::string bytes = bytesOfBlock(4, [](OutStream &stream) { stream.writeUInt(1); });
    std::istringstream source(bytes + "rest");
    InStream stream(&source);
    stream.openBlock();
    stream.closeBlock();
    std::string rest;
    *stream.getStream() >> rest;
    EXPECT_EQ(rest, "rest");
}
