// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/vtprotocol.h>

#include <QtCore/qglobal.h>

#include <chrono>
#include <cstddef>

/// Every limit of a connection, with its reason. Sizes in bytes.
namespace vtlimits {

constexpr int ProtocolVersion = VtProtocolVersion;

// Before a peer is admitted it may cost next to nothing.
constexpr quint32 MaxFrameBeforeWelcome = 4096;          // a hello with texts of full length fits
constexpr std::chrono::milliseconds HelloTimeout(5000);  // a slow link still says hello in this
constexpr std::chrono::milliseconds AcceptPause(100);  // without descriptors: by then some may be free again
// Thousands come back at once after a restart. At most half of the descriptors are for those who wait.
constexpr int MaxPendingConnections = 4096;
constexpr int AcceptedPerTurn = 64;  // then those who are there already have their turn
// A TLS handshake that has begun costs as much as a client. At this rate they turn over as fast as one
// processor signs.
constexpr int MaxHandshakes = 512;
constexpr std::chrono::milliseconds HandshakePatience(500);  // where others wait: time for a slow link
constexpr std::chrono::milliseconds HandshakeRetry(20);      // little beside that

// After that.
constexpr quint32 MaxFrame = 1U << 20;                  // bounds what one message can make us hold
constexpr int BatchTarget = 64 * 1024;                  // large enough to pay, small enough to interleave
constexpr int MaxChange = 960 * 1000;                   // fits a frame behind a batch that is nearly full
constexpr int MaxSessions = 2000;                       // unless the server's options say otherwise
constexpr int ReservedPart = 20;                        // of the places: one in so many is for operators
constexpr int ShareOfPlaces = 4;                        // of the others one user or host has one in so many
constexpr int ListenQueue = 1000;                       // all of them come back at once after a restart
constexpr int MaxSubscriptions = 256;                   // per session
constexpr int MaxNameLength = 1024;                     // UTF-16 code units
constexpr int MaxPathLength = 4096;                     // UTF-16 code units
constexpr int MaxDepth = 256;                           // names in a path that a peer may create
constexpr int MaxReasonLength = 1024;                   // UTF-16 code units: fits a frame before the welcome
constexpr int MaxHelloText = 256;                       // UTF-16 code units
constexpr std::size_t MaxQueuedOccurrences = 4U << 20;  // per session: then it does not keep up
constexpr qint64 MaxUnsent = 4 << 20;                   // answers to a peer that sends but does not read
constexpr std::size_t MaxWrittenChoices = 256;          // of a selection that a client creates
constexpr int MaxWrittenNumbers = 4096;                 // of a list that a client writes
constexpr std::size_t MaxCreatedPerSession = 10000;     // items that one session may create

// What values held before: of little weight beside what they hold now.
constexpr int MaxRecalledText = 64 * 1024;                // UTF-16 code units of one
constexpr int MaxRecalledAtOnce = 100;                    // texts in one answer
constexpr int MaxRecalledLength = 64 * 1024;              // UTF-16 code units of all of them, like a batch
constexpr std::size_t MaxRecallsWaiting = 16;             // per session: nobody needs more pages at once
constexpr int RecallBurst = 4;                            // answers at once: what a window shows at first
constexpr std::chrono::milliseconds RecallInterval(250);  // after which one more is allowed

// Shared roads.
constexpr int MaxRoadName = 64;                            // UTF-16 code units
constexpr int MaxRoadSecret = 64;                          // hexadecimal digits of 256 bits
constexpr std::chrono::milliseconds RoadMarkAfter(1000);   // so soon it shows that a last change was lost
constexpr std::chrono::milliseconds RoadMarkWanted(100);   // between two for those who listen for the first
constexpr std::chrono::milliseconds RoadReorderTime(200);  // by then comes what only took another way
constexpr std::chrono::milliseconds RoadFirstFetchTime(250);  // a keeper that is there mostly answers by then
constexpr std::chrono::milliseconds RoadFetchTime(2000);      // and the next times in any case
constexpr std::chrono::milliseconds RoadFetchAgain(300);     // what was sent just now is there by then; grows
constexpr int RoadFetches = 4;                               // then what is missing is gone
constexpr std::chrono::milliseconds RoadSayAgainEvery(100);  // each message, however many have missed it
constexpr std::size_t RoadMemory = 4U << 20;  // of one road: beyond, whoever keeps the road has it by then
constexpr std::size_t MaxRoadMemory = 32U << 20;    // of all roads
constexpr std::size_t MaxRoadAhead = 8U << 20;      // that came ahead of what is missing; more is fetched
constexpr std::size_t MaxRoadAheadMessages = 4096;  // likewise, of small ones
constexpr std::size_t MaxRoadSealed = 1U << 20;     // whose key is not here yet
constexpr std::size_t MaxRoadSealedMessages = 64;   // likewise
constexpr std::size_t MaxHeld = 16U << 20;          // of a session that waits for a road: a server sends less
constexpr std::size_t MaxRoadKeys = 64;             // what is fetched may be older than many new keys
constexpr std::chrono::milliseconds RoadFirstPause(1000);  // before a road that was lost is tried again
constexpr std::chrono::milliseconds RoadLongestPause(60'000);
constexpr std::chrono::seconds RoadHearTime(15);   // for a first word by it, marks included
constexpr std::chrono::seconds RoadTellEvery(10);  // what strangers do to it

// What clients make the server hold, in all: what is incomplete, what waits for them, what they asked for.
constexpr qint64 DefaultMemory = 32 << 20;  // unless the server's options say otherwise
// Beside that, what a connection costs as long as it is there: buffers of Qt and OpenSSL that never shrink.
constexpr qint64 PlainConnection = 8 * 1024;
constexpr qint64 TlsConnection = 96 * 1024;
constexpr qint64 ReadAhead = 64 * 1024;           // frames grow in our own buffer, as far as they have come
constexpr qint64 TlsReadAhead = 16 * 1024;        // a server's: every layer of TLS holds as much again
constexpr qint64 UnsentToNote = 64 * 1024;        // less is noted when time has passed
constexpr qint64 MinFreedToGiveBack = 4 << 20;    // less is not worth walking the heap for
constexpr std::chrono::seconds GiveBackEvery(5);  // which takes milliseconds

// A closed connection that still sends its last words.
constexpr std::chrono::milliseconds LingerTime(2000);  // a peer that reads at all has read them by then
constexpr qint64 MaxLingeringBytes = 8 << 20;          // likewise; who reads at all leaves less
constexpr std::size_t MaxLingering = 64;               // beyond, the first go: descriptors are few

// Flow of changes: what may be on its way to a client, and when the client owes an acknowledgement.
constexpr int MaxUnackedMessages = 64;
constexpr int MaxUnackedBytes = 1 << 20;
constexpr int AckAfterMessages = 8;
constexpr int AckAfterBytes = 64 * 1024;
constexpr std::chrono::seconds AckPatience(30);  // 64 KiB over the slowest link that is of use

// Turns of the event loop.
constexpr std::chrono::microseconds TurnTime(4000);     // then others have their turn
constexpr std::chrono::microseconds BacklogTime(1000);  // for who lacks much: a turn may come per message
constexpr int CheckInterval = 64;                       // items between two looks at the clock

}  // namespace vtlimits
