// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/moduleidentity.h>
#include <devicecontrol/multichannelserver/common/gts/modulestate.h>
#include <devicecontrol/multichannelserver/common/gts/moduleview.h>
#include <devicecontrol/multichannelserver/common/gts/plant/publishedmodule.h>
#include <devicecontrol/multichannelserver/common/gts/pollinterval.h>

#include <platform/values/observable.h>

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <cstddef>
#include <memory>
#include <vector>

class ICfg;
class PollThread;
class SuppressionPlant;

/// A module of digital inputs on the network, whose inputs are wired to ground transmitters: the works of a
/// DataModule, without its row. Polls the module on a thread of its own, keeps the frequency assigned to each
/// input, and publishes inputs and assignments in the value tree. While the module is not connected it
/// publishes no frequencies, so that nothing of it is blanked. Main thread.
class PlantModule : public QObject, public IObserver {
    Q_OBJECT

  public:
    using EState = EModuleState;

    /// A module that has no type yet and publishes nothing until it is configured.
    explicit PlantModule(int index);
    /// Disconnects, shows that in the value tree, and then removes what it published. Leaves its plant.
    ~PlantModule() override;

    const ModuleIdentity& GetIdentity() const { return m_identity; }
    /// Why its address cannot be right, one line of English; empty if it can.
    QString GetAddressFault() const { return m_addressFault; }
    PollInterval GetPollInterval() const { return m_pollInterval; }
    unsigned short GetNumberOfInputs() const { return m_numberOfInputs; }
    EState GetState() const;
    /// What people set of it, in whichever way.
    ModuleSettings GetSettings() const;
    /// Whether it was in error already when it failed last.
    bool HasFailedAgain() const { return m_hasFailedAgain; }
    ModuleState GetModuleState() const;
    ModuleView GetView() const;
    /// The inputs that a module of this type has.
    static unsigned short GetNumberOfInputsOf(const QString& type);

    /// Of whose list it is one; null for none. Its plant sees to it that no two modules publish the same
    /// node.
    void SetPlant(SuppressionPlant* plant) { m_plant = plant; }
    /// Its own in its plant.
    void SetNumber(int number) { m_number = number; }
    /// Takes the three values over and publishes the module anew. It must not be connected.
    void Apply(const QString& type, const QString& address, PollInterval pollInterval);
    /// Disconnects, applies the three values and connects.
    void Configure(const QString& type, const QString& address, PollInterval pollInterval);
    /// Another type than before drops all assignments.
    void SetType(const QString& type);

    /// Hz; 0.0 if none is assigned, and beyond the inputs.
    double GetFrequency(int input) const;
    /// What is not finite is no frequency. Ignored beyond the inputs; published by RefreshTree().
    void SetFrequency(int input, double hz);
    /// What people call the module.
    void SetName(const QString& label);
    /// Ignored beyond the inputs.
    void SetLabel(int input, const QString& label);
    /// One for each input, as far as they go, and none beyond.
    void SetLabels(const std::vector<QString>& labels);
    /// One for each input, as far as \a frequencies go, and 0.0 beyond; publishes them.
    void SetFrequencies(const std::vector<double>& frequencies);
    /// \a section is the module's own.
    void LoadAssignments(ICfg& section);
    /// What LoadAssignments would set of a module with so many inputs.
    static std::vector<double> ReadAssignments(ICfg& section, std::size_t inputs);
    void SaveAssignments(ICfg& section) const;

    void Connect();
    /// Waits for the poll thread, which ends a request under way.
    void Disconnect();
    /// One in error still has a thread, which tells of nothing but errors.
    void ConnectAnew();
    /// Publishes what holds now.
    void RefreshTree();

    void Update(Observable* source, TChangeCode code) override;

  Q_SIGNALS:
    /// Something of what is shown of it may have changed: identity, poll interval, state.
    void SignalChanged();
    /// Its settings may have changed.
    void SignalSettingsChanged();
    /// Other inputs were read.
    void SignalInputsChanged();
    void SignalError(QString name, QString address, int errorcode, QString errortext);
    /// Once after errors: a module in error answers. It stays in error until it is connected anew.
    void SignalAnswersAgain();

  public Q_SLOTS:
    void SlotOnConnectionEstablished();
    void SlotOnConnectionClosed();
    void SlotOnConnectionError(int errorcode, const QString& errortext);
    void SlotOnAnswersAgain();
    void SlotOnInputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes);

  private:
    PublishedModule::Content GetContent() const;
    /// Notes why it is in the state that it is in, and since when, and tells of it.
    void TellState(const QString& reason);

    SuppressionPlant* m_plant = nullptr;
    ModuleIdentity m_identity;
    QString m_addressFault;
    PollInterval m_pollInterval{};
    unsigned short m_numberOfInputs;
    unsigned long m_inputDiscretes = 0;  ///< read last over this connection
    std::vector<double> m_frequencies;   ///< Hz, by input
    std::vector<QString> m_labels;       ///< by input
    bool m_connected = false;
    bool m_error = false;
    bool m_hasFailedAgain = false;
    bool m_isSwitchedOff = false;
    int m_number = 0;
    int m_errorCode = 0;  ///< the last one
    QString m_failure;    ///< why it is in error, if it is
    QString m_reason;
    QDateTime m_answersAgainSince;  ///< null unless it does so in error
    EState m_toldState = EState::Disconnected;
    QDateTime m_stateSince = QDateTime::currentDateTimeUtc();
    bool m_reconnectWanted = false;  ///< fixed: stays-closed. Nobody sets it.
    std::unique_ptr<PollThread> m_pollThread;
    PublishedModule m_published;
};
