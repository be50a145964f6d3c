#include <ZemMeasCameraModel.h>

#include <ZemFig2Transformation.h>
#include <ZemParse.h>

#include <cmath>
#include <cstdint>
#include <numbers>

namespace Zem::Measurement {

namespace {

constexpr double FAR_AWAY = 1e6;
constexpr unsigned int MAX_SIDE = 1u << 20;
constexpr std::uint64_t MAX_PIXELS = 1u << 28; // views without pictures are drawn on a blank one

constexpr QLatin1StringView WIDTH_KEY{"width"};
constexpr QLatin1StringView HEIGHT_KEY{"height"};
constexpr QLatin1StringView IMAGE_DISTANCE_KEY{"image_distance"};
constexpr QLatin1StringView PRINCIPAL_POINT_KEY{"principal_point"};
constexpr QLatin1StringView RADIAL_KEY{"radial"};
constexpr QLatin1StringView TANGENTIAL_KEY{"tangential"};
constexpr QLatin1StringView TRANSLATION_KEY{"translation"};
constexpr QLatin1StringView ANGLES_KEY{"angles"};

void requireFinite(QString const &key, std::initializer_list<double> numbers)
{
    for (double const number : numbers) {
        if (!std::isfinite(number)) {
            throw ParamError(QStringLiteral("'%1' wants numbers").arg(key), -1);
        }
    }
}

void readSide(QString &parameters, QString const &key, unsigned int *side)
{
    if (Parse::parameterExists(parameters, key)) {
        *side = Parse::getUInt(parameters, key, 0, MAX_SIDE);
    }
}

void readVec(QString &parameters, QString const &key, BaVec2d<double> *value)
{
    if (Parse::parameterExists(parameters, key)) {
        *value = Parse::getVec2d(parameters, key);
        requireFinite(key, {value->x, value->y});
    }
}

void readVec(QString &parameters, QString const &key, BaVec3d<double> *value)
{
    if (Parse::parameterExists(parameters, key)) {
        *value = Parse::getVec3dFromString(parameters, key);
        requireFinite(key, {value->x, value->y, value->z});
    }
}

} // namespace

CameraModel CameraModel::plane(unsigned int width, unsigned int height, double scale, BaVec2d<double> const &origin,
                               bool upwards)
{
    CameraModel model;
    model.width = width;
    model.height = height;
    model.imageDistance = {scale * FAR_AWAY, scale * FAR_AWAY};
    model.principalPoint = origin;
    model.translation = {0.0, 0.0, FAR_AWAY};
    model.angles = {upwards ? std::numbers::pi : 0.0, 0.0, 0.0};
    return model;
}

std::unique_ptr<Fig2::Transformation> CameraModel::makeTransformation() const
{
    Cal::InternalOrientation orientation;
    orientation.setImageDistance(imageDistance);
    orientation.setPrincipalPoint(principalPoint);
    orientation.setRadialDistortion(radial[0], radial[1], radial[2]);
    orientation.setTangentialDistortion(tangential[0], tangential[1]);
    Cal::Camera camera(nullptr);
    camera.setOrientation(orientation);
    camera.setImageSize(width, height);
    return std::make_unique<Fig2::CameraTransformation>(camera, Zem::Transformation(translation, angles, 1.0));
}

QString CameraModel::getParameterString() const
{
    return Parse::createUInt(WIDTH_KEY, width) + Parse::createUInt(HEIGHT_KEY, height) +
           Parse::createVec2d(IMAGE_DISTANCE_KEY, imageDistance) +
           Parse::createVec2d(PRINCIPAL_POINT_KEY, principalPoint) +
           Parse::createVec3dString(RADIAL_KEY, {radial[0], radial[1], radial[2]}) +
           Parse::createVec2d(TANGENTIAL_KEY, {tangential[0], tangential[1]}) +
           Parse::createVec3dString(TRANSLATION_KEY, translation) + Parse::createVec3dString(ANGLES_KEY, angles);
}

void CameraModel::createFromParameterString(QString &parameters)
{
    QString rest = parameters;
    CameraModel read = *this;
    readSide(rest, WIDTH_KEY, &read.width);
    readSide(rest, HEIGHT_KEY, &read.height);
    if (std::uint64_t(read.width) * read.height > MAX_PIXELS) {
        throw ParamError(QStringLiteral("%1 x %2 pixels are too many").arg(read.width).arg(read.height), -1);
    }
    readVec(rest, IMAGE_DISTANCE_KEY, &read.imageDistance);
    readVec(rest, PRINCIPAL_POINT_KEY, &read.principalPoint);
    BaVec3d<double> k{radial[0], radial[1], radial[2]};
    readVec(rest, RADIAL_KEY, &k);
    read.radial = {k.x, k.y, k.z};
    BaVec2d<double> p{tangential[0], tangential[1]};
    readVec(rest, TANGENTIAL_KEY, &p);
    read.tangential = {p.x, p.y};
    readVec(rest, TRANSLATION_KEY, &read.translation);
    readVec(rest, ANGLES_KEY, &read.angles);
    *this = read;
    parameters = rest;
}

} // namespace Zem::Measurement
