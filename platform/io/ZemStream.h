// ZemStream.h: everything that reads and writes block streams. Threads: see Stream.
#pragma once

#include <ZemInStream.h>
#include <ZemOutStream.h>
#include <ZemStreamGeometry.h>
