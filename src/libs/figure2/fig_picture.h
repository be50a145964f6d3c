// fig_picture.h: pictures in stream blocks and in text forms.
// Layer: streams. Internal to the library.
#pragma once

#include <ZemImage.h>
#include <ZemStream.h>

#include <memory>

namespace Zem::Fig2 {

/// A picture as it is stored.
struct PackedPicture
{
    unsigned int type = 0; ///< Zem::Image::Type
    StructVector<unsigned char> bytes;
    bool alphaChannel = false;
};

/// How the versions of a kind of picture block are read.
struct PictureBlockRules
{
    unsigned int newest;              ///< also what is written
    bool (*isJpeg)(unsigned version); ///< whether colour pictures of the version are JPEG
    unsigned int firstWithAlpha;      ///< the version that brought the alpha flag
    bool whiteWasTransparent;         ///< before that version, in colour pictures
};

PackedPicture packPicture(Zem::Image const &picture);
/// Null for a type that there is not, and for bytes that are no picture of the type.
std::unique_ptr<Zem::Image> unpackPicture(PackedPicture const &packed);

void savePicture(IO::OutStream *stream, PictureBlockRules const &rules, Zem::Image const &picture);
/// Never null. Throws IO::StreamException.
std::unique_ptr<Zem::Image> loadPicture(IO::InStream *stream, PictureBlockRules const &rules);

} // namespace Zem::Fig2
