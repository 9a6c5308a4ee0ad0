// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/view/frequencydelegate.h>

#include <QtWidgets/QLineEdit>

void FrequencyDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
    const auto* const field = qobject_cast<QLineEdit*>(editor);
    if (field == nullptr || field->isModified()) PlainTextDelegate::setModelData(editor, model, index);
}
