// Figure files that no program of ours writes.
#include "CommandRun.h"

#include <ZemErrorLog.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Group.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>
#include <ZemScriptObject.h>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

using namespace Fig2;

class LenientLabel : public Label
{
public:
    bool canConnectTo(Element const *, QString const &) const override { return true; }
};

/// A label 'note' in a group, connected to a rectangle 'box', which is nothing that labels annotate.
void writeIllegalConnector(Workplace const &place)
{
    Figure figure;
    auto *group = new Group;
    auto *label = new LenientLabel;
    auto *box = new Rectangle;
    label->getScriptObject()->setName("note");
    box->getScriptObject()->setName("box");
    label->setText("Force $force$");
    for (Element *element : {static_cast<Element *>(label), static_cast<Element *>(box)}) {
        element->setOrigin({50, 50});
        group->addChild(element);
    }
    figure.getRoot()->addChild(group);
    label->connect(box, QString());
    ErrorLog log(false);
    ASSERT_TRUE(Figure::saveFigure(place.path("page.fig"), &figure, &log));
    ASSERT_EQ(log.getLog(), "");
}

constexpr char REASON[] = "page.fig: label 'note' cannot be connected to rectangle 'box'\n";

TEST(ZemfigBadFigure, isCheckedToTheIllegalConnector)
{
    Workplace const place;
    writeIllegalConnector(place);

    CommandResult const result = place.zemfig({"check", "page.fig"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.output, REASON);
    EXPECT_EQ(result.errors, "zemfig: page.fig: 1 problem found\n");
}

TEST(ZemfigBadFigure, isNotRenderedWithAnIllegalConnector)
{
    Workplace const place;
    writeIllegalConnector(place);
    place.write("data.csv", "force [kN]\n1\n2\n");
    QStringList const before = place.files();

    for (char const *target : {"out.pdf", "out.svg", "out.png"}) {
        CommandResult const result =
            place.zemfig({"render", "page.fig", "--data", "data.csv", "--stage", "all", "-o", target});
        EXPECT_EQ(result.exitCode, 2) << target;
        EXPECT_EQ(result.errors, std::string("zemfig: ") + REASON) << target;
        EXPECT_EQ(place.files(), before);
    }
}

TEST(ZemfigBadFigure, isNotConvertedToAPageThatCouldNotBeReadBack)
{
    Workplace const place;
    writeIllegalConnector(place);

    CommandResult const result = place.zemfig({"convert", "page.fig", "-o", "out.figure.toml"});

    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.errors, std::string("zemfig: ") + REASON);
    EXPECT_EQ(place.files(), QStringList{"page.fig"});
}

} // namespace
} // namespace Zem::Support
