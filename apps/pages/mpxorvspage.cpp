// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvspage.h>

#include <apps/pages/mpxorvdetails.h>

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

#include <platform/values/tree.h>

#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int NameWidth = 220;
constexpr int ColumnWidth = 160;

}  // namespace

MpxOrvsPage::MpxOrvsPage(QWidget* parent)
    : Page(parent), m_list(new MCSMpxORVStatusListDisplay(this, Qt::WindowFlags())) {
    m_view = m_list->findChild<QTableView*>();
    m_model = qobject_cast<MCSMpxORVStatusListModel*>(m_view->model());
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setTabKeyNavigation(false);  // Tab leads on to the policies
    m_view->horizontalHeader()->setHighlightSections(false);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setColumnWidth(0, NameWidth);
    m_view->setColumnWidth(1, ColumnWidth);
    m_view->setColumnWidth(2, ColumnWidth);

    auto* const splitter = new QSplitter(Qt::Vertical, this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_list);
    m_details = new MpxOrvDetails(this);
    splitter->addWidget(m_details);
    splitter->setStretchFactor(0, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(splitter);

    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &MpxOrvsPage::TakeChoice);
    // Also of the one that stood there before anybody had chosen.
    connect(m_view, &QAbstractItemView::pressed, this, &MpxOrvsPage::TakeChoice);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &MpxOrvsPage::ChooseAgain);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &MpxOrvsPage::ChooseAgain);
    m_details->Show(QString());
}

/// The list tells of its rows' end when it is destroyed itself: too late for the widgets beside it.
MpxOrvsPage::~MpxOrvsPage() {
    disconnect(m_view->selectionModel(), nullptr, this, nullptr);
    disconnect(m_model, nullptr, this, nullptr);
}

void MpxOrvsPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    m_isMoving = true;
    m_list->RemoveAllMpxORVs_ValuePaths();
    for (const EMCSControlTreeSegments segment : {StaticMpxORVsSegment, DynamicMpxORVsSegment}) {
        const QString path = SegmentPath(basePath, segments, segment);
        if (!path.isEmpty()) m_list->AddMpxORVs_ValuePath(path);
    }
    m_isMoving = false;
    ChooseAgain();
}

QString MpxOrvsPage::Current() const {
    const QModelIndex current = m_view->currentIndex();
    return current.isValid() ? m_model->getMpxORV_ValuePath(current.row()) : QString();
}

int MpxOrvsPage::WantedRow() const {
    for (int row = 0; row < m_model->rowCount(QModelIndex()); ++row)
        if (m_model->getMpxORV_ValuePath(row) == m_wanted) return row;
    return -1;
}

/// Where the row that is current goes, the view makes another one current: nobody chose that, and who reaches
/// for the policies below must not switch those of a neighbour. After a lost connection the same one is
/// chosen again.
void MpxOrvsPage::ChooseAgain() {
    if (m_isMoving) return;
    if (m_wanted.isEmpty() || Current() != m_wanted) {
        int row = WantedRow();
        if (row < 0 && m_isChance && m_model->rowCount(QModelIndex()) > 0) {
            row = 0;  // before anybody has chosen
            m_wanted = m_model->getMpxORV_ValuePath(row);
        }
        m_isMoving = true;
        if (row >= 0)
            m_view->selectRow(row);
        else
            m_view->selectionModel()->clear();
        m_isMoving = false;
    }
    ShowChosen();
}

void MpxOrvsPage::TakeChoice() {
    const QString current = Current();
    const bool isGone = !m_shown.isEmpty() && values::Tree::Instance()->FindNode(m_shown) == nullptr;
    if (m_isMoving || current.isEmpty() || isGone) return;
    m_isChance = false;
    m_wanted = current;
    ShowChosen();
}

void MpxOrvsPage::ShowChosen() {
    const QString current = Current();
    if (current == m_shown) return;
    m_shown = current;
    m_details->Show(current);
}
