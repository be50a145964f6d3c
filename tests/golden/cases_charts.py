"""Axes, charts, the data that they show and the markers in it."""

from cases_elements import PLAIN, TYPE_NAMES, default_symbol, family
from cases_labels import SCALES, line_style
from cases_tokens import VALUES, container_of, older_variables, registry_variables
from document import DEFAULTS, Case, node_of, upgrades

CHART, GENERIC_CHART = 5, 6
LINE_MARKER, POINTS_MARKER, NAMED_MARKER = 0, 1, 2
NOTHING = 1.7976931348623157e308

CATEGORIES = """general project stage report user system date file unit statistics point line area section sensor camera
    image chart snapshot legend tolerance element material deviation strain displacement undefined""".split()

TYPE_NAMES.update({CHART: "chart", GENERIC_CHART: "generic_chart"})

DEFAULTS.update({
    "ChartBase.currentStageStyle": lambda forms: dotted(forms),
    "ChartBase.pointMarkerSymbol": default_symbol,
    "ChartData.hasTokenContainer": False,
    "ChartData.useTokenContainer": False,
    "ChartData.tokenContainer": None,
    "ChartData.markers": lambda forms: node_of(forms, "ChartMarkers", count=0, types=[], markers=[]),
    "ChartData.histogram": lambda forms: node_of(forms, "Histogram", size=0, counts=[]),
})


def dotted(forms):
    style = line_style(forms, 0.1)
    style["style"] = 2
    return style


def range_mode(automatic, optimum):
    return (2 if optimum else 1) if automatic else 0


@upgrades("Axis")
def axis(forms, old, new):
    if old.version < 5:
        for end in ("Minimum", "Maximum"):
            new["rangeMode" + end] = range_mode(old["auto" + end], old.get("optimum" + end, False))
    if old.version < 8:
        new["digitsMode"] = 1 if old["digits"] < 0 else 0


@upgrades("ChartBase")
def chart_base(forms, old, new):
    if "pointMarkerSymbol" in old.values:
        return
    symbol = default_symbol(forms)
    symbol["type"], symbol["size"] = old.get("markerType", 12), old.get("markerSize", 5.0)
    symbol["color"] = new["currentStageStyle"]["color"]
    new["pointMarkerSymbol"] = symbol


@upgrades("DataToken")
def data_token(forms, old, new):
    if old.version == 3:
        new["groupCount"], new["groups"] = 1, [old["group"]]
    if new["category"] not in CATEGORIES:
        new["category"] = "undefined"


def marker(forms, number, **values):
    names = {LINE_MARKER: "LineChartMarker", POINTS_MARKER: "PointsChartMarker"}
    return node_of(forms, names[number], base=node_of(forms, "ChartMarker", type=number), **values)


@upgrades("ChartMarkers")
def markers(forms, old, new):
    for number, item in zip(new["types"], new["markers"]):
        item["base"]["type"] = number


def add_older_markers(forms, old, new):
    """A position and its values were a line and points on it."""
    position, values = old.get("markerPosition", NOTHING), old.get("markerValues", [])
    if position == NOTHING or not values:
        return
    points = [(position, value) for value in values]
    new["markers"]["types"] += [LINE_MARKER, POINTS_MARKER]
    new["markers"]["markers"] += [marker(forms, LINE_MARKER, x=position),
                                  marker(forms, POINTS_MARKER, count=len(points), points=points)]
    new["markers"]["count"] += 2


@upgrades("ChartData")
def chart_data(forms, old, new):
    if "supportsMarkers" in old.values:
        new["supportsStageMarkers"] = new["supportsPointMarkers"] = old["supportsMarkers"]
    add_older_markers(forms, old, new)
    if old.version <= 9:
        variables = registry_variables(old["registry"]) if old.version == 9 else older_variables(old["tokenData"])
        new["hasTokenContainer"], new["tokenContainer"] = True, container_of(forms, variables)
        new["useTokenContainer"] = True
    # Without a container none is used, and none is what there is.
    if not new["hasTokenContainer"]:
        new["useTokenContainer"] = True


def chart_values(variant):
    """What chart data need in any file."""
    return {
        **PLAIN, **SCALES, **VALUES(variant),
        "ChartData.ids": ["first", "second"] if variant == 0 else ["Länge"],
        "ChartMarkers.types": [LINE_MARKER, POINTS_MARKER, NAMED_MARKER] if variant == 0 else [NAMED_MARKER],
        "DataToken.category": "camera" if variant == 0 else "strain",
    }


def chart_entry(forms, variant, **more):
    """A snippet without a figure, with the data of one chart."""
    info = node_of(forms, "TokenInfo", category=17, type=16, name="curve", text="the curve")
    return {
        **chart_values(variant),
        "SnapshotData.hasFigure": False, "SnapshotData.hasTokens": True, "SnapshotData.hasProjectTokens": False,
        "SnapshotData.hasCharts": False,
        "FigureTokenContainer.entryNames": ["curve"], "FigureTokenContainer.infoCount": 0,
        "FigureTokenContainer.pictureCount": 0, "FigureTokenContainer.overlayCount": 0,
        "FigureToken.info": info, **more,
    }


def chart_snippets(forms, result):
    """Appends cases of chart data."""

    def add(form, version, variant, suffix="", **given):
        name = f"{form.lower()}{suffix}_v{version}_{'ab'[variant]}"
        result.append(Case(name, "Snippet file", {form: version}, chart_entry(forms, variant, **given), variant))

    for form in ("ChartData", "ChartDataset", "ChartPoint", "ChartMarkers", "ChartMarker", "LineChartMarker",
                 "PointsChartMarker", "NamedPointChartMarker"):
        types = {"LineChartMarker": [LINE_MARKER], "PointsChartMarker": [POINTS_MARKER],
                 "NamedPointChartMarker": [NAMED_MARKER]}.get(form)
        given = {"ChartMarkers.types": types} if types else {}
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add(form, version, variant, **given)
    return add


def element_cases(forms, result):
    add_element, add_versions = family(forms, result)

    def add(form, types, version, variant, suffix="", adjust=None, **given):
        add_element(form, types, version, variant, suffix, adjust, **{**chart_values(variant), **given})

    for form, types in (("Axis", [CHART]), ("ChartBase", [CHART, GENERIC_CHART]), ("TokenName", [CHART]),
                        ("GenericChart", [GENERIC_CHART]), ("DataToken", [GENERIC_CHART]),
                        ("ChartParameters", [GENERIC_CHART])):
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add(form, types, version, variant, **{"Axis.digits": [3, -1][variant]})
    for variant in range(2):
        modes = {"Axis.autoMinimum": variant == 0, "Axis.autoMaximum": variant == 0,
                 "Axis.optimumMinimum": True, "Axis.optimumMaximum": False}
        for version in (3, 4):
            add("Axis", [CHART], version, variant, "_modes", **modes)
        # Charts of elements that old have no block and no line of the current stage.
        for version in (1, 2, 3):
            add("Element", [CHART, GENERIC_CHART], version, variant, "_chart")
        add("DataToken", [GENERIC_CHART], 5, variant, "_unknown",
            **{"DataToken.category": ["length", "no such word"][variant]})
        add("GenericChart", [GENERIC_CHART], 6, variant, "_empty", **{"GenericChart.count": 0,
                                                                      "GenericChart.tokenX": ["", "x"][variant]})


def cases(forms):
    result = []
    element_cases(forms, result)
    add = chart_snippets(forms, result)
    for variant in range(2):
        # Neither a position without values nor values without a position are a marker.
        add("ChartData", 12, variant, "_no_marker", **{"ChartData.markerPosition": [3.5, NOTHING][variant],
                                                      "ChartData.markerValues": [[], [1.0, 2.0]][variant]})
        add("ChartData", 6, variant, "_position", **{"ChartData.supportsMarkers": variant == 0})
        add("ChartData", 7, variant, "_no_marker", **{"ChartData.markerPosition": [3.5, NOTHING][variant],
                                                     "ChartData.markerValues": [[], [1.0, 2.0]][variant]})
        add("ChartData", [14, 1][variant], variant, "_empty", **{"ChartData.ids": [], "ChartData.infoPointCount": 0,
                                                               "ChartMarkers.types": []})
        add("ChartDataset", 2, variant, "_empty", **{"ChartDataset.pointCount": 0})
        add("ChartPoint", 1, variant, "_gap", **{"ChartPoint.point": [(NOTHING, 1.5), (2.5, NOTHING)][variant]})
        for has in (True, False):
            for version in (11, 14):
                add("ChartData", version, variant, "_tokens" if has else "_no_tokens",
                    **{"ChartData.hasTokenContainer": has, "ChartData.useTokenContainer": variant == 0})
    return result
