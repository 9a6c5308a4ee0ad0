#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""makereference.py SOURCE HEADERS REFERENCE: makes the reference of the headers that the file HEADERS names, one in a line, in the
folder REFERENCE. Fails, and names the place, where a class or an operation that others may call has no comment, or doxygen
does not understand one.

One comment holds for all that a block has of one thing: getter, setter, value and path of a key. What overrides is described by
what it overrides; copies, assignments and other operators do what those of C++ do unless a comment says otherwise."""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

FAMILY = re.compile(r"\b(?:Get|Set|Is|Has)(\w+?)(?:AsString)?(?:Value|_ValuePath)?\(")
SPECIAL = re.compile(r"^(?:operator\b.*|~.*)$")


def family_of(declaration):
    found = FAMILY.search(declaration)
    return re.sub(r"^Is(?=[A-Z])", "", found[1]) if found else None


def shared(text):
    """The header, with the comment of a block's first member repeated in each line that has another of the same thing."""
    comment, family, lines = [], None, []
    for line in text.splitlines():
        words = line.strip()
        if words.startswith("///") and not words.startswith("///<"):
            comment, family = (comment if family is None else []) + [words[3:].strip()], None
        elif not words:
            comment, family = [], None
        elif "(" in words and not words.startswith("//"):
            now = family_of(words)
            trailing = re.search(r"///<\s*(.*)", words)
            if family is not None and now == family and comment and not trailing:
                line = f"/** {' '.join(comment)} */ {line}"
            else:
                comment = [trailing[1]] if trailing else comment if family is None else []
                family = now or ""
        lines.append(line)
    return "\n".join(lines) + "\n"


def settings(source, copies, made):
    """What differs from build to build, behind what does not."""
    return (source / "docs/Doxyfile").read_text() + (
        f'INPUT = "{copies}"\nSTRIP_FROM_PATH = "{copies}"\nSTRIP_FROM_INC_PATH = "{copies}"\nOUTPUT_DIRECTORY = "{made}"\n')


def is_described(element):
    return any("".join(element.find(part).itertext()).strip() for part in ("briefdescription", "detaileddescription"))


def needs_words(member, of):
    """Whether it is an operation that others call and that nothing else describes."""
    signature = "".join(member.findtext("argsstring") or "")
    is_copy = member.findtext("name") == of and re.match(rf"\((?:const )?{of} ?&|\(\)|\(Q(?:Widget|Object) \*parent=nullptr\)$", signature)
    return not (re.search(r"\boverride\b|=\s*(?:delete|default)$|->", signature) or member.find("reimplements") is not None or is_copy
                or SPECIAL.match(member.findtext("name")))


def undocumented(folder):
    """(place, what) of each."""
    for path in folder.glob("*.xml"):
        for compound in xml.etree.ElementTree.parse(path).getroot().iter("compounddef"):
            name = compound.findtext("compoundname")
            # Neither what templates need of, nor what is private with all that is in it, nor what a template is in a case.
            if name.endswith("detail") or compound.get("prot") not in (None, "public") or "<" in name:
                continue
            if compound.get("kind") in ("class", "struct") and compound.get("prot") == "public" and not is_described(compound):
                yield compound.find("location"), name
            for member in compound.iter("memberdef"):
                if (member.get("kind") in ("function", "signal", "slot") and member.get("prot") == "public" and not is_described(member)
                        and needs_words(member, name.split("::")[-1])):
                    yield member.find("location"), f"{name}::{member.findtext('name')}{member.findtext('argsstring')}"


def problems(source, headers, reference):
    with tempfile.TemporaryDirectory() as folder:
        copies, made = pathlib.Path(folder) / "headers", pathlib.Path(folder) / "made"
        for header in headers:
            copy = copies / header.relative_to(source)
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_text(shared(header.read_text()))
        made.mkdir()
        done = subprocess.run(["doxygen", "-"], input=settings(source, copies, made), capture_output=True, text=True, check=False)
        said = [line.replace(f"{copies}/", "") for line in done.stderr.splitlines()]
        if done.returncode and not said:
            said = [f"doxygen ends with {done.returncode}"]
        for place, what in undocumented(made / "xml"):
            said.append(f"{place.get('file')}:{place.get('line')}: nothing is said of {what}")
        shutil.rmtree(reference, ignore_errors=True)
        shutil.copytree(made / "html", reference)
    return sorted(set(said), key=lambda line: [int(part) if part.isdigit() else part for part in re.split(r"(\d+)", line)])


def main():
    source, listed, reference = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
    headers = [pathlib.Path(name) for name in sorted(set(filter(None, re.split(r"[;\n]", listed.read_text()))))]
    found = problems(source, headers, reference)
    print("\n".join([*found, f"{reference}/index.html: {len(headers)} headers, {len(found)} problems"]))
    sys.exit(1 if found or not headers else 0)


main()
