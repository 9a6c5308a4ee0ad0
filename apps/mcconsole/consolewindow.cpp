// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consolewindow.h>

#include <apps/mcconsole/alarmbar.h>
#include <apps/mcconsole/connectdialog.h>
#include <apps/mcconsole/connectionbar.h>
#include <apps/mcconsole/events/eventspage.h>
#include <apps/mcconsole/keptview.h>
#include <apps/mcconsole/keysdialog.h>
#include <apps/mcconsole/mpxorvpage.h>
#include <apps/mcconsole/overview/lastevents.h>
#include <apps/mcconsole/overview/overviewpage.h>
#include <apps/mcconsole/pagehelp.h>
#include <apps/mcconsole/pagetabs.h>
#include <apps/mcconsole/session/connectiontexts.h>
#include <apps/mcconsole/statusstrip.h>
#include <apps/mcconsole/tune/frequencypicker.h>
#include <apps/mcconsole/tune/tunebar.h>
#include <apps/pages/colours.h>
#include <apps/pages/configpage.h>
#include <apps/pages/displaypages.h>
#include <apps/pages/holders.h>
#include <apps/pages/mpxorvlistpage.h>
#include <apps/pages/mpxorvspage.h>
#include <apps/pages/noticebar.h>
#include <apps/pages/question.h>
#include <apps/pages/scrolledpage.h>
#include <apps/pages/serverkeys.h>
#include <apps/pages/severitylook.h>
#include <apps/pages/suppressionview.h>
#include <apps/pages/undobar.h>

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/widgets/notifications.h>
#include <platform/widgets/stalemark.h>
#include <platform/widgets/valuetext.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWhatsThis>

namespace {

constexpr std::chrono::milliseconds LookInterval(500);
constexpr int MaxNameLength = 40;

std::unique_ptr<ICfg> Configuration() {
    return std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot());
}

QString Bounded(const QString& text) {
    return valuetext::Shortened(text, connectiontexts::MostCharacters);
}

/// Long words in it do not make the window wider.
QLabel* PlainLabel(QWidget* parent, const char* name) {
    auto* const label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(1);
    return label;
}

}  // namespace

ConsoleWindow::ConsoleWindow(const VtClientOptions& options)
    : m_situation(m_clock, ConsoleSession::GetBasePath(), [this] { return Connection::Of(m_session); }),
      m_tuning(m_clock),
      m_options(options) {
    setObjectName(QStringLiteral("ConsoleWindow"));
    BuildPages();
    BuildStatusBar();
    BuildMenus();
    resize(QSize(800, 740).expandedTo(sizeHint()));
    m_recent.Read(*Configuration());
    keptview::Restore(*Configuration(), *m_tabs, m_tuning);
    KeepFrequencies();
    connect(&m_session, &ConsoleSession::Changed, &m_situation, &Situation::Refresh);
    connect(&m_session, &ConsoleSession::Changed, this, &ConsoleWindow::ShowState);
    connect(&m_situation, &Situation::Changed, this, &ConsoleWindow::ShowSituation);
    // Nobody tells that nothing comes.
    auto* const look = new QTimer(this);
    connect(look, &QTimer::timeout, this, &ConsoleWindow::ShowConnection);
    look->start(LookInterval);
    ShowState();
    ShowSituation();
}

ConsoleWindow::~ConsoleWindow() {
    m_session.Disconnect();  // first, since the pages have to detach from what goes
    disconnect(&m_session, nullptr, this, nullptr);
    delete centralWidget();  // what is in it uses the clock
}

void ConsoleWindow::BuildPages() {
    auto* const central = new QWidget(this);
    m_banner = new ConnectionBar(central);
    connect(m_banner, &ConnectionBar::TryRequested, this, [this] {
        m_session.RetryNow();
        ShowConnection();
    });
    m_tabs = new PageTabs(central);
    auto* const layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* const strip = new StatusStrip(m_situation, central);
    connect(strip, &StatusStrip::PageRequested, this, &ConsoleWindow::GoTo);
    m_alarm = new AlarmBar(m_situation, central);
    m_undo = new UndoBar(m_clock, central);
    m_notice = new NoticeBar(central);
    layout->addWidget(strip);
    layout->addWidget(m_alarm);
    layout->addWidget(m_banner);
    layout->addWidget(m_undo);
    layout->addWidget(m_notice);
    layout->addWidget(m_tabs, 1);
    setCentralWidget(central);

    m_overview = new OverviewPage(m_clock, m_tuning, m_book, m_situation);
    AddPage(m_overview, "Overview", tr("Overview"));
    AddPage(new StatusPage, "Status", tr("Status"));
    AddPage(new ConfigPage, "Configuration", tr("Configuration"), tr("Configuration", "short, for a tab"));
    AddPage(new CommandsPage, "Commands", tr("Commands"));
    AddPage(new SuppressionView, "Suppression", tr("Ground transmitters"),
            tr("Transmitters", "short, for a tab"));
    BuildEvents();
    AddPage(new LogPage, "Log", tr("Log"));
    m_listPage = new MpxOrvListPage;
    AddPage(m_listPage, "MpxORVs", tr("MpxORVs"));
    AddPage(new MpxOrvsPage, "MpxORVStatus", tr("MpxORV status"));
    m_mpxOrvPage = new MpxOrvPage(m_tuning, m_book);
    ScrolledPage::AddTo(*m_tabs, m_mpxOrvPage, QStringLiteral("MyMpxORV"), tr("My MpxORV"));
    m_tabs->setTabToolTip(m_tabs->count() - 1, tr("My MpxORV"));
    connect(m_mpxOrvPage, &MpxOrvPage::UseRequested, this, &ConsoleWindow::UseMpxOrv);
}

/// The last ones stand on the overview too.
void ConsoleWindow::BuildEvents() {
    auto* const page = new EventsPage(
        {[this] { return m_session.GetVtClient(); }, [this] { return m_session.GetServer().ToText(); }});
    AddPage(page, "Events", tr("Events"));
    LastEvents* const last = &m_overview->GetLastEvents();
    connect(&page->GetFeed(), &EventFeed::Came, last, &LastEvents::Add);
    connect(&page->GetFeed(), &EventFeed::Restarted, last, &LastEvents::Clear);
    connect(page, &EventsPage::Forgotten, last, &LastEvents::Clear);
}

void ConsoleWindow::AddPage(Page* page, const char* name, const QString& title, const QString& tab) {
    ScrolledPage::AddTo(*m_tabs, page, QString::fromLatin1(name), tab.isEmpty() ? title : tab);
    m_tabs->setTabToolTip(m_tabs->count() - 1, title);
    connect(page, &Page::Acted, m_undo, &UndoBar::Offer);
    m_pages.push_back(page);
}

void ConsoleWindow::BuildStatusBar() {
    m_connection = PlainLabel(this, "Connection");
    m_connection->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_latency = PlainLabel(this, "Latency");
    m_client = PlainLabel(this, "Client");
    m_latency->setToolTip(tr("The round trip to the server"));
    m_client->setToolTip(tr("What this console is called at the server"));
    statusBar()->addWidget(m_connection, 1);
    statusBar()->addPermanentWidget(m_latency);
    statusBar()->addPermanentWidget(m_client);
}

void ConsoleWindow::BuildMenus() {
    QMenu* const server = menuBar()->addMenu(tr("&Server"));
    server->addAction(tr("&Connect..."), this, &ConsoleWindow::AskForServer, QKeySequence::Open);
    m_disconnect = server->addAction(tr("&Disconnect"), this, &ConsoleWindow::Disconnect);
    server->addSeparator();
    server->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    m_dark = view->addAction(tr("&Dark colours"));
    m_dark->setCheckable(true);
    connect(m_dark, &QAction::triggered, this, &ConsoleWindow::ChangeDark);
    BuildPageMenu(*menuBar()->addMenu(tr("&Go")));
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    pagehelp::Describe(*m_tabs);
    help->addAction(
        tr("This &page"), this, [this] { pagehelp::ShowCurrent(*m_tabs); }, QKeySequence::HelpContents);
    QAction* const ask = QWhatsThis::createAction(help);
    ask->setText(tr("&What is this?"));
    help->addAction(ask);
    help->addAction(tr("&Keys..."), this, &ConsoleWindow::ShowKeys);
    help->addAction(tr("&About"), this, &ConsoleWindow::ShowAbout);
}

void ConsoleWindow::BuildPageMenu(QMenu& menu) {
    constexpr int most = 10;  // digits
    for (int i = 0; i < m_tabs->count() && i < most; ++i) {
        const QString title = m_tabs->tabToolTip(i);
        QAction* const action = menu.addAction(title, this, [this, i] { m_tabs->setCurrentIndex(i); });
        action->setShortcut(QStringLiteral("Alt+%1").arg((i + 1) % most));
        const QString key = action->shortcut().toString(QKeySequence::NativeText);
        m_tabs->setTabToolTip(i, QStringLiteral("%1 (%2)").arg(title, key));
    }
    menu.addSeparator();
    const auto add = [&](const QString& text, const char* key, auto action) {
        menu.addAction(
            text, this, [this, action] { action(GoToTuneBar()); }, QKeySequence(QLatin1String(key)));
    };
    add(tr("&Frequency field"), "Ctrl+L", [](TuneBar& bar) { bar.TakeFocus(); });
    add(tr("&Recent frequencies"), "Ctrl+H", [](TuneBar& bar) { bar.GetPicker().ShowRecent(); });
    add(tr("Fa&vourite frequencies"), "Ctrl+B", [](TuneBar& bar) { bar.GetPicker().ShowFavourites(); });
    add(tr("&Add to the favourites..."), "Ctrl+D", [](TuneBar& bar) { bar.GetPicker().AddFavourite(); });
    add(tr("&Edit the favourites..."), "Ctrl+E", [](TuneBar& bar) { bar.GetPicker().EditFavourites(); });
}

TuneBar& ConsoleWindow::GoToTuneBar() {
    if (m_mpxOrvPage->isVisible()) return m_mpxOrvPage->GetTuneBar();
    GoTo(QStringLiteral("Overview"));
    return m_overview->GetTuneBar();
}

/// With each change, since a console may be killed.
void ConsoleWindow::KeepFrequencies() {
    if (const int leftOut = m_book.Read(*Configuration()); leftOut > 0)
        m_notice->Tell(NoticeBar::ESeverity::Warning,
                       tr("%n of the kept frequencies cannot be right and are left out.", nullptr, leftOut));
    connect(&m_tuning, &Tuning::Granted, &m_book, &FrequencyBook::Remember);
    connect(&m_book, &FrequencyBook::RecentChanged, this, [this] { m_book.WriteRecent(*Configuration()); });
    connect(&m_book, &FrequencyBook::FavouritesChanged, this,
            [this] { m_book.WriteFavourites(*Configuration()); });
}

void ConsoleWindow::ShowKeys() {
    KeysDialog(KeysDialog::RowsOf(*this), this).exec();
}

void ConsoleWindow::ConnectTo(const ServerAddress& server, const VtClientOptions& options) {
    if (!m_session.Connect(server, options)) {
        const QString text = tr("\"%1\" cannot be a server.").arg(Bounded(server.host));
        Notifications::warning(tr("Connect to a server"), text);
        return;
    }
    m_recent.Add({server, options.user, options.caFile});
    m_recent.Write(*Configuration());
}

void ConsoleWindow::AskForServer() {
    ConnectDialog dialog(m_recent, m_options, this);
    if (m_prefersEncryption) dialog.PreferEncryption();
    if (dialog.exec() == QDialog::Accepted && MayGiveUp(tr("Connect to another server"), tr("Connect")))
        ConnectTo(dialog.GetServer(), dialog.GetOptions());
}

void ConsoleWindow::ShowDark(bool isDark) {
    m_dark->setChecked(isDark);
    colours::Apply(isDark);
}

void ConsoleWindow::ChangeDark(bool isDark) {
    ShowDark(isDark);
    const std::unique_ptr<ICfg> root = Configuration();
    root->WriteBool(QStringLiteral("DarkColours"), isDark);
    root->CommitKey(QStringLiteral("DarkColours"));
}

void ConsoleWindow::ShowAbout() {
    QMessageBox::about(this, tr("About"),
                       tr("Multi-channel console %1").arg(QApplication::applicationVersion()));
}

bool ConsoleWindow::MayGiveUp(const QString& title, const QString& action) {
    const QString path = m_session.GetMpxOrvPath();
    const holders::Holder own = path.isEmpty() ? holders::Holder() : holders::At(path);
    if (!own.isMaster) return true;
    QStringList text{tr("This console is job master (%1) and gives that up.").arg(own.does),
                     holders::LossOfWatchers(holders::TreeOf(path))};
    text.removeAll(QString());
    return question::IsConfirmed(this, title, text.join(QLatin1Char('\n')), action);
}

void ConsoleWindow::Disconnect() {
    if (MayGiveUp(tr("Disconnect from the server"), tr("Disconnect"))) m_session.Disconnect();
}

void ConsoleWindow::UseMpxOrv(bool isUsed) {
    if (isUsed || MayGiveUp(tr("Give the MpxORV back"), tr("Give back")))
        m_session.UseMpxOrv(isUsed);
    else
        m_mpxOrvPage->ShowUsed(true);
}

void ConsoleWindow::CloseNow() {
    m_isForced = true;
    if (auto* const question = findChild<QDialog*>(QStringLiteral("Question"))) question->reject();
    close();
}

void ConsoleWindow::closeEvent(QCloseEvent* event) {
    if (!m_isForced && !MayGiveUp(tr("Quit"), tr("Quit")) && !m_isForced) return event->ignore();
    keptview::Keep(*Configuration(), *m_tabs, m_tuning);
    m_session.Disconnect();
    QMainWindow::closeEvent(event);
}

void ConsoleWindow::ShowState() {
    const EMCSControlTreeSegments segments = m_session.GetSegments();
    const bool wasKept = m_isKept;
    m_isKept = KeepsContent(segments);
    if (m_isKept != wasKept) ShowKept(m_isKept);
    if (!m_isKept && (segments != m_boundSegments || wasKept)) {
        m_boundSegments = segments;
        for (Page* const page : m_pages)
            page->Bind(ConsoleSession::GetBasePath(), segments);
        const QString commands = Page::SegmentPath(ConsoleSession::GetBasePath(), segments, CommandSegment);
        m_alarm->BindReconnect(commands.isEmpty() ? QString()
                                                  : mcskeys::Join(commands, serverkeys::ReconnectModules));
    }
    ShowMpxOrv();
    ShowConnection();
}

/// From a loss until all is there again.
bool ConsoleWindow::KeepsContent(EMCSControlTreeSegments segments) const {
    const bool isLost = m_session.GetState() == ConsoleSession::EState::Lost;
    const bool isComing = m_isKept && m_session.GetState() == ConsoleSession::EState::Connected;
    return m_boundSegments != NoSegments && (isLost || isComing) && segments == NoSegments;
}

/// Likewise, while it may still come back.
bool ConsoleWindow::KeepsMpxOrv() const {
    const bool isComing = m_session.GetState() == ConsoleSession::EState::Connected &&
                          m_session.UsesMpxOrv() && !m_session.IsMpxOrvMissing();
    return m_isKept || isComing;
}

/// The widgets that are bound to values know that these are stale; the list of the library does not.
void ConsoleWindow::ShowKept(bool isKept) {
    for (auto* const list : m_tabs->findChildren<MCSMpxORVStatusListDisplay*>()) {
        if (isKept)
            stalemark::Set(*list);
        else
            stalemark::Clear(*list);
    }
    // What was being typed is meant for a server that cannot take it now.
    if (!isKept) return;
    const auto cancel = [](QWidget& field) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&field, &escape);
    };
    for (auto* const field : m_tabs->findChildren<VCLineEdit*>())
        cancel(*field);
    for (auto* const field : m_tabs->findChildren<VCNumericFloatSpin*>())
        cancel(*field);
}

void ConsoleWindow::ShowMpxOrv() {
    const QString path = m_session.GetMpxOrvPath();
    if (path != m_boundMpxOrv) {
        m_boundMpxOrv = path;
        m_tuning.Bind(path);
        m_overview->BindMpxOrv(path);
    }
    if (path != m_shownMpxOrv && (!path.isEmpty() || !KeepsMpxOrv())) {
        m_shownMpxOrv = path;
        m_mpxOrvPage->Bind(path);
        m_listPage->SetOwn(path);
    }
    m_mpxOrvPage->ShowState(connectiontexts::MpxOrv(m_session));
    m_mpxOrvPage->ShowUsed(m_session.UsesMpxOrv());
}

void ConsoleWindow::ShowConnection() {
    const bool isConnected = m_session.GetState() == ConsoleSession::EState::Connected;
    const bool isIdle = m_session.GetState() == ConsoleSession::EState::Idle;
    const QString text = connectiontexts::Line(m_session);
    if (m_connection->text() != text) m_connection->setText(text);
    m_disconnect->setEnabled(!isIdle);

    m_banner->Tell(connectiontexts::Banner(m_session), !isConnected && m_session.GetTimeToRetry());
    const QString name = valuetext::Shortened(m_session.GetMpxOrvName(), MaxNameLength);
    if (m_client->text() != name) m_client->setText(name);
    const QString latency = connectiontexts::Latency(m_session);
    if (m_latency->text() != latency) m_latency->setText(latency);
}

void ConsoleWindow::ShowSituation() {
    const QString title = m_situation.GetTitle();
    setWindowTitle(title.isEmpty() ? tr("Multi-channel console") : title);
    if (const ESeverity worst = m_situation.GetWorst(); worst != m_shownSeverity) {
        m_shownSeverity = worst;
        setWindowIcon(severitylook::Icon(worst, *this));
    }
    ShowConnection();
}

void ConsoleWindow::GoTo(const QString& page) {
    if (page.isEmpty()) return AskForServer();
    auto* const wanted = m_tabs->findChild<ScrolledPage*>(page);
    if (wanted == nullptr) return;
    m_tabs->setCurrentWidget(wanted);
    m_tabs->setFocus();
}
