// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consolewindow.h>
#include <apps/pages/guimodule.h>

#include <devicecontrol/multichannelserver/common/mpxorvhandle.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabWidget>

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
    /// All that can be read in the window, menus included.
    std::set<std::string> Texts() {
        std::set<std::string> texts;
        for (const QLabel* label : m_window.findChildren<QLabel*>())
            texts.insert(label->text().toStdString());
        for (const auto* button : m_window.findChildren<QAbstractButton*>())
            texts.insert(button->text().toStdString());
        for (const auto* box : m_window.findChildren<QGroupBox*>())
            texts.insert(box->title().toStdString());
        for (const QAction* action : m_window.findChildren<QAction*>())
            texts.insert(action->text().toStdString());
        return texts;
    }

  private:
    values::Tree m_tree;
    GuiModule m_module;
    ConsoleWindow m_window;
};

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
                ElementsAre("Zustand", "Konfiguration", "Befehle", "Protokoll", "MpxORVs", "Mein MpxORV"));
    EXPECT_THAT(Console("en").Tabs(),
                ElementsAre("Status", "Configuration", "Commands", "Log", "MpxORVs", "My MpxORV"));
}

TEST_F(ConsoleInGerman, SharesHardlyAnyTextWithTheEnglishOne) {
    const std::set<std::string> english = Console("en").Texts();
    const std::set<std::string> german = Console("de").Texts();
    ASSERT_GT(english.size(), 40U);
    std::vector<std::string> same;
    for (const std::string& text : english)
        if (german.count(text) != 0) same.push_back(text);
    // What is nobody's language, and a name.
    EXPECT_THAT(same, IsSubsetOf({std::string(), std::string("- - -"), std::string("&Server"),
                                  std::string("MultiChannel Server:"),
                                  MpxORVHandle::CreateUniqueMpxORVName().toStdString()}))
        << "not translated";
}

}  // namespace
