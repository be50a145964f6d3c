// token_stream.h: checked steps that the readers of this library share.
#pragma once

#include <ZemStream.h>

namespace Zem::TokenStream {

/// Throws IO::StreamException for a block newer than `version`.
void openBlock(IO::InStream *stream, unsigned int version);

/// An unsigned int up to `last`. Throws IO::StreamException.
unsigned int readUpTo(IO::InStream *stream, unsigned int last);

/// For enumerations without gaps whose first value is 0.
template <class Enum>
Enum readEnum(IO::InStream *stream, Enum last)
{
    return static_cast<Enum>(readUpTo(stream, static_cast<unsigned int>(last)));
}

} // namespace Zem::TokenStream
