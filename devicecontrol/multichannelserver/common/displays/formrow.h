// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/Qt>

class QGridLayout;
class QLabel;
class QWidget;

/// A row of a form on a grid: a caption in column 0, a field in column 1.
struct FormRow {
    QString caption;
    QWidget* field;
    const char* objectName;                     ///< of the field
    Qt::Alignment alignment = Qt::Alignment();  ///< of the field in its cell; fills it unless set
};

namespace formrow {

/// Adds \a row below the others, for keyboard and assistive technology too: the caption leads to the field,
/// and the field is named like it.
/// \return the caption, which belongs to the widget that \a grid lays out.
QLabel* Add(QGridLayout& grid, const FormRow& row);
/// Names \a field for assistive technology as \a caption reads: without the colon.
void SetSpokenName(QWidget& field, const QString& caption);

}  // namespace formrow
