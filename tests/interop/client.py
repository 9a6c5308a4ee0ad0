#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""A client of the value-tree protocol, written from docs/protocol.md alone.

It shows how little a client needs: one socket, one CBOR library (Debian: python3-cbor2), no threads.

    client.py [options] HOST PORT list PATH                        the item at PATH with all below it
    client.py [options] HOST PORT watch PATH COUNT                 COUNT changes, then ends
    client.py [options] HOST PORT write PATH VALUE                 sets one value
    client.py [options] HOST PORT create ROOT PATH KIND [VALUE]    creates an item at or below ROOT

Options: --user NAME, --token TOKEN, --tls, --ca FILE. Exit codes: 0 done, 1 denied or not there, 3 no connection.
"""

import argparse
import socket
import ssl
import struct
import sys
import time

import cbor2

VERSION = 1

# Messages: the first element of each.
HELLO, WELCOME, BYE, SUBSCRIBE, UNSUBSCRIBE, SUBSCRIBED, SNAPSHOT, END = range(1, 9)
BATCH, ABSENT, ACK, WRITE, ANSWER, CREATE, PING, PONG = range(9, 17)

# Changes: the first element of each that is an array.
ADDED, REMOVED, DESCRIBED, ITEMS, OWN = range(5)

KINDS = ["node", "boolean", "integer", "text", "limited-integer", "number", "selection", "list"]
NODE, BOOLEAN, INTEGER, TEXT, LIMITED_INTEGER, NUMBER, SELECTION, LIST = range(8)

STALE = 2  # a flag of values

# Why a client says bye.
MALFORMED = 3
CLIENT_ENDS = 8

FRAME_BEFORE_WELCOME = 4096
FRAME = 1048576

ACK_MESSAGES = 8
ACK_BYTES = 65536


class ConnectionLost(Exception):
    """There is no connection (any more), and why."""


class Refused(Exception):
    """The server does not have, or does not allow, what was asked for."""


class Connection:
    """Frames over a socket: each a length of 4 bytes, big endian, and one CBOR array."""

    def __init__(self, host, port, tls=None):
        self.socket = socket.create_connection((host, port), timeout=5)
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        if tls:
            self.socket = tls.wrap_socket(self.socket, server_hostname=host)
        self.buffer = bytearray()
        self.longest = FRAME_BEFORE_WELCOME

    def send(self, *message):
        body = cbor2.dumps(list(message))
        self.socket.sendall(struct.pack(">I", len(body)) + body)

    def receive(self, seconds):
        """The next message and its length; None if none comes within that time."""
        deadline = time.monotonic() + seconds
        while True:
            message = self._take()
            if message:
                return message
            left = deadline - time.monotonic()
            if left <= 0:
                return None
            self.socket.settimeout(left)
            try:
                received = self.socket.recv(65536)
            except socket.timeout:
                return None
            if not received:
                raise ConnectionLost("the server closed the connection")
            self.buffer += received

    def _take(self):
        """A message out of the buffer, if there is a whole one."""
        if len(self.buffer) < 4:
            return None
        (length,) = struct.unpack_from(">I", self.buffer)
        if length > self.longest:
            raise ConnectionLost(f"a frame of {length} bytes is too long")
        if len(self.buffer) < 4 + length:
            return None
        message = cbor2.loads(bytes(self.buffer[4 : 4 + length]))
        del self.buffer[: 4 + length]
        if not isinstance(message, list) or not message or not isinstance(message[0], int):
            raise ConnectionLost("a message is no array with a number in front")
        return message, length


class Session:
    """A session: says hello, keeps the connection alive, acknowledges, and hands out what matters."""

    def __init__(self, connection, user="", token=""):
        self.connection = connection
        self.processed = 0  # snapshot, end and batch messages
        self.unacknowledged = 0
        self.unacknowledged_bytes = 0
        self.last_sub = 0
        self.last_request = 0
        connection.send(HELLO, VERSION, "interop client", socket.gethostname(), user, token)
        frame = connection.receive(5)
        if not frame:
            raise ConnectionLost("no welcome within 5 s")
        kind, *rest = frame[0]
        if kind == BYE:
            raise ConnectionLost(f"refused with code {rest[0]}: {rest[1]}")
        if kind != WELCOME:
            raise ConnectionLost("the first message was no welcome")
        version, self.server, self.number, self.epoch, ping, dead = rest
        if version != VERSION:
            raise ConnectionLost(f"the server speaks version {version}")
        self.ping = ping / 1000
        self.dead = dead / 1000
        connection.longest = FRAME

    def messages(self):
        """All messages but those that only keep the session going."""
        heard = sent = time.monotonic()
        while True:
            frame = self.connection.receive(max(0, sent + self.ping - time.monotonic()))
            now = time.monotonic()
            if not frame:  # having sent nothing for so long we show that we live
                if now - heard > self.dead:
                    raise ConnectionLost("nothing heard from the server")
                self.connection.send(PING, int(now * 1000))
                sent = now
                continue
            heard = now
            message, length = frame
            if message[0] == BYE:
                raise ConnectionLost(f"the server ends with code {message[1]}: {message[2]}")
            if message[0] == PING:
                self.connection.send(PONG, message[1])
                sent = now
            elif message[0] != PONG:
                yield message
                self._acknowledge(message[0], length)

    def _acknowledge(self, kind, length):
        if kind not in (SNAPSHOT, END, BATCH):
            return
        self.processed += 1
        self.unacknowledged += 1
        self.unacknowledged_bytes += length
        if self.unacknowledged >= ACK_MESSAGES or self.unacknowledged_bytes >= ACK_BYTES:
            self.connection.send(ACK, self.processed)
            self.unacknowledged = self.unacknowledged_bytes = 0

    def subscribe(self, path):
        self.last_sub += 1
        self.connection.send(SUBSCRIBE, self.last_sub, path)
        return self.last_sub

    def request(self, kind, *rest):
        """Sends a write or create, and returns its number."""
        self.last_request += 1
        self.connection.send(kind, self.last_request, *rest)
        return self.last_request

    def end(self, code, reason):
        self.connection.send(BYE, code, reason)
        self.connection.socket.close()


class Item:
    """A node or a value."""

    def __init__(self, path, parent, kind):
        self.path = path
        self.parent = parent
        self.kind = kind
        self.children = []
        self.flags = 0
        self.content = None
        self.limits = None
        self.choices = []  # of a selection: (text, number, key)

    def shown(self):
        """The content as a text."""
        if self.kind == BOOLEAN:
            return "true" if self.content else "false"
        if self.kind == SELECTION:
            return "(none)" if self.content is None else self.choices[self.content][0]
        if self.kind == LIST:
            return ",".join(repr(number) for number in self.content)
        return str(self.content)

    def line(self):
        if self.kind == NODE:
            return f"{self.path} node"
        stale = " stale" if self.flags & STALE else ""
        return f"{self.path} {KINDS[self.kind]} {self.shown()}{stale}"


class Subtree:
    """What a subscription shows: items by their ids, which hold for as long as it is not sent anew."""

    def __init__(self, session, path):
        self.session = session
        self.path = path
        self.sub = session.subscribe(path)
        self._forget()

    def _forget(self):
        self.items = {}
        self.lines = []
        self.sequence = 0
        self.is_complete = False

    def concerns(self, message):
        """Whether it is one of this subscription, and not of an earlier one that it replaced."""
        return message[0] in (SUBSCRIBED, SNAPSHOT, END, BATCH, ABSENT) and message[1] == self.sub

    def handle(self, message):
        """Applies a message of this subscription. Returns what happened after the snapshot was complete, as
        lines; in a series of batches at its end."""
        kind = message[0]
        if kind == SUBSCRIBED:
            self._forget()
        elif kind == ABSENT:
            # Without a reason it may still come; but this client does not wait for it.
            raise Refused(message[2] or "not found")
        elif not self._is_next(message[2]):
            # Something was missed: all of it once more, under a new number.
            self.session.connection.send(UNSUBSCRIBE, self.sub)
            self.sub = self.session.subscribe(self.path)
            self._forget()
        elif kind == SNAPSHOT:
            self._apply(message[3:])
        elif kind == END:
            self.is_complete = True
            self.lines = []
        elif kind == BATCH:
            self._apply(message[4:])
            if not message[3]:
                lines, self.lines = self.lines, []
                return lines
        return []

    def _is_next(self, sequence):
        self.sequence += 1
        return sequence == self.sequence

    def _apply(self, elements):
        elements = iter(elements)
        for element in elements:
            if isinstance(element, int):
                self._set(element, next(elements))
                continue
            kind, number, *rest = element
            apply = [self._add, self._remove, self._describe, self._set_items, self._set_own][kind]
            apply(number, *rest)

    def _set(self, number, content):
        item = self.items[number]
        item.content = content
        self.lines.append(item.line())

    def _set_own(self, number, session, content):
        # Had we shown our own content at once, we would ignore this where session is our own.
        self._set(number, content)

    def _add(self, number, parent, name, kind, *rest):
        # The subscribed item is its own parent.
        above = self.items[parent] if number != 0 else None
        path = f"{above.path.rstrip('/')}/{name}" if above else self.path
        item = self.items[number] = Item(path, above, kind)
        if above:
            above.children.append(number)
        if kind != NODE:
            item.flags, item.content, *more = rest
            if kind in (LIMITED_INTEGER, NUMBER):
                item.limits = tuple(more)
            if kind == SELECTION:
                item.choices = choices(more[0])
        self.lines.append(f"added {item.line()}")

    def _remove(self, number):
        removed = self.items[number]
        removed.parent.children.remove(number)
        for below in list(self.walk(number)):
            del self.items[below]
        self.lines.append(f"removed {removed.path}")

    def walk(self, top=0):
        """The ids of the item "top" and of all below it, parents first, children in order."""
        waiting = [top]
        while waiting:
            number = waiting.pop()
            yield number
            waiting += reversed(self.items[number].children)

    def _describe(self, number, name, flags, *limits):
        item = self.items[number]
        if item.parent:
            item.path = f"{item.parent.path.rstrip('/')}/{name}"
        item.flags = flags
        item.limits = tuple(limits) or None
        self.lines.append(f"described {item.line()}")

    def _set_items(self, number, content, items):
        item = self.items[number]
        item.content = content
        item.choices = choices(items)
        self.lines.append(f"items {item.line()}")


def choices(flat):
    """[text, number, key, text, number, key ...] as a list of triples."""
    return list(zip(flat[0::3], flat[1::3], flat[2::3]))


def show(text, stream=sys.stdout):
    """Prints a line. What comes from a server must not give orders to a terminal."""
    safe = "".join(c if c.isprintable() else c.encode("unicode_escape").decode() for c in text)
    print(safe, file=stream, flush=True)


def parse(kind, text, items=()):
    """The content that the text means, as a write takes it."""
    if kind == BOOLEAN:
        return text in ("true", "on", "1")
    if kind in (INTEGER, LIMITED_INTEGER):
        return int(text)
    if kind == NUMBER:
        return float(text)
    if kind == LIST:
        return [float(part) for part in text.split(",") if part]
    if kind == SELECTION:
        for name, _, key in items:
            if text in (name, str(key)):
                return key
        return None
    return text


def complete(session, path):
    """The subtree at path, once all of it is here, and the messages after it."""
    subtree = Subtree(session, path)
    messages = session.messages()
    for message in messages:
        if subtree.concerns(message):
            subtree.handle(message)
        if subtree.is_complete:
            return subtree, messages


def wait_for_answer(messages, request):
    """Prints the answer to a write or create. Returns the exit code."""
    for message in messages:
        if message[0] != ANSWER or message[1] != request:
            continue
        result, reason = message[2:4]
        if result == 0:
            show("done")
        elif result == 1:
            show(f"done, but {message[4]} holds")
        else:
            raise Refused(reason or "gone")
        return 0


def run_list(session, arguments):
    subtree, _ = complete(session, arguments.path)
    for number in subtree.walk():
        show(subtree.items[number].line())
    return 0


def run_watch(session, arguments):
    subtree, messages = complete(session, arguments.path)
    show("watching")
    left = arguments.count
    while left > 0:
        message = next(messages)
        if not subtree.concerns(message):
            continue
        for line in subtree.handle(message)[:left]:
            show(line)
            left -= 1
    return 0


def run_write(session, arguments):
    subtree, messages = complete(session, arguments.path)
    item = subtree.items[0]
    if item.kind == NODE:
        raise Refused("a node has no content")
    content = parse(item.kind, arguments.value, item.choices)
    return wait_for_answer(messages, session.request(WRITE, subtree.sub, 0, content))


def new_value(kind, text):
    """A value as a create describes it: kind, flags, content, and limits or items."""
    if kind == LIMITED_INTEGER:
        return [kind, 0, int(text), -(2**31), 2**31 - 1]
    if kind == NUMBER:
        return [kind, 0, float(text), -sys.float_info.max, sys.float_info.max]
    if kind == SELECTION:  # one item, which is current
        return [kind, 0, 0, [text, 0.0, 0]]
    return [kind, 0, parse(kind, text)]


def run_create(session, arguments):
    subtree, messages = complete(session, arguments.root)
    kind = KINDS.index(arguments.kind)
    item = [NODE] if kind == NODE else new_value(kind, arguments.value)
    return wait_for_answer(messages, session.request(CREATE, subtree.sub, arguments.path, *item))


def parse_arguments():
    parser = argparse.ArgumentParser(description="A client of the value-tree protocol.")
    parser.add_argument("--user", default="")
    parser.add_argument("--token", default="")
    parser.add_argument("--tls", action="store_true")
    parser.add_argument("--ca", help="PEM file: whom the server's certificate must come from")
    parser.add_argument("host")
    parser.add_argument("port", type=int)
    commands = parser.add_subparsers(required=True)
    command = commands.add_parser("list")
    command.add_argument("path")
    command.set_defaults(run=run_list)
    command = commands.add_parser("watch")
    command.add_argument("path")
    command.add_argument("count", type=int)
    command.set_defaults(run=run_watch)
    command = commands.add_parser("write")
    command.add_argument("path")
    command.add_argument("value")
    command.set_defaults(run=run_write)
    command = commands.add_parser("create")
    command.add_argument("root")
    command.add_argument("path")
    command.add_argument("kind", choices=KINDS)
    command.add_argument("value", nargs="?", default="0")
    command.set_defaults(run=run_create)
    return parser.parse_args()


def run(arguments):
    tls = ssl.create_default_context(cafile=arguments.ca) if arguments.tls or arguments.ca else None
    session = Session(Connection(arguments.host, arguments.port, tls), arguments.user, arguments.token)
    try:
        code = arguments.run(session, arguments)
        session.end(CLIENT_ENDS, "done")
        return code
    except Refused as reason:
        show(str(reason), sys.stderr)
        session.end(CLIENT_ENDS, "done")
        return 1
    except (LookupError, TypeError, ValueError, StopIteration, cbor2.CBORDecodeError) as reason:
        session.end(MALFORMED, "a message breaks the protocol")
        raise ConnectionLost(f"the server broke the protocol: {reason!r}") from reason


def main():
    try:
        return run(parse_arguments())
    except (ConnectionLost, OSError) as reason:
        show(str(reason), sys.stderr)
        return 3


if __name__ == "__main__":
    sys.exit(main())
