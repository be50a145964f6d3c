// image_fixture.h: a look of marks that differs from the defaults in every member, and all that a look holds.
#pragma once

#include <ZemFig2ImageDataVisualisation.h>

#include <string>

namespace Zem::Fig2::Fixture {

inline ImageDataVisualisation unusualLook()
{
    LineStyle line(0.25, LineStyle::STYLE_DASHED, Color(1, 2, 3));
    line.setCapStyle(LineStyle::CAP_ROUND);
    ImageDataVisualisation look(false);
    look.setMode(ImageDataVisualisation::MODE_YZ);
    look.setLineStyle(line);
    look.setPointMarkerSize(7.5);
    look.setVectorScaling(2.5);
    look.setVectorLineWidth(0.5);
    look.setDrawArrows(ImageDataVisualisation::ARROW_SECOND);
    look.setDrawCombinedVectors(false);
    look.setDrawHiddenPoints(false);
    look.setDrawPointIds(true);
    look.setUseFixedPointIdColor(true);
    look.setPointIdFont(Font("Serif", 9.5, 3));
    look.setPointIdColor(Color(4, 5, 6));
    look.setPointMask(6);
    return look;
}

/// Every member, also those that looks are not compared by.
inline std::string contentOf(ImageDataVisualisation const &look)
{
    return look.getParameterString(QString()).toStdString();
}

} // namespace Zem::Fig2::Fixture
