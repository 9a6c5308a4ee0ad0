// SPDX-License-Identifier: Apache-2.0
// What a server without a window tells of its input modules, as mctree reads it.
#include <tests/apps/dimodule/moduleprocess.h>
#include <tests/apps/mcserver/serverprocess.h>

namespace {

class ASuppressionSeenFromOutside : public testing::Test, protected ProgramRunner {
  protected:
    void SetUp() override {
        server.WriteFile(QStringLiteral("mcserver.ini"),
                         "[GTS]\n"
                         "ModuleCount=1\n"
                         "Module0\\Index=0\n"
                         "Module0\\Name=ADAM-6051\n"
                         "Module0\\Address=127.0.0.1\n"
                         "Module0\\PollInterval=10\n"
                         "Module0\\Assignments\\AssignmentCount=12\n"
                         "Module0\\Assignments\\DI_3=121500000\n"
                         "Module0\\Labels\\DI_3=Tower 1\n");
        ASSERT_NO_FATAL_FAILURE(module.Start());
        qputenv("MCS_MODBUS_PORT", QByteArray::number(module.Port()));
        ASSERT_NO_FATAL_FAILURE(server.Start());
    }
    ~ASuppressionSeenFromOutside() override { qunsetenv("MCS_MODBUS_PORT"); }

    static QString Path(const char* below) {
        return QStringLiteral("/MultiChannelServer/Status/Suppression/") + QLatin1String(below);
    }
    int Run(const QStringList& words) {
        const QString address = QStringLiteral("127.0.0.1:%1").arg(server.Port());
        StartProgram(QStringLiteral(MCTREE), QStringList{QStringLiteral("--connect"), address} + words);
        return WaitForEnd();
    }
    bool Becomes(const char* below, const char* condition) {
        return Run({QStringLiteral("get"), QStringLiteral("--wait"), QLatin1String(condition),
                    QStringLiteral("--timeout"), QStringLiteral("30000"), Path(below)}) == 0;
    }
    QByteArray Get(const char* below) {
        EXPECT_EQ(Run({QStringLiteral("get"), Path(below)}), 0) << errors.constData();
        return output.trimmed();
    }

    ModuleProcess module;
    ServerProcess server;
};

TEST_F(ASuppressionSeenFromOutside, TellsWhatIsKeyed) {
    ASSERT_TRUE(Becomes("Modules/0/State", "=Connected")) << errors.constData();
    module.Say("key 3");
    ASSERT_TRUE(Becomes("Modules/0/Inputs/3/Keyed", "=true")) << errors.constData();
    EXPECT_EQ(Get("KeyedFrequencies"), "121500000");
    EXPECT_EQ(Get("Modules/0/Inputs/3/Name"), "Tower 1");
    EXPECT_EQ(Get("UnsupervisedFrequencies"), "");
    ASSERT_TRUE(Becomes("Modules/0/LastAnswer", "~20*Z")) << errors.constData();
}

TEST_F(ASuppressionSeenFromOutside, TellsOfAModuleThatIsKilledAndReturns) {
    ASSERT_TRUE(Becomes("Modules/0/State", "=Connected")) << errors.constData();
    module.Kill();
    ASSERT_TRUE(Becomes("Modules/0/State", "=Error")) << errors.constData();
    EXPECT_EQ(Get("UnsupervisedFrequencies"), "121500000");
    EXPECT_EQ(Get("AnsweringModules"), "0");
    EXPECT_EQ(Get("ModuleCount"), "1");
    module.Restart();
    EXPECT_EQ(Run({QStringLiteral("set"), QStringLiteral("/MultiChannelServer/Command/ReconnectModules"),
                   QStringLiteral("true")}),
              0);
    ASSERT_TRUE(Becomes("Modules/0/State", "=Connected")) << errors.constData();
    EXPECT_EQ(Get("UnsupervisedFrequencies"), "");
    EXPECT_EQ(Get("AnsweringModules"), "1");
}

TEST_F(ASuppressionSeenFromOutside, IsWrittenByNobodyElse) {
    ASSERT_TRUE(Becomes("Modules/0/State", "=Connected")) << errors.constData();
    EXPECT_EQ(Run({QStringLiteral("set"), Path("Modules/0/State"), QStringLiteral("Error")}), 1);
    EXPECT_EQ(Get("Modules/0/State"), "Connected");
}

}  // namespace
