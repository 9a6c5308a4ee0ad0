// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/plaintextdelegate.h>

/// Edits frequencies as text. Whoever opens a cell and leaves it without a key has not touched it.
class FrequencyDelegate final : public PlainTextDelegate {
    Q_OBJECT

  public:
    using PlainTextDelegate::PlainTextDelegate;

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
};
