// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QTabWidget;
class QWidget;

/// What each page is for, in a few sentences: shown by F1, and by "What's this?" for whatever on the page has
/// nothing to say itself. GUI thread.
namespace pagehelp {

/// Of the page with that object name.
QString TextOf(const QString& page);
/// Gives all pages of \a tabs their texts.
void Describe(QTabWidget& tabs);
/// Shows the text of the page that is in front.
void ShowCurrent(const QTabWidget& tabs);

}  // namespace pagehelp
