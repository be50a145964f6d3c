#include <ZemFont.h>
#include <ZemText.h>

#include <QtCore/QLocale>

#include <cmath>
#include <istream>
#include <mutex>
#include <ostream>

namespace Zem {

namespace {

struct LabelFont
{
    std::mutex mutex;
    Font font;
};

LabelFont &labelFont()
{
    static LabelFont shared;
    return shared;
}

bool isUsableSize(double size)
{
    return std::isfinite(size) && size > 0.0;
}

} // namespace

Font::Font() : Font(QString(DEFAULT_FONT_SANS), 12.0, 0)
{
}

Font::Font(QString const &family, double size, unsigned int style) : family_(family), size_(size), style_(style)
{
}

Font Font::getSystemLabelFont()
{
    std::lock_guard const lock(labelFont().mutex);
    return labelFont().font;
}

void Font::setSystemLabelFont(Font const &font)
{
    std::lock_guard const lock(labelFont().mutex);
    labelFont().font = font;
}

QString Font::getParameterString() const
{
    QString const size = QString::number(size_, 'g', QLocale::FloatingPointShortest);
    return family_ + QLatin1Char(',') + size + QLatin1Char(',') + QString::number(style_);
}

bool Font::createFromParameterString(QString const &text)
{
    // From the end, since a family may hold commas.
    qsizetype const beforeStyle = text.lastIndexOf(QLatin1Char(','));
    qsizetype const beforeSize = beforeStyle > 0 ? text.lastIndexOf(QLatin1Char(','), beforeStyle - 1) : -1;
    if (beforeSize < 0) {
        return false;
    }
    bool sizeRead = false;
    bool styleRead = false;
    double const size = text.mid(beforeSize + 1, beforeStyle - beforeSize - 1).toDouble(&sizeRead);
    unsigned int const style = text.mid(beforeStyle + 1).toUInt(&styleRead);
    if (!sizeRead || !styleRead || !isUsableSize(size)) {
        return false;
    }
    *this = Font(text.left(beforeSize), size, style);
    return true;
}

std::ostream &operator<<(std::ostream &stream, Font const &font)
{
    ClassicLocale const classic(stream);
    return stream << tokenize(TString(font.getFamily()), true) << ' ' << font.getSize() << ' ' << font.getStyle();
}

std::istream &operator>>(std::istream &stream, Font &font)
{
    ClassicLocale const classic(stream);
    TString family;
    double size = 0.0;
    unsigned int style = 0;
    if (stream >> family >> size >> style) {
        if (isUsableSize(size)) {
            font = Font(untokenize(family, true).toQString(), size, style);
        } else {
            stream.setstate(std::ios_base::failbit);
        }
    }
    return stream;
}

} // namespace Zem
