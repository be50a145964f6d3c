// fig_text_form.h: versioned text forms, as a class puts them in front of its base's and as records stand alone.
// Layer: streams. Internal to the library.
#pragma once

#include "fig_block.h"
#include "fig_text.h"

namespace Zem::Fig2 {

/// Writes the version and the items that `items` lists.
template <class Items>
std::ostream &saveText(std::ostream &stream, unsigned int version, Items const &items)
{
    TextWriter writer(stream);
    writer.version(version);
    items(writer);
    return stream;
}

/// Reads the version, throws IO::StreamException for one above `newest`, and reads the items that `items` lists; none
/// for a version of 0, or where there is none. The result is the version.
template <class Items>
unsigned int loadText(std::istream &stream, unsigned int newest, Items const &items)
{
    TextReader reader(stream);
    unsigned int const version = reader.version();
    if (version > newest)
        throwWrongBlockVersion();
    if (version > 0)
        items(reader);
    return version;
}

/// Reads a record of exactly this version; another one, or a damaged text, leaves it alone.
template <class Record, class Items>
std::istream &loadRecord(std::istream &stream, unsigned int version, Record &record, Items const &items)
{
    TextReader reader(stream);
    if (reader.version() != version)
        return stream;
    Record read = record;
    items(reader, read);
    if (reader.good())
        record = read;
    return stream;
}

} // namespace Zem::Fig2
