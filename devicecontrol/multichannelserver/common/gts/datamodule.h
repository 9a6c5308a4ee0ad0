// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/gts/moduleidentity.h>
#include <devicecontrol/multichannelserver/common/gts/pollinterval.h>

#include <platform/values/node.h>
#include <platform/values/observable.h>
#include <platform/values/value.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtWidgets/QTreeWidgetItem>

#include <memory>
#include <vector>

class ICfg;
class PollThread;
class QTreeWidget;

/// A module of digital inputs on the network, whose inputs are wired to ground transmitters. Polls it on a
/// thread of its own, keeps the frequency assigned to each input, shows itself as a row of a tree widget, and
/// publishes inputs and assignments in the value tree, below the node "GTS", where Blanking reads them. While
/// the module is not connected it publishes no frequencies, so that nothing of it is blanked. GUI thread.
class MCS_COMMON_EXPORT DataModule : public QObject, public QTreeWidgetItem, public IObserver {
    Q_OBJECT

  public:
    /// The columns of its row.
    enum EColumn { IndexColumn, TypeColumn, AddressColumn, PollIntervalColumn, StatusColumn, ColumnCount };

    /// A module that has no type yet and publishes nothing until it is configured.
    DataModule(QTreeWidget* tree, int index);
    /// A configured module, not connected yet.
    DataModule(QTreeWidget* tree, int index, const QString& type, const QString& address,
               PollInterval pollInterval);
    /// Disconnects, shows that in the value tree, and then removes what it published.
    ~DataModule() override;
    DataModule(const DataModule&) = delete;
    DataModule& operator=(const DataModule&) = delete;

    int GetIndex() const { return m_index; }
    QString GetType() const { return m_type; }  ///< the module's name as well
    QString GetAddress() const { return m_address; }
    ModuleIdentity GetIdentity() const { return {m_type, m_index, m_address}; }
    /// Why its address cannot be right, one line of English; empty if it can.
    QString GetAddressFault() const { return m_addressFault; }
    PollInterval GetPollInterval() const { return m_pollInterval; }
    unsigned short GetNumberOfInputs() const { return m_numberOfInputs; }
    bool IsConnected() const { return m_connected; }
    bool IsInError() const { return m_error; }  ///< until it is connected again

    /// Disconnects, takes the three values over, publishes the module anew and connects.
    void Configure(const QString& type, const QString& address, PollInterval pollInterval);
    /// Another type than before drops all assignments.
    void SetType(const QString& type);

    /// Hz; 0.0 if none is assigned, and beyond the inputs.
    double GetFrequency(int input) const;
    /// What is not finite is no frequency. Ignored beyond the inputs; published by RefreshTree().
    void SetFrequency(int input, double hz);
    /// \a section is the module's own.
    void LoadAssignments(ICfg& section);
    void SaveAssignments(ICfg& section) const;

    void Connect();
    /// Waits for the poll thread, which ends a request under way.
    void Disconnect();
    /// Publishes what holds now.
    void RefreshTree();

    void Update(Observable* source, TChangeCode code) override;

  Q_SIGNALS:
    void SignalError(QString name, QString address, int errorcode, QString errortext);
    /// Once after errors: a module in error answers. It stays in error until it is connected anew.
    void SignalAnswersAgain();

  public Q_SLOTS:
    void SlotOnConnectionEstablished();
    void SlotOnConnectionClosed();
    void SlotOnConnectionError(int errorcode, const QString& errortext);
    void SlotOnInputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes);

  private:
    using Number = values::ValueNumeric<int>;
    using Assignments = values::ValueList<double>;

    void Apply(const QString& type, const QString& address, PollInterval pollInterval);
    void ProvideTreeItems();
    void ProvideValues(values::Node& node);
    template <class V>
    V* ProvideChild(values::Node& node, const QString& name);
    void RemoveTreeItems();
    void ForgetTreeItems();
    void WriteInputDiscretes(unsigned long bits);
    void WriteAssignments(const std::vector<double>& frequencies);
    const char* NameOfItem(const Observable* item) const;
    void ForgetIfGoingAway(Observable* source);
    void SetStatus(const QString& status);
    static void TraceWarning(const QString& message, int line);

    const int m_index;
    QString m_type;
    QString m_address;
    QString m_addressFault;
    PollInterval m_pollInterval{};
    unsigned short m_numberOfInputs;
    unsigned long m_inputDiscretes = 0;  ///< read last over this connection
    std::vector<double> m_frequencies;   ///< Hz, by input
    bool m_connected = false;
    bool m_error = false;
    bool m_reconnectWanted = false;  ///< fixed: stays-closed. Nobody sets it.
    std::unique_ptr<PollThread> m_pollThread;

    // The tree's; null while there is none.
    values::Node* m_pModuleNode = nullptr;
    Number* m_pInputDiscretes = nullptr;
    Number* m_pIndex = nullptr;
    Assignments* m_pAssignments = nullptr;
};
