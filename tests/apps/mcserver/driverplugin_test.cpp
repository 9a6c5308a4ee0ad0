// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/plugin/driverplugin.h>
#include <apps/mcserver/plugin/pluginorv.h>

#include <tests/apps/mcserver/requestsfixture.h>
#include <tests/support/waituntil.h>

#include <QtCore/QFile>

namespace {

struct WrongPlugin {
    const char* name;
    const char* file;  ///< empty: one that is made for the test, with no more than a text in it
    const char* options;
    const char* error;
};

class WrongPlugins : public testing::TestWithParam<WrongPlugin> {};

TEST_P(WrongPlugins, AreAnsweredInOneLine) {
    const QTemporaryDir directory;
    QString file = QString::fromLocal8Bit(GetParam().file);
    if (file.isEmpty()) {
        file = directory.filePath(QStringLiteral("text.so"));
        QFile text(file);
        ASSERT_TRUE(text.open(QIODevice::WriteOnly));
        text.write("no plugin at all");
    }
    QString error;
    EXPECT_EQ(driverplugin::Load(file, QLatin1String(GetParam().options), &error), nullptr);
    EXPECT_TRUE(error.contains(QLatin1String(GetParam().error))) << error.toStdString();
    EXPECT_TRUE(error.contains(file)) << error.toStdString();
    EXPECT_FALSE(error.contains(QLatin1Char('\n')));
}

INSTANTIATE_TEST_SUITE_P(
    DriverPlugin, WrongPlugins,
    testing::Values(
        WrongPlugin{"NotThere", "/nowhere/device.so", "", "there is no file '/nowhere/device.so'"},
        WrongPlugin{"AFolder", "/", "", "there is no file '/'"}, WrongPlugin{"AText", "", "", "is no plugin"},
        WrongPlugin{"ALibraryWithoutPlugin", PLATFORM_LIBRARY, "", "is no plugin"},
        WrongPlugin{"AnotherVersion", TEST_DRIVER_OF_VERSION_2, "",
                    "is built for version 2 of the device interface, and this server has version 1"},
        WrongPlugin{"AnotherInterface", TEST_DRIVER_OF_OTHERS, "",
                    "offers no device, but 'org.example.Codec/1'"},
        WrongPlugin{"OneThatDoesNotKeepItsWord", TEST_DRIVER_WITHOUT, "", "does not offer what it says"},
        WrongPlugin{"OneThatThrows", TEST_DRIVER, "throw", "throws: no antenna"},
        WrongPlugin{"OneThatThrowsAnything", TEST_DRIVER, "throw a number", "throws"},
        WrongPlugin{"OneThatSaysWhyNot", TEST_DRIVER, "x", "makes no device: 'x' is no option"},
        WrongPlugin{"OneThatDoesNotSayWhyNot", TEST_DRIVER, "silent",
                    "makes no device: it does not say why"}),
    [](const auto& row) { return row.param.name; });

/// A server over a driver from a plugin, with a client that may do anything.
class AServerWithAPlugin : public ServerTest {
  protected:
    AServerWithAPlugin() {
        QString error;
        std::unique_ptr<IOrvDriver> driver =
            driverplugin::Load(QString::fromLocal8Bit(TEST_DRIVER), QString(), &error);
        EXPECT_NE(driver, nullptr) << error.toStdString();
        if (driver == nullptr) return;
        m_plugin = std::make_unique<PluginOrv>(std::move(driver));
        Own(*m_plugin);
        Start(false);
        Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), true);
        m_peer = Connect(QStringLiteral("Receiver"));
        for (const QString& name : {m_a, m_b}) {
            Use(m_peer, name);
            for (const char* const policy : AllPolicies)
                Set(Dynamic(name, QStringLiteral("Policy/") + QLatin1String(policy)),
                    QLatin1String(policy) != QLatin1String("IsSlaveToMasterJob"));
        }
        TakeLog();
    }
    ~AServerWithAPlugin() override {
        m_access.reset();
        m_server.reset();
    }

    std::unique_ptr<PluginOrv> m_plugin;
    VtPeer m_peer;
    const QString m_a = QStringLiteral("A");
    const QString m_b = QStringLiteral("B");
};

TEST_F(AServerWithAPlugin, UsesIt) {
    EXPECT_TRUE(Flag(QStringLiteral("/MultiChannelServer/Status/Online")));
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")).left(3), QStringLiteral("at "));
    Tune(m_peer, m_a, 121.5e6);
    EXPECT_EQ(Answer(m_a), QStringLiteral("done: tuned to 121.5 MHz"));
    Tune(m_peer, m_a, 125e6);
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: not that one"));
    Push(m_peer, m_a, QStringLiteral("BuiltInTest"));
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: the ORV has no built-in test"));
    Push(m_peer, m_a, QStringLiteral("RestartJob"));
    EXPECT_EQ(Answer(m_a), QStringLiteral("refused: the ORV has no job"));
}

TEST_F(AServerWithAPlugin, LosesAChannelThatIsLostWhileItIsTuned) {
    Tune(m_peer, m_a, 123e6);
    EXPECT_TRUE(WaitUntil([this] { return Answer(m_a) == QStringLiteral("ended: a fuse blew"); }));
    EXPECT_EQ(Number(Dynamic(m_a, QStringLiteral("Status/TunedFrequency"))), 0.0);
    Tune(m_peer, m_a, 130e6);
    Tune(m_peer, m_b, 131e6);
    EXPECT_EQ(Answer(m_b), QStringLiteral("done: tuned to 131 MHz"));
}

TEST_F(AServerWithAPlugin, LosesAllFrequenciesThoughItIsLostWhileItIsTuned) {
    Tune(m_peer, m_a, 121.5e6);
    Tune(m_peer, m_b, 124e6);
    EXPECT_TRUE(WaitUntil([] {
        return StatusText(QStringLiteral("ConnectionState")) ==
               QStringLiteral("connection lost: the mast fell");
    }));
    for (const QString& name : {m_a, m_b}) {
        EXPECT_EQ(Answer(name), QStringLiteral("ended: the ORV is not connected"));
        EXPECT_EQ(Number(Dynamic(name, QStringLiteral("Status/TunedFrequency"))), 0.0);
    }
    Set(QStringLiteral("/MultiChannelServer/Command/ShallBeConnected"), false);
    EXPECT_EQ(StatusText(QStringLiteral("ConnectionState")), QStringLiteral("let go"));
}

}  // namespace
