// ZemFig2Line.h: Line, a straight segment with arrow heads or symbols at its ends.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Element.h"
#include "ZemFig2Symbol.h"

#include <utility>

namespace Zem::Fig2 {

/// The origin is always the first point; the angle turns the line about it. An arrow head at an end hides the symbol
/// there.
class Line : public Element
{
public:
    static constexpr QLatin1StringView PARAM_POINT1{"point1"};
    static constexpr QLatin1StringView PARAM_POINT2{"point2"};
    static constexpr QLatin1StringView PARAM_ARROW_1{"arrow1"};
    static constexpr QLatin1StringView PARAM_ARROW_2{"arrow2"};
    static constexpr QLatin1StringView PARAM_SYMBOL_1{"symbol1"};
    static constexpr QLatin1StringView PARAM_SYMBOL_2{"symbol2"};

    Line();
    Line(Line const &) = default;
    Line &operator=(Line const &) = default;

    BaVec2d<double> const &getPoint1() const { return point1_; }
    /// Moves the first point alone, and the origin with it.
    void setPoint1(BaVec2d<double> const &point);
    BaVec2d<double> const &getPoint2() const { return point2_; }
    void setPoint2(BaVec2d<double> const &point);
    /// Whether there is an arrow head at the first and at the second point.
    std::pair<bool, bool> const &getArrowInfo() const { return arrows_; }
    void setArrowInfo(std::pair<bool, bool> const &arrows);
    std::pair<Symbol, Symbol> const &getSymbolInfo() const { return symbols_; }
    void setSymbolInfo(std::pair<Symbol, Symbol> const &symbols);

    Element *copy() const override;
    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &token) const override;
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    Polygon2d computeCoveredPolygon(bool includeBorder) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// A newer version of the text form throws IO::StreamException.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// Points 0 and 1 belong to the first end, 2 and 3 to the second. Always true.
    bool dragPointMove(int index, BaVec2d<double> const &position) override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    /// Up to 2.0 beside the line, however thin it is.
    bool isPointIn(BaVec2d<double> const &point) const override;
    /// Moves the line as a whole.
    void setOrigin(BaVec2d<double> const &origin) override;
    void setAlignmentOrigin(BaVec2d<double> const &point) override;
    BaVec2d<double> getAlignmentOrigin() const override;
    bool hasAngle() const override { return true; }
    bool hasBorder() const override { return true; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

private:
    enum End { FIRST_END = 0, SECOND_END = 1 };

    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);
    bool hasArrow(End end) const { return end == FIRST_END ? arrows_.first : arrows_.second; }
    Symbol const &symbolAt(End end) const { return end == FIRST_END ? symbols_.first : symbols_.second; }
    BaVec2d<double> const &pointAt(End end) const { return end == FIRST_END ? point1_ : point2_; }
    Polygon2d computeArrow(End end, BaVec2d<double> *base) const;
    void addEndOutline(End end, Polygon2d *outline) const;

    BaVec2d<double> point1_{0.0, 0.0};
    BaVec2d<double> point2_{0.0, 0.0};
    std::pair<bool, bool> arrows_{false, false};
    std::pair<Symbol, Symbol> symbols_{Symbol::null, Symbol::null};
};

} // namespace Zem::Fig2
