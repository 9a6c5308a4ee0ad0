// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/shiftguard.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QCursor>
#include <QtGui/QMouseEvent>
#include <QtGui/QMoveEvent>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace {

constexpr int RestingHand = 4;  // pixels that a pointer moves by itself

}  // namespace

ShiftGuard::ShiftGuard(IClock& clock, QWidget& pages) : QObject(&pages), m_pages(pages), m_grace(clock) {
    pages.installEventFilter(this);
}

bool ShiftGuard::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Move:
            if (watched == &m_pages && m_pages.isVisible()) {
                const auto* const move = static_cast<QMoveEvent*>(event);
                if (move->pos().y() != move->oldPos().y())
                    BeginGrace(std::min(move->pos().y(), move->oldPos().y()));
            }
            return false;
        case QEvent::Resize:  // a bar below comes or goes, and what stands at the foot of a page moves
            if (watched == &m_pages && m_pages.isVisible()) BeginGrace(m_pages.y());
            return false;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return m_grace.IsRunning() &&
                   WasAimedBefore(*watched, static_cast<QMouseEvent*>(event)->globalPos());
        default:
            return false;
    }
}

void ShiftGuard::BeginGrace(int top) {
    m_top = m_grace.IsRunning() ? std::min(m_top, top) : top;
    m_pointer = QCursor::pos();
    // Looks at all mouse events of the program for that long only.
    QCoreApplication::instance()->installEventFilter(this);
    m_grace.Start(Grace, [this] { QCoreApplication::instance()->removeEventFilter(this); });
}

/// Whether the pointer has rested where it is since before something moved there.
bool ShiftGuard::WasAimedBefore(const QObject& target, const QPoint& place) const {
    const QWidget* const content = m_pages.parentWidget();
    const auto* const widget = qobject_cast<const QWidget*>(&target);
    if (content == nullptr || widget == nullptr || !content->isAncestorOf(widget)) return false;
    return content->mapFromGlobal(place).y() >= m_top && (place - m_pointer).manhattanLength() <= RestingHand;
}
