// Lines, rectangles, circles and polygons of older files.
#include "ZemFig2Line.h"
#include "ZemFig2Polygon.h"
#include "ZemFig2Rectangle.h"
#include "fig_import_record.h"
#include "fig_importer.h"
#include "fig_items.h"

namespace Zem::Fig2 {

namespace {

constexpr unsigned int LINE_VERSION = 3;      // 2: ends; 3: size of symbols
constexpr unsigned int RECTANGLE_VERSION = 2; // 2: angle
constexpr unsigned int CIRCLE_VERSION = 2;    // 2: second radius, angle
constexpr unsigned int POLYGON_VERSION = 2;   // 2: closed
constexpr unsigned int SYMBOL_TYPES = Symbol::TYPE_SPOT + 1;
constexpr double DEFAULT_SYMBOL_SIZE = 3.0;

struct OldLine
{
    BaVec2d<double> point1;
    BaVec2d<double> point2;
    OldPen pen;
    unsigned int end1 = 0;
    unsigned int end2 = 0;
    double symbolSize = DEFAULT_SYMBOL_SIZE;

    void read(BlockReader &reader)
    {
        reader.field(point1);
        reader.field(point2);
        pen.read(reader);
        reader.keep(end1, Since{2});
        reader.keep(end2, Since{2});
        reader.keep(symbolSize, Since{3});
    }

    Symbol symbolOf(unsigned int end) const
    {
        if (!(end & Import::LINE_SYMBOL))
            return Symbol::null;
        unsigned int const type = end & Import::LINE_SYMBOL_MASK;
        if (type >= SYMBOL_TYPES)
            throwIllegalNumber(end);
        Symbol symbol(static_cast<Symbol::Type>(type), symbolSize, false);
        symbol.setColor(pen.color);
        return symbol;
    }
};

/// What circles and rectangles have in common.
struct OldArea
{
    OldFrame frame;
    OldPen pen;
    OldBrush brush;
    double angle = 0.0;

    void apply(Element *element) const
    {
        element->setOrigin(frame.center());
        element->setSize(frame.size);
        element->setBorder(pen.lineStyle());
        element->setBackground(brush.fillStyle());
        element->setAngle(angle);
    }
};

struct OldPolygon
{
    std::vector<BaVec2d<double>> points;
    OldPen pen;
    OldBrush brush;
    bool closed = true;

    void read(BlockReader &reader)
    {
        blockList(reader, points);
        pen.read(reader);
        brush.read(reader);
        reader.keep(closed, Since{2});
    }

    /// The points as seen from the first one, where the element then stands.
    Polygon2d shape() const
    {
        std::vector<BaVec2d<double>> moved;
        moved.reserve(points.size());
        for (BaVec2d<double> const &point : points)
            moved.push_back(point - points.front());
        return Polygon2d(moved, true);
    }
};

} // namespace

std::unique_ptr<Element> Importer::importLine(IO::InStream *stream)
{
    OldLine record;
    loadRecord(stream, LINE_VERSION, nullptr, [&record](BlockReader &reader) { record.read(reader); });
    auto line = std::make_unique<Line>();
    line->setPoint1(record.point1);
    line->setPoint2(record.point2);
    line->setBorder(record.pen.lineStyle());
    line->setArrowInfo({(record.end1 & Import::LINE_ARROW) != 0, (record.end2 & Import::LINE_ARROW) != 0});
    line->setSymbolInfo({record.symbolOf(record.end1), record.symbolOf(record.end2)});
    kept("line");
    return line;
}

std::unique_ptr<Element> Importer::importRectangle(IO::InStream *stream)
{
    OldArea record;
    loadRecord(stream, RECTANGLE_VERSION, "invalid rectangle header version: %1", [&record](BlockReader &reader) {
        record.frame.read(reader);
        record.pen.read(reader);
        record.brush.read(reader);
        reader.keep(record.angle, Since{2});
    });
    auto rectangle = std::make_unique<Rectangle>();
    record.apply(rectangle.get());
    kept("rectangle");
    return rectangle;
}

std::unique_ptr<Element> Importer::importCircle(IO::InStream *stream)
{
    OldArea record;
    loadRecord(stream, CIRCLE_VERSION, "invalid circle header version: %1", [&record](BlockReader &reader) {
        BaVec2d<double> center;
        BaVec2d<double> radii;
        reader.field(center);
        reader.field(radii.x);
        record.pen.read(reader);
        record.brush.read(reader);
        reader.field(radii.y, Since{2}, radii.x);
        reader.keep(record.angle, Since{2});
        record.frame = {center - radii, radii * 2.0};
    });
    auto ellipse = std::make_unique<Ellipse>();
    record.apply(ellipse.get());
    kept("circle");
    return ellipse;
}

std::unique_ptr<Element> Importer::importPolygon(IO::InStream *stream)
{
    OldPolygon record;
    loadRecord(stream, POLYGON_VERSION, "invalid polygon header version: %1",
               [&record](BlockReader &reader) { record.read(reader); });
    auto polygon = std::make_unique<Polygon>();
    if (!record.points.empty()) {
        polygon->setPolygon(record.shape());
        polygon->setOrigin(record.points.front());
    }
    polygon->setBorder(record.pen.lineStyle());
    polygon->setBackground(record.brush.fillStyle());
    kept("polygon");
    if (!record.closed)
        approximated("polygon", "an open line was closed");
    return polygon;
}

} // namespace Zem::Fig2
