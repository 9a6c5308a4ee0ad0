// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/spokentext.h>

#include <platform/widgets/widgetbinding.h>

#include <QtWidgets/QLineEdit>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionFrame>

SpokenText::SpokenText(QWidget& widget, QAccessible::Role role, QLineEdit& field, WidgetBinding& binding)
    : QAccessibleWidget(&widget, role), m_field(field), m_binding(binding) {}

/// What is hidden from eyes is not read out either.
QString SpokenText::Shown() const {
    return m_field.echoMode() == QLineEdit::Normal ? m_field.text()
                                                   : QString(m_field.text().size(), QLatin1Char('*'));
}

QString SpokenText::text(QAccessible::Text kind) const {
    return kind == QAccessible::Value ? Shown() : QAccessibleWidget::text(kind);
}

void SpokenText::setText(QAccessible::Text kind, const QString& text) {
    if (kind == QAccessible::Value)
        replaceText(0, characterCount(), text);
    else
        QAccessibleWidget::setText(kind, text);
}

QAccessible::State SpokenText::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.selectableText = true;
    state.editable = !m_field.isReadOnly();
    state.readOnly = m_field.isReadOnly();
    state.passwordEdit = m_field.echoMode() != QLineEdit::Normal;
    return state;
}

void* SpokenText::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

int SpokenText::Bounded(int offset) const {
    return qBound(0, offset, characterCount());
}

void SpokenText::selection(int index, int* start, int* end) const {
    const bool isOne = index == 0 && m_field.hasSelectedText();
    *start = isOne ? m_field.selectionStart() : 0;
    *end = isOne ? m_field.selectionEnd() : 0;
}

int SpokenText::selectionCount() const {
    return m_field.hasSelectedText() ? 1 : 0;
}

void SpokenText::addSelection(int start, int end) {
    setSelection(0, start, end);
}

void SpokenText::removeSelection(int index) {
    if (index == 0) m_field.deselect();
}

void SpokenText::setSelection(int index, int start, int end) {
    if (index == 0) m_field.setSelection(Bounded(start), Bounded(end) - Bounded(start));
}

int SpokenText::cursorPosition() const {
    return m_field.cursorPosition();
}

void SpokenText::setCursorPosition(int position) {
    m_field.setCursorPosition(Bounded(position));
}

QString SpokenText::text(int start, int end) const {
    return start > end ? QString() : Shown().mid(Bounded(start), Bounded(end) - Bounded(start));
}

int SpokenText::characterCount() const {
    return m_field.text().size();
}

QRect SpokenText::RoomOfText() const {
    QStyleOptionFrame option;
    option.initFrom(&m_field);
    return m_field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &m_field);
}

/// From the first character that is in sight on, as far as the toolkit tells which that is.
QRect SpokenText::characterRect(int offset) const {
    if (offset < 0 || offset >= characterCount()) return QRect();
    const QFontMetrics metrics(m_field.font());
    const QRect room = RoomOfText();
    const int first = m_field.cursorPositionAt(room.topLeft());
    const auto widthBefore = [&](int end) {
        return first <= end ? metrics.horizontalAdvance(Shown().mid(first, end - first))
                            : -metrics.horizontalAdvance(Shown().mid(end, first - end));
    };
    const int left = widthBefore(offset);
    return QRect(room.left() + left, room.top(), widthBefore(offset + 1) - left, room.height())
        .translated(m_field.mapToGlobal(QPoint()));
}

int SpokenText::offsetAtPoint(const QPoint& point) const {
    return m_field.cursorPositionAt(m_field.mapFromGlobal(point));
}

void SpokenText::scrollToSubstring(int start, int end) {
    m_field.setCursorPosition(Bounded(end));
    m_field.setCursorPosition(Bounded(start));
}

/// All of it looks the same.
QString SpokenText::attributes(int, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return QString();
}

bool SpokenText::MayEdit() const {
    if (m_binding.MayEdit() && m_field.isEnabled() && !m_field.isReadOnly()) return true;
    if (!m_binding.IsEditing()) m_binding.RefuseEdit();
    return false;
}

void SpokenText::deleteText(int start, int end) {
    replaceText(start, end, QString());
}

void SpokenText::insertText(int offset, const QString& text) {
    replaceText(offset, offset, text);
}

/// Chosen and typed over, so that the field takes it for the user's.
void SpokenText::replaceText(int start, int end, const QString& text) {
    if (!MayEdit()) return;
    const bool isNothing = Bounded(start) >= Bounded(end);
    if (isNothing && text.isEmpty()) return;
    m_field.setCursorPosition(Bounded(start));
    if (!isNothing) m_field.setSelection(Bounded(start), Bounded(end) - Bounded(start));
    m_field.insert(text);
}
