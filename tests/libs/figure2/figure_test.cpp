#include "tree_builders.h"

#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Invalidator.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;
using Support::TestTokens;
using Support::text;

TEST(FigureDefaults, areAnEmptyWhitePage)
{
    Figure const figure;

    EXPECT_EQ(figure.getTokenInterface(), nullptr);
    EXPECT_EQ(figure.getSize(), BaVec2d<double>(210, 297));
    EXPECT_EQ(figure.getBackground(), FillStyle(Color(255, 255, 255)));
    EXPECT_TRUE(figure.getSelectedElements().empty());
    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
    EXPECT_EQ(Figure::FILE_TYPE_ID, QLatin1StringView("Figure"));
    EXPECT_EQ(Figure::FILE_EXTENSION, QLatin1StringView(".fig"));
}

TEST(FigureScriptObjects, holdTheElementsButNotTheRoot)
{
    Figure figure;
    Element *element = add(figure.getRoot());

    EXPECT_EQ(figure.getScriptObject()->getTObject(), &figure);
    EXPECT_EQ(figure.getElementsScriptObject()->getParent(), figure.getScriptObject());
    EXPECT_EQ(static_cast<unsigned int>(figure.getElementsScriptObject()->getCategory()), 21U);
    EXPECT_EQ(element->getScriptObject()->getParent(), figure.getElementsScriptObject());
    EXPECT_EQ(figure.getRoot()->getScriptObject()->getParent(), nullptr);
    EXPECT_EQ(figure.getRoot()->getFigure(), &figure);
    EXPECT_EQ(figure.getElementsScriptObject()->getChildren().size(), 1U);
}

TEST(FigureSetters, storeAndNothingElse)
{
    TestTokens tokens;
    Figure figure;
    Element *element = add(figure.getRoot());
    element->update(StageIdentifier(1), nullptr, nullptr);

    figure.setSize({100, 50});
    figure.setBackground(FillStyle::null);
    figure.setTokenInterface(&tokens);

    EXPECT_EQ(figure.getSize(), BaVec2d<double>(100, 50));
    EXPECT_EQ(figure.getBackground(), FillStyle::null);
    EXPECT_EQ(figure.getTokenInterface(), &tokens);
    EXPECT_TRUE(element->isValid());
}

TEST(FigureSetRoot, takesOverTheWholeTree)
{
    Figure figure;
    add(figure.getRoot())->setSelected(true);
    auto *root = new Group;
    Group *group = addGroup(root);
    Element *leaf = add(group);

    figure.setRoot(root);

    EXPECT_EQ(figure.getRoot(), root);
    EXPECT_EQ(root->getScriptObject()->getParent(), nullptr);
    EXPECT_EQ(group->getFigure(), &figure);
    EXPECT_EQ(leaf->getFigure(), &figure);
    EXPECT_EQ(leaf->getScriptObject()->getName(), "rectangle_1");
    EXPECT_TRUE(figure.getSelectedElements().empty());
}

TEST(FigureSetRoot, keepsARootThatIsSetAgain)
{
    Figure figure;
    Element *element = add(figure.getRoot());

    figure.setRoot(figure.getRoot());

    EXPECT_EQ(*figure.getElementBegin(), element);
}

TEST(InvalidatorArea, addsUpUntilReset)
{
    Invalidator invalidator;
    EXPECT_TRUE(invalidator.getInvalidArea().empty());

    invalidator.invalidateArea(Polygon2d({{0, 0}, {1, 0}, {0, 1}}, true));
    invalidator.invalidateArea(Polygon2d({{5, 5}, {6, 5}, {5, 6}}, true));
    Invalidator const copy(invalidator);
    Invalidator assigned;
    assigned = invalidator;
    invalidator.reset();

    EXPECT_TRUE(invalidator.getInvalidArea().empty());
    EXPECT_EQ(text(copy.getInvalidArea()), "0,0 1,0 0,1 5,5 6,5 5,6");
    EXPECT_EQ(copy.getInvalidArea().getNumberOfParts(), 2U);
    EXPECT_EQ(assigned.getInvalidArea(), copy.getInvalidArea());
}

TEST(FigureInvalidators, areRegisteredOnce)
{
    Invalidator invalidator;
    Figure figure;
    figure.registerInvalidator(&invalidator);

    EXPECT_EQ(progError([&] { figure.registerInvalidator(&invalidator); }),
              "fig_figure: Invalidator already registered");
    figure.unregisterInvalidator(&invalidator);
    figure.unregisterInvalidator(&invalidator);
    figure.registerInvalidator(&invalidator);
}

class LeavingInvalidator : public Invalidator
{
public:
    LeavingInvalidator(Figure *figure, std::vector<Figure const *> *told) : figure_(figure), told_(told) {}
    void figureDeleted(Figure const *figure) override
    {
        told_->push_back(figure);
        figure_->unregisterInvalidator(this);
    }

private:
    Figure *figure_;
    std::vector<Figure const *> *told_;
};

TEST(FigureInvalidators, areAllToldOfTheEndEvenWhenTheyLeave)
{
    std::vector<Figure const *> told;
    auto figure = std::make_unique<Figure>();
    Figure const *address = figure.get();
    LeavingInvalidator first(figure.get(), &told);
    LeavingInvalidator second(figure.get(), &told);
    Invalidator plain;
    figure->registerInvalidator(&first);
    figure->registerInvalidator(&plain);
    figure->registerInvalidator(&second);

    figure.reset();

    EXPECT_EQ(told, (std::vector<Figure const *>{address, address}));
}

TEST(FigureEmptyGroups, areRemovedFromTheInsideOut)
{
    Figure figure;
    Group *outer = addGroup(figure.getRoot());
    addGroup(addGroup(outer));
    Group *kept = addGroup(figure.getRoot());
    add(kept);
    addGroup(kept);

    EXPECT_TRUE(figure.removeEmptyGroups());

    EXPECT_EQ(std::vector<Element *>(figure.getRoot()->getChildBegin(), figure.getRoot()->getChildEnd()),
              (Elements{kept}));
    EXPECT_EQ(kept->getChildEnd() - kept->getChildBegin(), 1);
    EXPECT_FALSE(figure.removeEmptyGroups());
}

TEST(FigureEmptyGroups, leaveTheRoot)
{
    Figure figure;
    addGroup(figure.getRoot());

    EXPECT_TRUE(figure.removeEmptyGroups());
    EXPECT_FALSE(figure.removeEmptyGroups());

    EXPECT_NE(figure.getRoot(), nullptr);
    EXPECT_EQ(figure.getElementBegin(), figure.getElementEnd());
}

TEST(FigureTokens, areUsedByAnyElement)
{
    Figure figure;
    add(figure.getRoot());
    add(addGroup(figure.getRoot()))->usedToken = "force";

    EXPECT_TRUE(figure.isTokenUsed("force"));
    EXPECT_FALSE(figure.isTokenUsed("stress"));
}

/// The first line of each element's parameters, as toString writes it.
std::string firstLines(Figure const &figure)
{
    std::string lines;
    for (QString const &line : figure.toString().split('\n')) {
        if (line.contains("type = "))
            lines += line.toStdString() + "\n";
    }
    return lines;
}

TEST(FigureToString, indentsByDepth)
{
    Figure figure;
    Group *group = addGroup(figure.getRoot());
    add(group);
    add(figure.getRoot());

    EXPECT_EQ(firstLines(figure), "type = \"group\"\n"
                                  "|---type = \"group\"\n"
                                  "|-------type = \"rectangle\"\n"
                                  "|---type = \"rectangle\"\n");
}

TEST(FigureToString, putsBlanksInFrontOfTheFollowingLines)
{
    Figure figure;
    auto *bare = new BareElement;
    figure.getRoot()->addChild(bare);

    EXPECT_EQ(figure.toString().toStdString(), "type = \"group\"\n"
                                               "origin = (0, 0)\n"
                                               "visible = true\n"
                                               "highlight_color = #080884ff\n"
                                               "pivot_align_x = \"begin\"\n"
                                               "pivot_align_y = \"begin\"\n"
                                               "margin = 1\n"
                                               "spacing = 1\n"
                                               "|---type = \"logo\"\n"
                                               "|   origin = (0, 0)\n"
                                               "|   visible = true\n"
                                               "|   highlight_color = #080884ff\n");
}

TEST(FigureCopy, copiesThePageAndItsTree)
{
    TestTokens tokens;
    Invalidator invalidator;
    Figure figure(&tokens);
    figure.registerInvalidator(&invalidator);
    figure.setSize({100, 50});
    figure.setBackground(FillStyle::null);
    ProbeRectangle *first = add(figure.getRoot());
    first->connect(add(figure.getRoot()), "point");
    first->setSelected(true);
    figure.invalidate();

    Invalidator own;
    Figure copy(figure);

    EXPECT_EQ(copy.getTokenInterface(), &tokens);
    EXPECT_EQ(copy.getSize(), BaVec2d<double>(100, 50));
    EXPECT_EQ(copy.getBackground(), FillStyle::null);
    EXPECT_TRUE(copy.getSelectedElements().empty());
    EXPECT_EQ(copy.toString(), figure.toString());
    EXPECT_EQ(copy.getRoot()->getScriptObject()->getParent(), nullptr);
    Element *copied = *copy.getElementBegin();
    EXPECT_EQ(copied->getFigure(), &copy);
    EXPECT_EQ(copied->getScriptObject()->getName(), "rectangle_0");
    QString point;
    EXPECT_EQ(copied->getConnectorTarget(&point)->getFigure(), &copy);
    EXPECT_EQ(point, "point");
    // The wish for the whole page is copied, the invalidator is not.
    copy.registerInvalidator(&own);
    copy.update(StageIdentifier(1), false);
    EXPECT_EQ(text(own.getInvalidArea()), "0,0 100,0 100,50 0,50");
    EXPECT_TRUE(invalidator.getInvalidArea().empty());
}

TEST(FigureFootprint, countsTheTree)
{
    Figure figure;
    unsigned int const empty = figure.getEstimatedObjectSize();
    Element *element = add(figure.getRoot());

    EXPECT_GE(empty, sizeof(Figure) + sizeof(Group));
    EXPECT_GE(figure.getEstimatedObjectSize(), empty + element->getEstimatedObjectSize());
}

} // namespace
} // namespace Zem::Fig2
