// SPDX-License-Identifier: Apache-2.0
// What saving the configuration asks of the system.
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/values/tree.h>

#include <tests/support/filecalls_glibc.h>
#include <tests/support/printing.h>

#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

class SavesOfMCSConfigData : public testing::Test {
  protected:
    SavesOfMCSConfigData() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("server.ini")));
        m_root.reset(CfgCenter::Instance().OpenRoot());
        // The sections that a server makes before it reads.
        const std::unique_ptr<ICfg> dynamic(m_root->ProvideSection(QStringLiteral("DynamicMpxORVs")));
        const std::unique_ptr<ICfg> policy(dynamic->ProvideSection(QStringLiteral("Policy")));
    }
    ~SavesOfMCSConfigData() override {
        m_root.reset();
        CfgCenter::Instance().SetStorePath(QString());
    }
    /// Expects \a action to take one lock, one read, one write, one rename and one wait for the medium.
    template <class Action>
    void ExpectOneTransaction(const char* what, Action action) {
        filecalls::Start(m_directory.path());
        action();
        EXPECT_EQ(filecalls::GetCalls(), filecalls::OneTransaction) << what;
    }

    QTemporaryDir m_directory;
    std::unique_ptr<ICfg> m_root;
    values::Tree m_tree;
    MCSConfigData m_config{nullptr, false};
};

TEST_F(SavesOfMCSConfigData, AreOneTransactionEach) {
    ExpectOneTransaction("reading, which writes the missing keys",
                         [this] { m_config.ReadFrom(m_root.get()); });
    ExpectOneTransaction("a default that saves itself",
                         [this] { m_config.SetDefaultFrequencyForChannels(5000000.0); });
    ExpectOneTransaction("the other", [this] { m_config.SetDefaultScanAveragingTime(1); });
    m_config.SetDeviceName(QStringLiteral("West"));
    m_config.SetNumberOfFreqChannels(9);
    ExpectOneTransaction("the button", [this] { m_config.TriggerSaveConfig(); });
    m_config.SetDeviceName(QStringLiteral("East"));
    m_config.SetGuiVisible(false);
    ExpectOneTransaction("writing all", [this] { m_config.WriteTo(m_root.get()); });
}

}  // namespace
