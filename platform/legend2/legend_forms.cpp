#include "legend_forms.h"

#include <ZemTranslate.h>

#include <algorithm>

namespace Zem::Legend2 {

namespace {

/// Written so that NaN is out of every range.
template <class Number>
void requireRange(QString const &key, Number value, Number minimum, Number maximum)
{
    if (!(value >= minimum && value <= maximum)) {
        throw IO::StreamException(
            translate("Legend_Stream_err", "value %1 of '%2' in a colour scale is out of range").arg(value).arg(key));
    }
}

} // namespace

void Forms::BlockReader::number(Key const &key, double &value, double minimum, double maximum)
{
    stream_->readDouble(&value);
    requireRange(key, value, minimum, maximum);
}

void Forms::BlockReader::integer(Key const &key, int &value, int minimum, int maximum)
{
    stream_->readInt(&value);
    requireRange(key, value, minimum, maximum);
}

void Forms::BlockReader::count(Key const &key, unsigned int &value, unsigned int minimum, unsigned int maximum)
{
    stream_->readUInt(&value);
    requireRange(key, value, minimum, maximum);
}

void Forms::failParameter(QString const &key, QString const &value, char const *what)
{
    throw ParamError(
        translate("Parse_err", "parameter '%1', value '%2': %3").arg(key, value, translate("Parse_err", what)), -1);
}

std::size_t Forms::indexOfWord(QString const &key, QString const &word, Words words)
{
    auto const found =
        std::find_if(words.begin(), words.end(), [&](char const *name) { return word == QLatin1StringView(name); });
    if (found == words.end()) {
        failParameter(key, word, "is none of the words allowed here");
    }
    return static_cast<std::size_t>(found - words.begin());
}

void Forms::openBlock(IO::InStream *stream, unsigned int newest)
{
    stream->openBlock();
    unsigned int const version = stream->getBlockVersion();
    if (version < 1 || version > newest) {
        throw IO::StreamException(translate("Fig_BlockVersion_Error", "wrong block version"));
    }
}

} // namespace Zem::Legend2
