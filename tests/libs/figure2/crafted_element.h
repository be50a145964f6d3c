// crafted_element.h: the stream blocks of an element as each version wrote them.
#pragma once

#include <BlockCrafter.h>
#include <ZemFig2FillStyle.h>
#include <ZemFig2LineStyle.h>
#include <ZemFig2Tools.h>
#include <ZemFont.h>

namespace Zem::Fig2 {

/// What stands in a crafted element block; everything that has a default differs from it.
struct CraftedElement
{
    int id = 77;
    BaVec2d<double> origin{10, 20};
    BaVec2d<double> size{30, 40};
    double angle = 0.0;
    unsigned int pivotX = 0;
    unsigned int pivotY = 0;
    unsigned int connectors = 0;
    std::string name = "stored";
    LineStyle border{0.5, LineStyle::STYLE_DASHED, Color(1, 2, 3)};

    Support::Payload block(unsigned int version) const
    {
        Support::Payload fields;
        fields.i(id).v(origin.x, origin.y).v(size.x, size.y);
        if (version >= 5)
            fields.b(false); // visible
        if (version >= 4)
            fields.b(true); // link to 3D
        fields.b(true);     // auto size
        if (version >= 7)
            fields.b(true); // maximize
        fields.d(angle).c(1, 2, 3, 4);
        if (version == 1)
            fields.b(true); // dropped
        fields.c(5, 6, 7, 8).u(pivotX).u(pivotY).d(3.5).d(4.5).u(connectors);
        if (version >= 10)
            fields.b(true); // system font
        if (version >= 9)
            fields.s(name);
        return fields;
    }

    /// The element block with border, background and font behind it.
    Support::BlockCrafter blocks(unsigned int version) const { return addTo(Support::BlockCrafter(), version); }

    Support::BlockCrafter addTo(Support::BlockCrafter crafter, unsigned int version) const
    {
        crafter.block(version, block(version));
        return crafter.add([this](IO::OutStream &stream) {
            border.save(&stream);
            FillStyle(Color(9, 8, 7)).save(&stream);
            Tools::save(&stream, Font("Courier", 9.0, Font::BOLD));
        });
    }
};

} // namespace Zem::Fig2
