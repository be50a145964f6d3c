#include "ZemFig2Variable.h"

#include "fig_block.h"

#include <ZemParse.h>

#include <array>
#include <vector>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TOKEN_BLOCK_VERSION = 2; // 2: types renumbered

struct VariableTexts
{
    char const *displayName;
    char const *parameterText;
};

constexpr std::array<VariableTexts, 11> VARIABLE_TEXTS{{{"INTEGER", "integer"},
                                                        {"DOUBLE", "double"},
                                                        {"STRING", "string"},
                                                        {"IMAGE", "image"},
                                                        {"CHART", "chart"},
                                                        {"IMAGE_REFERENCE", "image_reference"},
                                                        {"CHART_REFERENCE", "chart_reference"},
                                                        {"GROUP", "group"},
                                                        {"SNAPSHOT", "snapshot"},
                                                        {"SNAPSHOT_REFERENCE", "snapshot_reference"},
                                                        {"SEPARATOR", "separator"}}};

/// Two texts stand for other types than their own: "boolean" is a type of long ago, and "snapshot" has always been read
/// as a chart.
bool variableOfParameterText(QString const &text, Variable_t *type)
{
    if (text == QLatin1StringView("boolean")) {
        *type = VARIABLE_STRING;
        return true;
    }
    if (text == QLatin1StringView("snapshot")) {
        *type = VARIABLE_CHART;
        return true;
    }
    for (unsigned int index = 0; index < VARIABLE_TEXTS.size(); ++index) {
        if (text == QLatin1StringView(VARIABLE_TEXTS[index].parameterText)) {
            *type = static_cast<Variable_t>(index);
            return true;
        }
    }
    return false;
}

} // namespace

QString getVariableDisplayName(Variable_t type)
{
    auto const index = static_cast<std::size_t>(type);
    return index < VARIABLE_TEXTS.size() ? QString::fromLatin1(VARIABLE_TEXTS[index].displayName) : QString();
}

QString getVariableParameterText(Variable_t type)
{
    auto const index = static_cast<std::size_t>(type);
    return index < VARIABLE_TEXTS.size() ? QString::fromLatin1(VARIABLE_TEXTS[index].parameterText) : QString();
}

bool Token_t::isTokenChar(QChar character)
{
    return character.isLetterOrNumber() || QStringView(u"._-+[]\\").contains(character);
}

bool Token_t::operator<(Token_t const &other) const
{
    return name_ == other.name_ ? type_ < other.type_ : name_ < other.name_;
}

bool Token_t::operator==(Token_t const &other) const
{
    if (name_.isEmpty() && other.name_.isEmpty())
        return true;
    return name_ == other.name_ && type_ == other.type_;
}

namespace {

struct TokenBlock
{
    QString name;
    unsigned int type = 0;

    template <class Archive, class Self>
    static void fields(Archive &archive, Self &self)
    {
        archive.field(self.name);
        archive.field(self.type);
    }
};

} // namespace

void Token_t::save(IO::OutStream *stream) const
{
    TokenBlock const block{name_, static_cast<unsigned int>(type_)};
    saveBlock(stream, TOKEN_BLOCK_VERSION, [&block](auto &archive) { TokenBlock::fields(archive, block); });
}

void Token_t::load(IO::InStream *stream)
{
    loadWrapped("Figure_Variable_err", "cannot load figure token: %1", [&] {
        TokenBlock block;
        unsigned int const version =
            loadBlock(stream, TOKEN_BLOCK_VERSION, [&block](auto &archive) { TokenBlock::fields(archive, block); });
        // Version 1 counted a boolean type as 0.
        if (version < 2 && block.type != 0)
            --block.type;
        if (block.type >= VARIABLE_TEXTS.size())
            throw IO::StreamException(translate("Fig_Block_err", "illegal value %1 in block").arg(block.type));
        name_ = block.name;
        type_ = static_cast<Variable_t>(block.type);
    });
}

QString Token_t::getParameterString(QString const &key) const
{
    return Parse::createStringVector(key, std::vector<QString>{name_, getVariableParameterText(type_)});
}

void Token_t::createFromParameterString(QString &parameters, QString const &key)
{
    if (!Parse::parameterExists(parameters, key))
        return;
    // Any number of entries is read here, so that a wrong one gets its own text below.
    std::vector<QString> const entries = Parse::getStringVector(parameters, key, 0, 4294967295U);
    if (entries.size() != 2)
        throw ParamError(translate("Figure_Variable_err", "wrong token parameter format for '%1'").arg(key), -1);
    name_ = entries[0];
    if (name_.isEmpty())
        return;
    if (!variableOfParameterText(entries[1], &type_))
        throw ParamError(
            translate("Figure_Variable_err", "unknown token type '%1' in parameter '%2'").arg(entries[1], key), -1);
}

} // namespace Zem::Fig2
