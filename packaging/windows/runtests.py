#!/usr/bin/env python3
"""runtests.py BUILD [--jobs N] [--stall SECONDS] [--filter TEXT]: runs the tests of a build for Windows, by Wine.

A program's tests run in one process, those of sources that ask for it in one process each. After a crash or a hang the
rest of the program's tests run in the next process. Fails unless every test passes or is in the list of exclusions,
packaging/windows/excluded, each with what Wine does wrong. Writes BUILD/wine/<program>.log and BUILD/wine/results.json.
"""
import argparse
import concurrent.futures
import fnmatch
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import time

HERE = pathlib.Path(__file__).resolve().parent
RUN = str(HERE / "wine-run")
BEGIN = re.compile(r"\[ RUN      \] (\S+)")
END = re.compile(r"\[ +(OK|FAILED) +\] (\S+?)(?:,| |$)")


def of_wine(path):
    return "Z:" + str(path).replace("/", "\\")


class Exclusions:
    """Lines of the list: a test (with * and ?), the fault of Wine, which is a program in faults/, and a reason."""

    def __init__(self, path):
        self.rows, self.used = [], set()
        for line in path.read_text().splitlines():
            if line.strip() and not line.startswith("#"):
                pattern, fault, reason = (part.strip() for part in line.split("|"))
                if not (HERE / "faults" / f"{fault}.cpp").is_file():
                    sys.exit(f"{path}: there is no faults/{fault}.cpp")
                self.rows.append((pattern, fault, reason))

    def find(self, name):
        for row in self.rows:
            if fnmatch.fnmatchcase(name, row[0]):
                self.used.add(row)
                return row
        return None


class Process:
    """A program under Wine, whose output goes to a log. Ends with a code, or as hung."""

    def __init__(self, words, log, stall):
        self.log, self.stall = log, stall
        self.process = subprocess.Popen([RUN, *words], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                        stdin=subprocess.DEVNULL, start_new_session=True, cwd=pathlib.Path(log.name).parent)
        os.set_blocking(self.process.stdout.fileno(), False)

    def lines(self):
        """What it says. After a stall it is killed."""
        rest, heard, is_over = b"", time.monotonic(), False
        while True:
            # Asked before the output is read, so that what came before the end is not lost. Its own children may hold the
            # output open for longer.
            is_over = self.process.poll() is not None
            said = self.process.stdout.read()
            if said:
                self.log.write(said)
                self.log.flush()
                heard = time.monotonic()
                *lines, rest = (rest + said).split(b"\n")
                yield from (line.decode("utf-8", "replace").rstrip("\r") for line in lines)
            elif is_over:
                return
            elif time.monotonic() - heard > self.stall:
                os.killpg(self.process.pid, signal.SIGKILL)
                self.process.wait()
                self.process.returncode = None
                return
            else:
                time.sleep(0.02)

    def verdict(self):
        code = self.process.returncode
        return "HUNG" if code is None else f"ended with {code}"


class Runner:
    def __init__(self, build, stall, exclusions):
        self.build, self.stall, self.exclusions = build, stall, exclusions
        self.out = build / "wine"
        self.out.mkdir(exist_ok=True)

    def programs(self, text):
        """{program: sources whose tests run alone}, and {name: words} of what is one test by itself."""
        listing = subprocess.run(["ctest", "--test-dir", self.build, "--show-only=json-v1"], check=True, capture_output=True)
        programs, others = {}, {}
        for test in json.loads(listing.stdout)["tests"]:
            words = test.get("command", [])
            if len(words) < 2 or pathlib.Path(words[0]).name != "wine-run":
                continue
            program = pathlib.Path(words[1])
            if program.parent != self.build / "bin" or text not in program.name:
                continue
            source = next((word[len("--source="):] for word in words if word.startswith("--source=")), None)
            if source is None:
                others[test["name"]] = words[1:]
            else:
                alone = programs.setdefault(words[1], set())
                if "--alone" in words:
                    alone.add(source)
        return programs, others

    def names(self, program):
        """{test: its source file}"""
        path = self.out / f"{pathlib.Path(program).stem}.json"
        path.unlink(missing_ok=True)
        subprocess.run([RUN, program, "--gtest_list_tests", f"--gtest_output=json:{of_wine(path)}"], timeout=600,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL, cwd=self.out)
        return {f'{suite["name"]}.{test["name"]}': re.split(r"[\\/]", test["file"])[-1]
                for suite in json.loads(path.read_text())["testsuites"] for test in suite["testsuite"]}

    def run_together(self, program, names, log, results):
        left = list(names)
        while left:
            flags = self.out / f"{pathlib.Path(program).stem}.flags"
            flags.write_text(f'--gtest_filter={":".join(left)}\n')
            process, current = Process([program, f"--gtest_flagfile={of_wine(flags)}"], log, self.stall), None
            for line in process.lines():
                begin, end = BEGIN.search(line), END.search(line)
                if begin:
                    current = begin[1]
                elif end and end[2] == current:
                    results[current], current = ("passed" if end[1] == "OK" else "FAILED"), None
            if current:
                results[current] = process.verdict()
            rest = [name for name in left if name not in results]
            if len(rest) == len(left):
                results.update((name, f"did not run: {process.verdict()}") for name in rest)
                break
            if not rest and not current and process.process.returncode is None:
                results[f"{pathlib.Path(program).stem}: its end"] = "HUNG"
            left = rest

    def run_program(self, program, alone):
        begin, results = time.monotonic(), {}
        with open(self.out / f"{pathlib.Path(program).stem}.log", "wb") as log:
            together = []
            for name, source in self.names(program).items():
                if self.exclusions.find(name):
                    results[name] = "excluded"
                elif source in alone:
                    self.run_together(program, [name], log, results)
                else:
                    together.append(name)
            self.run_together(program, together, log, results)
        return pathlib.Path(program).stem, results, time.monotonic() - begin

    def run_other(self, name, words):
        begin = time.monotonic()
        if self.exclusions.find(name):
            return name, {name: "excluded"}, 0
        with open(self.out / f"{name}.log", "wb") as log:
            process = Process(words, log, self.stall)
            for _ in process.lines():
                pass
        return name, {name: "passed" if process.process.returncode == 0 else process.verdict()}, time.monotonic() - begin


def print_table(rows, exclusions):
    row = "{:44}{:>8}{:>8}{:>10}{:>8}{:>8}"
    print(row.format("program", "tests", "passed", "excluded", "failed", "s"))
    total = [0, 0, 0, 0]
    failures = []
    for program, results, seconds in sorted(rows, key=lambda entry: entry[0]):
        values = list(results.values())
        bad = [(name, value) for name, value in results.items() if value not in ("passed", "excluded")]
        counts = [len(values), values.count("passed"), values.count("excluded"), len(bad)]
        total = [a + b for a, b in zip(total, counts)]
        failures += [(program, *pair) for pair in bad]
        print(row.format(program, *counts, round(seconds)))
    print(row.format("all", *total, ""))
    for pattern, fault, reason in exclusions.rows:
        print(f"excluded: {pattern}: {reason} (packaging/windows/faults/{fault}.cpp)")
    for program, name, value in failures:
        print(f"{program}: {name}: {value}")
    return total, failures


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=lambda text: pathlib.Path(text).resolve())
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--stall", type=float, default=300, help="seconds without output after which a program hangs")
    parser.add_argument("--filter", default="", help="only programs with this in their names")
    options = parser.parse_args()
    exclusions = Exclusions(HERE / "excluded")
    runner = Runner(options.build, options.stall, exclusions)
    programs, others = runner.programs(options.filter)
    rows = []
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        work = [pool.submit(runner.run_program, *entry) for entry in programs.items()]
        work += [pool.submit(runner.run_other, *entry) for entry in others.items()]
        for future in concurrent.futures.as_completed(work):
            rows.append(future.result())
            bad = [pair for pair in rows[-1][1].items() if pair[1] not in ("passed", "excluded")]
            print(f"{rows[-1][0]}: {len(rows[-1][1])} tests, {len(bad)} unexpected, {rows[-1][2]:.0f} s", file=sys.stderr)
    total, failures = print_table(rows, exclusions)
    (runner.out / "results.json").write_text(json.dumps({row[0]: row[1] for row in rows}, indent=1))
    unused = [row[0] for row in exclusions.rows if row not in exclusions.used] if not options.filter else []
    for pattern in unused:
        print(f"excluded: {pattern}: there is no such test")
    print(f"{total[1]} passed, {total[3]} failed, {total[2]} skipped")
    sys.exit(1 if failures or unused or not total[1] else 0)


if __name__ == "__main__":
    main()
