// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>

#include <QtCore/QTimer>

#include <memory>

class IgnoringModel;
class InputStatusModel;
class KeyingTimeline;
class ModuleStatusModel;
class QLabel;
class QSortFilterProxyModel;
class QTableView;
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

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QTableView* NewTable(const char* name, const QString& spoken);
    QWidget* BuildHead();
    QWidget* BuildInputs();
    void Show();
    void ShowSummary();
    void ShowLanes();
    void Tick();

    QString m_basePath;
    QString m_reconnectPath;
    SuppressionFollower* m_follower;
    ModuleStatusModel* m_modules;
    InputStatusModel* m_inputs;
    QSortFilterProxyModel* m_shownInputs;
    IgnoringModel* m_ignoring;
    QLabel* m_icon = nullptr;
    QLabel* m_summary = nullptr;
    VCPushButton* m_reconnect = nullptr;
    QTabWidget* m_tabs;
    KeyingTimeline* m_timeline;
    QTimer m_tick;
};
