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
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)

  public:
    /// \a name, the object name, may be null.
    explicit VCPushButton(QWidget* parent = nullptr, const char* name = nullptr);
    ~VCPushButton() override;

    /// Binds to the boolean at \a path; empty: to nothing.
    void Set_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }  ///< for who asks about its value

  private:
    // As forms have it, in UTF-8: texts of forms are translated, and bytes are not.
    QByteArray GetValuePath() const { return m_binding.GetPath().toUtf8(); }
    void SetValuePath(const QByteArray& path) { m_binding.SetPath(QString::fromUtf8(path)); }
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool) override {}
    void Commit(values::ValueBase& value) override;

    WidgetBinding m_binding;
};
