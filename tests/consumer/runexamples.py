#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""runexamples.py PROGRAMS EXAMPLES BUILD: types the commands of EXAMPLES/README.md as they stand, beside the programs that
are installed in PROGRAMS, and compares what is said with what stands there. BUILD is where the examples were built.

Lines of a block that begin with "$" are commands, "&" at their end leaves them running until the block ends. What is said
after one was typed holds the lines that follow it: those of each program in that order."""
import os
import pathlib
import queue
import re
import signal
import subprocess
import sys
import tempfile
import threading
import time

DEADLINE_S = 60
LINES_LESS_THAN = 100
SOURCES = ("*.cpp", "*.py", "*.js")


def blocks_of(readme):
    """(heading, [(command, [line expected after it])]) of each block that holds commands with a prompt."""
    heading, block = "", []
    for line in readme.read_text().splitlines() + [""]:
        if line.startswith("    $ "):
            block.append((line[6:], []))
        elif line.startswith("    ") and block:
            block[-1][1].append(line.strip())
        elif block:
            yield heading, block
            block = []
        if line.startswith("## "):
            heading = line[3:]


class Session:
    """What a terminal would show of several programs."""

    def __init__(self, environment, folder):
        self.environment, self.folder = environment, folder
        self.said = queue.Queue()
        self.running = []
        self.begin()

    def begin(self):
        """Forgets what was said so far."""
        self.seen = []  # (program, line)
        self.last = {}  # by program: where the last line was that was waited for

    def start(self, command):
        program = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                   env=self.environment, cwd=self.folder, start_new_session=True)
        self.running.append(program)
        threading.Thread(target=self._read, args=(program,), daemon=True).start()
        return program

    def _read(self, program):
        for line in program.stdout:
            self.said.put((program.pid, line.rstrip("\n")))

    def expect(self, pattern):
        """Waits for the line, and returns what it matches."""
        end = time.monotonic() + DEADLINE_S
        place = 0
        while True:
            while place < len(self.seen):
                program, line = self.seen[place]
                match = re.fullmatch(pattern, line)
                if match and place > self.last.get(program, -1):
                    self.last[program] = place
                    return match
                place += 1
            try:
                self.seen.append(self.said.get(timeout=max(0.0, end - time.monotonic())))
            except queue.Empty:
                lines = [line for _, line in self.seen]
                raise SystemExit(f"no line '{pattern}' within {DEADLINE_S} s, but: {lines}") from None

    def end(self):
        for program in self.running:
            if program.poll() is None:
                os.killpg(program.pid, signal.SIGTERM)
            program.wait(DEADLINE_S)


def start_server(session, programs, examples, scratch):
    session.start([programs / "dimodule", "--listen", "127.0.0.1:0", "--script", examples / "blanking/keyed.txt"])
    modbus = session.expect(r"listening on 127\.0\.0\.1:(\d+)")[1]
    configuration = pathlib.Path(scratch) / "example.ini"
    configuration.write_bytes((examples / "blanking/mcserver.ini").read_bytes())
    session.environment = dict(session.environment, MCS_MODBUS_PORT=modbus)
    session.start([programs / "mcserver", "--headless", "--listen", "127.0.0.1:0", "--config", configuration])
    port = session.expect(r"listening on 127\.0\.0\.1:(\d+)")[1]
    session.expect("ORV: Ready")
    return port


def run(block, session):
    for command, expected in block:
        stays = command.endswith("&")
        session.begin()
        program = session.start(["bash", "-c", "exec " + command.rstrip("& ")])
        for line in expected:
            session.expect(re.escape(line))
        if not stays:
            program.wait(DEADLINE_S)


def check_sources(examples):
    told = (examples / "README.md").read_text()
    for source in [source for pattern in SOURCES for source in examples.rglob(pattern)]:
        lines = len(source.read_text().splitlines())
        if lines >= LINES_LESS_THAN:
            raise SystemExit(f"{source} has {lines} lines, and not less than {LINES_LESS_THAN}")
        if source.parent.name not in told:
            raise SystemExit(f"the README does not tell of {source.parent.name}")


def main():
    programs, examples, build = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
    check_sources(examples)
    environment = dict(os.environ, PATH=f"{programs}:/usr/bin:{os.environ['PATH']}", QT_QPA_PLATFORM="offscreen",
                       LC_ALL="C.UTF-8", NODE_PATH="/usr/share/nodejs")
    with tempfile.TemporaryDirectory() as scratch:
        (pathlib.Path(scratch) / "build").mkdir()
        (pathlib.Path(scratch) / "build/examples").symlink_to(build)
        (pathlib.Path(scratch) / "examples").symlink_to(examples)
        server = Session(environment, scratch)
        count = 0
        try:
            port = start_server(server, programs, examples, scratch)
            for heading, block in blocks_of(examples / "README.md"):
                print(heading, flush=True)
                session = Session(environment, scratch)
                try:
                    run([(command.replace("7450", port), lines) for command, lines in block], session)
                finally:
                    session.end()
                count += 1
        finally:
            server.end()
    print(f"{count} blocks are as they stand")
    sys.exit(0 if count > 0 else 1)


main()
