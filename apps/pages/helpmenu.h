// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/keysdialog.h>

#include <functional>

class QMainWindow;
class QTabWidget;

/// The menu "Help" of a window with pages. GUI thread.
namespace helpmenu {

struct Content {
    std::function<const QTabWidget*()> pages;  ///< of which the one in front is told about
    std::function<std::vector<KeysDialog::Row>()> keys;
    QString about;  ///< the program and its version
};

/// Adds it as the last menu so far of \a window.
void AddTo(QMainWindow& window, const Content& content);

}  // namespace helpmenu
