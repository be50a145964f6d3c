#include "ZemFig2QtPainter.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace Zem::Fig2Qt {

using namespace Fig2;

namespace {

constexpr double HAIRLINE = 0.05;         ///< the width of a visible line of width 0
constexpr double MINIMUM_DASH_UNIT = 0.2; ///< dots and dashes of thinner lines stay as far apart as of this width
constexpr std::size_t PIECE = 16;         ///< segments stroked at once: the time for one long stroke grows with its square
constexpr std::size_t LONG_OUTLINE = 200;

QColor toQColor(Color const &color)
{
    return {color.getRed(), color.getGreen(), color.getBlue(), color.getAlpha()};
}

QPointF toQPointF(BaVec2d<double> const &point)
{
    return {point.x, point.y};
}

bool isFinite(BaVec2d<double> const &point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool areFinite(std::vector<BaVec2d<double>> const &points)
{
    return std::all_of(points.begin(), points.end(), isFinite);
}

double toDegrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

/// Dash and gap lengths in line widths.
QList<qreal> dashPattern(LineStyle::Style style, bool roundCaps)
{
    // A round cap adds half a width to both ends of a dash.
    double const cap = roundCaps ? 1.0 : 0.0;
    double const dot = roundCaps ? 0.01 : 1.0;
    switch (style) {
    case LineStyle::STYLE_DOTTED:
        return {dot, 2.0 + cap};
    case LineStyle::STYLE_DASHED:
        return {5.0 - cap, 3.0 + cap};
    case LineStyle::STYLE_DASH_DOTTED:
        return {6.0 - cap, 2.0 + cap, dot, 2.0 + cap};
    default:
        return {};
    }
}

QPen toQPen(LineStyle const &line)
{
    if (line.getStyle() == LineStyle::STYLE_NONE || !std::isfinite(line.getWidth()))
        return QPen(Qt::NoPen);
    bool const round = line.getCapStyle() == LineStyle::CAP_ROUND;
    double const width = line.getWidth() > 0.0 ? line.getWidth() : HAIRLINE;
    QPen pen(toQColor(line.getColor()), width, Qt::SolidLine, round ? Qt::RoundCap : Qt::FlatCap,
             round ? Qt::RoundJoin : Qt::MiterJoin);
    QList<qreal> dashes = dashPattern(line.getStyle(), round);
    if (dashes.isEmpty())
        return pen;
    double const stretch = std::max(1.0, MINIMUM_DASH_UNIT / width);
    for (qreal &length : dashes)
        length *= stretch;
    pen.setDashPattern(dashes);
    return pen;
}

QBrush toQBrush(FillStyle const &fill)
{
    return fill.getFilled() ? QBrush(toQColor(fill.getColor())) : QBrush(Qt::NoBrush);
}

void rotate(QPainter *painter, Rotation const &rotation)
{
    painter->translate(toQPointF(rotation.getBase()));
    painter->rotate(-toDegrees(rotation.getAngle()));
    painter->translate(-toQPointF(rotation.getBase()));
}

/// Turns the painter as long as it lives, and not at all for no angle.
class RotationScope
{
public:
    RotationScope(QPainter *painter, Rotation const &rotation)
        : painter_(rotation.getAngle() != 0.0 && std::isfinite(rotation.getAngle()) ? painter : nullptr)
    {
        if (!painter_)
            return;
        painter_->save();
        rotate(painter_, rotation);
    }
    ~RotationScope()
    {
        if (painter_)
            painter_->restore();
    }
    RotationScope(RotationScope const &) = delete;
    RotationScope &operator=(RotationScope const &) = delete;

private:
    QPainter *painter_;
};

QPainterPath pathOf(Polygon2d const &polygon, bool closed)
{
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    for (std::size_t part = 0; part < polygon.getNumberOfParts(); ++part) {
        auto const points = polygon.getPart(part);
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (i == 0)
                path.moveTo(toQPointF(points[i]));
            else
                path.lineTo(toQPointF(points[i]));
        }
        if (closed)
            path.closeSubpath();
    }
    return path;
}

} // namespace

QtPainter::QtPainter(QPainter *painter, TextLayoutCache *layouts) : painter_(painter), layouts_(layouts)
{
    painter_->setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

void QtPainter::drawPath(QPainterPath const &path, LineStyle const &line, FillStyle const &fill,
                         Rotation const &rotation)
{
    RotationScope const turned(painter_, rotation);
    painter_->setPen(toQPen(line));
    painter_->setBrush(toQBrush(fill));
    painter_->drawPath(path);
}

void QtPainter::drawLine(BaVec2d<double> const &from, BaVec2d<double> const &to, LineStyle const &line,
                         Rotation const &rotation)
{
    if (!isFinite(from) || !isFinite(to) || line.getStyle() == LineStyle::STYLE_NONE)
        return;
    RotationScope const turned(painter_, rotation);
    painter_->setPen(toQPen(line));
    painter_->drawLine(toQPointF(from), toQPointF(to));
}

/// One wide antialiased stroke of many points takes time with their square; pieces take it in proportion.
void QtPainter::strokeInPieces(std::vector<BaVec2d<double>> const &points, bool closed)
{
    std::size_t const last = closed ? points.size() : points.size() - 1;
    for (std::size_t begin = 0; begin < last; begin += PIECE) {
        QPainterPath piece(toQPointF(points[begin]));
        for (std::size_t i = begin + 1; i <= std::min(begin + PIECE, last); ++i)
            piece.lineTo(toQPointF(points[i % points.size()]));
        painter_->drawPath(piece);
    }
}

void QtPainter::drawPolygon(Polygon2d const &polygon, LineStyle const &line, FillStyle const &fill,
                            Rotation const &rotation, bool closed)
{
    if (polygon.empty() || !areFinite(polygon.getPoints()))
        return;
    bool const inPieces = polygon.size() > LONG_OUTLINE && polygon.getNumberOfParts() == 1 &&
                          line.getStyle() != LineStyle::STYLE_NONE;
    if (!inPieces) {
        drawPath(pathOf(polygon, closed), line, fill, rotation);
        return;
    }
    if (fill.getFilled())
        drawPath(pathOf(polygon, closed), LineStyle::null, fill, rotation);
    RotationScope const turned(painter_, rotation);
    painter_->setPen(toQPen(line));
    painter_->setBrush(Qt::NoBrush);
    strokeInPieces(polygon.getPoints(), closed);
}

void QtPainter::drawEllipse(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double angle,
                            LineStyle const &line, FillStyle const &fill, Rotation const &rotation)
{
    if (!isFinite(centre) || !isFinite(radii) || !std::isfinite(angle))
        return;
    RotationScope const turned(painter_, rotation);
    QPainterPath path;
    path.addEllipse(toQPointF(centre), std::abs(radii.x), std::abs(radii.y));
    drawPath(path, line, fill, Rotation(centre, angle));
}

void QtPainter::drawEllipseSegment(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double startAngle,
                                   double endAngle, double angle, LineStyle const &line, FillStyle const &fill,
                                   Rotation const &rotation)
{
    if (!isFinite(centre) || !isFinite(radii) || !std::isfinite(startAngle + endAngle + angle))
        return;
    RotationScope const turned(painter_, rotation);
    QRectF const box(centre.x - std::abs(radii.x), centre.y - std::abs(radii.y), 2.0 * std::abs(radii.x),
                     2.0 * std::abs(radii.y));
    QPainterPath path;
    path.arcMoveTo(box, toDegrees(startAngle));
    path.arcTo(box, toDegrees(startAngle), toDegrees(endAngle - startAngle));
    drawPath(path, line, fill, Rotation(centre, angle));
}

void QtPainter::drawText(BaVec2d<double> const &position, Font const &font, QString const &text, Color const &color,
                         Rotation const &rotation)
{
    if (!isFinite(position))
        return;
    RotationScope const turned(painter_, rotation);
    painter_->save();
    painter_->translate(toQPointF(position));
    TextLayout(text, TextLayout::PLAIN, font, -1.0).draw(painter_, toQColor(color));
    painter_->restore();
}

void QtPainter::drawRichText(BaVec2d<double> const &position, QString const &text, Font const &font, double width,
                             Rotation const &rotation, int cacheId)
{
    if (text.isEmpty() || !isFinite(position) || !std::isfinite(width))
        return;
    RotationScope const turned(painter_, rotation);
    painter_->save();
    painter_->translate(toQPointF(position));
    layouts_->richText(cacheId, text, font, width).draw(painter_);
    painter_->restore();
}

void QtPainter::drawColors(BaVec2d<double> const &position, BaVec2d<double> const &size, bool vertical,
                           std::vector<Color> const &colors, Rotation const &rotation)
{
    if (colors.empty() || !isFinite(position) || !isFinite(size))
        return;
    BaVec2d<double> const end = vertical ? BaVec2d<double>(position.x, position.y + size.y)
                                         : BaVec2d<double>(position.x + size.x, position.y);
    QLinearGradient gradient(toQPointF(position), toQPointF(end));
    double const last = static_cast<double>(std::max<std::size_t>(colors.size() - 1, 1));
    for (std::size_t i = 0; i < colors.size(); ++i)
        gradient.setColorAt(static_cast<double>(i) / last, toQColor(colors[i]));
    RotationScope const turned(painter_, rotation);
    painter_->fillRect(QRectF(position.x, position.y, size.x, size.y), gradient);
}

bool QtPainter::getClipping(Polygon2d *area)
{
    if (clippings_.empty())
        return false;
    *area = clippings_.back();
    return true;
}

void QtPainter::setClipping(Polygon2d const &area)
{
    clippings_.push_back(area);
    painter_->save();
    painter_->setClipPath(areFinite(area.getPoints()) ? pathOf(area, true) : QPainterPath(), Qt::IntersectClip);
}

void QtPainter::resetClipping()
{
    if (clippings_.empty())
        return;
    clippings_.pop_back();
    painter_->restore();
}

void QtPainter::pushTransformation(BaVec2d<double> const &offset, double scaling, Rotation const &rotation)
{
    painter_->save();
    rotate(painter_, rotation);
    painter_->translate(toQPointF(offset));
    painter_->scale(scaling, scaling);
}

void QtPainter::popTransformation()
{
    painter_->restore();
}

} // namespace Zem::Fig2Qt
