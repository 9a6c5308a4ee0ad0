#!/usr/bin/env node
// SPDX-License-Identifier: Apache-2.0
// watch.js HOST:PORT PATH          prints all values at and below PATH, then every change
// watch.js HOST:PORT PATH CONTENT  sets the value at PATH to CONTENT (JSON), and prints the answer
//
// All that a client of docs/protocol.md has to do, on Debian's node-cbor.
'use strict';
const net = require('net');
const os = require('os');
const cbor = require('cbor');

const [HELLO, WELCOME, BYE, SUBSCRIBE, SUBSCRIBED, SNAPSHOT, END, BATCH, ABSENT] = [1, 2, 3, 4, 6, 7, 8, 9, 10];
const [ACK, WRITE, ANSWER, PING, PONG] = [11, 12, 13, 15, 16];
const [ADDED, ITEMS, OWN] = [0, 3, 4];
const SUB = 1;  // the number of our only subscription

const [address, path, content] = process.argv.slice(2);
const colon = address.lastIndexOf(':');
const socket = net.connect(Number(address.slice(colon + 1)), address.slice(0, colon));
let received = Buffer.alloc(0);
let processed = 0;
let items = new Map();  // paths by id
let dying;  // a timer

function send(...message) {
    const body = cbor.encode(message);
    const length = Buffer.alloc(4);
    length.writeUInt32BE(body.length);
    socket.write(Buffer.concat([length, body]));
}

function end(text, code) {
    console[code === 0 ? 'log' : 'error'](text);
    process.exit(code);
}

function show(id, what) {
    console.log(items.get(id), JSON.stringify(what));
}

// Of changes that follow one another, those of a content have no array around them: id, content.
function apply(changes) {
    for (let i = 0; i < changes.length; ++i) {
        const change = changes[i];
        if (!Array.isArray(change)) {
            show(change, changes[++i]);
        } else if (change[0] === ADDED) {
            const [, id, parent, name, kind, , what] = change;
            items.set(id, id === 0 ? path : `${items.get(parent).replace(/\/$/, '')}/${name}`);
            if (kind !== 0) show(id, what);  // no node
        } else if (change[0] === ITEMS || change[0] === OWN) {
            show(change[1], change[change[0] === ITEMS ? 2 : 3]);
        }
    }
}

function handle([kind, ...rest]) {
    if (kind === WELCOME) {
        const [ping, dead] = rest.slice(4);
        setInterval(() => send(PING, 1), ping);  // we are still there
        dying = setTimeout(() => end('nothing heard from the server', 1), dead);
        send(SUBSCRIBE, SUB, path, true);  // true: only looks, and is nobody's client
    }
    if (dying) dying.refresh();
    if (kind === BYE) end(`the server ends: ${rest[1]}`, 1);
    if (kind === ABSENT) end(`not there: ${rest[1] || 'so far'}`, 1);
    if (kind === PING) send(PONG, rest[0]);
    if (kind === SUBSCRIBED) items = new Map();
    if (kind === SNAPSHOT && content === undefined) apply(rest.slice(2));
    if (kind === BATCH && content === undefined) apply(rest.slice(3));
    if (kind === END && content !== undefined) send(WRITE, 1, SUB, 0, JSON.parse(content));
    if (kind === ANSWER) end(rest[1] > 1 ? `refused: ${rest[2]}` : 'done', rest[1] > 1 ? 1 : 0);
    if ([SNAPSHOT, END, BATCH].includes(kind)) send(ACK, ++processed);  // due after 8 at the latest
}

socket.setNoDelay();
socket.on('connect', () => send(HELLO, 1, 'watch.js', os.hostname(), '', ''));
socket.on('error', (error) => end(error.message, 1));
socket.on('end', () => end('the server closed the connection', 1));
socket.on('data', (bytes) => {
    received = Buffer.concat([received, bytes]);
    while (received.length >= 4 && received.length >= 4 + received.readUInt32BE()) {
        const length = received.readUInt32BE();
        handle(cbor.decodeFirstSync(received.subarray(4, 4 + length)));
        received = received.subarray(4 + length);
    }
});
