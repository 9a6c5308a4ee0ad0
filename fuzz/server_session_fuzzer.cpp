// SPDX-License-Identifier: Apache-2.0
#include <fuzz/check.h>
#include <fuzz/compose.h>
#include <fuzz/follower.h>
#include <fuzz/narration.h>
#include <fuzz/quiettraces.h>
#include <fuzz/reactor.h>
#include <fuzz/scriptaccess.h>
#include <fuzz/serveroperation.h>

#include <platform/vtclient/server/serverhub.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/manualloop.h>
#include <tests/platform/vtclient/memorychannel.h>
#include <tests/platform/vtclient/memoryroads.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

const QString Base = QStringLiteral("/S");

/// A client, of which only its end of the wire is real.
struct Client {
    explicit Client(const MemoryBus& bus) : follower(bus) {}

    std::shared_ptr<MemoryChannel::Wire> wire = std::make_shared<MemoryChannel::Wire>();
    MemoryChannel* serverEnd = nullptr;
    Follower follower;
    bool isMuddled = false;  ///< has sent what no client would; what it is told still keeps to the rules
    quint64 acked = 0;
    quint32 lastSub = 0;
};

/// A server, its tree, and clients that do what the script says.
constexpr int MaxPending = 64;

/// Gives back what it was asked.
class EchoHistory final : public IVtHistory {
  public:
    void Recall(const VtHistoryQuestion& question, const Answer& answer) override {
        answer({QString(), {question.path}, question.before / 2});
    }
};

vt::ServerHub::Settings TightSettings(vt::IRoads* roads) {
    static EchoHistory history;
    vt::ServerHub::Settings settings;
    settings.history = &history;
    settings.maxPending = MaxPending;
    settings.roads = roads;
    return settings;
}

class ServerScript {
  public:
    ServerScript(const std::uint8_t* data, std::size_t size)
        : m_script(data, size), m_access(m_script, m_reactor) {}

    void Run() {
        treeedits::Edit(Base, m_script);
        while (!m_script.IsEnd())
            Step();
        ComeToRest();
        EndAll();
    }

  private:
    void Step();
    void StepOfClient(EServerOperation operation);
    void React();
    void Connect();
    void Send(const QByteArray& bytes);
    void SendMessage(const vt::Message& message);
    void SendHello();
    void SendSubscribe();
    void SendUnsubscribe();
    void SendAck();
    vt::WriteMessage SomeRequest();
    void SendWrite();
    void SendCreate();
    void SendRaw();
    void SendOfRoad(EServerOperation operation);
    bool Deliver(Client& client);
    bool Receive(Client& client);
    bool RunOnce();
    void ComeToRest();
    void EndAll();

    Script m_script;
    QuietTraces m_quiet;
    values::Tree m_tree;
    ManualClock m_clock;
    ManualLoop m_loop{m_clock};
    MemoryBus m_bus;
    MemoryBus::End m_roads{m_bus};
    Reactor m_reactor{[this] { React(); }};
    ScriptAccess m_access;
    std::unique_ptr<vt::ServerHub> m_hub =
        std::make_unique<vt::ServerHub>(m_access, m_loop, TightSettings(&m_roads));
    std::vector<std::unique_ptr<Client>> m_clients;
    std::size_t m_current = 0;
    bool m_isDamaging = false;
    bool m_isResting = false;
};

void ServerScript::Connect() {
    constexpr std::size_t MaxClients = MaxPending + 16;
    if (m_clients.size() >= MaxClients) return;
    m_clients.push_back(std::make_unique<Client>(m_bus));
    m_current = m_clients.size() - 1;
    auto channel = std::make_unique<MemoryChannel>(m_clients.back()->wire, false);
    m_clients.back()->serverEnd = channel.get();
    m_hub->AddChannel(std::move(channel));
}

void ServerScript::Send(const QByteArray& bytes) {
    Client& client = *m_clients[m_current];
    const QByteArray sent = m_isDamaging ? compose::Damaged(bytes, m_script) : bytes;
    m_isDamaging = false;
    // The transport lets nothing larger through.
    const quint32 limit = client.follower.IsWelcome() ? vtlimits::MaxFrame : vtlimits::MaxFrameBeforeWelcome;
    if (client.wire->isOpen && static_cast<quint32>(sent.size()) <= limit) client.wire->toB.push_back(sent);
}

void ServerScript::SendMessage(const vt::Message& message) {
    Send(ToBytes(message));
}

void ServerScript::SendHello() {
    vt::HelloMessage hello;
    hello.version = m_script.Rarely() ? static_cast<quint32>(m_script.Number()) : vtlimits::ProtocolVersion;
    hello.application = m_script.Text();
    hello.user = m_script.Text();
    SendMessage(hello);
}

void ServerScript::SendSubscribe() {
    Client& client = *m_clients[m_current];
    vt::SubscribeMessage subscribe;
    subscribe.sub = m_script.Rarely() ? static_cast<quint32>(m_script.Number()) : ++client.lastSub;
    subscribe.path = m_script.Path();
    SendMessage(subscribe);
}

void ServerScript::SendUnsubscribe() {
    SendMessage(vt::UnsubscribeMessage{static_cast<quint32>(m_script.Number())});
}

void ServerScript::SendAck() {
    Client& client = *m_clients[m_current];
    client.acked = m_script.Rarely() ? m_script.Number() : client.follower.CountToAck();
    SendMessage(vt::AckMessage{client.acked});
}

/// Request, subscription and item of a write; a creation has the first two.
vt::WriteMessage ServerScript::SomeRequest() {
    vt::WriteMessage write;
    write.req = static_cast<quint32>(m_script.Number());
    write.sub = m_script.Rarely() ? static_cast<quint32>(m_script.Number()) : 1 + m_script.Below(2);
    write.id = static_cast<quint32>(m_script.Number());
    return write;
}

void ServerScript::SendWrite() {
    vt::WriteMessage write = SomeRequest();
    write.content = compose::AnyContent(m_script);
    SendMessage(write);
}

void ServerScript::SendCreate() {
    const vt::WriteMessage request = SomeRequest();
    vt::CreateMessage create;
    create.req = request.req;
    create.sub = request.sub;
    create.path = m_script.Path();
    create.item = compose::Item(m_script);
    SendMessage(create);
}

void ServerScript::SendRaw() {
    const unsigned number = m_script.Below(18);
    Filling filling;
    filling.number = m_script.Number();
    m_script.Number();  // scripts that were kept have one here
    filling.text = m_script.Text();
    Send(m_script.Flag() ? compose::MessageOfNumber(number, filling) : m_script.Bytes());
}

void ServerScript::SendOfRoad(EServerOperation operation) {
    const Client& client = *m_clients[m_current];
    const quint32 sub = m_script.Rarely() ? static_cast<quint32>(m_script.Number()) : 1 + m_script.Below(2);
    switch (operation) {
        case EServerOperation::SendJoin:
            return SendMessage(vt::JoinMessage{sub});
        case EServerOperation::SendHeard:
            return SendMessage(vt::HeardMessage{sub, client.follower.RoadOf(sub)});
        case EServerOperation::SendLeave:
            return SendMessage(vt::LeaveMessage{sub});
        default: {
            const quint64 from = m_script.Number();
            return SendMessage(vt::AgainMessage{sub, from, from + m_script.Byte()});
        }
    }
}

bool ServerScript::Deliver(Client& client) {
    if (client.wire->isBGone) return false;
    for (const QByteArray& bytes : client.wire->toB)
        client.follower.OnSent(bytes);
    return client.serverEnd->Deliver();
}

bool ServerScript::Receive(Client& client) {
    const bool hasSome = !client.wire->toA.empty();
    while (!client.wire->toA.empty()) {
        client.follower.OnReceived(client.wire->toA.front());
        client.wire->toA.pop_front();
        const quint64 owed = client.follower.CountToAck() - client.acked;
        Check(client.acked > client.follower.CountToAck() || owed <= vtlimits::MaxUnackedMessages,
              "a client that does not acknowledge is not sent more");
    }
    return hasSome;
}

void ServerScript::StepOfClient(EServerOperation operation) {
    if (m_clients.empty()) Connect();
    Client& client = *m_clients[m_current];
    switch (operation) {
        case EServerOperation::SendHello:
            return SendHello();
        case EServerOperation::SendSubscribe:
            return SendSubscribe();
        case EServerOperation::SendUnsubscribe:
            return SendUnsubscribe();
        case EServerOperation::SendAck:
            return SendAck();
        case EServerOperation::SendWrite:
            return SendWrite();
        case EServerOperation::SendCreate:
            return SendCreate();
        case EServerOperation::SendRaw:
            return SendRaw();
        case EServerOperation::SendJoin:
        case EServerOperation::SendHeard:
        case EServerOperation::SendLeave:
        case EServerOperation::SendAgain:
            return SendOfRoad(operation);
        case EServerOperation::Cut:
            client.wire->isOpen = false;
            return;
        case EServerOperation::Deliver:
            Deliver(client);
            return;
        default:
            Receive(client);
            return;
    }
}

void ServerScript::Step() {
    m_reactor.Refresh();
    const auto operation =
        static_cast<EServerOperation>(m_script.Below(static_cast<unsigned>(EServerOperation::Count)));
    switch (operation) {
        case EServerOperation::Edit:
            return treeedits::Edit(Base, m_script);
        case EServerOperation::Turn:
            m_loop.Run();
            return;
        case EServerOperation::Connect:
            return Connect();
        case EServerOperation::Switch:
            m_current = m_clients.empty() ? 0 : m_script.Byte() % m_clients.size();
            return;
        case EServerOperation::Damage:
            m_isDamaging = true;
            return;
        case EServerOperation::Pass:
            return m_clock.Pass(static_cast<int>(m_script.Byte()) * 40ms);
        case EServerOperation::Slow:
            return m_clock.SetCost(static_cast<int>(m_script.Below(8)) * 400us);
        case EServerOperation::Arm:
            return m_reactor.Arm(m_script.Byte());
        case EServerOperation::Forbid:
            return m_access.Change();
        case EServerOperation::ChangeKeys:
            return m_hub->ChangeRoadKeys();
        case EServerOperation::Settle:
            for (int i = 0; i < 16 && RunOnce(); ++i) {
            }
            return;
        default:
            return StepOfClient(operation);
    }
}

/// What the server's program does while it is told of something, or asked.
void ServerScript::React() {
    if (m_isResting) return;
    Tell(QStringLiteral("reaction"));
    switch (m_script.Below(8)) {
        case 0:
            return m_hub->EndSession(static_cast<int>(m_script.Below(4)), QStringLiteral("not wanted"));
        case 1:
            return m_reactor.Arm(1 + m_script.Below(8));
        case 2:
            if (m_script.Rarely()) m_hub->EndAll(QStringLiteral("a pause"));
            return;
        case 3:
            if (m_script.Rarely()) Connect();
            return;
        default:
            return treeedits::Edit(Base, m_script);
    }
}

bool ServerScript::RunOnce() {
    bool hasRun = m_loop.Run();
    for (std::size_t i = 0; i < m_clients.size(); ++i) {
        Client& client = *m_clients[i];
        hasRun = Deliver(client) || hasRun;
        hasRun = Receive(client) || hasRun;
        if (client.acked >= client.follower.CountToAck() || !client.wire->isOpen) continue;
        const std::size_t before = m_current;
        m_current = i;
        client.acked = client.follower.CountToAck();
        SendMessage(vt::AckMessage{client.acked});
        m_current = before;
    }
    return hasRun;
}

/// Every client takes what there is for it; then each knows what is.
void ServerScript::ComeToRest() {
    m_isDamaging = false;
    m_isResting = true;
    m_clock.SetCost(0us);
    m_clock.Pass(250ms);  // by then the server has looked for what was renamed
    int rounds = 100000;
    while (RunOnce())
        Check(--rounds > 0, "the server comes to rest");
    for (const auto& client : m_clients)
        if (client->wire->isOpen) client->follower.CompareWithTree();
}

void ServerScript::EndAll() {
    for (const auto& client : m_clients)
        client->wire->isOpen = false;
    m_clock.Pass(vtlimits::HelloTimeout);
    while (RunOnce()) {
    }
    Check(m_hub->CountSessions() == 0, "every session has ended");
    Check(m_hub->CountWatchers() == 0, "nothing is watched for nobody");
    Check(m_access.IsEven(), "every session that started has ended for the access, too");
    m_reactor.Refresh();
    Check(Reactor::IsNobodyElseLeft(), "the server has let go of the tree");
    m_hub.reset();
    Check(m_tree.GetRoot()->CountObservers() == 1, "of its root, too");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ServerScript(data, size).Run();
    return 0;
}
