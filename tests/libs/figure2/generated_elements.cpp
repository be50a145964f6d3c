#include "generated_elements.h"

#include <ZemFig2Chart.h>
#include <ZemFig2ChartLegend.h>
#include <ZemFig2ColorBar.h>
#include <ZemFig2Image.h>
#include <ZemFig2Label.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2Logo.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2SnapshotFrame.h>

#include <ZemImage.h>
#include <ZemScriptObject.h>

#include <rapidcheck.h>

#include <array>

namespace Zem::Fig2 {

namespace {

/// Those with a text form first.
constexpr std::array LEAF_TYPES{Element::LINE,          Element::RECTANGLE, Element::ELLIPSE,       Element::POLYGON,
                                Element::LABEL,         Element::LEGEND,    Element::CHART_LEGEND,  Element::LOGO,
                                Element::IMAGE,         Element::CHART,     Element::GENERIC_CHART, Element::SNAPSHOT,
                                Element::SNAPSHOT_FRAME};
constexpr std::size_t NUMBER_OF_TEXT_TYPES = 9;

double number()
{
    double const any =
        *rc::gen::oneOf(rc::gen::cast<double>(rc::gen::inRange(-1000, 1000)), rc::gen::arbitrary<double>(),
                        rc::gen::element(0.1, 1.0 / 3.0, 1e-300, 5e-324, 1.7976931348623157e308));
    // No negative zero: moving a line by nothing makes it positive.
    return any + 0.0;
}

double notNegative()
{
    return std::abs(number());
}

BaVec2d<double> vec()
{
    double const x = number();
    return {x, number()};
}

bool flag()
{
    return *rc::gen::arbitrary<bool>();
}

unsigned int below(unsigned int count)
{
    return *rc::gen::inRange(0U, count);
}

Color color()
{
    auto const channel = [] { return *rc::gen::arbitrary<unsigned char>(); };
    unsigned char const red = channel();
    unsigned char const green = channel();
    unsigned char const blue = channel();
    return {red, green, blue, channel()};
}

/// Words, blanks, quotes, line ends, letters of other scripts, nothing.
QString word()
{
    auto const pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
        "a", "B2", " ", "\"", "\\", "\n", "\t", "=", "ä", "力", "😀", "$", "<b>", "&", ";"));
    std::string text;
    for (std::string const &piece : pieces)
        text += piece;
    return QString::fromStdString(text);
}

Font font()
{
    QString const family = word();
    double const size = 1.0 + below(100) / 7.0;
    return {family, size, below(128)};
}

LineStyle lineStyle()
{
    double const width = notNegative();
    LineStyle style(width, static_cast<LineStyle::Style>(below(5)), color());
    style.setCapStyle(static_cast<LineStyle::CapStyle>(below(2)));
    return style;
}

FillStyle fillStyle()
{
    FillStyle style(color());
    style.setFilled(flag());
    return style;
}

Symbol symbol()
{
    auto const type = static_cast<Symbol::Type>(below(14));
    Symbol symbol(type, notNegative(), flag());
    symbol.setColor(color());
    symbol.setFont(font());
    symbol.setDigits(below(1000));
    symbol.setSpacing(below(1000));
    return symbol;
}

Alignment_t alignment()
{
    return static_cast<Alignment_t>(below(3));
}

void fillCommon(Element &element)
{
    element.getScriptObject()->setName(word());
    element.setVisible(flag());
    element.setLinkTo3D(flag());
    element.setAutoSize(flag());
    element.setMaximize(flag());
    element.setHighlightColor(color());
    if (element.getType() != Element::GROUP)
        element.setOrigin(vec());
    if (element.hasSize())
        element.setSize(vec());
    if (element.hasAngle())
        element.setAngle(number());
    if (element.hasBorder())
        element.setBorder(lineStyle());
    if (element.hasBackground())
        element.setBackground(fillStyle());
    if (element.hasFont()) {
        element.setFont(font());
        element.setUseSystemFont(flag());
    }
    if (element.hasFontColor())
        element.setFontColor(color());
    if (element.hasPivotAlignment()) {
        element.setPivotAlignmentX(alignment());
        element.setPivotAlignmentY(alignment());
    }
    if (element.hasMargin())
        element.setMargin(notNegative());
    if (element.hasSpacing())
        element.setSpacing(notNegative());
}

void fill(Line &line)
{
    line.setPoint1(vec());
    line.setPoint2(vec());
    bool const first = flag();
    line.setArrowInfo({first, flag()});
    Symbol const symbolAtFirst = symbol();
    line.setSymbolInfo({symbolAtFirst, symbol()});
}

void fill(Polygon &polygon)
{
    Polygon2d points(true);
    for (unsigned int i = 0, count = 3 + below(6); i < count; ++i)
        points.addPoint(vec());
    polygon.setPolygon(points);
}

void fill(AlignedElement &element)
{
    element.setAutoScale(flag());
    element.setScaling(number());
    element.setAlignmentX(alignment());
    element.setAlignmentY(alignment());
    element.setInnerOrigin(vec());
}

Zem::Image *picture()
{
    unsigned int const width = 1 + below(3);
    auto *picture = new ImageColor(width, 1 + below(3));
    picture->setPixel(width - 1, 0, color());
    picture->setHasAlphaChannel(flag());
    return picture;
}

void fillPicture(Logo &logo)
{
    logo.setFileName(word());
    logo.setImage(flag() ? picture() : nullptr);
}

ImageDataVisualisation visualisation()
{
    ImageDataVisualisation look(flag());
    look.setMode(static_cast<ImageDataVisualisation::Mode_t>(below(7)));
    look.setLineStyle(lineStyle());
    look.setPointMarkerSize(notNegative());
    look.setVectorScaling(notNegative());
    look.setVectorLineWidth(notNegative());
    look.setDrawArrows(static_cast<ImageDataVisualisation::ArrowMode_t>(below(4)));
    look.setDrawCombinedVectors(flag());
    look.setDrawHiddenPoints(flag());
    look.setDrawPointIds(flag());
    look.setUseFixedPointIdColor(flag());
    look.setPointIdFont(font());
    look.setPointIdColor(color());
    look.setPointMask(*rc::gen::arbitrary<int>());
    return look;
}

CoordinateSystem coordinateSystem()
{
    CoordinateSystem system;
    double const x = number();
    double const y = number();
    system.setOrigin({x, y, number()});
    system.setVisible(flag());
    system.setTextVisible(flag());
    system.setLength(number());
    system.setWidth(number());
    system.setFont(font());
    return system;
}

void fillImage(ImageBase &image)
{
    image.setToken(word());
    image.setCoordinateSystem(coordinateSystem());
    ImageConversion conversion;
    conversion.setType(static_cast<ImageConversion::Type>(below(6)));
    conversion.setMin(*rc::gen::arbitrary<int>());
    conversion.setMax(*rc::gen::arbitrary<int>());
    image.setImageConversion(conversion);
    image.setOverlayMode(static_cast<ImageBase::OverlayMode>(below(3)));
    for (unsigned int i = 0, count = below(4); i < count; ++i) {
        QString const id = word();
        image.setVisualisation(id, visualisation());
    }
    image.setImageBackgroundColor(color());
    image.setUseImageBackgroundColor(flag());
    // Its token is always its source.
    if (auto *frame = dynamic_cast<SnapshotFrame *>(&image))
        frame->setSnapshotSourceId(word());
}

ColorBar colorBar()
{
    ColorBar bar;
    bar.setRange(vec());
    double const value = number();
    bar.setValue(value, flag());
    bar.setColor(color());
    bar.setWidth(notNegative());
    bar.setUseVariableLength(flag());
    bar.setMinimumLength(notNegative());
    bar.setSide(static_cast<ColorBar::Side_t>(below(4)));
    bar.setBorder(lineStyle());
    bar.setBackground(fillStyle());
    return bar;
}

void fill(LabelBase &label)
{
    label.setColorBar(colorBar());
    label.setText(word());
    label.setColorBarVisible(flag());
    label.setTextAlignmentX(alignment());
    label.setTextAlignmentY(alignment());
    label.setExpandWidth(flag());
    label.setConnectorPoint(vec());
    label.setConnectorStyle(lineStyle());
    label.setTemplateName(word());
}

Legend2::Legend colorScale()
{
    Legend2::Legend scale(flag() ? uLength : nullptr);
    scale.setUnitName(word());
    if (flag())
        scale.setFixedMinimum(number());
    if (flag())
        scale.setFixedMaximum(number());
    scale.setDigits(static_cast<int>(below(Legend2::Legend::MAX_DIGITS + 2)) - 1);
    scale.setMaxTicks(*rc::gen::inRange(-10, 1000));
    scale.setColorMode(flag() ? Legend2::COLOR_MODE_LOGARITHMIC : Legend2::COLOR_MODE_LINEAR);
    scale.setColorMapName(static_cast<Legend2::ColorMapName_t>(below(5)));
    scale.setScaleMode(flag() ? Legend2::SCALE_MODE_DISCRETE : Legend2::SCALE_MODE_CONTINUOUS);
    scale.setNumberOfClasses(1 + below(20));
    scale.setUseExtremaColors(flag());
    scale.setMinColor(color());
    scale.setMaxColor(color());
    if (flag())
        scale.setMinColorInvalid();
    if (flag())
        scale.setMaxColorInvalid();
    scale.setV602CompatibilityMode(flag());
    return scale;
}

Legend2::Data scaleData()
{
    Legend2::Data data;
    data.setDynamicMinimum(number());
    data.setDynamicMaximum(number());
    data.setAverage(number());
    data.setSigmaValue(number());
    return data;
}

Legend2::ToleranceParams tolerance()
{
    Legend2::ToleranceParams tolerance;
    tolerance.setTitle(word());
    tolerance.setWarningShare(below(101) / 200.0);
    for (unsigned int i = 0; i < Legend2::ToleranceParams::NUMBER_OF_PASS_TYPES; ++i) {
        auto const type = static_cast<Legend2::TolerancePassType_t>(i);
        tolerance.setText(type, word());
        tolerance.setColor(type, color());
        if (flag())
            tolerance.setColorInvalid(type);
    }
    return tolerance;
}

void fill(Legend &legend)
{
    legend.setLegendDataMode(static_cast<Legend::LegendDataMode>(below(3)));
    legend.setTickBoxStyle(lineStyle());
    legend.setTickStyle(lineStyle());
    legend.setBarWidth(number());
    legend.setEqualSizedBlocks(flag());
    legend.setShowHistogram(flag());
    Legend2::Legend const scale = colorScale();
    legend.setLocalLegendData(scale, scaleData());
    legend.setLocalToleranceParams(flag(), tolerance());
    Legend2::HistogramData histogram;
    double const value = number();
    histogram.addHistogram({{value, 1 + below(1000)}});
    legend.setLocalHistogramData(histogram);
}

Axis axis(Axis::Type type)
{
    Axis axis(type);
    axis.setRangeModeMin(static_cast<Axis::RangeMode>(below(3)));
    axis.setRangeModeMax(static_cast<Axis::RangeMode>(below(3)));
    axis.setVisible(flag());
    axis.setRange(vec());
    axis.setLineStyle(lineStyle());
    axis.setTickLength(notNegative());
    axis.setTicks(static_cast<int>(below(100)));
    axis.setDigitsMode(static_cast<Axis::DigitsMode>(below(3)));
    axis.setDigits(static_cast<int>(below(20)));
    axis.setLength(notNegative());
    axis.setFont(font());
    axis.setFontColor(color());
    axis.setUnit(UnitData(flag() ? uForce : uLength));
    return axis;
}

void fill(ChartBase &chart)
{
    chart.setAxisX(axis(flag() ? Axis::HORIZONTAL_BOTTOM : Axis::HORIZONTAL_TOP));
    chart.setAxisY(axis(flag() ? Axis::VERTICAL_LEFT : Axis::VERTICAL_RIGHT));
    Grid grid;
    grid.setLineStyle(lineStyle());
    chart.setGrid(grid);
    chart.setInnerBorder(lineStyle());
    chart.setLeftMargin(number());
    chart.setRightMargin(number());
    chart.setShowCurrentStage(flag());
    chart.setShowPointMarkers(flag());
    chart.setCurrentStageStyle(lineStyle());
    chart.setPointMarkerSymbol(symbol());
}

ChartParameters chartParameters()
{
    auto const style = static_cast<ChartParameters::Style_t>(below(7));
    Symbol const mark = symbol();
    LineStyle const line = lineStyle();
    ChartParameters parameters(style, mark, line, fillStyle());
    parameters.setName(word());
    parameters.setUseDefaultName(flag());
    parameters.setShowGroupName(flag());
    parameters.setComputeColor(flag());
    parameters.setNumberOfBasePoints(below(1000));
    return parameters;
}

void fillData(GenericChart &chart)
{
    std::vector<GenericChart::Entry> entries;
    for (unsigned int i = 0, count = below(4); i < count; ++i) {
        ChartInterface::DataToken token(word());
        token.setGroups(flag() ? std::vector<QString>{word(), word()} : std::vector<QString>());
        token.setCategory(static_cast<TokenInfo::Category_t>(below(27)));
        entries.emplace_back(token, chartParameters());
    }
    chart.setTokenX(word());
    chart.setData(entries);
}

void fill(Group &group, int depth)
{
    for (unsigned int i = 0, count = below(4); i < count; ++i) {
        bool const nested = depth > 0 && below(4) == 0;
        group.addChild(generateElement(nested ? Element::GROUP : generateLeafType(), depth - 1).release());
    }
    if (group.getChildBegin() != group.getChildEnd() && flag())
        group.setMasterElement(*(group.getChildEnd() - 1));
}

} // namespace

std::span<Element::Type_t const> textTypes()
{
    return std::span(LEAF_TYPES).first(NUMBER_OF_TEXT_TYPES);
}

std::span<Element::Type_t const> leafTypes()
{
    return LEAF_TYPES;
}

Element::Type_t generateLeafType()
{
    return flag() ? generateTextType() : leafTypes()[*rc::gen::inRange(NUMBER_OF_TEXT_TYPES, LEAF_TYPES.size())];
}

Element::Type_t generateTextType()
{
    return textTypes()[*rc::gen::inRange<std::size_t>(0, NUMBER_OF_TEXT_TYPES)];
}

std::unique_ptr<Element> generateElement(Element::Type_t type, int depth)
{
    std::unique_ptr<Element> element(Element::create(type));
    fillCommon(*element);
    if (auto *line = dynamic_cast<Line *>(element.get()))
        fill(*line);
    else if (auto *polygon = dynamic_cast<Polygon *>(element.get()))
        fill(*polygon);
    else if (auto *aligned = dynamic_cast<AlignedElement *>(element.get()))
        fill(*aligned);
    else if (auto *label = dynamic_cast<LabelBase *>(element.get()))
        fill(*label);
    else if (auto *legend = dynamic_cast<Legend *>(element.get()))
        fill(*legend);
    else if (auto *base = dynamic_cast<ChartBase *>(element.get()))
        fill(*base);
    else if (auto *group = dynamic_cast<Group *>(element.get()))
        fill(*group, depth);
    if (auto *logo = dynamic_cast<Logo *>(element.get()))
        fillPicture(*logo);
    else if (auto *image = dynamic_cast<ImageBase *>(element.get()))
        fillImage(*image);
    else if (auto *chart = dynamic_cast<Chart *>(element.get()))
        chart->setToken(word());
    else if (auto *generic = dynamic_cast<GenericChart *>(element.get()))
        fillData(*generic);
    return element;
}

} // namespace Zem::Fig2
