// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/plant/moduletrace.h>
#include <devicecontrol/multichannelserver/common/gts/pollthread.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/icfg.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Why a module is not connected, where no error says so.
QString NotAsked() {
    return QStringLiteral("disconnected by an operator");
}
QString NoAnswerYet() {
    return QStringLiteral("no answer yet");
}
QString Closed() {
    return QStringLiteral("the connection was closed");
}
QString AnswersAgain() {
    return QStringLiteral("answers again, reconnect it");
}

}  // namespace

// fixed: inputs-by-type
unsigned short PlantModule::GetNumberOfInputsOf(const QString& type) {
    return type == QLatin1String("ADAM-6051") ? 12 : 6;
}

PlantModule::PlantModule(int index)
    : m_identity{QString(), index, QString()},
      m_numberOfInputs(GetNumberOfInputsOf(QString())),
      m_frequencies(m_numberOfInputs, 0.0),
      m_labels(m_numberOfInputs),
      m_pollThread(std::make_unique<PollThread>()),
      m_published(*this) {
    const PollThread* const thread = m_pollThread.get();
    connect(thread, &PollThread::InterfaceOpen, this, &PlantModule::SlotOnConnectionEstablished);
    connect(thread, &PollThread::InterfaceClose, this, &PlantModule::SlotOnConnectionClosed);
    connect(thread, &PollThread::InterfaceError, this, &PlantModule::SlotOnConnectionError);
    connect(thread, &PollThread::InterfaceAnswersAgain, this, &PlantModule::SlotOnAnswersAgain);
    connect(thread, &PollThread::InputDiscretesChanged, this, &PlantModule::SlotOnInputDiscretesChanged);
}

PlantModule::~PlantModule() {
    Disconnect();
    m_published.Remove();
    if (m_plant != nullptr) m_plant->Remove(*this);
}

PlantModule::EState PlantModule::GetState() const {
    if (m_error) return EState::Error;
    return m_connected ? EState::Connected : EState::Disconnected;
}

void PlantModule::Configure(const QString& type, const QString& address, PollInterval pollInterval) {
    Disconnect();
    Apply(type, address, pollInterval);
    Connect();
}

void PlantModule::Apply(const QString& type, const QString& address, PollInterval pollInterval) {
    SetType(type);
    m_identity.address = address;
    m_addressFault = ModbusTcpInterfaceCreator::FaultOf(PollThread::InterfaceAddress(address));
    m_pollInterval = pollInterval;
    m_pollThread->Setup(address, m_numberOfInputs, m_pollInterval);
    if (m_plant != nullptr) m_identity.index = m_plant->IndexFor(*this);
    m_published.Provide(m_identity.NodeName(), m_identity.type, GetContent());
    Q_EMIT SignalChanged();
    Q_EMIT SignalSettingsChanged();
}

void PlantModule::SetType(const QString& type) {
    if (type == m_identity.type) return;
    m_identity.type = type;
    m_numberOfInputs = GetNumberOfInputsOf(type);
    m_frequencies.assign(m_numberOfInputs, 0.0);  // fixed: type-drops-assignments
    m_labels.assign(m_numberOfInputs, QString());
    Q_EMIT SignalChanged();
    Q_EMIT SignalSettingsChanged();
}

double PlantModule::GetFrequency(int input) const {
    const bool isInside = input >= 0 && static_cast<std::size_t>(input) < m_frequencies.size();
    return isInside ? m_frequencies[static_cast<std::size_t>(input)] : 0.0;
}

void PlantModule::SetFrequency(int input, double hz) {
    const bool isInside = input >= 0 && static_cast<std::size_t>(input) < m_frequencies.size();
    if (!isInside) return;
    double& frequency = m_frequencies[static_cast<std::size_t>(input)];
    const double before = std::exchange(frequency, std::isfinite(hz) ? hz : 0.0);
    if (frequency != before) Q_EMIT SignalSettingsChanged();
}

void PlantModule::SetName(const QString& label) {
    if (m_identity.label == label) return;
    m_identity.label = label;
    Q_EMIT SignalSettingsChanged();
}

void PlantModule::SetLabel(int input, const QString& label) {
    const bool isInside = input >= 0 && static_cast<std::size_t>(input) < m_labels.size();
    if (!isInside || m_labels[static_cast<std::size_t>(input)] == label) return;
    m_labels[static_cast<std::size_t>(input)] = label;
    Q_EMIT SignalSettingsChanged();
}

void PlantModule::SetLabels(const std::vector<QString>& labels) {
    for (std::size_t i = 0; i < m_labels.size(); ++i)
        SetLabel(static_cast<int>(i), i < labels.size() ? labels[i] : QString());
}

void PlantModule::SetFrequencies(const std::vector<double>& frequencies) {
    const int count = static_cast<int>(std::min(frequencies.size(), m_frequencies.size()));
    std::fill(m_frequencies.begin(), m_frequencies.end(), 0.0);
    for (int i = 0; i < count; ++i)
        SetFrequency(i, frequencies[static_cast<std::size_t>(i)]);
    RefreshTree();
    Q_EMIT SignalSettingsChanged();
}

void PlantModule::LoadAssignments(ICfg& section) {
    SetFrequencies(ReadAssignments(section, m_frequencies.size()));
}

std::vector<double> PlantModule::ReadAssignments(ICfg& section, std::size_t inputs) {
    std::vector<double> frequencies(inputs, 0.0);
    const std::unique_ptr<ICfg> assignments{section.OpenSection(gtskeys::Assignments)};
    if (!assignments) return frequencies;
    const int count = std::min(assignments->ReadInt(gtskeys::AssignmentCount, 0), static_cast<int>(inputs));
    for (int i = 0; i < count; ++i) {
        bool isNumber = false;
        const QString key = QString(gtskeys::Input).arg(i);
        const double hz = assignments->ReadString(key, QStringLiteral("0")).toDouble(&isNumber);
        if (isNumber && hz > 0.0) frequencies[static_cast<std::size_t>(i)] = hz;
    }
    return frequencies;
}

ModuleSettings PlantModule::GetSettings() const {
    return {m_identity.index, m_identity.type, m_identity.address, m_pollInterval,
            m_frequencies,    m_labels,        m_identity.label};
}

ModuleState PlantModule::GetModuleState() const {
    return {GetSettings(), GetState(), static_cast<quint32>(m_inputDiscretes)};
}

ModuleView PlantModule::GetView() const {
    return {m_number,
            m_identity,
            m_pollInterval,
            GetState(),
            m_reason,
            m_stateSince,
            m_pollThread->GetLastAnswer(),
            m_answersAgainSince,
            m_isSwitchedOff && GetState() == EState::Disconnected,
            static_cast<quint32>(m_inputDiscretes),
            m_frequencies,
            m_labels};
}

void PlantModule::TellState(const QString& reason) {
    m_reason = reason;
    if (m_toldState != GetState()) m_stateSince = QDateTime::currentDateTimeUtc();
    m_toldState = GetState();
    Q_EMIT SignalChanged();
}

void PlantModule::SaveAssignments(ICfg& section) const {
    const std::unique_ptr<ICfg> assignments(section.ProvideSection(gtskeys::Assignments));
    if (!assignments) return;
    const int count = static_cast<int>(m_frequencies.size());
    assignments->WriteInt(gtskeys::AssignmentCount, count);
    for (int i = 0; i < count; ++i)
        assignments->WriteString(QString(gtskeys::Input).arg(i), QString::number(GetFrequency(i), 'f', 0));
}

void PlantModule::Connect() {
    m_reconnectWanted = false;
    m_isSwitchedOff = false;
    if (m_connected || m_pollThread->isRunning()) return;
    if (!m_error) TellState(NoAnswerYet());
    const unsigned error = m_pollThread->Start();
    // Later, as all errors: whoever connects a new module may not listen to it yet.
    const auto report = [this, error] {
        SlotOnConnectionError(static_cast<int>(error), ModbusErrorText(error));
    };
    if (error != 0) QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
}

void PlantModule::Disconnect() {
    if (m_pollThread->isRunning()) {
        m_pollThread->quit();
        if (m_pollThread->isRunning())
            moduletrace::Warn(QStringLiteral("DataModule::Disconnect(): Waiting for thread termination."),
                              200);
        m_pollThread->WaitForEnd();
    }
    m_connected = false;
    m_inputDiscretes = 0;
    m_isSwitchedOff = true;
    m_answersAgainSince = QDateTime();
    TellState(m_error ? m_failure : NotAsked());
    RefreshTree();
}

void PlantModule::ConnectAnew() {
    Disconnect();
    Connect();
}

void PlantModule::RefreshTree() {
    m_published.Refresh(GetContent());
}

PublishedModule::Content PlantModule::GetContent() const {
    return {m_identity.index, m_connected, m_inputDiscretes, m_numberOfInputs, m_frequencies};
}

void PlantModule::Update(Observable* source, TChangeCode code) {
    m_published.OnUpdate(source, code);
}

void PlantModule::SlotOnConnectionEstablished() {
    m_connected = true;
    m_error = false;
    m_answersAgainSince = QDateTime();
    TellState(QString());
    RefreshTree();
}

void PlantModule::SlotOnConnectionClosed() {
    m_inputDiscretes = 0;  // what was read over this connection is no reading of the next
    if (!m_error) {
        m_connected = false;
        TellState(Closed());
        if (m_reconnectWanted) Connect();
    }
    RefreshTree();
}

void PlantModule::SlotOnConnectionError(int errorcode, const QString& errortext) {
    const bool isNew = m_connected || !m_error;  // every poll fails then, and nothing else has changed
    const bool isOther = isNew || m_errorCode != errorcode || m_answersAgainSince.isValid();
    m_hasFailedAgain = !isNew;
    m_connected = false;
    m_error = true;
    m_inputDiscretes = 0;
    m_errorCode = errorcode;
    m_answersAgainSince = QDateTime();
    if (isOther) {
        const QString fault = m_addressFault.isEmpty() ? QString() : QStringLiteral(": ") + m_addressFault;
        m_failure = QStringLiteral("%1 (%2)%3").arg(errortext, QString::number(errorcode), fault);
        TellState(m_failure);
    }
    if (isNew) RefreshTree();
    Q_EMIT SignalError(m_identity.type, m_identity.address, errorcode, errortext);
}

/// What it failed with is true no more, although it stays in error.
void PlantModule::SlotOnAnswersAgain() {
    if (m_error) {
        m_answersAgainSince = QDateTime::currentDateTimeUtc();
        TellState(AnswersAgain());
    }
    Q_EMIT SignalAnswersAgain();
}

void PlantModule::SlotOnInputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceDetails))
        _Q_Trace(QStringLiteral("DataModule::SlotOnInputDiscretesChanged: %1").arg(iInputDiscretes),
                 moduletrace::SourcePath, 211);
    m_published.WriteInputDiscretes(iInputDiscretes);
    m_numberOfInputs = iNumInputsRead;
    m_inputDiscretes = iInputDiscretes;
    Q_EMIT SignalInputsChanged();
}
