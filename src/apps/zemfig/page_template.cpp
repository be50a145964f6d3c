#include "page_template.h"

#include "page_file.h"
#include "page_schema.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Connector.h>
#include <ZemFig2LabelBase.h>
#include <ZemFig2SnapshotFrame.h>
#include <ZemFig2Tools.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <array>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

constexpr QChar TOKEN_SIGN(QLatin1Char('$'));

/// Calls `act` with format, name and place of each token in the pieces that the dollars leave; `act` may change them.
template <class Act>
void forEachToken(QStringList *pieces, Act const &act)
{
    for (qsizetype i = 1; i + 1 < pieces->size(); i += 2) {
        QString name;
        QString format;
        if (Tools::parseToken((*pieces)[i], &name, &format))
            act(format, name, &(*pieces)[i]);
    }
}

void addValues(LabelBase const &label, std::vector<Expectation> *wanted)
{
    QStringList pieces = label.getText().split(TOKEN_SIGN);
    forEachToken(&pieces, [&](QString const &format, QString const &name, QString *) {
        wanted->push_back({describe(label), Expectation::Kind::Value, name, format});
    });
}

void addCurves(GenericChart const &chart, QString const &hint, std::vector<Expectation> *wanted)
{
    if (!chart.getTokenX().isEmpty())
        wanted->push_back({describe(chart), Expectation::Kind::CurveX, chart.getTokenX(), hint});
    for (auto const &[token, look] : chart.getData())
        wanted->push_back({describe(chart), Expectation::Kind::CurveY, token.getName(), hint});
}

/// The quantity of what an axis shows; a number where there is none.
QString quantityOf(ChartInterface *charts, ChartInterface::DataToken const &token)
{
    UnitData const unit = charts->getTokenUnit(token);
    return unit.hasUnit() ? unit.getUnit()->getName() : QStringLiteral("number");
}

QString hintOf(GenericChart const &chart, ChartInterface *charts)
{
    QStringList quantities;
    for (auto const &[token, look] : chart.getData()) {
        QString const quantity = quantityOf(charts, token);
        if (!quantities.contains(quantity))
            quantities += quantity;
    }
    return quantityOf(charts, ChartInterface::DataToken(chart.getTokenX())) + QStringLiteral("; ") +
           quantities.join(QStringLiteral(", "));
}

} // namespace

QString wordOf(Expectation::Kind kind)
{
    static constexpr std::array<char const *, 6> WORDS{"value", "x", "y", "chart", "picture", "snippet"};
    return QString::fromLatin1(WORDS[static_cast<std::size_t>(kind)]);
}

std::vector<Expectation> expectationsOf(Figure const &figure)
{
    auto const *const pattern = dynamic_cast<FigureTemplate const *>(&figure);
    std::vector<Expectation> wanted;
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        QString const hint = pattern ? pattern->getTypeHint(*it) : QString();
        if (auto const *label = dynamic_cast<LabelBase const *>(*it))
            addValues(*label, &wanted);
        else if (auto const *curves = dynamic_cast<GenericChart const *>(*it))
            addCurves(*curves, hint, &wanted);
        else if (auto const *chart = dynamic_cast<Chart const *>(*it); chart && !chart->getToken().isEmpty())
            wanted.push_back({describe(*chart), Expectation::Kind::Chart, chart->getToken(), hint});
        else if (auto const *image = dynamic_cast<ImageBase const *>(*it); image && !image->getToken().isEmpty())
            wanted.push_back(
                {describe(*image),
                 image->getType() == Element::SNAPSHOT_FRAME ? Expectation::Kind::Snippet : Expectation::Kind::Picture,
                 image->getToken(), QString()});
    }
    return wanted;
}

std::unique_ptr<FigureTemplate> makeTemplate(Figure const &figure)
{
    auto const *const pattern = dynamic_cast<FigureTemplate const *>(&figure);
    ChartInterface *const charts = figure.getChartInterface();
    auto made = std::make_unique<FigureTemplate>(figure);
    copyNames(figure, made.get());
    auto original = figure.getElementBegin();
    for (auto copy = made->getElementBegin(); copy != made->getElementEnd(); ++copy, ++original) {
        QString const hint = pattern ? pattern->getTypeHint(*original) : QString();
        auto const *const chart = dynamic_cast<GenericChart const *>(*original);
        if (!hint.isEmpty())
            made->setTypeHint(*copy, hint);
        else if (chart && charts && !chart->getData().empty())
            made->setTypeHint(*copy, hintOf(*chart, charts));
    }
    return made;
}

namespace {

QString renamed(QString const &name, std::map<QString, QString> const &names)
{
    auto const found = names.find(name);
    return found == names.end() ? name : found->second;
}

bool isConnectedToChart(Element const &element)
{
    return std::any_of(element.getConnectorBegin(), element.getConnectorEnd(), [](Connector const *connector) {
        return dynamic_cast<ChartBase const *>(connector->getTarget()) != nullptr;
    });
}

/// What charts tell of a curve has its name at the end, as "MAX_Y_force".
QString renamedOfChart(QString const &name, std::map<QString, QString> const &names)
{
    if (names.contains(name))
        return renamed(name, names);
    for (QLatin1StringView const prefix :
         {ChartBase::TOKEN_NAME, ChartBase::TOKEN_MIN_X, ChartBase::TOKEN_MIN_Y, ChartBase::TOKEN_MAX_X,
          ChartBase::TOKEN_MAX_Y, ChartBase::TOKEN_AVERAGE, ChartBase::TOKEN_VARIANCE, ChartBase::TOKEN_DEVIATION}) {
        if (name.startsWith(prefix))
            return prefix + renamed(name.mid(prefix.size()), names);
    }
    return name;
}

void renameInText(LabelBase *label, std::map<QString, QString> const &names)
{
    QStringList pieces = label->getText().split(TOKEN_SIGN);
    auto const rename = isConnectedToChart(*label) ? renamedOfChart : renamed;
    forEachToken(&pieces, [&](QString const &format, QString const &name, QString *piece) {
        *piece = format + rename(name, names);
    });
    label->setText(pieces.join(TOKEN_SIGN));
}

void renameCurves(GenericChart *chart, std::map<QString, QString> const &names)
{
    std::vector<GenericChart::Entry> entries = chart->getData();
    for (auto &[token, look] : entries)
        token.setName(renamed(token.getName(), names));
    chart->setTokenX(renamed(chart->getTokenX(), names));
    chart->setData(entries);
}

} // namespace

void renameTokens(Figure *figure, std::map<QString, QString> const &names)
{
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        if (auto *label = dynamic_cast<LabelBase *>(*it))
            renameInText(label, names);
        else if (auto *curves = dynamic_cast<GenericChart *>(*it))
            renameCurves(curves, names);
        else if (auto *chart = dynamic_cast<Chart *>(*it))
            chart->setToken(renamed(chart->getToken(), names));
        else if (auto *frame = dynamic_cast<SnapshotFrame *>(*it))
            frame->setSnapshotSourceId(renamed(frame->getSnapshotSourceId(), names));
        else if (auto *image = dynamic_cast<ImageBase *>(*it))
            image->setToken(renamed(image->getToken(), names));
    }
}

} // namespace Zem::Zemfig
