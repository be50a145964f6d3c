"""What the tokens of older figures hold: the figure with what it shows becomes a snippet."""

from itertools import count

from cases_charts import NOTHING
from cases_elements import default_symbol
from cases_images import IMAGE_TOKEN, MARKS, default_frame, default_look
from cases_labels import line_style, unit
from cases_older import CHART, CHART_DATA, GROUP, IMAGE, LINE, PICTURE, SNAPSHOT, TEXT, Figures, older_values, page_of
from cases_snapshots import entry_of, scale_of_lengths
from cases_tokens import CHART_TOKEN, SNAPSHOT_TOKEN, container_of, older_variables, one_of, unit_of
from document import DEFAULTS, Case, node_of, upgrade
from packed_picture import COLOR, NO_PICTURE, some_picture

NO_STAGE = 4294967295
POINTS = MARKS.index("Points")


class Contents:
    """Makes the snippet of an older figure; the old records hold all fields of their newest versions."""

    def __init__(self, forms):
        self.forms = forms
        self.ids = count(1)

    def node(self, form, /, **values):
        return node_of(self.forms, form, **values)

    def default(self, name):
        return DEFAULTS[name](self.forms)

    def snapshot(self, old):
        maker = Figures(self.forms, self.ids)
        figure = maker.figure(old)
        return self.node("SnapshotData", unused=True, hasLegendData=False, showTolerances=False,
                         v602Compatibility=False, hasFigure=True, hasTokens=True, hasProjectTokens=False,
                         hasCharts=False, drawingMode=0, stage=NO_STAGE, figure=figure,
                         tokens=self.container(old, maker), legend=self.default("SnapshotData.legend"),
                         legendData=self.default("SnapshotData.legendData"),
                         tolerances=self.default("SnapshotData.tolerances"),
                         histogram=self.default("SnapshotData.histogram"))

    def container(self, old, maker):
        """Of the tokens those that the figure shows."""
        shown = {token for _, _, token in maker.shown}
        shown |= {name for label, _ in maker.texts for name in label["text"].split("$")[1::2]}
        entries = {name: entry for name, entry in self.entries(old["file"].get("tokens")) if name in shown}
        imported = [token for _, _, token in maker.shown if token.startswith("__")]
        for name, snapshot in zip(imported, maker.snapshots):
            entries[name] = self.entry(name, "", SNAPSHOT_TOKEN, self.snapshot(snapshot))
        pictures, overlays = self.pictures(old["file"].get("tokens"), shown)
        names = sorted(entries)
        held = [entries[name] for name in names]
        return self.node("FigureTokenContainer", infoCount=len(names), entryCount=len(names),
                         pictureCount=len(pictures), overlayCount=len(overlays), entryNames=names,
                         pictureNames=sorted(pictures), overlayNames=sorted(overlays),
                         infos=[entry["info"] for entry in held], entries=held,
                         pictures=[pictures[name] for name in sorted(pictures)],
                         overlays=[overlays[name] for name in sorted(overlays)])

    def entries(self, data):
        """The names and the entries of token data."""
        if not data:
            return
        makers = {PICTURE: (IMAGE_TOKEN, self.image_data), CHART_DATA: (CHART_TOKEN, self.chart_data),
                  SNAPSHOT: (SNAPSHOT_TOKEN, self.snapshot)}
        plain = {known.name: known for known in older_variables(data)}
        for token, value in zip(data["tokens"], data["values"]):
            name = token["name"]
            if token["type"] in makers:
                number, make = makers[token["type"]]
                yield name, self.entry(name, token.get("displayText", ""), number, make(value))
            elif token["type"] < PICTURE:
                yield name, entry_of(self.forms, plain[name])

    def pictures(self, data, shown):
        pictures, overlays = {}, {}
        for token, value in zip(data["tokens"], data["values"]) if data else []:
            if token["type"] != PICTURE or token["name"] not in shown:
                continue
            pictures[token["name"]] = self.picture(value["type"], value["pixels"])
            if value["overlay"] is not NO_PICTURE:
                overlays[token["name"]] = self.picture(COLOR, value["overlay"])
        return pictures, overlays

    def entry(self, name, text, number, data):
        info = self.node("TokenInfo", category=0, type=number, name=name, text=text)
        return self.node("FigureToken", unused=True, info=info, data=data)

    def picture(self, kind, pixels):
        return self.node("Picture", type=kind, pixels=pixels, hasAlphaChannel=pixels.alpha)

    # ---------------------------------------------------------------- images

    def image_data(self, old):
        data = old["data"] if old["hasData"] else None
        space = self.node("ImageDataSpace", hasTransformation=False, hasCoordinateSystem=True,
                          canDrawLegendColors=False)
        scale, numbers = scale_of_lengths(self.forms), self.default("ImageData.legendData")
        objects, masks, has_scale = {}, [], False
        if data:
            objects = {item["id"]: self.image_object(item) for item in data["objects"]}
            masks = [self.node("PointMask", mask=item["mask"], name=item["name"]) for item in data["masks"]]
            has_scale = data["hasLegendData"]
            if has_scale:
                scale, values = Figures(self.forms).scale(data["legendData"])
                numbers = self.node("ScaleData", **values)
            if data["hasCamera"]:
                self.take_camera(space, data["camera"])
        names = sorted(objects)
        return self.node("ImageData", count=len(names), ids=names, objects=[objects[name] for name in names],
                         space=space, masks=self.node("PointMasks", count=len(masks), masks=masks),
                         scaleFlags=self.node("ScaleFlags", hasLegendData=has_scale, v602Compatibility=False),
                         legend=scale, legendData=numbers, histogram=self.default("ImageData.histogram"))

    def take_camera(self, space, camera):
        transformation = self.node("CameraTransformation", base=self.node("Transformation", unused=False),
                                   camera=camera["camera"], motion=camera["motion"], orientation=camera["orientation"],
                                   frame=default_frame(self.forms))
        space["hasTransformation"] = True
        space["hasCoordinateSystem"] = camera["hasCoordinateSystem"]
        space["canDrawLegendColors"] = camera["canDrawLegendColors"]
        space["transformation"] = self.node("TypedTransformation", type=0, transformation=transformation)

    def image_object(self, old):
        look = default_look(self.forms)
        look["isNull"] = True
        fields = ("id", "point", "vector", "value", "visible", "mask")
        points = [self.node("ImageDataPoint", **{name: point[name] for name in fields}) for point in old["points"]]
        elements = []
        if points:
            base = self.node("ImageDataElement", type=POINTS)
            elements = [self.node("ImageDataPoints", element=base, count=len(points), points=points)]
        new = self.node("ImageDataObject", id=old["id"], connectorPoint=old["connectorPoint"], count=len(elements),
                        types=[POINTS] * len(elements), displayText="", labelTemplateType=4294967295,
                        filtered=old["filtered"], canBeConnectorTarget=old["canBeConnectorTarget"],
                        hasTokens=old["hasTokens"], showsItsTokens=True, elements=elements, look=look)
        if old["hasTokens"]:
            new["tokens"] = container_of(self.forms, older_variables(old["tokens"]))
        return new

    # ---------------------------------------------------------------- charts

    def chart_data(self, old):
        curves = {curve["id"]: self.dataset(curve) for curve in old["curves"]}
        names = sorted(curves)
        return self.node("ChartData", datasetCount=len(names), ids=names, infoPointCount=0,
                         infoPointColor=(0, 0, 0, 255), infoPoints=[], hasAxisXRange=False, hasAxisYRange=False,
                         axisXRange=(NOTHING, NOTHING), axisYRange=(NOTHING, NOTHING),
                         supportsStageMarkers=False, supportsPointMarkers=False,
                         hasLegendData=False, computeStatistics=True, hasTokenContainer=False, useTokenContainer=True,
                         datasets=[curves[name] for name in names], markers=self.default("ChartData.markers"),
                         legend=scale_of_lengths(self.forms), legendData=self.default("ImageData.legendData"),
                         histogram=self.default("ChartData.histogram"), unitX=self.unit(old["unitX"]),
                         unitY=self.unit(old["unitY"]))

    def unit(self, name):
        quantity, unit_name = unit_of(name)
        return unit(self.forms, quantity, unit_name) if quantity else unit(self.forms, "length", "mm")

    def dataset(self, old):
        points = [self.node("ChartPoint", id=i, point=point, value=0.0) for i, point in enumerate(old["points"])]
        known = [point for point in old["points"] if NOTHING not in point]
        ranges = [(min(axis), max(axis)) for axis in zip(*known)] or [(NOTHING, -NOTHING)] * 2
        return self.node("ChartDataset", id=old["id"], rangeX=ranges[0], rangeY=ranges[1], pointCount=len(points),
                         displayText=old["id"] if old["displayText"] is None else old["displayText"], points=points,
                         parameters=self.parameters())

    def parameters(self):
        blue = (56, 56, 180, 255)
        symbol, line = default_symbol(self.forms), line_style(self.forms, 0.1)
        symbol["type"], symbol["size"], symbol["color"], line["color"] = 0, 0.5, blue, blue
        return self.node("ChartParameters", name="", useDefaultName=True, showGroupName=False, style=0,
                         computeColor=False, numberOfBasePoints=100, symbol=symbol, lineStyle=line,
                         fillStyle=self.node("FillStyle", filled=True, color=blue))


class Snippets:
    """Appends cases of figures with token data."""

    def __init__(self, forms, result):
        self.forms, self.result = forms, result

    def add(self, form, version, variant, suffix="", page=None, **given):
        document = []

        def expect(new):
            forms = self.forms
            filled = upgrade(forms, document[0]["figure"], None)
            # The tables drop the older store, whose values are wanted.
            filled["file"].values.update(self.stores(document[0]["figure"]["file"]))
            new.form, new.values = forms["Snippet file"], {"snapshot": Contents(forms).snapshot(filled)}

        told = f"_v{version}" if version else ""
        name = f"{form.lower()}{suffix}{told}_{'ab'[variant]}"
        self.result.append(Case(name, "Older figure file", {"OlderFileRecord": 2, form: version},
                                {**older_values(variant), **(page or page_of([LINE])), **given}, variant,
                                document.append, expect, "oldtokens"))

    def stores(self, record):
        return {"tokens": upgrade(self.forms, record["tokens"], None)} if "tokens" in record.values else {}


def photo(variant, **given):
    """An image whose token holds a picture with all that there is."""
    return {
        **page_of([IMAGE]), "OlderImage.token": "photo",
        "OlderToken.name": one_of(["photo", "inner_a", "inner_b", "inner_c"]),
        "OlderToken.type": one_of([PICTURE, 1, 3, 2]), "TokenData.count": one_of([1, 1, 2, 0, 1]),
        "OlderPicture.hasData": True, "OlderImageData.hasCamera": True, "OlderImageData.hasLegendData": variant == 0,
        "OlderObject.hasTokens": variant == 0, **given,
    }


def curve(**given):
    """A chart whose token holds data."""
    return {
        **page_of([CHART]), "OlderChart.token": "curve", "OlderToken.name": "curve", "OlderToken.type": CHART_DATA,
        "TokenData.count": 1, "OlderChartData.unitX": "um", **given,
    }


def cases(forms):
    result = []
    add = Snippets(forms, result).add
    for variant in range(2):
        for form in ("OlderPicture", "OlderImageData", "OlderImageCamera", "OlderMask", "OlderObject", "OlderPoint"):
            for version in range(1, forms[form].version + 1):
                add(form, version, variant, "", photo(variant))
        for version in (1, 2):
            add("TokenData", version, variant, "_held", photo(variant))
            add("OlderLegendData", version, variant, "_held", photo(variant), **{"OlderImageData.hasLegendData": True})
        for version in range(1, forms["OlderChartData"].version + 1):
            add("OlderChartData", version, variant, "", curve(), **{
                "OlderChartData.unitY": ["", "force"][variant]})
        for kind in range(4):
            add("OlderPicture", 3, variant, f"_type{kind}", photo(variant), **{
                "OlderPicture.type": kind, "OlderPicture.hasData": False,
                "OlderPicture.overlay": [NO_PICTURE, some_picture(COLOR, kind)][variant]})
        add("OlderImageData", 3, variant, "_bare", photo(variant), **{
            "OlderImageData.hasCamera": False, "OlderImageData.objectCount": variant, "OlderImageData.maskCount": 0,
            "OlderObject.pointCount": 0, "OlderObject.hasTokens": False})
        add("OlderObject", 3, variant, "_same_id", photo(variant), **{
            "OlderImageData.objectCount": 2, "OlderObject.id": "one", "OlderObject.hasTokens": False})
        add("OlderChartData", 3, variant, "_same_id", curve(), **{
            "OlderChartData.count": 2, "OlderCurve.id": "one"})
        add("OlderCurve", 0, variant, "_gap", curve(), **{
            "OlderCurve.points": [[(1.0, NOTHING), (2.0, 5.0), (3.0, 4.0)], [(NOTHING, 1.0)]][variant]})
        names = ["a", "b", "c", "d", "e"]
        add("TokenData", 1 + variant, variant, "_values", page_of([TEXT]), **{
            "OlderToken.type": one_of([3, 2, 1, 0, 8]), "OlderToken.name": one_of(names), "TokenData.count": 5,
            "OlderText.text": "$a$ $b$ $c$ $d$ $e$" if variant == 0 else "$a$ $c$"})
        add("OlderFigure", 0, variant, "_token", page_of([IMAGE, TEXT], [1, 1]), **{
            "OlderImage.token": "inside", "OlderToken.name": "inside",
            "OlderToken.type": SNAPSHOT, "TokenData.count": one_of([1, *[0] * 20]),
            "OlderElement.type": one_of([[TEXT, IMAGE], [LINE, IMAGE]][variant])})
        add("OlderFigure", 0, variant, "_imported", page_of([IMAGE, TEXT, GROUP, IMAGE, LINE], [2, 1, 1, 1]), **{
            "OlderImage.hasSnapshot": True, "TokenData.count": 0})
    return result
