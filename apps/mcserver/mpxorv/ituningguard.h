// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

class MpxOrv;

/// Has a say before the device is tuned: frequencies may be blanked while a transmitter near the antenna uses
/// them. Main thread.
class ITuningGuard {
  public:
    virtual ~ITuningGuard() = default;

    /// Why \a mpxOrv must not be tuned to \a hz now; nothing if it may.
    virtual CodedText RefusalOf(MpxOrv& mpxOrv, double hz) = 0;
    /// Whether \a hz should be watched, and cannot be now: nobody would notice if it must not be used.
    virtual bool IsUnsupervised(double hz) const = 0;
};
