#include "figqt_truetype.h"

#include <algorithm>

namespace Zem::Fig2Qt {

namespace {

/// Big endian numbers of a table; 0 outside of it.
std::uint32_t unsignedAt(QByteArray const &table, qsizetype place, int bytes)
{
    if (place < 0 || place + bytes > table.size())
        return 0;
    std::uint32_t value = 0;
    for (int i = 0; i < bytes; ++i)
        value = value << 8U | static_cast<unsigned char>(table[place + i]);
    return value;
}

int wordAt(QByteArray const &table, qsizetype place)
{
    return static_cast<int>(unsignedAt(table, place, 2));
}

int signedAt(QByteArray const &table, qsizetype place)
{
    return static_cast<std::int16_t>(unsignedAt(table, place, 2));
}

void append(std::string *bytes, std::uint32_t value, int count)
{
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes->push_back(static_cast<char>(value >> shift & 0xffU));
}

void put(std::string *bytes, std::size_t place, std::uint32_t value, int count)
{
    std::string number;
    append(&number, value, count);
    if (place + number.size() <= bytes->size())
        bytes->replace(place, number.size(), number);
}

std::uint32_t checksumOf(std::string const &bytes)
{
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        sum += static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (24U - 8U * (i % 4U));
    return sum;
}

std::string toFile(std::map<std::string, std::string> const &tables)
{
    std::string file;
    append(&file, 0x00010000, 4);
    auto const count = static_cast<std::uint32_t>(tables.size());
    std::uint32_t power = 0;
    while (2U << power <= count)
        ++power;
    append(&file, count, 2);
    append(&file, 16U << power, 2);
    append(&file, power, 2);
    append(&file, count * 16U - (16U << power), 2);
    std::size_t place = file.size() + 16 * tables.size();
    std::string bodies;
    std::size_t headPlace = 0;
    for (auto const &[tag, bytes] : tables) {
        if (tag == "head")
            headPlace = place + bodies.size();
        file += tag;
        append(&file, checksumOf(bytes), 4);
        append(&file, static_cast<std::uint32_t>(place + bodies.size()), 4);
        append(&file, static_cast<std::uint32_t>(bytes.size()), 4);
        bodies += bytes;
        bodies.resize((bodies.size() + 3) / 4 * 4);
    }
    file += bodies;
    put(&file, headPlace + 8, 0xB1B0AFBAU - checksumOf(file), 4);
    return file;
}

// Bits of the components of a composed glyph.
constexpr int ARGUMENTS_ARE_WORDS = 0x1;
constexpr int HAS_SCALE = 0x8;
constexpr int MORE_COMPONENTS = 0x20;
constexpr int HAS_TWO_SCALES = 0x40;
constexpr int HAS_MATRIX = 0x80;

std::size_t componentSize(int flags)
{
    std::size_t const scale = flags & HAS_SCALE ? 2 : flags & HAS_TWO_SCALES ? 4 : flags & HAS_MATRIX ? 8 : 0;
    return 4 + (flags & ARGUMENTS_ARE_WORDS ? 4 : 2) + scale;
}

constexpr int EMBEDDING_FORBIDDEN = 0x2;
constexpr int EMBEDDING_AS_PICTURE_ONLY = 0x200;

} // namespace

std::optional<TrueTypeFont> TrueTypeFont::read(QRawFont const &font)
{
    TrueTypeFont result;
    for (char const *tag : {"head", "hhea", "maxp", "hmtx", "loca", "glyf", "cvt ", "fpgm", "prep", "OS/2"}) {
        QByteArray const table = font.fontTable(tag);
        if (!table.isEmpty())
            result.tables_[tag] = table;
    }
    for (char const *tag : {"head", "hhea", "maxp", "hmtx", "loca", "glyf"}) {
        if (!result.tables_.contains(tag))
            return std::nullopt;
    }
    QByteArray const &head = result.tables_["head"];
    QByteArray const os2 = result.tables_["OS/2"];
    result.unitsPerEm_ = wordAt(head, 18);
    result.longOffsets_ = wordAt(head, 50) != 0;
    result.glyphCount_ = wordAt(result.tables_["maxp"], 4);
    result.metricCount_ = wordAt(result.tables_["hhea"], 34);
    result.bold_ = wordAt(head, 44) & 1 || wordAt(os2, 4) >= QFont::DemiBold;
    result.italic_ = wordAt(head, 44) & 2 || wordAt(os2, 62) & 1;
    bool const forbidden = wordAt(os2, 8) & (EMBEDDING_FORBIDDEN | EMBEDDING_AS_PICTURE_ONLY);
    if (result.unitsPerEm_ < 16 || result.glyphCount_ == 0 || result.metricCount_ == 0 || head.size() < 54 || forbidden)
        return std::nullopt;
    return result;
}

double TrueTypeFont::getAdvance(std::uint32_t glyph) const
{
    auto const index = std::min<qsizetype>(glyph, metricCount_ - 1);
    return toThousandths(wordAt(tables_.at("hmtx"), 4 * index));
}

double TrueTypeFont::getBound(int index) const
{
    return toThousandths(signedAt(tables_.at("head"), 36 + 2 * index));
}

double TrueTypeFont::getAscent() const
{
    return toThousandths(signedAt(tables_.at("hhea"), 4));
}

double TrueTypeFont::getDescent() const
{
    return toThousandths(signedAt(tables_.at("hhea"), 6));
}

std::string TrueTypeFont::glyphData(std::uint32_t glyph) const
{
    if (glyph >= static_cast<std::uint32_t>(glyphCount_))
        return {};
    QByteArray const &loca = tables_.at("loca");
    auto const offset = [&](qsizetype index) {
        return longOffsets_ ? qsizetype(unsignedAt(loca, 4 * index, 4)) : 2 * qsizetype(unsignedAt(loca, 2 * index, 2));
    };
    qsizetype const begin = offset(glyph);
    qsizetype const end = offset(qsizetype(glyph) + 1);
    QByteArray const &glyf = tables_.at("glyf");
    if (begin >= end || end > glyf.size())
        return {};
    return glyf.mid(begin, end - begin).toStdString();
}

/// The glyph with the numbers of its parts, if it has such, those of the new font; new parts are added at the end.
std::string TrueTypeFont::renumberParts(std::string data, std::vector<std::uint32_t> *glyphs,
                                        std::map<std::uint32_t, std::uint32_t> *numbers) const
{
    QByteArray const old = QByteArray::fromStdString(data);
    if (signedAt(old, 0) >= 0)
        return data;
    int flags = MORE_COMPONENTS;
    for (std::size_t place = 10; flags & MORE_COMPONENTS && place + 4 <= data.size(); place += componentSize(flags)) {
        flags = wordAt(old, static_cast<qsizetype>(place));
        auto const part = static_cast<std::uint32_t>(wordAt(old, static_cast<qsizetype>(place) + 2));
        auto const [it, isNew] = numbers->try_emplace(part, static_cast<std::uint32_t>(glyphs->size()));
        if (isNew)
            glyphs->push_back(part);
        put(&data, place + 2, it->second, 2);
    }
    return data;
}

std::string TrueTypeFont::metricsOf(std::vector<std::uint32_t> const &glyphs) const
{
    QByteArray const &hmtx = tables_.at("hmtx");
    std::string result;
    for (std::uint32_t const glyph : glyphs) {
        qsizetype const full = std::min<qsizetype>(glyph, metricCount_ - 1);
        qsizetype const bearing = glyph < static_cast<std::uint32_t>(metricCount_)
                                      ? 4 * full + 2
                                      : 4 * qsizetype(metricCount_) + 2 * (qsizetype(glyph) - metricCount_);
        append(&result, unsignedAt(hmtx, 4 * full, 2), 2);
        append(&result, unsignedAt(hmtx, bearing, 2), 2);
    }
    return result;
}

std::string TrueTypeFont::makeSubset(std::vector<std::uint32_t> glyphs) const
{
    std::map<std::uint32_t, std::uint32_t> numbers;
    for (std::size_t i = 0; i < glyphs.size(); ++i)
        numbers.try_emplace(glyphs[i], static_cast<std::uint32_t>(i));
    std::string glyf;
    std::string loca;
    for (std::size_t i = 0; i < glyphs.size(); ++i) { // grows while parts are found
        append(&loca, static_cast<std::uint32_t>(glyf.size()), 4);
        glyf += renumberParts(glyphData(glyphs[i]), &glyphs, &numbers);
        glyf.resize((glyf.size() + 3) / 4 * 4);
    }
    append(&loca, static_cast<std::uint32_t>(glyf.size()), 4);

    std::map<std::string, std::string> result{{"glyf", glyf}, {"loca", loca}, {"hmtx", metricsOf(glyphs)}};
    for (char const *tag : {"head", "hhea", "maxp", "cvt ", "fpgm", "prep"}) {
        if (auto const table = tables_.find(tag); table != tables_.end())
            result[tag] = table->second.toStdString();
    }
    auto const count = static_cast<std::uint32_t>(glyphs.size());
    put(&result["head"], 8, 0, 4);  // checksum, set last
    put(&result["head"], 50, 1, 2); // long offsets
    put(&result["maxp"], 4, count, 2);
    put(&result["hhea"], 34, count, 2);
    return toFile(result);
}

} // namespace Zem::Fig2Qt
