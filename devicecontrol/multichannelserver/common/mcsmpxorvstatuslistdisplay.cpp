// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>

#include <devicecontrol/multichannelserver/common/displays/displaypath.h>
#include <devicecontrol/multichannelserver/common/list/listcolumns.h>
#include <devicecontrol/multichannelserver/common/list/rownumberheader.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

#include <platform/widgets/plaintextdelegate.h>

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QTableView>

MCSMpxORVStatusListDisplay::MCSMpxORVStatusListDisplay(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags) {
    setObjectName(QStringLiteral("MCSMpxORVStatusListDisplay"));  // fixed: object-names
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);

    m_view = new QTableView(this);
    m_view->setObjectName(QStringLiteral("MCSMpxORVStatusListView"));
    m_view->setAccessibleName(tr("MpxORVs"));
    m_view->setMinimumSize(200, 80);
    m_view->setTabKeyNavigation(false);  // or the keyboard would not get out again
    m_view->setItemDelegate(new PlainTextDelegate(m_view));
    layout->addWidget(m_view);

    m_model = new MCSMpxORVStatusListModel(this);
    const auto willMoreGo = [this] { return m_model->WillMoreGo(); };
    m_view->setVerticalHeader(new RowNumberHeader(willMoreGo, m_view));  // fixed: rows-without-numbers
    m_view->setModel(m_model);
}

MCSMpxORVStatusListDisplay::~MCSMpxORVStatusListDisplay() = default;

bool MCSMpxORVStatusListDisplay::AddMpxORVs_ValuePath(const QString& path) {
    return m_model->addMpxORVs_ValuePath(path);
}

void MCSMpxORVStatusListDisplay::RemoveAllMpxORVs_ValuePaths() {
    m_model->removeAllMpxORVs_ValuePaths();
}

void MCSMpxORVStatusListDisplay::SetMaySeeFullStatusInformation(bool may) {
    m_view->setColumnHidden(CommentColumn, !may);
}

bool MCSMpxORVStatusListDisplay::ShowsFullStatusInformation() const {
    return !m_view->isColumnHidden(CommentColumn);
}

QByteArray MCSMpxORVStatusListDisplay::GetValuePaths() const {
    return DisplayPath::AllOf(*this).join(QLatin1Char(',')).toUtf8();
}

void MCSMpxORVStatusListDisplay::SetValuePaths(const QByteArray& paths) {
    RemoveAllMpxORVs_ValuePaths();
    DisplayPath::SetAll(*this, QString::fromUtf8(paths).split(QLatin1Char(','), Qt::SkipEmptyParts),
                        [this](const QString& there) { AddMpxORVs_ValuePath(there); });
}
