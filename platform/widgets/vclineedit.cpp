// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vclineedit.h>

#include <platform/values/value.h>

#include <QtGui/QKeyEvent>

namespace {

constexpr int MaxLength = 1 << 20;  // characters: a longer content would come back cut

bool IsText(const values::ValueBase& value) {
    return dynamic_cast<const values::Value<QString>*>(&value) != nullptr;
}

}  // namespace

VCLineEdit::VCLineEdit(QWidget* parent, const char* name, LineEditType type)
    : QLineEdit(parent), m_binding(*this, *this, IsText, WidgetBinding::Editable) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setMaxLength(MaxLength);
    if (type == LineEditPassword) setEchoMode(PasswordEchoOnEdit);
    connect(this, &QLineEdit::editingFinished, this, &VCLineEdit::Commit);
    m_binding.RefreshNow();
}

VCLineEdit::~VCLineEdit() {
    // The base class may tell of the end of an edit while it is destroyed.
    disconnect(this, &QLineEdit::editingFinished, this, &VCLineEdit::Commit);
}

void VCLineEdit::SetText_ValuePath(const QString& path) {
    setModified(false);  // what was typed was meant for the other value
    m_binding.SetPath(path);
}

void VCLineEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && IsEditing())
        Restore();
    else
        QLineEdit::keyPressEvent(event);
}

bool VCLineEdit::IsEditing() const {
    return isModified();
}

void VCLineEdit::Restore() {
    setModified(false);
    m_binding.RefreshNow();
}

void VCLineEdit::Commit() {
    if (!IsEditing()) return;
    if (m_binding.MayEdit()) {
        m_binding.ForgetRefusal();
        setModified(false);
        m_binding.GetValueAs<values::Value<QString>>()->SetValue(text());
        m_binding.RefreshNow();
    } else {
        Restore();
        m_binding.Refuse(tr("This cannot be changed now."));
    }
}

void VCLineEdit::ShowValue(const values::ValueBase* value) {
    if (value == nullptr) return setText(QString());  // clear() would count as an edit
    if (IsEditing()) return;
    const QString content = static_cast<const values::Value<QString>*>(value)->GetValue();
    if (content == text()) return;
    setText(content);
    setCursorPosition(0);  // the beginning of a long text, not its end
}

void VCLineEdit::ShowAccess(bool mayEdit) {
    if (isReadOnly() == mayEdit) setReadOnly(!mayEdit);
}
