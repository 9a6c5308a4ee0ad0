// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

struct MpxOrvContent;

/// In which order MpxORVs stand. It does not ask for the language of the desktop: operators who talk about
/// the third row shall see the same one.
namespace mpxorvorder {

/// \a name such that plain comparison has "Van 2" before "Van 10" and "tower" beside "Tower".
QString KeyOf(const QString& name);
/// By kind, static ones first, then by name: below, above or equal 0.
int Compare(const MpxOrvContent& a, const MpxOrvContent& b);
/// By what \a column shows; 0 where that is the same.
int CompareIn(int column, const MpxOrvContent& a, const MpxOrvContent& b);

}  // namespace mpxorvorder
