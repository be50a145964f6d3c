#include "ZemFig2Label.h"

namespace Zem::Fig2 {

Label::Label() : LabelBase(LABEL)
{
}

Element *Label::copy() const
{
    return new Label(*this);
}

} // namespace Zem::Fig2
