// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccheckbox.h>

#include <platform/values/value.h>

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

/// A click or a key: what the user saw is switched, whatever the value has become meanwhile.
void VCCheckBox::nextCheckState() {
    if (!m_binding.MayEdit()) return m_binding.Refuse(tr("This cannot be changed now."));
    m_binding.ForgetRefusal();
    const bool isChecked = !this->isChecked();
    m_isSwitching = true;  // or the value would be shown at once, and without a signal
    m_binding.GetValueAs<values::Value<bool>>()->SetValue(isChecked);
    m_isSwitching = false;
    setChecked(isChecked);
    checkStateSet();  // tells of the new state, which setting it does not do in the middle of a click
    m_binding.RequestRefresh();  // in case that it did not become so
}

void VCCheckBox::ShowValue(const values::ValueBase* value) {
    if (m_isSwitching) return;
    const QSignalBlocker blocker(this);
    const auto* const flag = static_cast<const values::Value<bool>*>(value);
    setChecked(flag != nullptr && flag->GetValue());
}
