#include "page_placement.h"

#include "cli.h"

#include <ZemFig2BoxDistributor.h>
#include <ZemFig2Connector.h>
#include <ZemFig2LabelBase.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace Zem::Zemfig {

using namespace Fig2;

namespace {

using Point = BaVec2d<double>;

/// A label to arrange and the place it points at.
struct Pointer
{
    LabelBase *label;
    Point point;
};

/// What stands on the page, told apart.
struct Contents
{
    std::vector<Pointer> pointers;
    std::vector<Rect> others;
};

bool contains(Rect const &outer, Rect const &inner)
{
    return outer.x <= inner.x && outer.y <= inner.y && outer.p2().x >= inner.p2().x && outer.p2().y >= inner.p2().y;
}

Rect grownBy(Rect const &rect, double distance)
{
    return {rect.x - distance, rect.y - distance, rect.width + 2.0 * distance, rect.height + 2.0 * distance};
}

/// Where the first connector to an element leads, if that is on the page.
std::optional<Point> targetPoint(LabelBase const &label, Figure const &figure)
{
    constexpr double UNSET = std::numeric_limits<double>::max();
    Rect const page({0.0, 0.0}, figure.getSize());
    for (auto it = label.getConnectorBegin(); it != label.getConnectorEnd(); ++it) {
        Point from;
        Point to(UNSET, UNSET);
        // A label above its target has no line, but still a point.
        if ((*it)->getSource() == &label)
            label.computeConnectorPoints(*it, figure.getTokenInterface(), &from, &to);
        if (page.intersects(to))
            return to;
    }
    return std::nullopt;
}

std::optional<Point> pointOf(LabelBase const &label, Figure const &figure)
{
    return label.hasConnectorPoint() ? label.getConnectorPoint() : targetPoint(label, figure);
}

Contents contentsOf(Figure *figure)
{
    Contents contents;
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        Element *element = *it;
        // The children of a group stand for it.
        if (!element->getVisible() || element->getType() == Element::GROUP)
            continue;
        auto *label = dynamic_cast<LabelBase *>(element);
        std::optional<Point> const point = label ? pointOf(*label, *figure) : std::nullopt;
        if (point)
            contents.pointers.push_back({label, *point});
        else if (!element->getCoveredPolygon().empty())
            contents.others.emplace_back(element->getCoveredPolygon());
    }
    return contents;
}

/// The rectangles that the labels must keep clear of.
std::vector<Rect> obstaclesOf(Contents const &contents, Figure const &figure, Placement const &placement)
{
    Rect const inside = grownBy(Rect({0.0, 0.0}, figure.getSize()), -placement.edgeDistance);
    auto const isInTheWay = [&](Rect const &rect) {
        auto const pointsInto = [&rect](Pointer const &pointer) { return rect.intersects(pointer.point); };
        bool const isAnnotated = placement.where == Placement::AT_ELEMENT &&
                                 std::any_of(contents.pointers.begin(), contents.pointers.end(), pointsInto);
        return !contains(rect, inside) && !isAnnotated;
    };
    std::vector<Rect> obstacles;
    std::copy_if(contents.others.begin(), contents.others.end(), std::back_inserter(obstacles), isInTheWay);
    return obstacles;
}

BoxDistributor makeDistributor(Figure const &figure, Placement const &placement)
{
    Point const &size = figure.getSize();
    BoxDistributor distributor(size.x, size.y, placement.edgeDistance, placement.boxDistance);
    if (!distributor.canPlace())
        throw UsageError(QStringLiteral("a page of %1 x %2 has no room for labels within edges of %3")
                             .arg(size.x)
                             .arg(size.y)
                             .arg(placement.edgeDistance));
    distributor.setTokenInterface(figure.getTokenInterface());
    return distributor;
}

void addPointer(Pointer const &pointer, BoxDistributor *distributor)
{
    BoxDistributor::TextBox *box = distributor->addTextBox(pointer.label);
    if (pointer.label->hasConnectorPoint())
        return;
    box->setPoint(pointer.point);
    box->setPos(pointer.point);
}

} // namespace

int arrangeLabels(Figure *figure, StageIdentifier const &stage, Placement const &placement)
{
    BoxDistributor distributor = makeDistributor(*figure, placement);
    Contents const contents = contentsOf(figure);
    for (Rect const &obstacle : obstaclesOf(contents, *figure, placement))
        distributor.addFixedBox(grownBy(obstacle, placement.boxDistance));
    for (Pointer const &pointer : contents.pointers)
        addPointer(pointer, &distributor);
    if (placement.where == Placement::AT_BORDER)
        distributor.distribute(stage);
    else
        distributor.placeAtElement(stage);
    return static_cast<int>(contents.pointers.size());
}

} // namespace Zem::Zemfig
