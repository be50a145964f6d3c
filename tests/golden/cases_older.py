"""Older figures, and the figures that they become."""

from itertools import count

from cases_charts import chart_values
from cases_elements import default_symbol
from cases_images import default_look, image_values, sans
from cases_labels import default_scale, default_tolerances, line_style, unit
from cases_tokens import INTEGER, STRING, one_of, unit_of, variable_types
from document import DEFAULTS, Case, node_of, upgrades
from packed_picture import NO_PICTURE

LINE, POLYGON, TEXT, CHART, LEGEND, GROUP, CIRCLE, IMAGE, RECTANGLE = 0, 2, 3, 5, 6, 7, 9, 10, 11
PICTURE, CHART_DATA, SNAPSHOT = 4, 5, 9  # of tokens
ARROW, SYMBOL = 32, 16
BLACK, WHITE = (0, 0, 0, 255), (255, 255, 255, 255)


def no_pen(forms):
    return node_of(forms, "OlderPen", width=0.0, style=0, color=BLACK)


def no_brush(forms):
    return node_of(forms, "OlderBrush", filled=False, color=BLACK)


DEFAULTS.update({
    "OlderFileRecord.registry": None,
    "OlderCircle.radiusY": None,
    "OlderAxis.pen": lambda forms: node_of(forms, "OlderPen", width=0.1, style=1, color=BLACK),
    "OlderAxis.font": lambda forms: node_of(forms, "OlderFont", family="", size=12.0, flags=0, color=BLACK),
    "OlderImage.showOverlay": None,
    "OlderPicture.overlay": NO_PICTURE,
    "OlderCurve.displayText": None,
    **{f"Older{name}.border": no_pen for name in ("Text", "Chart", "Legend", "Image")},
    **{f"Older{name}.background": no_brush for name in ("Text", "Chart", "Legend", "Image")},
})


# ---------------------------------------------------------------- what the records become

def length_or(length, otherwise):
    return length if length >= 0 else otherwise


def pen_of(forms, pen):
    style = [0, 1, 3, 2, 4][pen["style"]]
    return node_of(forms, "LineStyle", width=length_or(pen["width"], 1.0), style=style, color=pen["color"], capStyle=1)


def brush_of(forms, brush):
    return node_of(forms, "FillStyle", filled=brush["filled"], color=brush["color"])


def font_of(forms, font):
    size = font["size"] if 0 < font["size"] < float("inf") else 12.0
    return node_of(forms, "Font", family=font["family"] or "Liberation Sans", size=size, style=font["flags"] & 127)


def middle_of(frame):
    return tuple(corner + 0.5 * size for corner, size in zip(frame["corner"], frame["size"]))


class Figures:
    """Makes the figure of an older one; the old records hold all fields of their newest versions."""

    def __init__(self, forms, ids=None):
        self.forms = forms
        self.ids = ids or count(1)
        self.by_id = {}
        self.texts, self.legends, self.charts, self.shown = [], [], [], []
        self.snapshots = []

    def node(self, form, /, **values):
        return node_of(self.forms, form, **values)

    def element(self, type_name, frame=None, **values):
        forms = self.forms
        new = self.node("Element", id=next(self.ids), origin=(0.0, 0.0), size=(0.0, 0.0), visible=True, linkTo3D=False,
                        autoSize=False, maximize=False, angle=0.0, fontColor=BLACK, highlightColor=(8, 8, 132, 255),
                        pivotAlignmentX=0, pivotAlignmentY=0, margin=1.0, spacing=1.0, numberOfConnectors=0,
                        useSystemFont=False, name=None, border=line_style(forms, 0.1),
                        background=self.node("FillStyle", filled=False, color=(230, 230, 230, 255)),
                        userFont=sans(forms), connectors=[])
        new["border"]["style"] = 0
        new.type_name = type_name
        if frame:
            new["origin"], new["size"] = middle_of(frame), frame["size"]
        new.values.update(values)
        return new

    def looks(self, old):
        return {"border": pen_of(self.forms, old["border"]), "background": brush_of(self.forms, old["background"])}

    def figure(self, old):
        page = old["page"]
        root = self.group(old["root"])
        self.connect_texts()
        self.connect_values()
        self.connect_legends()
        first, *others = root.find("Element")
        first["name"] = "group_0"
        for number, element in enumerate(others):
            element["name"] = f"{element.type_name}_{number}"
        return self.node("Figure", size=(page["width"], page["height"]), root=root,
                         background=self.node("FillStyle", filled=page["filled"], color=page["color"]))

    def group(self, old):
        element = self.element("group")
        children = [self.child(record, element) for record in old["children"]]
        ids = [child.find("Element")[0]["id"] for _, child in children]
        chosen = old["origin"] if 0 <= old["origin"] < len(ids) else 0
        return self.node("Group", element=element, count=len(ids), types=[number for number, _ in children],
                         hasMaster=bool(ids), masterId=ids[chosen] if ids else 0, children=[new for _, new in children])

    def child(self, record, group):
        makers = {LINE: (0, self.line), RECTANGLE: (1, self.rectangle), CIRCLE: (2, self.circle),
                  POLYGON: (3, self.polygon), TEXT: (4, self.text), CHART: (5, self.chart), LEGEND: (7, self.legend),
                  IMAGE: (9, self.image), GROUP: (11, self.group)}
        number, make = makers[record["type"]]
        new = make(record["element"])
        element = new.find("Element")[0]
        element["visible"] = record["visible"]
        element.parent = group
        if record["id"] != -1:
            self.by_id[record["id"]] = (number, element)
        return number, new

    def line(self, old):
        element = self.element("line", origin=old["point1"], border=pen_of(self.forms, old["pen"]))
        return self.node("Line", element=element, point1=old["point1"], point2=old["point2"],
                         arrow1=old["end1"] & ARROW != 0, arrow2=old["end2"] & ARROW != 0,
                         symbol1=self.symbol(old, old["end1"]), symbol2=self.symbol(old, old["end2"]))

    def symbol(self, old, end):
        symbol = default_symbol(self.forms)
        if end & SYMBOL:
            symbol["type"], symbol["size"], symbol["color"] = end & 15, old["symbolSize"], old["pen"]["color"]
        return symbol

    def rectangle(self, old):
        return self.element("rectangle", old["frame"], angle=old["angle"], **self.looks(old))

    def circle(self, old):
        radius_y = old["radiusX"] if old["radiusY"] is None else old["radiusY"]
        return self.element("ellipse", origin=old["center"], size=(2 * old["radiusX"], 2 * radius_y),
                            angle=old["angle"], **self.looks(old))

    def polygon(self, old):
        points, start = [], (0.0, 0.0)
        if old["points"]:
            start = old["points"][0]
            points = [tuple(a - b for a, b in zip(point, start)) for point in old["points"]]
        return self.node("Polygon", element=self.element("polygon", origin=start, **self.looks(old)),
                         points=self.node("Points", count=len(points), points=points))

    def text(self, old):
        free = old["size"] == (0.0, 0.0)
        element = self.element("label", autoSize=free, size=old["size"], angle=old["angle"],
                               origin=old["corner"] if free else middle_of(old),
                               userFont=font_of(self.forms, old["font"]), **self.looks(old))
        bar = self.node("ColorBar", range=(0.0, 0.0), value=0.0, color=BLACK, width=0.0, useVariableLength=True,
                        minimumLength=0.0, side=1, valueValid=False, border=line_style(self.forms, 1.0),
                        background=self.node("FillStyle", filled=False, color=BLACK))
        label = self.node("Label", element=element, text=self.rich(old), colorBarVisible=False, expandWidth=False,
                          textAlignmentX=old["alignmentX"], textAlignmentY=old["alignmentY"],
                          connectorPoint=old["point"] if old["leadsToPoint"] else (-1.0, -1.0), templateName="",
                          colorBar=bar, connectorStyle=line_style(self.forms, 0.1))
        self.texts.append((label, old))
        return label

    def rich(self, old):
        text = old["text"]
        if text.startswith("<html>"):
            return text.replace("<html>", "").replace("<body>", "").replace("</body>", "").replace("</html>", "")
        for character, mark in (("<color red>", "\1"), ("</color>", "\2"), ("<", "&lt;"), (">", "&gt;"),
                                ("\n", "<br>\n"), ("\1", '<span style="color:red">'), ("\2", "</span>")):
            text = text.replace(character, mark)
        red, green, blue, _ = color = old["font"]["color"]
        return text if color == BLACK else f'<span style="color:#{red:02x}{green:02x}{blue:02x}">{text}</span>'

    def chart(self, old):
        style = line_style(self.forms, 0.1)
        style["style"] = 2
        symbol = default_symbol(self.forms)
        symbol["type"], symbol["size"] = 12, 5.0
        base = self.node("ChartBase", element=self.element("chart", old["frame"], **self.looks(old)),
                         showCurrentStage=old["showCurrentStage"], showPointMarkers=old["showPointMarkers"],
                         leftMargin=0.0, rightMargin=0.0, axisX=self.axis(old["axisX"], [1, 0, 1, 1]),
                         axisY=self.axis(old["axisY"], [2, 2, 2, 3]), grid=pen_of(self.forms, old["grid"]),
                         innerBorder=pen_of(self.forms, old["plotBorder"]), currentStageStyle=style,
                         pointMarkerSymbol=symbol)
        self.charts.append((base["element"], old["token"]))
        self.shown.append((5, base["element"], old["token"]))
        return self.node("Chart", base=base, token=self.node("TokenName", name=old["token"]))

    def axis(self, old, types):
        ends = (old["minimum"], old["maximum"])
        is_range = all(abs(end) < float("inf") for end in ends)
        mode = 1 if old["automatic"] or not is_range else 0
        quantity, name = unit_of(old["unit"])
        return self.node("Axis", type=types[old["place"]], length=0.0, rangeModeMinimum=mode, rangeModeMaximum=mode,
                         visible=old["place"] != 0, range=ends if is_range else (0.0, 0.0), tickLength=3.0,
                         ticks=old["ticks"], digits=old["digits"], digitsMode=0, fontColor=old["font"]["color"],
                         lineStyle=pen_of(self.forms, old["pen"]), font=font_of(self.forms, old["font"]),
                         unit=unit(self.forms, quantity, name) if quantity else unit(self.forms, "figure", "mm"))

    def legend(self, old):
        display = old["display"]
        element = self.element("legend", old["frame"], userFont=font_of(self.forms, display["labels"]),
                               fontColor=display["labels"]["color"], **self.looks(old))
        scale, data = default_scale(self.forms), dict(minimum=0.0, maximum=1.0, average=0.0, sigma=0.0)
        if old["hasScale"]:
            scale, data = self.scale(old["scale"])
        legend = self.node("Legend", element=element, mode=2 if old["hasScale"] else 0, barWidth=display["barWidth"],
                           equalSizedBlocks=display["equalSizedBlocks"], showHistogram=display["showHistogram"],
                           showTolerances=False, tickStyle=pen_of(self.forms, display["ticks"]),
                           tickBoxStyle=pen_of(self.forms, display["outline"]), localLegend=scale,
                           localData=self.node("ScaleData", **data), localTolerance=default_tolerances(self.forms),
                           localHistogram=self.node("Histogram", size=0, counts=[]))
        self.legends.append((element, old["token"]))
        return legend

    def scale(self, old):
        scale = default_scale(self.forms)
        scale["unit"] = unit(self.forms, *unit_of(old["unit"]))
        if old["classes"]:
            scale["scaleMode"], scale["classes"] = 1, old["classes"]
        numbers = {name: old[name] for name in ("minimum", "maximum", "average")}
        return scale, {**numbers, "sigma": old["deviation"]}

    def image(self, old):
        element = self.element("image", old["frame"], **self.looks(old))
        aligned = self.node("AlignedElement", element=element, **{
            name: old[name] for name in ("autoScale", "scaling", "alignmentX", "alignmentY", "innerOrigin")})
        axes = self.node("CoordinateSystem", origin=(0.0, 0.0, 0.0), visible=old["showAxes"], textVisible=True,
                         length=20.0, width=0.5, font=sans(self.forms))
        overlay = old["token"] == "IMAGE.OVERLAY_STRAIN" if old["showOverlay"] is None else old["showOverlay"]
        token = old["token"]
        if old["hasSnapshot"]:
            self.snapshots.append(old["snapshot"])
            token = f"__imported_snapshot_{len(self.snapshots)}__"
        looks = sorted(zip(old["lookIds"], map(self.look, old["looks"])), key=lambda pair: pair[0])
        self.shown.append((9, element, token))
        return self.node("ImageBase", aligned=aligned, overlayMode=0 if overlay else 1, backgroundColor=WHITE,
                         useBackgroundColor=False, token=self.node("TokenName", name=token), coordinateSystem=axes,
                         conversion=self.node("ImageConversion", type=0, min=0, max=255),
                         looks=self.node("Looks", count=len(looks), ids=[pair[0] for pair in looks],
                                         looks=[pair[1] for pair in looks]),
                         configurations=DEFAULTS["ImageBase.configurations"](self.forms))

    def look(self, old):
        look = default_look(self.forms)
        for name in ("mode", "arrows", "combinedVectors", "hiddenPoints", "pointIds", "pointMask"):
            look[name] = old[name]
        look["line"] = pen_of(self.forms, old["line"])
        for name, default in (("markerSize", 20.0), ("vectorScaling", 1.0), ("vectorLineWidth", 1.0)):
            look[name] = length_or(old[name], default)
        return look

    def connect(self, source, target, name=""):
        source["numberOfConnectors"] += 1
        source["connectors"].append(
            self.node("Connector", mode=0, sourceName="", targetName=name, targetId=target["id"]))

    def connect_texts(self):
        for label, old in self.texts:
            number, target = self.by_id.get(old["target"], (None, None))
            if old["target"] != -1 and number in (5, 9):
                self.connect(label["element"], target, old["object"])

    def connect_values(self):
        """Of the texts only those with one value, the greatest of a curve."""
        for label, old in self.texts:
            name = label["text"].partition("$5.2")[2].partition(".MAX_Y")[0]
            group = getattr(label["element"], "parent")
            charts = [chart for chart, token in self.charts if token == name]
            while name and charts:
                inside = [chart for chart in charts if chart.parent is group]
                if inside or group is None:
                    chart = (inside or charts)[0]
                    if not label["element"]["connectors"]:
                        self.connect(label["element"], chart)
                    label["text"] = label["text"].replace(name + ".MAX_Y", "MAX_Y")
                    break
                group = getattr(group, "parent", None)

    def connect_legends(self):
        for legend, token in self.legends:
            token = "IMAGE.OVERLAY_STRAIN" if token == "LEGEND.OVERLAY_STRAIN" else token
            targets = [element for _, element, shown in self.shown if shown == token and token]
            if targets:
                self.connect(legend, targets[0])


@upgrades("Older figure file")
def older_figure_file(forms, old, new):
    figure = Figures(forms).figure(new["figure"])
    new.form, new.values = forms["Figure file"], {"figure": figure}


# ---------------------------------------------------------------- cases

def page_of(types, counts=None):
    """A page with elements of these types; in the order of the file, with the numbers of children of each group."""
    return {"OlderElement.type": one_of(types or [0]), "OlderGroup.count": one_of(counts or [len(types)]),
            "OlderGroup.origin": one_of([-1])}


EXACT = [12.5, 30.25, 44.0, 8.75, 21.5]


def older_values(variant):
    """What older figures need in any file; lengths of which halves and doubles are exact."""
    return {
        **chart_values(variant), **image_values(variant),
        "OlderCircle.center": (EXACT[variant], 20.5), "OlderCircle.radiusX": EXACT[variant + 2],
        "OlderCircle.radiusY": 7.25, "OlderFrame.size": (EXACT[variant + 1], 16.0), "OlderText.size": (24.0, 9.5),
        "OlderElement.id": -1, "OlderText.target": -1,
        "OlderText.text": ["two words", "1 > 0 & 3\n<color red>more</color> < end"][variant],
        "OlderLine.end1": [ARROW, SYMBOL + 3][variant], "OlderLine.end2": [SYMBOL + 13, ARROW + 64][variant],
        "OlderAxis.unit": ["kN", "no such unit"][variant], "OlderLegend.hasScale": variant == 0,
        "OlderLegendData.unit": ["um", "force"][variant], "OlderImage.hasSnapshot": False,
        "OlderImage.lookIds": [["b", ""], ["a"]][variant],
        "OlderPicture.overlay": NO_PICTURE, "OlderPicture.hasData": variant == 0,
    }


class Older:
    def __init__(self, forms, result):
        self.forms, self.result = forms, result

    def add(self, form, version, variant, suffix="", versions=None, page=None, **given):
        name = f"{form.lower()}{suffix}_v{version}_{'ab'[variant]}"
        self.result.append(Case(name, "Older figure file", {form: version, **(versions or {})},
                                {**older_values(variant), **(page or page_of([LINE])), **given}, variant))

    def add_versions(self, form, types, suffix="", versions=None, **given):
        for version in range(1, self.forms[form].version + 1):
            for variant in range(2):
                self.add(form, version, variant, suffix, versions, page_of(types), **given)


def element_cases(older):
    add, add_versions = older.add, older.add_versions
    add_versions("OlderPage", [RECTANGLE])
    add_versions("OlderElement", [LINE, CIRCLE], **{"OlderElement.id": one_of([7, 8]), "OlderElement.visible": False})
    add_versions("OlderGroup", [GROUP, LINE], **{
        "OlderGroup.count": one_of([2, 0]), "OlderGroup.origin": one_of([1, 0])})
    for form, number in (("OlderLine", LINE), ("OlderRectangle", RECTANGLE), ("OlderCircle", CIRCLE),
                         ("OlderPolygon", POLYGON), ("OlderText", TEXT), ("OlderChart", CHART), ("OlderAxis", CHART),
                         ("OlderLegend", LEGEND), ("OlderImage", IMAGE), ("OlderLook", IMAGE)):
        add_versions(form, [number])
    for form in ("OlderLegendDisplay", "OlderLegendData"):
        add_versions(form, [LEGEND], **{"OlderLegend.hasScale": True})
    for variant in range(2):
        add("OlderGroup", 2, variant, "_nested", None, page_of([GROUP, GROUP, TEXT, RECTANGLE], [2, 2, 1, 0]), **{
            "OlderGroup.origin": one_of([[1, 5, 0], [-1, 1, -7]][variant])})
        add("OlderGroup", 1 + variant, variant, "_empty", None, {"OlderGroup.count": 0, "OlderGroup.origin": -1})
        add("OlderPolygon", 2, variant, "_empty", None, page_of([POLYGON]), **{"OlderPolygon.count": 0})
        symbols = range(variant, 14, 2)
        add("OlderLine", 2 + variant, variant, "_symbols", None, page_of([LINE] * len(symbols)), **{
            "OlderLine.end1": one_of([SYMBOL + number for number in symbols]), "OlderLine.end2": 0})
        bad = [-2.0, float("nan")][variant]
        add("OlderLine", 3, variant, "_pen", None, page_of([LINE, LINE]), **{
            "OlderPen.width": bad, "OlderPen.style": one_of([[2, 3], [4, 0]][variant])})
        add("OlderText", 4, variant, "_font", None, page_of([TEXT]), **{
            "OlderFont.family": "", "OlderFont.flags": [128 + 32, 255][variant],
            "OlderFont.size": [0.0, float("inf")][variant], "OlderFont.color": BLACK})
        add("OlderText", 4, variant, "_rich", None, page_of([TEXT]), **{
            "OlderText.text": ["<html>plain</html>", "<html><body><b>bold</b></body></html>"][variant]})
        add("OlderText", 3, variant, "_free", None, page_of([TEXT]), **{"OlderText.size": (0.0, 0.0)})
        for place in range(4):
            add("OlderAxis", 3, variant, f"_place{place}", None, page_of([CHART]), **{
                "OlderAxis.place": place, "OlderAxis.automatic": variant == 0})
        add("OlderAxis", 3, variant, "_endless", None, page_of([CHART]), **{
            "OlderAxis.automatic": False,
            **[{"OlderAxis.minimum": float("nan")}, {"OlderAxis.maximum": float("inf")}][variant]})
        add("OlderLegendData", 2, variant, "_classes", None, page_of([LEGEND]), **{
            "OlderLegend.hasScale": True, "OlderLegendData.classes": [0, 1000][variant],
            "OlderLegendData.unit": ["", "no such unit"][variant]})
        add("OlderImage", 1 + variant, variant, "_strain", None, page_of([IMAGE]), **{
            "OlderImage.token": "IMAGE.OVERLAY_STRAIN"})
        add("OlderImage", 4, variant, "_snapshots", None, page_of([IMAGE, TEXT, IMAGE, TEXT], [2, 1, 1]), **{
            "OlderImage.hasSnapshot": True})
        add("OlderLook", 2, variant, "_negative", None, page_of([IMAGE]), **{
            f"OlderLook.{name}": [-0.5, float("nan")][variant]
            for name in ("markerSize", "vectorScaling", "vectorLineWidth")})


def connection_cases(older):
    add = older.add
    for variant in range(2):
        add("OlderText", 4, variant, "_target", None, page_of([IMAGE, TEXT, CHART]), **{
            "OlderElement.id": one_of([5, 6, 7]), "OlderText.target": [5, 7][variant],
            "OlderText.object": ["object", ""][variant]})
        # What is not there, and what nothing can be connected to.
        add("OlderText", 4, variant, "_no_target", None, page_of([TEXT, LINE]), **{
            "OlderElement.id": one_of([5, 6]), "OlderText.target": [9, 6][variant]})
        add("OlderText", 4, variant, "_same_id", None, page_of([IMAGE, CHART, TEXT]), **{
            "OlderElement.type": one_of([[IMAGE, CHART], [CHART, IMAGE]][variant] + [TEXT]),
            "OlderElement.id": one_of([5, 5, 6]), "OlderText.target": 5})
        add("OlderText", 2, variant, "_value", None, page_of([CHART, GROUP, CHART, TEXT], [2, 2]), **{
            "OlderText.text": "$5.2strain.MAX_Y_left$",
            "OlderChart.token": one_of([["strain", "strain"], ["strain", "x"]][variant])})
        add("OlderText", 4, variant, "_value_elsewhere", None, page_of([TEXT, GROUP, CHART], [2, 1]), **{
            "OlderText.text": "at most $5.2strain.MAX_Y_left$ mm", "OlderChart.token": ["strain", "other"][variant]})
        add("OlderLegend", 3, variant, "_token", None, page_of([LEGEND, [IMAGE, CHART][variant], IMAGE]), **{
            "OlderLegend.token": "shown", "OlderChart.token": "shown",
            "OlderImage.token": one_of([["shown", "shown"], ["shown"]][variant])})
        add("OlderLegend", 2, variant, "_strain", None, page_of([LEGEND, IMAGE]), **{
            "OlderLegend.token": "LEGEND.OVERLAY_STRAIN",
            "OlderImage.token": ["IMAGE.OVERLAY_STRAIN", "LEGEND.OVERLAY_STRAIN"][variant]})


def token_cases(older):
    """What tokens hold is not kept in a figure, and is read all the same."""
    add, forms = older.add, older.forms

    def add_file(form, version, variant, suffix="", **given):
        add(form, version, variant, suffix, {"OlderFileRecord": 2, **given.pop("versions", {})},
            {"OlderGroup.count": one_of([1, 0])}, **{"OlderElement.type": LINE, **given})

    for version in (1, 2, 3):
        for variant in range(2):
            add("OlderFileRecord", version, variant, **{
                "DataInterface.names": ["name_a", "name_b"], "Variable.type": variable_types([INTEGER, STRING])})
    every = [0, 1, 2, 3, PICTURE, CHART_DATA, 6, 7, 8, SNAPSHOT, 10, 11]
    for variant in range(2):
        add_file("TokenData", 1 + variant, variant, "_older", **{
            "OlderToken.type": one_of(every), "TokenData.count": one_of([len(every), *[0] * 20])})
    forms_of = {"OlderPicture": PICTURE, "OlderImageData": PICTURE, "OlderImageCamera": PICTURE, "OlderMask": PICTURE,
                "OlderObject": PICTURE, "OlderPoint": PICTURE, "OlderChartData": CHART_DATA}
    for form, number in forms_of.items():
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add_file(form, version, variant, **{
                    "OlderToken.type": one_of([number, 1, 3]), "TokenData.count": 1, "OlderPicture.hasData": True,
                    "OlderImageData.hasCamera": True, "OlderImageData.hasLegendData": variant == 0,
                    "OlderObject.hasTokens": variant == 1})


def cases(forms):
    result = []
    older = Older(forms, result)
    element_cases(older)
    connection_cases(older)
    token_cases(older)
    return result
