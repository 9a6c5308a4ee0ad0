// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// Whether the process was started where windows can be shown.
bool HasDisplay();
/// Why that display shows no window, in one line; empty if nothing is known against it. The toolkit would end
/// the process. May ask the display, so not before there is need of it.
QString GetDisplayProblem();
