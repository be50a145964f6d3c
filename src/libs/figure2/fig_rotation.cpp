#include "ZemFig2Rotation.h"

#include "fig_block.h"

#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

BaVec2d<double> turned(BaVec2d<double> const &point, BaVec2d<double> const &base, double angle)
{
    if (!(std::abs(angle) > 1e-50))
        return point;
    BaVec2d<double> const d = point - base;
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    return {base.x + d.x * c + d.y * s, base.y + d.y * c - d.x * s};
}

} // namespace

BaVec2d<double> Rotation::applyTo(BaVec2d<double> const &point) const
{
    return turned(point, base_, angle_);
}

BaVec2d<double> Rotation::removeFrom(BaVec2d<double> const &point) const
{
    return turned(point, base_, -angle_);
}

template <class Archive, class Self>
void Rotation::blockFields(Archive &archive, Self &self)
{
    archive.field(self.base_);
    archive.field(self.angle_);
}

void Rotation::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
}

void Rotation::load(IO::InStream *stream)
{
    Rotation read;
    loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
    *this = read;
}

} // namespace Zem::Fig2
