// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

/// The policies of an MpxORV as windows call them: in the language of the application, and the same wherever
/// one of them is mentioned.
namespace policytext {

/// The names of their switches in the tree, in the order in which people look for them: what an MpxORV may
/// tune, what it may be, what it may do.
std::vector<QString> Names();
/// "May calibrate" for "MayCal"; what is no policy as it is.
QString Caption(const QString& name);
/// The captions, in quotation marks, of the policies that \a names has, separated by commas.
QString Mentioned(const QString& names);

}  // namespace policytext
