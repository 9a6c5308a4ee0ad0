// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>
#include <apps/pages/severity.h>
#include <apps/pages/whenseen.h>

#include <QtCore/QTimer>

#include <optional>

class IgnoringModel;
class InputStatusModel;
class KeyingTimeline;
class ModuleStatusModel;
class QLabel;
class QSortFilterProxyModel;
class QTabWidget;
class SuppressionFollower;
class VCPushButton;

/// What the ground transmitter suppression of a server does, for whoever looks on: its modules, its inputs,
/// what these did, and who ignores it. Changes nothing but that lost modules are connected anew. GUI thread.
class SuppressionView : public Page {
    Q_OBJECT

  public:
    explicit SuppressionView(QWidget* parent = nullptr);
    ~SuppressionView() override;

    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

  private:
    QWidget* BuildHead();
    QWidget* BuildInputs();
    void Show();
    void ShowSummary();
    void ShowLanes();
    void Follow();
    void Tick();
    QString IgnoringTitle() const;

    QString m_staticPath;
    QString m_dynamicPath;
    QString m_reconnectPath;
    SuppressionFollower* m_follower;
    ModuleStatusModel* m_modules;
    InputStatusModel* m_inputs;
    QSortFilterProxyModel* m_shownInputs;
    IgnoringModel* m_ignoring;
    QLabel* m_icon = nullptr;
    std::optional<ESeverity> m_iconSeverity;  ///< of the icon that is shown; none before the first
    QLabel* m_summary = nullptr;
    VCPushButton* m_reconnect = nullptr;
    QTabWidget* m_tabs;
    KeyingTimeline* m_timeline;
    QTimer m_tick;
    WhenSeen m_shown;
    WhenSeen m_ticked;  ///< what is looked at once a second
};
