// png_guard.h: libpng behind a fence: its errors become ImageError, its messages stay inside.
#pragma once

#include "image_limits.h"

#include <csetjmp>
#include <png.h>

namespace Zem {

/// Where libpng leaves its last word.
class PngGuard
{
public:
    /// To be handed to png_create_..._struct() with this object as the pointer.
    [[noreturn]] static void onError(png_structp png, png_const_charp message);
    static void onWarning(png_structp, png_const_charp) {}

    /// Runs calls of libpng, which leaves them by a jump when it fails: `calls` must be nothing but such calls, without
    /// an object that has a destructor. Throws ImageError.
    template <class Calls>
    void run(png_structp png, Calls const &calls) const
    {
        if (!succeeds(png, calls)) {
            fail();
        }
    }

private:
    template <class Calls>
    static bool succeeds(png_structp png, Calls const &calls)
    {
        if (setjmp(png_jmpbuf(png)) != 0) {
            return false;
        }
        calls();
        return true;
    }
    [[noreturn]] void fail() const;

    char message_[128] = {};
};

} // namespace Zem
