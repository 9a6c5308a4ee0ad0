// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QWidget;

/// Asks before others are disturbed. GUI thread.
namespace question {

/// From now on questions above \a widget, and above what is in it, say that they are about \a place; empty:
/// there is no other that they could be about.
void SetPlace(QWidget& widget, const QString& place);

/// Asks in a dialog above \a parent whether to do what disturbs others: \a text names who loses what, \a
/// action is the word for it on the button. Others may have chosen words in the text, which is shown as it
/// is. False is what Enter, Escape and closing the dialog mean. Whoever asks may be gone when this returns.
bool IsConfirmed(QWidget* parent, const QString& title, const QString& text, const QString& action);

/// Takes back what is asked above \a widget, and above what is in it: that is not confirmed.
void Withdraw(const QWidget& widget);

}  // namespace question
