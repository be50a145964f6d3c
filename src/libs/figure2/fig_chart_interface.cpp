#include "ZemFig2ChartInterface.h"

#include "ZemFig2Chart.h"
#include "ZemFig2Figure.h"

#include <ZemError.h>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr QLatin1Char SEPARATOR('/');
constexpr QLatin1Char ESCAPE('\\');

[[noreturn]] void fail(char const *function, unsigned int line, QString const &text)
{
    throw ProgError(function, "fig_chart_interface", line, text.toUtf8().constData());
}

/// The first text is that of the x axis. An empty one leaves its place to the next.
void takeText(QString *text, QString *tokenX, std::vector<QString> *tokensY)
{
    if (tokenX->isEmpty())
        *tokenX = *text;
    else
        tokensY->push_back(*text);
    text->clear();
}

} // namespace

/// A figure that is told to let go may not take itself from the list that is walked.
ChartInterface::~ChartInterface()
{
    closing_ = true;
    for (Figure *figure : figures_) {
        if (figure->getChartInterface() == this)
            figure->setChartInterface(nullptr);
    }
}

QString ChartInterface::getLegendDescription(DataToken const &token, ChartParameters const &)
{
    return getTokenDescription(token);
}

bool ChartInterface::getDefaultParameters(DataToken const &, ChartParameters *) const
{
    return false;
}

bool ChartInterface::isGenericChartToken(QString const &token)
{
    return token.startsWith(TOKEN_PREFIX);
}

QString ChartInterface::quoteToken(QString const &token)
{
    QString quoted;
    for (QChar character : token) {
        if (character == SEPARATOR || character == ESCAPE)
            quoted += ESCAPE;
        quoted += character;
    }
    return quoted;
}

QString ChartInterface::createToken(QString const &tokenX, std::vector<QString> const &tokensY)
{
    QString token = TOKEN_PREFIX + SEPARATOR + quoteToken(tokenX);
    for (QString const &tokenY : tokensY)
        token += SEPARATOR + quoteToken(tokenY);
    return token;
}

bool ChartInterface::parseToken(QString const &token, QString *tokenX, std::vector<QString> *tokensY)
{
    tokenX->clear();
    tokensY->clear();
    if (!isGenericChartToken(token) || token.size() == TOKEN_PREFIX.size() || token[TOKEN_PREFIX.size()] != SEPARATOR)
        return false;
    QString text;
    bool escaped = false;
    for (QChar character : QStringView(token).sliced(TOKEN_PREFIX.size() + 1)) {
        if (!escaped && character == ESCAPE) {
            escaped = true;
            continue;
        }
        if (!escaped && character == SEPARATOR)
            takeText(&text, tokenX, tokensY);
        else
            text += character;
        escaped = false;
    }
    if (!text.isEmpty())
        takeText(&text, tokenX, tokensY);
    return true;
}

ChartInterface *ChartInterface::getInterface(Element const *element)
{
    Figure const *figure = element->getFigure();
    return figure ? figure->getChartInterface() : nullptr;
}

void ChartInterface::registerChartToken(QString const &token)
{
    if (auto const known = chartTokens_.find(token); known != chartTokens_.end()) {
        ++known->second;
        return;
    }
    chartTokens_.emplace(token, 1);
    addChartToken(token);
}

void ChartInterface::unregisterChartToken(QString const &token)
{
    char const *const function = "Zem::Fig2::ChartInterface::unregisterChartToken";
    auto const known = chartTokens_.find(token);
    if (known == chartTokens_.end())
        fail(function, __LINE__, QStringLiteral("Chart token not registered: %1").arg(token));
    if (known->second < 1)
        fail(function, __LINE__, QStringLiteral("Token counter state error"));
    if (--known->second > 0)
        return;
    // The caller may have handed over the key itself.
    QString const unused = token;
    chartTokens_.erase(known);
    // The subclass is gone while this is being destroyed.
    if (!closing_)
        removeChartToken(unused);
}

std::vector<QString> ChartInterface::getChartTokens() const
{
    std::vector<QString> tokens;
    for (auto const &[token, count] : chartTokens_)
        tokens.push_back(token);
    return tokens;
}

void ChartInterface::tokenDeleted()
{
    std::vector<DataToken> const x = getTokensX();
    std::vector<DataToken> const y = getTokensY();
    GenericChart::DataTokens const tokensX(x.begin(), x.end());
    GenericChart::DataTokens const tokensY(y.begin(), y.end());
    for (Figure *figure : figures_) {
        for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
            if (auto *chart = dynamic_cast<GenericChart *>(*it))
                chart->tokenDeleted(tokensX, tokensY);
        }
    }
}

void ChartInterface::registerFigureForUpdate(Figure *figure)
{
    if (std::find(figures_.begin(), figures_.end(), figure) != figures_.end())
        fail("Zem::Fig2::ChartInterface::registerFigureForUpdate", __LINE__,
             QStringLiteral("Figure already registered"));
    figures_.push_back(figure);
}

void ChartInterface::unregisterFigureForUpdate(Figure *figure)
{
    if (closing_)
        return;
    auto const known = std::find(figures_.begin(), figures_.end(), figure);
    if (known == figures_.end())
        fail("Zem::Fig2::ChartInterface::unregisterFigureForUpdate", __LINE__, QStringLiteral("Figure not registered"));
    figures_.erase(known);
}

} // namespace Zem::Fig2
