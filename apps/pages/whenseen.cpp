// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/whenseen.h>

#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

#include <utility>

WhenSeen::WhenSeen(QWidget& widget, std::function<void()> write)
    : m_widget(widget), m_write(std::move(write)) {
    m_widget.installEventFilter(this);
    WatchWindow();
}

bool WhenSeen::IsSeen() const {
    return m_widget.isVisible() && !m_widget.window()->isMinimized();
}

void WhenSeen::Refresh() {
    m_isDue = true;
    WriteIfDue();
}

void WhenSeen::WriteIfDue() {
    if (!m_isDue || !IsSeen()) return;
    m_isDue = false;
    m_write();
}

/// A window that comes back tells itself, but not what is in it.
void WhenSeen::WatchWindow() {
    QWidget* const window = m_widget.window() != &m_widget ? m_widget.window() : nullptr;
    if (window == m_window) return;
    if (m_window != nullptr) m_window->removeEventFilter(this);
    m_window = window;
    if (m_window != nullptr) m_window->installEventFilter(this);
}

bool WhenSeen::eventFilter(QObject* watched, QEvent* event) {
    const bool isShown = event->type() == QEvent::Show && watched == &m_widget;
    if (isShown) WatchWindow();  // it may stand in another one than when it was made
    if (isShown || event->type() == QEvent::WindowStateChange) WriteIfDue();
    return false;
}
