// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtWidgets/QAccessibleWidget>

class QLineEdit;
class WidgetBinding;

/// What assistive technology is told of a field that is bound to a value, and does there. The toolkit's own
/// would write into the picture of the field and leave the value as it is; what comes through this one is
/// taken as typed, and refused where nobody may type.
class SpokenText : public QAccessibleWidget,
                   public QAccessibleTextInterface,
                   public QAccessibleEditableTextInterface {
  public:
    /// \a field is \a widget, or the part of it in which people type. All outlive it.
    SpokenText(QWidget& widget, QAccessible::Role role, QLineEdit& field, WidgetBinding& binding);

    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

  protected:
    /// Whether an edit may be made; tells the user why not.
    bool MayEdit() const;

  private:
    QString Shown() const;
    QRect RoomOfText() const;
    int Bounded(int offset) const;

    QLineEdit& m_field;
    WidgetBinding& m_binding;
};
