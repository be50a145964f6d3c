"""Documents made of the forms of the pages: filled with values, and as a reader of today understands them."""

import hashlib

from first_versions import VERSIONS
from format_page import Node, Scope, holds, row_is_there
from packed_picture import grey_jpeg, some_picture

WORDS = ["force", "Länge", "ε", "part.length", "a b", "", "Zug → Druck", "x"]


class Case:
    """One golden file.

    name      of the file, without the extension
    file      the form of the file; its extension is in EXTENSIONS
    versions  of blocks, by form; all others have their newest one
    given     values by "Form.field", or by "field" for all forms; a list for a repeated field
    variant   two files with the same versions hold different values
    adjust    called with the document before it is written
    expect    called with what a reader of today has, for rules that are not in the tables
    extension of the file, when it is not the one of its form: it tells what becomes of the file
    """

    EXTENSIONS = {"Figure file": "fig", "Snippet file": "snippet", "Template file": "template",
                  "Figure with tokens": "template", "Older figure file": "old"}

    def __init__(self, name, file, versions=None, given=None, variant=0, adjust=None, expect=None,
                 extension=None):
        self.name, self.file, self.variant = name, file, variant
        self.versions = versions or {}
        self.given = given or {}
        self.adjust, self.expect = adjust, expect
        self.extension = extension or self.EXTENSIONS[file]

    @property
    def file_name(self):
        return f"{self.name}.{self.extension}"

    def finish(self, expected):
        if self.expect:
            self.expect(expected)


class Builder:
    """Fills forms with values that are all different, the same ones every time."""

    def __init__(self, forms, case):
        self.forms, self.case = forms, case
        seed = hashlib.sha256(f"{case.name}".encode()).digest()
        self.number = seed[0] % 7 + 10 * case.variant
        self.next_id = 100 * (case.variant + 1)

    def build(self, name):
        node = self.fill(name, None)
        if self.case.adjust:
            self.case.adjust(node)
        return node

    def fill(self, name, outer):
        form = self.forms[name]
        node = Node(form, self.case.versions.get(name, VERSIONS.get(name, form.version)))
        scope = Scope(node, outer)
        for row in form.rows:
            if not row.is_in(node.version) or not holds(row.when, scope):
                continue
            if not row_is_there(form, row, self.forms, scope):
                continue
            node[row.name] = self.value_of(row, form, node, scope)
        return node

    def value_of(self, row, form, node, scope):
        key = f"{form.name}.{row.name}"
        given = self.case.given.get(key, self.case.given.get(row.name))
        if callable(given):
            given = given(node)
        if row.is_primitive:
            if given is not None:
                return given
            if row.times:
                return [self.primitive(row, node) for _ in range(self.count(row.times, scope))]
            if any(other.times == row.name for other in form.rows):
                return self.list_length(form, row)
            return self.primitive(row, node)
        if given is not None and not isinstance(given, (int, str)):
            return given
        if row.each:
            return [self.chosen(row.kind, number, scope) for number in scope.lookup(row.each)]
        if row.times:
            return [self.fill(row.kind, scope) for _ in range(self.count(row.times, scope))]
        if row.by:
            return self.chosen(row.kind, scope.lookup(row.by), scope)
        return self.fill(row.kind, scope)

    def list_length(self, form, row):
        """As long as a list that is given, else a length of its own."""
        for other in form.rows:
            given = self.case.given.get(f"{form.name}.{other.name}")
            if other.times == row.name and isinstance(given, list):
                return len(given)
        return 2 - self.case.variant % 2

    def count(self, times, scope):
        return int(times) if times.isdigit() else scope.lookup(times)

    def chosen(self, choice, number, scope):
        name = self.forms[choice].choices.get(number)
        return self.fill(name, scope) if name else None

    def primitive(self, row, node):
        self.number += 1
        n = self.number
        if row.kind in ("packed", "jpeg"):
            return grey_jpeg([255, n]) if row.kind == "jpeg" else some_picture(node["type"], n)
        if row.kind == "id":
            self.next_id += 1
            return self.next_id
        if row.limit.startswith("="):
            return int(row.limit[1:])
        if row.limit.startswith("<"):
            return n % int(row.limit[1:])
        if row.kind == "bool":
            return n % 2 == 0
        if row.kind in ("byte", "uint"):
            return n % 200
        if row.kind == "int":
            return n - 20
        if row.kind == "double":
            return n + 0.125 * (n % 8)
        if row.kind == "color":
            return (n * 7 % 256, n * 31 % 256, n * 57 % 256, 255 - n % 3)
        if row.kind in ("vec2d", "vec3d"):
            return tuple(n + 0.25 * i + 0.1 for i in range(2 if row.kind == "vec2d" else 3))
        return WORDS[n % len(WORDS)] + str(n)


# What a value that a version lacks becomes where the column "Before" says "default": the default of a new object.
DEFAULTS = {
    "Element.useSystemFont": False,
    "Element.name": None,
}


def before_value(forms, form, row, text):
    key = f"{form.name}.{row.name}"
    if text == "default":
        if key not in DEFAULTS:
            raise KeyError(f"no default for {key}")
        default = DEFAULTS[key]
        return default(forms) if callable(default) else default
    if row.kind == "bool":
        return text == "true"
    if row.kind in ("int", "uint", "byte", "id"):
        return int(text)
    if row.kind == "double":
        return float(text)
    if row.kind == "color":
        return tuple(int(part) for part in text.split())
    if row.kind in ("vec2d", "vec3d"):
        return tuple(float(part) for part in text.split())
    if row.kind == "string":
        return "" if text == "empty" else text
    raise ValueError(f"{key}: what is it before? {text}")


# What the tables cannot say: called with old and new content of a form of that name.
UPGRADES = {}


def upgrades(name):
    def register(function):
        UPGRADES[name] = function
        return function

    return register


def upgrade(forms, node, case, outer=None):
    """The content of a form as a reader of today saves it again."""
    form = node.form
    new = Node(form, form.version)
    scope = Scope(new, outer)
    for row in form.rows:
        if not row.is_in(new.version):
            continue
        if row.name in node.values:
            new[row.name] = upgrade_value(forms, row, node[row.name], case, scope)
        elif row.times and row.is_in(node.version) is False and row.before == "empty":
            new[row.name] = []
        elif holds(row.when, scope):
            new[row.name] = before_value(forms, form, row, row.before)
    if form.name in UPGRADES:
        UPGRADES[form.name](forms, node, new)
    return new


def upgrade_value(forms, row, value, case, scope):
    if row.is_primitive or value is None:
        return value
    if isinstance(value, list):
        return [item and upgrade(forms, item, case, scope) for item in value]
    return upgrade(forms, value, case, scope)


def node_of(forms, name, /, **values):
    """The content of a form in its newest version, with these values; forms in it may be given as nodes."""
    node = Node(forms[name], forms[name].version)
    node.values.update(values)
    return node
