// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/list/rownumberheader.h>

#include <QtCore/QItemSelectionModel>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>
#include <QtWidgets/QStyleOptionHeader>

namespace {

QString NumberOf(int row) {
    return QString::number(row + 1);
}

}  // namespace

RowNumberHeader::RowNumberHeader(QWidget* parent) : QHeaderView(Qt::Vertical, parent) {
    // As a table's own header is.
    setSectionsClickable(true);
    setHighlightSections(true);
}

RowNumberHeader::~RowNumberHeader() = default;

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
