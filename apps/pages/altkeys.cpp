// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/altkeys.h>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace {

/// AltGr is none: it comes with Ctrl, or as a modifier of its own. Alt and the bar for spaces opens the
/// window's menu.
bool IsLetterWithAlt(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & (Qt::AltModifier | Qt::ControlModifier |
                                                                 Qt::MetaModifier | Qt::GroupSwitchModifier);
    const QString text = event.text();
    return modifiers == Qt::AltModifier && !text.isEmpty() && text.at(0).isPrint() && !text.at(0).isSpace();
}

}  // namespace

AltKeys::AltKeys(QObject* parent) : QObject(parent) {
    connect(qApp, &QApplication::focusChanged, this, &AltKeys::Watch);
    Watch(nullptr, QApplication::focusWidget());
}

void AltKeys::Watch(QWidget* before, QWidget* now) {
    if (before != nullptr) before->removeEventFilter(this);
    if (now != nullptr) now->installEventFilter(this);
}

bool AltKeys::eventFilter(QObject* /*watched*/, QEvent* event) {
    // What is a key of something comes as a shortcut, and not here.
    if (event->type() != QEvent::KeyPress || !IsLetterWithAlt(*static_cast<QKeyEvent*>(event))) return false;
    event->accept();
    return true;
}
