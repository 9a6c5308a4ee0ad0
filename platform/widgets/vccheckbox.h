// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QCheckBox>

/// Shows and switches a boolean. Its signals tell what the user does; contents that come from the tree are
/// shown without one. GUI thread only.
class MCS_WIDGETS_EXPORT VCCheckBox : public QCheckBox, private IValueView {
    Q_OBJECT

  public:
    /// \a name, the object name, may be null.
    explicit VCCheckBox(QWidget* parent = nullptr, const char* name = nullptr);
    ~VCCheckBox() override;

    void SetText(QString text);
    /// Binds to the boolean at \a path; empty: to nothing.
    void Set_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }

    QSize sizeHint() const override;

  protected:
    void nextCheckState() override;

  private:
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool) override {}
    void Commit(values::ValueBase& value) override;

    WidgetBinding m_binding;
};
