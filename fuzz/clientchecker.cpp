// SPDX-License-Identifier: Apache-2.0
#include <fuzz/clientchecker.h>

#include <fuzz/check.h>
#include <fuzz/narration.h>

#include <platform/vtclient/wire/vtlimits.h>

void ClientChecker::OnSent(const QByteArray& bytes) {
    vt::Message message;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    if (!ReadAny(reader, &message)) return;
    TellMessage("server", message, bytes);
    if (std::holds_alternative<vt::WelcomeMessage>(message)) m_isWelcome = true;
    if (IsAcknowledged(message)) ++m_toAck;
}

void ClientChecker::OnReceived(const QByteArray& bytes) {
    Check(!m_hasEnded, "nothing comes after a bye");
    Check(static_cast<quint32>(bytes.size()) <=
              (m_isWelcome ? vtlimits::MaxFrame : vtlimits::MaxFrameBeforeWelcome),
          "a frame is not too large");
    vt::Message message;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    Check(ReadAny(reader, &message), "a client's message can be read", reader.Error());
    TellMessage("client", message, bytes);
    if (const auto* const bye = std::get_if<vt::ByeMessage>(&message)) {
        Check(!bye->reason.isEmpty(), "a bye has a reason");
        m_hasEnded = true;
        return;
    }
    Check(std::holds_alternative<vt::HelloMessage>(message) || (m_hasHello && m_isWelcome),
          "nothing else comes before the welcome");
    const auto receive = [this](const auto& whichever) {
        using M = std::decay_t<decltype(whichever)>;
        if constexpr (vt::IsSentBy<M>(vt::ESender::Client))
            On(whichever);
        else
            FailCheck(QStringLiteral("a client sends what clients send"));
    };
    std::visit(receive, message);
}

void ClientChecker::On(const vt::HelloMessage& /*hello*/) {
    Check(!m_hasHello, "there is one hello");
    m_hasHello = true;
}

void ClientChecker::On(const vt::SubscribeMessage& subscribe) {
    Check(subscribe.sub > m_lastSub && subscribe.sub <= 0x7fffffffU, "each subscription has its own number");
    m_lastSub = subscribe.sub;
    Check(subscribe.path.startsWith(QLatin1Char('/')), "paths are absolute");
    subscriptions[subscribe.sub] = Subscription();
    Check(subscriptions.size() <= vtlimits::MaxSubscriptions, "there are not too many subscriptions");
}

void ClientChecker::On(const vt::UnsubscribeMessage& unsubscribe) {
    Check(subscriptions.erase(unsubscribe.sub) == 1, "what is unsubscribed was subscribed");
}

void ClientChecker::On(const vt::AckMessage& ack) {
    Check(ack.count > m_acked && ack.count <= m_toAck, "what came is acknowledged");
    m_acked = ack.count;
}

void ClientChecker::On(const vt::WriteMessage& write) {
    OnRequest(write.req, write.sub);
}

void ClientChecker::On(const vt::CreateMessage& create) {
    Check(create.path.startsWith(QLatin1Char('/')), "paths are absolute");
    OnRequest(create.req, create.sub);
}

void ClientChecker::OnRequest(quint32 req, quint32 sub) {
    Check(req > m_lastRequest, "each request has its own number");
    m_lastRequest = req;
    Check(subscriptions.count(sub) == 1, "requests are about what is subscribed");
    requests.push_back(req);
}

void ClientChecker::OnRoad(quint32 sub) const {
    Check(hasRoads, "nobody speaks of roads where there are none");
    Check(subscriptions.count(sub) == 1, "roads are of what is subscribed");
}

void ClientChecker::On(const vt::HeardMessage& heard) {
    OnRoad(heard.sub);
    Check(!heard.road.isEmpty(), "what is heard has a name");
}

void ClientChecker::On(const vt::AgainMessage& again) {
    OnRoad(again.sub);
    Check(again.from != 0 && again.from <= again.to, "what is missing is a range");
}
