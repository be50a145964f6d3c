#include "BlockCrafter.h"

#include <zlib.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <sstream>

namespace Zem::Support {

namespace {

std::string littleEndian(std::uint64_t value, int bytes)
{
    std::string result;
    for (int i = 0; i < bytes; ++i)
        result += static_cast<char>(value >> (8 * i) & 0xffU);
    return result;
}

std::string checksum(std::string const &bytes)
{
    auto const *data = reinterpret_cast<Bytef const *>(bytes.data());
    return littleEndian(crc32(0, data, static_cast<uInt>(bytes.size())), 4);
}

std::size_t headerSize()
{
    static std::size_t const size = streamOf([](IO::OutStream &) {}).size();
    return size;
}

} // namespace

Payload &Payload::b(bool value)
{
    bytes_ += static_cast<char>(value ? 1 : 0);
    return *this;
}

Payload &Payload::i(int value)
{
    bytes_ += littleEndian(static_cast<std::uint32_t>(value), 4);
    return *this;
}

Payload &Payload::u(unsigned int value)
{
    bytes_ += littleEndian(value, 4);
    return *this;
}

Payload &Payload::d(double value)
{
    bytes_ += littleEndian(std::bit_cast<std::uint64_t>(value), 8);
    return *this;
}

Payload &Payload::v(double x, double y)
{
    return d(x).d(y);
}

Payload &Payload::c(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha)
{
    for (unsigned char channel : {red, green, blue, alpha})
        bytes_ += static_cast<char>(channel);
    return *this;
}

Payload &Payload::s(std::string const &utf8)
{
    bytes_ += littleEndian(utf8.size(), 4) + utf8;
    return *this;
}

BlockCrafter::BlockCrafter() : bytes_(streamOf([](IO::OutStream &) {}))
{
}

BlockCrafter &BlockCrafter::block(unsigned int version, Payload const &payload)
{
    std::string const checked = littleEndian(version, 4) + payload.bytes();
    bytes_ += littleEndian(payload.bytes().size(), 4) + checked + checksum(checked);
    return *this;
}

BlockCrafter &BlockCrafter::add(std::function<void(IO::OutStream &)> const &blocks)
{
    bytes_ += streamOf(blocks).substr(headerSize());
    return *this;
}

std::string streamOf(std::function<void(IO::OutStream &)> const &blocks)
{
    std::ostringstream output;
    IO::OutStream stream(&output, QStringLiteral("Figure"), 1);
    blocks(stream);
    stream.close();
    return output.str();
}

void readFrom(std::string const &bytes, std::function<void(IO::InStream &)> const &read)
{
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    read(stream);
}

std::string blocksOf(std::string const &bytes)
{
    std::string result;
    auto const numberAt = [&bytes](std::size_t place) {
        std::uint32_t number = 0;
        std::memcpy(&number, bytes.data() + place, 4);
        return number;
    };
    for (std::size_t place = headerSize(); place + 8 <= bytes.size(); place += 12 + numberAt(place))
        result += std::to_string(numberAt(place + 4)) + ":" + std::to_string(numberAt(place)) + " ";
    return result;
}

} // namespace Zem::Support
