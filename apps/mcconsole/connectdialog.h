// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/recentservers.h>

#include <platform/vtclient/vtclientcenter.h>

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

/// Asks which server to connect to, and as whom.
class ConnectDialog : public QDialog {
    Q_OBJECT

  public:
    ConnectDialog(const RecentServers& recent, const VtClientOptions& options, QWidget* parent);

    // What was entered, once the dialog is accepted.
    const ServerAddress& GetServer() const { return m_server; }
    VtClientOptions GetOptions() const;

  private:
    void Build();
    void FillRecent();
    void ShowRecent(int index);
    void ChooseCaFile();
    void TryToAccept();

    RecentServers m_recent;
    VtClientOptions m_options;
    ServerAddress m_server;
    QComboBox* m_address;
    QCheckBox* m_encrypted;
    QLineEdit* m_caFile;
    QLineEdit* m_user;
    QLineEdit* m_token;
    QLabel* m_problem;
};
