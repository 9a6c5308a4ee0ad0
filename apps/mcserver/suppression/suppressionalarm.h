// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/severity.h>
#include <apps/pages/unsupervisedbar.h>

#include <QtCore/QString>
#include <QtCore/QTimer>

#include <optional>

class SuppressionPlant;

/// Stands above all pages of the server's window: the frequencies that nobody watches, and how bad that is.
/// GUI thread.
class SuppressionAlarm : public UnsupervisedBar {
    Q_OBJECT

  public:
    /// \a plant is not owned; the bar stays as it is once that has gone.
    explicit SuppressionAlarm(const SuppressionPlant& plant, QWidget* parent = nullptr);

  Q_SIGNALS:
    /// It is otherwise now; \a word says so in a title, and is empty while nothing is lost.
    void Judged(ESeverity severity, const QString& word);

  private:
    void Look();

    const SuppressionPlant& m_plant;
    QTimer m_look;  ///< inputs change faster than people read
    std::optional<ESeverity> m_severity;
    QString m_word;
};
