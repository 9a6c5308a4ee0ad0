// SPDX-License-Identifier: Apache-2.0
// Placements while another process has the lock of the configuration.
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/store/cfglock.h>

#include <tests/support/printing.h>
#include <tests/support/tracerecorder.h>

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QWidget>

#include <memory>
#include <vector>

namespace {

class PlacementsThatAreLocked : public testing::Test {
  protected:
    PlacementsThatAreLocked() {
        CfgCenter::Instance().SetStorePath(m_file);
        for (int i = 0; i < 5; ++i) {
            m_windows.push_back(std::make_unique<QWidget>());
            new WindowPlacement(QStringLiteral("Window%1").arg(i), m_windows.back().get());
        }
    }
    ~PlacementsThatAreLocked() override { CfgCenter::Instance().SetStorePath(QString()); }

    QTemporaryDir m_directory;
    const QString m_file = m_directory.filePath(QStringLiteral("test.ini"));
    CfgLock m_lock{m_file + QStringLiteral(".writer")};
    std::vector<std::unique_ptr<QWidget>> m_windows;
};

TEST_F(PlacementsThatAreLocked, HoldUpTheEndOfAllWindowsForASecondAndSayNothing) {
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    const TraceRecorder traces;
    QElapsedTimer time;
    time.start();
    WindowPlacement::CommitData();
    m_windows.clear();
    EXPECT_LT(time.elapsed(), 3000);  // each of thirty numbers would wait for itself
    EXPECT_EQ(traces.Records().size(), 1U);
    EXPECT_NE(CfgCenter::Instance().Finish(), QString());
    m_lock.Release();
    EXPECT_EQ(CfgCenter::Instance().Finish(), QString());
}

TEST_F(PlacementsThatAreLocked, AreStoredByTheWindowsThatEndLater) {
    ASSERT_EQ(m_lock.Try(), CfgLock::EOutcome::Held);
    m_windows.pop_back();
    m_lock.Release();
    m_windows.pop_back();
    CfgCenter::Instance().SetStorePath(QString());
    CfgCenter::Instance().SetStorePath(m_file);
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    for (const char* const key : {"Window3/w", "Window4/w"})
        EXPECT_GT(root->ReadInt(QString::fromLatin1(key), 0), 0) << key;
}

}  // namespace
