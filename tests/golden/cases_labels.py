"""Labels, colour bars, legends and their colour scale."""

from cases_elements import LINE, family
from document import DEFAULTS, node_of, upgrades

LABEL, LEGEND, CHART_LEGEND = 4, 7, 8


def line_style(forms, width):
    return node_of(forms, "LineStyle", width=width, style=1, color=(0, 0, 0, 255), capStyle=1)


def unit(forms, quantity, name):
    return node_of(forms, "UnitData", quantity=quantity, unit=name)


def default_scale(forms):
    return node_of(forms, "Scale", unitName="", minimumMode=0, minimum=0.0, maximumMode=0, maximum=1.0, colorMode=0,
                   scaleMode=0, classes=10, colorMap=0, digits=-1, maxTicks=-1, useExtremaColors=False,
                   minColor=(128, 128, 128, 255), minColorValid=True, maxColor=(192, 192, 192, 255),
                   maxColorValid=True, v602Compatibility=False, unit=unit(forms, "", ""))


def default_tolerances(forms):
    looks = [("too low", (214, 39, 40, 255)), ("", (255, 210, 0, 255)), ("passed", (44, 160, 44, 255)),
             ("", (255, 210, 0, 255)), ("too high", (214, 39, 40, 255))]
    types = [node_of(forms, "PassType", text=text, color=color, colorValid=True) for text, color in looks]
    return node_of(forms, "Tolerances", title="tolerance", warningShare=0.0, passTypes=types)


DEFAULTS.update({
    "Label.connectorStyle": lambda forms: line_style(forms, 0.1),
    "Legend.mode": None,
    "Legend.tickBoxStyle": lambda forms: line_style(forms, 0.1),
    "Legend.localLegend": default_scale,
    "Legend.localData": lambda forms: node_of(forms, "ScaleData", minimum=0.0, maximum=1.0, average=0.0, sigma=0.0),
    "Legend.localTolerance": default_tolerances,
    "Legend.localHistogram": lambda forms: node_of(forms, "Histogram", size=0, counts=[]),
    "Axis.rangeModeMinimum": None,
    "Axis.rangeModeMaximum": None,
    "Axis.digitsMode": None,
    "Axis.unit": lambda forms: unit(forms, "figure", "mm"),
})


@upgrades("Legend")
def legend(forms, old, new):
    if old.version < 5:
        new["mode"] = 0 if old["fromElement"] else 2


SCALES = {"Scale.unitName": "mm", "Scale.digits": 3, "Tolerances.warningShare": 0.25, "Axis.unit": None,
          "UnitData.quantity": "length", "UnitData.unit": "um"}


def cases(forms):
    result = []
    add, add_versions = family(forms, result)
    add_versions("Label", [LABEL, CHART_LEGEND], **{"Label.text": "two words"})
    add_versions("ColorBar", [LABEL])
    add_versions("Legend", [LEGEND, LINE], **SCALES)
    for form in ("Scale", "ScaleData", "Tolerances", "Histogram"):
        add_versions(form, [LEGEND], **SCALES)
    return result
