#include "ZemFig2Figure.h"

#include "ZemFig2Chart.h"
#include "ZemFig2Connector.h"
#include "ZemFig2Image.h"
#include "ZemFig2ImageInterface.h"
#include "ZemFig2ImageLabel.h"
#include "ZemFig2Invalidator.h"
#include "ZemFig2LabelBase.h"
#include "ZemFig2Painter.h"
#include "ZemFig2TokenInterface.h"

#include <ZemError.h>
#include <ZemScriptObject.h>

#include <algorithm>
#include <unordered_set>

namespace Zem::Fig2 {

namespace {

constexpr ScriptObject::Category_t ELEMENTS_CATEGORY{21};
constexpr double PAGE_RIM = 0.001; ///< of the page's width and height

using ElementSet = std::unordered_set<Element *>;

/// Inserts the element and all that its connectors reach: lines and placement depend on both ends.
void collectConnectedElements(Element *element, ElementSet *set)
{
    // A stack instead of recursion: chains of connectors may be as long as the page has elements.
    std::vector<Element *> waiting{element};
    while (!waiting.empty()) {
        Element *next = waiting.back();
        waiting.pop_back();
        if (!next || !set->insert(next).second)
            continue;
        for (auto it = next->getConnectorBegin(); it != next->getConnectorEnd(); ++it)
            waiting.push_back((*it)->getSource() == next ? (*it)->getTarget() : (*it)->getSource());
    }
}

bool isImageLabel(Element::Type_t type)
{
    return type == Element::IMAGE_LABEL;
}

bool isLegend(Element::Type_t type)
{
    return type == Element::LEGEND;
}

bool isImageOrFrame(Element::Type_t type)
{
    return type == Element::IMAGE || type == Element::SNAPSHOT_FRAME;
}

bool isImageOrChart(Element::Type_t type)
{
    return isImageOrFrame(type) || type == Element::CHART || type == Element::GENERIC_CHART;
}

/// Image labels among them: they are visited twice, the second time to no effect unless their data has changed.
bool isAnyOther(Element::Type_t type)
{
    return type != Element::GROUP && !isLegend(type) && !isImageOrChart(type);
}

bool isGroup(Element::Type_t type)
{
    return type == Element::GROUP;
}

Polygon2d rectangle(double left, double top, double right, double bottom)
{
    return Polygon2d({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, true);
}

} // namespace

Figure::Figure() : Figure(nullptr)
{
}

Figure::Figure(FigureTokenInterface const *tokenInterface) : tokenInterface_(tokenInterface)
{
    createScriptObjects();
    adoptRoot(new Group);
}

Figure::Figure(Figure const &other)
    : TObject(other), tokenInterface_(other.tokenInterface_), chartInterface_(other.chartInterface_),
      imageInterface_(other.imageInterface_), size_(other.size_), background_(other.background_),
      invalidatePage_(other.invalidatePage_)
{
    createScriptObjects();
    setRoot(other.root_->clone(nullptr));
    if (chartInterface_)
        chartInterface_->registerFigureForUpdate(this);
    if (imageInterface_)
        imageInterface_->registerFigureForUpdate(this);
}

Figure &Figure::operator=(Figure const &other)
{
    if (this == &other)
        return *this;
    setRoot(other.root_->clone(nullptr));
    setTokenInterface(other.tokenInterface_);
    setChartInterface(other.chartInterface_);
    setImageInterface(other.imageInterface_);
    size_ = other.size_;
    background_ = other.background_;
    invalidatePage_ = other.invalidatePage_;
    return *this;
}

Figure::~Figure()
{
    if (chartInterface_)
        chartInterface_->unregisterFigureForUpdate(this);
    if (imageInterface_)
        imageInterface_->unregisterFigureForUpdate(this);
    // A receiver may unregister itself, or another, while the list is walked.
    std::vector<Invalidator *> const told = invalidators_;
    for (Invalidator *invalidator : told)
        invalidator->figureDeleted(this);
    elementsScriptObject_.reset();
    delete root_;
}

void Figure::createScriptObjects()
{
    auto *scriptObject = new NoTokenScriptObject;
    scriptObject->setTObject(this);
    setScriptObject(scriptObject);
    elementsScriptObject_ = std::make_unique<NoTokenScriptObject>();
    elementsScriptObject_->setCategory(ELEMENTS_CATEGORY);
    elementsScriptObject_->setParent(scriptObject);
}

/// The root is no addressable child of the element container.
void Figure::adoptRoot(Group *root)
{
    root_ = root;
    root->setFigure(this);
    root->getScriptObject()->setParent(nullptr);
}

void Figure::setRoot(Group *root)
{
    unlistAll();
    if (root != root_)
        delete root_;
    adoptRoot(root);
    for (auto it = getElementBegin(); it != getElementEnd(); ++it)
        it->setFigure(this);
}

void Figure::setChartInterface(ChartInterface *chartInterface)
{
    // Charts register with the new one when they are updated.
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (auto *chart = dynamic_cast<GenericChart *>(*it)) {
            chart->unregisterToken();
            chart->invalidate();
        }
    }
    if (chartInterface_)
        chartInterface_->unregisterFigureForUpdate(this);
    chartInterface_ = chartInterface;
    if (chartInterface_)
        chartInterface_->registerFigureForUpdate(this);
}

void Figure::setImageInterface(ImageInterface *imageInterface)
{
    if (imageInterface_)
        imageInterface_->unregisterFigureForUpdate(this);
    imageInterface_ = imageInterface;
    if (imageInterface_)
        imageInterface_->registerFigureForUpdate(this);
}

void Figure::registerInvalidator(Invalidator *invalidator)
{
    if (std::find(invalidators_.begin(), invalidators_.end(), invalidator) != invalidators_.end())
        throw ProgError("Zem::Fig2::Figure::registerInvalidator", "fig_figure", __LINE__,
                        "Invalidator already registered");
    invalidators_.push_back(invalidator);
}

void Figure::unregisterInvalidator(Invalidator *invalidator)
{
    std::erase(invalidators_, invalidator);
}

bool Figure::updateElements(StageIdentifier const &stage, Polygon2d *modified, bool (*wanted)(Element::Type_t))
{
    bool changed = false;
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (wanted(it->getType()) && it->update(stage, tokenInterface_, modified))
            changed = true;
    }
    return changed;
}

namespace {

/// The elements that must be recomputed.
ElementSet collectDirty(Figure *figure, StageIdentifier const &stage, bool force)
{
    ElementSet dirty;
    FigureTokenInterface const *tokens = figure->getTokenInterface();
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        if (force)
            dirty.insert(*it);
        else if (!it->isValid() || !it->isDataValid(stage, tokens))
            collectConnectedElements(*it, &dirty);
    }
    return dirty;
}

void invalidateAncestors(ElementSet const &elements)
{
    for (Element const *element : elements) {
        for (Group *group = element->getParent(); group; group = group->getParent())
            group->invalidate();
    }
}

} // namespace

bool Figure::update(StageIdentifier const &stage, bool force)
{
    if (!tokenInterface_)
        return false;
    ElementSet const dirty = collectDirty(this, stage, force);
    for (Element *element : dirty)
        element->invalidate();

    Polygon2d modified(true);
    bool changed = false;
    for (auto wanted : {isImageLabel, isLegend, isImageOrChart, isAnyOther})
        changed |= updateElements(stage, &modified, wanted);
    // Groups come last, so that their outline is computed from fresh data.
    invalidateAncestors(dirty);
    changed |= updateElements(stage, &modified, isGroup);

    if (invalidatePage_) {
        modified = rectangle(0.0, 0.0, size_.x, size_.y);
        invalidatePage_ = false;
    }
    if (modified.empty() && changed)
        throw ProgError("Zem::Fig2::Figure::update", "fig_figure", __LINE__, "Modified, but no polygon");
    if (!modified.empty()) {
        for (Invalidator *invalidator : invalidators_)
            invalidator->invalidateArea(modified);
    }
    return changed;
}

void Figure::drawBackground(Painter *painter) const
{
    if (background_.getFilled())
        painter->drawRect({0.0, 0.0}, size_, LineStyle::null, background_, Rotation::null);
}

void Figure::drawConnectorLines(Painter *painter) const
{
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (auto const *label = dynamic_cast<LabelBase const *>(*it))
            label->drawConnectorLine(painter);
    }
}

void Figure::draw(Painter *painter) const
{
    drawBackground(painter);
    if (!tokenInterface_)
        return;
    drawConnectorLines(painter);
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        for (int step = 0; !it->draw(tokenInterface_, painter, step); ++step) {
        }
    }
}

namespace {

/// An image and the labels that belong to it, visible or not, those of the highest priority first.
void appendImage(Element const *element, std::vector<Element const *> *order)
{
    auto const *image = dynamic_cast<ImageBase const *>(element);
    if (!image)
        throw ProgError("Zem::Fig2::Figure::computeRenderingOrder", "fig_figure", __LINE__,
                        "Image element cast failed");
    order->push_back(image);
    std::vector<ImageLabel *> labels;
    image->collectImageLabels(&labels);
    std::stable_sort(labels.begin(), labels.end(),
                     [](ImageLabel *a, ImageLabel *b) { return a->getDrawingPriority() > b->getDrawingPriority(); });
    order->insert(order->end(), labels.begin(), labels.end());
}

} // namespace

void Figure::computeRenderingOrder(std::vector<Element const *> *order) const
{
    order->clear();
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (!it->getVisible())
            continue;
        if (it->getType() >= Element::NUMBER_OF_TYPES)
            throw ProgError("Zem::Fig2::Figure::computeRenderingOrder", "fig_figure", __LINE__,
                            "type does not belong to a figure element");
        if (isImageOrFrame(it->getType()))
            appendImage(*it, order);
        else if (!isImageLabel(it->getType()))
            order->push_back(*it);
    }
}

Element *Figure::topLevelElement(Element *element) const
{
    if (element == root_)
        return nullptr;
    while (element && element->getParent() != root_)
        element = element->getParent();
    return element;
}

void Figure::selectElement(Element *element, bool selected)
{
    if (!selected)
        element->setSelected(false);
    Element *top = topLevelElement(element);
    if (top && top->getVisible() && top->isSelected() != selected)
        top->setSelected(selected);
}

void Figure::clearSelection()
{
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (!it->selected_)
            continue;
        // Not by setSelected, which looks each time whether the rest of the group is selected.
        it->selected_ = false;
        it->invalidate();
    }
    unlistAll();
}

void Figure::list(Element *top)
{
    selectionPlaces_.emplace(top, selection_.insert(selection_.end(), top));
}

void Figure::unlist(Element const *top)
{
    auto const found = selectionPlaces_.find(top);
    if (found == selectionPlaces_.end())
        return;
    selection_.erase(found->second);
    selectionPlaces_.erase(found);
}

void Figure::unlistAll()
{
    selection_.clear();
    selectionPlaces_.clear();
}

bool Figure::isTopLevelSelected(Element const *top) const
{
    auto const *group = dynamic_cast<Group const *>(top);
    if (!group)
        return top->isSelected() && top->getVisible();
    if (group->isSelected())
        return true;
    return std::any_of(group->getElementBegin(), group->getElementEnd(), [](Element const *element) {
        return element->getType() != Element::GROUP && element->isSelected() && element->getVisible();
    });
}

void Figure::updateElementSelection(Element *element)
{
    Element *top = topLevelElement(element);
    if (!top)
        return;
    bool const selected = isTopLevelSelected(top);
    if (selected && !isListed(top))
        list(top);
    else if (!selected)
        unlist(top);
}

/// `element` leaves the tree; `group` is where it stood, which may have been selected for its sake only.
void Figure::forgetSelection(Element const *element, Group *group)
{
    unlist(element);
    Element *top = topLevelElement(group);
    if (isListed(top) && !isTopLevelSelected(top))
        unlist(top);
}

namespace {

/// Labels without connectors hide when they say so, image labels also when they are not drawn.
bool isHittable(Element const *element, FigureTokenInterface const *tokens)
{
    auto const *imageLabel = dynamic_cast<ImageLabel const *>(element);
    if (imageLabel && !imageLabel->isLabelDrawn(tokens))
        return false;
    auto const *label = dynamic_cast<LabelBase const *>(element);
    if (!label || label->getDrawUnconnected() || label->getConnectorBegin() != label->getConnectorEnd())
        return true;
    return label->isConnectorVisible(tokens);
}

} // namespace

Element *Figure::getElementAt(BaVec2d<double> const &point) const
{
    Element *hit = nullptr;
    for (auto it = root_->getElementBegin(); it != root_->getElementEnd(); ++it) {
        if (it->getVisible() && it->isPointIn(point) && isHittable(*it, tokenInterface_))
            hit = *it;
    }
    return hit ? topLevelElement(hit) : nullptr;
}

bool Figure::isInBounds(Polygon2d const &polygon) const
{
    double const tx = PAGE_RIM * size_.x;
    double const ty = PAGE_RIM * size_.y;
    return rectangle(tx, ty, size_.x - tx, size_.y - ty).overlap(polygon);
}

bool Figure::isInBounds(Element const *element) const
{
    return isInBounds(element->computeCoveredPolygon(false));
}

bool Figure::removeEmptyGroups()
{
    std::vector<Group *> groups;
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if (auto *group = dynamic_cast<Group *>(*it))
            groups.push_back(group);
    }
    bool removed = false;
    // From the inside out: a removal may leave the group above empty.
    for (auto it = groups.rbegin(); it != groups.rend(); ++it) {
        Group *group = *it;
        if (group->getChildBegin() != group->getChildEnd())
            continue;
        group->getParent()->removeChild(group);
        delete group;
        removed = true;
    }
    return removed;
}

bool Figure::isTokenUsed(QString const &token) const
{
    return std::any_of(getElementBegin(), getElementEnd(),
                       [&token](Element const *element) { return element->isTokenUsed(token); });
}

namespace {

void appendElement(Element const *element, int depth, QString *text)
{
    QString const prefix = depth == 0 ? QString() : QLatin1Char('|') + QString(4 * depth - 1, QLatin1Char('-'));
    QString const following = depth == 0 ? QString() : QLatin1Char('|') + QString(4 * depth - 1, QLatin1Char(' '));
    QString parameters = element->getParameterString();
    if (parameters.endsWith(QLatin1Char('\n')))
        parameters.chop(1);
    bool first = true;
    for (QString const &line : parameters.split(QLatin1Char('\n'))) {
        *text += (first ? prefix : following) + line + QLatin1Char('\n');
        first = false;
    }
    auto const *group = dynamic_cast<Group const *>(element);
    if (!group)
        return;
    for (auto child = group->getChildBegin(); child != group->getChildEnd(); ++child)
        appendElement(*child, depth + 1, text);
}

} // namespace

QString Figure::toString() const
{
    QString text;
    appendElement(root_, 0, &text);
    return text;
}

unsigned int Figure::getEstimatedObjectSize() const
{
    return root_->getEstimatedObjectSize() +
           static_cast<unsigned int>(sizeof(Figure) + selection_.size() * 6 * sizeof(Element *) +
                                     invalidators_.capacity() * sizeof(Invalidator *));
}

void Figure::elementsLoaded()
{
}

} // namespace Zem::Fig2
