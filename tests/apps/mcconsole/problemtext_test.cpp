// SPDX-License-Identifier: Apache-2.0
// What goes wrong, as the system and the libraries say it, in the language of whoever looks at it.
#include <apps/common/codedtext.h>
#include <apps/common/problemtext.h>
#include <apps/pages/guimodule.h>

#include <platform/modbus/modbustcpinterfacecreator.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/widgets/valuetext.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QLocale>

#include <string>

namespace {

class GermanProblems : public testing::Test {
  protected:
    ~GermanProblems() override { QLocale::setDefault(QLocale::c()); }

    values::Tree m_tree;
    GuiModule m_module{QStringLiteral("de")};
};

struct ProblemRow {
    const char* name;
    const char* english;
    const char* german;
};

class GermanProblem : public GermanProblems, public testing::WithParamInterface<ProblemRow> {};

TEST_P(GermanProblem, IsGermanAsFarAsItIsKnown) {
    EXPECT_EQ(problemtext::Translated(QString::fromUtf8(GetParam().english)),
              QString::fromUtf8(GetParam().german));
}

INSTANTIATE_TEST_SUITE_P(
    , GermanProblem,
    testing::Values(
        ProblemRow{"OfTheSystem", "Connection refused", "Verbindung abgelehnt"},
        ProblemRow{"OfASocketOfWindows", "Unable to write", "Senden ist nicht möglich"},
        ProblemRow{"WithItsNumber", "Connection refused (111)", "Verbindung abgelehnt (111)"},
        ProblemRow{"OfWindowsInItsOwnWords", "Es konnte keine Verbindung hergestellt werden. (10061)",
                   "Verbindung abgelehnt (10061)"},
        ProblemRow{"OfWindowsBehindAModule", "van: No connection could be made (10060)",
                   "van: keine Antwort innerhalb der Frist (10060)"},
        ProblemRow{"BehindAFile", "/etc/x: y.ini: Permission denied", "/etc/x: y.ini: keine Berechtigung"},
        ProblemRow{
            "WithAnother", "TLS failed (does the server speak TLS?): Connection reset by peer",
            "TLS ist gescheitert (spricht der Server TLS?): Verbindung von der Gegenstelle abgebrochen"},
        ProblemRow{"OfAFile", "'/var/s.ini' cannot be written: Permission denied",
                   "„/var/s.ini“ kann nicht geschrieben werden: keine Berechtigung"},
        ProblemRow{"OfAWrite", "only operators switch policies", "nur Bediener schalten Rechte"},
        ProblemRow{"OfAWriteWithAName", "a client's van belongs to another user",
                   "a client's van gehört einem anderen Benutzer"},
        ProblemRow{"OfNats", "NATS refuses: Permissions Violation for Subscription to \"mcs.tower.>\"",
                   "NATS lehnt ab: auf \"mcs.tower.>\" darf nicht gehört werden"},
        ProblemRow{"OfNatsThatIsNotThere", "NATS at 10.0.0.9:4222: No server available for connection",
                   "NATS unter 10.0.0.9:4222: kein Server nimmt die Verbindung an"},
        ProblemRow{"OfNatsThatIsSilent", "NATS at 10.0.0.9:4222: Timeout",
                   "NATS unter 10.0.0.9:4222: keine Antwort innerhalb der Frist"},
        ProblemRow{"OfALostNats", "the connection to NATS at [::1]:4222 is lost: Stale Connection",
                   "die Verbindung zu NATS unter [::1]:4222 ist verloren: die Gegenstelle schweigt zu lange"},
        ProblemRow{"OfABuildWithoutNats", "this build knows no NATS", "dieses Programm kennt kein NATS"},
        ProblemRow{"OfASession", "a message was lost over NATS (number 7 came, 5 was due)",
                   "eine Nachricht ging über NATS verloren (Nummer 7 kam, 5 war an der Reihe)"},
        ProblemRow{"OfAStationThatIsTaken",
                   "it is taken by tower on van (process 12, since 2026-11-22T10:00:00Z)",
                   "sie ist schon vergeben, an tower auf van (Prozess 12, seit 2026-11-22T10:00:00Z)"},
        ProblemRow{"Unknown", "the moon is full", "the moon is full"}, ProblemRow{"Nothing", "", ""}),
    [](const auto& row) { return std::string(row.param.name); });

// What a module may say and is not in the list would stay English in the middle of a German window.
TEST_F(GermanProblems, AreKnownOfAllThatModulesSay) {
    constexpr unsigned FirstOwn = 112345678;
    constexpr unsigned LastOwn = FirstOwn + 1000;
    int count = 0;
    for (unsigned code = FirstOwn; code < LastOwn; ++code) {
        const QString text = ModbusErrorText(code);
        if (text.startsWith(QLatin1String("Unknown error"))) continue;
        ++count;
        EXPECT_NE(problemtext::Translated(text), text);
    }
    EXPECT_GT(count, 12);
}

TEST_F(GermanProblems, AModuleOnWindowsSaysThemByTheirNumber) {
    const auto translated = [](const char* text, int number) {
        return CodedText(ECode::ModuleFailed,
                         {QStringLiteral("van"), QStringLiteral("10.0.0.1"), QString::fromLatin1(text),
                          CodedText::Number(number), CodedText()})
            .Translated();
    };
    EXPECT_EQ(translated("Connection refused.", 10061),
              QStringLiteral("GTS-Datenmodul van/10.0.0.1, Fehler: Verbindung abgelehnt (10061)"));
    EXPECT_EQ(translated("the moon is full", 7),
              QStringLiteral("GTS-Datenmodul van/10.0.0.1, Fehler: the moon is full (7)"));
}

TEST_F(GermanProblems, AreKnownOfNatsInEvents) {
    const CodedText said(ECode::StationNotOffered,
                         {QStringLiteral("tower"), QStringLiteral("NATS refuses: Authorization Violation")});
    EXPECT_TRUE(said.Translated().endsWith(QStringLiteral("NATS lehnt ab: Benutzer oder Token ist falsch")))
        << said.Translated().toStdString();
}

TEST_F(GermanProblems, ATextIsSaidByTheCodeBesideIt) {
    const auto add = [this](const char* name, const char* content) {
        auto* const value = new values::Value<QString>(QString::fromUtf8(content));
        value->SetName(QString::fromLatin1(name));
        m_tree.AddValue(QStringLiteral("/Status"), value);
        return value;
    };
    add("StateCode", R"({"code":"device-connected-to","args":["mast","10.0.0.5"]})");
    values::Value<QString>* const state = add("State", "connected to mast at 10.0.0.5");
    values::Value<QString>* const alone = add("Comment", "not connected");
    EXPECT_EQ(valuetext::Content(*state), QStringLiteral("verbunden mit mast unter 10.0.0.5"));
    EXPECT_EQ(valuetext::Content(*alone), QStringLiteral("not connected")) << "what people wrote";
    state->SetValue(QStringLiteral("connected to van at 10.0.0.6"));
    EXPECT_EQ(valuetext::Content(*state), QStringLiteral("connected to van at 10.0.0.6"))
        << "the code is of what was before";
}

TEST_F(GermanProblems, DigitsAreNotGrouped) {
    EXPECT_EQ(valuetext::Number(118400.5), QStringLiteral("118400,5"));
}

}  // namespace
