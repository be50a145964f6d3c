// ElementForms.h: the forms of an element and the texts of exceptions, short enough for one line of a test.
#pragma once

#include "BlockCrafter.h"

#include <ZemError.h>
#include <ZemFig2Element.h>

#include <sstream>
#include <string>

namespace Zem::Support {

inline std::string blockForm(Fig2::Element const &element)
{
    return streamOf([&element](IO::OutStream &stream) { element.save(&stream, -1, -1); });
}

inline std::string textForm(Fig2::Element const &element)
{
    std::ostringstream stream;
    element.saveToStream(stream);
    return stream.str();
}

inline std::string parameterForm(Fig2::Element const &element)
{
    return element.getParameterString().toStdString();
}

inline void loadBlocks(Fig2::Element &element, std::string const &bytes)
{
    readFrom(bytes, [&element](IO::InStream &stream) { element.load(&stream, -1, -1); });
}

/// False when the stream has failed.
inline bool loadText(Fig2::Element &element, std::string const &text)
{
    std::istringstream stream(text);
    return static_cast<bool>(element.loadFromStream(stream));
}

/// Takes the entries it knows; the rest is the result.
inline std::string loadParameters(Fig2::Element &element, std::string const &text)
{
    QString parameters = QString::fromStdString(text);
    element.createFromParameterString(parameters);
    return parameters.toStdString();
}

/// The text of the exception that `act` throws, "nothing thrown" without one.
template <class Thrown, class Act>
std::string thrownText(Act const &act)
{
    try {
        act();
    } catch (Thrown const &error) {
        return error.getText().toStdString();
    }
    return "nothing thrown";
}

/// The source file and the text of a program error: "fig_element: Element does not support sizes".
template <class Act>
std::string progError(Act const &act)
{
    std::string const text = thrownText<ProgError>(act);
    std::size_t const file = text.find('(');
    std::size_t const line = text.find(':', file);
    std::size_t const end = text.find("): ", line);
    if (file == std::string::npos || line == std::string::npos || end == std::string::npos)
        return text;
    return text.substr(file + 1, line - file - 1) + text.substr(end + 1);
}

} // namespace Zem::Support
