// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <functional>

class QWidget;

/// Brings what a widget shows up to date while somebody can see it: at once if the widget is on the page in
/// front, in a window that is not put away, else when that is so again. Ages and round trips change every
/// second, and nobody reads those of a page behind. GUI thread.
class WhenSeen : public QObject {
    Q_OBJECT

  public:
    /// \a write brings the widget up to date. \a widget is not owned and outlives this object.
    WhenSeen(QWidget& widget, std::function<void()> write);

    bool IsSeen() const;
    /// Something that is shown may be another. Writes at once, or when the widget is seen.
    void Refresh();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void WatchWindow();
    void WriteIfDue();

    QWidget& m_widget;
    QPointer<QWidget> m_window;  ///< whose state is watched; none if it is the widget itself
    std::function<void()> m_write;
    bool m_isDue = false;
};
