#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""make.py PROGRAM... [--check]: writes the completions of programs for bash, zsh and fish from what --help says, beside this
file; with --check compares them with what stands there and says what differs. mctree's know the tree, and are made by hand.
"""
import os
import pathlib
import re
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
NOTE = "# SPDX-License-Identifier: Apache-2.0\n# Completion of {0} for {1}, made from its --help by make.py.\n"
# What can stand behind an option, where that is neither a file nor a directory.
CHOICES = {
    "locale": ["de", "en"],
    "pattern": ["walk", "blink", "random"],
    "fault": ["none", "delay", "reset", "refused", "silence", "half", "transaction", "function", "length", "garbage",
              "exception", "duplicate", "idle", "storm"],
}


def options(program):
    """([names], value or "", description) of each option."""
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    text = subprocess.run([program, "--help"], check=True, capture_output=True, text=True, env=environment,
                          stdin=subprocess.DEVNULL).stdout
    section = re.search(r"^Options:\n((?:  .*\n)+)", text, flags=re.MULTILINE)[1]
    found = []
    for line in section.splitlines():
        option = re.match(r"^  ((?:-\w, )?--?[\w-]+)(?: <(.+?)>)?(?:  +(.*))?$", line)
        if option:
            found.append([option[1].split(", "), option[2] or "", option[3] or ""])
        else:
            found[-1][2] += " " + line.strip()
    # The first sentence says which option it is.
    return [(names, value, re.split(r"(?<=\w)[.;:] | \(|\.$", said.strip())[0]) for names, value, said in found]


def kind(names, value):
    choice = CHOICES.get(names[-1].lstrip("-"))
    if choice:
        return " ".join(choice)
    if "DIRECTORY" in value.upper():
        return "directories"
    return "files" if value in ("FILE", "make-cluster") else "nothing"


def for_bash(name, all_options):
    cases = {}
    for names, value, _ in all_options:
        if value:
            cases.setdefault(kind(names, value), []).extend(names)
    lines = [NOTE.format(name, "bash"), f"_{name}() {{", "    local current=${COMP_WORDS[COMP_CWORD]} "
             "previous=${COMP_WORDS[COMP_CWORD - 1]}", "    COMPREPLY=()", "    case $previous in"]
    for what, names in cases.items():
        done = {"files": 'COMPREPLY=($(compgen -f -- "$current")); return',
                "directories": 'COMPREPLY=($(compgen -d -- "$current")); return',
                "nothing": "return"}.get(what, f'COMPREPLY=($(compgen -W "{what}" -- "$current")); return')
        lines.append(f"        {'|'.join(names)}) {done} ;;")
    words = " ".join(option for names, _, _ in all_options for option in names)
    lines += ["    esac", f'    COMPREPLY=($(compgen -W "{words}" -- "$current"))', "}", "", f"complete -F _{name} {name}"]
    return "\n".join(lines) + "\n"


def for_zsh(name, all_options):
    lines = [f"#compdef {name}\n" + NOTE.format(name, "zsh"), "_arguments -S \\"]
    for names, value, said in all_options:
        said = said.replace("[", "\\[").replace("]", "\\]").replace(":", "\\:").replace("'", "'\\''")
        done = kind(names, value)
        shown = value.replace(":", "\\:").replace("[", "").replace("]", "")
        taken = {"files": "_files", "directories": "_files -/", "nothing": ""}.get(done, f"({done})")
        argument = f":{shown}:{taken}" if value else ""
        if len(names) > 1:
            lines.append(f"    '(- *)'{{{','.join(names)}}}'[{said}]{argument}' \\")
        else:
            # What can be given several times, and what cannot.
            lines.append(f"    '{'*' if name == 'dimodule' and names[0] == '--listen' else ''}{names[0]}[{said}]{argument}' \\")
    return "\n".join(lines)[:-2] + "\n"


def for_fish(name, all_options):
    lines = [NOTE.format(name, "fish"), f"complete -c {name} -f"]
    for names, value, said in all_options:
        shown = " ".join(f"-l {option[2:]}" if option.startswith("--") else f"-s {option[1:]}" for option in names)
        done = kind(names, value) if value else ""
        taken = {"": "", "files": " -rF", "directories": " -x -a '(__fish_complete_directories)'", "nothing": " -x"}.get(
            done, f" -x -a '{done}'")
        said = said.replace("\\", "\\\\").replace("'", "\\'")
        lines.append(f"complete -c {name} {shown}{taken} -d '{said}'")
    return "\n".join(lines) + "\n"


def main():
    programs = [word for word in sys.argv[1:] if word != "--check"]
    differ = 0
    for program in programs:
        name = pathlib.Path(program).stem
        found = options(program)
        for file, text in ((f"{name}.bash", for_bash(name, found)), (f"_{name}", for_zsh(name, found)),
                           (f"{name}.fish", for_fish(name, found))):
            if "--check" not in sys.argv:
                (HERE / file).write_text(text)
            elif not (HERE / file).is_file() or (HERE / file).read_text() != text:
                print(f"packaging/completions/{file} is not what --help of {name} makes it: run make.py")
                differ += 1
    sys.exit(1 if differ or not programs else 0)


main()
