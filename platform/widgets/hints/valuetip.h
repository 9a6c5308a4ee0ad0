// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QWidget;

/// Tips below a widget, of texts that others may have chosen.
namespace valuetip {

/// \a plainText as markup that shows it as it is, broken into lines also where it has no spaces.
QString ToHtml(const QString& plainText);
/// Shows \a html below \a widget.
void Show(QWidget& widget, const QString& html);
/// Whether the user would see at \a widget what is shown there.
bool IsInSight(const QWidget& widget);

}  // namespace valuetip
