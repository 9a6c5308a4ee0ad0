// SPDX-License-Identifier: Apache-2.0
#include <fuzz/check.h>
#include <fuzz/clientchecker.h>
#include <fuzz/clientoperation.h>
#include <fuzz/compose.h>
#include <fuzz/narration.h>
#include <fuzz/quiettraces.h>
#include <fuzz/reactor.h>

#include <platform/vtclient/client/vtclient.h>
#include <platform/vtclient/server/roadpublisher.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/manualloop.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/platform/vtclient/memoryroads.h>

#include <algorithm>
#include <iterator>

using namespace std::chrono_literals;

namespace {

const QString Base = QStringLiteral("/L");

const char* const Specs[] = {"/L,/S",   "/L,/S/a", "/M,/S",    "/L/a,/S/b",
                             "/L/b,/S", "/,/S",    "/L/a/b,/", "no,tic"};

/// Connects when the script says so.
class ScriptConnector final : public vt::IConnector {
  public:
    void SetListener(IListener* listener) override { m_listener = listener; }
    void Connect() override { m_isConnecting = true; }
    void Abort() override { m_isConnecting = false; }
    bool IsConnecting() const { return m_isConnecting; }

    void Fail(const QString& reason) {
        m_isConnecting = false;
        m_listener->OnConnectFailed(reason);
    }
    void Succeed(std::unique_ptr<vt::IChannel> channel) {
        m_isConnecting = false;
        m_listener->OnConnected(std::move(channel));
    }

  private:
    IListener* m_listener = nullptr;
    bool m_isConnecting = false;
};

/// A client, its tree, and a server that does what the script says.
class ClientScript {
  public:
    ClientScript(const std::uint8_t* data, std::size_t size) : m_script(data, size) {
        auto connector = std::make_unique<ScriptConnector>();
        auto loop = std::make_unique<ManualLoop>(m_clock);
        m_connector = connector.get();
        m_loop = loop.get();
        m_clientRoads.fate = [this](const QByteArray&) {
            return m_isEnding || !m_script.Rarely() ? 1 : static_cast<int>(m_script.Below(3));
        };
        m_clientRoads.next = [this](std::size_t count) {
            return m_isEnding || !m_script.Rarely() ? std::size_t{0} : m_script.Byte() % count;
        };
        m_client = std::make_unique<vt::VtClient>(QStringLiteral("server"), 7450, VtClientOptions(),
                                                  std::move(connector), std::move(loop));
        m_client->AddObserver(&m_reactor);
    }

    void Run() {
        AddTic(Specs[0]);
        while (!m_script.IsEnd() && !m_isShutDown) {
            Step();
            CheckState();
        }
        End();
    }

  private:
    void Step();
    void StepOfServer(EClientOperation operation);
    void StepOfRoad(EClientOperation operation);
    void React();
    void AddTic(const char* spec);
    void RemoveTic();
    void Connect();
    void Send(const QByteArray& bytes);
    void SendMessage(const vt::Message& message, const QByteArray& changes = QByteArray());
    void SendWelcome();
    void SendChanges(bool isBatch);
    void SendEnd();
    void SendAnswer();
    void SendRaw();
    void SendWhole();
    void OfferRoad();
    void PublishOnRoad();
    void StrangeOnRoad();
    void ForgetKept();
    quint32 SomeSubscription();
    quint64 NextSequence(quint32 sub);
    bool Deliver();
    bool Receive();
    bool RunOnce();
    void CheckState();
    void End();

    Script m_script;
    QuietTraces m_quiet;
    values::Tree m_tree;
    ManualClock m_clock;
    MemoryBus m_bus;
    MemoryBus::End m_serverRoads{m_bus};
    MemoryBus::End m_clientRoads{m_bus};  ///< outlives the client
    vt::RoadMemory::Share m_roadShare{vtlimits::MaxRoadMemory};
    std::unique_ptr<vt::RoadPublisher> m_road;
    int m_roadCount = 0;
    bool m_hasRoads = false;  ///< the next connection
    Reactor m_reactor{[this] { React(); }};
    std::unique_ptr<vt::VtClient> m_client;
    ScriptConnector* m_connector = nullptr;
    ManualLoop* m_loop = nullptr;
    std::vector<IVtTic*> m_tics;
    std::shared_ptr<MemoryChannel::Wire> m_wire;
    MemoryChannel* m_clientEnd = nullptr;
    ClientChecker m_checker;
    bool m_isDamaging = false;
    bool m_isShutDown = false;
    bool m_isEnding = false;
};

void ClientScript::AddTic(const char* spec) {
    constexpr std::size_t MaxTics = 300;  // more than one session may subscribe
    IVtTic* const tic = m_tics.size() < MaxTics ? m_client->AddTic(QString::fromUtf8(spec), "") : nullptr;
    if (tic == nullptr) return;
    tic->AddObserver(&m_reactor);
    m_tics.push_back(tic);
}

void ClientScript::RemoveTic() {
    if (m_tics.empty()) return;
    const auto tic = m_tics.begin() + static_cast<std::ptrdiff_t>(m_script.Byte() % m_tics.size());
    IVtTic* const removed = *tic;
    m_tics.erase(tic);
    m_client->RemoveTic(removed);
}

void ClientScript::Connect() {
    if (!m_connector->IsConnecting()) return;
    if (m_script.Rarely()) return m_connector->Fail(m_script.Text());
    m_checker = ClientChecker();
    m_checker.hasRoads = m_hasRoads;
    m_wire = std::make_shared<MemoryChannel::Wire>();
    auto channel = std::make_unique<MemoryChannel>(m_wire, true);
    m_clientEnd = channel.get();
    if (m_hasRoads) channel->SetRoads(&m_clientRoads);
    m_connector->Succeed(std::move(channel));
}

void ClientScript::Send(const QByteArray& bytes) {
    const QByteArray sent = m_isDamaging ? compose::Damaged(bytes, m_script) : bytes;
    m_isDamaging = false;
    // The transport lets nothing larger through.
    if (m_wire && m_wire->isOpen && static_cast<quint32>(sent.size()) <= vtlimits::MaxFrame)
        m_wire->toA.push_back(sent);
}

void ClientScript::SendMessage(const vt::Message& message, const QByteArray& changes) {
    Send(ToBytes(message, changes));
}

void ClientScript::SendWelcome() {
    vt::WelcomeMessage welcome;
    welcome.version = m_script.Rarely() ? static_cast<quint32>(m_script.Number()) : vtlimits::ProtocolVersion;
    welcome.session = static_cast<int>(1 + m_script.Below(3));
    welcome.ping = std::chrono::milliseconds(m_script.Number() & 0x7fffffffU);
    welcome.dead = std::chrono::milliseconds(m_script.Number() & 0x7fffffffU);
    SendMessage(welcome);
}

/// Mostly one of the client's subscriptions.
quint32 ClientScript::SomeSubscription() {
    const unsigned choice = m_script.Byte();
    const auto& subscriptions = m_checker.subscriptions;
    if (choice >= 240 || subscriptions.empty()) return static_cast<quint32>(m_script.Number());
    return std::next(subscriptions.begin(), static_cast<int>(choice % subscriptions.size()))->first;
}

quint64 ClientScript::NextSequence(quint32 sub) {
    const auto found = m_checker.subscriptions.find(sub);
    if (found == m_checker.subscriptions.end()) return m_script.Number();
    return ++found->second.sequence;
}

void ClientScript::SendChanges(bool isBatch) {
    const quint32 sub = SomeSubscription();
    const quint64 seq = NextSequence(sub);
    const bool hasMore = m_script.Rarely();
    vt::ChangeWriter writer;
    quint32 next = 1;
    const auto found = m_checker.subscriptions.find(sub);
    quint32& nextId = found != m_checker.subscriptions.end() ? found->second.nextId : next;
    const unsigned count = m_script.Below(8);
    for (unsigned i = 0; i < count; ++i)
        writer.Write(compose::Change(&nextId, m_script));
    if (isBatch) return SendMessage(vt::BatchMessage{sub, seq, hasMore}, writer.Take());
    SendMessage(vt::SnapshotMessage{sub, seq}, writer.Take());
}

void ClientScript::SendEnd() {
    const quint32 sub = SomeSubscription();
    SendMessage(vt::EndMessage{sub, NextSequence(sub), 0});
}

void ClientScript::SendAnswer() {
    vt::AnswerMessage answer;
    auto& requests = m_checker.requests;
    const unsigned choice = m_script.Byte();
    answer.req = choice >= 240 || requests.empty() ? static_cast<quint32>(m_script.Number())
                                                   : requests[choice % requests.size()];
    requests.erase(std::remove(requests.begin(), requests.end(), answer.req), requests.end());
    answer.result = static_cast<vt::EResult>(m_script.Below(4));
    answer.reason = m_script.Text();
    answer.content = compose::AnyContent(m_script);
    SendMessage(answer);
}

void ClientScript::SendRaw() {
    const unsigned number = m_script.Below(18);
    Filling filling;
    filling.number = SomeSubscription() + m_script.Number();
    filling.text = m_script.Text();
    filling.item = compose::Item(m_script);
    Send(m_script.Flag() ? compose::MessageOfNumber(number, filling) : m_script.Bytes());
}

void ClientScript::SendWhole() {
    const quint32 sub = SomeSubscription();
    SendMessage(vt::SubscribedMessage{sub, QStringList{m_script.Path()}});
    const auto found = m_checker.subscriptions.find(sub);
    if (found == m_checker.subscriptions.end()) return;
    vt::ChangeWriter writer;
    vt::TreeChange change;
    change.change = vt::EChange::Added;
    if (m_script.Rarely()) change.item = compose::Item(m_script);
    writer.Write(change);
    found->second.nextId = 1;
    const unsigned count = m_script.Below(16);
    for (unsigned i = 0; i < count; ++i) {
        change.id = found->second.nextId++;
        change.parent = m_script.Below(4);
        change.name = m_script.Name();
        change.item = compose::Item(m_script);
        writer.Write(change);
    }
    SendMessage(vt::SnapshotMessage{sub, 1}, writer.Take());
    found->second.sequence = 2;
    SendMessage(vt::EndMessage{sub, 2, 0});
}

void ClientScript::OfferRoad() {
    if (!m_road || m_script.Rarely())
        m_road = std::make_unique<vt::RoadPublisher>(m_serverRoads, QStringLiteral("r-%1").arg(++m_roadCount),
                                                     m_roadShare);
    vt::RoadMessage road;
    if (m_road->Describe(SomeSubscription(), &road)) SendMessage(road);
}

void ClientScript::PublishOnRoad() {
    if (!m_road || m_bus.published.size() > 2000) return;
    vt::ChangeWriter writer;
    quint32 next = 1;
    quint32& nextId = m_checker.subscriptions.empty() ? next : m_checker.subscriptions.begin()->second.nextId;
    const unsigned count = m_script.Below(8);
    for (unsigned i = 0; i < count; ++i)
        writer.Write(compose::Change(&nextId, m_script));
    m_road->Publish(writer.Take(), m_script.Rarely(), m_clock.Now());
}

void ClientScript::StrangeOnRoad() {
    if (m_bus.published.empty() || m_bus.published.size() > 2000) return;
    const auto one = m_bus.published[m_script.Byte() % m_bus.published.size()];
    m_bus.Publish(one.road, m_script.Flag() ? m_script.Bytes() : compose::Damaged(one.message, m_script));
}

void ClientScript::ForgetKept() {
    m_bus.hasKeeper = m_script.Flag();
    const unsigned count = m_script.Below(8);
    for (unsigned i = 0; i < count; ++i)
        m_bus.notKept.insert(m_script.Byte());
}

void ClientScript::StepOfRoad(EClientOperation operation) {
    switch (operation) {
        case EClientOperation::UseRoads:
            m_hasRoads = !m_script.Rarely();
            return;
        case EClientOperation::OfferRoad:
            return OfferRoad();
        case EClientOperation::PublishOnRoad:
            return PublishOnRoad();
        case EClientOperation::SendAt: {
            const quint32 sub = SomeSubscription();
            const quint64 last = m_road ? m_road->Number() : 0;
            return SendMessage(vt::AtMessage{sub, m_script.Rarely() ? m_script.Number() : last});
        }
        case EClientOperation::ChangeRoadKey:
            if (m_road) m_road->ChangeKey();
            return;
        case EClientOperation::StrangeOnRoad:
            return StrangeOnRoad();
        case EClientOperation::ForgetKept:
            return ForgetKept();
        default:
            if (!m_script.Rarely()) m_clientRoads.DeliverOne();
            m_clientRoads.DeliverFetched();
            return;
    }
}

bool ClientScript::Deliver() {
    if (!m_wire || m_wire->isAGone || m_isEnding) return false;
    for (const QByteArray& bytes : m_wire->toA)
        m_checker.OnSent(bytes);
    const bool hasRun = m_clientEnd->Deliver();
    if (hasRun && m_client->IsConnected())
        Check(m_checker.CountOwed() < vtlimits::AckAfterMessages || !Receive() ||
                  m_checker.CountOwed() < vtlimits::AckAfterMessages,
              "a client acknowledges in time");
    return hasRun;
}

bool ClientScript::Receive() {
    const bool hasSome = m_wire && !m_wire->toB.empty();
    while (m_wire && !m_wire->toB.empty()) {
        m_checker.OnReceived(m_wire->toB.front());
        m_wire->toB.pop_front();
    }
    return hasSome;
}

void ClientScript::StepOfServer(EClientOperation operation) {
    switch (operation) {
        case EClientOperation::SendWelcome:
            return SendWelcome();
        case EClientOperation::SendSubscribed: {
            const quint32 sub = SomeSubscription();
            const QStringList prefixes{m_script.Path()};
            const auto found = m_checker.subscriptions.find(sub);
            if (found != m_checker.subscriptions.end()) found->second = ClientChecker::Subscription();
            return SendMessage(vt::SubscribedMessage{sub, prefixes});
        }
        case EClientOperation::SendSnapshot:
            return SendChanges(false);
        case EClientOperation::SendEnd:
            return SendEnd();
        case EClientOperation::SendBatch:
            return SendChanges(true);
        case EClientOperation::SendAbsent: {
            const quint32 sub = SomeSubscription();
            return SendMessage(vt::AbsentMessage{sub, m_script.Text()});
        }
        case EClientOperation::SendAnswer:
            return SendAnswer();
        case EClientOperation::SendRaw:
            return SendRaw();
        default:
            return SendWhole();
    }
}

void ClientScript::Step() {
    m_reactor.Refresh();
    const auto operation =
        static_cast<EClientOperation>(m_script.Below(static_cast<unsigned>(EClientOperation::Count)));
    switch (operation) {
        case EClientOperation::Edit:
            return treeedits::Edit(Base, m_script);
        case EClientOperation::Turn:
            m_loop->Run();
            return;
        case EClientOperation::Connect:
            return Connect();
        case EClientOperation::Damage:
            m_isDamaging = true;
            return;
        case EClientOperation::Deliver:
            Deliver();
            return;
        case EClientOperation::Receive:
            Receive();
            return;
        case EClientOperation::Cut:
            if (m_wire) m_wire->isOpen = false;
            return;
        case EClientOperation::Pass:
            return m_clock.Pass(static_cast<int>(m_script.Byte()) * 80ms);
        case EClientOperation::AddTic:
            return AddTic(Specs[m_script.Byte() % std::size(Specs)]);
        case EClientOperation::RemoveTic:
            return RemoveTic();
        case EClientOperation::ReleaseNode:
            return m_client->ReleaseNode(dynamic_cast<values::Node*>(treeedits::Choose(Base, m_script)));
        case EClientOperation::Arm:
            return m_reactor.Arm(m_script.Byte());
        case EClientOperation::Settle:
            for (int i = 0; i < 16 && RunOnce(); ++i) {
            }
            return;
        default:
            return operation > EClientOperation::Settle ? StepOfRoad(operation) : StepOfServer(operation);
    }
}

/// What the client's program does while it is told of something.
void ClientScript::React() {
    if (m_isEnding) return;
    Tell(QStringLiteral("reaction"));
    switch (m_script.Below(8)) {
        case 0:
            return RemoveTic();
        case 1:
            return m_reactor.Arm(1 + m_script.Below(8));
        case 2:
            return AddTic(Specs[m_script.Byte() % std::size(Specs)]);
        case 3:
            return m_client->ReleaseNode(dynamic_cast<values::Node*>(treeedits::Choose(Base, m_script)));
        case 4:
            if (!m_script.Rarely()) return treeedits::Edit(QStringLiteral("/"), m_script);
            m_isShutDown = true;
            m_tics.clear();
            return m_client->Shutdown();
        default:
            return treeedits::Edit(Base, m_script);
    }
}

bool ClientScript::RunOnce() {
    bool hasRun = m_loop->Run();
    hasRun = Receive() || hasRun;
    hasRun = m_clientRoads.Deliver() || hasRun;
    return Deliver() || hasRun;
}

void ClientScript::CheckState() {
    if (m_isShutDown) return;
    const bool isEstablished =
        std::any_of(m_tics.begin(), m_tics.end(), [](const IVtTic* tic) { return tic->IsEstablished(); });
    Check(m_client->IsConnected() || !isEstablished, "without a connection no tic is established");
    Check(m_client->IsConnected() || !m_client->HasUnansweredWrites(), "and nothing is under way");
    Check(m_client->GetLatency().value_or(0us) >= 0us, "a latency is a time");
    Check(m_client->IsIdle(), "no call of the client is under way");
}

void ClientScript::End() {
    m_isEnding = true;
    while (!m_isShutDown && !m_tics.empty()) {
        m_client->RemoveTic(m_tics.back());
        m_tics.pop_back();
    }
    Check(!m_client->HasUnansweredWrites(), "without tics nothing is under way");
    int rounds = 10000;
    while (RunOnce())
        Check(--rounds > 0, "the client comes to rest");
    m_reactor.Refresh();
    Check(Reactor::IsNobodyElseLeft(), "nothing observes what is no longer mirrored");
    Check(m_tree.GetRoot()->CountObservers() == 1, "nor the root");
    m_client.reset();
    Receive();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ClientScript(data, size).Run();
    return 0;
}
