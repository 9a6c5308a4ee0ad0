// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/qtclock.h>
#include <apps/pages/severity.h>
#include <apps/pages/whenseen.h>

#include <QtWidgets/QMainWindow>

#include <functional>
#include <utility>

class Page;
class QLabel;
class QMenu;
class QTabWidget;
class QVBoxLayout;
class ServerLog;
class UndoBar;
class VtServer;

/// The server's own window: the displays of the console, on the server's tree itself. Closing it ends the
/// server, after asking if clients are connected, or if something that was entered would be lost. Needs a
/// server that has started. GUI thread.
class ServerWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// \a name: what the server calls itself. \a listener and \a log are not owned and outlive the window;
    /// what is done at it is told in \a log with who does it.
    ServerWindow(const QString& name, const VtServer& listener, ServerLog& log);
    ~ServerWindow() override;

    /// Adds a page at the end.
    void AddPage(Page* page, const char* name, const QString& title);
    /// Puts \a notice above the pages, whichever is shown.
    void AddNotice(QWidget* notice);
    /// Why what was entered at the window cannot be saved, one line; empty: it can, or there is nothing.
    using Obstacle = std::function<QString()>;
    /// Asks \a obstacle before it closes, as long as it lives.
    void SetObstacleOfSaving(Obstacle obstacle) { m_obstacle = std::move(obstacle); }
    /// Shows by the icon how bad it is, and \a word before the title; empty: none.
    void ShowState(ESeverity severity, const QString& word);
    QTabWidget* GetTabs() const { return m_tabs; }
    /// Closes without asking, or without an answer to what is asked.
    void CloseNow();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildMenus();
    void ShowClients();
    QString LossOfClients() const;
    /// Who loses what, in lines; empty: nobody anything.
    QString LossOfClosing() const;
    bool MayClose();
    int CountClients() const;

    const VtServer& m_listener;
    ServerLog& m_log;
    Obstacle m_obstacle = [] { return QString(); };
    const QString m_title;
    QtClock m_clock;
    QTabWidget* m_tabs;
    QMenu* m_pages = nullptr;  ///< brings each to the front
    UndoBar* m_undo;
    QVBoxLayout* m_layout;  ///< notices, and below them the pages
    QLabel* m_address;
    QLabel* m_clients;
    bool m_isForced = false;
    WhenSeen m_shownClients;
};
