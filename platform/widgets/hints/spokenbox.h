// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QAccessibleWidget>

class QCheckBox;
class WidgetBinding;

/// What assistive technology is told of a check box that is bound to a value, and does there. The toolkit's
/// own would switch the picture of the box and leave the value as it is; this one does what the space bar
/// does.
class SpokenBox : public QAccessibleWidget {
  public:
    /// Both belong together, and outlive it.
    SpokenBox(QCheckBox& box, const WidgetBinding& binding);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QRect rect() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

  private:
    QCheckBox& m_box;
    const WidgetBinding& m_binding;
};
