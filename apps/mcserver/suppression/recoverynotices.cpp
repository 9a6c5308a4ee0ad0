// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/recoverynotices.h>

#include <apps/mcserver/suppression/suppressionrecorder.h>
#include <apps/pages/noticebar.h>

#include <QtCore/QLocale>
#include <QtWidgets/QVBoxLayout>

using Outcome = SuppressionRecovery::EOutcome;
using Reason = SuppressionRecovery::EReason;

RecoveryNotices::RecoveryNotices(const SuppressionRecovery::Report& report,
                                 const SuppressionRecorder& recorder, QWidget* parent)
    : QWidget(parent), m_report(new NoticeBar(this)), m_problem(new NoticeBar(this)) {
    m_report->setObjectName(QStringLiteral("RecoveryReport"));
    m_problem->setObjectName(QStringLiteral("RecoveryProblem"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_report);
    layout->addWidget(m_problem);
    m_report->Tell(report.outcome == Outcome::TakenOver ? NoticeBar::ESeverity::Information
                                                        : NoticeBar::ESeverity::Warning,
                   TextOf(report));
    connect(&recorder, &SuppressionRecorder::SignalProblem, this, &RecoveryNotices::ShowProblem);
}

QString RecoveryNotices::TextOf(const SuppressionRecovery::Report& report) {
    if (report.outcome == Outcome::Nothing) return QString();
    if (report.outcome == Outcome::TakenOver)
        return tr("The server did not end in an orderly way. What was entered for the ground transmitters "
                  "until %1 is "
                  "in use again (data modules: %2). Please check it.")
            .arg(QLocale().toString(report.time.toLocalTime(), QLocale::ShortFormat))
            .arg(report.modules);
    QString text =
        tr("The server did not end in an orderly way. What was entered for the ground transmitters then is "
           "not in use:");
    text += QLatin1Char(' ');
    if (report.reason == Reason::Damaged) text += tr("the file with it is damaged.");
    if (report.reason == Reason::OtherConfiguration)
        text += tr("the file with it is of another configuration.");
    if (report.reason == Reason::OlderThanConfiguration)
        text += tr("the configuration was changed since, and holds.");
    if (report.reason == Reason::Unreadable) text += tr("the file with it cannot be read.");
    text += QLatin1Char(' ');
    if (report.outcome == Outcome::PutAside) return text + tr("It is kept as %1.").arg(report.file);
    return text +
           tr("%1 cannot be put aside. Until it is, what you enter now would be lost with a killed server.")
               .arg(report.file);
}

void RecoveryNotices::ShowProblem(const QString& problem) {
    const QString text =
        problem.isEmpty()
            ? QString()
            : tr("What is entered for the ground transmitters would be lost with a killed server, "
                 "until the server ends in an orderly way: %1")
                  .arg(problem);
    m_problem->Tell(NoticeBar::ESeverity::Warning, text);
}
