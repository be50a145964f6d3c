// ZemFig2Group.h: Group, the element that holds other elements, and the walk over all of them.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Element.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::Fig2 {

/// Children in layer order, the first the lowest. A group has no geometry of its own: its origin is that of its master
/// element, its outline the convex hull of its children; moving and resizing it moves and resizes them. The children
/// belong to the group, except those that are externally managed.
class Group : public Element
{
    template <bool isConst>
    class DeepIterator;

public:
    /// Visit every element below a group, each group before its children, in layer order. Changing the tree ends the
    /// use of all iterators. The default constructor makes the end.
    using ElementIterator = DeepIterator<false>;
    using ElementConstIterator = DeepIterator<true>;
    using ChildIterator = std::vector<Element *>::iterator;
    using ChildConstIterator = std::vector<Element *>::const_iterator;

    /// The block between a stored group and its children.
    struct ChildTable
    {
        std::vector<unsigned int> types; ///< in layer order; for one that is no Type_t no child follows
        bool hasMaster = false;
        int masterId = 0; ///< as stored with the element
    };

    /// Groups nested deeper than this are refused when a file is read.
    static constexpr unsigned int MAXIMUM_DEPTH = 256;
    /// Files with more elements below the root are neither written nor read.
    static constexpr unsigned int MAXIMUM_ELEMENTS = 1000000;

    Group();
    /// Copies of all children; connectors are not copied (see clone).
    Group(Group const &other);
    ~Group() override;

    /// A copy of the subtree together with the connectors between its elements. `copies`, when given, receives each
    /// element of this subtree with its copy. Owned by the caller.
    Group *clone(std::map<Element const *, Element *> *copies) const;

    /// Appends, or inserts directly behind `predecessor`, and takes ownership. Throws ProgError when the element is a
    /// child already or the predecessor is none.
    void addChild(Element *element, Element const *predecessor = nullptr);
    /// Gives the child back to the caller. Throws ProgError when it is none.
    void removeChild(Element *element);
    /// Gives back, in layer order, all children for which `wanted` answers true. It costs one walk over the children.
    std::vector<Element *> removeChildren(std::function<bool(Element const *)> const &wanted);
    /// Puts a new element in the place of a child, carries over the connectors that it accepts and deletes the old one.
    /// Throws ProgError when `oldElement` is no child.
    void replaceChild(Element *oldElement, Element *newElement);
    bool childExists(Element const *element) const;

    /// The element that gives the group its origin, never a group itself; null in an empty group.
    Element *getMasterElement() const;
    /// `element` must be a child; it is not looked for.
    void setMasterElement(Element *element);

    ChildIterator getChildBegin() { return children_.begin(); }
    ChildIterator getChildEnd() { return children_.end(); }
    ChildConstIterator getChildBegin() const { return children_.begin(); }
    ChildConstIterator getChildEnd() const { return children_.end(); }
    ElementIterator getElementBegin();
    ElementIterator getElementEnd();
    ElementConstIterator getElementBegin() const;
    ElementConstIterator getElementEnd() const;

    /// The layer of a child. All six throw ProgError on an empty group and for an element that is no child; the moves
    /// throw it at the end of the stack too.
    bool canLayerUp(Element const *element) const;
    bool canLayerDown(Element const *element) const;
    void layerUp(Element const *element);
    void layerDown(Element const *element);
    void layerTop(Element const *element);
    void layerBottom(Element const *element);

    Element *copy() const override;
    unsigned int getEstimatedObjectSize() const override;
    /// Always false: the walk of the figure reaches the children itself.
    bool isTokenUsed(QString const &token) const override;
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    Polygon2d computeCoveredPolygon(bool includeBorder) const override;
    void load(IO::InStream *stream, int a, int b) override;
    /// For readers of damaged files, which load the children one by one. Throws IO::StreamException.
    static ChildTable loadChildTable(IO::InStream *stream);
    void save(IO::OutStream *stream, int a, int b) const override;
    /// Groups have no text form: both throw ProgError.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    /// The group's own parameters, without the children.
    QString getParameterString() const override;
    /// "origin" moves the group; every other entry goes to each child.
    void createFromParameterString(QString &parameters) override;
    /// Resizes the group by one of its outline points. False, and everything as before, when an element refuses or the
    /// group would become narrower than 1.0.
    bool dragPointMove(int index, BaVec2d<double> const &position) override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool isPointIn(BaVec2d<double> const &point) const override;
    /// Throw ProgError on an empty group.
    void setOrigin(BaVec2d<double> const &origin) override;
    BaVec2d<double> const &getOrigin() const override;
    void setAlignmentOrigin(BaVec2d<double> const &point) override;
    BaVec2d<double> getAlignmentOrigin() const override;
    bool hasPivotAlignment() const override { return true; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

    using Element::update;
    /// Refills the three polygons from the polygons that the elements hold already. Always false.
    virtual bool update(FigureTokenInterface const *tokens, Polygon2d *polygon);

protected:
    Group &operator=(Group const &) = default;

private:
    struct DragScale;

    template <class Visit>
    void forEachLeaf(Visit const &visit) const;
    void deleteChildren();
    static void deleteOrRelease(Element *child);
    static void leaveFigure(Element *element);
    void release(Element *child);
    void setFigureBelow(Figure *figure);
    void copyMaster(Group const &other);
    Element *findAlignmentElement(Alignment_t x, Alignment_t y) const;
    std::size_t findChildIndex(Element const *element) const;
    std::size_t requireLayerChild(Element const *element, char const *function) const;
    void swapLayers(std::size_t lower);
    void requireDepth() const;
    void requireElements() const;
    void countLoaded(std::size_t children);
    std::unique_ptr<Element> loadChild(IO::InStream *stream, Type_t type, int a, int b);
    std::unique_ptr<Element> loadImageLabel(IO::InStream *stream);
    void loadChildren(IO::InStream *stream, int a, int b);
    bool dragLeaf(Element *leaf, DragScale const &scale, std::map<Element *, QString> *before);
    static void undoDrag(std::map<Element *, QString> const &before);

    std::vector<Element *> children_;
    Element *masterElement_ = nullptr;
    std::size_t loadedElements_ = 0; ///< of the whole tree, in its root, while it is loaded
};

/// The walk behind ElementIterator and ElementConstIterator. A copy allocates; the end is an empty object.
template <bool isConst>
class Group::DeepIterator
{
public:
    using GroupPointer = std::conditional_t<isConst, Group const *, Group *>;
    using ElementPointer = std::conditional_t<isConst, Element const *, Element *>;
    using difference_type = std::ptrdiff_t;
    using value_type = ElementPointer;
    using pointer = ElementPointer const *;
    using reference = ElementPointer;
    using iterator_category = std::forward_iterator_tag;

    DeepIterator() = default;
    explicit DeepIterator(GroupPointer group) { enter(group); }

    /// Each throws ProgError at the end.
    ElementPointer operator*() const { return current(); }
    ElementPointer operator->() const { return current(); }
    DeepIterator &operator++();
    DeepIterator operator++(int)
    {
        DeepIterator const before = *this;
        ++*this;
        return before;
    }
    bool operator==(DeepIterator const &other) const;

private:
    struct Level
    {
        std::vector<Element *> const *children;
        std::size_t position;

        bool operator==(Level const &) const = default;
    };

    ElementPointer current() const;
    void enter(GroupPointer group);

    std::vector<Level> levels_;
    std::vector<GroupPointer> groups_;
};

extern template class Group::DeepIterator<false>;
extern template class Group::DeepIterator<true>;

} // namespace Zem::Fig2
