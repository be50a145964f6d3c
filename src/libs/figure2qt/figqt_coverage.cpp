#include "figqt_coverage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace Zem::Fig2Qt {

namespace {

constexpr int LINES_PER_PIXEL = static_cast<int>(1.0 / Coverage::FINEST);
constexpr int STEPS_PER_PIXEL = 256; // up and down
constexpr int FULL = LINES_PER_PIXEL * STEPS_PER_PIXEL;
// Pixel columns that are painted at once: rows of memory are far apart, and so many of them fill what is fetched.
constexpr int TILE = 64;
constexpr int GROUP = 8;
constexpr std::size_t JOIN_FROM = 32;

} // namespace

Coverage::Coverage(int width, int height)
    : width_(width), height_(height), bounds_(0, 0, width, height),
      lines_(static_cast<std::size_t>(width) * LINES_PER_PIXEL), forth_(lines_.size()), back_(lines_.size()),
      begin_(width * LINES_PER_PIXEL), end_(0), steps_(static_cast<std::size_t>(height) + 2),
      tile_(static_cast<std::size_t>(height) * TILE)
{
}

void Coverage::setBounds(QRect const &bounds)
{
    bounds_ = bounds & QRect(0, 0, width_, height_);
}

/// The first line at or to the right of the place, within the bounds.
int Coverage::firstLineFrom(double x) const
{
    double const line = std::clamp(x * LINES_PER_PIXEL - 0.5, static_cast<double>(bounds_.left() * LINES_PER_PIXEL),
                                   static_cast<double>((bounds_.right() + 1) * LINES_PER_PIXEL));
    auto const whole = static_cast<int>(line);
    return whole < line ? whole + 1 : whole;
}

void Coverage::walkEdge(QPointF const &from, QPointF const &to)
{
    bool const forth = from.x() < to.x();
    QPointF const &left = forth ? from : to;
    QPointF const &right = forth ? to : from;
    int const first = firstLineFrom(left.x());
    int const end = firstLineFrom(right.x());
    if (first >= end)
        return;
    std::vector<int> &crossings = forth ? forth_ : back_;
    double const slope = (right.y() - left.y()) / (right.x() - left.x());
    double const low = std::clamp(std::min(left.y(), right.y()), 0.0, static_cast<double>(height_));
    double const high = std::clamp(std::max(left.y(), right.y()), 0.0, static_cast<double>(height_));
    double y = left.y() + ((first + 0.5) / LINES_PER_PIXEL - left.x()) * slope;
    for (int line = first; line < end; ++line, y += slope / LINES_PER_PIXEL)
        crossings[static_cast<std::size_t>(line)] = static_cast<int>(std::clamp(y, low, high) * STEPS_PER_PIXEL + 0.5);
}

void Coverage::addConvex(std::span<QPointF const> corners)
{
    if (bounds_.isEmpty() || corners.empty())
        return;
    auto const [left, right] = std::minmax_element(corners.begin(), corners.end(),
                                                   [](QPointF const &a, QPointF const &b) { return a.x() < b.x(); });
    int const first = firstLineFrom(left->x());
    int const end = firstLineFrom(right->x());
    if (first >= end)
        return;
    for (std::size_t i = 0; i < corners.size(); ++i)
        walkEdge(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0]);
    int const top = bounds_.top() * STEPS_PER_PIXEL;
    int const bottom = (bounds_.bottom() + 1) * STEPS_PER_PIXEL;
    for (int line = first; line < end; ++line) {
        auto const [low, high] =
            std::minmax(forth_[static_cast<std::size_t>(line)], back_[static_cast<std::size_t>(line)]);
        addTo(&lines_[static_cast<std::size_t>(line)], {std::max(low, top), std::min(high, bottom)});
    }
    begin_ = std::min(begin_, first);
    end_ = std::max(end_, end);
}

/// The place in steps, within the bounds.
int Coverage::stepOf(double y) const
{
    double const inside = std::clamp(y, static_cast<double>(bounds_.top()), static_cast<double>(bounds_.bottom() + 1));
    return static_cast<int>(inside * STEPS_PER_PIXEL + 0.5);
}

void Coverage::addBox(QPointF const &topLeft, QPointF const &bottomRight)
{
    if (bounds_.isEmpty())
        return;
    int const begin = firstLineFrom(topLeft.x());
    int const end = firstLineFrom(bottomRight.x());
    if (begin != boxesBegin_ || end != boxesEnd_)
        addBoxes();
    boxesBegin_ = begin;
    boxesEnd_ = end;
    if (begin < end)
        addTo(&boxes_, {stepOf(topLeft.y()), stepOf(bottomRight.y())});
}

void Coverage::addBoxes()
{
    if (boxes_.empty())
        return;
    join(&boxes_);
    for (int line = boxesBegin_; line < boxesEnd_; ++line) {
        for (Span const &span : boxes_)
            addTo(&lines_[static_cast<std::size_t>(line)], span);
    }
    begin_ = std::min(begin_, boxesBegin_);
    end_ = std::max(end_, boxesEnd_);
    boxes_.clear();
}

void Coverage::addTo(Line *spans, Span const &span)
{
    if (span.top >= span.bottom)
        return;
    if (!spans->empty() && span.top <= spans->back().bottom && span.bottom >= spans->back().top) {
        spans->back() = {std::min(span.top, spans->back().top), std::max(span.bottom, spans->back().bottom)};
        return;
    }
    if (spans->size() == spans->capacity() && spans->size() >= JOIN_FROM) {
        join(spans);
        // Only what could not be joined lets the memory grow; joining again at every span would take for ever.
        if (spans->size() > spans->capacity() / 2)
            spans->reserve(2 * spans->capacity());
    }
    spans->push_back(span);
}

void Coverage::join(Line *spans)
{
    if (spans->size() < 2)
        return;
    std::sort(spans->begin(), spans->end(), [](Span const &a, Span const &b) { return a.top < b.top; });
    auto last = spans->begin();
    for (auto span = last + 1; span != spans->end(); ++span) {
        if (span->top <= last->bottom)
            last->bottom = std::max(last->bottom, span->bottom);
        else
            *++last = *span;
    }
    spans->erase(last + 1, spans->end());
}

void Coverage::take(PaintRow const &paint)
{
    addBoxes();
    if (!isEmpty()) {
        int const end = (end_ + LINES_PER_PIXEL - 1) / LINES_PER_PIXEL;
        for (int pixel = begin_ / LINES_PER_PIXEL / TILE * TILE; pixel < end; pixel += TILE)
            takeTile(pixel, paint);
    }
    begin_ = width_ * LINES_PER_PIXEL;
    end_ = 0;
}

void Coverage::takeTile(int firstPixel, PaintRow const &paint)
{
    int top = height_;
    int bottom = 0;
    int const columns = std::min(TILE, width_ - firstPixel);
    for (int column = 0; column < columns; ++column) {
        addPixelColumn(firstPixel + column);
        sumPixelColumn(column);
        top = std::min(top, top_);
        bottom = std::max(bottom, bottom_);
    }
    for (int y = top; y < bottom; ++y) {
        unsigned char *row = tile_.data() + static_cast<std::size_t>(y) * TILE;
        paintRow(firstPixel, y, {row, static_cast<std::size_t>(columns)}, paint);
        std::memset(row, 0, TILE);
    }
}

/// The parts of it where anything is covered.
void Coverage::paintRow(int firstPixel, int y, std::span<unsigned char const> row, PaintRow const &paint)
{
    auto const isBlank = [&row](std::size_t at) {
        std::uint64_t word = 0;
        std::memcpy(&word, row.data() + at, std::min(sizeof word, row.size() - at));
        return word == 0;
    };
    for (std::size_t begin = 0; begin < row.size(); begin += GROUP) {
        if (isBlank(begin))
            continue;
        std::size_t end = begin + GROUP;
        while (end < row.size() && !isBlank(end))
            end += GROUP;
        end = std::min(end, row.size());
        paint(firstPixel + static_cast<int>(begin), y, row.subspan(begin, end - begin));
        begin = end;
    }
}

void Coverage::addPixelColumn(int pixel)
{
    top_ = height_;
    bottom_ = 0;
    auto const step = [this](int at, int sign) {
        int const inside = at % STEPS_PER_PIXEL;
        int *place = steps_.data() + at / STEPS_PER_PIXEL;
        place[0] += sign * (STEPS_PER_PIXEL - inside);
        place[1] += sign * inside;
    };
    for (int i = 0; i < LINES_PER_PIXEL; ++i) {
        Line &spans = lines_[static_cast<std::size_t>(pixel * LINES_PER_PIXEL + i)];
        if (spans.empty())
            continue;
        join(&spans);
        for (Span const &span : spans) {
            step(span.top, 1);
            step(span.bottom, -1);
        }
        top_ = std::min(top_, spans.front().top / STEPS_PER_PIXEL);
        bottom_ = std::max(bottom_, (spans.back().bottom + STEPS_PER_PIXEL - 1) / STEPS_PER_PIXEL);
        spans.clear();
    }
}

/// The first row from `y` on near which something begins, but none behind the last touched row: outlines are mostly
/// blank inside.
int Coverage::skipBlank(int y) const
{
    static constexpr std::array<int, GROUP> BLANK{};
    while (y + GROUP < bottom_ && std::memcmp(steps_.data() + y, BLANK.data(), sizeof BLANK) == 0)
        y += GROUP;
    return y;
}

void Coverage::sumPixelColumn(int column)
{
    int sum = 0;
    for (int y = top_; y < bottom_; ++y) {
        if (sum == 0)
            y = skipBlank(y);
        sum += steps_[static_cast<std::size_t>(y)];
        steps_[static_cast<std::size_t>(y)] = 0;
        tile_[static_cast<std::size_t>(y * TILE + column)] = static_cast<unsigned char>((sum * 255 + FULL / 2) / FULL);
    }
    if (bottom_ > top_) {
        steps_[static_cast<std::size_t>(bottom_)] = 0;
        steps_[static_cast<std::size_t>(bottom_) + 1] = 0;
    }
}

} // namespace Zem::Fig2Qt
