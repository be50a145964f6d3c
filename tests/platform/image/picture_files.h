// picture_files.h: picture files from bytes, and what became of them.
#pragma once

#include <ZemErrorLog.h>
#include <ZemImage.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Zem {

inline void PrintTo(Color const &color, std::ostream *stream)
{
    *stream << color;
}

namespace Test {

/// All pixels from the top left on; none, and a failure, for a picture of another class.
template <class Picture>
std::vector<typename Picture::Pixel> pixelsOf(Image const *image)
{
    std::vector<typename Picture::Pixel> pixels;
    auto const *const picture = dynamic_cast<Picture const *>(image);
    EXPECT_TRUE(picture) << "no picture, or one of another class";
    for (unsigned int y = 0; picture && y < picture->getHeight(); ++y)
        pixels.insert(pixels.end(), picture->getRow(y), picture->getRow(y) + picture->getWidth());
    return pixels;
}

class PictureFiles : public testing::Test
{
protected:
    QString path(char const *name) const { return folder_.filePath(QLatin1StringView(name)); }

    void write(QString const &fileName, std::string const &bytes) const
    {
        QFile file(fileName);
        file.remove(); // some file systems wait for the medium when a file is truncated and written anew
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())), static_cast<qint64>(bytes.size()));
    }

    std::unique_ptr<Image> load(QString const &fileName)
    {
        return std::unique_ptr<Image>(Image::loadImage(fileName, &log, -1, -1));
    }

    std::unique_ptr<Image> loadBytes(std::string const &bytes)
    {
        write(path("picture"), bytes);
        return load(path("picture"));
    }

    /// The reason why the bytes are no picture, without the name of the file.
    std::string refusal(std::string const &bytes)
    {
        qsizetype const before = log.getLog().size();
        EXPECT_FALSE(loadBytes(bytes));
        QString const message = log.getLog().mid(before);
        QString const name = path("picture") + QStringLiteral(": ");
        EXPECT_TRUE(message.startsWith(name) && message.endsWith(QLatin1Char('\n'))) << message.toStdString();
        return message.mid(name.size()).trimmed().toStdString();
    }

    ErrorLog log{false};

private:
    QTemporaryDir folder_;
};

} // namespace Test
} // namespace Zem
