"""A display with a window manager, and programs on it that are worked by keys and clicks."""
import contextlib
import json
import os
import pathlib
import re
import select
import subprocess
import time

import accessible

PATIENCE = 30  # seconds, for what does not happen


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


class Desktop:
    def __init__(self, programs, folder, pictures):
        self.programs, self.folder, self.pictures = programs, folder, pictures
        self.running = contextlib.ExitStack()
        self.steps = 0
        self.environment = {**os.environ, "LC_ALL": "C.UTF-8", "QT_QPA_PLATFORM": "xcb",
                            "QT_FONT_DPI": "96",  # as desktops tell; a bare display says 100.1, and all is drawn at 104 %
                            "XDG_CONFIG_HOME": str(folder),
                            "XDG_RUNTIME_DIR": str(folder), "XDG_CACHE_HOME": str(folder), "HOME": str(folder)}

    def start(self, name, words):
        program = Program(words, self.environment, self.folder / f"{name}.log")
        self.running.callback(program.end)
        return program

    def start_session(self, name):
        """The address of a new session's bus."""
        reading, writing = os.pipe()
        runtime = self.folder / name
        runtime.mkdir()
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", f"--print-address={writing}"], pass_fds=[writing],
                               env={**self.environment, "XDG_RUNTIME_DIR": str(runtime)}, stderr=subprocess.DEVNULL)
        self.running.callback(lambda: (bus.terminate(), bus.wait()))
        os.close(writing)
        with os.fdopen(reading) as told:
            return told.readline().strip()

    def start_speech(self):
        """Programs find it by the display. In a session where it runs as well the toolkit begins with it twice, and the
        first time too early."""
        self.spoken = accessible.Spoken(self.start_session("speech"))
        self.environment.update(DBUS_SESSION_BUS_ADDRESS=self.start_session("session"), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")

    def start_window(self, name, words, title):
        """A program with a window."""
        program = self.start(name, words)
        self.window(title)
        wait_for(f"what {name} tells", lambda: self.spoken.windows(title))
        return program

    def start_display(self, size="1600x1000"):
        reading, writing = os.pipe()
        xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size}x24", "-nolisten", "tcp"],
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

    # A module of inputs, and the server as one connection to it tells: each connection is an event that consoles show.

    def start_module(self):
        port = getattr(self, "module_port", 0)
        self.module = self.start("module", [self.programs / "dimodule", "--listen", f"127.0.0.1:{port}"])
        self.module_port = int(wait_for("the module", lambda: self.module.said(r"^listening on .*:(\d+)$")).group(1))
        self.environment["MCS_MODBUS_PORT"] = str(self.module_port)

    def watch(self):
        watcher = self.start("watcher", [self.programs / "mctree", "--connect", f"127.0.0.1:{self.port}", "watch", "--json",
                                         "/MultiChannelServer"])
        self.watched = self.running.enter_context(open(watcher.log.name))
        self.contents, self.rest = {}, ""

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

    def expect_content(self, path, content):
        self.expect(path, lambda found: found == content, repr(content))

    # By keys.

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
        self.press_here(*keys)

    def press_here(self, *keys):
        """In whatever has the keys: a dialog, a menu."""
        for key in keys:
            self.tool("xdotool", "key", "--clearmodifiers", key)

    def open_menu(self, program, window, keys):
        """Returns once it is there: what is pressed from then on is the menu's."""
        def is_open():
            windows = self.tool("xdotool", "search", "--onlyvisible", "--pid", program.process.pid).split()
            return any("MENU" in self.tool("xprop", "-id", one, "_NET_WM_WINDOW_TYPE") for one in windows)
        self.press(window, keys)
        wait_for(f"the menu of {keys}", is_open)

    def type(self, window, text):
        self.use(window)
        self.type_here(text)

    def type_here(self, text):
        self.tool("xdotool", "type", "--delay", "20", text)

    def title(self, window):
        return self.tool("xdotool", "getwindowname", window).strip()

    # By what assistive technology is told of.

    def find(self, title, role, name, enters_all=False):
        """What has that role and a matching name in the window whose title matches."""
        return wait_for(f"a {role} called {name} in {title}", lambda: self.spoken.find(title, role, name, enters_all))

    def push(self, window, thing):
        """Goes to a button or a box in that window, and presses it by the space bar."""
        self.use(window)
        thing.take_focus()
        wait_for("the focus of a control", thing.has_focus)
        self.press_here("space")

    def go_to(self, window, thing, *keys):
        """To a control in that window, and on from there by these keys."""
        self.use(window)
        thing.take_focus()
        self.press_here(*keys)
