#include "ZemFig2ImageDataElement.h"

#include "fig_block.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 2; // 2: the type instead of a colour
constexpr unsigned int TYPES = 11;

} // namespace

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
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { archive.list(type_, TYPES); });
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
