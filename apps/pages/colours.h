// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The colours of all windows of the program. GUI thread.
namespace colours {

/// Shows dark colours, for a dark room, or else those that the desktop has.
void Apply(bool isDark);

}  // namespace colours
