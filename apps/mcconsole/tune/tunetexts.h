// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class Tuning;

/// What the bar to tune by says of what is entered, and of what there is.
namespace tunetexts {

QString Understood(const Tuning& tuning);
QString Actual(const Tuning& tuning);
/// What can be done, or why nothing came of it; empty where there is nothing to say.
QString Message(const Tuning& tuning);

}  // namespace tunetexts
