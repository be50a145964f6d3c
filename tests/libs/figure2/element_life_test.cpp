// Copies, names and connectors of elements, and what their ends leave behind.
#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Figure.h>
#include <ZemFig2ImportInfo.h>
#include <ZemFig2Label.h>
#include <ZemFig2Polygon.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

TEST(ElementCopy, hasItsOwnIdAndNoTies)
{
    Figure figure;
    auto *source = new ProbeRectangle;
    auto *target = new ProbeRectangle;
    figure.getRoot()->addChild(source);
    figure.getRoot()->addChild(target);
    source->connect(target, "point");
    source->setSelected(true);
    source->setExternallyManaged(true);
    source->update(StageIdentifier(1), nullptr, nullptr);
    source->setExternallyManaged(true);

    std::unique_ptr<Element> const copy(source->copy());

    EXPECT_GT(copy->getId(), target->getId());
    EXPECT_FALSE(copy->isSelected());
    EXPECT_FALSE(copy->isValid());
    EXPECT_EQ(copy->getFigure(), nullptr);
    EXPECT_EQ(copy->getParent(), nullptr);
    EXPECT_EQ(copy->getConnectorBegin(), copy->getConnectorEnd());
    EXPECT_FALSE(copy->isExternallyManaged());
    EXPECT_TRUE(copy->getDragPolygon().empty());
    EXPECT_TRUE(copy->getCoveredPolygon().empty());
    EXPECT_TRUE(copy->getUpdatePolygon().empty());
    EXPECT_EQ(copy->getScriptObject()->getName(), QString());
    EXPECT_EQ(copy->getScriptObject()->getTObject(), copy.get());
    source->setExternallyManaged(false);
}

TEST(ElementCopy, takesOverTheRest)
{
    Label label;
    Support::loadBlocks(label, Support::blockForm(label));
    label.setOrigin({1, 2});
    label.setVisible(false);
    label.setLinkTo3D(true);
    label.setHighlighted(true);
    label.setHighlightColor(Color(3, 3, 3));
    label.setMargin(7);
    label.setUseSystemFont(true);
    label.setTemporarilyInvisible(true);

    std::unique_ptr<Element> const copy(label.copy());

    EXPECT_EQ(Support::parameterForm(*copy), Support::parameterForm(label));
    EXPECT_TRUE(copy->getLinkTo3D());
    EXPECT_TRUE(copy->isHighlighted());
    EXPECT_TRUE(copy->isTemporarilyInvisible());
    EXPECT_EQ(copy->getBlockVersion(), 10);
}

TEST(ElementAssignment, takesIdAndStateAsTheyAre)
{
    BareElement source;
    source.setOrigin({4, 5});
    source.setSelected(true);
    BareElement target;
    int const id = source.getId();

    target = source;

    EXPECT_EQ(target.getId(), id);
    EXPECT_TRUE(target.isSelected());
    EXPECT_EQ(target.getOrigin(), BaVec2d<double>(4, 5));
}

/// Counts how many of it there are.
struct CountedInfo : ImageImportInfo
{
    CountedInfo() { ++count; }
    CountedInfo(CountedInfo const &other) : ImageImportInfo(other) { ++count; }
    ~CountedInfo() override { --count; }
    CountedInfo *copy() const override { return new CountedInfo(*this); }

    static inline int count = 0;
};

TEST(ElementImportInfo, isOfNoTypeByItself)
{
    ImageImportInfo info;
    EXPECT_EQ(info.getTokenType(), 0U);
    info.setTokenType(ImageImportInfo::TOKEN_SNAPSHOT);
    std::unique_ptr<ImportInfo> const copy(static_cast<ImportInfo const &>(info).copy());
    EXPECT_EQ(dynamic_cast<ImageImportInfo const &>(*copy).getTokenType(), 2U);
}

TEST(ElementImportInfo, isOwnedByItsElement)
{
    {
        Label label;
        EXPECT_EQ(label.getImportInfo(), nullptr);
        auto *info = new CountedInfo;
        label.setImportInfo(new CountedInfo);
        label.setImportInfo(info);
        EXPECT_EQ(CountedInfo::count, 1);
        label.setImportInfo(info);
        EXPECT_EQ(std::as_const(label).getImportInfo(), info);
        EXPECT_EQ(CountedInfo::count, 1);
    }
    EXPECT_EQ(CountedInfo::count, 0);
}

TEST(ElementImportInfo, isClonedWithItsElement)
{
    Label label;
    auto *info = new CountedInfo;
    info->setTokenType(ImageImportInfo::TOKEN_IMAGE);
    label.setImportInfo(info);
    std::unique_ptr<Element> const copy(label.copy());
    EXPECT_NE(copy->getImportInfo(), info);
    EXPECT_NE(dynamic_cast<CountedInfo const *>(copy->getImportInfo()), nullptr);
    EXPECT_EQ(copy->getImportInfo()->getTokenType(), 1U);
    label.setImportInfo(nullptr);
    EXPECT_EQ(label.getImportInfo(), nullptr);
    EXPECT_EQ(CountedInfo::count, 1);
}

TEST(ElementImportInfo, isSharedByAssignedElements)
{
    {
        BareElement source;
        source.setImportInfo(new CountedInfo);
        BareElement target;
        target.setImportInfo(new CountedInfo);
        target = source;
        EXPECT_EQ(target.getImportInfo(), source.getImportInfo());
        EXPECT_EQ(CountedInfo::count, 1);
    }
    EXPECT_EQ(CountedInfo::count, 0);
}

TEST(ElementFootprint, growsWithTheElement)
{
    Polygon polygon;
    unsigned int const empty = polygon.getEstimatedObjectSize();

    polygon.setPolygon(Polygon2d(std::vector<BaVec2d<double>>(1000), true));

    EXPECT_GE(empty, sizeof(Polygon));
    EXPECT_GE(polygon.getEstimatedObjectSize(), empty + 1000 * sizeof(BaVec2d<double>));
}

QString nameOf(Element const *element)
{
    return element->getScriptObject()->getName();
}

Element *addNew(Figure &figure, Element::Type_t type)
{
    auto *element = new BareElement;
    element->setType(type);
    figure.getRoot()->addChild(element);
    return element;
}

constexpr char const *BASE_NAMES[] = {"line",  "rectangle",     "ellipse",  "polygon",      "label",
                                      "chart", "generic_chart", "legend",   "chart_legend", "image",
                                      "logo",  "group",         "snapshot", "image_label",  "snapshot_frame"};

TEST(ElementName, isMadeOfTypeAndNumberOfElements)
{
    Figure figure;
    for (unsigned int number = 0; number < std::size(BASE_NAMES); ++number) {
        Element const *element = addNew(figure, static_cast<Element::Type_t>(number));
        EXPECT_EQ(nameOf(element), QStringLiteral("%1_%2").arg(BASE_NAMES[number]).arg(number));
    }
}

TEST(ElementName, countsOnWhileTheNameIsTaken)
{
    Figure figure;
    Element *first = addNew(figure, Element::RECTANGLE);
    addNew(figure, Element::RECTANGLE);
    first->getScriptObject()->setName("chart_2");

    EXPECT_EQ(nameOf(addNew(figure, Element::CHART)), "chart_3");
}

TEST(ElementName, staysWhenNobodyElseHasIt)
{
    Figure figure;
    auto *element = new BareElement;
    element->getScriptObject()->setName("mine");

    figure.getRoot()->addChild(element);

    EXPECT_EQ(nameOf(element), "mine");
    EXPECT_EQ(element->getScriptObject()->getParent(), figure.getElementsScriptObject());
}

TEST(ElementName, isReplacedWhenSomebodyElseHasIt)
{
    Figure figure;
    addNew(figure, Element::LOGO)->getScriptObject()->setName("mine");
    auto *element = new BareElement;
    element->getScriptObject()->setName("mine");

    figure.getRoot()->addChild(element);

    EXPECT_EQ(nameOf(element), "logo_1");
}

TEST(ElementName, isKeptWhenTheElementLeavesTheFigure)
{
    Figure figure;
    Element *element = addNew(figure, Element::LOGO);

    element->setFigure(nullptr);

    EXPECT_EQ(nameOf(element), "logo_0");
    EXPECT_EQ(element->getScriptObject()->getParent(), nullptr);
    EXPECT_EQ(element->getFigure(), nullptr);
}

TEST(ElementConnect, putsOneConnectorIntoBothLists)
{
    ProbeRectangle source;
    ProbeRectangle target;
    source.update(StageIdentifier(1), nullptr, nullptr);
    target.update(StageIdentifier(1), nullptr, nullptr);

    Connector *connector = source.connect(&target, "point");

    EXPECT_EQ(connector->getMode(), Connector::Mode_t{});
    EXPECT_EQ(connector->getSource(), &source);
    EXPECT_EQ(connector->getTarget(), &target);
    EXPECT_EQ(connector->getSourceName(), QString());
    EXPECT_EQ(connector->getTargetName(), "point");
    EXPECT_EQ(*source.getConnectorBegin(), connector);
    EXPECT_EQ(*target.getConnectorBegin(), connector);
    EXPECT_FALSE(source.isValid());
    EXPECT_FALSE(target.isValid());
}

TEST(ElementConnect, namesWhatIsWrongWithAnIllegalTarget)
{
    Rectangle source;
    Rectangle target;
    char address[32];
    std::snprintf(address, sizeof address, "0x%zx", reinterpret_cast<std::size_t>(&target));

    EXPECT_EQ(progError([&] { source.connect(&target, "here"); }),
              "fig_element: Illegal element connection: target_address=" + std::string(address) +
                  ", target_type='rectangle', target_id='here'");
}

TEST(ElementConnect, tellsTheFirstTargetThatItLeadsTo)
{
    ProbeRectangle source;
    ProbeRectangle first;
    ProbeRectangle second;
    QString point = "unchanged";
    EXPECT_EQ(source.getConnectorTarget(&point), nullptr);
    EXPECT_EQ(point, "unchanged");

    second.connect(&source, "towards the source");
    source.connect(&first, "a");
    source.connect(&second, "b");

    EXPECT_EQ(source.getConnectorTarget(&point), &first);
    EXPECT_EQ(point, "a");
    EXPECT_EQ(source.getConnectorTarget(nullptr), &first);
}

TEST(ElementDisconnect, removesTheFirstMatchFromBothEnds)
{
    ProbeRectangle source;
    ProbeRectangle target;
    source.connect(&target, "a");
    Connector *kept = source.connect(&target, "b");
    source.update(StageIdentifier(1), nullptr, nullptr);
    target.update(StageIdentifier(1), nullptr, nullptr);

    source.disconnect(&target, "a");

    ASSERT_EQ(source.getConnectorEnd() - source.getConnectorBegin(), 1);
    ASSERT_EQ(target.getConnectorEnd() - target.getConnectorBegin(), 1);
    EXPECT_EQ(*source.getConnectorBegin(), kept);
    EXPECT_FALSE(source.isValid());
    EXPECT_FALSE(target.isValid());
}

TEST(ElementDisconnect, refusesWhatIsNotConnected)
{
    ProbeRectangle source;
    ProbeRectangle target;
    source.connect(&target, "a");

    EXPECT_EQ(progError([&] { source.disconnect(&target, "b"); }), "fig_element: Connector does not exist");
    EXPECT_EQ(progError([&] { source.disconnect(&source, "a"); }), "fig_element: Connector does not exist");
}

TEST(ElementDestructor, takesItsConnectorsFromTheOtherEnds)
{
    ProbeRectangle left;
    ProbeRectangle right;
    {
        ProbeRectangle middle;
        left.connect(&middle, "");
        middle.connect(&right, "");
        left.update(StageIdentifier(1), nullptr, nullptr);
    }

    EXPECT_EQ(left.getConnectorBegin(), left.getConnectorEnd());
    EXPECT_EQ(right.getConnectorBegin(), right.getConnectorEnd());
    EXPECT_FALSE(left.isValid());
}

TEST(ElementDestructor, survivesAConnectorToTheElementItself)
{
    ProbeRectangle element;

    EXPECT_EQ(progError([&] { element.connect(&element, ""); }), "fig_element: Connector already existing");
}

TEST(ElementConnectorPoints, areNoneInTheBaseClass)
{
    ProbeRectangle source;
    ProbeRectangle target;
    BaVec2d<double> from;
    BaVec2d<double> to;

    EXPECT_FALSE(source.computeConnectorPoints(source.connect(&target, ""), nullptr, &from, &to));
}

} // namespace
} // namespace Zem::Fig2
