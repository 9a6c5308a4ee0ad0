// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcconsole/recentservers.h>
#include <apps/mcconsole/session/consolesession.h>
#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/tuning.h>
#include <apps/pages/whenseen.h>

#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

#include <vector>

class AlarmBar;
class ConnectionBar;
class FrequencyBook;
class ICfg;
class MpxOrvListPage;
class MpxOrvPage;
class NoticeBar;
class OverviewPage;
class Page;
class QTabWidget;
class QVBoxLayout;
class TuneBar;
class UndoBar;

/// One station: the connection to it, above all pages the situation, and a page for each thing. GUI thread.
class StationView : public QWidget {
    Q_OBJECT

  public:
    /// Mirrors the server's tree below \a basePath, where nothing else is. \a clock and \a book, which the
    /// stations share, are not owned and outlive the view.
    StationView(const QString& basePath, IClock& clock, FrequencyBook& book, QWidget* parent = nullptr);
    ~StationView() override;

    ConsoleSession& GetSession() { return m_session; }
    const Situation& GetSituation() const { return m_situation; }
    Tuning& GetTuning() { return m_tuning; }
    NoticeBar& GetNotice() const { return *m_notice; }
    QTabWidget& GetTabs() const { return *m_tabs; }
    /// In full, in the order of the tabs.
    const QStringList& GetPageTitles() const { return m_titles; }

    /// As it was arranged when it was kept last; what is not there, or does not fit any more, stays as it is.
    void RestoreView(ICfg& cfg);
    void KeepView(ICfg& cfg) const;

    /// Connects to \a server in place of what there is. False if that cannot be a server.
    bool ConnectTo(const ServerAddress& server, const VtClientOptions& options);
    void Disconnect();
    /// What it was connected to last, as whom; its host is empty before.
    const RecentServers::Entry& GetEntry() const { return m_entry; }
    /// Says in its bars, fields and questions which station it is, where there are several; empty: there is
    /// one.
    void SetPlace(const QString& place);
    /// Whether others lose something if the console stops to use its MpxORV here.
    bool IsNeeded() const { return !LossOfMastership().isEmpty(); }
    /// Likewise, or the console itself does.
    bool IsUsed() const { return !LossOfMpxOrv().isEmpty(); }
    /// Whether the console may stop to use its MpxORV here; asks if somebody loses something, be it only the
    /// console itself.
    bool MayGiveUp(const QString& title, const QString& action);
    /// Likewise, where what is entered goes too.
    bool MayLeave(const QString& title, const QString& action);
    /// What is lost with leaving, in lines that say where, if there are several stations; empty: nothing.
    QString LossOfLeaving() const;
    /// Brings the page with that object name to the front; without a name asks for a server.
    void GoTo(const QString& page);
    /// The bar that tunes, on the page in front if it has one, else on the overview, which is shown then.
    TuneBar& GoToTuneBar();
    /// Shows how the connection is now, if somebody sees it: nobody tells that nothing comes.
    void ShowConnection() { m_connection.Refresh(); }

  Q_SIGNALS:
    /// The connection, or the situation, has changed.
    void Changed();
    /// The user wants another server.
    void ServerRequested();

  private:
    /// What is lost with the console's MpxORV, in lines; empty: nothing that others need.
    QString LossOfMastership() const;
    /// Likewise, or what only the console itself loses.
    QString LossOfMpxOrv() const;
    QString LossWithEntry() const;
    void BuildBars(QVBoxLayout& layout);
    void AddRestoreBar(QVBoxLayout& layout);
    void BuildPages(IClock& clock, FrequencyBook& book);
    void BuildEvents();
    /// \a tab is the title in short, if that is too long for a tab.
    void AddPage(Page* page, const char* name, const QString& title, const QString& tab = QString());
    void AddTab(QWidget* page, const char* name, const QString& title, const QString& tab = QString());
    void UseMpxOrv(bool isUsed);
    void ShowState();
    void ShowBanner();
    void BindPages(EMCSControlTreeSegments segments);
    /// Whether the pages keep the last content known, rather than show nothing.
    bool KeepsContent(EMCSControlTreeSegments segments) const;
    bool KeepsMpxOrv() const;
    void ShowKept(bool isKept);
    void CancelEdits();
    void ShowMpxOrv();

    RecentServers::Entry m_entry;
    QString m_place;
    ConsoleSession m_session;
    Situation m_situation;
    Tuning m_tuning;  ///< of the console's own MpxORV
    QWidget* m_content;
    QTabWidget* m_tabs = nullptr;
    QStringList m_titles;
    std::vector<Page*> m_pages;
    MpxOrvListPage* m_listPage = nullptr;
    OverviewPage* m_overview = nullptr;
    MpxOrvPage* m_mpxOrvPage = nullptr;
    ConnectionBar* m_banner = nullptr;
    AlarmBar* m_alarm = nullptr;
    NoticeBar* m_notice = nullptr;
    UndoBar* m_undo = nullptr;
    bool m_isKept = false;  ///< what the pages show is the last content known
    EMCSControlTreeSegments m_boundSegments = NoSegments;
    QString m_boundMpxOrv;
    QString m_shownMpxOrv;  ///< by the pages that keep it while the connection is lost
    WhenSeen m_connection;
};
