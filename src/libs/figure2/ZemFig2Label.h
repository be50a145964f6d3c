// ZemFig2Label.h: Label, the free label.
// Layer: labels. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2LabelBase.h"

namespace Zem::Fig2 {

/// A LabelBase that stands where it is put.
class Label : public LabelBase
{
public:
    Label();
    Label(Label const &) = default;
    Label &operator=(Label const &) = default;

    Element *copy() const override;
};

} // namespace Zem::Fig2
