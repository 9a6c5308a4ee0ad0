// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>

#include <devicecontrol/multichannelserver/common/gts/plant/plantmodule.h>

#include <QtWidgets/QTreeWidget>

DataModule::DataModule(QTreeWidget* tree, int index)
    : QTreeWidgetItem(tree), m_plantModule(std::make_unique<PlantModule>(index)) {
    connect(m_plantModule.get(), &PlantModule::SignalChanged, this, &DataModule::ShowRow);
    connect(m_plantModule.get(), &PlantModule::SignalError, this, &DataModule::SignalError);
    ShowRow();
}

DataModule::DataModule(QTreeWidget* tree, int index, const QString& type, const QString& address,
                       PollInterval pollInterval)
    : DataModule(tree, index) {
    m_plantModule->Apply(type, address, pollInterval);
}

DataModule::~DataModule() {
    m_plantModule->disconnect(this);  // there is nobody left to look at the row
}

int DataModule::GetIndex() const {
    return m_plantModule->GetIdentity().index;
}

QString DataModule::GetType() const {
    return m_plantModule->GetIdentity().type;
}

QString DataModule::GetAddress() const {
    return m_plantModule->GetIdentity().address;
}

PollInterval DataModule::GetPollInterval() const {
    return m_plantModule->GetPollInterval();
}

unsigned short DataModule::GetNumberOfInputs() const {
    return m_plantModule->GetNumberOfInputs();
}

bool DataModule::IsConnected() const {
    return m_plantModule->GetState() == PlantModule::EState::Connected;
}

bool DataModule::IsInError() const {
    return m_plantModule->GetState() == PlantModule::EState::Error;
}

void DataModule::Configure(const QString& type, const QString& address, PollInterval pollInterval) {
    m_plantModule->Configure(type, address, pollInterval);
}

void DataModule::SetType(const QString& type) {
    m_plantModule->SetType(type);
}

double DataModule::GetFrequency(int input) const {
    return m_plantModule->GetFrequency(input);
}

void DataModule::SetFrequency(int input, double hz) {
    m_plantModule->SetFrequency(input, hz);
}

void DataModule::LoadAssignments(ICfg& section) {
    m_plantModule->LoadAssignments(section);
}

void DataModule::SaveAssignments(ICfg& section) const {
    m_plantModule->SaveAssignments(section);
}

void DataModule::Connect() {
    m_plantModule->Connect();
}

void DataModule::Disconnect() {
    m_plantModule->Disconnect();
}

void DataModule::RefreshTree() {
    m_plantModule->RefreshTree();
}

void DataModule::Update(Observable* source, TChangeCode code) {
    m_plantModule->Update(source, code);
}

void DataModule::SlotOnConnectionEstablished() {
    m_plantModule->SlotOnConnectionEstablished();
}

void DataModule::SlotOnConnectionClosed() {
    m_plantModule->SlotOnConnectionClosed();
}

void DataModule::SlotOnConnectionError(int errorcode, const QString& errortext) {
    m_plantModule->SlotOnConnectionError(errorcode, errortext);
}

void DataModule::SlotOnInputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes) {
    m_plantModule->SlotOnInputDiscretesChanged(iNumInputsRead, iInputDiscretes);
}

void DataModule::ShowRow() {
    const ModuleIdentity& identity = m_plantModule->GetIdentity();
    setText(IndexColumn, QString::number(qint64{identity.index} + 1));
    setText(TypeColumn, identity.type);
    setText(AddressColumn, identity.address);
    // There is none yet where nothing has been set.
    setText(PollIntervalColumn,
            identity.type.isEmpty() ? QString() : QString::number(GetPollInterval().count()));
    setText(StatusColumn, StatusText());
}

QString DataModule::StatusText() const {
    switch (m_plantModule->GetState()) {
        case PlantModule::EState::Connected:
            return tr("Connected");
        case PlantModule::EState::Disconnected:
            return tr("Disconnected");
        case PlantModule::EState::Error:
            break;
    }
    return tr("Error");
}
