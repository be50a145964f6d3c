#include "ZemFig2ImportInfo.h"

namespace Zem::Fig2 {

ImportInfo::~ImportInfo() = default;

ImageImportInfo *ImageImportInfo::copy() const
{
    return new ImageImportInfo(*this);
}

} // namespace Zem::Fig2
