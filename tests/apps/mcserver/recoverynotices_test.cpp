// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/recoverynotices.h>
#include <apps/mcserver/suppression/suppressionrecorder.h>
#include <apps/pages/noticebar.h>

#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/values/tree.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtTest/QTest>
#include <QtWidgets/QToolButton>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using Report = SuppressionRecovery::Report;
using Outcome = SuppressionRecovery::EOutcome;
using Reason = SuppressionRecovery::EReason;

class RecoveryNoticesTest : public testing::Test {
  protected:
    void Show(const Report& report) {
        m_notices = std::make_unique<RecoveryNotices>(report, m_recorder);
        m_notices->show();
    }
    NoticeBar& Bar(const char* name) { return *m_notices->findChild<NoticeBar*>(QLatin1String(name)); }
    std::string ReportText() { return Bar("RecoveryReport").GetText().toStdString(); }

    values::Tree m_tree;
    ManualClock m_clock;
    MCSStatus m_status{QStringLiteral("/Status")};
    ServerLog m_log{m_status, m_clock, [](const QString&) {}};
    SuppressionRecovery m_recovery;
    SuppressionPlant m_plant;
    SuppressionRecorder m_recorder{m_plant, m_recovery, m_log, m_clock};
    std::unique_ptr<RecoveryNotices> m_notices;
};

TEST_F(RecoveryNoticesTest, AreNotSeenWhileThereIsNothingToTell) {
    Show(Report());
    EXPECT_FALSE(Bar("RecoveryReport").isVisible());
    EXPECT_FALSE(Bar("RecoveryProblem").isVisible());
}

TEST_F(RecoveryNoticesTest, TellWhatWasTakenOverUntilItIsDismissed) {
    Report report;
    report.outcome = Outcome::TakenOver;
    report.modules = 3;
    report.time = QDateTime(QDate(2026, 11, 22), QTime(8, 30), Qt::UTC);
    Show(report);
    EXPECT_THAT(ReportText(),
                AllOf(HasSubstr("did not end in an orderly way"), HasSubstr("data modules: 3")));
    NoticeBar& bar = Bar("RecoveryReport");
    ASSERT_TRUE(bar.isVisible());
    QTest::mouseClick(bar.findChild<QToolButton*>(QStringLiteral("Dismiss")), Qt::LeftButton);
    EXPECT_FALSE(bar.isVisible());
}

struct Unused {
    const char* name;
    Outcome outcome;
    Reason reason;
    const char* why;
    const char* where;
};

class AnUnusedFile : public RecoveryNoticesTest, public testing::WithParamInterface<Unused> {};

TEST_P(AnUnusedFile, IsToldWithTheReasonAndWhereItIs) {
    Report report;
    report.outcome = GetParam().outcome;
    report.reason = GetParam().reason;
    report.file = QStringLiteral("/a/b");
    Show(report);
    EXPECT_THAT(ReportText(),
                AllOf(HasSubstr("is not in use"), HasSubstr(GetParam().why), HasSubstr(GetParam().where)));
}

constexpr char Kept[] = "It is kept as /a/b.";
INSTANTIATE_TEST_SUITE_P(All, AnUnusedFile,
                         testing::Values(Unused{"Damaged", Outcome::PutAside, Reason::Damaged, "is damaged",
                                                Kept},
                                         Unused{"OfAnother", Outcome::PutAside, Reason::OtherConfiguration,
                                                "another configuration", Kept},
                                         Unused{"Older", Outcome::PutAside, Reason::OlderThanConfiguration,
                                                "was changed since", Kept},
                                         Unused{"Unreadable", Outcome::InTheWay, Reason::Unreadable,
                                                "cannot be read", "/a/b cannot be put aside"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RecoveryNoticesTest, TellThatNothingIsKeptForAsLongAsThatLasts) {
    Show(Report());
    Q_EMIT m_recorder.SignalProblem(QStringLiteral("no space"));
    EXPECT_TRUE(Bar("RecoveryProblem").isVisible());
    EXPECT_THAT(Bar("RecoveryProblem").GetText().toStdString(), HasSubstr("no space"));
    Q_EMIT m_recorder.SignalProblem(QString());
    EXPECT_FALSE(Bar("RecoveryProblem").isVisible());
}

}  // namespace
