// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <memory>
#include <optional>
#include <vector>

/// What came of something that was asked of a receiver.
struct RigOutcome {
    enum class EFault {
        None,
        Rejected,      ///< it is there, and does not do this
        NoAnswer,      ///< in time
        NoConnection,  ///< none to be had, or it broke
        Other          ///< told by the text
    };
    EFault fault = EFault::None;
    QString text;  ///< in the words of whoever found it; English

    bool IsDone() const { return fault == EFault::None; }
    /// Whether the connection has to be made anew.
    bool IsLost() const { return !IsDone() && fault != EFault::Rejected; }
};

/// What a receiver receives, in Hz.
struct RigRange {
    double from = 0.0;
    double to = 0.0;
};

/// What a receiver says of itself.
struct RigReading {
    double hz = 0.0;
    QString mode;
    std::optional<int> strength;  ///< dB above S9; none where it cannot tell
};

/// One receiver. Every call may take long or hang, so each receiver has a thread of its own, which makes all
/// of them, and destroys it.
class IRig {
  public:
    virtual ~IRig() = default;

    /// Makes the connection, also anew.
    virtual RigOutcome Open() = 0;
    virtual void Close() = 0;
    /// Also sets the mode in which it is to receive.
    virtual RigOutcome Tune(double hz) = 0;
    virtual RigOutcome Read(RigReading* reading) = 0;
    /// Once it was opened; none: not known.
    virtual std::vector<RigRange> GetRanges() const = 0;
    /// How many Hz around its frequency it receives, once it was opened.
    virtual double GetBandwidth() const = 0;
};

/// Makes receivers of one kind. Main thread.
class IRigMaker {
  public:
    virtual ~IRigMaker() = default;

    /// What people call the kind.
    virtual QString GetName() const = 0;
    /// Not opened yet.
    virtual std::unique_ptr<IRig> Make(const QString& port) = 0;
};
