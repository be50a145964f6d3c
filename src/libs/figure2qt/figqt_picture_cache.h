// figqt_picture_cache.h: keeps what conversions made of pictures.
#pragma once

#include "figqt_generation_cache.h"
#include "figqt_picture.h"

#include <QtCore/QHash>

#include <mutex>

namespace Zem::Fig2Qt {

/// Pictures that were converted, by the ids of pictureId(). What has not been asked for lately is forgotten first. For
/// any number of threads.
class PictureCache
{
public:
    /// Keeps at most twice as many bytes of pixels, see GenerationCache, and no picture that is larger.
    explicit PictureCache(std::size_t mostBytes) : mostBytes_(mostBytes), cache_(mostBytes) {}

    /// The one of this process.
    static PictureCache &common();

    /// As convertPicture(). An empty id is never known.
    Picture convert(QString const &id, Zem::Image const &image, Fig2::ImageConversion const &conversion);

private:
    struct HashOfText
    {
        std::size_t operator()(QString const &text) const { return qHash(text); }
    };

    std::size_t const mostBytes_;
    std::mutex mutex_;
    GenerationCache<QString, Picture, HashOfText> cache_;
};

} // namespace Zem::Fig2Qt
