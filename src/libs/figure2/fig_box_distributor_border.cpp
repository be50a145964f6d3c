#include "fig_box_distributor.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Zem::Fig2 {

namespace {

using TextBox = BoxDistributor::TextBox;

/// Distances must differ by more than this to count.
constexpr double TIE = 2e-12;
constexpr double AT_FOCUS = 1e-12;
constexpr int MAXIMUM_COUNTED_FAILURES = 3;

/// The nearest of the lines that are offered, the earliest on a tie.
class NearestLine
{
public:
    /// Whether the line is now the nearest.
    bool offer(BoxDistributor::FreeLine2d *line, double dist2)
    {
        bool const nearer = dist2 < dist2_ - TIE;
        if (nearer) {
            line_ = line;
            dist2_ = dist2;
        }
        return nearer;
    }
    BoxDistributor::FreeLine2d *get() const { return line_; }

private:
    BoxDistributor::FreeLine2d *line_ = nullptr;
    double dist2_ = std::numeric_limits<double>::infinity();
};

/// Tells when the search has failed once too often. The first failure sets a mark, only later ones count.
class Failures
{
public:
    bool isOneTooMany()
    {
        if (marked_)
            ++count_;
        marked_ = true;
        return count_ > MAXIMUM_COUNTED_FAILURES;
    }

private:
    bool marked_ = false;
    int count_ = 0;
};

} // namespace

void BoxDistributor::findFreeLine2d(Line2d const &ray, TextBox *box, FreeLine2d **out) const
{
    BaVec2d<double> const half(box->getRect().width * 0.5, box->getRect().height * 0.5);
    NearestLine met;
    NearestLine missed;
    BaVec2d<double> place;
    for (auto const &line : freeLines_) {
        double dist2 = 0.0;
        BaVec2d<double> hit;
        if (!line->intersects(ray, &dist2, &hit, half.x, half.y)) {
            if (dist2 > 0.0)
                missed.offer(line.get(), dist2);
        } else if (met.offer(line.get(), dist2)) {
            place = hit;
        }
    }
    if (met.get())
        box->setPos(place);
    *out = met.get() ? met.get() : missed.get();
    if (*out)
        (*out)->correctBoxPosition(box);
    else
        findClosestFreeLine2d(box, out);
}

void BoxDistributor::findClosestFreeLine2d(TextBox *box, FreeLine2d **out) const
{
    NearestLine nearest;
    for (auto const &line : freeLines_) {
        double dist2 = 0.0;
        BaVec2d<double> closest;
        line->closestPoint(box->getPoint(), &dist2, &closest);
        nearest.offer(line.get(), dist2);
    }
    // Distances too large for numbers leave none.
    *out = nearest.get() ? nearest.get() : freeLines_.front().get();
    (*out)->correctBoxPosition(box);
}

void BoxDistributor::sortForBorder()
{
    BaVec2d<double> const center(width_ * 0.5, height_ * 0.5);
    for (Boxes const *boxes : {&textBoxes_, &fixedBoxes_}) {
        for (auto const &box : *boxes)
            box->setSortKeys(squaredDistance(box->getPoint(), center), box->getRect().width * box->getRect().height);
    }
    std::stable_sort(textBoxes_.begin(), textBoxes_.end(),
                     [](auto const &a, auto const &b) { return TextBox()(*a, *b); });
}

BoxDistributor::Place_t BoxDistributor::placeOnNearest(Obstacles const &obstacles, TextBox *box) const
{
    FreeLine2d *line = nullptr;
    findClosestFreeLine2d(box, &line);
    return line->findPlace(obstacles, box, static_cast<unsigned int>(freeLines_.size()));
}

BoxDistributor::Place_t BoxDistributor::placeOnRay(Obstacles const &obstacles, BaVec2d<double> const &focus,
                                                   TextBox *box) const
{
    FreeLine2d *line = nullptr;
    findFreeLine2d({focus, box->getPoint()}, box, &line);
    return line->findPlace(obstacles, box, static_cast<unsigned int>(freeLines_.size()));
}

void BoxDistributor::placeOnRays(BaVec2d<double> const &focus)
{
    Obstacles obstacles(Obstacles::RULE_TOUCHING, search_, {width_, height_}, fixedBoxes_, textBoxes_.size());
    Obstacles const untouched = obstacles;
    std::vector<TextBox *> sorted;
    for (auto const &box : textBoxes_)
        sorted.push_back(box.get());
    Failures failures;
    while (!textBoxes_.empty()) {
        TextBox *box = textBoxes_.back().get();
        bool const hasRay = squaredDistance(box->getPoint(), focus) >= AT_FOCUS;
        Place_t const place = hasRay ? placeOnRay(obstacles, focus, box) : placeOnNearest(obstacles, box);
        if (place != PLACE_GOOD && failures.isOneTooMany()) {
            // Deliberate: all boxes are placed once more, but they do not see each other, and those that are left stay
            // among the text boxes.
            for (TextBox *each : sorted)
                placeOnRay(untouched, focus, each);
            return;
        }
        fixLastTextBox();
        obstacles.add(box);
    }
}

void BoxDistributor::distribute(StageIdentifier const &stage)
{
    if (canPlace())
        distribute(stage, calcFocalPoint());
}

void BoxDistributor::distribute(StageIdentifier const &stage, BaVec2d<double> focus)
{
    if (!valid_)
        return;
    sortForBorder();
    if (textBoxes_.size() == 1 && fixedPoints_.empty()) {
        Obstacles const obstacles(Obstacles::RULE_TOUCHING, search_, {width_, height_}, fixedBoxes_, 0);
        placeOnNearest(obstacles, textBoxes_.front().get());
        fixLastTextBox();
    } else {
        placeOnRays({insideX(focus.x), insideY(focus.y)});
    }
    updateElements(stage);
}

} // namespace Zem::Fig2
