#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A fresh Debian in a folder, to install packages in and to run what they bring. Needs root."""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import threading

CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "multichannelserver-packages"
SUITE = "bookworm"
PATIENCE = 120  # seconds
# Its own processes and mounts, all of which end with it.
ENTER = """mount -t proc proc "$0/proc" && mount --rbind /dev "$0/dev" && mount -t tmpfs tmpfs "$0/run" &&
mount --bind "$1" "$0/var/cache/apt/archives" && root=$0 && shift && exec chroot "$root" "$@" """
ENVIRONMENT = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8", "HOME": "/root", "DEBIAN_FRONTEND": "noninteractive",
               "QT_QPA_PLATFORM": "offscreen"}


def base():
    """The fresh root as an archive, made once a suite."""
    archive = CACHE / f"{SUITE}.tar"
    if not archive.is_file():
        work = CACHE / "making"
        shutil.rmtree(work, ignore_errors=True)
        CACHE.mkdir(parents=True, exist_ok=True)
        print(f"making {archive}", flush=True)
        subprocess.run(["debootstrap", "--variant=minbase", SUITE, work, mirror()], check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["tar", "--numeric-owner", "-C", work, "-cf", f"{archive}.part", "."], check=True)
        pathlib.Path(f"{archive}.part").rename(archive)
        shutil.rmtree(work)
    return archive


def mirror():
    """The one of this machine."""
    found = re.search(rf"^(?:URIs: |deb )(\S+/debian)(?=/?\s|$)",
                      "\n".join(path.read_text() for path in sources()), flags=re.MULTILINE)
    return found[1] if found else "http://deb.debian.org/debian"


def sources():
    folder = pathlib.Path("/etc/apt")
    return [path for path in [folder / "sources.list", *sorted((folder / "sources.list.d").glob("*.*"))]
            if path.is_file() and path.suffix in (".list", ".sources") and "debian.org" in path.read_text()]


class Running:
    """A program in the root, until it ends or is to."""

    def __init__(self, words):
        self.process = subprocess.Popen(words, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                        start_new_session=True)
        self.said, self.port, self.listens = [], None, threading.Event()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.said.append(line.decode("utf-8", "replace").rstrip())
            found = re.match(r"listening on \S+:(\d+)$", self.said[-1])
            if found:
                self.port = found[1]
                self.listens.set()
        self.listens.set()

    def wait_for_port(self):
        self.listens.wait(PATIENCE)
        if not self.port:
            self.stop()
            raise RuntimeError("does not listen: " + "\n".join(self.said))
        return self.port

    def stop(self):
        """The exit code after SIGTERM, which goes to all in its session but the shell around it."""
        if self.process.poll() is None:
            os.killpg(self.process.pid, signal.SIGTERM)
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            os.killpg(self.process.pid, signal.SIGKILL)
            return self.process.wait()


class Root:
    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.archives = CACHE / "archives"
        (self.archives / "partial").mkdir(parents=True, exist_ok=True)
        subprocess.run(["tar", "--numeric-owner", "-C", self.folder, "-xf", base()], check=True)
        for old in (self.folder / "etc/apt/sources.list", *(self.folder / "etc/apt/sources.list.d").glob("*")):
            old.unlink(missing_ok=True)
        for path in sources():
            shutil.copy(path, self.folder / path.relative_to("/"))
        shutil.copy("/etc/resolv.conf", self.folder / "etc/resolv.conf")
        (self.folder / "etc/hosts").write_text("127.0.0.1 localhost\n")  # as whoever installs a system has it
        (self.folder / "etc/apt/apt.conf.d/99check").write_text(
            'APT::Install-Recommends "false";\nAcquire::Check-Valid-Until "false";\nAcquire::Languages "none";\n'
            'Binary::apt-get::APT::Keep-Downloaded-Packages "true";\nDPkg::Use-Pty "false";\nAPT::Sandbox::User "root";\n')
        # Services do not start in a folder.
        policy = self.folder / "usr/sbin/policy-rc.d"
        policy.write_text("#!/bin/sh\nexit 101\n")
        policy.chmod(0o755)

    def words(self, words, environment=None):
        variables = dict(ENVIRONMENT, **(environment or {}))
        return ["unshare", "--mount", "--pid", "--fork", "--kill-child", "sh", "-c", ENTER, str(self.folder), str(self.archives),
                "env", "-i", *(f"{name}={value}" for name, value in variables.items()), *words]

    def run(self, *words, environment=None, patience=PATIENCE * 10):
        """(code, what it said)"""
        done = subprocess.run(self.words(words, environment), capture_output=True, stdin=subprocess.DEVNULL, timeout=patience)
        return done.returncode, (done.stdout + done.stderr).decode("utf-8", "replace")

    def must(self, *words, environment=None):
        code, said = self.run(*words, environment=environment)
        if code:
            raise RuntimeError(f"{' '.join(words)}: {code}\n{said}")
        return said

    def apt(self, *words):
        return self.run("apt-get", "-y", "-q", "-o", "Dpkg::Options::=--force-confdef", "-o", "Dpkg::Options::=--force-confold", *words)

    def start(self, *words, environment=None):
        return Running(self.words(words, environment))

    def files(self):
        """All that is there, but what the system notes of what was done."""
        noted = re.compile(r"^(?:var/(?:log|cache|lib/(?:dpkg|apt|systemd)|tmp)|tmp|run|proc|dev|sys|packages|etc/ld\.so\.cache|"
                           r"etc/(?:passwd|group|shadow|gshadow)-?)(?:/|$)")
        return {str(path.relative_to(self.folder)) for path in self.folder.rglob("*")
                if not noted.match(str(path.relative_to(self.folder)))}
