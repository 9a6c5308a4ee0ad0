#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Counts the instructions of what runs per change, call or value: count.py [--keep] [--filter TEXT] <program>.

<program> is mcs_connection_bench, whose roles are started one by one; the one that is counted runs under
callgrind. A figure is the difference of two runs of different length, divided by the difference of their
lengths: what starting and ending cost is in both and drops out. The clock has no say, so a busy machine does
not matter; a figure moves by a per cent or two all the same, since the kernel decides how much arrives at once.
Where chance has a say each length is run several times and the shortest run counts. With many clients that is not
enough: how often the server looks at all its sockets is most of it. There each side waits for the other in steps.

Fails if a figure is more than 5 % above the one in kept.txt, or over its limit. --keep writes what was counted
there, which is done with the change that it is due to.
"""

import argparse
import dataclasses
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import threading
from typing import Callable, Optional

KEPT = pathlib.Path(__file__).with_name("kept.txt")
TOLERANCE = 0.05
PATIENCE = 300  # seconds for one run

SERVER, CLIENT = "server", "client"


@dataclasses.dataclass
class Part:
    """A process: its role and settings, as the program takes them."""

    role: str
    settings: dict


@dataclasses.dataclass
class Figure:
    name: str
    parts: Callable[[int], list]  # of a run of that length, the one with the port first
    counted: str
    lengths: tuple
    per: float  # instructions are told for so many of what the length counts
    limit: Optional[float] = None
    runs: int = 1  # of each length, of which the shortest counts
    is_in_steps: bool = False  # the server goes on when all clients have done what came of its last turn


def alone(role):
    return lambda count: [Part(role, {"count": count})]


def round_trip(count):
    settings = {"road": "ours", "warmup": 100, "count": count}
    return [Part("roundtrip-server", settings), Part("roundtrip-client", settings)]


def stream(clients, processes, **more):
    def parts(total):
        settings = {"road": "ours", "values": 1000, "clients": clients, "everychange": 1, "ahead": 100_000,
                    "warmup": 5000, "total": total, **more}
        result = [Part("stream-server", settings)]
        for i in range(processes):
            first, end = clients * i // processes, clients * (i + 1) // processes
            result.append(Part("stream-client", {**settings, "first": first, "count": end - first}))
        return result

    return parts


def snapshot(values):
    return [Part("tree-server", {"values": values}), Part("tree-client", {"values": values})]


def forget(values):
    return [Part("tree-server", {"values": values}), Part("tree-client", {"values": values, "forget": 1})]


MANY = 128  # clients

FIGURES = [
    Figure("set a value with one observer", alone("set"), SERVER, (100_000, 600_000), 1),
    Figure("find by path, depth 4 of 10,000", alone("find"), SERVER, (20_000, 70_000), 1, runs=3),
    Figure("round trip, server", round_trip, SERVER, (1_000, 3_000), 1),
    Figure("round trip, client", round_trip, CLIENT, (1_000, 3_000), 1),
    Figure("a change to 1 client, server", stream(1, 1), SERVER, (105_000, 305_000), 1),
    Figure("a change to 1 client, client", stream(1, 1), CLIENT, (105_000, 305_000), 1),
    Figure("1,000 changes to 128 clients, per client", stream(MANY, 2, steps=1), SERVER, (25_000, 325_000),
           1000 / MANY, 2600, runs=2, is_in_steps=True),
    Figure("snapshot per value, server", snapshot, SERVER, (20_000, 60_000), 1, 9000),
    Figure("snapshot per value, client", snapshot, CLIENT, (20_000, 60_000), 1, 4500),
    # Each length has as many other edits that wait: what looks at all of them costs more with the longer one.
    Figure("the same, each edited and deleted", forget, CLIENT, (5_000, 15_000), 1, 16_000),
]


class Process:
    """One part of a run, under callgrind if it is the one that is counted."""

    def __init__(self, program, part, folder):
        command = [program, "--role", part.role] + [f"{key}={value}" for key, value in part.settings.items()]
        self.log = None
        if folder is not None:
            self.log = pathlib.Path(folder, "log")
            command = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder}/counts",
                       f"--log-file={self.log}"] + command
        # Hashes that are the same in every run.
        environment = dict(os.environ, QT_HASH_SEED="0")
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        env=environment)

    def wait_for(self, *kinds):
        """The words of the next line that begins with one of them."""
        for line in self.process.stdout:
            words = line.split()
            if words and words[0] in kinds:
                return words
            if words and words[0] == "failed":
                raise RuntimeError(line.strip())
        raise RuntimeError(f"a process ended before its '{kinds[0]}'")

    def go_on(self):
        self.process.stdin.write("\n")
        self.process.stdin.flush()

    def end(self):
        """The instructions it took, if they were counted."""
        self.process.send_signal(signal.SIGTERM if self.log else signal.SIGKILL)
        self.process.wait()
        self.process.stdin.close()
        self.process.stdout.close()
        if not self.log:
            return None
        match = re.search(r"Collected : (\d+)", self.log.read_text(encoding="utf-8"))
        return int(match[1]) if match else None


def go_in_steps(server, clients):
    while server.wait_for("step", "result")[0] == "step":
        for client in clients:
            client.wait_for("step")
        server.go_on()


def run(program, figure, length):
    """Instructions of one run."""
    processes = []
    with tempfile.TemporaryDirectory() as folder:
        def start(part, is_counted):
            processes.append(Process(program, part, folder if is_counted else None))
            return processes[-1]

        # Whoever waits for a line of a process that says nothing any more sees it end.
        watchdog = threading.Timer(PATIENCE, lambda: [process.process.kill() for process in processes])
        watchdog.start()
        counts = []
        try:
            server_part, *client_parts = figure.parts(length)
            server = start(server_part, figure.counted == SERVER)
            if client_parts:
                port = server.wait_for("port")[1]
                clients = [start(dataclasses.replace(part, settings={**part.settings, "port": port}),
                                 figure.counted == CLIENT) for part in client_parts]
                if figure.is_in_steps:
                    go_in_steps(server, clients)
                else:
                    for client in clients:
                        client.wait_for("result")
            if not figure.is_in_steps:
                server.wait_for("result")
        finally:
            watchdog.cancel()
            counts = [process.end() for process in processes]
        return next(count for count in counts if count is not None)


def count(program, figure):
    def shortest(length):
        return min(run(program, figure, length) for _ in range(figure.runs))

    short, long = figure.lengths
    return (shortest(long) - shortest(short)) / (long - short) * figure.per


def read_kept():
    if not KEPT.exists():
        return {}
    lines = [line.rsplit(None, 1) for line in KEPT.read_text(encoding="utf-8").splitlines() if not line.startswith("#")]
    return {name: float(number) for name, number in lines}


def write_kept(figures):
    lines = ["# Instructions, by benchmarks/instructions/count.py --keep: g++ 12, Qt 5.15.8, x86-64."]
    lines += [f"{name:45}{figures[name]:10.1f}" for name in (figure.name for figure in FIGURES) if name in figures]
    KEPT.write_text("\n".join(lines) + "\n", encoding="utf-8")


def judge(figure, now, kept):
    """What is to be said of it, and whether it is good."""
    if figure.limit is not None and now > figure.limit:
        return "OVER", False
    if kept is None:
        return "not kept", True
    if now > kept * (1 + TOLERANCE):
        return "WORSE", False
    return ("better: keep it" if now < kept * (1 - TOLERANCE) else "ok"), True


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=os.path.abspath)
    parser.add_argument("--keep", action="store_true")
    parser.add_argument("--filter", default="")
    arguments = parser.parse_args()
    kept, is_good = read_kept(), True
    print(f"{'instructions':42}{'now':>10}{'kept':>10}{'change':>9}{'limit':>8}")
    for figure in FIGURES:
        if arguments.filter.lower() not in figure.name.lower():
            continue
        now, before = count(arguments.program, figure), kept.get(figure.name)
        text, is_figure_good = judge(figure, now, before)
        is_good = is_good and is_figure_good
        change = "-" if before is None else f"{(now / before - 1) * 100:+.1f} %"
        print(f"{figure.name:42}{now:10.1f}{'-' if before is None else f'{before:.1f}':>10}{change:>9}"
              f"{'-' if figure.limit is None else f'{figure.limit:.0f}':>8}  {text}", flush=True)
        kept[figure.name] = now
    if arguments.keep:
        write_kept(kept)
        return 0
    return 0 if is_good else 1


if __name__ == "__main__":
    sys.exit(main())
