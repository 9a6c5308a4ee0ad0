// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QFrame>

class QLabel;
class QPushButton;

/// Says above the pages that there is no connection, or that nobody answers, and offers to try at once.
/// Hidden while there is nothing to say. GUI thread.
class ConnectionBar : public QFrame {
    Q_OBJECT

  public:
    explicit ConnectionBar(QWidget* parent = nullptr);

    /// Shows \a text; an empty one hides the bar. \a mayTry: an attempt is waited for.
    void Tell(const QString& text, bool mayTry);

  Q_SIGNALS:
    /// The user does not want to wait for the next attempt.
    void TryRequested();

  private:
    QLabel* m_text;
    QPushButton* m_try;
};
