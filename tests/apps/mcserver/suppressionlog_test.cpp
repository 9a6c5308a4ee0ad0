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
