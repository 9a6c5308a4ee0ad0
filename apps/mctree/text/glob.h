// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Patterns of texts as shells have them: "*" stands for any characters, "?" for one, "[a-z]" for one of
/// those, "[!a-z]" for one that is none of those. A "\" takes its meaning from what follows it.
namespace mctree::glob {

/// Whether \a text stands for more than itself.
bool IsGlob(const QString& text);
/// The text that a pattern which is no glob stands for.
QString Unescaped(const QString& text);
/// Whether all of \a text is what \a pattern stands for. Takes time by the product of both lengths at most.
bool Matches(const QString& pattern, const QString& text);

}  // namespace mctree::glob
