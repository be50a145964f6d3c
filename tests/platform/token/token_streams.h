// token_streams.h: saving and loading in memory for tests.
#pragma once

#include <ZemStream.h>

#include <functional>
#include <sstream>
#include <string>

namespace Zem::Test {

inline std::string savedBytes(std::function<void(IO::OutStream *)> const &save)
{
    std::ostringstream bytes;
    IO::OutStream stream(&bytes, QStringLiteral("Test"), 1);
    save(&stream);
    stream.close();
    return bytes.str();
}

template <class T>
void loadFrom(std::string const &bytes, T *object)
{
    std::istringstream source(bytes);
    IO::InStream stream(&source);
    object->load(&stream);
}

template <class T>
T throughStream(T const &object)
{
    T read;
    loadFrom(savedBytes([&](IO::OutStream *stream) { object.save(stream); }), &read);
    return read;
}

} // namespace Zem::Test
