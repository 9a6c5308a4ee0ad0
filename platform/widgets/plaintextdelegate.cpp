// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/plaintextdelegate.h>

#include <platform/widgets/valuetext.h>

#include <QtGui/QHelpEvent>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QToolTip>

namespace {

constexpr int MaxShownLength = 500;  // characters: more would not fit any cell
constexpr int MaxTipLength = 2000;   // characters: more would not fit any screen

}  // namespace

PlainTextDelegate::PlainTextDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

PlainTextDelegate::~PlainTextDelegate() = default;

QString PlainTextDelegate::displayText(const QVariant& value, const QLocale& locale) const {
    return valuetext::Shortened(QStyledItemDelegate::displayText(value, locale), MaxShownLength);
}

bool PlainTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event == nullptr || view == nullptr || event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = valuetext::Shortened(index.data(Qt::ToolTipRole).toString(), MaxTipLength);
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event->globalPos(), QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped()), view,
                           view->visualRect(index));
    return true;
}
