// The text and parameter forms of Element, mostly seen through a Rectangle.
#include "probe_elements.h"

#include <ElementForms.h>
#include <ZemFig2Label.h>
#include <ZemFig2Line.h>

#include <ZemParse.h>
#include <ZemScriptObject.h>

namespace Zem::Fig2 {
namespace {

using Support::thrownText;

TEST(ElementText, isOneLineOfWords)
{
    BareElement element;
    element.setOrigin({10, -20.5});
    element.getScriptObject()->setName(QString::fromUtf8("a ü"));

    EXPECT_EQ(Support::textForm(element),
              "5 " + std::to_string(element.getId()) +
                  " 10 -20.5 0 0 1 0 0 0 0 #000000ff #080884ff 0 0 1 1 "
                  "1 0.10000000000000001 0 #000000ff 1 1 0 #e6e6e6ff Liberation\\sSans 12 0 0 a\\sü ");
}

TEST(ElementText, neverDependsOnTheFlagsOfTheStream)
{
    BareElement element;
    element.setOrigin({17, 0.125});
    std::ostringstream stream;
    stream << std::hex << std::showpos << std::setprecision(2) << std::boolalpha;

    element.saveToStream(stream);

    EXPECT_EQ(stream.str(), Support::textForm(element));
    stream.str("");
    stream << 255;
    EXPECT_EQ(stream.str(), "ff");
}

constexpr char FRAME[] = "1 2 2 #010203ff 1 1 1 #090807ff Courier 9 2 ";

void expectCommonText(Element const &element)
{
    EXPECT_EQ(element.getId(), 42);
    EXPECT_EQ(element.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(element.getSize(), BaVec2d<double>(30, 40));
    EXPECT_FALSE(element.getVisible());
    EXPECT_TRUE(element.getLinkTo3D());
    EXPECT_TRUE(element.getAutoSize());
    EXPECT_EQ(element.getAngle(), 0.5);
    EXPECT_EQ(element.getFontColor(), Color(1, 2, 3, 4));
    EXPECT_EQ(element.getHighlightColor(), Color(5, 6, 7, 8));
    EXPECT_EQ(element.getPivotAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(element.getPivotAlignmentY(), ALIGN_END);
    EXPECT_EQ(element.getMargin(), 3.0);
    EXPECT_EQ(element.getSpacing(), 4.0);
    EXPECT_EQ(element.getBorder(), LineStyle(2, LineStyle::STYLE_DOTTED, Color(1, 2, 3)));
    EXPECT_EQ(element.getBackground(), FillStyle(Color(9, 8, 7)));
    EXPECT_EQ(element.getUserFont(), Font("Courier", 9, 2));
}

std::string commonText(std::string const &version, std::string const &maximize)
{
    return version + " 42 10 20 30 40 0 1 1 " + maximize + "0.5 #01020304 #05060708 1 2 3 4 " + FRAME;
}

TEST(ElementText, ofVersion5IsRead)
{
    BareElement element;

    EXPECT_TRUE(Support::loadText(element, commonText("5", "1 ") + "1 the\\sname "));

    expectCommonText(element);
    EXPECT_TRUE(element.getMaximize());
    EXPECT_TRUE(element.getUseSystemFont());
    EXPECT_EQ(element.getScriptObject()->getName(), "the name");
    EXPECT_FALSE(element.isValid());
}

TEST(ElementText, ofVersion4HasNoSystemFont)
{
    BareElement element;

    EXPECT_TRUE(Support::loadText(element, commonText("4", "1 ") + "name "));

    expectCommonText(element);
    EXPECT_FALSE(element.getUseSystemFont());
    EXPECT_EQ(element.getScriptObject()->getName(), "name");
}

TEST(ElementText, ofVersion3HasNoName)
{
    BareElement element;
    element.getScriptObject()->setName("before");

    EXPECT_TRUE(Support::loadText(element, commonText("3", "1 ")));

    expectCommonText(element);
    EXPECT_TRUE(element.getMaximize());
    EXPECT_EQ(element.getScriptObject()->getName(), "before");
}

TEST(ElementText, ofVersion2EndsWithANumberThatIsDropped)
{
    BareElement element;
    std::istringstream stream(commonText("2", "1 ") + "17 next");

    element.loadFromStream(stream);

    expectCommonText(element);
    EXPECT_TRUE(element.getMaximize());
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "next");
}

TEST(ElementText, ofVersion1HasNoMaximize)
{
    BareElement element;
    element.setMaximize(true);
    std::istringstream stream(commonText("1", "") + "17 next");

    element.loadFromStream(stream);

    expectCommonText(element);
    EXPECT_FALSE(element.getMaximize());
    std::string rest;
    stream >> rest;
    EXPECT_EQ(rest, "next");
}

TEST(ElementText, ofANewerVersionFailsTheStreamAndChangesNothing)
{
    BareElement element;
    std::string const before = Support::textForm(element);

    EXPECT_FALSE(Support::loadText(element, commonText("6", "1 ") + "1 name "));

    EXPECT_EQ(Support::textForm(element), before);
}

TEST(ElementText, acceptsAnyWhiteSpace)
{
    BareElement element;
    std::string text = commonText("5", "1 ") + "1 name ";
    std::replace(text.begin(), text.end(), ' ', '\n');

    EXPECT_TRUE(Support::loadText(element, "\t \n" + text));

    expectCommonText(element);
}

TEST(ElementText, thatEndsTooEarlyFailsTheStream)
{
    BareElement element;

    EXPECT_FALSE(Support::loadText(element, "5 42 10 20 30"));
}

TEST(ElementText, refusesAnAlignmentOutsideItsRange)
{
    BareElement element;

    EXPECT_FALSE(Support::loadText(element, std::string("5 42 10 20 30 40 0 1 1 1 0.5 #01020304 #05060708 1 3 3 4 ") +
                                                FRAME + "1 name "));
}

TEST(ElementParameters, ofABareElementAreFour)
{
    BareElement element;
    element.setOrigin({1.5, -2});

    EXPECT_EQ(Support::parameterForm(element), "type = \"logo\"\n"
                                               "origin = (1.5, -2)\n"
                                               "visible = true\n"
                                               "highlight_color = #080884ff\n");
}

TEST(ElementParameters, ofARectangleFollowTheOrderOfTheKeys)
{
    Rectangle rectangle;
    rectangle.setOrigin({10, 20});
    rectangle.setSize({30, 40});
    rectangle.setAngle(0.5);
    rectangle.setPivotAlignmentY(ALIGN_END);

    EXPECT_EQ(Support::parameterForm(rectangle), "type = \"rectangle\"\n"
                                                 "origin = (10, 20)\n"
                                                 "visible = true\n"
                                                 "size = (30, 40)\n"
                                                 "angle = 0.5\n"
                                                 "border_width = 0.1\n"
                                                 "border_color = #000000ff\n"
                                                 "border_style = \"full\"\n"
                                                 "border_cap_style = \"sharp\"\n"
                                                 "background_filled = false\n"
                                                 "background_color = #e6e6e6ff\n"
                                                 "highlight_color = #080884ff\n"
                                                 "pivot_align_x = \"begin\"\n"
                                                 "pivot_align_y = \"end\"\n"
                                                 "margin = 1\n"
                                                 "spacing = 1\n");
}

TEST(ElementParameters, ofALabelHoldFontAndAutoSize)
{
    Label label;
    std::string const form = label.Element::getParameterString().toStdString();

    EXPECT_EQ(form, "type = \"label\"\n"
                    "origin = (0, 0)\n"
                    "visible = true\n"
                    "size = (0, 0)\n"
                    "auto_size = true\n"
                    "angle = 0\n"
                    "border_width = 0.1\n"
                    "border_color = #000000ff\n"
                    "border_style = \"none\"\n"
                    "border_cap_style = \"sharp\"\n"
                    "background_filled = false\n"
                    "background_color = #e6e6e6ff\n"
                    "font = \"Liberation Sans,12,0\"\n"
                    "font_color = #000000ff\n"
                    "use_system_font = false\n"
                    "highlight_color = #080884ff\n"
                    "pivot_align_x = \"begin\"\n"
                    "pivot_align_y = \"begin\"\n"
                    "margin = 1\n"
                    "spacing = 1\n");
}

TEST(ElementParameters, ofAnElementThatFillsThePageHoldMaximize)
{
    ProbeRectangle rectangle;
    rectangle.canMaximize = true;
    rectangle.setMaximize(true);

    EXPECT_NE(Support::parameterForm(rectangle).find("size = (0, 0)\nmaximize = true\nangle = 0\n"), std::string::npos);
}

TEST(ElementParameters, areReadWhereTheyExist)
{
    Label label;
    label.update(StageIdentifier(1), nullptr, nullptr);

    std::string const rest = Support::loadParameters(label, "origin = (1, 2)\n"
                                                            "angle = -0.25\n"
                                                            "size = (3, 4)\n"
                                                            "visible = false\n"
                                                            "link_to_3d = true\n"
                                                            "auto_size = false\n"
                                                            "maximize = true\n"
                                                            "font_color = #01020304\n"
                                                            "highlight_color = #05060708\n"
                                                            "pivot_align_x = \"center\"\n"
                                                            "pivot_align_y = \"end\"\n"
                                                            "margin = 0\n"
                                                            "spacing = 2.5\n"
                                                            "border_width = 3\n"
                                                            "background_filled = true\n"
                                                            "font = \"Courier,9,2\"\n"
                                                            "use_system_font = true\n"
                                                            "unknown = 1\n");

    EXPECT_EQ(rest, "unknown = 1\n");
    EXPECT_EQ(label.getOrigin(), BaVec2d<double>(1, 2));
    EXPECT_EQ(label.getAngle(), -0.25);
    EXPECT_EQ(label.getSize(), BaVec2d<double>(3, 4));
    EXPECT_FALSE(label.getVisible());
    EXPECT_TRUE(label.getLinkTo3D());
    EXPECT_FALSE(label.getAutoSize());
    EXPECT_TRUE(label.getMaximize());
    EXPECT_EQ(label.getFontColor(), Color(1, 2, 3, 4));
    EXPECT_EQ(label.getHighlightColor(), Color(5, 6, 7, 8));
    EXPECT_EQ(label.getPivotAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(label.getPivotAlignmentY(), ALIGN_END);
    EXPECT_EQ(label.getMargin(), 0.0);
    EXPECT_EQ(label.getSpacing(), 2.5);
    EXPECT_EQ(label.getBorder().getWidth(), 3.0);
    EXPECT_TRUE(label.getBackground().getFilled());
    EXPECT_EQ(label.getUserFont(), Font("Courier", 9, 2));
    EXPECT_TRUE(label.getUseSystemFont());
    EXPECT_FALSE(label.isValid());
}

TEST(ElementParameters, leaveAloneWhatTheyDoNotName)
{
    Rectangle rectangle;
    rectangle.setOrigin({5, 6});
    std::string const before = Support::parameterForm(rectangle);

    EXPECT_EQ(Support::loadParameters(rectangle, ""), "");

    EXPECT_EQ(Support::parameterForm(rectangle), before);
    EXPECT_FALSE(rectangle.isValid());
}

TEST(ElementParameters, refuseAnUnknownType)
{
    Rectangle rectangle;
    rectangle.update(StageIdentifier(1), nullptr, nullptr);
    try {
        Support::loadParameters(rectangle, "type = \"circle\"\n");
        FAIL() << "nothing thrown";
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown element type 'circle'");
        EXPECT_EQ(error.getPosition(), -1);
    }
    EXPECT_TRUE(rectangle.isValid());
}

TEST(ElementParameters, refuseASizeForALine)
{
    Line line;

    EXPECT_EQ(thrownText<ParamError>([&] { Support::loadParameters(line, "origin = (3, 4)\nsize = (1, 1)\n"); }),
              "element does not have a size");
    EXPECT_EQ(line.getOrigin(), BaVec2d<double>(3, 4));
}

TEST(ElementParameters, refuseAPivotForALine)
{
    for (char const *key : {"pivot_align_x", "pivot_align_y"}) {
        Line line;
        std::string const text = std::string(key) + " = \"end\"\n";
        EXPECT_EQ(thrownText<ParamError>([&] { Support::loadParameters(line, text); }),
                  "element does not have a pivot alignment point");
    }
}

TEST(ElementParameters, takeAMarginForARectangle)
{
    Rectangle rectangle;

    Support::loadParameters(rectangle, "margin = 4\nspacing = 5\nauto_size = true\nlink_to_3d = true\n");

    EXPECT_EQ(rectangle.getMargin(), 4.0);
    EXPECT_EQ(rectangle.getSpacing(), 5.0);
    EXPECT_TRUE(rectangle.getAutoSize());
    EXPECT_TRUE(rectangle.getLinkTo3D());
}

TEST(ElementParameters, refuseNegativeMarginAndSpacing)
{
    Rectangle rectangle;

    EXPECT_THROW(Support::loadParameters(rectangle, "margin = -0.001\n"), ParamError);
    EXPECT_THROW(Support::loadParameters(rectangle, "spacing = -0.001\n"), ParamError);
}

TEST(ElementParameters, takeTheWidestAngles)
{
    Rectangle rectangle;

    Support::loadParameters(rectangle, "angle = -1.7976931348623157e+308\n");
    EXPECT_EQ(rectangle.getAngle(), -1.7976931348623157e+308);
    Support::loadParameters(rectangle, "angle = 1.7976931348623157e+308\n");
    EXPECT_EQ(rectangle.getAngle(), 1.7976931348623157e+308);
}

TEST(ElementParameterKeys, areTheRequiredOnes)
{
    EXPECT_EQ(Element::PARAM_TYPE, QLatin1StringView("type"));
    EXPECT_EQ(Element::PARAM_ORIGIN, QLatin1StringView("origin"));
    EXPECT_EQ(Element::PARAM_VISIBLE, QLatin1StringView("visible"));
    EXPECT_EQ(Element::PARAM_SIZE, QLatin1StringView("size"));
    EXPECT_EQ(Element::PARAM_LINK_TO_3D, QLatin1StringView("link_to_3d"));
    EXPECT_EQ(Element::PARAM_AUTO_SIZE, QLatin1StringView("auto_size"));
    EXPECT_EQ(Element::PARAM_MAXIMIZE, QLatin1StringView("maximize"));
    EXPECT_EQ(Element::PARAM_ANGLE, QLatin1StringView("angle"));
    EXPECT_EQ(Element::PARAM_BORDER, QLatin1StringView("border"));
    EXPECT_EQ(Element::PARAM_BACKGROUND, QLatin1StringView("background"));
    EXPECT_EQ(Element::PARAM_FONT, QLatin1StringView("font"));
    EXPECT_EQ(Element::PARAM_FONT_COLOR, QLatin1StringView("font_color"));
    EXPECT_EQ(Element::PARAM_USE_SYSTEM_FONT, QLatin1StringView("use_system_font"));
    EXPECT_EQ(Element::PARAM_HIGHLIGHT_COLOR, QLatin1StringView("highlight_color"));
    EXPECT_EQ(Element::PARAM_PIVOT_ALIGNMENT_X, QLatin1StringView("pivot_align_x"));
    EXPECT_EQ(Element::PARAM_PIVOT_ALIGNMENT_Y, QLatin1StringView("pivot_align_y"));
    EXPECT_EQ(Element::PARAM_MARGIN, QLatin1StringView("margin"));
    EXPECT_EQ(Element::PARAM_SPACING, QLatin1StringView("spacing"));
}

std::string loadOlderParameters(Element &element, std::string const &text)
{
    QString parameters = QString::fromStdString(text);
    element.createFromV541ParameterString(parameters);
    return parameters.toStdString();
}

TEST(ElementOlderParameters, areReadFromTheirOwnForm)
{
    Label label;

    loadOlderParameters(label, "type=label;origin=1,2;angle=0.5;size=3,4;visible=false;link_to_3d=1;auto_size=0;"
                               "font_color=1,2,3;highlight_color=4,5,6,7;pivot_align_x=center;pivot_align_y=end;"
                               "margin=2;spacing=3;font=\"Courier,9,2\";use_system_font=true;");

    EXPECT_EQ(label.getType(), Element::LABEL);
    EXPECT_EQ(label.getOrigin(), BaVec2d<double>(1, 2));
    EXPECT_EQ(label.getAngle(), 0.5);
    EXPECT_EQ(label.getSize(), BaVec2d<double>(3, 4));
    EXPECT_FALSE(label.getVisible());
    EXPECT_TRUE(label.getLinkTo3D());
    EXPECT_FALSE(label.getAutoSize());
    EXPECT_EQ(label.getFontColor(), Color(1, 2, 3));
    EXPECT_EQ(label.getHighlightColor(), Color(4, 5, 6, 7));
    EXPECT_EQ(label.getPivotAlignmentX(), ALIGN_CENTER);
    EXPECT_EQ(label.getPivotAlignmentY(), ALIGN_END);
    EXPECT_EQ(label.getMargin(), 2.0);
    EXPECT_EQ(label.getSpacing(), 3.0);
    EXPECT_EQ(label.getUserFont(), Font("Courier", 9, 2));
    EXPECT_TRUE(label.getUseSystemFont());
    EXPECT_FALSE(label.isValid());
}

TEST(ElementOlderParameters, knowNoMaximize)
{
    Label label;

    EXPECT_EQ(loadOlderParameters(label, "maximize=true;"), "maximize=true;");

    EXPECT_FALSE(label.getMaximize());
}

TEST(ElementOlderParameters, takeBorderAndBackgroundInTheCurrentForm)
{
    Label label;

    loadOlderParameters(label, "border_width = 3\nbackground_filled = true\n");

    EXPECT_EQ(label.getBorder().getWidth(), 3.0);
    EXPECT_TRUE(label.getBackground().getFilled());
}

TEST(ElementOlderParameters, refuseWhatTheElementCannotHave)
{
    Line line;
    Rectangle rectangle;

    EXPECT_EQ(thrownText<ParamError>([&] { loadOlderParameters(line, "size=1,1;"); }), "element does not have a size");
    EXPECT_EQ(thrownText<ParamError>([&] { loadOlderParameters(line, "pivot_align_x=end;"); }),
              "element does not have a pivot alignment point");
    EXPECT_EQ(thrownText<ParamError>([&] { loadOlderParameters(rectangle, "type=circle;"); }),
              "unknown element type 'circle'");
    EXPECT_EQ(thrownText<ParamError>([&] { loadOlderParameters(rectangle, "pivot_align_x=middle;"); }),
              "unknown alignment type");
    EXPECT_EQ(thrownText<ParamError>([&] { loadOlderParameters(rectangle, "font=\"nonsense\";"); }),
              "illegal font 'nonsense'");
    EXPECT_THROW(loadOlderParameters(rectangle, "margin=-1;"), ParamError);
}

} // namespace
} // namespace Zem::Fig2
