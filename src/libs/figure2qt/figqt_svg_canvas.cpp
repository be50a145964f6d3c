#include "figqt_svg_canvas.h"

#include "figqt_number.h"
#include "figqt_path_walk.h"
#include "figqt_picture_scaler.h"
#include "figqt_units.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

constexpr double UNITS_PER_MM = 2.0 / VectorCanvas::CELL;

QString number(double value)
{
    std::string text;
    appendNumber(&text, value, 4);
    return QString::fromStdString(text);
}

QString matrixOf(QTransform const &transform)
{
    std::string text = "matrix(";
    for (double const value : {transform.m11(), transform.m12(), transform.m21(), transform.m22()}) {
        appendNumber(&text, value, 7);
        text += ' ';
    }
    return QString::fromStdString(text) + number(transform.dx()) + QLatin1Char(' ') + number(transform.dy()) +
           QLatin1Char(')');
}

QString pathData(QPainterPath const &path)
{
    struct
    {
        std::string text;
        void step(char op, std::initializer_list<QPointF> points)
        {
            text += op;
            for (QPointF const &point : points) {
                appendNumber(&text, point.x(), 4);
                text += ' ';
                appendNumber(&text, point.y(), 4);
                text += ' ';
            }
            if (points.size() > 0)
                text.pop_back();
        }
        void moveTo(QPointF const &to) { step('M', {to}); }
        void lineTo(QPointF const &to) { step('L', {to}); }
        void curveTo(QPointF const &a, QPointF const &b, QPointF const &to) { step('C', {a, b, to}); }
        void close() { step('Z', {}); }
    } visitor;
    walkPath(path, visitor);
    return QString::fromStdString(visitor.text);
}

QString ruleOf(QPainterPath const &path)
{
    return path.fillRule() == Qt::OddEvenFill ? QStringLiteral("evenodd") : QStringLiteral("nonzero");
}

QString hexadecimal(Color const &color)
{
    return QStringLiteral("#%1").arg(static_cast<unsigned>(color.getRed()) << 16U |
                                         static_cast<unsigned>(color.getGreen()) << 8U | color.getBlue(),
                                     6, 16, QLatin1Char('0'));
}

/// What XML can hold: no control characters, no half of a pair.
QString printable(QString const &text)
{
    QString result = text;
    for (qsizetype i = 0; i < result.size(); ++i) {
        QChar const character = result[i];
        if (character.isHighSurrogate() && i + 1 < result.size() && result[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (character.unicode() < 0x20 || character.isSurrogate() || character.unicode() >= 0xfffe)
            result[i] = QChar::ReplacementCharacter;
    }
    return result;
}

/// With what a viewer without the font should take.
QString familyList(QString family)
{
    family.remove(QLatin1Char('\''));
    return QStringLiteral("'%1',sans-serif").arg(printable(family));
}

/// Where a word begins within its text, and where its place is on the base line, in text units.
struct Word
{
    qsizetype start;
    double x;
};

/// The words with the blanks behind them. One word when the glyphs do not tell where its words are.
std::vector<Word> wordsOf(TextRun const &run)
{
    std::vector<Word> words{{0, 0.0}};
    if (run.rightToLeft || run.shape->glyphs.size() != 1)
        return words;
    QList<QPointF> const positions = run.shape->glyphs[0].positions();
    if (positions.size() != run.text.size())
        return words;
    for (qsizetype i = 1; i < run.text.size(); ++i) {
        if (run.text[i - 1].isSpace() && !run.text[i].isSpace())
            words.push_back({i, positions[i].x()});
    }
    return words;
}

} // namespace

void SvgCanvas::attribute(char const *name, QString const &value)
{
    xml_->writeAttribute(QString::fromLatin1(name), value);
}

void SvgCanvas::attribute(char const *name, double value)
{
    attribute(name, number(value));
}

void SvgCanvas::color(char const *name, char const *opacityName, Color const &color)
{
    attribute(name, hexadecimal(color));
    if (color.getAlpha() != 255)
        attribute(opacityName, color.getAlpha() / 255.0);
}

void SvgCanvas::writeStroke(Stroke const &stroke)
{
    color("stroke", "stroke-opacity", stroke.color);
    attribute("stroke-width", stroke.width);
    // Otherwise ends that are cut off and mitres up to MITER_LIMIT, which SVG has by itself.
    if (stroke.round) {
        attribute("stroke-linecap", QStringLiteral("round"));
        attribute("stroke-linejoin", QStringLiteral("round"));
    }
    QStringList dashes;
    for (double const length : stroke.dashes)
        dashes.append(number(length));
    if (!dashes.isEmpty())
        attribute("stroke-dasharray", dashes.join(QLatin1Char(' ')));
}

/// As the steps from point to point, which are short numbers; of points that are rounded, so that nothing adds up.
void SvgCanvas::appendLine(Polyline const &line, bool dense, std::string *path) const
{
    constexpr double FINEST = 1000.0; // to the millimetre
    double const grid = dense ? UNITS_PER_MM : FINEST;
    double const unit = dense ? 1.0 : FINEST;
    QPointF last;
    for (std::size_t i = 0; i < line.points.size(); ++i) {
        QPointF const at(std::round(line.points[i].x() * grid), std::round(line.points[i].y() * grid));
        *path += i == 0 ? 'M' : 'l';
        appendNumber(path, (at.x() - last.x()) / unit, 3);
        *path += ' ';
        appendNumber(path, (at.y() - last.y()) / unit, 3);
        last = at;
    }
    if (line.closed)
        *path += 'Z';
}

void SvgCanvas::appendRect(QRectF const &rect, std::string *path) const
{
    std::array const corners{rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()};
    appendLine({corners, true}, false, path);
}

void SvgCanvas::writeLines(std::string const &path, bool dense, Stroke const &stroke)
{
    xml_->writeEmptyElement(QStringLiteral("path"));
    if (dense)
        attribute("transform", matrixOf(QTransform::fromScale(1.0 / UNITS_PER_MM, 1.0 / UNITS_PER_MM)));
    attribute("d", QString::fromStdString(path));
    attribute("fill", QStringLiteral("none"));
    Stroke scaled = stroke;
    if (dense) {
        scaled.width *= UNITS_PER_MM;
        for (double &length : scaled.dashes)
            length *= UNITS_PER_MM;
    }
    writeStroke(scaled);
}

void SvgCanvas::writeRects(std::string const &path, Color const &fill)
{
    xml_->writeEmptyElement(QStringLiteral("path"));
    attribute("d", QString::fromStdString(path));
    color("fill", "fill-opacity", fill);
}

/// Marks of one colour that follow each other share it.
void SvgCanvas::writeMarks(Mark const &mark, std::vector<PlacedMark> const &places)
{
    QString const symbol = symbolOf(mark);
    for (std::size_t i = 0; i < places.size();) {
        Color const fill = places[i].color;
        xml_->writeStartElement(QStringLiteral("g"));
        color("fill", "fill-opacity", fill);
        for (; i < places.size() && places[i].color == fill; ++i) {
            xml_->writeEmptyElement(QStringLiteral("use"));
            attribute("href", symbol);
            attribute("x", places[i].at.x());
            attribute("y", places[i].at.y());
        }
        xml_->writeEndElement();
    }
}

QString SvgCanvas::symbolOf(Mark const &mark)
{
    auto const [symbol, isNew] = symbols_.try_emplace(mark.id);
    if (isNew) {
        QString const id = QStringLiteral("mark%1").arg(++lastId_);
        symbol->second = QLatin1Char('#') + id;
        xml_->writeStartElement(QStringLiteral("defs"));
        xml_->writeEmptyElement(QStringLiteral("path"));
        attribute("id", id);
        attribute("d", pathData(mark.path));
        attribute("fill-rule", ruleOf(mark.path));
        xml_->writeEndElement();
    }
    return symbol->second;
}

QString SvgCanvas::symbolOf(Picture const &picture)
{
    auto const [symbol, isNew] = pictures_.try_emplace(fingerprintOf(picture));
    if (isNew) {
        QString const id = QStringLiteral("picture%1").arg(++lastId_);
        symbol->second = QLatin1Char('#') + id;
        std::string const png = pngOf(picture);
        QByteArray const text = QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size())).toBase64();
        xml_->writeStartElement(QStringLiteral("defs"));
        xml_->writeEmptyElement(QStringLiteral("image"));
        attribute("id", id);
        attribute("width", picture.width);
        attribute("height", picture.height);
        attribute("preserveAspectRatio", QStringLiteral("none"));
        attribute("href", QLatin1StringView("data:image/png;base64,") + QLatin1StringView(text));
        xml_->writeEndElement();
    }
    return symbol->second;
}

void SvgCanvas::writePicture(PlacedPicture const &placed)
{
    Excerpt const excerpt = excerptOf(placed, dpi_);
    QString const symbol = symbolOf(cutOut(placed.picture, excerpt));
    QRectF const &part = excerpt.part;
    QTransform const toPage = QTransform::fromScale(part.width() / excerpt.width, part.height() / excerpt.height) *
                              QTransform::fromTranslate(part.left(), part.top()) * placed.toPage;
    xml_->writeEmptyElement(QStringLiteral("use"));
    attribute("href", symbol);
    attribute("transform", matrixOf(toPage));
    // As in a picture of this resolution, by programs that follow it.
    double const enlarged = std::hypot(toPage.m11(), toPage.m12()) * dpi_ / MM_PER_INCH;
    if (enlarged > PIXELS_ARE_SEEN)
        attribute("image-rendering", QStringLiteral("pixelated"));
}

void SvgCanvas::drawPath(QPainterPath const &path, Stroke const *stroke, Color const *fill)
{
    finish();
    xml_->writeEmptyElement(QStringLiteral("path"));
    attribute("d", pathData(path));
    if (fill) {
        color("fill", "fill-opacity", *fill);
        attribute("fill-rule", ruleOf(path));
    } else {
        attribute("fill", QStringLiteral("none"));
    }
    if (stroke)
        writeStroke(*stroke);
}

void SvgCanvas::drawShape(TextShape const &shape)
{
    Stroke stroke;
    if (shape.stroke) {
        stroke.color = *shape.stroke;
        stroke.width = shape.strokeWidth * MM_PER_UNIT;
    }
    drawPath(QTransform::fromScale(MM_PER_UNIT, MM_PER_UNIT).map(shape.path), shape.stroke ? &stroke : nullptr,
             shape.fill ? &*shape.fill : nullptr);
}

void SvgCanvas::drawText(TextLayout const &layout, QTransform const &toPage)
{
    finish();
    xml_->writeStartElement(QStringLiteral("g"));
    attribute("transform", matrixOf(QTransform::fromScale(1.0 / MM_PER_UNIT, 1.0 / MM_PER_UNIT) * toPage));
    // What most runs share is said once.
    QString const family = layout.runs.empty() ? QString() : layout.runs.front().font.family();
    attribute("font-family", familyList(family));
    attribute("xml:space", QStringLiteral("preserve"));
    for (TextShape const &shape : layout.shapes)
        drawShape(shape);
    for (TextRun const &run : layout.runs)
        drawRun(run, family);
    xml_->writeEndElement();
}

void SvgCanvas::writeFont(TextRun const &run, QString const &groupFamily)
{
    if (run.font.family() != groupFamily)
        attribute("font-family", familyList(run.font.family()));
    attribute("font-size", run.font.pixelSize() * MM_PER_UNIT);
    if (run.font.weight() != QFont::Normal)
        attribute("font-weight", QString::number(run.font.weight()));
    if (run.font.style() != QFont::StyleNormal)
        attribute("font-style", QStringLiteral("italic"));
}

void SvgCanvas::drawRun(TextRun const &run, QString const &groupFamily)
{
    if (run.text.isEmpty())
        return;
    xml_->writeStartElement(QStringLiteral("text"));
    attribute("y", run.position.y() * MM_PER_UNIT);
    writeFont(run, groupFamily);
    color("fill", "fill-opacity", run.color);
    if (run.rightToLeft)
        attribute("direction", QStringLiteral("rtl"));
    drawWords(run);
    xml_->writeEndElement();
}

/// Each word at its place, so that other fonts or other rounding in a viewer cannot add up.
void SvgCanvas::drawWords(TextRun const &run)
{
    std::vector<Word> const words = wordsOf(run);
    for (std::size_t i = 0; i < words.size(); ++i) {
        bool const last = i + 1 == words.size();
        double const end = last ? run.width : words[i + 1].x;
        qsizetype const next = last ? run.text.size() : words[i + 1].start;
        bool const single = words.size() == 1;
        if (!single)
            xml_->writeStartElement(QStringLiteral("tspan"));
        double const from = run.position.x() + (run.rightToLeft ? end : words[i].x);
        attribute("x", from * MM_PER_UNIT);
        attribute("textLength", (end - words[i].x) * MM_PER_UNIT);
        attribute("lengthAdjust", QStringLiteral("spacingAndGlyphs"));
        xml_->writeCharacters(printable(run.text.mid(words[i].start, next - words[i].start)));
        if (!single)
            xml_->writeEndElement();
    }
}

void SvgCanvas::drawStrip(QRectF const &rect, bool vertical, std::vector<Color> const &colors, QTransform const &toPage)
{
    finish();
    QString const id = QStringLiteral("strip%1").arg(++lastId_);
    QPointF const end = vertical ? rect.bottomLeft() : rect.topRight();
    xml_->writeStartElement(QStringLiteral("linearGradient"));
    attribute("id", id);
    attribute("gradientUnits", QStringLiteral("userSpaceOnUse"));
    attribute("x1", rect.left());
    attribute("y1", rect.top());
    attribute("x2", end.x());
    attribute("y2", end.y());
    double const last = std::max(1.0, static_cast<double>(colors.size() - 1));
    for (std::size_t i = 0; i < colors.size(); ++i) {
        xml_->writeEmptyElement(QStringLiteral("stop"));
        attribute("offset", static_cast<double>(i) / last);
        color("stop-color", "stop-opacity", colors[i]);
    }
    xml_->writeEndElement();
    xml_->writeEmptyElement(QStringLiteral("rect"));
    attribute("transform", matrixOf(toPage));
    attribute("x", rect.left());
    attribute("y", rect.top());
    attribute("width", rect.width());
    attribute("height", rect.height());
    attribute("fill", QStringLiteral("url(#%1)").arg(id));
}

void SvgCanvas::pushClip(QPainterPath const &area)
{
    finish();
    QString const id = QStringLiteral("clip%1").arg(++lastId_);
    xml_->writeStartElement(QStringLiteral("clipPath"));
    attribute("id", id);
    xml_->writeEmptyElement(QStringLiteral("path"));
    attribute("d", pathData(area));
    attribute("clip-rule", ruleOf(area));
    xml_->writeEndElement();
    xml_->writeStartElement(QStringLiteral("g"));
    attribute("clip-path", QStringLiteral("url(#%1)").arg(id));
}

void SvgCanvas::popClip()
{
    finish();
    xml_->writeEndElement();
}

} // namespace Zem::Fig2Qt
