// view_support.h: projects with pictures and points, for tests.
#pragma once

#include "project_support.h"

#include <ZemImage.h>
#include <ZemMeasTokenInterface.h>

namespace Zem::Measurement {

/// A project whose view "camera" has grey pictures of 40 x 30 pixels, 100 at stage 1, 101 at stage 2, and so on.
class ViewProjectTest : public ProjectTest
{
protected:
    Project project{path(), OpenMode_t::CREATE};
    ProjectTokenInterface tokens{&project};

    void importPicture(unsigned int stage)
    {
        Image8 picture(40, 30);
        for (unsigned int y = 0; y < 30; ++y) {
            std::fill_n(picture.getRow(y), 40, static_cast<std::uint8_t>(99 + stage));
        }
        QString const file = path("picture.png");
        ASSERT_TRUE(picture.saveImage(file, nullptr));
        PictureOptions options;
        options.stage = stage;
        project.importPicture(file, options);
    }

    void importPoints(std::string_view text, PointOptions const &options = {})
    {
        project.importPoints(parse(text), options);
    }

    static PointOptions atStage(unsigned int stage)
    {
        PointOptions options;
        options.stage = stage;
        return options;
    }

    /// Four points at the corners of a square of 20 pixels, their values 0, 1, 2 and 3.
    void importSquare(PointOptions options = {})
    {
        options.columns.value = QStringLiteral("s");
        importPoints("x,y,dx,dy,s\n10,5,1,0,0\n30,5,0,2,1\n10,25,3,4,2\n30,25,0,0,3\n", options);
    }
};

} // namespace Zem::Measurement
