// meas_view_records.h: views, their pictures and point sets as rows of the tables.
#pragma once

#include "meas_sql.h"

namespace Zem::Measurement {

/// Each is empty in a project of an older release.
std::vector<ProjectView> readViews(SqlConnection const &connection);
std::vector<ProjectPointSet> readPointSets(SqlConnection const &connection);

/// Adds the view with a new id, which it receives, when it has none (0); else stores it anew.
void writeView(SqlConnection const &connection, ProjectView *view);
/// Marks the view, if there is one of that id, as changed.
void countChangeOfView(SqlConnection const &connection, std::int64_t view, unsigned int change);
/// As for views, without its stages.
void writePointSet(SqlConnection const &connection, ProjectPointSet *set);
/// The group of series that holds the points of the set at the stage from here on.
void writePointStage(SqlConnection const &connection, std::int64_t set, unsigned int stage, QString const &group);

/// The name of a file, or the packed pixels of a picture of a type.
struct StoredPicture
{
    QString file;
    int type = 0;
    QByteArray pixels;

    bool operator==(StoredPicture const &) const = default;
};

/// None when the view has none.
std::optional<StoredPicture> readPicture(SqlConnection const &connection, std::int64_t view, unsigned int stage,
                                         PictureKind_t kind);
void writePicture(SqlConnection const &connection, std::int64_t view, unsigned int stage, PictureKind_t kind,
                  StoredPicture const &picture);

/// The name of a point set that has its points in the group; empty when there is none.
QString pointSetOfGroup(SqlConnection const &connection, QString const &group);

/// Adds the stage unless it is there.
void requireStage(SqlConnection const &connection, unsigned int stage);

} // namespace Zem::Measurement
