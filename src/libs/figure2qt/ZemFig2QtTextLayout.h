// ZemFig2QtTextLayout.h: text laid out once, in units that no device rounds.
// Layer: text. Used from one thread, after a QGuiApplication was made.
#pragma once

#include <ZemFont.h>
#include <ZemVec.h>

#include <QtCore/QCache>
#include <QtCore/QString>
#include <QtGui/QFont>

#include <memory>

class QPainter;
class QTextDocument;

namespace Zem::Fig2Qt {

/// The font of this description, without hinting: its outlines have the same proportions at every size.
QFont toQFont(Font const &font);

/// Rich or plain text in a fine grid of its own, so that it has the same measures and line breaks whatever it is painted
/// on. All sizes are page millimetres.
class TextLayout
{
public:
    enum Kind { PLAIN, RICH };

    /// `width` is the wrapping width, -1.0 for none.
    TextLayout(QString const &text, Kind kind, Font const &font, double width);
    ~TextLayout();

    BaVec2d<double> const &size() const { return size_; }
    /// Paints with the top left corner at the painter's origin; one unit of the painter is a millimetre.
    void draw(QPainter *painter) const;
    /// The same in one colour, for plain text.
    void draw(QPainter *painter, QColor const &color) const;

private:
    std::unique_ptr<QTextDocument> document_;
    BaVec2d<double> size_;
};

/// Keeps the layouts used last under the ids of their labels.
class TextLayoutCache
{
public:
    explicit TextLayoutCache(int capacity);

    /// The layout, made anew when the id stands for something else by now. Valid until the next call.
    TextLayout const &richText(int id, QString const &text, Font const &font, double width);

private:
    struct Entry
    {
        QString text;
        Font font;
        double width;
        TextLayout layout;
    };

    QCache<int, Entry> entries_;
};

} // namespace Zem::Fig2Qt
