// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/suppression/keyingrecorder.h>

#include <algorithm>

void KeyingRecorder::Note(const InputKey& input, EKeying what, qint64 timeMs) {
    std::deque<Change>& changes = m_inputs[input];
    if (!changes.empty() && changes.back().what == what) return;
    changes.push_back({timeMs, what});
    // Of what began before the day, the last still says what held when the day began.
    while (changes.size() > MostSpans || (changes.size() > 1 && changes[1].timeMs <= timeMs - DayMs))
        changes.pop_front();
}

std::vector<KeyingSpan> KeyingRecorder::GetSpans(const InputKey& input, qint64 fromMs, qint64 toMs) const {
    std::vector<KeyingSpan> spans;
    const auto add = [&](qint64 begin, qint64 end, EKeying what) {
        const KeyingSpan span{std::max(begin, fromMs), std::min(end, toMs), what};
        if (what == EKeying::Silent || span.beginMs >= span.endMs) return;
        const bool goesOn = !spans.empty() && spans.back().what == what && spans.back().endMs == span.beginMs;
        if (goesOn)
            spans.back().endMs = span.endMs;
        else
            spans.push_back(span);
    };
    const auto found = m_inputs.find(input);
    if (found == m_inputs.end() || found->second.empty()) {
        add(fromMs, toMs, EKeying::Unknown);
        return spans;
    }
    const std::deque<Change>& changes = found->second;
    add(fromMs, changes.front().timeMs, EKeying::Unknown);
    for (std::size_t i = 0; i < changes.size(); ++i)
        add(changes[i].timeMs, i + 1 < changes.size() ? changes[i + 1].timeMs : toMs, changes[i].what);
    return spans;
}
