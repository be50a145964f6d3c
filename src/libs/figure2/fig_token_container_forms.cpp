// The stream form of FigureTokenContainer.
#include "ZemFig2ImageData.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_items.h"
#include "fig_owned_map.h"
#include "fig_token_entry.h"

#include <ZemImage.h>

#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int CONTAINER_BLOCK_VERSION = 3; // 2: descriptions; 3: alpha of pictures counts
constexpr unsigned int FIRST_WITH_ALPHA = 3;
constexpr unsigned char OPAQUE = 255;

struct ContainerBlock
{
    unsigned int infos = 0;
    std::vector<QString> entries;
    std::vector<QString> images;
    std::vector<QString> overlays;

    template <class Archive, class Self>
    static void fields(Archive &archive, Self &self)
    {
        auto entries = static_cast<unsigned int>(self.entries.size());
        auto images = static_cast<unsigned int>(self.images.size());
        auto overlays = static_cast<unsigned int>(self.overlays.size());
        archive.field(self.infos, Since{2}, 0);
        archive.field(entries);
        archive.field(images);
        archive.field(overlays);
        blockItems(archive, self.entries, entries);
        blockItems(archive, self.images, images);
        blockItems(archive, self.overlays, overlays);
    }
};

template <class Thing>
std::vector<QString> namesOf(OwnedMap<Thing> const &things)
{
    std::vector<QString> names;
    names.reserve(things.size());
    for (auto const &[name, thing] : things)
        names.push_back(name);
    return names;
}

void makeOpaque(ImageColor &picture)
{
    for (unsigned int y = 0; y < picture.getHeight(); ++y) {
        Color *row = picture.getRow(y);
        for (unsigned int x = 0; x < picture.getWidth(); ++x)
            row[x] = Color(row[x].getRed(), row[x].getGreen(), row[x].getBlue(), OPAQUE);
    }
}

} // namespace

void FigureTokenContainer::save(IO::OutStream *stream) const
{
    std::map<QString, Entry *> complete;
    for (auto const &[name, entry] : entries_) {
        if (entry->isComplete())
            complete.emplace(name, entry);
    }
    ContainerBlock const block{static_cast<unsigned int>(tokenInfos_.size()), namesOf(complete), namesOf(images_),
                               namesOf(overlays_)};
    saveBlock(stream, CONTAINER_BLOCK_VERSION, [&block](auto &archive) { ContainerBlock::fields(archive, block); });
    for (TokenInfo const &info : tokenInfos_)
        info.save(stream);
    for (auto const &[name, entry] : complete)
        entry->save(stream);
    for (auto const &[name, image] : images_)
        Tools::saveImage(stream, image);
    for (auto const &[name, overlay] : overlays_)
        Tools::saveImage(stream, overlay);
}

void FigureTokenContainer::load(IO::InStream *stream)
{
    clear();
    ContainerBlock block;
    unsigned int const version =
        loadBlock(stream, CONTAINER_BLOCK_VERSION, [&block](auto &archive) { ContainerBlock::fields(archive, block); });
    for (; block.infos > 0; --block.infos) {
        TokenInfo info;
        info.load(stream);
        tokenInfos_.push_back(info);
    }
    for (QString const &name : block.entries)
        replaceOwned(entries_, name, Entry::load(stream));
    for (QString const &name : block.images)
        loadImage(stream, name, version < FIRST_WITH_ALPHA);
    for (QString const &name : block.overlays)
        loadOverlay(stream, name);
}

/// In older containers the alpha of a picture without an alpha channel is of no meaning.
void FigureTokenContainer::loadImage(IO::InStream *stream, QString const &name, bool isOlder)
{
    std::unique_ptr<Zem::Image> image(Tools::loadImage(stream));
    auto *const color = dynamic_cast<ImageColor *>(image.get());
    if (isOlder && color && !color->hasAlphaChannel())
        makeOpaque(*color);
    if (Entry *entry = findOwned(entries_, name))
        entry->setImage(image.get());
    replaceOwned(images_, name, std::move(image));
}

void FigureTokenContainer::loadOverlay(IO::InStream *stream, QString const &name)
{
    std::unique_ptr<Zem::Image> image(Tools::loadImage(stream));
    std::unique_ptr<ImageColor> overlay(dynamic_cast<ImageColor *>(image.get()));
    if (!overlay)
        throw IO::StreamException(translate("Figure_err", "loading overlay image from figure stream failed"));
    (void)image.release();
    if (Entry *entry = findOwned(entries_, name))
        entry->setOverlay(overlay.get());
    replaceOwned(overlays_, name, std::move(overlay));
}

} // namespace Zem::Fig2
