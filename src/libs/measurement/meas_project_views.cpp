#include <ZemMeasProject.h>

#include "meas_point_import.h"
#include "meas_series_records.h"

#include <ZemErrorLog.h>
#include <ZemImage.h>
#include <ZemParse.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

namespace {

constexpr double MISSING = std::numeric_limits<double>::quiet_NaN();

std::unique_ptr<Zem::Image> makePicture(int type)
{
    switch (type) {
    case Zem::Image::TYPE_IMAGE8:
        return std::make_unique<Image8>();
    case Zem::Image::TYPE_IMAGE16:
        return std::make_unique<Image16>();
    case Zem::Image::TYPE_IMAGE32:
        return std::make_unique<Image32>();
    case Zem::Image::TYPE_COLOR:
        return std::make_unique<ImageColor>();
    default:
        return nullptr;
    }
}

/// Null, and then the reason, for a file that holds no picture.
std::unique_ptr<Zem::Image> loadFile(QString const &fileName, QString *reason)
{
    ErrorLog log(false);
    std::unique_ptr<Zem::Image> picture(Zem::Image::loadImage(fileName, &log, -1, -1));
    *reason = log.getLog().trimmed();
    return picture;
}

std::unique_ptr<Zem::Image> unpack(StoredPicture const &stored)
{
    std::unique_ptr<Zem::Image> picture = makePicture(stored.type);
    StructVector<unsigned char> bytes;
    bytes.resize(static_cast<std::size_t>(stored.pixels.size()));
    std::copy(stored.pixels.begin(), stored.pixels.end(), bytes.data());
    return picture && picture->uncompressImage(bytes) ? std::move(picture) : nullptr;
}

QByteArray pack(Zem::Image const &picture)
{
    StructVector<unsigned char> bytes;
    picture.compressImage(&bytes);
    return {reinterpret_cast<char const *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

/// Linked files stand beside an SQLite file and move with it; a server has no folder.
QDir folderOf(SqlConnection const &connection)
{
    bool const isFile = connection.kind() == SqlKind_t::SQLITE && connection.name() != QLatin1StringView(":memory:");
    return isFile ? QFileInfo(connection.name()).absoluteDir() : QDir::root();
}

QString sizeText(unsigned int width, unsigned int height)
{
    return QStringLiteral("%1 x %2 pixels").arg(width).arg(height);
}

void requireSize(ProjectView const &view, unsigned int width, unsigned int height, QString const &source)
{
    if (view.camera.width != width || view.camera.height != height) {
        throw ImportError(
            QStringLiteral("%1: %2, but view '%3' has %4")
                .arg(source, sizeText(width, height), view.name, sizeText(view.camera.width, view.camera.height)));
    }
}

void requireStorable(QString const &source, CameraModel const &camera)
{
    try {
        CameraModel read;
        QString parameters = camera.getParameterString();
        read.createFromParameterString(parameters);
    } catch (ParamError const &error) {
        throw ImportError(QStringLiteral("%1: camera: %2").arg(source, error.getText()));
    }
}

/// Rows of a point field that can be shown, and their numbers by column.
class FieldReader
{
public:
    FieldReader(Project const &project, ProjectPointSet const &set, unsigned int stage)
        : project_(project), set_(set), stage_(stage)
    {
    }

    /// All of `absent` without a column of this role.
    std::vector<double> column(QString const &name, double absent) const
    {
        if (name.isEmpty()) {
            return std::vector<double>(rows_, absent);
        }
        std::vector<double> numbers = project_.pointNumbers(set_, name, stage_, nullptr);
        if (numbers.size() != rows_) { // a damaged project, or another process has just replaced the points
            throw ProjectError(QStringLiteral("%1: the columns of the points '%2' have not the same rows")
                                   .arg(project_.name(), set_.name));
        }
        return numbers;
    }

    PointField read()
    {
        std::vector<double> const x = project_.pointNumbers(set_, set_.columns.x, stage_, nullptr);
        rows_ = x.size();
        std::vector<double> const y = column(set_.columns.y, MISSING);
        std::vector<double> const z = column(set_.columns.z, 0.0);
        std::vector<double> const dx = column(set_.columns.dx, 0.0);
        std::vector<double> const dy = column(set_.columns.dy, 0.0);
        std::vector<double> const dz = column(set_.columns.dz, 0.0);
        std::vector<double> const ids = column(set_.columns.id, MISSING);
        std::vector<double> const valid = column(set_.columns.valid, 1.0);
        bool const hasValues = !set_.columns.value.isEmpty();
        std::vector<double> const values = column(set_.columns.value, 0.0);
        PointField field;
        for (std::size_t i = 0; i < rows_; ++i) {
            if (std::isnan(x[i] + y[i] + z[i])) {
                continue;
            }
            bool const whole = !std::isnan(dx[i] + dy[i] + dz[i]);
            field.rows.push_back(i);
            field.ids.push_back(idOf(ids[i], i));
            field.points.push_back({x[i], y[i], z[i]});
            field.vectors.push_back(whole ? BaVec3d<double>{dx[i], dy[i], dz[i]} : BaVec3d<double>());
            field.valid.push_back(whole && valid[i] > 0.0 && !std::isnan(values[i]));
            if (hasValues) {
                field.values.push_back(values[i]);
            }
        }
        return field;
    }

private:
    static int idOf(double number, std::size_t row)
    {
        using Limits = std::numeric_limits<int>;
        bool const isId = number >= Limits::min() && number <= Limits::max() && number == std::trunc(number);
        return isId ? static_cast<int>(number) : static_cast<int>(row) + 1;
    }

    Project const &project_;
    ProjectPointSet const &set_;
    unsigned int stage_;
    std::size_t rows_ = 0;
};

} // namespace

std::vector<ProjectView> Project::views() const
{
    return readViews(*connection_);
}

std::vector<ProjectPointSet> Project::pointSets() const
{
    return readPointSets(*connection_);
}

std::unique_ptr<Zem::Image> Project::picture(ProjectView const &view, unsigned int stage, PictureKind_t kind) const
{
    std::optional<StoredPicture> const stored = readPicture(*connection_, view.id, stage, kind);
    if (!stored) {
        return nullptr;
    }
    QString reason = QStringLiteral("the project is damaged");
    std::unique_ptr<Zem::Image> picture =
        stored->file.isEmpty() ? unpack(*stored) : loadFile(folderOf(*connection_).filePath(stored->file), &reason);
    if (!picture) {
        connection_->fail(QStringLiteral("picture of '%1' at stage %2: %3").arg(view.name).arg(stage).arg(reason));
    }
    return picture;
}

PointField Project::points(ProjectPointSet const &set, unsigned int stage) const
{
    return set.groups.contains(stage) ? FieldReader(*this, set, stage).read() : PointField();
}

std::vector<double> Project::pointNumbers(ProjectPointSet const &set, QString const &column, unsigned int stage,
                                          UnitData *unit) const
{
    auto const group = set.groups.find(stage);
    if (group == set.groups.end()) {
        return {};
    }
    QString const name = group->second + QLatin1Char('.') + column;
    std::optional<ProjectSeries> const series = findSeries(*connection_, name);
    if (!series) {
        connection_->fail(QStringLiteral("there is no series '%1' of the points '%2'").arg(name, set.name));
    }
    std::vector<double> numbers = readSeriesNumbers(*connection_, *series);
    if (series->unit.hasUnit()) {
        Unit const &quantity = *series->unit.getUnit();
        for (double &number : numbers) {
            double const inBase = quantity.toBase(number, series->unit.getCurrentUnit());
            number = std::isfinite(inBase) ? inBase : MISSING;
        }
    }
    if (unit) {
        *unit = series->unit;
    }
    return numbers;
}

void Project::changeView(QString const &viewName, std::function<void(ProjectView *)> const &work)
{
    change([&] {
        ProjectView view = findView(*connection_, viewName);
        view.modified = nextChange(*connection_);
        work(&view);
        connection_->execute(QStringLiteral("UPDATE zem_project SET change = change + 1"));
    });
}

void Project::importPicture(QString const &fileName, PictureOptions const &options)
{
    requireTokenName(fileName, options.view);
    requireStageNumber(fileName, options.stage);
    QString reason;
    std::unique_ptr<Zem::Image> const picture = loadFile(fileName, &reason);
    if (!picture) {
        throw ImportError(reason);
    }
    if (options.kind == PictureKind_t::OVERLAY && picture->getType() != Zem::Image::TYPE_COLOR) {
        throw ImportError(QStringLiteral("%1: an overlay is a picture in colour").arg(fileName));
    }
    StoredPicture stored;
    stored.type = picture->getType();
    if (options.link) {
        stored.file = folderOf(*connection_).relativeFilePath(QFileInfo(fileName).absoluteFilePath());
    } else {
        stored.pixels = pack(*picture);
    }
    changeView(options.view, [&](ProjectView *view) {
        if (view->camera.width == 0) {
            view->camera = CameraModel::plane(picture->getWidth(), picture->getHeight(), 1.0, {0.0, 0.0}, false);
        }
        requireSize(*view, picture->getWidth(), picture->getHeight(), fileName);
        writeView(*connection_, view);
        writePicture(*connection_, view->id, options.stage, options.kind, stored);
        requireStage(*connection_, options.stage);
    });
}

void Project::setCamera(QString const &viewName, CameraModel const &camera)
{
    requireTokenName(name(), viewName);
    if (camera.width == 0 || camera.height == 0) {
        throw ImportError(QStringLiteral("%1: the camera of '%2' has no size").arg(name(), viewName));
    }
    requireStorable(name(), camera);
    changeView(viewName, [&](ProjectView *view) {
        if (!view->stagesOfPictures.empty() || !view->stagesOfOverlays.empty()) {
            requireSize(*view, camera.width, camera.height, QStringLiteral("camera"));
        }
        view->camera = camera;
        writeView(*connection_, view);
    });
}

PointResult Project::importPoints(CsvTable const &table, PointOptions const &options)
{
    PointResult result;
    change([&] { result = PointImport(*connection_, table, options).run(); });
    return result;
}

} // namespace Zem::Measurement
