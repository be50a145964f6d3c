// What painters and writers refuse, and what they clean up.
#include "page_support.h"

#include <ZemError.h>
#include <ZemFig2Figure.h>
#include <ZemFig2QtPainter.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2TokenInterface.h>

#include <gtest/gtest.h>

#include <QtGui/QPainter>

#include <cmath>

namespace Zem::Support {
namespace {

using namespace Fig2;

TEST(PainterMisuse, ofTheStacksIsAProgramError)
{
    Folder const folder;
    auto const writer = Fig2Qt::createPageWriter(folder.file("page.pdf"));
    Painter &painter = writer->beginPage({20, 20});

    EXPECT_THROW(painter.resetClipping(), ProgError);
    EXPECT_THROW(painter.popTransformation(), ProgError);
}

TEST(PainterMisuse, aForgottenCacheIdIsAProgramErrorOfTheWriter)
{
    Folder const folder;
    auto const writer = Fig2Qt::createPageWriter(folder.file("page.png"));
    writer->beginPage({20, 20}).pushCacheId(QStringLiteral("7"));

    EXPECT_THROW(writer->close(), ProgError);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(PainterMisuse, anAbandonedWriterMayHaveCacheIdsLeft)
{
    Folder const folder;
    {
        auto const writer = Fig2Qt::createPageWriter(folder.file("page.svg"));
        writer->beginPage({20, 20}).pushCacheId(QStringLiteral("7"));
    }

    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(PainterMisuse, clippingsLeftOpenEndWithThePage)
{
    for (char const *name : {"page.pdf", "page.svg", "page.png"}) {
        Folder const folder;
        writePage(folder.file(name), {20, 20},
                  [](Painter &painter) { painter.setClipping(Rect(1, 1, 2, 2), Rotation::null); });

        EXPECT_FALSE(bytesOf(folder.file(name)).isEmpty());
    }
}

TEST(PainterMisuse, aClosedWriterTakesNoPage)
{
    for (char const *name : {"page.pdf", "page.svg", "page.png"}) {
        Folder const folder;
        auto const writer = Fig2Qt::createPageWriter(folder.file(name));
        writer->beginPage({20, 20});
        writer->close();
        writer->close();

        EXPECT_THROW(writer->beginPage({20, 20}), ProgError);
    }
}

TEST(PainterOfAWriter, drawsEverythingAtOnce)
{
    Folder const folder;
    auto const writer = Fig2Qt::createPageWriter(folder.file("page.pdf"));

    EXPECT_EQ(writer->beginPage({20, 20}).getMode(), 0);
}

TEST(QtPainterOnAPicture, takesMillimetresToTheResolutionOfTheDevice)
{
    QImage image(200, 200, QImage::Format_RGB32);
    image.setDotsPerMeterX(10'000); // 10 to the millimetre
    image.setDotsPerMeterY(10'000);
    image.fill(Qt::white);
    {
        QPainter qPainter(&image);
        Fig2Qt::QtPainter painter(&qPainter);
        painter.drawRect({5, 6}, {10, 8}, LineStyle::null, FillStyle(BLACK), Rotation::null);
    }

    // Qt rounds the resolution to whole dots per inch: 254.
    EXPECT_EQ(inkOf(image), QRectF(50, 60, 100, 80));
}

TEST(QtPainterOnAPicture, leavesTheQPainterAsItWas)
{
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter qPainter(&image);
    qPainter.translate(3, 4);
    qPainter.setPen(Qt::green);
    {
        Fig2Qt::QtPainter painter(&qPainter, QTransform::fromScale(5, 5));
        painter.setClipping(Rect(0, 0, 2, 2), Rotation::null);
        painter.drawLine({0, 0}, {20, 20}, fullLine(1.0), Rotation::null);
    }

    EXPECT_EQ(qPainter.transform(), QTransform::fromTranslate(3, 4));
    EXPECT_EQ(qPainter.pen().color(), QColor(Qt::green));
    EXPECT_FALSE(qPainter.hasClipping());
}

TEST(QtPainterOnAPicture, respectsTheTransformationOfTheQPainter)
{
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
        QPainter qPainter(&image);
        qPainter.translate(50, 20);
        Fig2Qt::QtPainter painter(&qPainter, QTransform::fromScale(10, 10));
        painter.drawRect({0, 0}, {4, 3}, LineStyle::null, FillStyle(BLACK), Rotation::null);
    }

    EXPECT_EQ(inkOf(image), QRectF(50, 20, 40, 30));
}

TEST(QtPainterOnNothing, isAProgramError)
{
    QPainter idle;

    EXPECT_THROW(Fig2Qt::QtPainter painter(&idle), ProgError);
    EXPECT_THROW(Fig2Qt::QtPainter painter(nullptr), ProgError);
}

TEST(QtPainter, tellsWhetherANestedFigureIsDrawn)
{
    QImage image(10, 10, QImage::Format_RGB32);
    QPainter qPainter(&image);
    Fig2Qt::QtPainter painter(&qPainter);

    painter.setDrawingNested(true);
    EXPECT_TRUE(painter.isDrawingNested());
    painter.setDrawingNested(false);
    EXPECT_FALSE(painter.isDrawingNested());
}

TEST(DrawnFigure, showsItsBackgroundAndVisibleElements)
{
    EmptyFigureTokenInterface const tokens;
    Figure figure(&tokens);
    figure.setSize({20, 20});
    figure.setBackground(FillStyle(RED));
    for (bool const visible : {true, false}) {
        auto *rectangle = new Rectangle;
        figure.getRoot()->addChild(rectangle);
        rectangle->setSize({4, 4});
        rectangle->setOrigin({visible ? 5.0 : 15.0, 10.0});
        rectangle->setBackground(FillStyle(BLUE));
        rectangle->setVisible(visible);
    }
    figure.update(StageIdentifier::NO_STAGE, true);
    QImage const image = paint({20, 20}, [&](Painter &painter) { Fig2Qt::drawPage(figure, &painter); });

    EXPECT_EQ(colorAt(image, 1, 1), "red");
    EXPECT_EQ(colorAt(image, 5, 10), "blue");
    EXPECT_EQ(colorAt(image, 15, 10), "red");
}

TEST(DrawnFigure, isAPageOfItsSize)
{
    Figure figure;
    figure.setSize({30, 12});
    Folder const folder;
    Fig2Qt::PageOptions options;
    options.dpi = 254.0;
    auto const writer = Fig2Qt::createPageWriter(folder.file("page.PNG"), options);
    Fig2Qt::drawPage(figure, writer.get());
    writer->close();

    EXPECT_EQ(QImage(folder.file("page.PNG")).size(), QSize(300, 120));
}

} // namespace
} // namespace Zem::Support
