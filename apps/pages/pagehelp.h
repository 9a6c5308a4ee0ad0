// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

class QTabWidget;

/// What each page is for, in a few sentences: shown by F1, and by "What's this?" for whatever on the page has
/// nothing to say itself. GUI thread.
namespace pagehelp {

struct Text {
    const char* page;  ///< its object name
    const char* text;  ///< to be translated, with the context "PageHelp"
};

/// Gives all pages of \a tabs their texts: those of \a own, or else those that all windows have.
void Describe(QTabWidget& tabs, const std::vector<Text>& own);
/// Shows the text of the page that is in front.
void ShowCurrent(const QTabWidget& tabs);

}  // namespace pagehelp
