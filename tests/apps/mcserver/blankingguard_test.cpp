// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/blankingguard.h>

#include <tests/apps/mcserver/requestsfixture.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>

#include <platform/values/node.h>
#include <platform/values/valueaccess.h>

#include <gmock/gmock.h>

#include <memory>

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
        guard = std::make_unique<BlankingGuard>(m_server->GetJobs(), m_clock);
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
    std::unique_ptr<BlankingGuard> guard;
};

TEST_F(BlankingGuardTest, RefusesAFrequencyThatIsBlankedAndSaysByWhichModuleAndInput) {
    AddModule(module, ThirdKeyed);
    EXPECT_EQ(TuneTo(Airband),
              QStringLiteral("refused: 121.5 MHz is blanked by module ADAM-6051-0, input 3"));
    EXPECT_EQ(TuneTo(Airband + 0.9),
              QStringLiteral("refused: 121.5 MHz is blanked by module ADAM-6051-0, input 3"));
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
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by module ADAM-6051-0, input 3"));
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
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by module ADAM-6051-0, input 3"));
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
    EXPECT_EQ(Answer(m_name), QStringLiteral("ended: 121.5 MHz is blanked by module Other-1, input 3"));
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

}  // namespace
