// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

#include <functional>

/// Runs \a open, which opens a modal dialog of the type \a Dialog, and \a act as soon as that is there. Fails
/// if none opens, or if it is still open afterwards.
template <class Dialog>
void WithModalDialog(const std::function<void()>& open, const std::function<void(Dialog&)>& act) {
    bool hasActed = false;
    QTimer::singleShot(0, qApp, [&] {
        auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        hasActed = dialog != nullptr;
        if (dialog == nullptr) return;
        act(*dialog);
        QWidget* const left = QApplication::activeModalWidget();
        EXPECT_EQ(left, nullptr);
        if (left != nullptr) left->close();
    });
    open();
    if (!hasActed) QApplication::processEvents();
    EXPECT_TRUE(hasActed);
}
