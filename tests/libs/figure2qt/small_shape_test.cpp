#include <figqt_look_batch.h>
#include <figqt_small_shape.h>

#include <gtest/gtest.h>

#include <QtGui/QImage>

#include <array>
#include <cmath>
#include <random>

namespace Zem::Fig2Qt {
namespace {

/// How much of each pixel of an 8 by 4 picture is covered, of 255.
QImage painted(std::vector<std::vector<QPointF>> const &areas, QRect const &open = QRect(0, 0, 8, 4))
{
    QImage image(8, 4, QImage::Format_RGB32);
    image.fill(Qt::black);
    Ink ink(&image);
    ink.setColor(Color(255, 255, 255));
    std::vector<Edge> edges;
    for (auto const &area : areas)
        appendEdges(area, &edges);
    SmallShape().paint(edges, ink, ClipArea(open));
    return image;
}

std::vector<int> rowOf(QImage const &image, int y, int count)
{
    std::vector<int> row;
    for (int x = 0; x < count; ++x)
        row.push_back(qRed(image.pixel(x, y)));
    return row;
}

std::vector<QPointF> box(double left, double top, double right, double bottom)
{
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
}

TEST(SmallShape, CoversThePartOfAPixelThatLiesInTheArea)
{
    // Widths 1/2, 1, 1/4; heights 3/4, 1/2; of 255.
    QImage const image = painted({box(0.5, 0.25, 2.25, 1.5)});

    EXPECT_EQ(rowOf(image, 0, 4), (std::vector{96, 191, 48, 0}));
    EXPECT_EQ(rowOf(image, 1, 4), (std::vector{64, 128, 32, 0}));
    EXPECT_EQ(rowOf(image, 2, 4), (std::vector{0, 0, 0, 0}));
}

TEST(SmallShape, IsExactAlongSlantedSides)
{
    // Below y = x / 4 in one row: 7/8, 5/8, 3/8, 1/8; left of x = y / 2: three quarters and a quarter.
    EXPECT_EQ(rowOf(painted({{{0, 0}, {4, 1}, {0, 1}}}), 0, 5), (std::vector{223, 159, 96, 32, 0}));
    QImage const steep = painted({{{0, 0}, {1, 0}, {1, 2}}});
    EXPECT_EQ(rowOf(steep, 0, 2), (std::vector{191, 0}));
    EXPECT_EQ(rowOf(steep, 1, 2), (std::vector{64, 0}));
    // The side x = 0.5 + 2 y cuts a sixteenth off the first pixel and leaves as much of the third.
    EXPECT_EQ(rowOf(painted({{{0, 0}, {0.5, 0}, {2.5, 1}, {0, 1}}}), 0, 4), (std::vector{239, 128, 16, 0}));
}

TEST(SmallShape, DoesNotDependOnTheDirectionOfItsCorners)
{
    std::vector<QPointF> corners{{0.3, 0.2}, {5.1, 1.7}, {2.2, 3.6}};
    QImage const image = painted({corners});
    std::reverse(corners.begin(), corners.end());

    EXPECT_EQ(painted({corners}), image);
}

TEST(SmallShape, CountsWhatAreasHaveInCommonOnce)
{
    EXPECT_EQ(rowOf(painted({box(0, 0, 3, 1), box(1, 0, 4, 1)}), 0, 5), (std::vector{255, 255, 255, 255, 0}));
}

TEST(SmallShape, IsPaintedWhereTheClipIsOpen)
{
    QImage const image = painted({box(-3, -2, 20, 9)}, QRect(1, 1, 2, 2));

    EXPECT_EQ(rowOf(image, 0, 4), (std::vector{0, 0, 0, 0}));
    EXPECT_EQ(rowOf(image, 1, 4), (std::vector{0, 255, 255, 0}));
    EXPECT_EQ(rowOf(image, 2, 4), (std::vector{0, 255, 255, 0}));
    EXPECT_EQ(rowOf(image, 3, 4), (std::vector{0, 0, 0, 0}));
}

TEST(SmallShape, CoversItsAreaWhateverItsForm)
{
    std::mt19937 engine(3);
    std::uniform_real_distribution<double> place(1.0, 64.0);
    QImage image(80, 80, QImage::Format_RGB32);
    Ink ink(&image);
    ink.setColor(Color(255, 255, 255));
    SmallShape shape;
    for (int i = 0; i < 500; ++i) {
        std::array const corners{QPointF(place(engine), place(engine)), QPointF(place(engine), place(engine)),
                                 QPointF(place(engine), place(engine))};
        QPointF const a = corners[1] - corners[0];
        QPointF const b = corners[2] - corners[0];
        std::vector<Edge> edges;
        appendEdges(corners, &edges);
        image.fill(Qt::black);
        shape.paint(edges, ink, ClipArea(image.rect()));
        double sum = 0.0;
        for (int y = 0; y < 80; ++y) {
            for (int x = 0; x < 80; ++x)
                sum += qRed(image.pixel(x, y)) / 255.0;
        }
        // Each pixel on the border is rounded to 1/255.
        ASSERT_NEAR(sum, std::abs(a.x() * b.y() - a.y() * b.x()) / 2.0, 0.3) << i;
    }
}

constexpr Color RED(255, 0, 0);
constexpr Color BLUE(0, 0, 255);

Stroke strokeOf(Color const &color, double width = 0.1)
{
    Stroke stroke;
    stroke.color = color;
    stroke.width = width;
    return stroke;
}

/// Lines of 2 mm to the right.
void addLines(LookBatch *batch, std::vector<std::pair<QPointF, Color>> const &lines)
{
    for (auto const &[from, color] : lines)
        batch->addLine(from, from + QPointF(2, 0), strokeOf(color))->path += color == RED ? 'r' : 'b';
}

std::string pathsOf(LookBatch *batch)
{
    std::string paths;
    for (LookBatch::Group const &group : batch->take())
        paths += group.path + " ";
    return paths;
}

TEST(LookBatch, PutsThingsThatLieApartIntoOneLayer)
{
    LookBatch batch;
    addLines(&batch, {{{10, 1}, RED}, {{10, 2}, BLUE}, {{10, 3}, RED}, {{10, 4}, BLUE}, {{-30, -50}, RED}});

    EXPECT_EQ(pathsOf(&batch), "bb rrr ");
    EXPECT_TRUE(batch.isEmpty());
}

TEST(LookBatch, KeepsTheOrderOfThingsThatTouch)
{
    LookBatch batch;
    addLines(&batch, {{{10, 1}, RED}, {{11, 1}, BLUE}, {{12, 1}, RED}, {{20, 1}, RED}});
    EXPECT_EQ(pathsOf(&batch), "rr b r ");

    addLines(&batch, {{{10, 1}, BLUE}, {{11, 1}, BLUE}, {{12, 1}, BLUE}});
    EXPECT_EQ(pathsOf(&batch), "bbb ");
}

TEST(LookBatch, KeepsStrokesAndMarksApart)
{
    LookBatch batch;
    batch.addLine({1, 1}, {2, 2}, strokeOf(RED, 0.1))->path += 'a';
    batch.addLine({11, 1}, {12, 2}, strokeOf(RED, 0.2))->path += 'b';
    batch.addArea(std::array{QPointF(20, 1), QPointF(21, 1), QPointF(20, 2)}, RED)->path += 'c';
    batch.addMark(QRectF(30, 1, 1, 1), RED)->places.emplace_back(30.5, 1.5);
    batch.addLine({41, 1}, {42, 2}, strokeOf(RED, 0.1))->path += 'd';

    auto const groups = batch.take();
    ASSERT_EQ(groups.size(), 4U);
    EXPECT_EQ(groups[0].path, "c");
    EXPECT_EQ(groups[1].places.size(), 1U);
    EXPECT_EQ(groups[2].path, "ad");
    EXPECT_EQ(groups[3].path, "b");
    EXPECT_EQ(groups[3].stroke, strokeOf(RED, 0.2));
}

TEST(LookBatch, RefusesWhatIsLargeOrFarAway)
{
    LookBatch batch;
    EXPECT_EQ(batch.addLine({0, 0}, {30, 1}, strokeOf(RED)), nullptr);
    EXPECT_EQ(batch.addLine({1e9, 0}, {1e9 + 1, 1}, strokeOf(RED)), nullptr);
    EXPECT_EQ(batch.addLine({1, 1}, {1, 1}, strokeOf(RED)), nullptr);
    EXPECT_TRUE(batch.isEmpty());
}

} // namespace
} // namespace Zem::Fig2Qt
