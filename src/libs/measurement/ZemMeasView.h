// ZemMeasView.h: what a project holds of cameras: their pictures, and the points measured with them.
#pragma once

#include <ZemMeasCameraModel.h>
#include <ZemMeasCsv.h>

#include <set>

namespace Zem::Measurement {

/// Stored in projects: never renumber.
enum class PictureKind_t {
    PICTURE = 0,
    OVERLAY = 1 ///< in colour, lies over the picture
};

/// A camera, of which there are pictures and points at any number of stages. A plain value.
struct ProjectView
{
    std::int64_t id = 0;
    QString name;
    CameraModel camera;
    unsigned int modified = 0; ///< moves with its pictures, its camera and its point sets
    std::set<unsigned int> stagesOfPictures;
    std::set<unsigned int> stagesOfOverlays;
};

/// Which columns of a table of points hold what, by name; empty where there is none. A plain value.
struct PointColumns
{
    QString x; ///< place; x and y there must be
    QString y;
    QString z;
    QString dx; ///< the vector at the point
    QString dy;
    QString dz;
    QString id;    ///< whole numbers; else points count from 1
    QString valid; ///< points with a number above 0; the others are hidden
    QString value; ///< colours the vectors; else their length does

    /// Entries of the same names, without those that are empty.
    QString getParameterString() const;
    /// Replaces all by those entries, and consumes them.
    void createFromParameterString(QString &parameters);

    bool operator==(PointColumns const &) const = default;
};

/// Points measured with a view, at any number of stages. A plain value.
struct ProjectPointSet
{
    std::int64_t id = 0;
    QString name;
    std::int64_t view = 0; ///< ProjectView::id
    PointColumns columns;  ///< by the last part of the names of their series
    bool moved = false;    ///< the pictures show the points where their vectors have taken them
    bool painted = false;  ///< the value is painted between the points, which lie on a grid
    unsigned int modified = 0;
    std::map<unsigned int, QString> groups; ///< of series, by stage

    bool operator==(ProjectPointSet const &) const = default;
};

/// The points of a set at a stage, in the base units. All vectors have one entry for each point. Points without a place
/// are left out.
struct PointField
{
    std::vector<std::size_t> rows; ///< of their table, from 0
    std::vector<int> ids;
    std::vector<BaVec3d<double>> points;
    std::vector<BaVec3d<double>> vectors; ///< (0, 0, 0) where there is none
    std::vector<double> values;           ///< of the value column; empty without one; NaN is a missing value
    std::vector<bool> valid;              ///< false also for points that miss their vector or their value
};

struct PictureOptions
{
    QString view = QStringLiteral("camera"); ///< made when there is none of this name
    unsigned int stage = 1;
    PictureKind_t kind = PictureKind_t::PICTURE;
    bool link = false; ///< only the place of the file is kept, not its pixels
};

struct PointOptions
{
    QString set = QStringLiteral("field");   ///< made when there is none of this name
    QString view = QStringLiteral("camera"); ///< the one that shows the points; made when there is none of this name
    unsigned int stage = 1;
    PointColumns columns; ///< by their names in the file; what is empty is told by the names of the columns
    bool moved = false;   ///< as in ProjectPointSet
    bool painted = false; ///< the same
};

/// What has become of a table of points.
struct PointResult
{
    QString set;
    PointColumns columns; ///< by their names in the file
    QString group;        ///< of the series that hold them
    std::size_t points = 0;
};

/// What the names of columns tell: "x", "coordinate_x", "u", "displacement_x" and the like, in any case and with any
/// blanks. A table without names whose first four columns hold numbers is taken for x, y, dx, dy.
PointColumns detectPointColumns(CsvTable const &table);

} // namespace Zem::Measurement
