#include "figqt_mark_batch.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MOST = 1U << 18U;
constexpr int BAND = 64; // rows
constexpr int REACH = static_cast<int>(MarkSprites::LARGEST) / 2 + 2;
constexpr double FAR_AWAY = 1e6;

} // namespace

bool MarkBatch::isFull() const
{
    return places_.size() >= MOST;
}

void MarkBatch::add(QPointF const &at, Color const &color)
{
    if (std::abs(at.x()) > FAR_AWAY || at.y() < -REACH || at.y() > height_ + REACH)
        return;
    places_.push_back(
        {static_cast<int>(std::floor(at.x() * 16.0)), static_cast<int>(std::floor(at.y() * 16.0)), color});
}

int MarkBatch::firstBandOf(Place const &place) const
{
    return std::clamp((place.y >> 4) - sprites_->getReach(), 0, height_ - 1) / BAND;
}

int MarkBatch::lastBandOf(Place const &place) const
{
    return std::clamp((place.y >> 4) + sprites_->getReach(), 0, height_ - 1) / BAND;
}

/// A mark stands in each band it reaches into, so that where marks overlap the later one stays above.
void MarkBatch::sortIntoBands()
{
    bandEnds_.assign(static_cast<std::size_t>((height_ + BAND - 1) / BAND) + 1, 0);
    for (Place const &place : places_) {
        for (int band = firstBandOf(place); band <= lastBandOf(place); ++band)
            ++bandEnds_[static_cast<std::size_t>(band) + 1];
    }
    std::partial_sum(bandEnds_.begin(), bandEnds_.end(), bandEnds_.begin());
    sorted_.resize(bandEnds_.back());
    for (Place const &place : places_) {
        for (int band = firstBandOf(place); band <= lastBandOf(place); ++band)
            sorted_[bandEnds_[static_cast<std::size_t>(band)]++] = place;
    }
}

void MarkBatch::paint(ClipArea const &clip)
{
    if (places_.empty())
        return;
    sortIntoBands();
    std::size_t next = 0;
    for (std::size_t band = 0; band + 1 < bandEnds_.size(); ++band) {
        auto const top = static_cast<int>(band) * BAND;
        ClipArea const rows = next < bandEnds_[band] ? clip.rows(top, top + BAND) : clip;
        for (; next < bandEnds_[band]; ++next)
            paintMark(sorted_[next], rows);
    }
    places_.clear();
}

void MarkBatch::paintMark(Place const &place, ClipArea const &clip)
{
    MarkSprites::Sprite const &sprite =
        sprites_->get(static_cast<unsigned>(place.x & 15), static_cast<unsigned>(place.y & 15));
    QRect const &open = clip.getRect();
    int const left = (place.x >> 4) + sprite.left;
    int const top = (place.y >> 4) + sprite.top;
    int const first = std::max(0, open.top() - top);
    int const end = std::min(static_cast<int>(sprite.height), open.bottom() + 1 - top);
    ink_->setColor(place.color);
    for (int row = first; row < end; ++row)
        ink_->paint(left, top + row, sprites_->getRow(sprite, row), clip);
}

} // namespace Zem::Fig2Qt
