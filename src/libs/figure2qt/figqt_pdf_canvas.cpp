#include "figqt_pdf_canvas.h"

#include "figqt_number.h"
#include "figqt_path_walk.h"
#include "figqt_pdf_file.h"
#include "figqt_units.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Zem::Fig2Qt {

namespace {

constexpr double POINTS_PER_MM = 72.0 / MM_PER_INCH;
constexpr int BANDS = 256;
constexpr double UNITS_PER_MM = 2.0 / VectorCanvas::CELL;

void append(std::string *path, std::initializer_list<double> values, int decimals, char const *op)
{
    for (double const value : values) {
        appendNumber(path, value, decimals);
        *path += ' ';
    }
    *path += op;
}

Color mixed(Color const &a, Color const &b, double share)
{
    auto const mix = [share](int x, int y) { return static_cast<unsigned char>(std::lround(x + (y - x) * share)); };
    return {mix(a.getRed(), b.getRed()), mix(a.getGreen(), b.getGreen()), mix(a.getBlue(), b.getBlue()),
            mix(a.getAlpha(), b.getAlpha())};
}

} // namespace

PdfCanvas::PdfCanvas(PdfFile *file, PdfFonts *fonts, PdfPictures *pictures, double height)
    : file_(file), fonts_(fonts), pictures_(pictures)
{
    number(POINTS_PER_MM, 9);
    content_ += "0 0 ";
    number(-POINTS_PER_MM, 9);
    content_ += "0 ";
    number(std::floor(height * POINTS_PER_MM * 1e4) / 1e4); // as the page box
    content_ += "cm 4 M\n";                                 // 4: MITER_LIMIT
}

std::string PdfCanvas::getResources() const
{
    std::string result = "<<";
    if (!usedFonts_.empty()) {
        result += "/Font<<";
        for (auto const &[name, object] : usedFonts_)
            result += "/" + name + " " + reference(object);
        result += ">>";
    }
    if (!usedStates_.empty()) {
        result += "/ExtGState<<";
        for (std::string const &state : usedStates_)
            result += state;
        result += ">>";
    }
    if (!usedShadings_.empty()) {
        result += "/Shading<<";
        for (int const object : usedShadings_)
            result += "/S" + std::to_string(object) + " " + reference(object);
        result += ">>";
    }
    if (!forms_.empty() || !usedPictures_.empty()) {
        result += "/XObject<<";
        for (int const object : usedPictures_)
            result += "/I" + std::to_string(object) + " " + reference(object);
        for (auto const &[id, object] : forms_)
            result += "/M" + std::to_string(object) + " " + reference(object);
        result += ">>";
    }
    return result + ">>";
}

void PdfCanvas::number(double value, int decimals)
{
    appendNumber(&content_, value, decimals);
    content_ += ' ';
}

void PdfCanvas::point(QPointF const &at)
{
    number(at.x());
    number(at.y());
}

void PdfCanvas::matrix(QTransform const &transform, char const *op)
{
    for (double const value : {transform.m11(), transform.m12(), transform.m21(), transform.m22()})
        number(value, 6);
    number(transform.dx());
    number(transform.dy());
    content_ += op;
}

void PdfCanvas::color(Color const &color, char const *op)
{
    for (int const channel : {color.getRed(), color.getGreen(), color.getBlue()})
        number(channel / 255.0, 3);
    content_ += op;
}

void PdfCanvas::setAlpha(char kind, int alpha)
{
    std::string const name = std::string{'/', kind} + std::to_string(alpha);
    std::string value;
    appendNumber(&value, alpha / 255.0, 4);
    usedStates_.insert(name + (kind == 'f' ? "<</ca " : "<</CA ") + value + ">>");
    content_ += name + " gs\n";
}

void PdfCanvas::setFill(Color const &fill)
{
    if (state_.fillAlpha != fill.getAlpha())
        setAlpha('f', state_.fillAlpha = fill.getAlpha());
    Color const opaque(fill.getRed(), fill.getGreen(), fill.getBlue());
    if (state_.fill == opaque)
        return;
    state_.fill = opaque;
    color(opaque, "rg\n");
}

void PdfCanvas::setStroke(Stroke const &stroke)
{
    if (state_.strokeAlpha != stroke.color.getAlpha())
        setAlpha('s', state_.strokeAlpha = stroke.color.getAlpha());
    Color const opaque(stroke.color.getRed(), stroke.color.getGreen(), stroke.color.getBlue());
    if (state_.strokeColor != opaque) {
        state_.strokeColor = opaque;
        color(opaque, "RG\n");
    }
    if (state_.strokeWidth != stroke.width) {
        state_.strokeWidth = stroke.width;
        number(stroke.width);
        content_ += "w\n";
    }
    if (state_.caps != static_cast<int>(stroke.round)) {
        state_.caps = static_cast<int>(stroke.round);
        content_ += stroke.round ? "1 J 1 j\n" : "0 J 0 j\n";
    }
    if (state_.dashes != stroke.dashes) {
        state_.dashes = stroke.dashes;
        dashPattern(stroke.dashes, 1.0);
    }
}

void PdfCanvas::dashPattern(std::vector<double> const &lengths, double scale)
{
    content_ += '[';
    for (double const length : lengths)
        number(length * scale);
    content_ += "]0 d\n";
}

void PdfCanvas::addPath(QPainterPath const &path)
{
    struct
    {
        PdfCanvas *canvas;
        void step(char const *op, std::initializer_list<QPointF> points)
        {
            for (QPointF const &at : points)
                canvas->point(at);
            canvas->content_ += op;
        }
        void moveTo(QPointF const &to) { step("m\n", {to}); }
        void lineTo(QPointF const &to) { step("l\n", {to}); }
        void curveTo(QPointF const &a, QPointF const &b, QPointF const &to) { step("c\n", {a, b, to}); }
        void close() { step("h\n", {}); }
    } visitor{this};
    walkPath(path, visitor);
}

void PdfCanvas::appendLine(Polyline const &line, bool dense, std::string *path) const
{
    double const scale = dense ? UNITS_PER_MM : 1.0;
    char const *op = "m\n";
    for (QPointF const &at : line.points) {
        append(path, {at.x() * scale, at.y() * scale}, dense ? 0 : 3, op);
        op = "l\n";
    }
    if (line.closed)
        *path += "h\n";
}

void PdfCanvas::appendRect(QRectF const &rect, std::string *path) const
{
    append(path, {rect.x(), rect.y(), rect.width(), rect.height()}, 4, "re\n");
}

void PdfCanvas::writeLines(std::string const &path, bool dense, Stroke const &stroke)
{
    setStroke(stroke);
    if (!dense) {
        content_ += path + "S\n";
        return;
    }
    content_ += "q ";
    matrix(QTransform::fromScale(1.0 / UNITS_PER_MM, 1.0 / UNITS_PER_MM), "cm ");
    number(stroke.width * UNITS_PER_MM);
    content_ += "w\n";
    if (!stroke.dashes.empty())
        dashPattern(stroke.dashes, UNITS_PER_MM);
    content_ += path + "S Q\n";
}

void PdfCanvas::writeRects(std::string const &path, Color const &fill)
{
    setFill(fill);
    content_ += path + "f\n";
}

void PdfCanvas::writeMarks(Mark const &mark, std::vector<PlacedMark> const &places)
{
    std::string const show = "cm/M" + std::to_string(formOf(mark)) + " Do Q\n";
    for (PlacedMark const &place : places) {
        setFill(place.color);
        content_ += "q 1 0 0 1 ";
        number(place.at.x(), 3);
        number(place.at.y(), 3);
        content_ += show;
    }
}

/// The mark as a content of its own, filled with the colour in force.
int PdfCanvas::formOf(Mark const &mark)
{
    auto const [form, isNew] = forms_.try_emplace(mark.id, 0);
    if (!isNew)
        return form->second;
    std::string const page = std::exchange(content_, {});
    addPath(mark.path);
    std::string const shape = std::exchange(content_, page) + (mark.path.fillRule() == Qt::OddEvenFill ? "f*" : "f");
    QRectF const box = mark.path.boundingRect();
    std::string entries = "/Type/XObject/Subtype/Form/BBox[";
    append(&entries, {box.left() - 0.001, box.top() - 0.001, box.right() + 0.001, box.bottom() + 0.001}, 4, "]");
    form->second = file_->reserve();
    file_->writeStream(form->second, entries, shape);
    return form->second;
}

void PdfCanvas::drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill)
{
    finish();
    if (fill)
        setFill(*fill);
    if (stroke)
        setStroke(*stroke);
    addPath(path);
    bool const evenOdd = path.fillRule() == Qt::OddEvenFill;
    if (fill && stroke)
        content_ += evenOdd ? "B*\n" : "B\n";
    else if (fill)
        content_ += evenOdd ? "f*\n" : "f\n";
    else
        content_ += "S\n";
}

void PdfCanvas::writePicture(PlacedPicture const &placed)
{
    auto const [object, excerpt] = pictures_->write(placed);
    usedPictures_.insert(object);
    if (state_.fillAlpha != 255)
        setAlpha('f', state_.fillAlpha = 255);
    // A picture of PDF is a square of 1 with its first row on top, where y is 1.
    QRectF const &part = excerpt.part;
    content_ += "q ";
    matrix(QTransform(part.width(), 0.0, 0.0, -part.height(), part.left(), part.bottom()) * placed.toPage, "cm ");
    content_ += "/I" + std::to_string(object) + " Do Q\n";
}

void PdfCanvas::pushClip(QPainterPath const &area)
{
    finish();
    content_ += "q\n";
    outer_.push_back(state_);
    // An empty area hides everything; PDF wants at least a point.
    if (area.isEmpty())
        content_ += "0 0 m ";
    addPath(area);
    content_ += area.fillRule() == Qt::OddEvenFill ? "W* n\n" : "W n\n";
}

void PdfCanvas::popClip()
{
    finish();
    content_ += "Q\n";
    state_ = outer_.back();
    outer_.pop_back();
}

void PdfCanvas::drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors, QTransform const &toPage)
{
    finish();
    bool const opaque =
        std::all_of(colors.begin(), colors.end(), [](Color const &one) { return one.getAlpha() == 255; });
    if (colors.size() == 1 || !opaque)
        return drawBands(rect, vertical, colors, toPage);
    if (state_.fillAlpha != 255)
        setAlpha('f', state_.fillAlpha = 255);
    content_ += "q ";
    matrix(toPage, "cm ");
    point(rect.topLeft());
    number(rect.width());
    number(rect.height());
    content_ += "re W n /S" + std::to_string(shadingOf(rect, vertical, colors)) + " sh Q\n";
}

/// A shading has no transparency, so such a strip is cut into narrow bands.
void PdfCanvas::drawBands(QRectF const &rect, bool vertical, std::vector<Color> const &colors, QTransform const &toPage)
{
    int const bands = colors.size() == 1 ? 1 : BANDS;
    QSizeF const step(vertical ? rect.width() : rect.width() / bands, vertical ? rect.height() / bands : rect.height());
    for (int i = 0; i < bands; ++i) {
        double const place = (i + 0.5) / bands * static_cast<double>(colors.size() - 1);
        std::size_t const lower = std::min(static_cast<std::size_t>(place), colors.size() - 1);
        Color const band =
            mixed(colors[lower], colors[std::min(lower + 1, colors.size() - 1)], place - static_cast<double>(lower));
        QPainterPath path;
        path.addRect(
            QRectF(rect.topLeft() + (vertical ? QPointF(0, i * step.height()) : QPointF(i * step.width(), 0)), step));
        drawPath(toPage.map(path), nullptr, &band);
    }
}

int PdfCanvas::shadingOf(QRectF const &rect, bool vertical, std::vector<Color> const &colors)
{
    std::string samples;
    for (Color const &one : colors) {
        for (unsigned char const channel : {one.getRed(), one.getGreen(), one.getBlue()})
            samples += static_cast<char>(channel);
    }
    int const function = file_->reserve();
    file_->writeStream(function,
                       "/FunctionType 0/Domain[0 1]/Range[0 1 0 1 0 1]/BitsPerSample 8/Size[" +
                           std::to_string(colors.size()) + "]",
                       samples);
    std::string coordinates;
    QPointF const end = vertical ? rect.bottomLeft() : rect.topRight();
    for (double const value : {rect.left(), rect.top(), end.x(), end.y()}) {
        appendNumber(&coordinates, value, 4);
        coordinates += ' ';
    }
    int const shading = file_->reserve();
    file_->writeObject(shading, "<</ShadingType 2/ColorSpace/DeviceRGB/Coords[" + coordinates + "]/Function " +
                                    reference(function) + ">>");
    usedShadings_.push_back(shading);
    return shading;
}

} // namespace Zem::Fig2Qt
