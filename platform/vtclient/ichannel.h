// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/connectionexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <string_view>

namespace vt {

class IRoads;

/// What a transport tells whoever uses it. Called from the event loop only, never from within a call to the
/// channel.
class MCS_CONNECTION_EXPORT IChannelListener {
  public:
    virtual ~IChannelListener();
    /// One whole message, of no more than the channel's largest size. \a data is valid during the call.
    virtual void OnMessage(const char* data, qint64 size) = 0;
    /// The messages at hand were given: what they led to can be sent.
    virtual void OnInputDone() = 0;
    /// No further message comes. \a reason is one line. Where the peer broke a rule of the channel, this is
    /// still open and takes a farewell; afterwards it closes.
    virtual void OnClosed(const QString& reason) = 0;
};

/// An ordered stream of messages to one peer: the seam between the protocol and its transports. Main thread.
/// Destroying it closes it; it must not be destroyed from within OnMessage().
class MCS_CONNECTION_EXPORT IChannel {
  public:
    virtual ~IChannel();

    virtual void SetListener(IChannelListener* listener) = 0;  ///< Not owned; one at most, null for none.
    /// Queues a message; Flush() sends what is queued. Does nothing once closed.
    void Send(const QByteArray& message) {
        SendInParts({message.constData(), static_cast<std::size_t>(message.size())}, QByteArray(), {});
    }
    /// The same for a message in three parts. The one in the middle may be shared with other channels: where
    /// the transport can gather what it sends, it is not copied.
    virtual void SendInParts(std::string_view head, const QByteArray& shared, std::string_view tail) = 0;
    virtual void Flush() = 0;  ///< Sends what is queued, as far as the peer takes it.
    /// Bytes that were queued or given to the transport and have not left it.
    virtual qint64 Unsent() const = 0;
    /// Bytes that are kept for messages that have begun to come and are not complete.
    virtual qint64 Unfinished() const { return 0; }
    /// Asked now and then: gives back room that is not in use.
    virtual void GiveBackRoom() {}
    virtual bool IsOpen() const = 0;  ///< false after OnClosed(), and after Close()
    /// Sends what is queued, as far as the peer takes it, and closes. The listener is not told.
    virtual void Close() = 0;
    /// A message that is larger closes the channel. At first vtlimits::MaxFrameBeforeWelcome.
    virtual void SetMaxMessage(quint32 size) = 0;

    virtual QString PeerAddress() const = 0;      ///< host and port, for people
    virtual bool IsLoopback() const = 0;          ///< whether the peer is on this machine
    virtual bool IsEncrypted() const = 0;         ///< whether by TLS
    virtual QString CertificateName() const = 0;  ///< common name of the peer's verified certificate
    /// The shared roads of the peer that this transport brings, if any; valid as long as the channel.
    virtual IRoads* Roads() { return nullptr; }
};

}  // namespace vt
