#include "ZemFig2BoxDistributor.h"

#include "ZemFig2LabelBase.h"
#include "ZemFig2Legend.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace Zem::Fig2 {

namespace {

constexpr double UNSET_DISTANCE = std::numeric_limits<double>::max();
constexpr double SHORTEST_LINE_SQUARED = 2.0;
constexpr double PART_OF_PAGE = 0.007;
constexpr double BORDER_TOLERANCE = 1e-12;

/// A size that cannot be laid out counts as none.
double finite(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

/// Also what is no number becomes the middle.
double insideOrMiddle(double value, double extent)
{
    return value >= 0.0 && value <= extent ? value : extent * 0.5;
}

Rect withoutNegativeExtents(Rect const &rect)
{
    return {std::min(rect.x, rect.p2().x), std::min(rect.y, rect.p2().y), std::abs(rect.width), std::abs(rect.height)};
}

} // namespace

constinit double BoxDistributor::_at_element_distance_x = UNSET_DISTANCE;
constinit double BoxDistributor::_at_element_distance_y = UNSET_DISTANCE;

void BoxDistributor::TextBox::setSortKeys(double first, double second)
{
    sortKey_ = first;
    sortKey2_ = second;
}

void BoxDistributor::TextBox::setPos(BaVec2d<double> const &pos)
{
    pos_ = pos;
    place();
}

void BoxDistributor::TextBox::setOffset(BaVec2d<double> const &offset)
{
    offset_ = offset;
    place();
}

void BoxDistributor::TextBox::setSize(BaVec2d<double> const &size)
{
    rect_ = Rect(pos_, size);
}

BaVec2d<double> BoxDistributor::TextBox::getCenter() const
{
    return {rect_.x + rect_.width * 0.5, rect_.y + rect_.height * 0.5};
}

void BoxDistributor::TextBox::place()
{
    rect_.x = pos_.x;
    rect_.y = pos_.y;
    if (element_)
        element_->setOrigin(pos_ + offset_);
}

bool BoxDistributor::TextBox::operator()(TextBox const &a, TextBox const &b) const
{
    return a.sortKey_ < b.sortKey_ || (a.sortKey_ == b.sortKey_ && a.sortKey2_ < b.sortKey2_);
}

BoxDistributor::BoxDistributor(double width, double height, double edgeDistance, double boxDistance)
    : width_(width), height_(height), edgeDistance_(edgeDistance), boxDistance_(boxDistance)
{
    addBorderLines();
    // Deliberate: the first page of a process sets the distances for all that follow.
    if (_at_element_distance_x == UNSET_DISTANCE && std::isfinite(width))
        _at_element_distance_x = width * PART_OF_PAGE;
    if (_at_element_distance_y == UNSET_DISTANCE && std::isfinite(height))
        _at_element_distance_y = height * PART_OF_PAGE;
}

void BoxDistributor::addBorderLines()
{
    double const left = edgeDistance_;
    double const top = edgeDistance_;
    double const right = width_ - edgeDistance_;
    double const bottom = height_ - edgeDistance_;
    auto const isLongEnough = [](double length) {
        return std::isfinite(length * length) && length * length >= SHORTEST_LINE_SQUARED;
    };
    valid_ = isLongEnough(width_ - 2.0 * edgeDistance_) && isLongEnough(height_ - 2.0 * edgeDistance_) &&
             std::isfinite(boxDistance_);
    addFreeLine2d({{left, top}, {left, bottom}}, DIRECTION_RIGHT);
    addFreeLine2d({{left, bottom}, {right, bottom}}, DIRECTION_UP);
    addFreeLine2d({{right, top}, {right, bottom}}, DIRECTION_LEFT);
    addFreeLine2d({{left, top}, {right, top}}, DIRECTION_DOWN);
}

BoxDistributor::BoxDistributor(BoxDistributor const &other)
    : fixedPoints_(other.fixedPoints_), width_(other.width_), height_(other.height_),
      edgeDistance_(other.edgeDistance_), boxDistance_(other.boxDistance_), valid_(other.valid_),
      tokenInterface_(other.tokenInterface_), search_(other.search_)
{
    for (auto const &box : other.textBoxes_)
        textBoxes_.push_back(std::make_unique<TextBox>(*box));
    for (auto const &box : other.fixedBoxes_)
        fixedBoxes_.push_back(std::make_unique<TextBox>(*box));
    std::unordered_map<FreeLine2d const *, FreeLine2d *> copies{{nullptr, nullptr}};
    for (auto const &line : other.freeLines_) {
        freeLines_.push_back(std::make_unique<FreeLine2d>(*line));
        copies[line.get()] = freeLines_.back().get();
    }
    for (auto const &line : freeLines_) {
        line->setNext(copies.at(line->getNext()));
        line->setPrev(copies.at(line->getPrev()));
    }
}

BoxDistributor::BoxDistributor(BoxDistributor &&other) noexcept = default;

BoxDistributor &BoxDistributor::operator=(BoxDistributor const &other)
{
    return *this = BoxDistributor(other);
}

BoxDistributor &BoxDistributor::operator=(BoxDistributor &&other) noexcept = default;

BoxDistributor::~BoxDistributor() = default;

void BoxDistributor::setElementDistance(double x, double y)
{
    _at_element_distance_x = x;
    _at_element_distance_y = y;
}

BaVec2d<double> BoxDistributor::getElementDistance()
{
    return {_at_element_distance_x, _at_element_distance_y};
}

double BoxDistributor::insideX(double x) const
{
    return insideOrMiddle(x, width_);
}

double BoxDistributor::insideY(double y) const
{
    return insideOrMiddle(y, height_);
}

void BoxDistributor::addFreeLine2d(Line2d const &line, Direction_t direction)
{
    if (!valid_)
        return;
    auto added = std::make_unique<FreeLine2d>(line, direction);
    FreeLine2d *first = freeLines_.empty() ? added.get() : freeLines_.front().get();
    FreeLine2d *last = freeLines_.empty() ? added.get() : freeLines_.back().get();
    added->setPrev(last);
    added->setNext(first);
    last->setNext(added.get());
    first->setPrev(added.get());
    freeLines_.push_back(std::move(added));
}

BaVec2d<double> BoxDistributor::boxSize(Element const &element) const
{
    double const border = element.hasBorder() && element.getBorder().getStyle() != LineStyle::STYLE_NONE
                              ? element.getBorder().getWidth()
                              : 0.0;
    return {finite(element.getSize().x + border), finite(element.getSize().y + border)};
}

/// Gives a box at its place the extent and the distances of an element of the size.
void BoxDistributor::dressBox(TextBox *box, BaVec2d<double> const &size) const
{
    BaVec2d<double> const distance(boxDistance_, boxDistance_);
    box->setOffset(size * 0.5 + distance);
    box->setSize(size + distance * 2.0);
    box->setMinEdgeFree(edgeDistance_);
    box->setMinBoxDist(boxDistance_);
}

BoxDistributor::TextBox *BoxDistributor::addTextBox(LabelBase *label)
{
    if (!valid_)
        return nullptr;
    BaVec2d<double> point;
    if (label->hasConnectorPoint())
        point = {insideX(label->getConnectorPoint().x), insideY(label->getConnectorPoint().y)};
    BaVec2d<double> const size = boxSize(*label);
    auto box = std::make_unique<TextBox>();
    box->setPoint(point);
    box->setHasPoint(true);
    box->setElement(label);
    box->setPos(point);
    dressBox(box.get(), size);
    textBoxes_.push_back(std::move(box));
    return textBoxes_.back().get();
}

void BoxDistributor::addFixedBox(Rect const &rect)
{
    if (!valid_)
        return;
    Rect const extent = withoutNegativeExtents(rect);
    auto box = std::make_unique<TextBox>();
    box->setPos(extent.p0());
    box->setSize({extent.width, extent.height});
    fixedBoxes_.push_back(std::move(box));
}

/// The element comes last: what stays must not move by a rounding.
BoxDistributor::TextBox *BoxDistributor::addBoxAround(Element const &element)
{
    BaVec2d<double> const size = boxSize(element);
    auto box = std::make_unique<TextBox>();
    box->setPos(element.getOrigin() - size * 0.5 - BaVec2d<double>(boxDistance_, boxDistance_));
    dressBox(box.get(), size);
    fixedBoxes_.push_back(std::move(box));
    return fixedBoxes_.back().get();
}

void BoxDistributor::addFixedBox(Element *element)
{
    if (!valid_)
        return;
    addBoxAround(*element)->setElement(dynamic_cast<LabelBase *>(element));
}

void BoxDistributor::addFixedTextBox(LabelBase *label)
{
    if (!valid_)
        return;
    TextBox *box = addBoxAround(*label);
    box->setElement(label);
    box->setHasPoint(true);
    if (label->hasConnectorPoint())
        box->setPoint(label->getConnectorPoint());
    fixedPoints_.push_back(box->getPoint());
}

void BoxDistributor::moveSide(Direction_t side, double distance)
{
    double const edge = edgeDistance_;
    double limit = edge + distance;
    if (side == DIRECTION_RIGHT)
        limit = width_ - distance - edge;
    if (side == DIRECTION_DOWN)
        limit = height_ - distance - edge;
    for (auto const &line : freeLines_)
        line->moveSide(side, limit);
}

bool BoxDistributor::legendAtBorder(BaVec2d<double> pageSize, Legend *legend, bool isShown, bool vertical,
                                    double distance, double *outShift, Direction_t *outSide)
{
    if (!isShown)
        return false;
    Rect const covered(legend->computeCoveredPolygon(true));
    double const begin = vertical ? covered.y : covered.x;
    double const end = vertical ? covered.y + covered.height : covered.x + covered.width;
    double const page = vertical ? pageSize.y : pageSize.x;
    bool const isAtBegin = begin <= distance + BORDER_TOLERANCE;
    if (!isAtBegin && !(end >= page - distance - BORDER_TOLERANCE))
        return false;
    *outShift = isAtBegin ? end : page - begin;
    if (vertical)
        *outSide = isAtBegin ? DIRECTION_UP : DIRECTION_DOWN;
    else
        *outSide = isAtBegin ? DIRECTION_LEFT : DIRECTION_RIGHT;
    return true;
}

bool BoxDistributor::canPlace() const
{
    return valid_ && 2.0 * edgeDistance_ <= width_ && 2.0 * edgeDistance_ <= height_;
}

BaVec2d<double> BoxDistributor::calcFocalPoint() const
{
    if (!valid_)
        return {0.0, 0.0};
    BaVec2d<double> sum;
    for (auto const &box : textBoxes_)
        sum += box->getPoint();
    for (BaVec2d<double> const &point : fixedPoints_)
        sum += point;
    return sum / static_cast<double>(textBoxes_.size() + fixedPoints_.size());
}

/// The last text box is placed: it joins those in the way.
void BoxDistributor::fixLastTextBox()
{
    fixedBoxes_.push_back(std::move(textBoxes_.back()));
    textBoxes_.pop_back();
}

void BoxDistributor::updateElements(StageIdentifier const &stage) const
{
    for (Boxes const *boxes : {&textBoxes_, &fixedBoxes_}) {
        for (auto const &box : *boxes) {
            if (box->getElement())
                box->getElement()->update(stage, tokenInterface_, nullptr);
        }
    }
}

} // namespace Zem::Fig2
