#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares docs/fixed.md with the code: checkfixed.py <tree>. Fails, a line per difference, unless they agree.

A row of the page is "| `tag` | `file` ... | what | why |". Each file of a row holds "fixed: tag" in a comment, each
such comment has a row that names its file, and what stands in backticks in the column "what" stands in one of the
row's files as it is there. Files go by their names, so that they can move.
"""

import pathlib
import re
import sys

ROW = re.compile(r"^\| `(?P<tag>[a-z0-9-]+)` \| (?P<files>[^|]*) \| (?P<what>[^|]*) \| [^|]* \|$")
SPAN = re.compile(r"`([^`]*)`")
TAG = re.compile(r"(?://|\*).*\bfixed: ([a-z0-9-]+)")
ROOMS = ("platform", "devicecontrol", "apps")


def sources(root):
    """The sources by their names; a name that two of them have is no name of either."""
    found = {}
    for room in ROOMS:
        for path in sorted((root / room).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                found.setdefault(path.name, []).append(path)
    return found


def rows(page):
    """The rows of the page: tag, names of files, quoted texts. A second row of one tag is an error."""
    result, errors = {}, []
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        match = ROW.match(line)
        if not match:
            if line.startswith("| `"):
                errors.append(f"{page.name}:{number} is no row")
            continue
        if match["tag"] in result:
            errors.append(f"{page.name}:{number} has a second row '{match['tag']}'")
        result[match["tag"]] = (SPAN.findall(match["files"]), SPAN.findall(match["what"]))
    return result, errors


def check_row(tag, names, quotes, found, tagged):
    errors, texts = [], []
    for name in names:
        if len(found.get(name, [])) != 1:
            errors.append(f"row '{tag}': there are {len(found.get(name, []))} files {name}")
            continue
        texts.append(found[name][0].read_text(encoding="utf-8"))
        if name not in tagged.get(tag, set()):
            errors.append(f"row '{tag}': {name} holds no 'fixed: {tag}'")
    for quote in quotes:
        if not any(quote in text for text in texts):
            errors.append(f"row '{tag}': `{quote}` stands in none of its files")
    return errors


def main(root):
    found = sources(root)
    tagged = {}
    for name, paths in found.items():
        for path in paths:
            for tag in TAG.findall(path.read_text(encoding="utf-8")):
                tagged.setdefault(tag, set()).add(name)
    table, errors = rows(root / "docs" / "fixed.md")
    for tag, (names, quotes) in table.items():
        errors += check_row(tag, names, quotes, found, tagged)
    for tag, names in sorted(tagged.items()):
        for name in sorted(names - set(table.get(tag, ([], []))[0])):
            errors.append(f"{name} holds 'fixed: {tag}', of which docs/fixed.md says nothing")
    if not table:
        errors.append("docs/fixed.md has no rows")
    print("\n".join(errors) or f"docs/fixed.md and the code agree on {len(table)} entries")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
