// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/hints/spokennumber.h>

#include <platform/widgets/vcnumericfloatspin.h>

#include <cmath>

SpokenNumber::SpokenNumber(VCNumericFloatSpin& spin)
    : SpokenText(spin, QAccessible::SpinBox, *spin.lineEdit(), spin.m_binding), m_spin(spin) {}

void* SpokenNumber::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return SpokenText::interface_cast(type);
}

QVariant SpokenNumber::currentValue() const {
    return m_spin.value();
}

void SpokenNumber::setCurrentValue(const QVariant& value) {
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (isNumber && std::isfinite(number) && MayEdit()) m_spin.StepTo(number);
}

QVariant SpokenNumber::maximumValue() const {
    return m_spin.maximum();
}

QVariant SpokenNumber::minimumValue() const {
    return m_spin.minimum();
}

QVariant SpokenNumber::minimumStepSize() const {
    return m_spin.singleStep();
}
