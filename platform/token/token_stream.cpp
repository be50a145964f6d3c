#include "token_stream.h"

#include <ZemTranslate.h>

namespace Zem {

void TokenStream::openBlock(IO::InStream *stream, unsigned int version)
{
    stream->openBlock();
    if (stream->getBlockVersion() > version) {
        throw IO::StreamException(translate("Fig_BlockVersion_Error", "wrong block version"));
    }
}

unsigned int TokenStream::readUpTo(IO::InStream *stream, unsigned int last)
{
    unsigned int number = 0;
    stream->readUInt(&number);
    if (number > last) {
        throw IO::StreamException(translate("Token_Stream_err", "unknown kind %1 in a token").arg(number));
    }
    return number;
}

} // namespace Zem
