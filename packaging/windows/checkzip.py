#!/usr/bin/env python3
"""checkzip.py ZIP LINUX_PROGRAMS: unpacks the archive and uses it, in a Wine prefix that knows of nothing else.

Server, command line, console and module from the archive with each other, and with those that run on Linux.
"""
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import threading

WINE = "/usr/lib/wine/wine64"
PATIENCE = 120  # seconds
SETTINGS = """[GTS]
ModuleCount=1
Module0\\Index=0
Module0\\Name=ADAM-6051
Module0\\Address=127.0.0.1
Module0\\PollInterval=100
Module0\\Assignments\\AssignmentCount=12
Module0\\Assignments\\DI_0=121500000
"""
STATE = "/MultiChannelServer/Status/BootState"


class Program:
    """One that runs until it is told to end, and says where it listens."""

    def __init__(self, words, environment):
        self.process = subprocess.Popen(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                        env=environment, start_new_session=True)
        self.said = []
        self.is_listening = threading.Event()
        self.port = None
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.said.append(line.decode("utf-8", "replace").rstrip())
            found = re.match(r"listening on \S+:(\d+)$", self.said[-1])
            if found:
                self.port = found[1]
                self.is_listening.set()
        self.is_listening.set()

    def __enter__(self):
        if not self.is_listening.wait(PATIENCE) or not self.port:
            self.__exit__()
            raise RuntimeError("does not listen: " + "\n".join(self.said))
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()


class Check:
    def __init__(self, folder, linux, prefix):
        self.folder, self.linux, self.problems = folder, linux, []
        self.wine = {name: value for name, value in os.environ.items() if name not in ("WINEPATH", "DISPLAY")}
        self.wine.update(WINEPREFIX=str(prefix), WINEARCH="win64", WINEDEBUG="-all", QT_QPA_PLATFORM="offscreen",
                         WINEDLLOVERRIDES="mscoree,mshtml=")
        self.here = dict(os.environ, QT_QPA_PLATFORM="offscreen")

    def windows(self, name):
        return [WINE, str(self.folder / f"{name}.exe")]

    def run(self, words, environment):
        done = subprocess.run(words, env=environment, capture_output=True, stdin=subprocess.DEVNULL, timeout=PATIENCE)
        return done.returncode, (done.stdout + done.stderr).decode("utf-8", "replace").replace("\r", "")

    def expect(self, what, is_good, said=""):
        print(f"{'ok' if is_good else 'NOT OK'}: {what}", flush=True)
        if not is_good:
            self.problems.append(what)
            print(said)

    def get(self, what, mctree, environment, port, *words):
        code, said = self.run([*mctree, "--connect", f"127.0.0.1:{port}", "get", "--wait", "=Ready", "--timeout", "60000",
                               STATE], environment)
        self.expect(what, code == 0 and "Ready" in said, said)

    def server_of_windows(self):
        settings = self.folder / "server.ini"
        settings.write_text(SETTINGS)
        with Program([*self.windows("dimodule"), "--listen", "127.0.0.1:0"], self.wine) as module:
            self.expect("dimodule listens", True)
            environment = dict(self.wine, MCS_MODBUS_PORT=module.port)
            with Program([*self.windows("mcserver"), "--headless", "--listen", "127.0.0.1:0", "--config",
                          f"Z:{settings}"], environment) as server:
                self.expect("mcserver listens", True)
                self.get("mctree of Windows at a server of Windows", self.windows("mctree"), self.wine, server.port)
                self.get("mctree of Linux at a server of Windows", [str(self.linux / "mctree")], self.here, server.port)
                pictures = self.folder / "pictures"
                pictures.mkdir()
                code, said = self.run([*self.windows("mcconsole"), "--connect", f"127.0.0.1:{server.port}", "--config",
                                       f"Z:{self.folder}/console.ini", "--locale", "de", "--screenshot", f"Z:{pictures}"],
                                      self.wine)
                count = len(list(pictures.glob("*.png")))
                self.expect(f"mcconsole takes pictures ({count})", code == 0 and count >= 5, said)

    def server_of_linux(self):
        with Program([str(self.linux / "mcserver"), "--headless", "--listen", "127.0.0.1:0", "--config",
                      str(self.folder / "linux.ini")], self.here) as server:
            self.get("mctree of Windows at a server of Linux", self.windows("mctree"), self.wine, server.port)

    def all(self):
        self.run([WINE, "wineboot", "--init"], self.wine)
        for name in ("mcserver", "mctree", "dimodule"):
            code, said = self.run([*self.windows(name), "--version"], self.wine)
            self.expect(f"{name} tells its version", code == 0 and re.match(rf"{name} \d+\.\d+\.\d+$", said.strip()), said)
        self.server_of_windows()
        self.server_of_linux()


def main():
    archive, linux = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    with tempfile.TemporaryDirectory() as work:
        subprocess.run(["cmake", "-E", "tar", "xf", archive], cwd=work, check=True)
        folder = pathlib.Path(work) / archive.stem
        check = Check(folder, linux, pathlib.Path(work) / "prefix")
        try:
            check.all()
        finally:
            subprocess.run(["/usr/lib/wine/wineserver64", "-k"], env=check.wine, check=False)
            subprocess.run(["/usr/lib/wine/wineserver64", "-w"], env=check.wine, check=False)
    sys.exit(1 if check.problems else 0)


main()
