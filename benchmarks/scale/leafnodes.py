#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Three sites on this machine, each with a server of NATS: one in the middle, and two leaf nodes of it.

Stations publish on their roads, light clients at all sites follow one station each, and the monitoring of the
servers says what that costs. From it follows what a larger plant costs, which is printed, too.

    leafnodes.py [--clients 300] [--stations 10] [--rate 10] [--size 300] [--seconds 10]

Messages are as large as those on a road, but say nothing. Rates are per station and second.
"""
import argparse
import asyncio
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import urllib.request

SITES = ("middle", "north", "south")
TICKS = os.sysconf("SC_CLK_TCK")
PAGE = os.sysconf("SC_PAGE_SIZE")
KEPT = 50_000  # messages, to see what JetStream takes for one


class Server:
    """A server of NATS on free ports, with its monitoring."""

    def __init__(self, name, folder, text):
        self.log = pathlib.Path(folder, name + ".log")
        configuration = pathlib.Path(folder, name + ".conf")
        configuration.write_text(
            f"server_name: {name}\nlisten: 127.0.0.1:-1\nhttp: 127.0.0.1:-1\nlog_file: '{self.log}'\n" + text)
        program = shutil.which("nats-server") or "/usr/sbin/nats-server"
        self.process = subprocess.Popen([program, "-c", str(configuration)], stderr=subprocess.DEVNULL)
        self.port = self.port_behind("client connections on ")
        self.monitor = self.port_behind("http monitor on ")

    def port_behind(self, words):
        for _ in range(100):
            found = re.search(words + r"\S*:(\d+)", self.log.read_text() if self.log.exists() else "")
            if found:
                return int(found.group(1))
            time.sleep(0.05)
        sys.exit(f"nats-server does not come up: {self.log.read_text()}")

    def ask(self, page):
        with urllib.request.urlopen(f"http://127.0.0.1:{self.monitor}/{page}") as answer:
            return json.load(answer)

    def busy_seconds(self):
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / TICKS

    def memory(self):
        return int(pathlib.Path(f"/proc/{self.process.pid}/statm").read_text().split()[1]) * PAGE

    def end(self):
        self.process.terminate()
        self.process.wait()


class Client(asyncio.Protocol):
    """Says hello to NATS, follows a subject, and counts what comes."""

    def __init__(self, subject=None):
        self.subject = subject
        self.received = 0
        self.text = b""

    def connection_made(self, transport):
        self.transport = transport
        transport.write(b'CONNECT {"verbose":false,"pedantic":false}\r\n')
        if self.subject:
            transport.write(b"SUB " + self.subject + b" 1\r\n")

    def data_received(self, data):
        self.received += len(data)
        self.text = data
        if data.startswith(b"PING") or b"\r\nPING\r\n" in data:
            self.transport.write(b"PONG\r\n")

    def publish(self, subject, body, reply=b""):
        self.transport.write(b"PUB %b %b %d\r\n%b\r\n" % (subject, reply, len(body), body))


async def connect(server, subject=None):
    loop = asyncio.get_running_loop()
    return (await loop.create_connection(lambda: Client(subject), "127.0.0.1", server.port))[1]


def station_subject(number):
    return b"mcs.station%d.road.1f-1." % number


async def publish(stations, count, rate, size):
    """All stations, count messages each; as many a second as asked for."""
    body = b"x" * size
    begun = time.monotonic()
    for message in range(count):
        for number, station in enumerate(stations):
            station.publish(station_subject(number) + b"%d" % message, body)
        await asyncio.sleep(max(0.0, begun + (message + 1) / rate - time.monotonic()))


def counted(servers):
    figures = {}
    for name, server in servers.items():
        asked = server.ask("varz")
        figures[name] = {"in": asked["in_msgs"], "out": asked["out_msgs"], "bytes": asked["out_bytes"],
                         "slow": asked["slow_consumers"], "busy": server.busy_seconds()}
    for name in SITES[1:]:
        link = servers[name].ask("leafz")["leafs"][0]
        figures[name].update({"link in": link["in_msgs"], "link out": link["out_msgs"]})
    return figures


async def keep(server):
    """Bytes of memory and of disk that JetStream takes for a message with a subject of its own."""
    client = await connect(server, b"answer")
    wanted = {"name": "scale", "subjects": ["kept.>"], "storage": "file", "max_msgs_per_subject": 1,
              "allow_direct": True, "num_replicas": 1}
    client.publish(b"$JS.API.STREAM.CREATE.scale", json.dumps(wanted).encode(), b"answer")
    while b"stream_create_response" not in client.text:
        await asyncio.sleep(0.01)
    before = server.memory()
    for number in range(KEPT):
        client.publish(b"kept.road.5f3a17c2-1.%d" % number, b"x" * 100)
        if number % 1000 == 0:
            await asyncio.sleep(0)
    while server.ask("jsz")["messages"] < KEPT:
        await asyncio.sleep(0.1)
    return (server.memory() - before) / KEPT, server.ask("jsz")["storage"] / KEPT


async def measure(options, servers):
    before = {name: server.memory() for name, server in servers.items()}
    clients = []
    for number in range(options.clients):
        site = servers[SITES[number % len(SITES)]]
        clients.append(await connect(site, station_subject(number % options.stations) + b"*"))
    stations = [await connect(servers[SITES[number % len(SITES)]]) for number in range(options.stations)]
    await asyncio.sleep(1)
    memory = sum(server.memory() - before[name] for name, server in servers.items())
    start = counted(servers)
    await publish(stations, options.rate * options.seconds, options.rate, options.size)
    await asyncio.sleep(1)
    end = counted(servers)
    delta = {name: {key: end[name][key] - start[name][key] for key in end[name]} for name in end}
    return delta, memory / (options.clients + options.stations), clients


def show(options, delta, clients, per_connection, kept):
    messages = options.rate * options.seconds * options.stations
    print(f"{options.clients} clients and {options.stations} stations at three sites, {messages} messages of "
          f"{options.size} bytes in {options.seconds} s")
    for name in SITES:
        figures = delta[name]
        print(f"  {name:7} in {figures['in']:8} out {figures['out']:8} bytes out {figures['bytes']:10} "
              f"CPU {figures['busy']:6.2f} s, slow consumers {figures['slow']}"
              + (f"; by its link {figures['link in']} come, {figures['link out']} go"
                 if "link in" in figures else ""))
    short = [client for client in clients if client.received < options.size * options.rate * options.seconds]
    print(f"  {len(short)} clients have missed something")
    out = sum(delta[name]["out"] for name in SITES)
    busy = sum(delta[name]["busy"] for name in SITES)
    print(f"  CPU for a message that goes out: {busy / out * 1e6:.1f} us; memory of a connection: "
          f"{per_connection / 1024:.0f} KiB")
    print(f"  JetStream, for a message with a subject of its own: {kept[0]:.0f} bytes of memory, "
          f"{kept[1]:.0f} on disk (of 100 bytes)")
    predict(options.size, busy / out, per_connection, kept)
    return not short


def predict(size, cpu, per_connection, kept, stations=100, clients=10_000, sites=3, age=600):
    print(f"\n{stations} stations, {clients} clients that follow one each, {sites} sites, messages of {size} bytes:")
    print("  per station   goes out of a site             a site's   a link between    JetStream, 10 minutes of all")
    print("  and second    messages/s        MBit/s     processors  sites, MBit/s     memory, MiB   disk, MiB")
    framed = size + 90  # subject and head
    for rate in (1, 10, 50, 250):
        out = clients / sites * rate
        stored = stations * rate * age
        disk = min(stored * (kept[1] - 100 + size), stations * 256 * 2**20)
        stored = disk / (kept[1] - 100 + size)
        print(f"  {rate:7} {out:16.0f} {out * framed * 8e-6:13.0f} {out * cpu:14.2f} "
              f"{stations * rate * framed * 8e-6:14.1f} {stored * kept[0] / 2**20:17.0f} {disk / 2**20:12.0f}")
    print(f"  connections of a site: {clients // sites}, {clients / sites * per_connection / 2**20:.0f} MiB")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name, default in (("clients", 300), ("stations", 10), ("rate", 10), ("size", 300), ("seconds", 10)):
        parser.add_argument("--" + name, type=int, default=default)
    options = parser.parse_args()
    servers = {}
    with tempfile.TemporaryDirectory() as folder:
        try:
            servers["middle"] = Server("middle", folder, "leafnodes { listen: 127.0.0.1:-1 }\n"
                                       f"jetstream {{ store_dir: '{folder}', domain: middle }}\n")
            link = servers["middle"].port_behind("leafnode connections on ")
            for name in SITES[1:]:
                servers[name] = Server(name, folder,
                                       f"leafnodes {{ remotes: [ {{ url: 'nats://127.0.0.1:{link}' }} ] }}\n")
            delta, per_connection, clients = asyncio.run(run(options, servers))
            kept = asyncio.run(keep(servers["middle"]))
            return 0 if show(options, delta, clients, per_connection, kept) else 1
        finally:
            for server in servers.values():
                server.end()


async def run(options, servers):
    for _ in range(100):
        if len(servers["middle"].ask("leafz").get("leafs", [])) == 2:
            break
        await asyncio.sleep(0.1)
    return await measure(options, servers)


if __name__ == "__main__":
    sys.exit(main())
