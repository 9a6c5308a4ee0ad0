// SPDX-License-Identifier: Apache-2.0
// What an operator has to know at a glance, and which page has its cause.
#include <apps/common/codedtext.h>
#include <apps/pages/agetext.h>

#include <tests/apps/mcconsole/situationfixture.h>

#include <gmock/gmock.h>

#include <QtTest/QSignalSpy>

#include <functional>

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

struct SituationRow {
    const char* name;
    Situation::EItem item;
    std::function<void(ServerTree& server, Connection& connection)> happen;
    ESeverity severity;
    const char* word;
    const char* page;
};

/// As the server does of a device that is made of receivers.
void TellReceivers(ServerTree& server, int answering, int all) {
    const CodedText state(ECode::ReceiversAnswer,
                          {CodedText::Number(answering), CodedText::Number(all), QStringLiteral("Hamlib")});
    server.Text("Status/ConnectionStateCode", state.ToJsonText().toUtf8());
    server.Text("Status/ConnectionState", state.ToEnglish().toUtf8());
}

class SituationTable : public SituationTest, public testing::WithParamInterface<SituationRow> {};

TEST_P(SituationTable, TellsInOneWord) {
    server.MakeUsual();
    server.Tune(0);
    Be(EState::Connected);
    GetParam().happen(server, connection);
    situation->Refresh();
    EXPECT_EQ(Severity(GetParam().item), GetParam().severity);
    EXPECT_EQ(Word(GetParam().item), GetParam().word);
    EXPECT_EQ(situation->Get(GetParam().item).page, QLatin1String(GetParam().page));
}

using S = ServerTree;
using C = Connection;
using EItem = Situation::EItem;
using EState = ConsoleSession::EState;

INSTANTIATE_TEST_SUITE_P(
    Server, SituationTable,
    testing::Values(
        SituationRow{"Connected", EItem::Server, [](S&, C&) {}, ESeverity::Ok, "mast-north", "Status"},
        SituationRow{"WithItsRoundTrip", EItem::Server, [](S&, C& c) { c.latency = 420us; }, ESeverity::Ok,
                     "mast-north, 0.4 ms", "Status"},
        SituationRow{"Slow", EItem::Server, [](S&, C& c) { c.latency = 500ms; }, ESeverity::Look,
                     "mast-north, 500 ms", "Status"},
        SituationRow{"WithoutAName", EItem::Server, [](S& s, C&) { s.Text("Config/DeviceName", " "); },
                     ESeverity::Ok, "dfhost", "Status"},
        SituationRow{"AsItsAdministratorNamedIt", EItem::Server,
                     [](S&, C& c) { c.application = QStringLiteral("Tower 1"); }, ESeverity::Ok, "Tower 1",
                     "Status"},
        SituationRow{"NamedByNobody", EItem::Server,
                     [](S&, C& c) { c.application = QStringLiteral("mcserver"); }, ESeverity::Ok,
                     "mast-north", "Status"},
        SituationRow{"Connecting", EItem::Server, [](S&, C& c) { c.state = EState::Connecting; },
                     ESeverity::Look, "connecting", "Status"},
        SituationRow{"Lost", EItem::Server, [](S&, C& c) { c.state = EState::Lost; }, ESeverity::Act,
                     "lost for 0 s", "Status"},
        SituationRow{"NotAskedFor", EItem::Server, [](S&, C& c) { c.state = EState::Idle; },
                     ESeverity::Unknown, "not connected", ""}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Device, SituationTable,
    testing::Values(
        SituationRow{"Ready", EItem::Device, [](S&, C&) {}, ESeverity::Ok, "ready, scan", "Status"},
        SituationRow{"AllReceiversAnswer", EItem::Device, [](S& s, C&) { TellReceivers(s, 2, 2); },
                     ESeverity::Ok, "ready, scan", "Status"},
        SituationRow{"AReceiverIsLost", EItem::Device, [](S& s, C&) { TellReceivers(s, 1, 2); },
                     ESeverity::Look, "1 of 2 receivers", "Status"},
        SituationRow{"Booting", EItem::Device, [](S& s, C&) { s.Key("Status/BootState", BootSelfTest); },
                     ESeverity::Look, "self test", "Status"},
        SituationRow{"Failed", EItem::Device, [](S& s, C&) { s.Key("Status/BootState", BootFailed); },
                     ESeverity::Act, "failed", "Status"},
        SituationRow{"Away", EItem::Device, [](S& s, C&) { s.Flag("Status/Online", false); }, ESeverity::Act,
                     "no connection", "Status"},
        SituationRow{"SwitchedOff", EItem::Device,
                     [](S& s, C&) {
                         s.Flag("Status/Online", false);
                         s.Flag("Command/ShallBeConnected", false);
                     },
                     ESeverity::Look, "switched off", "Commands"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Master, SituationTable,
    testing::Values(
        SituationRow{"Nobody", EItem::Master, [](S&, C&) {}, ESeverity::Ok, "nobody", "MpxORVs"},
        SituationRow{
            "TakenAway", EItem::Master,
            [](S& s, C&) {
                s.Answer(ECode::Ended, {ECode::NeedsPolicy, {QStringLiteral("MayBeJobMaster"), CodedText()}});
            },
            ESeverity::Look, "taken away", "MpxORVs"},
        SituationRow{
            "AnotherRightTakenAway", EItem::Master,
            [](S& s, C&) {
                s.Answer(ECode::Ended, {ECode::NeedsPolicy, {QStringLiteral("MayCal"), CodedText()}});
            },
            ESeverity::Ok, "nobody", "MpxORVs"},
        SituationRow{"SomebodyElse", EItem::Master, [](S& s, C&) { s.Text("Status/Master/Name", "Tower"); },
                     ESeverity::Ok, "Tower", "MpxORVs"},
        SituationRow{"ThisConsole", EItem::Master, [](S& s, C&) { s.Text("Status/Master/Name", "Console"); },
                     ESeverity::Ok, "this console", "MpxORVs"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Suppression, SituationTable,
    testing::Values(SituationRow{"AllAnswer", EItem::Suppression, [](S&, C&) {}, ESeverity::Ok,
                                 "2 of 2 in use", "Suppression"},
                    SituationRow{"Keyed", EItem::Suppression,
                                 [](S& s, C&) {
                                     s.Suppress(2, 2, {118.4e6, 121.5e6}, {});
                                 },
                                 ESeverity::Ok, "2 keyed, 2 of 2 in use", "Suppression"},
                    SituationRow{"OneSilentWithoutFrequencies", EItem::Suppression,
                                 [](S& s, C&) { s.Suppress(2, 1, {}, {}); }, ESeverity::Look, "1 of 2 in use",
                                 "Suppression"},
                    SituationRow{"NotSupervised", EItem::Suppression,
                                 [](S& s, C&) {
                                     s.Suppress(2, 1, {118.4e6}, {121.5e6, 127.5e6});
                                 },
                                 ESeverity::Act, "2 NOT SUPERVISED, 1 keyed, 1/2", "Suppression"},
                    SituationRow{"NoModules", EItem::Suppression, [](S& s, C&) { s.Suppress(0, 0, {}, {}); },
                                 ESeverity::Ok, "no modules", "Suppression"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Own, SituationTable,
    testing::Values(SituationRow{"NotTuned", EItem::Own, [](S&, C&) {}, ESeverity::Look, "NOT TUNED",
                                 "MyMpxORV"},
                    SituationRow{"TakenAway", EItem::Own, [](S& s, C&) { s.Answer(ECode::Ended); },
                                 ESeverity::Look, "NOT TUNED", "MyMpxORV"},
                    SituationRow{"Refused", EItem::Own, [](S& s, C&) { s.Answer(ECode::Refused); },
                                 ESeverity::Look, "NOT TUNED", "MyMpxORV"},
                    SituationRow{"GivenUp", EItem::Own,
                                 [](S& s, C&) {
                                     s.Answer(ECode::Ended);
                                     s.Answer(ECode::Done);
                                 },
                                 ESeverity::Look, "NOT TUNED", "MyMpxORV"},
                    SituationRow{"TunedElsewhereSince", EItem::Own,
                                 [](S& s, C&) {
                                     s.Answer(ECode::Refused);
                                     s.Tune(121.5e6);
                                 },
                                 ESeverity::Ok, "121.5 MHz", "MyMpxORV"},
                    SituationRow{"Tuned", EItem::Own, [](S& s, C&) { s.Tune(121.5e6); }, ESeverity::Ok,
                                 "121.5 MHz", "MyMpxORV"},
                    SituationRow{"TunedAndKeyed", EItem::Own,
                                 [](S& s, C&) {
                                     s.Tune(121.5e6);
                                     s.Suppress(2, 2, {121.5e6}, {});
                                 },
                                 ESeverity::Look, "121.5 MHz, keyed", "MyMpxORV"},
                    SituationRow{"TunedKeyedAndIgnoringIt", EItem::Own,
                                 [](S& s, C&) {
                                     s.Tune(121.5e6);
                                     s.Suppress(2, 2, {121.5e6}, {});
                                     s.Flag("DynamicMpxORVs/Console/Blanking", false);
                                 },
                                 ESeverity::Look, "121.5 MHz, keyed, unprotected", "MyMpxORV"},
                    SituationRow{"TunedAndIgnoringTheSuppression", EItem::Own,
                                 [](S& s, C&) {
                                     s.Tune(121.5e6);
                                     s.Flag("DynamicMpxORVs/Console/Blanking", false);
                                 },
                                 ESeverity::Look, "121.5 MHz, unprotected", "MyMpxORV"},
                    SituationRow{"TunedAndNotSupervised", EItem::Own,
                                 [](S& s, C&) {
                                     s.Tune(121.5e6);
                                     s.Suppress(2, 1, {121.5e6}, {121.5e6});
                                 },
                                 ESeverity::Act, "121.5 MHz, unsupervised", "MyMpxORV"},
                    SituationRow{"NotUsed", EItem::Own, [](S&, C& c) { c.isMpxOrvUsed = false; },
                                 ESeverity::Unknown, "not used", "MyMpxORV"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(SituationTest, TellsNothingOfWhatTheServerDoesNotTell) {
    Be(EState::Connected);
    for (const EItem item : {EItem::Device, EItem::Master, EItem::Suppression}) {
        EXPECT_EQ(Severity(item), ESeverity::Unknown);
        EXPECT_EQ(Word(item), "unknown");
    }
    EXPECT_EQ(situation->GetUnsupervised(), nullptr);
}

TEST_F(SituationTest, TellsTheFrequencyOfAServerThatHasNoWordForIt) {
    server.Key("DynamicMpxORVs/Console/Status/OperationMode", OperationIdle);
    server.Number("DynamicMpxORVs/Console/Request/Frequency", 121.5e6);
    Be(EState::Connected);
    EXPECT_EQ(Word(EItem::Own), "NOT TUNED");
    server.Key("DynamicMpxORVs/Console/Status/OperationMode", OperationFfm);
    EXPECT_EQ(Word(EItem::Own), "121.5 MHz");
}

TEST_F(SituationTest, SaysWhyThereIsNoMpxOrv) {
    Be(EState::Connected);
    connection.mpxOrvPath.clear();
    connection.isMpxOrvMissing = true;
    connection.mpxOrvProblem = QStringLiteral("not allowed");
    situation->Refresh();
    EXPECT_EQ(Severity(EItem::Own), ESeverity::Look);
    EXPECT_EQ(Word(EItem::Own), "none");
    EXPECT_EQ(Detail(EItem::Own), "not allowed");
}

TEST_F(SituationTest, TellsSinceWhenInLocalTime) {
    server.MakeUsual();
    Be(EState::Connected);
    const QDateTime moment = QDateTime(QDate::currentDate(), QTime(9, 5, 7));
    server.Text("Status/Master/Name", "Tower");
    server.Text("Status/Master/Since", moment.toUTC().toString(Qt::ISODateWithMs).toUtf8().constData());
    EXPECT_EQ(Word(EItem::Master), "Tower since 09:05");
}

TEST_F(SituationTest, ShowsWhatWasKnownLastWithItsAge) {
    server.MakeUsual();
    server.Tune(121.5e6);
    Be(EState::Connected);
    Be(EState::Lost);
    clock.Advance(12s);
    EXPECT_EQ(Word(EItem::Server), "lost for 12 s");
    for (const EItem item : {EItem::Device, EItem::Master, EItem::Suppression, EItem::Own})
        EXPECT_EQ(Severity(item), ESeverity::Stale);
    EXPECT_EQ(Word(EItem::Device), "ready, scan");
    EXPECT_EQ(Age(EItem::Device), "12 s old");
    EXPECT_EQ(Word(EItem::Own), "121.5 MHz");
    EXPECT_EQ(Age(EItem::Own), "12 s old");
    clock.Advance(3min);
    EXPECT_EQ(Age(EItem::Own), "3 min old");
    Be(EState::Connected);
    EXPECT_EQ(Age(EItem::Own), "");
    EXPECT_EQ(Word(EItem::Own), "121.5 MHz");
    EXPECT_EQ(Severity(EItem::Own), ESeverity::Ok);
}

TEST_F(SituationTest, IsAsOldAsTheSilenceBeforeTheLoss) {
    server.MakeUsual();
    Be(EState::Connected);
    connection.silence = 14s;
    clock.Advance(1s);
    clock.Advance(500ms);
    connection.silence.reset();
    Be(EState::Lost);
    EXPECT_EQ(Age(EItem::Device), "14 s old");
    EXPECT_EQ(Word(EItem::Server), "lost for 14 s");
    EXPECT_EQ(situation->GetLostSince(), clock.Utc().addMSecs(-14500)) << "when it was heard last";
    clock.Advance(2s);
    EXPECT_EQ(Age(EItem::Device), "16 s old");
    Be(EState::Connected);
    Be(EState::Lost);
    EXPECT_EQ(Age(EItem::Device), "0 s old") << "it had answered meanwhile";
    EXPECT_EQ(situation->GetLostSince(), clock.Utc());
    Be(EState::Connected);
    EXPECT_FALSE(situation->GetLostSince().isValid());
}

TEST_F(SituationTest, IsAsOldAsItTellsWhereverThatIsShown) {
    server.MakeUsual();
    Be(EState::Connected);
    clock.Advance(700ms);
    Be(EState::Lost);
    clock.Advance(1s);
    clock.Advance(900ms);
    const std::string told = Word(EItem::Server);
    EXPECT_EQ(told, "lost for " + agetext::Of(situation->GetAge()).toStdString());
    clock.Advance(350ms);
    EXPECT_EQ(Word(EItem::Server), "lost for " + agetext::Of(situation->GetAge()).toStdString());
}

TEST_F(SituationTest, LooksAtTheRoundTripEverySecond) {
    server.MakeUsual();
    Be(EState::Connected);
    connection.latency = 3ms;
    clock.Advance(1s);
    EXPECT_EQ(Word(EItem::Server), "mast-north, 3.0 ms");
}

TEST_F(SituationTest, TellsOfChangesOnly) {
    server.MakeUsual();
    Be(EState::Connected);
    const QSignalSpy changes(situation.get(), &Situation::Changed);
    clock.Advance(1h);
    EXPECT_EQ(changes.count(), 0);
    server.Text("Status/Master/Name", "Tower");
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(SituationTest, IsAsBadAsItsWorstItem) {
    server.MakeUsual();
    server.Tune(121.5e6);
    Be(EState::Connected);
    EXPECT_EQ(situation->GetWorst(), ESeverity::Ok);
    server.Key("Status/BootState", BootSelfTest);
    EXPECT_EQ(situation->GetWorst(), ESeverity::Look);
    server.Suppress(1, 0, {}, {121.5e6});
    EXPECT_EQ(situation->GetWorst(), ESeverity::Act);
}

TEST_F(SituationTest, HasATitleOfWhatIsThere) {
    EXPECT_EQ(situation->GetTitle(), QString());
    connection.state = EState::Connecting;
    situation->Refresh();
    EXPECT_EQ(situation->GetTitle(), QStringLiteral("connecting to dfhost"));
    server.MakeUsual();
    server.Tune(0);
    Be(EState::Connected);
    EXPECT_EQ(situation->GetTitle(), QStringLiteral("Console \u00b7 mast-north"));
    server.Tune(121.5e6);
    EXPECT_EQ(situation->GetTitle(), QStringLiteral("Console \u00b7 121.5 MHz \u00b7 mast-north"));
    Be(EState::Lost);
    EXPECT_EQ(situation->GetTitle(), QStringLiteral("Console \u00b7 121.5 MHz \u00b7 mast-north is lost"));
}

TEST_F(SituationTest, BoundsWhatOthersChose) {
    server.MakeUsual();
    server.Text("Status/Master/Name", std::string(1000, 'x').c_str());
    std::vector<double> many;
    for (int i = 0; i < 1000; ++i)
        many.push_back(1e8 + i * 25e3);
    server.Suppress(99, 1, many, many);
    Be(EState::Connected);
    EXPECT_LT(Word(EItem::Master).size(), 60U);
    EXPECT_LT(Detail(EItem::Suppression).size(), 400U);
    EXPECT_THAT(Detail(EItem::Suppression), HasSubstr("992 more"));
}

}  // namespace
