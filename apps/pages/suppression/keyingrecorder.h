// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/suppression/ikeyinghistory.h>

#include <cstddef>
#include <deque>
#include <map>

/// The history as far as this process has seen it: of each input the last MostSpans changes, of a day at
/// most, so that it stays small however often transmitters key. GUI thread.
class KeyingRecorder : public IKeyingHistory {
  public:
    static constexpr std::size_t MostSpans = 2000;
    static constexpr qint64 DayMs = 24LL * 60 * 60 * 1000;

    /// \a input is \a what from \a timeMs on, which never goes back.
    void Note(const InputKey& input, EKeying what, qint64 timeMs);
    void Clear() { m_inputs.clear(); }

    std::vector<KeyingSpan> GetSpans(const InputKey& input, qint64 fromMs, qint64 toMs) const override;

  private:
    struct Change {
        qint64 timeMs = 0;
        EKeying what = EKeying::Unknown;
    };
    std::map<InputKey, std::deque<Change>> m_inputs;
};
