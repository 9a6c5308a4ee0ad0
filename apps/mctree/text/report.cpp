// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/report.h>

#include <algorithm>

namespace mctree {

void Report::Add(const Outcome& outcome) {
    if (!outcome.message.isEmpty()) m_tell(outcome.message);
    m_code = (std::max)(m_code, outcome.code);
}

}  // namespace mctree
