// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/device/receiverfacts.h>

#include <platform/values/node.h>
#include <platform/values/value.h>

#include <vector>

class IClock;

/// The receivers of the device, in the server's status: nothing of a device that has none. Main thread; needs
/// the tree.
class ReceiverStatus {
  public:
    /// \a clock is not owned.
    explicit ReceiverStatus(IClock& clock) : m_clock(clock) {}

    /// Shows \a facts of the receiver with that number, from 0, and those before it.
    void Show(int number, const ReceiverFacts& facts);

  private:
    using Text = values::Value<QString>;

    /// The tree owns all of it, and only the server may change what is there.
    struct Receiver {
        ReceiverFacts facts;  ///< that it shows
        Text* name = nullptr;
        Text* address = nullptr;
        Text* state = nullptr;
        Text* stateSince = nullptr;
        Text* reason = nullptr;
        Text* reasonCode = nullptr;
        values::ValueNumeric<double>* frequency = nullptr;
        Text* mode = nullptr;
        values::ValueNumeric<int>* strength = nullptr;
    };
    static Receiver Make(int number);

    IClock& m_clock;
    std::vector<Receiver> m_receivers;
};
