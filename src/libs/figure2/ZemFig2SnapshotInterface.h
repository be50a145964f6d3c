// ZemFig2SnapshotInterface.h: where the figure of a snapshot takes its values and the descriptions of its charts from.
// Layer: tokens. No locks: used by one thread at a time.
#pragma once

#include "ZemFig2ChartInterface.h"
#include "ZemFig2ChartParameters.h"
#include "ZemFig2TokenInterface.h"

#include <map>
#include <optional>

namespace Zem {
class TokenContainer;
} // namespace Zem

namespace Zem::Fig2 {

class FigureTokenContainer;

/// The frozen tokens of a snapshot, and for values that these do not have those of the project.
class SnapshotTokenInterface : public FigureTokenInterface
{
public:
    /// Both may be null; neither is owned, and both outlive the interface.
    SnapshotTokenInterface(FigureTokenContainer *tokens, TokenContainer *projectTokens)
        : tokens_(tokens), projectTokens_(projectTokens)
    {
    }

    /// The frozen tokens, then those of the project, also where the names are the same.
    void getTokens(std::vector<TokenInfo> *tokens) const override;
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    unsigned int getModifiedCounter(QString const &name) const override;
    ImageData const *getImage(QString const &token) const override;
    void releaseImage(QString const &token) const override;
    ChartData const *getChart(QString const &token) const override;
    void releaseChart(QString const &token) const override;
    SnapshotData const *getSnapshot(QString const &token) const override;
    void releaseSnapshot(QString const &token) const override;

private:
    FigureTokenContainer *tokens_;
    TokenContainer *projectTokens_;
};

/// What another chart interface answered about the data tokens of the charts of a figure. It offers these tokens and no
/// others. Of a legend's text it keeps two, with and without the name of the group; no other property of the look
/// counts.
class SnapshotChartInterface : public ChartInterface
{
public:
    /// Knows no tokens.
    SnapshotChartInterface() = default;
    /// Merges with the figure.
    explicit SnapshotChartInterface(Figure const *source);
    /// Copies the answers; the copy has no figures and no chart tokens in use.
    SnapshotChartInterface(SnapshotChartInterface const &other) : answers_(other.answers_) {}

    /// Asks the chart interface of the figure for each data token of its generic charts that is not known yet; the
    /// figure is not kept. Throws ProgError for a figure without one.
    void merge(Figure const *source);

    /// Nobody needs to know.
    void addChartToken(QString const &) override {}
    void removeChartToken(QString const &) override {}
    /// Those that are in use along the axis, by name.
    std::vector<DataToken> getTokensX() override;
    std::vector<DataToken> getTokensY() override;
    /// A token that is only known with another category or in other groups has the answers of that one. Any other has
    /// its name for all texts, no unit and no proposal.
    QString getTokenName(DataToken const &token) override;
    QString getTokenDescription(DataToken const &token) override;
    QString getLegendDescription(DataToken const &token, ChartParameters const &parameters) override;
    UnitData getTokenUnit(DataToken const &token) override;
    bool getDefaultParameters(DataToken const &token, ChartParameters *parameters) const override;

    /// Several blocks. load replaces everything; it throws IO::StreamException and then changes nothing.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

private:
    /// By name, category and groups. That of the tokens themselves orders no set.
    struct ByContents
    {
        bool operator()(DataToken const &a, DataToken const &b) const;
    };
    /// What is known of one token.
    struct Answers
    {
        bool offeredX = false;
        bool offeredY = false;
        QString name;
        QString description;
        QString legendText;
        QString legendTextWithGroup;
        UnitData unit;
        std::optional<ChartParameters> defaultParameters;
    };

    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self, bool &hasDefaultParameters);
    static void saveAnswers(IO::OutStream *stream, Answers const &answers);
    static Answers loadAnswers(IO::InStream *stream);
    Answers &enter(ChartInterface *source, DataToken const &token, ChartParameters parameters);
    Answers const *find(DataToken const &token) const;
    std::vector<DataToken> collectOffer(bool Answers::*offered) const;

    std::map<DataToken, Answers, ByContents> answers_;
};

} // namespace Zem::Fig2
