// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/recoverycontent.h>
#include <apps/mcserver/suppression/recoverywriter.h>
#include <apps/mcserver/suppression/suppressionrecorder.h>
#include <apps/mcserver/suppression/suppressionrecovery.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/privatefile.h>
#include <platform/values/tree.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>
#include <tests/support/waituntil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QTreeWidget>

#include <future>
#include <optional>

namespace {

using testing::ElementsAre;

class ARecorder : public testing::Test {
  protected:
    ARecorder() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
        m_recovery.Begin();
        m_plant.Add(m_module.GetPlantModule());
        m_recorder.emplace(m_plant, m_recovery, m_log, m_clock);
    }
    ~ARecorder() override { CfgCenter::Instance().SetStorePath(QString()); }

    QString File() const { return m_directory.filePath(QStringLiteral("test.ini.gts-recovery")); }
    std::vector<ModuleSettings> Written() const {
        QByteArray bytes;
        RecoveryContent content;
        QString defect;
        if (PrivateFile::Read(File(), RecoveryContent::MaxBytes, &bytes).outcome ==
            PrivateFile::EOutcome::Done) {
            EXPECT_TRUE(content.FromBytes(bytes, &defect)) << defect.toStdString();
        }
        return content.modules;
    }
    bool WaitForWritten() {
        return WaitUntil([&] { return Written() == m_plant.GetSettings(); });
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    ManualClock m_clock;
    MCSStatus m_status{QStringLiteral("/Status")};
    std::vector<QString> m_lines;
    ServerLog m_log{m_status, m_clock, [this](const QString& line) { m_lines.push_back(line); }};
    SuppressionRecovery m_recovery;
    SuppressionPlant m_plant;
    QTreeWidget m_rows;
    DataModule m_module{&m_rows, 0};
    std::optional<SuppressionRecorder> m_recorder;
};

TEST_F(ARecorder, WritesNothingWhileNobodyEntersAnything) {
    m_module.SetFrequency(1, 0.0);
    m_module.RefreshTree();
    m_clock.Advance(std::chrono::seconds(60));
    m_recorder.reset();  // waits for what is under way
    EXPECT_FALSE(QFile::exists(File()));
}

TEST_F(ARecorder, WritesEveryKindOfChange) {
    m_module.SetType(QStringLiteral("ADAM-6051"));
    m_clock.Turn();
    EXPECT_TRUE(WaitForWritten());
    m_module.SetFrequency(3, 118100000.25);
    m_clock.Turn();
    EXPECT_TRUE(WaitForWritten());
    DataModule other(&m_rows, 1);
    m_plant.Add(other.GetPlantModule());
    m_clock.Turn();
    EXPECT_TRUE(WaitForWritten());
    m_plant.Remove(other.GetPlantModule());
    m_clock.Turn();
    EXPECT_TRUE(WaitForWritten());
}

TEST_F(ARecorder, WritesAtItsEndWhatWasEnteredInTheLastMoment) {
    m_module.SetFrequency(3, 118100000.0);
    m_recorder.reset();
    EXPECT_EQ(Written(), m_plant.GetSettings());
}

TEST_F(ARecorder, TriesAgainAndSaysBoth) {
    std::vector<QString> problems;
    QObject::connect(&*m_recorder, &SuppressionRecorder::SignalProblem,
                     [&](const QString& problem) { problems.push_back(problem); });
    ASSERT_TRUE(QDir().mkpath(File()));
    m_module.SetFrequency(3, 118100000.0);
    m_clock.Turn();
    ASSERT_TRUE(WaitUntil([&] { return problems.size() == 1; }));
    EXPECT_EQ(m_recorder->GetObstacleOfSaving(), problems[0]);
    EXPECT_EQ(problems[0], QStringLiteral("'%1' cannot be written: it is not a file").arg(File()));
    ASSERT_TRUE(QDir().rmdir(File()));
    m_clock.Advance(SuppressionRecorder::RetryInterval);
    ASSERT_TRUE(WaitUntil([&] { return problems.size() == 2; }));
    EXPECT_EQ(problems[1], QString());
    EXPECT_EQ(m_recorder->GetObstacleOfSaving(), QString());
    EXPECT_EQ(Written(), m_plant.GetSettings());
    EXPECT_THAT(
        m_lines,
        ElementsAre(
            QStringLiteral("what is entered for the suppression would be lost with a killed server: ") +
                problems[0],
            QStringLiteral("what is entered for the suppression would outlive a killed server again")));
}

TEST(ARecoveryWriter, NeverWaitsForTheMediumAndWritesTheLast) {
    std::promise<void> stuck;
    std::promise<void> goOn;
    std::vector<QByteArray> written;
    {
        RecoveryWriter writer([&, isFirst = true](const QByteArray& bytes) mutable {
            if (isFirst) {
                isFirst = false;
                stuck.set_value();
                goOn.get_future().wait();
            }
            written.push_back(bytes);
            return QString();
        });
        writer.Put("one");
        stuck.get_future().wait();
        writer.Put("two");
        writer.Put("three");
        goOn.set_value();
    }
    EXPECT_THAT(written, ElementsAre("one", "three"));
}

}  // namespace
