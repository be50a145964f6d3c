// image_shapes_fixture.h: marks on a picture drawn at a known place, and all kinds of them with unusual members.
#pragma once

#include "image_fixture.h"

#include <RecordingPainter.h>
#include <ZemFig2ImageDataFixedShapes.h>

#include <memory>
#include <string>
#include <vector>

namespace Zem::Fig2::Fixture {

/// Drawn with the picture's corner at 10,20 mm and 0.5 mm to a pixel.
inline std::string drawn(ImageDataElement const &element, ImageDataVisualisation const &look,
                         Rotation const &rotation = Rotation::null)
{
    Support::RecordingPainter painter;
    element.draw(&painter, {10, 20}, 0.5, Rect(), nullptr, rotation, look, nullptr, 0);
    return painter.transcript();
}

/// Marks in a full line of 1 mm in #010203.
inline ImageDataVisualisation plainLook()
{
    ImageDataVisualisation look(false);
    look.setLineStyle(LineStyle(1.0, LineStyle::STYLE_FULL, Color(1, 2, 3)));
    look.setDrawArrows(ImageDataVisualisation::ARROW_NONE);
    return look;
}

inline LineStyle dashedLine()
{
    return LineStyle(0.25, LineStyle::STYLE_DASHED, Color(4, 5, 6));
}

inline Polygon2d triangle()
{
    return Polygon2d({{0, 0}, {4, 0}, {0, 2}}, true);
}

template <class Ellipse>
Ellipse arc(Ellipse ellipse)
{
    ellipse.setSegment({0.5, 1.5});
    ellipse.setAngle(0.25);
    return ellipse;
}

template <class Polygon>
Polygon opened(Polygon polygon)
{
    polygon.setClosed(false);
    return polygon;
}

inline ImageDataLine lineWithSecondArrow()
{
    ImageDataLine line({1, 2}, {3, 4});
    line.setUseArrows(ImageDataVisualisation::ARROW_SECOND);
    return line;
}

inline ImageDataFixedEllipse fixedArc()
{
    return arc(ImageDataFixedEllipse({1, 2}, {3, 4}, dashedLine(), FillStyle(Color(7, 8, 9))));
}

inline ImageDataFixedText fixedText()
{
    return ImageDataFixedText({1, 2}, Font("Serif", 8.0, 1), Color(7, 8, 9), "ab");
}

inline ImageDataFixedPolygon fixedTriangle()
{
    return opened(ImageDataFixedPolygon({1, 2}, triangle(), dashedLine(), FillStyle(Color(7, 8, 9))));
}

inline ImageDataFixedGrid fixedGrid()
{
    return ImageDataFixedGrid({{{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}}, dashedLine());
}

/// One of each kind, with no member at its default.
inline std::vector<std::unique_ptr<ImageDataElement>> allShapes()
{
    std::vector<std::unique_ptr<ImageDataElement>> shapes;
    shapes.push_back(std::make_unique<ImageDataPointMarker>(BaVec2d<double>(1, 2)));
    shapes.push_back(std::make_unique<ImageDataLine>(lineWithSecondArrow()));
    shapes.push_back(std::make_unique<ImageDataEllipse>(arc(ImageDataEllipse({1, 2}, {3, 4}))));
    shapes.push_back(std::make_unique<ImageDataText>(BaVec2d<double>(1, 2), Font("Serif", 8.0, 1), "ab"));
    shapes.push_back(std::make_unique<ImageDataPolygon>(opened(ImageDataPolygon({1, 2}, triangle()))));
    shapes.push_back(std::make_unique<ImageDataFixedLine>(BaVec2d<double>(1, 2), BaVec2d<double>(3, 4), dashedLine()));
    shapes.push_back(std::make_unique<ImageDataFixedEllipse>(fixedArc()));
    shapes.push_back(std::make_unique<ImageDataFixedText>(fixedText()));
    shapes.push_back(std::make_unique<ImageDataFixedPolygon>(fixedTriangle()));
    shapes.push_back(std::make_unique<ImageDataFixedGrid>(fixedGrid()));
    return shapes;
}

/// An object of the same class with other members.
inline std::vector<std::unique_ptr<ImageDataElement>> emptyShapes()
{
    std::vector<std::unique_ptr<ImageDataElement>> shapes;
    shapes.push_back(std::make_unique<ImageDataPointMarker>());
    shapes.push_back(std::make_unique<ImageDataLine>());
    shapes.push_back(std::make_unique<ImageDataEllipse>());
    shapes.push_back(std::make_unique<ImageDataText>());
    shapes.push_back(std::make_unique<ImageDataPolygon>());
    shapes.push_back(std::make_unique<ImageDataFixedLine>());
    shapes.push_back(std::make_unique<ImageDataFixedEllipse>());
    shapes.push_back(std::make_unique<ImageDataFixedText>());
    shapes.push_back(std::make_unique<ImageDataFixedPolygon>());
    shapes.push_back(std::make_unique<ImageDataFixedGrid>());
    return shapes;
}

} // namespace Zem::Fig2::Fixture
