// figqt_vector_canvas.h: what canvases on page languages have in common.
#pragma once

#include "figqt_canvas.h"
#include "figqt_look_batch.h"
#include "figqt_mark_thinner.h"

#include <optional>
#include <string>

namespace Zem::Fig2Qt {

/// Gathers small things of any looks that follow each other, sorted by look; and lines, rectangles and marks of one
/// look that follow each other, to write them in one go, and leaves out what cannot be seen: the file follows what the
/// page shows and not how often it was painted over.
class VectorCanvas : public Canvas
{
public:
    /// In millimetres, finer than what printers of 600 dpi show. Dense lines keep to half of it.
    static constexpr double CELL = 0.04;

    VectorCanvas() = default;

    double getCellSize() const override { return CELL; }
    void drawPolyline(Polyline const &line, Stroke const &stroke) override;
    void drawMark(Mark const &mark, QPointF const &at, Color const &fill) override;
    void fillConvex(std::span<QPointF const> corners, Color const &fill) override;
    void fillRect(QRectF const &rect, Color const &fill) override;
    void drawPicture(PlacedPicture const &placed) override;
    /// To be called before anything else is written.
    void finish() override;

protected:
    /// A path in the page language, in millimetres; with `dense` it holds thinned lines only, and in whole numbers of
    /// half a cell.
    virtual void appendLine(Polyline const &line, bool dense, std::string *path) const = 0;
    virtual void appendRect(QRectF const &rect, std::string *path) const = 0;
    virtual void writeLines(std::string const &path, bool dense, Stroke const &stroke) = 0;
    /// Filled by the non-zero rule.
    virtual void writeRects(std::string const &path, Color const &fill) = 0;
    virtual void writePicture(PlacedPicture const &placed) = 0;
    virtual void writeMarks(Mark const &mark, std::vector<PlacedMark> const &places) = 0;

private:
    bool mixLine(Polyline const &line, Stroke const &stroke);
    bool mixMark(Mark const &mark, QPointF const &at, Color const &fill);
    void appendArea(std::span<QPointF const> corners, std::string *path) const;
    void prepareMix();
    void writeMix();
    bool extendSliver(QRectF const &box);
    void appendSliver();

    std::optional<Stroke> stroke_; // of the lines at hand
    bool dense_ = false;
    std::optional<Color> fill_;    // of the rectangles at hand
    std::optional<QRectF> sliver_; // the last of them, not in the path yet
    std::string path_;
    LookBatch mix_;       // while there is anything in it, there are no lines, rectangles and places at hand
    Mark mixMark_{{}, 0}; // of the marks in it
    Stroke lastStroke_;   // what the last thing in it was, and how many of them there were
    bool lastWasLine_ = false;
    int alike_ = 0;
    Mark mark_{{}, 0};
    std::vector<PlacedMark> places_;
};

} // namespace Zem::Fig2Qt
