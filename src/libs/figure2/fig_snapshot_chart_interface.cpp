#include "ZemFig2SnapshotInterface.h"

#include "ZemFig2Chart.h"
#include "ZemFig2Figure.h"
#include "fig_block.h"

#include <ZemError.h>

#include <QtCore/QHash>

#include <tuple>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TABLE_BLOCK_VERSION = 1;
constexpr unsigned int ANSWERS_BLOCK_VERSION = 1;

using DataToken = ChartInterface::DataToken;

/// A chart knows its x token by name only; of several on offer the first is meant.
QHash<QString, DataToken> tokensByName(std::vector<DataToken> const &tokens)
{
    QHash<QString, DataToken> byName;
    for (DataToken const &token : tokens) {
        if (!byName.contains(token.getName()))
            byName.insert(token.getName(), token);
    }
    return byName;
}

} // namespace

bool SnapshotChartInterface::ByContents::operator()(DataToken const &a, DataToken const &b) const
{
    using Contents = std::tuple<QString const &, TokenInfo::Category_t, std::vector<QString> const &>;
    return Contents(a.getName(), a.getCategory(), a.getGroups()) <
           Contents(b.getName(), b.getCategory(), b.getGroups());
}

SnapshotChartInterface::SnapshotChartInterface(Figure const *source)
{
    merge(source);
}

void SnapshotChartInterface::merge(Figure const *source)
{
    ChartInterface *interface = source->getChartInterface();
    if (!interface)
        throw ProgError("Zem::Fig2::SnapshotChartInterface::merge", "fig_snapshot_data", __LINE__,
                        "Figure chart interface not set");
    QHash<QString, DataToken> const tokensX = tokensByName(interface->getTokensX());
    for (auto it = source->getElementBegin(); it != source->getElementEnd(); ++it) {
        auto const *chart = dynamic_cast<GenericChart const *>(*it);
        if (!chart)
            continue;
        // Labels in the chart ask for the x token without knowing more than its name.
        DataToken const plainX(chart->getTokenX());
        if (!plainX.isEmpty()) {
            enter(interface, plainX, ChartParameters());
            enter(interface, tokensX.value(plainX.getName(), plainX), ChartParameters()).offeredX = true;
        }
        for (auto const &[token, parameters] : chart->getData())
            enter(interface, token, parameters).offeredY = true;
    }
}

SnapshotChartInterface::Answers &SnapshotChartInterface::enter(ChartInterface *source, DataToken const &token,
                                                               ChartParameters parameters)
{
    if (auto const known = answers_.find(token); known != answers_.end())
        return known->second;
    Answers answers;
    answers.name = source->getTokenName(token);
    answers.description = source->getTokenDescription(token);
    parameters.setShowGroupName(false);
    answers.legendText = source->getLegendDescription(token, parameters);
    parameters.setShowGroupName(true);
    answers.legendTextWithGroup = source->getLegendDescription(token, parameters);
    answers.unit = source->getTokenUnit(token);
    if (ChartParameters proposal; source->getDefaultParameters(token, &proposal))
        answers.defaultParameters = proposal;
    return answers_.emplace(token, answers).first->second;
}

/// The token itself, or else the first of its name.
SnapshotChartInterface::Answers const *SnapshotChartInterface::find(DataToken const &token) const
{
    auto found = answers_.find(token);
    if (found != answers_.end())
        return &found->second;
    DataToken first(token.getName());
    first.setCategory(TokenInfo::CATEGORY_GENERAL);
    found = answers_.lower_bound(first);
    return found != answers_.end() && found->first.getName() == token.getName() ? &found->second : nullptr;
}

std::vector<DataToken> SnapshotChartInterface::collectOffer(bool Answers::*offered) const
{
    std::vector<DataToken> tokens;
    for (auto const &[token, answers] : answers_) {
        if (answers.*offered)
            tokens.push_back(token);
    }
    return tokens;
}

std::vector<DataToken> SnapshotChartInterface::getTokensX()
{
    return collectOffer(&Answers::offeredX);
}

std::vector<DataToken> SnapshotChartInterface::getTokensY()
{
    return collectOffer(&Answers::offeredY);
}

QString SnapshotChartInterface::getTokenName(DataToken const &token)
{
    Answers const *answers = find(token);
    return answers ? answers->name : token.getName();
}

QString SnapshotChartInterface::getTokenDescription(DataToken const &token)
{
    Answers const *answers = find(token);
    return answers ? answers->description : token.getName();
}

QString SnapshotChartInterface::getLegendDescription(DataToken const &token, ChartParameters const &parameters)
{
    Answers const *answers = find(token);
    if (!answers)
        return token.getName();
    return parameters.getShowGroupName() ? answers->legendTextWithGroup : answers->legendText;
}

UnitData SnapshotChartInterface::getTokenUnit(DataToken const &token)
{
    Answers const *answers = find(token);
    return answers ? answers->unit : UnitData();
}

bool SnapshotChartInterface::getDefaultParameters(DataToken const &token, ChartParameters *parameters) const
{
    Answers const *answers = find(token);
    if (!answers || !answers->defaultParameters)
        return false;
    *parameters = *answers->defaultParameters;
    return true;
}

template <class Archive, class Self>
void SnapshotChartInterface::blockFields(Archive &archive, Self &self, bool &hasDefaultParameters)
{
    archive.field(self.offeredX);
    archive.field(self.offeredY);
    archive.field(self.name);
    archive.field(self.description);
    archive.field(self.legendText);
    archive.field(self.legendTextWithGroup);
    archive.field(hasDefaultParameters);
}

void SnapshotChartInterface::saveAnswers(IO::OutStream *stream, Answers const &answers)
{
    bool hasDefaultParameters = answers.defaultParameters.has_value();
    saveBlock(stream, ANSWERS_BLOCK_VERSION,
              [&](auto &archive) { blockFields(archive, answers, hasDefaultParameters); });
    answers.unit.save(stream);
    if (hasDefaultParameters)
        answers.defaultParameters->save(stream);
}

SnapshotChartInterface::Answers SnapshotChartInterface::loadAnswers(IO::InStream *stream)
{
    Answers answers;
    bool hasDefaultParameters = false;
    loadBlock(stream, ANSWERS_BLOCK_VERSION,
              [&](auto &archive) { blockFields(archive, answers, hasDefaultParameters); });
    answers.unit.load(stream);
    if (hasDefaultParameters)
        answers.defaultParameters.emplace().load(stream);
    return answers;
}

void SnapshotChartInterface::save(IO::OutStream *stream) const
{
    saveBlock(stream, TABLE_BLOCK_VERSION,
              [this](auto &archive) { archive.field(static_cast<unsigned int>(answers_.size())); });
    for (auto const &[token, answers] : answers_) {
        token.save(stream);
        saveAnswers(stream, answers);
    }
}

void SnapshotChartInterface::load(IO::InStream *stream)
{
    unsigned int count = 0;
    loadBlock(stream, TABLE_BLOCK_VERSION, [&count](auto &archive) { archive.field(count); });
    decltype(answers_) read;
    // No room is made for the count: a wrong one ends at the end of the stream.
    for (; count > 0; --count) {
        DataToken token;
        token.load(stream);
        read.insert_or_assign(token, loadAnswers(stream));
    }
    answers_ = std::move(read);
}

} // namespace Zem::Fig2
