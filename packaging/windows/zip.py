#!/usr/bin/env python3
"""zip.py PREFIX ZIP: packs what was installed for Windows into an archive that runs as it lies there.

Beside the programs lie all libraries that they need, found by what each takes from which; whatever is neither in one of
the folders with libraries nor Windows' own is missing, and said so. Of the same programs and libraries it makes the same
archive, whenever that is: all times are SOURCE_DATE_EPOCH, or that of the last commit.
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

HERE = pathlib.Path(__file__).resolve().parent
TRIPLE = "x86_64-w64-mingw32"
WINDOWS = pathlib.Path("/usr/lib/x86_64-linux-gnu/wine/x86_64-windows")  # as Wine has them, by the same names
PROGRAMS = ["mcserver", "mcconsole", "mctree", "dimodule"]
PLUGINS = ["platforms/qwindows.dll", "platforms/qoffscreen.dll", "platforms/qminimal.dll", "styles/qwindowsvistastyle.dll"]
# Programs search plugins and translations beside themselves, wherever the library was built.
CONFIGURATION = "[Paths]\nPrefix = .\nPlugins = .\nTranslations = translations\n"
DOCUMENTS = ["README.md", "LICENSE", "CHANGELOG.md", "docs/server.md", "docs/console.md", "docs/mctree.md", "docs/dimodule.md",
             "docs/windows.md", "docs/packages.md"]


def output(*words):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True).stdout


def source_time():
    return int(os.environ.get("SOURCE_DATE_EPOCH") or output("git", "-C", HERE, "log", "-1", "--format=%ct"))


def pack(target, archive):
    date = time.gmtime(source_time())[:6]
    with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as packed:
        for path in sorted(path for path in target.rglob("*") if path.is_file()):
            entry = zipfile.ZipInfo(path.relative_to(target.parent).as_posix(), date)
            entry.external_attr = (0o100755 if path.suffix in (".exe", ".dll") else 0o100644) << 16
            packed.writestr(entry, path.read_bytes(), zipfile.ZIP_DEFLATED, 9)


def folders():
    cache = pathlib.Path(output(HERE / "dependencies.sh", "--where").strip())
    compiler = pathlib.Path(output(f"{TRIPLE}-g++-posix", "-print-file-name=libstdc++-6.dll").strip()).parent
    return cache, [cache / "qt/bin", cache / "qwt/bin", cache / "openssl/bin", cache / "libmodbus/bin", compiler,
                   pathlib.Path(f"/usr/{TRIPLE}/lib")]


def imports(file):
    return re.findall(r"DLL Name: (\S+)", output(f"{TRIPLE}-objdump", "-p", file))


def add_libraries(target, searched):
    """Copies what the programs and plugins need, and what that needs."""
    system = {path.name.lower() for path in WINDOWS.glob("*")}
    left = [path for path in target.rglob("*") if path.suffix in (".exe", ".dll")]
    seen, missing = {path.name.lower() for path in left}, []
    while left:
        file = left.pop()
        for name in imports(file):
            if name.lower() in seen or name.lower() in system:
                continue
            seen.add(name.lower())
            found = next((folder / name for folder in searched if (folder / name).is_file()), None)
            if found is None:
                missing.append(f"{name}, which {file.name} needs")
            else:
                shutil.copy(found, target)
                left.append(target / name)
    if missing:
        sys.exit("zip.py: there is no " + "; no ".join(missing))


def add_licences(target, cache):
    licences = target / "licences"
    licences.mkdir()
    for name, library in (("qt", "Qt5Core"), ("qwt", "qwt-qt5"), ("openssl", "libcrypto"), ("libmodbus", "libmodbus")):
        if any(target.glob(f"{library}*.dll")):
            shutil.copy(cache / name / "LICENSE", licences / f"{name}.txt")
    for name, package in (("gcc", "gcc-mingw-w64-base"), ("mingw-w64", "mingw-w64-x86-64-dev")):
        shutil.copy(f"/usr/share/doc/{package}/copyright", licences / f"{name}.txt")


def main():
    prefix, archive = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve()
    os.environ["SOURCE_DATE_EPOCH"] = str(source_time())  # strip notes the time, too
    cache, searched = folders()
    with tempfile.TemporaryDirectory() as work:
        target = pathlib.Path(work) / archive.stem
        target.mkdir()
        for program in PROGRAMS:
            shutil.copy(prefix / "bin" / f"{program}.exe", target)
        for library in (prefix / "bin").glob("*.dll"):
            shutil.copy(library, target)
        shutil.copytree(prefix / "bin/translations", target / "translations")
        for plugin in PLUGINS:
            (target / plugin).parent.mkdir(exist_ok=True)
            shutil.copy(cache / "qt/plugins" / plugin, target / plugin)
        (target / "qt.conf").write_text(CONFIGURATION)
        add_libraries(target, searched)
        for path in target.rglob("*"):
            if path.suffix in (".exe", ".dll"):
                output(f"{TRIPLE}-strip", "--strip-unneeded", path)
        add_licences(target, cache)
        for document in DOCUMENTS:
            (target / document).parent.mkdir(exist_ok=True)
            shutil.copy(HERE.parent.parent / document, target / document)
        archive.unlink(missing_ok=True)
        pack(target, archive)
        files = [path for path in target.rglob("*") if path.is_file()]
        size = sum(path.stat().st_size for path in files)
        print(f"{archive}: {archive.stat().st_size / 1e6:.1f} MB, {len(files)} files of {size / 1e6:.1f} MB")


main()
