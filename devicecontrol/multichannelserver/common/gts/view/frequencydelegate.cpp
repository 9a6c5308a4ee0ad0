// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/view/frequencydelegate.h>

#include <QtWidgets/QLineEdit>

QWidget* FrequencyDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    QWidget* const editor = PlainTextDelegate::createEditor(parent, option, index);
    if (const auto* const field = qobject_cast<QLineEdit*>(editor)) {
        const QPersistentModelIndex place(index);
        connect(field, &QLineEdit::textEdited, this,
                [this, place](const QString& text) { Q_EMIT SignalTyped(place, text); });
    }
    return editor;
}

void FrequencyDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
    const auto* const field = qobject_cast<QLineEdit*>(editor);
    if (field == nullptr || field->isModified()) PlainTextDelegate::setModelData(editor, model, index);
}
