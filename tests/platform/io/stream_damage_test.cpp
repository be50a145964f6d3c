#include "stream_bytes.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <random>

using namespace Zem;
using namespace Zem::IO;
using namespace Zem::IO::Test;

namespace {

std::string sampleBytes()
{
    return bytesOf([](OutStream &stream) {
        QString const text = QStringLiteral("Größe \u20ac");
        stream.beginBlock(1 + 4 + Stream::sizeOf(text), 2);
        stream.writeBool(true);
        stream.writeInt(-5);
        stream.writeString(text);
        stream.endBlock();
        stream.beginBlock(8 + 4, 1);
        stream.writeDouble(2.5);
        stream.writeColor(Color(1, 2, 3));
        stream.endBlock();
    });
}

/// False when opening fails, true when everything was read and is as written. Throws StreamException.
bool readSample(std::string const &bytes)
{
    std::istringstream source(bytes);
    InStream stream(&source);
    if (!stream.isInit()) {
        return false;
    }
    bool truth = false;
    int number = 0;
    QString text;
    stream.openBlock();
    stream.readBool(&truth);
    stream.readInt(&number);
    stream.readString(&text);
    stream.closeBlock();
    double value = 0;
    Color color;
    stream.openBlock();
    stream.readDouble(&value);
    stream.readColor(&color);
    stream.closeBlock();
    EXPECT_TRUE(truth && number == -5 && text == QStringLiteral("Größe \u20ac") && value == 2.5);
    return true;
}

bool isRefused(std::string const &bytes)
{
    try {
        return !readSample(bytes);
    } catch (StreamException const &) {
        return true;
    }
}

/// The error of reading a block with this payload, whose frame and checksum are right.
QString payloadError(std::string const &payload, std::function<void(InStream &)> const &read)
{
    auto const size = static_cast<unsigned int>(payload.size());
    std::string const bytes = bytesOfBlock(size, [&](OutStream &stream) { stream.writeData(payload.data(), size); });
    return streamError([&] { readBlock(bytes, read); });
}

QString textError(std::string const &payload)
{
    return payloadError(payload, [](InStream &stream) {
        QString text;
        stream.readString(&text);
    });
}

/// A string of these bytes with its length in front.
std::string stringPayload(std::string const &bytes)
{
    std::string length;
    for (unsigned int shift = 0; shift < 32; shift += 8) {
        length += static_cast<char>(bytes.size() >> shift & 0xff);
    }
    return length + bytes;
}

} // namespace

TEST(DamagedStream, isWholeWithoutDamage)
{
    EXPECT_TRUE(readSample(sampleBytes()));
}

TEST(DamagedStream, isRefusedWhereverItIsCutOff)
{
    std::string const bytes = sampleBytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_TRUE(isRefused(bytes.substr(0, size))) << size;
    }
}

TEST(DamagedStream, isRefusedForEverySingleFlippedBit)
{
    std::string const bytes = sampleBytes();
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        std::string damaged = bytes;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_TRUE(isRefused(damaged)) << bit;
    }
}

TEST(DamagedStream, loadsOrThrowsForManyDamagedBytes)
{
    std::string const bytes = sampleBytes();
    std::mt19937 random(20240501);
    for (int i = 0; i < 20000; ++i) {
        std::string damaged = bytes;
        for (int j = 0; j < 3; ++j) {
            damaged[random() % damaged.size()] = static_cast<char>(random() & 0xff);
        }
        if (damaged != bytes) {
            EXPECT_TRUE(isRefused(damaged)) << i;
        }
    }
}

TEST(DamagedStream, namesFileBlockAndFaultOfABadChecksum)
{
    std::string bytes = sampleBytes();
    bytes[HEADER_SIZE + 9] ^= 1;
    EXPECT_EQ(streamError([&] { readSample(bytes); }),
              QStringLiteral("(stream): block 1: bad checksum, the file is damaged"));
}

TEST(DamagedStream, refusesABlockPastTheEndWithoutTakingItsMemory)
{
    std::string bytes = sampleBytes();
    bytes.replace(HEADER_SIZE, 4, "\xf0\xff\xff\xff");
    EXPECT_EQ(streamError([&] { readSample(bytes); }),
              QStringLiteral("(stream): block 1: the block reaches past the end of the file"));
}

TEST(DamagedStream, tellsTheEndFromACutBlock)
{
    std::istringstream empty(bytesOf([](OutStream &) {}));
    InStream stream(&empty);
    EXPECT_EQ(streamError([&] { stream.openBlock(); }),
              QStringLiteral("(stream): block 1: the file has no further block"));

    std::istringstream cut(bytesOf([](OutStream &) {}) + "abc");
    InStream cutStream(&cut);
    EXPECT_EQ(streamError([&] { cutStream.openBlock(); }),
              QStringLiteral("(stream): block 1: the file ends inside a block"));
}

TEST(DamagedStream, refusesAValuePastTheEndOfItsBlock)
{
    QString const error = payloadError("abc", [](InStream &stream) {
        unsigned int value = 0;
        stream.readUInt(&value);
    });
    EXPECT_EQ(error, QStringLiteral("(stream): block 1: a value reaches past the end of the block"));
}

TEST(DamagedStream, refusesATextLongerThanItsBlock)
{
    EXPECT_EQ(textError(std::string("\xff\xff\xff\xff", 4) + "abc"),
              QStringLiteral("(stream): block 1: a text reaches past the end of the block"));
}

TEST(DamagedStream, refusesTextsOfMoreThan16MiB)
{
    EXPECT_EQ(textError(stringPayload(std::string(16777216, 'a'))), QString());
    EXPECT_EQ(textError(stringPayload(std::string(16777217, 'a'))),
              QStringLiteral("(stream): block 1: a text has more than 16 MiB"));
}

TEST(DamagedStream, refusesTextsThatAreNoUtf8)
{
    for (char const *bytes :
         {"\xff", "\xc3", "\xe2\x82", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80", "ab\xf0\x9f\x98"}) {
        EXPECT_EQ(textError(stringPayload(bytes)), QStringLiteral("(stream): block 1: a text is no valid UTF-8"));
    }
}

TEST(DamagedStream, refusesATruthValueThatIsNeitherZeroNorOne)
{
    bool truth = true;
    QString const error = payloadError("\x02", [&](InStream &stream) { stream.readBool(&truth); });
    EXPECT_EQ(error, QStringLiteral("(stream): block 1: a truth value is neither 0 nor 1"));
    EXPECT_TRUE(truth);
}

TEST(DamagedStream, refusesAValueOutsideABlock)
{
    std::istringstream source(sampleBytes());
    InStream stream(&source);
    unsigned int value = 0;
    EXPECT_EQ(streamError([&] { stream.readUInt(&value); }),
              QStringLiteral("(stream): block 0: a value was read outside a block"));
}

TEST(DamagedStream, isFoundInAStreamThatThrowsByItself)
{
    std::istringstream source(sampleBytes().substr(0, 80));
    source.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);
    InStream stream(&source);
    EXPECT_THROW(stream.openBlock(), StreamException);
}

TEST(InStreamOpening, tellsWhyAFileCannotBeRead)
{
    InStream const missing(QStringLiteral("/nonexistent/a.fig"));
    EXPECT_FALSE(missing.isInit());
    EXPECT_EQ(missing.getError(), QStringLiteral("/nonexistent/a.fig: cannot be opened for reading"));
}

TEST(InStreamOpening, tellsThatAFileIsNoBlockStream)
{
    QTemporaryDir const folder;
    QString const name = folder.filePath(QStringLiteral("note.txt"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(200, 'x'));
    file.close();

    InStream stream(name);
    EXPECT_FALSE(stream.isInit());
    EXPECT_EQ(stream.getError(), name + QStringLiteral(": is no block stream"));
    EXPECT_EQ(streamError([&] { stream.openBlock(); }), stream.getError());
}

TEST(InStreamOpening, refusesATypeThatFillsTheHeaderWithoutAnEnd)
{
    std::string header = bytesOf([](OutStream &) {}).substr(0, HEADER_SIZE - 4);
    header.replace(4, 52, 52, 'x');
    std::istringstream source(header + checksumOf(header));
    InStream const stream(&source);
    EXPECT_EQ(stream.getError(), QStringLiteral("(stream): the header is damaged"));
}

TEST(InStreamOpening, refusesAFolder)
{
    QTemporaryDir const folder;
    InStream const stream(folder.path());
    EXPECT_FALSE(stream.isInit());
}
