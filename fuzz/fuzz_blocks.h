// fuzz_blocks.h: what the targets for files of blocks share.
#pragma once

#include <ZemFig2Figure.h>
#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2ImageLabelCreator.h>
#include <ZemFig2TokenInterface.h>

#include <ZemError.h>

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace Zem::Fuzz {

inline std::uint32_t numberAt(std::string const &bytes, std::size_t place)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + place, sizeof number);
    return number;
}

/// So that the damage reaches the readers of the elements.
inline void repairChecksums(std::string *bytes)
{
    constexpr std::size_t HEADER_SIZE = 64;
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
inline void registerImageLabels()
{
    using Fig2::ImageLabelCreator;
    class Creator : public ImageLabelCreator
    {
    public:
        explicit Creator(Type_t type) : ImageLabelCreator(type) {}

        Fig2::ImageLabel *create() const override { return new Fig2::ImageDataObjectLabel; }
        QString getDisplayName() const override { return {}; }
    };
    static std::vector<std::unique_ptr<Creator>> creators;
    for (unsigned int type = 0; creators.size() < ImageLabelCreator::NUMBER_OF_TYPES; ++type)
        creators.push_back(std::make_unique<Creator>(static_cast<ImageLabelCreator::Type_t>(type)));
}

/// Opens the bytes, their checksums made right, and hands the stream to `read`, which may refuse it.
template <class Read>
void readBlocks(std::uint8_t const *data, std::size_t size, Read const &read)
{
    registerImageLabels();
    std::string bytes(reinterpret_cast<char const *>(data), size);
    repairChecksums(&bytes);
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    try {
        if (stream.isInit())
            read(&stream);
    } catch (IO::StreamException const &) {
        // Refused, as damaged files are.
    }
}

/// Writes what `save` writes to a stream; what load accepted, save accepts.
template <class Save>
void saveBlocks(QString const &type, Save const &save)
{
    std::ostringstream output;
    IO::OutStream stream(&output, type, 1);
    save(&stream);
    stream.close();
}

/// Whatever was accepted must stand being used. A connector that no program can make, and an axis without numbers, end
/// the update with an error.
inline void use(Fig2::Figure *figure)
{
    Fig2::EmptyFigureTokenInterface const empty;
    Fig2::FigureTokenInterface const *const own = figure->getTokenInterface();
    if (!own)
        figure->setTokenInterface(&empty);
    try {
        figure->update(StageIdentifier(1), true);
    } catch (ProgError const &) {
    }
    figure->getElementAt({10, 10});
    figure->toString();
    Fig2::Figure const copy(*figure);
    figure->setTokenInterface(own);
}

} // namespace Zem::Fuzz
