// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/support/dialogs/modaldriver.h>

#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>

#include <string>

/// One window on two servers, each in a process of its own.
class SeveralStations : public ConsoleTest {
  protected:
    void OpenBoth() {
        server.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDeviceName=Tower\n");
        mast.WriteFile(QStringLiteral("mcserver.ini"), "[General]\nDeviceName=Mast\n");
        window->SetMpxOrvName(QStringLiteral("TestConsole"));
        ASSERT_NO_FATAL_FAILURE(ConnectToServer());
        ASSERT_NO_FATAL_FAILURE(mast.Start());
        window->Open(AddressOf(mast), VtClientOptions());
        ASSERT_EQ(window->GetStations().size(), 2U);
        ASSERT_TRUE(WaitFor([this] { return Tab(0) == "Tower: NOT TUNED" && Tab(1) == "Mast: NOT TUNED"; }))
            << Tab(0) << ", " << Tab(1);
        window->activateWindow();
    }
    static ServerAddress AddressOf(const ServerProcess& process) {
        return {QStringLiteral("127.0.0.1"), process.Port(), false};
    }
    QTabBar* Bar() const { return window->findChild<QTabBar*>(QStringLiteral("StationTabs")); }
    std::string Tab(int index) const { return Bar()->tabText(index).toStdString(); }
    StationView& Station(int index) const { return *window->GetStations()[static_cast<std::size_t>(index)]; }
    template <class W>
    W* In(int station, const char* page, const char* name) const {
        QTabWidget& tabs = Station(station).GetTabs();
        auto* const shown = tabs.findChild<QWidget*>(QString::fromLatin1(page));
        tabs.setCurrentWidget(shown);
        QCoreApplication::processEvents();
        return shown->findChild<W*>(QString::fromLatin1(name));
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const {
        window->activateWindow();  // a dialog may have been before it
        QCoreApplication::processEvents();
        QTest::keyClick(window.get(), key, modifiers);
        QCoreApplication::processEvents();
    }
    QString At(const ServerProcess& process, const char* path) const {
        ChildProgram client;
        client.Start(
            QStringLiteral(MCTREE),
            {QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(process.Port()),
             QStringLiteral("get"),
             QStringLiteral("/MultiChannelServer/DynamicMpxORVs/TestConsole/") + QLatin1String(path)});
        client.WaitForEnd(std::chrono::seconds(20));
        return QString::fromUtf8(client.GetOutput()).trimmed();
    }
    QString TunedAt(const ServerProcess& process) const { return At(process, "Status/TunedFrequency"); }
    void BeReady() {
        for (const int station : {0, 1}) {
            auto* const boot = In<QLabel>(station, "Status", "bootStateDisp");
            ASSERT_TRUE(WaitFor([&] { return boot->text() == QLatin1String("Ready"); }));
        }
    }
    void Tune(const char* text) const {
        Press(Qt::Key_L);
        QTest::keyClicks(QApplication::focusWidget(), QString::fromLatin1(text));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    ModalDriver::Step Answer(const char* button) {
        return [this, button](QWidget& dialog) {
            asked = dynamic_cast<QMessageBox&>(dialog).text().toStdString();
            for (auto* const choice : dialog.findChildren<QPushButton*>())
                if (choice->text() == QLatin1String(button)) QTest::mouseClick(choice, Qt::LeftButton);
            return true;
        };
    }
    void BecomeMaster(int station) {
        QTest::mouseClick(In<QPushButton>(station, "MyMpxORV", "BecomeMaster"), Qt::LeftButton);
        auto* const type = In<QLabel>(station, "MyMpxORV", "OperationType");
        ASSERT_TRUE(WaitFor([&] { return type->text().contains(QLatin1String("Job master")); }));
    }

    ServerProcess mast;
    std::string asked;
};
