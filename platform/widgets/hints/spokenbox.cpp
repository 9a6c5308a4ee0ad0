// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/spokenbox.h>

#include <platform/widgets/widgetbinding.h>

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionButton>

namespace {

/// As people read it: without the sign before the letter that is a key, which is written twice for itself.
QString WithoutKey(const QString& text) {
    QString shown;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&') && i + 1 < text.size()) ++i;
        shown += text.at(i);
    }
    return shown;
}

}  // namespace

SpokenBox::SpokenBox(QCheckBox& box, const WidgetBinding& binding)
    : QAccessibleWidget(&box, QAccessible::CheckBox), m_box(box), m_binding(binding) {}

QString SpokenBox::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Name && m_box.accessibleName().isEmpty() && !m_box.text().isEmpty())
        return WithoutKey(m_box.text());
    if (kind == QAccessible::Accelerator) return m_box.shortcut().toString(QKeySequence::NativeText);
    return QAccessibleWidget::text(kind);
}

QAccessible::State SpokenBox::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = m_box.isChecked();
    state.pressed = m_box.isDown();
    state.readOnly = !m_binding.MayEdit();
    return state;
}

/// Only what a click switches: who clicks by the help of others clicks its middle.
QRect SpokenBox::rect() const {
    if (!m_box.isVisible()) return QRect();
    QStyleOptionButton option;
    option.initFrom(&m_box);
    option.text = m_box.text();
    option.icon = m_box.icon();
    option.iconSize = m_box.iconSize();
    return m_box.style()
        ->subElementRect(QStyle::SE_CheckBoxClickRect, &option, &m_box)
        .translated(m_box.mapToGlobal(QPoint()));
}

QStringList SpokenBox::actionNames() const {
    return (m_box.isEnabled() ? QStringList(toggleAction()) : QStringList()) +
           QAccessibleWidget::actionNames();
}

/// Later, since a question may come of it, and whoever acts here waits until this returns.
void SpokenBox::doAction(const QString& name) {
    if (name == toggleAction() || name == pressAction())
        QMetaObject::invokeMethod(&m_box, &QAbstractButton::click, Qt::QueuedConnection);
    else
        QAccessibleWidget::doAction(name);
}

QStringList SpokenBox::keyBindingsForAction(const QString& name) const {
    const bool isKey = name == toggleAction() && !m_box.shortcut().isEmpty();
    return isKey ? QStringList(m_box.shortcut().toString()) : QStringList();
}
