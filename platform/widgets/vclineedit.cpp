// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vclineedit.h>

#include <platform/values/visit.h>
#include <platform/widgets/hints/lockmark.h>
#include <platform/widgets/hints/spokentext.h>
#include <platform/widgets/hints/spokenwidget.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>

namespace {

constexpr int MaxEditable = 100000;  // characters: a longer line takes too long to be laid out on every key
constexpr int MaxShownText = 1000;   // of a text that is longer than that

}  // namespace

VCLineEdit::VCLineEdit(QWidget* parent, const char* name, LineEditType type)
    : QLineEdit(parent),
      m_binding(*this, *this, values::Is<values::Value<QString>>, WidgetBinding::Editable) {
    spokenwidget::Announce(*this, &VCLineEdit::Speak);
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setMaxLength(MaxEditable);
    if (type == LineEditPassword) setEchoMode(PasswordEchoOnEdit);
    connect(this, &QLineEdit::textEdited, this, &VCLineEdit::OnTyped);
    m_binding.RefreshNow();
}

VCLineEdit::~VCLineEdit() = default;

QAccessibleInterface* VCLineEdit::Speak(const QString& className, QObject* object) {
    if (className != QLatin1String(staticMetaObject.className())) return nullptr;
    auto& field = *static_cast<VCLineEdit*>(object);
    return new SpokenText(field, QAccessible::EditableText, field, field.m_binding);
}

void VCLineEdit::SetText_ValuePath(const QString& path) {
    m_binding.SetPath(path);
}

bool VCLineEdit::event(QEvent* event) {
    if (m_binding.TakeEditEvent(*event)) return true;
    const QPointer<VCLineEdit> self(this);
    const bool isHandled = QLineEdit::event(event);
    if (self != nullptr) m_binding.CommitIfDue();
    return isHandled;
}

void VCLineEdit::OnTyped() {
    m_binding.BeginEdit();
    if (!hasFocus())
        setFocus();  // a dropped text is committed when the user leaves the field, as a typed one is
}

bool VCLineEdit::EndTyping(bool isConfirmed) {
    return isConfirmed || text() != m_shown;
}

void VCLineEdit::Commit(values::ValueBase& value) {
    static_cast<values::Value<QString>&>(value).SetValue(text());
}

void VCLineEdit::ShowValue(const values::ValueBase* value) {
    const QSignalBlocker blocker(this);
    QString content;
    if (value != nullptr) content = static_cast<const values::Value<QString>*>(value)->GetValue();
    m_isCut = content.size() > MaxEditable;
    m_shown = m_isCut ? valuetext::Shortened(content, MaxShownText) : content;
    ShowAccess(m_mayEdit);
    if (m_shown == text()) return;
    const int cursor = hasFocus() ? cursorPosition() : 0;  // the beginning of a long text, not its end
    setText(m_shown);
    setCursorPosition(cursor);
}

QString VCLineEdit::HiddenText() const {
    if (m_isCut) return tr("This text is too long to be edited here.");
    const bool isSecret = echoMode() != Normal;
    const int margins = 8;  // pixels around the text, in any style
    const bool fits = fontMetrics().horizontalAdvance(m_shown) <= width() - margins;
    return isSecret || fits ? QString() : valuetext::Shortened(m_shown, MaxShownText);
}

void VCLineEdit::ShowAccess(bool mayEdit) {
    m_mayEdit = mayEdit;
    const bool isFixed = m_isCut || !mayEdit;
    if (isReadOnly() == isFixed) return;
    setReadOnly(isFixed);
    setTextMargins(0, 0, isFixed ? LockMark::Room : 0, 0);
}
