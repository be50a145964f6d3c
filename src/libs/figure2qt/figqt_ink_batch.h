// figqt_ink_batch.h: marks and small shapes on their way to the pixels.
#pragma once

#include "figqt_ink.h"
#include "figqt_mark_sprites.h"
#include "figqt_small_shape.h"

#include <memory>

namespace Zem::Fig2Qt {

/// Gathers marks of one shape, and small shapes, and paints them in their order, one band of the picture after the
/// other, the bands on all cores: what is strewn all over the picture would else wait for memory most of the time.
/// Holds a limited number.
class InkBatch
{
public:
    /// `ink` is not owned.
    InkBatch(Ink *ink, int height) : ink_(ink), height_(height) {}

    /// The shape of marks about the origin, in pixels, no corner further from it than MarkSprites::LARGEST / 2. Only
    /// while empty.
    void setMark(QPainterPath const &shape) { sprites_ = std::make_unique<MarkSprites>(shape); }
    bool isEmpty() const { return items_.empty(); }
    bool isFull() const;
    /// About a place in pixels; far outside the picture is left out.
    void addMark(QPointF const &at, Color const &color);
    /// The sides of clockwise areas that together are no larger than SmallShape::LARGEST, in pixels.
    void addShape(std::span<Edge const> edges, Color const &color);
    void paint(ClipArea const &clip);

private:
    struct Item
    {
        Color color;
        int top; // the rows it may touch
        int bottom;
        int x; // of a mark, in sixteenths of a pixel
        int y;
        std::uint32_t firstEdge;
        std::uint32_t edges; // 0 for a mark
    };

    int bandOf(int row) const;
    void sortIntoBands();
    void makeSprites();
    void paintBand(std::size_t band, ClipArea const &clip, Ink *ink, SmallShape *shape) const;
    void paintMark(Item const &item, ClipArea const &clip, Ink const &ink) const;

    Ink *ink_;
    int const height_;
    std::unique_ptr<MarkSprites> sprites_;
    std::vector<Edge> edges_; // of all shapes
    std::vector<Item> items_;
    std::vector<std::uint32_t> sorted_; // items, band by band
    std::vector<std::size_t> bandEnds_;
};

} // namespace Zem::Fig2Qt
