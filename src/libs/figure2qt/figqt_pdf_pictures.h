// figqt_pdf_pictures.h: the pictures of a PDF file.
#pragma once

#include "figqt_embedded_picture.h"

#include <map>

namespace Zem::Fig2Qt {

class PdfFile;

/// Writes each picture once, however often pages show it, unless it is shown larger later than it was written for.
class PdfPictures
{
public:
    /// `file` is not owned. Pictures get no more than `dpi` pixels to an inch of the page.
    PdfPictures(PdfFile *file, double dpi) : file_(file), dpi_(dpi) {}

    struct Written
    {
        int object;
        Excerpt excerpt;
    };
    Written write(PlacedPicture const &placed);

private:
    int objectOf(Picture const &picture);
    int writeObject(Picture const &picture);
    int writeSamples(unsigned char const *bytes, Picture const &picture, int channels, std::string const &entries);

    PdfFile *file_;
    double dpi_;
    std::map<QString, std::vector<Written>> known_; // by their ids
    std::map<QByteArray, int> objects_;             // by their pixels
};

} // namespace Zem::Fig2Qt
