// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/moduleentry.h>
#include <devicecontrol/multichannelserver/common/windowplacement.h>

#include <platform/app/idllinstance.h>
#include <platform/config/cfgcenter.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QWidget>

#include <memory>

namespace {

TEST(ModuleEntry, ACommitOfTheModuleStoresThePlacementsOfWindows) {
    const QTemporaryDir directory;
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("test.ini")));
    QWidget window;
    window.setGeometry(31, 32, 333, 334);
    new WindowPlacement(QStringLiteral("Main"), &window, nullptr);
    IDllInstance* const instance = ARCreateEx(L"argument");
    ASSERT_NE(instance, nullptr);
    instance->CommitData();
    {
        const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
        const std::unique_ptr<ICfg> section(root->OpenSection(QStringLiteral("Main")));
        ASSERT_NE(section, nullptr);
        EXPECT_EQ(section->ReadInt(QStringLiteral("w"), 0), 333);
    }
    ARDestroy(instance);
    CfgCenter::Instance().SetStorePath(QString());
}

}  // namespace
