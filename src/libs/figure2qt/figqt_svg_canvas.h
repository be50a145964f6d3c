// figqt_svg_canvas.h: a canvas on an SVG drawing.
#pragma once

#include "figqt_canvas.h"

#include <QtCore/QXmlStreamWriter>

#include <string>

namespace Zem::Fig2Qt {

/// Writes elements into an open svg element whose user unit is a millimetre. Ids count up from 1 in order of drawing.
class SvgCanvas : public Canvas
{
public:
    /// `xml` is not owned.
    explicit SvgCanvas(QXmlStreamWriter *xml) : xml_(xml) {}

    double getCellSize() const override;
    void drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill) override;
    void drawText(TextLayout const &layout, QTransform const &toPage) override;
    void drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                   QTransform const &toPage) override;
    void pushClip(QPainterPath const &area) override;
    void popClip() override;

private:
    void attribute(char const *name, QString const &value);
    void attribute(char const *name, double value);
    void color(char const *name, char const *opacityName, Color const &color);
    void writeStroke(Stroke const &stroke);
    void writeFont(TextRun const &run, QString const &groupFamily);
    void drawShape(TextShape const &shape);
    void drawRun(TextRun const &run, QString const &groupFamily);
    void drawWords(TextRun const &run);

    QXmlStreamWriter *xml_;
    int lastId_ = 0;
};

} // namespace Zem::Fig2Qt
