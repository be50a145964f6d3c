// figqt_pdf_canvas.h: a canvas on the content of a PDF page.
#pragma once

#include "figqt_pdf_font.h"
#include "figqt_pdf_pictures.h"
#include "figqt_vector_canvas.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace Zem::Fig2Qt {

class PdfFile;

/// Gathers the operators of one page and what they refer to.
class PdfCanvas : public VectorCanvas
{
public:
    /// `height` of the page in millimetres. File, fonts and pictures are not owned.
    PdfCanvas(PdfFile *file, PdfFonts *fonts, PdfPictures *pictures, double height);

    std::string const &getContent() const { return content_; }
    /// The dictionary of what the content refers to.
    std::string getResources() const;

    void drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill) override;
    void drawText(TextLayout const &layout, QTransform const &toPage) override;
    void drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors,
                   QTransform const &toPage) override;
    void pushClip(QPainterPath const &area) override;
    void popClip() override;

private:
    /// What the file's graphics state holds, so that only changes are written.
    struct State
    {
        std::optional<Color> fill;
        std::optional<Color> strokeColor;
        double strokeWidth = -1.0;
        int caps = -1;
        std::vector<double> dashes;
        int fillAlpha = 255;
        int strokeAlpha = 255;
        PdfFont const *font = nullptr;
        double fontSize = 0.0;
    };

    void number(double value, int decimals = 4);
    void point(QPointF const &at);
    void matrix(QTransform const &transform, char const *op);
    void color(Color const &color, char const *op);
    void setFill(Color const &color);
    void setStroke(Stroke const &stroke);
    void dashPattern(std::vector<double> const &lengths, double scale);
    void appendLine(Polyline const &line, bool dense, std::string *path) const override;
    void appendRect(QRectF const &rect, std::string *path) const override;
    void writeLines(std::string const &path, bool dense, Stroke const &stroke) override;
    void writeRects(std::string const &path, Color const &fill) override;
    void writePicture(PlacedPicture const &placed) override;
    void writeMarks(Mark const &mark, std::vector<PlacedMark> const &places) override;
    int formOf(Mark const &mark);
    void setAlpha(char kind, int alpha);
    void setFont(PdfFont const &font, double size);
    void addPath(QPainterPath const &path);
    void drawShape(TextShape const &shape, QTransform const &toPage);
    void drawRun(TextRun const &run, QTransform const &toPage);
    void drawGlyphs(QGlyphRun const &glyphs, PdfFont *font, TextRun const &run, QTransform const &toPage);
    void drawOutlines(QGlyphRun const &glyphs, TextRun const &run, QTransform const &toPage);
    void beginText(QTransform const &toPage, double slant, QPointF const &origin);
    void moveTo(QPointF const &origin);
    void showGlyphs(PdfFont *font, QGlyphRun const &glyphs);
    void drawBands(QRectF const &rect, bool vertical, std::vector<Color> const &colors, QTransform const &toPage);
    int shadingOf(QRectF const &rect, bool vertical, std::vector<Color> const &colors);

    PdfFile *file_;
    PdfFonts *fonts_;
    PdfPictures *pictures_;
    std::string content_;
    State state_;
    QPointF textOrigin_; // where the line of text in hand begins, millimetres from the corner of its layout, y up
    std::vector<State> outer_;
    std::map<std::string, int> usedFonts_;
    std::set<std::string> usedStates_;
    std::vector<int> usedShadings_;
    std::map<std::uint64_t, int> forms_; // of marks, by their id
    std::set<int> usedPictures_;
};

} // namespace Zem::Fig2Qt
