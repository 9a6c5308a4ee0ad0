// SPDX-License-Identifier: Apache-2.0
#include <apps/common/systemuser.h>
#include <apps/mcserver/suppression/blankingguard.h>
#include <apps/mcserver/suppression/suppressionduties.h>
#include <apps/mcserver/suppression/suppressionrecovery.h>

#include <tests/apps/mcserver/requestsfixture.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/values/node.h>
#include <platform/values/valueaccess.h>

#include <gmock/gmock.h>

#include <memory>
#include <optional>

using namespace std::chrono_literals;

namespace {

using testing::Contains;
using testing::HasSubstr;

constexpr double Airband = 121500000;     // Hz
constexpr double Marine = 156800000;      // Hz
constexpr int AllSilent = 0xfff;          // every input of twelve reads 1
constexpr int ThirdKeyed = 0xfff & ~0x8;  // input 3 reads 0

QString GtsPath() {
    return QStringLiteral("/ORVServer/GTS");
}

/// A server whose suppression has modules that the test plays, in the tree.
class BlankingGuardTest : public RequestsTest {
  protected:
    BlankingGuardTest() {
        Blanking::Instance();
        guard = std::make_unique<BlankingGuard>(m_server->GetJobs(), plant, m_clock);
    }
    ~BlankingGuardTest() override {
        guard.reset();
        Blanking::Instance()->FreeInstance();
    }

    /// A module whose input 3 has the air band assigned, complete before anybody hears of it.
    void AddModule(const QString& name, int inputs) {
        auto node = std::make_unique<values::Node>(name);
        auto* const levels = new values::ValueNumeric<int>(inputs, 0, 65535);
        levels->SetName(QStringLiteral("InputDiscretes"));
        std::unique_ptr<values::TreeItem> item(levels);
        node->AddChild(item);
        auto* const frequencies = new values::ValueList<double>;
        frequencies->SetName(QStringLiteral("FrequencyAssignments"));
        frequencies->SetItems({0, 0, 0, Airband});
        item.reset(frequencies);
        node->AddChild(item);
        std::unique_ptr<values::TreeItem> built(node.release());
        ASSERT_TRUE(m_tree.AddItem(GtsPath(), built));
    }
    void Read(const QString& name, int inputs) {
        auto* const levels = values::FindValue<values::ValueNumeric<int>>(
            GtsPath() + QLatin1Char('/') + name + QStringLiteral("/InputDiscretes"), nullptr, nullptr);
        ASSERT_NE(levels, nullptr);
        levels->SetValue(inputs);
        m_clock.Advance(0ms);
    }
    /// As modules go: first without frequencies, then out of the tree.
    void RemoveModule(const QString& name) {
        values::Node* const node = m_tree.FindNode(GtsPath() + QLatin1Char('/') + name);
        ASSERT_NE(node, nullptr);
        auto* const frequencies =
            dynamic_cast<values::ValueList<double>*>(node->FindChild(QStringLiteral("FrequencyAssignments")));
        ASSERT_NE(frequencies, nullptr);
        frequencies->SetItems({0, 0, 0, 0});
        m_tree.Delete(node);
        m_clock.Advance(0ms);
    }
    QString TuneTo(double hz) {
        EXPECT_EQ(Tune(m_peer, m_name, hz), QString());
        return Answer(m_name);
    }

    const QString module = QStringLiteral("ADAM-6051-0");
    SuppressionPlant plant;
    std::unique_ptr<BlankingGuard> guard;
};

TEST_F(BlankingGuardTest, RefusesAFrequencyThatIsBlankedAndSaysByWhichModuleAndInput) {
    AddModule(module, ThirdKeyed);
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("refused: 121.5 MHz is blanked by ADAM-6051-0, input 3"));
    EXPECT_EQ(TuneTo(Airband + 0.9), QStringLiteral("refused: 121.5 MHz is blanked by ADAM-6051-0, input 3"));
    EXPECT_EQ(TuneTo(Marine), QStringLiteral("done: tuned to 156.8 MHz"));
    EXPECT_EQ(TuneTo(Airband + 1), QStringLiteral("done: tuned to 121.500001 MHz"));
}

TEST_F(BlankingGuardTest, GrantsItAsSoonAsTheTransmitterIsSilent) {
    AddModule(module, ThirdKeyed);
    Read(module, AllSilent);
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done: tuned to 121.5 MHz"));
}

TEST_F(BlankingGuardTest, TakesTheFrequencyFromWhoHasItWhenTheTransmitterKeys) {
    AddModule(module, AllSilent);
    TuneTo(Airband);
    Read(module, ThirdKeyed);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by ADAM-6051-0, input 3"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 0);
}

TEST_F(BlankingGuardTest, LeavesWhoIsTunedElsewhereAlone) {
    AddModule(module, AllSilent);
    TuneTo(Marine);
    Read(module, ThirdKeyed);
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 156.8 MHz"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1);
}

TEST_F(BlankingGuardTest, LetsAnMpxOrvThatIgnoresItHaveTheFrequency) {
    AddModule(module, ThirdKeyed);
    Set(Dynamic(m_name, QStringLiteral("Blanking")), false);
    EXPECT_THAT(TakeLog(), Contains(m_name + QStringLiteral(" ignores the blanking")));
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done: tuned to 121.5 MHz"));
    Set(Dynamic(m_name, QStringLiteral("Blanking")), true);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by ADAM-6051-0, input 3"));
}

TEST_F(BlankingGuardTest, TellsWhoseSuppressionIsSwitchedOffByWhom) {
    AddModule(module, AllSilent);
    TuneTo(Airband);
    m_server->GetLog().SetLocalActor({ECode::AtServerWindow, {QStringLiteral("anna")}}, [] { return true; });
    Set(Dynamic(m_name, QStringLiteral("Blanking")), false);
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("ended: the protection by the ground transmitter suppression, taken "
                             "away by anna at the server's window"));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1) << "it stays tuned";
    Set(Dynamic(m_name, QStringLiteral("Blanking")), true);
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("done: the ground transmitter suppression holds again, by anna at the "
                             "server's window"));
    Set(Dynamic(m_name, QStringLiteral("Blanking")), false);
    Read(module, ThirdKeyed);
    Set(Dynamic(m_name, QStringLiteral("Blanking")), true);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by ADAM-6051-0, input 3"));
    m_server->GetLog().SetLocalActor(CodedText(), nullptr);
}

TEST_F(BlankingGuardTest, KeepsItFromOneMpxOrvWhileAnotherIgnoresIt) {
    AddModule(module, ThirdKeyed);
    const VtPeer other = OtherMpxOrv(m_other);
    Set(Dynamic(m_other, QStringLiteral("Blanking")), false);
    EXPECT_EQ(Tune(other, m_other, Airband), QString());
    EXPECT_EQ(Answer(m_other), QStringLiteral("done: tuned to 121.5 MHz"));
    EXPECT_THAT(TuneTo(Airband).toStdString(), HasSubstr("refused: 121.5 MHz is blanked"));
}

TEST_F(BlankingGuardTest, ForgetsAModuleThatGoes) {
    AddModule(module, ThirdKeyed);
    RemoveModule(module);
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done: tuned to 121.5 MHz"));
    AddModule(QStringLiteral("Other-1"), ThirdKeyed);
    m_clock.Advance(0ms);
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by Other-1, input 3"));
}

TEST_F(BlankingGuardTest, StandsThatTheSuppressionGoesFirst) {
    AddModule(module, ThirdKeyed);
    m_tree.Delete(m_tree.FindNode(GtsPath()));
    EXPECT_EQ(TuneTo(Marine), QStringLiteral("done: tuned to 156.8 MHz"));
}

TEST_F(BlankingGuardTest, LetsNobodyPlayAModule) {
    AddModule(module, AllSilent);
    const QString path = GtsPath() + QLatin1Char('/') + module + QStringLiteral("/InputDiscretes");
    QString reason;
    EXPECT_FALSE(m_access->MayWrite(m_peer, path, &reason));
    EXPECT_EQ(reason, QStringLiteral("only the server writes this"));
    EXPECT_FALSE(m_access->MayCreate(m_peer, GtsPath() + QStringLiteral("/New"), &reason));
    EXPECT_EQ(reason, QStringLiteral("what is below /ORVServer is the server's own"));
}

/// The same with a module of the plant, whose fortune the test decides.
class BlankingByThePlant : public BlankingGuardTest {
  protected:
    BlankingByThePlant() {
        real.SetFrequency(3, Airband);
        plant.Add(real.GetPlantModule());
    }
    ~BlankingByThePlant() override { guard.reset(); }
    void Read(unsigned long inputs) {
        real.SlotOnInputDiscretesChanged(12, inputs);
        real.SlotOnConnectionEstablished();
        m_clock.Turn();
    }
    void Lose() {
        real.SlotOnConnectionError(111, QStringLiteral("Connection refused"));
        m_clock.Turn();
    }

    DataModule real{nullptr, 0, QStringLiteral("ADAM-6051"), QStringLiteral("10.0.0.1"), PollInterval(100)};
};

struct Named {
    const char* name;
    const char* module;
    const char* input;
    const char* told;
};
class ANamedInput : public BlankingByThePlant, public testing::WithParamInterface<Named> {};

TEST_P(ANamedInput, IsCalledSoWhenItBlanks) {
    plant.SetName(module, QLatin1String(GetParam().module));
    plant.SetLabel(module, 3, QLatin1String(GetParam().input));
    Read(ThirdKeyed);
    EXPECT_EQ(TuneTo(Airband),
              QStringLiteral("refused: 121.5 MHz is blanked by ") + QLatin1String(GetParam().told));
}

INSTANTIATE_TEST_SUITE_P(Names, ANamedInput,
                         testing::Values(Named{"ByNumber", "", "", "ADAM-6051 1, input 3"},
                                         Named{"ByTheModulesName", "Tower mast", "", "Tower mast, input 3"},
                                         Named{"ByItsOwnName", "", "Tower 1", "ADAM-6051 1, input Tower 1"},
                                         Named{"ByBoth", "Tower mast", "Tower 1",
                                               "Tower mast, input Tower 1"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(BlankingByThePlant, SaysThatNobodyWatchesTheFrequencyOfALostModule) {
    Read(AllSilent);
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done: tuned to 121.5 MHz"));
    Lose();
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done, not supervised: tuned to 121.5 MHz"));
    EXPECT_EQ(TuneTo(Airband + 0.5), QStringLiteral("done, not supervised: tuned to 121.5000005 MHz"));
    EXPECT_EQ(TuneTo(Marine), QStringLiteral("done: tuned to 156.8 MHz"));
}

TEST_F(BlankingByThePlant, SaysSoAlsoIfAnotherModuleWatchesAnotherTransmitterOfThatFrequency) {
    DataModule other(nullptr, 1, QStringLiteral("ADAM-6051"), QStringLiteral("10.0.0.2"), PollInterval(100));
    other.SetFrequency(0, Airband);
    plant.Add(other.GetPlantModule());
    Lose();
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done, not supervised: tuned to 121.5 MHz"));
    other.SlotOnInputDiscretesChanged(12, AllSilent);
    other.SlotOnConnectionEstablished();
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done, not supervised: tuned to 121.5 MHz"));
    Read(AllSilent);
    EXPECT_EQ(TuneTo(Airband), QStringLiteral("done: tuned to 121.5 MHz"));
}

/// The same beside all else that the server makes of the suppression.
class SupervisionThatEnds : public BlankingByThePlant {
  protected:
    SupervisionThatEnds() {
        guard.reset();
        duties.emplace(plant, recovery, m_server->GetJobs(), m_server->GetLog(), m_clock);
        Read(AllSilent);
        EXPECT_EQ(TuneTo(Airband), QStringLiteral("done: tuned to 121.5 MHz"));
    }
    ~SupervisionThatEnds() override { duties.reset(); }
    QString TakenAway() const {
        return QStringLiteral("ended: the supervision of 121.5 MHz, taken away by %1 at the server's window")
            .arg(SystemUser());
    }

    SuppressionRecovery recovery;
    std::optional<SuppressionDuties> duties;
};

TEST_F(SupervisionThatEnds, IsToldToWhoIsTunedThereAndStaysSo) {
    plant.Remove(real.GetPlantModule());
    m_clock.Turn();
    EXPECT_EQ(Answer(m_name), TakenAway());
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1);
}

TEST_F(SupervisionThatEnds, IsToldToComeBack) {
    plant.SetFrequency(module, 3, Marine);
    m_clock.Turn();
    ASSERT_EQ(Answer(m_name), TakenAway());
    plant.SetFrequency(module, 3, Airband);
    m_clock.Turn();
    EXPECT_EQ(Answer(m_name),
              QStringLiteral("done: 121.5 MHz is to be supervised, by %1 at the server's window")
                  .arg(SystemUser()));
    EXPECT_EQ(Count(QStringLiteral("UsedFreqChannels")), 1);
}

TEST_F(SupervisionThatEnds, IsToldLikewiseWhereTheInputLosesItsFrequency) {
    plant.SetFrequency(module, 3, Marine);
    m_clock.Turn();
    EXPECT_EQ(Answer(m_name), TakenAway());
}

TEST_F(SupervisionThatEnds, IsNotToldWhereAnotherModuleHasTheFrequency) {
    DataModule other(nullptr, 1, QStringLiteral("ADAM-6051"), QStringLiteral("10.0.0.2"), PollInterval(100));
    other.SetFrequency(0, Airband + 0.5);
    plant.Add(other.GetPlantModule());
    m_clock.Turn();
    plant.Remove(real.GetPlantModule());
    m_clock.Turn();
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 121.5 MHz"));
    plant.Remove(other.GetPlantModule());
    m_clock.Turn();
    EXPECT_EQ(Answer(m_name), TakenAway());
}

TEST_F(SupervisionThatEnds, IsNotToldToWhoIsTunedElsewhere) {
    EXPECT_EQ(TuneTo(Marine), QStringLiteral("done: tuned to 156.8 MHz"));
    plant.Remove(real.GetPlantModule());
    m_clock.Turn();
    EXPECT_EQ(Answer(m_name), QStringLiteral("done: tuned to 156.8 MHz"));
}

TEST_F(BlankingByThePlant, TellsAWitnessWhoWasBlanked) {
    QStringList seen;
    guard->SetWitness([&seen](const BlankingSource& source, const QString& mpxOrv) {
        seen << QStringLiteral("%1/%2 %3").arg(source.module, QString::number(source.input), mpxOrv);
    });
    Read(AllSilent);
    TuneTo(Airband);
    EXPECT_EQ(seen, QStringList());
    Read(ThirdKeyed);
    EXPECT_EQ(seen, QStringList{QStringLiteral("ADAM-6051-0/3 ") + m_name});
}

}  // namespace
