"""Values, token containers, registries."""

from itertools import cycle

from document import DEFAULTS, node_of, upgrades

PLAIN_TYPES = [*range(0, 7), *range(12, 16), *range(18, 23)]
IMAGE_TOKEN, CHART_TOKEN, SNAPSHOT_TOKEN = 11, 16, 17

# Of variables.
INTEGER, DOUBLE, STRING, IMAGE, CHART, IMAGE_REFERENCE, CHART_REFERENCE, GROUP = range(8)
SNAPSHOT, SNAPSHOT_REFERENCE, SEPARATOR = range(8, 11)

TYPE_OF_QUANTITY = {"": 2, "length": 3, "figure": 3, "angle": 4, "strain": 5, "force": 12, "stress": 13,
                    "temperature": 14, "time": 15}
BASE_UNITS = {"": "", "length": "mm", "force": "N", "strain": "1", "mass": "kg"}
QUANTITY_OF_UNIT = {"um": "length", "kN": "force"}

DEFAULTS.update({
    "Variable.data": None,
    "DoubleVariable.unit": None,
})



def one_of(values):
    """What a field holds each time that it comes."""
    endless = cycle(values)
    return lambda node: next(endless)


def VALUES(variant):
    """What tokens need in any file."""
    return {
        "TokenInfo.name": one_of(names_up_to("token")),
        "OlderToken.name": one_of(names_up_to("old")),
        "OlderToken.type": one_of([[1, 2], [3, 0]][variant]),
        "OlderDouble.unitName": ["kN", "length"][variant],
        "DataInterface.names": ["name_a", "name_b"] if variant == 0 else ["Zeit"],
        "Variable.type": variable_types([[INTEGER, DOUBLE], [STRING]][variant]),
        "DoubleVariable.unitName": ["kN", "um"][variant],
        "DataToken.name": one_of(names_up_to("data")),
        "PointInTime.valid": True, "PointInTime.dayLow": 2461000 + variant, "PointInTime.dayHigh": 0,
        "PointInTime.kind": [2, 1][variant], "PointInTime.offset": [3600, 0][variant],
        "ReadyText.format": one_of([[0, 1], [1]][variant]),
    }


def variable_types(numbers):
    """These types, in the numbers of the version of each variable."""
    endless = cycle(numbers)
    return lambda node: next(endless) + (1 if node.version < 6 else 0)


def names_up_to(first):
    return [f"{first}{number:02d}" for number in range(1, 100)]


@upgrades("PointInTime")
def point_in_time(forms, old, new):
    if not new["valid"]:
        for name in ("dayLow", "dayHigh", "milliseconds", "kind", "offset"):
            new[name] = 0


def unit_of(name):
    """The quantity and the unit that a name stands for."""
    if name in BASE_UNITS:
        return name, BASE_UNITS[name]
    return (QUANTITY_OF_UNIT[name], name) if name in QUANTITY_OF_UNIT else ("", "")


class Known:
    """A variable of the older stores: its type in today's numbers, and its value."""

    def __init__(self, name, number, text, value=None, quantity="", unit=""):
        self.name, self.number, self.text, self.value = name, number, text, value
        self.quantity, self.unit = quantity, unit


def word_for(truth):
    return "true" if truth else "false"


def older_variables(data):
    """Those in token data, in the order of their names."""
    known = []
    for token, value in zip(data["tokens"], data["values"]):
        number, name, text = token["type"], token["name"], token.get("displayText", "")
        if number == 0:
            known.append(Known(name, STRING, text, word_for(value["value"])))
        elif number == 2:
            known.append(Known(name, DOUBLE, text, value["value"], *unit_of(value.get("unitName", ""))))
        else:
            known.append(Known(name, number - 1, text, value.get("value") if value else None))
    return sorted(known, key=lambda each: (each.name, each.number))


def registry_variables(registry):
    """Those in a registry, in the order of their names."""
    known = []
    for name, item in zip(registry["names"], registry["variables"]):
        old = item.version < 6
        number = item["type"] - 1 if old else item["type"]
        data = item["olderData"] if old else item["data"]
        text = item["displayText"]
        if number < 0:
            known.append(Known(name, STRING, text, word_for(data["value"])))
        elif number == DOUBLE:
            unit = data.get("unit")
            quantity, unit_name = (unit["quantity"], unit["unit"]) if unit else unit_of(data["unitName"])
            # The name of a unit stands for its quantity.
            known.append(Known(name, DOUBLE, text, data["value"], quantity,
                               unit_name if unit else BASE_UNITS[quantity]))
        elif number in (INTEGER, STRING):
            known.append(Known(name, number, text, data["value"]))
        else:
            known.append(Known(name, number, text, data))
    return sorted(known, key=lambda each: (each.name, each.number))


def value_node(forms, known, base_unit=False):
    if known.number == INTEGER:
        return node_of(forms, "Value", type=1, integer=known.value)
    if known.number == STRING:
        return node_of(forms, "Value", type=3, text=known.value)
    unit = BASE_UNITS[known.quantity] if base_unit else known.unit
    return node_of(forms, "Value", type=2, number=known.value,
                   unit=node_of(forms, "UnitData", quantity=known.quantity, unit=unit))


def info_node(forms, known, text):
    types = {INTEGER: 1, STRING: 0, IMAGE: IMAGE_TOKEN, IMAGE_REFERENCE: IMAGE_TOKEN, CHART: CHART_TOKEN,
             SNAPSHOT: SNAPSHOT_TOKEN}
    number = types[known.number] if known.number in types else TYPE_OF_QUANTITY.get(known.quantity, 22)
    return node_of(forms, "TokenInfo", category=0, type=number, name=known.name, text=text)


def container_of(forms, variables):
    """The token container of chart data or of an image object, from an older store."""
    tokens = {}
    for known in variables:
        if known.number in (INTEGER, DOUBLE, STRING):
            tokens[known.name] = node_of(forms, "Token", info=info_node(forms, known, known.text or known.name),
                                         value=value_node(forms, known))
    return node_of(forms, "TokenContainer", count=len(tokens), tokens=list(tokens.values()))
