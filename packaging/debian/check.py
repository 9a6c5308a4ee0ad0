#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""check.py PACKAGES [--keep]: installs the packages in a fresh Debian, runs what they bring, upgrades and downgrades them
beside a running server with configurations of other versions, and removes them. Needs root; ends with what went wrong.

There is no systemd in a folder: its unit is judged, and its line is started as its user.
"""
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

import repack
from root import Root

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parent.parent
PROGRAMS = {"mcserver": 8, "mcconsole": 1, "mctree": 1, "dimodule": 1, "mcdemo": 1}
OLDER, NEWER = "0.0.9-1", "0.1.9-1"
SERVER = "/MultiChannelServer"
DEFAULTS = "etc/default/mcserver"
CHANGED = '# by the administrator\nMCSERVER_OPTIONS="--listen 127.0.0.1:0 --name tower"\n'
# As a version before had it: few keys. As a later one has it: with keys that nobody knows yet.
OLD_SETTINGS = """[General]
DeviceAddress=192.0.2.77

[StaticMpxORVs]
Names=Tower
Tower\\Comment=ATC position 2
"""
NEW_KEY = "KeyOfALaterVersion=kept\n"
NEW_SECTION = "\n[SectionOfALaterVersion]\nDepth=12\n"


class Check:
    def __init__(self, packages, work):
        self.work, self.problems = pathlib.Path(work), []
        self.packages = sorted(packages.glob("*.deb"))
        self.version = repack.field(self.packages[0], "Version")
        self.names = [repack.field(package, "Package") for package in self.packages]
        (self.work / "root").mkdir()
        self.root = Root(self.work / "root")
        self.state = self.root.folder / "var/lib/mcserver"
        self.settings = self.state / "mcserver.ini"

    def expect(self, what, is_good, said=""):
        print(f"{'ok' if is_good else 'NOT OK'}: {what}", flush=True)
        if not is_good:
            self.problems.append(what)
            print(said, flush=True)

    # Versions of the packages

    def offer(self, folder):
        """The packages in a folder of the root; their paths there."""
        target = self.root.folder / "packages" / folder.name
        target.mkdir(parents=True, exist_ok=True)
        for package in folder.glob("*.deb"):
            shutil.copy(package, target)
        return [f"/packages/{folder.name}/{package.name}" for package in sorted(folder.glob("*.deb"))]

    def other_version(self, version):
        folder = self.work / version
        folder.mkdir()
        for package in self.packages:
            repack.with_version(package, self.version, version, folder,
                                [(DEFAULTS, lambda text: f"# of version {version}\n{text}")])
        return self.offer(folder)

    def installed(self):
        said = self.root.must("dpkg-query", "-W", "-f", "${Package} ${Version} ${db:Status-Status}\n")
        return {line.split()[0]: line.split()[1] for line in said.splitlines()
                if line.endswith(" installed") and line.split()[0] in self.names}

    def left_with_settings(self):
        said = self.root.must("dpkg-query", "-W", "-f", "${Package} ${db:Status-Status}\n")
        return [line.split()[0] for line in said.splitlines() if line.endswith(" config-files") and line.split()[0] in self.names]

    # The server, as its unit starts it

    def start_server(self, *more):
        unit = (self.root.folder / "lib/systemd/system/mcserver.service").read_text()
        line = re.search(r"^ExecStart=(.*)$", unit, flags=re.MULTILINE)[1]
        options = re.findall(r'^MCSERVER_OPTIONS="(.*)"$', (self.root.folder / DEFAULTS).read_text(), flags=re.MULTILINE)[-1]
        self.root.must("install", "-d", "-o", "mcserver", "-g", "mcserver", "-m", "700", "/var/lib/mcserver")
        if self.settings.exists():
            self.root.must("chown", "mcserver:mcserver", "/var/lib/mcserver/mcserver.ini")
        words = shlex.split(line.replace("${STATE_DIRECTORY}", "/var/lib/mcserver").replace("$MCSERVER_OPTIONS", options))
        server = self.root.start("setpriv", "--reuid=mcserver", "--regid=mcserver", "--clear-groups", "--no-new-privs", *words, *more,
                                 environment={"HOME": "/nonexistent"})
        server.wait_for_port()
        return server

    def tree(self, server, *words):
        return self.root.run("mctree", "--connect", f"127.0.0.1:{server.port}", *words)

    def answers(self, what, server, path, content):
        code, said = self.tree(server, "get", "--wait", f"={content}", "--timeout", "60000", path)
        self.expect(what, code == 0 and content in said, said + "\n".join(server.said))

    # What is checked

    def fresh(self, paths):
        code, said = self.root.run("apt-get", "-q", "update")
        self.expect("a fresh root finds its packages", code == 0, said)
        code, said = self.root.apt("--simulate", "install", *paths)
        self.expect("nothing is missing that the packages depend on", code == 0, said)
        needed = [name for name in re.findall(r"^Inst (\S+)", said, flags=re.MULTILINE) if name not in self.names]
        code, said = self.root.apt("install", "pkg-config", "cmake", "g++", "make", "appstream", "bash-completion", "iproute2", *needed)
        self.expect(f"what others bring is installed ({len(needed)} packages)", code == 0, said)

    def install(self, paths):
        code, said = self.root.apt("install", *paths)
        self.expect(f"all {len(paths)} packages install", code == 0 and len(self.installed()) == len(self.names), said)

    def documents(self):
        for program, section in PROGRAMS.items():
            code, said = self.root.run(f"/usr/bin/{program}", "--version")
            self.expect(f"{program} tells its version", code == 0 and said.strip() == f"{program} {self.version.split('-')[0]}", said)
            manual = self.root.folder / f"usr/share/man/man{section}/{program}.{section}.gz"
            self.expect(f"{program} has a manual page", manual.is_file())
            code, said = self.root.run("bash", "-c", f". /usr/share/bash-completion/completions/{program} && "
                                       f"complete -p {program}")
            self.expect(f"{program} is completed by bash", code == 0, said)
        code, said = self.root.run("appstreamcli", "validate", "--no-net", "/usr/share/metainfo/mcconsole.metainfo.xml")
        self.expect("software centres understand the console's description", code == 0, said)
        code, said = self.root.run("systemd-analyze", "verify", "/lib/systemd/system/mcserver.service")
        self.expect("systemd finds no fault with the unit", "mcserver.service:" not in said, said)
        code, said = self.root.run("id", "mcserver")
        self.expect("the service has a user", code == 0, said)

    def programs(self):
        (self.root.folder / DEFAULTS).write_text(CHANGED)
        server = self.start_server()
        self.answers("the line of the unit starts a server that is asked by mctree", server, f"{SERVER}/Status/BootState", "Ready")
        code, said = self.tree(server, "info")
        self.expect("mctree tells of it", code == 0 and "tower" in said, said)
        code, said = self.root.run("mcconsole", "--connect", f"127.0.0.1:{server.port}", "--config", "/tmp/console.ini", "--locale",
                                   "de", "--screenshot", "/tmp/pictures")
        pictures = list((self.root.folder / "tmp/pictures").glob("*.png"))
        self.expect(f"mcconsole takes pictures ({len(pictures)})", code == 0 and len(pictures) >= 5, said)
        self.expect("the server ends when it is asked to", server.stop() == 0, "\n".join(server.said))
        code, said = self.root.run("dpkg-query", "-W", "-f", "${Depends} ${Recommends}", "mcserver")
        self.expect("the server needs no Hamlib", code == 0 and "hamlib" not in said, said)
        module = next(self.root.folder.glob("usr/lib/*/multichannelserver/mcserver-hamlib.so"))
        module.rename(f"{module}.away")
        code, said = self.root.run("mcserver", "--headless", "--listen", "127.0.0.1:0", "--config", "/tmp/receivers.ini",
                                   "--device", "hamlib:1")
        self.expect("without the module for receivers it says that there is none", code != 0 and "what knows Hamlib is not installed"
                    in said, said)
        module.with_suffix(".so.away").rename(module)
        server = self.start_server("--device", "hamlib:1")
        self.answers("the server finds its module for receivers, whose dummy gets ready", server,
                     f"{SERVER}/Status/BootState", "Ready")
        server.stop()

    def readme(self):
        """What the README says of the programs is typed as it stands, in a network of its own."""
        text = (self.root.folder / "usr/share/doc/multichannelserver-doc/README.md").read_text()
        block = re.search(r"^## The programs\n.*?\n\n((?:    [^\n]*\n)+)", text, flags=re.MULTILINE | re.DOTALL)[1]
        lines = [line.split("  #")[0].strip() for line in block.splitlines()]
        self.expect(f"the README has commands to type ({len(lines)})", len(lines) > 4 and lines[0] == "mcserver", block)
        script = ["set -ex", "ip link set lo up", "mcserver > /tmp/said & server=$!",
                  f"mctree get --wait =Ready --timeout 60000 {SERVER}/Status/BootState"]
        for line in lines[1:]:
            if line.startswith("mcconsole"):  # which stays, as a window does
                script.append(f"{line} --screenshot /tmp/readme")
            elif re.search(r" (?:watch|hold) ", line):  # so do these
                script.append(f"code=0; timeout 5 {line} || code=$?; test $code = 124 -o $code = 130")
            else:
                script.append(line)
        script.append("kill $server; wait $server")
        code, said = self.root.run("unshare", "--net", "bash", "-c", "\n".join(script), environment={"HOME": "/tmp/reader"})
        self.expect("the commands of the README do what they are said to", code == 0, said)

    def development(self):
        project = self.root.folder / "tmp/project"
        shutil.copytree(PROJECT / "tests/consumer/project", project)
        code, said = self.root.run("sh", "-c", "cmake -S /tmp/project -B /tmp/project/build && "
                                   "cmake --build /tmp/project/build --target consumer && /tmp/project/build/consumer")
        self.expect("a project finds the library by CMake", code == 0 and "SweepTime = 250 us" in said, said)
        code, said = self.root.run("sh", "-c", "g++ -std=c++17 -fPIC /tmp/project/main.cpp -o /tmp/consumer "
                                   "$(pkg-config --cflags --libs MultiChannelServerCommon) && /tmp/consumer")
        self.expect("and by pkg-config", code == 0 and "SweepTime = 250 us" in said, said)
        shutil.rmtree(project)
        shutil.copytree(PROJECT / "examples/form", project)
        code, said = self.root.run("sh", "-c", "cmake -S /tmp/project -B /tmp/project/build && cmake --build /tmp/project/build")
        self.expect("a form from Qt Designer is built", code == 0, said)
        shutil.rmtree(project)
        code, said = self.root.run("sh", "-c", "ldd /usr/lib/*/qt5/plugins/designer/libmultichannelserver-designer.so")
        self.expect("Qt Designer's plugin finds its libraries", code == 0 and "not found" not in said, said)

    def upgrade(self, older, paths, newer):
        """From an older version to this one and to a newer one, beside a running server."""
        self.root.apt("purge", *self.names)
        code, said = self.root.apt("install", *older)
        self.expect("an older version installs", code == 0, said)
        (self.root.folder / DEFAULTS).write_text(CHANGED)
        self.settings.parent.mkdir(exist_ok=True)
        self.settings.write_text(OLD_SETTINGS)
        server = self.start_server()
        self.answers("the older version runs", server, f"{SERVER}/Status/BootState", "Ready")
        code, said = self.root.apt("install", *paths)
        self.expect("it is upgraded while it runs", code == 0 and set(self.installed().values()) == {self.version}, said)
        self.answers("the old server still answers, to the new mctree", server, f"{SERVER}/Status/BootState", "Ready")
        self.expect("it ends when it is asked to", server.stop() == 0, "\n".join(server.said))
        self.kept("after the upgrade")
        self.expect("what the administrator changed is kept beside what the package has",
                    (self.root.folder / f"{DEFAULTS}.dpkg-dist").is_file())
        server = self.start_server()
        self.answers("the new server has the older configuration", server, f"{SERVER}/Config/DeviceAddress", "192.0.2.77")
        self.answers("and the static MpxORV of it", server, f"{SERVER}/StaticMpxORVs/Tower/Status/Comment", "ATC position 2")
        self.tree(server, "set", f"{SERVER}/Config/DeviceAddress", "192.0.2.78")
        code, said = self.tree(server, "set", f"{SERVER}/Config/SaveConfig", "true")
        server.stop()
        code, said = self.root.apt("install", *newer)
        self.expect("a newer version is installed over it", code == 0, said)

    def downgrade(self, paths):
        """Back from a newer version, with what that has written."""
        text = re.sub(r"^(\[General\]\n)", rf"\g<1>{NEW_KEY}", self.settings.read_text(), flags=re.MULTILINE)
        self.settings.write_text(re.sub(r"(DefaultFrequencyForChannel=).*", r"\g<1>far away", text) + NEW_SECTION)
        code, said = self.root.apt("install", *paths)
        self.expect("apt refuses a downgrade that is not asked for", code != 0 and "downgrade" in said.lower(), said)
        code, said = self.root.apt("--allow-downgrades", "install", *paths)
        self.expect("it is downgraded", code == 0 and set(self.installed().values()) == {self.version}, said)
        self.kept("after the downgrade")
        server = self.start_server()
        self.answers("the server starts with the newer configuration", server, f"{SERVER}/Config/DeviceAddress", "192.0.2.78")
        self.expect("it says what it cannot use", any("DefaultFrequencyForChannel" in line for line in server.said),
                    "\n".join(server.said))
        self.tree(server, "set", f"{SERVER}/Config/DeviceAddress", "192.0.2.79")
        self.expect("it ends when it is asked to", server.stop() == 0, "\n".join(server.said))
        text = self.settings.read_text()
        self.expect("keys of a later version outlive a save", NEW_KEY in text and "Depth=12" in text
                    and "192.0.2.79" in text, text)

    def kept(self, when):
        self.expect(f"changed options are kept {when}", (self.root.folder / DEFAULTS).read_text() == CHANGED)

    def beside(self):
        """The libraries of two versions, each with programs of its own."""
        folder = self.work / "beside"
        folder.mkdir()
        libraries = [package for package in self.packages if re.match(r"libmultichannelserver[a-z-]*\d[\d.]*_", package.name)]
        old = re.search(r"(\d[\d.]*)$", repack.field(libraries[0], "Package"))[1]
        for package in libraries:
            repack.as_other_library(package, old, "0.99", folder)
        code, said = self.root.apt("install", *self.offer(folder))
        self.expect("libraries of another version install beside these", code == 0 and len(self.installed()) == len(self.names), said)
        code, said = self.root.run("mctree", "--version")
        self.expect("programs find theirs", code == 0, said)
        code, said = self.root.run("sh", "-c", "ldd /usr/lib/*/libMultiChannelServerCommon.so.0.99")
        self.expect("and libraries theirs", code == 0 and "not found" not in said and f".so.{old}" not in said, said)
        code, said = self.root.apt("purge", *[repack.field(package, "Package") for package in folder.glob("*.deb")])
        self.expect("they go again", code == 0, said)

    def twice(self):
        """The same library in two places."""
        local = self.root.folder / "usr/local/lib"
        for library in self.root.folder.glob("usr/lib/*/libMultiChannelServerConnection.so.*.*.*"):
            shutil.copy(library, local)
        code, said = self.root.run("sh", "-c", "ldconfig && ldd /usr/bin/mctree && mctree --version")
        self.expect("a library in /usr/local comes first, and works", code == 0 and "/usr/local/lib/libMultiCh" in said, said)
        for library in local.glob("libMulti*"):
            library.unlink()
        code, said = self.root.run("sh", "-c", "ldconfig && ldd /usr/bin/mctree && mctree --version")
        self.expect("without it the one of the package does", code == 0 and "/usr/local" not in said, said)

    def remove(self, before):
        code, said = self.root.apt("remove", *self.names)
        self.expect("the packages are removed", code == 0 and not self.installed(), said)
        self.kept("after the removal")
        self.expect("and so is what the server keeps", self.settings.is_file())
        # apt knows a package without a source no more once it is removed.
        code, said = self.root.run("dpkg", "--purge", *self.left_with_settings())
        self.expect("the packages are purged", code == 0, said)
        shutil.rmtree(self.root.folder / "packages")
        left = sorted(self.root.files() - before)
        self.expect("nothing is left behind", not left, "\n".join(left[:40]))
        self.expect("and nothing else has gone", not before - self.root.files(), "\n".join(sorted(before - self.root.files())[:40]))

    def all(self):
        paths = self.offer(self.packages[0].parent)
        self.fresh(paths)
        before = self.root.files()
        self.install(paths)
        self.documents()
        self.programs()
        self.readme()
        self.development()
        self.upgrade(self.other_version(OLDER), paths, self.other_version(NEWER))
        self.downgrade(paths)
        self.beside()
        self.twice()
        self.remove(before)


def main():
    work = tempfile.mkdtemp(prefix="mcs-packages-")
    try:
        check = Check(pathlib.Path(sys.argv[1]).resolve(), work)
        check.all()
    finally:
        if "--keep" in sys.argv:
            print(f"kept: {work}")
        else:
            subprocess.run(["rm", "-rf", "--one-file-system", work], check=True)
    print(f"{len(check.problems)} problems")
    sys.exit(1 if check.problems else 0)


main()
