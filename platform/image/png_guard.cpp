#include "png_guard.h"

#include <cstdio>

namespace Zem {

void PngGuard::onError(png_structp png, png_const_charp message)
{
    auto *const guard = static_cast<PngGuard *>(png_get_error_ptr(png));
    std::snprintf(guard->message_, sizeof guard->message_, "%s", message);
    png_longjmp(png, 1);
}

void PngGuard::fail() const
{
    throw ImageError(QString::fromLatin1(message_));
}

} // namespace Zem
