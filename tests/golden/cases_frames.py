"""The elements that show snapshots, and the pictures in older snapshots."""

from cases_elements import RECTANGLE, TYPE_NAMES, with_children
from cases_images import image_values, sans, set_types
from cases_snapshots import Snippets, entries, registry
from cases_tokens import IMAGE, IMAGE_REFERENCE, IMAGE_TOKEN, INTEGER, SNAPSHOT_TOKEN, STRING, variable_types
from document import DEFAULTS, Case, node_of, upgrade, upgrades
from packed_picture import COLOR, some_picture

SNAPSHOT, SNAPSHOT_FRAME = 12, 14

TYPE_NAMES.update({SNAPSHOT: "snapshot", SNAPSHOT_FRAME: "snapshot_frame"})
DEFAULTS.update({"SnapshotFrame.source": None})


@upgrades("SnapshotFrame")
def snapshot_frame(forms, old, new):
    image = new["image"]
    new["unused"] = False
    if old.version == 1:
        new["source"] = image["token"]["name"]
    image["token"]["name"] = new["source"]
    if old.version == 3:
        image["backgroundColor"], image["useBackgroundColor"] = old["backgroundColor"], old["useBackgroundColor"]


def plain_image(forms):
    """What is behind the alignment of a new image element."""
    return node_of(
        forms, "SnapshotImage", overlayMode=0, backgroundColor=(255, 255, 255, 255), useBackgroundColor=False,
        name=node_of(forms, "TokenName", name=""),
        coordinateSystem=node_of(forms, "CoordinateSystem", origin=(0.0, 0.0, 0.0), visible=False, textVisible=True,
                                 length=20.0, width=0.5, font=sans(forms)),
        conversion=node_of(forms, "ImageConversion", type=0, min=0, max=255),
        looks=node_of(forms, "Looks", count=0, ids=[], looks=[]),
        configurations=node_of(forms, "LabelConfigurations", count=0, configurations=[]))


@upgrades("Snapshot")
def snapshot(forms, old, new):
    """It is saved as an image, which is known by its version."""
    new.version = 1
    new.values = {"element": new["element"], "autoScale": True, "scaling": 1.0, "alignmentX": 1, "alignmentY": 1,
                  "innerOrigin": (0.0, 0.0), "image": plain_image(forms)}
    if old.version == 1:
        new.values.update({name: value for name, value in old.values.items() if name not in ("element", "image")})
        new["image"] = upgrade(forms, old["image"], None)


def element_cases(forms, result):
    def add(form, version, variant, suffix="", **given):
        number = SNAPSHOT if form == "Snapshot" else SNAPSHOT_FRAME
        name = f"{form.lower()}{suffix}_v{version}_{'ab'[variant]}"
        result.append(Case(name, "Figure file", {form: version}, {
            **image_values(variant), **with_children([number, RECTANGLE]),
            "Variable.type": variable_types([[INTEGER, STRING], [STRING]][variant]), **given}, variant))

    for version in range(1, 5):
        for variant in range(2):
            add("SnapshotFrame", version, variant)
            add("Snapshot", version, variant, **{"Snapshot.hasData": True, "Snapshot.hasFigure": True,
                                                 "Snapshot.hasLegend": True})
    for variant in range(2):
        add("Snapshot", 4, variant, "_parts", **{"Snapshot.hasData": variant == 0, "Snapshot.hasFigure": variant == 1,
                                                 "Snapshot.hasLegend": False})
        add("Snapshot", 2, variant, "_parts", **{"Snapshot.hasData": variant == 0, "Snapshot.hasFigure": variant == 1})


def picture_cases(forms, snippets):
    """Pictures in registries, as containers hold them today."""

    def add(version, variant, suffix="", variable=6, types=(IMAGE, IMAGE, INTEGER), **given):
        versions = {"SnapshotData": 4, "Variable": variable}
        snippets.add("ImageVariable", version, variant, suffix, versions, set_types, **{
            **image_values(variant), **registry(variant, types), "Label.text": "$name_a$, $name_b$",
            "ImageVariable.hasPicture": True, "ImageVariable.hasOverlay": variant == 0,
            "ImageVariable.hasData": variant == 1, "ImageVariable.overlay": some_picture(COLOR, 14 + variant),
            "ImageDataSpace.hasTransformation": False, **given})

    for variant in range(2):
        for version in (1, 2):
            for number in range(4):
                add(version, variant, f"_type{number}", 5 + variant, **{"ImageVariable.type": number})
            add(version, variant, "_data", **{"ImageVariable.hasData": True})
        add(2, variant, "_no_picture", **{"ImageVariable.hasPicture": False, "ImageVariable.hasOverlay": variant == 0})
        add(2, variant, "_reference", [5, 6][variant], (IMAGE_REFERENCE, STRING, IMAGE))


def entry_cases(forms, snippets):
    """Entries of a container that are no charts: what else a source has told of them is passed over."""
    for version in (1, 2, 3):
        for variant in range(2):
            snippets.add("FigureToken", version, variant, "_image", None, set_types, **{
                **image_values(variant), **entries(forms, [IMAGE_TOKEN, SNAPSHOT_TOKEN]),
                "FigureToken.hasChartTokens": True, "FigureToken.sourceCount": 1 + variant,
                "ImageDataSpace.hasTransformation": False})


def cases(forms):
    result = []
    element_cases(forms, result)
    snippets = Snippets(forms, result)
    picture_cases(forms, snippets)
    entry_cases(forms, snippets)
    return result
