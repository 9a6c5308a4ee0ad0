// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/wire/messagefields.h>
#include <platform/vtclient/wire/messagetypes.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <limits>
#include <variant>

/// The messages, each as no more than what it says. docs/protocol.md tells what they are for; a test compares
/// its table with these.
namespace vt {

struct HelloMessage {
    static constexpr EMessage Type = EMessage::Hello;
    static constexpr ESender Sender = ESender::Client;

    quint32 version = 0;
    QString application;
    QString machine;
    QString user;
    QString token;

    /// If not, nobody knows what stands behind the version, and it is not looked at.
    bool IsSpokenHere() const { return version == vtlimits::ProtocolVersion; }
    static constexpr auto Fields() {
        using namespace wire;
        constexpr TextUpTo Name{vtlimits::MaxHelloText};
        return std::tuple(
            Field{"version", &HelloMessage::version}, Field{"application", &HelloMessage::application, Name},
            Field{"machine", &HelloMessage::machine, Name}, Field{"user", &HelloMessage::user, Name},
            Field{"token", &HelloMessage::token, Name});
    }
};

struct WelcomeMessage {
    static constexpr EMessage Type = EMessage::Welcome;
    static constexpr ESender Sender = ESender::Server;

    quint32 version = 0;
    QString application;
    int session = 0;
    quint64 epoch = 0;
    std::chrono::milliseconds ping{};
    std::chrono::milliseconds dead{};

    static constexpr auto Fields() {
        using namespace wire;
        constexpr UpTo Time(std::numeric_limits<int>::max());
        return std::tuple(
            Field{"version", &WelcomeMessage::version},
            Field{"application", &WelcomeMessage::application, TextUpTo{vtlimits::MaxHelloText}},
            Field{"session", &WelcomeMessage::session}, Field{"epoch", &WelcomeMessage::epoch},
            Field{"ping", &WelcomeMessage::ping, Time}, Field{"dead", &WelcomeMessage::dead, Time});
    }
};

struct ByeMessage {
    static constexpr EMessage Type = EMessage::Bye;
    static constexpr ESender Sender = ESender::Either;

    EBye code = EBye::Malformed;
    QString reason;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(
            Field{"code", &ByeMessage::code, OneUpTo(EBye::ClientEnds, "there is no such reason")},
            Field{"reason", &ByeMessage::reason, TextCutTo{vtlimits::MaxReasonLength}});
    }
};

struct SubscribeMessage {
    static constexpr EMessage Type = EMessage::Subscribe;
    static constexpr ESender Sender = ESender::Client;

    quint32 sub = 0;
    QString path;
    bool look = false;  ///< without using what is there

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &SubscribeMessage::sub},
                          Field{"path", &SubscribeMessage::path, TextUpTo{vtlimits::MaxPathLength}},
                          OptionalField{"look", &SubscribeMessage::look});
    }
};

struct UnsubscribeMessage {
    static constexpr EMessage Type = EMessage::Unsubscribe;
    static constexpr ESender Sender = ESender::Client;

    quint32 sub = 0;

    static constexpr auto Fields() { return std::tuple(wire::Field{"sub", &UnsubscribeMessage::sub}); }
};

struct SubscribedMessage {
    static constexpr EMessage Type = EMessage::Subscribed;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    QStringList prefixes;  ///< at and below which the client may write

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &SubscribedMessage::sub},
                          Field{"prefix", &SubscribedMessage::prefixes, TextsUpTo{vtlimits::MaxPathLength}});
    }
};

/// Changes follow.
struct SnapshotMessage {
    static constexpr EMessage Type = EMessage::Snapshot;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    quint64 seq = 0;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &SnapshotMessage::sub}, Field{"seq", &SnapshotMessage::seq});
    }
};

struct EndMessage {
    static constexpr EMessage Type = EMessage::End;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    quint64 seq = 0;
    quint64 epoch = 0;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &EndMessage::sub}, Field{"seq", &EndMessage::seq},
                          Field{"epoch", &EndMessage::epoch});
    }
};

/// Changes follow.
struct BatchMessage {
    static constexpr EMessage Type = EMessage::Batch;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    quint64 seq = 0;
    bool more = false;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &BatchMessage::sub}, Field{"seq", &BatchMessage::seq},
                          Field{"more", &BatchMessage::more});
    }
};

struct AbsentMessage {
    static constexpr EMessage Type = EMessage::Absent;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    QString reason;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &AbsentMessage::sub},
                          Field{"reason", &AbsentMessage::reason, TextCutTo{vtlimits::MaxReasonLength}});
    }
};

struct AckMessage {
    static constexpr EMessage Type = EMessage::Ack;
    static constexpr ESender Sender = ESender::Client;

    quint64 count = 0;

    static constexpr auto Fields() { return std::tuple(wire::Field{"count", &AckMessage::count}); }
};

struct WriteMessage {
    static constexpr EMessage Type = EMessage::Write;
    static constexpr ESender Sender = ESender::Client;

    quint32 req = 0;
    quint32 sub = 0;
    quint32 id = 0;
    Content content;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"req", &WriteMessage::req}, Field{"sub", &WriteMessage::sub},
                          Field{"id", &WriteMessage::id}, Field{"content", &WriteMessage::content});
    }
};

struct AnswerMessage {
    static constexpr EMessage Type = EMessage::Answer;
    static constexpr ESender Sender = ESender::Server;

    quint32 req = 0;
    EResult result = EResult::Done;
    QString reason;
    Content content;  ///< what holds, if it is clamped

    bool IsClamped() const { return result == EResult::Clamped; }

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"req", &AnswerMessage::req},
                          Field{"result", &AnswerMessage::result, UpTo(EResult::Gone)},
                          Field{"reason", &AnswerMessage::reason, TextCutTo{vtlimits::MaxReasonLength}},
                          FieldIf{&AnswerMessage::IsClamped, "content", &AnswerMessage::content});
    }
};

struct CreateMessage {
    static constexpr EMessage Type = EMessage::Create;
    static constexpr ESender Sender = ESender::Client;

    quint32 req = 0;
    quint32 sub = 0;
    QString path;
    ItemDescription item;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"req", &CreateMessage::req}, Field{"sub", &CreateMessage::sub},
                          Field{"path", &CreateMessage::path, TextUpTo{vtlimits::MaxPathLength}},
                          Field{"item", &CreateMessage::item});
    }
};

struct PingMessage {
    static constexpr EMessage Type = EMessage::Ping;
    static constexpr ESender Sender = ESender::Either;

    quint64 number = 0;

    static constexpr auto Fields() { return std::tuple(wire::Field{"number", &PingMessage::number}); }
};

struct PongMessage {
    static constexpr EMessage Type = EMessage::Pong;
    static constexpr ESender Sender = ESender::Either;

    quint64 number = 0;

    static constexpr auto Fields() { return std::tuple(wire::Field{"number", &PongMessage::number}); }
};

/// Asks what the value at a path held before.
struct RecallMessage {
    static constexpr EMessage Type = EMessage::Recall;
    static constexpr ESender Sender = ESender::Client;

    quint32 req = 0;
    QString path;
    quint64 before = 0;
    quint64 count = 0;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"req", &RecallMessage::req},
                          Field{"path", &RecallMessage::path, TextUpTo{vtlimits::MaxPathLength}},
                          Field{"before", &RecallMessage::before}, Field{"count", &RecallMessage::count});
    }
};

struct RecalledMessage {
    static constexpr EMessage Type = EMessage::Recalled;
    static constexpr ESender Sender = ESender::Server;

    quint32 req = 0;
    EResult result = EResult::Done;
    QString reason;
    quint64 next = 0;   ///< before which to ask for older ones; 0 if there are none
    QStringList texts;  ///< the oldest first

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"req", &RecalledMessage::req},
                          Field{"result", &RecalledMessage::result, UpTo(EResult::Gone)},
                          Field{"reason", &RecalledMessage::reason, TextCutTo{vtlimits::MaxReasonLength}},
                          Field{"next", &RecalledMessage::next},
                          Field{"text", &RecalledMessage::texts, TextsUpTo{vtlimits::MaxRecalledText}});
    }
};

/// The client can follow a subscription by a shared road.
struct JoinMessage {
    static constexpr EMessage Type = EMessage::Join;
    static constexpr ESender Sender = ESender::Client;

    quint32 sub = 0;

    static constexpr auto Fields() { return std::tuple(wire::Field{"sub", &JoinMessage::sub}); }
};

/// Which road that is, and a key of what comes by it.
struct RoadMessage {
    static constexpr EMessage Type = EMessage::Road;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    QString road;
    quint32 key = 0;  ///< its number
    QString secret;   ///< the key itself, as hexadecimal digits

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &RoadMessage::sub},
                          Field{"road", &RoadMessage::road, TextUpTo{vtlimits::MaxRoadName}},
                          Field{"key", &RoadMessage::key},
                          Field{"secret", &RoadMessage::secret, TextUpTo{vtlimits::MaxRoadSecret}});
    }
};

/// Something of the server's has come to the client by that road.
struct HeardMessage {
    static constexpr EMessage Type = EMessage::Heard;
    static constexpr ESender Sender = ESender::Client;

    quint32 sub = 0;
    QString road;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &HeardMessage::sub},
                          Field{"road", &HeardMessage::road, TextUpTo{vtlimits::MaxRoadName}});
    }
};

/// What follows in the session comes after that number of the road.
struct AtMessage {
    static constexpr EMessage Type = EMessage::At;
    static constexpr ESender Sender = ESender::Server;

    quint32 sub = 0;
    quint64 number = 0;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &AtMessage::sub}, Field{"number", &AtMessage::number});
    }
};

/// The client has lost the road, and takes a new snapshot.
struct LeaveMessage {
    static constexpr EMessage Type = EMessage::Leave;
    static constexpr ESender Sender = ESender::Client;

    quint32 sub = 0;

    static constexpr auto Fields() { return std::tuple(wire::Field{"sub", &LeaveMessage::sub}); }
};

/// The client has missed what has come by the road under these numbers, and whoever keeps the road does not
/// have it: the server may say it once more.
struct AgainMessage {
    static constexpr EMessage Type = EMessage::Again;
    static constexpr ESender Sender = ESender::Client;

    quint32 sub = 0;
    quint64 from = 0;
    quint64 to = 0;

    static constexpr auto Fields() {
        using namespace wire;
        return std::tuple(Field{"sub", &AgainMessage::sub}, Field{"from", &AgainMessage::from},
                          Field{"to", &AgainMessage::to});
    }
};

/// Any of them, in the order of their numbers, from 1 on.
using Message = std::variant<HelloMessage, WelcomeMessage, ByeMessage, SubscribeMessage, UnsubscribeMessage,
                             SubscribedMessage, SnapshotMessage, EndMessage, BatchMessage, AbsentMessage,
                             AckMessage, WriteMessage, AnswerMessage, CreateMessage, PingMessage, PongMessage,
                             RecallMessage, RecalledMessage, JoinMessage, RoadMessage, HeardMessage,
                             AtMessage, LeaveMessage, AgainMessage>;

namespace wire {

template <class... M>
constexpr bool AreInTheirOrder(const std::variant<M...>* /*any*/) {
    std::size_t number = 0;
    return ((M::Type == static_cast<EMessage>(++number)) && ...);
}
static_assert(AreInTheirOrder(static_cast<const Message*>(nullptr)), "a message is found by its number");

}  // namespace wire

/// Whether \a M is what \a sender, a client or a server, may send.
template <class M>
constexpr bool IsSentBy(ESender sender) {
    return M::Sender == sender || M::Sender == ESender::Either;
}

}  // namespace vt
