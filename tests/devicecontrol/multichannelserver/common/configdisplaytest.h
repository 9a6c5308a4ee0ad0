// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcsconfigdata.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>

#include <platform/widgets/vccheckbox.h>
#include <platform/widgets/vccomboboxclassic.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <tests/devicecontrol/multichannelserver/common/displaytest.h>
#include <tests/support/waituntil.h>

#include <memory>
#include <vector>

/// A configuration display over a tree, and its fields as a person sees them.
class ConfigDisplayOverTree : public testing::Test {
  protected:
    using Texts = std::vector<QString>;
    static constexpr auto both = MCSConfigDisplay::BootConfigGroup | MCSConfigDisplay::JobConfigGroup;

    ConfigDisplayOverTree() { displaytest::Attachments().clear(); }

    MCSConfigData& Config() { return Config(path); }
    MCSConfigData& Config(const QString& base) {
        m_configs.push_back(std::make_unique<MCSConfigData>(&base, false));
        return *m_configs.back();
    }
    VCLineEdit& Address() const { return displaytest::Child<VCLineEdit>(*m_display, "deviceAdressDisp"); }
    VCLineEdit& Name() const { return displaytest::Child<VCLineEdit>(*m_display, "deviceNameDisp"); }
    VCCheckBox& OnStartup() const {
        return displaytest::Child<VCCheckBox>(*m_display, "connectOnStartUpDisp");
    }
    VCCheckBox& Force() const { return displaytest::Child<VCCheckBox>(*m_display, "forceConnectDisp"); }
    VCNumericFloatSpin& Channels() const {
        return displaytest::Child<VCNumericFloatSpin>(*m_display, "numberOfFreqChannelDisp");
    }
    VCComboBoxClassic& Time() const {
        return displaytest::Child<VCComboBoxClassic>(*m_display, "defaultScanAveragingTime");
    }
    /// All that can be read in the fields, from top to bottom.
    Texts Shown() const {
        RefreshScheduler::Instance().Flush();
        const auto checked = [](const QCheckBox& box) {
            return displaytest::Text(box.isChecked() ? "x" : "o");
        };
        return {Name().text(),    Address().text(),  checked(OnStartup()),
                checked(Force()), Channels().text(), Time().currentText()};
    }
    void Activate() {
        m_display->show();
        QApplication::setActiveWindow(m_display.get());
        ASSERT_TRUE(WaitUntil([this] { return m_display->isActiveWindow(); }));
    }
    QString At(const char* key) const {
        return treeaccess::ContentAt(path + QLatin1Char('/') + displaytest::Text(key));
    }

    const QString path = displaytest::Text("/MultiChannelServer/Config");
    values::Tree m_tree;
    std::vector<std::unique_ptr<MCSConfigData>> m_configs;
    std::unique_ptr<MCSConfigDisplay> m_display = std::make_unique<MCSConfigDisplay>(both);
};
