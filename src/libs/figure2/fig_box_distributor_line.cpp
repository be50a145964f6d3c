#include "fig_box_distributor.h"

#include <ZemError.h>

#include <algorithm>
#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr int MAXIMUM_PUSHES = 100;
constexpr unsigned int TOO_MANY_CROSSINGS = 3;
constexpr double TOLERANCE = 1e-12;

/// A level or upright line of finite length.
bool isStraight(BaVec2d<double> const &way)
{
    return std::isfinite(way.x) && std::isfinite(way.y) && (way.x == 0.0 || way.y == 0.0);
}

LineSegment2d connectorLine(BoxDistributor::TextBox const &box)
{
    return {box.getPoint(), box.getCenter()};
}

bool isAtEnd(BaVec2d<double> const &point, LineSegment2d const &line)
{
    return (point - line.first).length() <= TOLERANCE || (point - line.second).length() <= TOLERANCE;
}

bool cross(LineSegment2d const &a, LineSegment2d const &b)
{
    BaVec2d<double> crossing;
    return a.intersect(b, &crossing) && !isAtEnd(crossing, a) && !isAtEnd(crossing, b);
}

/// `value` between `low` and `high`, the latter winning. Sets `clamped` when it had to change.
double clampTo(double value, double low, double high, bool *clamped)
{
    double const raised = value >= low ? value : low;
    double const result = raised <= high ? raised : high;
    *clamped = !(value >= low) || !(raised <= high);
    return result;
}

} // namespace

BoxDistributor::FreeLine2d::FreeLine2d(Line2d const &line, Direction_t direction)
{
    setLine(line);
    setDirection(direction);
}

void BoxDistributor::FreeLine2d::setLine(Line2d const &line)
{
    BaVec2d<double> const way = line.second - line.first;
    if (!isStraight(way))
        throw ProgError("Zem::Fig2::BoxDistributor::FreeLine2d::setLine", "fig_box_distributor", __LINE__,
                        "linien muessen senkrecht oder waagerecht sein");
    bool const turned = way.x < 0.0 || way.y < 0.0;
    line_ = turned ? Line2d(line.second, line.first) : line;
    lengthSquared_ = way.dot(way);
}

void BoxDistributor::FreeLine2d::setDirection(Direction_t direction)
{
    direction_ = direction;
    vertical_ = direction == DIRECTION_LEFT || direction == DIRECTION_RIGHT;
}

void BoxDistributor::FreeLine2d::moveSide(Direction_t side, double limit)
{
    bool const isUpright = line_.first.x == line_.second.x;
    bool const isLevel = line_.first.y == line_.second.y;
    Line2d line = line_;
    // A line along the side moves as a whole, of one across it the end on that side. A cut by more than the length
    // leaves the ends the other way round, which setLine turns.
    if (side == DIRECTION_LEFT)
        line.first.x = std::max(line.first.x, limit);
    else if (side == DIRECTION_RIGHT)
        line.second.x = std::min(line.second.x, limit);
    else if (side == DIRECTION_UP)
        line.first.y = std::max(line.first.y, limit);
    else
        line.second.y = std::min(line.second.y, limit);
    bool const isFirst = side == DIRECTION_LEFT || side == DIRECTION_UP;
    BaVec2d<double> const &cut = isFirst ? line.first : line.second;
    BaVec2d<double> &other = isFirst ? line.second : line.first;
    if (isUpright)
        other.x = cut.x;
    if (isLevel)
        other.y = cut.y;
    setLine(line);
}

void BoxDistributor::FreeLine2d::closestEdge(BaVec2d<double> const &point, double *dist2, BaVec2d<double> *edge) const
{
    double const first = squaredDistance(point, line_.first);
    double const second = squaredDistance(point, line_.second);
    *dist2 = first < second ? first : second;
    *edge = first < second ? line_.first : line_.second;
}

bool BoxDistributor::FreeLine2d::isOnStretch(BaVec2d<double> const &point) const
{
    double const along = (point - line_.first).dot(line_.second - line_.first);
    return along >= 0.0 && along <= lengthSquared_;
}

void BoxDistributor::FreeLine2d::closestPoint(BaVec2d<double> const &point, double *dist2,
                                              BaVec2d<double> *closest) const
{
    if (!isOnStretch(point)) {
        closestEdge(point, dist2, closest);
        return;
    }
    *closest = line_.perpend(point);
    *dist2 = squaredDistance(point, *closest);
}

bool BoxDistributor::FreeLine2d::correctBoxPosition(TextBox *box) const
{
    BaVec2d<double> pos = box->getPos();
    Rect const &rect = box->getRect();
    if (direction_ == DIRECTION_LEFT)
        pos.x = line_.first.x - rect.width;
    else if (direction_ == DIRECTION_UP)
        pos.y = line_.first.y - rect.height;
    else
        (vertical_ ? pos.x : pos.y) = vertical_ ? line_.first.x : line_.first.y;
    bool clamped = false;
    if (vertical_)
        pos.y = clampTo(pos.y, line_.first.y, line_.second.y - rect.height, &clamped);
    else
        pos.x = clampTo(pos.x, line_.first.x, line_.second.x - rect.width, &clamped);
    box->setPos(pos);
    return !clamped;
}

/// The line on which the centres of boxes lie that sit on this one.
Line2d BoxDistributor::FreeLine2d::movedAcross(double dx, double dy) const
{
    BaVec2d<double> way;
    if (vertical_)
        way.x = direction_ == DIRECTION_LEFT ? -dx : dx;
    else
        way.y = direction_ == DIRECTION_UP ? -dy : dy;
    return {line_.first + way, line_.second + way};
}

bool BoxDistributor::FreeLine2d::intersects(Line2d const &ray, double *dist2, BaVec2d<double> *hit, double dx,
                                            double dy) const
{
    BaVec2d<double> crossing;
    bool const meets = movedAcross(dx, dy).intersect(ray, &crossing);
    if (!meets || (crossing - ray.first).dot(ray.second - ray.first) < 0.0) {
        *dist2 = -1.0;
        return false;
    }
    if (!isOnStretch(crossing)) {
        closestEdge(crossing, dist2, hit);
        return false;
    }
    *dist2 = squaredDistance(crossing, ray.first);
    *hit = crossing - BaVec2d<double>(dx, dy);
    return true;
}

unsigned int BoxDistributor::FreeLine2d::calcIntersections(Obstacles const &boxes, TextBox const &box, bool all)
{
    LineSegment2d const line = connectorLine(box);
    auto const crosses = [&](TextBox const *other) {
        return other->hasPoint() && (all || TextBox()(*other, box)) && cross(line, connectorLine(*other));
    };
    return static_cast<unsigned int>(std::count_if(boxes.getBoxes().begin(), boxes.getBoxes().end(), crosses));
}

/// The way to slide from the end that is nearer to the box.
int BoxDistributor::FreeLine2d::directionInto(TextBox const &box) const
{
    BaVec2d<double> const center = box.getCenter();
    return squaredDistance(center, line_.second) <= squaredDistance(center, line_.first) ? -1 : 1;
}

void BoxDistributor::FreeLine2d::jumpPast(Rect const &obstacle, TextBox *box, int dir) const
{
    Rect const &rect = box->getRect();
    if (vertical_)
        box->setPosY(dir > 0 ? obstacle.y + obstacle.height + step_ : obstacle.y - rect.height - step_);
    else
        box->setPosX(dir > 0 ? obstacle.x + obstacle.width + step_ : obstacle.x - rect.width - step_);
}

/// Slides along this line alone. False when the box ran off its end.
bool BoxDistributor::FreeLine2d::slide(Obstacles const &boxes, TextBox *box, bool *moved, int dir) const
{
    correctBoxPosition(box);
    if (dir == 0)
        dir = directionInto(*box);
    for (int pushes = 0; pushes < MAXIMUM_PUSHES; ++pushes) {
        TextBox const *obstacle = boxes.firstMeeting(box->getRect());
        if (!obstacle)
            break;
        *moved = true;
        jumpPast(obstacle->getRect(), box, dir);
    }
    return correctBoxPosition(box);
}

BoxDistributor::FreeLine2d const *BoxDistributor::FreeLine2d::moveToNeighbour(TextBox *box) const
{
    if (!prev_ || !next_)
        throw ProgError("Zem::Fig2::BoxDistributor::FreeLine2d::findPlaceInDir", "fig_box_distributor", __LINE__,
                        "<prev> oder <next> in FreeLine2d nicht gesetzt!");
    double toPrev = 0.0;
    double toNext = 0.0;
    BaVec2d<double> prevEdge;
    BaVec2d<double> nextEdge;
    prev_->closestEdge(box->getCenter(), &toPrev, &prevEdge);
    next_->closestEdge(box->getCenter(), &toNext, &nextEdge);
    bool const backwards = toPrev <= toNext;
    box->setPos(backwards ? prevEdge : nextEdge);
    return backwards ? prev_ : next_;
}

bool BoxDistributor::FreeLine2d::findPlaceInDir(Obstacles const &boxes, TextBox *box, bool *moved, int dir,
                                                unsigned int depth, bool choose) const
{
    FreeLine2d const *line = this;
    int way = choose ? 0 : dir;
    for (; depth > 0; --depth) {
        if (line->slide(boxes, box, moved, way))
            return true;
        line = line->moveToNeighbour(box);
        way = 0;
    }
    return false;
}

/// Where sliding one way ended.
struct BoxDistributor::FreeLine2d::Attempt
{
    bool found = false;
    bool moved = false;
    BaVec2d<double> pos;
    unsigned int crossings = 0;
};

BoxDistributor::FreeLine2d::Attempt BoxDistributor::FreeLine2d::attempt(Obstacles const &boxes, TextBox *box, int dir,
                                                                        unsigned int depth) const
{
    Attempt result;
    result.found = findPlaceInDir(boxes, box, &result.moved, dir, depth, false);
    result.pos = box->getPos();
    return result;
}

bool BoxDistributor::FreeLine2d::isFirstBetter(Obstacles const &boxes, TextBox *box, BaVec2d<double> const &start,
                                               Attempt *first, Attempt *second)
{
    auto const count = [&](Attempt *attempt, bool all) {
        box->setPos(attempt->pos);
        attempt->crossings = calcIntersections(boxes, *box, all);
    };
    count(first, false);
    count(second, false);
    if (first->found != second->found)
        return first->found;
    if (first->crossings == second->crossings) {
        count(first, true);
        count(second, true);
    }
    if (first->crossings != second->crossings)
        return first->crossings < second->crossings;
    return squaredDistance(first->pos, start) - TOLERANCE <= squaredDistance(second->pos, start) + TOLERANCE;
}

BoxDistributor::Place_t BoxDistributor::FreeLine2d::findPlace(Obstacles const &boxes, TextBox *box,
                                                              unsigned int depth) const
{
    BaVec2d<double> const start = box->getPos();
    Attempt forwards = attempt(boxes, box, 1, depth);
    if (forwards.found && !forwards.moved)
        return PLACE_GOOD;
    box->setPos(start);
    Attempt backwards = attempt(boxes, box, -1, depth);
    bool const isForwards = isFirstBetter(boxes, box, start, &forwards, &backwards);
    box->setPos(isForwards ? forwards.pos : backwards.pos);
    if (!forwards.found && !backwards.found)
        return PLACE_NONE;
    // Deliberate: the smaller count decides even when the other way was taken.
    return std::min(forwards.crossings, backwards.crossings) < TOO_MANY_CROSSINGS ? PLACE_GOOD : PLACE_CROSSED;
}

} // namespace Zem::Fig2
