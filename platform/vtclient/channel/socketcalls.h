// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What Qt's sockets do not offer.
namespace vt {

/// Tells the peer of a connected socket that no more comes, and leaves the other direction open.
void EndSending(qintptr descriptor);
/// Another descriptor of the same connection, which the caller closes. -1 if none can be had.
qintptr AnotherDescriptor(qintptr descriptor);
/// Keeps processes that this one starts from now on from holding a socket open that Qt has accepted: the peer
/// would not see the end of the connection before theirs.
void KeepFromChildren(qintptr descriptor);
/// Lets up to \a length connections wait for a listening socket to accept them; the system may allow fewer.
void SetListenQueue(qintptr descriptor, int length);

enum class EAccept {
    Done,
    NoneWaits,
    Failed,  ///< and would fail again at once: most likely the process has few descriptors left, or none
};
/// The next connection that waits at a socket which listens and does not wait, as \a descriptor, which is the
/// caller's. Why not in \a reason, where it failed. Leaves some descriptors to what else the process opens.
EAccept AcceptConnection(qintptr listening, qintptr* descriptor, QString* reason);

/// How many connections may wait to show who they are: bounded by what the process may have open.
int MaxPending();

/// Bytes that are sent behind others which lie elsewhere.
struct SendPiece {
    const char* data;
    int size;
};
/// How many pieces SendAtOnce() takes in one call.
constexpr int MaxSendPieces = 16;

/// Sends the \a count pieces, one behind the other, over a connected socket as far as the system takes them
/// without waiting, in one call to it. \return how many bytes it took. None where something is wrong with the
/// connection: whoever sends the rest through its QTcpSocket hears of it there. And none on systems where
/// everything is to go through that.
qint64 SendAtOnce(qintptr descriptor, const SendPiece* pieces, int count);

}  // namespace vt
