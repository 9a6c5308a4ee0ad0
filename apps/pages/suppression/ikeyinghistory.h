// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <vector>

/// Which input of which module.
struct InputKey {
    int module = 0;  ///< its number in the server's status
    int input = 0;

    bool operator<(const InputKey& other) const {
        return module != other.module ? module < other.module : input < other.input;
    }
    bool operator==(const InputKey& other) const { return module == other.module && input == other.input; }
};

enum class EKeying {
    Silent,
    Keyed,
    Unknown  ///< its module did not answer, or the server was not heard
};

/// Times are ms since the epoch.
struct KeyingSpan {
    qint64 beginMs = 0;
    qint64 endMs = 0;
    EKeying what = EKeying::Silent;

    bool operator==(const KeyingSpan& other) const {
        return beginMs == other.beginMs && endMs == other.endMs && what == other.what;
    }
};

/// What inputs did in the past, whoever knows it: this process, or a store of the server. GUI thread.
class IKeyingHistory {
  public:
    virtual ~IKeyingHistory() = default;

    /// What \a input was, but for silent, between two moments, in order; cut at both. What nobody saw is
    /// unknown.
    virtual std::vector<KeyingSpan> GetSpans(const InputKey& input, qint64 fromMs, qint64 toMs) const = 0;
};
