// block_damage.h: streams with damaged blocks, whose checksums are right all the same.
#pragma once

#include <BlockCrafter.h>

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace Zem::Fig2 {

inline std::uint32_t numberAt(std::string const &bytes, std::size_t place)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + place, sizeof number);
    return number;
}

/// Where each block begins.
inline std::vector<std::size_t> blockPlaces(std::string const &bytes)
{
    std::vector<std::size_t> places;
    for (std::size_t place = Support::streamOf([](IO::OutStream &) {}).size(); place + 12 <= bytes.size();
         place += 12 + numberAt(bytes, place))
        places.push_back(place);
    return places;
}

/// Makes the checksum of the block right again, so that the damage reaches the readers of the elements.
inline void repairChecksum(std::string &bytes, std::size_t block)
{
    std::size_t const size = numberAt(bytes, block);
    auto const *checked = reinterpret_cast<Bytef const *>(bytes.data() + block + 4);
    auto const checksum = static_cast<std::uint32_t>(crc32(0, checked, static_cast<uInt>(size + 4)));
    std::memcpy(bytes.data() + block + 8 + size, &checksum, sizeof checksum);
}

/// One to three bytes of one block: mostly of its payload, sometimes of its version.
inline void damageBlock(std::string &bytes, std::size_t block, std::mt19937 &random)
{
    std::size_t const size = numberAt(bytes, block);
    for (std::size_t k = 0, count = 1 + random() % 3; k < count; ++k) {
        std::size_t const place = random() % 8 == 0 ? 4 + random() % 4 : 8 + random() % size;
        static constexpr unsigned char EXTREMES[] = {0x00, 0x01, 0x02, 0x7f, 0x80, 0xff};
        auto const value = random() % 2 == 0 ? static_cast<unsigned char>(random()) : EXTREMES[random() % 6];
        bytes[block + place] = static_cast<char>(value);
    }
    repairChecksum(bytes, block);
}

} // namespace Zem::Fig2
