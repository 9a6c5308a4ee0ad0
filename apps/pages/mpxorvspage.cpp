// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/mpxorvspage.h>

#include <apps/pages/askingcheckbox.h>
#include <apps/pages/policypanel.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

#include <platform/widgets/valuetext.h>
#include <platform/widgets/vclineedit.h>

#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTableView>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int MaxTitleLength = 60;
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
    splitter->addWidget(BuildDetails());
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

QWidget* MpxOrvsPage::BuildDetails() {
    m_details = new QGroupBox(this);
    m_details->setObjectName(QStringLiteral("MpxORVDetails"));
    m_comment = new VCLineEdit(m_details, "MpxORVComment");
    m_comment->setAccessibleName(tr("Comment"));
    m_policies = new PolicyPanel(m_details);
    auto* const layout = new QVBoxLayout(m_details);
    auto* const form = new QFormLayout;
    form->addRow(tr("Comment:"), m_comment);
    layout->addLayout(form);
    layout->addWidget(m_policies);
    m_blanking = new AskingCheckBox(m_details, "Blanking");
    m_blanking->SetText(tr("Obeys the ground transmitter suppression"));
    m_blanking->setAccessibleName(tr("Obeys the ground transmitter suppression"));
    m_blanking->SetAsker([this](bool isOn) {
        const QString name = valuetext::Shortened(m_chosen.section(QLatin1Char('/'), -1), MaxTitleLength);
        const QString text = tr("%1 loses its protection: it can then be tuned to the frequencies of ground "
                                "transmitters while these are on the air.")
                                 .arg(name);
        return AskingCheckBox::Question{tr("Switch the suppression off"), isOn ? QString() : text,
                                        tr("Switch off")};
    });
    layout->addWidget(m_blanking);
    layout->addStretch();
    return m_details;
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
    const QString name = valuetext::Shortened(chosen.section(QLatin1Char('/'), -1), MaxTitleLength);
    // In a title, an ampersand would mark a shortcut.
    m_details->setTitle(chosen.isEmpty() ? tr("No MpxORV is chosen")
                                         : QString(name).replace(QLatin1Char('&'), QLatin1String("&&")));
    m_comment->SetText_ValuePath(Below(Below(chosen, mcskeys::Status), mcskeys::Comment));
    m_policies->Bind(Below(chosen, mcskeys::Policy));
    m_blanking->Set_ValuePath(Below(chosen, QLatin1String("Blanking")));
}
