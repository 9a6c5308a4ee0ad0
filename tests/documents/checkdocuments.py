#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""checkdocuments.py SOURCE [PROGRAM...]: what the documents in SOURCE say of things beside them is true.

- A link leads to a file or folder, and to a heading of it.
- Code that is said to come from a file stands there.
- An option of a program stands in its help.
- Nothing is left to be written."""
import pathlib
import re
import subprocess
import sys
import textwrap

DOCUMENTS = ("*.md", "docs/*.md", "docs/decisions/*.md", "examples/*.md", "deploy/*/*.md")
LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*")
FROM = re.compile(r"<!-- from (\S+) -->\n```\w*\n(.*?)^```$", re.MULTILINE | re.DOTALL)
LEFT = re.compile(r"\b(?:TO ?DO|FIXME|TBD|XXX)\b|<[A-Z][A-Z ]*>")


def without_code(text):
    """The text with blanks for code, so that what is left has its place."""
    blank = lambda match: re.sub(r"[^\n]", " ", match[0])
    text = re.sub(r"^```.*?^```$", blank, text, flags=re.MULTILINE | re.DOTALL)
    text = re.sub(r"^    .*$", blank, text, flags=re.MULTILINE)
    return re.sub(r"`[^`\n]*`", blank, text)


def anchors_of(document):
    headings = re.findall(r"^#+ +(.*)$", re.sub(r"^```.*?^```$", "", document.read_text(), flags=re.M | re.S), flags=re.M)
    seen = {}
    for heading in headings:
        heading = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading)
        anchor = re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")
        count = seen.get(anchor, 0)
        seen[anchor] = count + 1
        yield f"{anchor}-{count}" if count else anchor


def links(document, text):
    for link in LINK.findall(without_code(text)):
        if re.match(r"\w+:", link):
            continue
        path, _, anchor = link.partition("#")
        target = (document.parent / path).resolve() if path else document
        if not target.exists():
            yield f"'{link}' leads nowhere"
        elif anchor and anchor not in anchors_of(target):
            yield f"'{link}': there is no such heading"


def lines_of(code):
    return [line for line in textwrap.dedent(code).strip("\n").splitlines()]


def snippets(source, text):
    for name, code in FROM.findall(text):
        file = source / name
        wanted = lines_of(code)
        there = file.read_text().splitlines() if file.is_file() else []
        places = range(len(there) - len(wanted) + 1)
        if not any(lines_of("\n".join(there[place:place + len(wanted)])) == wanted for place in places):
            yield f"{name} has no '{wanted[0]} ...' as it stands here"


def help_of(program, *topic):
    said = subprocess.run([program, *topic], capture_output=True, text=True, check=True, stdin=subprocess.DEVNULL)
    return said.stdout


def known_options(source, programs):
    """By the name of the program what options it has."""
    known = {}
    for program in programs:
        text = help_of(program, "--help")
        if program.stem == "mctree":  # each command has options of its own
            commands = re.findall(r"^  ([a-z]+) ", text.split("\n\n")[2], flags=re.MULTILINE)
            text += "".join(help_of(program, "help", command) for command in commands)
        known[program.stem] = set(OPTION.findall(text)) | {"--help", "--version"}
    dev = source / "dev"
    known["./dev"] = set(OPTION.findall(dev.read_text())) if dev.is_file() else set()
    return known


def commands_of(text):
    """The lines of code, and code within lines, that may hold a command."""
    text = re.sub(r"\\\n\s*", " ", text)
    yield from (line.strip() for line in re.findall(r"^    .*$", text, flags=re.MULTILINE))
    yield from re.findall(r"`([^`\n]+)`", text)


def options(known, text):
    everything = set().union(*known.values())
    for command in commands_of(text):
        program = "" if command.startswith("--") else None
        for word in re.split(r"\s#|\s", command):
            name = word.lstrip("$(").rsplit("/", 1)[-1] if word != "./dev" else word
            if name in known:
                program = name
            elif word in ("|", "&&", ";", "then", "||"):
                program = None
            if word.startswith("#"):
                break
            for option in OPTION.findall(word) if word.startswith("--") else ():
                if program is not None and option not in (known[program] if program else everything):
                    yield f"{program + ' has no' if program else 'no program of ours has'} {option}: {command}"


def left(text):
    return (f"'{match}' is left to be written" for match in LEFT.findall(without_code(text)))


def main():
    source, programs = pathlib.Path(sys.argv[1]).resolve(), [pathlib.Path(word) for word in sys.argv[2:]]
    known = known_options(source, programs)
    documents = sorted(document for pattern in DOCUMENTS for document in source.glob(pattern))
    problems = []
    for document in documents:
        text = document.read_text()
        checks = (links(document, text), snippets(source, text), options(known, text) if programs else (), left(text))
        problems += [f"{document.relative_to(source)}: {problem}" for check in checks for problem in check]
    for problem in problems:
        print(problem)
    print(f"{len(documents)} documents, {len(problems)} problems")
    sys.exit(1 if problems or not documents else 0)


main()
