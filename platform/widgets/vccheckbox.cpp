// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccheckbox.h>

#include <platform/values/value.h>
#include <platform/widgets/lockmark.h>

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

// The interface is fixed: NOLINTNEXTLINE(performance-unnecessary-value-param)
void VCCheckBox::SetText(QString text) {
    setText(text);
}

void VCCheckBox::Set_ValuePath(const QString& path) {
    m_binding.SetPath(path);
}

QSize VCCheckBox::sizeHint() const {
    return QCheckBox::sizeHint() + QSize(LockMark::Room, 0);
}

/// A click or a key.
void VCCheckBox::nextCheckState() {
    m_binding.Commit();
}

/// What the user saw is switched, whatever the value has become meanwhile.
void VCCheckBox::Commit(values::ValueBase& value) {
    const QPointer<VCCheckBox> self(this);
    static_cast<values::Value<bool>&>(value).SetValue(!isChecked());
    if (self != nullptr) QCheckBox::nextCheckState();  // tells of it
}

void VCCheckBox::ShowValue(const values::ValueBase* value) {
    const QSignalBlocker blocker(this);
    const auto* const flag = static_cast<const values::Value<bool>*>(value);
    setChecked(flag != nullptr && flag->GetValue());
    checkStateSet();  // during a click setChecked() leaves it out, and the next click would not be told
}
