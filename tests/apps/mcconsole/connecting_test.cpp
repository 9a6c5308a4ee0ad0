// SPDX-License-Identifier: Apache-2.0
// Connecting from the console's window: over TLS, with a token, and while the dialog that asks is open.
#include <apps/pages/noticebar.h>

#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/platform/vtclient/baretlsserver.h>
#include <tests/platform/vtclient/certificates.h>
#include <tests/support/dialogs/modaldriver.h>

#include <gmock/gmock.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>

namespace {

QString File(const char* name) {
    return Certificates::Instance().File(name);
}

class ConnectingTest : public ConsoleTest {
  protected:
    /// A server with TLS and one user, olga, whose token is "secret".
    void StartSecureServer(const char* certificate) {
        ASSERT_EQ(Certificates::Instance().Error(), QString());
        server.WriteFile(QStringLiteral("access"),
                         "allow operator read /\nallow operator create /MultiChannelServer/DynamicMpxORVs\n"
                         "user olga operator " +
                             VtTokenHash::Of(QStringLiteral("secret")).ToText().toUtf8() + '\n');
        const QString name = QString::fromLatin1(certificate);
        ASSERT_NO_FATAL_FAILURE(
            server.Start({QStringLiteral("--tls-cert"), File(qPrintable(name + QStringLiteral(".pem"))),
                          QStringLiteral("--tls-key"), File(qPrintable(name + QStringLiteral(".key"))),
                          QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    }

    /// Opens the dialog, fills it in and presses Enter.
    void EnterServer(const QString& caFile, const char* token) { EnterServer(server.Port(), caFile, token); }
    void EnterServer(int port, const QString& caFile, const char* token) {
        Ask([&](QDialog& dialog) {
            const auto type = [&dialog](const char* name, const QString& text) {
                auto* const field = dialog.findChild<QLineEdit*>(QString::fromLatin1(name));
                field->setFocus();
                QTest::keyClicks(field, text);
            };
            auto* const address = dialog.findChild<QComboBox*>()->lineEdit();
            address->selectAll();
            QTest::keyClicks(address, QStringLiteral("127.0.0.1:%1").arg(port));
            QTest::keyClick(dialog.findChild<QCheckBox*>(), Qt::Key_Space);
            type("CaFile", caFile);
            type("User", QStringLiteral("olga"));
            type("Token", QString::fromLatin1(token));
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    }
    /// Opens the dialog by its key.
    void Ask(const std::function<void(QDialog&)>& react) const {
        QApplication::setActiveWindow(window.get());
        const auto open = [this] { QTest::keyClick(window.get(), Qt::Key_O, Qt::ControlModifier); };
        WithModalDialog<QDialog>(open, react);
    }

    QString Connection() const { return window->findChild<QLabel*>(QStringLiteral("Connection"))->text(); }
    testing::AssertionResult BannerSays(const char* part) {
        if (WaitFor([&] { return Banner()->text().contains(QString::fromUtf8(part), Qt::CaseInsensitive); }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << Banner()->text().toStdString();
    }
};

TEST_F(ConnectingTest, ByTheDialogOverTlsWithAToken) {
    ASSERT_NO_FATAL_FAILURE(StartSecureServer("server"));
    EnterServer(File("authority.pem"), "secret");
    const QString text = QStringLiteral("Connected to mcss://127.0.0.1:%1, encrypted").arg(server.Port());
    EXPECT_TRUE(WaitFor([&] { return Connection() == text; })) << Banner()->text().toStdString();
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
    EXPECT_TRUE(WaitFor([this] { return Label("MyMpxORV", "MpxORVState").contains(QLatin1String("Test")); }));
}

TEST_F(ConnectingTest, IsOfferedAgainWithoutTheToken) {
    ASSERT_NO_FATAL_FAILURE(StartSecureServer("server"));
    EnterServer(File("authority.pem"), "secret");
    Ask([this](QDialog& dialog) {
        const auto text = [&dialog](const char* name) {
            return dialog.findChild<QLineEdit*>(QString::fromLatin1(name))->text();
        };
        EXPECT_EQ(dialog.findChild<QComboBox*>()->currentText(),
                  QStringLiteral("127.0.0.1:%1").arg(server.Port()));
        EXPECT_TRUE(dialog.findChild<QCheckBox*>()->isChecked());
        EXPECT_EQ(text("CaFile"), File("authority.pem"));
        EXPECT_EQ(text("User"), QStringLiteral("olga"));
        EXPECT_EQ(text("Token"), QString());
        dialog.reject();
    });
}

TEST_F(ConnectingTest, SaysThatTheCertificateIsFromAStranger) {
    ASSERT_NO_FATAL_FAILURE(StartSecureServer("server.stranger"));
    EnterServer(File("authority.pem"), "secret");
    EXPECT_TRUE(BannerSays("certificate"));
    EXPECT_TRUE(Banner()->isVisible());
}

TEST_F(ConnectingTest, SaysThatTheCertificateIsOver) {
    ASSERT_EQ(Certificates::Instance().Error(), QString());
    const BareTlsServer expired(File("server.expired.pem"), File("server.expired.key"));
    EnterServer(expired.serverPort(), File("authority.pem"), "secret");
    EXPECT_TRUE(BannerSays("expired"));
}

TEST_F(ConnectingTest, SaysThatTheAuthorityCannotBeRead) {
    ASSERT_NO_FATAL_FAILURE(StartSecureServer("server"));
    EnterServer(server.Path(QStringLiteral("nowhere.pem")), "secret");
    EXPECT_TRUE(BannerSays("nowhere.pem"));
}

TEST_F(ConnectingTest, SaysThatTheTokenIsWrong) {
    ASSERT_NO_FATAL_FAILURE(StartSecureServer("server"));
    EnterServer(File("authority.pem"), "guessed");
    EXPECT_TRUE(BannerSays("user or token is wrong"));
}

TEST_F(ConnectingTest, GoesOnWhileTheServerGoesAndComesBehindTheDialog) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    Ask([this](QDialog& dialog) {
        server.Kill();
        EXPECT_TRUE(BannerSays(" is lost: "));
        EXPECT_TRUE(dialog.isVisible());
        ASSERT_NO_FATAL_FAILURE(server.Restart());
        EXPECT_TRUE(WaitFor([this] { return !Banner()->isVisible(); }));
        dialog.reject();
    });
    EXPECT_EQ(Connection(), QStringLiteral("Connected to 127.0.0.1:%1").arg(server.Port()));
    EXPECT_TRUE(WaitFor([this] { return Label("Status", "onlineDisp") == QLatin1String("Online"); }));
}

TEST_F(ConnectingTest, LeavesNoEditBehindIfTheServerGoesWhileItIsTyped) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const name = Find<QLineEdit>("Configuration", "deviceNameDisp");
    ASSERT_TRUE(WaitFor([&] { return !name->text().isEmpty(); }));
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, QStringLiteral("half"));
    server.Kill();
    ASSERT_TRUE(WaitFor([this] { return Banner()->isVisible(); }));
    EXPECT_NE(name->text(), QStringLiteral("half"));
    EXPECT_EQ(
        window->GetFront().GetNotice().GetText(),
        QStringLiteral("The connection was lost while this was being entered, which is not sent: \"half\""));
}

TEST_F(ConnectingTest, OnceMoreToTheSameServerKeepsWhatIsEnteredAndAsksNothing) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_TRUE(WaitFor([this] { return Label("MyMpxORV", "MpxORVState").contains(QLatin1String("Test")); }));
    QTest::keyClick(window.get(), Qt::Key_L, Qt::ControlModifier);
    auto* const field = Find<QLineEdit>("Overview", "Frequency");
    QTest::keyClicks(field, QStringLiteral("131.2"));
    const ModalDriver user({[](QWidget& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Return);  // to the server that is offered, which is this one
        return true;
    }});
    QTest::keyClick(window.get(), Qt::Key_O,
                    Qt::ControlModifier);  // fails at a question, which is unexpected
    EXPECT_TRUE(WaitFor([this] { return Label("MyMpxORV", "MpxORVState").contains(QLatin1String("Test")); }));
    EXPECT_EQ(window->findChild<QLineEdit*>(QStringLiteral("Frequency"))->text(), QStringLiteral("131.2"));
}

TEST_F(ConnectingTest, EndsTheProgramWithTheWindowThoughTheDialogIsOpen) {
    QTimer::singleShot(0, window.get(), [this] { Ask([this](QDialog&) { window->close(); }); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
