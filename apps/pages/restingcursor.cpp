// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/restingcursor.h>

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>

namespace {

constexpr std::chrono::seconds BlinkTime(10);  // after the last key

bool IsTouch(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::MouseButtonPress || type == QEvent::InputMethod;
}

}  // namespace

RestingCursor::RestingCursor(IClock& clock) : m_flashTime(QApplication::cursorFlashTime()), m_rest(clock) {
    if (m_flashTime <= 0) return;
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focus) { Watch(focus); });
    Watch(QApplication::focusWidget());
}

RestingCursor::~RestingCursor() {
    if (m_flashTime > 0) QApplication::setCursorFlashTime(m_flashTime);
}

/// Of the one field that has the keys: whatever else happens in the window costs nothing here.
void RestingCursor::Watch(QWidget* focus) {
    if (m_focus != nullptr) m_focus->removeEventFilter(this);
    m_focus = focus;
    if (m_focus == nullptr) return;
    m_focus->installEventFilter(this);
    Blink();
}

void RestingCursor::Blink() {
    if (QApplication::cursorFlashTime() != m_flashTime) QApplication::setCursorFlashTime(m_flashTime);
    m_rest.Start(BlinkTime, [] { QApplication::setCursorFlashTime(0); });
}

bool RestingCursor::eventFilter(QObject* /*watched*/, QEvent* event) {
    if (IsTouch(event->type())) Blink();
    return false;
}
