#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""installer.py ZIP INSTALLER: makes an installer of what is in the archive, by makensis."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent


def windows(path):
    return str(path).replace("/", "\\")


def write_lists(content, target):
    """What is put there, and the same to be taken away: file by file, so that nothing else goes."""
    put, take = [], []
    folders = sorted({path.parent.relative_to(content) for path in content.rglob("*") if path.is_file()})
    for folder in folders:
        place = "$INSTDIR" if folder == pathlib.Path(".") else f"$INSTDIR\\{windows(folder)}"
        put.append(f'SetOutPath "{place}"')
        for path in sorted((content / folder).iterdir()):
            if path.is_file():
                put.append(f'File "{path}"')
                take.append(f'Delete "{place}\\{path.name}"')
    every = {parent for folder in folders for parent in [folder, *folder.parents] if parent != pathlib.Path(".")}
    for folder in sorted(every, key=lambda path: (-len(path.parts), path)):
        take.append(f'RMDir "$INSTDIR\\{windows(folder)}"')
    # The byte order mark tells makensis what the lists are written in.
    (target / "install.nsh").write_text("\n".join(put) + "\n", encoding="utf-8-sig")
    (target / "uninstall.nsh").write_text("\n".join(take) + "\n", encoding="utf-8-sig")


def main():
    archive, installer = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    version = re.search(r"-(\d+\.\d+\.\d+)-", archive.name)[1]
    with tempfile.TemporaryDirectory() as work:
        subprocess.run(["cmake", "-E", "tar", "xf", archive], cwd=work, check=True)
        content, lists = pathlib.Path(work) / archive.stem, pathlib.Path(work) / "lists"
        lists.mkdir()
        write_lists(content, lists)
        (pathlib.Path(work) / "LICENSE").write_bytes((content / "LICENSE").read_bytes())
        subprocess.run(["makensis", "-V2", "-INPUTCHARSET", "UTF8", f"-DVERSION={version}", f"-DFILES={lists}",
                        f"-DOUTPUT={installer}", HERE / "installer.nsi"], check=True, env=dict(os.environ, LC_ALL="C.UTF-8"))
    print(f"{installer}: {installer.stat().st_size / 1e6:.1f} MB")


main()
