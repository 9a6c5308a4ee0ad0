// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vcpushbutton.h>

#include <platform/values/visit.h>

VCPushButton::VCPushButton(QWidget* parent, const char* name)
    : QPushButton(parent), m_binding(*this, *this, values::Is<values::Value<bool>>, WidgetBinding::Editable) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setAutoDefault(false);  // or Enter in a field beside it would press the button
    // While the user holds the button, contents are not shown: a false one would release it and lose the
    // click. Nor is the value shown when the button loses the focus, which releases it too.
    connect(this, &QPushButton::pressed, &m_binding, &WidgetBinding::BeginEdit);
    connect(this, &QPushButton::released, &m_binding, &WidgetBinding::CancelEdit,
            Qt::QueuedConnection);  // after clicked(), which commits the edit that this ends
    connect(this, &QPushButton::clicked, &m_binding, &WidgetBinding::Commit);
    m_binding.RefreshNow();
}

VCPushButton::~VCPushButton() = default;

void VCPushButton::Set_ValuePath(const QString& path) {
    m_binding.SetPath(path);
}

void VCPushButton::Commit(values::ValueBase& value) {
    static_cast<values::Value<bool>&>(value).SetValue(true);
}

void VCPushButton::ShowValue(const values::ValueBase* value) {
    const auto* const flag = static_cast<const values::Value<bool>*>(value);
    setDown(flag != nullptr && flag->GetValue());
}
