// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QComboBox>

namespace values {
class SelectionItem;
class ValueSelection;
}  // namespace values

/// Shows the choices of a selection and makes one current. When the choices change while the list is open, it
/// closes: nobody shall choose what has just come under the pointer. Its signals tell what the user does;
/// contents that come from the tree are shown without one. GUI thread only.
class MCS_WIDGETS_EXPORT VCComboBoxClassic : public QComboBox, private IValueView {
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)

  public:
    /// \a name, the object name, may be null.
    explicit VCComboBoxClassic(QWidget* parent = nullptr, const char* name = nullptr);
    ~VCComboBoxClassic() override;

    /// Binds to the selection at \a path; empty: to nothing.
    void SetValueSelection_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }  ///< for who asks about its value

    void showPopup() override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    // As forms have it, in UTF-8: texts of forms are translated, and bytes are not.
    QByteArray GetValuePath() const { return m_binding.GetPath().toUtf8(); }
    void SetValuePath(const QByteArray& path) { m_binding.SetPath(QString::fromUtf8(path)); }
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool mayEdit) override;
    void Commit(values::ValueBase& value) override;
    QString HiddenText() const override;
    void ShowItems(const values::ValueSelection& selection);
    bool ShowsItemsOf(const values::ValueSelection& selection) const;
    bool ShowsItem(int index, const values::SelectionItem& item) const;
    void OnActivated(int index);

    WidgetBinding m_binding;
    int m_chosen = -1;  ///< while that is not committed
};
