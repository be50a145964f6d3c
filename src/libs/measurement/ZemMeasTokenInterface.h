// ZemMeasTokenInterface.h: the values of a measurement project as tokens for figures.
#pragma once

#include <ZemFig2TokenInterface.h>
#include <ZemMeasProject.h>

#include <QtCore/QHash>

#include <deque>
#include <map>

namespace Zem::Measurement {

/// Hands out the values of a project, in the base unit and with the unit of the file for display. Two tokens come on
/// top: "stage", the number of the stage, and "stage.count", how many there are, at whatever stage is asked.
///
/// Stages that were asked for lately are kept; what changes in the project, by this process or another one, is seen
/// nevertheless. A token's counter moves when and only when one of its values has changed. Pictures, charts and
/// snapshots are not stored, so none is lent. To be used from the thread that made the project. All operations may
/// throw ProjectError.
class ProjectTokenInterface : public Fig2::EmptyFigureTokenInterface
{
public:
    /// `project` is not owned and outlives the interface.
    explicit ProjectTokenInterface(Project const *project);

    void getTokens(std::vector<TokenInfo> *tokens) const override;
    /// INVALID with any index.
    Value getValue(QString name, IndexIdentifier const &index, StageIdentifier const &stage) const override;
    /// 0 for a token that does not exist.
    unsigned int getModifiedCounter(QString const &name) const override;

private:
    using StageValues = QHash<std::int64_t, Value>; ///< by token id

    void refresh() const;
    bool hasStage(StageIdentifier const &stage) const;
    Value builtInValue(QString const &name, StageIdentifier const &stage) const;
    StageValues const &valuesOf(unsigned int stage) const;
    Value toValue(StageValue const &stored) const;

    Project const *project_;

    // Kept from the project as of revision_.
    mutable std::int64_t revision_ = -1;
    mutable std::vector<ProjectToken> tokens_;
    mutable QHash<QString, std::size_t> tokenByName_;
    mutable QHash<std::int64_t, std::size_t> tokenById_;
    mutable std::vector<unsigned int> stages_;
    mutable unsigned int stagesModified_ = 0;
    mutable std::map<unsigned int, StageValues> stageValues_;
    mutable std::deque<unsigned int> stageOrder_; ///< stages in stageValues_, the oldest first
};

} // namespace Zem::Measurement
