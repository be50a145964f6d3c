// figqt_text_layout.h: text laid out, ready to be painted on any canvas.
#pragma once

#include <ZemColor.h>

#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtGui/QFont>
#include <QtGui/QGlyphRun>
#include <QtGui/QPainterPath>

#include <memory>
#include <optional>
#include <vector>

namespace Zem::Fig2Qt {

/// The glyphs of a text in one font (several runs when a character is found in another font only), from (0, 0) on the
/// base line to the right, in text units.
struct ShapedText
{
    std::vector<QGlyphRun> glyphs;
    double width = 0.0;
};

/// Text of one font and colour on a base line.
struct TextRun
{
    QString text;
    QFont font; ///< sized in text units
    Color color;
    QPointF position; ///< where the base line begins
    double width = 0.0;
    bool rightToLeft = false;
    std::shared_ptr<ShapedText const> shape;
};

/// A line, border or background that belongs to a text.
struct TextShape
{
    QPainterPath path;
    std::optional<Color> fill;
    std::optional<Color> stroke;
    double strokeWidth = 0.0;
};

/// A text laid out from its top left corner (0, 0), in text units, y down. Shapes are painted before the runs.
struct TextLayout
{
    double width = 0.0;
    double height = 0.0;
    std::vector<TextShape> shapes;
    std::vector<TextRun> runs;
};

} // namespace Zem::Fig2Qt
