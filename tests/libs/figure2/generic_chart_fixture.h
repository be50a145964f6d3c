// generic_chart_fixture.h: what the tests of generic charts share.
#pragma once

#include "chart_element_fixture.h"

#include <ZemFig2ChartInterface.h>
#include <ZemFig2Figure.h>

namespace Zem::Fig2 {

using DataToken = ChartInterface::DataToken;
using Entries = std::vector<GenericChart::Entry>;
using Calls = std::vector<std::string>;

/// Writes down what it is told, and offers what the test sets.
class ChartOffer : public ChartInterface
{
public:
    explicit ChartOffer(Calls *calls) : calls_(calls) {}

    void addChartToken(QString const &token) override { calls_->push_back("add " + token.toStdString()); }
    void removeChartToken(QString const &token) override { calls_->push_back("remove " + token.toStdString()); }
    std::vector<DataToken> getTokensX() override { return tokensX; }
    std::vector<DataToken> getTokensY() override { return tokensY; }
    QString getTokenName(DataToken const &token) override { return token.getName(); }
    QString getTokenDescription(DataToken const &token) override { return QStringLiteral("the ") + token.getName(); }
    UnitData getTokenUnit(DataToken const &) override { return UnitData(); }

    std::vector<DataToken> tokensX;
    std::vector<DataToken> tokensY;

private:
    Calls *calls_;
};

/// A look that is told by its name.
inline ChartParameters lookOf(QString const &name)
{
    ChartParameters parameters;
    parameters.setName(name);
    return parameters;
}

/// Entries without groups, the look of each named as its token with a prime.
inline Entries entriesOf(std::vector<QString> const &names)
{
    Entries entries;
    for (QString const &name : names)
        entries.emplace_back(DataToken(name), lookOf(name + QLatin1Char('\'')));
    return entries;
}

inline std::vector<std::string> namesOf(GenericChart const &chart)
{
    std::vector<std::string> names;
    for (auto const &[token, parameters] : chart.getData())
        names.push_back(token.getName().toStdString());
    return names;
}

/// Writes the part of the base alone.
class BaseBlocks : public GenericChart
{
public:
    void save(IO::OutStream *stream, int a, int b) const override { ChartBase::save(stream, a, b); }
};

/// The blocks of ChartBase and one of a generic chart of time that claims so many entries.
inline Support::BlockCrafter craftedGeneric(unsigned int version, unsigned int count, Entries const &entries)
{
    Support::BlockCrafter crafter;
    crafter.add([](IO::OutStream &stream) { BaseBlocks().save(&stream, -1, -1); });
    crafter.block(version, Support::Payload().s("time").u(count));
    return crafter.add([&entries](IO::OutStream &stream) {
        for (auto const &[token, parameters] : entries) {
            token.save(&stream);
            parameters.save(&stream);
        }
    });
}

} // namespace Zem::Fig2
