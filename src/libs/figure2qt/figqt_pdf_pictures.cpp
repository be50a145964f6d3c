#include "figqt_pdf_pictures.h"

#include "figqt_pdf_file.h"

#include <algorithm>

namespace Zem::Fig2Qt {

PdfPictures::Written PdfPictures::write(PlacedPicture const &placed)
{
    Excerpt const wanted = excerptOf(placed, dpi_);
    auto const serves = [&wanted](Written const &written) {
        return written.excerpt.part == wanted.part && written.excerpt.width >= wanted.width &&
               written.excerpt.height >= wanted.height;
    };
    std::vector<Written> unknown;
    std::vector<Written> &known = placed.id.isEmpty() ? unknown : known_[placed.id];
    auto const found = std::find_if(known.begin(), known.end(), serves);
    if (found != known.end())
        return *found;
    known.push_back({objectOf(cutOut(placed.picture, wanted)), wanted});
    return known.back();
}

int PdfPictures::objectOf(Picture const &picture)
{
    auto const [object, isNew] = objects_.try_emplace(fingerprintOf(picture), 0);
    if (isNew)
        object->second = writeObject(picture);
    return object->second;
}

int PdfPictures::writeObject(Picture const &picture)
{
    if (picture.format == Picture::GREY)
        return writeSamples(picture.pixels, picture, 1, "/ColorSpace/DeviceGray");
    ColorPlanes const planes = planesOf(picture);
    std::string entries = "/ColorSpace/DeviceRGB";
    if (!planes.alpha.empty())
        entries += "/SMask " + reference(writeSamples(planes.alpha.data(), picture, 1, "/ColorSpace/DeviceGray"));
    return writeSamples(planes.colors.data(), picture, 3, entries);
}

int PdfPictures::writeSamples(unsigned char const *bytes, Picture const &picture, int channels,
                              std::string const &entries)
{
    auto const pixelBytes = static_cast<std::size_t>(channels);
    std::string const columns = std::to_string(picture.width);
    int const object = file_->reserve();
    file_->writePackedStream(object,
                             "/Type/XObject/Subtype/Image/Width " + columns + "/Height " +
                                 std::to_string(picture.height) + "/BitsPerComponent 8" + entries +
                                 "/DecodeParms<</Predictor 15/Colors " + std::to_string(channels) + "/Columns " +
                                 columns + ">>",
                             packRows(bytes, pixelBytes * static_cast<std::size_t>(picture.width),
                                      static_cast<std::size_t>(picture.height), pixelBytes));
    return object;
}

} // namespace Zem::Fig2Qt
