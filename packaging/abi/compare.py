#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""compare.py <reader> <list> <library>... [--write]: compares what libraries export with what is listed, name by name.

<reader> is objdump for DLLs, nm for shared libraries of Linux. What has gone breaks programs that were linked with it; what
is new is to be listed with the change that brings it: --write lists what there is. docs/packages.md tells what follows.
"""
import pathlib
import re
import subprocess
import sys


# Of std, of the standard library's own namespace, of Qt: instances of templates, nobody's interface.
FOREIGN = re.compile(r"^_ZT[ISV](?:N?K?)(?:S[tabsiod]|9__gnu_cxx|\d+[Qq][A-Z]|9QtPrivate|P?F)|^_ZT[ISV]Z")


def exported_on_linux(nm, library):
    """What a program can be linked with: functions and data that only this library has, tables of virtual functions and what
    casts go by. What is defined in headers is in the program too, and differs between compilers, as does which of the two
    constructors of an abstract class there is."""
    table = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    for kind, name in re.findall(r"^[0-9a-f]* ([A-Za-z]) (\S+)$", table, flags=re.MULTILINE):
        is_table = re.match(r"_ZT[VI]", name)
        if not FOREIGN.match(name) and (is_table or (kind in "TDRB" and not name.startswith("_ZT"))):
            yield re.sub(r"([CD])1(?=E)", r"\g<1>2", name)


def exported(objdump, library):
    if ".so" in pathlib.Path(library).name:
        return exported_on_linux(objdump, library)
    table = subprocess.run([objdump, "-p", library], check=True, capture_output=True, text=True).stdout
    return re.findall(r"^\t\[ *\d+\] (\S+)$", table.split("[Ordinal/Name Pointer] Table")[-1], flags=re.MULTILINE)


def main():
    objdump, listed, *libraries = [word for word in sys.argv[1:] if word != "--write"]
    there = sorted({f"{pathlib.Path(library).name.split('.so')[0]} {name}" for library in libraries for name in exported(objdump, library)})
    if "--write" in sys.argv:
        pathlib.Path(listed).write_text("\n".join(there) + "\n")
    known = pathlib.Path(listed).read_text().split("\n")[:-1]
    for name in sorted(set(known) - set(there)):
        print(f"gone: {name}")
    for name in sorted(set(there) - set(known)):
        print(f"not listed: {name}")
    print(f"{len(there)} exported, {len(known)} listed")
    sys.exit(0 if there and set(there) == set(known) else 1)


main()
