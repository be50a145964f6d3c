#include "ZemFig2ImageInterface.h"

#include "ZemFig2Figure.h"
#include "ZemFig2ImageLabel.h"

#include <ZemError.h>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int NOT_REGISTERED_LINE = 314; ///< what users of these errors know this one by

} // namespace

/// A figure that is told to let go may not take itself from the list that is walked.
ImageInterface::~ImageInterface()
{
    closing_ = true;
    for (Figure *figure : figures_) {
        if (figure->getImageInterface() == this)
            figure->setImageInterface(nullptr);
    }
}

std::vector<QString> ImageInterface::getImageElements(QString const &)
{
    return {};
}

ImageDataVisualisation ImageInterface::getVisualisation(QString const &)
{
    return ImageDataVisualisation::NONE;
}

ImageInterface *ImageInterface::getInterface(Element const *element)
{
    Figure const *figure = element->getFigure();
    return figure ? figure->getImageInterface() : nullptr;
}

namespace {

/// Marks the labels of a measured thing as not valid. True when there was one.
bool invalidateLabels(Figure *figure, QString const &id)
{
    bool found = false;
    for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it) {
        auto *label = dynamic_cast<ImageLabel *>(*it);
        if (!label || label->getImageElementId() != id)
            continue;
        label->invalidate();
        found = true;
    }
    return found;
}

} // namespace

bool ImageInterface::measurementDeleted(QString const &id) const
{
    // All figures: one that was touched must not keep the others from being told.
    bool touched = false;
    for (Figure *figure : figures_)
        touched |= invalidateLabels(figure, id);
    return touched;
}

void ImageInterface::registerFigureForUpdate(Figure *figure)
{
    if (std::find(figures_.begin(), figures_.end(), figure) != figures_.end())
        throw ProgError("Zem::Fig2::ImageInterface::registerFigureForUpdate", "fig_image_interface", __LINE__,
                        "Figure already registered");
    figures_.push_back(figure);
}

void ImageInterface::unregisterFigureForUpdate(Figure *figure)
{
    if (closing_)
        return;
    auto const known = std::find(figures_.begin(), figures_.end(), figure);
    if (known == figures_.end())
        throw ProgError("Zem::Fig2::ImageInterface::unregisterFigureForUpdate", "fig_image_interface",
                        NOT_REGISTERED_LINE, "Figure not registered");
    figures_.erase(known);
}

} // namespace Zem::Fig2
