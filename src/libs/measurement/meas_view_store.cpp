#include "meas_view_store.h"

#include "meas_field.h"
#include "meas_field_paint.h"
#include "meas_statistics.h"

#include <ZemColorMap.h>
#include <ZemFig2Transformation.h>
#include <ZemLegendHandler.h>

#include <algorithm>
#include <cmath>

namespace Zem::Measurement {

using namespace Fig2;

namespace {

constexpr std::size_t MAX_KEPT = 4; // a page shows few pictures, and they are large

/// What a view without pictures is drawn on.
std::unique_ptr<Zem::Image> blankPicture(CameraModel const &camera)
{
    auto blank = std::make_unique<Image8>(camera.width, camera.height);
    for (unsigned int y = 0; y < camera.height; ++y) {
        std::fill_n(blank->getRow(y), camera.width, std::uint8_t(255));
    }
    return blank;
}

std::unique_ptr<ImageColor> asColor(std::unique_ptr<Zem::Image> picture)
{
    bool const isColor = picture && picture->getType() == Zem::Image::TYPE_COLOR;
    return std::unique_ptr<ImageColor>(isColor ? static_cast<ImageColor *>(picture.release()) : nullptr);
}

/// Where the connectors of labels of the whole set end: at the valid point nearest to the middle of all.
BaVec2d<double> connectorPoint(PointField const &field, std::vector<BaVec3d<double>> const &places,
                               Fig2::Transformation const &transformation)
{
    std::vector<BaVec2d<double>> pixels;
    BaVec2d<double> sum;
    for (std::size_t i = 0; i < places.size(); ++i) {
        BaVec2d<double> pixel;
        if (field.valid[i] && transformation.computeImagePoint(places[i], &pixel)) {
            pixels.push_back(pixel);
            sum += pixel;
        }
    }
    if (pixels.empty()) {
        return {};
    }
    BaVec2d<double> const middle = sum * (1.0 / static_cast<double>(pixels.size()));
    return *std::min_element(pixels.begin(), pixels.end(), [&](auto const &a, auto const &b) {
        return (a - middle).length() < (b - middle).length();
    });
}

} // namespace

std::optional<ViewAtStage> findView(ProjectContents const &contents, QString const &token,
                                    StageIdentifier const &currentStage)
{
    if (ProjectView const *const view = contents.findView(token)) {
        return currentStage == StageIdentifier::NO_STAGE
                   ? std::nullopt
                   : std::optional(ViewAtStage{view, currentStage.getIdentifier()});
    }
    qsizetype const point = token.lastIndexOf(QLatin1Char('.'));
    bool isNumber = false;
    unsigned int const stage = token.mid(point + 1).toUInt(&isNumber);
    ProjectView const *const view = point > 0 && isNumber ? contents.findView(token.left(point)) : nullptr;
    bool const isThere = std::binary_search(contents.stages().begin(), contents.stages().end(), stage);
    return view && isThere ? std::optional(ViewAtStage{view, stage}) : std::nullopt;
}

ViewStore::Token *ViewStore::refreshed(QString const &token)
{
    contents_->refresh();
    std::optional<ViewAtStage> const place = findView(*contents_, token, stage_);
    if (!place) {
        return nullptr;
    }
    Token &found = tokens_[token];
    QString const signature = QStringLiteral("%1 %2 %3 %4")
                                  .arg(place->view->id)
                                  .arg(place->view->modified)
                                  .arg(place->stage)
                                  .arg(Legend2::ColorMap::getGlobalLegendParams().getParameterString());
    if (found.signature != signature) {
        found.signature = signature;
        found.counter = ++lastCounter_;
        found.shown.reset();
    }
    return &found;
}

ImageData const *ViewStore::lend(QString const &token)
{
    Token *const found = refreshed(token);
    if (!found) {
        return nullptr;
    }
    if (!found->shown) {
        found->shown = make(*findView(*contents_, token, stage_));
    }
    keep(token);
    if (found->lent.empty() || found->lent.back() != found->shown) {
        found->lent.push_back(found->shown);
    }
    ++found->loans;
    return &found->shown->data;
}

void ViewStore::takeBack(QString const &token)
{
    auto const found = tokens_.find(token);
    if (found == tokens_.end() || found->second.loans == 0) {
        throw ProgError("Zem::Measurement::ProjectTokenInterface::releaseImage", "meas_view_store", __LINE__,
                        "Image token not locked");
    }
    // Who gives back does not say what: after a change of the project there may be loans of two states.
    if (--found->second.loans == 0) {
        found->second.lent.clear();
    }
}

unsigned int ViewStore::modifiedCounter(QString const &token)
{
    Token const *const found = refreshed(token);
    return found ? found->counter : 0;
}

void ViewStore::keep(QString const &token)
{
    std::erase(kept_, token);
    kept_.push_back(token);
    if (kept_.size() > MAX_KEPT) {
        tokens_[kept_.front()].shown.reset();
        kept_.pop_front();
    }
}

std::shared_ptr<ViewStore::Shown const> ViewStore::make(ViewAtStage const &place)
{
    auto shown = std::make_shared<Shown>();
    shown->data.setTransformation(place.view->camera.makeTransformation().release());
    showPicture(place, shown.get());
    for (ProjectPointSet const &set : contents_->pointSets()) {
        if (set.view == place.view->id && set.groups.contains(place.stage)) {
            showPoints(place, set, shown.get());
        }
    }
    shown->data.setOverlay(shown->overlay.get());
    return shown;
}

void ViewStore::showPicture(ViewAtStage const &place, Shown *shown)
{
    CameraModel const &camera = place.view->camera;
    shown->picture = contents_->project().picture(*place.view, place.stage, PictureKind_t::PICTURE);
    if (place.view->stagesOfPictures.empty() && camera.width > 0 && camera.height > 0) {
        shown->picture = blankPicture(camera);
    }
    shown->overlay = asColor(contents_->project().picture(*place.view, place.stage, PictureKind_t::OVERLAY));
    shown->data.setImage(shown->picture.get());
}

void ViewStore::showPoints(ViewAtStage const &place, ProjectPointSet const &set, Shown *shown)
{
    PointField const field = contents_->project().points(set, place.stage);
    std::vector<BaVec3d<double>> const places = shownPlaces(set, field);
    auto object = std::make_unique<ImageDataObject>(set.name);
    object->setDisplayText(set.name);
    object->setConnectorPoint(connectorPoint(field, places, *shown->data.getTransformation()));
    object->addElement(marksOf(field, places).copy());
    shown->data.addObject(object.release());
    showScale(place, set, field, shown);
    if (set.painted && !shown->overlay) {
        paint(place, set, field, shown);
    }
}

/// The first set that has values tells the scale.
void ViewStore::showScale(ViewAtStage const &place, ProjectPointSet const &set, PointField const &field, Shown *shown)
{
    Legend2::Legend legend = Legend2::ColorMap::getGlobalLegendParams();
    Legend2::Data data;
    Values const &values = valuesOf(set);
    if (shown->data.getLegendData(&legend, &data) || !values.any) {
        return;
    }
    if (legend.getUnit() != values.unit.getUnit()) {
        legend.setUnitData(values.unit);
    }
    std::vector<double> const now = coloringOf(*contents_, set, field, place.stage).known();
    shown->data.setLegendData(legend, values.data, histogramOf(now, legend, values.data));
}

void ViewStore::paint(ViewAtStage const &place, ProjectPointSet const &set, PointField const &field, Shown *shown)
{
    Legend2::Legend legend{uLength};
    Legend2::Data data;
    if (!shown->data.getLegendData(&legend, &data)) {
        return;
    }
    Legend2::LegendHandler const colors(&legend, &data);
    std::vector<double> const values = coloringOf(*contents_, set, field, place.stage).numbers;
    shown->overlay = paintField(field, shownPlaces(set, field), values, *shown->data.getTransformation(), colors,
                                place.view->camera.width, place.view->camera.height);
}

/// Of all stages, so that the colours of the stages can be compared.
ViewStore::Values const &ViewStore::valuesOf(ProjectPointSet const &set)
{
    Values &values = values_[set.id];
    if (values.modified == set.modified) {
        return values;
    }
    std::vector<double> all;
    for (auto const &[stage, group] : set.groups) {
        PointField const field = contents_->project().points(set, stage);
        PointNumbers const numbers = coloringOf(*contents_, set, field, stage);
        std::vector<double> const known = numbers.known();
        all.insert(all.end(), known.begin(), known.end());
        values.unit = numbers.unit;
    }
    values.any = !all.empty();
    values.data = values.any ? statisticsOf(all) : Legend2::Data();
    values.modified = set.modified;
    return values;
}

} // namespace Zem::Measurement
