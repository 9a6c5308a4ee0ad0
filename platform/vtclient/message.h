// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/cborinput.h>
#include <platform/vtclient/connectionexport.h>
#include <platform/vtclient/content.h>
#include <platform/vtclient/treechange.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>

namespace vt {

/// The messages, by their number on the wire (docs/protocol.md).
enum class EMessage : std::uint8_t {
    Hello = 1,
    Welcome = 2,
    Bye = 3,
    Subscribe = 4,
    Unsubscribe = 5,
    Subscribed = 6,
    Snapshot = 7,
    End = 8,
    Batch = 9,
    Absent = 10,
    Ack = 11,
    Write = 12,
    Answer = 13,
    Create = 14,
    Ping = 15,
    Pong = 16
};

/// Why a session ends.
enum class EBye : std::uint8_t {
    Version = 1,
    NotAdmitted = 2,
    Malformed = 3,
    Limit = 4,
    TooSlow = 5,
    ServerEnds = 6,
    Silence = 7,
    ClientEnds = 8
};

/// What became of a write or a creation.
enum class EResult : std::uint8_t { Done = 0, Clamped = 1, Denied = 2, Gone = 3 };

/// One message without its changes. Which members count depends on the type.
struct Message {
    EMessage type = EMessage::Hello;
    quint32 version = 0;
    QString application;
    QString machine;
    QString user;
    QString token;
    int session = 0;
    quint64 epoch = 0;
    std::chrono::milliseconds ping{};
    std::chrono::milliseconds dead{};
    EBye code = EBye::Malformed;
    QString reason;
    quint32 sub = 0;
    quint64 seq = 0;  ///< also the number of a ping, and the count of an acknowledgement
    QString path;
    QStringList prefixes;
    bool more = false;
    quint32 req = 0;
    quint32 id = 0;
    EResult result = EResult::Done;
    ItemDescription item;  ///< what to create; its content alone: what to write, or what holds

    static Message Of(EMessage type) {
        Message message;
        message.type = type;
        return message;
    }
};

/// \a message on the wire, without the frame. Messages with changes have \a changes, written by a
/// ChangeWriter, behind their header.
MCS_CONNECTION_EXPORT QByteArray Encode(const Message& message, const QByteArray& changes = QByteArray());

/// Reads one message. First the header, then, in those that have them, change by change.
class MCS_CONNECTION_EXPORT MessageReader {
  public:
    /// \a data stays valid while this is used.
    MessageReader(const char* data, qint64 size) : m_input(data, size) {}

    /// False for a message that is none; Error() says why. A message without changes has then been read
    /// whole.
    bool ReadHeader(Message* message);
    /// The next change; false at the end, or if something is wrong (then Error() is not empty).
    bool NextChange(TreeChange* change);
    QString Error() const { return m_input.Error(); }

  private:
    bool ReadFields(Message* message);
    bool ReadAnswer(Message* message);
    bool ReadWrapped(TreeChange* change);
    bool ReadLimits(TreeChange* change);

    CborInput m_input;
    bool m_isRead = false;  ///< to the end
};

/// Whether messages of this type have changes behind their header.
MCS_CONNECTION_EXPORT bool CarriesChanges(EMessage type);

}  // namespace vt
