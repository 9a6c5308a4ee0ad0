// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <functional>

/// Does \a open, which waits for the answer to a dialog, and \a react once that is there.
/// \return false if there was none.
inline bool ReactToDialog(const std::function<void()>& open, const std::function<void(QDialog&)>& react) {
    bool isThere = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        look.stop();
        isThere = true;
        react(*dialog);
    });
    look.start(1);
    open();
    return isThere;
}
