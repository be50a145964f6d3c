#include "figqt_ink_batch.h"

#include "figqt_share_work.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace Zem::Fig2Qt {

namespace {

constexpr std::size_t MOST = 1U << 18U;
constexpr std::size_t MOST_EDGES = 1U << 22U;
constexpr int BAND = 64;           // rows
constexpr std::size_t MANY = 4096; // are worth a thread
constexpr int REACH = static_cast<int>(SmallShape::LARGEST) + 2;
constexpr double FAR_AWAY = 1e6;

} // namespace

bool InkBatch::isFull() const
{
    return items_.size() >= MOST || edges_.size() >= MOST_EDGES;
}

void InkBatch::addMark(QPointF const &at, Color const &color)
{
    if (std::abs(at.x()) > FAR_AWAY || at.y() < -REACH || at.y() > height_ + REACH)
        return;
    auto const x = static_cast<int>(std::floor(at.x() * 16.0));
    auto const y = static_cast<int>(std::floor(at.y() * 16.0));
    items_.push_back({color, (y >> 4) - sprites_->getReach(), (y >> 4) + sprites_->getReach(), x, y, 0, 0});
}

void InkBatch::addShape(std::span<Edge const> edges, Color const &color)
{
    float top = edges[0].fromY;
    float bottom = top;
    for (Edge const &edge : edges) {
        top = std::min(top, edge.fromY);
        bottom = std::max(bottom, edge.fromY);
    }
    if (bottom < 0.0F || top > static_cast<float>(height_) || std::abs(edges[0].fromX) > FAR_AWAY)
        return;
    items_.push_back({color, static_cast<int>(std::floor(top)), static_cast<int>(std::floor(bottom)), 0, 0,
                      static_cast<std::uint32_t>(edges_.size()), static_cast<std::uint32_t>(edges.size())});
    edges_.insert(edges_.end(), edges.begin(), edges.end());
}

int InkBatch::bandOf(int row) const
{
    return std::clamp(row, 0, height_ - 1) / BAND;
}

/// An item stands in each band it reaches into, so that where items overlap the later one stays above.
void InkBatch::sortIntoBands()
{
    bandEnds_.assign(static_cast<std::size_t>((height_ + BAND - 1) / BAND) + 1, 0);
    for (Item const &item : items_) {
        for (int band = bandOf(item.top); band <= bandOf(item.bottom); ++band)
            ++bandEnds_[static_cast<std::size_t>(band) + 1];
    }
    std::partial_sum(bandEnds_.begin(), bandEnds_.end(), bandEnds_.begin());
    sorted_.resize(bandEnds_.back());
    for (std::size_t i = 0; i < items_.size(); ++i) {
        for (int band = bandOf(items_[i].top); band <= bandOf(items_[i].bottom); ++band)
            sorted_[bandEnds_[static_cast<std::size_t>(band)]++] = static_cast<std::uint32_t>(i);
    }
}

/// So that none is made while several threads look for them.
void InkBatch::makeSprites()
{
    for (Item const &item : items_) {
        if (item.edges == 0)
            sprites_->get(static_cast<unsigned>(item.x & 15), static_cast<unsigned>(item.y & 15));
    }
}

void InkBatch::paint(ClipArea const &clip)
{
    if (items_.empty())
        return;
    sortIntoBands();
    makeSprites();
    Pieces bands(bandEnds_.size() - 1);
    shareWork(items_.size() / MANY + 1, [this, &clip, &bands] {
        Ink ink(*ink_);
        SmallShape shape;
        for (std::size_t band = 0; bands.take(&band);)
            paintBand(band, clip, &ink, &shape);
    });
    items_.clear();
    edges_.clear();
}

void InkBatch::paintBand(std::size_t band, ClipArea const &clip, Ink *ink, SmallShape *shape) const
{
    std::size_t const first = band == 0 ? 0 : bandEnds_[band - 1];
    if (first == bandEnds_[band])
        return;
    auto const top = static_cast<int>(band) * BAND;
    ClipArea const rows = clip.rows(top, top + BAND);
    for (std::size_t i = first; i < bandEnds_[band]; ++i) {
        Item const &item = items_[sorted_[i]];
        ink->setColor(item.color);
        if (item.edges > 0)
            shape->paint(std::span(edges_).subspan(item.firstEdge, item.edges), *ink, rows);
        else
            paintMark(item, rows, *ink);
    }
}

void InkBatch::paintMark(Item const &item, ClipArea const &clip, Ink const &ink) const
{
    MarkSprites::Sprite const &sprite =
        sprites_->get(static_cast<unsigned>(item.x & 15), static_cast<unsigned>(item.y & 15));
    QRect const &open = clip.getRect();
    int const left = (item.x >> 4) + sprite.left;
    int const top = (item.y >> 4) + sprite.top;
    int const first = std::max(0, open.top() - top);
    int const end = std::min(static_cast<int>(sprite.height), open.bottom() + 1 - top);
    for (int row = first; row < end; ++row)
        ink.paint(left, top + row, sprites_->getRow(sprite, row), clip);
}

} // namespace Zem::Fig2Qt
