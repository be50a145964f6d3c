#include "image_limits.h"
#include "jpeg_reader.h"
#include "png_format.h"
#include "tiff_format.h"

#include <ZemErrorLog.h>
#include <ZemOutputFile.h>
#include <ZemTranslate.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string_view>

namespace Zem {

namespace {

constexpr qint64 MOST_FILE_BYTES = 0x7fffffff;
constexpr std::size_t MAGIC_BYTES = 8;

struct Magic
{
    Image::FileType type;
    std::string_view bytes;
};

using namespace std::string_view_literals;

constexpr std::array<Magic, 6> MAGICS{{{Image::FILE_PNG, "\x89PNG\r\n\x1a\n"sv},
                                       {Image::FILE_JPEG, "\xff\xd8\xff"sv},
                                       {Image::FILE_TIFF, "II*\0"sv},
                                       {Image::FILE_TIFF, "MM\0*"sv},
                                       {Image::FILE_TIFF, "II+\0"sv},
                                       {Image::FILE_TIFF, "MM\0+"sv}}};

std::optional<Image::FileType> typeOf(ImageBytes bytes)
{
    for (Magic const &magic : MAGICS) {
        std::string_view const head(reinterpret_cast<char const *>(bytes.data()), std::min(bytes.size(), MAGIC_BYTES));
        if (head.starts_with(magic.bytes)) {
            return magic.type;
        }
    }
    return std::nullopt;
}

void open(QFile *file)
{
    QFileInfo const info(file->fileName());
    if (info.exists() && !info.isFile()) {
        failImage("is not a file");
    }
    if (!file->open(QIODevice::ReadOnly)) {
        throw ImageError(file->errorString());
    }
}

StructVector<unsigned char> readBytes(QFile *file, qint64 size)
{
    StructVector<unsigned char> bytes(static_cast<std::size_t>(size));
    if (file->read(reinterpret_cast<char *>(bytes.data()), size) != size) {
        throw ImageError(file->errorString());
    }
    return bytes;
}

StructVector<unsigned char> readFile(QString const &fileName)
{
    QFile file(fileName);
    open(&file);
    if (file.size() > MOST_FILE_BYTES) {
        failImage("the file is larger than 2 GiB");
    }
    return readBytes(&file, file.size());
}

StructVector<unsigned char> readHead(QString const &fileName)
{
    QFile file(fileName);
    open(&file);
    return readBytes(&file, std::min<qint64>(file.size(), MAGIC_BYTES));
}

std::unique_ptr<Image> readPicture(ImageBytes bytes)
{
    auto const type = typeOf(bytes);
    if (!type) {
        failImage("is no PNG, JPEG or TIFF file");
    }
    switch (*type) {
    case Image::FILE_PNG:
        return readPng(bytes);
    case Image::FILE_JPEG:
        return readJpeg(bytes);
    case Image::FILE_TIFF:
        break;
    }
    return readTiff(bytes);
}

StructVector<unsigned char> bytesFor(QString const &fileName, Image const &image)
{
    if (image.getWidth() == 0) {
        failImage("the picture has no pixels");
    }
    QString const suffix = QFileInfo(fileName).suffix().toLower();
    if (suffix == QLatin1StringView("png")) {
        return writePng(image);
    }
    if (suffix == QLatin1StringView("tif") || suffix == QLatin1StringView("tiff")) {
        return writeTiff(image);
    }
    failImage("pictures are written to .png, .tif and .tiff files");
}

void writeFile(QString const &fileName, StructVector<unsigned char> const &bytes)
{
    OutputFile file(fileName);
    file.write({reinterpret_cast<char const *>(bytes.data()), bytes.size()});
    file.commit();
}

void report(ErrorLog *log, QString const &text)
{
    if (log) {
        *log << text << END_LOG;
    }
}

/// Does the work on a file; false when it cannot be done, the reason is then in the log.
template <class Work>
bool reportFailure(QString const &fileName, ErrorLog *log, Work const &work)
{
    try {
        work();
        return true;
    } catch (ImageError const &error) {
        report(log, fileName + QStringLiteral(": ") + error.getText());
    } catch (FileError const &error) {
        report(log, error.getText());
    } catch (std::bad_alloc const &) {
        report(log, fileName + QStringLiteral(": ") + translate("Image_err", "not enough memory"));
    }
    return false;
}

} // namespace

Image *Image::loadImage(QString const &fileName, ErrorLog *log, int /*first*/, int /*second*/)
{
    std::unique_ptr<Image> picture;
    reportFailure(fileName, log, [&] {
        StructVector<unsigned char> const bytes = readFile(fileName);
        picture = readPicture(bytes);
    });
    return picture.release();
}

bool Image::getFileType(QString const &fileName, FileType *type)
{
    if (!type) {
        throw ProgError("Zem::Image::getFileType", "image_files", __LINE__, "no place for the type");
    }
    try {
        auto const found = typeOf(readHead(fileName));
        *type = found.value_or(*type);
        return found.has_value();
    } catch (ImageError const &) {
        return false; // what cannot be read is no picture
    }
}

bool Image::saveImage(QString const &fileName, ErrorLog *log) const
{
    return reportFailure(fileName, log, [&] { writeFile(fileName, bytesFor(fileName, *this)); });
}

} // namespace Zem
