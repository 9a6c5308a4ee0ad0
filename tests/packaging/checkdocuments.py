#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""checkdocuments.py PACKAGING PROGRAM...: the manual page of each program names every option that --help names, and no other;
bash completes its options, and offers files where an option takes one."""
import os
import pathlib
import re
import subprocess
import sys

COMPLETE = """. "$1"
COMP_LINE="$2 $3" COMP_POINT=${#COMP_LINE} COMP_WORDS=($2 $3) COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
"_$2"; printf '%s\\n' "${COMPREPLY[@]}" """
OPTION = re.compile(r"(?<![\w-])(?:--[a-z][a-z-]+|-[a-zA-Z])(?![\w-])")


def options_of_help(program):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    text = subprocess.run([program, "--help"], check=True, capture_output=True, text=True, env=environment,
                          stdin=subprocess.DEVNULL).stdout
    # Of a program that writes its own help they stand in its texts, too.
    lines = re.findall(r"^ +(-.*?)(?:  |$)", text, flags=re.MULTILINE)
    return {option for line in lines for option in OPTION.findall(re.sub(r"<[^>]*>", "", line))}


def options_of_manual(page):
    text = re.sub(r"\\f[BIR]", "", page.read_text().replace("\\-", "-"))
    section = re.search(r"^\.SH OPTIONS\n(.*?)^\.SH ", text, flags=re.MULTILINE | re.DOTALL)[1]
    heads = re.findall(r"^\.TP\n(.*)$", section, flags=re.MULTILINE)
    return {option for head in heads for option in OPTION.findall(head)}, text


def completed(packaging, name, words):
    said = subprocess.run(["bash", "-c", COMPLETE, "bash", packaging / f"completions/{name}.bash", name, words], check=True,
                          capture_output=True, text=True, cwd=packaging).stdout
    return said.split()


def problems_of(packaging, program):
    name = pathlib.Path(program).stem
    page = next(iter(packaging.glob(f"man/{name}.[1-8]")), None)
    if page is None:
        yield f"{name} has no manual page"
        return
    told, (written, text) = options_of_help(program), options_of_manual(page)
    if len(told) < 4:
        yield f"the help of {name} is not understood: {told}"
    for option in sorted(told - written):
        yield f"{page.name} does not tell of {option}"
    # What only one command of several takes stands in the help of that command.
    for option in sorted(written - told if name != "mctree" else ()):
        yield f"{page.name} tells of {option}, which {name} does not have"
    for heading in ("NAME", "SYNOPSIS", "DESCRIPTION", '"EXIT STATUS"', '"SEE ALSO"'):
        if f"\n.SH {heading}\n" not in text:
            yield f"{page.name} has no section {heading}"
    missing = {option for option in told if option.startswith("--")} - set(completed(packaging, name, "--"))
    for option in sorted(missing if name != "mctree" else ()):
        yield f"bash does not complete {option} of {name}"
    for option in sorted(told & {"--config", "--script"}):
        if "completions" not in completed(packaging, name, f"{option} comp"):
            yield f"bash offers no files behind {option} of {name}"


def main():
    packaging, programs = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2:]
    problems = [problem for program in programs for problem in problems_of(packaging, program)]
    for problem in problems:
        print(problem)
    print(f"{len(programs)} programs, {len(problems)} problems")
    sys.exit(1 if problems or not programs else 0)


main()
