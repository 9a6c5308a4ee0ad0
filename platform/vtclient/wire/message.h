// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/cborinput.h>
#include <platform/vtclient/wire/content.h>
#include <platform/vtclient/wire/frequentmessages.h>
#include <platform/vtclient/wire/messagetypes.h>
#include <platform/vtclient/wire/treechange.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>

namespace vt {

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
QByteArray Encode(const Message& message, const QByteArray& changes = QByteArray());

/// Reads one message. First the header, at once or its type and then the rest; then, in those that have them,
/// change by change.
class MessageReader {
  public:
    /// \a data stays valid while this is used.
    MessageReader(const char* data, qint64 size) : m_input(data, size) {}

    /// False for a message that is none; Error() says why. A message without changes has then been read
    /// whole.
    bool ReadHeader(Message* message) { return ReadType(&message->type) && ReadRest(message); }
    /// The type alone. What follows is read by that one of these which fits it, or as the rest of any
    /// message.
    bool ReadType(EMessage* type);
    bool ReadRest(ChangesHead* head);  ///< whose type is that of the message
    bool ReadRest(AckMessage* ack);
    bool ReadRest(WriteMessage* write);
    bool ReadRest(AnswerMessage* answer);
    bool ReadRest(Message* message);  ///< likewise
    /// The next change; false at the end, or if something is wrong (then Error() is not empty).
    bool NextChange(TreeChange* change);
    QString Error() const { return m_input.Error(); }

  private:
    bool ReadFields(Message* message);
    bool End();
    bool ReadWrapped(TreeChange* change);
    bool ReadLimits(TreeChange* change);

    CborInput m_input;
    bool m_isRead = false;  ///< to the end
};

}  // namespace vt
