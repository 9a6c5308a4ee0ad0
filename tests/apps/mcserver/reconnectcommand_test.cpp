// SPDX-License-Identifier: Apache-2.0
// What the command that connects modules anew says that it did.
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/modulechanges.h>
#include <apps/mcserver/suppression/reconnectcommand.h>

#include <apps/common/event.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QTreeWidget>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

class AReconnectCommand : public testing::Test {
  protected:
    AReconnectCommand() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
        for (const char* const name : {"Tower mast", "Apron", "Hill"}) {
            const auto index = static_cast<int>(m_modules.size());
            m_modules.push_back(std::make_unique<DataModule>(&m_rows, index));
            DataModule& module = *m_modules.back();
            module.Configure(QStringLiteral("ADAM-6051"), QStringLiteral("256.0.0.1"), PollInterval(100));
            m_plant.Add(module.GetPlantModule());
            m_plant.SetName(QStringLiteral("ADAM-6051-%1").arg(index), QString::fromLatin1(name));
        }
        m_changes.emplace(m_plant, m_log, m_clock);
        m_command.emplace(m_plant, m_log, *m_changes);
    }
    ~AReconnectCommand() override {
        m_command.reset();
        for (const auto& module : m_modules) {
            module->Disconnect();
            m_plant.Remove(module->GetPlantModule());
        }
        CfgCenter::Instance().SetStorePath(QString());
    }

    void Lose(std::size_t module) { m_modules[module]->SlotOnConnectionError(1, QStringLiteral("x")); }
    void SwitchOff(std::size_t module) {
        m_modules[module]->Connect();
        m_modules[module]->Disconnect();
    }
    /// Gives the command, and says what it told.
    std::string Reconnect() {
        auto* const button =
            values::FindValue<values::Value<bool>>(ReconnectCommand::Path(), nullptr, nullptr);
        button->SetValue(true);
        EXPECT_FALSE(button->GetValue());
        const std::optional<Event> event = Event::FromJson(m_log.GetJournal().GetEntries().back().json);
        return event ? event->text.toStdString() : std::string();
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    ManualClock m_clock;
    MCSStatus m_status{QStringLiteral("/Status")};
    ServerLog m_log{m_status, m_clock, [](const QString&) {}};
    SuppressionPlant m_plant;
    QTreeWidget m_rows;
    std::vector<std::unique_ptr<DataModule>> m_modules;
    std::optional<ModuleChanges> m_changes;
    std::optional<ReconnectCommand> m_command;
};

TEST_F(AReconnectCommand, NamesTheModulesThatItConnects) {
    Lose(0);
    Lose(2);
    EXPECT_EQ(Reconnect(), "data modules in error are connected anew: Tower mast, Hill");
}

TEST_F(AReconnectCommand, NamesTheClientThatGaveIt) {
    SwitchOff(1);
    Lose(0);
    m_log.SetActor({ECode::PeerOnMachine,
                    {QStringLiteral("mcconsole"), QStringLiteral("t1"), QStringLiteral("10.0.0.5:50000")}});
    EXPECT_EQ(Reconnect(),
              "data modules in error are connected anew: Tower mast, by mcconsole on t1 (10.0.0.5:50000); "
              "disconnected by hand, and stay so: Apron");
}

TEST_F(AReconnectCommand, SaysThatNoneIsInError) {
    EXPECT_EQ(Reconnect(), "no data module is in error");
}

TEST_F(AReconnectCommand, NamesThoseThatStayDisconnected) {
    SwitchOff(1);
    EXPECT_EQ(Reconnect(), "no data module is in error; disconnected by hand, and stay so: Apron");
    Lose(0);
    EXPECT_EQ(
        Reconnect(),
        "data modules in error are connected anew: Tower mast; disconnected by hand, and stay so: Apron");
}

}  // namespace
