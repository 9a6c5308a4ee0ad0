// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/ivalueview.h>
#include <platform/widgets/widgetbinding.h>
#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QLineEdit>

class QAccessibleInterface;

/// How the text of a line edit is shown.
enum LineEditType {
    LineEditNormal = 0,
    LineEditPassword = 1  ///< hidden while it is not edited
};

/// Shows and edits a text. Enter or leaving the field sends the edit, Escape restores; contents that come
/// while the user types wait until then. A text that is too long to be edited here is shown cut, and cannot
/// be edited. Its signals tell what the user does; contents that come from the tree are shown without one.
/// GUI thread only.
class MCS_WIDGETS_EXPORT VCLineEdit : public QLineEdit, private IValueView {
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)

  public:
    /// \a name, the object name, may be null.
    explicit VCLineEdit(QWidget* parent = nullptr, const char* name = nullptr,
                        LineEditType type = LineEditNormal);
    ~VCLineEdit() override;

    /// Binds to the text at \a path; empty: to nothing.
    void SetText_ValuePath(const QString& path);

    const WidgetBinding& GetBinding() const { return m_binding; }  ///< for who asks about its value

  protected:
    bool event(QEvent* event) override;

  private:
    // As forms have it, in UTF-8: texts of forms are translated, and bytes are not.
    QByteArray GetValuePath() const { return m_binding.GetPath().toUtf8(); }
    void SetValuePath(const QByteArray& path) { m_binding.SetPath(QString::fromUtf8(path)); }
    static QAccessibleInterface* Speak(const QString& className, QObject* object);
    void ShowValue(const values::ValueBase* value) override;
    void ShowAccess(bool mayEdit) override;
    bool EndTyping(bool isConfirmed) override;
    void Commit(values::ValueBase& value) override;
    QString HiddenText() const override;
    void OnTyped();

    WidgetBinding m_binding;
    QString m_shown;       ///< the content, as it was when it was shown
    bool m_isCut = false;  ///< what is shown is not the whole content
    bool m_mayEdit = false;
};
