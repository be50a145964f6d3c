// Damaged older figures load or are refused with IO::StreamException, and take no more memory than their size allows.
#include "block_damage.h"
#include "import_fixture.h"

#include <AllocationPeak.h>
#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <ZemFig2TokenContainer.h>

namespace Zem::Fig2 {
namespace {

using Support::oldAxis;
using Support::oldFigure;
using Support::oldImage;
using Support::oldText;
using Support::OldTokenFields;

/// Records and tokens are read into objects of today, which have many more fields; what a file only claims takes
/// nothing.
constexpr std::size_t importLimit(std::size_t fileSize)
{
    return 64 * fileSize + (1 << 20);
}

OldRecords text(std::string const &content, int target, std::string const &object)
{
    Support::OldTextFields fields;
    fields.text = content;
    fields.target = target;
    fields.object = object;
    return oldElementOf(Import::OLD_TEXT, oldText(4, fields));
}

OldRecords chart()
{
    return oldElementOf(Import::OLD_CHART, Support::oldChart(3).add(oldAxis(3)).add(oldAxis(3)), {2, true});
}

OldRecords legend()
{
    Support::OldLegendFields fields;
    fields.token = "camera";
    fields.hasScale = true;
    return oldElementOf(Import::OLD_LEGEND,
                        Support::oldLegend(3, fields).add(Support::oldLegendDisplay(2)).add(Support::oldLegendData(2)));
}

OldRecords image(bool withSnapshot)
{
    Support::OldImageFields fields;
    fields.looks = {"", "bolt"};
    fields.hasSnapshot = withSnapshot;
    OldRecords records = oldImage(4, fields).add(Support::oldLook(2)).add(Support::oldLook(1));
    if (withSnapshot)
        records.add(oldFigure(3, Support::oldRegistry(), {chart()}));
    return oldElementOf(Import::OLD_IMAGE, records, {3, true});
}

OldRecords picture()
{
    OldRecords const packed =
        Support::oldPicture(3, 0, Support::packedGrey(3, 2, "abcxyz"), true, Support::packedColor(3, 2, 1, 2, 3));
    OldRecords records = packed;
    records.add(Support::oldImageData(3, true, 1, 1, true)).add(Support::oldCamera(3)).add(Support::oldMask(2));
    records.add(Support::oldObject(3, "bolt", 2, true)).add(Support::oldPoint(1, 1)).add(Support::oldPoint(2, 2));
    records.add(Support::oldTokens(1, {{"gap", 2, "", "", ""}})).add(Support::oldDouble(3, 1.5, "mm", "5.1"));
    return records.add(Support::oldLegendData(2));
}

OldRecords tokens()
{
    OldRecords records = Support::oldTokens(2, {{"camera", 4, "Camera", "", "all"},
                                                {"curve", 5, "", "strain", ""},
                                                {"number", 1, "", "", ""},
                                                {"size", 2, "", "", ""},
                                                {"name", 3, "", "", ""},
                                                {"flag", 0, "", "", ""},
                                                {"all", 8, "", "", ""},
                                                {"frozen", 9, "", "", ""},
                                                {"live", 7, "", "", ""}});
    records.add(picture()).add(Support::oldChartData(3)).add(Support::oldInteger(2, 3, "4"));
    records.add(Support::oldDouble(3, 1.5, "kN", "5.1")).add(Support::oldString(2, "Smith", "9"));
    records.add(Support::oldBool(2, true, "1"));
    return records.add(oldFigure({oldElementOf(Import::OLD_LINE, Support::oldLine(3))}));
}

/// A file with every type of element and token, nested groups and references.
std::string everything()
{
    OldRecords group = Support::oldGroup(2, 3, 1);
    group.add(oldElementOf(Import::OLD_LINE, Support::oldLine(3)));
    group.add(oldElementOf(Import::OLD_CIRCLE, Support::oldCircle(2)));
    group.add(oldElementOf(Import::OLD_GROUP,
                           Support::oldGroup(1, 1).add(oldElementOf(Import::OLD_POLYGON, Support::oldPolygon(2)))));
    return Support::oldFile(
        oldFigure(2, tokens(),
                  {oldElementOf(Import::OLD_RECTANGLE, Support::oldRectangle(2)), chart(), image(false), image(true),
                   legend(), text("$curve.MAX_Y_left$", -1, ""), text("<html><body>$gap$</body></html>", 3, "bolt"),
                   oldElementOf(Import::OLD_GROUP, group)}));
}

/// Null when the file is refused. Whatever it claims, reading keeps to its limit.
std::unique_ptr<FigureTemplate> load(std::string const &bytes, DataInterface *registry)
{
    std::istringstream input(bytes);
    Support::AllocationPeak const peak;
    ImportReport report;
    std::unique_ptr<FigureTemplate> figure;
    try {
        IO::InStream stream(&input);
        figure.reset(Import::importTemplate(&stream, &report, registry));
    } catch (IO::StreamException const &) {
        registry->clear();
    }
    EXPECT_LE(peak.bytes(), importLimit(bytes.size()));
    return figure;
}

/// Reads; a figure that was accepted must stand saving with its tokens, and reading again.
bool loads(std::string const &bytes)
{
    DataInterface registry;
    std::unique_ptr<FigureTemplate> const figure = load(bytes, &registry);
    if (!figure)
        return false;
    std::string const saved = Support::streamOf([&](IO::OutStream &stream) { figure->Figure::save(&stream, -1, -1); });
    Figure again;
    Support::readFrom(saved, [&again](IO::InStream &stream) { again.load(&stream, -1, -1); });
    EXPECT_EQ(again.toString().toStdString(), figure->toString().toStdString());
    return true;
}

TEST(DamagedOldFigure, loadsUndamaged)
{
    EXPECT_TRUE(loads(everything()));
}

TEST(DamagedOldFigure, isDrawnWithItsOwnTokens)
{
    DataInterface registry;
    std::unique_ptr<FigureTemplate> const figure = load(everything(), &registry);
    FigureTokenContainer container(figure.get(), &registry);
    Support::FakeCalculator calculator;
    figure->setTokenInterface(&container);

    figure->update(StageIdentifier::NO_STAGE, true);
    Support::RecordingPainter painter;
    figure->draw(&painter);

    EXPECT_NE(painter.transcript().find("4.000000"), std::string::npos)
        << painter.transcript(); // the maximum of the left curve
    figure->setTokenInterface(nullptr);
}

TEST(DamagedOldFigure, isRefusedAfterEveryTruncation)
{
    std::string const bytes = everything();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_FALSE(loads(bytes.substr(0, length))) << length;
}

TEST(DamagedOldFigure, loadsOrIsRefusedAfterAnyMutation)
{
    std::string const bytes = everything();
    std::mt19937 random(20240611);
    for (int i = 0; i < 5000; ++i) {
        std::string damaged = bytes;
        for (std::size_t k = 0, count = 1 + random() % 4; k < count; ++k)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        loads(damaged);
    }
}

TEST(DamagedOldFigure, loadsOrIsRefusedAfterAnyMutationWithARightChecksum)
{
    std::string const bytes = everything();
    std::vector<std::size_t> blocks = blockPlaces(bytes);
    std::erase_if(blocks, [&bytes](std::size_t block) { return numberAt(bytes, block) == 0; });
    std::mt19937 random(20240612);
    int loaded = 0;
    for (int i = 0; i < 5000; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        loaded += loads(damaged) ? 1 : 0;
    }

    // Both ways are really taken.
    EXPECT_GT(loaded, 500);
    EXPECT_LT(loaded, 4500);
}

TEST(DamagedOldFigure, loadsOrIsRefusedAfterBlocksWereLostOrSwapped)
{
    std::string const bytes = everything();
    std::vector<std::size_t> const blocks = blockPlaces(bytes);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        std::size_t const end = i + 1 < blocks.size() ? blocks[i + 1] : bytes.size();
        std::string const block = bytes.substr(blocks[i], end - blocks[i]);
        loads(bytes.substr(0, blocks[i]) + bytes.substr(end));
        loads(bytes.substr(0, end) + block + bytes.substr(end));
        for (std::size_t k : blocks)
            loads(bytes.substr(0, k) + block + bytes.substr(k));
    }
}

TEST(DamagedOldFigure, isDrawnOrIsRefused)
{
    std::string const bytes = everything();
    std::vector<std::size_t> blocks = blockPlaces(bytes);
    std::erase_if(blocks, [&bytes](std::size_t block) { return numberAt(bytes, block) == 0; });
    std::mt19937 random(20240613);
    Support::FakeCalculator calculator;
    for (int i = 0; i < 2000; ++i) {
        std::string damaged = bytes;
        damageBlock(damaged, blocks[random() % blocks.size()], random);
        DataInterface registry;
        std::unique_ptr<FigureTemplate> const figure = load(damaged, &registry);
        if (!figure)
            continue;
        FigureTokenContainer const container(figure.get(), &registry);
        figure->setTokenInterface(&container);
        figure->update(StageIdentifier::NO_STAGE, true);
        Support::RecordingPainter painter;
        figure->draw(&painter);
        figure->setTokenInterface(nullptr);
    }
}

TEST(DamagedOldFigure, takesNoMemoryForWhatItOnlyClaims)
{
    std::string const bytes = everything();
    for (std::size_t block : blockPlaces(bytes)) {
        for (std::size_t place = 8; place + 4 <= 8 + numberAt(bytes, block); ++place) {
            std::string damaged = bytes;
            // As a count or a length: more than two thousand million.
            std::memcpy(damaged.data() + block + place, "\xff\xff\xff\x7f", 4);
            repairChecksum(damaged, block);
            loads(damaged);
        }
    }
}

} // namespace
} // namespace Zem::Fig2
