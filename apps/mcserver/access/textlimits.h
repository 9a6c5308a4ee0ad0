// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/ivtaccess.h>

/// How many UTF-16 code units a text has at most that a client writes: what is written stays, and goes to
/// everybody.
struct TextLimits {
    static constexpr int DefaultComment = 1024;  ///< it is shown in one line

    int text = IVtAccess::DefaultMaxText;
    int comment = DefaultComment;  ///< of an MpxORV

    /// Tells clients, by values of the server's own in "/MultiChannelServer/Status". Needs the tree.
    void Show() const;
};
