#!/usr/bin/env python3
"""Writes the golden files: documents of every version of every form, byte by byte, and what a reader of today makes of
them.

It knows the pages of docs/formats and nothing of the library. Files that are there are never changed: they stand for
those that users have. For each case there is NAME.EXTENSION and NAME.EXTENSION.txt, the content in words when the
document is saved again by this release, older figures as what they become, and SHA256SUMS holds the sums of them all.
Every version of every block has two files at least.

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


def put(path, data, check):
    """Writes a new file; one that is there must be the same."""
    if path.exists():
        if path.read_bytes() != data:
            print(f"{path.name}: would be written differently", file=sys.stderr)
            return False
        return True
    if check:
        print(f"{path.name}: is missing", file=sys.stderr)
        return False
    path.write_bytes(data)
    return True


def main():
    check = "--check" in sys.argv[1:]
    forms = read_pages(HERE.parent.parent / "docs" / "formats")
    FILES.mkdir(exist_ok=True)
    good = True
    numbers = Counter()
    for case in CASES(forms):
        node, data, text = content(forms, case)
        numbers.update(blocks_in(forms, node))
        good &= put(FILES / case.file_name, data, check)
        good &= put(FILES / (case.file_name + ".txt"), text.encode("utf-8"), check)
    good &= are_all_there(forms, numbers)
    sums = "".join(f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}\n" for path in sorted(FILES.iterdir()))
    if check:
        good &= (HERE / "SHA256SUMS").read_text() == sums
    else:
        (HERE / "SHA256SUMS").write_text(sums)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
