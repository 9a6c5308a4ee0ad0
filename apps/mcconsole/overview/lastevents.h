// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/eventlook.h>
#include <apps/pages/whenseen.h>

#include <QtWidgets/QListView>

#include <deque>
#include <vector>

class QStandardItemModel;

/// The last events of the server, the newest first, also of before this console came. GUI thread.
class LastEvents : public QListView {
    Q_OBJECT

  public:
    static constexpr int Count = 5;

    explicit LastEvents(QWidget* parent = nullptr);

    /// Newer ones than all before, in their order.
    void Add(const std::vector<Event>& events);
    void Clear();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowWaiting();
    void AddOne(const Event& event);
    void LeaveOutHalfRows();

    QStandardItemModel* m_model;
    std::deque<Event> m_waiting;  ///< until somebody looks, the newest last
    eventlook::Icons m_icons;
    WhenSeen m_shown;
};
