// overlay_page.h: a page with a picture and the points measured on it, as a user would begin to lay it out.
#pragma once

#include <ZemFig2Figure.h>
#include <ZemMeasProject.h>

#include <QtCore/QString>

#include <memory>
#include <optional>

namespace Zem::Zemfig {

/// What the page shall show.
struct OverlayWish
{
    QString title;
    QString subtitle;
    QString view;
    QString set;
    unsigned int stage = 1;
    std::optional<double> vectorScaling; ///< else the longest vectors reach a bit beyond their neighbours
};

/// The picture as large as it fits, with its vectors, their colour scale, an arrow of known length and statistics of
/// all columns. The project has the view with its camera, and the set at the stage.
std::unique_ptr<Fig2::Figure> makeOverlayPage(Measurement::Project const &project, OverlayWish const &wish);

} // namespace Zem::Zemfig
