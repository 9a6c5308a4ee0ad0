// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/recentservers.h>

#include <platform/vtclient/vtclientcenter.h>

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;

/// Asks which server to connect to, and as whom. What the command line says stands at first; a server that is
/// chosen brings what was used with it the last time.
class ConnectDialog : public QDialog {
    Q_OBJECT

  public:
    ConnectDialog(const RecentServers& recent, const VtClientOptions& options, QWidget* parent);

    /// As "--tls" asks for.
    void PreferEncryption();

    // What was entered, once the dialog is accepted.
    const ServerAddress& GetServer() const { return m_server; }
    VtClientOptions GetOptions() const;

  private:
    void Build();
    QLayout* BuildCaRow();
    void FillRecent();
    void ShowRecent(int index);
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
};
