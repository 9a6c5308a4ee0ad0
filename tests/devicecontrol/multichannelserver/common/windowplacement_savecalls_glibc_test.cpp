// SPDX-License-Identifier: Apache-2.0
// What storing placements asks of the system.
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/config/cfgcenter.h>

#include <tests/support/filecalls_glibc.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QWidget>

#include <memory>
#include <vector>

namespace {

TEST(SavesOfWindowPlacement, AreOneTransactionHoweverManyThereAre) {
    const QTemporaryDir directory;
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("test.ini")));
    std::vector<std::unique_ptr<QWidget>> windows;
    const auto add = [&windows] {
        windows.push_back(std::make_unique<QWidget>());
        new WindowPlacement(QStringLiteral("Window%1").arg(windows.size()), windows.back().get());
    };
    for (int i = 0; i < 4; ++i)
        add();
    filecalls::Start(directory.path());
    windows.pop_back();
    EXPECT_EQ(filecalls::GetCalls(), filecalls::OneTransaction) << "the end of a window";
    filecalls::Start(directory.path());
    WindowPlacement::CommitData();
    EXPECT_EQ(filecalls::GetCalls(), filecalls::OneTransaction) << "the end of all";
    filecalls::Start(directory.path());
    windows.clear();
    EXPECT_EQ(filecalls::GetCalls(), std::vector<int>(5, 0)) << "of those that are stored";
    CfgCenter::Instance().SetStorePath(QString());
}

}  // namespace
