// SPDX-License-Identifier: Apache-2.0
// The server's own window: its pages, keys and help, and how it is closed while clients are connected.
#include <apps/common/systemuser.h>
#include <apps/mcserver/program/serverprogram.h>
#include <apps/mcserver/program/serverwindow.h>
#include <apps/pages/keptview.h>
#include <apps/pages/keysdialog.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/vtclient/vtclientcenter.h>

#include <tests/apps/mcserver/serverprocess.h>
#include <tests/support/dialogs/modaldriver.h>

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QWhatsThis>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

ServerOptions Options(const QTemporaryDir& directory) {
    ServerOptions options;
    options.listen = {QStringLiteral("127.0.0.1"), 0};
    options.name = QStringLiteral("mcserver");
    options.configFile = directory.filePath(QStringLiteral("server.ini"));
    return options;
}

class ServerWindowTest : public testing::Test {
  protected:
    ServerWindowTest() : m_program(Options(m_directory)) {
        QString error;
        EXPECT_TRUE(m_program.Start(&error)) << error.toStdString();
        window = std::make_unique<ServerWindow>(QStringLiteral("Mast 7"), m_program.GetListener(),
                                                m_program.GetServer().GetLog());
        window->show();
    }
    ~ServerWindowTest() override {
        VtClientCenter::Instance().DestroyVtClient(m_client);
        window.reset();
        m_program.Stop();
        CfgCenter::SetAppName(QString());
        CfgCenter::Instance().SetStorePath(QString());
    }

    void ConnectAClient() {
        VtClientCenter::Instance().SetOptions(VtClientOptions());
        m_client = VtClientCenter::Instance().CreateVtClient("127.0.0.1", m_program.GetListener().GetPort());
        ASSERT_TRUE(
            ServerProcess::WaitFor([this] { return m_program.GetListener().GetPeers().size() == 1; }));
    }
    /// Closes the window as a person does, and does \a react about the question.
    void CloseAndReact(const std::function<void(QMessageBox&)>& react) const {
        WithModalDialog<QMessageBox>([this] { window->close(); }, react);
    }

    /// All that the server has told of, a line each.
    std::string Told() {
        std::string told;
        for (const EventJournal::Entry& entry : m_program.GetServer().GetLog().GetJournal().GetEntries())
            told += entry.json.toStdString() + '\n';
        return told;
    }

    std::unique_ptr<ServerWindow> window;

  private:
    QTemporaryDir m_directory;
    ServerProgram m_program;
    IVtClient* m_client = nullptr;
};

TEST_F(ServerWindowTest, SaysWhatEachPageIsFor) {
    const QTabWidget& pages = *window->GetTabs();
    ASSERT_GT(pages.count(), 0);
    for (int i = 0; i < pages.count(); ++i)
        EXPECT_FALSE(pages.widget(i)->whatsThis().isEmpty()) << pages.widget(i)->objectName().toStdString();
}

TEST_F(ServerWindowTest, TellsOfThePageInFrontByF1) {
    QApplication::setActiveWindow(window.get());
    const auto isTold = [] {
        const QWidgetList shown = QApplication::topLevelWidgets();
        return std::any_of(shown.begin(), shown.end(), [](const QWidget* widget) {
            return widget->isVisible() && widget->inherits("QWhatsThat");
        });
    };
    EXPECT_FALSE(isTold());
    QTest::keyClick(window.get(), Qt::Key_F1);
    EXPECT_TRUE(isTold());
    QWhatsThis::hideText();
}

TEST_F(ServerWindowTest, HasAKeyForEachPageAndListsIt) {
    QApplication::setActiveWindow(window.get());
    const QTabWidget& pages = *window->GetTabs();
    QStringList listed;
    for (const KeysDialog::Row& row : KeysDialog::RowsOf(*window))
        listed += row.keys + QLatin1Char(' ') + row.what;
    for (int i = pages.count() - 1; i >= 0; --i) {
        QTest::keyClick(window.get(), static_cast<Qt::Key>(Qt::Key_1 + i), Qt::AltModifier);
        EXPECT_EQ(pages.currentIndex(), i);
        EXPECT_TRUE(listed.contains(QStringLiteral("Alt+%1 %2").arg(i + 1).arg(pages.tabText(i))))
            << listed.join(QLatin1Char('\n')).toStdString();
    }
}

TEST_F(ServerWindowTest, IsArrangedAgainAsItWas) {
    const std::unique_ptr<ICfg> cfg(CfgCenter::Instance().OpenRoot());
    window->GetTabs()->setCurrentIndex(3);
    keptview::Keep(*cfg, *window->GetTabs());
    window->GetTabs()->setCurrentIndex(0);
    keptview::Restore(*cfg, *window->GetTabs());
    EXPECT_EQ(window->GetTabs()->currentIndex(), 3);
}

TEST_F(ServerWindowTest, WhatIsDoneAtItIsToldWithWhoDidIt) {
    auto* const box = window->findChild<QCheckBox*>(QStringLiteral("shallBeConnectedState"));
    const auto where = [box] { return QPoint(8, box->height() / 2); };
    window->GetTabs()->setCurrentIndex(2);
    const bool wasOn = box->isChecked();
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, where());
    ASSERT_TRUE(ServerProcess::WaitFor([&] { return box->isChecked() != wasOn; }));
    const std::string by = ", by " + SystemUser().toStdString() + " at the server's window";
    EXPECT_THAT(Told(), testing::AnyOf(testing::HasSubstr("the ORV is to be let go" + by),
                                       testing::HasSubstr("the ORV is to be connected" + by)));
}

TEST_F(ServerWindowTest, ClosesAtOnceWithoutClients) {
    const ModalDriver nobodyAsks;
    window->close();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ServerWindowTest, AsksBeforeWhatWasEnteredIsLost) {
    QString obstacle = QStringLiteral("no space left");
    window->SetObstacleOfSaving([&] { return obstacle; });
    CloseAndReact([](QMessageBox& question) {
        EXPECT_EQ(question.text(),
                  QStringLiteral("What was entered for the ground transmitters cannot be saved and will be "
                                 "lost: no space left\nEnd the server all the same?"));
        QTest::keyClick(&question, Qt::Key_Return);  // what it offers first
    });
    EXPECT_TRUE(window->isVisible());
    ASSERT_NO_FATAL_FAILURE(ConnectAClient());
    CloseAndReact([](QMessageBox& question) {
        EXPECT_TRUE(question.text().endsWith(
            QStringLiteral("lost: no space left\nA client will lose the server. End it all the same?")));
        QTest::keyClick(&question, Qt::Key_Return);
    });
    obstacle.clear();
    CloseAndReact([](QMessageBox& question) {
        EXPECT_EQ(question.text(), QStringLiteral("A client will lose the server. End it all the same?"));
        QTest::keyClick(&question, Qt::Key_Return);
    });
}

TEST_F(ServerWindowTest, StaysWhereTheAnswerIsNo) {
    ASSERT_NO_FATAL_FAILURE(ConnectAClient());
    CloseAndReact([](QMessageBox& question) {
        EXPECT_EQ(question.text(), QStringLiteral("A client will lose the server. End it all the same?"));
        QTest::keyClick(&question, Qt::Key_Return);  // what it offers first
    });
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ServerWindowTest, ClosesWhereTheAnswerIsYes) {
    ASSERT_NO_FATAL_FAILURE(ConnectAClient());
    CloseAndReact([](QMessageBox& question) {
        auto* const end = dynamic_cast<QPushButton*>(question.buttons().first());
        EXPECT_EQ(end->text(), QStringLiteral("End"));
        QTest::mouseClick(end, Qt::LeftButton);
    });
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ServerWindowTest, TakesTheEndOfTheApplicationForNoAnswer) {
    ASSERT_NO_FATAL_FAILURE(ConnectAClient());
    QTimer::singleShot(0, window.get(), [this] {
        CloseAndReact([](QMessageBox&) { QCoreApplication::quit(); });
        EXPECT_TRUE(window->isVisible());
    });
    QCoreApplication::exec();
}

TEST_F(ServerWindowTest, ClosesWhenTheProgramIsToEndThoughTheQuestionIsOpen) {
    ASSERT_NO_FATAL_FAILURE(ConnectAClient());
    CloseAndReact([this](QMessageBox&) { window->CloseNow(); });
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
