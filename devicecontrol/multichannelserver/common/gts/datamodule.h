// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/gts/pollinterval.h>

#include <platform/values/observable.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtWidgets/QTreeWidgetItem>

#include <memory>

class ICfg;
class PlantModule;
class QTreeWidget;

/// A module of digital inputs on the network, whose inputs are wired to ground transmitters, as a row of a
/// tree widget. Owns the module of the plant that polls it on a thread of its own, keeps the frequency
/// assigned to each input, and publishes inputs and assignments in the value tree, below the node "GTS",
/// where Blanking reads them. While the module is not connected it publishes no frequencies, so that nothing
/// of it is blanked. GUI thread.
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

    int GetIndex()
        const;  ///< its place in the configuration, from 0; no other module of type and list has it
    QString GetType() const;                   ///< the module's name as well
    QString GetAddress() const;                ///< IP address, as entered
    PollInterval GetPollInterval() const;      ///< in milliseconds
    unsigned short GetNumberOfInputs() const;  ///< by its type; 0 without one
    bool IsConnected() const;                  ///< its poll thread has had an answer, and no error since
    bool IsInError() const;                    ///< until it is connected again

    /// Disconnects, takes the three values over, publishes the module anew and connects. Where another module
    /// of the same list has both type and index, the index becomes the lowest that is free.
    void Configure(const QString& type, const QString& address, PollInterval pollInterval);
    /// Another type than before drops all assignments.
    void SetType(const QString& type);

    /// Hz; 0.0 if none is assigned, and beyond the inputs.
    double GetFrequency(int input) const;
    /// What is not finite is no frequency. Ignored beyond the inputs; published by RefreshTree().
    void SetFrequency(int input, double hz);
    /// \a section is the module's own.
    void LoadAssignments(ICfg& section);
    void SaveAssignments(ICfg& section) const;  ///< The same, and does not commit.

    void Connect();  ///< Starts its poll thread, whose outcome the slots are told.
    /// Waits for the poll thread, which ends a request under way.
    void Disconnect();
    /// Publishes what holds now.
    void RefreshTree();

    /// Is told of what others do with what it publishes, which nobody may.
    void Update(Observable* source, TChangeCode code) override;

    /// What it is the row of. Lives as long as this.
    PlantModule& GetPlantModule() { return *m_plantModule; }

  Q_SIGNALS:
    /// The connection failed: \a errorcode as in ModbusErrorText(), \a errortext for people.
    void SignalError(QString name, QString address, int errorcode, QString errortext);

  public Q_SLOTS:
    void SlotOnConnectionEstablished();  ///< The poll thread has had a first answer.
    void SlotOnConnectionClosed();       ///< The poll thread has ended the connection.
    /// The poll thread has failed so: the module is in error until it is connected again.
    void SlotOnConnectionError(int errorcode, const QString& errortext);
    /// Bit i of \a iInputDiscretes is input i, for the first \a iNumInputsRead.
    void SlotOnInputDiscretesChanged(unsigned short iNumInputsRead, unsigned long iInputDiscretes);

  private:
    void ShowRow();
    QString StatusText() const;

    std::unique_ptr<PlantModule> m_plantModule;
};
