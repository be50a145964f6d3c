// meas_contents.h: what a project holds apart from its values, kept until the project changes.
#pragma once

#include <ZemMeasProject.h>

#include <QtCore/QHash>

namespace Zem::Measurement {

/// To be used from the thread that made the project. Pointers are good until the next refresh().
class ProjectContents
{
public:
    /// `project` is not owned and outlives this.
    explicit ProjectContents(Project const *project) : project_(project) {}

    /// Looks again when the project has changed. Throws ProjectError and then leaves this alone.
    void refresh();
    /// Differs from an earlier one when refresh() has found a change.
    std::int64_t revision() const { return revision_; }

    Project const &project() const { return *project_; }
    std::vector<ProjectToken> const &tokens() const { return tokens_; }
    std::vector<ProjectSeries> const &series() const { return series_; }
    std::vector<ProjectView> const &views() const { return views_; }
    std::vector<ProjectPointSet> const &pointSets() const { return pointSets_; }
    /// Ascending.
    std::vector<unsigned int> const &stages() const { return stages_; }
    /// Moves when the stages are not what they were.
    unsigned int stagesModified() const { return stagesModified_; }

    /// Null when there is none.
    ProjectToken const *findToken(QString const &name) const;
    ProjectToken const *findToken(std::int64_t id) const;
    ProjectSeries const *findSeries(QString const &name) const;
    ProjectView const *findView(QString const &name) const;
    ProjectPointSet const *findPointSet(QString const &name) const;

private:
    Project const *project_;
    std::int64_t revision_ = -1;
    std::vector<ProjectToken> tokens_;
    std::vector<ProjectSeries> series_;
    std::vector<ProjectView> views_;
    std::vector<ProjectPointSet> pointSets_;
    std::vector<unsigned int> stages_;
    unsigned int stagesModified_ = 0;
    QHash<QString, std::size_t> tokenByName_;
    QHash<std::int64_t, std::size_t> tokenById_;
    QHash<QString, std::size_t> seriesByName_;
};

} // namespace Zem::Measurement
