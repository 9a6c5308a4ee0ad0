#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes other versions of packages out of what was built, without building them: for the tests of upgrades."""
import os
import pathlib
import re
import shutil
import subprocess
import tempfile


def run(*words):
    return subprocess.run([str(word) for word in words], check=True, capture_output=True, text=True).stdout


def field(package, name):
    return run("dpkg-deb", "--field", package, name).strip()


def unpacked(package, work):
    folder = pathlib.Path(work) / "root"
    run("dpkg-deb", "--raw-extract", package, folder)
    return folder


def packed(folder, target):
    run("dpkg-deb", "--root-owner-group", "-Zgzip", "-z1", "--build", folder, target)


def renew_sums(folder):
    """What dpkg compares files with."""
    sums = [run("md5sum", path).replace(f"{folder}/", "") for path in sorted(folder.rglob("*"))
            if path.is_file() and not path.is_symlink() and "DEBIAN" not in path.parts]
    (folder / "DEBIAN/md5sums").write_text("".join(sums))


def with_version(package, old, new, target, changes=None):
    """The package as of another version; changes: (path, what to do with its text)."""
    upstream = {old: new, old.rsplit("-", 1)[0]: new.rsplit("-", 1)[0]}
    with tempfile.TemporaryDirectory() as work:
        folder = unpacked(package, work)
        control = folder / "DEBIAN/control"
        text = control.read_text()
        for before, after in upstream.items():
            text = text.replace(f"Version: {before}\n", f"Version: {after}\n")
            text = re.sub(rf"((?:multichannelserver[\w.-]*|mc\w+|dimodule) \([>=]+ ){re.escape(before)}\)", rf"\g<1>{after})", text)
        control.write_text(text)
        for path, change in changes or ():
            if (folder / path).is_file():
                (folder / path).write_text(change((folder / path).read_text()))
        renew_sums(folder)
        packed(folder, target / package.name.replace(f"_{old}_", f"_{new}_"))


def as_other_library(package, old, new, target):
    """A package with libraries as of another interface: another name of the package, of the files, and in the files."""
    with tempfile.TemporaryDirectory() as work:
        folder = unpacked(package, work)
        name = field(package, "Package")
        other = name.removesuffix(old) + new
        control = folder / "DEBIAN/control"
        control.write_text(re.sub(rf"(multichannelserver[a-z-]*){re.escape(old)}\b", rf"\g<1>{new}", control.read_text()))
        # What tells dpkg-shlibdeps of the libraries is about the old ones.
        (folder / "DEBIAN/shlibs").unlink(missing_ok=True)
        for path in sorted(folder.glob("usr/lib/*/*")):
            moved = path.with_name(path.name.replace(f".so.{old}", f".so.{new}"))
            if path.is_symlink():
                moved.symlink_to(os.readlink(path).replace(f".so.{old}", f".so.{new}"))
                path.unlink()
                continue
            shutil.move(path, moved)
            run("patchelf", "--set-soname", f"{path.name.split('.so.')[0]}.so.{new}", moved)
            for needed in run("patchelf", "--print-needed", moved).split():
                if needed.startswith("libMultiChannelServer"):
                    run("patchelf", "--replace-needed", needed, needed.replace(f".so.{old}", f".so.{new}"), moved)
        for folder_of_name in (folder / "usr/share/doc" / name, folder / "usr/share/lintian/overrides" / name):
            if folder_of_name.exists():
                shutil.move(folder_of_name, folder_of_name.with_name(other))
        renew_sums(folder)
        packed(folder, target / package.name.replace(name, other))
