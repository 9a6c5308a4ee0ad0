// SPDX-License-Identifier: Apache-2.0
#pragma once

/// How urgent something is to whoever looks at a window.
enum class ESeverity {
    Ok,       ///< as it should be
    Unknown,  ///< nobody says
    Stale,    ///< what was known last, some time ago
    Look,     ///< worth a look
    Act       ///< somebody has to do something
};
