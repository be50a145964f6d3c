#include <ZemStream.h>

namespace Zem::IO {

void writeVec2d(OutStream *stream, BaVec2d<double> const &vector)
{
    stream->writeDouble(vector.x);
    stream->writeDouble(vector.y);
}

void readVec2d(InStream *stream, BaVec2d<double> *vector)
{
    BaVec2d<double> read;
    stream->readDouble(&read.x);
    stream->readDouble(&read.y);
    *vector = read;
}

void writeVec3d(OutStream *stream, BaVec3d<double> const &vector)
{
    stream->writeDouble(vector.x);
    stream->writeDouble(vector.y);
    stream->writeDouble(vector.z);
}

void readVec3d(InStream *stream, BaVec3d<double> *vector)
{
    BaVec3d<double> read;
    stream->readDouble(&read.x);
    stream->readDouble(&read.y);
    stream->readDouble(&read.z);
    *vector = read;
}

void writeLine2d(OutStream *stream, Line2d const &line)
{
    writeVec2d(stream, line.first);
    writeVec2d(stream, line.second);
}

void readLine2d(InStream *stream, Line2d *line)
{
    Line2d read;
    readVec2d(stream, &read.first);
    readVec2d(stream, &read.second);
    *line = read;
}

} // namespace Zem::IO
