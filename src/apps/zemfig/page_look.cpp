#include "page_look.h"

#include "cli.h"

#include <ZemFig2Chart.h>
#include <ZemFig2ChartData.h>
#include <ZemFig2LabelBase.h>
#include <ZemFig2QtPageWriter.h>
#include <ZemFig2QtPainter.h>
#include <ZemFig2TokenInterface.h>
#include <ZemFig2Tools.h>
#include <ZemScriptObject.h>

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

constexpr double MM_PER_INCH = 25.4;
constexpr double MOST_PIXELS_OF_LOOK = 100e6;

/// The same unit, with more digits than any label shows.
QString exactFormat(QString const &format)
{
    qsizetype const begin = format.indexOf(QLatin1Char('['));
    qsizetype const end = format.indexOf(QLatin1Char(']'));
    QString const unit = begin >= 0 && end > begin ? format.mid(begin, end - begin + 1) : QString();
    return unit + QStringLiteral(".12");
}

void lookAtLabel(LabelBase *label, StageIdentifier const &stage, FigureTokenInterface const *tokens, ElementLook *look)
{
    look->text = label->getResolvedText();
    std::vector<QString> names;
    std::vector<QString> formats;
    Tools::parseTokens(label->getText(), QLatin1Char('$'), &names, &formats);
    for (std::size_t i = 0; i < names.size(); ++i) {
        Value value;
        if (tokens && label->resolveToken(stage, tokens, names[i], &value))
            look->tokens.push_back(
                {names[i], value.toString(formats[i], nullptr), value.toString(exactFormat(formats[i]), nullptr)});
    }
}

void lookAtChart(ChartBase const &chart, FigureTokenInterface const *tokens, ElementLook *look)
{
    ChartData const *const data = tokens ? tokens->getChart(chart.getToken()) : nullptr;
    if (!data)
        return;
    for (auto it = data->getDatasetBegin(); it != data->getDatasetEnd(); ++it) {
        if (!chart.isDatasetUsed(it->first))
            continue;
        std::vector<BaVec2d<double>> &points = look->curves[it->first];
        for (auto point = it->second->getPointBegin(0); point != it->second->getPointEnd(); ++point)
            points.push_back(point->point);
    }
    tokens->releaseChart(chart.getToken());
}

ElementLook lookAtElement(Element *element, StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    ElementLook look{element->getType(),
                     element->getScriptObject()->getName(),
                     describe(*element),
                     element->getOrigin(),
                     {},
                     entriesOf(element->getParameterString()),
                     {},
                     {},
                     {}};
    bool const sizesItself = element->hasAutoSize() && element->getAutoSize();
    if (sizesItself)
        look.place = element->getAlignmentOrigin();
    else if (element->hasSize())
        look.size = element->getSize();
    if (auto *label = dynamic_cast<LabelBase *>(element))
        lookAtLabel(label, stage, tokens, &look);
    if (auto const *chart = dynamic_cast<ChartBase const *>(element))
        lookAtChart(*chart, tokens, &look);
    return look;
}

QImage pictureOf(Figure const &figure, double dpi)
{
    double const scale = dpi / MM_PER_INCH;
    double const width = std::max(1.0, std::round(figure.getSize().x * scale));
    double const height = std::max(1.0, std::round(figure.getSize().y * scale));
    if (!(width * height <= MOST_PIXELS_OF_LOOK))
        throw InputError(QStringLiteral("a page of %1 x %2 mm is too large to be compared at %3 dpi")
                             .arg(figure.getSize().x)
                             .arg(figure.getSize().y)
                             .arg(dpi));
    QImage picture(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter device(&picture);
    Fig2Qt::QtPainter painter(&device, QTransform::fromScale(scale, scale));
    Fig2Qt::drawPage(figure, &painter);
    return picture;
}

} // namespace

PageLook lookOf(Figure &figure, StageIdentifier const &stage, double dpi)
{
    PageLook look;
    look.size = figure.getSize();
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        // A group is where its children are; an empty one is nowhere.
        if (it->getType() != Element::GROUP)
            look.elements.push_back(lookAtElement(*it, stage, figure.getTokenInterface()));
    }
    look.picture = pictureOf(figure, dpi);
    return look;
}

} // namespace Zem::Zemfig
