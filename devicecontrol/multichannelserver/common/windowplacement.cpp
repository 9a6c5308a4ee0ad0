// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/config/cfgsave.h>

#include <QtWidgets/QWidget>

#include <algorithm>
#include <limits>
#include <utility>

namespace {

// Of what an int holds at either end, for the frame around a window and what is calculated with it.
constexpr int Margin = 1 << 16;

/// \a begin, unless the end of a window of \a size, or of \a newSize, would be where no int is.
int Begin(int begin, int size, int newSize) {
    const int length = std::max({0, size, std::min(newSize, QWIDGETSIZE_MAX)});
    return qBound(std::numeric_limits<int>::min() + Margin, begin,
                  std::numeric_limits<int>::max() - Margin - length);
}

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
    const CfgSave save;
    auto next = s_WindowPlacementSet.begin();
    while (next != s_WindowPlacementSet.end()) {
        WindowPlacement* const placement = *next;
        const QPointer<WindowPlacement> guard(placement);
        placement->Store();
        if (!guard.isNull()) guard->m_committed = true;
        next = s_WindowPlacementSet.upper_bound(placement);  // also of one that is gone: what comes after it
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

// To the number: the toolkit itself limits sizes, and the application brings windows back that nobody can
// reach. Whoever hears that the window moves may destroy this object.
void WindowPlacement::ApplyPersistantAfterRead() {
    const QPointer<QWidget> widget = m_widget;
    const QSize size(m_w, m_h);
    const bool isMinimized = m_minimized != 0;
    const bool isMaximized = m_maximized != 0;
    if (!widget.isNull()) widget->move(Begin(m_x, widget->width(), m_w), Begin(m_y, widget->height(), m_h));
    if (!widget.isNull()) widget->resize(size);
    if (widget.isNull()) return;
    Qt::WindowStates state = widget->windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized);
    if (isMinimized) state |= Qt::WindowMinimized;
    if (isMaximized) state |= Qt::WindowMaximized;
    widget->setWindowState(state);
}
