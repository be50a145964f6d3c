#include "RecordingPainter.h"

#include <ZemImage.h>

#include <cstdio>

namespace Zem::Support {

using namespace Fig2;

std::string text(double number)
{
    char buffer[32];
    // Adding zero turns a negative zero into a plain one.
    std::snprintf(buffer, sizeof buffer, "%.6g", std::abs(number) < 1e-12 ? 0.0 : number);
    return buffer;
}

std::string text(BaVec2d<double> const &point)
{
    return text(point.x) + "," + text(point.y);
}

std::string text(Polygon2d const &polygon)
{
    std::string result;
    for (BaVec2d<double> const &point : polygon.getPoints())
        result += (result.empty() ? "" : " ") + text(point);
    return result;
}

namespace {

std::string text(Color const &color)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "#%02x%02x%02x%02x", color.getRed(), color.getGreen(), color.getBlue(),
                  color.getAlpha());
    return buffer;
}

std::string pen(LineStyle const &line)
{
    if (line.getStyle() == LineStyle::STYLE_NONE)
        return " no pen";
    return " pen " + Support::text(line.getWidth()) + " " + LineStyle::getStyleParameterName(line.getStyle()).toStdString() +
           " " + text(line.getColor()) + " " + LineStyle::getCapStyleParameterName(line.getCapStyle()).toStdString();
}

std::string brush(FillStyle const &fill)
{
    return fill.getFilled() ? " fill " + text(fill.getColor()) : " no fill";
}

std::string text(Font const &font)
{
    return " font " + font.getFamily().toStdString() + " " + Support::text(font.getSize()) + " " +
           std::to_string(font.getStyle());
}

std::string sizeText(Zem::Image const *image)
{
    return std::to_string(image->getWidth()) + "x" + std::to_string(image->getHeight());
}

} // namespace

void RecordingPainter::record(std::string const &call, Rotation const &rotation)
{
    if (rotation.getAngle() == 0.0)
        calls_.push_back(call);
    else
        calls_.push_back(call + " turned " + Support::text(rotation.getAngle()) + " about " + Support::text(rotation.getBase()));
}

void RecordingPainter::drawLine(BaVec2d<double> const &from, BaVec2d<double> const &to, LineStyle const &line,
                                Rotation const &rotation)
{
    record("line " + Support::text(from) + " " + Support::text(to) + pen(line), rotation);
}

void RecordingPainter::drawPolygon(Polygon2d const &polygon, LineStyle const &line, FillStyle const &fill,
                                   Rotation const &rotation, bool closed)
{
    std::string const points = polygon.empty() ? "" : " " + Support::text(polygon);
    record((closed ? "polygon" : "polyline") + points + pen(line) + brush(fill), rotation);
}

void RecordingPainter::drawEllipse(BaVec2d<double> const &centre, BaVec2d<double> const &radii, double angle,
                                   LineStyle const &line, FillStyle const &fill, Rotation const &rotation)
{
    record("ellipse " + Support::text(centre) + " radii " + Support::text(radii) + " angle " + Support::text(angle) + pen(line) +
               brush(fill),
           rotation);
}

void RecordingPainter::drawEllipseSegment(BaVec2d<double> const &centre, BaVec2d<double> const &radii,
                                          double startAngle, double endAngle, double angle, LineStyle const &line,
                                          FillStyle const &fill, Rotation const &rotation)
{
    record("segment " + Support::text(centre) + " radii " + Support::text(radii) + " from " + Support::text(startAngle) + " to " +
               Support::text(endAngle) + " angle " + Support::text(angle) + pen(line) + brush(fill),
           rotation);
}

void RecordingPainter::drawText(BaVec2d<double> const &position, Font const &font, QString const &content,
                                Color const &color, Rotation const &rotation)
{
    record("text " + Support::text(position) + " '" + content.toStdString() + "'" + text(font) + " " + text(color),
           rotation);
}

void RecordingPainter::drawRichText(BaVec2d<double> const &position, QString const &content, Font const &font,
                                    double width, Rotation const &rotation, int)
{
    record("richtext " + Support::text(position) + " '" + content.toStdString() + "'" + text(font) + " width " +
               Support::text(width),
           rotation);
}

void RecordingPainter::drawImage(BaVec2d<double> const &position, BaVec2d<double> const &size, Zem::Image const *image,
                                 ImageColor const *overlay, BaVec2d<double> const &innerOrigin, double scaling,
                                 QString const &cacheId, ImageConversion const &conversion, Rotation const &rotation)
{
    record("image " + Support::text(position) + " size " + Support::text(size) + " " + sizeText(image) +
               (overlay ? " overlay " + sizeText(overlay) : "") + " from " + Support::text(innerOrigin) + " scaling " +
               Support::text(scaling) + " id '" + cacheId.toStdString() + "' conversion " +
               std::to_string(conversion.getType()) + " " + std::to_string(conversion.getMin()) + " " +
               std::to_string(conversion.getMax()),
           rotation);
}

void RecordingPainter::drawColors(BaVec2d<double> const &position, BaVec2d<double> const &size, bool vertical,
                                  std::vector<Color> const &colors, Rotation const &rotation)
{
    std::string const ends = colors.empty() ? "" : " from " + text(colors.front()) + " to " + text(colors.back());
    record("colors " + Support::text(position) + " size " + Support::text(size) + (vertical ? " vertical " : " horizontal ") +
               std::to_string(colors.size()) + ends,
           rotation);
}

bool RecordingPainter::getClipping(Polygon2d *area)
{
    if (clippings_.empty())
        return false;
    *area = clippings_.back();
    return true;
}

void RecordingPainter::setClipping(Polygon2d const &area)
{
    clippings_.push_back(area);
    calls_.push_back("clip " + Support::text(area));
}

void RecordingPainter::resetClipping()
{
    if (!clippings_.empty())
        clippings_.pop_back();
    calls_.push_back("unclip");
}

void RecordingPainter::setDrawingNested(bool nested)
{
    calls_.push_back(nested ? "nested" : "not nested");
}

void RecordingPainter::pushTransformation(BaVec2d<double> const &offset, double scaling, Rotation const &rotation)
{
    record("transform " + Support::text(offset) + " scaling " + Support::text(scaling), rotation);
}

void RecordingPainter::popTransformation()
{
    calls_.push_back("untransform");
}

std::string RecordingPainter::transcript() const
{
    std::string lines;
    for (std::string const &call : calls_)
        lines += call + "\n";
    return lines;
}

} // namespace Zem::Support
