#include "ZemFig2Invalidator.h"

namespace Zem::Fig2 {

Invalidator::~Invalidator() = default;

void Invalidator::figureDeleted(Figure const *)
{
}

} // namespace Zem::Fig2
