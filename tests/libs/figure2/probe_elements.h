// probe_elements.h: elements that tests can watch and steer.
#pragma once

#include <ZemFig2AlignedElement.h>
#include <ZemFig2Rectangle.h>

#include <functional>
#include <string>

namespace Zem::Fig2 {

/// The base class with nothing of its own: shows the defaults of every virtual operation.
class BareElement : public Element
{
public:
    BareElement() : Element(LOGO) {}
    BareElement(BareElement const &) = default;
    BareElement &operator=(BareElement const &) = default;

    Element *copy() const override { return new BareElement(*this); }
    unsigned int getEstimatedObjectSize() const override { return Element::getEstimatedObjectSize(); }
    bool isTokenUsed(QString const &) const override { return false; }
    bool isDataValid(StageIdentifier const &, FigureTokenInterface const *) const override { return dataValid; }
    Polygon2d computeCoveredPolygon(bool) const override { return outline; }
    bool draw(FigureTokenInterface const *, Painter *, int) const override { return true; }
    void setAlignmentOrigin(BaVec2d<double> const &point) override { setOrigin(point); }
    BaVec2d<double> getAlignmentOrigin() const override { return getOrigin(); }
    bool hasHandle(BaVec2d<double> *position) const override { return withHandle || Element::hasHandle(position); }
    bool hasFont() const override { return withFont; }
    void computeDynamicData(StageIdentifier const &, FigureTokenInterface const *) override
    {
        ++computed;
        dragPolygon_ = coveredPolygon_ = updatePolygon_ = outline;
    }

    bool dataValid = true;
    bool withHandle = false;
    bool withFont = false;
    Polygon2d outline{true};
    int computed = 0;
};

/// A rectangle that connects to everything, can take several steps to draw, and counts.
class ProbeRectangle : public Rectangle
{
public:
    explicit ProbeRectangle(std::string name = "") : name_(std::move(name)) {}

    Element *copy() const override { return new ProbeRectangle(*this); }
    bool canConnectTo(Element const *, QString const &point) const override { return point != refusedPoint; }
    bool isDataValid(StageIdentifier const &, FigureTokenInterface const *) const override { return dataValid; }
    bool isTokenUsed(QString const &token) const override { return token == usedToken; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override
    {
        ++computed;
        if (log)
            *log += name_ + " ";
        Rectangle::computeDynamicData(stage, tokens);
        if (withoutArea)
            updatePolygon_.clear();
    }
    bool draw(FigureTokenInterface const *, Painter *, int step) const override
    {
        if (log)
            *log += name_ + std::to_string(step) + " ";
        return step + 1 >= steps;
    }
    bool hasMaximize() const override { return canMaximize; }
    bool hasMinimumSize() const override { return boundedSize; }
    bool dragPointMove(int index, BaVec2d<double> const &position) override
    {
        if (onDrag)
            onDrag();
        return draggable && Rectangle::dragPointMove(index, position);
    }
    using AreaBase::setMinimumSize;

    QString refusedPoint = "refused";
    QString usedToken;
    bool dataValid = true;
    bool withoutArea = false;
    bool canMaximize = false;
    bool boundedSize = true;
    bool draggable = true;
    int steps = 1;
    int computed = 0;
    std::string *log = nullptr;
    std::function<void()> onDrag;

private:
    std::string name_;
};

/// An area with a content of a size that the test sets.
class ProbeContent : public AlignedElement
{
public:
    ProbeContent() : AlignedElement(LOGO) {}
    ProbeContent(ProbeContent const &) = default;
    ProbeContent &operator=(ProbeContent const &) = default;

    Element *copy() const override { return new ProbeContent(*this); }
    bool isTokenUsed(QString const &) const override { return false; }
    std::pair<BaVec2d<double>, BaVec2d<double>> getInnerOriginBounds() override { return {{0, 0}, innerSize}; }
    BaVec2d<double> getInnerElementSize() const override { return innerSize; }
    using AlignedElement::computeInnerDrawingOrigin;
    using AlignedElement::computeInnerDrawingSize;

    BaVec2d<double> innerSize{0, 0};
};

} // namespace Zem::Fig2
