// SPDX-License-Identifier: Apache-2.0
#include <fuzz/clientchecker.h>

#include <fuzz/check.h>
#include <fuzz/narration.h>

#include <platform/vtclient/wire/vtlimits.h>

void ClientChecker::OnSent(const QByteArray& bytes) {
    vt::Message message;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    if (!reader.ReadHeader(&message)) return;
    TellMessage("server", message, bytes);
    if (message.type == vt::EMessage::Welcome) m_isWelcome = true;
    if (vt::CarriesChanges(message.type) || message.type == vt::EMessage::End) ++m_toAck;
}

void ClientChecker::OnReceived(const QByteArray& bytes) {
    Check(!m_hasEnded, "nothing comes after a bye");
    Check(static_cast<quint32>(bytes.size()) <=
              (m_isWelcome ? vtlimits::MaxFrame : vtlimits::MaxFrameBeforeWelcome),
          "a frame is not too large");
    vt::Message message;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    Check(reader.ReadHeader(&message), "a client's message can be read", reader.Error());
    TellMessage("client", message, bytes);
    if (message.type == vt::EMessage::Bye) {
        Check(!message.reason.isEmpty(), "a bye has a reason");
        m_hasEnded = true;
    } else if (message.type == vt::EMessage::Hello) {
        Check(!m_hasHello, "there is one hello");
        m_hasHello = true;
    } else {
        Check(m_hasHello && m_isWelcome, "nothing else comes before the welcome");
        OnMessage(message);
    }
}

void ClientChecker::OnMessage(const vt::Message& message) {
    switch (message.type) {
        case vt::EMessage::Subscribe:
            Check(message.sub > m_lastSub && message.sub <= 0x7fffffffU,
                  "each subscription has its own number");
            m_lastSub = message.sub;
            Check(message.path.startsWith(QLatin1Char('/')), "paths are absolute");
            subscriptions[message.sub] = Subscription();
            Check(subscriptions.size() <= vtlimits::MaxSubscriptions, "there are not too many subscriptions");
            return;
        case vt::EMessage::Unsubscribe:
            Check(subscriptions.erase(message.sub) == 1, "what is unsubscribed was subscribed");
            return;
        case vt::EMessage::Ack:
            Check(message.seq > m_acked && message.seq <= m_toAck, "what came is acknowledged");
            m_acked = message.seq;
            return;
        case vt::EMessage::Create:
            Check(message.path.startsWith(QLatin1Char('/')), "paths are absolute");
            [[fallthrough]];
        case vt::EMessage::Write:
            Check(message.req > m_lastRequest, "each request has its own number");
            m_lastRequest = message.req;
            Check(subscriptions.count(message.sub) == 1, "requests are about what is subscribed");
            requests.push_back(message.req);
            return;
        case vt::EMessage::Ping:
        case vt::EMessage::Pong:
            return;
        default:
            FailCheck(QStringLiteral("a client sends what clients send"));
    }
}
