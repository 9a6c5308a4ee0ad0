// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/plaintextdelegate.h>

/// Edits frequencies as text. Whoever opens a cell and leaves it without a key has not touched it.
class FrequencyDelegate final : public PlainTextDelegate {
    Q_OBJECT

  public:
    using PlainTextDelegate::PlainTextDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

  Q_SIGNALS:
    /// Somebody types in the cell at \a index, and it would be \a text if it were left now.
    void SignalTyped(const QModelIndex& index, const QString& text) const;
};
