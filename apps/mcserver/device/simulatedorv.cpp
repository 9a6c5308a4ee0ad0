// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/device/simulatedorv.h>

#include <apps/mcserver/device/iorvdevicelistener.h>

#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

struct Stage {
    EBooState state;
    std::chrono::milliseconds time;  ///< that it lasts
};

constexpr Stage Stages[] = {
    {BootPowerOn, 200ms},
    {BootLoading, 500ms},
    {BootSelfTest, 400ms},
    {BootCalibrating, 400ms},
};

constexpr int StageCount = int(std::size(Stages));

bool IsSweeping(EOperationMode mode) {
    return mode == OperationScan || mode == OperationMemoryScan;
}

}  // namespace

SimulatedOrv::SimulatedOrv(IClock& clock)
    : m_bootTimer(clock), m_taskTimer(clock), m_sweepTimer(clock), m_scriptTimer(clock) {}

SimulatedOrv::~SimulatedOrv() = default;

void SimulatedOrv::RunScript(const OrvScript& script) {
    m_script = script;
    m_nextStep = 0;
    m_scriptTime = 0ms;
    RunNextStep();
}

void SimulatedOrv::RunNextStep() {
    if (m_nextStep == m_script.GetSteps().size()) return;
    const OrvScript::Step step = m_script.GetSteps()[m_nextStep++];
    m_scriptTimer.Start(step.time - m_scriptTime, [this, step] {
        m_scriptTime = step.time;
        RunStep(step);
        RunNextStep();
    });
}

void SimulatedOrv::RunStep(const OrvScript::Step& step) {
    switch (step.action) {
        case OrvScript::EAction::Mode:
            if (m_bootState == BootReady) {
                m_taskTimer.Stop();
                SetMode(step.mode);
            }
            break;
        case OrvScript::EAction::Fail:
            Fail(step.text);
            break;
        case OrvScript::EAction::Recover:
            Recover();
            break;
        case OrvScript::EAction::Log:
            Log(step.text);
            break;
        case OrvScript::EAction::Occupy:
            m_occupant = step.text;
            if (!m_isHeld || m_settings.force) break;
            GoOffline(BootUnknown, {ECode::DeviceInUse, {m_occupant}});
            TryToConnect();
            break;
        case OrvScript::EAction::Vacate:
            m_occupant.clear();
            break;
    }
}

void SimulatedOrv::Fail(const QString& reason) {
    m_hasFailed = true;
    m_failure = reason.isEmpty() ? CodedText(ECode::DeviceDoesNotAnswer) : CodedText(reason);
    if (m_isHeld) GoOffline(BootFailed, {ECode::DeviceLost, {m_failure}});
}

void SimulatedOrv::Recover() {
    if (!m_hasFailed) return;
    m_hasFailed = false;
    if (m_isHeld) TryToConnect();
}

void SimulatedOrv::Connect(const OrvDeviceSettings& settings) {
    m_settings = settings;
    if (m_isHeld) return;
    m_isHeld = true;
    TryToConnect();
}

void SimulatedOrv::TryToConnect() {
    if (m_hasFailed) return GoOffline(BootFailed, {ECode::DeviceLost, {m_failure}});
    if (!m_occupant.isEmpty() && !m_settings.force) {
        SetConnection(false, {ECode::DeviceInUse, {m_occupant}});
        return m_bootTimer.Start(RetryTime, [this] { TryToConnect(); });
    }
    m_occupant.clear();
    SetConnection(true, {ECode::DeviceConnectedTo, {m_settings.name, m_settings.address}});
    BootOn(0);
}

void SimulatedOrv::BootOn(int stage) {
    if (stage < StageCount) {
        SetBootState(Stages[stage].state);
        return m_bootTimer.Start(Stages[stage].time, [this, stage] { BootOn(stage + 1); });
    }
    SetBootState(BootReady);
    ReportChannels();
    SetMode(OperationScan);
}

void SimulatedOrv::Disconnect() {
    if (!m_isHeld) return;
    m_isHeld = false;
    GoOffline(BootUnknown, ECode::DeviceLetGo);
}

void SimulatedOrv::ChangeSettings(const OrvDeviceSettings& settings) {
    m_settings = settings;
    ReportChannels();
}

void SimulatedOrv::GoOffline(EBooState state, const CodedText& connectionState) {
    m_bootTimer.Stop();
    m_taskTimer.Stop();
    m_usedChannels.clear();
    SetConnection(false, connectionState);
    SetMode(OperationIdle);
    SetBootState(state);
    ReportChannels();
}

void SimulatedOrv::SetConnection(bool isOnline, const CodedText& state) {
    if (isOnline == m_isOnline && state == m_connectionState) return;
    m_isOnline = isOnline;
    m_connectionState = state;
    if (m_listener != nullptr) m_listener->OnConnectionChanged(isOnline, state);
}

void SimulatedOrv::SetBootState(EBooState state) {
    if (state == m_bootState) return;
    m_bootState = state;
    if (m_listener != nullptr) m_listener->OnBootStateChanged(state);
}

void SimulatedOrv::SetMode(EOperationMode mode) {
    const bool hasChanged = mode != m_mode;
    m_mode = mode;
    m_sweepTimer.Stop();
    if (hasChanged && m_listener != nullptr) m_listener->OnOperationModeChanged(mode);
    if (!IsSweeping(mode)) {
        if (m_listener != nullptr) m_listener->OnSweepTimeChanged(0us);
        return;
    }
    m_sweeps = 0;
    ReportSweep();
}

// A sweep takes as long as it averages, and a little to get around. Sweeps never take exactly the same time;
// how long this one took follows from its number, so that two runs are the same.
void SimulatedOrv::ReportSweep() {
    constexpr Time ScanTime = 40ms;
    constexpr Time MemoryScanTime = 10ms;
    constexpr int Variations = 7;
    const Time time = m_settings.scanAveragingTime + (m_mode == OperationScan ? ScanTime : MemoryScanTime) +
                      m_sweeps % Variations * 1ms;
    ++m_sweeps;
    if (m_listener != nullptr) m_listener->OnSweepTimeChanged(time);
    m_sweepTimer.Start(m_reportInterval, [this] { ReportSweep(); });
}

void SimulatedOrv::ReportChannels() {
    const int used = int(m_usedChannels.size());
    const int free = m_bootState == BootReady ? std::max(0, m_settings.channels - used) : 0;
    if (m_listener != nullptr) m_listener->OnChannelsChanged(free, used);
}

CodedText SimulatedOrv::Obstacle() const {
    if (m_bootState != BootReady) return ECode::DeviceNotReadyYet;
    if (m_taskTimer.IsRunning())
        return {ECode::DeviceBusy, {CodedText::Word(MCSTools::OperationModeAsString(m_mode))}};
    return {};
}

CodedText SimulatedOrv::AllocateChannel(int* channel) {
    CodedText obstacle = Obstacle();
    if (!obstacle.IsEmpty()) return obstacle;
    int number = 0;
    while (m_usedChannels.count(number) != 0)
        ++number;
    if (number >= m_settings.channels)
        return {ECode::NoFreeChannel, {CodedText::Number(static_cast<qint64>(m_usedChannels.size()))}};
    m_usedChannels.insert(number);
    *channel = number;
    ReportChannels();
    return {};
}

void SimulatedOrv::FreeChannel(int channel) {
    if (m_usedChannels.erase(channel) != 0) ReportChannels();
}

CodedText SimulatedOrv::Tune(int channel, double /*hz*/) {
    CodedText obstacle = Obstacle();
    if (!obstacle.IsEmpty()) return obstacle;
    return m_usedChannels.count(channel) != 0 ? CodedText() : CodedText(ECode::NoSuchChannel);
}

CodedText SimulatedOrv::RestartJob() {
    CodedText obstacle = Obstacle();
    if (!obstacle.IsEmpty()) return obstacle;
    SetMode(OperationScan);
    Log(ECode::JobStartsAnew);
    return {};
}

CodedText SimulatedOrv::RunBuiltInTest() {
    return RunFor(BuiltInTestTime, OperationBuiltInTest);
}

CodedText SimulatedOrv::Calibrate() {
    return RunFor(CalibrationTime, OperationCalibration);
}

CodedText SimulatedOrv::RunFor(Time time, EOperationMode mode) {
    CodedText obstacle = Obstacle();
    if (!obstacle.IsEmpty()) return obstacle;
    const EOperationMode before = m_mode;
    m_taskTimer.Start(time, [this, before, mode] {
        SetMode(before);
        Log({ECode::TaskPassed, {CodedText::Word(MCSTools::OperationModeAsString(mode))}});
    });
    SetMode(mode);
    return {};
}

CodedText SimulatedOrv::SetReportInterval(Time interval) {
    CodedText obstacle = Obstacle();
    if (!obstacle.IsEmpty()) return obstacle;
    m_reportInterval = interval;
    if (m_listener != nullptr) m_listener->OnReportIntervalChanged(interval);
    if (IsSweeping(m_mode)) m_sweepTimer.Start(interval, [this] { ReportSweep(); });
    return {};
}

void SimulatedOrv::Log(const CodedText& text) {
    if (m_listener != nullptr) m_listener->OnLog(text);
}
