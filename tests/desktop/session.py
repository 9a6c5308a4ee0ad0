#!/usr/bin/env python3
"""session.py PROGRAMS [--pictures FOLDER]: an evening at two consoles, as operators have it.

Starts a display, a window manager, a module of inputs, a server with its window and two consoles; works them by keys and
clicks, as an operator would; kills what can be killed in the middle. What comes of it is asked of the server by mctree,
read off the windows' titles, and off what assistive technology is told. Ends with 0 if every step was as expected; else it
names the step. Takes a picture after each.
"""
import argparse
import pathlib
import re
import signal
import sys
import tempfile
import time

import accessible
from desktop import Desktop, Failed, wait_for

MPXORVS = "/MultiChannelServer/DynamicMpxORVs"
STATUS = "/MultiChannelServer/Status"
SUPPRESSION = f"{STATUS}/Suppression"
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
PAGES = 10
# What an operator who does not see must find there, whatever else there is.
SPOKEN = {
    "Overview": [("text", "Frequency"), ("push button", "Tune"), ("push button", "Recent"), ("push button", "Favourites"),
                 ("frame", "Frequencies in use"), ("list", "Last events")],
    "Configuration": [("text", "DF Station Name"), ("check box", "Connect on startup")],
    "Transmitters": [("table", "Modules"), ("table", "Inputs")],
    "Events": [("table", "Events"), ("text", "Search")],
    "MpxORVs": [("table", "MpxORVs"), ("text", "Filter of the list of MpxORVs"), ("check box", "May be job master (locked)")],
    "My MpxORV": [("text", "Frequency"), ("push button", "Take or give up mastership"), ("push button", "Calibrate")],
}


class Session(Desktop):
    # The server, as it is.

    def expect_tuned(self, name, hertz):
        self.expect(f"{MPXORVS}/{name}/Status/TunedFrequency", lambda content: content == hertz, f"{hertz} Hz")

    def expect_master(self, name):
        self.expect(f"{STATUS}/Master/Name", lambda content: content == name, f"the master {name!r}")

    def expect_answer(self, name, pattern):
        self.expect(f"{MPXORVS}/{name}/Request/Answer", re.compile(pattern).search, f"an answer like {pattern}")

    def start_server(self, port):
        self.server = self.start_window("server", [self.programs / "mcserver", "--listen", f"127.0.0.1:{port}",
                                            "--config", self.folder / "server.ini"], "^Multi-channel server")
        found = wait_for("the server", lambda: self.server.said(r"^listening on .*:(\d+)$"))
        self.port = int(found.group(1))

    def start_console(self, name):
        words = [self.programs / "mcconsole", "--connect", f"127.0.0.1:{self.port}", "--name", name, "--locale", "en",
                 "--config", self.folder / f"{name}.ini"]
        program = self.start_window(name, words, f"^{name}")
        window = self.window(f"^{name}")
        self.expect_tuned(name, 0)
        return program, window

    def expect_ready(self):
        self.expect(f"{STATUS}/BootState", lambda state: state == "Ready", "a device that is ready")
        self.expect(f"{SUPPRESSION}/AnsweringModules", lambda modules: modules == 1, "a module that answers")

    def tune(self, window, text):
        self.press(window, "ctrl+l")
        self.type(window, text)
        self.press(window, "Return")

    # What is done.

    def begin(self):
        self.start_display()
        self.start_speech()
        (self.folder / "server.ini").write_text(CONFIGURATION)
        self.start_module()
        self.start_server(0)
        self.watch()
        self.expect_ready()
        self.tower, self.tower_window = self.start_console("tower")
        self.mast, self.mast_window = self.start_console("mast")
        self.picture("begin")

    def read_pages(self):
        """Every page is told to assistive technology: whatever can be used has a name and a role."""
        self.use(self.tower_window)
        count, wrong = 0, []
        for number in range(1, PAGES + 1):
            self.press_here(f"alt+{number % PAGES}")
            tab = wait_for(f"page {number}", lambda: self.selected_tab(number - 1))
            missing, told = accessible.nameless(self.spoken.windows("^tower")[0])
            wrong += [f"on page {tab} there is no name or no role for {thing}" for thing in missing]
            absent = [thing for thing in SPOKEN.get(tab, []) if thing not in told]
            if absent:
                wrong.append(f"on page {tab} nobody is told of {absent}, only of {told}")
            count += len(told)
        if wrong:
            raise Failed("\n".join(wrong))
        print(f"{PAGES} pages tell of {count} things by name and role")
        self.press_here("alt+1")

    def selected_tab(self, index):
        """The title of the page, once it is in front."""
        for tabs in self.spoken.windows("^tower")[0].walk():
            if tabs.role() == "page tab list" and len(tabs.children()) >= PAGES:
                name = tabs.children()[index].name()
                return name if name == tabs.name() else None  # the list is called as the page in front
        return None

    def work(self):
        self.tune(self.tower_window, "127.5")
        self.expect_tuned("tower", 127500000)
        wait_for("the frequency in the title", lambda: "127.5 MHz" in self.title(self.tower_window))
        self.picture("tuned")

        # What is not sent is not tuned, wherever the operator turns.
        self.press(self.tower_window, "ctrl+l")
        self.type(self.tower_window, "130")
        self.tune(self.mast_window, "128 MHz")
        self.expect_tuned("mast", 128000000)
        if self.get(f"{MPXORVS}/tower/Status/TunedFrequency") != 127500000:
            raise Failed("leaving the frequency field has tuned")
        self.picture("not-sent")

    def work_by_speech(self):
        """Who writes and presses through assistive technology tunes what is written, and nothing before."""
        self.press(self.tower_window, "alt+1")
        field = self.find("^tower", "text", "^Frequency$")
        field.write("126500 kHz")
        self.find("^tower", "label", "^= 126.500 MHz$")
        if self.get(f"{MPXORVS}/tower/Status/TunedFrequency") != 127500000:
            raise Failed("writing into the frequency field has tuned")
        self.find("^tower", "push button", "^Tune$").press()
        self.expect_tuned("tower", 126500000)
        self.tune(self.tower_window, "127.5")
        self.expect_tuned("tower", 127500000)

    def last_granted(self, name):
        """In Hz, as that console has kept it; empty if it has not."""
        text = (self.folder / f"{name}.ini").read_text()
        kept = re.search(r"^\[RecentFrequencies\]\n(?:[^\[\n].*\n)*?Hertz0=\"?(\d+)", text, re.MULTILINE)
        return kept.group(1) if kept else ""

    def keep_favourites(self):
        """Named, chosen, kept by a console that is killed."""
        self.press(self.mast_window, "ctrl+d")
        self.window("^Favourite frequencies")
        self.type_here("Approach")
        self.press_here("Return", "Return")  # the name, then "Save"
        wait_for("the end of the dialog", lambda: not self.windows("^Favourite frequencies"))
        self.tune(self.mast_window, "129")
        self.expect_tuned("mast", 129000000)
        self.open_menu(self.mast, self.mast_window, "ctrl+b")
        self.picture("favourites")
        self.press_here("1")
        if self.get(f"{MPXORVS}/mast/Status/TunedFrequency") != 129000000:
            raise Failed("choosing a favourite has tuned")
        self.press_here("Return")
        self.expect_tuned("mast", 128000000)
        wait_for("the title of who is killed next", lambda: "128 MHz" in self.title(self.mast_window))
        wait_for("what was granted last in the file", lambda: self.last_granted("mast") == "128000000")
        self.mast.kill()
        self.mast, self.mast_window = self.start_console("mast")
        self.open_menu(self.mast, self.mast_window, "ctrl+h")
        self.press_here("2", "Return")
        self.expect_tuned("mast", 129000000)

    def see_transmitters(self):
        """A transmitter is keyed: nobody gets its frequency, until it is silent."""
        self.module.tell("key 3")
        self.expect(f"{SUPPRESSION}/KeyedFrequencies", lambda keyed: keyed == [121500000], "the keyed frequency")
        self.tune(self.mast_window, "121500 kHz")
        self.expect_answer("mast", "refused: 121.5 MHz is blanked by .*Tower main")
        self.picture("blanked")
        self.module.tell("release 3")
        self.expect(f"{SUPPRESSION}/KeyedFrequencies", lambda keyed: keyed == [], "no keyed frequency")
        self.tune(self.mast_window, "121500 kHz")
        self.expect_tuned("mast", 121500000)

    def be_master(self):
        self.press(self.tower_window, "alt+0", "alt+m")
        self.expect_master("tower")

    def take_mastership(self):
        """Who takes the mastership of another is asked before, and that one is told by whom."""
        self.be_master()
        self.press(self.mast_window, "alt+8")
        self.go_to(self.mast_window, self.find("^mast", "text", "^Filter of the list"), "Tab", "ctrl+Home")  # who is master stands first
        self.find("^mast", "panel", "^tower$")
        self.push(self.mast_window, self.find("^mast", "check box", "May be job master"))
        self.find("^Take a right away", "label", "^tower is job master.* and loses that")
        self.picture("question")
        self.press_here("Escape")
        wait_for("the end of the question", lambda: not self.windows("^Take a right away"))
        self.expect_master("tower")
        self.find("^mast", "check box", "May be job master").toggle()  # by speech as by keys
        self.push(self.window("^Take a right away"), self.find("^Take a right away", "push button", "^Take away"))
        self.expect_master("")
        self.expect_answer("tower", "^ended: needs MayBeJobMaster, taken away by mast, mcconsole")
        self.press(self.tower_window, "alt+1")
        self.find("^tower", "label", "taken away by mast, mcconsole")
        self.picture("taken-away")
        self.tool(self.programs / "mctree", "--connect", f"127.0.0.1:{self.port}", "set",
                  f"{MPXORVS}/tower/Policy/MayBeJobMaster", "true")
        self.expect(f"{MPXORVS}/tower/Policy/MayBeJobMaster", lambda may: may is True, "the right, given back")
        self.be_master()

    def edit_suppression(self):
        """In the server's window: an input is named anew, a module deleted and brought back."""
        window = self.window("^Multi-channel server")
        self.use(window)
        self.find("^Multi-channel server", "page tab", "^Ground transmitters").press()
        # The table of inputs comes behind that button; the name is the fourth one in the fourth row.
        self.go_to(window, self.find("^Multi-channel server", "push button", "^Add module"), "Tab", "ctrl+Home",
                   *["Down"] * 3, *["Right"] * 3, "F2", "ctrl+a")
        self.type_here("Tower roof")
        self.press_here("Return")
        self.expect(f"{SUPPRESSION}/Modules/0/Inputs/3/Name", lambda name: name == "Tower roof", "the input's new name")
        self.go_to(window, self.find("^Multi-channel server", "push button", "^Assign Inputs"), "shift+Tab", "Home")
        self.open_menu(self.server, window, "Menu")
        self.press_here("Down", "Down", "Down", "Return")
        self.expect(f"{SUPPRESSION}/ModuleCount", lambda count: count == 0, "no module")
        self.picture("deleted")
        self.push(window, self.find("^Multi-channel server", "push button", "^Undo"))
        self.expect(f"{SUPPRESSION}/ModuleCount", lambda count: count == 1, "the module, brought back")
        self.expect_ready()
        self.picture("undone")

    def open_station(self):
        """The tower looks after a second station, in a tab, and what is typed there is tuned there alone."""
        (self.folder / "hill.ini").write_text("[General]\nDeviceName=Hill\n")
        self.hill = self.start("hill", [self.programs / "mcserver", "--headless", "--listen", "127.0.0.1:0",
                                        "--config", self.folder / "hill.ini"])
        port = wait_for("the second server", lambda: self.hill.said(r"^listening on .*:(\d+)$")).group(1)
        self.press(self.tower_window, "ctrl+t")
        self.use(self.window("^Open a further station"))
        self.press_here("ctrl+a")
        self.type_here(f"127.0.0.1:{port}")
        self.picture("ask-for-station")
        self.press_here("Return")
        self.find("^tower", "page tab", "^Hill: NOT TUNED")
        self.tune(self.tower_window, "126")
        self.find("^tower", "page tab", "^Hill: 126 MHz")
        tuned = self.tool(self.programs / "mctree", "--connect", f"127.0.0.1:{port}", "get",
                          f"{MPXORVS}/tower/Status/TunedFrequency").strip()
        if tuned != "126000000" or self.get(f"{MPXORVS}/tower/Status/TunedFrequency") == 126000000:
            raise Failed(f"the second station is at {tuned!r}, the first one at what was meant for it")
        self.picture("two-stations")

    def close_station(self):
        self.press(self.tower_window, "ctrl+w")
        self.find("^Close the station", "label", r"^At Hill:\s.*tuned to 126 MHz")
        self.picture("close-station")
        self.push(self.window("^Close the station"), self.find("^Close the station", "push button", "^Close"))
        wait_for("one station", lambda: not self.spoken.find("^tower", "page tab", "^Hill", False))
        self.hill.end()

    def lose_module(self):
        """All consoles say which frequency nobody watches, also of a station that is not in front."""
        self.open_station()
        self.module.kill()
        self.expect(f"{SUPPRESSION}/UnsupervisedFrequencies", lambda lost: lost == [121500000], "the alarm")
        self.find("^tower", "page tab", ": 1 NOT SUPERVISED")
        wait_for("the alarm in the title", lambda: "NOT SUPERVISED" in self.title(self.tower_window))
        self.picture("alarm-behind")
        self.close_station()
        for title in ("^tower", "^mast"):
            self.find(title, "label", "NOT SUPERVISED: 121.5 MHz")
        self.picture("lost-module")

    def lose_server(self):
        """What was shown stays, and is told to be old; what was entered is in use again; what was held is offered."""
        self.server.kill()
        wait_for("the loss in the title", lambda: "lost" in self.title(self.tower_window))
        self.picture("lost-server")
        self.start_module()
        self.start_server(self.port)
        self.expect_ready()
        self.expect(f"{SUPPRESSION}/Modules/0/Inputs/3/Name", lambda name: name == "Tower roof", "what was entered")
        self.find("^Multi-channel server", "label", "did not end in an orderly way.*is in use again")
        self.expect_tuned("tower", 0)
        wait_for("the console, back", lambda: "lost" not in self.title(self.tower_window))
        self.press(self.tower_window, "alt+1")
        self.find("^tower", "label", "^Was job master and at 127.5 MHz")
        self.picture("back")
        self.press(self.tower_window, "alt+o")  # "Restore"
        self.expect_tuned("tower", 127500000)
        self.expect_master("tower")
        self.find("^tower", "label", "^Tuned$")
        line = self.find("^tower", "frame", "^Frequencies in use")
        wait_for("the own mark", lambda: re.search(r"^tower: 127\.5 MHz.*this console$", line.description(), re.MULTILINE),
                 lambda: f", there is {line.description()!r}")
        self.picture("restored")

    def end(self):
        for program, window in ((self.mast, self.mast_window), (self.tower, self.tower_window)):
            self.press(window, "alt+F4")
            if program is self.tower:  # others lose something
                self.push(self.window("^Quit"), self.find("^Quit", "push button", "^Quit"))
            wait_for("the end of a console", lambda: not program.is_running())
            if program.process.returncode != 0:
                raise Failed(f"a console ended with {program.process.returncode}")
        self.server.process.send_signal(signal.SIGTERM)
        wait_for("the end of the server", lambda: not self.server.is_running())
        if self.server.process.returncode != 0:
            raise Failed(f"the server ended with {self.server.process.returncode}")

    def run(self):
        for step in (self.begin, self.work, self.work_by_speech, self.read_pages, self.keep_favourites, self.see_transmitters, self.take_mastership,
                     self.edit_suppression, self.lose_module, self.lose_server, self.end):
            self.step = step.__name__
            begin = time.monotonic()
            step()
            print(f"{self.step}: {time.monotonic() - begin:.1f} s", flush=True)


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
                sys.exit(f"session.py: in {session.step}, after {session.steps - 1} pictures: {failed}")
    print(f"two consoles, a server and a module: {session.steps} pictures in {time.monotonic() - begin:.0f} s, all as expected")


main()
