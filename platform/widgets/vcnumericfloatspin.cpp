// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/vcnumericfloatspin.h>

#include <platform/values/value.h>
#include <platform/values/valuenumeric.h>

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QLineEdit>

#include <cmath>
#include <limits>

namespace {

using NumericInt = values::ValueNumeric<int>;
using NumericReal = values::ValueNumeric<double>;

/// What a spin box has room for: the digits of a larger number could not be shown.
constexpr double MaxShown = 1e15;

}  // namespace

VCNumericFloatSpin::VCNumericFloatSpin(QWidget* parent, const char* name, bool hasButtons)
    : QDoubleSpinBox(parent),
      m_binding(
          *this, *this, [this](const values::ValueBase& value) { return Accepts(value); },
          WidgetBinding::Editable) {
    if (name != nullptr) setObjectName(QString::fromUtf8(name));
    setButtonSymbols(hasButtons ? UpDownArrows : NoButtons);
    setKeyboardTracking(false);
    setFocusPolicy(Qt::StrongFocus);  // the wheel alone must not get at it
    m_binding.WatchPart(*lineEdit());
    connect(this, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &VCNumericFloatSpin::Commit);
    connect(this, &QDoubleSpinBox::editingFinished, this, &VCNumericFloatSpin::Finish);
    m_binding.RefreshNow();
}

VCNumericFloatSpin::~VCNumericFloatSpin() {
    disconnect(this, nullptr, this, nullptr);  // the base class may tell of the end of an edit
}

void VCNumericFloatSpin::SetNumericInt_ValuePath(const QString& path) {
    Bind(true, path);
}

void VCNumericFloatSpin::SetNumericDouble_ValuePath(const QString& path) {
    Bind(false, path);
}

void VCNumericFloatSpin::SetUnit(double factor, int decimals, const QString& unit) {
    Q_ASSERT(factor > 0);
    m_factor = factor;
    m_decimals = decimals;
    setSuffix(unit);
    m_binding.RefreshNow();
}

void VCNumericFloatSpin::Bind(bool isInteger, const QString& path) {
    m_isInteger = isInteger;
    lineEdit()->setModified(false);  // what was typed was meant for the other value
    m_binding.SetPath(path);
}

bool VCNumericFloatSpin::Accepts(const values::ValueBase& value) const {
    if (m_isInteger)
        return dynamic_cast<const NumericInt*>(&value) != nullptr ||
               dynamic_cast<const values::Value<int>*>(&value) != nullptr;
    return dynamic_cast<const NumericReal*>(&value) != nullptr;
}

QString VCNumericFloatSpin::textFromValue(double shown) const {
    return m_isBlank ? QString() : QDoubleSpinBox::textFromValue(shown);
}

QValidator::State VCNumericFloatSpin::validate(QString& input, int& position) const {
    return m_isBlank ? QValidator::Acceptable : QDoubleSpinBox::validate(input, position);
}

void VCNumericFloatSpin::stepBy(int steps) {
    if (m_binding.MayEdit())
        QDoubleSpinBox::stepBy(steps);
    else
        m_binding.Refuse(tr("This cannot be changed now."));
}

QAbstractSpinBox::StepEnabled VCNumericFloatSpin::stepEnabled() const {
    return m_binding.MayEdit() ? QDoubleSpinBox::stepEnabled() : StepEnabled(StepNone);
}

/// Escape arrives here before a dialog takes it as its own.
bool VCNumericFloatSpin::event(QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape || !IsEditing())
        return QDoubleSpinBox::event(event);
    if (event->type() == QEvent::KeyPress) Restore();
    event->accept();
    return true;
}

/// Turned over a form that scrolls, the wheel is not meant for the field below the pointer.
void VCNumericFloatSpin::wheelEvent(QWheelEvent* event) {
    if (hasFocus() && m_binding.MayEdit())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}

bool VCNumericFloatSpin::IsEditing() const {
    return lineEdit()->isModified();
}

void VCNumericFloatSpin::Restore() {
    lineEdit()->setModified(false);
    m_binding.RefreshNow();
}

/// The user made another number of it: by typing, or by a step.
void VCNumericFloatSpin::Commit() {
    lineEdit()->setModified(false);
    if (m_binding.MayEdit()) {
        m_binding.ForgetRefusal();
        values::ValueBase* const target = m_binding.GetValue();
        if (auto* const real = dynamic_cast<NumericReal*>(target))
            real->SetValue(value() * m_factor);
        else if (auto* const number = dynamic_cast<NumericInt*>(target))
            number->SetValue(static_cast<int>(std::lround(value())));
        else if (auto* const plain = dynamic_cast<values::Value<int>*>(target))
            plain->SetValue(static_cast<int>(std::lround(value())));
    } else {
        m_binding.Refuse(tr("This cannot be changed now."));
    }
    m_binding.RefreshNow();
}

/// The user left or pressed Enter without another number: contents may come again.
void VCNumericFloatSpin::Finish() {
    if (IsEditing()) Restore();
}

void VCNumericFloatSpin::ShowValue(const values::ValueBase* value) {
    const QSignalBlocker blocker(this);
    m_isBlank = value == nullptr;
    if (value == nullptr) {
        lineEdit()->setText(QString());  // clear() would count as an edit
        return;
    }
    using IntLimits = std::numeric_limits<int>;
    if (const auto* real = dynamic_cast<const NumericReal*>(value)) {
        if (decimals() != m_decimals) setDecimals(m_decimals);
        ShowNumber(real->GetValue() / m_factor, real->GetMin() / m_factor, real->GetMax() / m_factor);
        return;
    }
    if (decimals() != 0) setDecimals(0);
    if (const auto* number = dynamic_cast<const NumericInt*>(value))
        ShowNumber(number->GetValue(), number->GetMin(), number->GetMax());
    else if (const auto* plain = dynamic_cast<const values::Value<int>*>(value))
        ShowNumber(plain->GetValue(), IntLimits::min(), IntLimits::max());
}

void VCNumericFloatSpin::ShowNumber(double shown, double minimum, double maximum) {
    const double lowest = qMax(minimum, -MaxShown);
    const double highest = qMin(maximum, MaxShown);
    if (lowest == this->minimum() && highest == this->maximum() && shown == value() && !text().isEmpty())
        return;
    if (IsEditing()) return;
    setRange(lowest, highest);
    setValue(shown);
}

void VCNumericFloatSpin::ShowAccess(bool mayEdit) {
    if (isReadOnly() == mayEdit) setReadOnly(!mayEdit);
}
