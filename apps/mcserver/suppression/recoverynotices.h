// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/suppressionrecovery.h>

#include <QtWidgets/QWidget>

class NoticeBar;
class SuppressionRecorder;

/// Tells whoever sits before the server what became of what was entered before its last end, and whether what
/// is entered now would outlive the next one. GUI thread.
class RecoveryNotices : public QWidget {
    Q_OBJECT

  public:
    RecoveryNotices(const SuppressionRecovery::Report& report, const SuppressionRecorder& recorder,
                    QWidget* parent = nullptr);

  private:
    static QString TextOf(const SuppressionRecovery::Report& report);
    void ShowProblem(const QString& problem);

    NoticeBar* m_report;
    NoticeBar* m_problem;
};
