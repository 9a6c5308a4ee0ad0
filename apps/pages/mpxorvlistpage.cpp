// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvlistpage.h>

#include <apps/pages/mpxorvdetails.h>
#include <apps/pages/mpxorvs/columnfit.h>
#include <apps/pages/mpxorvs/mpxorvcells.h>
#include <apps/pages/mpxorvs/mpxorvlamps.h>
#include <apps/pages/mpxorvs/mpxorvsorter.h>
#include <apps/pages/mpxorvs/mpxorvtable.h>

#include <platform/widgets/plaintextdelegate.h>
#include <platform/widgets/stalemark.h>

#include <QtCore/QDateTime>
#include <QtCore/QItemSelectionModel>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QAction>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <vector>

namespace {

constexpr int RowHeight = 22;
constexpr int LeastRows = 3;
constexpr int CellMargin = 16;  // pixels of a cell around its text
constexpr int ArrowRoom = 20;

/// What is as long as most that a column will hold, in every state.
std::vector<MpxOrvContent> Samples() {
    using EState = MpxOrvContent::EState;
    std::vector<MpxOrvContent> samples;
    for (const EState state :
         {EState::Idle, EState::AtWork, EState::Tuned, EState::Watching, EState::Master}) {
        MpxOrvContent sample;
        sample.name = QStringLiteral("MpxORVhost_receiver");
        sample.isComplete = true;
        sample.isStatic = state == EState::Idle;
        sample.obeys = state == EState::Idle;
        sample.state = state;
        sample.hz = 1234005000;
        sample.since = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
        sample.clients = QStringList{QStringLiteral("mcconsole")};
        samples.push_back(sample);
    }
    return samples;
}

/// Wide enough for the own one too, which is bold.
int WidthOf(int column, QFont font) {
    font.setBold(true);
    const QFontMetrics metrics(font);
    int width = metrics.horizontalAdvance(mpxorvcells::Title(column)) + ArrowRoom;
    const int icon = column == mpxorvcells::State ? mpxorvlamps::Size + CellMargin / 2 : 0;
    for (const MpxOrvContent& sample : Samples())
        width = std::max(width, metrics.horizontalAdvance(mpxorvcells::Text(sample, column)) + icon);
    return width + CellMargin;
}

}  // namespace

MpxOrvListPage::MpxOrvListPage(QWidget* parent)
    : Page(parent),
      m_table(new MpxOrvTable(this)),
      m_sorter(new MpxOrvSorter(*m_table, this)),
      m_view(new QTableView(this)),
      m_filter(new QLineEdit(this)),
      m_count(new QLabel(this)),
      m_details(new MpxOrvDetails(this)) {
    BuildView();
    auto* const list = new QWidget(this);
    auto* const column = new QVBoxLayout(list);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(BuildFilter());
    column->addWidget(m_view, 1);
    auto* const splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("MpxORVSplitter"));
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(list);
    splitter->addWidget(m_details);
    splitter->setStretchFactor(0, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter);
    setTabOrder(m_filter, m_view);
    ObserveChoice();
    connect(m_table, &MpxOrvTable::StaleChanged, this, &MpxOrvListPage::ShowStale);
    ShowStale();
    ShowCount();
}

/// The list tells of its rows' end when it is destroyed itself: too late for the widgets beside it.
MpxOrvListPage::~MpxOrvListPage() {
    disconnect(m_view->selectionModel(), nullptr, this, nullptr);
    disconnect(m_table, nullptr, this, nullptr);
}

QWidget* MpxOrvListPage::BuildFilter() {
    auto* const bar = new QWidget(this);
    m_filter->setObjectName(QStringLiteral("MpxORVFilter"));
    m_filter->setPlaceholderText(tr("Filter: part of a name, a frequency, a client or a comment"));
    m_filter->setAccessibleName(tr("Filter of the list of MpxORVs"));
    m_filter->setClearButtonEnabled(true);
    m_count->setObjectName(QStringLiteral("MpxORVCount"));
    connect(m_filter, &QLineEdit::textChanged, this, &MpxOrvListPage::Filter);
    auto* const find = new QAction(tr("Filter the MpxORVs"), this);
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, m_filter, [this] {
        m_filter->setFocus(Qt::ShortcutFocusReason);
        m_filter->selectAll();
    });
    addAction(find);
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_filter, 1);
    row->addWidget(m_count);
    return bar;
}

void MpxOrvListPage::BuildView() {
    m_view->setObjectName(QStringLiteral("MpxORVList"));
    m_view->setAccessibleName(tr("MpxORVs"));
    m_view->setModel(m_sorter);
    m_view->setItemDelegate(new PlainTextDelegate(m_view));
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setTabKeyNavigation(false);  // Tab leads on to the policies
    m_view->setIconSize(QSize(mpxorvlamps::Size, mpxorvlamps::Size));
    m_view->setAlternatingRowColors(true);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    QHeaderView* const rows = m_view->verticalHeader();
    rows->hide();
    rows->setMinimumSectionSize(RowHeight);
    rows->setDefaultSectionSize(RowHeight);
    rows->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* const columns = m_view->horizontalHeader();
    columns->setHighlightSections(false);
    m_view->setMinimumHeight(LeastRows * RowHeight + columns->sizeHint().height() + 2 * m_view->frameWidth());
    columns->setStretchLastSection(true);
    columns->setSectionsMovable(true);
    columns->setSortIndicator(m_sorter->sortColumn(), m_sorter->sortOrder());
    m_view->setSortingEnabled(true);
    for (int column = 0; column + 1 < mpxorvcells::CountColumns; ++column)
        m_view->setColumnWidth(column, WidthOf(column, font()));
    // The state tells of mastership too, and the comment stands below with who is chosen.
    new ColumnFit(*m_view, {mpxorvcells::Master, mpxorvcells::Comment, mpxorvcells::Kind,
                            mpxorvcells::Clients, mpxorvcells::Since});
}

/// Who is current while rows come, go or are filtered is chance; afterwards the one that was chosen is again.
void MpxOrvListPage::ObserveChoice() {
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &MpxOrvListPage::TakeChoice);
    // Also of the one that stood there before anybody had chosen.
    connect(m_view, &QAbstractItemView::pressed, this, &MpxOrvListPage::TakeChoice);
    connect(m_table, &MpxOrvTable::FlushBegins, this, [this] { m_isMoving = true; });
    connect(m_table, &MpxOrvTable::FlushEnds, this, &MpxOrvListPage::ChooseAgain);
}

void MpxOrvListPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    const QString fixed = SegmentPath(basePath, segments, StaticMpxORVsSegment);
    const QString dynamic = SegmentPath(basePath, segments, DynamicMpxORVsSegment);
    m_isBound = !fixed.isEmpty() || !dynamic.isEmpty();
    m_isWhole = !fixed.isEmpty() && !dynamic.isEmpty();
    m_table->SetPaths(fixed, dynamic);
    m_details->Show(m_shown);
    ShowCount();
    ShowStale();
}

void MpxOrvListPage::SetOwn(const QString& path) {
    m_table->SetOwn(path);
    m_details->SetOwn(path);
}

void MpxOrvListPage::Filter(const QString& text) {
    m_isMoving = true;
    m_sorter->SetText(text);
    ChooseAgain();
}

void MpxOrvListPage::ChooseAgain() {
    ShowCount();
    const int wanted = m_table->FindRow(m_wanted);
    QModelIndex row = m_sorter->mapFromSource(wanted < 0 ? QModelIndex() : m_table->index(wanted, 0));
    // Before anybody has chosen, the first is. It stays, though others come before it: somebody may be about
    // to switch what is shown of it.
    if (!row.isValid() && m_isChance && m_sorter->rowCount() > 0) {
        row = m_sorter->index(0, 0);
        m_wanted = row.data(MpxOrvTable::PathRole).toString();
    }
    m_isMoving = true;
    if (row.isValid() && row.row() != m_view->currentIndex().row())
        m_view->selectRow(row.row());
    else if (!row.isValid())
        m_view->selectionModel()->clear();
    m_isMoving = false;
    ShowChosen();
}

void MpxOrvListPage::TakeChoice() {
    if (m_isMoving || !m_view->currentIndex().isValid()) return;
    m_isChance = false;
    m_wanted = m_view->currentIndex().data(MpxOrvTable::PathRole).toString();
    ShowChosen();
}

void MpxOrvListPage::ShowChosen() {
    const QModelIndex current = m_view->currentIndex();
    const QString path = current.isValid() ? current.data(MpxOrvTable::PathRole).toString() : QString();
    if (path == m_shown) return;
    m_shown = path;
    m_details->Show(path);
}

void MpxOrvListPage::ShowCount() {
    const int all = m_table->rowCount();
    const int shown = m_sorter->rowCount();
    // Of none nobody here knows whether there are some.
    const bool isUnknown = all == 0 && !m_isWhole;
    const QString number = isUnknown ? tr("not known") : QString::number(all);
    m_count->setText(shown == all ? tr("MpxORVs: %1").arg(number)
                                  : tr("MpxORVs: %1 of %2").arg(shown).arg(all));
}

void MpxOrvListPage::ShowStale() {
    if (!m_isBound || m_table->IsStale())
        stalemark::Set(*m_view);
    else
        stalemark::Clear(*m_view);
}
