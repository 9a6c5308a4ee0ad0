// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionlog.h>

#include <tests/apps/mcserver/requestsfixture.h>

#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class SuppressionLogTest : public RequestsTest {
  protected:
    static ModuleIdentity Module(const char* address, int index = 0) {
        return {QStringLiteral("ADAM-6051"), index, QLatin1String(address)};
    }
    static ModuleFailure Failure(const ModuleIdentity& module, const char* text = "Connection refused") {
        return {module, 111, QLatin1String(text), QString()};
    }

    SuppressionLog log{m_server->GetLog()};
};

TEST_F(SuppressionLogTest, SaysWhichModuleFailsAndWhy) {
    TakeLog();
    log.OnModuleFailed(Failure(Module("10.0.0.1")));
    EXPECT_THAT(
        TakeLog(),
        ElementsAre(QStringLiteral("GTS DataModule ADAM-6051 1/10.0.0.1 error: Connection refused (111)")));
}

TEST_F(SuppressionLogTest, SaysWhatIsWrongWithAnAddress) {
    TakeLog();
    ModuleFailure failure = Failure(Module("tower"), "Destination address required");
    failure.addressFault = QStringLiteral("names are not resolved");
    log.OnModuleFailed(failure);
    EXPECT_THAT(TakeLog(), ElementsAre(QStringLiteral("GTS DataModule ADAM-6051 1/tower error: Destination "
                                                      "address required (111): names are not resolved")));
}

TEST_F(SuppressionLogTest, CallsAModuleAsPeopleDo) {
    TakeLog();
    ModuleIdentity module = Module("10.0.0.1");
    module.label = QStringLiteral("Tower mast");
    log.OnModuleFailed(Failure(module));
    EXPECT_THAT(
        TakeLog(),
        ElementsAre(QStringLiteral("GTS DataModule Tower mast/10.0.0.1 error: Connection refused (111)")));
}

/// Texts and types that look like the sentence do not matter: nobody takes it apart again.
TEST_F(SuppressionLogTest, HasALimitForEachModuleWhateverItsTexts) {
    TakeLog();
    for (int i = 0; i < 10; ++i)
        for (int index : {0, 1}) {
            ModuleIdentity module = Module("10.0.0.1 error: x", index);
            module.type = QStringLiteral("type error: y");
            log.OnModuleFailed(Failure(module, "z"));
        }
    EXPECT_THAT(TakeLog(), SizeIs(2));
}

/// The events of one module that fails \a polls times a second apart, each for the next of \a reasons.
class EventsOfALostModule : public SuppressionLogTest {
  protected:
    int CountEvents() const { return static_cast<int>(m_server->GetLog().GetJournal().GetEntries().size()); }
    int EventsOf(int polls, std::vector<const char*> reasons, bool wasInError = true) {
        const int before = CountEvents();
        for (int i = 0; i < polls; ++i) {
            ModuleFailure failure =
                Failure(Module("10.0.0.1"), reasons[static_cast<std::size_t>(i) % reasons.size()]);
            failure.isRepeated = wasInError || i > 0;
            log.OnModuleFailed(failure);
            m_clock.Advance(std::chrono::seconds(1));
        }
        return CountEvents() - before;
    }
};

TEST_F(EventsOfALostModule, AreOneWhileTheLogHasALineEveryTenSeconds) {
    TakeLog();
    EXPECT_EQ(EventsOf(120, {"Connection refused"}, false), 1);
    EXPECT_THAT(TakeLog().filter(QStringLiteral("Connection refused")), SizeIs(12));
}

TEST_F(EventsOfALostModule, AreOneForEachReason) {
    EXPECT_EQ(EventsOf(120, {"Connection refused", "No route to host"}, false), 2);
    EXPECT_EQ(EventsOf(120, {"Connection refused", "No answer"}), 1);
}

TEST_F(EventsOfALostModule, AreNoMoreThanAFewWhateverTheReasons) {
    std::vector<QByteArray> texts;
    std::vector<const char*> reasons;
    for (int i = 0; i < 100; ++i)
        texts.push_back(QByteArray::number(i));
    for (const QByteArray& text : texts)
        reasons.push_back(text.constData());
    EXPECT_EQ(EventsOf(100, reasons, false), static_cast<int>(SuppressionLog::MaxReasons));
}

TEST_F(EventsOfALostModule, BeginAnewOnceItAnswersOrIsConnectedAnew) {
    EXPECT_EQ(EventsOf(20, {"Connection refused"}, false), 1);
    EXPECT_EQ(EventsOf(20, {"Connection refused"}, false), 1);
    log.OnModuleAnswersAgain(Module("10.0.0.1"));
    EXPECT_EQ(EventsOf(20, {"Connection refused"}), 1);
}

TEST_F(EventsOfALostModule, TellNothingOfLinesLeftOutOfWhichTheyTellNothing) {
    EventsOf(1, {"Connection refused"}, false);
    const int before = CountEvents();
    for (int i = 0; i < 5; ++i)
        EventsOf(1, {"Connection refused"});
    TakeLog();
    m_clock.Advance(LogLimiter::TellAfter);
    EXPECT_THAT(TakeLog(), ElementsAre(QStringLiteral("5 lines left out, most of them of ADAM-6051 1")));
    EXPECT_EQ(CountEvents(), before);
}

TEST_F(EventsOfALostModule, TellOfLinesLeftOutThatWereNews) {
    for (int i = 0; i < 2; ++i)
        m_server->GetLog().WriteFrom(QStringLiteral("South"),
                                     {ECode::ConfigNotSaved, {QStringLiteral("full")}});
    const int before = CountEvents();
    m_clock.Advance(LogLimiter::TellAfter);
    EXPECT_EQ(CountEvents(), before + 1);
}

TEST_F(SuppressionLogTest, SaysThatAModuleAnswersAgain) {
    log.OnModuleFailed(Failure(Module("10.0.0.1")));
    TakeLog();
    log.OnModuleAnswersAgain(Module("10.0.0.1"));
    EXPECT_THAT(TakeLog(), ElementsAre(QStringLiteral("GTS DataModule ADAM-6051 1/10.0.0.1 answers again; it "
                                                      "stays in error until it is connected")));
    log.OnModuleAnswersAgain(Module("10.0.0.1"));
    EXPECT_THAT(TakeLog(), IsEmpty());
}

}  // namespace
