// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/view/frequencydelegate.h>

#include <QtWidgets/QLineEdit>

namespace {

/// What assistive technology writes is not modified in the toolkit's sense.
bool IsTouched(const QLineEdit& field, const QModelIndex& cell) {
    return field.isModified() || field.text() != cell.data(Qt::EditRole).toString();
}

}  // namespace

QWidget* FrequencyDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    QWidget* const editor = PlainTextDelegate::createEditor(parent, option, index);
    if (const auto* const field = qobject_cast<QLineEdit*>(editor)) {
        const QPersistentModelIndex place(index);
        connect(field, &QLineEdit::textChanged, this, [this, field, place](const QString& text) {
            if (IsTouched(*field, place)) Q_EMIT SignalTyped(place, text);
        });
    }
    return editor;
}

void FrequencyDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                     const QModelIndex& index) const {
    const auto* const field = qobject_cast<QLineEdit*>(editor);
    if (field == nullptr || IsTouched(*field, index)) PlainTextDelegate::setModelData(editor, model, index);
}
