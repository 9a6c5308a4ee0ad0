// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <functional>
#include <optional>

class QWidget;

/// Asks before others are disturbed. GUI thread.
namespace question {

/// From now on questions above \a widget, and above what is in it, say that they are about \a place; empty:
/// there is no other that they could be about.
void SetPlace(QWidget& widget, const QString& place);

/// \a text as a question says it that is about \a place; as it is, without one.
QString At(const QString& place, const QString& text);

/// Who loses what, as things are now, in words that others may have chosen in part; empty: nobody anything.
/// None: there is nothing left to decide. Lives as long as the widget above which is asked.
using Loss = std::function<std::optional<QString>()>;

/// Whether to do what disturbs others: yes where nobody loses anything, and else asked for in a dialog above
/// \a parent, with \a action as the word for it on the button. The text follows \a loss while it is open;
/// what has just changed has to be read first. False is what Enter, Escape and closing the dialog mean.
/// Whoever asks may be gone when this returns.
bool IsConfirmed(QWidget* parent, const QString& title, const QString& action, const Loss& loss);

/// Takes back what is asked above \a widget, and above what is in it: that is not confirmed.
void Withdraw(const QWidget& widget);

}  // namespace question
