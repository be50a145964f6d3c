// fig_import_record.h: the records of older files and the groups of fields that they share.
// Layer: document. Internal to the library.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2Import.h"
#include "ZemFig2LineStyle.h"
#include "fig_block.h"

#include <ZemAlignment.h>
#include <ZemFont.h>

namespace Zem::Fig2 {

/// Throws translate("Figure_Import_err", text), %1 being a number of the file.
[[noreturn]] void throwImportError(char const *text, unsigned int number);

/// Reads the next record. A version below 1 or above `newest` is refused with `text`, or in the way of all blocks when
/// it is null. What `fields` leaves is skipped.
template <class Fields>
void loadRecord(IO::InStream *stream, unsigned int newest, char const *text, Fields const &fields)
{
    stream->openBlock();
    unsigned int const version = stream->getBlockVersion();
    if (version < 1 || version > newest) {
        if (text)
            throwImportError(text, version);
        throwWrongBlockVersion();
    }
    BlockReader reader(stream, version);
    fields(reader);
    stream->closeBlock();
}

/// Tokens, snapshots and groups within each other. Each holds one of these while it is read; what is nested too deeply
/// is refused, so that no file exhausts the stack.
class ImportDepth
{
public:
    /// What a level takes of the common limit: the heavier the more stack it needs.
    enum Weight : unsigned int { GROUP = 1, TOKENS = 8, SNAPSHOT = 8 };
    static constexpr unsigned int LIMIT = 256;

    /// Throws IO::StreamException.
    explicit ImportDepth(Weight weight);
    ~ImportDepth();
    ImportDepth(ImportDepth const &) = delete;
    ImportDepth &operator=(ImportDepth const &) = delete;

private:
    Weight weight_;
};

/// The length, or the other one when it is negative or no number.
constexpr double lengthOr(double length, double otherwise)
{
    return length >= 0.0 ? length : otherwise;
}

struct OldPen
{
    double width = 0.0;
    Import::OldLineStyle_t style = Import::OLD_LINE_NONE;
    Color color{0, 0, 0};

    void read(BlockReader &reader);
    LineStyle lineStyle() const;
};

struct OldBrush
{
    bool filled = false;
    Color color{0, 0, 0};

    void read(BlockReader &reader);
    FillStyle fillStyle() const;
};

struct OldFont
{
    QString family;
    double size = 0.0;
    unsigned int flags = Import::OLD_FONT_NORMAL;
    Color color{0, 0, 0};

    void read(BlockReader &reader);
    /// The size and the family of the default font where the file has none.
    Font font() const;
};

/// The rectangle of an area before its turn.
struct OldFrame
{
    BaVec2d<double> corner{0.0, 0.0};
    BaVec2d<double> size{0.0, 0.0};

    void read(BlockReader &reader);
    BaVec2d<double> center() const { return corner + size * 0.5; }
};

struct OldAlignment
{
    Import::OldAlignment_t value = Import::OLD_AL_LEFT;

    void read(BlockReader &reader);
    Alignment_t alignment() const { return static_cast<Alignment_t>(value); }
};

/// Records of an older version do not hold the group of fields.
template <class Fields>
void readSince(BlockReader &reader, Since since, Fields &fields)
{
    if (reader.version() >= since.version)
        fields.read(reader);
}

} // namespace Zem::Fig2
