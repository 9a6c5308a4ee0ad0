// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QPushButton>

/// Asks for something through a boolean that works as a push button: sets it true, and is held down until
/// whoever carries it out has set it false again. GUI thread only.
class MCS_WIDGETS_EXPORT VCPushButton : public QPushButton, private IValueView {
    Q_OBJECT

  public:
    /// \a name, the object name, may be null.
    explicit VCPushButton(QWidget* parent = nullptr, const char* name = nullptr);
    ~VCPushButton() override;

    /// Binds to the boolean at \a path; empty: to nothing.
    void Set_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }

  private:
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool) override {}
    void Commit(values::ValueBase& value) override;

    WidgetBinding m_binding;
};
