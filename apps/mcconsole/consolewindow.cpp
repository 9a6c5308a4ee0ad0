// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consolewindow.h>

#include <apps/mcconsole/connectdialog.h>
#include <apps/mcconsole/keptstations.h>
#include <apps/mcconsole/session/connectiontexts.h>
#include <apps/mcconsole/tune/frequencypicker.h>
#include <apps/mcconsole/tune/tunebar.h>
#include <apps/pages/altkeys.h>
#include <apps/pages/colours.h>
#include <apps/pages/helpmenu.h>
#include <apps/pages/noticebar.h>
#include <apps/pages/question.h>
#include <apps/pages/scrolledpage.h>
#include <apps/pages/severitylook.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/widgets/notifications.h>
#include <platform/widgets/steadylabel.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>

#include <algorithm>

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
    : m_options(options),
      m_stations(new StationTabs(this)),
      m_shownConnection(*this, [this] { ShowConnection(); }) {
    setObjectName(QStringLiteral("ConsoleWindow"));
    new AltKeys(this);
    setCentralWidget(m_stations);
    StationView* const first = AddStation();
    BuildStatusBar();
    BuildMenus();
    // So wide that nothing has to be said shorter, and that it fits a small screen.
    resize(QSize(1000, 740).expandedTo(sizeHint()));
    m_recent.Read(*Configuration());
    KeepFrequencies(*first);
    connect(m_stations, &StationTabs::FrontChanged, this, &ConsoleWindow::ShowFront);
    connect(m_stations, &StationTabs::Changed, this, &ConsoleWindow::OnChanged);
    connect(m_stations, &StationTabs::CloseRequested, this,
            [this](StationView* station) { Close(*station); });
    // Nobody tells that nothing comes.
    auto* const look = new QTimer(this);
    connect(look, &QTimer::timeout, this, [this] {
        GetFront().ShowConnection();
        m_shownConnection.Refresh();
    });
    look->start(LookInterval);
    ShowFront();
}

ConsoleWindow::~ConsoleWindow() {
    delete centralWidget();  // what is in it uses the clock
}

void ConsoleWindow::BuildStatusBar() {
    m_connection = PlainLabel(this, "Connection");
    m_connection->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_latency = new SteadyLabel(this);
    m_latency->setObjectName(QStringLiteral("Latency"));
    m_latency->setAutoFillBackground(true);  // or each new text has all drawn anew that lies below it
    m_latency->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("9999.99 ms")));
    m_latency->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
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
    server->addAction(tr("Open a further &station..."), this, &ConsoleWindow::AskForStation,
                      QKeySequence(QStringLiteral("Ctrl+T")));
    m_severalOnly.push_back(server->addAction(tr("C&lose this station"), this, &ConsoleWindow::CloseStation,
                                              QKeySequence(QStringLiteral("Ctrl+W"))));
    server->addSeparator();
    server->addAction(tr("&Quit"), this, &QWidget::close, QKeySequence::Quit);
    QMenu* const view = menuBar()->addMenu(tr("&View"));
    m_dark = view->addAction(tr("&Dark colours"));
    m_dark->setCheckable(true);
    connect(m_dark, &QAction::triggered, this, &ConsoleWindow::ChangeDark);
    BuildPageMenu(*menuBar()->addMenu(tr("&Go")));
    helpmenu::AddTo(*this, {[this] { return GetTabs(); }, [this] { return GetKeys(); },
                            tr("Multi-channel console %1").arg(QApplication::applicationVersion())});
}

void ConsoleWindow::BuildPageMenu(QMenu& menu) {
    const QStringList& titles = GetFront().GetPageTitles();
    for (int i = 0; i < titles.size(); ++i) {
        QAction* const action = menu.addAction(titles[i], this, [this, i] { GetTabs()->setCurrentIndex(i); });
        action->setShortcut(ScrolledPage::KeyOfPage(i));
    }
    menu.addSeparator();
    const auto add = [&](const QString& text, const char* key, auto action) {
        menu.addAction(
            text, this, [this, action] { action(GetFront().GoToTuneBar()); },
            QKeySequence(QLatin1String(key)));
    };
    add(tr("&Frequency field"), "Ctrl+L", [](TuneBar& bar) { bar.TakeFocus(); });
    add(tr("&Recent frequencies"), "Ctrl+H", [](TuneBar& bar) { bar.GetPicker().ShowRecent(); });
    add(tr("Fa&vourite frequencies"), "Ctrl+B", [](TuneBar& bar) { bar.GetPicker().ShowFavourites(); });
    add(tr("&Add to the favourites..."), "Ctrl+D", [](TuneBar& bar) { bar.GetPicker().AddFavourite(); });
    add(tr("&Edit the favourites..."), "Ctrl+Shift+B",
        [](TuneBar& bar) { bar.GetPicker().EditFavourites(); });
    menu.addSeparator();
    const auto step = [&](const QString& text, const char* key, int by) {
        m_severalOnly.push_back(menu.addAction(
            text, this, [this, by] { m_stations->Step(by); }, QKeySequence(QLatin1String(key))));
    };
    step(tr("&Next station"), "Ctrl+PgDown", 1);
    step(tr("&Previous station"), "Ctrl+PgUp", -1);
}

void ConsoleWindow::SetMpxOrvName(const QString& name) {
    m_mpxOrvName = name;
    for (StationView* const station : GetStations())
        station->GetSession().SetMpxOrvName(name);
}

StationView* ConsoleWindow::AddStation(std::optional<int> index) {
    const QString base = ConsoleSession::DefaultBasePath();
    const int number = ++m_lastNumber;
    auto* const station =
        new StationView(number == 1 ? base : base + QString::number(number), m_clock, m_book);
    station->GetSession().SetMpxOrvName(m_mpxOrvName);
    station->RestoreView(*Configuration());
    connect(station, &StationView::ServerRequested, this, &ConsoleWindow::AskForServer);
    if (index)
        m_stations->Insert(*index, station);
    else
        m_stations->Add(station);
    return station;
}

/// With each change, since a console may be killed.
void ConsoleWindow::KeepFrequencies(const StationView& first) {
    if (const int leftOut = m_book.Read(*Configuration()); leftOut > 0)
        first.GetNotice().Tell(
            NoticeBar::ESeverity::Warning,
            leftOut == 1
                ? tr("One of the kept frequencies cannot be right and is left out.")
                : tr("%n of the kept frequencies cannot be right and are left out.", nullptr, leftOut));
    m_book.ReadBy([this] {
        CfgCenter::Instance().Refresh();
        m_book.Read(*Configuration());
    });
    connect(&m_book, &FrequencyBook::RecentChanged, this, [this] { m_book.WriteRecent(*Configuration()); });
    connect(&m_book, &FrequencyBook::FavouritesChanged, this,
            [this] { m_book.WriteFavourites(*Configuration()); });
}

std::vector<KeysDialog::Row> ConsoleWindow::GetKeys() const {
    return KeysDialog::RowsOf(
        *this,
        {{tr("Enter"), tr("In the frequency field: asks for the frequency")},
         {tr("Escape"), tr("In the frequency field: takes back what is not sent")},
         {tr("Up, Down"), tr("In the frequency field: a step, asked for once the steps rest")},
         {tr("+, -, Left, Right, Home"), tr("On the line of frequencies: nearer, wider, aside, all")}});
}

void ConsoleWindow::ConnectTo(const ServerAddress& server, const VtClientOptions& options) {
    StationView* const known = FindStation(server);
    if (known != nullptr && known != &GetFront()) return m_stations->BringToFront(*known);
    StationView& front = GetFront();
    StationView& station = StationFor(server);
    if (!station.ConnectTo(server, options)) {
        if (&station != &front) m_stations->Remove(station);
        m_stations->BringToFront(front);
        const QString text = tr("\"%1\" cannot be a server.").arg(Bounded(server.host));
        Notifications::warning(tr("Connect to a server"), text);
        return;
    }
    if (&station != &front) {
        front.Disconnect();
        m_stations->Remove(front);
    }
    CfgCenter::Instance().Refresh();
    m_recent.Read(*Configuration());  // another console of this user may have added some
    m_recent.Add({server, options.user, options.caFile});
    m_recent.Write(*Configuration());
    KeepStations();
}

/// The one in front, or a new one beside it if that was at another server: what was typed, asked, answered
/// and seen there is nothing for this one.
StationView& ConsoleWindow::StationFor(const ServerAddress& server) {
    StationView& front = GetFront();
    const ServerAddress& before = front.GetEntry().server;
    if (before.host.isEmpty() || before.IsSameAs(server)) return front;
    front.KeepView(*Configuration());
    return *AddStation(m_stations->FrontIndex() + 1);
}

void ConsoleWindow::Open(const ServerAddress& server, const VtClientOptions& options) {
    if (StationView* const known = FindStation(server)) return m_stations->BringToFront(*known);
    const bool isFree = GetSession().GetState() == ConsoleSession::EState::Idle;
    if (!isFree && GetStations().size() >= KeptStations::MaxStations) {
        const QString text = tr("There are %1 stations, and no more have room.").arg(GetStations().size());
        Notifications::warning(tr("Open a further station"), text);
        return;
    }
    StationView* const added = isFree ? nullptr : AddStation();
    ConnectTo(server, options);
    if (added != nullptr && added->GetSession().GetState() == ConsoleSession::EState::Idle)
        m_stations->Remove(*added);  // that cannot be a server, as was said
}

StationView* ConsoleWindow::FindStation(const ServerAddress& server) const {
    for (StationView* const station : GetStations())
        if (station->GetSession().GetState() != ConsoleSession::EState::Idle &&
            station->GetEntry().server.IsSameAs(server))
            return station;
    return nullptr;
}

bool ConsoleWindow::OpenKept() {
    KeptStations kept;
    kept.Read(*Configuration());
    if (kept.entries.size() < 2) return false;
    for (const RecentServers::Entry& entry : kept.entries) {
        VtClientOptions options = m_options;
        // The token of one user is nothing for another.
        if (!m_options.user.isEmpty() && m_options.user != entry.user) options.token.clear();
        options.user = entry.user;
        options.caFile = entry.caFile;
        Open(entry.server, options);
    }
    const std::size_t front = static_cast<std::size_t>(kept.front);
    if (front < GetStations().size()) m_stations->BringToFront(*GetStations()[front]);
    return true;
}

void ConsoleWindow::KeepStations() {
    KeptStations kept;
    for (const StationView* const station : GetStations()) {
        if (station == &GetFront()) kept.front = static_cast<int>(kept.entries.size());
        if (!station->GetEntry().server.host.isEmpty()) kept.entries.push_back(station->GetEntry());
    }
    kept.Write(*Configuration());
}

std::optional<ConsoleWindow::Entered> ConsoleWindow::Ask(const QString& title) {
    RecentServers recent = m_recent;
    if (!GetFront().GetEntry().server.host.isEmpty()) recent.Add(GetFront().GetEntry());
    ConnectDialog dialog(recent, m_options, this);
    dialog.setWindowTitle(title);
    if (m_prefersEncryption) dialog.PreferEncryption();
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    if (m_recent.TakeNats(dialog.GetRecent())) m_recent.Write(*Configuration());
    return isAccepted ? std::make_optional(Entered{dialog.GetServer(), dialog.GetOptions()}) : std::nullopt;
}

void ConsoleWindow::AskForServer() {
    const std::optional<Entered> entered = Ask(tr("Connect to a server"));
    if (!entered) return;
    StationView& front = GetFront();
    const StationView* const known = FindStation(entered->server);
    const bool isElsewhere = known != nullptr && known != &front;
    const auto mayLeave = [&] {
        const QString action = tr("Connect");
        const bool isSame = front.GetEntry().server.IsSameAs(entered->server);  // what is entered stays
        return isSame ? front.MayGiveUp(tr("Connect once more"), action)
                      : front.MayLeave(tr("Connect to another server"), action);
    };
    if (isElsewhere || mayLeave()) ConnectTo(entered->server, entered->options);
}

void ConsoleWindow::AskForStation() {
    if (const std::optional<Entered> entered = Ask(tr("Open a further station")))
        Open(entered->server, entered->options);
}

void ConsoleWindow::CloseStation() {
    Close(GetFront());
}

void ConsoleWindow::Close(StationView& station) {
    if (GetStations().size() < 2) return;
    const View before = GetView();
    m_stations->BringToFront(station);  // what is asked is about what is seen
    if (!station.MayLeave(tr("Close the station"), tr("Close"))) return ShowAgain(before);
    station.KeepView(*Configuration());
    station.Disconnect();
    m_stations->Remove(station);
    KeepStations();
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

void ConsoleWindow::Disconnect() {
    if (GetFront().MayGiveUp(tr("Disconnect from the server"), tr("Disconnect"))) GetFront().Disconnect();
}

void ConsoleWindow::CloseNow() {
    m_isForced = true;
    question::Withdraw(*this);
    close();  // a close that had asked goes on
}

ConsoleWindow::View ConsoleWindow::GetView() const {
    return {&GetFront(), QApplication::focusWidget()};
}

void ConsoleWindow::ShowAgain(const View& view) {
    if (view.front != nullptr) m_stations->BringToFront(*view.front);
    if (view.focus != nullptr) view.focus->setFocus();
}

/// Of each station that others lose something at; where there is none, of what the console itself loses.
/// After a no whoever types on means the station, and the field, of before.
bool ConsoleWindow::MayQuit() {
    const View before = GetView();
    bool isAsked = false;
    for (StationView* const station : std::vector<StationView*>(GetStations())) {
        if (m_isForced) return true;
        if (!station->IsNeeded()) continue;
        m_stations->BringToFront(*station);  // what is asked is about what is seen
        isAsked = true;
        if (station->MayGiveUp(tr("Quit"), tr("Quit"))) continue;
        ShowAgain(before);
        return m_isForced;
    }
    const auto loss = [this] { return LossOfQuitting(); };
    return isAsked || question::IsConfirmed(this, tr("Quit"), tr("Quit"), loss) || m_isForced;
}

/// What is only entered is told with the rest: a few digits are not worth a question.
QString ConsoleWindow::LossOfQuitting() const {
    QStringList text;
    bool isUsed = false;
    for (const StationView* const station : GetStations()) {
        text += station->LossOfLeaving();
        isUsed = isUsed || station->IsUsed();
    }
    text.removeAll(QString());
    return isUsed ? text.join(QLatin1Char('\n')) : QString();
}

void ConsoleWindow::closeEvent(QCloseEvent* event) {
    StationView* const front = &GetFront();
    if (!m_isForced && !MayQuit()) return event->ignore();
    m_stations->BringToFront(*front);
    front->KeepView(*Configuration());
    KeepStations();
    for (StationView* const station : GetStations())
        station->Disconnect();
    QMainWindow::closeEvent(event);
}

void ConsoleWindow::OnChanged(StationView* station) {
    if (station == &GetFront()) m_shownConnection.Refresh();
    ShowTitle();
    ShowIcon();
}

void ConsoleWindow::ShowFront() {
    for (QAction* const action : m_severalOnly)
        action->setEnabled(GetStations().size() > 1);
    GetFront().ShowConnection();
    ShowConnection();
    ShowTitle();
    ShowIcon();
}

void ConsoleWindow::ShowConnection() {
    const ConsoleSession& session = GetSession();
    const QString text = connectiontexts::Line(session);
    if (m_connection->text() != text) m_connection->setText(text);
    m_disconnect->setEnabled(session.GetState() != ConsoleSession::EState::Idle);
    const QString name = valuetext::Shortened(session.GetMpxOrvName(), MaxNameLength);
    if (m_client->text() != name) m_client->setText(name);
    m_latency->ShowText(connectiontexts::Latency(session, GetSituation().GetConnection().shownLatency));
}

/// Of the station in front, and of another where somebody has to act.
void ConsoleWindow::ShowTitle() {
    QString title = GetSituation().GetTitle();
    if (title.isEmpty()) title = tr("Multi-channel console");
    const QString name = StationWord::Of(GetSituation()).name;
    title += m_stations->GetWord(m_stations->FrontIndex()).name.mid(name.size());  // told apart from another
    for (int i = 0; i < static_cast<int>(GetStations().size()); ++i) {
        const StationWord word = m_stations->GetWord(i);
        if (i == m_stations->FrontIndex() || word.severity != ESeverity::Act) continue;
        title += QStringLiteral(" | %1: %2").arg(word.name, word.word);
        break;
    }
    if (title != windowTitle()) setWindowTitle(title);
}

/// The worst of all, since it is all that is seen of a window that is put away.
void ConsoleWindow::ShowIcon() {
    ESeverity worst = GetSituation().GetWorst();
    for (std::size_t i = 0; i < GetStations().size(); ++i)
        worst = std::max({worst, GetStations()[i]->GetSituation().GetWorst(),
                          m_stations->GetWord(static_cast<int>(i)).severity});
    if (worst == m_shownSeverity) return;
    m_shownSeverity = worst;
    setWindowIcon(severitylook::Icon(worst, *style()));
}
