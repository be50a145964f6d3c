#include "ZemFig2Group.h"

#include "ZemFig2Connector.h"
#include "ZemFig2Figure.h"
#include "fig_find.h"

#include <ZemError.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

namespace Zem::Fig2 {

namespace {

constexpr std::size_t HULL_POINTS = 4; ///< from this number of points on an outline becomes its convex hull

Polygon2d hullOf(Polygon2d const &polygon)
{
    return polygon.size() < HULL_POINTS ? polygon : polygon.getConvexHull();
}

} // namespace

template <class Visit>
void Group::forEachLeaf(Visit const &visit) const
{
    for (auto it = getElementBegin(); it != getElementEnd(); ++it) {
        if ((*it)->getType() != GROUP)
            visit(const_cast<Element *>(*it));
    }
}

Group::Group() : Element(GROUP)
{
}

Group::Group(Group const &other) : Element(other)
{
    children_.reserve(other.children_.size());
    for (Element const *child : other.children_) {
        children_.push_back(child->copy());
        children_.back()->setParent(this);
    }
    copyMaster(other);
    setFigureBelow(getFigure());
}

/// Makes the element the master that stands where the master of `other` stands: the child itself, so that it is known
/// when it leaves, or the element at the same place of the walk when the master is no child.
void Group::copyMaster(Group const &other)
{
    auto const found = std::find(other.children_.begin(), other.children_.end(), other.masterElement_);
    if (found != other.children_.end()) {
        masterElement_ = children_[static_cast<std::size_t>(found - other.children_.begin())];
        return;
    }
    masterElement_ = children_.empty() ? nullptr : children_.front();
    auto copied = getElementBegin();
    for (auto source = other.getElementBegin(); source != other.getElementEnd(); ++source, ++copied) {
        if (*source == other.masterElement_)
            masterElement_ = *copied;
    }
}

Group::~Group()
{
    // The last first: so each takes its connectors from the ends of the lists of those before it.
    for (auto it = children_.rbegin(); it != children_.rend(); ++it)
        deleteOrRelease(*it);
}

/// An element that others manage lives on; it must not reach for a figure that may be gone before it.
void Group::deleteOrRelease(Element *child)
{
    if (!child->isExternallyManaged()) {
        delete child;
        return;
    }
    child->setParent(nullptr);
    leaveFigure(child);
}

/// The element with all that stands below it.
void Group::leaveFigure(Element *element)
{
    element->setFigure(nullptr);
    if (auto *group = dynamic_cast<Group *>(element))
        group->setFigureBelow(nullptr);
}

void Group::deleteChildren()
{
    std::vector<Element *> const children = std::move(children_);
    children_.clear();
    masterElement_ = nullptr;
    for (Element *child : children) {
        if (getFigure())
            getFigure()->forgetSelection(child, this);
        deleteOrRelease(child);
    }
}

Group *Group::clone(std::map<Element const *, Element *> *copies) const
{
    auto result = std::make_unique<Group>(*this);
    std::map<Element const *, Element *> pairs;
    auto copied = result->getElementBegin();
    for (auto source = getElementBegin(); source != getElementEnd(); ++source, ++copied)
        pairs.emplace(*source, *copied);
    for (auto source = getElementBegin(); source != getElementEnd(); ++source) {
        for (auto it = source->getConnectorBegin(); it != source->getConnectorEnd(); ++it) {
            auto const target = pairs.find((*it)->getTarget());
            if ((*it)->getSource() == *source && target != pairs.end())
                pairs.at(*source)->connect(target->second, (*it)->getTargetName());
        }
    }
    if (copies)
        copies->insert(pairs.begin(), pairs.end());
    return result.release();
}

void Group::setFigureBelow(Figure *figure)
{
    for (auto it = getElementBegin(); it != getElementEnd(); ++it)
        it->setFigure(figure);
}

namespace {

bool holdsSelected(Element const *element)
{
    auto const *group = dynamic_cast<Group const *>(element);
    return group ? std::any_of(group->getElementBegin(), group->getElementEnd(), std::mem_fn(&Element::isSelected))
                 : element->isSelected();
}

} // namespace

void Group::addChild(Element *element, Element const *predecessor)
{
    if (element->getParent() == this && childExists(element))
        throw ProgError("Zem::Fig2::Group::addChild", "fig_group", __LINE__, "Element already inserted");
    auto place = children_.end();
    if (predecessor) {
        // From the end: mostly the predecessor is the child added last.
        place = std::find(children_.rbegin(), children_.rend(), predecessor).base();
        if (place == children_.begin())
            throw ProgError("Zem::Fig2::Group::addChild", "fig_group", __LINE__, "Predecessor element not found");
    }
    children_.insert(place, element);
    if (!masterElement_)
        masterElement_ = element;
    element->setParent(this);
    element->setFigure(getFigure());
    if (auto *group = dynamic_cast<Group *>(element))
        group->setFigureBelow(getFigure());
    invalidate();
    // Nothing else can have changed the selection: looking at every sibling each time would cost too much.
    if (getFigure() && holdsSelected(element))
        getFigure()->updateElementSelection(this);
}

void Group::removeChild(Element *element)
{
    auto const place = findFromEnds(children_, element);
    if (place == children_.end())
        throw ProgError("Zem::Fig2::Group::removeChild", "fig_group", __LINE__, "Element is not a child element");
    children_.erase(place);
    release(element);
}

/// The rest of what has to be done for an element that is no child any more.
void Group::release(Element *child)
{
    child->setSelected(false);
    child->setParent(nullptr);
    leaveFigure(child);
    if (masterElement_ == child)
        masterElement_ = children_.empty() ? nullptr : children_.front();
    invalidate();
    if (Figure *figure = getFigure())
        figure->forgetSelection(child, this);
}

std::vector<Element *> Group::removeChildren(std::function<bool(Element const *)> const &wanted)
{
    std::vector<Element *> kept;
    std::vector<Element *> removed;
    std::partition_copy(children_.begin(), children_.end(), std::back_inserter(removed), std::back_inserter(kept),
                        wanted);
    children_ = std::move(kept);
    for (Element *child : removed)
        release(child);
    return removed;
}

namespace {

/// What is needed to make a connector of a replaced element again.
struct ConnectorEnds
{
    Element *other;
    QString oldSideName;
    QString otherSideName;
};

bool isBelow(Element const *element, Element const *ancestor)
{
    while (element && element != ancestor)
        element = element->getParent();
    return element == ancestor;
}

/// Without those that lead to an element below this one, which goes with it.
std::vector<ConnectorEnds> endsOf(Element const *element)
{
    std::vector<ConnectorEnds> ends;
    for (auto it = element->getConnectorBegin(); it != element->getConnectorEnd(); ++it) {
        Connector const *connector = *it;
        if (connector->getSource() == element)
            ends.push_back({connector->getTarget(), connector->getSourceName(), connector->getTargetName()});
        else
            ends.push_back({connector->getSource(), connector->getTargetName(), connector->getSourceName()});
        if (!ends.back().other || isBelow(ends.back().other, element))
            ends.pop_back();
    }
    return ends;
}

void connectIfAccepted(Element *source, Element *target, QString const &point)
{
    if (source->canConnectTo(target, point))
        source->connect(target, point);
}

/// With both names empty the new connector always runs towards the new element, whatever way it ran before.
void connectAgain(ConnectorEnds const &ends, Element *newElement)
{
    if (!ends.oldSideName.isEmpty())
        connectIfAccepted(ends.other, newElement, ends.oldSideName);
    else if (ends.otherSideName.isEmpty())
        connectIfAccepted(ends.other, newElement, QString());
    else
        connectIfAccepted(newElement, ends.other, ends.otherSideName);
}

} // namespace

void Group::replaceChild(Element *oldElement, Element *newElement)
{
    auto const place = std::find(children_.begin(), children_.end(), oldElement);
    if (place == children_.end())
        throw ProgError("Zem::Fig2::Group::replaceChild", "fig_group", __LINE__, "Element is not a child element");
    if (newElement == oldElement)
        return;
    std::vector<ConnectorEnds> const ends = endsOf(oldElement);
    invalidate();
    *place = newElement;
    newElement->setParent(this);
    newElement->setFigure(getFigure());
    if (auto *group = dynamic_cast<Group *>(newElement))
        group->setFigureBelow(getFigure());
    if (masterElement_ == oldElement)
        masterElement_ = newElement;

    oldElement->setSelected(false);
    oldElement->setParent(nullptr);
    oldElement->setFigure(nullptr);
    if (getFigure())
        getFigure()->forgetSelection(oldElement, this);
    delete oldElement;

    for (ConnectorEnds const &end : ends)
        connectAgain(end, newElement);
}

bool Group::childExists(Element const *element) const
{
    return std::find(children_.begin(), children_.end(), element) != children_.end();
}

Element *Group::getMasterElement() const
{
    auto const *group = dynamic_cast<Group const *>(masterElement_);
    return group ? group->getMasterElement() : masterElement_;
}

void Group::setMasterElement(Element *element)
{
    masterElement_ = element;
    invalidate();
}

/// All alignments of a group are those of its master.
Element *Group::findAlignmentElement(Alignment_t, Alignment_t) const
{
    return masterElement_;
}

std::size_t Group::findChildIndex(Element const *element) const
{
    auto const place = std::find(children_.begin(), children_.end(), element);
    if (place == children_.end())
        throw ProgError("Zem::Fig2::Group::findChildIndex", "fig_group", __LINE__, "Child element not found");
    return static_cast<std::size_t>(place - children_.begin());
}

std::size_t Group::requireLayerChild(Element const *element, char const *function) const
{
    if (children_.empty())
        throw ProgError(function, "fig_group", __LINE__, "Empty group");
    return findChildIndex(element);
}

bool Group::canLayerUp(Element const *element) const
{
    return requireLayerChild(element, "Zem::Fig2::Group::canLayerUp") + 1 < children_.size();
}

bool Group::canLayerDown(Element const *element) const
{
    return requireLayerChild(element, "Zem::Fig2::Group::canLayerDown") != 0;
}

void Group::swapLayers(std::size_t lower)
{
    std::swap(children_[lower], children_[lower + 1]);
}

namespace {

void requireMovable(bool movable, char const *function)
{
    if (!movable)
        throw ProgError(function, "fig_group", __LINE__, "Element layer can't be changed");
}

} // namespace

void Group::layerUp(Element const *element)
{
    requireMovable(canLayerUp(element), "Zem::Fig2::Group::layerUp");
    swapLayers(findChildIndex(element));
}

void Group::layerDown(Element const *element)
{
    requireMovable(canLayerDown(element), "Zem::Fig2::Group::layerDown");
    swapLayers(findChildIndex(element) - 1);
}

void Group::layerTop(Element const *element)
{
    requireMovable(canLayerUp(element), "Zem::Fig2::Group::layerTop");
    auto const place = children_.begin() + static_cast<std::ptrdiff_t>(findChildIndex(element));
    std::rotate(place, place + 1, children_.end());
}

void Group::layerBottom(Element const *element)
{
    requireMovable(canLayerDown(element), "Zem::Fig2::Group::layerBottom");
    auto const place = children_.begin() + static_cast<std::ptrdiff_t>(findChildIndex(element));
    std::rotate(children_.begin(), place, place + 1);
}

Element *Group::copy() const
{
    return new Group(*this);
}

unsigned int Group::getEstimatedObjectSize() const
{
    auto size = static_cast<unsigned int>(sizeof(Group) - sizeof(Element) + children_.capacity() * sizeof(Element *));
    size += Element::getEstimatedObjectSize();
    for (Element const *child : children_)
        size += child->getEstimatedObjectSize();
    return size;
}

bool Group::isTokenUsed(QString const &) const
{
    return false;
}

bool Group::isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const
{
    return std::all_of(children_.begin(), children_.end(),
                       [&](Element const *child) { return child->isValid() && child->isDataValid(stage, tokens); });
}

Polygon2d Group::computeCoveredPolygon(bool includeBorder) const
{
    Polygon2d points(true);
    for (Element const *child : children_) {
        Polygon2d const outline = child->computeCoveredPolygon(includeBorder);
        for (BaVec2d<double> const &point : outline.getPoints())
            points.addPoint(point);
    }
    return hullOf(points);
}

bool Group::draw(FigureTokenInterface const *, Painter *, int) const
{
    return true;
}

bool Group::isPointIn(BaVec2d<double> const &point) const
{
    return std::any_of(children_.begin(), children_.end(),
                       [&point](Element const *child) { return child->isPointIn(point); });
}

void Group::setOrigin(BaVec2d<double> const &origin)
{
    if (children_.empty() || !masterElement_)
        throw ProgError("Zem::Fig2::Group::setOrigin", "fig_group", __LINE__, "Empty group");
    BaVec2d<double> const delta = origin - masterElement_->getOrigin();
    forEachLeaf([&delta](Element *leaf) { leaf->setOrigin(leaf->getOrigin() + delta); });
    invalidate();
}

BaVec2d<double> const &Group::getOrigin() const
{
    if (children_.empty() || !masterElement_)
        throw ProgError("Zem::Fig2::Group::getOrigin", "fig_group", __LINE__, "Group does not have any children");
    return masterElement_->getOrigin();
}

void Group::setAlignmentOrigin(BaVec2d<double> const &point)
{
    setOrigin(getOrigin() + point - getAlignmentOrigin());
    invalidate();
}

BaVec2d<double> Group::getAlignmentOrigin() const
{
    if (children_.empty() || !masterElement_)
        throw ProgError("Zem::Fig2::Group::getAlignmentOrigin", "fig_group", __LINE__, "Group has no elements");
    return findAlignmentElement(getPivotAlignmentX(), getPivotAlignmentY())->getAlignmentOrigin();
}

void Group::computeDynamicData(StageIdentifier const &, FigureTokenInterface const *)
{
    dragPolygon_ = computeCoveredPolygon(false);
    coveredPolygon_ = computeCoveredPolygon(true);
    updatePolygon_ = coveredPolygon_;
}

bool Group::update(FigureTokenInterface const *, Polygon2d *)
{
    Polygon2d drag(true);
    Polygon2d covered(true);
    forEachLeaf([&](Element const *leaf) {
        drag.addPolygon(leaf->getDragPolygon());
        covered.addPolygon(leaf->getCoveredPolygon());
    });
    dragPolygon_ = hullOf(drag);
    coveredPolygon_ = hullOf(covered);
    updatePolygon_ = coveredPolygon_;
    return false;
}

/// How a drag of one outline point scales the points of the elements: a point at the far side stays, one at the side of
/// the anchor follows fully.
struct Group::DragScale
{
    BaVec2d<double> delta;
    BaVec2d<double> far;
    BaVec2d<double> extent;

    static DragScale of(Polygon2d const &outline, BaVec2d<double> const &anchor, BaVec2d<double> const &position)
    {
        DragScale scale{position - anchor, anchor, {0.0, 0.0}};
        for (BaVec2d<double> const &point : outline.getPoints()) {
            raise(point.x, anchor.x, &scale.far.x, &scale.extent.x);
            raise(point.y, anchor.y, &scale.far.y, &scale.extent.y);
        }
        return scale;
    }

    static void raise(double place, double anchor, double *farPlace, double *length)
    {
        if (std::abs(place - anchor) <= *length)
            return;
        *farPlace = place;
        *length = std::abs(place - anchor);
    }

    static double share(double shift, double place, double farPlace, double length)
    {
        return length <= 1e-50 ? 0.0 : shift * std::abs(place - farPlace) / length;
    }

    BaVec2d<double> applyTo(BaVec2d<double> const &point) const
    {
        return {point.x + share(delta.x, point.x, far.x, extent.x), point.y + share(delta.y, point.y, far.y, extent.y)};
    }
};

bool Group::dragLeaf(Element *leaf, DragScale const &scale, std::map<Element *, QString> *before)
{
    before->emplace(leaf, leaf->getParameterString());
    Polygon2d const points = leaf->getDragPolygon();
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!leaf->dragPointMove(static_cast<int>(i), scale.applyTo(points[i])))
            return false;
    }
    return true;
}

bool Group::dragPointMove(int index, BaVec2d<double> const &position)
{
    if (index < 0 || static_cast<std::size_t>(index) >= dragPolygon_.size())
        return false;
    DragScale const scale = DragScale::of(dragPolygon_, dragPolygon_[static_cast<std::size_t>(index)], position);
    std::map<Element *, QString> before;
    bool dragged = true;
    try {
        forEachLeaf([&](Element *leaf) { dragged = dragged && dragLeaf(leaf, scale, &before); });
    } catch (...) {
        undoDrag(before);
        throw;
    }
    Rect const bounds(computeCoveredPolygon(true));
    if (dragged && !(bounds.width < 1.0) && !(bounds.height < 1.0))
        return true;
    undoDrag(before);
    return false;
}

void Group::undoDrag(std::map<Element *, QString> const &before)
{
    for (auto const &[leaf, parameters] : before) {
        QString text = parameters;
        leaf->createFromParameterString(text);
    }
}

} // namespace Zem::Fig2
