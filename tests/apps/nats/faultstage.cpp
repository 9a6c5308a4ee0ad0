// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/nats/faultstage.h>

#include <platform/nats/natsbusmaker.h>
#include <platform/nats/natsscheme.h>
#include <platform/vtclient/vtclientcenter.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <algorithm>
#include <utility>

namespace {

constexpr std::chrono::milliseconds ChangeEvery(5);
constexpr int WriteEvery = 16;         // changes
constexpr int StagePatience = 30'000;  // ms

}  // namespace

// A client
// ----------------------------------------------------------------------------------------------------

FaultStage::Seat::~Seat() {
    if (m_number != nullptr) m_number->DeleteObserver(this);
    if (m_log != nullptr) m_log->DeleteObserver(this);
    if (m_client != nullptr) m_client->DeleteObserver(this);
    VtClientCenter::Instance().DestroyVtClient(m_client);
}

template <class V>
V* FaultStage::Seat::Find(const char* name) const {
    return dynamic_cast<V*>(m_stage.m_tree.FindItem(m_root + QLatin1Char('/') + QLatin1String(name)));
}

bool FaultStage::Seat::Connect(const QString& address) {
    m_client = VtClientCenter::Instance().CreateVtClient(address.toLatin1().constData(), 4222);
    if (m_client == nullptr) return false;
    m_client->AddObserver(this);
    m_tic = m_client->AddTic(m_root + QStringLiteral(",/S"), "");
    if (!WaitUntil([this] { return m_tic->IsEstablished(); }, StagePatience)) return false;
    m_number = Find<Number>("number");
    m_log = Find<Text>("log");
    m_number->AddObserver(this);
    m_log->AddObserver(this);
    m_lastChange.start();
    return true;
}

void FaultStage::Seat::Update(Observable* source, TChangeCode code) {
    if (source == static_cast<Observable*>(m_client) && code == connectioncode::Disconnected) ++m_losses;
    if (source == static_cast<Observable*>(m_client) && code == connectioncode::ChangesLost) ++m_told;
    if (code != changecode::ContentChanged) return;
    if (source == m_number->GetObservable())
        m_longestPause = std::max(m_longestPause, Time(m_lastChange.restart()));
    if (source != m_log->GetObservable()) return;
    const int number = m_log->GetValue().toInt();
    if (m_heard != 0 && number <= m_heard) ++m_doubled;
    if (m_heard != 0 && number > m_heard + 1) m_missed += number - m_heard - 1;
    m_heard = number;
}

// The stage
// ---------------------------------------------------------------------------------------------------

FaultStage::FaultStage() {
    nats::RegisterScheme();
    const auto add = [this](auto* value, const char* name) {
        value->SetName(QString::fromLatin1(name));
        EXPECT_TRUE(m_tree.AddValue(QStringLiteral("/S"), value));
        return value;
    };
    m_number = add(new Number, "number");
    m_written = add(new Number, "written");
    m_log = add(new Text, "log");
    m_text = add(new Text, "text");
    m_log->SetDelivery(values::EDelivery::EveryChange);
    QObject::connect(&m_changes, &QTimer::timeout, &m_changes, [this] { Change(); });
    VtClientOptions options;
    options.firstRetry = std::chrono::milliseconds(20);
    options.longestRetry = std::chrono::milliseconds(200);
    options.deadAfter = std::chrono::seconds(8);
    options.pingInterval = std::chrono::seconds(1);
    VtClientCenter::Instance().SetOptions(options);
}

FaultStage::~FaultStage() {
    m_seats.clear();
    EndServer();
    VtClientCenter::Instance().SetOptions(VtClientOptions());
}

void FaultStage::SetPatience(Time time) {
    m_patience = time;
    VtClientOptions options = VtClientCenter::Instance().GetOptions();
    options.deadAfter = time;
    options.pingInterval = time / 4;
    VtClientCenter::Instance().SetOptions(options);
}

bool FaultStage::StartServer(const nats::NatsOptions& options) {
    m_server = std::make_unique<VtServer>(m_access);
    VtServerOptions serverOptions;
    serverOptions.port = 0;
    serverOptions.deadAfter = m_patience;
    serverOptions.pingInterval = m_patience / 3;
    QString error;
    if (!m_server->Listen(serverOptions, &error)) return false;
    const auto bus = nats::MakeBus(options, &error);
    if (bus == nullptr) return false;
    const auto note = [this](nats::NatsStation::EState state, const QString&) { m_state = state; };
    m_station = std::make_unique<nats::NatsStation>(
        *m_server, bus, QStringLiteral("tower"),
        nats::NatsStation::Description{QStringLiteral("stage"), {}, {}}, note);
    m_station->Start();
    return WaitUntil([this] { return IsOffering(); }, StagePatience);
}

void FaultStage::EndServer() {
    m_station.reset();
    m_server.reset();
    m_state = nats::NatsStation::EState::Connecting;
}

bool FaultStage::AddClient(const QString& address) {
    m_seats.push_back(std::make_unique<Seat>(*this, static_cast<int>(m_seats.size()) + 1));
    return m_seats.back()->Connect(address);
}

// While a road is waited for, what changes comes in sessions; what counts is that it comes.
bool FaultStage::WaitForRoads(nats::INatsBus& bus) {
    int published = 0;
    const int spy =
        bus.Subscribe("mcs.tower.road.>", [&published](const nats::NatsMessage&) { ++published; });
    const bool isThere = RunUntil([&published] { return published > 100; });
    bus.Unsubscribe(spy);
    TakePauses();
    return isThere;
}

void FaultStage::Change() {
    m_number->SetValue(++m_sent);
    m_log->SetValue(QString::number(m_sent));
    if (m_textLength != 0) m_text->SetValue(QString(m_textLength, QChar('a' + m_sent % 26)));
    if (m_sent % WriteEvery != 0 || m_seats.empty()) return;
    const Seat& seat = *m_seats[static_cast<std::size_t>(m_sent / WriteEvery) % m_seats.size()];
    auto* const written = seat.Find<Number>("written");
    if (written != nullptr && seat.m_tic->IsEstablished()) written->SetValue(m_sent);
}

void FaultStage::SetChanging(bool isChanging) {
    if (isChanging)
        m_changes.start(ChangeEvery);
    else
        m_changes.stop();
}

void FaultStage::BelieveSent(int sent) {
    m_sent = sent;
    m_number->SetValue(sent);
    m_log->SetValue(QString::number(sent));
}

void FaultStage::Run(Time time) {
    QElapsedTimer clock;
    clock.start();
    RunUntil([&] { return clock.elapsed() >= time.count(); }, 2 * time);
}

bool FaultStage::RunUntil(const std::function<bool()>& isDone, Time patience) {
    m_changes.start(ChangeEvery);
    const bool isSo = WaitUntil(isDone, static_cast<int>(patience.count()));
    m_changes.stop();
    for (const auto& seat : m_seats)  // for whom it is not over
        seat->m_longestPause = std::max(seat->m_longestPause, Time(seat->m_lastChange.elapsed()));
    return isSo;
}

bool FaultStage::AreAllEstablished() const {
    return std::all_of(m_seats.begin(), m_seats.end(),
                       [](const auto& seat) { return seat->m_tic->IsEstablished(); });
}

bool FaultStage::IsAlike(const Seat& seat) const {
    const auto* const number = seat.Find<Number>("number");
    const auto* const written = seat.Find<Number>("written");
    const auto* const log = seat.Find<Text>("log");
    return seat.m_tic->IsEstablished() && number->GetState() == values::Valid &&
           number->GetValue() == m_number->GetValue() && written->GetValue() == m_written->GetValue() &&
           log->GetValue() == m_log->GetValue() && !seat.m_client->HasUnansweredWrites();
}

testing::AssertionResult FaultStage::IsInOrder(bool isWhole) {
    for (const auto& seat : m_seats) {
        if (!WaitUntil([&] { return IsAlike(*seat); }, StagePatience))
            return testing::AssertionFailure()
                   << seat->m_root.toStdString() << " is not as the server is: established "
                   << seat->m_tic->IsEstablished() << ", " << seat->m_client->GetLastError().toStdString();
        if (seat->m_doubled != 0)
            return testing::AssertionFailure()
                   << seat->m_root.toStdString() << " had " << seat->m_doubled << " occurrences twice";
        if (seat->m_missed != 0 && seat->m_told == 0)
            return testing::AssertionFailure() << seat->m_root.toStdString() << " has missed "
                                               << seat->m_missed << " occurrences and was not told";
        if (isWhole && seat->m_missed != 0)
            return testing::AssertionFailure()
                   << seat->m_root.toStdString() << " has missed " << seat->m_missed << " occurrences of "
                   << m_sent << ", with " << seat->m_losses << " sessions lost";
    }
    return testing::AssertionSuccess();
}

std::vector<FaultStage::Time> FaultStage::TakePauses() {
    std::vector<Time> pauses;
    for (const auto& seat : m_seats) {
        pauses.push_back(std::exchange(seat->m_longestPause, Time(0)));
        seat->m_lastChange.restart();
    }
    std::sort(pauses.begin(), pauses.end());
    return pauses;
}

int FaultStage::CountLosses() const {
    int losses = 0;
    for (const auto& seat : m_seats)
        losses += seat->m_losses;
    return losses;
}

int FaultStage::CountMissed() const {
    int missed = 0;
    for (const auto& seat : m_seats)
        missed += seat->m_missed;
    return missed;
}

int FaultStage::CountDoubled() const {
    int doubled = 0;
    for (const auto& seat : m_seats)
        doubled += seat->m_doubled;
    return doubled;
}

int FaultStage::CountTold() const {
    int told = 0;
    for (const auto& seat : m_seats)
        told += seat->m_told;
    return told;
}

int FaultStage::LastHeard() const {
    int last = m_seats.empty() ? 0 : m_seats.front()->m_heard;
    for (const auto& seat : m_seats)
        last = std::min(last, seat->m_heard);
    return last;
}
