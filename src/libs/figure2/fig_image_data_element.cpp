#include "ZemFig2ImageDataElement.h"

#include "ZemFig2ImageDataFixedShapes.h"
#include "ZemFig2ImageDataPoints.h"
#include "ZemFig2ImageDataShapes.h"
#include "fig_block.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 2; // 2: the type instead of a colour

} // namespace

ImageDataElement *ImageDataElement::create(Type_t type)
{
    switch (type) {
    case TYPE_POINT_MARKER:
        return new ImageDataPointMarker;
    case TYPE_LINE:
        return new ImageDataLine;
    case TYPE_ELLIPSE:
        return new ImageDataEllipse;
    case TYPE_TEXT:
        return new ImageDataText;
    case TYPE_POINTS:
        return new ImageDataPoints;
    case TYPE_POLYGON:
        return new ImageDataPolygon;
    case TYPE_FIXED_LINE:
        return new ImageDataFixedLine;
    case TYPE_FIXED_ELLIPSE:
        return new ImageDataFixedEllipse;
    case TYPE_FIXED_TEXT:
        return new ImageDataFixedText;
    case TYPE_FIXED_POLYGON:
        return new ImageDataFixedPolygon;
    case TYPE_FIXED_GRID:
        return new ImageDataFixedGrid;
    }
    return nullptr;
}

ImageDataElement::~ImageDataElement() = default;

bool ImageDataElement::hasArrows() const
{
    return false;
}

unsigned int ImageDataElement::getNumberOfDrawSteps() const
{
    return 1;
}

void ImageDataElement::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { archive.list(type_, NUMBER_OF_TYPES); });
}

void ImageDataElement::load(IO::InStream *stream)
{
    loadWrapped("Figure_ImageData_err", "cannot load figure image data element: %1", [&] {
        // The object is of its type already, and version 1 has a colour in its place.
        loadBlock(stream, BLOCK_VERSION, [](BlockReader &reader) { reader.drop<unsigned int>(); });
    });
}

void ImageDataShape::draw(Painter *painter, BaVec2d<double> const &origin, double scale, Rect const &,
                          Legend2::LegendHandler const *, Rotation const &rotation,
                          ImageDataVisualisation const &visualisation, Transformation const *, unsigned int) const
{
    drawShape(painter, ImagePlacement{origin, scale, rotation}, visualisation);
}

} // namespace Zem::Fig2
