#include <ZemCoordinateTransformation.h>

#include <ZemStream.h>
#include <ZemTranslate.h>

namespace FG {

namespace {

constexpr unsigned int BLOCK_SIZE = 32;
constexpr unsigned int BLOCK_VERSION = 1;

} // namespace

CoordinateTransformation::CoordinateTransformation(Zem::BaVec2d<double> const &offset,
                                                   Zem::BaVec2d<double> const &scale)
    : offset_(offset), scale_(scale)
{
}

Zem::BaVec2d<double> CoordinateTransformation::computeReducedFrameCoordinates(Zem::BaVec2d<double> const &point) const
{
    return {(point.x - offset_.x) * scale_.x, (point.y - offset_.y) * scale_.y};
}

void CoordinateTransformation::writeBlock(Zem::IO::OutStream *stream) const
{
    stream->beginBlock(BLOCK_SIZE, BLOCK_VERSION);
    Zem::IO::writeVec2d(stream, offset_);
    Zem::IO::writeVec2d(stream, scale_);
    stream->endBlock();
}

void CoordinateTransformation::readBlock(Zem::IO::InStream *stream)
{
    stream->openBlock();
    if (stream->getBlockVersion() != BLOCK_VERSION)
        throw Zem::IO::StreamException(Zem::translate("FGrabber_err", "wrong block version of a reduced frame"));
    CoordinateTransformation read;
    Zem::IO::readVec2d(stream, &read.offset_);
    Zem::IO::readVec2d(stream, &read.scale_);
    stream->closeBlock();
    *this = read;
}

} // namespace FG
