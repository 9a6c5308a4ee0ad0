// SPDX-License-Identifier: Apache-2.0
// The program itself, and the server with its window.
#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/config/store/cfglock.h>
#include <platform/vtclient/vttokenhash.h>

#include <tests/apps/mcconsole/nodisplay.h>
#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/programrunner.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QScreen>

#include <functional>
#include <limits>
#include <memory>

namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

std::vector<std::string> Pictures(const QString& directory) {
    std::vector<std::string> names;
    for (const QString& name : QDir(directory).entryList(QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

QImage Status(const QString& directory) {
    return QImage(QDir(directory).filePath(QStringLiteral("console-Status.png")));
}

class ConsoleProcess : public testing::Test, protected ProgramRunner {
  protected:
    int Run(const QStringList& words) {
        StartProgram(QStringLiteral(MCCONSOLE), words);
        return WaitForEnd();
    }

    QStringList ConnectWords(const QString& pictures) const {
        return {QStringLiteral("--connect"),    QStringLiteral("127.0.0.1:%1").arg(server.Port()),
                QStringLiteral("--config"),     server.Path(QStringLiteral("console.ini")),
                QStringLiteral("--screenshot"), pictures};
    }

    ServerProcess server;
};

TEST_F(ConsoleProcess, SavesAPictureOfEveryPageAndEnds) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    const QString pictures = server.Path(QStringLiteral("pictures"));
    EXPECT_EQ(Run(ConnectWords(pictures)), 0) << errors.constData();
    EXPECT_THAT(Pictures(pictures),
                IsSupersetOf({"console-Commands.png", "console-Configuration.png", "console-Connect.png",
                              "console-Log.png", "console-MpxORVStatus.png", "console-MpxORVs.png",
                              "console-MyMpxORV.png", "console-Status.png", "console-Suppression.png"}));
    EXPECT_GE(Status(pictures).width(), 800);
}

TEST_F(ConsoleProcess, IsTwiceAsLargeWhereEverythingIs) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    const QString large = server.Path(QStringLiteral("large"));
    EXPECT_EQ(Run(ConnectWords(large)), 0) << errors.constData();
    environment.remove(QStringLiteral("QT_SCALE_FACTOR"));
    const QString normal = server.Path(QStringLiteral("normal"));
    EXPECT_EQ(Run(ConnectWords(normal)), 0) << errors.constData();
    EXPECT_NEAR(Status(large).width(), 2 * Status(normal).width(),
                10);  // letters are not exactly twice as wide
    EXPECT_EQ(Status(large).height(), 2 * Status(normal).height());
}

TEST_F(ConsoleProcess, IsHalfAsLargeAgainOnAScreenAtOneAndAHalf) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    environment.insert(QStringLiteral("QT_FONT_DPI"), QStringLiteral("144"));
    const QString large = server.Path(QStringLiteral("large"));
    EXPECT_EQ(Run(ConnectWords(large)), 0) << errors.constData();
    EXPECT_EQ(Status(large).height(), 740 * 3 / 2);
}

TEST_F(ConsoleProcess, IsDarkWhereThatIsWanted) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    const QString pictures = server.Path(QStringLiteral("pictures"));
    EXPECT_EQ(Run(ConnectWords(pictures)), 0) << errors.constData();
    EXPECT_GT(qGray(Status(pictures).pixel(700, 600)), 150);
    EXPECT_EQ(Run(ConnectWords(pictures) << QStringLiteral("--dark")), 0) << errors.constData();
    EXPECT_LT(qGray(Status(pictures).pixel(700, 600)), 100);
}

TEST_F(ConsoleProcess, FailsIfThereIsNothingToTakePicturesOf) {
    server.WriteFile(QStringLiteral("file"), "in the way");
    ASSERT_NO_FATAL_FAILURE(server.Start());
    EXPECT_EQ(Run(ConnectWords(server.Path(QStringLiteral("file/below")))), 1);
    EXPECT_TRUE(errors.contains("mcconsole: ")) << errors.constData();
}

TEST_F(ConsoleProcess, SavesPicturesAlsoForAUserWhoMayHaveNoMpxOrv) {
    server.WriteFile(QStringLiteral("access"),
                     "allow viewer read /MultiChannelServer/Status\nuser eve viewer " +
                         VtTokenHash::Of(QStringLiteral("secret")).ToText().toUtf8() + '\n');
    ASSERT_NO_FATAL_FAILURE(
        server.Start({QStringLiteral("--access"), server.Path(QStringLiteral("access"))}));
    environment.insert(QStringLiteral("MCS_TOKEN"), QStringLiteral("secret"));
    const QString pictures = server.Path(QStringLiteral("pictures"));
    EXPECT_EQ(Run(ConnectWords(pictures) << QStringLiteral("--user") << QStringLiteral("eve")), 0)
        << errors.constData();
    EXPECT_GE(Pictures(pictures).size(), 9U);
}

TEST_F(ConsoleProcess, FailsIfItIsToEndBeforeThePicturesAreTaken) {
    ASSERT_NO_FATAL_FAILURE(server.Start());
    const QString pictures = server.Path(QStringLiteral("pictures"));
    StartProgram(QStringLiteral(MCCONSOLE), ConnectWords(pictures));
    ASSERT_TRUE(
        ServerProcess::WaitFor([this] { return server.Output().contains(QLatin1String(" is connected")); }));
    EXPECT_EQ(Terminate(), 1);
    EXPECT_TRUE(errors.endsWith("mcconsole: ended before the pictures were taken\n")) << errors.constData();
    EXPECT_FALSE(QDir(pictures).exists());
}

class ConsolePlacement : public ConsoleProcess {
  protected:
    ~ConsolePlacement() override { CfgCenter::Instance().SetStorePath(QString()); }

    /// Where the window is said to be in the configuration.
    QRect Stored() {
        const std::unique_ptr<ICfg> section = OpenSection();
        const auto read = [&section](const char* key) {
            return section->ReadInt(QString::fromLatin1(key), -1);
        };
        return {read("x"), read("y"), read("w"), read("h")};
    }
    void Store(const QRect& place) {
        const std::unique_ptr<ICfg> section = OpenSection();
        section->WriteInt(QStringLiteral("x"), place.x());
        section->WriteInt(QStringLiteral("y"), place.y());
        section->WriteInt(QStringLiteral("w"), place.width());
        section->WriteInt(QStringLiteral("h"), place.height());
        ASSERT_TRUE(section->CommitKey(QStringLiteral("x")));
    }
    static testing::AssertionResult IsOnScreen(const QRect& place) {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        if (screen.contains(place)) return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << place.x() << ' ' << place.y() << ' ' << place.width() << ' ' << place.height()
               << " is not within " << screen.width() << 'x' << screen.height();
    }
    /// Opens the window, and ends the program as its user's session does, after \a meanwhile.
    void OpenAndEnd(
        const std::function<void()>& meanwhile = [] {}, int code = 0) {
        ASSERT_NO_FATAL_FAILURE(server.Start());
        StartProgram(QStringLiteral(MCCONSOLE), ConnectWords(QString()).mid(0, 4));
        ASSERT_TRUE(ServerProcess::WaitFor(
            [this] { return server.Output().contains(QLatin1String(" is connected")); }));
        meanwhile();
        ASSERT_EQ(Terminate(), code) << errors.constData();
    }

  private:
    /// As it is in the file by now.
    std::unique_ptr<ICfg> OpenSection() {
        CfgCenter::Instance().SetStorePath(QString());
        CfgCenter::Instance().SetStorePath(server.Path(QStringLiteral("console.ini")));
        const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
        return std::unique_ptr<ICfg>(root->ProvideSection(QStringLiteral("ConsoleWindow")));
    }
};

TEST_F(ConsolePlacement, IsKeptFromRunToRun) {
    const QRect place(40, 30, 600, 450);
    ASSERT_NO_FATAL_FAILURE(Store(place));
    ASSERT_NO_FATAL_FAILURE(OpenAndEnd());
    EXPECT_EQ(Stored(), place);
}

// Where the window was, and which server it showed, saves by itself, and tells nobody.
TEST_F(ConsolePlacement, IsSaidToBeLostWhereItCannotBeKept) {
    CfgLock lock(server.Path(QStringLiteral("console.ini.writer")));
    ASSERT_NO_FATAL_FAILURE(OpenAndEnd([&] { ASSERT_EQ(lock.Try(), CfgLock::EOutcome::Held); }, 1));
    EXPECT_THAT(
        errors.toStdString(),
        testing::HasSubstr("mcconsole: the configuration file '" +
                           server.Path(QStringLiteral("console.ini")).toStdString() + "' is locked by "));
    EXPECT_THAT(errors.toStdString(), testing::HasSubstr("; the last changes are lost: ConsoleWindow/"));
}

TEST_F(ConsolePlacement, IsBroughtBackFromAScreenThatIsGone) {
    ASSERT_NO_FATAL_FAILURE(Store(QRect(20000, -9000, 700, 650)));
    ASSERT_NO_FATAL_FAILURE(OpenAndEnd());
    EXPECT_TRUE(IsOnScreen(Stored()));
}

TEST_F(ConsolePlacement, IsMadeToFitWhateverNumbersAreStored) {
    constexpr int most = std::numeric_limits<int>::max();
    ASSERT_NO_FATAL_FAILURE(Store(QRect(QPoint(-most, most - 1), QSize(most, 0))));
    ASSERT_NO_FATAL_FAILURE(OpenAndEnd());
    EXPECT_TRUE(IsOnScreen(Stored()));
}

TEST_F(ConsoleProcess, NeedsADisplay) {
    const std::shared_ptr<void> nobodySees = WithoutDisplay(environment);
    EXPECT_EQ(Run({}), 1);
    EXPECT_EQ(errors, QByteArray("mcconsole: there is no display to show a window on\n"));
    EXPECT_EQ(Run({QStringLiteral("--version")}), 0);
}

#ifdef Q_OS_LINUX
TEST_F(ConsoleProcess, SaysThatItsDisplayCannotBeReached) {
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":99999"));
    EXPECT_EQ(Run({}), 1);
    EXPECT_EQ(errors, QByteArray("mcconsole: the display \":99999\" cannot be reached\n"));
}
#endif

TEST_F(ConsoleProcess, ComplainsInOneLine) {
    EXPECT_EQ(Run({QStringLiteral("--connect"), QStringLiteral("tower:x")}), 2);
    EXPECT_EQ(errors, QByteArray("mcconsole: --connect: \"x\" is no port from 1 to 65535 (see --help)\n"));
}

TEST_F(ConsoleProcess, ShowsThePagesOfTheServersOwnWindow) {
    server.UseWindow();
    server.WriteFile(QStringLiteral("mcserver.ini"), "[StaticMpxORVs]\nNames=\"Tower, Van 1\"\n");
    const QString pictures = server.Path(QStringLiteral("pictures"));
    EXPECT_EQ(
        server.Run({QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--config"),
                    server.ConfigPath(), QStringLiteral("--screenshot"), pictures}),
        0)
        << server.Errors().toStdString();
    EXPECT_THAT(Pictures(pictures),
                ElementsAre("server-Commands.png", "server-Configuration.png", "server-Log.png",
                            "server-MpxORVs.png", "server-Status.png", "server-Suppression.png"));
}

TEST_F(ConsoleProcess, EndsTheServerWithItsWindowWhenAsked) {
    server.UseWindow();
    ASSERT_NO_FATAL_FAILURE(server.Start());
    EXPECT_EQ(server.Terminate(), 0);
}

}  // namespace
