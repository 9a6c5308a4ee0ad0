#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""checkinstaller.py INSTALLER: installs, uses, upgrades and uninstalls in a Wine prefix that knows of nothing else."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

WINE = "/usr/lib/wine/wine64"
SERVER = "/usr/lib/wine/wineserver64"
PATIENCE = 300  # seconds
PROGRAMS = ("mcserver", "mctree", "dimodule")
MENU = "ProgramData/Microsoft/Windows/Start Menu/Programs/MultiChannelServer"


class Check:
    def __init__(self, installer, prefix):
        self.installer, self.drive, self.problems = installer, prefix / "drive_c", []
        self.folder = self.drive / "Program Files/MultiChannelServer"
        self.wine = {name: value for name, value in os.environ.items() if name not in ("WINEPATH", "DISPLAY")}
        self.wine.update(WINEPREFIX=str(prefix), WINEARCH="win64", WINEDEBUG="-all", QT_QPA_PLATFORM="offscreen",
                         WINEDLLOVERRIDES="mscoree,mshtml=")

    def expect(self, what, is_good, said=""):
        print(f"{'ok' if is_good else 'NOT OK'}: {what}", flush=True)
        if not is_good:
            self.problems.append(what)
            print(said, flush=True)

    def run(self, *words):
        done = subprocess.run([WINE, *(str(word) for word in words)], env=self.wine, capture_output=True,
                              stdin=subprocess.DEVNULL, timeout=PATIENCE)
        return done.returncode, (done.stdout + done.stderr).decode("utf-8", "replace").replace("\r", "")

    def wait(self):
        """Until nothing runs any more: the uninstaller goes on as a copy of itself."""
        subprocess.run([SERVER, "-w"], env=self.wine, check=False, timeout=PATIENCE)

    def registry(self, key, name):
        """The value as text, or nothing."""
        code, said = self.run("reg", "query", key, "/v", name, "/reg:64")
        found = re.search(rf"{name}\s+REG_\w+\s+(.*)", said)
        return found[1].strip() if code == 0 and found else ""

    def path(self):
        return self.registry(r"HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment", "Path")

    def service(self):
        return self.registry(r"HKLM\SYSTEM\CurrentControlSet\Services\mcserver", "ImagePath")

    def listed(self):
        return self.registry(r"HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\MultiChannelServer", "DisplayVersion")

    def install(self, what, *options):
        code, said = self.run(self.installer, "/S", *options)
        self.wait()
        self.expect(what, code == 0 and (self.folder / "mctree.exe").is_file(), said)

    def uninstall(self, what):
        code, said = self.run(self.folder / "uninstall.exe", "/S")
        self.wait()
        self.expect(what, code == 0 and not (self.folder / "mctree.exe").exists() and not self.listed(), said)

    def plain(self):
        self.install("installs silently")
        for name in PROGRAMS:
            code, said = self.run(self.folder / f"{name}.exe", "--version")
            self.expect(f"{name} tells its version", code == 0 and re.match(rf"{name} \d+\.\d+\.\d+$", said.strip()), said)
        self.expect("the system lists it", re.match(r"\d+\.\d+\.\d+$", self.listed()), self.listed())
        self.expect("it is in the start menu", (self.drive / MENU / "Console.lnk").is_file())
        self.expect("it is not in the search path", "MultiChannelServer" not in self.path(), self.path())
        self.expect("there is no service", not self.service(), self.service())

    def all(self):
        self.run("wineboot", "--init")
        self.wait()
        before, path = {str(file) for file in self.drive.rglob("*")}, self.path()
        self.plain()
        own = self.folder / "tower.ini"
        kept = self.drive / "ProgramData/MultiChannelServer/mcserver/mcserver.ini"
        kept.parent.mkdir(parents=True)
        for file in (own, kept):
            file.write_text("[Config]\nDeviceAddress=192.0.2.77\n")
        self.install("installs over itself, with search path and service", "/PATH", "/SERVICE")
        self.expect("it is in the search path", self.path() == path + r";C:\Program Files\MultiChannelServer", self.path())
        self.expect("there is the service", "mcserver.exe" in self.service(), self.service())
        self.install("installs over itself once more")
        self.expect("search path and service are kept", self.path().count("MultiChannelServer") == 1 and
                    "mcserver.exe" in self.service(), self.path() + self.service())
        self.uninstall("uninstalls silently")
        self.expect("the search path is as it was", self.path() == path, self.path())
        self.expect("the service is gone", not self.service(), self.service())
        self.expect("what others put there, and configuration, is kept", own.is_file() and kept.is_file())
        own.unlink()
        kept.unlink()
        left = {str(file) for file in self.drive.rglob("*")} - before
        parents = {str(path) for file in (own, kept) for path in file.parents}
        left = {file for file in left - parents if "/users/" not in file and "/Temp" not in file}
        self.expect("nothing else is left", not left, "\n".join(sorted(left)))


def main():
    installer = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as work:
        check = Check(installer, pathlib.Path(work) / "prefix")
        try:
            check.all()
        finally:
            subprocess.run([SERVER, "-k"], env=check.wine, check=False)
            check.wait()
    sys.exit(1 if check.problems else 0)


main()
