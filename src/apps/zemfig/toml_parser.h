// toml_parser.h: toml++ with assertions that hold in every build.
#pragma once

#include <stdexcept>
#include <string_view>

namespace Zem::Zemfig {

/// The parser met what it took for impossible.
class TomlAssertion : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};

[[noreturn]] inline void throwTomlAssertion(char const *assertion)
{
    throw TomlAssertion(assertion);
}

/// Behind these assertions the parser looks for itself, and then names the place: a key that begins with neither a
/// letter nor a quote.
constexpr bool isCheckedByParser(std::string_view assertion)
{
    return assertion == "is_bare_key_character(*cp) || is_string_delimiter(*cp)" ||
           assertion == "is_string_delimiter(*cp) || is_bare_key_character(*cp)";
}

} // namespace Zem::Zemfig

// Bad documents do reach the parser's assertions. Without NDEBUG they would end the program; with it the parser makes
// promises to the compiler of them, and anything may follow.
#ifdef NDEBUG
#define ZEM_TOML_WITH_NDEBUG
#undef NDEBUG
#endif
#define TOML_ASSERT(condition)                                                                                         \
    (Zem::Zemfig::isCheckedByParser(#condition) || (condition) ? static_cast<void>(0)                                  \
                                                               : Zem::Zemfig::throwTomlAssertion(#condition))
#include <toml++/toml.h>
#ifdef ZEM_TOML_WITH_NDEBUG
#undef ZEM_TOML_WITH_NDEBUG
#define NDEBUG
#endif
