// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QCheckBox>

class QAccessibleInterface;

/// Shows and switches a boolean. Its signals tell what the user does; contents that come from the tree are
/// shown without one. GUI thread only.
class MCS_WIDGETS_EXPORT VCCheckBox : public QCheckBox, private IValueView {
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)

  public:
    /// \a name, the object name, may be null.
    explicit VCCheckBox(QWidget* parent = nullptr, const char* name = nullptr);
    ~VCCheckBox() override;

    void SetText(QString text);  ///< The words beside the box.
    /// Binds to the boolean at \a path; empty: to nothing.
    void Set_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }  ///< for who asks about its value

    QSize sizeHint() const override;

  protected:
    void nextCheckState() override;

  private:
    // As forms have it, in UTF-8: texts of forms are translated, and bytes are not.
    QByteArray GetValuePath() const { return m_binding.GetPath().toUtf8(); }
    void SetValuePath(const QByteArray& path) { m_binding.SetPath(QString::fromUtf8(path)); }
    static QAccessibleInterface* Speak(const QString& className, QObject* object);
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool) override {}
    void Commit(values::ValueBase& value) override;

    WidgetBinding m_binding;
};
