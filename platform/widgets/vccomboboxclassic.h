// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QComboBox>

namespace values {
class ValueSelection;
}

/// Shows the choices of a selection and makes one current. GUI thread only.
class MCS_WIDGETS_EXPORT VCComboBoxClassic : public QComboBox, private IValueView {
    Q_OBJECT

  public:
    /// \a name, the object name, may be null.
    explicit VCComboBoxClassic(QWidget* parent = nullptr, const char* name = nullptr);
    ~VCComboBoxClassic() override;

    /// Binds to the selection at \a path; empty: to nothing.
    void SetValueSelection_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }

    void showPopup() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool mayEdit) override;
    void ShowItems(const values::ValueSelection& selection);
    bool ShowsItemsOf(const values::ValueSelection& selection) const;
    void Choose(int index);

    WidgetBinding m_binding;
};
