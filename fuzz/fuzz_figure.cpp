// A figure file loads or is refused. Checksums are repaired first, so that the damage reaches the elements.
#include <ZemFig2Figure.h>

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <sstream>

namespace {

constexpr std::size_t HEADER_SIZE = 64;

std::uint32_t numberAt(std::string const &bytes, std::size_t place)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + place, sizeof number);
    return number;
}

void repairChecksums(std::string *bytes)
{
    for (std::size_t place = HEADER_SIZE; place + 12 <= bytes->size();) {
        std::size_t const size = numberAt(*bytes, place);
        if (size > bytes->size() - place - 12)
            return;
        auto const *checked = reinterpret_cast<Bytef const *>(bytes->data() + place + 4);
        auto const sum = static_cast<std::uint32_t>(crc32(0, checked, static_cast<uInt>(size + 4)));
        std::memcpy(bytes->data() + place + 8 + size, &sum, sizeof sum);
        place += 12 + size;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string bytes(reinterpret_cast<char const *>(data), size);
    repairChecksums(&bytes);
    std::istringstream input(bytes);
    Zem::IO::InStream stream(&input);
    Zem::Fig2::Figure figure;
    try {
        if (stream.isInit())
            figure.load(&stream, -1, -1);
    } catch (Zem::IO::StreamException const &) {
        // Refused, as damaged files are.
    }
    return 0;
}
