// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/gts/pollthread.h>

#include <platform/app/errorhandler.h>
#include <platform/config/icfg.h>
#include <platform/modbus/modbusaddress.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <QtWidgets/QTreeWidget>

#include <algorithm>
#include <cmath>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/gts/datamodule";

/// fixed: inputs-by-type
unsigned short NumberOfInputs(const QString& type) {
    return type == QLatin1String("ADAM-6051") ? 12 : 6;
}

}  // namespace

DataModule::DataModule(QTreeWidget* tree, int index)
    : QTreeWidgetItem(tree),
      m_index(index),
      m_numberOfInputs(NumberOfInputs(QString())),
      m_frequencies(m_numberOfInputs, 0.0),
      m_pollThread(std::make_unique<PollThread>()) {
    setText(IndexColumn, QString::number(qint64{index} + 1));
    SetStatus(tr("Disconnected"));
    connect(m_pollThread.get(), &PollThread::InterfaceOpen, this, &DataModule::SlotOnConnectionEstablished);
    connect(m_pollThread.get(), &PollThread::InterfaceClose, this, &DataModule::SlotOnConnectionClosed);
    connect(m_pollThread.get(), &PollThread::InterfaceError, this, &DataModule::SlotOnConnectionError);
    connect(m_pollThread.get(), &PollThread::InterfaceAnswersAgain, this, &DataModule::SignalAnswersAgain);
    connect(m_pollThread.get(), &PollThread::InputDiscretesChanged, this,
            &DataModule::SlotOnInputDiscretesChanged);
}

DataModule::DataModule(QTreeWidget* tree, int index, const QString& type, const QString& address,
                       PollInterval pollInterval)
    : DataModule(tree, index) {
    Apply(type, address, pollInterval);
}

DataModule::~DataModule() {
    Disconnect();
    RemoveTreeItems();
}

void DataModule::Configure(const QString& type, const QString& address, PollInterval pollInterval) {
    Disconnect();
    Apply(type, address, pollInterval);
    Connect();
}

void DataModule::Apply(const QString& type, const QString& address, PollInterval pollInterval) {
    SetType(type);
    m_address = address;
    m_addressFault = ModbusAddress::FaultOf(PollThread::InterfaceAddress(address));
    setText(AddressColumn, address);
    m_pollInterval = pollInterval;
    setText(PollIntervalColumn, QString::number(pollInterval.count()));
    m_pollThread->Setup(m_address, m_numberOfInputs, m_pollInterval);
    ProvideTreeItems();
}

void DataModule::SetType(const QString& type) {
    if (type == m_type) return;
    m_type = type;
    setText(TypeColumn, type);
    m_numberOfInputs = NumberOfInputs(type);
    m_frequencies.assign(m_numberOfInputs, 0.0);  // fixed: type-drops-assignments
}

double DataModule::GetFrequency(int input) const {
    const bool isInside = input >= 0 && static_cast<std::size_t>(input) < m_frequencies.size();
    return isInside ? m_frequencies[static_cast<std::size_t>(input)] : 0.0;
}

void DataModule::SetFrequency(int input, double hz) {
    const bool isInside = input >= 0 && static_cast<std::size_t>(input) < m_frequencies.size();
    if (isInside) m_frequencies[static_cast<std::size_t>(input)] = std::isfinite(hz) ? hz : 0.0;
}

void DataModule::LoadAssignments(ICfg& section) {
    std::fill(m_frequencies.begin(), m_frequencies.end(), 0.0);
    if (const std::unique_ptr<ICfg> assignments{section.OpenSection(gtskeys::Assignments)}) {
        const int count = std::min(assignments->ReadInt(gtskeys::AssignmentCount, 0),
                                   static_cast<int>(m_frequencies.size()));
        for (int i = 0; i < count; ++i) {
            bool isNumber = false;
            const QString key = QString(gtskeys::Input).arg(i);
            const double hz = assignments->ReadString(key, QStringLiteral("0")).toDouble(&isNumber);
            if (isNumber && hz > 0.0) SetFrequency(i, hz);
        }
    }
    RefreshTree();
}

void DataModule::SaveAssignments(ICfg& section) const {
    const std::unique_ptr<ICfg> assignments(section.ProvideSection(gtskeys::Assignments));
    if (!assignments) return;
    const int count = static_cast<int>(m_frequencies.size());
    assignments->WriteInt(gtskeys::AssignmentCount, count);
    for (int i = 0; i < count; ++i)
        assignments->WriteString(QString(gtskeys::Input).arg(i), QString::number(GetFrequency(i), 'f', 0));
}

void DataModule::Connect() {
    m_reconnectWanted = false;
    if (m_connected || !m_pollThread || m_pollThread->isRunning()) return;
    const unsigned error = m_pollThread->Start();
    // Later, as all errors: whoever connects a new module may not listen to it yet.
    const auto report = [this, error] {
        SlotOnConnectionError(static_cast<int>(error), ModbusErrorText(error));
    };
    if (error != 0) QMetaObject::invokeMethod(this, report, Qt::QueuedConnection);
}

void DataModule::Disconnect() {
    if (m_pollThread->isRunning()) {
        m_pollThread->quit();
        if (m_pollThread->isRunning())
            TraceWarning(QStringLiteral("DataModule::Disconnect(): Waiting for thread termination."), 200);
        m_pollThread->WaitForEnd();
    }
    m_connected = false;
    m_inputDiscretes = 0;
    if (!m_error) SetStatus(tr("Disconnected"));
    RefreshTree();
}

void DataModule::SlotOnConnectionEstablished() {
    m_connected = true;
    m_error = false;
    SetStatus(tr("Connected"));
    RefreshTree();
}

void DataModule::SlotOnConnectionClosed() {
    m_inputDiscretes = 0;  // what was read over this connection is no reading of the next
    if (!m_error) {
        m_connected = false;
        SetStatus(tr("Disconnected"));
        if (m_reconnectWanted) Connect();
    }
    RefreshTree();
}

void DataModule::SlotOnConnectionError(int errorcode, const QString& errortext) {
    const bool isNew = m_connected || !m_error;  // every poll fails then, and nothing else has changed
    m_connected = false;
    m_error = true;
    m_inputDiscretes = 0;
    SetStatus(tr("Error"));
    if (isNew) RefreshTree();
    Q_EMIT SignalError(m_type, m_address, errorcode, errortext);
}

void DataModule::SlotOnInputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceDetails))
        _Q_Trace(QStringLiteral("DataModule::SlotOnInputDiscretesChanged: %1").arg(iInputDiscretes),
                 SourcePath, 211);
    WriteInputDiscretes(iInputDiscretes);
    m_numberOfInputs = iNumInputsRead;
    m_inputDiscretes = iInputDiscretes;
}

void DataModule::SetStatus(const QString& status) {
    setText(StatusColumn, status);
}

void DataModule::TraceWarning(const QString& message, int line) {
    if (ErrorHandler::Instance().IsTraced(ErrorHandler::TraceWarnings)) _Q_Trace(message, SourcePath, line);
}
