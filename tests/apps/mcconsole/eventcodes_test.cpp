// SPDX-License-Identifier: Apache-2.0
// What the server tells by codes, in the language of whoever looks at it.
#include <apps/common/event.h>
#include <apps/common/whotext.h>
#include <apps/pages/guimodule.h>

#include <platform/values/tree.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>

#include <optional>
#include <set>
#include <string>

namespace {

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class GermanEvents : public testing::Test {
  protected:
    GermanEvents() { m_module.emplace(S("de")); }
    ~GermanEvents() override { QLocale::setDefault(QLocale::c()); }

    values::Tree m_tree;
    std::optional<GuiModule> m_module;
};

// A code that is added without a translation would stay English in the middle of a German window.
TEST_F(GermanEvents, EveryCodeThatHasWordsIsTranslated) {
    const std::set<std::string> same = {"ORV: %1"};
    for (int i = 0; i < static_cast<int>(ECode::Count); ++i) {
        const eventcodes::Row& row = eventcodes::Of(static_cast<ECode>(i));
        QString words = S(row.english);
        words.remove(QRegularExpression(S("%[1-9]|[^A-Za-z]")));
        if (words.isEmpty() || same.count(row.english) != 0) continue;
        EXPECT_NE(QCoreApplication::translate("CodedText", row.english), S(row.english)) << row.code;
    }
}

TEST_F(GermanEvents, EveryTranslationHasAllArguments) {
    for (int i = 0; i < static_cast<int>(ECode::Count); ++i) {
        const eventcodes::Row& row = eventcodes::Of(static_cast<ECode>(i));
        const QString german = QCoreApplication::translate("CodedText", row.english);
        for (const char* const argument : {"%1", "%2", "%3", "%4", "%5"})
            EXPECT_EQ(german.contains(S(argument)), S(row.english).contains(S(argument))) << row.code;
    }
}

struct ShownRow {
    const char* name;
    CodedText said;
    const char* german;
};

class GermanTexts : public GermanEvents, public testing::WithParamInterface<ShownRow> {};

TEST_P(GermanTexts, AreWhollyGerman) {
    EXPECT_EQ(GetParam().said.Translated(), S(GetParam().german));
}

const CodedText Console(ECode::PeerOnMachine, {S("mcconsole"), S("tower1"), S("10.0.0.5:50000")});

INSTANTIATE_TEST_SUITE_P(
    All, GermanTexts,
    testing::Values(
        ShownRow{"ATuning",
                 {ECode::Done, {CodedText(ECode::TunedTo, {S("121.5 MHz")})}},
                 "erledigt: auf 121,5 MHz eingestellt"},
        ShownRow{"ARefusal",
                 {ECode::Refused,
                  {CodedText(ECode::BlankedBy, {S("121.5 MHz"), CodedText(ECode::BlankedByInput,
                                                                          {S("ADAM-6051 1"), S("3")})})}},
                 "abgelehnt: 121,5 MHz ist ausgetastet durch ADAM-6051 1, Eingang 3"},
        ShownRow{"ALoss",
                 {ECode::Ended,
                  {CodedText(ECode::NeedsPolicy, {S("MayCal"), CodedText(ECode::TakenAwayBy, {Console})})}},
                 "beendet: braucht „Darf kalibrieren“, entzogen von mcconsole auf tower1 (10.0.0.5:50000)"},
        ShownRow{"ADevice", {ECode::DeviceBoot, {CodedText::Word(S("Self Test"))}}, "ORV: Selbsttest"},
        ShownRow{"OneLine", {ECode::LeftOut, {S("1"), S("West")}}, "1 Zeile ausgelassen, von West"},
        ShownRow{"OneLineBefore", {ECode::LinesLeftOut, {S("x"), S("1")}}, "x (davor 1 Zeile ausgelassen)"},
        ShownRow{"OneEvent", {ECode::EventsLeftOut, {S("1"), S("West")}}, "1 Ereignis ausgelassen, von West"},
        ShownRow{"SeveralLines",
                 {ECode::LeftOut, {S("2"), S("West")}},
                 "2 Zeilen ausgelassen, die meisten von West"},
        ShownRow{"AnAddressIsNoNumber", {ECode::DeviceInUse, {S("10.0.0.5")}}, "in Gebrauch von 10.0.0.5"}),
    [](const auto& row) { return std::string(row.param.name); });

struct WhoRow {
    const char* name;
    const char* who;
    const char* german;
};

class GermanPeers : public GermanEvents, public testing::WithParamInterface<WhoRow> {};

TEST_P(GermanPeers, AreCalledSo) {
    EXPECT_EQ(whotext::Translated(S(GetParam().who)), S(GetParam().german));
}

INSTANTIATE_TEST_SUITE_P(
    All, GermanPeers,
    testing::Values(WhoRow{"Nobody", "", ""},
                    WhoRow{"AProgram", "mcconsole on tower1 (10.0.0.5:50000)",
                           "mcconsole auf tower1 (10.0.0.5:50000)"},
                    WhoRow{"AnMpxOrvOfAProgram", "Tower on hill, mcconsole on tower1 (10.0.0.5:50000)",
                           "Tower on hill, mcconsole auf tower1 (10.0.0.5:50000)"},
                    WhoRow{"AProgramAlone", "mctree (10.0.0.5:50000)", "mctree (10.0.0.5:50000)"},
                    WhoRow{"SomebodyNameless", "a client on tower1 (10.0.0.5:50000)",
                           "ein Client auf tower1 (10.0.0.5:50000)"},
                    WhoRow{"SomebodyFromNowhere", "a client (10.0.0.5:50000)", "ein Client (10.0.0.5:50000)"},
                    WhoRow{"SomethingElse", "somebody", "somebody"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
