#include "figqt_picture_scaler.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

PictureAxis::PictureAxis(Place const &place, int first, int end) : first_(first), sourceFirst_(place.size)
{
    double const begin = std::max({place.from, place.offset, static_cast<double>(first)});
    double const stop = std::min({place.to, place.offset + place.size * place.scale, static_cast<double>(end)});
    if (!(begin < stop))
        return;
    first_ = static_cast<int>(std::floor(begin));
    bool const runs = place.scale >= 1.0 && place.scale <= PIXELS_ARE_SEEN;
    for (int i = first_; i < stop; ++i) {
        double const from = std::max(begin, static_cast<double>(i));
        double const to = std::min(stop, i + 1.0);
        pixels_.push_back({0, 0, static_cast<std::uint32_t>(weights_.size()), static_cast<float>(to - from)});
        if (runs)
            addMiddle(place, std::clamp(i + 0.5, begin, stop));
        else
            addArea(place, from, to);
        sourceFirst_ = std::min(sourceFirst_, pixels_.back().source);
        sourceEnd_ = std::max(sourceEnd_, pixels_.back().source + pixels_.back().count);
        mostCount_ = std::max(mostCount_, pixels_.back().count);
    }
}

/// The mean of what lies between two places of the output.
void PictureAxis::addArea(Place const &place, double from, double to)
{
    double const last = place.size - 1;
    double const begin = std::clamp((from - place.offset) / place.scale, 0.0, static_cast<double>(place.size));
    double const stop = std::clamp((to - place.offset) / place.scale, begin, static_cast<double>(place.size));
    auto const source = static_cast<int>(std::min(std::floor(begin), last));
    auto const end = std::max(static_cast<int>(std::ceil(stop)), source + 1);
    pixels_.back().source = source;
    pixels_.back().count = end - source;
    for (int i = source; i < end; ++i) {
        double const shown = std::min(stop, i + 1.0) - std::max(begin, static_cast<double>(i));
        weights_.push_back(end == source + 1 ? 1.0F : static_cast<float>(shown / (stop - begin)));
    }
}

/// The colour at a place of the output, between the middles of two pixels.
void PictureAxis::addMiddle(Place const &place, double middle)
{
    double const last = place.size - 1;
    double const at = std::clamp((middle - place.offset) / place.scale - 0.5, 0.0, last);
    auto const source = static_cast<int>(at);
    auto const share = static_cast<float>(at - source);
    pixels_.back().source = source;
    pixels_.back().count = share > 0.0F ? 2 : 1;
    weights_.push_back(1.0F - share);
    if (share > 0.0F)
        weights_.push_back(share);
}

bool PictureAxis::areAlike(Pixel const &a, Pixel const &b) const
{
    return a.source == b.source && a.count == b.count &&
           std::equal(getWeights(a), getWeights(a) + a.count, getWeights(b));
}

PictureScaler::PictureScaler(Picture const &picture, PictureAxis const &columns, PictureAxis const &rows)
    : picture_(picture), columns_(columns), rows_(rows), channels_(picture.format == Picture::GREY ? 1 : 4),
      done_(rows.getFirst() - 1)
{
    auto const width = static_cast<std::size_t>(std::max(columns.getSourceEnd() - columns.getSourceFirst(), 0));
    sum_.resize(width * channels_);
    row_.resize(static_cast<std::size_t>(getWidth()) * channels_);
}

float const *PictureScaler::takeRow(int y)
{
    PictureAxis::Pixel const &row = rows_[y];
    bool const alike = done_ >= rows_.getFirst() && rows_.areAlike(row, rows_[done_]);
    done_ = y;
    if (alike)
        return row_.data();
    std::fill(sum_.begin(), sum_.end(), 0.0F);
    float const *weights = rows_.getWeights(row);
    for (int i = 0; i < row.count; ++i)
        addSourceRow(row.source + i, weights[i]);
    spread();
    return row_.data();
}

void PictureScaler::addSourceRow(int y, float weight)
{
    unsigned char const *from =
        picture_.getRow(y) + static_cast<std::size_t>(columns_.getSourceFirst()) * picture_.getPixelBytes();
    float *sum = sum_.data();
    std::size_t const count = sum_.size();
    if (picture_.format != Picture::ALPHA) {
        for (std::size_t i = 0; i < count; ++i)
            sum[i] += weight * static_cast<float>(from[i]);
        return;
    }
    for (std::size_t i = 0; i < count; i += 4) {
        float const alpha = weight * static_cast<float>(from[i + 3]);
        float const share = alpha / 255.0F;
        sum[i] += share * static_cast<float>(from[i]);
        sum[i + 1] += share * static_cast<float>(from[i + 1]);
        sum[i + 2] += share * static_cast<float>(from[i + 2]);
        sum[i + 3] += alpha;
    }
}

/// From the columns of the picture to those of the output.
void PictureScaler::spread()
{
    std::size_t to = 0;
    for (int x = columns_.getFirst(); x < columns_.getEnd(); ++x, to += channels_) {
        PictureAxis::Pixel const &pixel = columns_[x];
        float const *weights = columns_.getWeights(pixel);
        float const *from =
            sum_.data() + static_cast<std::size_t>(pixel.source - columns_.getSourceFirst()) * channels_;
        if (channels_ == 1) {
            float value = 0.0F;
            for (int i = 0; i < pixel.count; ++i)
                value += weights[i] * from[i];
            row_[to] = value;
            continue;
        }
        float values[4] = {};
        for (int i = 0; i < pixel.count; ++i) {
            for (std::size_t c = 0; c < 4; ++c)
                values[c] += weights[i] * from[static_cast<std::size_t>(i) * 4 + c];
        }
        std::copy(values, values + 4, row_.begin() + static_cast<std::ptrdiff_t>(to));
    }
}

namespace {

unsigned char byteOf(float value)
{
    return static_cast<unsigned char>(std::min(value, 255.0F) + 0.5F);
}

/// Straight, when there is an alpha.
void storeRow(float const *row, Picture::Format format, std::size_t count, unsigned char *to)
{
    if (format != Picture::ALPHA) {
        std::transform(row, row + count * (format == Picture::GREY ? 1 : 4), to, byteOf);
        return;
    }
    for (std::size_t i = 0; i < count * 4; i += 4) {
        float const share = row[i + 3] > 0.0F ? 255.0F / row[i + 3] : 0.0F;
        for (std::size_t c = 0; c < 3; ++c)
            to[i + c] = byteOf(row[i + c] * share);
        to[i + 3] = byteOf(row[i + 3]);
    }
}

PictureAxis axisOf(int size, double from, double length, int pixels)
{
    double const scale = pixels / length;
    return {{size, scale, -from * scale, 0.0, static_cast<double>(pixels)}, 0, pixels};
}

} // namespace

Picture scaled(Picture const &picture, QRectF const &part, int width, int height)
{
    PictureScaler scaler(picture, axisOf(picture.width, part.left(), part.width(), width),
                         axisOf(picture.height, part.top(), part.height(), height));
    unsigned char *pixels = nullptr;
    Picture result = makePicture(picture.format, width, height, &pixels);
    std::size_t const rowBytes = result.getPixelBytes() * static_cast<std::size_t>(width);
    std::size_t const left = result.getPixelBytes() * static_cast<std::size_t>(scaler.getLeft());
    for (int y = scaler.getTop(); y < scaler.getEndRow(); ++y)
        storeRow(scaler.takeRow(y), picture.format, static_cast<std::size_t>(scaler.getWidth()),
                 pixels + rowBytes * static_cast<std::size_t>(y) + left);
    return result;
}

} // namespace Zem::Fig2Qt
