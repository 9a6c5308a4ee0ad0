// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/recentservers.h>
#include <apps/mcconsole/stations/stationfinder.h>

#include <platform/vtclient/vtclientcenter.h>

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class StationsPanel;

/// Asks which server to connect to, and as whom, and lists those at NATS. What the command line says stands
/// at first; a server that is chosen brings what was used with it the last time.
class ConnectDialog : public QDialog {
    Q_OBJECT

  public:
    /// \a makeBus: how NATS is reached; none: this build knows no NATS.
    ConnectDialog(const RecentServers& recent, const VtClientOptions& options, QWidget* parent,
                  const StationFinder::MakeBus& makeBus = BusOfThisBuild());

    /// As "--tls" asks for.
    void PreferEncryption();

    // What was entered, once the dialog is accepted.
    const ServerAddress& GetServer() const { return m_server; }
    VtClientOptions GetOptions() const;

    /// As given, with where NATS was reached meanwhile, in any case.
    const RecentServers& GetRecent() const { return m_recent; }

  private:
    static StationFinder::MakeBus BusOfThisBuild();
    void Build();
    void BuildStations(const StationFinder::MakeBus& makeBus);
    QLayout* BuildCaRow();
    void FillRecent();
    QStringList KnownPlaces() const;
    void ShowRecent(int index);
    void ShowStation(const ServerAddress& address);
    void OnAddressEdited(const QString& text);
    void ShowEncryption();
    void ChooseCaFile();
    void TryToAccept();
    static QString WhyNoServer(const QString& text);
    QString FindProblem(const ServerAddress& server) const;

    RecentServers m_recent;
    VtClientOptions m_options;
    ServerAddress m_server;
    QComboBox* m_address;
    QCheckBox* m_encrypted;
    QLineEdit* m_caFile;
    QPushButton* m_browse;
    QLineEdit* m_user;
    QLineEdit* m_token;
    QLabel* m_problem;
    StationsPanel* m_stations = nullptr;  ///< null: this build knows no NATS
};
