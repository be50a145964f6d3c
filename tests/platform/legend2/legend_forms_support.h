// legend_forms_support.h: the records of a colour scale in memory, and crafted blocks of them.
#pragma once

#include <ZemParse.h>
#include <ZemStream.h>

#include <functional>
#include <sstream>
#include <string>

namespace Zem::Legend2::Test {

inline std::string bytesOf(std::function<void(IO::OutStream &)> const &write)
{
    std::ostringstream bytes;
    IO::OutStream stream(&bytes, QStringLiteral("Test"), 1);
    write(stream);
    stream.close();
    return bytes.str();
}

template <class T>
std::string savedBytes(T const &record)
{
    return bytesOf([&](IO::OutStream &stream) { record.save(&stream); });
}

template <class T>
void loadFrom(std::string const &bytes, T *record)
{
    std::istringstream source(bytes);
    IO::InStream stream(&source);
    record->load(&stream);
}

template <class T>
T throughStream(T const &record)
{
    T read;
    loadFrom(savedBytes(record), &read);
    return read;
}

/// The text of the StreamException that loading throws; empty when it throws none.
template <class T>
QString loadError(std::string const &bytes, T *record)
{
    try {
        loadFrom(bytes, record);
    } catch (IO::StreamException const &exception) {
        return exception.getText();
    }
    return QString();
}

template <class T>
T throughParameters(T const &record, T read = T())
{
    QString parameters = record.getParameterString();
    read.createFromParameterString(parameters);
    return read;
}

/// The text of the ParamError that reading throws; empty when it throws none.
template <class T>
QString parameterError(QString parameters, T *record)
{
    try {
        record->createFromParameterString(parameters);
    } catch (ParamError const &error) {
        return error.getText();
    }
    return QString();
}

} // namespace Zem::Legend2::Test
