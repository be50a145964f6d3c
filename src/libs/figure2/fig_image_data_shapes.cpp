#include "ZemFig2ImageDataShapes.h"

#include "ZemFig2Painter.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_image_arrow.h"
#include "fig_items.h"

#include <cmath>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr char const *ERROR_CONTEXT = "Figure_ImageData_err";
constexpr unsigned int MARKER_VERSION = 2;
constexpr unsigned int LINE_VERSION = 3;    // 3: arrows
constexpr unsigned int ELLIPSE_VERSION = 4; // 2: segment; 3: a rotation behind the block; 4: angle instead of it
constexpr unsigned int TEXT_VERSION = 1;
constexpr unsigned int POLYGON_VERSION = 2; // 2: closed flag
constexpr unsigned int ARROW_MODES = 4;

bool isSameAngle(double a, double b)
{
    return std::abs(a - b) < 1e-50;
}

bool hasArrowAt(ImageDataVisualisation::ArrowMode_t mode, ImageDataVisualisation::ArrowMode_t end)
{
    return mode == end || mode == ImageDataVisualisation::ARROW_BOTH;
}

} // namespace

ImageDataPointMarker *ImageDataPointMarker::copy() const
{
    return new ImageDataPointMarker(*this);
}

void ImageDataPointMarker::scale(double factor)
{
    position_ *= factor;
}

void ImageDataPointMarker::drawShape(Painter *painter, ImagePlacement const &placement,
                                     ImageDataVisualisation const &visualisation) const
{
    BaVec2d<double> const p = placement.toPage(position_);
    double const arm = visualisation.getPointMarkerSize() * placement.scale;
    LineStyle const &line = visualisation.getLineStyle();
    painter->drawLine({p.x + arm, p.y}, {p.x - arm, p.y}, line, placement.rotation);
    painter->drawLine({p.x, p.y + arm}, {p.x, p.y - arm}, line, placement.rotation);
}

void ImageDataPointMarker::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, MARKER_VERSION, [this](auto &archive) { archive.field(position_); });
}

void ImageDataPointMarker::load(IO::InStream *stream)
{
    loadWrapped(ERROR_CONTEXT, "cannot load figure image data point marker: %1", [&] {
        ImageDataPointMarker read;
        read.ImageDataElement::load(stream);
        loadBlock(stream, MARKER_VERSION, [&read](auto &archive) { archive.field(read.position_); });
        *this = read;
    });
}

void ImageDataLineBase::scale(double factor)
{
    start_ *= factor;
    delta_ *= factor;
}

ImageDataLine *ImageDataLine::copy() const
{
    return new ImageDataLine(*this);
}

bool ImageDataLine::hasArrows() const
{
    return true;
}

void ImageDataLine::drawShape(Painter *painter, ImagePlacement const &placement,
                              ImageDataVisualisation const &visualisation) const
{
    LineStyle const &line = visualisation.getLineStyle();
    BaVec2d<double> const a = placement.toPage(getStart());
    BaVec2d<double> const b = placement.toPage(getStart() + getDelta());
    BaVec2d<double> lineStart = a;
    BaVec2d<double> lineEnd = b;
    if (visualisation.getDrawArrows() != ImageDataVisualisation::ARROW_NONE) {
        double const length = arrowHeadLength(line.getWidth(), (b - a).length());
        FillStyle const fill(line.getColor());
        Polygon2d head;
        if (hasArrowAt(arrows_, ImageDataVisualisation::ARROW_FIRST))
            lineStart = drawArrowHead(painter, a, b, length, fill, placement.rotation, &head);
        if (hasArrowAt(arrows_, ImageDataVisualisation::ARROW_SECOND))
            lineEnd = drawArrowHead(painter, b, a, length, fill, placement.rotation, &head);
    }
    painter->drawLine(lineStart, lineEnd, line, placement.rotation);
}

template <class Archive, class Self>
void ImageDataLine::blockFields(Archive &archive, Self &self)
{
    lineFields(archive, self);
    archive.keepList(self.arrows_, ARROW_MODES, Since{3});
}

void ImageDataLine::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, LINE_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void ImageDataLine::load(IO::InStream *stream)
{
    loadWrapped(ERROR_CONTEXT, "cannot load figure image data line: %1", [&] {
        ImageDataLine read; // with both arrows, as old files mean it
        read.ImageDataElement::load(stream);
        loadBlock(stream, LINE_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        *this = read;
    });
}

void ImageDataEllipseBase::scale(double factor)
{
    center_ *= factor;
    radii_ *= factor;
}

void ImageDataEllipseBase::drawEllipse(Painter *painter, ImagePlacement const &placement, LineStyle const &line,
                                       FillStyle const &fill) const
{
    BaVec2d<double> const center = placement.toPage(center_);
    BaVec2d<double> const radii = radii_ * placement.scale;
    if (isSameAngle(segment_.x, FULL.x) && isSameAngle(segment_.y, FULL.y))
        painter->drawEllipse(center, radii, angle_, line, fill, placement.rotation);
    else
        painter->drawEllipseSegment(center, radii, segment_.x, segment_.y, angle_, line, fill, placement.rotation);
}

ImageDataEllipse *ImageDataEllipse::copy() const
{
    return new ImageDataEllipse(*this);
}

void ImageDataEllipse::drawShape(Painter *painter, ImagePlacement const &placement,
                                 ImageDataVisualisation const &visualisation) const
{
    drawEllipse(painter, placement, visualisation.getLineStyle(), FillStyle::null);
}

template <class Archive, class Self>
void ImageDataEllipse::blockFields(Archive &archive, Self &self)
{
    ellipseFields(archive, self, Since{2}, Since{4});
}

void ImageDataEllipse::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, ELLIPSE_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void ImageDataEllipse::load(IO::InStream *stream)
{
    ImageDataEllipse read;
    read.ImageDataElement::load(stream);
    unsigned int const version =
        loadBlock(stream, ELLIPSE_VERSION, [&read](auto &archive) { blockFields(archive, read); });
    if (version == 3)
        Rotation().load(stream); // has no place in today's ellipse
    *this = read;
}

void ImageDataTextBase::scale(double factor)
{
    position_ *= factor;
    font_.setSize(font_.getSize() * factor);
}

void ImageDataTextBase::drawText(Painter *painter, ImagePlacement const &placement, Color const &color) const
{
    Font font = font_;
    font.setSize(font_.getSize() * placement.scale);
    painter->drawText(placement.toPage(position_), font, text_, color, placement.rotation);
}

void ImageDataTextBase::loadFont(IO::InStream *stream)
{
    Tools::load(stream, &font_);
}

void ImageDataTextBase::saveFont(IO::OutStream *stream) const
{
    Tools::save(stream, font_);
}

ImageDataText *ImageDataText::copy() const
{
    return new ImageDataText(*this);
}

void ImageDataText::drawShape(Painter *painter, ImagePlacement const &placement,
                              ImageDataVisualisation const &visualisation) const
{
    drawText(painter, placement, visualisation.getLineStyle().getColor());
}

void ImageDataText::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, TEXT_VERSION, [this](auto &archive) { textFields(archive, *this); });
    saveFont(stream);
}

void ImageDataText::load(IO::InStream *stream)
{
    loadWrapped(ERROR_CONTEXT, "cannot load figure image data text: %1", [&] {
        ImageDataText read;
        read.ImageDataElement::load(stream);
        loadBlock(stream, TEXT_VERSION, [&read](auto &archive) { textFields(archive, read); });
        read.loadFont(stream);
        *this = read;
    });
}

void ImageDataPolygonBase::scale(double factor)
{
    position_ *= factor;
    for (std::size_t i = 0; i < polygon_.size(); ++i)
        polygon_[i] *= factor;
}

void ImageDataPolygonBase::drawPolygon(Painter *painter, ImagePlacement const &placement, LineStyle const &line,
                                       FillStyle const &fill) const
{
    if (polygon_.size() < 3)
        return;
    BaVec2d<double> const p = placement.toPage(position_);
    Polygon2d onPage = polygon_;
    for (std::size_t i = 0; i < onPage.size(); ++i)
        onPage[i] = p + onPage[i] * placement.scale;
    painter->drawPolygon(onPage, line, fill, placement.rotation, closed_);
}

template <class Archive, class Self>
void ImageDataPolygonBase::blockFields(Archive &archive, Self &self, unsigned int closedSince)
{
    archive.field(self.position_);
    if constexpr (Archive::isReader) {
        std::vector<BaVec2d<double>> points;
        blockList(archive, points);
        self.polygon_ = Polygon2d(std::move(points), true);
    } else {
        blockList(archive, self.polygon_.getPoints());
    }
    archive.field(self.closed_, Since{closedSince}, true);
}

void ImageDataPolygonBase::savePolygon(IO::OutStream *stream) const
{
    saveBlock(stream, POLYGON_VERSION, [this](auto &archive) { blockFields(archive, *this, POLYGON_VERSION); });
}

void ImageDataPolygonBase::loadPolygon(IO::InStream *stream, unsigned int closedSince)
{
    loadBlock(stream, POLYGON_VERSION, [&](auto &archive) { blockFields(archive, *this, closedSince); });
}

ImageDataPolygon *ImageDataPolygon::copy() const
{
    return new ImageDataPolygon(*this);
}

void ImageDataPolygon::drawShape(Painter *painter, ImagePlacement const &placement,
                                 ImageDataVisualisation const &visualisation) const
{
    drawPolygon(painter, placement, visualisation.getLineStyle(), FillStyle::null);
}

void ImageDataPolygon::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    savePolygon(stream);
}

void ImageDataPolygon::load(IO::InStream *stream)
{
    ImageDataPolygon read;
    read.ImageDataElement::load(stream);
    read.loadPolygon(stream, 2);
    *this = read;
}

} // namespace Zem::Fig2
