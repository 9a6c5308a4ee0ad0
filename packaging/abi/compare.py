#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""compare.py <objdump> <list> <library>... [--write]: compares what the DLLs export with what is listed, name by name.

What has gone breaks programs that were linked with it; what is new is to be listed with the change that brings it:
--write lists what there is.
"""
import pathlib
import re
import subprocess
import sys


def exported(objdump, library):
    table = subprocess.run([objdump, "-p", library], check=True, capture_output=True, text=True).stdout
    return re.findall(r"^\t\[ *\d+\] (\S+)$", table.split("[Ordinal/Name Pointer] Table")[-1], flags=re.MULTILINE)


def main():
    objdump, listed, *libraries = [word for word in sys.argv[1:] if word != "--write"]
    there = sorted(f"{pathlib.Path(library).name} {name}" for library in libraries for name in exported(objdump, library))
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
