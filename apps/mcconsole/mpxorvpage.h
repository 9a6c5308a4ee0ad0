// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/shownanswers.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

class FrequencyBook;
class MCSLogDisplay;
class PolicyPanel;
class QCheckBox;
class QGridLayout;
class QLabel;
class TuneBar;
class Tuning;
class VCComboBoxClassic;
class VCLabel;
class VCPushButton;

/// The console's own MpxORV: what it does, what it may do, tuning it and asking it for other things, and what
/// the server answers.
class MpxOrvPage : public QWidget {
    Q_OBJECT

  public:
    /// Neither is owned, both outlive the page.
    MpxOrvPage(Tuning& tuning, FrequencyBook& book, QWidget* parent = nullptr);

    TuneBar& GetTuneBar() const { return *m_tuneBar; }

    /// Shows the MpxORV whose node is at \a path; empty: none. Also anew for the same path.
    void Bind(const QString& path);
    /// Says what the MpxORV is called, or why there is none.
    void ShowState(const QString& text);
    void ShowUsed(bool isUsed);
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user wants to have an MpxORV, or not.
    void UseRequested(bool isUsed);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* BuildStatus();
    QWidget* BuildRequests();
    QWidget* BuildPolicies();
    QWidget* BuildAnswers();
    void FollowAnswers();
    void LayOut(bool isNarrow);

    QLabel* m_state;
    QCheckBox* m_used;
    TuneBar* m_tuneBar;
    VCLabel* m_mode = nullptr;
    VCLabel* m_type = nullptr;
    VCLabel* m_isMaster = nullptr;
    VCPushButton* m_becomeMaster = nullptr;
    VCPushButton* m_restartJob = nullptr;
    VCPushButton* m_builtInTest = nullptr;
    VCPushButton* m_calibrate = nullptr;
    VCComboBoxClassic* m_reportInterval = nullptr;
    PolicyPanel* m_policies = nullptr;
    QWidget* m_status;  ///< with the labels above
    QWidget* m_requests;
    QWidget* m_policyBox;
    QGridLayout* m_grid;
    bool m_isNarrow = false;
    MCSLogDisplay* m_answers = nullptr;
    ShownAnswers m_shownAnswers;
};
