// SPDX-License-Identifier: Apache-2.0
// What an operator changes outlasts the server, which is asked to end by a signal.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/programrunner.h>

#include <QtCore/QDir>
#include <QtCore/QSettings>

namespace {

class SavedConfiguration : public testing::Test, protected ProgramRunner {
  protected:
    int RunMctree(const QStringList& words) {
        StartProgram(QStringLiteral(MCTREE), QStringList{QStringLiteral("--connect"),
                                                         QStringLiteral("127.0.0.1:%1").arg(server.Port())} +
                                                 words);
        return WaitForEnd();
    }

    ServerProcess server;
};

TEST_F(SavedConfiguration, IsWhatAnOperatorChangedBeforeTheSignal) {
    const QString path = QStringLiteral("/MultiChannelServer/Config/NumberOfFreqChannels");
    ASSERT_NO_FATAL_FAILURE(server.Start());
    ASSERT_EQ(RunMctree({QStringLiteral("set"), path, QStringLiteral("9")}), 0) << errors.constData();
    EXPECT_EQ(server.Terminate(), 0);
    EXPECT_EQ(QSettings(server.ConfigPath(), QSettings::IniFormat)
                  .value(QStringLiteral("NumberOfFreqChannels"))
                  .toInt(),
              9);
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_EQ(RunMctree({QStringLiteral("get"), path}), 0);
    EXPECT_EQ(output, QByteArray("9\n"));
}

// In the way of superusers too.
TEST_F(SavedConfiguration, ThatCannotBeWrittenIsToldToWhoSavesItAndNamedAtTheEnd) {
    const QString config = QStringLiteral("/MultiChannelServer/Config/");
    const QStringList save = {QStringLiteral("set"), config + QStringLiteral("SaveConfig"),
                              QStringLiteral("true")};
    ASSERT_NO_FATAL_FAILURE(server.Start());
    EXPECT_EQ(RunMctree(save), 0) << errors.constData();
    EXPECT_EQ(errors, QByteArray());
    ASSERT_TRUE(QDir().mkpath(server.ConfigPath() + QStringLiteral(".next/in the way")));
    ASSERT_EQ(RunMctree({QStringLiteral("set"), config + QStringLiteral("NumberOfFreqChannels"),
                         QStringLiteral("9")}),
              0);
    EXPECT_EQ(RunMctree(save), 1);
    const QByteArray problem =
        "the configuration file '" + server.ConfigPath().toUtf8() + "' cannot be written (File exists); ";
    EXPECT_EQ(errors, "mctree: /MultiChannelServer/Config/SaveConfig: " + problem +
                          "not saved: NumberOfFreqChannels\n");
    EXPECT_EQ(RunMctree({QStringLiteral("get"), config + QStringLiteral("SaveConfig")}), 0);
    EXPECT_EQ(output, QByteArray("false\n"));
    EXPECT_EQ(server.Terminate(), 1);
    EXPECT_TRUE(server.Errors().endsWith(
        QLatin1String("mcserver: " + problem + "the last changes are lost: NumberOfFreqChannels\n")))
        << server.Errors().toStdString();
}

}  // namespace
