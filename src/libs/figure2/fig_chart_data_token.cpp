// The data tokens of charts and their persistent forms.
#include "ZemFig2ChartInterface.h"

#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"

namespace Zem::Fig2 {

namespace {

using DataToken = ChartInterface::DataToken;

// 2: without the unit; 3: a group; 4: any number of groups; 5: category
constexpr unsigned int VERSION = 5;
constexpr unsigned int FIRST_WITHOUT_UNIT = 2;
constexpr unsigned int FIRST_GROUP_VERSION = 3;
constexpr unsigned int FIRST_GROUPS_VERSION = 4;
constexpr unsigned int FIRST_CATEGORY_VERSION = 5;

// Blocks and texts hold the same items.
void write(BlockSize &size, QString const &text)
{
    size.field(text);
}
void write(BlockSize &size, unsigned int number)
{
    size.field(number);
}
void write(BlockWriter &writer, QString const &text)
{
    writer.field(text);
}
void write(BlockWriter &writer, unsigned int number)
{
    writer.field(number);
}
void write(TextWriter &writer, QString const &text)
{
    writer.item(text);
}
void write(TextWriter &writer, unsigned int number)
{
    writer.item(number);
}
template <class T>
void read(BlockReader &reader, T &value)
{
    reader.field(value);
}
template <class T>
void read(TextReader &reader, T &value)
{
    reader.item(value);
}

bool good(BlockReader const &)
{
    return true; // what is missing throws
}
bool good(TextReader const &reader)
{
    return reader.good();
}

template <class Writer>
void writeFields(Writer &writer, DataToken const &token)
{
    write(writer, token.getName());
    write(writer, TokenInfo::getCategoryTypeName(token.getCategory()));
    write(writer, static_cast<unsigned int>(token.getGroups().size()));
    for (QString const &group : token.getGroups())
        write(writer, group);
}

template <class Reader>
std::vector<QString> readGroups(Reader &reader, unsigned int version)
{
    unsigned int left = version == FIRST_GROUP_VERSION ? 1 : 0;
    if (version >= FIRST_GROUPS_VERSION)
        read(reader, left);
    std::vector<QString> groups;
    for (; left > 0 && good(reader); --left)
        read(reader, groups.emplace_back());
    return groups;
}

} // namespace

void DataToken::setParams(QString const &name, std::vector<QString> const &groups)
{
    name_ = name;
    groups_ = groups;
}

bool DataToken::operator<(DataToken const &other) const
{
    if (name_ != other.name_)
        return name_ < other.name_;
    if (category_ != other.category_)
        return category_ < other.category_;
    if (groups_.size() != other.groups_.size())
        return groups_.size() < other.groups_.size();
    return groups_ != other.groups_; // deliberate, whichever is the greater
}

template <class Reader>
void DataToken::readFields(Reader &reader, unsigned int version)
{
    read(reader, name_);
    if (version >= FIRST_CATEGORY_VERSION) {
        QString category;
        read(reader, category);
        category_ = TokenInfo::getCategoryByTypeName(category);
    }
    if (version < FIRST_WITHOUT_UNIT) {
        QString dropped;
        read(reader, dropped);
    }
    groups_ = readGroups(reader, version);
}

void DataToken::save(IO::OutStream *stream) const
{
    saveBlock(stream, VERSION, [this](auto &archive) { writeFields(archive, *this); });
}

void DataToken::load(IO::InStream *stream)
{
    DataToken token;
    loadWrapped("Figure_ChartInterface_err", "cannot load figure generic chart data token: %1", [&] {
        unsigned int const version =
            loadBlock(stream, VERSION, [&token](BlockReader &reader) { token.readFields(reader, reader.version()); });
        if (version < FIRST_WITHOUT_UNIT)
            UnitData().load(stream);
    });
    *this = token;
}

std::ostream &operator<<(std::ostream &stream, DataToken const &token)
{
    return saveText(stream, VERSION, [&token](TextWriter &writer) { writeFields(writer, token); });
}

std::istream &operator>>(std::istream &stream, DataToken &token)
{
    TextReader reader(stream);
    unsigned int const version = reader.version();
    if (version > VERSION)
        throwWrongBlockVersion();
    if (version == 0)
        return stream;
    DataToken newToken;
    newToken.readFields(reader, version);
    if (version < FIRST_WITHOUT_UNIT) {
        UnitData dropped;
        reader.record(dropped);
    }
    if (reader.good())
        token = newToken;
    return stream;
}

QString DataToken::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    writer.item(PARAM_NAME, name_);
    parameters += Parse::createStringVector(writer.key(PARAM_GROUPS), groups_);
    writer.item(PARAM_CATEGORY, TokenInfo::getCategoryTypeName(category_));
    return parameters;
}

/// Of both keys of the groups today's is read last.
void DataToken::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    reader.item(PARAM_NAME, name_);
    if (reader.exists(PARAM_GROUP))
        groups_ = {Parse::getString(parameters, reader.key(PARAM_GROUP))};
    if (reader.exists(PARAM_GROUPS))
        groups_ = Parse::getStringVector(parameters, reader.key(PARAM_GROUPS), 0, ANY_COUNT);
    if (reader.exists(PARAM_CATEGORY))
        category_ = TokenInfo::getCategoryByTypeName(Parse::getString(parameters, reader.key(PARAM_CATEGORY)));
}

} // namespace Zem::Fig2
