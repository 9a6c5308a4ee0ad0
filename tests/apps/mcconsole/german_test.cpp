// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/connectdialog.h>
#include <apps/mcconsole/consolewindow.h>
#include <apps/pages/guimodule.h>

#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabWidget>

#include <algorithm>
#include <iterator>
#include <set>

namespace {

using testing::ElementsAre;
using testing::IsSubsetOf;

/// The console without a server, in one language.
class Console {
  public:
    explicit Console(const char* locale)
        : m_module(QString::fromLatin1(locale)), m_window(VtClientOptions()) {}
    ~Console() { QLocale::setDefault(QLocale::c()); }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    std::vector<std::string> Tabs() {
        std::vector<std::string> texts;
        for (int i = 0; i < m_window.GetTabs()->count(); ++i)
            texts.push_back(m_window.GetTabs()->tabText(i).toStdString());
        return texts;
    }
    std::set<std::string> Texts() const { return TextsOf(m_window); }
    static std::set<std::string> TextsOfTheDialog() {
        return TextsOf(ConnectDialog(RecentServers(), VtClientOptions(), nullptr));
    }

  private:
    /// All that can be read in \a window, menus included.
    static std::set<std::string> TextsOf(const QWidget& window) {
        std::set<std::string> texts{window.windowTitle().toStdString()};
        for (const QLabel* label : window.findChildren<QLabel*>())
            texts.insert(label->text().toStdString());
        for (const auto* button : window.findChildren<QAbstractButton*>())
            texts.insert(button->text().toStdString());
        for (const auto* box : window.findChildren<QGroupBox*>())
            texts.insert(box->title().toStdString());
        for (const QAction* action : window.findChildren<QAction*>())
            texts.insert(action->text().toStdString());
        for (const auto* field : window.findChildren<QLineEdit*>())
            texts.insert(field->placeholderText().toStdString());
        return texts;
    }

    values::Tree m_tree;
    GuiModule m_module;
    ConsoleWindow m_window;
};

std::vector<std::string> Common(const std::set<std::string>& one, const std::set<std::string>& other) {
    std::vector<std::string> common;
    std::set_intersection(one.begin(), one.end(), other.begin(), other.end(), std::back_inserter(common));
    return common;
}

class ConsoleInGerman : public testing::Test {
  protected:
    ConsoleInGerman() {
        CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("console.ini")));
    }
    ~ConsoleInGerman() override { CfgCenter::Instance().SetStorePath(QString()); }

    QTemporaryDir directory;
};

TEST_F(ConsoleInGerman, HasGermanPages) {
    EXPECT_THAT(Console("de").Tabs(),
                ElementsAre("Übersicht", "Zustand", "Konfig.", "Befehle", "Bodensender", "Ereignisse",
                            "Protokoll", "MpxORVs", "MpxORV-Status", "Mein MpxORV"));
    EXPECT_THAT(Console("en").Tabs(),
                ElementsAre("Overview", "Status", "Configuration", "Commands", "Transmitters", "Events",
                            "Log", "MpxORVs", "MpxORV status", "My MpxORV"));
}

TEST_F(ConsoleInGerman, SharesHardlyAnyTextWithTheEnglishOne) {
    const std::set<std::string> english = Console("en").Texts();
    ASSERT_GT(english.size(), 40U);
    // What is nobody's language, and a name.
    EXPECT_THAT(Common(english, Console("de").Texts()),
                IsSubsetOf({std::string(), std::string("- - -"), std::string("&Server"),
                            std::string("MultiChannel Server:"), std::string("MpxORVs"),
                            MpxORVHandle::CreateUniqueMpxORVName().toStdString()}))
        << "not translated";
}

TEST_F(ConsoleInGerman, AsksForTheServerInGerman) {
    std::set<std::string> english;
    std::set<std::string> german;
    {
        const Console console("en");
        english = Console::TextsOfTheDialog();
    }
    {
        const Console console("de");
        german = Console::TextsOfTheDialog();
    }
    ASSERT_GT(english.size(), 8U);
    // The last one is Qt's own, whose translations need not be installed.
    EXPECT_THAT(Common(english, german),
                IsSubsetOf({std::string(), std::string("&Server:"), std::string("&Token:"),
                            std::string("Cancel"), std::string("&Cancel"), std::string("Filter")}))
        << "not translated";
}

// The list of MpxORVs and the details beside it called it by two words.
TEST(GermanCatalogues, HaveOneWordForAJobMaster) {
    const QDir catalogues(QStringLiteral(TRANSLATIONS));
    const QStringList names = catalogues.entryList({QStringLiteral("*_de.ts")});
    EXPECT_EQ(names.size(), 3);
    for (const QString& name : names) {
        QFile file(catalogues.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString texts = QString::fromUtf8(file.readAll());
        EXPECT_FALSE(texts.contains(QLatin1String("Job-Master"), Qt::CaseInsensitive)) << name.toStdString();
        EXPECT_FALSE(texts.contains(QLatin1String("Jobmaster"), Qt::CaseInsensitive)) << name.toStdString();
    }
}

}  // namespace
