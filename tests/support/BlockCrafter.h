// BlockCrafter.h: stream blocks of any version, written byte by byte.
#pragma once

#include <ZemStream.h>

#include <QtCore/QString>

#include <functional>
#include <string>

namespace Zem::Support {

/// The fields of a block, little endian, without any code of the product.
class Payload
{
public:
    Payload &b(bool value);
    Payload &i(int value);
    Payload &u(unsigned int value);
    Payload &d(double value);
    Payload &v(double x, double y);
    Payload &c(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha);
    Payload &s(std::string const &utf8);

    std::string const &bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// A stream of type "Figure" in memory, put together from crafted blocks and from what the product writes.
class BlockCrafter
{
public:
    BlockCrafter();

    BlockCrafter &block(unsigned int version, Payload const &payload);
    BlockCrafter &add(std::function<void(IO::OutStream &)> const &blocks);

    std::string const &bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// The bytes of a stream of type "Figure" that holds what `blocks` writes.
std::string streamOf(std::function<void(IO::OutStream &)> const &blocks);

/// Opens the bytes as a stream and hands it to `read`.
void readFrom(std::string const &bytes, std::function<void(IO::InStream &)> const &read);

/// Version and payload size of each block of a stream, as "10:93 2:20 ".
std::string blocksOf(std::string const &bytes);

} // namespace Zem::Support
