// Feeds a fuzz target with mutations of seed files: PROGRAM ROUNDS FILE... The same call does the same again.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size);

namespace {

std::string readFile(char const *name)
{
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Changes, removes, repeats or inserts a few bytes.
void mutate(std::string *bytes, std::mt19937 *random)
{
    unsigned int const changes = 1 + (*random)() % 4;
    for (unsigned int i = 0; i < changes && !bytes->empty(); ++i) {
        std::size_t const place = (*random)() % bytes->size();
        std::size_t const length = 1 + (*random)() % 8;
        switch ((*random)() % 4) {
        case 0:
            (*bytes)[place] = static_cast<char>((*random)());
            break;
        case 1:
            bytes->erase(place, length);
            break;
        case 2:
            bytes->insert(place, bytes->substr(place, length));
            break;
        default:
            bytes->insert(place, 1, static_cast<char>((*random)()));
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s ROUNDS SEED...\n", argv[0]);
        return 1;
    }
    std::vector<std::string> seeds;
    for (int i = 2; i < argc; ++i)
        seeds.push_back(readFile(argv[i]));
    std::mt19937 random(1);
    long const rounds = std::atol(argv[1]);
    for (long round = 0; round < rounds; ++round) {
        std::string bytes = seeds[random() % seeds.size()];
        mutate(&bytes, &random);
        LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const *>(bytes.data()), bytes.size());
        // Told on the way too, for runs that are ended by the clock.
        if ((round + 1) % 1000 == 0 || round + 1 == rounds) {
            std::printf("%ld rounds\n", round + 1);
            std::fflush(stdout);
        }
    }
    return 0;
}
