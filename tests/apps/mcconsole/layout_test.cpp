// SPDX-License-Identifier: Apache-2.0
// Whether all can be read on the smallest screen that the console is for: 1024 by 600 points, which are 1536
// by 900 pixels at 150 % and 2048 by 1200 at 200 %. The build runs these tests once for each of the scales.
#include <apps/mcconsole/connectdialog.h>
#include <apps/mcconsole/tune/favouritesdialog.h>
#include <apps/pages/guimodule.h>
#include <apps/pages/keysdialog.h>
#include <apps/pages/mpxorvs/mpxorvcells.h>

#include <tests/apps/mcconsole/consolefixture.h>
#include <tests/apps/mcconsole/cuttexts.h>
#include <tests/support/waituntil.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/widgets/refreshscheduler.h>

#include <gmock/gmock.h>

#include <QtCore/QLocale>
#include <QtGui/QFont>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

namespace {

using testing::IsEmpty;

constexpr QSize SmallScreen(1024, 560);  // of 600 lines the desktop takes some
constexpr QSize OldWindow(800, 560);

constexpr char Configuration[] =
    "[StaticMpxORVs]\n"
    "Names=\"Tower, Van 1\"\n"
    "Tower\\Comment=ATC position 2\n"
    "Van%201\\Comment=on the road\n"
    "[GTS]\n"
    "ModuleCount=1\n"
    "Module0\\Index=0\n"
    "Module0\\Name=ADAM-6051\n"
    "Module0\\Address=127.0.0.1\n"
    "Module0\\PollInterval=100\n"
    "Module0\\Assignments\\AssignmentCount=12\n"
    "Module0\\Assignments\\DI_0=121500000\n"
    "Module0\\Labels\\DI_0=Tower 1\n";

/// In which language, with how large letters and how large a window somebody works.
struct Look {
    const char* name;
    const char* language;
    double points;
    QSize window;
};

class LayoutTest : public testing::TestWithParam<Look> {
  protected:
    LayoutTest() : m_module(QString::fromLatin1(GetParam().language)) {
        UseFontOfADesktop();
        CfgCenter::Instance().SetStorePath(m_server.Path(QStringLiteral("console.ini")));
        window = std::make_unique<ConsoleWindow>(VtClientOptions());
        window->GetSession().SetMpxOrvName(QStringLiteral("Console"));
        window->resize(GetParam().window);
        window->show();
    }
    ~LayoutTest() override {
        window.reset();
        CfgCenter::Instance().SetStorePath(QString());
        QLocale::setDefault(QLocale::c());
        QApplication::setFont(m_usualFont);
    }

    /// A wide font at 96 dots per inch. Where there is no desktop, the toolkit has a much larger one.
    static void UseFontOfADesktop() {
        const double pixels = GetParam().points * 96 / 72;
        constexpr double pointsPerInch = 72;
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPointSizeF(pixels * pointsPerInch / QGuiApplication::primaryScreen()->logicalDotsPerInchY());
        QApplication::setFont(font);
    }

    template <class W>
    W* Find(const char* name) const {
        return window->findChild<W*>(QString::fromLatin1(name));
    }
    /// A server whose only module does not answer, so that the alarm stands above the pages.
    void ConnectToServer() {
        m_server.WriteFile(QStringLiteral("mcserver.ini"), Configuration);
        ASSERT_NO_FATAL_FAILURE(m_server.Start());
        window->ConnectTo({QStringLiteral("127.0.0.1"), m_server.Port(), false}, VtClientOptions());
        const auto* const alarm = Find<QWidget>("AlarmBar");
        ASSERT_TRUE(ServerProcess::WaitFor([&] {
            const ServerFacts& facts = window->GetSituation().GetFacts();
            return !window->GetSession().GetMpxOrvPath().isEmpty() && alarm->isVisible() &&
                   facts.Key(ServerFacts::EFact::BootState) == BootReady;
        }));
    }
    void Tune(const char* text, double hz) {
        window->GetTabs()->setCurrentIndex(0);
        auto* const field =
            window->GetTabs()->currentWidget()->findChild<QLineEdit*>(QStringLiteral("Frequency"));
        field->setText(QString());
        QTest::keyClicks(field, QString::fromLatin1(text));
        QTest::keyClick(field, Qt::Key_Return);
        ASSERT_TRUE(
            ServerProcess::WaitFor([&] { return window->GetSituation().GetFacts().TunedFrequency() == hz; }));
    }
    /// The console's MpxORV is job master at a frequency with many digits.
    void Work() {
        ASSERT_NO_FATAL_FAILURE(Tune("1290.508333", 1290508333));
        Find<QPushButton>("BecomeMaster")->click();
        ASSERT_TRUE(ServerProcess::WaitFor(
            [&] { return window->GetSituation().GetFacts().Flag(ServerFacts::EFact::OwnIsMaster) == true; }));
    }
    template <class F>
    void OnEachPage(const F& check) {
        for (int i = 0; i < window->GetTabs()->count(); ++i) {
            window->GetTabs()->setCurrentIndex(i);
            RefreshScheduler::Instance().Flush();
            RunTurns(10);
            SCOPED_TRACE(window->GetTabs()->widget(i)->objectName().toStdString());
            check();
        }
    }
    void ExpectThatAllIsSeen() {
        OnEachPage([&] {
            EXPECT_EQ(window->size(), GetParam().window) << "something does not let it be smaller";
            EXPECT_THAT(cuttexts::Find(*window), IsEmpty());
            EXPECT_THAT(cuttexts::ScrollBars(*window, Qt::Horizontal), IsEmpty());
            if (window->GetTabs()->currentIndex() == 0) {
                EXPECT_THAT(cuttexts::ScrollBars(*window, Qt::Vertical), IsEmpty());
            }
        });
    }

    const QFont m_usualFont = QApplication::font();
    ServerProcess m_server;
    values::Tree m_tree;
    GuiModule m_module;
    std::unique_ptr<ConsoleWindow> window;
};

TEST_P(LayoutTest, CutsNothingWithoutAServer) {
    ExpectThatAllIsSeen();
}

TEST_P(LayoutTest, CutsNothingAtWorkWithAnAlarm) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(Work());
    ExpectThatAllIsSeen();
    ASSERT_NO_FATAL_FAILURE(Tune("121.5", 121.5e6));  // which nobody supervises
    ExpectThatAllIsSeen();
}

TEST_P(LayoutTest, CutsNothingWhileTheServerIsLost) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    ASSERT_NO_FATAL_FAILURE(Work());
    m_server.Kill();
    ASSERT_TRUE(ServerProcess::WaitFor([&] { return Find<QWidget>("ConnectionBar")->isVisible(); }));
    ExpectThatAllIsSeen();
}

TEST_P(LayoutTest, TheListOfMpxOrvsShowsWhatMattersInANarrowWindow) {
    ASSERT_NO_FATAL_FAILURE(ConnectToServer());
    auto* const page = Find<QWidget>("MpxORVs");
    window->GetTabs()->setCurrentWidget(page);
    window->resize(OldWindow);
    RunTurns(10);
    const auto* const list = Find<QTableView>("MpxORVList");
    EXPECT_EQ(window->width(), OldWindow.width());
    EXPECT_THAT(cuttexts::ScrollBars(*page, Qt::Horizontal), IsEmpty());
    EXPECT_THAT(cuttexts::Find(*page), IsEmpty());
    EXPECT_TRUE(list->isColumnHidden(mpxorvcells::Master)) << "the state says it too";
    EXPECT_FALSE(list->isColumnHidden(mpxorvcells::Frequency));
    window->resize(1600, 560);
    QCoreApplication::processEvents();
    EXPECT_FALSE(list->isColumnHidden(mpxorvcells::Master));
    EXPECT_FALSE(list->isColumnHidden(mpxorvcells::Comment));
}

TEST_P(LayoutTest, CutsNothingInItsDialogs) {
    FrequencyBook book;
    book.SetFavourites({{QStringLiteral("Tower"), 118400000}});
    ConnectDialog connecting(RecentServers(), VtClientOptions(), nullptr);
    KeysDialog keys(window->GetKeys(), nullptr);
    FavouritesDialog favourites(book, 121500000);
    for (QWidget* const dialog : {static_cast<QWidget*>(&connecting), static_cast<QWidget*>(&keys),
                                  static_cast<QWidget*>(&favourites)}) {
        dialog->show();
        QCoreApplication::processEvents();
        SCOPED_TRACE(dialog->objectName().toStdString());
        EXPECT_THAT(cuttexts::Find(*dialog), IsEmpty());
        EXPECT_THAT(cuttexts::ScrollBars(*dialog, Qt::Horizontal), IsEmpty());
        EXPECT_LE(dialog->width(), GetParam().window.width());
        EXPECT_LE(dialog->height(), GetParam().window.height());
    }
}

INSTANTIATE_TEST_SUITE_P(, LayoutTest,
                         testing::Values(Look{"English", "en", 10, SmallScreen},
                                         Look{"German", "de", 10, SmallScreen},
                                         Look{"EnglishInLargeLetters", "en", 12, SmallScreen},
                                         Look{"GermanInLargeLetters", "de", 12, SmallScreen},
                                         Look{"EnglishInANarrowWindow", "en", 10, OldWindow},
                                         Look{"GermanInANarrowWindow", "de", 10, OldWindow}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
