// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/program/configwatch.h>

#include <platform/config/cfgcenter.h>

#include <tests/apps/mcserver/serverfixture.h>

#include <gmock/gmock.h>

#include <QtCore/QFile>

namespace {

using testing::ElementsAre;

const QString DeviceName = QStringLiteral("/MultiChannelServer/Config/DeviceName");

class ConfigWatchTest : public ServerTest {
  protected:
    void StartWatching() {
        KeepInFile();
        QString error;
        ASSERT_TRUE(CfgCenter::Instance().HoldStore(&error)) << error.toStdString();
        Start();
        Set(QStringLiteral("/MultiChannelServer/Config/SaveConfig"),
            true);  // so that all is there to be edited
        m_watch = std::make_unique<ConfigWatch>(m_server->GetLog(), m_clock);
        m_watch->Start();
    }
    /// Does to the text of the file what somebody with an editor does.
    void Edit(const QByteArray& before, const QByteArray& after) const {
        QFile file(ConfigPath());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        QByteArray bytes = file.readAll();
        ASSERT_TRUE(bytes.contains(before)) << bytes.toStdString();
        bytes.replace(before, after);
        ASSERT_TRUE(file.resize(0) && file.seek(0) && file.write(bytes) == bytes.size());
    }
    QByteArray FileBytes() const {
        QFile file(ConfigPath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QStringList LogAfter(std::chrono::milliseconds delay) {
        TakeLog();
        m_clock.Advance(delay);
        return TakeLog();
    }
    void TearDown() override { m_watch.reset(); }

    std::unique_ptr<ConfigWatch> m_watch;
};

TEST_F(ConfigWatchTest, TellsNothingWhereNothingWasEdited) {
    ASSERT_NO_FATAL_FAILURE(StartWatching());
    Set(QStringLiteral("/MultiChannelServer/Config/ForceConnect"), true);
    Set(QStringLiteral("/MultiChannelServer/Config/SaveConfig"), true);
    EXPECT_TRUE(LogAfter(std::chrono::minutes(1)).isEmpty());
}

TEST_F(ConfigWatchTest, TellsOnceWhatWasEditedAndWhatForAndKeepsIt) {
    ASSERT_NO_FATAL_FAILURE(StartWatching());
    Edit("ForceConnect=false", "ForceConnect=true\nMine=here");
    const QString told = QStringLiteral(
        "the configuration file was edited: ForceConnect, Mine; in use from the next start on");
    EXPECT_THAT(LogAfter(2 * ConfigWatch::LookInterval), ElementsAre(told));
    EXPECT_TRUE(LogAfter(std::chrono::minutes(1)).isEmpty());

    values::FindValue<values::Value<QString>>(DeviceName, nullptr, nullptr)
        ->SetValue(QStringLiteral("South"));
    m_server->Stop();
    EXPECT_TRUE(FileBytes().contains("\nForceConnect=true\n")) << FileBytes().toStdString();
    EXPECT_TRUE(FileBytes().contains("\nMine=here\n"));
    EXPECT_TRUE(FileBytes().contains("\nDeviceName=South\n"));
}

TEST_F(ConfigWatchTest, TellsOfManyKeysAFew) {
    ASSERT_NO_FATAL_FAILURE(StartWatching());
    Edit("[General]\n", "[General]\nA=\n%3Cb%3E=\nC=\nD=\nE=\nF=\nG=\nH=\nI=\nJ=\n");
    const QStringList log = LogAfter(2 * ConfigWatch::LookInterval);
    ASSERT_EQ(log.size(), 1);
    EXPECT_TRUE(log[0].endsWith(QStringLiteral(" and 2 more; in use from the next start on")))
        << log[0].toStdString();
    EXPECT_FALSE(log[0].contains(QLatin1Char('<')));
}

TEST_F(ConfigWatchTest, LooksNoMoreOnceItIsStopped) {
    ASSERT_NO_FATAL_FAILURE(StartWatching());
    m_watch->Stop();
    Edit("ForceConnect=false", "ForceConnect=true");
    EXPECT_TRUE(LogAfter(std::chrono::minutes(1)).isEmpty());
}

}  // namespace
