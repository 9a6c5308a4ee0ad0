// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/qtclock.h>
#include <apps/mcconsole/recentservers.h>
#include <apps/mcconsole/stationtabs.h>
#include <apps/mcconsole/stationview.h>
#include <apps/mcconsole/tune/frequencybook.h>
#include <apps/pages/keysdialog.h>
#include <apps/pages/whenseen.h>

#include <QtCore/QPointer>
#include <QtWidgets/QMainWindow>

#include <optional>

class QAction;
class QLabel;
class QMenu;
class SteadyLabel;

/// The operator's window on one station or several, with its menus and what is kept for the next start. What
/// the menus and keys do concerns the station in front. Main thread.
class ConsoleWindow : public QMainWindow {
    Q_OBJECT

  public:
    /// \a options are what connections are made with, except for what is entered.
    explicit ConsoleWindow(const VtClientOptions& options);
    ~ConsoleWindow() override;

    // Of the station in front.
    ConsoleSession& GetSession() { return GetFront().GetSession(); }
    const Situation& GetSituation() const { return GetFront().GetSituation(); }
    QTabWidget* GetTabs() const { return &GetFront().GetTabs(); }
    StationView& GetFront() const { return m_stations->GetFront(); }
    const std::vector<StationView*>& GetStations() const { return m_stations->GetAll(); }
    std::vector<KeysDialog::Row> GetKeys() const;
    /// How its MpxORVs are called from now on; empty: by machine and program.
    void SetMpxOrvName(const QString& name);
    /// Whoever is asked for a server is offered TLS.
    void PreferEncryption() { m_prefersEncryption = true; }

    /// Connects the station in front to \a server; goes to the one that is connected to it already.
    void ConnectTo(const ServerAddress& server, const VtClientOptions& options);
    /// The same in a tab of its own, unless the station in front has no server.
    void Open(const ServerAddress& server, const VtClientOptions& options);
    /// Opens the stations of the last time if these were several. False if they were not.
    bool OpenKept();
    /// Asks which server to connect to.
    void AskForServer();
    /// Asks which one to open beside those that are open.
    void AskForStation();
    /// Closes the station in front; asks if something is lost with it.
    void CloseStation();
    /// Closes without asking.
    void CloseNow();
    /// From now on in dark colours, or not.
    void ShowDark(bool isDark);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildMenus();
    void BuildStatusBar();
    void BuildPageMenu(QMenu& menu);
    /// What the operator looks at, and types into.
    struct View {
        QPointer<StationView> front;
        QPointer<QWidget> focus;
    };

    /// Its tab stands at \a index; without one, at the end.
    StationView* AddStation(std::optional<int> index = std::nullopt);
    StationView& StationFor(const ServerAddress& server);
    StationView* FindStation(const ServerAddress& server) const;
    /// What is entered there; nothing if nobody wants to connect.
    struct Entered {
        ServerAddress server;
        VtClientOptions options;
    };
    std::optional<Entered> Ask(const QString& title);
    void Close(StationView& station);
    void KeepStations();
    void OnChanged(StationView* station);
    void ShowFront();
    void ShowTitle();
    void ShowIcon();
    void Disconnect();
    void ShowConnection();
    void ChangeDark(bool isDark);
    void KeepFrequencies(const StationView& first);
    View GetView() const;
    void ShowAgain(const View& view);
    bool MayQuit();
    QString LossOfQuitting() const;

    QtClock m_clock;
    FrequencyBook m_book;
    VtClientOptions m_options;
    bool m_prefersEncryption = false;
    QString m_mpxOrvName;
    RecentServers m_recent;
    StationTabs* m_stations;
    int m_lastNumber = 0;  ///< of the stations that were ever opened
    bool m_isForced = false;
    QLabel* m_connection = nullptr;
    SteadyLabel* m_latency = nullptr;
    QLabel* m_client = nullptr;
    QAction* m_disconnect = nullptr;
    std::vector<QAction*> m_severalOnly;  ///< what is of use with several stations
    QAction* m_dark = nullptr;
    std::optional<ESeverity> m_shownSeverity;  ///< by the window's icon
    WhenSeen m_shownConnection;
};
