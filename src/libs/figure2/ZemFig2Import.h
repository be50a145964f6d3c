// ZemFig2Import.h: Import, the reader of figures of the older format.
// Layer: document. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Variable.h"

#include <ZemStream.h>

#include <QtCore/QString>

#include <vector>

namespace Zem {
class TokenContainer;
} // namespace Zem

namespace Zem::Fig2 {

class DataInterface;
class Element;
class Figure;
class FigureTemplate;
class ImageBase;
class ImageLabel;
class ImportReport;
class LabelBase;

/// Reads files of the older format into today's classes. What stands in such files is told in
/// docs/formats/older-figures.md. Everything that reads throws IO::StreamException for what is damaged, missing or
/// newer than known, and leaves nothing behind then.
class Import
{
public:
    static constexpr QLatin1StringView FILE_TYPE{"FIGURE-GRAPHICS"};

    // Numbers of the older format.

    enum OldElement_t : unsigned int {
        OLD_LINE = 0,
        OLD_POLYGON = 2,
        OLD_TEXT = 3,
        OLD_CHART = 5,
        OLD_LEGEND = 6,
        OLD_GROUP = 7,
        OLD_CIRCLE = 9,
        OLD_IMAGE = 10,
        OLD_RECTANGLE = 11
    };
    enum OldAlignment_t : unsigned int {
        OLD_AL_TOP = 0,
        OLD_AL_LEFT = 0,
        OLD_AL_CENTER = 1,
        OLD_AL_BOTTOM = 2,
        OLD_AL_RIGHT = 2
    };
    enum OldFont_t : unsigned int {
        OLD_FONT_NORMAL = 0,
        OLD_FONT_ITALIC = 1,
        OLD_FONT_BOLD = 2,
        OLD_FONT_LIGHT = 4,
        OLD_FONT_DEMI_BOLD = 8,
        OLD_FONT_BLACK = 16,
        OLD_FONT_UNDERLINE = 32,
        OLD_FONT_STRIKEOUT = 64
    };
    enum OldAxis_t : unsigned int {
        OLD_NO_AXIS = 0,
        OLD_AXIS_TOP = 1,
        OLD_AXIS_LEFT = 1,
        OLD_AXIS_CENTER = 2,
        OLD_AXIS_BOTTOM = 3,
        OLD_AXIS_RIGHT = 3
    };
    enum OldLineStyle_t : unsigned int {
        OLD_LINE_NONE = 0,
        OLD_LINE_SOLID = 1,
        OLD_LINE_DASHED = 2,
        OLD_LINE_DOTTED = 3,
        OLD_LINE_DASH_DOTTED = 4
    };
    /// The types of tokens, of which Variable_t has all but the first.
    enum OldVar_t : unsigned int {
        OLD_VAR_BOOL = 0,
        OLD_VAR_INTEGER = 1,
        OLD_VAR_DOUBLE = 2,
        OLD_VAR_STRING = 3,
        OLD_VAR_IMAGE = 4,
        OLD_VAR_CHART = 5,
        OLD_VAR_IMAGE_REFERENCE = 6,
        OLD_VAR_CHART_REFERENCE = 7,
        OLD_VAR_GROUP = 8,
        OLD_VAR_SNAPSHOT = 9,
        OLD_VAR_SNAPSHOT_REFERENCE = 10,
        OLD_VAR_SEPARATOR = 11
    };
    static constexpr unsigned int NUMBER_OF_OLD_VARS = OLD_VAR_SEPARATOR + 1;
    /// The end of a line: an arrow, or a symbol whose number is in the lowest bits.
    static constexpr unsigned int LINE_ARROW = 32;
    static constexpr unsigned int LINE_SYMBOL = 16;
    static constexpr unsigned int LINE_SYMBOL_MASK = 15;

    /// The tokens of images and legends that show the strain as an overlay.
    static constexpr QLatin1StringView TOKEN_LEGEND_OVERLAY_STRAIN{"LEGEND.OVERLAY_STRAIN"};
    static constexpr QLatin1StringView TOKEN_IMAGE_OVERLAY_STRAIN{"IMAGE.OVERLAY_STRAIN"};
    /// The tokens of snapshots that stood within an element, %1 counting from 1, and their group.
    static constexpr QLatin1StringView TOKEN_IMPORTED_SNAPSHOT{"__imported_snapshot_%1__"};
    static constexpr QLatin1StringView TOKEN_IMPORTED_SNAPSHOT_GROUP{"__imported_snapshot__"};

    Import() = delete;

    /// Whether it is a file of the older format.
    static bool canImportFile(IO::InStream *stream);
    /// The same by the first bytes of a file.
    static bool canImportFile(std::vector<char> const &head);

    /// The page of an older file, owned by the caller, with the type hints of its charts. Throws for a file of another
    /// type too. `report`, unless null, receives what became of each record, and `tokens`, an empty registry unless
    /// null, the tokens of the file with their data; without it these are dropped. The import hooks have been called
    /// for the result.
    static FigureTemplate *importTemplate(IO::InStream *stream);
    static FigureTemplate *importTemplate(IO::InStream *stream, ImportReport *report, DataInterface *tokens = nullptr);
    /// The same from the next block on, whatever the file is.
    static FigureTemplate *importTemplateStream(IO::InStream *stream);
    /// The next element, owned by the caller. What it was connected to is forgotten.
    static Element *importElement(IO::InStream *stream);

    /// Fill a container, which is not null, with the values that older image data and charts carried in either form.
    static void importTokenData(IO::InStream *stream, TokenContainer *container);
    static void importDataInterface(IO::InStream *stream, TokenContainer *container);
    /// The same with all tokens and their data, for a registry that is not null.
    static void importTokenData(IO::InStream *stream, DataInterface *dataInterface);
    static void importDataInterface(IO::InStream *stream, DataInterface *dataInterface);
    /// Read the values of either form and forget them.
    static void skipTokenData(IO::InStream *stream);
    static void skipDataInterface(IO::InStream *stream);

    /// The plain values among the registry's own tokens; those whose name is no token are left out. Of a name that is
    /// there in several types the last one counts. Throws ProgError for a variable of no known type.
    static void convertDataInterface(DataInterface const *dataInterface, TokenContainer *container);
    /// The type that a token has today. Throws ProgError for a number that is none.
    static Variable_t convertVariableType(OldVar_t type);
    /// The text of an older label as rich text. A text with tags or entities is rich already.
    static QString convertUnformattedLabelText(QString const &text);

    /// Turns the labels of objects of imported images into image labels, which keep the marks of the object and take
    /// the place of the label. Throws ProgError for a figure without image interface.
    static void convertImageData(Figure *figure);
    /// The same for one label and the object of this id. The label is deleted; the result is its group's. Throws
    /// ProgError for a label without a parent.
    static ImageLabel *createImageLabelFromLabel(Figure *figure, ImageBase *image, LabelBase *label, QString const &id);
};

} // namespace Zem::Fig2
