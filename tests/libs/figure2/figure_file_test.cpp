#include <BlockCrafter.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>
#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2Rectangle.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

TEST(FigureFile, keepsEveryElement)
{
    Figure figure;
    figure.getRoot()->addChild(new Rectangle);
    figure.getRoot()->addChild(new Line);
    figure.getRoot()->addChild(new Polygon);
    auto *group = new Group;
    group->addChild(new Label);
    group->addChild(new Ellipse);
    figure.getRoot()->addChild(group);

    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { figure.save(&stream, -1, -1); });
    Figure read;
    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream, -1, -1); });

    EXPECT_EQ(read.toString().toStdString(), figure.toString().toStdString());
}

} // namespace
} // namespace Zem::Fig2
