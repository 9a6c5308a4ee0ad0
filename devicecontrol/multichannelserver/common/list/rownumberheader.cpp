// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/list/rownumberheader.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QItemSelectionModel>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionHeader>

#include <utility>

namespace {

QString NumberOf(int row) {
    return QString::number(row + 1);
}

}  // namespace

RowNumberHeader::RowNumberHeader(std::function<bool()> willMoreGo, QWidget* parent)
    : QHeaderView(Qt::Vertical, parent), m_willMoreGo(std::move(willMoreGo)) {
    // As a table's own header is.
    setSectionsClickable(true);
    setHighlightSections(true);
}

RowNumberHeader::~RowNumberHeader() = default;

/// What Qt's header does of rows that went is done by its own slot, which is known by name only. A Qt that
/// has none of that name does it by itself, for each row.
void RowNumberHeader::setModel(QAbstractItemModel* model) {
    if (model == this->model()) return;
    if (this->model() != nullptr)
        disconnect(this->model(), &QAbstractItemModel::rowsRemoved, this, &RowNumberHeader::OnRowsRemoved);
    m_gone = 0;
    QHeaderView::setModel(model);
    if (model != nullptr && disconnect(model, SIGNAL(rowsRemoved(QModelIndex, int, int)), this,
                                       SLOT(_q_sectionsRemoved(QModelIndex, int, int))))
        connect(model, &QAbstractItemModel::rowsRemoved, this, &RowNumberHeader::OnRowsRemoved);
}

/// The rows are read anew.
void RowNumberHeader::reset() {
    m_gone = 0;
    QHeaderView::reset();
}

void RowNumberHeader::OnRowsRemoved(const QModelIndex& parent, int first, int last) {
    if (parent.isValid()) return;
    const bool isBeside = first == m_firstGone || last + 1 == m_firstGone;
    if (m_gone > 0 && !isBeside) PassOnGone();
    if (m_gone == 0) QMetaObject::invokeMethod(this, &RowNumberHeader::PassOnGone, Qt::QueuedConnection);
    m_firstGone = first;
    m_gone += last - first + 1;
    if (!m_willMoreGo()) PassOnGone();
}

void RowNumberHeader::PassOnGone() {
    if (m_gone == 0) return;
    const int last = m_firstGone + std::exchange(m_gone, 0) - 1;
    QMetaObject::invokeMethod(this, "_q_sectionsRemoved", Qt::DirectConnection,
                              Q_ARG(QModelIndex, QModelIndex()), Q_ARG(int, m_firstGone), Q_ARG(int, last));
}

/// The base class paints the section, which has no text; the number comes on top of it.
void RowNumberHeader::paintSection(QPainter* painter, const QRect& rect, int row) const {
    painter->save();
    QHeaderView::paintSection(painter, rect, row);
    painter->restore();
    QStyleOptionHeader option;
    initStyleOption(&option);
    if (isEnabled()) option.state |= QStyle::State_Enabled;
    if (window()->isActiveWindow()) option.state |= QStyle::State_Active;
    if (selectionModel() != nullptr && selectionModel()->rowIntersectsSelection(row, rootIndex()))
        option.state |= QStyle::State_On;  // which styles show in bold type
    option.section = row;
    option.text = NumberOf(row);
    option.textAlignment = defaultAlignment();
    option.rect = rect;
    option.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &option, this);
    style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
}

QSize RowNumberHeader::sectionSizeFromContents(int row) const {
    ensurePolished();
    QStyleOptionHeader option;
    initStyleOption(&option);
    option.section = row;
    option.text = NumberOf(row);
    QFont bold = font();
    bold.setBold(true);
    option.fontMetrics = QFontMetrics(bold);
    return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
}
