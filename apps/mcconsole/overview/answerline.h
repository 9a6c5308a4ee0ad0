// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/severity.h>

#include <platform/values/pathbinding.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

class IClock;
class QLabel;
class ServerAnswer;

/// The server's last answer to a request of one MpxORV, with the time at which it came. GUI thread.
class AnswerLine : public QWidget, private PathBinding::IListener {
    Q_OBJECT

  public:
    /// \a clock is not owned and outlives the line.
    explicit AnswerLine(IClock& clock, QWidget* parent = nullptr);

    /// Listens to the MpxORV whose node is at \a path; empty: none. What another one was answered stays, in
    /// grey: it says nothing of this one.
    void Bind(const QString& path);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void ShowAnswer(const ServerAnswer& answer);
    void ShowColours();

    IClock& m_clock;
    QString m_path;
    PathBinding m_answer;
    PathBinding m_code;  ///< which says the same
    QLabel* m_icon;
    QLabel* m_time;
    QLabel* m_text;
    ESeverity m_severity = ESeverity::Unknown;
};
