// snapshot_fixture.h: a live figure with all that it shows, which snapshots are made of.
#pragma once

#include "probe_elements.h"

#include <ElementForms.h>
#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Chart.h>
#include <ZemFig2ChartData.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2Label.h>
#include <ZemFig2SnapshotData.h>
#include <ZemFig2SnapshotInterface.h>
#include <ZemFig2TokenContainer.h>

#include <ZemImage.h>
#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Zem::Fig2 {

inline StageIdentifier const STAGE{3};

/// Lends images, charts and snapshots, and holds that each comes back.
class LiveTokens : public Support::TestTokens
{
public:
    ~LiveTokens() override { EXPECT_EQ(onLoan_, 0); }

    std::map<QString, ImageData> images;
    std::map<QString, ChartData> charts;
    std::map<QString, SnapshotData> snapshots;
    bool listsData = true; ///< whether getTokens tells of them
    mutable int lent = 0;

    void getTokens(std::vector<TokenInfo> *tokens) const override
    {
        TestTokens::getTokens(tokens);
        if (!listsData)
            return;
        list(images, TokenInfo::TYPE_IMAGE, tokens);
        list(charts, TokenInfo::TYPE_CHART, tokens);
        list(snapshots, TokenInfo::TYPE_SNAPSHOT, tokens);
    }
    ImageData const *getImage(QString const &token) const override { return lend(images, token); }
    void releaseImage(QString const &) const override { --onLoan_; }
    ChartData const *getChart(QString const &token) const override { return lend(charts, token); }
    void releaseChart(QString const &) const override { --onLoan_; }
    SnapshotData const *getSnapshot(QString const &token) const override { return lend(snapshots, token); }
    void releaseSnapshot(QString const &) const override { --onLoan_; }

private:
    template <class Data>
    static void list(std::map<QString, Data> const &data, TokenInfo::Type_t type, std::vector<TokenInfo> *tokens)
    {
        for (auto const &[name, each] : data)
            tokens->emplace_back(type, name, QStringLiteral("the ") + name);
    }
    template <class Data>
    Data const *lend(std::map<QString, Data> const &data, QString const &token) const
    {
        auto const found = data.find(token);
        if (found == data.end())
            return nullptr;
        ++onLoan_;
        ++lent;
        return &found->second;
    }

    mutable int onLoan_ = 0;
};

using DataToken = ChartInterface::DataToken;

/// Knows every token, offers what the test sets, and counts what it is asked.
class LiveCharts : public ChartInterface
{
public:
    std::vector<DataToken> tokensX;
    QString word = QStringLiteral("live"); ///< stands in all texts
    int asked = 0;

    void addChartToken(QString const &) override {}
    void removeChartToken(QString const &) override {}
    std::vector<DataToken> getTokensX() override { return tokensX; }
    std::vector<DataToken> getTokensY() override { return {DataToken("offered only")}; }
    QString getTokenName(DataToken const &token) override { return text("name", token); }
    QString getTokenDescription(DataToken const &token) override { return text("description", token); }
    QString getLegendDescription(DataToken const &token, ChartParameters const &parameters) override
    {
        return text(parameters.getShowGroupName() ? "legend with group" : "legend", token);
    }
    UnitData getTokenUnit(DataToken const &token) override
    {
        return token.getName() == QStringLiteral("way") ? UnitData(uLength) : UnitData();
    }
    bool getDefaultParameters(DataToken const &token, ChartParameters *parameters) const override
    {
        if (token.getName() != QStringLiteral("way"))
            return false;
        parameters->setStyle(ChartParameters::STYLE_BARS);
        return true;
    }

private:
    QString text(char const *kind, DataToken const &token)
    {
        ++asked;
        QString result = QStringLiteral("%1 %2 %3").arg(word, QString::fromLatin1(kind), token.getName());
        for (QString const &group : token.getGroups())
            result += QStringLiteral(" of ") + group;
        return result;
    }
};

inline GenericChart *addGenericChart(Figure &figure, QString const &tokenX, std::vector<DataToken> const &tokensY)
{
    auto *chart = new GenericChart;
    std::vector<GenericChart::Entry> entries;
    for (DataToken const &token : tokensY)
        entries.emplace_back(token, ChartParameters());
    chart->setTokenX(tokenX);
    chart->setData(entries);
    figure.getRoot()->addChild(chart);
    return chart;
}

inline std::vector<std::string> namesOf(std::vector<DataToken> const &tokens)
{
    std::vector<std::string> names;
    for (DataToken const &token : tokens)
        names.push_back(token.getName().toStdString());
    return names;
}

inline std::vector<std::string> namesOf(std::vector<TokenInfo> const &tokens)
{
    std::vector<std::string> names;
    for (TokenInfo const &token : tokens)
        names.push_back(token.getName().toStdString());
    return names;
}

using Names = std::vector<std::string>;

inline TokenInfo plain(char const *name)
{
    return {TokenInfo::TYPE_STRING, QString::fromLatin1(name), QString::fromLatin1(name)};
}

inline std::string valueOf(TokenInterface const &tokens, char const *name)
{
    Value const value = tokens.getValue(QString::fromLatin1(name), IndexIdentifier::NO_INDEX, STAGE);
    if (value == Value::UNKNOWN)
        return "unknown";
    return value == Value::INVALID ? "invalid" : value.toString(QString(), nullptr).toStdString();
}

inline Label *addLabel(Figure &figure, char const *text)
{
    auto *label = new Label;
    label->setText(QString::fromLatin1(text));
    label->setOrigin({20, 20});
    figure.getRoot()->addChild(label);
    return label;
}

inline std::string drawn(Figure const &figure)
{
    Support::RecordingPainter painter;
    figure.draw(&painter);
    return painter.transcript();
}

inline Element *childOf(Figure &figure, std::size_t index = 0)
{
    return figure.getRoot()->getChildBegin()[static_cast<std::ptrdiff_t>(index)];
}

inline std::size_t numberOfChildren(Figure const &figure)
{
    return static_cast<std::size_t>(figure.getRoot()->getChildEnd() - figure.getRoot()->getChildBegin());
}

inline std::string saved(SnapshotData const &snapshot)
{
    return Support::streamOf([&](IO::OutStream &stream) { snapshot.save(&stream); });
}

inline void load(SnapshotData &snapshot, std::string const &bytes)
{
    Support::readFrom(bytes, [&](IO::InStream &stream) { snapshot.load(&stream); });
}

} // namespace Zem::Fig2
