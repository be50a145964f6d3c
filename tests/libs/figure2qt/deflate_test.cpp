#include <figqt_deflate.h>

#include <gtest/gtest.h>

#include <zlib.h>

#include <random>

namespace Zem::Fig2Qt {
namespace {

std::string inflated(std::string const &packed, std::size_t size)
{
    std::string bytes(size + 1, '\0');
    auto length = static_cast<uLongf>(bytes.size());
    EXPECT_EQ(uncompress(reinterpret_cast<Bytef *>(bytes.data()), &length,
                         reinterpret_cast<Bytef const *>(packed.data()), static_cast<uLong>(packed.size())),
              Z_OK);
    bytes.resize(length);
    return bytes;
}

/// Words strewn over noise.
std::string sample(std::size_t size)
{
    std::mt19937 engine(9);
    std::string bytes;
    while (bytes.size() < size)
        bytes += engine() % 3 == 0 ? std::to_string(engine()) : std::string("12.345 67.89 l\n");
    bytes.resize(size);
    return bytes;
}

TEST(Deflated, ComesBackWhateverItsSize)
{
    // A piece is 2^18 bytes.
    for (std::size_t const size : {std::size_t{0}, std::size_t{1}, std::size_t{1000}, std::size_t{1U << 18U} - 1,
                                   std::size_t{1U << 18U}, std::size_t{1U << 18U} + 1, std::size_t{1'000'000}}) {
        std::string const bytes = sample(size);
        EXPECT_EQ(inflated(deflated(bytes, 4), size), bytes) << size;
    }
}

TEST(Deflated, ComesBackWhenItIsNoise)
{
    std::mt19937 engine(1);
    std::string bytes(700'000, '\0');
    for (char &byte : bytes)
        byte = static_cast<char>(engine());

    std::string const packed = deflated(bytes, 3);
    EXPECT_EQ(inflated(packed, bytes.size()), bytes);
    EXPECT_LT(packed.size(), bytes.size() + 1000);
}

TEST(Deflated, IsHardlyLargerForItsPieces)
{
    std::string const bytes = sample(2'000'000);
    uLongf whole = compressBound(static_cast<uLong>(bytes.size()));
    std::string packed(whole, '\0');
    compress2(reinterpret_cast<Bytef *>(packed.data()), &whole, reinterpret_cast<Bytef const *>(bytes.data()),
              static_cast<uLong>(bytes.size()), 4);

    EXPECT_LT(static_cast<double>(deflated(bytes, 4).size()), 1.005 * static_cast<double>(whole));
}

} // namespace
} // namespace Zem::Fig2Qt
