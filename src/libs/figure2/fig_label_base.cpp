#include "ZemFig2LabelBase.h"

#include "ZemFig2Calculator.h"
#include "ZemFig2Chart.h"
#include "ZemFig2Connector.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageData.h"
#include "ZemFig2Painter.h"
#include "ZemFig2RichText.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2TokenInterface.h"
#include "ZemFig2Tools.h"
#include "fig_alignment.h"
#include "fig_loan.h"
#include "fig_value.h"

#include <ZemError.h>
#include <ZemLine2d.h>
#include <ZemText.h>
#include <ZemTranslate.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Zem::Fig2 {

namespace {

constexpr double NO_WRAPPING = -1.0;
constexpr double TOLERANCE = 1e-50;

/// Charts and images are what a label may annotate.
bool isAnnotatable(Element const *element)
{
    switch (element->getType()) {
    case Element::IMAGE:
    case Element::SNAPSHOT_FRAME:
    case Element::CHART:
    case Element::GENERIC_CHART:
        return true;
    default:
        return false;
    }
}

/// The place before the target's rotation that a connector leads to: a chart's origin; of an image the object that the
/// connector names. False, and `point` is left alone, when the data have no such object.
bool findAnnotatedPoint(Connector const &connector, FigureTokenInterface const *tokens, BaVec2d<double> *point)
{
    if (auto const *image = dynamic_cast<ImageBase const *>(connector.getTarget())) {
        if (ImageLoan const data(tokens, image->getToken()); data) {
            ImageDataObject const *object = data->getObject(connector.getTargetName());
            if (object)
                *point = image->getFigurePoint(object->getConnectorPoint());
            return object != nullptr;
        }
    }
    *point = connector.getTarget()->getOrigin();
    return true;
}

} // namespace

constinit int LabelBase::_text_cache_id_counter = 0;
Mutex LabelBase::_text_cache_id_counter_mutex;

LabelBase::LabelBase(Type_t type) : AreaBase(type), textCacheId_(takeTextCacheId())
{
    setAutoSize(true);
}

LabelBase::LabelBase(LabelBase const &other)
    : AreaBase(other), text_(other.text_), colorBarVisible_(other.colorBarVisible_), colorBar_(other.colorBar_),
      textAlignmentX_(other.textAlignmentX_), textAlignmentY_(other.textAlignmentY_), expandWidth_(other.expandWidth_),
      connectorPoint_(other.connectorPoint_), connectorStyle_(other.connectorStyle_),
      templateName_(other.templateName_), resolvedText_(other.resolvedText_),
      resolvedTextOffset_(other.resolvedTextOffset_), resolvedTextSize_(other.resolvedTextSize_),
      lastText_(other.lastText_), lastFont_(other.lastFont_), lastWidth_(other.lastWidth_),
      measuredWidth_(other.measuredWidth_), colorBarSize_(other.colorBarSize_), textCacheId_(other.textCacheId_)
{
}

int LabelBase::takeTextCacheId()
{
    _text_cache_id_counter_mutex.lock();
    int const id = ++_text_cache_id_counter;
    _text_cache_id_counter_mutex.unlock("Zem::Fig2::LabelBase::takeTextCacheId", "fig_label", __LINE__);
    return id;
}

void LabelBase::setText(QString const &text)
{
    text_ = text;
    resolvedText_.clear();
    tokensParsed_ = false;
    invalidate();
}

void LabelBase::setColorBar(ColorBar const &colorBar)
{
    colorBar_ = colorBar;
    invalidate();
}

void LabelBase::setColorBarVisible(bool visible)
{
    colorBarVisible_ = visible;
    invalidate();
}

void LabelBase::setTextAlignmentX(Alignment_t alignment)
{
    textAlignmentX_ = alignment;
    invalidate();
}

void LabelBase::setTextAlignmentY(Alignment_t alignment)
{
    textAlignmentY_ = alignment;
    invalidate();
}

void LabelBase::setExpandWidth(bool expand)
{
    expandWidth_ = expand;
    invalidate();
}

void LabelBase::setConnectorStyle(LineStyle const &style)
{
    connectorStyle_ = style;
    invalidate();
}

void LabelBase::setConnectorPoint(BaVec2d<double> const &point)
{
    connectorPoint_ = point;
    invalidate();
}

void LabelBase::setTemplateName(QString const &name)
{
    templateName_ = name;
    invalidate();
}

QString LabelBase::getRTFStyleAttribute(Font const &font, Color const &color)
{
    return RTFTools::getStyleAttribute(font, color);
}

unsigned int LabelBase::getEstimatedObjectSize() const
{
    qsizetype const characters = text_.size() + resolvedText_.size() + lastText_.size() + templateName_.size();
    return AreaBase::getEstimatedObjectSize() + static_cast<unsigned int>(sizeof(LabelBase) - sizeof(AreaBase)) +
           static_cast<unsigned int>(characters) * static_cast<unsigned int>(sizeof(QChar));
}

std::vector<QString> const &LabelBase::getTokenNames() const
{
    if (!tokensParsed_) {
        std::vector<QString> formats;
        Tools::parseTokens(text_, QLatin1Char('$'), &tokenNames_, &formats);
        tokensParsed_ = true;
    }
    return tokenNames_;
}

bool LabelBase::isTokenUsed(QString const &token) const
{
    std::vector<QString> const &names = getTokenNames();
    return std::find(names.begin(), names.end(), token) != names.end();
}

bool LabelBase::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    if (!AreaBase::isDataValid(stage, tokens))
        return false;
    if (!tokens)
        return true;
    for (QString const &name : getTokenNames()) {
        auto const seen = tokenCounters_.find(name);
        // A token that was never found keeps the label stale, so that it is tried again.
        if (seen == tokenCounters_.end() || getTokenModifiedCounter(tokens, seen->second.first) != seen->second.second)
            return false;
    }
    return true;
}

unsigned int LabelBase::getTokenModifiedCounter(FigureTokenInterface const *tokens, QString const &token) const
{
    return tokens->getModifiedCounter(token);
}

bool LabelBase::resolveToken(StageIdentifier const &stage, FigureTokenInterface const *tokens, QString const &name,
                             Value *value)
{
    if (tokens) {
        *value = tokens->getValue(name, IndexIdentifier::NO_INDEX, stage);
        if (hasValue(*value)) {
            noteToken(name, getTokenModifiedCounter(tokens, name));
            return true;
        }
    }
    return std::any_of(getConnectorBegin(), getConnectorEnd(), [&](Connector const *connector) {
        return resolveInTarget(stage, tokens, *connector, name, value);
    });
}

/// Looks for the value in what the label annotates.
bool LabelBase::resolveInTarget(StageIdentifier const &stage, FigureTokenInterface const *tokens,
                                Connector const &connector, QString const &name, Value *value)
{
    Element const *target = connector.getTarget();
    if (!isAnnotatable(target)) {
        QString const text = QStringLiteral("Illegal connector target: %1").arg(target->getTypeName());
        throw ProgError("Zem::Fig2::LabelBase::resolveToken", "fig_label", __LINE__, text.toLatin1().constData());
    }
    if (!tokens)
        return false;
    if (auto const *chart = dynamic_cast<ChartBase const *>(target))
        return resolveInChart(stage, tokens, *chart, name, value);
    auto const *image = dynamic_cast<ImageBase const *>(target);
    return image && resolveInImage(stage, tokens, *image, connector.getTargetName(), name, value);
}

bool LabelBase::resolveInChart(StageIdentifier const &stage, FigureTokenInterface const *tokens, ChartBase const &chart,
                               QString const &name, Value *value)
{
    QString const token = chart.getToken();
    *value = chart.getValue(stage, ChartLoan(tokens, token).get(), name);
    if (!hasValue(*value))
        return false;
    tokenCounters_[name] = {token, tokens->getModifiedCounter(token)};
    return true;
}

/// The values are those of the object that the connector leads to. Unlike with charts, the label follows the image also
/// when there is no value.
bool LabelBase::resolveInImage(StageIdentifier const &stage, FigureTokenInterface const *tokens, ImageBase const &image,
                               QString const &object, QString const &name, Value *value)
{
    QString const token = image.getToken();
    tokenCounters_[name] = {token, tokens->getModifiedCounter(token)};
    ImageLoan const data(tokens, token);
    ImageDataObject const *found = data ? data->getObject(object) : nullptr;
    if (!found || !found->getTokenInterface())
        return false;
    *value = found->getTokenInterface()->getValue(name, IndexIdentifier::NO_INDEX, stage);
    return hasValue(*value);
}

namespace {

QString unresolvedText()
{
    return translate("Figure_Label", "???");
}

/// A value as rich text. The numbers of Value::Type_t decide: the missing ones stay unresolved.
QString richTextOf(Value const &value, QString const &format)
{
    switch (value.getType()) {
    case Value::TYPE_UNKNOWN:
    case Value::TYPE_INVALID:
        return unresolvedText();
    case Value::TYPE_FORMATTED_TEXT: {
        QString text;
        return value.getFormattedText().getText(FormattedText::Format_t{}, &text) ? text : unresolvedText();
    }
    default:
        return tokenizeRT(value.toString(format, nullptr), true);
    }
}

} // namespace

QString LabelBase::resolveTokenText(StageIdentifier const &stage, FigureTokenInterface const *tokens,
                                    QString const &inner)
{
    QString name;
    QString format;
    if (!Tools::parseToken(inner, &name, &format))
        return inner.isEmpty() ? QStringLiteral("$") : QLatin1Char('$') + inner + QLatin1Char('$');
    Value value;
    return resolveToken(stage, tokens, name, &value) ? richTextOf(value, format) : unresolvedText();
}

QString LabelBase::resolveTokensInText(StageIdentifier const &stage, FigureTokenInterface const *tokens,
                                       QString const &text)
{
    QString result;
    bool inTag = false;
    qsizetype start = -1;
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar const character = text[i];
        bool const inToken = start >= 0;
        if (character == QLatin1Char('<') || (character == QLatin1Char('>') && inTag)) {
            // Tags go through even when they stand inside a token.
            result += character;
            inTag = character == QLatin1Char('<');
        } else if (character == QLatin1Char('$')) {
            if (inToken)
                result += resolveTokenText(stage, tokens, text.mid(start + 1, i - start - 1));
            start = inToken ? -1 : i;
        } else if (!inToken) {
            if (character == QLatin1Char(' ') && !inTag)
                result += QLatin1StringView("&nbsp;");
            else
                result += character;
        }
    }
    return result;
}

/// The box inside margin and colour bar.
void LabelBase::computeAvailableBox(BaVec2d<double> *offset, BaVec2d<double> *size) const
{
    *offset = getDrawingOrigin() + BaVec2d<double>(getMargin(), getMargin());
    *size = getDrawingSize() - BaVec2d<double>(2.0 * getMargin(), 2.0 * getMargin());
    if (!colorBarVisible_)
        return;
    BaVec2d<double> const taken = colorBarSize_ + BaVec2d<double>(getSpacing(), getSpacing());
    switch (colorBar_.getSide()) {
    case ColorBar::SIDE_LEFT:
        offset->x += taken.x;
        size->x -= taken.x;
        break;
    case ColorBar::SIDE_RIGHT:
        size->x -= taken.x;
        break;
    case ColorBar::SIDE_TOP:
        offset->y += taken.y;
        size->y -= taken.y;
        break;
    case ColorBar::SIDE_BOTTOM:
        size->y -= taken.y;
        break;
    }
}

void LabelBase::computeTextOffsetAndSize(BaVec2d<double> *offset, BaVec2d<double> *size) const
{
    computeAvailableBox(offset, size);
    if (!expandWidth_) {
        size->x -= resolvedTextSize_.x;
        offset->x += alignedRoom(textAlignmentX_, size->x);
    }
    size->y -= resolvedTextSize_.y;
    offset->y += alignedRoom(textAlignmentY_, size->y);
}

/// Measuring is slow: it is done only for a new text, a new font or another wrapping width.
void LabelBase::measureText()
{
    if (resolvedText_.isEmpty()) {
        resolvedTextOffset_ = {0.0, 0.0};
        resolvedTextSize_ = {0.0, 0.0};
        return;
    }
    double width = NO_WRAPPING;
    if (expandWidth_) {
        BaVec2d<double> offset;
        BaVec2d<double> size;
        computeAvailableBox(&offset, &size);
        // A box that was never given a width takes the text as it comes.
        if (size.x > 0.0)
            width = size.x;
    }
    Font const font = getFont();
    if (resolvedText_ == lastText_ && font == lastFont_ && width == measuredWidth_)
        return;
    measuredWidth_ = width;
    resolvedTextSize_ =
        Calculator::getInstance()->computeRichTextSize(resolvedText_, font, width, &resolvedTextOffset_);
}

void LabelBase::renewTextCacheId()
{
    BaVec2d<double> offset;
    BaVec2d<double> size;
    computeTextOffsetAndSize(&offset, &size);
    Font const font = getFont();
    if (resolvedText_ != lastText_ || font != lastFont_ || size.x != lastWidth_)
        textCacheId_ = takeTextCacheId();
    lastText_ = resolvedText_;
    lastFont_ = font;
    lastWidth_ = size.x;
}

void LabelBase::addColorBarSize(BaVec2d<double> *size) const
{
    if (colorBar_.isHorizontal()) {
        size->x = std::max(size->x, colorBarSize_.x);
        size->y += getSpacing() + colorBarSize_.y;
    } else {
        size->x += getSpacing() + colorBarSize_.x;
        size->y = std::max(size->y, colorBarSize_.y);
    }
}

BaVec2d<double> LabelBase::computeMinimumSize()
{
    // The border counts whether it is drawn or not.
    BaVec2d<double> size(getBorder().getWidth(), getBorder().getWidth());
    // The bar comes first: what it leaves is the width at which the text is wrapped.
    if (colorBarVisible_)
        colorBarSize_ = colorBar_.computeMinimumSize();
    measureText();
    size += resolvedTextSize_;
    renewTextCacheId();
    if (colorBarVisible_)
        addColorBarSize(&size);
    return size + BaVec2d<double>(2.0 * getMargin(), 2.0 * getMargin());
}

void LabelBase::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    tokenCounters_.clear();
    resolvedText_ = resolveTokensInText(stage, tokens, text_);
    setMinimumSize(computeMinimumSize());
    if (getAutoSize()) {
        // The box grows about its alignment point.
        BaVec2d<double> const alignmentOrigin = getAlignmentOrigin();
        setSize(getMinimumSize());
        setAlignmentOrigin(alignmentOrigin);
    }
    AreaBase::computeDynamicData(stage, tokens);
    addConnectorLines(tokens);
}

void LabelBase::addConnectorLines(FigureTokenInterface const *tokens)
{
    std::size_t const pointsBefore = updatePolygon_.size();
    if (hasConnectorPoint())
        addLineToUpdatePolygon(connectorPoint_, getOrigin(), connectorStyle_);
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        BaVec2d<double> from;
        BaVec2d<double> to;
        if (computeConnectorPoints(*it, tokens, &from, &to))
            addLineToUpdatePolygon(from, to, connectorStyle_);
    }
    if (updatePolygon_.size() > pointsBefore && updatePolygon_.size() > 2)
        updatePolygon_ = updatePolygon_.getConvexHull();
}

void LabelBase::addLineToUpdatePolygon(BaVec2d<double> const &a, BaVec2d<double> const &b, LineStyle const &style)
{
    BaVec2d<double> const d = b - a;
    BaVec2d<double> n(-d.y, d.x);
    double const length = n.length();
    if (length >= TOLERANCE)
        n = n * (style.getWidth() * 0.5 / length);
    for (BaVec2d<double> const &point : {a + n, a - n, b + n, b - n})
        updatePolygon_.addPoint(point);
}

bool LabelBase::dragPointMove(int index, BaVec2d<double> const &position)
{
    bool const moved = AreaBase::dragPointMove(index, position);
    if (moved)
        setAutoSize(false);
    return moved;
}

bool LabelBase::canConnectTo(Element const *target, QString const &) const
{
    return isAnnotatable(target);
}

bool LabelBase::computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens,
                                       BaVec2d<double> *from, BaVec2d<double> *to) const
{
    if (connector->getSource() != this)
        return false;
    Element const *target = connector->getTarget();
    if (!isAnnotatable(target))
        throw ProgError("Zem::Fig2::LabelBase::computeConnectorPoints", "fig_label", __LINE__,
                        "Unhandled connector target type");
    if (!findAnnotatedPoint(*connector, tokens, to))
        return false;
    if (target->hasAngle() && std::abs(target->getAngle()) > TOLERANCE)
        *to = Rotation(target).applyTo(*to);
    return getDragPolygon().intersect(LineSegment2d(Rotation(this).applyTo(getOrigin()), *to), from);
}

bool LabelBase::isConnectorVisible(FigureTokenInterface const *tokens) const
{
    constexpr double UNSET = std::numeric_limits<double>::max();
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        BaVec2d<double> from(UNSET, UNSET);
        BaVec2d<double> to(UNSET, UNSET);
        bool const computed = computeConnectorPoints(*it, tokens, &from, &to);
        if ((computed || (to.x != UNSET && to.y != UNSET)) && (*it)->getTarget()->getDragPolygon().isInPolygon(to))
            return true;
    }
    return false;
}

void LabelBase::drawConnectorLine(Painter *painter) const
{
    if (!hasConnectorPoint())
        return;
    LineStyle style = connectorStyle_;
    if (isHighlighted())
        style.setColor(getHighlightColor());
    BaVec2d<double> crossing;
    LineSegment2d const line(Rotation(this).applyTo(getOrigin()), connectorPoint_);
    if (!getDragPolygon().intersect(line, &crossing))
        return;
    // The line ends at the rim of the circle.
    BaVec2d<double> towards = connectorPoint_ - crossing;
    double const length = towards.length();
    if (length >= TOLERANCE)
        towards = towards * (CONNECTOR_POINT_RADIUS / length);
    painter->drawLine(crossing, connectorPoint_ - towards, style, Rotation::null);
    painter->drawEllipse(connectorPoint_, {CONNECTOR_POINT_RADIUS, CONNECTOR_POINT_RADIUS}, 0.0, style, FillStyle::null,
                         Rotation::null);
}

void LabelBase::drawConnectors(FigureTokenInterface const *tokens, Painter *painter) const
{
    for (auto it = getConnectorBegin(); it != getConnectorEnd(); ++it) {
        BaVec2d<double> from;
        BaVec2d<double> to;
        if (computeConnectorPoints(*it, tokens, &from, &to) && (*it)->getTarget()->getDragPolygon().isInPolygon(to))
            painter->drawLine(from, to, connectorStyle_, Rotation::null);
    }
}

bool LabelBase::draw(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    if (step != 0)
        return true;
    if (!getDrawUnconnected() && getConnectorBegin() != getConnectorEnd() && !isConnectorVisible(tokens))
        return true;
    drawConnectors(tokens, painter);
    drawBackground(painter);
    drawContents(painter);
    drawBorder(painter);
    return true;
}

void LabelBase::drawContents(Painter *painter) const
{
    BaVec2d<double> offset;
    BaVec2d<double> size;
    computeTextOffsetAndSize(&offset, &size);
    Rotation const rotation(this);
    BaVec2d<double> const drawingSize = getDrawingSize();
    BaVec2d<double> const minimumSize = getMinimumSize();
    bool const clipped = drawingSize.x < minimumSize.x || drawingSize.y < minimumSize.y;
    if (clipped)
        painter->setClipping(Rect(getDrawingOrigin(), drawingSize), rotation);
    painter->drawRichText(offset + resolvedTextOffset_, resolvedText_, getFont(), expandWidth_ ? size.x : NO_WRAPPING,
                          rotation, textCacheId_);
    if (clipped)
        painter->resetClipping();
    if (colorBarVisible_)
        drawColorBar(painter);
}

void LabelBase::drawColorBar(Painter *painter) const
{
    double const margin = getMargin();
    BaVec2d<double> const half = getDrawingSize() * 0.5;
    BaVec2d<double> position(margin - half.x, margin - half.y);
    BaVec2d<double> size(2.0 * (half.x - margin), 2.0 * (half.y - margin));
    if (colorBar_.isHorizontal())
        size.y = colorBarSize_.y;
    else
        size.x = colorBarSize_.x;
    if (colorBar_.getSide() == ColorBar::SIDE_RIGHT)
        position.x = half.x - margin - colorBarSize_.x;
    if (colorBar_.getSide() == ColorBar::SIDE_BOTTOM)
        position.y = half.y - margin - colorBarSize_.y;
    colorBar_.draw(painter, getDrawingOrigin() + half + position, size, Rotation(this));
}

} // namespace Zem::Fig2
