// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/hamliborv.h>

#include <apps/mcserver/device/iorvdevicelistener.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

namespace {

/// All digits, as everywhere in answers.
QString MegaHertzText(double hz) {
    constexpr double MegaHertz = 1000000.0;
    constexpr int Digits = 10;
    return QString::number(hz / MegaHertz, 'g', Digits);
}

QString RangesText(const std::vector<RigRange>& ranges) {
    QStringList texts;
    for (const RigRange& range : ranges)
        texts << QStringLiteral("%1-%2 MHz").arg(MegaHertzText(range.from), MegaHertzText(range.to));
    return texts.join(QStringLiteral(", "));
}

}  // namespace

HamlibOrv::HamlibOrv(const QString& name, IClock& clock)
    : m_name(name), m_clock(clock), m_reportTimer(clock) {}

HamlibOrv::~HamlibOrv() {
    for (const Channel& channel : m_channels)
        channel.receiver->BeginEnd();
}

void HamlibOrv::AddReceiver(const QString& port, std::unique_ptr<IRig> rig) {
    Channel channel;
    const int number = static_cast<int>(m_channels.size());
    Receiver::IListener& listener = *this;
    channel.receiver = std::make_unique<Receiver>(number, port, std::move(rig), listener, m_clock);
    channel.facts.name = m_name;
    channel.facts.address = port;
    m_channels.push_back(std::move(channel));
}

QString HamlibOrv::NameOf(const Receiver& receiver) {
    const QString number = QString::number(receiver.GetChannel() + 1);
    return receiver.GetPort().isEmpty() ? number : QStringLiteral("%1 (%2)").arg(number, receiver.GetPort());
}

void HamlibOrv::SetListener(IOrvDeviceListener* listener) {
    m_listener = listener;
    for (Channel& channel : m_channels)
        ShowFacts(channel);
}

void HamlibOrv::Connect(const OrvDeviceSettings& settings) {
    m_settings = settings;
    if (std::exchange(m_isHeld, true)) return;
    for (Channel& channel : m_channels) {
        channel.wasLost = false;
        channel.receiver->Open();
    }
    ShowState();
    AskAll();
}

void HamlibOrv::Disconnect() {
    if (!std::exchange(m_isHeld, false)) return;
    m_reportTimer.Stop();
    for (Channel& channel : m_channels) {
        channel.receiver->Close();
        channel.isUsed = false;
        channel.wantedHz = 0.0;
        channel.facts.Reset(ReceiverFacts::EState::Disconnected, {});
        ShowFacts(channel);
    }
    ShowState();
}

void HamlibOrv::ChangeSettings(const OrvDeviceSettings& settings) {
    m_settings = settings;
    ReportChannels();
}

double HamlibOrv::GetBandwidth() const {
    double least = 0.0;
    for (const Channel& channel : m_channels) {
        const double bandwidth = channel.receiver->GetBandwidth();
        if (bandwidth > 0.0 && (least == 0.0 || bandwidth < least)) least = bandwidth;
    }
    return least;
}

void HamlibOrv::AskAll() {
    for (const Channel& channel : m_channels)
        channel.receiver->Read();
    m_reportTimer.Start(m_reportInterval, [this] { AskAll(); });
}

int HamlibOrv::CountReady() const {
    return static_cast<int>(std::count_if(m_channels.begin(), m_channels.end(), [](const Channel& channel) {
        return channel.receiver->IsReady();
    }));
}

bool HamlibOrv::IsAnyOpening() const {
    return std::any_of(m_channels.begin(), m_channels.end(),
                       [](const Channel& channel) { return channel.receiver->IsOpening(); });
}

void HamlibOrv::ShowState() {
    const int count = static_cast<int>(m_channels.size());
    const int ready = CountReady();
    if (!m_isHeld) return SetState(false, ECode::DeviceLetGo, BootUnknown, OperationIdle);
    if (ready > 0)
        return SetState(
            true, {ECode::ReceiversAnswer, {CodedText::Number(ready), CodedText::Number(count), m_name}},
            BootReady, OperationFfm);
    if (IsAnyOpening())
        return SetState(false, {ECode::ReceiversConnecting, {m_name}}, BootLoading, OperationIdle);
    SetState(false, {ECode::DeviceLost, {m_channels.front().firstReason}}, BootFailed, OperationIdle);
}

// Whoever is told of one may ask for the others.
void HamlibOrv::SetState(bool isOnline, const CodedText& state, EBooState bootState, EOperationMode mode) {
    const bool changesConnection = isOnline != m_isOnline || state != m_connectionState;
    const bool changesMode = mode != m_mode;
    const bool changesBootState = bootState != m_bootState;
    m_isOnline = isOnline;
    m_connectionState = state;
    m_mode = mode;
    m_bootState = bootState;
    if (m_listener == nullptr) return;
    if (changesConnection) m_listener->OnConnectionChanged(isOnline, state);
    if (changesMode) m_listener->OnOperationModeChanged(mode);
    if (changesBootState) m_listener->OnBootStateChanged(bootState);
    ReportChannels();
}

void HamlibOrv::ReportChannels() {
    int used = 0;
    int free = 0;
    for (const Channel& channel : m_channels) {
        if (channel.isUsed) ++used;
        if (!channel.isUsed && channel.receiver->IsReady()) ++free;
    }
    if (m_listener != nullptr)
        m_listener->OnChannelsChanged(std::clamp(m_settings.channels - used, 0, free), used);
}

void HamlibOrv::ShowFacts(Channel& channel) {
    if (m_listener != nullptr) m_listener->OnReceiverChanged(channel.receiver->GetChannel(), channel.facts);
}

void HamlibOrv::Tell(const CodedText& event) {
    if (m_listener != nullptr) m_listener->OnLog(event);
}

void HamlibOrv::OnReceiverReady(Receiver& receiver) {
    Channel& channel = ChannelOf(receiver);
    channel.facts.Reset(ReceiverFacts::EState::Connected, {});
    ShowFacts(channel);
    if (std::exchange(channel.wasLost, false)) Tell({ECode::ReceiverBack, {NameOf(receiver)}});
    ShowState();
    receiver.Read();
}

void HamlibOrv::OnReceiverLost(Receiver& receiver, const CodedText& reason) {
    Channel& channel = ChannelOf(receiver);
    channel.facts.Reset(ReceiverFacts::EState::Error, reason);
    ShowFacts(channel);
    if (std::exchange(channel.wasLost, true)) return;
    channel.firstReason = reason;
    Tell({ECode::ReceiverLost, {NameOf(receiver), reason}});
    if (channel.isUsed && m_listener != nullptr)
        m_listener->OnChannelLost(receiver.GetChannel(), {ECode::ReceiverIsLost, {NameOf(receiver), reason}});
    ShowState();
}

void HamlibOrv::OnTuningFailed(Receiver& receiver, const CodedText& reason) {
    if (ChannelOf(receiver).isUsed && m_listener != nullptr)
        m_listener->OnChannelLost(receiver.GetChannel(), reason);
}

void HamlibOrv::OnReading(Receiver& receiver, const RigReading& reading) {
    Channel& channel = ChannelOf(receiver);
    channel.facts.hz = reading.hz;
    channel.facts.mode = reading.mode;
    channel.facts.strength = reading.strength.value_or(ReceiverFacts::NoStrength);
    ShowFacts(channel);
}

CodedText HamlibOrv::AllocateChannel(int* channel) {
    if (!m_isOnline) return ECode::DeviceNotReadyYet;
    int used = 0;
    int lost = 0;
    int found = -1;
    for (const Channel& each : m_channels) {
        if (each.isUsed)
            ++used;
        else if (!each.receiver->IsReady())
            ++lost;
        else if (found == -1)
            found = each.receiver->GetChannel();
    }
    if (found == -1 && lost > 0)
        return {ECode::NoFreeChannelSomeLost, {CodedText::Number(used), CodedText::Number(lost)}};
    if (found == -1 || used >= m_settings.channels) return {ECode::NoFreeChannel, {CodedText::Number(used)}};
    m_channels[std::size_t(found)].isUsed = true;
    *channel = found;
    ReportChannels();
    return {};
}

void HamlibOrv::FreeChannel(int channel) {
    if (channel < 0 || std::size_t(channel) >= m_channels.size()) return;
    Channel& freed = m_channels[std::size_t(channel)];
    freed.wantedHz = 0.0;
    if (std::exchange(freed.isUsed, false)) ReportChannels();
}

CodedText HamlibOrv::Tune(int channel, double hz) {
    if (channel < 0 || std::size_t(channel) >= m_channels.size() || !m_channels[std::size_t(channel)].isUsed)
        return ECode::NoSuchChannel;
    Channel& tuned = m_channels[std::size_t(channel)];
    Receiver& receiver = *tuned.receiver;
    if (!receiver.IsReady()) return {ECode::ReceiverIsLost, {NameOf(receiver), receiver.GetLossReason()}};
    if (!receiver.Receives(hz))
        return {ECode::OutOfReceiverRange, {NameOf(receiver), RangesText(receiver.GetRanges())}};
    tuned.wantedHz = hz;
    receiver.Tune(hz);
    return {};
}

CodedText HamlibOrv::RestartJob() {
    if (!m_isOnline) return ECode::DeviceNotReadyYet;
    for (const Channel& channel : m_channels)
        if (channel.wantedHz > 0.0) channel.receiver->Tune(channel.wantedHz);
    Tell(ECode::JobStartsAnew);
    return {};
}

CodedText HamlibOrv::RunBuiltInTest() {
    return ECode::NoBuiltInTest;
}

CodedText HamlibOrv::Calibrate() {
    return ECode::NoCalibration;
}

CodedText HamlibOrv::SetReportInterval(Time interval) {
    if (interval < ShortestReportInterval)
        return {ECode::ReportsTooOften, {CodedText::Number(ShortestReportInterval.count())}};
    m_reportInterval = interval;
    if (m_listener != nullptr) m_listener->OnReportIntervalChanged(interval);
    if (m_isHeld) m_reportTimer.Start(interval, [this] { AskAll(); });
    return {};
}
