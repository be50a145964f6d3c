// figqt_page_check.h: what all writers refuse.
#pragma once

#include <ZemVec.h>

#include <QtCore/QString>

namespace Zem::Fig2Qt {

/// Throws ProgError for a writer that is closed already.
void requireOpen(bool open, char const *function, char const *file, unsigned int line);
/// Throws OutputError for a size that is not positive, not finite, or above `largest` millimetres.
void requirePageSize(BaVec2d<double> const &size, double largest, QString const &fileName);
/// Throws OutputError for a number that is not positive and finite.
void requireResolution(double dpi, QString const &fileName);
/// Throws OutputError for a file without pages.
void requirePages(int count, QString const &fileName);
/// Throws OutputError for a second page.
void requireFirstPage(bool first, QString const &fileName);

} // namespace Zem::Fig2Qt
