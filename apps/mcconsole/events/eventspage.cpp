// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/events/eventspage.h>

#include <apps/common/problemtext.h>
#include <apps/mcconsole/events/countline.h>
#include <apps/mcconsole/events/eventstable.h>
#include <apps/pages/agetext.h>

#include <platform/widgets/notifications.h>

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QVBoxLayout>

#include <utility>

namespace {

// Whole pixels of the screen at 125, 150 and 175 % too: by parts of them nothing can be scrolled, and all is
// drawn anew.
constexpr int EventRowHeight = 24;

constexpr std::chrono::milliseconds CountingTime(250);

/// Among dark colours a button that is held down looks like any other.
QIcon TickIfOn(const QStyle& style) {
    const int size = style.pixelMetric(QStyle::PM_ButtonIconSize);
    const QPixmap tick = style.standardIcon(QStyle::SP_DialogApplyButton).pixmap(size, size);
    QPixmap nothing(tick.size());
    nothing.setDevicePixelRatio(tick.devicePixelRatio());
    nothing.fill(Qt::transparent);
    QIcon icon;
    icon.addPixmap(tick, QIcon::Normal, QIcon::On);
    icon.addPixmap(nothing, QIcon::Normal, QIcon::Off);
    return icon;
}

}  // namespace

EventsPage::EventsPage(Source source, QWidget* parent)
    : Page(parent),
      m_source(std::move(source)),
      m_exporter(m_model),
      m_feed(m_source.client),
      m_counting(CountingTime, [this] { ShowState(); }) {
    BuildTable();
    m_state = new CountLine(this);
    m_state->setObjectName(QStringLiteral("EventsState"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(BuildBar());
    layout->addWidget(m_view, 1);
    layout->addWidget(m_state);
    connect(&m_feed, &EventFeed::Restarted, &m_model, &EventModel::Clear);
    connect(&m_feed, &EventFeed::Came, this, &EventsPage::OnCame);
    connect(&m_feed, &EventFeed::OlderCame, this, &EventsPage::OnOlderCame);
    connect(&m_feed, &EventFeed::StateChanged, this, &EventsPage::ShowState);
    connect(&m_exporter, &EventExporter::Ended, this, &EventsPage::OnExported);
    connect(&m_model, &EventModel::FirstRowsGone, this, &EventsPage::OnFirstRowsGone);
    connect(&m_model, &QAbstractItemModel::rowsInserted, this, [this] {
        if (!m_isMoving) m_counting.Ask();
    });
    connect(&m_model, &QAbstractItemModel::modelReset, this, &EventsPage::ShowState);
    connect(m_view->verticalScrollBar(), &QScrollBar::valueChanged, this, &EventsPage::OnScrolled);
    connect(m_view->verticalScrollBar(), &QScrollBar::rangeChanged, this, &EventsPage::OnRangeChanged);
    Follow(true);
}

void EventsPage::BuildTable() {
    m_view = new EventsTable(this);
    m_view->setObjectName(QStringLiteral("EventsTable"));
    m_view->setAccessibleName(tr("Events"));
    m_view->setModel(&m_model);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setTabKeyNavigation(false);
    m_view->setWordWrap(false);
    m_view->setShowGrid(false);
    m_view->setAlternatingRowColors(true);
    // By rows it would stand elsewhere for a moment when one is added at the end, and be drawn as a whole.
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->verticalHeader()->setMinimumSectionSize(EventRowHeight);
    m_view->verticalHeader()->setDefaultSectionSize(EventRowHeight);
    m_view->horizontalHeader()->setHighlightSections(false);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->horizontalHeader()->setSectionsMovable(true);
    const QFontMetrics metrics(m_view->font());
    const auto widthOf = [&metrics](const QString& text) { return metrics.horizontalAdvance(text) + 24; };
    m_view->setColumnWidth(EventModel::SeverityColumn, widthOf(tr("Warning")) + 24);
    m_view->setColumnWidth(EventModel::TimeColumn, widthOf(QStringLiteral("2026-11-22 14:03:21")));
    m_view->setColumnWidth(EventModel::SourceColumn, widthOf(QStringLiteral("MpxORV tower1")));
    m_view->setColumnWidth(EventModel::WhoColumn, widthOf(QStringLiteral("mcconsole on t1")));
}

QWidget* EventsPage::BuildBar() {
    auto* const bar = new QWidget(this);
    m_severity = new QComboBox(bar);
    m_severity->setObjectName(QStringLiteral("EventsSeverity"));
    m_severity->setAccessibleName(tr("Severity"));
    for (const auto& [text, least] : {std::pair(tr("All severities"), EEventSeverity::Info),
                                      std::pair(tr("Notices and above"), EEventSeverity::Notice),
                                      std::pair(tr("Warnings and alarms"), EEventSeverity::Warning),
                                      std::pair(tr("Alarms"), EEventSeverity::Alarm)})
        m_severity->addItem(text, static_cast<int>(least));
    m_origin = new QComboBox(bar);
    m_origin->setObjectName(QStringLiteral("EventsSource"));
    m_origin->setAccessibleName(tr("Source"));
    m_origin->addItem(tr("All sources"), QString());
    for (const char* const source : {"server", "device", "suppression", "access", "config", "MpxORV"}) {
        const QString name = QLatin1String(source);
        m_origin->addItem(name == QLatin1String("MpxORV") ? tr("MpxORVs") : EventModel::WordForSource(name),
                          name);
    }
    m_search = new QLineEdit(bar);
    m_search->setObjectName(QStringLiteral("EventsSearch"));
    m_search->setPlaceholderText(tr("Search"));
    m_search->setAccessibleName(tr("Search"));
    m_search->setToolTip(tr("Ctrl+F"));
    m_search->setClearButtonEnabled(true);
    auto* const find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(find);
    m_older = new QPushButton(tr("Show o&lder"), bar);
    m_older->setObjectName(QStringLiteral("EventsOlder"));
    m_follow = new QPushButton(bar);
    m_follow->setObjectName(QStringLiteral("EventsFollow"));
    m_follow->setCheckable(true);
    m_follow->setIcon(TickIfOn(*style()));
    m_export = new QPushButton(tr("&Export..."), bar);
    m_export->setObjectName(QStringLiteral("EventsExport"));
    auto* const layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_severity, m_origin})
        layout->addWidget(widget);
    layout->addWidget(m_search, 1);
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_older, m_follow, m_export})
        layout->addWidget(widget);
    connect(m_severity, qOverload<int>(&QComboBox::currentIndexChanged), this, &EventsPage::Filter);
    connect(m_origin, qOverload<int>(&QComboBox::currentIndexChanged), this, &EventsPage::Filter);
    connect(m_search, &QLineEdit::textChanged, this, &EventsPage::Filter);
    connect(find, &QAction::triggered, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    connect(m_older, &QPushButton::clicked, &m_feed, &EventFeed::AskForOlder);
    connect(m_follow, &QPushButton::toggled, this, &EventsPage::Follow);
    connect(m_export, &QPushButton::clicked, this, &EventsPage::Export);
    return bar;
}

void EventsPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    const QString server = m_source.server();
    if (server != m_server) {
        m_server = server;
        m_feed.Forget();
        m_model.Clear();
        m_readUpTo = m_model.GetList().End();
        Q_EMIT Forgotten();
    }
    m_feed.Bind(SegmentPath(basePath, segments, StatusSegment));
    ShowState();
}

void EventsPage::Filter() {
    m_model.SetFilter({static_cast<EEventSeverity>(m_severity->currentData().toInt()),
                       m_origin->currentData().toString(), m_search->text().trimmed()});
    Follow(m_follow->isChecked());
}

void EventsPage::Follow(bool isOn) {
    {
        const QSignalBlocker blocker(m_follow);
        m_follow->setChecked(isOn);
    }
    if (isOn) {
        m_readUpTo = m_model.GetList().End();
        ShowEnd();
    }
    ShowState();
}

void EventsPage::OnCame(const std::vector<Event>& events) {
    {
        const QScopedValueRollback<bool> moving(m_isMoving, true);
        m_model.Append(events);
        if (m_follow->isChecked()) {
            m_readUpTo = m_model.GetList().End();
            m_view->scrollToBottom();
        }
    }
    m_counting.Ask();
}

void EventsPage::TellMissed(const VtLoss& loss) {
    const QString text =
        loss.wasConnected
            ? tr("What happened from %1 to %2 did not come here: lines of the log are missing, events were "
                 "asked for again")
            : tr("Not connected from %1 to %2: lines of the log are missing, events were asked for again");
    Event event;
    event.time = loss.until;
    event.severity = loss.wasConnected ? EEventSeverity::Warning : EEventSeverity::Notice;
    event.source = QStringLiteral("server");
    event.text = text.arg(agetext::Moment(loss.from), agetext::Moment(loss.until));
    OnCame({event});
}

// What is looked at stays where it is.
void EventsPage::OnOlderCame(const std::vector<Event>& events) {
    const QScopedValueRollback<bool> moving(m_isMoving, true);
    const int rows = m_model.rowCount();
    m_model.Prepend(events);
    QScrollBar* const bar = m_view->verticalScrollBar();
    m_view->doItemsLayout();
    bar->setValue(bar->value() + (m_model.rowCount() - rows) * EventRowHeight);
    ShowState();
}

void EventsPage::OnFirstRowsGone(int count) {
    if (m_follow->isChecked()) return;
    QScrollBar* const bar = m_view->verticalScrollBar();
    bar->setValue(bar->value() - count * EventRowHeight);
}

bool EventsPage::IsAtEnd() const {
    const QScrollBar* const bar = m_view->verticalScrollBar();
    return bar->value() == bar->maximum();
}

/// A smaller window, or a bar that comes above the table, leaves less room for it.
void EventsPage::OnRangeChanged() {
    if (m_follow->isChecked()) return ShowEnd();
    // Fewer rows, since a filter leaves some out, end the table at its end; nobody has scrolled there.
    const QScopedValueRollback<bool> moving(m_isMoving, true);
    QScrollBar* const bar = m_view->verticalScrollBar();
    bar->setValue(bar->value());
}

void EventsPage::ShowEnd() {
    const QScopedValueRollback<bool> moving(m_isMoving, true);
    m_view->scrollToBottom();
}

// Who scrolls up wants to read; who comes back to the end wants to follow.
void EventsPage::OnScrolled() {
    if (m_isMoving || m_model.IsFiltering()) return;
    if (m_follow->isChecked() != IsAtEnd()) Follow(IsAtEnd());
}

void EventsPage::ShowState() {
    const bool isFollowing = m_follow->isChecked();
    const int unread = m_model.CountFrom(m_readUpTo);
    m_follow->setText(isFollowing   ? tr("&Following")
                      : unread != 0 ? tr("&Follow (%n new)", nullptr, unread)
                                    : tr("&Follow"));
    m_older->setEnabled(m_feed.HasOlder() && !m_model.GetList().IsFull());
    m_export->setEnabled(m_model.rowCount() != 0 && !m_exporter.IsRunning());
    const int all = m_model.GetList().Count();
    if (all == 0 && !m_feed.IsOffered())
        m_state->ShowText(tr("No server tells its events here. The page Log may have more."));
    else
        m_state->ShowText(all == 1 ? tr("%1 of 1 event").arg(m_model.rowCount())
                                   : tr("%1 of %2 events").arg(m_model.rowCount()).arg(all));
}

void EventsPage::Export() {
    using eventexport::EFormat;
    const QString called = m_source.name();
    const QString name = called.isEmpty() ? m_server : called;
    const QString proposed = eventexport::ProposedName(name, QDate::currentDate(), EFormat::Csv);
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Export events"), proposed, tr("Table (*.csv)") + QStringLiteral(";;") + tr("Text (*.txt)"));
    if (file.isEmpty()) return;
    const bool isText = QFileInfo(file).suffix().compare(QLatin1String("txt"), Qt::CaseInsensitive) == 0;
    const QString server = name == m_server ? name : QStringLiteral("%1 (%2)").arg(name, m_server);
    m_exporter.Start(file, isText ? EFormat::Text : EFormat::Csv, server, QDateTime::currentDateTime());
    ShowState();
}

void EventsPage::OnExported(const QString& problem) {
    ShowState();
    if (problem.isEmpty()) return;
    Notifications::warning(tr("Export events"),
                           tr("The file cannot be written: %1").arg(problemtext::Translated(problem)));
}
