// fig_words.h: the words that stand for the values of an enumeration in parameters, in the order of their numbers.
// Layer: values. Internal to the library.
#pragma once

#include <ZemParse.h>
#include <ZemTranslate.h>

#include <QtCore/QString>

#include <algorithm>
#include <array>
#include <optional>

namespace Zem::Fig2 {

/// Empty for a number outside the enumeration.
template <class Enum, std::size_t count>
QString wordOf(std::array<char const *, count> const &words, Enum value)
{
    auto const number = static_cast<std::size_t>(value);
    return number < count ? QString::fromLatin1(words[number]) : QString();
}

/// Nothing for an unknown word: what that means is up to the enumeration.
template <class Enum, std::size_t count>
std::optional<Enum> valueOf(std::array<char const *, count> const &words, QString const &word)
{
    auto const found = std::find_if(words.begin(), words.end(),
                                    [&word](char const *known) { return word == QLatin1StringView(known); });
    if (found == words.end())
        return std::nullopt;
    return static_cast<Enum>(found - words.begin());
}

/// Throws ParamError with translate(context, error) for an unknown word.
template <class Enum, std::size_t count>
Enum requireValueOf(std::array<char const *, count> const &words, QString const &word, char const *context,
                    char const *error)
{
    std::optional<Enum> const value = valueOf<Enum>(words, word);
    if (!value)
        throw ParamError(translate(context, error), -1);
    return *value;
}

} // namespace Zem::Fig2
