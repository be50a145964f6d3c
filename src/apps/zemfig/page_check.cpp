#include "page_check.h"

#include "page_schema.h"

#include <ZemFig2Chart.h>
#include <ZemFig2ChartMarker.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Image.h>
#include <ZemFig2ImageInterface.h>
#include <ZemFig2ImageLabel.h>
#include <ZemFig2LabelBase.h>
#include <ZemFig2Tools.h>

#include <algorithm>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

/// Looks through a page that could be read, and gathers what is wrong with it.
class Checker
{
public:
    Checker(QString const &fileName, PageDocument *document) : fileName_(fileName), document_(document) {}

    void checkAgainst(PageData &data)
    {
        Figure &figure = *document_->figure;
        data.showOn(&figure);
        std::vector<unsigned int> const stages = data.stages();
        StageIdentifier const stage = stages.empty() ? StageIdentifier::NO_STAGE : StageIdentifier(stages.back());
        data.setStage(stage);
        figure.update(stage, true);
        collectTokens(*data.tokens());
        for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
            checkPlace(**it);
            if (auto const *label = dynamic_cast<LabelBase const *>(*it))
                checkTokens(*label);
            if (auto const *chart = dynamic_cast<GenericChart const *>(*it))
                checkCurves(*chart);
            if (auto const *image = dynamic_cast<ImageBase const *>(*it))
                checkImage(*image);
        }
        for (PointSource const &source : document_->points)
            checkPoint(source);
    }

private:
    void report(QString const &text) { report(0, text); }
    void report(int line, QString const &text) { document_->problems.push_back({fileName_, line, text}); }

    void collectTokens(FigureTokenInterface const &tokens)
    {
        std::vector<TokenInfo> infos;
        tokens.getTokens(&infos);
        for (TokenInfo const &info : infos)
            known_.push_back(info.getName());
        std::sort(known_.begin(), known_.end());
    }

    void checkPlace(Element const &element)
    {
        if (element.getType() != Element::GROUP && !document_->figure->isInBounds(&element))
            report(QStringLiteral("%1 lies off the page").arg(describe(element)));
    }

    void checkTokens(LabelBase const &label)
    {
        std::vector<QString> names;
        std::vector<QString> formats;
        Tools::parseTokens(label.getText(), QLatin1Char('$'), &names, &formats);
        std::vector<QString> ofPartners = tokensOfCharts(label);
        std::vector<QString> const ofMeasured = tokensOfMeasured(label);
        ofPartners.insert(ofPartners.end(), ofMeasured.begin(), ofMeasured.end());
        for (QString const &name : names) {
            bool const known = std::binary_search(known_.begin(), known_.end(), name) ||
                               std::find(ofPartners.begin(), ofPartners.end(), name) != ofPartners.end();
            if (!known)
                report(QStringLiteral("%1: no data has the token '%2'%3")
                           .arg(describe(label), name, suggestion(name, ofPartners.empty() ? known_ : ofPartners)));
        }
        if (label.getText().count(QLatin1Char('$')) % 2 != 0)
            report(QStringLiteral("%1: a '$' without its partner, the text behind it is lost").arg(describe(label)));
    }

    /// What the charts that the label is connected to tell of their curves.
    std::vector<QString> tokensOfCharts(LabelBase const &label) const
    {
        FigureTokenInterface const *tokens = document_->figure->getTokenInterface();
        std::vector<TokenInfo> infos;
        for (auto it = label.getConnectorBegin(); it != label.getConnectorEnd(); ++it) {
            auto const *chart = dynamic_cast<ChartBase const *>((*it)->getTarget());
            if (!chart)
                continue;
            ChartData const *data = tokens->getChart(chart->getToken());
            chart->getTokens(data, &infos);
            if (data)
                tokens->releaseChart(chart->getToken());
        }
        std::vector<QString> names;
        for (TokenInfo const &info : infos)
            names.push_back(info.getName());
        return names;
    }

    void checkImage(ImageBase const &image)
    {
        FigureTokenInterface const *tokens = document_->figure->getTokenInterface();
        QString const &token = image.getToken();
        bool const isFrame = image.getType() == Element::SNAPSHOT_FRAME;
        if (!isFrame && tokens->getImage(token))
            tokens->releaseImage(token);
        else if (tokens->getSnapshot(token))
            tokens->releaseSnapshot(token);
        else
            report(QStringLiteral("%1: no data has the %2 '%3'%4")
                       .arg(describe(image), isFrame ? QStringLiteral("snippet") : QStringLiteral("picture"), token,
                            suggestion(token, known_)));
    }

    /// What the image labels measure, besides the tokens of the data.
    std::vector<QString> tokensOfMeasured(LabelBase const &label) const
    {
        std::vector<TokenInfo> infos;
        auto const *imageLabel = dynamic_cast<ImageLabel const *>(&label);
        ImageInterface const *images = ImageInterface::getInterface(&label);
        TokenInterface const *source =
            imageLabel && images ? images->getTokenInterface(imageLabel->getImageElementId()) : nullptr;
        if (source)
            source->getTokens(&infos);
        std::vector<QString> names;
        for (TokenInfo const &info : infos)
            names.push_back(info.getName());
        return names;
    }

    void checkCurves(GenericChart const &chart)
    {
        ChartInterface *charts = document_->figure->getChartInterface();
        using DataTokens = std::vector<ChartInterface::DataToken>;
        checkOffer(chart, chart.getTokenX(), charts ? charts->getTokensX() : DataTokens());
        DataTokens const offered = charts ? charts->getTokensY() : DataTokens();
        for (auto const &[token, look] : chart.getData())
            checkOffer(chart, token.getName(), offered);
    }

    static std::vector<QString> namesOf(std::vector<ChartInterface::DataToken> const &offered)
    {
        std::vector<QString> names;
        for (ChartInterface::DataToken const &token : offered)
            names.push_back(token.getName());
        return names;
    }

    void checkPoint(PointSource const &source)
    {
        ChartInterface *charts = document_->figure->getChartInterface();
        std::vector<QString> const names = charts ? namesOf(charts->getTokensY()) : std::vector<QString>();
        Measurement::NamedPoint const &point = source.point;
        if (std::find(names.begin(), names.end(), point.token) == names.end())
            report(source.line, QStringLiteral("the point '%1': no data has the curve '%2'%3")
                                    .arg(point.name, point.token, suggestion(point.token, names)));
        else if (!isMarked(point))
            report(source.line, QStringLiteral("the point '%1': '%2' has no such point").arg(point.name, point.token));
    }

    /// Every curve can be shown over stages or rows.
    bool isMarked(Measurement::NamedPoint const &point) const
    {
        FigureTokenInterface const *tokens = document_->figure->getTokenInterface();
        QString const chart = ChartInterface::createToken(QStringLiteral("stage"), {point.token});
        ChartData const *data = tokens->getChart(chart);
        if (!data)
            return false;
        bool const found =
            std::any_of(data->getChartMarkerBegin(), data->getChartMarkerEnd(), [&point](ChartMarker const *marker) {
                auto const *named = dynamic_cast<NamedPointChartMarker const *>(marker);
                return named && named->getName() == point.name && named->getSymbol() == point.symbol;
            });
        tokens->releaseChart(chart);
        return found;
    }

    void checkOffer(GenericChart const &chart, QString const &name,
                    std::vector<ChartInterface::DataToken> const &offered)
    {
        std::vector<QString> const names = namesOf(offered);
        if (!name.isEmpty() && std::find(names.begin(), names.end(), name) == names.end())
            report(QStringLiteral("%1: no data has '%2' for this axis%3")
                       .arg(describe(chart), name, suggestion(name, names)));
    }

    QString fileName_;
    PageDocument *document_;
    std::vector<QString> known_;
};

} // namespace

void checkAgainst(PageData &data, QString const &fileName, PageDocument *document)
{
    Checker(fileName, document).checkAgainst(data);
}

} // namespace Zem::Zemfig
