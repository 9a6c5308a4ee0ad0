#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""film.py PROGRAMS [FILE]: takes the animated picture of the README anew, from the running programs: a console on a display
with a window manager, worked by keys, beside a server, a module of inputs and other clients. Needs what ./dev uitest does."""
import pathlib
import select
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "tests/desktop"))
from desktop import Desktop, Failed, wait_for  # noqa: E402  (it lies elsewhere)

WIDTH, HEIGHT = 960, 660
LARGEST_BYTES = 3_000_000
COLOURS = 64
PAUSE_S = 0.3  # windows show changes a few times a second
LENGTH_S = (18, 24)
SUPPRESSION = "/MultiChannelServer/Status/Suppression"
MPXORVS = "/MultiChannelServer/DynamicMpxORVs"
OVERVIEW, TRANSMITTERS, EVENTS = "alt+1", "alt+5", "alt+6"
RETRY, RECONNECT = "alt+r", "alt+n"
TUNED = f"{MPXORVS}/Tower/Status/TunedFrequency"
CONFIGURATION = """[General]
DeviceName=Hill
[GTS]
ModuleCount=1
Module0\\Index=0
Module0\\Name=ADAM-6051
Module0\\Address=127.0.0.1
Module0\\PollInterval=50
Module0\\Assignments\\AssignmentCount=12
Module0\\Assignments\\DI_3=121500000
Module0\\Assignments\\DI_4=118100000
Module0\\Labels\\DI_3=Tower main
Module0\\Labels\\DI_4=Ground
"""


class Film(Desktop):
    def __init__(self, programs, folder):
        super().__init__(programs, folder, None)
        self.frames = []  # (file, how long it stays, in seconds)

    def shown(self, seconds):
        """What the window shows now, for so long."""
        file = self.folder / f"{len(self.frames):03}.png"
        self.tool("import", "-window", self.console, "-depth", "8", file)
        if not file.is_file():
            raise Failed("the display gives no picture")
        self.frames.append((file, seconds))

    def settled(self, seconds):
        """The same once nothing changes any more, but what always does at the lower end."""
        last = None
        for _ in range(10):
            select.select([], [], [], PAUSE_S)
            now = self.tool("import", "-window", self.console, "-crop", f"{WIDTH}x{HEIGHT * 6 // 10}+0+0", "-format", "%#", "info:")
            if now and now == last:
                break
            last = now
        self.shown(seconds)

    def mctree(self, *words):
        return self.tool(self.programs / "mctree", "--connect", f"127.0.0.1:{self.port}", *words)

    def begin(self):
        self.start_display(f"{WIDTH + 40}x{HEIGHT + 60}")
        (self.folder / "server.ini").write_text(CONFIGURATION)
        self.start_module()
        self.server = self.start("server", [self.programs / "mcserver", "--name", "mast-north", "--headless", "--listen", "127.0.0.1:0",
                                            "--config", self.folder / "server.ini"])
        self.port = int(wait_for("the server", lambda: self.server.said(r"^listening on .*:(\d+)$")).group(1))
        self.watch()
        self.expect_content("/MultiChannelServer/Status/BootState", "Ready")
        self.expect_content(f"{SUPPRESSION}/AnsweringModules", 1)
        for name, frequency in (("Van", "118.3MHz"), ("Approach", "128.65MHz"), ("Mast", "124.2MHz")):
            self.start(name, [self.programs / "mctree", "--connect", f"127.0.0.1:{self.port}", "hold", f"{MPXORVS}/{name}"])
            self.expect_content(f"{MPXORVS}/{name}/Policy/MayAlterFreqSingle", True)
            self.mctree("set", f"{MPXORVS}/{name}/Request/Frequency", frequency)
        self.start("console", [self.programs / "mcconsole", "--connect", f"127.0.0.1:{self.port}", "--name", "Tower", "--locale", "en",
                               "--config", self.folder / "console.ini"])
        self.console = self.window("^Tower")
        self.expect_content(f"{MPXORVS}/Tower/Status/TunedFrequency", 0)
        self.tool("xdotool", "windowsize", "--sync", self.console, WIDTH, HEIGHT)
        self.tool("xdotool", "windowmove", self.console, 10, 30)
        self.use(self.console)

    def tune(self):
        self.settled(1.6)
        self.press_here("ctrl+l")
        for letter in "121.5":
            self.type_here(letter)
            self.shown(0.25)
        self.press_here("Return")
        self.expect_content(TUNED, 121500000)
        self.settled(2.0)

    def be_blanked(self):
        self.module.tell("key 3")
        self.expect_content(TUNED, 0)
        self.settled(2.4)
        self.press_here(RETRY)
        self.settled(1.2)
        self.press_here(TRANSMITTERS)
        self.settled(2.2)
        self.module.tell("release 3")
        self.expect_content(TUNED, 121500000)
        self.press_here(OVERVIEW)
        self.settled(1.8)

    def lose_module(self):
        self.module.kill()
        self.expect_content(f"{SUPPRESSION}/AnsweringModules", 0)
        self.settled(2.6)
        self.press_here(EVENTS)
        self.settled(2.6)
        self.start_module()
        self.press_here(OVERVIEW)
        self.press_here(RECONNECT)
        self.expect_content(f"{SUPPRESSION}/AnsweringModules", 1)
        self.settled(2.0)

    def save(self, file):
        words = ["convert", "-loop", "0"]
        for frame, seconds in self.frames:
            words += ["-delay", round(seconds * 100), frame]
        self.tool(*words, "+dither", "-colors", COLOURS, "-layers", "OptimizePlus", file)
        if not file.is_file() or file.stat().st_size > LARGEST_BYTES:
            raise Failed(f"{file} is not there, or too large")
        length = sum(seconds for _, seconds in self.frames)
        if not LENGTH_S[0] <= length <= LENGTH_S[1]:
            raise Failed(f"it takes {length:.1f} s")
        print(f"{file}: {len(self.frames)} pictures, {length:.1f} s, {file.stat().st_size // 1000} kB")


def main():
    file = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else HERE / "film.gif").resolve()
    with tempfile.TemporaryDirectory() as folder:
        film = Film(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(folder))
        with film.running:
            film.begin()
            film.tune()
            film.be_blanked()
            film.lose_module()
            film.save(file)


main()
