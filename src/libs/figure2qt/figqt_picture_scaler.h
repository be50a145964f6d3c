// figqt_picture_scaler.h: pictures on another grid of pixels.
#pragma once

#include "figqt_picture.h"

#include <QtCore/QRect>

#include <cstdint>
#include <vector>

namespace Zem::Fig2Qt {

/// From here on a pixel is enlarged to be seen: all of its area shows its own colour. Below, colours run from the
/// middle of one pixel to that of the next; and where pixels come closer than those of the output, each of the output
/// shows the mean of the area it covers.
inline constexpr double PIXELS_ARE_SEEN = 4.0;

/// One direction: which pixels of the picture a pixel of the output shows, and how much of each.
class PictureAxis
{
public:
    /// A place `p` of the picture, which has `size` pixels, lies at `offset + p * scale` of the output; `scale` is
    /// above 0. Shown is what lies from `from` to `to` of the output, and within the picture.
    struct Place
    {
        int size;
        double scale;
        double offset;
        double from;
        double to;
    };
    /// Only for the pixels of the output from `first` to before `end`.
    PictureAxis(Place const &place, int first, int end);

    int getFirst() const { return first_; }
    int getEnd() const { return first_ + static_cast<int>(pixels_.size()); }
    /// The pixels of the picture that are needed.
    int getSourceFirst() const { return sourceFirst_; }
    int getSourceEnd() const { return sourceEnd_; }

    struct Pixel
    {
        int source;           ///< the first of those that show
        int count;            ///< of them
        std::uint32_t weight; ///< where their weights begin, the sum of which is 1
        float covered;        ///< how much of the pixel of the output shows anything, above 0 to 1
    };
    Pixel const &operator[](int at) const { return pixels_[static_cast<std::size_t>(at - first_)]; }
    float const *getWeights(Pixel const &pixel) const { return weights_.data() + pixel.weight; }
    /// Both show the same.
    bool areAlike(Pixel const &a, Pixel const &b) const;
    int getMostCount() const { return mostCount_; }

private:
    void addArea(Place const &place, double from, double to);
    void addMiddle(Place const &place, double middle);

    int first_;
    int sourceFirst_ = 0;
    int sourceEnd_ = 0;
    int mostCount_ = 0;
    std::vector<Pixel> pixels_;
    std::vector<float> weights_;
};

/// Scales the part of a picture that shows, upright, row by row.
class PictureScaler
{
public:
    /// The picture must outlive this.
    PictureScaler(Picture const &picture, PictureAxis const &columns, PictureAxis const &rows);

    int getLeft() const { return columns_.getFirst(); }
    int getWidth() const { return columns_.getEnd() - columns_.getFirst(); }
    int getTop() const { return rows_.getFirst(); }
    int getEndRow() const { return rows_.getEnd(); }

    /// Row `y` as numbers from 0 to 255, one for each pixel of a grey picture, else four: red, green, blue, which are
    /// multiplied by alpha, and alpha. Valid until the next call. Rows are best taken in order.
    float const *takeRow(int y);
    /// How much of a column, and of a row, shows anything.
    float getColumnCovered(int x) const { return columns_[x].covered; }
    float getRowCovered(int y) const { return rows_[y].covered; }

private:
    void addSourceRow(int y, float weight);
    void spread();

    Picture picture_;
    PictureAxis columns_;
    PictureAxis rows_;
    std::size_t channels_;
    int done_; // the row that is at hand
    std::vector<float> sum_;
    std::vector<float> row_;
};

/// The part of the picture, which lies within it, with `width` by `height` pixels. An alpha is straight again.
Picture scaled(Picture const &picture, QRectF const &part, int width, int height);

} // namespace Zem::Fig2Qt
