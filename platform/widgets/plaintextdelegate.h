// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QStyledItemDelegate>

/// Shows the cells of a view, and their tool tips, as the plain text that they are: texts of peers must not
/// become markup, and a long one must not slow down drawing. GUI thread only.
class MCS_WIDGETS_EXPORT PlainTextDelegate : public QStyledItemDelegate {
    Q_OBJECT

  public:
    explicit PlainTextDelegate(QObject* parent = nullptr);
    ~PlainTextDelegate() override;

    QString displayText(const QVariant& value, const QLocale& locale) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};
