// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>
#include <apps/pages/whenseen.h>

#include <platform/values/pathbinding.h>

#include <QtCore/QTimer>

class MCSCommandsDisplay;
class MCSLogDisplay;
class MCSStatusDisplay;
class QGroupBox;
class QTableView;
class ReceiverModel;
class VCPushButton;

/// What the server does, at a glance; and its receivers, if its device is made of such.
class StatusPage : public Page {
    Q_OBJECT

  public:
    explicit StatusPage(QWidget* parent = nullptr);
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

  private:
    QGroupBox* BuildReceivers();
    void LookAtReceivers();

    MCSStatusDisplay* m_display;
    QString m_path;
    ReceiverModel* m_receivers;
    QGroupBox* m_receiversBox;
    QTimer m_tick;
    WhenSeen m_look;
};

/// What the server is told to do. Offers only what this server can do.
class CommandsPage : public Page, private PathBinding::IListener {
    Q_OBJECT

  public:
    explicit CommandsPage(QWidget* parent = nullptr);
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    QString FindUsers() const;
    bool MayLetGo();
    void OfferUndo(bool isOn);

    MCSCommandsDisplay* m_display;
    VCPushButton* m_reconnect;
    PathBinding m_reconnectOffer;
    QString m_basePath;
    QString m_commandPath;  ///< whether the device shall be connected
    QString m_users;        ///< of the device, when the user began to switch that
};

/// What happens at the server.
class LogPage : public Page {
    Q_OBJECT

  public:
    explicit LogPage(QWidget* parent = nullptr);
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

  private:
    MCSLogDisplay* m_display;
};
