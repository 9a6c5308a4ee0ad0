#!/usr/bin/env python3
"""msvc.py BUILD [--jobs N] [--filter TEXT]: reads all sources of a build for Windows as Microsoft's compiler would, as far
as clang can: its extensions and its rules instead of GCC's, with all warnings on what either of the two has of its own.
The headers are MinGW's, so what only Microsoft's own would complain of is not seen. Fails on anything that is said.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

TARGET = ["--target=x86_64-w64-mingw32", "-std=c++17"]
MICROSOFT = ["-fms-extensions", "-fms-compatibility", "-fms-compatibility-version=19.29", "-fdelayed-template-parsing"]
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wmicrosoft", "-Wgnu", "-Wgcc-compat", "-Wshorten-64-to-32",
            "-Wdll-attribute-on-redeclaration", "-Wignored-attributes", "-Wvla", "-Wc++20-designator",
            "-Wno-#warnings", "-Wno-builtin-macro-redefined",
            # Both of Qt's and GoogleTest's macros, which Microsoft's compiler takes too.
            "-Wno-gnu-zero-variadic-macro-arguments"]
# Of no meaning to clang, and what it is told in another way here.
DROPPED = re.compile(r"-f|-W|-O|-g|-c$|-std=")
DROPPED_WITH_VALUE = ("-include", "-o")
# What neither warns of, since the headers that give it are there.
WORDS = re.compile(r"__attribute__|__builtin_|\btypeof\b|__PRETTY_FUNCTION__|\bssize_t\b|__int128|\bM_PI\b|pragma GCC"
                   r"|\bstrcasecmp\b|<unistd\.h>|<sys/|<pthread\.h>|<strings\.h>|<bits/")
ROOMS = ("apps", "benchmarks", "devicecontrol", "fuzz", "platform", "tests")
FINDING = re.compile(r"^(/\S+?):(\d+):\d+: (?:fatal )?(?:warning|error): (.*)$")


def output(*words, text=""):
    return subprocess.run(words, input=text, check=True, capture_output=True, text=True).stdout


def headers_of_gcc():
    """The folders of MinGW's standard library: clang looks for those of another version."""
    said = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-xc++", "-E", "-v", "-"], input="", check=True,
                          capture_output=True, text=True).stderr
    folders = said[said.index("#include <...>"):said.index("End of search list")].split("\n")[1:]
    return [folder.strip() for folder in folders if "c++" in folder]


def macros_of_gcc(path):
    """What MinGW's headers ask of a compiler, which clang does not say of itself while it plays Microsoft's."""
    def known(*options):
        return set(output("clang++", *TARGET, *options, "-xc++", "-dM", "-E", "-").splitlines())
    lines = sorted(line for line in known() - known(*MICROSOFT) if re.match(r"#define __G", line))
    path.write_text("\n".join(lines) + "\n")


def words_of(entry):
    words, left = [], iter(shlex.split(entry["command"])[1:])
    for word in left:
        if word in DROPPED_WITH_VALUE:
            next(left)
        elif not DROPPED.match(word):
            words.append(word)
    return words


def findings(entry, options):
    said = subprocess.run(["clang++", *TARGET, *MICROSOFT, *WARNINGS, *options, "-fsyntax-only", *words_of(entry)],
                          cwd=entry["directory"], capture_output=True, text=True)
    found = [match.groups() for match in map(FINDING.match, said.stderr.splitlines()) if match]
    if said.returncode != 0 and not found:
        found = [(entry["file"], "0", said.stderr.strip()[-300:])]
    return found


def words_of_gcc():
    found = []
    for path in (path for room in ROOMS for path in pathlib.Path(room).rglob("*") if path.suffix in (".h", ".cpp")):
        if re.search(r"_(posix|glibc)[._]", path.name):
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            match = WORDS.search(line.split("//")[0])
            if match:
                found.append((str(path.resolve()), str(number), f"{match.group()} is not Microsoft's"))
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--filter", default="")
    arguments = parser.parse_args()
    entries = [entry for entry in json.loads((arguments.build / "compile_commands.json").read_text())
               if str(arguments.build.resolve()) not in entry["file"] and arguments.filter in entry["file"]]
    macros = arguments.build / "msvc-macros.h"
    macros_of_gcc(macros)
    options = ["-nostdinc++", "-imacros", str(macros.resolve())]
    for folder in headers_of_gcc():
        options += ["-isystem", folder]
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        found = sorted(set(sum(pool.map(lambda entry: findings(entry, options), entries), words_of_gcc())))
    for file, line, text in found:
        print(f"{os.path.relpath(file)}:{line}: {text}")
    print(f"{len(entries)} sources read as by Microsoft's compiler, {len(found)} findings")
    sys.exit(1 if found or not entries else 0)


main()
