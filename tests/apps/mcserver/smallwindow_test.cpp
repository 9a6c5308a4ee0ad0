// SPDX-License-Identifier: Apache-2.0
// The page on which the suppression is set up, on the smallest screen that the window is for: 1024 by 600
// points, of which the desktop takes some.
#include <apps/mcserver/program/serverprogram.h>
#include <apps/mcserver/program/serverwindow.h>
#include <apps/mcserver/suppression/inputmodel.h>
#include <apps/mcserver/suppression/suppressionalarm.h>
#include <apps/mcserver/suppression/suppressionpage.h>
#include <apps/mcserver/suppression/suppressionrecovery.h>
#include <apps/pages/noticebar.h>
#include <apps/pages/undobar.h>

#include <platform/config/cfgcenter.h>
#include <platform/widgets/standardnotification.h>

#include <tests/support/waituntil.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include <memory>

namespace {

constexpr QSize SmallScreen(1024, 560);

class ASmallServerWindow : public testing::Test {
  protected:
    ASmallServerWindow() {
        UseFontOfADesktop();
        WriteConfiguration();
        qputenv("MCS_MODBUS_PORT", "1");  // nobody is there
        m_program = std::make_unique<ServerProgram>(Options());
        QString error;
        EXPECT_TRUE(m_program->Start(&error)) << error.toStdString();
        m_recovery.Begin();
        McsServer& server = m_program->GetServer();
        window = std::make_unique<ServerWindow>(QStringLiteral("Mast 7"), m_program->GetListener(),
                                                m_program->GetServer().GetLog());
        auto* const page = new SuppressionPage(m_recovery, server.GetJobs(), server.GetLog(),
                                               m_program->GetClock(), window.get());
        auto* const alarm = new SuppressionAlarm(page->GetPlant());
        QObject::connect(alarm, &SuppressionAlarm::Judged, window.get(), &ServerWindow::ShowState);
        window->AddNotice(alarm);
        window->AddPage(page, "Suppression", QStringLiteral("Ground transmitters"));
        window->GetTabs()->setCurrentIndex(window->GetTabs()->count() - 1);
        window->resize(SmallScreen);
        window->show();
        RunTurns(5);
    }
    ~ASmallServerWindow() override {
        window.reset();
        m_program->Stop();
        m_program.reset();
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const warning = qobject_cast<StandardNotification*>(widget)) delete warning;
        CfgCenter::SetAppName(QString());
        CfgCenter::Instance().SetStorePath(QString());
        qunsetenv("MCS_MODBUS_PORT");
        QApplication::setFont(m_usualFont);
    }

    /// A wide font at 96 dots per inch. Where there is no desktop, the toolkit has a much larger one.
    static void UseFontOfADesktop() {
        constexpr double points = 10.0;
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPointSizeF(points * 96 / QGuiApplication::primaryScreen()->logicalDotsPerInchY());
        QApplication::setFont(font);
    }
    void WriteConfiguration() const {
        QFile file(m_directory.filePath(QStringLiteral("server.ini")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            "[GTS]\n"
            "ModuleCount=2\n"
            "Module0\\Index=0\n"
            "Module0\\Name=ADAM-6051\n"
            "Module0\\Address=127.0.0.1\n"
            "Module0\\PollInterval=10\n"
            "Module0\\Label=Tower mast & shelter, east\n"
            "Module1\\Index=6\n"
            "Module1\\Name=ADAM-6060\n"
            "Module1\\Address=127.0.0.1\n"
            "Module1\\PollInterval=10\n");
    }
    ServerOptions Options() const {
        ServerOptions options;
        options.listen = {QStringLiteral("127.0.0.1"), 0};
        options.name = QStringLiteral("mcserver");
        options.configFile = m_directory.filePath(QStringLiteral("server.ini"));
        return options;
    }
    QTableView& Table() const { return *window->findChild<QTableView*>(QStringLiteral("Inputs")); }
    /// Where a row is in the window.
    int TopOf(int row) const {
        const QModelIndex cell = Table().model()->index(row, InputModel::Name);
        return Table().viewport()->mapTo(window.get(), Table().visualRect(cell).topLeft()).y();
    }
    /// Whether all of \a widget lies in what its page shows.
    bool IsSeen(const QWidget& widget) const {
        const auto& page = *qobject_cast<QScrollArea*>(window->GetTabs()->currentWidget());
        const QRect shown(page.viewport()->mapTo(window.get(), QPoint()), page.viewport()->size());
        return widget.isVisible() &&
               shown.contains(QRect(widget.mapTo(window.get(), QPoint()), widget.size()));
    }
    bool NeedsScrolling() const {
        const auto& page = *qobject_cast<QScrollArea*>(window->GetTabs()->currentWidget());
        return page.verticalScrollBar()->maximum() > 0 || page.horizontalScrollBar()->maximum() > 0;
    }
    void PasteAt(int row, int column, const char* text) const {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        Table().setCurrentIndex(Table().model()->index(row, column));
        QTest::keyClick(&Table(), Qt::Key_V, Qt::ControlModifier);
        RunTurns(5);
    }
    QString TextOfState(int row) const {
        return Table().model()->index(row, InputModel::State).data().toString();
    }
    bool IsShown(const char* name) const {
        return window->findChild<QWidget*>(QLatin1String(name))->isVisible();
    }

    std::unique_ptr<ServerWindow> window;

  private:
    const QFont m_usualFont = QApplication::font();
    QTemporaryDir m_directory;
    SuppressionRecovery m_recovery;
    std::unique_ptr<ServerProgram> m_program;
};

TEST_F(ASmallServerWindow, KeepsTheRowsInPlaceWhenBarsCome) {
    ASSERT_EQ(window->size(), SmallScreen) << "something does not let it be smaller";
    ASSERT_FALSE(NeedsScrolling());
    const int before = TopOf(1);
    PasteAt(0, InputModel::Name, "module,input,name,frequency_mhz\nADAM-6060 7,1,Van,\n");  // no alarm
    EXPECT_TRUE(IsShown("InputsNotice"));
    EXPECT_TRUE(IsShown("UndoBar"));
    EXPECT_EQ(TopOf(1), before);
    EXPECT_FALSE(NeedsScrolling());
    for (const char* name : {"TestConnection", "Paste", "Import", "Export"})
        EXPECT_TRUE(IsSeen(*window->findChild<QPushButton*>(QLatin1String(name)))) << name;
    PasteAt(0, InputModel::Frequency, "5000000000000");
    EXPECT_TRUE(IsShown("InputsNotice"));
    EXPECT_EQ(TopOf(1), before);
    EXPECT_FALSE(NeedsScrolling());
}

TEST_F(ASmallServerWindow, SaysOnEveryPageWhatNobodyWatches) {
    const auto& alarm = *window->findChild<QWidget*>(QStringLiteral("AlarmBar"));
    const auto icon = [this] { return window->windowIcon().pixmap(16).toImage(); };
    PasteAt(0, InputModel::Frequency, "121.5");
    window->GetTabs()->setCurrentIndex(0);
    ASSERT_TRUE(WaitUntil([&] { return alarm.isVisible(); }));
    EXPECT_EQ(alarm.findChild<QLabel*>(QStringLiteral("AlarmText"))->text(),
              QStringLiteral("NOT SUPERVISED: 121.5 MHz. A keyed transmitter is not seen there."));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("1 NOT SUPERVISED | Multi-channel server: Mast 7"));
    const QImage bad = icon();
    window->GetTabs()->setCurrentIndex(window->GetTabs()->count() - 1);
    RunTurns(5);
    EXPECT_FALSE(NeedsScrolling());
    PasteAt(0, InputModel::Frequency, " ");
    EXPECT_TRUE(WaitUntil([&] { return !alarm.isVisible(); }));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Multi-channel server: Mast 7"));
    EXPECT_NE(icon(), bad);
    ASSERT_TRUE(WaitUntil([&] { return TextOfState(0) == QStringLiteral("? not live"); }));
}

}  // namespace
