// The charts of older files and their axes.
#include "ZemFig2Chart.h"
#include "fig_import_data.h"
#include "fig_import_record.h"
#include "fig_importer.h"

#include <cmath>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int CHART_VERSION = 3; // 2: frame; 3: marks
constexpr unsigned int AXIS_VERSION = 3;  // 2: ticks; 3: font, unit

struct OldAxis
{
    unsigned int place = Import::OLD_NO_AXIS;
    bool automatic = true;
    BaVec2d<double> range{0.0, 0.0};
    int ticks = 10;
    int digits = 2;
    OldPen pen{0.1, Import::OLD_LINE_SOLID, Color(0, 0, 0)};
    OldFont font;
    QString unit;

    void read(BlockReader &reader)
    {
        reader.field(place);
        reader.field(automatic);
        reader.field(range.x);
        reader.field(range.y);
        reader.keep(ticks, Since{2});
        reader.keep(digits, Since{2});
        readSince(reader, Since{2}, pen);
        readSince(reader, Since{3}, font);
        reader.keep(unit, Since{3});
    }

    bool hasRange() const { return std::isfinite(range.x) && std::isfinite(range.y); }

    Axis::Type type(bool horizontal) const
    {
        switch (place) {
        case Import::OLD_AXIS_TOP: // or left
            return horizontal ? Axis::HORIZONTAL_TOP : Axis::VERTICAL_LEFT;
        case Import::OLD_NO_AXIS:
        case Import::OLD_AXIS_CENTER:
            return horizontal ? Axis::HORIZONTAL_BOTTOM : Axis::VERTICAL_LEFT;
        case Import::OLD_AXIS_BOTTOM: // or right
            return horizontal ? Axis::HORIZONTAL_BOTTOM : Axis::VERTICAL_RIGHT;
        default:
            throwImportError("unsupported axis type: %1", place);
        }
    }

    Axis make(bool horizontal) const
    {
        Axis axis(type(horizontal));
        axis.setVisible(place != Import::OLD_NO_AXIS);
        Axis::RangeMode const mode = automatic || !hasRange() ? Axis::RANGE_MODE_AUTO : Axis::RANGE_MODE_MANUAL;
        axis.setRangeModeMin(mode);
        axis.setRangeModeMax(mode);
        if (hasRange())
            axis.setRange(range);
        axis.setTicks(ticks);
        axis.setDigits(digits);
        axis.setLineStyle(pen.lineStyle());
        axis.setFont(font.font());
        axis.setFontColor(font.color);
        if (UnitData const data = unitDataOf(unit); data.hasUnit())
            axis.setUnit(data);
        return axis;
    }
};

struct OldChart
{
    OldFrame frame;
    QString token;
    OldPen grid;
    OldPen innerBorder;
    OldPen border;
    OldBrush background;
    bool showCurrentStage = false;
    bool showPointMarkers = false;

    void read(BlockReader &reader)
    {
        frame.read(reader);
        reader.field(token);
        grid.read(reader);
        innerBorder.read(reader);
        readSince(reader, Since{2}, border);
        readSince(reader, Since{2}, background);
        reader.keep(showCurrentStage, Since{3});
        reader.keep(showPointMarkers, Since{3});
    }

    std::unique_ptr<Chart> make() const
    {
        auto chart = std::make_unique<Chart>();
        chart->setOrigin(frame.center());
        chart->setSize(frame.size);
        chart->setToken(token);
        Grid lines;
        lines.setLineStyle(grid.lineStyle());
        chart->setGrid(lines);
        chart->setInnerBorder(innerBorder.lineStyle());
        chart->setBorder(border.lineStyle());
        chart->setBackground(background.fillStyle());
        chart->setShowCurrentStage(showCurrentStage);
        chart->setShowPointMarkers(showPointMarkers);
        return chart;
    }
};

} // namespace

std::unique_ptr<Element> Importer::importChart(IO::InStream *stream)
{
    OldChart record;
    loadRecord(stream, CHART_VERSION, nullptr, [&record](BlockReader &reader) { record.read(reader); });
    std::unique_ptr<Chart> chart = record.make();
    kept("chart");
    chart->setAxisX(importAxis(stream, true));
    chart->setAxisY(importAxis(stream, false));
    return chart;
}

Axis Importer::importAxis(IO::InStream *stream, bool horizontal)
{
    OldAxis record;
    loadRecord(stream, AXIS_VERSION, "invalid chart axis header version: %1",
               [&record](BlockReader &reader) { record.read(reader); });
    Axis axis = record.make(horizontal);
    if (record.place == Import::OLD_AXIS_CENTER)
        approximated("chart axis", "an axis in the centre was moved to the side");
    if (!record.automatic && !record.hasRange())
        dropped("chart axis", "a range that is no number");
    if (!record.unit.isEmpty() && !unitDataOf(record.unit).hasUnit())
        dropped("chart axis", "an unknown unit");
    return axis;
}

} // namespace Zem::Fig2
