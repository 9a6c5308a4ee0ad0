// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccheckbox.h>

#include <platform/values/value.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>

namespace {

bool IsBoolean(const values::ValueBase& value) {
    return dynamic_cast<const values::Value<bool>*>(&value) != nullptr;
}

}  // namespace

VCCheckBox::VCCheckBox(QWidget* parent, const char* name)
    : QCheckBox(parent), m_binding(*this, *this, IsBoolean, WidgetBinding::Editable) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    m_binding.RefreshNow();
}

VCCheckBox::~VCCheckBox() = default;

void VCCheckBox::SetText(QString text) {
    setText(text);
}

void VCCheckBox::Set_ValuePath(const QString& path) {
    m_binding.SetPath(path);
}

/// A click or a key: what the user saw is switched, whatever the value has become meanwhile. The signals come
/// first, as the user's; once the value is set, its content is shown without any.
void VCCheckBox::nextCheckState() {
    if (!m_binding.MayEdit()) return m_binding.Refuse(tr("This cannot be changed now."));
    m_binding.ForgetRefusal();
    const bool isWanted = !isChecked();
    const QPointer<VCCheckBox> self(this);
    setChecked(isWanted);
    checkStateSet();  // tells of the new state, which setting it does not do in the middle of a click
    if (self == nullptr || !m_binding.MayEdit()) return;  // whoever heard the signals saw to that
    m_binding.GetValueAs<values::Value<bool>>()->SetValue(isWanted);
    if (self != nullptr) m_binding.RequestRefresh();  // in case that it did not become so
}

void VCCheckBox::ShowValue(const values::ValueBase* value) {
    const QSignalBlocker blocker(this);
    const auto* const flag = static_cast<const values::Value<bool>*>(value);
    setChecked(flag != nullptr && flag->GetValue());
}
