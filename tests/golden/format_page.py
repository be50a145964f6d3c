"""The tables of docs/formats, read from the pages: what stands in which order in the files of this system.

A form is one section of a page. README.md beside the pages tells how its tables are read. This module knows the pages
and nothing of the library: it writes documents of any version and says what is in them.
"""

import re
import struct
import zlib
from dataclasses import dataclass, field
from pathlib import Path

MAGIC = b"\x8aZB\n"
PRIMITIVES = {"bool", "byte", "int", "uint", "id", "double", "color", "vec2d", "vec3d", "string", "packed", "jpeg"}
LINK = re.compile(r"\[([^\]]+)\]\([^)]*\)")


@dataclass
class Row:
    name: str
    kind: str  # a primitive, or the name of a form
    limit: str = ""  # "< 5", "= 3", "> 0"
    times: str = ""  # a number, or the name of the field that holds it
    each: str = ""  # the list of numbers by which the form is chosen
    by: str = ""  # the field by which the form is chosen
    versions: str = "all"
    when: str = ""
    before: str = ""

    @property
    def is_primitive(self):
        return self.kind in PRIMITIVES

    def is_in(self, version):
        return version_matches(self.versions, version)


@dataclass
class Form:
    name: str
    nature: str  # block, record, sequence, choice, file
    version: int = 0
    first_version: int = 1
    type_word: str = ""
    when: str = ""
    rows: list = field(default_factory=list)
    choices: dict = field(default_factory=dict)


def version_matches(ranges, version):
    if ranges in ("", "all"):
        return True
    for part in ranges.replace(",", " ").split():
        if part.endswith("+"):
            if version >= int(part[:-1]):
                return True
        elif "-" in part:
            first, last = part.split("-")
            if int(first) <= version <= int(last):
                return True
        elif version == int(part):
            return True
    return False


def parse_form_cell(row, cell):
    cell = cell.replace("`", "").strip()
    match = re.search(r" for ([\w.]+)$", cell)
    if match:
        row.each, cell = match[1], cell[: match.start()]
    match = re.search(r" by ([\w.]+)$", cell)
    if match:
        row.by, cell = match[1], cell[: match.start()]
    match = re.search(r" × (\w+)$", cell)
    if match:
        row.times, cell = match[1], cell[: match.start()]
    link = LINK.fullmatch(cell)
    if link:
        row.kind = link[1]
        return
    row.kind, _, row.limit = cell.partition(" ")
    if row.kind not in PRIMITIVES:
        raise ValueError(f"{row.name}: no such form: {cell}")


NATURES = [
    (re.compile(r"Block of version (\d+)( only)?(?:, when ([^.]+))?\."), "block"),
    (re.compile(r"Record\."), "record"),
    (re.compile(r"Sequence\."), "sequence"),
    (re.compile(r"Choice\."), "choice"),
    (re.compile(r'File of type "([^"]+)", version (\d+)\.'), "file"),
]


def read_pages(folder):
    """All forms of the pages in a folder, by name."""
    forms = {}
    for page in sorted(Path(folder).glob("*.md")):
        form, columns = None, None
        for line in page.read_text(encoding="utf-8").splitlines():
            if line.startswith("#"):
                form, columns = Form(line.lstrip("# ").strip(), ""), None
                continue
            if form is None:
                continue
            if not form.nature:
                for pattern, nature in NATURES:
                    match = pattern.match(line)
                    if not match:
                        continue
                    form.nature = nature
                    if nature == "block":
                        form.version, form.when = int(match[1]), (match[3] or "").replace("`", "")
                        form.first_version = form.version if match[2] else 1
                    if nature == "file":
                        form.type_word, form.version = match[1], int(match[2])
                    if form.name in forms:
                        raise ValueError(f"{page.name}: {form.name} is there twice")
                    forms[form.name] = form
            elif line.startswith("|"):
                cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
                if columns is None:
                    columns = cells
                elif not set(cells[0]) <= set("-: "):
                    add_row(form, dict(zip(columns, cells)))
    for form in forms.values():
        for kind in [row.kind for row in form.rows if not row.is_primitive] + list(form.choices.values()):
            if kind not in forms:
                raise ValueError(f"{form.name}: no such form: {kind}")
    return forms


def add_row(form, cells):
    if form.nature == "choice":
        link = LINK.fullmatch(cells["Form"])
        for number in expand_numbers(cells["Number"]):
            if link:
                form.choices[number] = link[1]
        return
    row = Row(cells["Field"].replace("`", ""), "")
    parse_form_cell(row, cells["Form"])
    row.versions = cells.get("Versions", "all") or "all"
    row.when = cells.get("When", "").replace("`", "")
    row.before = cells.get("Before", "").replace("`", "")
    form.rows.append(row)


def expand_numbers(text):
    numbers = []
    for part in text.split(","):
        first, _, last = part.strip().partition("-")
        numbers += range(int(first), int(last or first) + 1)
    return numbers


class Node:
    """The content of one form: values of its fields, contents of the forms in it, lists for what is repeated."""

    def __init__(self, form, version):
        self.form = form
        self.version = version
        self.values = {}

    def __getitem__(self, name):
        return self.values[name]

    def __setitem__(self, name, value):
        self.values[name] = value

    def get(self, name, default=None):
        return self.values.get(name, default)

    def find(self, name):
        """All contents of a form of that name in here, this one included."""
        found = [self] if self.form.name == name else []
        for value in self.values.values():
            for item in value if isinstance(value, list) else [value]:
                if isinstance(item, Node):
                    found += item.find(name)
        return found


def holds(when, scope):
    """Whether the condition of a row holds: names of fields of the form, and versions of the forms around it."""
    for part in when.split(" and ") if when else []:
        words = part.split()
        negative = words[0] == "not"
        words = words[1:] if negative else words
        value = scope.lookup(words[0])
        if len(words) == 1:
            result = bool(value)
        elif words[1] == "=":
            result = value == int(words[2])
        elif words[1] == "<":
            result = value < int(words[2])
        elif words[1] == ">":
            result = value > int(words[2])
        elif words[1] == "in":
            result = value in expand_numbers(" ".join(words[2:]))
        else:
            raise ValueError(f"no such condition: {part}")
        if result == negative:
            return False
    return True


class Scope:
    """Where the names in conditions are looked up: a field of the form or of one around it, or the name of a form,
    without blanks, which stands for the version of the last block of that form."""

    def __init__(self, node, outer):
        self.node, self.outer = node, outer
        self.versions = outer.versions if outer else {}
        if node.form.nature == "block":
            self.versions[node.form.name.replace(" ", "")] = node.version

    def lookup(self, name):
        name, _, inner = name.partition(".")
        scope = self
        while scope:
            if name in scope.node.values:
                return inner_value(scope.node[name], inner)
            scope = scope.outer
        return self.versions[name]


def inner_value(value, name):
    """A field of a form, or of each form in a list; the value itself without a name."""
    if not name:
        return value
    return [item[name] for item in value] if isinstance(value, list) else value[name]


def is_inline(row, forms):
    """Whether a row stands in the block itself, not beside it."""
    return row.is_primitive or forms[row.kind].nature == "record"


def row_is_there(form, row, forms, scope):
    """The values of a block that is left out are left out with it."""
    return not is_inline(row, forms) or holds(form.when, scope)


def items_of(row, node):
    """The contents that a row stands for, in their order."""
    value = node[row.name]
    return value if row.times or row.each else [value]


# ---------------------------------------------------------------- writing

def encode(kind, value):
    if kind == "bool":
        return bytes([1 if value else 0])
    if kind == "byte":
        return bytes([value])
    if kind in ("int", "id"):
        return struct.pack("<i", value)
    if kind == "uint":
        return struct.pack("<I", value & 0xFFFFFFFF)
    if kind == "double":
        return struct.pack("<d", value)
    if kind == "color":
        return bytes(value)
    if kind in ("vec2d", "vec3d"):
        return b"".join(struct.pack("<d", part) for part in value)
    data = value.encode("utf-8") if kind == "string" else value.packed()
    return struct.pack("<I", len(data)) + data


def frame(version, payload):
    checked = struct.pack("<I", version) + payload
    return struct.pack("<I", len(payload)) + checked + struct.pack("<I", zlib.crc32(checked))


def header(type_word, version):
    head = MAGIC + type_word.encode("ascii").ljust(52, b"\0") + struct.pack("<I", version)
    return head + struct.pack("<I", zlib.crc32(head))


class Writer:
    """Writes the contents of forms as the bytes of a file."""

    def __init__(self, forms):
        self.forms = forms

    def write(self, node, outer=None):
        scope = Scope(node, outer)
        is_block = node.form.nature == "block"
        before, payload, behind, values_begun = b"", b"", b"", False
        for row in node.form.rows:
            if not row.is_in(node.version) or not holds(row.when, scope):
                continue
            inline = is_inline(row, self.forms)
            values_begun = values_begun or inline
            if not row_is_there(node.form, row, self.forms, scope):
                continue
            for item in items_of(row, node):
                if item is None:
                    continue
                data = encode(row.kind, item) if row.is_primitive else self.write(item, scope)
                if inline:
                    payload += data
                elif is_block and not values_begun:
                    before += data
                else:
                    behind += data
        if node.form.nature == "record":
            return payload
        if is_block and holds(node.form.when, scope):
            payload = frame(node.version, payload)
        elif is_block:
            payload = b""
        if node.form.nature == "file":
            return header(node.form.type_word, node.version) + behind
        return before + payload + behind


# ---------------------------------------------------------------- telling

def quote(text):
    out = '"'
    for character in text:
        if character in '"\\':
            out += "\\" + character
        elif ord(character) < 0x20:
            out += f"\\u{ord(character):04x}"
        else:
            out += character
    return out + '"'


def tell_double(value):
    if value != value:
        return "nan"
    if value in (float("inf"), float("-inf")):
        return "inf" if value > 0 else "-inf"
    return "%.17g" % value


class Teller:
    """Says what is in a document, a line for each value. The ids of a file are told by the order in which they come."""

    def __init__(self, forms):
        self.forms = forms
        self.ids = {}

    def tell_value(self, kind, value):
        if kind == "bool":
            return "true" if value else "false"
        if kind == "id":
            return "#%d" % self.ids.setdefault(value, len(self.ids) + 1)
        if kind == "double":
            return tell_double(value)
        if kind == "color":
            return " ".join(str(part) for part in value)
        if kind in ("vec2d", "vec3d"):
            return " ".join(tell_double(part) for part in value)
        if kind == "string":
            return quote(value)
        if kind == "packed":
            return value.tell()
        return str(value & 0xFFFFFFFF if kind == "uint" else value)

    def tell(self, node, depth=0, outer=None):
        scope = Scope(node, outer)
        lines = []
        indent = "  " * depth
        for row in node.form.rows:
            if not row.is_in(node.version) or not holds(row.when, scope):
                continue
            if not row_is_there(node.form, row, self.forms, scope):
                continue
            repeated = bool(row.times or row.each)
            for i, item in enumerate(items_of(row, node)):
                name = f"{row.name}[{i}]" if repeated else row.name
                if row.is_primitive:
                    lines.append(f"{indent}{name} = {self.tell_value(row.kind, item)}")
                elif item is not None:
                    version = f" {item.version}" if item.form.nature == "block" else ""
                    lines.append(f"{indent}{name}: {item.form.name}{version}")
                    lines += self.tell(item, depth + 1, scope)
        return lines
