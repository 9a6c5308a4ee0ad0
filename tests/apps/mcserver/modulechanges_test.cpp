// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/log/serverlog.h>
#include <apps/mcserver/suppression/modulechanges.h>

#include <apps/common/event.h>
#include <apps/common/systemuser.h>

#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>
#include <devicecontrol/multichannelserver/common/mcsstatus.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtWidgets/QTreeWidget>

#include <optional>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AChangeOfModules : public testing::Test {
  protected:
    AChangeOfModules() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
        m_module.Configure(QStringLiteral("ADAM-6051"), QStringLiteral("127.0.0.1"), PollInterval(100));
        m_plant.Add(m_module.GetPlantModule());
        m_changes.emplace(m_plant, m_log, m_clock);
    }
    ~AChangeOfModules() override {
        m_changes.reset();
        m_plant.Remove(m_module.GetPlantModule());
        CfgCenter::Instance().SetStorePath(QString());
    }

    /// What was told since the last time, without who did it, which stands at the end of each.
    std::vector<std::string> Told() {
        m_clock.Turn();
        std::vector<std::string> told;
        for (const EventJournal::Entry& entry : m_log.GetJournal().GetEntries()) {
            if (entry.number <= m_last) continue;
            m_last = entry.number;
            const std::optional<Event> event = Event::FromJson(entry.json);
            EXPECT_TRUE(event && event->source == QLatin1String("suppression"));
            const QString by = QStringLiteral(", by ") + m_who;
            EXPECT_EQ(event->who, m_who);
            EXPECT_TRUE(event->text.endsWith(by)) << event->text.toStdString();
            told.push_back(event->text.left(event->text.size() - by.size()).toStdString());
        }
        return told;
    }

    static QString Node() { return QStringLiteral("ADAM-6051-0"); }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    ManualClock m_clock;
    MCSStatus m_status{QStringLiteral("/Status")};
    std::vector<QString> m_lines;
    ServerLog m_log{m_status, m_clock, [this](const QString& line) { m_lines.push_back(line); }};
    SuppressionPlant m_plant;
    QTreeWidget m_rows;
    DataModule m_module{&m_rows, 0};
    std::optional<ModuleChanges> m_changes;
    QString m_who = SystemUser() + QStringLiteral(" at the server's window");
    qint64 m_last = 0;
};

TEST_F(AChangeOfModules, IsNoneWhereNobodyDidAnything) {
    m_module.RefreshTree();
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(AChangeOfModules, TellsWhichComesAndWhichGoes) {
    {
        DataModule other(&m_rows, 1);
        other.Configure(QStringLiteral("ADAM-6051"), QStringLiteral("10.0.0.8"), PollInterval(100));
        m_plant.Add(other.GetPlantModule());
        EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 2 at 10.0.0.8 is added"));
        m_plant.Remove(other.GetPlantModule());
    }
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 2 at 10.0.0.8 is deleted"));
}

TEST_F(AChangeOfModules, TellsWhichFrequenciesGoWithAModule) {
    DataModule other(&m_rows, 1);
    other.Configure(QStringLiteral("ADAM-6051"), QStringLiteral("10.0.0.8"), PollInterval(100));
    m_plant.Add(other.GetPlantModule());
    other.SetFrequency(3, 121.5e6);
    other.SetFrequency(11, 243e6);
    Told();
    m_plant.Remove(other.GetPlantModule());
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 2 at 10.0.0.8 is deleted with its frequencies "
                                    "121.5 MHz, 243 MHz"));
}

TEST_F(AChangeOfModules, TellsWhatIsSetFromWhatToWhat) {
    m_plant.SetName(Node(), QStringLiteral("Mast"));
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1: its name is changed from nothing to Mast"));
    m_plant.SetFrequency(Node(), 3, 121.5e6);
    m_plant.SetLabel(Node(), 3, QStringLiteral("Tower 1"));
    EXPECT_THAT(
        Told(),
        ElementsAre("data module Mast: the name of input 3 is changed from nothing to Tower 1",
                    "data module Mast: the frequency of input 3 is changed from nothing to 121.5 MHz"));
    m_plant.SetFrequency(Node(), 3, 118.1e6);
    m_plant.SetFrequency(Node(), 3, 121.5e6);
    EXPECT_THAT(Told(), IsEmpty()) << "at last it is as it was";
    m_plant.SetFrequency(Node(), 3, 0.0);
    EXPECT_THAT(
        Told(),
        ElementsAre("data module Mast: the frequency of input 3 is changed from 121.5 MHz to nothing"));
}

TEST_F(AChangeOfModules, TellsWhoDisconnectsAndWhoConnectsAnew) {
    m_module.Connect();
    Told();
    m_module.Disconnect();
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1 at 127.0.0.1 is disconnected"));
    m_plant.ConnectModule(Node());
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1 at 127.0.0.1 is connected anew"));
    m_module.Disconnect();
    Told();
}

TEST_F(AChangeOfModules, TellsAClientThatDoesItByTheNetwork) {
    m_module.Connect();
    m_module.Disconnect();
    Told();
    m_who = QStringLiteral("mcconsole on t1 (10.0.0.5:50000)");
    m_log.SetActor({ECode::PeerOnMachine,
                    {QStringLiteral("mcconsole"), QStringLiteral("t1"), QStringLiteral("10.0.0.5:50000")}});
    m_plant.ConnectModule(Node());
    m_log.SetActor({});
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1 at 127.0.0.1 is connected anew"));
    m_who = SystemUser() + QStringLiteral(" at the server's window");
    m_module.Disconnect();
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1 at 127.0.0.1 is disconnected"));
}

TEST_F(AChangeOfModules, TellsTheClientThatHadALostModuleConnectedWhenItAnswersAtLast) {
    const auto lose = [this] {
        m_module.Connect();
        m_module.SlotOnConnectionError(111, QStringLiteral("Connection refused"));
    };
    lose();
    Told();
    m_log.SetActor({ECode::PeerOnMachine,
                    {QStringLiteral("mcconsole"), QStringLiteral("t1"), QStringLiteral("10.0.0.5:50000")}});
    m_changes->NoteReconnect();
    m_log.SetActor({});
    EXPECT_THAT(Told(), IsEmpty()) << "it does not answer yet";
    m_module.Connect();
    m_module.SlotOnConnectionEstablished();
    m_who = QStringLiteral("mcconsole on t1 (10.0.0.5:50000)");
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1 at 127.0.0.1 is connected anew"));
    m_module.Disconnect();
    m_who = SystemUser() + QStringLiteral(" at the server's window");
    EXPECT_THAT(Told(), ElementsAre("data module ADAM-6051 1 at 127.0.0.1 is disconnected"));
}

TEST_F(AChangeOfModules, IsNoLineOfTheLog) {
    m_plant.SetName(Node(), QStringLiteral("Mast"));
    Told();
    EXPECT_THAT(m_lines, IsEmpty());
}

}  // namespace
