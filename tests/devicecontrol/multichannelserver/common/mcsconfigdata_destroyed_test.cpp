// SPDX-License-Identifier: Apache-2.0
// Whoever hears of a setting that is read may destroy the object that reads, or other settings.
#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>

#include <tests/devicecontrol/multichannelserver/common/fakecfg.h>
#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using treeaccess::Text;

/// A store whose content differs from what the object has, so that each setting is told of.
struct Setting {
    const char* key;
    const char* content;
};

const Setting Settings[] = {
    {"DeviceAddress", "elsewhere"},
    {"DeviceName", "West"},
    {"ConnectOnStartup", "false"},
    {"ForceConnect", "true"},
    {"NumberOfFreqChannels", "9"},
    {"MaxProtocolLevel", "12"},
    {"DefaultFrequencyForChannel", "5000000"},
    {"DefaultScanAveragingTimeIndex", "2"},
};

class DestroyedMCSConfigData : public testing::Test {
  protected:
    DestroyedMCSConfigData() {
        for (const Setting& setting : Settings)
            m_cfg.Put(Text(setting.key), Text(setting.content));
    }

    FakeCfg m_cfg;
    std::unique_ptr<values::Tree> m_tree = std::make_unique<values::Tree>();
    const QString m_basePath = Text("/Config");
    std::unique_ptr<MCSConfigData> m_config = std::make_unique<MCSConfigData>(&m_basePath, false);
    RecordingObserver m_observer;
};

class ReadingMCSConfigData : public DestroyedMCSConfigData, public testing::WithParamInterface<Setting> {
  protected:
    Observable* Observed() const {
        return m_tree->FindItem(Text("/Config/%1").arg(Text(GetParam().key)))->GetObservable();
    }
};

TEST_P(ReadingMCSConfigData, EndsWhereItIsDestroyed) {
    Observed()->AddObserver(&m_observer);
    m_observer.React([this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_config.reset();
    });
    m_config->ReadFrom(&m_cfg);
    EXPECT_EQ(m_config, nullptr);
    EXPECT_EQ(m_cfg.Content(Text("DeviceName")), Text("West"));
    Observed()->DeleteObserver(&m_observer);
}

// Those that the store is read for later.
TEST_P(ReadingMCSConfigData, GoesOnWithoutTheSettingsThatAreDestroyed) {
    Observed()->AddObserver(&m_observer);
    m_observer.React([this](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) m_tree.reset();
    });
    m_config->ReadFrom(&m_cfg);
    EXPECT_EQ(m_config->GetICfg(), &m_cfg);
    EXPECT_EQ(m_cfg.OpenSections(), 0);
}

INSTANTIATE_TEST_SUITE_P(, ReadingMCSConfigData, testing::ValuesIn(Settings),
                         [](const testing::TestParamInfo<Setting>& row) { return row.param.key; });

TEST_F(DestroyedMCSConfigData, AtTheEndOfReadingAndSaving) {
    m_config->AddObserver(&m_observer);
    m_observer.React([this](Observable*, TChangeCode) { m_config.reset(); });
    m_config->ReadFrom(&m_cfg);
    EXPECT_EQ(m_config, nullptr);

    m_config = std::make_unique<MCSConfigData>(&m_basePath, false);
    m_config->ReadFrom(&m_cfg);
    auto* const button = treeaccess::ValueAt<values::Value<bool>>(Text("/Config/SaveConfig"));
    RecordingObserver client([&](Observable*, TChangeCode) {
        if (!button->GetValue()) m_config.reset();
    });
    button->AddObserver(&client);
    m_config->TriggerSaveConfig();
    EXPECT_EQ(m_config, nullptr);
    EXPECT_FALSE(button->GetValue());
    button->DeleteObserver(&client);
}

}  // namespace
