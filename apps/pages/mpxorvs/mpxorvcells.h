// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

struct MpxOrvContent;

/// The columns of the list of MpxORVs, and what stands in them, in the user's language.
namespace mpxorvcells {

enum EColumn { Name, Kind, State, Frequency, Since, Master, Suppression, Clients, Comment, CountColumns };

QString Title(int column);
QString Text(const MpxOrvContent& content, int column);
/// What the text leaves out too.
QString Tip(const MpxOrvContent& content, int column);

}  // namespace mpxorvcells
