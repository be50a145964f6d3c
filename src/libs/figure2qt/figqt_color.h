// figqt_color.h: colours to and from Qt.
#pragma once

#include <ZemColor.h>

#include <QtGui/QColor>

namespace Zem::Fig2Qt {

inline Color toColor(QColor const &color)
{
    auto const channel = [](int value) { return static_cast<unsigned char>(value); };
    return {channel(color.red()), channel(color.green()), channel(color.blue()), channel(color.alpha())};
}

inline QColor toQColor(Color const &color)
{
    return {color.getRed(), color.getGreen(), color.getBlue(), color.getAlpha()};
}

} // namespace Zem::Fig2Qt
