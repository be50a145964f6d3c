// ZemFig2Import.h: Import, the reader of figures of the older format.
// Layer: document. Used from the thread that owns the figure.
#pragma once

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

/// Reads files of the older format into today's classes.
class Import
{
public:
    static constexpr QLatin1StringView FILE_TYPE{"FIGURE-GRAPHICS"};

    /// Numbers of the older format.
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
    static constexpr unsigned int LINE_ARROW = 32;
    static constexpr unsigned int LINE_SYMBOL = 16;
    static constexpr unsigned int LINE_SYMBOL_MASK = 15;

    Import() = delete;

    /// Whether it is a file of the older format.
    static bool canImportFile(IO::InStream *stream);
    static bool canImportFile(std::vector<char> const &head);

    /// The page of an older file, owned by the caller, with the type hints of its charts. Throws IO::StreamException,
    /// for a file of another type too.
    static FigureTemplate *importTemplate(IO::InStream *stream);

    /// Fill a container, which is not null, with the values that older image data and charts carried in either form.
    /// Throw IO::StreamException.
    static void importTokenData(IO::InStream *stream, TokenContainer *container);
    static void importDataInterface(IO::InStream *stream, TokenContainer *container);
    /// The plain values among the registry's own tokens.
    static void convertDataInterface(DataInterface const *dataInterface, TokenContainer *container);
    /// Turns labels that belonged to imported image data into image labels. Throws ProgError for a figure without
    /// image interface.
    static void convertImageData(Figure *figure);
};

} // namespace Zem::Fig2
