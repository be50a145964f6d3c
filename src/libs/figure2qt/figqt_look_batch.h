// figqt_look_batch.h: small opaque things of many looks, sorted by look.
#pragma once

#include "figqt_canvas.h"

#include <array>
#include <string>
#include <unordered_map>

namespace Zem::Fig2Qt {

/// Things that are painted one after the other, in layers: where two of different colours come near each other, the
/// later one lies in a higher layer. Within a layer the order cannot be seen, so that all of one look can be written in
/// one go.
class LookBatch
{
public:
    /// All of one look in one layer.
    struct Group
    {
        Color color;
        bool outlined = false; ///< lines of this stroke, else areas or marks
        Stroke stroke;
        std::string path;            ///< of lines and areas, in the page language
        std::vector<QPointF> places; ///< of marks
    };

    bool isEmpty() const { return count_ == 0; }
    bool isFull() const;
    /// The group for something opaque, valid until the next call; null for what is too large, or far away. An area is
    /// convex and has three corners at least.
    Group *addLine(QPointF const &from, QPointF const &to, Stroke const &stroke);
    Group *addArea(std::span<QPointF const> corners, Color const &color);
    /// `box` is about the mark.
    Group *addMark(QRectF const &box, Color const &color);

    /// The groups, the lowest first, and begins anew.
    std::vector<Group> take();

private:
    static constexpr int SIDE = 64; // cells of a tile

    struct Cell
    {
        std::uint32_t layer = 0; // 0 for none yet
        std::uint32_t color = 0;
    };
    using Tile = std::array<Cell, SIDE * SIDE>;
    /// Some cells of one row.
    struct Row
    {
        int y;
        int first;
        int last;
    };

    Group *add(std::span<QPointF const> corners, Color const &color, std::uint32_t kind);
    bool findRows(std::span<QPointF const> corners);
    std::uint32_t putOnTop(std::uint32_t color);
    Cell &cellAt(int x, int y);
    std::uint32_t kindOf(Stroke const &stroke);

    std::size_t count_ = 0;
    std::uint32_t layers_ = 0;
    std::vector<Stroke> strokes_; // but for their colour
    std::unordered_map<std::uint64_t, Group> groups_;
    std::unordered_map<std::uint64_t, Tile> tiles_;
    std::uint64_t lastKey_ = 0;
    Tile *lastTile_ = nullptr;
    std::vector<Row> rows_;
};

} // namespace Zem::Fig2Qt
