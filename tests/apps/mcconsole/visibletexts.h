// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <functional>

class QTabWidget;
class QWidget;

/// All that can be read in windows: labels, buttons, fields, tables, lists, menus, plots, tool tips, and what
/// assistive technology reads out.
namespace visibletexts {

/// \a where names the widget, "MyMpxORV/OperationMode QLabel".
using Visit = std::function<void(const QString& where, const QString& text)>;

/// Of \a window with all that is in it, whether it is in front or not.
void ForEach(QWidget& window, const Visit& visit);
/// Of each page of \a pages in turn, as it is when it is in front, with the pages within it; the one in front
/// stays.
void ForEachPage(QWidget& window, QTabWidget& pages, const Visit& visit);

}  // namespace visibletexts
