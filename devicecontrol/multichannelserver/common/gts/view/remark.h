// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QFrame>

class QBoxLayout;
class QLabel;

/// A line with a sign below what somebody enters, which says what is doubtful about it. GUI thread.
class Remark : public QFrame {
    Q_OBJECT

  public:
    explicit Remark(QWidget* parent);

    /// Shows \a text in \a remark, or hides it if there is none. While there is nothing to say there is no
    /// remark either: it is made then, in \a layout, as its item \a place.
    static void Show(Remark*& remark, const QString& text, QBoxLayout& layout, int place);

    QString GetText() const;

  private:
    void SetText(const QString& text);

    QLabel* m_sign;
    QLabel* m_text;
};
