// SPDX-License-Identifier: Apache-2.0
// The console's own MpxORV: what it is called, and what is said where there is none.
#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcconsole/consolefixture.h>

#include <gmock/gmock.h>

#include <QtWidgets/QCheckBox>

namespace {

const QString& Dynamic() {
    static const QString path = QStringLiteral("/MultiChannelServer/DynamicMpxORVs");
    return path;
}

class OwnMpxOrvTest : public ConsoleTest {
  protected:
    bool HasMpxOrv(const char* name) const {
        const QString below = Dynamic() + QLatin1Char('/') + QString::fromLatin1(name);
        return Tree({QStringLiteral("ls"), Dynamic()}).contains(QString::fromLatin1(name)) &&
               Tree({QStringLiteral("ls"), below}).contains(QLatin1String("Policy"));
    }
    /// Another client that uses the MpxORV called \a name, until the test ends.
    void UseByAnother(const char* name) {
        ASSERT_NO_FATAL_FAILURE(server.Start());
        m_other.Start(QStringLiteral(MCTREE),
                      {QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(server.Port()),
                       QStringLiteral("hold"), Dynamic() + QLatin1Char('/') + QString::fromLatin1(name)});
        ASSERT_TRUE(WaitFor([&] { return HasMpxOrv(name); }));
    }
    void Connect() {
        window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, VtClientOptions());
    }
    QString State() { return Label("MyMpxORV", "MpxORVState"); }
    QString Client() const { return window->findChild<QLabel*>(QStringLiteral("Client"))->text(); }

  private:
    ChildProgram m_other;
};

TEST_F(OwnMpxOrvTest, IsCalledAsTheConsoleIs) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    EXPECT_EQ(State(), QStringLiteral("MpxORV: TestConsole"));
    EXPECT_EQ(Client(), QStringLiteral("TestConsole"));
}

TEST_F(OwnMpxOrvTest, IsNotThatOfAnotherConsoleWithTheSameName) {
    ASSERT_NO_FATAL_FAILURE(UseByAnother("TestConsole"));
    Connect();
    EXPECT_TRUE(WaitFor([&] { return HasMpxOrv("TestConsole_2"); }));
    EXPECT_TRUE(WaitFor([&] { return State() == QLatin1String("MpxORV: TestConsole_2"); }))
        << State().toStdString();
    EXPECT_EQ(Client(), QStringLiteral("TestConsole_2"));
}

TEST_F(OwnMpxOrvTest, ComesBackWithTheServer) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(HasMpxOrv("TestConsole"));
    server.Kill();
    ASSERT_TRUE(WaitFor([&] { return State() == QLatin1String("No MpxORV is connected."); }));
    ASSERT_NO_FATAL_FAILURE(server.Restart());
    EXPECT_TRUE(WaitFor([&] { return HasMpxOrv("TestConsole"); }));
    EXPECT_TRUE(WaitFor([&] { return State() == QLatin1String("MpxORV: TestConsole"); }));
}

TEST_F(OwnMpxOrvTest, IsNotClaimedWhereTheServerGivesNone) {
    window->GetSession().SetMpxOrvName(QStringLiteral("no, name"));
    ASSERT_NO_FATAL_FAILURE(server.Start());
    Connect();
    EXPECT_TRUE(WaitFor([&] {
        return State() == QLatin1String("There is no MpxORV: the server does not give this console one.");
    })) << State().toStdString();
}

TEST_F(OwnMpxOrvTest, IsMissingWithTheServersReasonWhereItMayNotBeSeen) {
    server.WriteFile(QStringLiteral("access"),
                     "allow viewer read /MultiChannelServer/Status\n"
                     "user eve viewer " +
                         VtTokenHash::Of(QStringLiteral("secret")).ToText().toUtf8() + "\n");
    ASSERT_NO_FATAL_FAILURE(
        server.Start({QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    VtClientOptions options;
    options.user = QStringLiteral("eve");
    options.token = QStringLiteral("secret");
    window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, options);
    EXPECT_TRUE(WaitFor([&] { return State().startsWith(QLatin1String("There is no MpxORV: ")); }))
        << State().toStdString();
    EXPECT_TRUE(State().contains(QLatin1String("'eve'"))) << State().toStdString();
    // Who does not want one is not told that there is none.
    QTest::keyClick(Find<QCheckBox>("MyMpxORV", "UseMpxORV"), Qt::Key_Space);
    EXPECT_TRUE(WaitFor([&] { return State() == QLatin1String("No MpxORV is connected."); }))
        << State().toStdString();
}

}  // namespace
