#include <ZemTokenInfo.h>

#include "token_stream.h"

#include <ZemTranslate.h>

#include <algorithm>
#include <iterator>

namespace Zem {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

// In the order of Category_t. Stored in files and parameter strings: append, never rename.
constexpr char const *CATEGORY_NAMES[] = {
    "general",    "project", "stage",     "report",  "user",     "system",    "date",   "file",         "unit",
    "statistics", "point",   "line",      "area",    "section",  "sensor",    "camera", "image",        "chart",
    "snapshot",   "legend",  "tolerance", "element", "material", "deviation", "strain", "displacement", "undefined"};
static_assert(std::size(CATEGORY_NAMES) == TokenInfo::CATEGORY_UNDEFINED + 1, "a category has no name");

} // namespace

TokenInfo TokenInfo::getSelectedInfo()
{
    return TokenInfo(TYPE_BOOLEAN, TOKEN_SELECTED, translate("Token_Info", "selected"));
}

Value TokenInfo::getSelectedValue(bool selected)
{
    return Value::fromBool(selected);
}

QString TokenInfo::getCategoryTypeName(Category_t category)
{
    std::size_t const index = std::min(static_cast<std::size_t>(category), std::size(CATEGORY_NAMES) - 1);
    return QString::fromLatin1(CATEGORY_NAMES[index]);
}

TokenInfo::Category_t TokenInfo::getCategoryByTypeName(QString const &name)
{
    for (std::size_t i = 0; i < std::size(CATEGORY_NAMES); ++i) {
        if (name == QLatin1StringView(CATEGORY_NAMES[i])) {
            return static_cast<Category_t>(i);
        }
    }
    return CATEGORY_UNDEFINED;
}

TokenInfo::TokenInfo(Type_t type, QString const &name, QString const &text)
    : TokenInfo(CATEGORY_GENERAL, type, name, text)
{
}

TokenInfo::TokenInfo(Category_t category, Type_t type, QString const &name, QString const &text)
    : category_(category), type_(type), name_(name), text_(text)
{
}

void TokenInfo::save(IO::OutStream *stream) const
{
    stream->beginBlock(4 + 4 + IO::Stream::sizeOf(name_) + IO::Stream::sizeOf(text_), BLOCK_VERSION);
    stream->writeUInt(category_);
    stream->writeUInt(type_);
    stream->writeString(name_);
    stream->writeString(text_);
    stream->endBlock();
}

void TokenInfo::load(IO::InStream *stream)
{
    TokenInfo read;
    TokenStream::openBlock(stream, BLOCK_VERSION);
    read.category_ = TokenStream::readEnum<Category_t>(stream, CATEGORY_UNDEFINED);
    read.type_ = TokenStream::readEnum<Type_t>(stream, TYPE_QUANTITY);
    stream->readString(&read.name_);
    stream->readString(&read.text_);
    stream->closeBlock();
    *this = read;
}

} // namespace Zem
