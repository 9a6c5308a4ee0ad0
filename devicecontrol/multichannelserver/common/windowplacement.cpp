// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <QtWidgets/QWidget>

#include <utility>

namespace {

// What Qt calculates with without an overflow. No screen is that large.
constexpr int Largest = QWIDGETSIZE_MAX;

}  // namespace

std::set<WindowPlacement*> WindowPlacement::s_WindowPlacementSet;

WindowPlacement::WindowPlacement(QString name, QWidget* widget, const char*)
    : QObject(widget), m_widget(widget), m_name(std::move(name)) {
    s_WindowPlacementSet.insert(this);
    m_persistant = std::make_unique<values::Persistant>(m_name, this);
    if (widget != nullptr) {
        // A window that was never stored stays as it is. (fixed: placement-keys)
        m_persistant->Add(&m_x, QStringLiteral("x"), widget->x());
        m_persistant->Add(&m_y, QStringLiteral("y"), widget->y());
        m_persistant->Add(&m_w, QStringLiteral("w"), widget->width());
        m_persistant->Add(&m_h, QStringLiteral("h"), widget->height());
        m_persistant->Add(&m_minimized, QStringLiteral("minimized"), widget->isMinimized() ? 1 : 0);
        m_persistant->Add(&m_maximized, QStringLiteral("maximized"), widget->isMaximized() ? 1 : 0);
    }
    WindowPlacement::Restore();
}

WindowPlacement::~WindowPlacement() {
    s_WindowPlacementSet.erase(this);
    if (!m_committed) WindowPlacement::Store();
}

void WindowPlacement::Store() {
    if (IsPersistent()) m_persistant->Write(QString(), ICfg::Default);
}

void WindowPlacement::Restore() {
    if (IsPersistent()) m_persistant->Read(QString(), ICfg::Default);
}

void WindowPlacement::CommitData() {
    auto next = s_WindowPlacementSet.begin();
    while (next != s_WindowPlacementSet.end()) {
        WindowPlacement* const placement = *next;
        placement->Store();
        placement->m_committed = true;
        next = s_WindowPlacementSet.upper_bound(placement);
    }
}

// While the window is maximized, the geometry stored before is kept: it is what the window returns to.
void WindowPlacement::ApplyPersistantBeforeWrite() {
    if (m_widget == nullptr) return;
    if (!m_widget->isMaximized()) {
        m_x = m_widget->x();
        m_y = m_widget->y();
        m_w = m_widget->width();
        m_h = m_widget->height();
    }
    m_minimized = m_widget->isMinimized() ? 1 : 0;
    m_maximized = m_widget->isMaximized() ? 1 : 0;
}

void WindowPlacement::ApplyPersistantAfterRead() {
    if (m_widget == nullptr) return;
    m_widget->move(qBound(-Largest, m_x, Largest), qBound(-Largest, m_y, Largest));
    m_widget->resize(qBound(0, m_w, Largest), qBound(0, m_h, Largest));
    Qt::WindowStates state = m_widget->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    if (m_minimized != 0) state |= Qt::WindowMinimized;
    if (m_maximized != 0) state |= Qt::WindowMaximized;
    m_widget->setWindowState(state);
}
