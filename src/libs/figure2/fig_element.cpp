#include "ZemFig2Element.h"

#include "ZemFig2Connector.h"
#include "ZemFig2Figure.h"
#include "ZemFig2ImportInfo.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2TokenInterface.h"
#include "fig_find.h"

#include <ZemError.h>
#include <ZemScriptObject.h>
#include <ZemTranslate.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr double POINT_SIZE = 0.1;     ///< below this length of its size an element is hit like a point
constexpr double POINT_DISTANCE = 2.0; ///< how near to a point counts as a hit
constexpr double TOLERANCE = 1e-50;

struct TypeTexts
{
    char const *parameterName;
    char const *displayName;
    char const *scriptName;
};

// By Type_t. The blank in "image label" and the underscore in the display name "chart_legend" stand in files and
// translations.
constexpr auto TYPE_TEXTS = std::to_array<TypeTexts>({{"line", "line", "line"},
                                                      {"rectangle", "rectangle", "rectangle"},
                                                      {"ellipse", "ellipse", "ellipse"},
                                                      {"polygon", "polygon", "polygon"},
                                                      {"label", "label", "label"},
                                                      {"chart", "chart", "chart"},
                                                      {"generic_chart", "generic chart", "generic_chart"},
                                                      {"legend", "legend", "legend"},
                                                      {"chart_legend", "chart_legend", "chart_legend"},
                                                      {"image", "image", "image"},
                                                      {"logo", "logo", "logo"},
                                                      {"group", "group", "group"},
                                                      {"snapshot", "snapshot", "snapshot"},
                                                      {"image label", "image label", "image_label"},
                                                      {"snapshot_frame", "snapshot frame", "snapshot_frame"}});
static_assert(TYPE_TEXTS.size() == Element::NUMBER_OF_TYPES, "every type has its texts");

TypeTexts const &textsOf(Element::Type_t type)
{
    static constexpr TypeTexts UNKNOWN{"", "", ""};
    auto const index = static_cast<std::size_t>(type);
    return index < TYPE_TEXTS.size() ? TYPE_TEXTS[index] : UNKNOWN;
}

} // namespace

constinit int Element::_id_counter = 0;

Rotation::Rotation(Element const *element)
    : base_(element->getOrigin()), angle_(element->hasAngle() ? element->getAngle() : 0.0)
{
}

Element::Element(Type_t type) : type_(type), background_(Color(230, 230, 230)), appliedFont_(userFont_)
{
    background_.setFilled(false);
    updateId();
    createScriptObject();
}

Element::Element(Element const &other)
    : TObject(other), type_(other.type_), origin_(other.origin_), size_(other.size_), visible_(other.visible_),
      linkTo3D_(other.linkTo3D_), autoSize_(other.autoSize_), maximize_(other.maximize_), angle_(other.angle_),
      border_(other.border_), background_(other.background_), userFont_(other.userFont_),
      appliedFont_(other.appliedFont_), useSystemFont_(other.useSystemFont_), fontColor_(other.fontColor_),
      highlighted_(other.highlighted_), highlightColor_(other.highlightColor_),
      pivotAlignmentX_(other.pivotAlignmentX_), pivotAlignmentY_(other.pivotAlignmentY_), margin_(other.margin_),
      spacing_(other.spacing_), blockVersion_(other.blockVersion_), temporarilyInvisible_(other.temporarilyInvisible_),
      importInfo_(other.importInfo_ ? other.importInfo_->copy() : nullptr)
{
    updateId();
    createScriptObject();
}

Element::~Element()
{
    // Emptied first: a connector may have this element at both of its ends.
    for (Connector *connector : std::exchange(connectors_, {})) {
        Element *other = connector->getSource() == this ? connector->getTarget() : connector->getSource();
        if (other)
            other->dropConnector(connector);
        delete connector;
    }
}

unsigned int Element::getEstimatedObjectSize() const
{
    constexpr unsigned int SCRIPT_OBJECT_SIZE = 256;
    std::size_t const points = dragPolygon_.size() + coveredPolygon_.size() + updatePolygon_.size();
    return static_cast<unsigned int>(sizeof(Element) + SCRIPT_OBJECT_SIZE + points * sizeof(BaVec2d<double>) +
                                     connectors_.capacity() * sizeof(Connector *));
}

void Element::setImportInfo(ImageImportInfo *info)
{
    if (info != importInfo_.get())
        importInfo_.reset(info);
}

void Element::createScriptObject()
{
    auto *scriptObject = new TokenInterfaceScriptObject(new ElementTokenInterface(this));
    scriptObject->setTObject(this);
    setScriptObject(scriptObject);
}

void Element::requireSupport(bool supported, char const *function, unsigned int line, char const *text)
{
    if (!supported)
        throw ProgError(function, "fig_element", line, text);
}

QString Element::getTypeName() const
{
    return translate("Figure_Element", textsOf(type_).displayName);
}

QString Element::getTypeParameterName(Type_t type)
{
    return QString::fromLatin1(textsOf(type).parameterName);
}

bool Element::getTypeFromParameterName(QString const &name, Type_t *type)
{
    for (unsigned int index = 0; index < TYPE_TEXTS.size(); ++index) {
        if (name == QLatin1StringView(TYPE_TEXTS[index].parameterName)) {
            *type = static_cast<Type_t>(index);
            return true;
        }
    }
    return false;
}

void Element::setType(Type_t type)
{
    type_ = type;
    valid_ = false;
}

void Element::updateId()
{
    id_ = _id_counter++;
}

void Element::setFigure(Figure *figure)
{
    if (figure && figure != figure_)
        giveName(figure);
    joinFigure(figure);
}

/// Leaves the name as it is.
void Element::joinFigure(Figure *figure)
{
    if (figure_ && figure != figure_)
        leavingFigure();
    figure_ = figure;
    getScriptObject()->setParent(figure ? figure->getElementsScriptObject() : nullptr);
}

void Element::giveName(Figure *figure)
{
    ScriptObject const *container = figure->getElementsScriptObject();
    QString const &current = getScriptObject()->getName();
    if (!current.isEmpty() && !container->getChild(current))
        return;
    QString const base = QString::fromLatin1(textsOf(type_).scriptName);
    // How many were there before this element.
    std::size_t number = container->getChildren().size() - (getScriptObject()->getParent() == container ? 1U : 0U);
    QString name;
    do {
        name = QStringLiteral("%2_%1").arg(number++).arg(base);
    } while (container->getChild(name));
    getScriptObject()->setName(name);
}

void Element::setOrigin(BaVec2d<double> const &origin)
{
    origin_ = origin;
    valid_ = false;
}

void Element::moveBy(BaVec2d<double> const &delta)
{
    setOrigin(getOrigin() + delta);
}

void Element::setSize(BaVec2d<double> const &size)
{
    requireSupport(hasSize(), "Zem::Fig2::Element::setSize", __LINE__, "Element does not support sizes");
    size_ = size;
    valid_ = false;
}

BaVec2d<double> Element::getMinimumSize() const
{
    throw ProgError("Zem::Fig2::Element::getMinimumSize", "fig_element", __LINE__,
                    "Element does not support a minimum size");
}

void Element::setAutoSize(bool autoSize)
{
    autoSize_ = autoSize;
    valid_ = false;
}

void Element::setMaximize(bool maximize)
{
    maximize_ = maximize;
    valid_ = false;
}

void Element::setLinkTo3D(bool linkTo3D)
{
    linkTo3D_ = linkTo3D;
    valid_ = false;
}

void Element::setAngle(double angle)
{
    requireSupport(hasAngle(), "Zem::Fig2::Element::setAngle", __LINE__, "Element does not suport angles");
    angle_ = angle;
    valid_ = false;
}

void Element::setBackground(FillStyle const &background)
{
    requireSupport(hasBackground(), "Zem::Fig2::Element::setBackground", __LINE__,
                   "Element does not support backgrounds");
    background_ = background;
    valid_ = false;
}

void Element::setBorder(LineStyle const &border)
{
    requireSupport(hasBorder(), "Zem::Fig2::Element::setBorder", __LINE__, "Element does not support borders");
    border_ = border;
    valid_ = false;
}

Font Element::getFont() const
{
    return useSystemFont_ ? Font::getSystemLabelFont() : userFont_;
}

void Element::setFont(Font const &font)
{
    requireSupport(hasFont(), "Zem::Fig2::Element::setFont", __LINE__, "Element does not support fonts");
    userFont_ = font;
    valid_ = false;
}

void Element::setUseSystemFont(bool useSystemFont)
{
    requireSupport(hasFont(), "Zem::Fig2::Element::setUseSystemFont", __LINE__,
                   "Element does not support system fonts");
    useSystemFont_ = useSystemFont;
    valid_ = false;
}

void Element::setFontColor(Color const &color)
{
    requireSupport(hasFontColor(), "Zem::Fig2::Element::setFontColor", __LINE__,
                   "Element does not support font colors");
    fontColor_ = color;
    valid_ = false;
}

void Element::setPivotAlignmentX(Alignment_t alignment)
{
    requireSupport(hasPivotAlignment(), "Zem::Fig2::Element::setPivotAlignmentX", __LINE__,
                   "Element does not support alignment");
    pivotAlignmentX_ = alignment;
    valid_ = false;
}

void Element::setPivotAlignmentY(Alignment_t alignment)
{
    requireSupport(hasPivotAlignment(), "Zem::Fig2::Element::setPivotAlignmentY", __LINE__,
                   "Element does not support alignment");
    pivotAlignmentY_ = alignment;
    valid_ = false;
}

void Element::setMargin(double margin)
{
    requireSupport(hasMargin(), "Zem::Fig2::Element::setMargin", __LINE__, "Element does not have a margin");
    margin_ = margin;
    valid_ = false;
}

void Element::setSpacing(double spacing)
{
    requireSupport(hasSpacing(), "Zem::Fig2::Element::setSpacing", __LINE__, "Element does not have a spacing");
    spacing_ = spacing;
    valid_ = false;
}

bool Element::getLegendData(FigureTokenInterface const *, Legend2::Legend *, Legend2::Data *, bool *,
                            Legend2::ToleranceParams *, Legend2::HistogramData *, bool *) const
{
    throw ProgError("Zem::Fig2::Element::getLegendData", "fig_element", __LINE__,
                    "Element does not have any legend data");
}

bool Element::hasAttributes(ElementAttributes const &attributes) const
{
    if (!attributes.isFiltered())
        return true;
    auto const used = [&attributes](QLatin1StringView name) { return attributes.isUsed(name); };
    return (used(ElementAttributes::ALIGNMENT) && hasPivotAlignment()) ||
           (used(ElementAttributes::ANGLE) && hasAngle()) || (used(ElementAttributes::BACKGROUND) && hasBackground()) ||
           (used(ElementAttributes::BORDER) && hasBorder()) || (used(ElementAttributes::FONT) && hasFont()) ||
           (used(ElementAttributes::FONT_COLOR) && hasFontColor()) ||
           (used(ElementAttributes::MARGIN) && hasMargin()) || (used(ElementAttributes::SPACING) && hasSpacing()) ||
           used(ElementAttributes::GEOMETRY) || (used(ElementAttributes::CONNECTOR) && type_ == IMAGE_LABEL);
}

void Element::setVisible(bool visible)
{
    if (visible == visible_)
        return;
    visible_ = visible;
    valid_ = false;
    // Whether an element that is not selected shows means nothing to the selection, and finding that out could cost a
    // walk through all of its group.
    if (figure_ && selected_)
        figure_->updateElementSelection(this);
}

void Element::setSelected(bool selected)
{
    if (selected == selected_)
        return;
    selected_ = selected;
    valid_ = false;
    if (figure_)
        figure_->updateElementSelection(this);
}

void Element::setHighlighted(bool highlighted)
{
    highlighted_ = highlighted;
    valid_ = false;
}

void Element::setHighlightColor(Color const &color)
{
    highlightColor_ = color;
    valid_ = false;
}

bool Element::isInBounds(Rect const &rect) const
{
    Polygon2d const outline = computeCoveredPolygon(false);
    return std::all_of(outline.getPoints().begin(), outline.getPoints().end(), [&rect](auto const &corner) {
        return corner.x >= rect.x - TOLERANCE && corner.x <= rect.x + rect.width + TOLERANCE &&
               corner.y >= rect.y - TOLERANCE && corner.y <= rect.y + rect.height + TOLERANCE;
    });
}

bool Element::intersects(Rect const &rect) const
{
    return Rect(updatePolygon_).intersects(rect);
}

bool Element::isPointIn(BaVec2d<double> const &point) const
{
    if (hasSize() && size_.length() < POINT_SIZE)
        return (point - getOrigin()).length() < POINT_DISTANCE;
    return coveredPolygon_.isInPolygon(point);
}

bool Element::dragPointMove(int, BaVec2d<double> const &)
{
    return false;
}

bool Element::hasHandle(BaVec2d<double> *) const
{
    return false;
}

namespace {

void requireHandle(Element const &element, char const *function, unsigned int line)
{
    BaVec2d<double> position;
    if (!element.hasHandle(&position))
        throw ProgError(function, "fig_element", line, "Element does not have a handle");
}

} // namespace

void Element::handleDragStart()
{
    requireHandle(*this, "Zem::Fig2::Element::handleDragStart", __LINE__);
}

void Element::handleMove(BaVec2d<double> const &)
{
    requireHandle(*this, "Zem::Fig2::Element::handleMove", __LINE__);
}

void Element::handleDragEnd()
{
    requireHandle(*this, "Zem::Fig2::Element::handleDragEnd", __LINE__);
}

bool Element::update(StageIdentifier const &stage, FigureTokenInterface const *tokens, Polygon2d *polygon)
{
    if (hasFont() && useSystemFont_ && Font::getSystemLabelFont() != appliedFont_) {
        appliedFont_ = getFont();
        valid_ = false;
    }
    if (valid_ && isDataValid(stage, tokens))
        return false;
    if (polygon)
        polygon->addPolygon(updatePolygon_);
    computeDynamicData(stage, tokens);
    valid_ = true;
    if (updatePolygon_.empty())
        return false;
    if (polygon)
        polygon->addPolygon(updatePolygon_);
    return true;
}

bool Element::canConnectTo(Element const *, QString const &) const
{
    return false;
}

Connector *Element::connect(Element *target, QString const &point)
{
    if (!canConnectTo(target, point)) {
        QString const text =
            QStringLiteral("Illegal element connection: target_address=0x%1, target_type='%2', target_id='%3'")
                .arg(reinterpret_cast<quintptr>(target), 0, 16)
                .arg(getTypeName(), point);
        throw ProgError("Zem::Fig2::Element::connect", "fig_element", __LINE__, text.toLatin1().constData());
    }
    auto *connector = new Connector(Connector::Mode_t{}, this, QString(), target, point);
    addConnector(connector);
    target->addConnector(connector);
    return connector;
}

void Element::disconnect(Element *target, QString const &point)
{
    auto const found = std::find_if(connectors_.begin(), connectors_.end(), [&](Connector const *connector) {
        return connector->getTarget() == target && connector->getTargetName() == point;
    });
    if (found == connectors_.end())
        throw ProgError("Zem::Fig2::Element::disconnect", "fig_element", __LINE__, "Connector does not exist");
    Connector *connector = *found;
    connector->getSource()->removeConnector(connector);
    target->removeConnector(connector);
    delete connector;
}

void Element::addConnector(Connector *connector)
{
    // Only a connector that has just been made or bound comes here: it can be there already as the other end of
    // itself, and then it is the last. A target may have so many connectors that no list is walked for each.
    if (!connectors_.empty() && connectors_.back() == connector)
        throw ProgError("Zem::Fig2::Element::addConnector", "fig_element", __LINE__, "Connector already existing");
    connectors_.push_back(connector);
    valid_ = false;
}

void Element::removeConnector(Connector *connector)
{
    if (!dropConnector(connector))
        throw ProgError("Zem::Fig2::Element::removeConnector", "fig_element", __LINE__,
                        "Not connected to this element");
}

bool Element::dropConnector(Connector const *connector)
{
    auto const place = findFromEnds(connectors_, connector);
    if (place == connectors_.end())
        return false;
    connectors_.erase(place);
    valid_ = false;
    return true;
}

bool Element::computeConnectorPoints(Connector const *, FigureTokenInterface const *, BaVec2d<double> *,
                                     BaVec2d<double> *) const
{
    return false;
}

Element *Element::getConnectorTarget(QString *point) const
{
    for (Connector const *connector : connectors_) {
        if (connector->getSource() != this)
            continue;
        if (point)
            *point = connector->getTargetName();
        return connector->getTarget();
    }
    return nullptr;
}

} // namespace Zem::Fig2
