// page_look.h: what a page shows at a stage, kept apart from it so that it can be compared with another one.
#pragma once

#include "page_schema.h"

#include <ZemFig2Figure.h>

#include <QtGui/QImage>

#include <map>
#include <vector>

namespace Zem::Zemfig {

/// A token within a label.
struct TokenLook
{
    QString name;
    QString shown; ///< as the label shows it
    QString exact; ///< in the same unit with all digits
};

/// An element as of the last update.
struct ElementLook
{
    Fig2::Element::Type_t type;
    QString name;
    QString description;
    BaVec2d<double> place; ///< its origin; the alignment point of one that sizes itself, about which it grows
    BaVec2d<double> size;  ///< (0, 0) for one without size, and for one that sizes itself
    std::vector<Parameter> parameters;
    QString text; ///< of a label, with the values in it
    std::vector<TokenLook> tokens;
    std::map<QString, std::vector<BaVec2d<double>>> curves; ///< of a chart, in base units
};

struct PageLook
{
    BaVec2d<double> size;
    std::vector<ElementLook> elements; ///< groups before their children, in layer order
    QImage picture;
};

/// The look of a page that is up to date for the stage. Throws InputError when the picture would be too large.
PageLook lookOf(Fig2::Figure &figure, StageIdentifier const &stage, double dpi);

} // namespace Zem::Zemfig
