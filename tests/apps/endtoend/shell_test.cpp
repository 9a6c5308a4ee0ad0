// SPDX-License-Identifier: Apache-2.0
// mctree as scripts use it, against the server as it is.
#include <tests/apps/mcserver/serverprocess.h>

namespace {

class ShellTest : public testing::Test, protected ProgramRunner {
  protected:
    void SetUp() override { server.Start(); }

    static QString Mine(const char* below) {
        return QStringLiteral("/MultiChannelServer/DynamicMpxORVs/Mine") + QLatin1String(below);
    }
    void Start(const QStringList& words) {
        const QString address = QStringLiteral("127.0.0.1:%1").arg(server.Port());
        StartProgram(QStringLiteral(MCTREE), QStringList{QStringLiteral("--connect"), address} + words);
    }
    int Run(const QStringList& words) {
        Start(words);
        return WaitForEnd();
    }
    int Set(const QString& path, const char* value) {
        return Run({QStringLiteral("set"), path, QLatin1String(value)});
    }

    ServerProcess server;
};

/// The same while somebody holds an MpxORV.
class RequestTest : public ShellTest {
  protected:
    class Holder : protected ProgramRunner {
      public:
        bool Hold(int port, const QString& path) {
            StartProgram(QStringLiteral(MCTREE),
                         {QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(port),
                          QStringLiteral("hold"), path});
            return WaitUntil([&] { return output == "held " + path.toUtf8() + '\n'; });
        }
        using ProgramRunner::Terminate;
    };

    void SetUp() override {
        ShellTest::SetUp();
        ASSERT_TRUE(holder.Hold(server.Port(), Mine("")));
        const int code = Run({QStringLiteral("get"), QStringLiteral("--wait"), QStringLiteral("=Ready"),
                              QStringLiteral("/MultiChannelServer/Status/BootState")});
        ASSERT_EQ(code, 0) << errors.constData();
    }

    Holder holder;
};

TEST_F(RequestTest, ARefusedRequestEndsWithOneAndTheReason) {
    EXPECT_EQ(Set(Mine("/Request/Calibrate"), "on"), 1);
    EXPECT_EQ(errors, "mctree: " + Mine("/Request/Calibrate").toUtf8() + ": needs MayCal\n");
}

TEST_F(RequestTest, AGrantedRequestEndsWithNoughtAndIsDone) {
    EXPECT_EQ(Set(Mine("/Request/Frequency"), "5M"), 0);
    EXPECT_EQ(output + errors, QByteArray("5 MHz\n"));
    EXPECT_EQ(Run({QStringLiteral("get"), Mine("/Request/Answer")}), 0);
    EXPECT_EQ(output, QByteArray("done: tuned to 5 MHz\n"));
    EXPECT_EQ(Set(Mine("/Request/BecomeMaster"), "true"), 0);
    EXPECT_EQ(output + errors, QByteArray());
}

TEST_F(RequestTest, WhatIsHeldGoesWithItsHolder) {
    EXPECT_EQ(holder.Terminate(), 0);
    EXPECT_TRUE(WaitUntil([this] { return Set(Mine("/Request/Frequency"), "5M") == 1; }));
    EXPECT_EQ(errors, "mctree: not found: " + Mine("/Request/Frequency").toUtf8() + '\n');
}

TEST_F(ShellTest, AConfigurationIsReadAndSetAgain) {
    const QString all = QStringLiteral("/MultiChannelServer/Config/D*");
    EXPECT_EQ(Run({QStringLiteral("get"), all}), 0);
    const QByteArray saved = output;
    server.WriteFile(QStringLiteral("saved"), saved);
    EXPECT_EQ(Set(QStringLiteral("/MultiChannelServer/Config/DeviceName"), "other\nname"), 0);
    EXPECT_EQ(Run({QStringLiteral("set"), QStringLiteral("-f"), server.Path(QStringLiteral("saved"))}), 0);
    EXPECT_EQ(errors, QByteArray());
    EXPECT_EQ(Run({QStringLiteral("get"), all}), 0);
    EXPECT_EQ(output, saved);
}

TEST_F(ShellTest, ASaveIsWaitedFor) {
    EXPECT_EQ(Set(QStringLiteral("/MultiChannelServer/Config/SaveConfig"), "true"), 0);
    EXPECT_EQ(output + errors, QByteArray());
}

}  // namespace
