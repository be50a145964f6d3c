// figqt_mark_batch.h: marks on their way to the pixels.
#pragma once

#include "figqt_ink.h"
#include "figqt_mark_sprites.h"

#include <memory>

namespace Zem::Fig2Qt {

/// Gathers marks of one shape and paints them in their order, one band of the picture after the other: marks that are
/// strewn all over it would else wait for memory most of the time. Holds a limited number.
class MarkBatch
{
public:
    /// `ink` is not owned.
    MarkBatch(Ink *ink, int height) : ink_(ink), height_(height) {}

    /// A shape about the origin, in pixels, no corner further from it than MarkSprites::LARGEST / 2. Only while empty.
    void setShape(QPainterPath const &shape) { sprites_ = std::make_unique<MarkSprites>(shape); }
    bool isEmpty() const { return places_.empty(); }
    bool isFull() const;
    /// About a place in pixels; far outside the picture is left out.
    void add(QPointF const &at, Color const &color);
    void paint(ClipArea const &clip);

private:
    struct Place
    {
        int x; // in sixteenths of a pixel
        int y;
        Color color;
    };

    int firstBandOf(Place const &place) const;
    int lastBandOf(Place const &place) const;
    void sortIntoBands();
    void paintMark(Place const &place, ClipArea const &clip);

    Ink *ink_;
    int const height_;
    std::unique_ptr<MarkSprites> sprites_;
    std::vector<Place> places_;
    std::vector<Place> sorted_; // band by band
    std::vector<std::size_t> bandEnds_;
};

} // namespace Zem::Fig2Qt
