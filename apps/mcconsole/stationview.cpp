// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/stationview.h>

#include <apps/mcconsole/alarmbar.h>
#include <apps/mcconsole/connectionbar.h>
#include <apps/mcconsole/consolepagehelp.h>
#include <apps/mcconsole/events/eventspage.h>
#include <apps/mcconsole/mpxorvpage.h>
#include <apps/mcconsole/overview/lastevents.h>
#include <apps/mcconsole/overview/overviewpage.h>
#include <apps/mcconsole/overview/restoreoffer.h>
#include <apps/mcconsole/pagetabs.h>
#include <apps/mcconsole/session/connectiontexts.h>
#include <apps/mcconsole/session/judgement.h>
#include <apps/mcconsole/statusstrip.h>
#include <apps/mcconsole/tune/frequencybook.h>
#include <apps/mcconsole/tune/tunebar.h>
#include <apps/pages/configpage.h>
#include <apps/pages/displaypages.h>
#include <apps/pages/holders.h>
#include <apps/pages/keptview.h>
#include <apps/pages/mpxorvlistpage.h>
#include <apps/pages/mpxorvspage.h>
#include <apps/pages/noticebar.h>
#include <apps/pages/question.h>
#include <apps/pages/scrolledpage.h>
#include <apps/pages/serverkeys.h>
#include <apps/pages/shiftguard.h>
#include <apps/pages/suppressionview.h>
#include <apps/pages/undobar.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>

#include <platform/config/icfg.h>
#include <platform/widgets/stalemark.h>
#include <platform/widgets/valuetext.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QVBoxLayout>

#include <memory>

namespace {

constexpr char StepKey[] = "FrequencyStep";
constexpr int MaxToldEntry = 500;  // characters of what was being typed

}  // namespace

StationView::StationView(const QString& basePath, IClock& clock, FrequencyBook& book, QWidget* parent)
    : QWidget(parent),
      m_session(basePath),
      m_situation(clock, basePath, [this] { return Connection::Of(m_session); }),
      m_tuning(clock),
      m_content(new QWidget(this)),
      m_connection(*this, [this] { ShowBanner(); }) {
    setObjectName(QStringLiteral("Station"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_content);
    m_undo = new UndoBar(clock, m_content);
    auto* const rows = new QVBoxLayout(m_content);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    BuildBars(*rows);
    m_tabs = new PageTabs(m_content);
    rows->addWidget(m_tabs, 1);
    new ShiftGuard(clock, *m_tabs);
    BuildPages(clock, book);
    AddRestoreBar(*rows);
    pagehelp::Describe(*m_tabs, ConsolePageHelp());
    connect(&m_tuning, &Tuning::Granted, &book, &FrequencyBook::Remember);
    connect(m_overview, &OverviewPage::Noticed, this,
            [this](const QString& text) { m_notice->Tell(NoticeBar::ESeverity::Warning, text); });
    connect(&m_session, &ConsoleSession::Changed, &m_situation, &Situation::Refresh);
    connect(&m_session, &ConsoleSession::Changed, this, &StationView::ShowState);
    connect(&m_situation, &Situation::Changed, this, [this] {
        ShowConnection();
        Q_EMIT Changed();
    });
    ShowState();
}

StationView::~StationView() {
    m_session.Disconnect();  // first, since the pages have to detach from what goes
    disconnect(&m_session, nullptr, this, nullptr);
    delete m_content;  // what is in it uses the members
}

void StationView::BuildBars(QVBoxLayout& layout) {
    m_banner = new ConnectionBar(m_content);
    connect(m_banner, &ConnectionBar::TryRequested, this, [this] {
        m_session.RetryNow();
        ShowConnection();
    });
    auto* const strip = new StatusStrip(m_situation, m_content);
    connect(strip, &StatusStrip::PageRequested, this, &StationView::GoTo);
    m_alarm = new AlarmBar(m_situation, m_content);
    m_notice = new NoticeBar(m_content);
    for (QWidget* const bar :
         {static_cast<QWidget*>(strip), static_cast<QWidget*>(m_alarm), static_cast<QWidget*>(m_banner),
          static_cast<QWidget*>(m_undo), static_cast<QWidget*>(m_notice)})
        layout.addWidget(bar);
}

/// What was held before a loss is offered on every page; the overview has it at its head.
void StationView::AddRestoreBar(QVBoxLayout& layout) {
    auto* const bar = new RestoreOffer(m_overview->GetHeldBefore(), m_content);
    bar->setObjectName(QStringLiteral("RestoreBar"));
    layout.insertWidget(layout.indexOf(m_tabs), bar);
    const auto show = [this, bar] {
        const QWidget* const page = m_tabs->currentWidget();
        bar->ShowHere(page == nullptr || page->objectName() != QLatin1String("Overview"));
    };
    connect(m_tabs, &QTabWidget::currentChanged, bar, show);
    show();
}

void StationView::BuildPages(IClock& clock, FrequencyBook& book) {
    m_overview = new OverviewPage(clock, m_tuning, book, m_situation);
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
    m_mpxOrvPage = new MpxOrvPage(m_tuning, book);
    AddTab(m_mpxOrvPage, "MyMpxORV", tr("My MpxORV"));
    connect(m_mpxOrvPage, &MpxOrvPage::UseRequested, this, &StationView::UseMpxOrv);
}

/// The last ones stand on the overview too.
void StationView::BuildEvents() {
    auto* const page = new EventsPage(
        {[this] { return m_session.GetVtClient(); }, [this] { return m_session.GetServer().ToText(); },
         [this] { return judgement::ServerName(m_situation.GetFacts(), m_situation.GetConnection()); }});
    AddPage(page, "Events", tr("Events"));
    connect(&m_session, &ConsoleSession::Missed, page, &EventsPage::TellMissed);
    LastEvents* const last = &m_overview->GetLastEvents();
    connect(&page->GetFeed(), &EventFeed::Came, last, &LastEvents::Add);
    connect(&page->GetFeed(), &EventFeed::Restarted, last, &LastEvents::Clear);
    connect(page, &EventsPage::Forgotten, last, &LastEvents::Clear);
}

void StationView::AddPage(Page* page, const char* name, const QString& title, const QString& tab) {
    AddTab(page, name, title, tab);
    connect(page, &Page::Acted, m_undo, &UndoBar::Offer);
    m_pages.push_back(page);
}

void StationView::AddTab(QWidget* page, const char* name, const QString& title, const QString& tab) {
    ScrolledPage::AddTo(*m_tabs, page, QString::fromLatin1(name), title, tab);
    m_titles += title;
}

void StationView::RestoreView(ICfg& cfg) {
    keptview::Restore(cfg, *m_tabs);
    const std::unique_ptr<ICfg> section(cfg.OpenSection(QLatin1String(keptview::SectionName)));
    if (section) m_tuning.ChooseStep(section->ReadInt(QLatin1String(StepKey), m_tuning.GetStepIndex()));
}

void StationView::KeepView(ICfg& cfg) const {
    const std::unique_ptr<ICfg> section(cfg.ProvideSection(QLatin1String(keptview::SectionName)));
    section->WriteInt(QLatin1String(StepKey), m_tuning.GetStepIndex());
    keptview::Keep(cfg, *m_tabs);
}

TuneBar& StationView::GoToTuneBar() {
    if (m_mpxOrvPage->isVisible()) return m_mpxOrvPage->GetTuneBar();
    GoTo(QStringLiteral("Overview"));
    return m_overview->GetTuneBar();
}

bool StationView::ConnectTo(const ServerAddress& server, const VtClientOptions& options) {
    if (!m_session.Connect(server, options)) return false;
    m_entry = {server, options.user, options.caFile};
    return true;
}

void StationView::SetPlace(const QString& place) {
    if (place == m_place) return;
    m_place = place;
    question::SetPlace(*this, place);
    m_undo->SetPlace(place);
    m_overview->GetTuneBar().SetPlace(place);
    m_mpxOrvPage->GetTuneBar().SetPlace(place);
}

void StationView::Disconnect() {
    m_session.Disconnect();
}

QString StationView::LossOfMastership() const {
    const QString path = m_session.GetMpxOrvPath();
    const holders::Holder own = path.isEmpty() ? holders::Holder() : holders::At(path);
    if (!own.isMaster) return QString();
    QStringList text{tr("This console is job master%1 and gives that up.").arg(own.tunedTo),
                     holders::LossOfWatchers(holders::TreeOf(path))};
    text.removeAll(QString());
    return text.join(QLatin1Char('\n'));
}

bool StationView::MayGiveUp(const QString& title, const QString& action) {
    return question::IsConfirmed(this, title, action, [this] { return LossOfMpxOrv(); });
}

QString StationView::LossOfMpxOrv() const {
    const QString mastership = LossOfMastership();
    const std::optional<double> hz = m_situation.GetFacts().TunedFrequency();
    const bool isTuned = !m_session.GetMpxOrvPath().isEmpty() && hz;
    if (!mastership.isEmpty() || !isTuned) return mastership;
    return tr("This console is tuned to %1 and gives that up.").arg(judgement::Frequency(*hz));
}

QString StationView::LossWithEntry() const {
    QStringList text{LossOfMpxOrv()};
    if (m_tuning.GetState() == Tuning::EState::NotSent)
        text += tr("%1 is entered and not sent.").arg(Tuning::Shown(m_tuning.GetWanted().GetHz()));
    text.removeAll(QString());
    return text.join(QLatin1Char('\n'));
}

bool StationView::MayLeave(const QString& title, const QString& action) {
    return question::IsConfirmed(this, title, action, [this] { return LossWithEntry(); });
}

QString StationView::LossOfLeaving() const {
    const QString loss = LossWithEntry();
    return loss.isEmpty() ? QString() : question::At(m_place, loss);
}

void StationView::UseMpxOrv(bool isUsed) {
    if (isUsed || MayGiveUp(tr("Give the MpxORV back"), tr("Give back")))
        m_session.UseMpxOrv(isUsed);
    else
        m_mpxOrvPage->ShowUsed(true);
}

void StationView::ShowState() {
    const EMCSControlTreeSegments segments = m_session.GetSegments();
    const bool wasKept = m_isKept;
    m_isKept = KeepsContent(segments);
    if (m_isKept != wasKept) ShowKept(m_isKept);
    // What is asked, and could be undone, is about a server as it was.
    if (m_isKept && !wasKept) {
        question::Withdraw(*this);
        m_undo->Withdraw();
    }
    if (!m_isKept && (segments != m_boundSegments || wasKept)) BindPages(segments);
    ShowMpxOrv();
    ShowConnection();
    Q_EMIT Changed();
}

void StationView::BindPages(EMCSControlTreeSegments segments) {
    m_boundSegments = segments;
    for (Page* const page : m_pages)
        page->Bind(m_session.GetBasePath(), segments);
    const QString commands = Page::SegmentPath(m_session.GetBasePath(), segments, CommandSegment);
    m_alarm->BindReconnect(commands.isEmpty() ? QString()
                                              : mcskeys::Join(commands, serverkeys::ReconnectModules));
}

/// From a loss until all is there again.
bool StationView::KeepsContent(EMCSControlTreeSegments segments) const {
    const bool isLost = m_session.GetState() == ConsoleSession::EState::Lost;
    const bool isComing = m_isKept && m_session.GetState() == ConsoleSession::EState::Connected;
    return m_boundSegments != NoSegments && (isLost || isComing) && segments == NoSegments;
}

/// Likewise, while it may still come back.
bool StationView::KeepsMpxOrv() const {
    const bool isComing = m_session.GetState() == ConsoleSession::EState::Connected &&
                          m_session.UsesMpxOrv() && !m_session.IsMpxOrvMissing();
    return m_isKept || isComing;
}

/// The widgets that are bound to values know that these are stale; the list of the library does not.
void StationView::ShowKept(bool isKept) {
    for (auto* const list : m_tabs->findChildren<MCSMpxORVStatusListDisplay*>()) {
        if (isKept)
            stalemark::Set(*list);
        else
            stalemark::Clear(*list);
    }
    if (isKept) CancelEdits();
}

/// What was being typed is meant for a server that cannot take it now. A text is told, so that it need not be
/// thought out once more.
void StationView::CancelEdits() {
    const auto cancel = [](QWidget& field) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(&field, &escape);
    };
    QString lost;
    for (auto* const field : m_tabs->findChildren<VCLineEdit*>()) {
        const QString typed = field->text();
        cancel(*field);
        if (typed != field->text() && field->echoMode() == QLineEdit::Normal) lost = typed;
    }
    for (auto* const field : m_tabs->findChildren<VCNumericFloatSpin*>())
        cancel(*field);
    if (lost.isEmpty()) return;
    const QString text =
        tr("The connection was lost while this was being entered, which is not sent: \"%1\"");
    m_notice->Tell(NoticeBar::ESeverity::Warning, text.arg(valuetext::Shortened(lost, MaxToldEntry)));
}

void StationView::ShowMpxOrv() {
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

void StationView::ShowBanner() {
    const bool isConnected = m_session.GetState() == ConsoleSession::EState::Connected;
    m_banner->Tell(connectiontexts::Banner(m_session, m_situation),
                   !isConnected && m_session.GetTimeToRetry());
}

void StationView::GoTo(const QString& page) {
    if (page.isEmpty()) {
        Q_EMIT ServerRequested();
        return;
    }
    auto* const wanted = m_tabs->findChild<ScrolledPage*>(page);
    if (wanted == nullptr) return;
    m_tabs->setCurrentWidget(wanted);
    m_tabs->setFocus();
}
