#include <ZemHistogramData.h>

#include "legend_forms.h"

#include <ZemTranslate.h>

#include <algorithm>

namespace Zem::Legend2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;
constexpr unsigned int COUNT_SIZE = 8 + 4;

[[noreturn]] void fail()
{
    throw IO::StreamException(translate("Legend_Stream_err", "bad histogram"));
}

} // namespace

bool HistogramData::addHistogram(std::map<double, unsigned int> const &counts)
{
    std::map<double, unsigned int> sums = counts_;
    for (auto const &[value, count] : counts) {
        if (!std::isfinite(value)) {
            return false;
        }
        if (count == 0) {
            continue;
        }
        unsigned int &sum = sums[value];
        if (count > std::numeric_limits<unsigned int>::max() - sum) {
            return false;
        }
        sum += count;
    }
    counts_ = std::move(sums);
    return true;
}

bool HistogramData::addHistogram(HistogramData const &other)
{
    return addHistogram(other.counts_);
}

unsigned int HistogramData::getMaxCount() const noexcept
{
    unsigned int most = 0;
    for (auto const &[value, count] : counts_) {
        most = std::max(most, count);
    }
    return most;
}

void HistogramData::save(IO::OutStream *stream) const
{
    auto const size = static_cast<unsigned int>(counts_.size());
    stream->beginBlock(4 + size * COUNT_SIZE, BLOCK_VERSION);
    stream->writeUInt(size);
    for (auto const &[value, count] : counts_) {
        stream->writeDouble(value);
        stream->writeUInt(count);
    }
    stream->endBlock();
}

void HistogramData::load(IO::InStream *stream)
{
    Forms::openBlock(stream, BLOCK_VERSION);
    std::map<double, unsigned int> read;
    unsigned int size = 0;
    stream->readUInt(&size);
    if (size > stream->getBytesLeft() / COUNT_SIZE) {
        fail();
    }
    for (unsigned int i = 0; i < size; ++i) {
        double value = 0.0;
        unsigned int count = 0;
        stream->readDouble(&value);
        stream->readUInt(&count);
        if (!std::isfinite(value) || count == 0 || (!read.empty() && value <= read.rbegin()->first)) {
            fail();
        }
        read.emplace_hint(read.end(), value, count);
    }
    stream->closeBlock();
    counts_ = std::move(read);
}

} // namespace Zem::Legend2
