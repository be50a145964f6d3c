#!/usr/bin/env python3
"""Writes the golden files: documents of every version of every form, byte by byte, and what a reader of today makes of
them.

It knows the pages of docs/formats and nothing of the library. Files that are there are never changed: they stand for
those that users have, and SHA256SUMS holds their sums. For each case there is NAME.EXTENSION and NAME.EXTENSION.txt, the
content in words when the document is saved again by this release, older figures as what they become: these texts follow when
a block gets a new version. Every version of every block has two files at least.

    make_golden.py [--check]     writes what is missing; --check tells whether what is there is what would be written
"""

import hashlib
import sys
from collections import Counter
from pathlib import Path

from cases import CASES
from document import Builder, upgrade
from format_page import Teller, Writer, read_pages

HERE = Path(__file__).resolve().parent
FILES = HERE / "files"


def content(forms, case):
    """The content of a case, its bytes, and its expected text."""
    node = Builder(forms, case).build(case.file)
    expected = upgrade(forms, node, case)
    case.finish(expected)
    return node, Writer(forms).write(node), "\n".join(Teller(forms).tell(expected)) + "\n"


def blocks_in(forms, node):
    """The blocks of a document, each with its version."""
    return {(name, each.version) for name, form in forms.items() if form.nature == "block" for each in node.find(name)}


def are_all_there(forms, numbers):
    """Whether every version of every block has two files."""
    missing = [f"{form.name} {version}" for form in forms.values() if form.nature == "block"
               for version in range(form.first_version, form.version + 1) if numbers[form.name, version] < 2]
    for name in missing:
        print(f"{name}: has less than two files", file=sys.stderr)
    return not missing


def put(path, data, check, follows):
    """Writes a file; one that is there must be the same, unless it may follow what this release does."""
    if path.exists() and path.read_bytes() == data:
        return True
    if check or (path.exists() and not follows):
        print(f"{path.name}: {'would be written differently' if path.exists() else 'is missing'}", file=sys.stderr)
        return False
    path.write_bytes(data)
    return True


def sums_of_documents():
    documents = sorted(path for path in FILES.iterdir() if path.suffix != ".txt")
    return {path.name: hashlib.sha256(path.read_bytes()).hexdigest() for path in documents}


def keep_sums(check):
    """Adds the sums of new documents. One that is there never changes."""
    path = HERE / "SHA256SUMS"
    known = dict(reversed(line.split("  ")) for line in path.read_text().splitlines()) if path.exists() else {}
    present = sums_of_documents()
    changed = [name for name, sum_ in known.items() if present.get(name) != sum_]
    for name in changed:
        print(f"{name}: is not the file that it was", file=sys.stderr)
    if not check and not changed:
        path.write_text("".join(f"{sum_}  {name}\n" for name, sum_ in present.items()))
    return not changed and (not check or known == present)


def main():
    check = "--check" in sys.argv[1:]
    forms = read_pages(HERE.parent.parent / "docs" / "formats")
    FILES.mkdir(exist_ok=True)
    good = True
    numbers = Counter()
    for case in CASES(forms):
        node, data, text = content(forms, case)
        numbers.update(blocks_in(forms, node))
        good &= put(FILES / case.file_name, data, check, follows=False)
        good &= put(FILES / (case.file_name + ".txt"), text.encode("utf-8"), check, follows=True)
    good &= are_all_there(forms, numbers)
    good &= keep_sums(check)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
