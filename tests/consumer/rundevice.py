#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""rundevice.py <directory of programs> <plugin>: starts the installed server with the plugin's device, and has the
installed mctree tune it, as whoever has just written one would."""
import pathlib
import re
import subprocess
import sys
import tempfile
import threading

DEADLINE_S = 60


def main():
    programs, plugin = pathlib.Path(sys.argv[1]), sys.argv[2]
    with tempfile.TemporaryDirectory() as directory:
        server = subprocess.Popen(
            [programs / "mcserver", "--headless", "--listen", "127.0.0.1:0", "--config", f"{directory}/mcserver.ini",
             "--device", f"plugin:{plugin},3"], stdout=subprocess.PIPE, text=True)
        watchdog = threading.Timer(DEADLINE_S, server.kill)
        watchdog.start()
        try:
            use(server, programs / "mctree")
        finally:
            server.terminate()
            rest = server.communicate()[0]
            watchdog.cancel()
    print(rest)
    if server.returncode != 0 or "ORV: channel 0 goes to 121500000 Hz" not in rest:
        sys.exit(f"the server ended with {server.returncode}, and the device was not tuned")


def use(server, mctree):
    port = None
    for line in server.stdout:
        print(line, end="")
        listening = re.match(r"listening on \S+:(\d+)$", line)
        port = listening[1] if listening else port
        if port and line == "ORV: Ready\n":
            break
    else:
        sys.exit("the server did not become ready")
    own = "/MultiChannelServer/DynamicMpxORVs/Example"
    base = [mctree, "--connect", f"127.0.0.1:{port}"]
    hold = subprocess.Popen([*base, "hold", own], stdout=subprocess.PIPE, text=True)
    try:
        hold.stdout.readline()  # it is ours
        tuned = subprocess.run([*base, "set", f"{own}/Request/Frequency", "121.5MHz"], capture_output=True, text=True,
                               timeout=DEADLINE_S, check=False)
        print(tuned.stdout, tuned.stderr)
        free = subprocess.run([*base, "get", "/MultiChannelServer/Status/FreeFreqChannels"], capture_output=True, text=True,
                              timeout=DEADLINE_S, check=True).stdout
        if "2" not in free:
            sys.exit(f"three channels, one of which is in use, are not: {free}")
    finally:
        hold.terminate()
        hold.wait()


main()
