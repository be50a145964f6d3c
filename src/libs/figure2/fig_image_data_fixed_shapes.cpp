#include "ZemFig2ImageDataFixedShapes.h"

#include "ZemFig2Painter.h"
#include "fig_block.h"

namespace Zem::Fig2 {

namespace {

constexpr char const *ERROR_CONTEXT = "Figure_ImageData_err";
constexpr unsigned int LINE_VERSION = 1;
constexpr unsigned int NEWEST_LINE_VERSION = 2; // 2: reads like 1
constexpr unsigned int ELLIPSE_VERSION = 3;     // 2: a rotation behind the styles, and only there
constexpr unsigned int TEXT_VERSION = 2;        // 2: colour
constexpr unsigned int GRID_VERSION = 1;

template <class Archive, class Lines>
void gridFields(Archive &archive, Lines &lines)
{
    auto count = static_cast<unsigned int>(lines.size());
    archive.field(count);
    // No room is made for the count: a wrong one ends at the end of the block.
    for (unsigned int i = 0; i < count; ++i) {
        if constexpr (Archive::isReader)
            lines.emplace_back();
        archive.field(lines[i].first);
        archive.field(lines[i].second);
    }
}

} // namespace

ImageDataFixedLine *ImageDataFixedLine::copy() const
{
    return new ImageDataFixedLine(*this);
}

void ImageDataFixedLine::drawShape(Painter *painter, ImagePlacement const &placement,
                                   ImageDataVisualisation const &) const
{
    painter->drawLine(placement.toPage(getStart()), placement.toPage(getStart() + getDelta()), lineStyle_,
                      placement.rotation);
}

void ImageDataFixedLine::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, LINE_VERSION, [this](auto &archive) { lineFields(archive, *this); });
    lineStyle_.save(stream);
}

void ImageDataFixedLine::load(IO::InStream *stream)
{
    loadWrapped(ERROR_CONTEXT, "cannot load figure image data fixed line: %1", [&] {
        ImageDataFixedLine read;
        read.ImageDataElement::load(stream);
        loadBlock(stream, NEWEST_LINE_VERSION, [&read](auto &archive) { lineFields(archive, read); });
        read.lineStyle_.load(stream);
        *this = read;
    });
}

ImageDataFixedEllipse *ImageDataFixedEllipse::copy() const
{
    return new ImageDataFixedEllipse(*this);
}

void ImageDataFixedEllipse::drawShape(Painter *painter, ImagePlacement const &placement,
                                      ImageDataVisualisation const &) const
{
    drawEllipse(painter, placement, lineStyle_, fillStyle_);
}

template <class Archive, class Self>
void ImageDataFixedEllipse::blockFields(Archive &archive, Self &self)
{
    ellipseFields(archive, self, Since{1}, Since{1});
}

void ImageDataFixedEllipse::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, ELLIPSE_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    lineStyle_.save(stream);
    fillStyle_.save(stream);
}

void ImageDataFixedEllipse::load(IO::InStream *stream)
{
    ImageDataFixedEllipse read;
    read.ImageDataElement::load(stream);
    unsigned int const version =
        loadBlock(stream, ELLIPSE_VERSION, [&read](auto &archive) { blockFields(archive, read); });
    read.lineStyle_.load(stream);
    read.fillStyle_.load(stream);
    if (version == 2)
        Rotation().load(stream); // has no place in today's ellipse
    *this = read;
}

ImageDataFixedText *ImageDataFixedText::copy() const
{
    return new ImageDataFixedText(*this);
}

void ImageDataFixedText::drawShape(Painter *painter, ImagePlacement const &placement,
                                   ImageDataVisualisation const &) const
{
    drawText(painter, placement, color_);
}

template <class Archive, class Self>
void ImageDataFixedText::blockFields(Archive &archive, Self &self)
{
    textFields(archive, self);
    archive.field(self.color_, Since{2}, Color());
}

void ImageDataFixedText::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, TEXT_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    saveFont(stream);
}

void ImageDataFixedText::load(IO::InStream *stream)
{
    loadWrapped(ERROR_CONTEXT, "cannot load figure image data text: %1", [&] {
        ImageDataFixedText read;
        read.ImageDataElement::load(stream);
        loadBlock(stream, TEXT_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        read.loadFont(stream);
        *this = read;
    });
}

ImageDataFixedPolygon *ImageDataFixedPolygon::copy() const
{
    return new ImageDataFixedPolygon(*this);
}

void ImageDataFixedPolygon::drawShape(Painter *painter, ImagePlacement const &placement,
                                      ImageDataVisualisation const &) const
{
    drawPolygon(painter, placement, lineStyle_, fillStyle_);
}

void ImageDataFixedPolygon::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    savePolygon(stream);
    lineStyle_.save(stream);
    fillStyle_.save(stream);
}

void ImageDataFixedPolygon::load(IO::InStream *stream)
{
    ImageDataFixedPolygon read;
    read.ImageDataElement::load(stream);
    read.loadPolygon(stream, 1); // deliberately from the first version on
    read.lineStyle_.load(stream);
    read.fillStyle_.load(stream);
    *this = read;
}

ImageDataFixedGrid *ImageDataFixedGrid::copy() const
{
    return new ImageDataFixedGrid(*this);
}

void ImageDataFixedGrid::scale(double factor)
{
    for (Line &line : lines_) {
        line.first *= factor;
        line.second *= factor;
    }
}

void ImageDataFixedGrid::drawShape(Painter *painter, ImagePlacement const &placement,
                                   ImageDataVisualisation const &) const
{
    for (Line const &line : lines_)
        painter->drawLine(placement.toPage(line.first), placement.toPage(line.second), lineStyle_, placement.rotation);
}

void ImageDataFixedGrid::save(IO::OutStream *stream) const
{
    ImageDataElement::save(stream);
    saveBlock(stream, GRID_VERSION, [this](auto &archive) { gridFields(archive, lines_); });
    lineStyle_.save(stream);
}

void ImageDataFixedGrid::load(IO::InStream *stream)
{
    ImageDataFixedGrid read;
    read.ImageDataElement::load(stream);
    loadBlock(stream, GRID_VERSION, [&read](auto &archive) { gridFields(archive, read.lines_); });
    read.lineStyle_.load(stream);
    *this = read;
}

} // namespace Zem::Fig2
