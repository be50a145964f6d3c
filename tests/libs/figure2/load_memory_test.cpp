// How much memory large files take while they are loaded.
#include "crafted_element.h"
#include "load_limit.h"

#include <AllocationPeak.h>
#include <ZemFig2ColorBar.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2Label.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2SnapshotFrame.h>

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

std::string saved(Figure const &figure)
{
    return Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
}

/// The page and its root, in front of children of these types.
BlockCrafter withRoot(std::vector<Element::Type_t> const &types)
{
    Payload table = Payload().u(static_cast<unsigned int>(types.size()));
    for (Element::Type_t type : types)
        table.u(type);
    BlockCrafter page =
        BlockCrafter().block(5, Payload().v(100, 100)).add([](IO::OutStream &stream) { FillStyle().save(&stream); });
    return CraftedElement().addTo(std::move(page), 10).block(2, table.b(false).i(0));
}

/// A file with a label of an old version, whose text is converted.
std::string withOldLabel(unsigned int version, std::string const &text)
{
    Payload fields = Payload().s(text).b(false).u(0).u(0).b(false);
    if (version >= 5)
        fields.v(0, 0);
    return CraftedElement()
        .addTo(withRoot({Element::LABEL}), 10)
        .block(version, fields)
        .add([](IO::OutStream &stream) {
            ColorBar().save(&stream);
            LineStyle().save(&stream);
        })
        .bytes();
}

std::string repeated(char const *text, std::size_t size)
{
    std::string result;
    while (result.size() < size)
        result += text;
    return result;
}

template <class Type>
std::string manyOf(int number)
{
    Figure figure;
    for (int i = 0; i < number; ++i)
        figure.getRoot()->addChild(new Type);
    return saved(figure);
}

std::string manyLabels()
{
    Figure figure;
    for (int i = 0; i < 3000; ++i) {
        auto *label = new Label;
        label->setText(QStringLiteral("force $5.1[kN]force$"));
        figure.getRoot()->addChild(label);
    }
    return saved(figure);
}

std::string manyLooks()
{
    Figure figure;
    auto *image = new Image;
    for (int i = 0; i < 5000; ++i)
        image->setVisualisation(QString::number(i), ImageDataVisualisation(false));
    figure.getRoot()->addChild(image);
    return saved(figure);
}

std::string manyPoints()
{
    Figure figure;
    auto *polygon = new Polygon;
    Polygon2d points(true);
    for (int i = 0; i < 100000; ++i)
        points.addPoint({i * 1.0, i * 2.0});
    polygon->setPolygon(points);
    figure.getRoot()->addChild(polygon);
    return saved(figure);
}

class Connected : public Rectangle
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

std::string manyConnectors()
{
    Figure figure;
    auto *source = new Connected;
    auto *target = new Rectangle;
    figure.getRoot()->addChild(source);
    figure.getRoot()->addChild(target);
    for (int i = 0; i < 20000; ++i)
        source->connect(target, QString());
    return saved(figure);
}

std::string deepGroups()
{
    Figure figure;
    for (int i = 0; i < 10; ++i) {
        Group *group = figure.getRoot();
        for (int depth = 0; depth < 250; ++depth) {
            auto *inner = new Group;
            group->addChild(inner);
            group = inner;
        }
    }
    return saved(figure);
}

struct LargeFile
{
    char const *name;
    std::string (*make)();
};

std::ostream &operator<<(std::ostream &stream, LargeFile const &file)
{
    return stream << file.name;
}

class FigureMemory : public testing::TestWithParam<LargeFile>
{
};

TEST_P(FigureMemory, isASmallMultipleOfTheFile)
{
    std::string const bytes = GetParam().make();
    std::istringstream input(bytes);
    Figure figure;
    std::size_t held = 0;
    {
        Support::AllocationPeak const peak;
        IO::InStream stream(&input);
        figure.load(&stream, -1, -1);
        held = peak.bytes();
    }

    EXPECT_LE(held, loadLimit(bytes.size()));
    // What is not counted cannot be too much.
    EXPECT_GT(held, bytes.size() / 4);
    RecordProperty("bytesForEach", std::to_string(static_cast<double>(held) / static_cast<double>(bytes.size())));
}

constexpr std::size_t LONG_TEXT = 1000000;

INSTANTIATE_TEST_SUITE_P(
    Files, FigureMemory,
    testing::Values(
        LargeFile{"rectangles", [] { return manyOf<Rectangle>(5000); }},
        LargeFile{"lines", [] { return manyOf<Line>(5000); }},
        LargeFile{"polygons", [] { return manyOf<Polygon>(5000); }},
        LargeFile{"emptyGroups", [] { return manyOf<Group>(5000); }}, LargeFile{"deepGroups", deepGroups},
        LargeFile{"images", [] { return manyOf<Image>(1000); }},
        LargeFile{"snapshots", [] { return manyOf<Snapshot>(1000); }},
        LargeFile{"frames", [] { return manyOf<SnapshotFrame>(1000); }}, LargeFile{"looks", manyLooks},
        LargeFile{"labels", manyLabels}, LargeFile{"legends", [] { return manyOf<Legend>(1000); }},
        LargeFile{"points", manyPoints}, LargeFile{"connectors", manyConnectors},
        LargeFile{"unknownTypes",
                  [] { return withRoot(std::vector<Element::Type_t>(250000, Element::Type_t(99))).bytes(); }},
        LargeFile{"text", [] { return withOldLabel(6, std::string(LONG_TEXT, 'x')); }},
        LargeFile{"plainTextOfLines", [] { return withOldLabel(3, repeated("\n", LONG_TEXT)); }},
        LargeFile{"plainTextOfBrackets", [] { return withOldLabel(3, repeated(">", LONG_TEXT)); }},
        LargeFile{"plainTextOfColours", [] { return withOldLabel(3, repeated("<color>", LONG_TEXT)); }},
        LargeFile{"oldRichText", [] { return withOldLabel(3, "<html><body>" + repeated("x", LONG_TEXT)); }},
        LargeFile{"oldTables", [] { return withOldLabel(5, repeated("<table a width=1 cellpadding=-1>", LONG_TEXT)); }},
        LargeFile{"oldCells", [] { return withOldLabel(5, repeated("<td>", LONG_TEXT)); }},
        LargeFile{"oldCellEnds", [] { return withOldLabel(5, repeated("</td>", LONG_TEXT)); }}),
    [](auto const &test) { return std::string(test.param.name); });

} // namespace
} // namespace Zem::Fig2
