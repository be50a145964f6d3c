// token_container_fixture.h: containers of frozen values and a live interface to fill them from.
#pragma once

#include "chart_fixture.h"

#include <TestTokens.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2SnapshotData.h>
#include <ZemFig2TokenContainer.h>

#include <ZemImage.h>
#include <ZemTokenContainer.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Zem::Fig2 {

/// Offers the tokens that the test describes, and holds that all it lends comes back.
class LiveTokens : public Support::TestTokens
{
public:
    ~LiveTokens() override { EXPECT_EQ(onLoan_, ""); }

    void getTokens(std::vector<TokenInfo> *tokens) const override { *tokens = infos; }
    ImageData const *getImage(QString const &token) const override { return lend(images, token); }
    ChartData const *getChart(QString const &token) const override { return lend(charts, token); }
    SnapshotData const *getSnapshot(QString const &token) const override { return lend(snapshots, token); }
    void releaseImage(QString const &token) const override { takeBack(token); }
    void releaseChart(QString const &token) const override { takeBack(token); }
    void releaseSnapshot(QString const &token) const override { takeBack(token); }

    std::vector<TokenInfo> infos;
    std::map<QString, ImageData const *> images;
    std::map<QString, ChartData const *> charts;
    std::map<QString, SnapshotData const *> snapshots;

private:
    template <class Data>
    Data const *lend(std::map<QString, Data const *> const &data, QString const &token) const
    {
        auto const found = data.find(token);
        if (found == data.end())
            return nullptr;
        onLoan_ = token.toStdString();
        return found->second;
    }
    void takeBack(QString const &token) const
    {
        EXPECT_EQ(onLoan_, token.toStdString());
        onLoan_.clear();
    }

    mutable std::string onLoan_;
};

/// Skips the tokens of one name.
class NameFilter : public TokenFilter
{
public:
    explicit NameFilter(char const *name) : name_(QString::fromLatin1(name)) {}
    bool isFilteredOut(TokenInfo const &info) const override { return info.getName() == name_; }

private:
    QString name_;
};

inline Value valueOf(TokenInterface const &tokens, char const *name)
{
    return tokens.getValue(QString::fromLatin1(name), IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE);
}

/// Names and texts of what is offered: "a=A, b=B, ".
inline std::string offered(TokenInterface const &tokens)
{
    std::vector<TokenInfo> infos(3);
    tokens.getTokens(&infos);
    std::string text;
    for (TokenInfo const &info : infos)
        text += info.getName().toStdString() + '=' + info.getText().toStdString() + ", ";
    return text;
}

inline TokenInfo imageInfo(char const *name)
{
    return {TokenInfo::TYPE_IMAGE, QString::fromLatin1(name), "image"};
}

inline TokenInfo chartInfo(char const *name)
{
    return {TokenInfo::TYPE_CHART, QString::fromLatin1(name), "chart"};
}

inline TokenInfo snapshotInfo(char const *name)
{
    return {TokenInfo::TYPE_SNAPSHOT, QString::fromLatin1(name), "snapshot"};
}

inline TokenInfo textInfo(char const *name)
{
    return {TokenInfo::TYPE_STRING, QString::fromLatin1(name), "text"};
}

inline ImageData *imageWith(Zem::Image const *image, Zem::ImageColor const *overlay = nullptr)
{
    auto *data = new ImageData;
    data->setImage(image);
    data->setOverlay(overlay);
    return data;
}

inline ChartData *chartWith(char const *dataset)
{
    auto *data = new ChartData;
    data->addDataset(new ChartDataset(QString::fromLatin1(dataset)));
    return data;
}

inline SnapshotData *snapshotWith(unsigned int mode)
{
    auto *data = new SnapshotData;
    data->setDrawingMode(SnapshotData::DrawingMode{mode});
    return data;
}

} // namespace Zem::Fig2
