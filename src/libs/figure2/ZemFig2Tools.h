// ZemFig2Tools.h: small functions that the whole library shares.
// Layer: services. Pure functions, which may be called from any thread; a figure, an element, a painter or a stream
// that one takes stays on its own thread.
#pragma once

#include "ZemFig2LineStyle.h"
#include "ZemFig2Variable.h"

#include <ZemAlignment.h>
#include <ZemFont.h>
#include <ZemPolygon2d.h>
#include <ZemStream.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <iosfwd>
#include <vector>

namespace Zem {
class Image;
} // namespace Zem

namespace Zem::Fig2 {

class Element;
class Figure;
class Painter;

/// Persistent forms, texts, tokens and small geometry that belong to no class. Lengths are page millimetres.
class Tools
{
public:
    Tools() = delete;

    /// A block of points. Throws IO::StreamException; then `polygon` is unchanged.
    static void load(IO::InStream *stream, Polygon2d *polygon);
    static void save(IO::OutStream *stream, Polygon2d const &polygon);
    /// A block of a font. Throws IO::StreamException; then `font` is unchanged.
    static void load(IO::InStream *stream, Font *font);
    static void save(IO::OutStream *stream, Font const &font);
    /// A block of a token's name; load throws IO::StreamException. Blocks of older releases hold a type as well, which
    /// goes to `type` unless that is null.
    static void saveToken(IO::OutStream *stream, QString const &token);
    static QString loadToken(IO::InStream *stream, Variable_t *type);

    /// A block of a picture, which is not null. What loadImage makes is the caller's; it throws IO::StreamException.
    static void saveImage(IO::OutStream *stream, Zem::Image const *image);
    static Zem::Image *loadImage(IO::InStream *stream);

    /// Parameters of one of the words "begin", "center", "end"; anything else is a ParamError.
    static Alignment_t getAlignment(QString &parameters, QString const &key);
    static QString createAlignment(QString const &key, Alignment_t alignment);
    static Alignment_t getV541Alignment(QString &parameters, QString const &key);
    /// A token's name as a text parameter; a ParamError without one.
    static QString getToken(QString &parameters, QString const &key);

    /// `text` with all occurrences of `from` replaced from left to right, replacements not looked at again. An empty
    /// `from` changes nothing.
    static QString replaceString(QString text, QString const &from, QString const &to);
    /// `text` with `insertion` at `position`; a position behind the end appends.
    static QString insertString(QString const &text, QString const &insertion, unsigned int position);
    /// `text` without the line feeds and carriage returns at its end.
    static QString stripCRLF(QString const &text);
    /// `text` without anything from a '<' through the next '>', or to the end when there is none.
    static QString stripRTFTags(QString const &text);

    /// Splits what stands between two '$' of a label, as "+10.2[mm]part.length": the format stands in front of the
    /// first character, outside square brackets, that is no digit and none of . + -; the rest is the name. Without
    /// such a character, or with nothing in front of it, all of it is the name. The answer is whether there is a name.
    static bool parseToken(QString const &text, QString *name, QString *format);
    /// Pairs each `separator` with the next and keeps name and format of those pairs that parseToken accepts.
    static void parseTokens(QString const &text, QChar separator, std::vector<QString> *names,
                            std::vector<QString> *formats);
    /// The pieces of `text` between any of the characters of `separators`; empty pieces are left out.
    static std::vector<QString> tokenize(QString text, QString const &separators);
    /// The value of `attribute="value"` in the text of a tag. False when it is not there; then `value` is unchanged.
    static bool parseRTFAttribute(QString const &tag, QString const &attribute, QString *value);

    /// `vector` turned by `angle` (radians) in the sense of Rotation.
    static BaVec2d<double> rotateVector(BaVec2d<double> const &vector, double angle);
    /// The triangle of an arrow head with its point at `tip`, pointing away from `other`: first corner, tip, second
    /// corner, each corner at distance `length` and turned by `angle` (radians) off the direction to `other`. `base`
    /// receives the place inside the head at which a line is to end.
    static void getArrowHead(BaVec2d<double> const &tip, BaVec2d<double> const &other, double length, double angle,
                             Polygon2d *polygon, BaVec2d<double> *base);
    /// A small cross, 2.5 mm to each side of `point`.
    static void drawCross(Painter *painter, BaVec2d<double> const &point);
    /// Replaces `styles` by all line styles in numeric order.
    static void getAllLineStyles(std::vector<LineStyle::Style> *styles);

    /// A text dump for diagnosis, to standard output. `depth` is the level of indentation.
    static void printFigure(Figure const *figure);
    static void printFigure(Figure const *figure, std::ostream &output);
    static void printElement(Element const *element, unsigned int depth);
    static void printElement(Element const *element, unsigned int depth, std::ostream &output);
};

} // namespace Zem::Fig2
