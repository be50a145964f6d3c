#include "fig_text.h"

#include <ZemText.h>

#include <locale>

namespace Zem::Fig2 {

ClassicFormat::ClassicFormat(std::ios &stream) : stream_(stream), saved_(nullptr)
{
    saved_.copyfmt(stream);
    std::ios const plain(nullptr);
    stream.flags(plain.flags());
    stream.imbue(std::locale::classic());
    stream.precision(17);
    stream.width(0);
    stream.fill(' ');
}

ClassicFormat::~ClassicFormat()
{
    // The exception mask stays the caller's: copyfmt would throw from here when it is set.
    stream_.flags(saved_.flags());
    stream_.imbue(saved_.getloc());
    stream_.precision(saved_.precision());
    stream_.fill(saved_.fill());
}

void TextWriter::item(BaVec2d<double> const &value)
{
    write(value.x);
    write(value.y);
}

void TextWriter::item(BaVec3d<double> const &value)
{
    write(value.x);
    write(value.y);
    write(value.z);
}

void TextWriter::item(QString const &value)
{
    write(tokenize(TString(value.toStdString()), true));
}

void TextReader::item(QString &value)
{
    TString word;
    stream_ >> word;
    if (good())
        value = QString::fromStdString(untokenize(word, true));
}

unsigned int TextReader::version()
{
    unsigned int number = 0;
    stream_ >> number;
    version_ = good() ? number : 0;
    return version_;
}

} // namespace Zem::Fig2
