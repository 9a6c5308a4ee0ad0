// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvspage.h>

#include <apps/pages/mpxorvdetails.h>

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

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

    // Rows that come and go may change which one is current without the selection model saying so.
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &MpxOrvsPage::ShowChosen);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &MpxOrvsPage::ShowChosen);
    connect(m_model, &QAbstractItemModel::rowsRemoved, this, &MpxOrvsPage::ShowChosen);
    ShowChosen();
}

/// The list tells of its rows' end when it is destroyed itself: too late for the widgets beside it.
MpxOrvsPage::~MpxOrvsPage() {
    disconnect(m_view->selectionModel(), nullptr, this, nullptr);
    disconnect(m_model, nullptr, this, nullptr);
}

void MpxOrvsPage::Bind(const QString& basePath, EMCSControlTreeSegments segments) {
    if (!m_chosen.isEmpty()) m_lastChosen = m_chosen;
    m_list->RemoveAllMpxORVs_ValuePaths();
    for (const EMCSControlTreeSegments segment : {StaticMpxORVsSegment, DynamicMpxORVsSegment}) {
        const QString path = SegmentPath(basePath, segments, segment);
        if (!path.isEmpty()) m_list->AddMpxORVs_ValuePath(path);
    }
    ChooseAgain();
    ShowChosen();
}

/// After a lost connection the policies of the same MpxORV are shown, if it is still there.
void MpxOrvsPage::ChooseAgain() {
    for (int row = 0; row < m_model->rowCount(QModelIndex()); ++row)
        if (m_model->getMpxORV_ValuePath(row) == m_lastChosen) return m_view->selectRow(row);
}

void MpxOrvsPage::ShowChosen() {
    if (!m_view->currentIndex().isValid() && m_model->rowCount(QModelIndex()) > 0) m_view->selectRow(0);
    const QModelIndex current = m_view->currentIndex();
    const QString chosen = current.isValid() ? m_model->getMpxORV_ValuePath(current.row()) : QString();
    if (chosen == m_chosen && !chosen.isEmpty()) return;
    m_chosen = chosen;
    m_details->Show(chosen);
}
