#include <ZemFormattedText.h>

#include "token_stream.h"

namespace Zem {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

} // namespace

FormattedText::FormattedText(QString const &richText)
{
    setText(FORMAT_RICH_TEXT, richText);
}

void FormattedText::setText(Format_t format, QString const &text)
{
    texts_.insert(format, text);
}

bool FormattedText::getText(Format_t format, QString *text) const
{
    auto const found = texts_.constFind(format);
    if (found == texts_.constEnd()) {
        return false;
    }
    *text = *found;
    return true;
}

void FormattedText::save(IO::OutStream *stream) const
{
    unsigned int size = 4;
    for (QString const &text : texts_) {
        size += 4 + IO::Stream::sizeOf(text);
    }
    stream->beginBlock(size, BLOCK_VERSION);
    stream->writeUInt(static_cast<unsigned int>(texts_.size()));
    for (auto entry = texts_.constBegin(); entry != texts_.constEnd(); ++entry) {
        stream->writeUInt(entry.key());
        stream->writeString(entry.value());
    }
    stream->endBlock();
}

void FormattedText::load(IO::InStream *stream)
{
    FormattedText read;
    TokenStream::openBlock(stream, BLOCK_VERSION);
    unsigned int count = 0;
    stream->readUInt(&count);
    for (unsigned int i = 0; i < count; ++i) {
        auto const format = TokenStream::readEnum<Format_t>(stream, FORMAT_PLAIN_TEXT);
        QString text;
        stream->readString(&text);
        read.setText(format, text);
    }
    stream->closeBlock();
    *this = read;
}

} // namespace Zem
