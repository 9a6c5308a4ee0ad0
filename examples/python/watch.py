#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""watch.py HOST:PORT PATH          prints all values at and below PATH, then every change
watch.py HOST:PORT PATH CONTENT  sets the value at PATH to CONTENT (JSON), and prints the answer

All that a client of docs/protocol.md has to do, on Debian's python3-cbor2."""
import json
import socket
import struct
import sys
import time

import cbor2

HELLO, WELCOME, BYE, SUBSCRIBE, SUBSCRIBED, SNAPSHOT, END, BATCH, ABSENT = 1, 2, 3, 4, 6, 7, 8, 9, 10
ACK, WRITE, ANSWER, PING, PONG = 11, 12, 13, 15, 16
ADDED, ITEMS, OWN = 0, 3, 4
SUB = 1  # our only subscription


class Server:
    def __init__(self, host, port):
        self.socket = socket.create_connection((host, port), timeout=5)
        self.bytes = b""
        self.processed = 0
        self.send(HELLO, 1, "watch.py", socket.gethostname(), "", "")
        welcome = self.receive()
        if welcome is None or welcome[0] != WELCOME:
            sys.exit(f"not admitted: {welcome[2] if welcome else 'no answer'}")
        self.ping, self.dead = welcome[5] / 1000, welcome[6] / 1000

    def send(self, *message):
        body = cbor2.dumps(list(message))
        self.socket.sendall(struct.pack(">I", len(body)) + body)

    def receive(self):
        """The next message; None if nothing came for as long as the socket waits."""
        while len(self.bytes) < 4 or len(self.bytes) < 4 + struct.unpack_from(">I", self.bytes)[0]:
            try:
                received = self.socket.recv(65536)
            except socket.timeout:
                return None
            self.bytes += received or sys.exit("the server closed the connection")
        end = 4 + struct.unpack_from(">I", self.bytes)[0]
        body, self.bytes = self.bytes[4:end], self.bytes[end:]
        return cbor2.loads(body)

    def messages(self):
        """What concerns the subscription. Keeps the session alive meanwhile."""
        self.socket.settimeout(self.ping)
        heard = time.monotonic()
        while time.monotonic() - heard < self.dead:
            message = self.receive()
            if message is None:
                self.send(PING, 1)  # we are still there
                continue
            heard = time.monotonic()
            if message[0] == BYE:
                sys.exit(f"the server ends: {message[2]}")
            if message[0] == ABSENT:
                sys.exit(f"not there: {message[2] or 'so far'}")
            if message[0] == PING:
                self.send(PONG, message[1])
            yield message
            if message[0] in (SNAPSHOT, END, BATCH):
                self.processed += 1
                self.send(ACK, self.processed)  # due after 8 at the latest; after each will do
        sys.exit("nothing heard from the server")


def contents(items, changes):
    """Notes in "items" which path has which id, and yields the path and content of each value that has a new one."""
    changes = iter(changes)
    for change in changes:
        if isinstance(change, int):
            yield items[change], next(changes)
        elif change[0] == ADDED:
            number, parent, name, kind = change[1:5]
            if number != 0:  # which is the subscribed item itself
                items[number] = f"{items[parent].rstrip('/')}/{name}"
            if kind != 0:  # no node
                yield items[number], change[6]
        elif change[0] in (ITEMS, OWN):
            yield items[change[1]], change[2 if change[0] == ITEMS else 3]


(host, port), path, content = sys.argv[1].rsplit(":", 1), sys.argv[2], sys.argv[3:]
server = Server(host, int(port))
server.send(SUBSCRIBE, SUB, path, True)  # True: only looks, and is nobody's client
items = {0: path}
for kind, *rest in server.messages():
    if kind in (SNAPSHOT, BATCH) and not content:
        for where, what in contents(items, rest[2 if kind == SNAPSHOT else 3:]):
            print(where, json.dumps(what), flush=True)
    if kind == END and content:
        server.send(WRITE, 1, SUB, 0, json.loads(content[0]))
    if kind == ANSWER:
        print("refused: " + rest[2] if rest[1] > 1 else "done")
        sys.exit(rest[1] > 1)
