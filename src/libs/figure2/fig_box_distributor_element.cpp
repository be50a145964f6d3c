#include "fig_box_distributor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Zem::Fig2 {

namespace {

using TextBox = BoxDistributor::TextBox;

constexpr double POINT_SQUARE_SIDE = 2.0;
constexpr double POINT_SQUARE_DISTANCE = 0.1;
constexpr double PUSH_GAP = 0.1;
constexpr int MAXIMUM_PUSHES = 2;
constexpr std::size_t FIRST_COST_FACTOR = 5;
constexpr double INVALID_COST = std::numeric_limits<double>::max();

/// A place to try, and where to go when it is taken.
struct Candidate
{
    BaVec2d<double> pos;
    BoxDistributor::Direction_t push;
};

using Candidates = std::array<Candidate, 8>;

/// The places around a point in the order of preference: with neighbours to the sides above and below it first, else
/// to its left and right.
Candidates candidatesAround(BaVec2d<double> const &point, BaVec2d<double> const &size, BaVec2d<double> const &distance,
                            bool isSideways)
{
    double const left = point.x - size.x - distance.x;
    double const middleX = point.x - size.x / 2.0;
    double const right = point.x + distance.x;
    double const above = point.y - size.y - distance.y;
    double const middleY = point.y - size.y / 2.0;
    double const below = point.y + distance.y;
    if (isSideways)
        return {{{{left, above}, BoxDistributor::DIRECTION_UP},
                 {{middleX, above}, BoxDistributor::DIRECTION_UP},
                 {{right, above}, BoxDistributor::DIRECTION_UP},
                 {{left, below}, BoxDistributor::DIRECTION_DOWN},
                 {{middleX, below}, BoxDistributor::DIRECTION_DOWN},
                 {{right, below}, BoxDistributor::DIRECTION_DOWN},
                 {{left, middleY}, BoxDistributor::DIRECTION_LEFT},
                 {{right, middleY}, BoxDistributor::DIRECTION_RIGHT}}};
    return {{{{left, above}, BoxDistributor::DIRECTION_LEFT},
             {{left, middleY}, BoxDistributor::DIRECTION_LEFT},
             {{left, below}, BoxDistributor::DIRECTION_LEFT},
             {{right, above}, BoxDistributor::DIRECTION_RIGHT},
             {{right, middleY}, BoxDistributor::DIRECTION_RIGHT},
             {{right, below}, BoxDistributor::DIRECTION_RIGHT},
             {{middleX, above}, BoxDistributor::DIRECTION_UP},
             {{middleX, below}, BoxDistributor::DIRECTION_DOWN}}};
}

/// The way to the two nearest other points taken together. The second neighbour is the one that was the nearest before,
/// deliberately not the second nearest; one that is missing adds nothing.
BaVec2d<double> wayToNeighbours(std::vector<TextBox const *> const &all, TextBox const *box)
{
    BaVec2d<double> const &point = box->getPoint();
    TextBox const *nearest = nullptr;
    TextBox const *replaced = nullptr;
    double dist2 = std::numeric_limits<double>::infinity();
    for (TextBox const *other : all) {
        double const distance = squaredDistance(other->getPoint(), point);
        if (other == box || !(distance < dist2))
            continue;
        replaced = nearest;
        nearest = other;
        dist2 = distance;
    }
    BaVec2d<double> way;
    for (TextBox const *neighbour : {nearest, replaced}) {
        if (neighbour)
            way += neighbour->getPoint() - point;
    }
    return way;
}

void pushPast(Rect const &obstacle, BoxDistributor::Direction_t direction, Rect *rect)
{
    switch (direction) {
    case BoxDistributor::DIRECTION_LEFT:
        rect->x = obstacle.x - rect->width - PUSH_GAP;
        break;
    case BoxDistributor::DIRECTION_RIGHT:
        rect->x = obstacle.x + obstacle.width + PUSH_GAP;
        break;
    case BoxDistributor::DIRECTION_UP:
        rect->y = obstacle.y - rect->height - PUSH_GAP;
        break;
    case BoxDistributor::DIRECTION_DOWN:
        rect->y = obstacle.y + obstacle.height + PUSH_GAP;
        break;
    }
}

bool isOnPage(Rect const &rect, BaVec2d<double> const &pageSize)
{
    return rect.x >= 0.0 && rect.y >= 0.0 && rect.x + rect.width <= pageSize.x && rect.y + rect.height <= pageSize.y;
}

double distanceToCenter(BaVec2d<double> const &point, Rect const &rect)
{
    return (BaVec2d<double>(rect.x + rect.width * 0.5, rect.y + rect.height * 0.5) - point).length();
}

/// Pushes the rectangle past what it overlaps. The result is what that costs.
double pushFree(BoxDistributor::Obstacles const &obstacles, BaVec2d<double> const &point,
                BoxDistributor::Direction_t direction, double factor, Rect *rect)
{
    double cost = 0.0;
    for (int pushes = 0;; ++pushes) {
        TextBox const *obstacle = obstacles.firstMeeting(*rect);
        if (!obstacle)
            return cost;
        if (pushes == MAXIMUM_PUSHES)
            return INVALID_COST;
        pushPast(obstacle->getRect(), direction, rect);
        cost += factor * distanceToCenter(point, *rect);
    }
}

} // namespace

void BoxDistributor::sortForElements(BaVec2d<double> const &focal)
{
    for (auto const &box : textBoxes_)
        box->setSortKeys(squaredDistance(box->getPoint(), focal), -(box->getRect().width * box->getRect().height));
    std::stable_sort(textBoxes_.begin(), textBoxes_.end(),
                     [](auto const &a, auto const &b) { return TextBox()(*a, *b); });
}

void BoxDistributor::addPointSquares()
{
    Boxes squares;
    for (Boxes const *boxes : {&fixedBoxes_, &textBoxes_}) {
        for (auto const &box : *boxes) {
            if (!box->hasPoint())
                continue;
            auto square = std::make_unique<TextBox>();
            square->setPos(box->getPoint() - BaVec2d<double>(POINT_SQUARE_SIDE, POINT_SQUARE_SIDE) * 0.5);
            square->setSize({POINT_SQUARE_SIDE, POINT_SQUARE_SIDE});
            square->setMinEdgeFree(POINT_SQUARE_DISTANCE);
            square->setMinBoxDist(POINT_SQUARE_DISTANCE);
            squares.push_back(std::move(square));
        }
    }
    std::move(squares.begin(), squares.end(), std::back_inserter(fixedBoxes_));
}

void BoxDistributor::placeAtPoint(Obstacles const &obstacles, std::vector<TextBox const *> const &all,
                                  TextBox *box) const
{
    BaVec2d<double> const &point = box->getPoint();
    BaVec2d<double> const size(box->getRect().width, box->getRect().height);
    BaVec2d<double> const way = wayToNeighbours(all, box);
    Candidates const candidates =
        candidatesAround(point, size, getElementDistance(), std::abs(way.y) < std::abs(way.x));
    // Without a valid candidate the box goes to the upper left, where both orders begin.
    BaVec2d<double> best = candidates[0].pos;
    double lowest = INVALID_COST;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        Rect rect(candidates[i].pos, size);
        auto const factor = static_cast<double>(i + FIRST_COST_FACTOR);
        double const cost = pushFree(obstacles, point, candidates[i].push, factor, &rect);
        if (cost < lowest && isOnPage(rect, {width_, height_})) {
            lowest = cost;
            best = rect.p0();
        }
    }
    box->setPos(best);
}

void BoxDistributor::placeAtElement(StageIdentifier const &stage)
{
    if (!canPlace())
        return;
    std::vector<TextBox const *> all;
    for (auto const &box : textBoxes_)
        all.push_back(box.get());
    sortForElements(calcFocalPoint());
    addPointSquares();
    Obstacles obstacles(Obstacles::RULE_OVERLAPPING, search_, {width_, height_}, fixedBoxes_, textBoxes_.size());
    while (!textBoxes_.empty()) {
        TextBox *box = textBoxes_.back().get();
        placeAtPoint(obstacles, all, box);
        fixLastTextBox();
        obstacles.add(box);
    }
    updateElements(stage);
}

} // namespace Zem::Fig2
