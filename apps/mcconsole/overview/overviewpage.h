// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/clocktimer.h>
#include <apps/mcconsole/overview/heldbefore.h>
#include <apps/mcconsole/overview/silentretry.h>
#include <apps/mcconsole/session/situationitem.h>
#include <apps/pages/page.h>
#include <apps/pages/whenseen.h>

#include <optional>

class AnswerLine;
class FrequencyBook;
class FrequencyLine;
class FrequencyUsers;
class LastEvents;
class QFrame;
class QLabel;
class QPushButton;
class Situation;
class TuneBar;
class Tuning;

/// The work at a glance: tuning the console's own MpxORV, what the server answers, who uses which frequency,
/// how fast device and server are, and what happened last. GUI thread.
class OverviewPage : public Page {
    Q_OBJECT

  public:
    /// None is owned; all outlive the page.
    OverviewPage(IClock& clock, Tuning& tuning, FrequencyBook& book, const Situation& situation,
                 QWidget* parent = nullptr);
    ~OverviewPage() override;

    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;
    /// Shows the answers to the MpxORV whose node is at \a path; empty: none.
    void BindMpxOrv(const QString& path);
    TuneBar& GetTuneBar() const { return *m_tuneBar; }
    LastEvents& GetLastEvents() const { return *m_events; }
    HeldBefore& GetHeldBefore() { return m_held; }

  Q_SIGNALS:
    /// Something has ended by itself that an operator counts on.
    void Noticed(const QString& text);

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QWidget* BuildHead();
    QWidget* BuildAnswer();
    QWidget* BuildLineHead();
    QWidget* BuildBelow();
    void ShowOwn();
    void ShowRetry();
    void TellGivenUp(double hz, SilentRetry::EReason why);
    void ToggleRetry();
    void ShowMarksSoon();
    void ShowMarks();

    IClock& m_clock;
    Tuning& m_tuning;
    const Situation& m_situation;
    SilentRetry m_retry;
    HeldBefore m_held;
    FrequencyUsers* m_users;
    QLabel* m_icon = nullptr;
    std::optional<SituationItem> m_shownOwn;  ///< none before the first
    QLabel* m_frequency = nullptr;
    TuneBar* m_tuneBar;
    AnswerLine* m_answer = nullptr;
    QPushButton* m_retryButton = nullptr;
    FrequencyLine* m_line;
    LastEvents* m_events = nullptr;
    ClockTimer m_marksTimer;
    WhenSeen m_own;
    WhenSeen m_marks;
};
