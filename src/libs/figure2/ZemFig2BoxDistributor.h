// ZemFig2BoxDistributor.h: BoxDistributor, which finds places for label boxes on a page.
// Layer: labels. One distributor is used by one thread; the element distances belong to the whole process and are not
// guarded.
#pragma once

#include <ZemIdentifiers.h>
#include <ZemLine2d.h>
#include <ZemRect.h>
#include <ZemVec.h>

#include <memory>
#include <vector>

namespace Zem::Fig2 {

class Element;
class FigureTokenInterface;
class LabelBase;
class Legend;

/// Made for a page of one size, told what to place and what to keep clear of, and then run once: `distribute` puts the
/// labels along the page border so that their connector lines cross as little as possible, `placeAtElement` puts each
/// next to its own point. Labels move at once, by Element::setOrigin. All lengths are page millimetres, y grows
/// downwards. Owns its boxes and lines, never an element: the elements outlive the distributor.
///
/// On a page too small for its edges nothing is added or placed; isValid tells. There is always a result: without room
/// boxes overlap and lines cross.
class BoxDistributor
{
public:
    /// The side of a line on which a box sits, the way it is pushed, or a side of the page.
    enum Direction_t : unsigned int { DIRECTION_LEFT = 0, DIRECTION_RIGHT = 1, DIRECTION_UP = 2, DIRECTION_DOWN = 3 };
    /// What FreeLine2d::findPlace reached.
    enum Place_t : unsigned int { PLACE_GOOD = 0, PLACE_NONE = 1, PLACE_CROSSED = 2 };
    /// How the boxes in the way are looked for. Both find the same; the plain walk takes each box in its order.
    enum Search_t { SEARCH_GRID, SEARCH_PLAIN };

    class FreeLine2d;
    class Obstacles;

    /// A rectangle on the page, alone an obstacle, with an element the room that a label takes.
    class TextBox
    {
    public:
        double getSortKey() const { return sortKey_; }
        double getSortKey2() const { return sortKey2_; }
        void setSortKeys(double first, double second);
        /// Not owned; null for a plain obstacle.
        LabelBase *getElement() const { return element_; }
        /// Does not move the element: the next setPos or setOffset does.
        void setElement(LabelBase *element) { element_ = element; }
        /// What the box points at, with hasPoint.
        BaVec2d<double> const &getPoint() const { return point_; }
        void setPoint(BaVec2d<double> const &point) { point_ = point; }
        bool hasPoint() const { return hasPoint_; }
        void setHasPoint(bool hasPoint) { hasPoint_ = hasPoint; }
        /// The top left corner. A change moves the element to `pos` + `offset`.
        BaVec2d<double> const &getPos() const { return pos_; }
        void setPos(BaVec2d<double> const &pos);
        void setPosX(double x) { setPos({x, pos_.y}); }
        void setPosY(double y) { setPos({pos_.x, y}); }
        BaVec2d<double> const &getOffset() const { return offset_; }
        void setOffset(BaVec2d<double> const &offset);
        Rect const &getRect() const { return rect_; }
        void setSize(BaVec2d<double> const &size);
        BaVec2d<double> getCenter() const;
        double getMinEdgeFree() const { return minEdgeFree_; }
        void setMinEdgeFree(double distance) { minEdgeFree_ = distance; }
        double getMinBoxDist() const { return minBoxDist_; }
        void setMinBoxDist(double distance) { minBoxDist_ = distance; }

        /// Whether `a` is sorted before `b`.
        bool operator()(TextBox const &a, TextBox const &b) const;

    private:
        void place();

        double sortKey_ = 0.0;
        double sortKey2_ = 0.0;
        LabelBase *element_ = nullptr;
        BaVec2d<double> point_{0.0, 0.0};
        bool hasPoint_ = false;
        BaVec2d<double> pos_{0.0, 0.0};
        BaVec2d<double> offset_{0.0, 0.0};
        Rect rect_;
        double minEdgeFree_ = 0.0;
        double minBoxDist_ = 0.0;
    };

    /// A stretch along which boxes may sit, all on the same side of it, and its two neighbours in a ring.
    class FreeLine2d
    {
    public:
        FreeLine2d(Line2d const &line, Direction_t direction);

        /// The neighbours are not owned.
        FreeLine2d *getNext() const { return next_; }
        void setNext(FreeLine2d *next) { next_ = next; }
        FreeLine2d *getPrev() const { return prev_; }
        void setPrev(FreeLine2d *prev) { prev_ = prev; }
        /// From its start, the upper or left end, to its far end.
        Line2d const &getLine() const { return line_; }
        /// Throws ProgError for a line that is neither upright nor level, and changes nothing.
        void setLine(Line2d const &line);
        double getLengthSquared() const { return lengthSquared_; }
        Direction_t getDirection() const { return direction_; }
        void setDirection(Direction_t direction);
        bool isVertical() const { return vertical_; }
        /// Cuts off or moves what lies beyond a limit, seen from a side of the page.
        void moveSide(Direction_t side, double limit);

        /// The nearer end and its squared distance; the far end when both are equally near.
        void closestEdge(BaVec2d<double> const &point, double *dist2, BaVec2d<double> *edge) const;
        /// The nearest place of the stretch and its squared distance.
        void closestPoint(BaVec2d<double> const &point, double *dist2, BaVec2d<double> *closest) const;

        /// Sets the box on the line and within the stretch. False when it reached beyond; a box longer than the line
        /// always does and is left with its end at the far end.
        bool correctBoxPosition(TextBox *box) const;
        /// Where a box whose centre runs along `ray`, from its first point through its second, comes to sit on the
        /// line. (dx, dy) is the way from the corner of the box to its centre. True on the stretch: `hit` is the corner
        /// and `dist2` the squared way of the centre. False beyond it: both are those of the nearer end. When the ray
        /// never comes to the line, `dist2` is -1.0 and `hit` is left alone.
        bool intersects(Line2d const &ray, double *dist2, BaVec2d<double> *hit, double dx, double dy) const;

        /// How many connector lines of `boxes` cross that of `box`; unless `all`, only of those sorted before it.
        static unsigned int calcIntersections(Obstacles const &boxes, TextBox const &box, bool all);
        /// Slides the box forwards (`dir` 1) or backwards (-1) until it meets none of `boxes`, and on around the ring,
        /// over at most `depth` lines. With `dir` 0 or `choose` the end nearer to the box is left. Sets `moved` when
        /// it met one. Throws ProgError when the box leaves a line without neighbours.
        bool findPlaceInDir(Obstacles const &boxes, TextBox *box, bool *moved, int dir, unsigned int depth,
                            bool choose) const;
        /// Slides both ways and takes the better place.
        Place_t findPlace(Obstacles const &boxes, TextBox *box, unsigned int depth) const;

    private:
        struct Attempt;

        bool isOnStretch(BaVec2d<double> const &point) const;
        Line2d movedAcross(double dx, double dy) const;
        int directionInto(TextBox const &box) const;
        bool slide(Obstacles const &boxes, TextBox *box, bool *moved, int dir) const;
        void jumpPast(Rect const &obstacle, TextBox *box, int dir) const;
        FreeLine2d const *moveToNeighbour(TextBox *box) const;
        Attempt attempt(Obstacles const &boxes, TextBox *box, int dir, unsigned int depth) const;
        static bool isFirstBetter(Obstacles const &boxes, TextBox *box, BaVec2d<double> const &start, Attempt *first,
                                  Attempt *second);

        FreeLine2d *next_ = nullptr;
        FreeLine2d *prev_ = nullptr;
        double step_ = 0.1; ///< the gap left when pushing past a box
        Line2d line_;
        double lengthSquared_ = 0.0;
        Direction_t direction_ = DIRECTION_LEFT;
        bool vertical_ = true;
    };

    using Boxes = std::vector<std::unique_ptr<TextBox>>;
    using Lines = std::vector<std::unique_ptr<FreeLine2d>>;

    /// Free lines run around the page, `edgeDistance` inside it; `boxDistance` is kept free around every label. The
    /// first distributor of a process fixes the element distances, see setElementDistance. Copies are deep.
    BoxDistributor(double width, double height, double edgeDistance, double boxDistance);
    BoxDistributor(BoxDistributor const &other);
    BoxDistributor(BoxDistributor &&other) noexcept;
    BoxDistributor &operator=(BoxDistributor const &other);
    BoxDistributor &operator=(BoxDistributor &&other) noexcept;
    ~BoxDistributor();

    /// False for a page without room for a line on every side.
    bool isValid() const { return valid_; }
    /// Whether the edges fit the page, too; otherwise nothing is placed but with a given focus.
    bool canPlace() const;
    /// How far placeAtElement puts a box from its point, in every distributor. At first 0.7 % of the page of the
    /// first distributor.
    static void setElementDistance(double x, double y);
    static BaVec2d<double> getElementDistance();
    /// Handed on when labels are updated; not owned, may be null.
    void setTokenInterface(FigureTokenInterface const *tokenInterface) { tokenInterface_ = tokenInterface; }
    void setSearch(Search_t search) { search_ = search; }

    /// One more stretch for boxes, from the first to the second point. Throws ProgError for a slanted line.
    void addFreeLine2d(Line2d const &line, Direction_t direction);
    /// A label to place at its connector point. It leaves its place at once; its size should be up to date. The box is
    /// the distributor's, null when not valid: for a label that points at something else.
    TextBox *addTextBox(LabelBase *label);
    /// Something to keep clear of, as it is.
    void addFixedBox(Rect const &rect);
    /// The same with the box distance around it.
    void addFixedBox(Element *element);
    /// A label that stays, whose connector line counts for crossings.
    void addFixedTextBox(LabelBase *label);
    /// Keeps the free lines `distance` away from one side of the page, besides its edge.
    void moveSide(Direction_t side, double distance);

    /// Whether the legend stands at the left or right border of the page, with `vertical` at the upper or lower one, at
    /// most `distance` away from it. Then `outSide` and `outShift` suit moveSide, so that labels stay off the legend;
    /// otherwise both are left alone. Always false unless `isShown`.
    static bool legendAtBorder(BaVec2d<double> pageSize, Legend *legend, bool isShown, bool vertical, double distance,
                               double *outShift, Direction_t *outSide);

    /// Places along the free lines, away from the middle of all points, and updates the labels for the stage.
    void distribute(StageIdentifier const &stage);
    /// The same, away from `focus`; a coordinate off the page becomes that of the page centre.
    void distribute(StageIdentifier const &stage, BaVec2d<double> focus);
    /// Places next to the points, and updates the labels for the stage.
    void placeAtElement(StageIdentifier const &stage);
    /// The mean of all points; (0, 0) when not valid. Without any point it is 0 / 0, not a number.
    BaVec2d<double> calcFocalPoint() const;

    /// Puts a box on the line that it meets on its way along `ray`, else on the one nearest to its point. The line is
    /// the distributor's. Needs a valid distributor.
    void findFreeLine2d(Line2d const &ray, TextBox *box, FreeLine2d **out) const;
    void findClosestFreeLine2d(TextBox *box, FreeLine2d **out) const;

    /// What is still to place, what is in the way or placed, and the lines, in their order.
    Boxes const &getTextBoxes() const { return textBoxes_; }
    Boxes const &getFixedBoxes() const { return fixedBoxes_; }
    std::vector<BaVec2d<double>> const &getFixedPoints() const { return fixedPoints_; }
    Lines const &getFreeLines() const { return freeLines_; }

private:
    void addBorderLines();
    BaVec2d<double> boxSize(Element const &element) const;
    void dressBox(TextBox *box, BaVec2d<double> const &size) const;
    TextBox *addBoxAround(Element const &element);
    double insideX(double x) const;
    double insideY(double y) const;
    void sortForBorder();
    void sortForElements(BaVec2d<double> const &focal);
    Place_t placeOnRay(Obstacles const &obstacles, BaVec2d<double> const &focus, TextBox *box) const;
    Place_t placeOnNearest(Obstacles const &obstacles, TextBox *box) const;
    void placeOnRays(BaVec2d<double> const &focus);
    void addPointSquares();
    void placeAtPoint(Obstacles const &obstacles, std::vector<TextBox const *> const &all, TextBox *box) const;
    void fixLastTextBox();
    void updateElements(StageIdentifier const &stage) const;

    static double _at_element_distance_x;
    static double _at_element_distance_y;

    Boxes textBoxes_;
    Boxes fixedBoxes_;
    std::vector<BaVec2d<double>> fixedPoints_;
    Lines freeLines_;
    double width_;
    double height_;
    double edgeDistance_;
    double boxDistance_;
    bool valid_ = true;
    FigureTokenInterface const *tokenInterface_ = nullptr;
    Search_t search_ = SEARCH_GRID;
};

} // namespace Zem::Fig2
