"""Shapes, groups, connectors and the values in them."""

import math

from document import DEFAULTS, Case, node_of, upgrades

LINE, RECTANGLE, ELLIPSE, POLYGON, GROUP = 0, 1, 2, 3, 11

# Kept apart from what the cases are about: nothing is connected, areas are not turned.
PLAIN = {"Element.numberOfConnectors": 0, "Element.angle": 0.0, "Group.masterId": 0, "Group.hasMaster": False}


def default_symbol(forms):
    font = node_of(forms, "Font", family="Liberation Sans", size=12.0, style=0)
    return node_of(forms, "Symbol", type=11, size=0.0, color=(0, 0, 0, 255), showValue=False, digits=2, spacing=0, font=font)


DEFAULTS.update({
    "LineStyle.capStyle": 1,
    "Line.symbol1": default_symbol,
    "Line.symbol2": default_symbol,
    "Line.point1": lambda forms: None,
    "Group.hasMaster": False,
    "Group.masterId": 0,
})


@upgrades("LineStyle")
def line_style(forms, old, new):
    if new["width"] < 0:
        new["width"] = 1.0


@upgrades("Symbol")
def symbol(forms, old, new):
    if old.version == 3:
        new["type"] = 11 if old["type"] == 0 else old["type"] - 1


# Elements of files without names get one: what they are, and how many elements there are already.
TYPE_NAMES = {LINE: "line", RECTANGLE: "rectangle", ELLIPSE: "ellipse", POLYGON: "polygon", GROUP: "group",
              4: "label", 7: "legend", 8: "chart_legend"}


def turn_about_centre(old, new):
    """Up to version 5 an area was turned about its alignment point, since then about its centre."""
    if old.version > 5 or old["angle"] == 0:
        return
    base = [o + (pivot - 1) * 0.5 * s for o, s, pivot in
            zip(old["origin"], old["size"], (old["pivotAlignmentX"], old["pivotAlignmentY"]))]
    dx, dy = old["origin"][0] - base[0], old["origin"][1] - base[1]
    c, s = math.cos(old["angle"]), math.sin(old["angle"])
    new["origin"] = (base[0] + dx * c + dy * s, base[1] + dy * c - dx * s)


@upgrades("Group")
def group(forms, old, new):
    for number, child in zip(old["types"], new["children"]):
        for element in child.find("Element")[:1] if child else []:
            element.type_name = TYPE_NAMES.get(number)
    for number, child in zip(old["types"], old["children"]):
        if child and number not in (LINE, POLYGON, GROUP):
            same = new["children"][old["children"].index(child)]
            turn_about_centre(child.find("Element")[0], same.find("Element")[0])
    children = [child.find("Element")[0] for child in new["children"] if child]
    stored = [child for child in children if old.version > 1 and old["hasMaster"] and child["id"] == old["masterId"]]
    master = (stored or children or [{"id": 0}])[0]
    new["hasMaster"], new["masterId"] = bool(children), master["id"]


@upgrades("Figure")
def figure(forms, old, new):
    nameless = [element for element in new["root"].find("Element") if element["name"] is None]
    new["root"].find("Element")[0].type_name = "group"
    for number, element in enumerate(nameless):
        element["name"] = f"{element.type_name}_{number}"


@upgrades("Line")
def line(forms, old, new):
    element = new["element"]
    if old.version == 1:
        new["point1"] = old["element"]["origin"]
    # The origin of a line is its first point.
    element["origin"] = new["point1"]


def turn(document):
    for element in document["figure"]["root"]["children"]:
        element["angle"] = 0.5


def name_master(document):
    """The second child, not the first that stands in for one that is missing."""
    root = document["figure"]["root"]
    root["hasMaster"] = True
    root["masterId"] = root["children"][1].find("Element")[0]["id"]


def with_children(types, **more):
    """A figure whose root has children of these types, and groups among them two rectangles each."""
    depth = []

    def types_of(node):
        depth.append(node)
        return types if len(depth) == 1 else [RECTANGLE, RECTANGLE]

    given = {**PLAIN, "Group.types": types_of, "Group.count": lambda node: len(types) if not depth else 2}
    given.update(more)
    return given


def family(forms, result):
    """Appends the cases of a form: files of figures whose root has children of some types."""

    def add(form, types, version, variant, suffix="", adjust=None, **given):
        name = f"{form.lower().replace(' ', '_')}{suffix}_v{version}_{'ab'[variant]}"
        result.append(Case(name, "Figure file", {form: version}, with_children(types, **given), variant, adjust))

    def add_versions(form, types, **given):
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add(form, types, version, variant, **given)

    return add, add_versions


def cases(forms):
    result = []
    add, add_versions = family(forms, result)

    add_versions("Figure", [RECTANGLE])
    add_versions("Element", [RECTANGLE, ELLIPSE])
    add_versions("LineStyle", [RECTANGLE])
    add_versions("FillStyle", [ELLIPSE])
    add_versions("Font", [RECTANGLE])
    add_versions("Line", [LINE])
    add_versions("Symbol", [LINE])
    add_versions("Points", [POLYGON])
    add_versions("Group", [GROUP, LINE])
    for variant in range(2):
        add("LineStyle", [LINE], 1, variant, "_negative", **{"LineStyle.width": -1.0})
        add("Element", [RECTANGLE, RECTANGLE], 5, variant, "_turned", adjust=turn)
        add("Element", [RECTANGLE, ELLIPSE], 6, variant, "_turned", adjust=turn)
        add("Group", [RECTANGLE, LINE, POLYGON], 2, variant, "_master", adjust=name_master)
    return result
