#!/usr/bin/env python3
"""checkexports.py <nm> <root> <library>...: fails if the shared libraries export anything that is not marked in a header
of a face, if something is marked that they do not export, or if a header of a room is marked. For a DLL, <nm> is objdump.

What is exported is what other libraries and the loaded modules may come to rely on. Templates of Qt and of the standard
library leave weak symbols in everything that uses them; these are nobody's interface and are passed over.
"""
import pathlib
import re
import subprocess
import sys

FACE = re.compile(r"^(platform/[a-z]+|devicecontrol/multichannelserver/common(/gts)?)/[a-z]+\.h$")
MARK = re.compile(r"\bMCS_[A-Z]+_EXPORT\b")
MARKED_CLASS = re.compile(r"\b(?:(?:class|struct) MCS_[A-Z]+_EXPORT |MCS_[A-Z]+_DECLARE_INSTANCE\()([\w:]+)")
MARKED_FUNCTION = re.compile(r"\bMCS_[A-Z]+_EXPORT (?:[\w:<>,*& ]+?[ *&])?(\w+)(?:\(|;| =)")
OF_A_CLASS = re.compile(r"^(?:vtable|VTT|typeinfo|typeinfo name|construction vtable|guard variable) for |"
                        r"^(?:non-virtual|virtual|covariant return) thunk to ")
# By mangled names: of std, of the standard library's own namespace, of Qt's classes and templates, types of functions.
FOREIGN = re.compile(r"^_ZZ?(?:GV|GR)?(?:T[ISV])?(?:NK?)?(?:S[tabsiod]|9__gnu_cxx|\d+[Qq][A-Z]|9QtPrivate)|^_ZT[IS]P?F")


def marked_names(text):
    """The names that a header marks, with the namespaces and classes that they are in."""
    text = re.sub(r"//[^\n]*|^ *#[^\n]*", "", text, flags=re.MULTILINE)
    names, scopes, begin = [], [], 0
    for brace in re.finditer(r"[{};]", text):
        head = text[begin : brace.start()]
        begin = brace.end()
        found = MARKED_CLASS.search(head) or MARKED_FUNCTION.search(head + brace[0])
        if found:
            names.append("::".join([scope for scope in scopes if scope] + [found[1]]))
        if brace[0] == "{":
            scope = re.search(r"\b(?:namespace|class|struct)(?: MCS_[A-Z]+_EXPORT)? ([\w:]+)[^;()]*$", head)
            scopes.append(scope[1] if scope else "")
        elif brace[0] == "}" and scopes:
            scopes.pop()
    return names


def constants(text):
    """The constants of marked classes. Whoever binds one to a reference takes it from the library, on Windows."""
    for found in re.finditer(r"^class MCS_[A-Z]+_EXPORT (\w+).*?^};", text, flags=re.MULTILINE | re.DOTALL):
        for constant in re.finditer(r"^    static constexpr [^(;=]*?(\w+) ?(?:=[^;]*|\{[^;]*\})?;", found[0], flags=re.MULTILINE):
            yield f"{found[1]}::{constant[1]}"


def name_of(symbol):
    """What a symbol belongs to, without arguments of templates and functions and without types."""
    name = OF_A_CLASS.sub("", symbol)
    name = re.sub(r"operator[^\w(]+|operator \w+", "operator", name)
    while True:
        shorter = re.sub(r"<[^<>]*>|\{[^{}]*\}|\[[^\[\]]*\]", "", name)
        if shorter == name:
            break
        name = shorter
    return re.split(r"[ *&]", name.split("(")[0].strip())[-1] or name


def exported_by_dll(objdump, library):
    table = subprocess.run([objdump, "-p", library], check=True, capture_output=True, text=True).stdout
    names = re.findall(r"^\t\[ *\d+\] (\S+)$", table.split("[Ordinal/Name Pointer] Table")[-1], flags=re.MULTILINE)
    written = subprocess.run(["c++filt"], input="\n".join(names), check=True, capture_output=True, text=True).stdout
    return [(True, *pair) for pair in zip(names, written.splitlines())]


def exported(nm, library):
    """(is weak, mangled name, name as people write it) of each symbol."""
    if library.endswith(".dll"):
        yield from exported_by_dll(nm, library)
        return
    texts = [subprocess.run([nm, "-D", "--defined-only", *style, library], check=True, capture_output=True, text=True).stdout
             for style in ([], ["-C"])]
    for mangled, demangled in zip(*(text.splitlines() for text in texts)):
        kind, symbol = re.match(r"^[0-9a-f]* ([A-Za-z]) (\S+)", mangled).groups()
        if kind != "A":
            yield kind in "WVu", symbol, demangled.split(" ", 2)[2]


def main():
    nm, root, libraries = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    problems, interface, found, wanted, written = [], set(), set(), set(), set()
    for header in sorted([*root.glob("platform/**/*.h"), *root.glob("devicecontrol/**/*.h")]):
        text, path = header.read_text(), header.relative_to(root).as_posix()
        if FACE.match(path):
            interface.update(marked_names(text))
            wanted.update(constants(text))
        elif MARK.search(text):
            problems.append(f"{path} is private, and marks what is exported")
    count = 0
    for library in libraries:
        for is_weak, mangled, symbol in exported(nm, library):
            count += 1
            parts = name_of(symbol).split("::")
            written.add("::".join(parts[-2:]))
            owners = interface & {"::".join(parts[: i + 1]) for i in range(len(parts))}
            found |= owners
            if owners or (is_weak and FOREIGN.match(mangled)):
                continue
            problems.append(f"{pathlib.Path(library).name} exports {symbol}, which no header of a face marks")
    problems += [f"{name} is marked and not exported" for name in sorted(interface - found)]
    if libraries[0].endswith(".dll"):
        problems += [f"{name} is a constant of a marked class, and not exported" for name in sorted(wanted - written)]
    for problem in problems:
        print(problem)
    print(f"{count} symbols, {len(interface)} marked names, {len(problems)} problems")
    sys.exit(1 if problems or not count else 0)


main()
