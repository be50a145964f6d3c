// FormatPage.h: the tables of docs/formats, and what is in a file according to them.
#pragma once

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Zem::Support {

/// A page cannot be understood, or a file is not as the pages tell. The text says where.
class FormatError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A row of a table; docs/formats/README.md tells what stands in it.
struct FormatRow
{
    std::string name;
    std::string kind; ///< a primitive, or the name of a form
    std::string times;
    std::string each;
    std::string by;
    std::string versions;
    std::string when;
    bool isPrimitive = false;

    bool isIn(unsigned int version) const;
    bool isRepeated() const { return !times.empty() || !each.empty(); }
};

struct FormatForm
{
    enum class Nature { None, Block, Record, Sequence, Choice, File };

    std::string name;
    Nature nature = Nature::None;
    unsigned int version = 0;
    unsigned int firstVersion = 1;
    std::string typeWord;
    std::string when; ///< a block that is not always there
    std::vector<FormatRow> rows;
    std::map<std::uint32_t, std::string> choices;
};

/// The forms of all pages by name.
using FormatForms = std::map<std::string, FormatForm>;

/// Reads all pages of a folder. Throws FormatError.
FormatForms readFormatPages(std::string const &folder);

/// What is in a file, a line for each value, as tests/golden/format_page.py tells it. Throws FormatError where the file
/// is not as the pages tell, also for what is left over.
std::string tellFile(FormatForms const &forms, std::string const &form, std::string_view bytes);

} // namespace Zem::Support
