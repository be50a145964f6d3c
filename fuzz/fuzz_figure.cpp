// A figure file, also one of the older format, loads or is refused; one that loads can be updated, looked at and saved.
// Checksums are repaired first, so that the damage reaches the elements.
#include <ZemFig2Figure.h>
#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2Import.h>
#include <ZemFig2Template.h>
#include <ZemFig2TokenInterface.h>

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <sstream>
#include <vector>

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

/// Image labels of every type can be made, whose creators are the application's business.
class Creator : public Zem::Fig2::ImageLabelCreator
{
public:
    explicit Creator(Type_t type) : ImageLabelCreator(type) {}

    Zem::Fig2::ImageLabel *create() const override { return new Zem::Fig2::ImageDataObjectLabel; }
    QString getDisplayName() const override { return {}; }
};

void registerImageLabels()
{
    static std::vector<std::unique_ptr<Creator>> creators;
    for (unsigned int type = 0; creators.size() < Creator::NUMBER_OF_TYPES; ++type)
        creators.push_back(std::make_unique<Creator>(static_cast<Creator::Type_t>(type)));
}

/// Whatever was accepted must stand being used. A connector that no program can make ends the update with an error.
void use(Zem::Fig2::Figure *figure)
{
    Zem::Fig2::EmptyFigureTokenInterface const tokens;
    figure->setTokenInterface(&tokens);
    try {
        figure->update(Zem::StageIdentifier(1), true);
    } catch (Zem::ProgError const &) {
    }
    figure->getElementAt({10, 10});
    figure->toString();
    std::ostringstream output;
    Zem::IO::OutStream stream(&output, Zem::Fig2::Figure::FILE_TYPE_ID, 1);
    figure->save(&stream, -1, -1);
    stream.close();
    Zem::Fig2::Figure const copy(*figure);
    figure->setTokenInterface(nullptr);
}

std::unique_ptr<Zem::Fig2::Figure> read(Zem::IO::InStream *stream)
{
    if (Zem::Fig2::Import::canImportFile(stream))
        return std::unique_ptr<Zem::Fig2::Figure>(Zem::Fig2::Import::importTemplate(stream));
    auto figure = std::make_unique<Zem::Fig2::Figure>();
    figure->load(stream, -1, -1);
    return figure;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    registerImageLabels();
    std::string bytes(reinterpret_cast<char const *>(data), size);
    repairChecksums(&bytes);
    std::istringstream input(bytes);
    Zem::IO::InStream stream(&input);
    try {
        if (stream.isInit())
            use(read(&stream).get());
    } catch (Zem::IO::StreamException const &) {
        // Refused, as damaged files are.
    }
    return 0;
}
