// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/frequencyfield.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>

namespace {

constexpr int LongestEntry = 100;      // characters
constexpr int StepsOfAPage = 10;       // by the keys for a page
constexpr int WholeTurnOfAStep = 120;  // eighths of a degree

int StepsOf(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Up:
            return 1;
        case Qt::Key_Down:
            return -1;
        case Qt::Key_PageUp:
            return StepsOfAPage;
        case Qt::Key_PageDown:
            return -StepsOfAPage;
        default:
            return 0;
    }
}

}  // namespace

FrequencyField::FrequencyField(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(LongestEntry);
    setFocusPolicy(Qt::StrongFocus);  // the wheel alone must not get at it
}

/// Escape is the field's, also where a shortcut of the window has that key.
bool FrequencyField::event(QEvent* event) {
    const bool isEscape =
        event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (!isEscape) return QLineEdit::event(event);
    event->accept();
    return true;
}

void FrequencyField::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const int steps = isReadOnly() ? 0 : StepsOf(*event);
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Q_EMIT Confirmed();
    else if (key == Qt::Key_Escape)
        Q_EMIT TakenBack();
    else if (steps != 0)
        Q_EMIT Stepped(steps);
    else
        return QLineEdit::keyPressEvent(event);
    event->accept();
}

/// A user who scrolls a page by the wheel does not mean the field that comes below the pointer.
void FrequencyField::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() || isReadOnly()) return event->ignore();
    m_turned += event->angleDelta().y();
    const int steps = m_turned / WholeTurnOfAStep;
    m_turned -= steps * WholeTurnOfAStep;
    if (steps != 0) Q_EMIT Stepped(steps);
    event->accept();
}
