// What is in a file according to the pages.
#include "FormatPage.h"
#include "PackedPicture.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <bit>
#include <cstdio>
#include <cstring>
#include <zlib.h>

namespace Zem::Support {

namespace {

constexpr std::size_t HEADER_SIZE = 64;
constexpr std::size_t TYPE_WORD_PLACE = 4;

std::string quoted(std::string_view text)
{
    std::string out = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned int>(c));
            out += escape;
        } else {
            out += c;
        }
    }
    return out + '"';
}

/// Takes values from the front of some bytes.
class Bytes
{
public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    std::string_view take(std::size_t size)
    {
        if (size > bytes_.size())
            throw FormatError("a value is missing at the end");
        std::string_view const taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return taken;
    }
    std::uint32_t number()
    {
        std::uint32_t value = 0;
        for (unsigned int i = 0; char c : take(4))
            value |= std::uint32_t{static_cast<unsigned char>(c)} << (8 * i++);
        return value;
    }
    std::string real()
    {
        std::uint64_t const low = number();
        auto const value = std::bit_cast<double>(low | std::uint64_t{number()} << 32);
        if (value != value)
            return "nan";
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", value);
        return text;
    }
    bool empty() const { return bytes_.empty(); }

private:
    std::string_view bytes_;
};

using Numbers = std::map<std::string, std::vector<std::uint32_t>>;

/// A form that is being told: the numbers among its values, for what depends on them.
struct Scope
{
    FormatForm const *form;
    Scope const *outer;
    Numbers numbers;

    /// Those of a form in here, which are named behind its field.
    void takeNumbers(std::string const &field, Numbers const &inner)
    {
        for (auto const &[name, values] : inner) {
            if (name.find('.') != std::string::npos)
                continue;
            std::vector<std::uint32_t> &known = numbers[field + '.' + name];
            known.insert(known.end(), values.begin(), values.end());
        }
    }
};

class Teller
{
public:
    Teller(FormatForms const &forms, std::string_view bytes) : forms_(forms), file_(bytes) {}

    std::string tell(std::string const &form);

private:
    Numbers tellForm(FormatForm const &form, Scope const *outer, int depth, Bytes *record);
    void tellBlock(FormatForm const &form, Scope *scope, int depth);
    void tellRow(FormatRow const &row, Scope *scope, int depth, Bytes *payload);
    FormatForm const *chosen(FormatRow const &row, Scope const &scope, std::size_t index) const;
    std::size_t countOf(FormatRow const &row, Scope const &scope) const;
    std::string value(std::string const &kind, Bytes *bytes, std::uint32_t *number);
    std::vector<std::uint32_t> const *find(Scope const &scope, std::string const &name) const;
    bool holds(std::string const &when, Scope const &scope) const;
    bool isInline(FormatRow const &row) const;
    std::string_view openBlock(unsigned int *version);
    void line(int depth, std::string const &text)
    {
        out_ += std::string(static_cast<std::size_t>(2 * depth), ' ') + text + '\n';
    }

    FormatForms const &forms_;
    Bytes file_;
    std::string out_;
    std::map<std::string, std::uint32_t> versions_; ///< of the last block of each form
    std::map<std::uint32_t, std::size_t> ids_;
};

std::string withoutBlanks(std::string text)
{
    std::erase(text, ' ');
    return text;
}

std::vector<std::uint32_t> const *Teller::find(Scope const &scope, std::string const &name) const
{
    for (Scope const *each = &scope; each; each = each->outer) {
        auto const found = each->numbers.find(name);
        if (found != each->numbers.end())
            return &found->second;
    }
    return nullptr;
}

bool Teller::holds(std::string const &when, Scope const &scope) const
{
    if (when.empty())
        return true;
    for (QString const &part : QString::fromStdString(when).split(QStringLiteral(" and "))) {
        QStringList words = part.split(' ');
        bool const negative = words.first() == QLatin1String("not");
        if (negative)
            words.removeFirst();
        std::string const name = words.first().toStdString();
        std::vector<std::uint32_t> const *const numbers = find(scope, name);
        auto const version = versions_.find(name);
        if ((!numbers || numbers->empty()) && version == versions_.end())
            throw FormatError("nothing is known of " + name);
        std::uint32_t const number = numbers && !numbers->empty() ? numbers->back() : version->second;
        bool result = number != 0;
        if (words.size() > 1) {
            QString const rest = words.mid(2).join(' ');
            result = false;
            for (QString const &range : rest.split(',')) {
                QStringList const ends = range.trimmed().split('-');
                std::uint32_t const first = ends.first().toUInt();
                std::uint32_t const last = ends.last().toUInt();
                result |= words[1] == QLatin1String("<")   ? number < first
                          : words[1] == QLatin1String(">") ? number > first
                                                           : number >= first && number <= last;
            }
        }
        if (result == negative)
            return false;
    }
    return true;
}

std::string Teller::value(std::string const &kind, Bytes *bytes, std::uint32_t *number)
{
    if (kind == "bool" || kind == "byte") {
        *number = static_cast<unsigned char>(bytes->take(1)[0]);
        return kind == "byte" ? std::to_string(*number) : *number ? "true" : "false";
    }
    if (kind == "int" || kind == "uint") {
        *number = bytes->number();
        return kind == "int" ? std::to_string(static_cast<std::int32_t>(*number)) : std::to_string(*number);
    }
    if (kind == "id") {
        *number = bytes->number();
        return '#' + std::to_string(ids_.emplace(*number, ids_.size() + 1).first->second);
    }
    if (kind == "double")
        return bytes->real();
    if (kind == "string")
        return quoted(bytes->take(bytes->number()));
    if (kind == "packed")
        return tellPackedPicture(bytes->take(bytes->number()));
    if (kind == "jpeg")
        return std::to_string(bytes->take(bytes->number()).size()) + " bytes";
    std::string text;
    if (kind == "color") {
        for (char c : bytes->take(4))
            text += (text.empty() ? "" : " ") + std::to_string(static_cast<unsigned char>(c));
        return text;
    }
    for (int i = 0; i < (kind == "vec2d" ? 2 : 3); ++i)
        text += (text.empty() ? "" : " ") + bytes->real();
    return text;
}

bool Teller::isInline(FormatRow const &row) const
{
    return row.isPrimitive || forms_.at(row.kind).nature == FormatForm::Nature::Record;
}

std::string_view Teller::openBlock(unsigned int *version)
{
    std::uint32_t const size = file_.number();
    std::string_view const versionBytes = file_.take(4);
    *version = Bytes(versionBytes).number();
    std::string_view const payload = file_.take(size);
    uLong checksum = crc32(0, reinterpret_cast<Bytef const *>(versionBytes.data()), 4);
    checksum = crc32(checksum, reinterpret_cast<Bytef const *>(payload.data()), static_cast<uInt>(size));
    if (file_.number() != checksum)
        throw FormatError("bad checksum");
    return payload;
}

std::size_t Teller::countOf(FormatRow const &row, Scope const &scope) const
{
    std::string const &name = row.each.empty() ? row.times : row.each;
    if (name.empty())
        return 1;
    if (name.find_first_not_of("0123456789") == std::string::npos)
        return std::stoul(name);
    std::vector<std::uint32_t> const *const numbers = find(scope, name);
    if (!numbers)
        return 0;
    return row.each.empty() ? numbers->back() : numbers->size();
}

/// Null for a number that stands for nothing.
FormatForm const *Teller::chosen(FormatRow const &row, Scope const &scope, std::size_t index) const
{
    FormatForm const &form = forms_.at(row.kind);
    if (form.nature != FormatForm::Nature::Choice)
        return &form;
    std::vector<std::uint32_t> const *const numbers = find(scope, row.each.empty() ? row.by : row.each);
    if (!numbers)
        throw FormatError("nothing to choose " + row.name + " by");
    auto const found = form.choices.find(row.each.empty() ? numbers->back() : numbers->at(index));
    return found == form.choices.end() ? nullptr : &forms_.at(found->second);
}

void Teller::tellRow(FormatRow const &row, Scope *scope, int depth, Bytes *payload)
{
    std::size_t const count = countOf(row, *scope);
    if (row.isPrimitive)
        scope->numbers.try_emplace(row.name); // an empty list is not that of a form around this one
    for (std::size_t i = 0; i < count; ++i) {
        std::string const name = row.isRepeated() ? row.name + '[' + std::to_string(i) + ']' : row.name;
        if (row.isPrimitive) {
            std::uint32_t number = 0;
            line(depth, name + " = " + value(row.kind, payload, &number));
            scope->numbers[row.name].push_back(number);
            continue;
        }
        FormatForm const *const form = chosen(row, *scope, i);
        if (!form)
            continue;
        std::size_t const heading = out_.size();
        line(depth, name + ": " + form->name);
        scope->takeNumbers(row.name, tellForm(*form, scope, depth + 1, payload));
        if (form->nature == FormatForm::Nature::Block && versions_.contains(withoutBlanks(form->name)))
            out_.insert(heading + static_cast<std::size_t>(2 * depth) + name.size() + 2 + form->name.size(),
                        ' ' + std::to_string(versions_.at(withoutBlanks(form->name))));
    }
}

Numbers Teller::tellForm(FormatForm const &form, Scope const *outer, int depth, Bytes *record)
{
    Scope scope{&form, outer, {}};
    if (form.nature == FormatForm::Nature::Block) {
        tellBlock(form, &scope, depth);
        return std::move(scope.numbers);
    }
    for (FormatRow const &row : form.rows) {
        if (row.isIn(form.version) && holds(row.when, scope))
            tellRow(row, &scope, depth, record);
    }
    return std::move(scope.numbers);
}

/// The forms in front of the first value of a block come before it in the file and are the same in all versions, those
/// behind the last value come after it.
void Teller::tellBlock(FormatForm const &form, Scope *scope, int depth)
{
    auto const firstValue =
        std::find_if(form.rows.begin(), form.rows.end(), [this](FormatRow const &row) { return isInline(row); });
    unsigned int version = form.version;
    bool isThere = false;
    Bytes payload{std::string_view()};
    auto const begin = [&] {
        isThere = holds(form.when, *scope);
        if (!isThere)
            return;
        payload = Bytes(openBlock(&version));
        versions_[withoutBlanks(form.name)] = version;
        if (version < form.firstVersion || version > form.version)
            throw FormatError(form.name + ": unknown version " + std::to_string(version));
    };
    for (auto row = form.rows.begin(); row != form.rows.end(); ++row) {
        if (row == firstValue)
            begin();
        if (!row->isIn(version) || (isInline(*row) && !isThere) || !holds(row->when, *scope))
            continue;
        try {
            tellRow(*row, scope, depth, &payload);
        } catch (FormatError const &error) {
            throw FormatError(form.name + '.' + row->name + ": " + error.what());
        }
    }
    if (firstValue == form.rows.end())
        begin();
    if (!payload.empty())
        throw FormatError(form.name + ": something is left in the block");
    if (isThere)
        versions_[withoutBlanks(form.name)] = version;
}

std::string Teller::tell(std::string const &name)
{
    FormatForm const &form = forms_.at(name);
    if (form.nature != FormatForm::Nature::File)
        throw FormatError(name + ": is no file");
    std::string_view const head = file_.take(HEADER_SIZE);
    std::string_view const word = head.substr(TYPE_WORD_PLACE, form.typeWord.size() + 1);
    if (word != std::string_view(form.typeWord.c_str(), form.typeWord.size() + 1))
        throw FormatError(name + ": another type");
    tellForm(form, nullptr, 0, nullptr);
    if (!file_.empty())
        throw FormatError(name + ": something is left at the end");
    return out_;
}

} // namespace

std::string tellFile(FormatForms const &forms, std::string const &form, std::string_view bytes)
{
    return Teller(forms, bytes).tell(form);
}

} // namespace Zem::Support
