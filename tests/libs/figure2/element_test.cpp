#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Group.h>
#include <ZemFig2Image.h>
#include <ZemFig2Label.h>
#include <ZemFig2Line.h>
#include <ZemFig2Logo.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2SnapshotFrame.h>

#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

TEST(ElementDefaults, areTheRequiredOnes)
{
    BareElement const element;

    EXPECT_EQ(element.getOrigin(), BaVec2d<double>(0, 0));
    EXPECT_EQ(element.getSize(), BaVec2d<double>(0, 0));
    EXPECT_TRUE(element.getVisible());
    EXPECT_FALSE(element.getLinkTo3D());
    EXPECT_FALSE(element.getAutoSize());
    EXPECT_FALSE(element.getMaximize());
    EXPECT_EQ(element.getAngle(), 0.0);
    EXPECT_EQ(element.getBorder(), LineStyle(0.1, LineStyle::STYLE_NONE, Color(0, 0, 0)));
    EXPECT_EQ(element.getBorder().getCapStyle(), LineStyle::CAP_SHARP);
    EXPECT_FALSE(element.getBackground().getFilled());
    EXPECT_EQ(element.getBackground().getColor(), Color(230, 230, 230));
    EXPECT_EQ(element.getUserFont(), Font("Liberation Sans", 12.0, 0));
    EXPECT_FALSE(element.getUseSystemFont());
    EXPECT_EQ(element.getFontColor(), Color(0, 0, 0));
    EXPECT_EQ(element.getHighlightColor(), Color(8, 8, 132));
    EXPECT_EQ(element.getPivotAlignmentX(), ALIGN_BEGIN);
    EXPECT_EQ(element.getPivotAlignmentY(), ALIGN_BEGIN);
    EXPECT_EQ(element.getMargin(), 1.0);
    EXPECT_EQ(element.getSpacing(), 1.0);
}

TEST(ElementDefaults, beginWithoutAnyState)
{
    BareElement const element;

    EXPECT_FALSE(element.isSelected());
    EXPECT_FALSE(element.isValid());
    EXPECT_FALSE(element.isHighlighted());
    EXPECT_FALSE(element.isExternallyManaged());
    EXPECT_FALSE(element.isTemporarilyInvisible());
    EXPECT_EQ(element.getBlockVersion(), -1);
    EXPECT_EQ(element.getFigure(), nullptr);
    EXPECT_EQ(element.getParent(), nullptr);
    EXPECT_EQ(element.getConnectorBegin(), element.getConnectorEnd());
    EXPECT_TRUE(element.getDragPolygon().empty());
    EXPECT_TRUE(element.getCoveredPolygon().empty());
    EXPECT_TRUE(element.getUpdatePolygon().empty());
    EXPECT_EQ(element.getScriptObject()->getTObject(), &element);
    EXPECT_EQ(element.getScriptObject()->getName(), QString());
}

TEST(ElementConstants, areTheRequiredOnes)
{
    EXPECT_EQ(Element::DEFAULT_TEXT_COLOR, Color(0, 0, 0));
    EXPECT_EQ(Element::ERROR_BACKGROUND_COLOR, Color(200, 200, 199, 127));
}

TEST(ElementId, countsUpAndIsRenewedByUpdateId)
{
    BareElement first;
    BareElement const second;
    EXPECT_EQ(second.getId(), first.getId() + 1);

    first.updateId();

    EXPECT_EQ(first.getId(), second.getId() + 1);
    EXPECT_EQ(BareElement().getId(), first.getId() + 1);
}

struct TypeRow
{
    Element::Type_t type;
    unsigned int number;
    char const *parameterName;
    char const *displayName;
};

constexpr TypeRow TYPE_ROWS[] = {{Element::LINE, 0, "line", "line"},
                                 {Element::RECTANGLE, 1, "rectangle", "rectangle"},
                                 {Element::ELLIPSE, 2, "ellipse", "ellipse"},
                                 {Element::POLYGON, 3, "polygon", "polygon"},
                                 {Element::LABEL, 4, "label", "label"},
                                 {Element::CHART, 5, "chart", "chart"},
                                 {Element::GENERIC_CHART, 6, "generic_chart", "generic chart"},
                                 {Element::LEGEND, 7, "legend", "legend"},
                                 {Element::CHART_LEGEND, 8, "chart_legend", "chart_legend"},
                                 {Element::IMAGE, 9, "image", "image"},
                                 {Element::LOGO, 10, "logo", "logo"},
                                 {Element::GROUP, 11, "group", "group"},
                                 {Element::SNAPSHOT, 12, "snapshot", "snapshot"},
                                 {Element::IMAGE_LABEL, 13, "image label", "image label"},
                                 {Element::SNAPSHOT_FRAME, 14, "snapshot_frame", "snapshot frame"}};

TEST(ElementTypes, haveTheirNumbersAndNames)
{
    for (TypeRow const &row : TYPE_ROWS) {
        BareElement element;
        element.setType(row.type);
        EXPECT_EQ(static_cast<unsigned int>(element.getType()), row.number);
        EXPECT_EQ(element.getTypeName(), row.displayName);
        EXPECT_EQ(Element::getTypeParameterName(row.type), row.parameterName);
        EXPECT_EQ(element.getParameterString().section('\n', 0, 0), QString("type = \"%1\"").arg(row.parameterName));
    }
}

TEST(ElementTypes, areReadByTheirParameterNames)
{
    for (TypeRow const &row : TYPE_ROWS) {
        BareElement element;
        Support::loadParameters(element, std::string("type = \"") + row.parameterName + "\"\n");
        EXPECT_EQ(element.getType(), row.type);
    }
}

TEST(ElementTypes, settingOneClearsValid)
{
    BareElement element;
    element.update(StageIdentifier(1), nullptr, nullptr);

    element.setType(Element::LOGO);

    EXPECT_FALSE(element.isValid());
}

TEST(ElementCreate, makesAnEmptyElementOfEachShape)
{
    for (Element::Type_t type :
         {Element::LINE, Element::RECTANGLE, Element::ELLIPSE, Element::POLYGON, Element::LABEL, Element::IMAGE,
          Element::LOGO, Element::GROUP, Element::SNAPSHOT, Element::SNAPSHOT_FRAME}) {
        std::unique_ptr<Element> const element(Element::create(type));
        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->getType(), type);
    }
}

TEST(ElementCreate, refusesImageLabels)
{
    EXPECT_EQ(progError([] { Element::create(Element::IMAGE_LABEL); }),
              "fig_element: Image labels cannot be created this way");
}

TEST(ElementCreate, givesNullForAnUnknownType)
{
    EXPECT_EQ(Element::create(static_cast<Element::Type_t>(99)), nullptr);
}

struct Abilities
{
    bool size, linkTo3D, minimumSize, autoSize, maximize, angle, background, border, font, fontColor, pivot, margin,
        spacing, spacingUsed, legendData;

    bool operator==(Abilities const &) const = default;
};

Abilities abilitiesOf(Element const &e)
{
    return {e.hasSize(),           e.canLinkTo3D(),   e.hasMinimumSize(), e.hasAutoSize(),    e.hasMaximize(),
            e.hasAngle(),          e.hasBackground(), e.hasBorder(),      e.hasFont(),        e.hasFontColor(),
            e.hasPivotAlignment(), e.hasMargin(),     e.hasSpacing(),     e.getSpacingUsed(), e.hasLegendData()};
}

TEST(ElementAbilities, followTheFamily)
{
    constexpr bool y = true;
    constexpr bool n = false;
    Abilities const bare{n, n, n, n, n, n, n, n, n, n, n, n, n, n, n};
    Abilities const area{y, n, y, n, n, y, y, y, n, n, y, n, n, n, n};
    Abilities const line{n, n, n, n, n, y, n, y, n, n, n, n, n, n, n};
    Abilities const polygon{n, n, n, n, n, y, y, y, n, n, n, n, n, n, n};
    Abilities const group{n, n, n, n, n, n, n, n, n, n, y, n, n, n, n};
    Abilities const image{y, n, y, n, y, y, y, y, n, n, y, n, n, n, y};
    // A label has a minimum size while auto size is on and uses its spacing with a colour bar only.
    Abilities const label{y, n, y, y, n, y, y, y, y, n, y, y, y, n, n};

    EXPECT_EQ(abilitiesOf(BareElement()), bare);
    EXPECT_EQ(abilitiesOf(Rectangle()), area);
    EXPECT_EQ(abilitiesOf(Ellipse()), area);
    EXPECT_EQ(abilitiesOf(ProbeContent()), area);
    EXPECT_EQ(abilitiesOf(Line()), line);
    EXPECT_EQ(abilitiesOf(Polygon()), polygon);
    EXPECT_EQ(abilitiesOf(Group()), group);
    EXPECT_EQ(abilitiesOf(Label()), label);
    EXPECT_EQ(abilitiesOf(Logo()), area);
    EXPECT_EQ(abilitiesOf(Image()), image);
    EXPECT_EQ(abilitiesOf(SnapshotFrame()), image);
    EXPECT_EQ(abilitiesOf(Snapshot()), image);
}

TEST(ElementAbilities, ofShapesHoldNoTokensAndNoHandles)
{
    for (Element::Type_t type :
         {Element::LINE, Element::RECTANGLE, Element::ELLIPSE, Element::POLYGON, Element::GROUP}) {
        std::unique_ptr<Element> const element(Element::create(type));
        BaVec2d<double> position;
        EXPECT_FALSE(element->isTokenUsed("any"));
        EXPECT_FALSE(element->hasHandle(&position));
        EXPECT_FALSE(element->canConnectTo(element.get(), ""));
        EXPECT_TRUE(element->isDataValid(StageIdentifier(1), nullptr));
    }
}

TEST(ElementAbilities, theColorOfAFontComesWithTheFont)
{
    BareElement element;
    element.withFont = true;

    EXPECT_TRUE(element.hasFontColor());
    element.setFontColor(Color(1, 2, 3));
    EXPECT_EQ(element.getFontColor(), Color(1, 2, 3));
}

TEST(ElementSetters, refuseWhatTheElementDoesNotHave)
{
    BareElement e;

    EXPECT_EQ(progError([&] { e.setSize({1, 1}); }), "fig_element: Element does not support sizes");
    EXPECT_EQ(progError([&] { e.setAngle(1); }), "fig_element: Element does not suport angles");
    EXPECT_EQ(progError([&] { e.setBackground(FillStyle()); }), "fig_element: Element does not support backgrounds");
    EXPECT_EQ(progError([&] { e.setBorder(LineStyle()); }), "fig_element: Element does not support borders");
    EXPECT_EQ(progError([&] { e.setFont(Font()); }), "fig_element: Element does not support fonts");
    EXPECT_EQ(progError([&] { e.setUseSystemFont(true); }), "fig_element: Element does not support system fonts");
    EXPECT_EQ(progError([&] { e.setFontColor(Color()); }), "fig_element: Element does not support font colors");
    EXPECT_EQ(progError([&] { e.setPivotAlignmentX(ALIGN_END); }), "fig_element: Element does not support alignment");
    EXPECT_EQ(progError([&] { e.setPivotAlignmentY(ALIGN_END); }), "fig_element: Element does not support alignment");
    EXPECT_EQ(progError([&] { e.setMargin(2); }), "fig_element: Element does not have a margin");
    EXPECT_EQ(progError([&] { e.setSpacing(2); }), "fig_element: Element does not have a spacing");
    EXPECT_EQ(progError([&] { static_cast<void>(e.getMinimumSize()); }),
              "fig_element: Element does not support a minimum size");
}

TEST(ElementSetters, thatFailLeaveTheElementUntouched)
{
    BareElement element;
    element.update(StageIdentifier(1), nullptr, nullptr);
    std::string const before = Support::blockForm(element);

    progError([&] { element.setSize({1, 1}); });
    progError([&] { element.setAngle(1); });
    progError([&] { element.setMargin(2); });
    progError([&] { element.setUseSystemFont(true); });

    EXPECT_EQ(Support::blockForm(element), before);
    EXPECT_TRUE(element.isValid());
}

TEST(ElementSetters, storeAndClearValid)
{
    Label label;
    auto const clearsValid = [&label](auto const &set) {
        label.update(StageIdentifier(1), nullptr, nullptr);
        EXPECT_TRUE(label.isValid());
        set();
        EXPECT_FALSE(label.isValid());
    };

    clearsValid([&] { label.setAutoSize(false); });
    clearsValid([&] { label.setOrigin({1, 2}); });
    clearsValid([&] { label.moveBy({1, 1}); });
    clearsValid([&] { label.setSize({3, 4}); });
    clearsValid([&] { label.setLinkTo3D(true); });
    clearsValid([&] { label.setMaximize(true); });
    clearsValid([&] { label.setAngle(0.5); });
    clearsValid([&] { label.setBorder(LineStyle(2, LineStyle::STYLE_FULL, Color())); });
    clearsValid([&] { label.setBackground(FillStyle(Color(1, 1, 1))); });
    clearsValid([&] { label.setFont(Font("Courier", 8, 0)); });
    clearsValid([&] { label.setUseSystemFont(true); });
    clearsValid([&] { label.setHighlighted(true); });
    clearsValid([&] { label.setHighlightColor(Color(2, 2, 2)); });
    clearsValid([&] { label.setPivotAlignmentX(ALIGN_CENTER); });
    clearsValid([&] { label.setPivotAlignmentY(ALIGN_END); });
    clearsValid([&] { label.setMargin(5); });
    clearsValid([&] { label.setSpacing(6); });
    clearsValid([&] { label.setVisible(false); });
    clearsValid([&] { label.setSelected(true); });
    clearsValid([&] { label.invalidate(); });

    EXPECT_EQ(label.getOrigin(), BaVec2d<double>(2, 3));
    EXPECT_EQ(label.getSize(), BaVec2d<double>(3, 4));
    EXPECT_TRUE(label.getLinkTo3D());
    EXPECT_FALSE(label.getAutoSize());
    EXPECT_TRUE(label.getMaximize());
    EXPECT_EQ(label.getAngle(), 0.5);
    EXPECT_EQ(label.getBorder().getWidth(), 2.0);
    EXPECT_EQ(label.getBackground().getColor(), Color(1, 1, 1));
    EXPECT_EQ(label.getUserFont(), Font("Courier", 8, 0));
    EXPECT_TRUE(label.getUseSystemFont());
    EXPECT_TRUE(label.isHighlighted());
    EXPECT_EQ(label.getHighlightColor(), Color(2, 2, 2));
    EXPECT_EQ(label.getPivotAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(label.getPivotAlignmentY(), ALIGN_END);
    EXPECT_EQ(label.getMargin(), 5.0);
    EXPECT_EQ(label.getSpacing(), 6.0);
}

TEST(ElementSetters, ofSelectionAndVisibilityClearValidOnlyForANewValue)
{
    BareElement element;
    element.update(StageIdentifier(1), nullptr, nullptr);

    element.setSelected(false);
    element.setVisible(true);

    EXPECT_TRUE(element.isValid());
}

TEST(ElementSetters, ofRuntimeStateLeaveValidAlone)
{
    BareElement element;
    element.update(StageIdentifier(1), nullptr, nullptr);

    element.setExternallyManaged(true);
    element.setTemporarilyInvisible(true);

    EXPECT_TRUE(element.isExternallyManaged());
    EXPECT_TRUE(element.isTemporarilyInvisible());
    EXPECT_TRUE(element.isValid());
}

TEST(ElementFont, isThatOfTheSystemOnDemand)
{
    Label label;
    label.setFont(Font("Courier", 8, 0));
    EXPECT_EQ(label.getFont(), Font("Courier", 8, 0));

    label.setUseSystemFont(true);

    EXPECT_EQ(label.getFont(), Font::getSystemLabelFont());
    EXPECT_EQ(label.getUserFont(), Font("Courier", 8, 0));
}

TEST(ElementHandle, isRefusedWithoutOne)
{
    BareElement element;

    EXPECT_EQ(progError([&] { element.handleDragStart(); }), "fig_element: Element does not have a handle");
    EXPECT_EQ(progError([&] { element.handleMove({1, 1}); }), "fig_element: Element does not have a handle");
    EXPECT_EQ(progError([&] { element.handleDragEnd(); }), "fig_element: Element does not have a handle");
}

TEST(ElementHandle, doesNothingInTheBaseClass)
{
    BareElement element;
    element.withHandle = true;
    element.update(StageIdentifier(1), nullptr, nullptr);

    element.handleDragStart();
    element.handleMove({1, 1});
    element.handleDragEnd();

    EXPECT_TRUE(element.isValid());
}

TEST(ElementDrag, isRefusedByTheBaseClass)
{
    BareElement element;

    EXPECT_FALSE(element.dragPointMove(0, {1, 1}));
}

ElementAttributes only(QLatin1StringView name)
{
    ElementAttributes attributes(true);
    attributes.setUsed(name);
    return attributes;
}

TEST(ElementHasAttributes, isTrueForAllWithoutAFilter)
{
    EXPECT_TRUE(BareElement().hasAttributes(ElementAttributes(false)));
}

TEST(ElementHasAttributes, isFalseForAnEmptyFilter)
{
    EXPECT_FALSE(Label().hasAttributes(ElementAttributes(true)));
}

TEST(ElementHasAttributes, asksTheOperationOfEachName)
{
    BareElement const bare;
    Label const label;
    for (QLatin1StringView name :
         {ElementAttributes::ALIGNMENT, ElementAttributes::ANGLE, ElementAttributes::BACKGROUND,
          ElementAttributes::BORDER, ElementAttributes::FONT, ElementAttributes::MARGIN, ElementAttributes::SPACING}) {
        EXPECT_TRUE(label.hasAttributes(only(name))) << name.data();
        EXPECT_FALSE(bare.hasAttributes(only(name))) << name.data();
    }
    EXPECT_FALSE(label.hasAttributes(only(ElementAttributes::FONT_COLOR)));
    BareElement withFont;
    withFont.withFont = true;
    EXPECT_TRUE(withFont.hasAttributes(only(ElementAttributes::FONT_COLOR)));
}

TEST(ElementHasAttributes, givesEveryElementAGeometry)
{
    EXPECT_TRUE(BareElement().hasAttributes(only(ElementAttributes::GEOMETRY)));
}

TEST(ElementHasAttributes, givesOnlyImageLabelsAConnector)
{
    for (TypeRow const &row : TYPE_ROWS) {
        BareElement element;
        element.setType(row.type);
        EXPECT_EQ(element.hasAttributes(only(ElementAttributes::CONNECTOR)), row.number == 13);
    }
}

TEST(ElementAttributesChoice, holdsAllTenNamesWithoutAFilter)
{
    ElementAttributes const all(false);

    EXPECT_FALSE(all.isFiltered());
    for (char const *name : {"alignment", "angle", "background", "border", "connector", "font", "font_color",
                             "geometry", "margin", "spacing"})
        EXPECT_TRUE(all.isUsed(name)) << name;
    EXPECT_FALSE(all.isUsed("size"));
}

TEST(ElementAttributesChoice, beginsEmptyWithAFilter)
{
    ElementAttributes chosen(true);
    EXPECT_TRUE(chosen.isFiltered());
    EXPECT_FALSE(chosen.isUsed("angle"));

    chosen.setUsed("angle");

    EXPECT_TRUE(chosen.isUsed("angle"));
    EXPECT_FALSE(chosen.isUsed("font"));
}

TEST(ElementAttributesChoice, sharesNamesWithAnother)
{
    ElementAttributes angle = only(ElementAttributes::ANGLE);
    ElementAttributes const font = only(ElementAttributes::FONT);
    EXPECT_FALSE(angle.hasCommonAttributes(font));
    EXPECT_TRUE(angle.hasCommonAttributes(ElementAttributes(false)));

    angle.setUsed("font");

    EXPECT_TRUE(angle.hasCommonAttributes(font));
    EXPECT_TRUE(ElementAttributes(angle).hasCommonAttributes(font));
}

} // namespace
} // namespace Zem::Fig2
