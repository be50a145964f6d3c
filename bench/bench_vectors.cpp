// What vectors on a picture cost: 100,000 of them seen by a camera with distortion and coloured by their length, drawn
// into a painter that does nothing.
#include "no_painter.h"

#include <ZemFig2Image.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2TokenInterface.h>
#include <ZemFig2Transformation.h>

#include <ZemImage.h>

#include <cmath>

namespace Zem::Fig2 {
namespace {

constexpr int SIDE = 2048;
constexpr int POINTS = 100000;
constexpr int POINTS_PER_ROW = 400;

/// A pixel for each unit in the plane of the origin, whose middle is that of the picture.
CameraTransformation *camera()
{
    Cal::InternalOrientation orientation;
    orientation.setImageDistance({2000, 2000});
    orientation.setPrincipalPoint({SIDE / 2.0, SIDE / 2.0});
    orientation.setRadialDistortion(-0.05, 0.01, 0.0);
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(SIDE, SIDE);
    return new CameraTransformation(camera, Zem::Transformation({0, 0, 2000}, {0, 0, 0}, 1.0));
}

class OnePicture : public EmptyFigureTokenInterface
{
public:
    OnePicture()
    {
        auto *points = new ImageDataPoints;
        for (int i = 0; i < POINTS; ++i) {
            double const x = 5.0 * (i % POINTS_PER_ROW) - 1000.0;
            double const y = 8.0 * (i / POINTS_PER_ROW) - 1000.0;
            points->addPoint(i, {x, y, 0}, {4.0 * std::sin(y * 0.01), 4.0 * std::cos(x * 0.01), 1.0},
                             ImageDataPoints::INVALID_VALUE, true, -1);
        }
        auto *object = new ImageDataObject("field");
        object->addElement(points);
        data_.addObject(object);
        data_.setImage(&picture_);
        data_.setTransformation(camera());
        Legend2::Data scale;
        scale.setDynamicMaximum(5.0);
        data_.setLegendData(Legend2::Legend(uLength), scale);
    }
    ImageData const *getImage(QString const &) const override { return &data_; }
    void releaseImage(QString const &) const override {}

private:
    Image8 picture_{SIDE, SIDE};
    ImageData data_;
};

/// With all components in one vector (0), or one vector for each (1).
void drawVectors(benchmark::State &state)
{
    OnePicture const tokens;
    ImageDataVisualisation look(false);
    look.setVectorLineWidth(0.1);
    look.setDrawCombinedVectors(state.range(0) == 0);
    Image image;
    image.setToken("camera");
    image.setOrigin({100, 100});
    image.setSize({180, 180});
    image.setVisualisation(QString(), look);
    image.update(StageIdentifier(1), &tokens, nullptr);
    NoPainter painter;
    painter.setMode(0);
    for (auto _ : state)
        image.draw(&tokens, &painter, 0);
    state.SetItemsProcessed(state.iterations() * POINTS);
}
BENCHMARK(drawVectors)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Fig2
