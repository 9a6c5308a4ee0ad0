// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/hints/spokentext.h>

class VCNumericFloatSpin;

/// The same of a field for numbers, which can be set as such too: that is taken as a step to it.
class SpokenNumber : public SpokenText, public QAccessibleValueInterface {
  public:
    explicit SpokenNumber(VCNumericFloatSpin& spin);

    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

  private:
    VCNumericFloatSpin& m_spin;
};
