// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/frequencyset.h>

void FrequencySet::Assign(const std::vector<std::uint64_t>& frequencies) {
    m_hasZero = false;
    m_lowScratch.clear();
    m_highScratch.clear();
    for (const std::uint64_t frequency : frequencies) {
        const auto low = static_cast<std::uint32_t>(frequency);
        if (low != frequency)
            m_highScratch.push_back(frequency);
        else if (low != 0)
            m_lowScratch.push_back(low);
        else
            m_hasZero = true;
    }
    m_low.Assign(m_lowScratch);
    m_high.Assign(m_highScratch);
}
