#include <ZemInternalOrientation.h>

#include <ZemStream.h>
#include <ZemTranslate.h>

namespace Cal {

namespace {

constexpr unsigned int BLOCK_SIZE = 9 * 8;
constexpr unsigned int BLOCK_VERSION = 1;

} // namespace

/// The numbers in the order of the block.
template <class Self, class Field>
void InternalOrientation::forEachField(Self &self, Field const &field)
{
    field(self.imageDistance_.x);
    field(self.imageDistance_.y);
    field(self.principalPoint_.x);
    field(self.principalPoint_.y);
    for (auto &k : self.radial_)
        field(k);
    for (auto &p : self.tangential_)
        field(p);
}

void InternalOrientation::save(Zem::IO::OutStream *stream) const
{
    stream->beginBlock(BLOCK_SIZE, BLOCK_VERSION);
    forEachField(*this, [stream](double number) { stream->writeDouble(number); });
    stream->endBlock();
}

void InternalOrientation::load(Zem::IO::InStream *stream)
{
    stream->openBlock();
    if (stream->getBlockVersion() != BLOCK_VERSION)
        throw Zem::IO::StreamException(
            Zem::translate("Calibration_err", "wrong block version of a camera's orientation"));
    InternalOrientation read;
    forEachField(read, [stream](double &number) { stream->readDouble(&number); });
    stream->closeBlock();
    *this = read;
}

} // namespace Cal
