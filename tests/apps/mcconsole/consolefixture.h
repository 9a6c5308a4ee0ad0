// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/childprogram.h>
#include <apps/mcconsole/consolewindow.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/apps/mcserver/serverprocess.h>

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTabWidget>

#include <chrono>
#include <functional>
#include <memory>

/// The console's window, and a server in a process of its own.
class ConsoleTest : public testing::Test {
  protected:
    ConsoleTest() {
        CfgCenter::Instance().SetStorePath(server.Path(QStringLiteral("console.ini")));
        tree = std::make_unique<values::Tree>();
        window = std::make_unique<ConsoleWindow>(VtClientOptions());
        window->GetSession().SetMpxOrvName(QStringLiteral("TestConsole"));
        window->show();
    }
    ~ConsoleTest() override {
        window.reset();
        tree.reset();
        CfgCenter::Instance().SetStorePath(QString());
    }

    void ConnectToServer(const QStringList& arguments = {}) {
        ASSERT_NO_FATAL_FAILURE(server.Start(arguments));
        window->ConnectTo({QStringLiteral("127.0.0.1"), server.Port(), false}, VtClientOptions());
        ASSERT_TRUE(WaitFor([this] { return !window->GetSession().GetMpxOrvPath().isEmpty(); }));
    }

    static bool WaitFor(const std::function<bool()>& condition) { return ServerProcess::WaitFor(condition); }

    /// Brings the page of that name to the front, where it can be clicked at.
    QWidget* Page(const char* name) {
        auto* const page = window->findChild<QWidget*>(QString::fromLatin1(name));
        window->GetTabs()->setCurrentWidget(page);
        QCoreApplication::processEvents();  // it is laid out when it is shown
        return page;
    }

    template <class W>
    W* Find(const char* page, const char* name) {
        W* const found = Page(page)->findChild<W*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << page << ' ' << name;
        return found;
    }

    QString Label(const char* page, const char* name) { return Find<QLabel>(page, name)->text(); }
    QLabel* Banner() const { return window->findChild<QLabel*>(QStringLiteral("Banner")); }

    /// What another client of the server says, the command line.
    QString Tree(QStringList words) const {
        words = QStringList{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(server.Port())} +
                words;
        ChildProgram client;
        client.Start(QStringLiteral(MCTREE), words);
        client.WaitForEnd(std::chrono::seconds(20));
        return QString::fromUtf8(client.GetOutput()).trimmed();
    }

    static void Type(QLineEdit* field, const char* text) {
        QTest::mouseClick(field, Qt::LeftButton);
        field->selectAll();
        QTest::keyClicks(field, QString::fromLatin1(text));
        QTest::keyClick(field, Qt::Key_Return);
    }

    ServerProcess server;
    std::unique_ptr<values::Tree> tree;
    std::unique_ptr<ConsoleWindow> window;
};
