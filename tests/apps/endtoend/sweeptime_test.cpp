// SPDX-License-Identifier: Apache-2.0
// How long a sweep takes, from the device to whoever looks.
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>
#include <devicecontrol/multichannelserver/common/multichannelserverclient.h>

#include <platform/values/tree.h>
#include <platform/widgets/refreshscheduler.h>

#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/programrunner.h>

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtWidgets/QLabel>

namespace {

/// A server whose device averages for two seconds and takes 40 to 46 ms more to get around.
class SweepTime : public testing::Test, protected ProgramRunner {
  protected:
    void SetUp() override {
        server.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDefaultScanAveragingTimeIndex=5\n");
        ASSERT_NO_FATAL_FAILURE(server.Start());
        ASSERT_TRUE(client.ConnectToServer(QStringLiteral("127.0.0.1"), server.Port()));
        ASSERT_TRUE(client.ConnectToMCSControlTree(QStringLiteral("/Server"), StatusSegment));
        ASSERT_TRUE(ServerProcess::WaitFor([this] { return client.IsMCSControlTreeConnected(); }));
        ASSERT_TRUE(display.SetStatus_ValuePath(QStringLiteral("/Server/Status")));
        ASSERT_TRUE(ServerProcess::WaitFor([this] { return Shown() != QLatin1String("- - - "); }));
    }
    QString Shown() const {
        RefreshScheduler::Instance().Flush();
        return display.findChild<QLabel*>(QStringLiteral("sweepTimeDisp"))->text();
    }
    QString Told(const QStringList& command) {
        StartProgram(
            QStringLiteral(MCTREE),
            QStringList{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(server.Port())}
                << command << QStringLiteral("/MultiChannelServer/Status/SweepTime"));
        EXPECT_EQ(WaitForEnd(), 0) << errors.toStdString();
        return QString::fromUtf8(output);
    }

    values::Tree tree;
    ServerProcess server;
    MultiChannelServerClient client;
    MCSStatusDisplay display{nullptr, nullptr, Qt::WindowFlags()};
};

TEST_F(SweepTime, IsTheSameForTheDeviceTheDisplayAndMctree) {
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^204[0-6] ms$")).match(Shown()).hasMatch())
        << Shown().toStdString();
    const QString content = Told({QStringLiteral("get")});
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^204[0-6]000\n$")).match(content).hasMatch())
        << content.toStdString();
    const QString row = Told({QStringLiteral("watch"), QStringLiteral("--count"), QStringLiteral("1")});
    EXPECT_TRUE(QRegularExpression(QStringLiteral(" 2\\.04[1-6]? s\n$")).match(row).hasMatch())
        << row.toStdString();
}

}  // namespace
