// ZemStreamGeometry.h: geometry in block streams. Errors and threads are those of InStream and OutStream.
#pragma once

#include <ZemLine2d.h>
#include <ZemVec.h>

namespace Zem::IO {

class InStream;
class OutStream;

/// 16 bytes: x, y.
void writeVec2d(OutStream *stream, BaVec2d<double> const &vector);
void readVec2d(InStream *stream, BaVec2d<double> *vector);

/// 24 bytes: x, y, z.
void writeVec3d(OutStream *stream, BaVec3d<double> const &vector);
void readVec3d(InStream *stream, BaVec3d<double> *vector);

/// 32 bytes: the two points of the line.
void writeLine2d(OutStream *stream, Line2d const &line);
void readLine2d(InStream *stream, Line2d *line);

} // namespace Zem::IO
