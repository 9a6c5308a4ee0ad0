// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/session/steadylatency.h>

#include <algorithm>

namespace {

using std::chrono::microseconds;

constexpr microseconds LeastNews = std::chrono::milliseconds(1);
constexpr int NewsPart = 4;  // a quarter of what is shown

bool IsNews(microseconds shown, microseconds latest) {
    return std::max(shown, latest) - std::min(shown, latest) > std::max(LeastNews, shown / NewsPart);
}

}  // namespace

std::optional<microseconds> SteadyLatency::Show(std::optional<microseconds> latest,
                                                std::chrono::milliseconds now) {
    const bool isKept = latest && m_shown && now - m_since < KeepTime && !IsNews(*m_shown, *latest);
    if (!isKept) {
        m_shown = latest;
        m_since = now;
    }
    return m_shown;
}
