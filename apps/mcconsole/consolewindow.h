// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/qtclock.h>
#include <apps/mcconsole/recentservers.h>
#include <apps/mcconsole/session/consolesession.h>
#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/frequencybook.h>
#include <apps/mcconsole/tune/tuning.h>

#include <QtWidgets/QMainWindow>

#include <vector>

class AlarmBar;
class ConnectionBar;
class MpxOrvListPage;
class MpxOrvPage;
class NoticeBar;
class OverviewPage;
class Page;
class QAction;
class QLabel;
class QMenu;
class QTabWidget;
class TuneBar;
class UndoBar;

/// The operator's window: above all pages the situation, and a page for each thing. Main thread.
class ConsoleWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// \a options are what connections are made with, except for what is entered.
    explicit ConsoleWindow(const VtClientOptions& options);
    ~ConsoleWindow() override;

    ConsoleSession& GetSession() { return m_session; }
    const Situation& GetSituation() const { return m_situation; }
    QTabWidget* GetTabs() const { return m_tabs; }
    /// Whoever is asked for a server is offered TLS.
    void PreferEncryption() { m_prefersEncryption = true; }

    void ConnectTo(const ServerAddress& server, const VtClientOptions& options);
    /// Asks which server to connect to.
    void AskForServer();
    /// Closes without asking.
    void CloseNow();
    /// From now on in dark colours, or not.
    void ShowDark(bool isDark);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildMenus();
    void BuildPages();
    void BuildEvents();
    void BuildStatusBar();
    /// \a tab is the title in short, if that is too long for a tab.
    void AddPage(Page* page, const char* name, const QString& title, const QString& tab = QString());
    /// Whether the console may stop to use its MpxORV; asks if others lose something.
    bool MayGiveUp(const QString& title, const QString& action);
    void Disconnect();
    void UseMpxOrv(bool isUsed);
    void ShowState();
    /// Whether the pages keep the last content known, rather than show nothing.
    bool KeepsContent(EMCSControlTreeSegments segments) const;
    bool KeepsMpxOrv() const;
    void ShowKept(bool isKept);
    void ShowConnection();
    void ShowMpxOrv();
    void ShowSituation();
    /// Brings the page with that object name to the front; without a name asks for a server.
    void GoTo(const QString& page);
    void ChangeDark(bool isDark);
    void BuildPageMenu(QMenu& menu);
    /// The bar that tunes, on this page if it has one, else on the overview, which is shown then.
    TuneBar& GoToTuneBar();
    void KeepFrequencies();
    void ShowKeys();
    void ShowAbout();

    QtClock m_clock;
    ConsoleSession m_session;
    Situation m_situation;
    Tuning m_tuning;  ///< of the console's own MpxORV
    FrequencyBook m_book;
    VtClientOptions m_options;
    bool m_prefersEncryption = false;
    RecentServers m_recent;
    QTabWidget* m_tabs = nullptr;
    std::vector<Page*> m_pages;
    MpxOrvListPage* m_listPage = nullptr;
    OverviewPage* m_overview = nullptr;
    MpxOrvPage* m_mpxOrvPage = nullptr;
    ConnectionBar* m_banner = nullptr;
    AlarmBar* m_alarm = nullptr;
    NoticeBar* m_notice = nullptr;
    UndoBar* m_undo = nullptr;
    bool m_isForced = false;
    bool m_isKept = false;  ///< what the pages show is the last content known
    QLabel* m_connection = nullptr;
    QLabel* m_latency = nullptr;
    QLabel* m_client = nullptr;
    QAction* m_disconnect = nullptr;
    QAction* m_dark = nullptr;
    EMCSControlTreeSegments m_boundSegments = NoSegments;
    QString m_boundMpxOrv;
    QString m_shownMpxOrv;                     ///< by the pages that keep it while the connection is lost
    std::optional<ESeverity> m_shownSeverity;  ///< by the window's icon
};
