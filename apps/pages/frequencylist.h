// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace frequencylist {

/// "121.5 MHz, 118.4 MHz", of long lists only the first, in the language of the application.
QString Of(const std::vector<double>& hz);

}  // namespace frequencylist
