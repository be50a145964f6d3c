#include <ZemMeasImageInterface.h>

#include "meas_field.h"
#include "meas_point_store.h"
#include "meas_statistics.h"

#include <ZemFig2Transformation.h>
#include <ZemMeasImageLabels.h>
#include <ZemTokenTools.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Zem::Measurement {

using namespace Fig2;

namespace {

constexpr std::size_t NO_POINT = std::numeric_limits<std::size_t>::max();

/// An id taken apart.
struct Measured
{
    QString set;
    std::vector<int> points;
};

std::optional<Measured> parse(QString const &id)
{
    QStringList const parts = id.split(QLatin1Char(':'));
    Measured measured{parts.front(), {}};
    for (qsizetype i = 1; i < parts.size(); ++i) {
        bool isNumber = false;
        measured.points.push_back(parts[i].toInt(&isNumber));
        if (!isNumber) {
            return std::nullopt;
        }
    }
    return measured.points.size() <= 3 ? std::optional(measured) : std::nullopt;
}

double lengthOf(BaVec3d<double> const &v)
{
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

/// Radians, 0 to pi; by the arc tangent, which is exact for small angles too.
double angleBetween(BaVec3d<double> const &a, BaVec3d<double> const &b)
{
    BaVec3d<double> const cross{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    return std::atan2(lengthOf(cross), a.x * b.x + a.y * b.y + a.z * b.z);
}

} // namespace

/// The values of one measured thing.
class ProjectImageInterface::Values : public TokenInterface
{
public:
    Values(PointStore *store, Measured const &measured) : store_(store), measured_(measured) {}

    void getTokens(std::vector<TokenInfo> *tokens) const override
    {
        for (QString const &name : names()) {
            Value const value = getValue(name, IndexIdentifier::NO_INDEX, store_->currentStage());
            tokens->emplace_back(TokenInfo::CATEGORY_POINT, typeOf(value), name, name);
        }
    }

    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override
    {
        if (!names().contains(name)) {
            return Value::UNKNOWN;
        }
        PointStore::Points const points = store_->find(measured_.set, stage);
        std::vector<std::size_t> places;
        if (index != IndexIdentifier::NO_INDEX || !points || !points->findPoints(measured_.points, &places)) {
            return Value::INVALID;
        }
        switch (places.size()) {
        case 0:
            return setValue(name, *points);
        case 1:
            return pointValue(name, *points, places[0]);
        case 2:
            return lineValue(name, *points, places);
        default:
            return angleValue(name, *points, places);
        }
    }

    unsigned int getModifiedCounter(QString const &name) const override
    {
        return names().contains(name) ? store_->modified(measured_.set) : 0;
    }

private:
    static TokenInfo::Type_t typeOf(Value const &value)
    {
        return value.getType() == Value::TYPE_INTEGER ? TokenInfo::TYPE_INTEGER
                                                      : TokenTools::getTokenType(value.getUnitData().getUnit());
    }

    QStringList names() const
    {
        static std::array<QStringList, 4> const NAMES{
            QStringList{QStringLiteral("count"), QStringLiteral("min"), QStringLiteral("max"), QStringLiteral("mean"),
                        QStringLiteral("sigma")},
            QStringList{QStringLiteral("id"), QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z"),
                        QStringLiteral("dx"), QStringLiteral("dy"), QStringLiteral("dz"), QStringLiteral("length")},
            QStringList{QStringLiteral("length"), QStringLiteral("length0"), QStringLiteral("elongation"),
                        QStringLiteral("strain")},
            QStringList{QStringLiteral("angle"), QStringLiteral("angle0"), QStringLiteral("change")}};
        QStringList all = NAMES[measured_.points.size()];
        if (measured_.points.size() == 1) {
            for (QString const &column : store_->columns(measured_.set)) {
                if (!all.contains(column)) {
                    all << column;
                }
            }
        }
        return all;
    }

    static Value quantity(double number, UnitData const &unit)
    {
        if (std::isnan(number)) {
            return Value::INVALID;
        }
        return unit.hasUnit() ? Value(number, unit) : Value(number, nullptr);
    }

    Value setValue(QString const &name, PointSetAtStage const &points) const
    {
        if (name == QLatin1StringView("count")) {
            auto const count = std::count(points.field.valid.begin(), points.field.valid.end(), true);
            return Value(static_cast<int>(count));
        }
        PointNumbers const coloring = store_->coloring(points);
        std::vector<double> const numbers = coloring.known();
        if (numbers.empty()) {
            return Value::INVALID;
        }
        Legend2::Data const data = statisticsOf(numbers);
        std::map<QString, double> const values{{QStringLiteral("min"), data.getDynamicMinimum()},
                                               {QStringLiteral("max"), data.getDynamicMaximum()},
                                               {QStringLiteral("mean"), data.getAverage()},
                                               {QStringLiteral("sigma"), data.getSigmaValue()}};
        return quantity(values.at(name), coloring.unit);
    }

    Value pointValue(QString const &name, PointSetAtStage const &points, std::size_t place) const
    {
        PointField const &field = points.field;
        if (name == QLatin1StringView("id")) {
            return Value(field.ids[place]);
        }
        BaVec3d<double> const &p = field.points[place];
        BaVec3d<double> const &v = field.vectors[place];
        std::map<QString, double> const places{
            {QStringLiteral("x"), p.x}, {QStringLiteral("y"), p.y}, {QStringLiteral("z"), p.z}};
        if (auto const found = places.find(name); found != places.end()) {
            return quantity(found->second, points.placeUnit);
        }
        constexpr double MISSING = std::numeric_limits<double>::quiet_NaN();
        std::map<QString, double> const vectors{{QStringLiteral("dx"), v.x},
                                                {QStringLiteral("dy"), v.y},
                                                {QStringLiteral("dz"), v.z},
                                                {QStringLiteral("length"), lengthOf(v)}};
        if (auto const found = vectors.find(name); found != vectors.end()) {
            return quantity(points.hasVectors ? found->second : MISSING, points.vectorUnit);
        }
        PointNumbers const &column = store_->numbers(points, name);
        return quantity(column.numbers[place], column.unit);
    }

    Value lineValue(QString const &name, PointSetAtStage const &points, std::vector<std::size_t> const &places) const
    {
        double const before = lengthOf(points.field.points[places[1]] - points.field.points[places[0]]);
        double const now = lengthOf(points.displaced(places[1]) - points.displaced(places[0]));
        if (name == QLatin1StringView("length0")) {
            return quantity(before, points.placeUnit);
        }
        if (name == QLatin1StringView("length")) {
            return quantity(now, points.placeUnit);
        }
        if (name == QLatin1StringView("elongation")) {
            return quantity(now - before, points.placeUnit);
        }
        return before > 0.0 ? Value((now - before) / before, uStrain) : Value::INVALID;
    }

    Value angleValue(QString const &name, PointSetAtStage const &points, std::vector<std::size_t> const &places) const
    {
        auto const at = [&](std::size_t i) { return points.field.points[places[i]]; };
        auto const displaced = [&](std::size_t i) { return points.displaced(places[i]); };
        double const before = angleBetween(at(0) - at(1), at(2) - at(1));
        double const now = angleBetween(displaced(0) - displaced(1), displaced(2) - displaced(1));
        double const value = name == QLatin1StringView("angle0")  ? before
                             : name == QLatin1StringView("angle") ? now
                                                                  : now - before;
        return Value(value, uAngle);
    }

    PointStore *store_;
    Measured measured_;
};

ProjectImageInterface::ProjectImageInterface(ProjectTokenInterface const *tokens)
    : store_(std::make_unique<PointStore>(tokens->contents(), tokens))
{
    registerImageLabels();
}

ProjectImageInterface::~ProjectImageInterface() = default;

std::vector<QString> ProjectImageInterface::getImageElements(QString const &token)
{
    std::vector<QString> ids;
    for (PointStore::Points const &points : store_->ofImage(token)) {
        ids.push_back(points->set.name);
        for (std::size_t i = 0; i < points->field.ids.size(); ++i) {
            int const id = points->field.ids[i];
            if (points->indexOfId.value(id, NO_POINT) == i) {
                ids.push_back(QStringLiteral("%1:%2").arg(points->set.name).arg(id));
            }
        }
    }
    return ids;
}

QString ProjectImageInterface::getImageElementName(QString const &id) const
{
    std::optional<Measured> const measured = parse(id);
    if (!measured || measured->points.empty()) {
        return id;
    }
    QStringList numbers;
    for (int const point : measured->points) {
        numbers << QString::number(point);
    }
    return QStringLiteral("%1 %2").arg(measured->set, numbers.join(QStringLiteral(" - ")));
}

ImageLabel *ProjectImageInterface::createImageLabel(QString const &id) const
{
    constexpr std::array TYPES{ImageLabelCreator::TYPE_DISPLACEMENT_FIELD, ImageLabelCreator::TYPE_POINT,
                               ImageLabelCreator::TYPE_LINE, ImageLabelCreator::TYPE_ANGLE};
    std::optional<Measured> const measured = parse(id);
    if (!measured || !store_->hasSet(measured->set)) {
        return nullptr;
    }
    ImageLabel *const label = ImageLabelCreator::create(TYPES[measured->points.size()]);
    label->setImageElementId(id);
    return label;
}

namespace {

std::vector<BaVec3d<double>> placesOf(PointStore::Points const &points, std::vector<int> const &ids)
{
    std::vector<std::size_t> indices;
    std::vector<BaVec3d<double>> places;
    if (points && points->findPoints(ids, &indices)) {
        for (std::size_t const index : indices) {
            places.push_back(points->places[index]);
        }
    }
    return places;
}

/// The place now, then those at all stages; nothing without a place now.
std::vector<BaVec3d<double>> wayOf(PointStore &store, Measured const &measured)
{
    std::vector<BaVec3d<double>> way = placesOf(store.find(measured.set, store.currentStage()), measured.points);
    if (way.empty()) {
        return way;
    }
    for (unsigned int const stage : store.stages(measured.set)) {
        std::vector<BaVec3d<double>> const there =
            placesOf(store.find(measured.set, StageIdentifier(stage)), measured.points);
        if (!there.empty()) {
            way.push_back(there.front());
        }
    }
    return way;
}

void showField(PointStore &store, PointStore::Points const &points, DisplacementFieldLabel *label)
{
    if (!points) {
        label->setPlaces({});
        return label->setField({}, {});
    }
    std::optional<BaVec3d<double>> const middle = points->middle();
    label->setField(marksOf(points->field, points->places), store.coloring(*points).known());
    label->setPlaces(middle ? std::vector{*middle} : std::vector<BaVec3d<double>>());
}

} // namespace

bool ProjectImageInterface::updateImageElement(ImageLabel *label) const
{
    auto *const measuredLabel = dynamic_cast<MeasuredLabel *>(label);
    std::optional<Measured> const measured = parse(label->getImageElementId());
    if (!measuredLabel || !measured || !store_->hasSet(measured->set)) {
        return false;
    }
    PointStore::Points const points = store_->find(measured->set, store_->currentStage());
    if (auto *const field = dynamic_cast<DisplacementFieldLabel *>(label)) {
        showField(*store_, points, field);
    } else if (label->getLabelType() == ImageLabelCreator::TYPE_STAGE_POINT && measured->points.size() == 1) {
        measuredLabel->setPlaces(wayOf(*store_, *measured));
    } else {
        measuredLabel->setPlaces(placesOf(points, measured->points));
    }
    return true;
}

bool ProjectImageInterface::configureImageLabel(ImageLabel *) const
{
    return false;
}

void ProjectImageInterface::importImageElementVisualisation(ImageLabel *label,
                                                            ImageDataVisualisation const &visualisation) const
{
    if (auto *const field = dynamic_cast<DisplacementFieldLabel *>(label)) {
        field->setVisualisation(visualisation);
    } else if (auto *const measured = dynamic_cast<MeasuredLabel *>(label)) {
        measured->setMarkLine(visualisation.getLineStyle());
    }
}

TokenInterface const *ProjectImageInterface::getTokenInterface(QString const &id) const
{
    std::optional<Measured> const measured = parse(id);
    if (!measured || !store_->hasSet(measured->set)) {
        return nullptr;
    }
    std::unique_ptr<Values> &values = values_[id];
    if (!values) {
        values = std::make_unique<Values>(store_.get(), *measured);
    }
    return values.get();
}

bool ProjectImageInterface::getObjectPoint(QString const &id, BaVec2d<double> const &imagePoint,
                                           BaVec3d<double> *objectPoint) const
{
    std::optional<Measured> const measured = parse(id);
    PointStore::Points const points = measured ? store_->find(measured->set, store_->currentStage()) : nullptr;
    if (!points || !points->view) {
        return false;
    }
    std::unique_ptr<Fig2::Transformation> const transformation = points->view->camera.makeTransformation();
    double nearest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < points->places.size(); ++i) {
        BaVec2d<double> pixel;
        bool const isShown = points->field.valid[i] && transformation->computeImagePoint(points->places[i], &pixel);
        if (isShown && (pixel - imagePoint).length() < nearest) {
            nearest = (pixel - imagePoint).length();
            *objectPoint = points->places[i];
        }
    }
    return std::isfinite(nearest);
}

void ProjectImageInterface::measurementsChanged(QString const &id)
{
    measurementDeleted(id);
}

} // namespace Zem::Measurement
