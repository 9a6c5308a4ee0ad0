#!/usr/bin/env python3
"""session.py PROGRAMS [--pictures FOLDER]: an evening at two consoles, as operators have it.

Starts a display, a window manager, a module of inputs, a server with its window and two consoles; works them by keys, as
an operator would; kills the server in the middle. What comes of it is asked of the server by mctree, and read off the
windows' titles. Ends with 0 if every step was as expected; else it names the step. Takes a picture after each.
"""
import argparse
import contextlib
import json
import os
import pathlib
import re
import select
import signal
import subprocess
import sys
import tempfile
import time

PATIENCE = 30  # seconds, for what does not happen
MPXORVS = "/MultiChannelServer/DynamicMpxORVs"
STATUS = "/MultiChannelServer/Status"
CONFIGURATION = """[GTS]
ModuleCount=1
Module0\\Index=0
Module0\\Name=ADAM-6051
Module0\\Address=127.0.0.1
Module0\\PollInterval=50
Module0\\Assignments\\AssignmentCount=12
Module0\\Assignments\\DI_3=121500000
Module0\\Labels\\DI_3=Tower main
"""


class Failed(Exception):
    """A step did not come to what it should."""


def wait_for(what, is_there, tell=str):
    """Until is_there() has something, which is returned. tell() adds to what is said if it never has."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        found = is_there()
        if found:
            return found
        select.select([], [], [], 0.05)
    raise Failed(f"{what} did not come within {PATIENCE} s{tell()}")


class Program:
    """A program that runs until it is stopped, or killed when the session ends."""

    def __init__(self, words, environment, log):
        self.log = open(log, "w+")
        self.process = subprocess.Popen([str(word) for word in words], env=environment, stdin=subprocess.PIPE, text=True,
                                        stdout=self.log, stderr=subprocess.STDOUT)

    def said(self, pattern):
        text = pathlib.Path(self.log.name).read_text(errors="replace")
        return re.search(pattern, text, re.MULTILINE)

    def tell(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def is_running(self):
        return self.process.poll() is None

    def kill(self):
        self.process.kill()
        self.process.wait()

    def end(self):
        if self.is_running():
            self.process.terminate()
            try:
                self.process.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                self.kill()
        self.process.stdin.close()
        self.log.close()


class Session:
    def __init__(self, programs, folder, pictures):
        self.programs, self.folder, self.pictures = programs, folder, pictures
        self.running = contextlib.ExitStack()
        self.steps = 0
        self.environment = {**os.environ, "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "xcb", "XDG_CONFIG_HOME": str(folder),
                            "XDG_RUNTIME_DIR": str(folder), "HOME": str(folder)}

    def start(self, name, words):
        program = Program(words, self.environment, self.folder / f"{name}.log")
        self.running.callback(program.end)
        return program

    # The display.

    def start_display(self):
        reading, writing = os.pipe()
        xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1600x1000x24", "-nolisten", "tcp"],
                                pass_fds=[writing], stderr=subprocess.DEVNULL)
        self.running.callback(lambda: (xvfb.terminate(), xvfb.wait()))
        os.close(writing)
        with os.fdopen(reading) as told:
            self.environment["DISPLAY"] = ":" + told.readline().strip()
        self.start("openbox", ["openbox", "--sm-disable"])
        wait_for("the window manager", lambda: "window id" in self.tool("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def tool(self, *words):
        done = subprocess.run([str(word) for word in words], env=self.environment, capture_output=True, text=True)
        return done.stdout

    def picture(self, name):
        self.steps += 1
        if self.pictures:
            self.tool("import", "-window", "root", self.pictures / f"{self.steps:02}-{name}.png")

    def windows(self, title):
        return self.tool("xdotool", "search", "--onlyvisible", "--name", title).split()

    def window(self, title):
        return wait_for(f"a window called {title}", lambda: self.windows(title))[0]

    def use(self, window):
        """The operator turns to that window."""
        self.tool("xdotool", "windowactivate", "--sync", window)
        wait_for("the focus", lambda: self.tool("xdotool", "getactivewindow").strip() == window)

    def press(self, window, *keys):
        self.use(window)
        for key in keys:
            self.tool("xdotool", "key", "--clearmodifiers", key)

    def type(self, window, text):
        self.use(window)
        self.tool("xdotool", "type", "--delay", "20", text)

    def title(self, window):
        return self.tool("xdotool", "getwindowname", window).strip()

    # The server, as it is.

    def get(self, path):
        """What the server says there now; None for nothing, and while it is away."""
        *lines, self.rest = (self.rest + self.watched.read()).split("\n")
        for told in map(json.loads, lines):
            if "content" in told:
                self.contents[told["path"]] = told["content"]
            elif told["event"] == "removed":
                for gone in [known for known in self.contents if (known + "/").startswith(told["path"] + "/")]:
                    del self.contents[gone]
            elif "path" not in told:  # the connection is made, or lost
                self.contents.clear()
        return self.contents.get(path)

    def expect(self, path, is_expected, what):
        wait_for(f"{what} at {path}", lambda: self.get(path) is not None and is_expected(self.get(path)),
                 lambda: f", it is {self.get(path)!r}")

    def expect_tuned(self, name, hertz):
        self.expect(f"{MPXORVS}/{name}/Status/TunedFrequency", lambda content: content == hertz, f"{hertz} Hz")

    def watch(self):
        watcher = self.start("watcher", [self.programs / "mctree", "--connect", f"127.0.0.1:{self.port}", "watch", "--json",
                                         "/MultiChannelServer"])
        self.watched = self.running.enter_context(open(watcher.log.name))
        self.contents, self.rest = {}, ""

    def start_server(self, port):
        self.server = self.start("server", [self.programs / "mcserver", "--listen", f"127.0.0.1:{port}",
                                            "--config", self.folder / "server.ini"])
        found = wait_for("the server", lambda: self.server.said(r"^listening on .*:(\d+)$"))
        self.port = int(found.group(1))

    def start_module(self):
        port = getattr(self, "module_port", 0)
        self.module = self.start("module", [self.programs / "dimodule", "--listen", f"127.0.0.1:{port}"])
        self.module_port = int(wait_for("the module", lambda: self.module.said(r"^listening on .*:(\d+)$")).group(1))
        self.environment["MCS_MODBUS_PORT"] = str(self.module_port)

    def start_console(self, name):
        words = [self.programs / "mcconsole", "--connect", f"127.0.0.1:{self.port}", "--name", name, "--locale", "en",
                 "--config", self.folder / f"{name}.ini"]
        program = self.start(name, words)
        window = self.window(f"^{name}")
        self.expect_tuned(name, 0)
        return program, window

    def expect_ready(self):
        self.expect(f"{STATUS}/BootState", lambda state: state == "Ready", "a device that is ready")
        self.expect(f"{STATUS}/Suppression/AnsweringModules", lambda modules: modules == 1, "a module that answers")

    def tune(self, window, text):
        self.press(window, "ctrl+l")
        self.type(window, text)
        self.press(window, "Return")

    # What is done.

    def run(self):
        self.start_display()
        (self.folder / "server.ini").write_text(CONFIGURATION)
        self.start_module()
        self.start_server(0)
        self.watch()
        self.expect_ready()
        tower, tower_window = self.start_console("tower")
        mast, mast_window = self.start_console("mast")
        self.picture("begin")

        self.tune(tower_window, "127.5")
        self.expect_tuned("tower", 127500000)
        wait_for("the frequency in the title", lambda: "127.5 MHz" in self.title(tower_window))
        self.picture("tuned")

        # What is not sent is not tuned, wherever the operator turns.
        self.press(tower_window, "ctrl+l")
        self.type(tower_window, "130")
        self.tune(mast_window, "128 MHz")
        self.expect_tuned("mast", 128000000)
        if self.get(f"{MPXORVS}/tower/Status/TunedFrequency") != 127500000:
            raise Failed("leaving the frequency field has tuned")
        self.picture("not-sent")

        # A transmitter is keyed: nobody gets its frequency, until it is silent.
        self.module.tell("key 3")
        self.expect(f"{STATUS}/Suppression/KeyedFrequencies", lambda keyed: keyed == [121500000], "the keyed frequency")
        self.tune(mast_window, "121500 kHz")
        self.expect(f"{MPXORVS}/mast/Request/Answer", re.compile("refused: 121.5 MHz is blanked by .*Tower main").match,
                    "a refusal with the reason")
        self.picture("blanked")
        self.module.tell("release 3")
        self.expect(f"{STATUS}/Suppression/KeyedFrequencies", lambda keyed: keyed == [], "no keyed frequency")
        self.tune(mast_window, "121500 kHz")
        self.expect_tuned("mast", 121500000)

        # The module is lost: all consoles say which frequency nobody watches.
        self.module.kill()
        self.expect(f"{STATUS}/Suppression/UnsupervisedFrequencies", lambda lost: lost == [121500000], "the alarm")
        self.picture("lost-module")

        # The server is killed. What was shown stays, and is told to be old.
        self.server.kill()
        wait_for("the loss in the title", lambda: "lost" in self.title(tower_window))
        self.picture("lost-server")
        self.start_module()
        self.start_server(self.port)
        self.expect_ready()
        self.expect_tuned("tower", 0)
        wait_for("the console, back", lambda: "lost" not in self.title(tower_window))
        self.picture("back")
        self.press(tower_window, "alt+1", "alt+o")  # the overview, "Restore"
        self.expect_tuned("tower", 127500000)
        self.picture("restored")

        for program, window in ((mast, mast_window), (tower, tower_window)):
            self.press(window, "alt+F4")
            wait_for("the end of a console", lambda: not program.is_running())
            if program.process.returncode != 0:
                raise Failed(f"a console ended with {program.process.returncode}")
        self.server.process.send_signal(signal.SIGTERM)
        wait_for("the end of the server", lambda: not self.server.is_running())
        if self.server.process.returncode != 0:
            raise Failed(f"the server ended with {self.server.process.returncode}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("programs", type=pathlib.Path)
    parser.add_argument("--pictures", type=pathlib.Path)
    arguments = parser.parse_args()
    if arguments.pictures:
        arguments.pictures = arguments.pictures.resolve()
        arguments.pictures.mkdir(parents=True, exist_ok=True)
    begin = time.monotonic()
    with tempfile.TemporaryDirectory() as folder:
        session = Session(arguments.programs.resolve(), pathlib.Path(folder), arguments.pictures)
        with session.running:
            try:
                session.run()
            except Failed as failed:
                session.picture("failed")
                for log in sorted(set(pathlib.Path(folder).glob("*.log")) - {pathlib.Path(folder) / "watcher.log"}):
                    print(f"--- {log.name}\n{log.read_text(errors='replace')[-1500:]}")
                sys.exit(f"session.py: after {session.steps - 1} steps: {failed}")
    print(f"two consoles, a server and a module: {session.steps} steps in {time.monotonic() - begin:.0f} s, all as expected")


main()
