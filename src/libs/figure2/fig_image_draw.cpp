// The painting of ImageBase.
#include "ZemFig2Image.h"

#include "ZemFig2ImageData.h"
#include "ZemFig2Label.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"
#include "ZemFig2SnapshotData.h"
#include "ZemFig2TranslationInterface.h"
#include "fig_loan.h"

#include <ZemImage.h>
#include <ZemLegendHandler.h>
#include <ZemLine2d.h>
#include <ZemTranslate.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace Zem::Fig2 {

namespace {

constexpr Painter::Mode_t MODE_AT_ONCE = 0;
constexpr Painter::Mode_t MODE_IN_STEPS = 1;
constexpr double FRAME_WIDTH = 0.1;
constexpr double MESSAGE_INDENT = 1.0;
constexpr double TOLERANCE = 1e-50;
constexpr LineStyle NO_OUTLINE{1.0, LineStyle::STYLE_NONE, Color(255, 255, 255)};

/// A clipping, the place of a nested figure and the names for its caches, for as long as it is drawn.
class NestedFrame
{
public:
    NestedFrame(Painter *painter, Rect const &clip, BaVec2d<double> const &offset, double scaling,
                Rotation const &rotation, QString const &cacheId)
        : painter_(painter)
    {
        painter_->setClipping(clip, rotation);
        painter_->pushTransformation(offset, scaling, rotation);
        painter_->pushCacheId(cacheId);
        painter_->setDrawingNested(true);
    }
    ~NestedFrame()
    {
        painter_->setDrawingNested(false);
        painter_->popCacheId();
        painter_->popTransformation();
        painter_->resetClipping();
    }
    NestedFrame(NestedFrame const &) = delete;
    NestedFrame &operator=(NestedFrame const &) = delete;

private:
    Painter *painter_;
};

/// True for as long as it lives.
class ScopeFlag
{
public:
    explicit ScopeFlag(bool *flag) : flag_(flag) { *flag_ = true; }
    ~ScopeFlag() { *flag_ = false; }
    ScopeFlag(ScopeFlag const &) = delete;
    ScopeFlag &operator=(ScopeFlag const &) = delete;

private:
    bool *flag_;
};

/// The rectangle of an element before its rotation.
Rect outlineOf(Element const &element)
{
    return {element.getOrigin() - element.getSize() * 0.5, element.getSize()};
}

bool contains(Rect const &rect, BaVec2d<double> const &point)
{
    return point.x >= rect.x - TOLERANCE && point.x <= rect.x + rect.width + TOLERANCE &&
           point.y >= rect.y - TOLERANCE && point.y <= rect.y + rect.height + TOLERANCE;
}

} // namespace

/// What is drawn of the data as the picture.
struct ImageBase::ShownPicture
{
    Zem::Image const *picture;
    ImageColor const *overlay;
    ImageConversion conversion;
};

/// Draws marks into the part of the page that the picture takes. What all steps have in common is made once.
class ImageBase::ObjectPainter
{
public:
    ObjectPainter(ImageBase const &element, ImageData const &image, Painter *painter)
        : element_(element), transformation_(image.getTransformation()), painter_(painter),
          rect_(element.getImageRect()), origin_(rect_.p0() - element.getInnerOrigin()), rotation_(&element),
          legend_(&element.computedLegend_, &element.computedLegendData_)
    {
    }

    /// The steps from `first` on, below `end`.
    void draw(ImageDataObject const &object, unsigned int first, unsigned int end) const
    {
        ImageDataVisualisation const &own = object.getVisualisation();
        ImageDataVisualisation const look =
            own == ImageDataVisualisation::NONE ? element_.getVisualisation(object.getId()) : own;
        for (unsigned int step = first; step < end; ++step) {
            painter_->setClipping(rect_, rotation_);
            object.draw(painter_, origin_, element_.getScaling(), rect_, &legend_, rotation_, look, transformation_,
                        step);
            painter_->resetClipping();
        }
    }

private:
    ImageBase const &element_;
    Transformation const *transformation_;
    Painter *painter_;
    Rect rect_;
    BaVec2d<double> origin_;
    Rotation rotation_;
    Legend2::LegendHandler legend_;
};

Rect ImageBase::getImageRect() const
{
    return {computeImageDrawingOrigin(), computeImageDrawingSize()};
}

bool ImageBase::draw(FigureTokenInterface const *tokens, Painter *painter, int step) const
{
    if (token_.isEmpty()) {
        drawErrorMessage(translate("Figure_Image_err", "image token not set"), painter);
        return true;
    }
    bool finished = false;
    ImageLoan const image(tokens, token_);
    if (image)
        finished = drawImage(tokens, *image.get(), painter, step);
    SnapshotLoan const snapshot(tokens, token_);
    if (snapshot)
        finished = drawSnapshot(*snapshot.get(), painter, step);
    if (image || snapshot)
        return finished;
    drawErrorMessage(getPlaceholder(), painter);
    return true;
}

QString ImageBase::getPlaceholder() const
{
    TranslationInterface const *names = TranslationInterface::getInterface();
    return translate("Figure_Image_err", "placeholder for image from source: %1")
        .arg(names ? names->getTokenDisplayName(token_) : QString());
}

void ImageBase::drawErrorMessage(QString const &text, Painter *painter) const
{
    painter->drawRect(getDrawingOrigin(), getDrawingSize(), getBorder(), FillStyle(ERROR_BACKGROUND_COLOR),
                      Rotation(this));
    drawMessage(text, painter);
}

/// Keeps an element without a picture in sight.
void ImageBase::drawMissing(QString const &text, Painter *painter) const
{
    painter->drawRect(getDrawingOrigin(), getDrawingSize(),
                      LineStyle(FRAME_WIDTH, LineStyle::STYLE_FULL, getFontColor()), FillStyle::null, Rotation(this));
    drawMessage(text, painter);
}

void ImageBase::drawMessage(QString const &text, Painter *painter) const
{
    Rotation const rotation(this);
    BaVec2d<double> const origin = getDrawingOrigin();
    painter->setClipping(Rect(origin, getDrawingSize()), rotation);
    painter->drawText(origin + BaVec2d<double>(MESSAGE_INDENT, MESSAGE_INDENT), getFont(), text, getFontColor(),
                      rotation);
    painter->resetClipping();
}

void ImageBase::drawImageBackground(Painter *painter, BaVec2d<double> const &origin, BaVec2d<double> const &size) const
{
    if (useImageBackgroundColor_)
        painter->drawRect(origin, size, NO_OUTLINE, FillStyle(imageBackgroundColor_), Rotation(this));
}

ImageBase::ShownPicture ImageBase::choosePicture(ImageData const &image) const
{
    if (overlayMode_ == OVERLAY_ONLY && image.getOverlay())
        return {image.getOverlay(), nullptr, ImageConversion()};
    return {image.getImage(), overlayMode_ == OVERLAY_IMAGE ? nullptr : image.getOverlay(), imageConversion_};
}

bool ImageBase::drawImage(FigureTokenInterface const *tokens, ImageData const &image, Painter *painter, int step) const
{
    ShownPicture const shown = choosePicture(image);
    bool finished = !shown.picture;
    if (!shown.picture) {
        drawMissing(translate("Figure_Image_err", "image not available"), painter);
    } else if (step == 0) {
        drawPicture(tokens, shown, painter);
        finished = image.getObjectBegin() == image.getObjectEnd();
    }
    finished |= drawObjects(image, painter, step);
    if (finished && shown.picture)
        drawCoordinateSystem(image, painter);
    return finished;
}

void ImageBase::drawPicture(FigureTokenInterface const *tokens, ShownPicture const &shown, Painter *painter) const
{
    drawBackground(painter);
    drawBorder(painter);
    QString const cacheId = QStringLiteral("%2/%3/%1/%4")
                                .arg(QString::number(tokens->getModifiedCounter(token_)), token_,
                                     painter->getStackedCacheId(), getOverlayModeParameter(overlayMode_));
    Rect const rect = getImageRect();
    BaVec2d<double> const size(rect.width, rect.height);
    Rotation const rotation(this);
    drawImageBackground(painter, rect.p0(), size);
    painter->setClipping(rect, rotation);
    painter->drawImage(rect.p0(), size, shown.picture, shown.overlay, getInnerOrigin() / getScaling(), getScaling(),
                       cacheId, shown.conversion, rotation);
    painter->resetClipping();
}

/// True when all marks are drawn.
bool ImageBase::drawObjects(ImageData const &image, Painter *painter, int step) const
{
    if (painter->getMode() != MODE_AT_ONCE)
        return drawNextObject(image, painter, step);
    ObjectPainter const objectPainter(*this, image, painter);
    for (auto it = image.getObjectBegin(); it != image.getObjectEnd(); ++it)
        objectPainter.draw(*it->second, 0, it->second->getNumberOfDrawSteps());
    return true;
}

/// The first step is that of the picture.
bool ImageBase::drawNextObject(ImageData const &image, Painter *painter, int step) const
{
    // Later steps go on with the plan of the first one: to count the steps of all objects for each of them would cost
    // the square of the number of objects.
    if (step == 0 || steps_.empty())
        planSteps(image);
    if (step <= 0)
        return false;
    auto const wanted = static_cast<unsigned int>(step) - 1;
    if (wanted >= numberOfSteps_) {
        steps_.clear();
        return true;
    }
    auto const next =
        std::upper_bound(steps_.begin(), steps_.end(), wanted,
                         [](unsigned int number, StepPlan const &plan) { return number < plan.firstStep; });
    StepPlan const &plan = *std::prev(next);
    if (ImageDataObject const *object = image.getObject(plan.object)) {
        unsigned int const own = wanted - plan.firstStep;
        ObjectPainter(*this, image, painter).draw(*object, own, own + 1);
    }
    return false;
}

void ImageBase::planSteps(ImageData const &image) const
{
    steps_.clear();
    numberOfSteps_ = 0;
    for (auto it = image.getObjectBegin(); it != image.getObjectEnd(); ++it) {
        unsigned int const steps = it->second->getNumberOfDrawSteps();
        if (steps > 0)
            steps_.push_back({it->first, numberOfSteps_});
        numberOfSteps_ += steps;
    }
}

void ImageBase::drawCoordinateSystem(ImageData const &image, Painter *painter) const
{
    Rect const rect = getImageRect();
    Rotation const rotation(this);
    painter->setClipping(rect, rotation);
    if (image.getHasCoordinateSystem())
        coordinateSystem_.draw(painter, rect.p0() - getInnerOrigin(), getScaling(), rect, image.getTransformation(),
                               rotation);
    painter->resetClipping();
}

bool ImageBase::drawSnapshot(SnapshotData const &snapshot, Painter *painter, int step) const
{
    if (step == 0)
        drawBackground(painter);
    Figure const *figure = snapshot.getFigure();
    if (!figure) {
        drawMissing(translate("Figure_Image_err", "snapshot not available"), painter);
        return true;
    }
    // A figure within itself would have no end.
    if (drawsSnapshot_)
        return true;
    ScopeFlag const drawing(&drawsSnapshot_);
    BaVec2d<double> const scaled = figure->getSize() * getScaling();
    Rect const rect(computeInnerDrawingOrigin(scaled), computeInnerDrawingSize(scaled));
    drawImageBackground(painter, rect.p0(), {rect.width, rect.height});
    bool const finished = drawNested(*figure, rect, painter, step);
    drawBorder(painter);
    return finished;
}

bool ImageBase::drawNested(Figure const &figure, Rect const &rect, Painter *painter, int step) const
{
    NestedFrame const frame(painter, rect, rect.p0() - getInnerOrigin(), getScaling(), Rotation(this),
                            QStringLiteral("%1/%2").arg(QString::number(tokenModifiedCounter_), token_));
    std::vector<Label const *> labels;
    collectLabelsWithConnectors(&figure, &labels);
    std::vector<Element const *> elements;
    figure.computeRenderingOrder(&elements);
    FigureTokenInterface const *tokens = figure.getTokenInterface();
    // A first step shows something of each element, and the second one all of them.
    bool const preview = step == 0 && painter->getMode() == MODE_IN_STEPS;
    bool finished = true;
    for (Element const *element : elements) {
        bool drawn = element->draw(tokens, painter, 0);
        for (int next = 1; !drawn && !preview; ++next)
            drawn = element->draw(tokens, painter, next);
        finished &= drawn;
        if (auto const *image = dynamic_cast<ImageBase const *>(element))
            drawLabelConnectors(painter, image, labels);
    }
    return finished;
}

void ImageBase::collectLabelsWithConnectors(Figure const *figure, std::vector<Label const *> *labels)
{
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        auto const *label = dynamic_cast<Label const *>(*it);
        if (label && label->getType() == LABEL && label->hasConnectorPoint())
            labels->push_back(label);
    }
}

bool ImageBase::drawLabelConnectors(Painter *painter, ImageBase const *image, std::vector<Label const *> const &labels)
{
    Rect const outline = outlineOf(*image);
    bool drawn = false;
    for (Label const *label : labels) {
        BaVec2d<double> const begin = Rotation(label).applyTo(label->getOrigin());
        if (!contains(outline, begin) && !outline.intersect(LineSegment2d(begin, label->getConnectorPoint()), nullptr))
            continue;
        label->drawConnectorLine(painter);
        drawn = true;
    }
    return drawn;
}

} // namespace Zem::Fig2
