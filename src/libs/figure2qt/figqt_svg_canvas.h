// figqt_svg_canvas.h: a canvas on an SVG drawing.
#pragma once

#include "figqt_embedded_picture.h"
#include "figqt_vector_canvas.h"

#include <QtCore/QXmlStreamWriter>

#include <map>
#include <string>

namespace Zem::Fig2Qt {

/// Writes elements into an open svg element whose user unit is a millimetre. Ids count up from 1 in order of drawing.
class SvgCanvas : public VectorCanvas
{
public:
    /// `xml` is not owned. Pictures get no more than `dpi` pixels to the inch.
    SvgCanvas(QXmlStreamWriter *xml, double dpi) : xml_(xml), dpi_(dpi) {}

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

    void appendLine(Polyline const &line, bool dense, std::string *path) const override;
    void appendRect(QRectF const &rect, std::string *path) const override;
    void writeLines(std::string const &path, bool dense, Stroke const &stroke) override;
    void writeRects(std::string const &path, Color const &fill) override;
    void writePicture(PlacedPicture const &placed) override;
    void writeMarks(Mark const &mark, std::vector<PlacedMark> const &places) override;
    QString symbolOf(Mark const &mark);
    QString symbolOf(Picture const &picture);

    QXmlStreamWriter *xml_;
    double dpi_;
    int lastId_ = 0;
    std::map<std::uint64_t, QString> symbols_; // ids in the file, by those of the marks
    std::map<QByteArray, QString> pictures_;   // the same, by the pixels
};

} // namespace Zem::Fig2Qt
