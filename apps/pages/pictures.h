// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QTabWidget;
class QWidget;

/// Pictures of windows, for documents. GUI thread.
namespace pictures {

/// Saves a picture of \a widget as \a directory/\a name.png, making the directory.
/// \return why that cannot be done, in one line; empty if it is.
QString Save(QWidget& widget, const QString& directory, const QString& name);
/// Saves one of \a window for each page of \a tabs, named \a prefix and like the page's object.
QString SavePages(QWidget& window, QTabWidget& tabs, const QString& directory, const QString& prefix);

}  // namespace pictures
