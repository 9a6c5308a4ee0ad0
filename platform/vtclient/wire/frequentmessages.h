// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/content.h>
#include <platform/vtclient/wire/messagetypes.h>

#include <QtCore/QString>

#include <string_view>

/// The messages that nearly all traffic is made of, each as no more than what it says: a Message has room for
/// everything that any of them could say.
namespace vt {

class CborOutput;

/// What stands before the changes of a snapshot or a batch.
struct ChangesHead {
    EMessage type = EMessage::Batch;
    quint32 sub = 0;
    quint64 seq = 0;
    bool more = false;  ///< of a batch
};
/// And what stands behind them.
constexpr std::string_view ChangesEnd = "\xff";

struct AckMessage {
    quint64 count = 0;
};

struct WriteMessage {
    quint32 req = 0;
    quint32 sub = 0;
    quint32 id = 0;
    Content content;
};

struct AnswerMessage {
    quint32 req = 0;
    EResult result = EResult::Done;
    QString reason;
    Content content;  ///< of one that is clamped: what holds
};

/// Appends what follows the type.
void WriteFields(CborOutput& output, const ChangesHead& head);
void WriteFields(CborOutput& output, const AckMessage& ack);
void WriteFields(CborOutput& output, const WriteMessage& write);
void WriteFields(CborOutput& output, const AnswerMessage& answer);

/// Each on the wire, without the frame. Valid until the next of these calls. Main thread.
std::string_view EncodeHead(const ChangesHead& head);
std::string_view Encode(const AckMessage& ack);
std::string_view Encode(const WriteMessage& write);
std::string_view Encode(const AnswerMessage& answer);

}  // namespace vt
