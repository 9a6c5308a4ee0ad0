// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/displays/formrow.h>

#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>

QLabel* formrow::Add(QGridLayout& grid, const FormRow& row) {
    auto* const caption = new QLabel(row.caption, grid.parentWidget());
    caption->setBuddy(row.field);
    row.field->setObjectName(QLatin1String(row.objectName));
    SetSpokenName(*row.field, row.caption);
    const int number = grid.count() == 0 ? 0 : grid.rowCount();  // an empty grid has one row too
    grid.addWidget(caption, number, 0);
    grid.addWidget(row.field, number, 1, row.alignment);
    return caption;
}

void formrow::SetSpokenName(QWidget& field, const QString& caption) {
    QString name = caption.trimmed();
    if (name.endsWith(QLatin1Char(':'))) name.chop(1);
    field.setAccessibleName(name.trimmed());
}
