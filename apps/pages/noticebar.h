// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QFrame>

class QLabel;
class QToolButton;

/// A line above what a window shows, with something that people must not miss and need not answer: a sign, a
/// text and a button that takes it away. Hidden while there is nothing to tell. GUI thread.
class NoticeBar : public QFrame {
    Q_OBJECT

  public:
    enum class ESeverity { Information, Warning };

    explicit NoticeBar(QWidget* parent = nullptr);

    /// Shows \a text, in place of what was shown; an empty one hides the bar.
    void Tell(ESeverity severity, const QString& text);
    QString GetText() const;

  private:
    QLabel* m_sign;
    QLabel* m_text;
    QToolButton* m_dismiss;
};
