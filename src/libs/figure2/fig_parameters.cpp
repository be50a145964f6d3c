#include "fig_parameters.h"

#include "ZemFig2Tools.h"

namespace Zem::Fig2 {

QString parameterKey(QString const &prefix, QLatin1StringView key)
{
    return prefix.isEmpty() ? QString(key) : prefix + QLatin1Char('_') + key;
}

std::vector<QString> parameterWords(std::span<char const *const> words)
{
    std::vector<QString> texts;
    texts.reserve(words.size());
    for (char const *word : words)
        texts.push_back(QString::fromLatin1(word));
    return texts;
}

void ParameterWriter::item(QLatin1StringView name, Alignment_t value)
{
    parameters_ += Tools::createAlignment(key(name), value);
}

void ParameterReader::item(QLatin1StringView name, Alignment_t &value)
{
    if (exists(name))
        value = Tools::getAlignment(parameters_, key(name));
}

void V541ParameterReader::item(QLatin1StringView name, Alignment_t &value)
{
    if (exists(name))
        value = Tools::getV541Alignment(parameters_, key(name));
}

} // namespace Zem::Fig2
