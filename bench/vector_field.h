// vector_field.h: a camera picture with a field of vectors, for benchmarks.
#pragma once

#include <ZemFig2Image.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2ImageDataPoints.h>
#include <ZemFig2TokenInterface.h>
#include <ZemFig2Transformation.h>

#include <ZemImage.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace Zem::Fig2 {

inline constexpr int SIDE = 2048;
inline constexpr int POINTS = 100000;
inline constexpr int POINTS_PER_ROW = 400;

/// A pixel for each unit in the plane of the origin, whose middle is that of the picture.
inline CameraTransformation *camera()
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

/// Lends a camera picture with 100,000 vectors under any name, and the number of the call as the value of any token.
class OnePicture : public EmptyFigureTokenInterface
{
public:
    OnePicture()
    {
        std::mt19937 engine(7);
        std::normal_distribution<double> noise(30000.0, 6000.0);
        for (unsigned int y = 0; y < SIDE; ++y) {
            for (unsigned int x = 0; x < SIDE; ++x)
                picture_.getRow(y)[x] = static_cast<std::uint16_t>(std::clamp(noise(engine), 0.0, 65535.0));
        }
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
    Value getValue(QString, IndexIdentifier const &, StageIdentifier const &) const override { return Value(value_); }
    unsigned int getModifiedCounter(QString const &name) const override
    {
        return name == QLatin1StringView("camera") ? 1 : static_cast<unsigned int>(value_);
    }
    void count() { ++value_; }

private:
    Image16 picture_{SIDE, SIDE};
    ImageData data_;
    int value_ = 0;
};

} // namespace Zem::Fig2
