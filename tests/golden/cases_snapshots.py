"""Snapshots, the containers in them, templates."""

import re

from cases_charts import CHART, chart_values
from cases_elements import RECTANGLE, with_children
from cases_labels import LABEL, default_scale, default_tolerances, unit
from cases_tokens import (CHART as CHART_VARIABLE, CHART_REFERENCE, CHART_TOKEN, DOUBLE, GROUP, IMAGE, IMAGE_REFERENCE,
                          INTEGER, PLAIN_TYPES, SEPARATOR, SNAPSHOT, SNAPSHOT_REFERENCE, SNAPSHOT_TOKEN, STRING,
                          info_node, one_of, registry_variables, value_node, variable_types)
from document import DEFAULTS, Case, node_of, upgrade, upgrades
from packed_picture import COLOR

GROUP_TOKEN = 7


def scale_of_lengths(forms):
    scale = default_scale(forms)
    scale["unit"] = unit(forms, "length", "mm")
    return scale


DEFAULTS.update({
    "SnapshotData.tokens": None,
    "SnapshotData.legend": scale_of_lengths,
    "SnapshotData.legendData": DEFAULTS["Legend.localData"],
    "SnapshotData.tolerances": default_tolerances,
    "SnapshotData.histogram": DEFAULTS["Legend.localHistogram"],
})


def give_tokens(forms, chart, container):
    chart["hasTokenContainer"], chart["useTokenContainer"] = True, True
    chart["tokenContainer"] = container


@upgrades("FigureToken")
def figure_token(forms, old, new):
    new["unused"] = True
    if new["info"]["type"] != CHART_TOKEN:
        return
    if old.get("chartTokens"):
        give_tokens(forms, new["data"], upgrade(forms, old["chartTokens"], None))
    if not new["data"]["hasTokenContainer"]:
        give_tokens(forms, new["data"], node_of(forms, "TokenContainer", count=0, tokens=[]))


def shown_by(figure):
    """The names of the tokens that a figure asks for."""
    names = [name for label in figure.find("Label") for name in re.findall(r"\$(\w+)\$", label["text"])]
    return set(names) | {token["name"] for token in figure.find("TokenName")}


def copy_of(forms, data):
    """Copies of elements get names of their own, the root is not counted among them; those of objects have no text."""
    copied = upgrade(forms, data, None)
    if copied.get("figure"):
        root, *others = copied["figure"].find("Element")
        root["name"] = f"{root.type_name}_0"
        for number, element in enumerate(others):
            element["name"] = f"{element.type_name}_{number}"
    for item in copied.find("ImageDataObject"):
        item["displayText"] = ""
    return copied


def no_image_data(forms):
    space = node_of(forms, "ImageDataSpace", hasTransformation=False, hasCoordinateSystem=True,
                    canDrawLegendColors=False)
    others = {name: DEFAULTS[f"ImageData.{name}"](forms)
              for name in ("masks", "scaleFlags", "legend", "legendData", "histogram")}
    return node_of(forms, "ImageData", count=0, ids=[], objects=[], space=space, **others)


def entry_of(forms, known):
    if known.number in (CHART_VARIABLE, SNAPSHOT):
        data = copy_of(forms, known.value)
    elif known.number in (IMAGE, IMAGE_REFERENCE):
        given = known.value.get("data") if known.value else None
        data = copy_of(forms, given) if given else no_image_data(forms)
    else:
        data = value_node(forms, known, base_unit=True)
    return node_of(forms, "FigureToken", unused=True, info=info_node(forms, known, known.text), data=data)


def picture_of(forms, number, pixels):
    return node_of(forms, "Picture", type=number, pixels=pixels, hasAlphaChannel=pixels.alpha)


def figure_container_of(forms, variables):
    entries = [entry_of(forms, known) for known in variables]
    names = [known.name for known in variables]
    images = {known.name: known.value for known in variables if known.number == IMAGE}
    pictures = {name: picture_of(forms, value["type"], value["pixels"])
                for name, value in images.items() if value.get("pixels")}
    overlays = {name: picture_of(forms, COLOR, value["overlay"])
                for name, value in images.items() if value.get("overlay")}
    return node_of(forms, "FigureTokenContainer", infoCount=len(names), entryCount=len(names),
                   pictureCount=len(pictures), overlayCount=len(overlays), entryNames=names,
                   pictureNames=list(pictures), overlayNames=list(overlays), infos=[entry["info"] for entry in entries],
                   entries=entries, pictures=list(pictures.values()), overlays=list(overlays.values()))


@upgrades("SnapshotData")
def snapshot_data(forms, old, new):
    new["unused"] = True
    new["legend"]["v602Compatibility"] = new["v602Compatibility"]
    if old.version < 5 and old["hasTokens"]:
        shown = shown_by(old["figure"]) if old.get("figure") else set()
        held = (INTEGER, DOUBLE, STRING, IMAGE, CHART_VARIABLE, IMAGE_REFERENCE, SNAPSHOT)
        variables = [known for known in registry_variables(old["registry"])
                     if known.name in shown and known.number in held]
        new["tokens"] = figure_container_of(forms, variables)


@upgrades("FigureTemplate")
def figure_template(forms, old, new):
    given = {hint["element"]: hint["hint"] for hint in old["hints"]}
    ids = [element["id"] for element in new["figure"].find("Element")]
    set_hints(forms, new, [(number, given[number]) for number in ids if number in given])


def set_hints(forms, template, hints):
    template["count"] = len(hints)
    template["hints"] = [node_of(forms, "TypeHint", element=number, hint=hint) for number, hint in hints]


@upgrades("Figure with tokens")
def figure_with_tokens(forms, old, new):
    hints = {}
    for kind in (CHART_REFERENCE, CHART_VARIABLE):
        for name, item in zip(old["registry"]["names"], old["registry"]["variables"]):
            if item["type"] - (1 if item.version < 6 else 0) == kind:
                hints[name] = item["typeHint"]
    template = node_of(forms, "FigureTemplate", figure=new["figure"])
    charts = [(chart.find("Element")[0]["id"], chart["token"]["name"]) for chart in new["figure"].find("Chart")]
    set_hints(forms, template, [(number, hints[name]) for number, name in charts if name in hints])
    new.form, new.values = forms["Template file"], {"template": template}


def snippet(variant, **given):
    """A snippet with a small figure, a container of values, and whatever else is given."""
    return {
        **chart_values(variant),
        **with_children([RECTANGLE] if variant == 0 else [LABEL]),
        "Label.text": "plain",
        "SnapshotData.hasFigure": False, "SnapshotData.hasTokens": False, "SnapshotData.hasProjectTokens": False,
        "SnapshotData.hasCharts": False,
        "FigureTokenContainer.pictureCount": 0, "FigureTokenContainer.overlayCount": 0,
        **given,
    }


class Snippets:
    """Appends cases of snippets."""

    def __init__(self, forms, result):
        self.forms, self.result = forms, result

    def add(self, form, version, variant, suffix="", versions=None, adjust=None, **given):
        name = f"{form.lower().replace(' ', '_')}{suffix}_v{version}_{'ab'[variant]}"
        self.result.append(Case(name, "Snippet file", {form: version, **(versions or {})}, snippet(variant, **given),
                                variant, adjust))

    def add_versions(self, form, given_for, suffix=""):
        for version in range(1, self.forms[form].version + 1):
            for variant in range(2):
                self.add(form, version, variant, suffix, **given_for(version, variant))


def entries(forms, types, names=None):
    """A container with one entry of each of these types."""
    infos = (node_of(forms, "TokenInfo", category=n % 27, type=number, name=f"token{n}", text=f"text of {n}")
             for n, number in enumerate(types))
    return {
        "SnapshotData.hasTokens": one_of([True, *[False] * 20]),
        "FigureTokenContainer.entryNames": names or [f"entry{n:02d}" for n in range(len(types))],
        "FigureToken.info": lambda node: next(infos),
        "TokenInfo.type": one_of(PLAIN_TYPES),
    }


def container_cases(forms, snippets):
    add, add_versions = snippets.add, snippets.add_versions
    project = {"SnapshotData.hasProjectTokens": True}
    for variant in range(2):
        add("Value", 1, variant, **project, **{"TokenContainer.count": 10, "Value.type": one_of(range(10))})
        add("Value", 1, variant, "_bare", **project, **{
            "TokenContainer.count": 3, "Value.type": one_of([2, 7, 8]), "UnitData.quantity": "", "UnitData.unit": ""})
        add("PointInTime", 1, variant, "_not_valid", {"Value": 1}, **project, **{
            "Value.type": 6, "PointInTime.valid": False, "PointInTime.kind": [0, 1][variant]})
        add("FormattedText", 1, variant, **project, **{"Value.type": 9, "FormattedText.count": [2, 1][variant]})
        add("FormattedText", 1, variant, "_empty", **project, **{
            "Value.type": one_of([[9], [3, 9]][variant]), "FormattedText.count": 0})
        add("TokenInfo", 1, variant, **project)
        add("TokenContainer", 1, variant, **project)
        add("TokenContainer", 1, variant, "_empty", **project, **{"TokenContainer.count": 0})
        add("FigureTokenContainer", 3, variant, "_types",
            **entries(forms, [[*range(0, 11), 12], [*range(12, 16), *range(18, 23)]][variant]))
    add_versions("FigureTokenContainer", lambda version, variant: entries(forms, [1, CHART_TOKEN]))
    add_versions("FigureToken", lambda version, variant: {
        **entries(forms, [[CHART_TOKEN, 0], [CHART_TOKEN, GROUP_TOKEN]][variant]),
        "FigureToken.hasChartTokens": True, "FigureToken.sourceCount": 1 + variant,
        "ChartData.hasTokenContainer": variant == 0})
    for variant in range(2):
        add("FigureToken", 2, variant, "_no_chart_tokens", **{
            **entries(forms, [CHART_TOKEN, SNAPSHOT_TOKEN]), "FigureToken.hasChartTokens": False,
            "FigureToken.sourceCount": 0, "ChartData.hasTokenContainer": variant == 0})


def older_token_cases(forms, snippets):
    chart = {"FigureTokenContainer.infoCount": 0}

    def add(form, version, variant, suffix="", data_version=9, **given):
        snippets.add(form, version, variant, suffix, {"ChartData": data_version}, **{
            **entries(forms, [CHART_TOKEN]), **chart, **given})

    registry_of = {"IntegerVariable": [INTEGER], "DoubleVariable": [DOUBLE], "StringVariable": [STRING],
                   "Variable": [INTEGER, DOUBLE, STRING, CHART_REFERENCE, GROUP, SNAPSHOT_REFERENCE, SEPARATOR],
                   "DataInterface": [STRING, INTEGER]}
    for form, types in registry_of.items():
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add(form, version, variant, **{
                    "Variable.type": variable_types(types),
                    "DataInterface.names": [f"name{n:02d}" for n in range(len(types))],
                    "Variable.displayText": ["shown", ""][variant]})
    for variant in range(2):
        for version in (1, 5):
            add("BooleanVariable", 1, variant, f"_in_v{version}", **{
                "Variable.type": 0, "BooleanVariable.value": variant == 0, "DataInterface.names": ["flag"]})
            snippets.result[-1].versions["Variable"] = version
        add("DoubleVariable", 1, variant, "_unit", **{
            "Variable.type": variable_types([DOUBLE]), "DataInterface.names": ["number"],
            "DoubleVariable.unitName": ["length", "no such unit"][variant]})
        # Of two values of one name the later type stays; a group is no value.
        add("DataInterface", 1, variant, "_same_name", **{
            "Variable.type": variable_types([[INTEGER, STRING], [STRING, GROUP]][variant]),
            "DataInterface.names": ["name", "name"]})
        add("DataInterface", 1, variant, "_order", **{
            "Variable.type": variable_types([STRING, INTEGER]), "DataInterface.names": ["name_b", "name_a"]})
    token_data_of = {"OlderBoolean": [0], "OlderInteger": [1], "OlderDouble": [2], "OlderString": [3],
                     "TokenData": [0, 1, 2, 3, 6, 7, 8, 10, 11]}
    for form, types in token_data_of.items():
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add(form, version, variant, data_version=8, **{
                    "OlderToken.type": one_of(types), "TokenData.count": len(types),
                    "OlderBoolean.value": variant == 0, "OlderToken.displayText": ["", "shown"][variant]})
    for variant in range(2):
        add("OlderDouble", 3, variant, "_unit", data_version=1, **{
            "OlderToken.type": 2, "OlderDouble.unitName": ["mass", "no such unit"][variant]})


def registry(variant, types=None):
    """A snapshot of long ago: its figure shows the first two of three tokens."""
    types = types or [[CHART_VARIABLE, DOUBLE, INTEGER], [STRING, SNAPSHOT, INTEGER]][variant]
    return {**with_children([CHART, LABEL] if variant == 0 else [LABEL]),
            "Label.text": "$name_a$, $name_b$", "TokenName.name": "name_a",
            "Variable.type": variable_types(types), "DataInterface.names": ["name_a", "name_b", "name_c"],
            "SnapshotData.hasFigure": True, "SnapshotData.hasTokens": one_of([True, *[False] * 20])}


def snapshot_cases(forms, snippets):
    add = snippets.add
    everything = {"SnapshotData.hasFigure": True, "SnapshotData.hasProjectTokens": True, "SnapshotData.hasCharts": True}

    for version in range(1, forms["SnapshotData"].version + 1):
        for variant in range(2):
            tokens = registry(variant) if version < 5 else entries(forms, [1])
            add("SnapshotData", version, variant, **{**everything, **tokens})
    for variant in range(2):
        for version in (3, 10):
            add("SnapshotData", version, variant, "_bare", **{"SnapshotData.showTolerances": variant == 1})
        # Without a figure none of the tokens is shown.
        add("SnapshotData", [3, 4][variant], variant, "_tokens_alone", **{
            **registry(variant), "SnapshotData.hasFigure": False})
        add("SnapshotData", 10, variant, "_nested", **entries(forms, [SNAPSHOT_TOKEN]))
        for form in ("SnapshotChartInterface", "ChartAnswer"):
            add(form, 1, variant, **{"SnapshotData.hasCharts": True,
                                     "ChartAnswer.hasDefaultParameters": one_of([[True, False], [False]][variant])})
        add("SnapshotChartInterface", 1, variant, "_empty", **{
            "SnapshotData.hasCharts": True, "SnapshotChartInterface.count": 0})
        add("DataInterface", 1, variant, "_empty", {"SnapshotData": 4}, **{
            **registry(variant), "DataInterface.names": []})
        # What is not shown, and what is only referred to, is not taken over.
        add("SnapshotData", 4, variant, "_others", **registry(
            variant, [[CHART_REFERENCE, STRING, INTEGER], [GROUP, SNAPSHOT_REFERENCE, STRING]][variant]))


def hint_charts(document):
    """Hints for the charts, and one for an element that is not there."""
    template = document["template"]
    charts = [chart.find("Element")[0]["id"] for chart in template["figure"].find("Chart")]
    for hint, number in zip(template["hints"], [charts[1], -5, charts[0]]):
        hint["element"] = number


def template_cases(forms, result):
    def add(name, file, versions, variant, children, adjust=None, **given):
        result.append(Case(f"{name}_{'ab'[variant]}", file, versions,
                           {**chart_values(variant), **with_children(children), **given}, variant, adjust))

    charts = [CHART, RECTANGLE, CHART]
    for variant in range(2):
        for version in (1, 2):
            add(f"figuretemplate_v{version}", "Template file", {"FigureTemplate": version}, variant, charts,
                hint_charts, **{"FigureTemplate.count": [3, 1][variant]})
        add("figuretemplate_no_hints_v2", "Template file", {}, variant, [RECTANGLE], **{"FigureTemplate.count": 0})
        types = [[CHART_VARIABLE, CHART_REFERENCE], [CHART_REFERENCE, STRING]][variant]
        for version in (1, 5, 6):
            add(f"figure_with_tokens_v{version}", "Figure with tokens", {"Variable": version}, variant, charts, **{
                "DataInterface.names": ["name", ["name", "other"][variant]],
                "Variable.type": variable_types(types),
                "TokenName.name": one_of(["name", ["", "other"][variant]])})


def cases(forms):
    result = []
    snippets = Snippets(forms, result)
    container_cases(forms, snippets)
    older_token_cases(forms, snippets)
    snapshot_cases(forms, snippets)
    template_cases(forms, result)
    return result
