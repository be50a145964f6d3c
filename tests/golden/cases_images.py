"""Image elements, logos, image labels, and what images show."""

from cases_charts import chart_values
from cases_elements import TYPE_NAMES, family
from cases_labels import LABEL, line_style
from cases_snapshots import scale_of_lengths, snippet
from cases_tokens import container_of, older_variables, one_of, registry_variables
from document import DEFAULTS, Case, node_of, upgrade, upgrades
from packed_picture import COLOR, Picture, some_picture

IMAGE, LOGO, IMAGE_LABEL = 9, 10, 13
IMAGE_TOKEN = 11
MARKS = ["PointMarker", "Line", "Ellipse", "Text", "Points", "Polygon", "FixedLine", "FixedEllipse", "FixedText",
         "FixedPolygon", "FixedGrid"]
CAMERA, SCALED_PICTURE = 0, 1
IMPORTED = 5  # the type of labels that the library makes itself

TYPE_NAMES.update({IMAGE: "image", LOGO: "logo", IMAGE_LABEL: "image_label"})


def sans(forms):
    return node_of(forms, "Font", family="Liberation Sans", size=12.0, style=0)


def default_look(forms):
    line = line_style(forms, 0.1)
    line["color"] = (180, 56, 56, 255)
    return node_of(forms, "ImageDataVisualisation", isNull=False, mode=6, markerSize=20.0, vectorScaling=1.0,
                   vectorLineWidth=1.0, arrows=3, combinedVectors=True, hiddenPoints=True, pointIds=False,
                   fixedPointIdColor=False, pointIdColor=(56, 180, 56, 255), pointMask=-1, line=line,
                   pointIdFont=sans(forms))


def default_frame(forms):
    return node_of(forms, "CoordinateTransformation", offset=(0.0, 0.0), scale=(1.0, 1.0))


DEFAULTS.update({
    "ImageBase.looks": None,
    "ImageBase.configurations": lambda forms: node_of(forms, "LabelConfigurations", count=0, configurations=[]),
    "CoordinateSystem.width": None,
    "ImageDataVisualisation.arrows": None,
    "ImageDataVisualisation.pointIdFont": sans,
    "LogoPicture.pixels": None,
    "Picture.pixels": None,
    "Picture.hasAlphaChannel": None,
    "ImageData.space": None,
    "ImageData.masks": lambda forms: node_of(forms, "PointMasks", count=0, masks=[]),
    "ImageData.scaleFlags": lambda forms: node_of(forms, "ScaleFlags", hasLegendData=False, v602Compatibility=False),
    "ImageData.legend": scale_of_lengths,
    "ImageData.legendData": DEFAULTS["Legend.localData"],
    "ImageData.histogram": DEFAULTS["Legend.localHistogram"],
    "ScaleFlags.v602Compatibility": None,
    "CameraTransformation.frame": default_frame,
    "ImageDataObject.showsItsTokens": False,
    "ImageDataObject.look": default_look,
    "ImageDataElement.type": None,
})


def place_in_map(text):
    return text.encode("utf-16-be")


@upgrades("ImageBase")
def image_base(forms, old, new):
    aligned = new["aligned"]
    if old.version < 9:
        for name in ("autoScale", "scaling", "alignmentX", "alignmentY", "innerOrigin"):
            aligned[name] = old[name]
    if old.version < 7:
        aligned["alignmentX"] = aligned["element"]["pivotAlignmentX"]
        aligned["alignmentY"] = aligned["element"]["pivotAlignmentY"]
    if old.version < 5:
        new["looks"] = node_of(forms, "Looks", count=1, ids=[""], looks=[upgrade(forms, old["look"], None)])


@upgrades("Looks")
def looks(forms, old, new):
    pairs = sorted(zip(new["ids"], new["looks"]), key=lambda pair: place_in_map(pair[0]))
    new["ids"], new["looks"] = [pair[0] for pair in pairs], [pair[1] for pair in pairs]


@upgrades("LabelConfigurations")
def configurations(forms, old, new):
    new["configurations"].sort(key=lambda each: each["type"])


@upgrades("CoordinateSystem")
def coordinate_system(forms, old, new):
    if old.version < 3:
        width = old["styles"][2]["width"]
        new["width"] = width if width >= 0 else 1.0


@upgrades("ImageDataVisualisation")
def look(forms, old, new):
    if old.version == 1:
        new["arrows"] = 3 if old["arrowsAtBothEnds"] else 0
    for name, default in (("markerSize", 20.0), ("vectorScaling", 1.0), ("vectorLineWidth", 1.0)):
        if new[name] < 0:
            new[name] = default


@upgrades("Logo")
def logo(forms, old, new):
    for name in ("autoScale", "scaling"):
        if name in old.values:
            new["aligned"][name] = old[name]


def unpack(old, new):
    if old.get("jpeg"):
        new["pixels"] = old["jpeg"].picture()


def set_alpha(new, alpha):
    """Only colours can have an alpha channel."""
    new["hasAlphaChannel"] = alpha and new["type"] == COLOR
    new["pixels"] = new["pixels"].with_alpha(new["hasAlphaChannel"])


@upgrades("LogoPicture")
def logo_picture(forms, old, new):
    unpack(old, new)
    if old.version == 1:
        new["pixels"] = new["pixels"].recoloured(lambda c: b"\xff\xff\xff\0" if c == b"\xff" * 4 else c) \
            if new["type"] == COLOR else new["pixels"]
    set_alpha(new, old["hasAlphaChannel"] if old.version > 1 else True)


@upgrades("Picture")
def picture(forms, old, new):
    unpack(old, new)
    set_alpha(new, old["hasAlphaChannel"] if old.version > 3 else new["pixels"].alpha)


@upgrades("FigureTokenContainer")
def container(forms, old, new):
    for each in new["pictures"]:
        if old.version < 3 and each["type"] == COLOR and not each["hasAlphaChannel"]:
            each["pixels"] = each["pixels"].recoloured(lambda colour: colour[:3] + b"\xff")


@upgrades("ImageLabel")
def image_label(forms, old, new):
    if old.version == 1:
        new["label"]["element"]["visible"] = old["visible"]


@upgrades("ImageDataObject")
def image_data_object(forms, old, new):
    for number, element in zip(new["types"], new["elements"]):
        element.find("ImageDataElement")[0]["type"] = number
    if old.version <= 6:
        variables = registry_variables(old["tokens"]) if old.version == 6 else older_variables(old["tokens"])
        new["hasTokens"], new["showsItsTokens"] = True, True
        new["tokens"] = container_of(forms, variables)
    # Without a container none is seen, and none is what there is.
    if not new["hasTokens"]:
        new["showsItsTokens"] = True


def space_of(forms, camera):
    base = node_of(forms, "Transformation", unused=False)
    transformation = node_of(forms, "CameraTransformation", base=base, frame=default_frame(forms),
                             **{name: camera[name] for name in ("camera", "motion", "orientation")})
    typed = node_of(forms, "TypedTransformation", type=CAMERA, transformation=transformation)
    return node_of(forms, "ImageDataSpace", hasTransformation=True, transformation=typed,
                   hasCoordinateSystem=camera["hasCoordinateSystem"],
                   canDrawLegendColors=camera["canDrawLegendColors"])


@upgrades("ImageData")
def image_data(forms, old, new):
    pairs = sorted(zip(new["ids"], new["objects"]), key=lambda pair: place_in_map(pair[0]))
    new["ids"], new["objects"] = [pair[0] for pair in pairs], [pair[1] for pair in pairs]
    for name, item in pairs:
        item["id"] = name
    if old.version < 5:
        new["space"] = space_of(forms, upgrade(forms, old["camera"], None))
    new["legend"]["v602Compatibility"] = new["scaleFlags"]["v602Compatibility"] = old.version in (3, 4, 5)


@upgrades("Transformation")
def transformation(forms, old, new):
    new["unused"] = False


def set_types(document):
    """Elements say themselves of which type they are."""
    for item in document.find("ImageDataObject"):
        for number, element in zip(item["types"], item["elements"]):
            base = element.find("ImageDataElement")[0]
            if base.version > 1:
                base["type"] = number


def turn(document):
    for element in document.find("Element")[1:]:
        element["angle"] = -0.75


def image_values(variant):
    """What images need in any file."""
    return {
        **chart_values(variant),
        "TypedImageLabel.type": IMPORTED, "ImageLabel.labelType": IMPORTED, "ImageLabel.hasTokens": False,
        "ImageDataObject.hasTokens": False, "ImageDataObject.showsItsTokens": False,
        "ImageDataObject.types": [0] if variant == 0 else [5, 1],
        "Label.text": "two words",
        "Transformation.unused": False,
    }


def connect(document):
    """The first element to the second."""
    first, second = document["figure"]["root"]["children"]
    first.find("Connector")[0]["targetId"] = second.find("Element")[0]["id"]


def element_cases(forms, result):
    """Those in figures."""
    add_element, _ = family(forms, result)

    def add(form, types, version, variant, suffix="", versions=None, adjust=set_types, **given):
        add_element(form, types, version, variant, suffix, adjust, **{**image_values(variant), **given})
        result[-1].versions.update(versions or {})

    def newest(form):
        return 2 if form == "ImageDataFixedLine" else forms[form].version

    def add_versions(form, types, suffix="", **given):
        for version in range(1, newest(form) + 1):
            for variant in range(2):
                add(form, types, version, variant, suffix, **given)

    for form in ("ImageBase", "Looks", "LabelConfigurations", "CoordinateSystem", "ImageConversion",
                 "ImageDataVisualisation", "AlignedElement"):
        add_versions(form, [IMAGE])
    add_versions("Element", [IMAGE, LOGO], "_image")
    add_versions("TokenName", [IMAGE], "_image", **{"TokenName.type": 3})
    for variant in range(2):
        add("Connector", [[LABEL, IMAGE_LABEL][variant], IMAGE], 1, variant, adjust=connect, **{
            "Element.numberOfConnectors": one_of([0, 1, 0])})
        for version in (5, 6):
            add("Element", [IMAGE, LOGO], version, variant, "_image_turned", adjust=turn)
        add("TokenName", [IMAGE], [1, 2][variant], variant, "_snapshot", **{"TokenName.type": [8, 9][variant]})
        add("TokenName", [IMAGE], 2, variant, "_reference", **{"TokenName.type": [5, 4][variant]})
        add("Looks", [IMAGE], 1, variant, "_order", **{"Looks.ids": [["b", "", "a"], []][variant]})
        add("LabelConfigurations", [IMAGE], 1, variant, "_order", **{
            "LabelConfigurations.count": [3, 0][variant], "LabelConfiguration.type": one_of([9, 2, 5])})
        add("CoordinateSystem", [IMAGE], 1 + variant, variant, "_negative", **{"LineStyle.width": -1.0})
        for version in (1, 6, 8):
            add("ImageDataVisualisation", [IMAGE], version, variant, "_negative", **{
                "ImageDataVisualisation.markerSize": -0.5, "ImageDataVisualisation.vectorScaling": [-2.0, 0.0][variant],
                "ImageDataVisualisation.vectorLineWidth": [0.0, -1.0][variant]})
        add("ImageDataVisualisation", [IMAGE], 8, variant, "_flags", **{
            f"ImageDataVisualisation.{name}": variant == 0
            for name in ("isNull", "combinedVectors", "hiddenPoints", "pointIds", "fixedPointIdColor")})
        for version in (4, 6, 8):
            add("ImageBase", [IMAGE], version, variant, "_older_element", {"Element": 7})
    logo_cases(forms, add)
    for form in ("TypedImageLabel", "ImageLabel", "ImageDataObject"):
        add_versions(form, [IMAGE_LABEL])
    add_versions("ImageLabel", [IMAGE_LABEL], "_tokens", **{"ImageLabel.hasTokens": True})
    for variant in range(2):
        add("ImageDataObject", [IMAGE_LABEL], 9, variant, "_tokens", **{
            "ImageDataObject.hasTokens": True, "ImageDataObject.showsItsTokens": variant == 0})
        add("ImageDataElement", [IMAGE_LABEL], 1, variant, **{"ImageDataObject.types": list(range(len(MARKS)))})
    for number, name in enumerate(MARKS):
        add_versions(f"ImageData{name}", [IMAGE_LABEL], **{"ImageDataObject.types": [number]})
    add_versions("Rotation", [IMAGE_LABEL], **{"ImageDataObject.types": [2, 7]})
    for case in result[-2:]:
        case.versions.update({"ImageDataEllipse": 3, "ImageDataFixedEllipse": 2})


def logo_cases(forms, add):
    for variant in range(2):
        for version in (1, 2, 3):
            shown = {"Logo.hasPicture": variant == 0}
            add("Logo", [LOGO], version, variant, **shown)
            add("Logo", [LOGO], version, variant, "_older_element", {"Element": 7}, **shown)
            for number in range(4):
                add("LogoPicture", [LOGO], version, variant, f"_type{number}", **{
                    "Logo.hasPicture": True, "LogoPicture.type": number, "LogoPicture.hasAlphaChannel": variant == 0})


def image_entry(forms, variant, **more):
    """A snippet without a figure, with the data of one image."""
    info = node_of(forms, "TokenInfo", category=16, type=IMAGE_TOKEN, name="photo", text="the photo")
    return {
        **snippet(variant), **image_values(variant),
        "SnapshotData.hasTokens": True, "FigureTokenContainer.entryNames": ["photo"],
        "FigureTokenContainer.infoCount": 0, "FigureToken.info": info,
        "FigureTokenContainer.pictureCount": 0, "FigureTokenContainer.overlayCount": 0,
        "ImageDataSpace.hasTransformation": True, "TypedTransformation.type": CAMERA,
        **more,
    }


def with_picture(forms, variant, number, overlay=False, **more):
    return image_entry(forms, variant, **{
        "FigureTokenContainer.pictureCount": 1, "FigureTokenContainer.pictureNames": ["photo"],
        "FigureTokenContainer.overlayCount": int(overlay),
        "FigureTokenContainer.overlayNames": ["photo"] if overlay else [],
        "Picture.type": one_of([number, COLOR]), "Picture.hasAlphaChannel": variant == 0,
        "ImageData.ids": [], **more})


def translucent(variant):
    """Colours whose alpha is not 255."""
    picture = some_picture(COLOR, 12 + variant)
    return picture.recoloured(lambda colour: colour[:3] + bytes([100 + variant])).with_alpha(variant == 1)


def data_cases(forms, result):
    """Those in snippets."""

    def add(form, version, variant, suffix="", versions=None, given=None):
        name = f"{form.lower()}{suffix}_v{version}_{'ab'[variant]}"
        result.append(Case(name, "Snippet file", {form: version, **(versions or {})},
                           given or image_entry(forms, variant), variant, set_types))

    for form in ("ImageData", "ImageDataSpace", "ScaleFlags", "InternalOrientation", "CoordinateTransformation",
                 "TypedTransformation", "Transformation", "CameraTransformation", "PointMasks", "PointMask"):
        for version in range(1, forms[form].version + 1):
            for variant in range(2):
                add(form, version, variant)
    for variant in range(2):
        for version in range(1, forms["OlderCamera"].version + 1):
            add("OlderCamera", version, variant, "", {"ImageData": [4, 1][variant]})
        add("ScaledImageTransformation", 1, variant, "", None, image_entry(forms, variant, **{
            "TypedTransformation.type": one_of([SCALED_PICTURE, [CAMERA, SCALED_PICTURE][variant], CAMERA]),
            "ScaledImageTransformation.hasTransformation": True}))
        add("ScaledImageTransformation", 1, variant, "_alone", None, image_entry(forms, variant, **{
            "TypedTransformation.type": SCALED_PICTURE, "ScaledImageTransformation.hasTransformation": False,
            "ScaledImageTransformation.scale": [float("inf"), 0.5][variant]}))
        add("ImageDataSpace", 1, variant, "_nothing", None, image_entry(forms, variant, **{
            "ImageDataSpace.hasTransformation": False, "PointMasks.count": 0}))
        add("ImageData", 6, variant, "_order", None, image_entry(forms, variant, **{
            "ImageData.ids": [["b", "a"], ["Ω", "z"]][variant]}))
        add("ImageData", 5, variant, "_empty", None, image_entry(forms, variant, **{"ImageData.ids": []}))
    picture_cases(forms, add)


def picture_cases(forms, add):
    for variant in range(2):
        shown = translucent(variant)
        for version in range(1, forms["Picture"].version + 1):
            for number in range(4):
                add("Picture", version, variant, f"_type{number}", None, with_picture(forms, variant, number))
        for version in range(1, forms["FigureTokenContainer"].version + 1):
            # Before the alpha channel of a picture was told its alpha had no meaning.
            for block in (3, 4):
                add("FigureTokenContainer", version, variant, f"_picture{block}", {"Picture": block}, with_picture(
                    forms, variant, COLOR, True, **{"Picture.pixels": shown}))
        add("Picture", 4, variant, "_empty", None, with_picture(forms, variant, [COLOR, 0][variant], **{
            "Picture.pixels": lambda node: Picture(node["type"], 0, 0, b"")}))


def cases(forms):
    result = []
    element_cases(forms, result)
    data_cases(forms, result)
    return result
