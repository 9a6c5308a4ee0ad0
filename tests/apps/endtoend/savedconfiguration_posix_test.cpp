// SPDX-License-Identifier: Apache-2.0
// What an operator changes outlasts the server, which is asked to end by a signal.
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/programrunner.h>

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

}  // namespace
