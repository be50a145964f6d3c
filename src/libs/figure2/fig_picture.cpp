#include "fig_picture.h"

#include "fig_block.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int SIZE_WITHOUT_BYTES = 9;
constexpr Color WHITE{255, 255, 255};
constexpr Color TRANSPARENT_WHITE{255, 255, 255, 0};

[[noreturn]] void failPicture()
{
    throw IO::StreamException(translate("Figure_err", "loading image from figure stream failed"));
}

std::unique_ptr<Zem::Image> makePicture(unsigned int type)
{
    switch (type) {
    case Zem::Image::TYPE_IMAGE8:
        return std::make_unique<Image8>();
    case Zem::Image::TYPE_IMAGE16:
        return std::make_unique<Image16>();
    case Zem::Image::TYPE_IMAGE32:
        return std::make_unique<Image32>();
    case Zem::Image::TYPE_COLOR:
        return std::make_unique<ImageColor>();
    default:
        return nullptr;
    }
}

std::unique_ptr<Zem::Image> readJpeg(StructVector<unsigned char> const &bytes)
{
    auto picture = std::make_unique<ImageColor>();
    return picture->readJPEGFromBuffer(bytes) ? std::move(picture) : nullptr;
}

void makeWhiteTransparent(ImageColor &picture)
{
    for (unsigned int y = 0; y < picture.getHeight(); ++y) {
        for (unsigned int x = 0; x < picture.getWidth(); ++x) {
            if (picture.getPixel(x, y) == WHITE)
                picture.setPixel(x, y, TRANSPARENT_WHITE);
        }
    }
    picture.setHasAlphaChannel(true);
}

/// The fields of the open block.
PackedPicture readPacked(IO::InStream *stream, bool withAlpha)
{
    PackedPicture packed;
    unsigned int count = 0;
    stream->readUInt(&packed.type);
    stream->readUInt(&count);
    if (count > stream->getBytesLeft())
        failPicture();
    packed.bytes.resize(count);
    stream->readData(packed.bytes.data(), count);
    if (withAlpha)
        stream->readBool(&packed.alphaChannel);
    return packed;
}

} // namespace

PackedPicture packPicture(Zem::Image const &picture)
{
    PackedPicture packed{picture.getType(), {}, picture.hasAlphaChannel()};
    picture.compressImage(&packed.bytes);
    return packed;
}

std::unique_ptr<Zem::Image> unpackPicture(PackedPicture const &packed)
{
    std::unique_ptr<Zem::Image> picture = makePicture(packed.type);
    return picture && picture->uncompressImage(packed.bytes) ? std::move(picture) : nullptr;
}

void savePicture(IO::OutStream *stream, PictureBlockRules const &rules, Zem::Image const &picture)
{
    PackedPicture const packed = packPicture(picture);
    auto const count = static_cast<unsigned int>(packed.bytes.size());
    stream->beginBlock(count + SIZE_WITHOUT_BYTES, rules.newest);
    stream->writeUInt(packed.type);
    stream->writeUInt(count);
    stream->writeData(packed.bytes.data(), count);
    stream->writeBool(packed.alphaChannel);
    stream->endBlock();
}

std::unique_ptr<Zem::Image> loadPicture(IO::InStream *stream, PictureBlockRules const &rules)
{
    stream->openBlock();
    unsigned int const version = stream->getBlockVersion();
    if (version < 1 || version > rules.newest)
        throwWrongBlockVersion();
    bool const hasAlphaFlag = version >= rules.firstWithAlpha;
    PackedPicture const packed = readPacked(stream, hasAlphaFlag);
    stream->closeBlock();

    bool const isColor = packed.type == Zem::Image::TYPE_COLOR;
    std::unique_ptr<Zem::Image> picture =
        isColor && rules.isJpeg(version) ? readJpeg(packed.bytes) : unpackPicture(packed);
    if (!picture)
        failPicture();
    if (auto *color = dynamic_cast<ImageColor *>(picture.get())) {
        if (hasAlphaFlag)
            color->setHasAlphaChannel(packed.alphaChannel);
        else if (rules.whiteWasTransparent)
            makeWhiteTransparent(*color);
    }
    return picture;
}

} // namespace Zem::Fig2
