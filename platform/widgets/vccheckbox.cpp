// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vccheckbox.h>

#include <platform/values/visit.h>
#include <platform/widgets/hints/lockmark.h>
#include <platform/widgets/hints/spokenbox.h>
#include <platform/widgets/hints/spokenwidget.h>

#include <QtCore/QPointer>
#include <QtCore/QSignalBlocker>

VCCheckBox::VCCheckBox(QWidget* parent, const char* name)
    : QCheckBox(parent), m_binding(*this, *this, values::Is<values::Value<bool>>, WidgetBinding::Editable) {
    spokenwidget::Announce(*this, &VCCheckBox::Speak);
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    m_binding.RefreshNow();
}

VCCheckBox::~VCCheckBox() = default;

QAccessibleInterface* VCCheckBox::Speak(const QString& className, QObject* object) {
    if (className != QLatin1String(staticMetaObject.className())) return nullptr;
    auto& box = *static_cast<VCCheckBox*>(object);
    return new SpokenBox(box, box.m_binding);
}

// Modules call it with a copy. NOLINTNEXTLINE(performance-unnecessary-value-param)
void VCCheckBox::SetText(QString text) {
    setText(text);
}

void VCCheckBox::Set_ValuePath(const QString& path) {
    m_binding.SetPath(path);
}

QSize VCCheckBox::sizeHint() const {
    return QCheckBox::sizeHint() + QSize(LockMark::Room, 0);
}

/// The toolkit calls this for a click and for a key.
void VCCheckBox::nextCheckState() {
    m_binding.Commit();
}

/// The user switches what the box showed; the value may be another one by now.
void VCCheckBox::Commit(values::ValueBase& value) {
    const QPointer<VCCheckBox> self(this);
    static_cast<values::Value<bool>&>(value).SetValue(!isChecked());
    if (self != nullptr) QCheckBox::nextCheckState();  // emits stateChanged()
}

void VCCheckBox::ShowValue(const values::ValueBase* value) {
    const QSignalBlocker blocker(this);
    const auto* const flag = static_cast<const values::Value<bool>*>(value);
    setChecked(flag != nullptr && flag->GetValue());
    // During a click the toolkit's setChecked() leaves this out, and would not tell of the next click.
    checkStateSet();
}
