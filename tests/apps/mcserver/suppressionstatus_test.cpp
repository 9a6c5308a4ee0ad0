// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionstatus.h>

#include <apps/pages/suppressionkeys.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>
#include <devicecontrol/multichannelserver/common/gts/datamodule.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/doubles/manualclock.h>
#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QTreeWidget>

#include <memory>
#include <optional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double Airband = 121500000;  // Hz
constexpr double Marine = 156800000;   // Hz
constexpr unsigned long AllSilent = 0xfff;
constexpr unsigned long ThirdKeyed = 0xfff & ~0x8UL;

/// What consoles see of modules whose fortunes the test decides; no network.
class SuppressionStatusTest : public testing::Test {
  protected:
    SuppressionStatusTest() {
        CfgCenter::Instance().SetStorePath(m_directory.filePath(QStringLiteral("test.ini")));
        Blanking::Instance();
        m_plant.emplace();
        AddModule(0, Airband);
        m_status.emplace(&*m_plant, m_clock);
    }
    ~SuppressionStatusTest() override {
        m_status.reset();
        m_modules.clear();
        m_plant.reset();
        Blanking::Instance()->FreeInstance();
        CfgCenter::Instance().SetStorePath(QString());
    }

    /// Of twelve inputs, of which the one with the number 3 has the frequency \a hz.
    DataModule& AddModule(int index, double hz) {
        m_modules.push_back(std::make_unique<DataModule>(&m_rows, index, QStringLiteral("ADAM-6051"),
                                                         QStringLiteral("10.0.0.%1").arg(index + 1),
                                                         PollInterval(100)));
        DataModule& module = *m_modules.back();
        module.SetFrequency(3, hz);
        m_plant->Add(module.GetPlantModule());
        return module;
    }
    DataModule& First() { return *m_modules.front(); }
    void Read(DataModule& module, unsigned long inputs) {
        module.SlotOnInputDiscretesChanged(12, inputs);
        module.SlotOnConnectionEstablished();
        m_clock.Turn();
    }
    void Lose(DataModule& module) {
        module.SlotOnConnectionError(111, QStringLiteral("Connection refused"));
        m_clock.Turn();
    }

    static QString Path(const QString& below) {
        return suppressionkeys::NodePath() + QLatin1Char('/') + below;
    }
    static QString Text(const char* below) {
        const auto* const value =
            values::FindValue<values::Value<QString>>(Path(QLatin1String(below)), nullptr, nullptr);
        return value != nullptr ? value->GetValue() : QStringLiteral("(nothing)");
    }
    template <class V>
    static V* Find(const char* below) {
        return dynamic_cast<V*>(values::Tree::Instance()->FindItem(Path(QLatin1String(below))));
    }
    static int Count(const char* below) { return Find<values::Value<int>>(below)->GetValue(); }
    static bool IsKeyed(const char* input) {
        return Find<values::Value<bool>>((QByteArray(input) + "/Keyed").constData())->GetValue();
    }
    static std::vector<double> List(const char* below) {
        return Find<values::ValueList<double>>(below)->GetItems();
    }
    static std::vector<double> Keyed() { return List("KeyedFrequencies"); }
    static std::vector<double> Unsupervised() { return List("UnsupervisedFrequencies"); }
    static bool IsTime(const QString& text) {
        static const QRegularExpression time(
            QStringLiteral("^20\\d\\d-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z$"));
        return time.match(text).hasMatch();
    }

    QTemporaryDir m_directory;
    values::Tree m_tree;
    ManualClock m_clock;
    QTreeWidget m_rows;
    std::optional<SuppressionPlant> m_plant;
    std::vector<std::unique_ptr<DataModule>> m_modules;
    std::optional<SuppressionStatus> m_status;
};

TEST_F(SuppressionStatusTest, TellsWhatAModuleIs) {
    EXPECT_EQ(Count("ModuleCount"), 1);
    EXPECT_EQ(Text("Modules/0/Name"), QStringLiteral("ADAM-6051 1"));
    EXPECT_EQ(Text("Modules/0/Type"), QStringLiteral("ADAM-6051"));
    EXPECT_EQ(Text("Modules/0/Address"), QStringLiteral("10.0.0.1"));
    EXPECT_EQ(Count("Modules/0/PollInterval"), 100);
    EXPECT_EQ(Text("Modules/0/Inputs/11/Name"), QStringLiteral("DI 11"));
    EXPECT_EQ(Text("Modules/0/Inputs/12/Name"), QStringLiteral("(nothing)"));
    EXPECT_EQ(Find<values::ValueNumeric<double>>("Modules/0/Inputs/3/Frequency")->GetValue(), Airband);
}

TEST_F(SuppressionStatusTest, CallsAnInputAsItsLabelSays) {
    m_plant->SetLabel(QStringLiteral("ADAM-6051-0"), 3, QStringLiteral("Tower 1"));
    m_clock.Turn();
    EXPECT_EQ(Text("Modules/0/Inputs/3/Name"), QStringLiteral("Tower 1"));
    EXPECT_EQ(Text("Modules/0/Inputs/4/Name"), QStringLiteral("DI 4"));
}

TEST_F(SuppressionStatusTest, CountsAModuleThatHasNotAnsweredYetAsNotWatching) {
    EXPECT_EQ(Count("AnsweringModules"), 0);
    EXPECT_EQ(Text("Modules/0/State"), QStringLiteral("Disconnected"));
    EXPECT_THAT(Unsupervised(), ElementsAre(Airband));
    EXPECT_FALSE(IsKeyed("Modules/0/Inputs/3"));
}

TEST_F(SuppressionStatusTest, TellsWhichTransmitterIsKeyed) {
    Read(First(), ThirdKeyed);
    EXPECT_EQ(Count("AnsweringModules"), 1);
    EXPECT_EQ(Text("Modules/0/State"), QStringLiteral("Connected"));
    EXPECT_THAT(Keyed(), ElementsAre(Airband));
    EXPECT_THAT(Unsupervised(), IsEmpty());
    EXPECT_TRUE(IsKeyed("Modules/0/Inputs/3"));
    EXPECT_PRED1(IsTime, Text("Modules/0/Inputs/3/KeyedSince"));
    EXPECT_FALSE(IsKeyed("Modules/0/Inputs/4"));
    Read(First(), AllSilent);
    EXPECT_THAT(Keyed(), IsEmpty());
    EXPECT_FALSE(IsKeyed("Modules/0/Inputs/3"));
    EXPECT_EQ(Text("Modules/0/Inputs/3/KeyedSince"), QString());
}

TEST_F(SuppressionStatusTest, TellsWhatNobodyWatchesWhenAModuleIsLost) {
    Read(First(), ThirdKeyed);
    Lose(First());
    EXPECT_EQ(Text("Modules/0/State"), QStringLiteral("Error"));
    EXPECT_EQ(Text("Modules/0/Reason"), QStringLiteral("Connection refused (111)"));
    EXPECT_PRED1(IsTime, Text("Modules/0/StateSince"));
    EXPECT_EQ(Count("AnsweringModules"), 0);
    EXPECT_THAT(Keyed(), IsEmpty());
    EXPECT_THAT(Unsupervised(), ElementsAre(Airband));
    EXPECT_FALSE(IsKeyed("Modules/0/Inputs/3"));
    Read(First(), AllSilent);
    EXPECT_EQ(Text("Modules/0/Reason"), QString());
    EXPECT_THAT(Unsupervised(), IsEmpty());
}

TEST_F(SuppressionStatusTest, TellsOfAnotherReasonToo) {
    Lose(First());
    First().SlotOnConnectionError(110, QStringLiteral("Connection timed out"));
    m_clock.Turn();
    EXPECT_EQ(Text("Modules/0/Reason"), QStringLiteral("Connection timed out (110)"));
}

struct SecondModule {
    const char* name;
    double hz;
    bool isLive;
    std::vector<double> unsupervised;
};
void PrintTo(const SecondModule& row, std::ostream* out) {
    *out << row.name;
}
class BesideALostModule : public SuppressionStatusTest, public testing::WithParamInterface<SecondModule> {};

TEST_F(SuppressionStatusTest, AModuleThatIsDisconnectedByHandDoesNotCountWhereAnotherWatches) {
    DataModule& second = AddModule(1, Airband);
    Read(First(), AllSilent);
    Read(second, AllSilent);
    First().Connect();
    First().Disconnect();
    m_clock.Turn();
    EXPECT_THAT(Unsupervised(), IsEmpty());
    Lose(second);
    m_clock.Turn();
    EXPECT_THAT(Unsupervised(), ElementsAre(Airband));
}

TEST_P(BesideALostModule, AnotherWatchesAnotherTransmitter) {
    DataModule& second = AddModule(1, GetParam().hz);
    Lose(First());
    if (GetParam().isLive) Read(second, AllSilent);
    m_clock.Turn();
    EXPECT_EQ(Unsupervised(), GetParam().unsupervised);
}

const SecondModule SecondModules[] = {
    {"ALiveOneWithTheSame", Airband, true, {Airband}},
    {"ALiveOneWithTheSameWholeHertz", Airband + 0.5, true, {Airband}},
    {"ALiveOneWithAnother", Marine, true, {Airband}},
    {"ALiveOneWithNone", 0.0, true, {Airband}},
    {"ALostOneWithTheSame", Airband, false, {Airband}},
    {"ALostOneWithAnother", Marine, false, {Airband, Marine}},
};
INSTANTIATE_TEST_SUITE_P(Modules, BesideALostModule, testing::ValuesIn(SecondModules),
                         [](const auto& row) { return row.param.name; });

TEST_F(SuppressionStatusTest, GivesNoModuleTheNumberOfOneThatWent) {
    AddModule(1, Marine);
    m_clock.Turn();
    EXPECT_EQ(Text("Modules/1/Name"), QStringLiteral("ADAM-6051 2"));
    m_modules.pop_back();
    m_clock.Turn();
    EXPECT_EQ(Text("Modules/1/Name"), QStringLiteral("(nothing)"));
    AddModule(1, Marine);
    m_clock.Turn();
    EXPECT_EQ(Text("Modules/2/Name"), QStringLiteral("ADAM-6051 2"));
    EXPECT_EQ(Count("ModuleCount"), 2);
}

TEST_F(SuppressionStatusTest, HasTheInputsOfAnotherType) {
    First().Configure(QStringLiteral("Other"), QString(), PollInterval(50));
    m_clock.Turn();
    EXPECT_EQ(Text("Modules/0/Name"), QStringLiteral("Other 1"));
    EXPECT_EQ(Text("Modules/0/Inputs/5/Name"), QStringLiteral("DI 5"));
    EXPECT_EQ(Text("Modules/0/Inputs/6/Name"), QStringLiteral("(nothing)"));
    EXPECT_THAT(Unsupervised(), IsEmpty());
}

TEST_F(SuppressionStatusTest, SaysWhoWasBlanked) {
    m_status->NoteBlanked(QStringLiteral("ADAM-6051-0"), 3, QStringLiteral("mast-north"));
    EXPECT_EQ(Text("Modules/0/Inputs/3/LastBlanked"), QStringLiteral("mast-north"));
    EXPECT_EQ(Text("Modules/0/Inputs/4/LastBlanked"), QString());
}

TEST_F(SuppressionStatusTest, StandsThatABlankedInputIsNotThereAnyMore) {
    m_status->NoteBlanked(QStringLiteral("ADAM-6051-7"), 3, QStringLiteral("mast-north"));
    m_status->NoteBlanked(QStringLiteral("ADAM-6051-0"), 99, QStringLiteral("mast-north"));
    EXPECT_EQ(Text("Modules/0/Inputs/3/LastBlanked"), QString());
}

TEST_F(SuppressionStatusTest, SetsNothingWhileNothingChanges) {
    Read(First(), ThirdKeyed);
    RecordingObserver observer;
    for (const char* const below :
         {"AnsweringModules", "KeyedFrequencies", "UnsupervisedFrequencies", "Modules/0/State",
          "Modules/0/StateSince", "Modules/0/Inputs/3/KeyedSince", "Modules/0/Inputs/3/Keyed"})
        Find<values::ValueBase>(below)->AddObserver(&observer);
    Read(First(), ThirdKeyed);
    Read(First(), ThirdKeyed & ~0x10UL);  // an input without a frequency
    EXPECT_EQ(observer.Codes(), std::vector<TChangeCode>());
    m_status.reset();  // with the values, before who observes them goes
}

TEST_F(SuppressionStatusTest, TakesItsNodeAway) {
    m_status.reset();
    EXPECT_EQ(m_tree.FindItem(suppressionkeys::NodePath()), nullptr);
}

TEST_F(SuppressionStatusTest, StandsThatItsNodeIsTakenAway) {
    m_tree.Delete(m_tree.FindItem(suppressionkeys::NodePath()));
    Read(First(), ThirdKeyed);
    m_status->NoteBlanked(QStringLiteral("ADAM-6051-0"), 3, QStringLiteral("mast-north"));
    m_clock.Advance(SuppressionStatus::AnswerInterval);
    EXPECT_EQ(m_tree.FindItem(suppressionkeys::NodePath()), nullptr);
}

TEST(AServerWithoutASuppression, SaysSo) {
    values::Tree tree;
    ManualClock clock;
    const SuppressionStatus status(nullptr, clock);
    const auto* const count = values::FindValue<values::Value<int>>(
        suppressionkeys::NodePath() + QStringLiteral("/ModuleCount"), nullptr, nullptr);
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->GetValue(), 0);
}

}  // namespace
