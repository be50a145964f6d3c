// meas_view_store.h: what image elements show of views, made when it is asked for and kept for a while.
#pragma once

#include "meas_contents.h"

#include <ZemFig2ImageData.h>
#include <ZemIdentifiers.h>
#include <ZemImage.h>

#include <deque>
#include <optional>

namespace Zem::Measurement {

/// A view at a stage.
struct ViewAtStage
{
    ProjectView const *view;
    unsigned int stage;
};

/// What an image token stands for: a view at the current stage, or "view.12", at stage 12. None for NO_STAGE, a stage
/// in the text that does not exist, and any other text.
std::optional<ViewAtStage> findView(ProjectContents const &contents, QString const &token,
                                    StageIdentifier const &currentStage);

/// Serves the names of views. All operations may throw ProjectError, and then change nothing that was lent.
class ViewStore
{
public:
    /// `contents` is not owned and outlives the store.
    explicit ViewStore(ProjectContents *contents) : contents_(contents) {}

    /// Null for a name that stands for nothing; anything else is to be taken back.
    Fig2::ImageData const *lend(QString const &token);
    /// Throws ProgError when the name is not lent.
    void takeBack(QString const &token);
    /// 0 for a name that stands for nothing. Reads neither pictures nor points.
    unsigned int modifiedCounter(QString const &token);

    /// The stage of names without one of their own.
    StageIdentifier const &currentStage() const { return stage_; }
    void setCurrentStage(StageIdentifier const &stage) { stage_ = stage; }

private:
    /// The picture and its overlay live as long as the data that show them.
    struct Shown
    {
        std::unique_ptr<Zem::Image> picture;
        std::unique_ptr<ImageColor> overlay;
        Fig2::ImageData data;
    };
    struct Token
    {
        QString signature; ///< of what it stands for
        unsigned int counter = 0;
        std::shared_ptr<Shown const> shown;             ///< may be dropped when it is not lent
        std::vector<std::shared_ptr<Shown const>> lent; ///< all of them live until the last loan is over
        std::size_t loans = 0;
    };
    /// The values that colour the points of a set, over all its stages.
    struct Values
    {
        unsigned int modified = 0;
        UnitData unit;
        Legend2::Data data;
        bool any = false;
    };

    Token *refreshed(QString const &token);
    void keep(QString const &token);
    std::shared_ptr<Shown const> make(ViewAtStage const &place);
    void showPicture(ViewAtStage const &place, Shown *shown);
    void showPoints(ViewAtStage const &place, ProjectPointSet const &set, Shown *shown);
    void paint(ViewAtStage const &place, ProjectPointSet const &set, PointField const &field, Shown *shown);
    void showScale(ViewAtStage const &place, ProjectPointSet const &set, PointField const &field, Shown *shown);
    Values const &valuesOf(ProjectPointSet const &set);

    ProjectContents *contents_;
    StageIdentifier stage_;
    std::map<QString, Token> tokens_; ///< of every name that ever stood for something: counters never run backwards
    std::deque<QString> kept_;        ///< whose data are kept, the latest last
    std::map<std::int64_t, Values> values_;
    unsigned int lastCounter_ = 0;
};

} // namespace Zem::Measurement
