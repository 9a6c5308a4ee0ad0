#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""runcommands.py SOURCE PROGRAMS [DOCUMENT...]: types the commands of the documents in SOURCE as they stand, in a scratch
folder and a network of its own, where names such as tower.example.org are this machine, with the programs in PROGRAMS.

A block of code is one session: what serves or follows runs until it ends, and what fails is a problem. Where a block needs a
server and starts none, there is one. Blocks behind "<!-- not run: REASON -->" are left out, but nothing in them either is to be
filled in by the reader. Commands of ./dev, which build
and take long, are only looked up in its help, and so are benchmarks; of a console that asks for its server nothing would be
seen. What has prompts has a test of its own, beside examples/README.md."""
import contextlib
import os
import pathlib
import queue
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

DEADLINE_S = 60
DOCUMENTS = ("README.md", "CONTRIBUTING.md", "docs/*.md", "deploy/*/*.md", "examples/README.md")
HOSTS = "localhost tower1 tower2 tower.example tower.example.org hub dfhost"
READY = {"mcserver": r"listening on .*", "dimodule": r"listening on .*", "nats-server": r".*Server is ready.*"}
FOLLOWS = re.compile(r"\bmctree\b.*\b(?:watch|hold|events --follow)\b")
SCRIPT = re.compile(r"^(?:if|until|while|for|then|do)\b|\| while\b", re.MULTILINE)
RUN = {"mctree", "mcconsole", "./dev", "openssl", "cp", "kill"}  # nothing that changes more than the scratch folder
OPEN = re.compile(r"\.\.\.|<[\w ]+>")
ELSEWHERE = {"sc", "icacls", "Get-WinEvent"}
CONFIGURATION = "[StaticMpxORVs]\nNames=Tower\n"
PROJECT = pathlib.Path(__file__).resolve().parents[2]


class Failed(Exception):
    """A command does not do what its document says."""


def own_network():
    """Goes on in a network with nothing but a loopback interface, as root of that, and with hosts of its own."""
    if "MCS_DOCUMENTS_NETWORK" in os.environ:
        return
    os.environ["MCS_DOCUMENTS_NETWORK"] = "1"
    os.execvp("unshare", ["unshare", "--user", "--map-root-user", "--net", "--mount", sys.executable, *sys.argv])


class Session:
    """What runs while one block is typed."""

    def __init__(self, scratch, programs):
        self.scratch = scratch
        self.environment = dict(
            os.environ, PATH=f"{scratch}/bin:{programs}:/usr/bin:/bin:/usr/sbin:/sbin", HOME=str(scratch / "home"),
            XDG_CONFIG_HOME=str(scratch / "home/.config"), XDG_RUNTIME_DIR=str(scratch / "home"), QT_QPA_PLATFORM="offscreen",
            LC_ALL="C.UTF-8", path="/MultiChannelServer/StaticMpxORVs/Tower")
        self.running = {}
        self.options = None  # of the server that no command has started

    def popen(self, command, output):
        return subprocess.Popen(["bash", "-c", command], stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                env=self.environment, cwd=self.scratch, text=True, start_new_session=True)

    def run(self, command):
        with tempfile.TemporaryFile("w+") as output:
            program = self.popen(command, output)
            try:
                code = program.wait(DEADLINE_S)
            except subprocess.TimeoutExpired:
                code = f"nothing within {DEADLINE_S} s"
            stop(program)
            if code != 0:
                output.seek(0)
                raise Failed(f"{command!r} ends with {code}: {output.read().strip()[-500:]}")

    def start(self, name, command, ready):
        """Runs it until the session ends, or another of its name is started. Returns when it has said "ready"."""
        if name in self.running:
            stop(self.running.pop(name))
        program = self.running[name] = self.popen(command, subprocess.PIPE)
        lines, seen, end = queue.Queue(), [], time.monotonic() + DEADLINE_S
        threading.Thread(target=read_into, args=(program.stdout, lines), daemon=True).start()
        while True:
            try:
                line = lines.get(timeout=max(0.0, end - time.monotonic()))
            except queue.Empty:
                line = None
            if line is None:
                raise Failed(f"{command!r} does not say {ready!r}, but: {' '.join(seen)[-500:]}")
            seen.append(line.strip())
            if re.fullmatch(ready, line.strip()):
                return

    def end(self):
        for name in reversed(list(self.running)):
            stop(self.running[name])
        self.running.clear()


def read_into(stream, lines):
    for line in stream:
        lines.put(line)
    lines.put(None)


def stop(program):
    with contextlib.suppress(ProcessLookupError):
        os.killpg(program.pid, signal.SIGTERM)
    program.wait(DEADLINE_S)


def blocks_of(text):
    """(line, reason not to run it or "", code) of each indented block."""
    text = re.sub(r"^```.*?^```$", lambda match: re.sub(r"[^\n]", "", match[0]), text, flags=re.MULTILINE | re.DOTALL)
    reason, block, start = "", [], 0
    for number, line in enumerate([*text.splitlines(), ""], 1):
        if line.startswith("    "):
            start = start if block else number
            block.append(line[4:])
            continue
        if block:
            yield start, reason, "\n".join(block)
            reason, block = "", []
        mark = re.fullmatch(r"<!-- not run: (.+) -->", line)
        if mark or line:
            reason = mark[1] if mark else ""


def left_open(code):
    """What the reader would have to fill in."""
    found = OPEN.search(re.sub(r"(?m)(^|\s)#.*", "", code))
    return found and found[0]


def program_of(command):
    """The first word that is no assignment, and what stands behind "env"."""
    words = re.sub(r"\$\([^)]*\)", "$", command).split()
    words = [word for word in words if word not in ("env", "$") and not re.match(r"\w+=", word)]
    return words[0] if words else ""


def is_command(command):
    name = program_of(command)
    return (name in READY or name in RUN or name == "cd" or name in ELSEWHERE or name.endswith(".exe") or shutil.which(name) is not None
            or ("/" in name and (PROJECT / name).is_file()))


def look_up(command):
    """Whether ./dev knows it."""
    words = command.split("#")[0].split()
    known = (PROJECT / "dev").read_text()
    if not re.search(rf"^    {re.escape(words[1])}\)$|^  {re.escape(words[1])}\b", known, flags=re.MULTILINE):
        raise Failed(f"{command!r}: ./dev has no such command")


def start_nats(session):
    session.start("nats-server", "exec nats-server", READY["nats-server"])
    session.start("station", "exec mcserver --headless --listen 127.0.0.1:0 --name station --nats localhost --station tower"
                  " --insecure", READY["mcserver"])


def start_server(session, command):
    """The one that the command needs, if it is not there already."""
    is_tls = "mcss://" in command
    options = "--listen 0.0.0.0 --tls-cert cert.pem --tls-key key.pem --access access" if is_tls else ""
    if "Modules" in command:  # a server has such values only where it has some
        options += " --config examples.ini"
    if session.options == options:
        return
    session.options = options
    session.start("mcserver", f"exec mcserver --headless {options}", READY["mcserver"])
    if not is_tls:
        session.run("mctree get --wait =Ready /MultiChannelServer/Status/BootState")


def type_line(session, line):
    name = program_of(line)
    line = line.rstrip("& ") if line.endswith(" &") else line
    if name == "./dev":
        return look_up(line)
    if name.startswith("benchmarks/") or name == "mcconsole" and "--connect" not in line:
        return None
    if name in READY and "--make-token" not in line:
        return session.start(name, "exec " + line if line.startswith(name) else line, READY[name])
    if FOLLOWS.search(line):
        return session.start(line, "exec " + line, r".+")
    if name == "mcconsole":  # a window stays; so it is to take its pictures and go
        line = line.split("  #")[0].rstrip() + " --screenshot shots"
    elif name not in RUN and name not in READY and not name.startswith("deploy/"):
        raise Failed(f"{line!r} is neither run here nor behind '<!-- not run: REASON -->'")
    return session.run(line)


def type_block(session, code):
    code = re.sub(r"\\\n\s*", " ", code)
    commands = [code] if SCRIPT.search(code) else [line for line in code.splitlines() if line and not line.startswith("#")]
    starts = {program_of(line) for line in code.splitlines()}
    if "nats://" in code and "nats-server" not in starts:
        start_nats(session)
    for command in commands:
        if "mcserver" not in starts and re.search(r"\bmc(?:tree|console)\b", command):
            start_server(session, command)
        if SCRIPT.search(command):
            session.run("set -e -o pipefail\n" + command)
        else:
            type_line(session, command)


def prepare(scratch):
    for folder in ("home/.config/MultiChannelServer", "bin", "build", "shots"):
        (scratch / folder).mkdir(parents=True)
    (scratch / "home").chmod(0o700)
    for folder in ("examples", "deploy", "dev"):
        (scratch / folder).symlink_to(PROJECT / folder)
    (scratch / "home/.config/MultiChannelServer/mcserver.ini").write_text(CONFIGURATION)
    shutil.copy(PROJECT / "examples/blanking/mcserver.ini", scratch / "examples.ini")
    (scratch / "bin/measure").write_text("#!/bin/sh\necho 98500000\n")
    (scratch / "bin/measure").chmod(0o755)
    (scratch / "hosts").write_text(f"127.0.0.1 {HOSTS} {os.uname().nodename}\n")
    for command in (["ip", "link", "set", "lo", "up"], ["mount", "--bind", scratch / "hosts", "/etc/hosts"]):
        subprocess.run(command, check=True)


def make_credentials(session):
    """An authority, a certificate of this machine's names, and a user: what documents presuppose."""
    names = ",".join("DNS:" + name for name in HOSTS.split())
    session.run(f"""
        openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -keyout key.pem -out cert.pem -days 2 \\
            -subj /CN=tower -addext "subjectAltName={names}" 2>/dev/null
        cp cert.pem authority.pem
        mcserver --make-token alice operator > made
        sed -n 's/^token: //p' made > token
        printf '%s\\n' 'allow operator read /' 'allow operator write /MultiChannelServer' \\
            'allow operator create /MultiChannelServer/DynamicMpxORVs' > access
        sed -n 's/^access file: //p' made >> access""")


def run_document(document, name, programs, scratch):
    for line, reason, code in blocks_of(document.read_text()):
        first = next((row for row in code.splitlines() if row.strip() and not row.startswith("#")), "")
        if first.startswith("$ ") or not is_command(first):
            continue
        if left_open(code):
            yield f"{name}:{line}: {left_open(code)!r} is left to be filled in"
        if reason:
            continue
        session = Session(scratch, programs)
        try:
            type_block(session, code)
            yield ""
        except Failed as failed:
            yield f"{name}:{line}: {failed}"
        finally:
            session.end()


def main():
    own_network()
    source, programs = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    wanted = sys.argv[3:]
    documents = sorted(document for pattern in DOCUMENTS for document in source.glob(pattern))
    count, problems = 0, 0
    with tempfile.TemporaryDirectory() as folder:
        scratch = pathlib.Path(folder)
        prepare(scratch)
        make_credentials(Session(scratch, programs))
        for document in documents:
            name = str(document.relative_to(source))
            for problem in run_document(document, name, programs, scratch) if not wanted or name in wanted else ():
                count += 1
                problems += bool(problem)
                if problem:
                    print(problem, flush=True)
    print(f"{count} blocks, {problems} problems")
    sys.exit(1 if problems or not count else 0)


main()
