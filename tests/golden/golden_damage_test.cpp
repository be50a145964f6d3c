// Damaged documents of every kind and version are refused or read, and cost no more than their size allows.
//
// Of the fourteen ways to damage a byte each byte meets one, another one in each file, and with sanitizers every sixteenth
// byte. ZEM_DAMAGE=all (make damage) takes them all, which lasts.
#include "GoldenDocuments.h"

#include <AllocationPeak.h>
#include <ZemFig2ImageDataObjectLabel.h>
#include <ZemFig2ImageLabelCreator.h>
#include <ZemFig2InitLibrary.h>
#include <ZemStream.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <zlib.h>

namespace Zem::Fig2 {
namespace {

constexpr qsizetype LARGEST_FILE = 64 << 10;
constexpr std::size_t FREE_MEMORY = 32 << 20; ///< beside sixteen times the size of the file
constexpr std::chrono::seconds HANGING{5};    ///< no measure of speed: a loop that a number in the file makes long
constexpr int NUMBER_OF_DAMAGES = 14;
#ifdef __SANITIZE_ADDRESS__
constexpr qsizetype STRIDE = 16;
#else
constexpr qsizetype STRIDE = 1;
#endif
constexpr qsizetype HEADER_SIZE = 64;

/// The byte becomes one of five values, has one of its eight bits turned, or is the first that is missing.
QByteArray damaged(QByteArray bytes, qsizetype place, int damage)
{
    static constexpr unsigned char VALUES[] = {0x00, 0x01, 0x7f, 0x80, 0xff};
    if (damage < 5)
        bytes[place] = static_cast<char>(VALUES[damage]);
    else if (damage < 13)
        bytes[place] = static_cast<char>(static_cast<unsigned char>(bytes[place]) ^ (1U << (damage - 5)));
    else
        bytes.truncate(place);
    return bytes;
}

std::uint32_t numberAt(QByteArray const &bytes, qsizetype place)
{
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.constData() + place, sizeof number);
    return number;
}

/// Makes the checksums right again, as far as the sizes of the blocks lead.
void repairChecksums(QByteArray *bytes)
{
    for (qsizetype place = HEADER_SIZE; place + 12 <= bytes->size();) {
        auto const size = static_cast<qsizetype>(numberAt(*bytes, place));
        if (size > bytes->size() - place - 12)
            return;
        auto const *const checked = reinterpret_cast<Bytef const *>(bytes->constData() + place + 4);
        auto const sum = static_cast<std::uint32_t>(crc32(0, checked, static_cast<uInt>(size + 4)));
        std::memcpy(bytes->data() + place + 8 + size, &sum, sizeof sum);
        place += 12 + size;
    }
}

/// The application's business; without them a damaged number would be its mistake.
class Creator : public ImageLabelCreator
{
public:
    explicit Creator(Type_t type) : ImageLabelCreator(type) {}

    ImageLabel *create() const override { return new ImageDataObjectLabel; }
    QString getDisplayName() const override { return {}; }
};

class DamagedGoldenFiles : public testing::Test
{
protected:
    DamagedGoldenFiles()
    {
        InitLibrary();
        for (unsigned int type = 0; type < ImageLabelCreator::NUMBER_OF_TYPES; ++type)
            addCreator(static_cast<ImageLabelCreator::Type_t>(type));
    }

    void read(QString const &name, QByteArray const &bytes);
    /// The library has one of its own.
    void addCreator(ImageLabelCreator::Type_t type)
    {
        if (!ImageLabelCreator::getCreators().contains(type))
            creators_.push_back(std::make_unique<Creator>(type));
    }

    int refused_ = 0;
    int accepted_ = 0;

private:
    std::vector<std::unique_ptr<Creator>> creators_;
};

void DamagedGoldenFiles::read(QString const &name, QByteArray const &bytes)
{
    Support::AllocationPeak const peak;
    auto const begin = std::chrono::steady_clock::now();
    try {
        Support::goldenKindOf(name).saveAgain(bytes);
        ++accepted_;
    } catch (IO::StreamException const &) {
        ++refused_;
    } catch (std::exception const &error) {
        ADD_FAILURE() << error.what();
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, HANGING);
    EXPECT_LE(peak.bytes(), 16 * static_cast<std::size_t>(bytes.size()) + FREE_MEMORY);
}

TEST_F(DamagedGoldenFiles, areRefusedOrRead)
{
    bool const all = qEnvironmentVariable("ZEM_DAMAGE") == QLatin1String("all");
    QStringList const names = Support::goldenDocuments();
    for (qsizetype file = 0; file < names.size(); ++file) {
        SCOPED_TRACE(names[file].toStdString());
        QByteArray const whole = Support::goldenContent("files/" + names[file]);
        if (whole.size() > LARGEST_FILE)
            continue;
        for (qsizetype place = 0; place < whole.size(); place += all ? 1 : STRIDE) {
            for (int damage = 0; damage < NUMBER_OF_DAMAGES; ++damage) {
                if (!all && damage != (place * 5 + file * 3) % NUMBER_OF_DAMAGES)
                    continue;
                SCOPED_TRACE("byte " + std::to_string(place) + ", damage " + std::to_string(damage));
                QByteArray bytes = damaged(whole, place, damage);
                read(names[file], bytes);
                repairChecksums(&bytes);
                read(names[file], bytes);
            }
        }
    }

    // Both ways are really taken.
    EXPECT_GT(refused_, accepted_);
    EXPECT_GT(accepted_, 1000);
}

} // namespace
} // namespace Zem::Fig2
